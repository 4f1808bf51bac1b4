#pragma once
// The dialog "標準歩掛選択" that picks an entry of the standard labour library.
// The caller writes the extension to list into panel 0 of the status bar and
// shows it; on show it lists the entries of the library folder.

#include <QDialog>
#include <QString>

class QLabel;
class QListWidget;
class QPushButton;
class QStatusBar;

class TFpartsSelect : public QDialog {
    Q_OBJECT
public:
    explicit TFpartsSelect(QWidget* parent = nullptr);
    ~TFpartsSelect() override;

    // Modal results.
    static constexpr int ResultSelect = 1; // Button1, a double click on the list
    static constexpr int ResultCancel = 2; // Button2, the close box, Escape

    QLabel* Label1 = nullptr;
    QListWidget* ListBox1 = nullptr;
    QPushButton* Button1 = nullptr; // 選択実行
    QPushButton* Button2 = nullptr; // キャンセル
    QPushButton* Button3 = nullptr; // 削　除
    QStatusBar* StatusBar1 = nullptr;

    // Text of a status panel; panel 0 holds the extension, without the dot.
    QString Panel(int index) const;
    void SetPanel(int index, const QString& text);

    // The selected entry, -1 when none is, and its name.
    int ItemIndex() const;
    QString SelectedEntry() const;
    // The folder listed at the last show.
    QString Folder() const { return folder_; }

    // Lists the entries (the show step).
    void FormShow();
    // Deletes the selected entry after asking.
    void Button3Click();
    void ListBox1DblClick();

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString extension() const;

    QString folder_;
    QLabel* panel0_ = nullptr;
};

// The dialog made at start and reused.
extern TFpartsSelect* FpartsSelect;
