#pragma once
// Every modal interaction with the person at the keyboard goes through this
// interface: boxes and questions, input, file choice, the clipboard, the beep,
// the Shift key, and starting other programs. The program installs the Qt
// implementation; tests install a scripted one that answers and records.

#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

// Task dialog icons and buttons (bit set) and results.
namespace TaskDialog {
constexpr int IconNone = 0;
constexpr int IconError = 32513;
constexpr int IconQuestion = 32514;
constexpr int IconWarning = 32515;
constexpr int IconInformation = 32516;

constexpr int ButtonOk = 1;
constexpr int ButtonYes = 2;
constexpr int ButtonNo = 4;
constexpr int ButtonCancel = 8;
constexpr int ButtonRetry = 16;
constexpr int ButtonClose = 32;
// A box that offers these two has "キャンセル" as its default button.
constexpr int ButtonOverwrite = 64; // "上書き保存"
constexpr int ButtonReload = 128;   // "読み直す"
constexpr int AllButtons = 255;

constexpr int IdNone = 0; // no box could be shown
constexpr int IdOk = 1;
constexpr int IdCancel = 2;
constexpr int IdRetry = 4;
constexpr int IdYes = 6;
constexpr int IdNo = 7;
constexpr int IdClose = 8;
constexpr int IdOverwrite = 101;
constexpr int IdReload = 102;

constexpr int MaxText = 2049;
} // namespace TaskDialog

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // A modal box with title, main instruction, icon, buttons and content.
    // Gives the id of the pressed button; texts are cut at 2049 characters.
    virtual int taskDialog(QWidget* parent, const QString& title, const QString& instruction,
                           int icon, int buttons, const QString& content) = 0;
    // A plain message box (the framework's ShowMessage / MessageBox).
    virtual void message(QWidget* parent, const QString& title, const QString& text) = 0;
    // An input box; false when the person cancels. value is the initial text
    // and, on true, the entered text.
    virtual bool inputQuery(QWidget* parent, const QString& title, const QString& prompt,
                            QString& value) = 0;
    // File choice; an empty text when the person cancels.
    virtual QString openFileName(QWidget* parent, const QString& title, const QString& dir,
                                 const QString& filter) = 0;
    virtual QString saveFileName(QWidget* parent, const QString& title, const QString& dir,
                                 const QString& filter) = 0;
    virtual QString folderName(QWidget* parent, const QString& title, const QString& dir) = 0;

    virtual QString clipboardText() = 0;
    // From another thread the text is handed over without waiting; texts
    // set one after another land in that order.
    virtual void setClipboardText(const QString& text) = 0;
    virtual void beep() = 0;
    // Starts a program and does not wait; false when it could not be started.
    virtual bool startProcess(const QString& program, const QStringList& arguments,
                              const QString& workingDir) = 0;
    // Opens a file with the program registered for it; false on failure.
    virtual bool openDocument(const QString& path) = 0;
};

// The application title shown on boxes ("Qorvale Works　配管材").
QString applicationTitle();

// The program's two box helpers.
int showTaskDialog(Dialogs& dialogs, QWidget* form, const QString& title,
                   const QString& instruction, int icon, int buttons, const QString& content);
int showInfoDialog(Dialogs& dialogs, QWidget* form, const QString& instruction,
                   const QString& content);
