#pragma once
// The dialog "サイズ設定": the sizes of a pipe type as lines of text, with two
// standard lists.

#include <QDialog>
#include <QStringList>

class QPlainTextEdit;
class QPushButton;

class SizeDialog : public QDialog {
    Q_OBJECT
public:
    explicit SizeDialog(QWidget* parent = nullptr);
    ~SizeDialog() override;

    // Modal results of the two buttons.
    static constexpr int ResultAccept = 1;
    static constexpr int ResultCancel = 2;

    QPlainTextEdit* sizesEdit = nullptr;
    QPushButton* steelButton = nullptr;       // 15A
    QPushButton* refrigerantButton = nullptr; // 冷媒
    QPushButton* runButton = nullptr;         // 実   行
    QPushButton* cancelButton = nullptr;      // キャンセル

    // The memo as lines: a break at the very end opens no further line.
    QStringList lines() const;
    void setLines(const QStringList& lines);

    void fillSteelSizes();
    void fillRefrigerantSizes();

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

    // The standard lists.
    static const QStringList SteelSizes;
    static const QStringList RefrigerantSizes;

protected:
    // The dialog comes up in the middle of the screen.
    void showEvent(QShowEvent* event) override;
};

// The dialog made at start and reused.