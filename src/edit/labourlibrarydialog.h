#pragma once
// The dialog "標準歩掛選択" that picks an entry of the standard labour library.
// The caller writes the extension to list into panel 0 of the status bar and
// shows it; on show it lists the entries of the library folder.

#include <QDialog>
#include <QString>

class Dialogs;
class QLabel;
class QListWidget;
class QPushButton;
class QStatusBar;

class LabourLibraryDialog : public QDialog {
    Q_OBJECT
public:
    explicit LabourLibraryDialog(Dialogs& dialogs, QWidget* parent = nullptr);
    ~LabourLibraryDialog() override;

    // Modal results.
    static constexpr int ResultSelect = 1; // selectButton, a double click on the list
    static constexpr int ResultCancel = 2; // cancelButton, the close box, Escape

    QLabel* captionLabel = nullptr;
    QListWidget* entryList = nullptr;
    QPushButton* selectButton = nullptr; // 選択実行
    QPushButton* cancelButton = nullptr; // キャンセル
    QPushButton* deleteButton = nullptr; // 削　除
    QStatusBar* statusLine = nullptr;

    // Text of a status panel; panel 0 holds the extension, without the dot.
    QString panel(int index) const;
    void setPanel(int index, const QString& text);

    // The selected entry, -1 when none is, and its name.
    int itemIndex() const;
    QString selectedEntry() const;
    // The folder listed at the last show.
    QString folder() const { return folder_; }

    // Lists the entries (the show step).
    void prepareShow();
    // Deletes the selected entry after asking.
    void deleteEntry();
    void entryDoubleClicked();

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString extension() const;

    QString folder_;
    QLabel* statusPanel_ = nullptr;
    Dialogs& m_dialogs;
};

// The dialog made at start and reused.