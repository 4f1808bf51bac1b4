#include "platform/consoledialogs.h"

#include <QProcess>

void ConsoleDialogs::print(const QString& text) {
    ++printed_;
    std::fputs(text.toUtf8().constData(), out_);
    std::fputc('\n', out_);
    std::fflush(out_);
}

int ConsoleDialogs::taskDialog(QWidget*, const QString& title, const QString& instruction, int,
                               int buttons, const QString& content) {
    QString text = title + QStringLiteral(": ") + instruction;
    if (!content.isEmpty()) text += QStringLiteral(" - ") + content;
    print(text);
    const bool question = buttons & (TaskDialog::ButtonYes | TaskDialog::ButtonNo);
    return question ? answer_ : TaskDialog::IdOk;
}

void ConsoleDialogs::message(QWidget*, const QString& title, const QString& text) {
    print(title.isEmpty() ? text : title + QStringLiteral(": ") + text);
}

bool ConsoleDialogs::inputQuery(QWidget*, const QString&, const QString&, QString&) {
    return false;
}

QString ConsoleDialogs::openFileName(QWidget*, const QString&, const QString&, const QString&) {
    return QString();
}

QString ConsoleDialogs::saveFileName(QWidget*, const QString&, const QString&, const QString&) {
    return QString();
}

QString ConsoleDialogs::folderName(QWidget*, const QString&, const QString&) {
    return QString();
}

bool ConsoleDialogs::startProcess(const QString& program, const QStringList& arguments,
                                  const QString& workingDir) {
    return QProcess::startDetached(program, arguments, workingDir);
}

bool ConsoleDialogs::openDocument(const QString&) {
    return false;
}
