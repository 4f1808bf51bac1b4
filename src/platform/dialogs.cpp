#include "platform/dialogs.h"

#include <stdexcept>

namespace {
QString cut(const QString& s) {
    return s.left(TaskDialog::MaxText);
}
} // namespace

QString ApplicationTitle() {
    return QStringLiteral("Qorvale Works\u3000配管材");
}

int ShowTaskDialog(Dialogs& dialogs, QWidget* form, const QString& title,
                   const QString& instruction, int icon, int buttons, const QString& content) {
    return dialogs.TaskDialog(form, cut(title), cut(instruction), icon, buttons, cut(content));
}

int ShowInfoDialog(Dialogs& dialogs, QWidget* form, const QString& instruction,
                   const QString& content) {
    return ShowTaskDialog(dialogs, form, ApplicationTitle(), instruction, TaskDialog::IconNone,
                          TaskDialog::ButtonOk, content);
}
