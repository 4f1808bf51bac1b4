#pragma once
// The dialog implementation of the running program, on Qt widgets.

#include "platform/dialogs.h"

// Every call that arrives on a thread other than the GUI thread is carried
// over to the GUI thread and waits there for its result, so boxes, the
// clipboard and the keyboard state are only touched on the GUI thread. The
// GUI thread must keep running its event loop while such a call waits.
class QtDialogs : public Dialogs {
public:
    // The task dialog is a modal message box: title, the instruction as main
    // text, the content as informative text, the icon and the buttons. The
    // first button in the order OK, Yes, No, Retry, Cancel, Close is the
    // default; Esc answers Cancel, else Close, else OK when that is the only
    // button.
    int taskDialog(QWidget* parent, const QString& title, const QString& instruction, int icon,
                   int buttons, const QString& content) override;
    void message(QWidget* parent, const QString& title, const QString& text) override;
    bool inputQuery(QWidget* parent, const QString& title, const QString& prompt,
                    QString& value) override;
    // filter is a Qt name filter list such as "CSV (*.csv);;All files (*)".
    QString openFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString saveFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString folderName(QWidget* parent, const QString& title, const QString& dir) override;
    QString clipboardText() override;
    void setClipboardText(const QString& text) override;
    void beep() override;
    bool startProcess(const QString& program, const QStringList& arguments,
                      const QString& workingDir) override;
    // path is a file, or an address with a scheme ("https://...").
    bool openDocument(const QString& path) override;
};
