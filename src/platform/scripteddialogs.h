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
    void answerBox(int id) { m_boxAnswers.push_back(id); }
    void answerInput(const QString& text) { m_inputAnswers.push_back(text); }
    void cancelInput() { m_inputAnswers.push_back(std::nullopt); }
    // A file or folder name; an empty text answers as a cancel.
    void answerFile(const QString& name) { m_fileAnswers.push_back(name); }
    // State answers, valid until changed.
    void setStartResult(bool ok) { m_startResult = ok; }
    void setOpenResult(bool ok) { m_openResult = ok; }
    void setClipboard(const QString& text) { m_clipboard = text; }
    // Called after each message or box is recorded, to act while the box
    // would be up (a test may run the event loop there, as a modal box does).
    std::function<void()> onMessage;
    std::function<void()> onBox;

    // What was shown and done.
    const std::vector<Box>& boxes() const { return m_boxes; }
    const std::vector<ShownMessage>& messages() const { return m_messages; }
    const std::vector<Input>& inputs() const { return m_inputs; }
    const std::vector<FileQuestion>& fileQuestions() const { return m_files; }
    const std::vector<Process>& processes() const { return m_processes; }
    const QStringList& documents() const { return m_documents; }
    QString clipboard() const { return m_clipboard; }
    int beeps() const { return m_beeps; }
    // One line for each question that had no fitting scripted answer.
    const QStringList& unanswered() const { return m_unanswered; }
    // Answers given by the test and not yet asked for.
    int pendingAnswers() const {
        return int(m_boxAnswers.size() + m_inputAnswers.size() + m_fileAnswers.size());
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

    std::deque<int> m_boxAnswers;
    std::deque<std::optional<QString>> m_inputAnswers;
    std::deque<QString> m_fileAnswers;
    bool m_startResult = true;
    bool m_openResult = true;

    std::vector<Box> m_boxes;
    std::vector<ShownMessage> m_messages;
    std::vector<Input> m_inputs;
    std::vector<FileQuestion> m_files;
    std::vector<Process> m_processes;
    QStringList m_documents;
    QString m_clipboard;
    int m_beeps = 0;
    QStringList m_unanswered;
};
