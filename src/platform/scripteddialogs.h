#pragma once
// A dialog implementation for tests: it answers from queues filled by the
// test and records every box, message and side effect. A question that finds
// no scripted answer gets a safe default (cancel, no text, no file), a warning
// on stderr, and an entry in Unanswered(), so a test can assert that none
// happened.
//
// Like the program's own dialogs, every call made on another thread (the
// group recalculation saves from a worker) runs on the GUI thread and waits
// there, so the records are only ever touched by the GUI thread and a test
// reads them without a lock.

#include "platform/dialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

class ScriptedDialogs : public Dialogs {
public:
    struct Box {
        QString title;
        QString instruction;
        QString content;
        int icon = 0;
        int buttons = 0;
        int result = 0;
    };
    struct ShownMessage {
        QString title;
        QString text;
    };
    struct Input {
        QString title;
        QString prompt;
        QString initial;
        bool accepted = false;
        QString result;
    };
    // kind is "open", "save" or "folder".
    struct FileQuestion {
        QString kind;
        QString title;
        QString dir;
        QString filter;
        QString result;
    };
    struct Process {
        QString program;
        QStringList arguments;
        QString workingDir;
    };

    // Answers, used in the order given, each kind from its own queue.
    void answerBox(int id) { boxAnswers.push_back(id); }
    void answerInput(const QString& text) { inputAnswers.push_back(text); }
    void cancelInput() { inputAnswers.push_back(std::nullopt); }
    // A file or folder name; an empty text answers as a cancel.
    void answerFile(const QString& name) { fileAnswers.push_back(name); }
    // State answers, valid until changed.
    void setStartResult(bool ok) { startResult = ok; }
    void setOpenResult(bool ok) { openResult = ok; }
    void setClipboard(const QString& text) { clipboard = text; }
    // Called after each message or box is recorded, to act while the box
    // would be up (a test may run the event loop there, as a modal box does).
    std::function<void()> OnMessage;
    std::function<void()> OnBox;

    // What was shown and done.
    const std::vector<Box>& Boxes() const { return boxes; }
    const std::vector<ShownMessage>& Messages() const { return messages; }
    const std::vector<Input>& Inputs() const { return inputs; }
    const std::vector<FileQuestion>& fileQuestions() const { return files; }
    const std::vector<Process>& Processes() const { return processes; }
    const QStringList& Documents() const { return documents; }
    QString Clipboard() const { return clipboard; }
    int Beeps() const { return beeps; }
    // One line for each question that had no fitting scripted answer.
    const QStringList& Unanswered() const { return unanswered; }
    // Answers given by the test and not yet asked for.
    int pendingAnswers() const {
        return int(boxAnswers.size() + inputAnswers.size() + fileAnswers.size());
    }
    // Forgets the records (not the queued answers).
    void clearRecords();

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
    QString clipboardText() override;
    void setClipboardText(const QString& text) override;
    void beep() override;
    bool startProcess(const QString& program, const QStringList& arguments,
                      const QString& workingDir) override;
    bool openDocument(const QString& path) override;

private:
    QString askFile(const QString& kind, const QString& title, const QString& dir,
                    const QString& filter);
    void miss(const QString& what);

    std::deque<int> boxAnswers;
    std::deque<std::optional<QString>> inputAnswers;
    std::deque<QString> fileAnswers;
    bool startResult = true;
    bool openResult = true;

    std::vector<Box> boxes;
    std::vector<ShownMessage> messages;
    std::vector<Input> inputs;
    std::vector<FileQuestion> files;
    std::vector<Process> processes;
    QStringList documents;
    QString clipboard;
    int beeps = 0;
    QStringList unanswered;
};
