#include "platform/dialogs.h"

#include <stdexcept>

namespace {
std::unique_ptr<Dialogs>& installed() {
    static std::unique_ptr<Dialogs> d;
    return d;
}
QString cut(const QString& s) {
    return s.left(TaskDialog::MaxText);
}
} // namespace

Dialogs& CurrentDialogs() {
    if (!installed()) throw std::logic_error("no dialog implementation installed");
    return *installed();
}

std::unique_ptr<Dialogs> InstallDialogs(std::unique_ptr<Dialogs> dialogs) {
    std::unique_ptr<Dialogs> old = std::move(installed());
    installed() = std::move(dialogs);
    return old;
}

QString ApplicationTitle() {
    return QStringLiteral("Qorvale Works\u3000配管材");
}

int ShowTaskDialog(QWidget* form, const QString& title, const QString& instruction, int icon,
                   int buttons, const QString& content) {
    return CurrentDialogs().TaskDialog(form, cut(title), cut(instruction), icon, buttons,
                                       cut(content));
}

int ShowInfoDialog(QWidget* form, const QString& instruction, const QString& content) {
    return ShowTaskDialog(form, ApplicationTitle(), instruction, TaskDialog::IconNone,
                          TaskDialog::ButtonOk, content);
}
