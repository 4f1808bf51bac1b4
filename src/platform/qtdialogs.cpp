#include "platform/qtdialogs.h"

#include "platform/guithread.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QThread>
#include <QUrl>

#include <exception>
#include <type_traits>
#include <utility>

namespace TD = ::TaskDialog;

namespace {

struct ButtonMap {
    int bit;
    int id;
    QMessageBox::StandardButton button;
    const char* caption; // UTF-8
};
// In the order a task dialog lays them out, with the captions the person
// reads, whatever language Qt's own texts are in.
constexpr ButtonMap Buttons[] = {
    {TD::ButtonOk, TD::IdOk, QMessageBox::Ok, "OK"},
    {TD::ButtonYes, TD::IdYes, QMessageBox::Yes, "はい"},
    {TD::ButtonNo, TD::IdNo, QMessageBox::No, "いいえ"},
    {TD::ButtonRetry, TD::IdRetry, QMessageBox::Retry, "再試行"},
    {TD::ButtonCancel, TD::IdCancel, QMessageBox::Cancel, "キャンセル"},
    {TD::ButtonClose, TD::IdClose, QMessageBox::Close, "閉じる"},
    {TD::ButtonOverwrite, TD::IdOverwrite, QMessageBox::Save, "上書き保存"},
    {TD::ButtonReload, TD::IdReload, QMessageBox::Reset, "読み直す"},
};

QMessageBox::Icon boxIcon(int icon) {
    switch (icon) {
    case TD::IconError:
        return QMessageBox::Critical;
    case TD::IconQuestion:
        return QMessageBox::Question;
    case TD::IconWarning:
        return QMessageBox::Warning;
    case TD::IconInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// A box that comes while the program shows the wait cursor (a save waiting
// for a lock) is answered with the ordinary pointer.
class ArrowWhileAsking {
public:
    ArrowWhileAsking() : active_(QGuiApplication::overrideCursor() != nullptr) {
        if (active_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~ArrowWhileAsking() {
        if (active_) QGuiApplication::restoreOverrideCursor();
    }
    ArrowWhileAsking(const ArrowWhileAsking&) = delete;
    ArrowWhileAsking& operator=(const ArrowWhileAsking&) = delete;

private:
    bool active_;
};

QWidget* owner(QWidget* parent) {
    return parent ? parent : QApplication::activeWindow();
}

} // namespace

int QtDialogs::taskDialog(QWidget* parent, const QString& title, const QString& instruction,
                          int icon, int buttons, const QString& content) {
    return onGuiThread([&]() -> int {
        const int shown = buttons & TD::AllButtons ? buttons : TD::ButtonOk;
        QMessageBox box(owner(parent));
        box.setWindowTitle(title);
        box.setIcon(boxIcon(icon));
        box.setText(instruction);
        box.setInformativeText(content);
        box.setTextFormat(Qt::PlainText);

        QAbstractButton* escape = nullptr;
        QPushButton* first = nullptr;
        for (const ButtonMap& m : Buttons) {
            if (!(shown & m.bit)) continue;
            QPushButton* b = box.addButton(m.button);
            b->setText(QString::fromUtf8(m.caption));
            if (!first) first = b;
            if (m.id == TD::IdCancel) escape = b;
            if (m.id == TD::IdClose && !escape) escape = b;
        }
        if (!escape && shown == TD::ButtonOk) escape = first;
        // Enter must not write over another's change.
        QPushButton* cancel = qobject_cast<QPushButton*>(escape);
        box.setDefaultButton(shown & TD::ButtonOverwrite && cancel ? cancel : first);
        const ArrowWhileAsking arrow;
        box.setEscapeButton(escape);
        box.exec();

        const QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
        for (const ButtonMap& m : Buttons)
            if (m.button == pressed) return m.id;
        return TD::IdNone;
    });
}

void QtDialogs::message(QWidget* parent, const QString& title, const QString& text) {
    onGuiThread([&] {
        QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, owner(parent));
        box.button(QMessageBox::Ok)->setText(QStringLiteral("OK"));
        box.setTextFormat(Qt::PlainText);
        const ArrowWhileAsking arrow;
        box.exec();
    });
}

bool QtDialogs::inputQuery(QWidget* parent, const QString& title, const QString& prompt,
                           QString& value) {
    return onGuiThread([&] {
        QInputDialog dialog(owner(parent));
        dialog.setWindowTitle(title);
        dialog.setLabelText(prompt);
        dialog.setTextValue(value);
        dialog.setOkButtonText(QStringLiteral("OK"));
        dialog.setCancelButtonText(QStringLiteral("キャンセル"));
        if (dialog.exec() != QDialog::Accepted) return false;
        value = dialog.textValue();
        return true;
    });
}

QString QtDialogs::openFileName(QWidget* parent, const QString& title, const QString& dir,
                                const QString& filter) {
    return onGuiThread(
        [&] { return QFileDialog::getOpenFileName(owner(parent), title, dir, filter); });
}

QString QtDialogs::saveFileName(QWidget* parent, const QString& title, const QString& dir,
                                const QString& filter) {
    return onGuiThread(
        [&] { return QFileDialog::getSaveFileName(owner(parent), title, dir, filter); });
}

QString QtDialogs::folderName(QWidget* parent, const QString& title, const QString& dir) {
    return onGuiThread(
        [&] { return QFileDialog::getExistingDirectory(owner(parent), title, dir); });
}

QString QtDialogs::clipboardText() {
    return onGuiThread([] { return QGuiApplication::clipboard()->text(); });
}

void QtDialogs::setClipboardText(const QString& text) {
    // Nothing comes back, so a worker (a save of the group recalculation)
    // goes on at once; the texts land in the order they were set.
    postToGuiThread([text] { QGuiApplication::clipboard()->setText(text); });
}

void QtDialogs::beep() {
    onGuiThread([] { QApplication::beep(); });
}

// Starting a process needs no GUI thread.
bool QtDialogs::startProcess(const QString& program, const QStringList& arguments,
                             const QString& workingDir) {
    return QProcess::startDetached(program, arguments, workingDir);
}

bool QtDialogs::openDocument(const QString& path) {
    return onGuiThread([&] {
        static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
        const bool isUrl = scheme.match(path).hasMatch() && !QFileInfo::exists(path);
        return QDesktopServices::openUrl(isUrl ? QUrl(path) : QUrl::fromLocalFile(path));
    });
}
