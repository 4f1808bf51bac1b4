#include "platform/dialogs.h"

#include <stdexcept>

namespace {
QString cut(const QString& s) {
    return s.left(TaskDialog::MaxText);
}
} // namespace

QString applicationTitle() {
    return QStringLiteral("Qorvale Works\u3000配管材");
}

int showTaskDialog(Dialogs& dialogs, QWidget* form, const QString& title,
                   const QString& instruction, int icon, int buttons, const QString& content) {
    return dialogs.taskDialog(form, cut(title), cut(instruction), icon, buttons, cut(content));
}

int showInfoDialog(Dialogs& dialogs, QWidget* form, const QString& instruction,
                   const QString& content) {
    return showTaskDialog(dialogs, form, applicationTitle(), instruction, TaskDialog::IconNone,
                          TaskDialog::ButtonOk, content);
}
