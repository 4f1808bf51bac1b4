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

    int TaskDialog(QWidget* parent, const QString& title, const QString& instruction, int icon,
                   int buttons, const QString& content) override;
    void Message(QWidget* parent, const QString& title, const QString& text) override;
    bool InputQuery(QWidget* parent, const QString& title, const QString& prompt,
                    QString& value) override;
    QString OpenFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString SaveFileName(QWidget* parent, const QString& title, const QString& dir,
                         const QString& filter) override;
    QString FolderName(QWidget* parent, const QString& title, const QString& dir) override;
    QString ClipboardText() override { return clipboard_; }
    void SetClipboardText(const QString& text) override { clipboard_ = text; }
    void Beep() override {}
    bool StartProcess(const QString& program, const QStringList& arguments,
                      const QString& workingDir) override;
    bool OpenDocument(const QString& path) override;

    // Number of messages and boxes printed so far.
    int Printed() const { return printed_; }

private:
    void print(const QString& text);

    std::FILE* out_;
    int answer_;
    QString clipboard_;
    int printed_ = 0;
};
