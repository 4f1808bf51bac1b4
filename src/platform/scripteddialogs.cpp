#include "platform/scripteddialogs.h"

#include "platform/guithread.h"

#include <QDebug>

namespace TD = ::TaskDialog;

namespace {

// The buttons of a box in the order a task dialog shows them, with their ids.
struct ButtonId {
    int bit;
    int id;
};
constexpr ButtonId ButtonIds[] = {
    {TD::ButtonOk, TD::IdOk},
    {TD::ButtonYes, TD::IdYes},
    {TD::ButtonNo, TD::IdNo},
    {TD::ButtonRetry, TD::IdRetry},
    {TD::ButtonCancel, TD::IdCancel},
    {TD::ButtonClose, TD::IdClose},
    {TD::ButtonOverwrite, TD::IdOverwrite},
    {TD::ButtonReload, TD::IdReload},
};

bool boxHas(int buttons, int id) {
    for (const ButtonId& b : ButtonIds)
        if (b.id == id) return (buttons & b.bit) != 0;
    return false;
}

// What a person who wants nothing to happen would press.
int safeAnswer(int buttons) {
    for (int id : {TD::IdCancel, TD::IdNo, TD::IdClose})
        if (boxHas(buttons, id)) return id;
    for (const ButtonId& b : ButtonIds)
        if (buttons & b.bit) return b.id;
    return TD::IdOk;
}

} // namespace

void ScriptedDialogs::clearRecords() {
    m_boxes.clear();
    m_messages.clear();
    m_inputs.clear();
    m_files.clear();
    m_processes.clear();
    m_documents.clear();
    m_beeps = 0;
    m_unanswered.clear();
}

void ScriptedDialogs::miss(const QString& what) {
    qWarning().noquote() << "ScriptedDialogs: no scripted answer for" << what;
    m_unanswered << what;
}

int ScriptedDialogs::taskDialog(QWidget*, const QString& title, const QString& instruction,
                                int icon, int buttons, const QString& content) {
    return onGuiThread([&] {
        Box box{title, instruction, content, icon, buttons, 0};
        const int shown = buttons & TD::AllButtons ? buttons : TD::ButtonOk;
        if (shown == TD::ButtonOk) {
            // A box with OK alone tells; it asks nothing.
            box.result = TD::IdOk;
        } else if (m_boxAnswers.empty()) {
            box.result = safeAnswer(shown);
            miss(QStringLiteral("box \"%1\" / \"%2\"").arg(title, instruction));
        } else {
            box.result = m_boxAnswers.front();
            m_boxAnswers.pop_front();
            if (!boxHas(shown, box.result)) {
                miss(QStringLiteral("box \"%1\" / \"%2\": answer %3 is none of its buttons")
                         .arg(title, instruction)
                         .arg(box.result));
                box.result = safeAnswer(shown);
            }
        }
        m_boxes.push_back(box);
        if (onBox) onBox();
        return box.result;
    });
}

void ScriptedDialogs::message(QWidget*, const QString& title, const QString& text) {
    onGuiThread([&] {
        m_messages.push_back({title, text});
        if (onMessage) onMessage();
    });
}

bool ScriptedDialogs::inputQuery(QWidget*, const QString& title, const QString& prompt,
                                 QString& value) {
    return onGuiThread([&] {
        Input input{title, prompt, value, false, value};
        if (m_inputAnswers.empty()) {
            miss(QStringLiteral("input \"%1\" / \"%2\"").arg(title, prompt));
        } else {
            std::optional<QString> answer = m_inputAnswers.front();
            m_inputAnswers.pop_front();
            if (answer) {
                input.accepted = true;
                input.result = *answer;
                value = *answer;
            }
        }
        m_inputs.push_back(input);
        return input.accepted;
    });
}

QString ScriptedDialogs::askFile(const QString& kind, const QString& title, const QString& dir,
                                 const QString& filter) {
    return onGuiThread([&] {
        FileQuestion q{kind, title, dir, filter, QString()};
        if (m_fileAnswers.empty()) {
            miss(QStringLiteral("%1 file \"%2\"").arg(kind, title));
        } else {
            q.result = m_fileAnswers.front();
            m_fileAnswers.pop_front();
        }
        m_files.push_back(q);
        return q.result;
    });
}

QString ScriptedDialogs::openFileName(QWidget*, const QString& title, const QString& dir,
                                      const QString& filter) {
    return askFile(QStringLiteral("open"), title, dir, filter);
}

QString ScriptedDialogs::saveFileName(QWidget*, const QString& title, const QString& dir,
                                      const QString& filter) {
    return askFile(QStringLiteral("save"), title, dir, filter);
}

QString ScriptedDialogs::folderName(QWidget*, const QString& title, const QString& dir) {
    return askFile(QStringLiteral("folder"), title, dir, QString());
}

bool ScriptedDialogs::startProcess(const QString& program, const QStringList& arguments,
                                   const QString& workingDir) {
    return onGuiThread([&] {
        m_processes.push_back({program, arguments, workingDir});
        return m_startResult;
    });
}

bool ScriptedDialogs::openDocument(const QString& path) {
    return onGuiThread([&] {
        m_documents << path;
        return m_openResult;
    });
}

QString ScriptedDialogs::clipboardText() {
    return onGuiThread([&] { return m_clipboard; });
}

void ScriptedDialogs::setClipboardText(const QString& text) {
    postToGuiThread([this, text] { m_clipboard = text; });
}

void ScriptedDialogs::beep() {
    onGuiThread([&] { ++m_beeps; });
}
