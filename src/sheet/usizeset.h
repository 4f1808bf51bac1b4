#pragma once
// The dialog "サイズ設定": the sizes of a pipe type as lines of text, with two
// standard lists.

#include <QDialog>
#include <QStringList>

class QPlainTextEdit;
class QPushButton;

class TfsizeSet : public QDialog {
    Q_OBJECT
public:
    explicit TfsizeSet(QWidget* parent = nullptr);
    ~TfsizeSet() override;

    // Modal results of the two buttons.
    static constexpr int ResultAccept = 1;
    static constexpr int ResultCancel = 2;

    QPlainTextEdit* Memo1 = nullptr;
    QPushButton* Button4 = nullptr; // 15A
    QPushButton* Button5 = nullptr; // 冷媒
    QPushButton* Button2 = nullptr; // 実   行
    QPushButton* Button1 = nullptr; // キャンセル

    // The memo as lines: a break at the very end opens no further line.
    QStringList Lines() const;
    void SetLines(const QStringList& lines);

    void Button4Click();
    void Button5Click();

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

protected:
    // The dialog comes up in the middle of the screen.
    void showEvent(QShowEvent* event) override;

    // The standard lists.
    static const QStringList SteelSizes;
    static const QStringList RefrigerantSizes;
};

// The dialog made at start and reused.
extern TfsizeSet* FsizeSet;
