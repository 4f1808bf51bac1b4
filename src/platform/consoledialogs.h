#pragma once
// Dialogs for programs without a window (the batch tool, the suite stand-in):
// boxes and messages go to standard error, questions take a fixed answer,
// input and file choice are cancelled, and the clipboard is kept in memory.

#include "platform/dialogs.h"

#include <cstdio>
#include <memory>

class ConsoleDialogs : public Dialogs {
public:
    // answer: the button id every question gets (IdYes by default).
    explicit ConsoleDialogs(std::FILE* out = stderr, int answer = TaskDialog::IdYes)
        : out_(out), answer_(answer) {}

    int taskDialog(QWidget* parent, const QString& title, const QString& instruction, int icon,
                   int buttons, const QString& content) override;
    void message(QWidget* parent, const QString& title, const QString& text) override;
    bool inputQuery(QWidget* parent, const QString& title, const QString& prompt,
                    QString& value) override;
    QString openFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString saveFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString folderName(QWidget* parent, const QString& title, const QString& dir) override;
    QString clipboardText() override { return clipboard_; }
    void setClipboardText(const QString& text) override { clipboard_ = text; }
    void beep() override {}
    bool startProcess(const QString& program, const QStringList& arguments,
                      const QString& workingDir) override;
    bool openDocument(const QString& path) override;

    // Number of messages and boxes printed so far.
    int printed() const { return printed_; }

private:
    void print(const QString& text);

    std::FILE* out_;
    int answer_;
    QString clipboard_;
    int printed_ = 0;
};
