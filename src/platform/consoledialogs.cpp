#include "platform/consoledialogs.h"

#include <QProcess>

void ConsoleDialogs::print(const QString& text) {
    ++printed_;
    std::fputs(text.toUtf8().constData(), out_);
    std::fputc('\n', out_);
    std::fflush(out_);
}

int ConsoleDialogs::TaskDialog(QWidget*, const QString& title, const QString& instruction, int,
                               int buttons, const QString& content) {
    QString text = title + QStringLiteral(": ") + instruction;
    if (!content.isEmpty()) text += QStringLiteral(" - ") + content;
    print(text);
    const bool question = buttons & (TaskDialog::ButtonYes | TaskDialog::ButtonNo);
    return question ? answer_ : TaskDialog::IdOk;
}

void ConsoleDialogs::Message(QWidget*, const QString& title, const QString& text) {
    print(title.isEmpty() ? text : title + QStringLiteral(": ") + text);
}

bool ConsoleDialogs::InputQuery(QWidget*, const QString&, const QString&, QString&) {
    return false;
}

QString ConsoleDialogs::OpenFileName(QWidget*, const QString&, const QString&, const QString&) {
    return QString();
}

QString ConsoleDialogs::SaveFileName(QWidget*, const QString&, const QString&, const QString&) {
    return QString();
}

QString ConsoleDialogs::FolderName(QWidget*, const QString&, const QString&) {
    return QString();
}

bool ConsoleDialogs::StartProcess(const QString& program, const QStringList& arguments,
                                  const QString& workingDir) {
    return QProcess::startDetached(program, arguments, workingDir);
}

bool ConsoleDialogs::OpenDocument(const QString&) {
    return false;
}
