#include "controls/numberedit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>

#include <memory>

namespace {

template <typename F> void guarded(const FailureHandler& onFailure, F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        reportControlFailure(onFailure, QString::fromUtf8(e.what()));
    }
}

} // namespace

NumberEdit::NumberEdit(QWidget* parent) : QLineEdit(parent) {
    setAlignment(numberAlignment() | Qt::AlignVCenter);
    QLineEdit::setText(QStringLiteral("0"));
    setAttribute(Qt::WA_InputMethodEnabled, false); // input method closed
    setAcceptDrops(false);                          // text comes in by keys and paste only
    connect(this, &QLineEdit::textChanged, this, [this](const QString&) { textChangedByBox(); });
}

NumberEdit::~NumberEdit() = default;

void NumberEdit::textChangedByBox() {
    guarded(onFailure, [this] { change(); });
}

void NumberEdit::setNumberText(const QString& value) {
    if (value == QLineEdit::text()) return;
    QLineEdit::setText(value);
}

int NumberEdit::selStart() const {
    return hasSelectedText() ? selectionStart() : cursorPosition();
}

int NumberEdit::selLength() const {
    return hasSelectedText() ? int(selectedText().size()) : 0;
}

void NumberEdit::setSelStart(int value) {
    deselect();
    setCursorPosition(qBound(0, value, int(QLineEdit::text().size())));
}

void NumberEdit::setSelLength(int value) {
    const int start = selStart();
    if (value <= 0)
        setSelStart(start);
    else
        setSelection(start, value);
}

bool NumberEdit::ctrlDown() const {
    return m_ctrlFromEvent || NumberEditCore::ctrlDown();
}

void NumberEdit::setEdited(bool value) {
    NumberEditCore::setEdited(value);
    setModified(value);
}

void NumberEdit::alignmentChanged() {
    setAlignment(numberAlignment() | Qt::AlignVCenter);
}

void NumberEdit::pasteFromClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasText()) return;
    const QString clip = data->text();
    guarded(onFailure, [&] { pasteText(clip); });
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        pasteFromClipboard();
        return;
    }
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut) ||
        event->matches(QKeySequence::SelectAll) || event->matches(QKeySequence::Undo) ||
        event->matches(QKeySequence::Redo)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    // The character the key types, as the desktop's character message has it.
    QChar ch;
    switch (event->key()) {
    case Qt::Key_Backspace:
        ch = QChar(8);
        break;
    case Qt::Key_Tab:
        ch = QChar(9);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ch = QChar(13);
        break;
    default:
        if (event->text().size() == 1) ch = event->text().at(0);
    }
    const bool navigation = ch.isNull();
    if (navigation) {
        // Keys without a character: caret movement, delete, arrows.
        QLineEdit::keyPressEvent(event);
        const ArrowKeyDirection direction = event->key() == Qt::Key_Up     ? adUp
                                            : event->key() == Qt::Key_Down ? adDown
                                                                           : adNone;
        guarded(onFailure, [&] { arrowKey(direction); });
        return;
    }
    m_ctrlFromEvent = event->modifiers().testFlag(Qt::ControlModifier);
    QChar key;
    guarded(onFailure, [&] { key = keyPressFilter(ch); });
    m_ctrlFromEvent = false;
    if (key.isNull()) return;
    if (onKeyPress) onKeyPress(this, key);
    if (key.isNull()) return;
    m_keyin = true;
    if (key == QChar(13) || key == QChar(9)) {
        event->ignore();
        return;
    }
    if (key == ch) {
        QLineEdit::keyPressEvent(event);
    } else if (key == QChar(8)) {
        backspace();
    } else {
        insert(QString(key));
    }
}

// A popup (context menu, completer) takes the focus for a moment only: the
// box is not left then, as on the desktop, where menus take no focus.
void NumberEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) doEnter();
}

void NumberEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) guarded(onFailure, [this] { doExit(); });
    QLineEdit::focusOutEvent(event);
}

QAction* NumberEdit::findPasteAction(QMenu* menu) {
    const QString shortcut = QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
    for (QAction* action : menu->actions()) {
        if (action->objectName() == QLatin1String("edit-paste")) return action;
        if (!shortcut.isEmpty() && action->text().section(QLatin1Char('\t'), 1) == shortcut)
            return action;
    }
    return nullptr;
}

void NumberEdit::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::MiddleButton) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    // The line edit would insert the selection's text as it stands; here it
    // is pasted like the clipboard, at the caret the press has set.
    event->accept();
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (isReadOnly() || !clipboard->supportsSelection()) return;
    const QMimeData* data = clipboard->mimeData(QClipboard::Selection);
    if (!data || !data->hasText()) return;
    const QString clip = data->text();
    deselect();
    guarded(onFailure, [&] { pasteText(clip); });
}

void NumberEdit::contextMenuEvent(QContextMenuEvent* event) {
    // The standard menu, with its paste going through the paste filter.
    std::unique_ptr<QMenu> menu(createStandardContextMenu());
    if (QAction* paste = findPasteAction(menu.get())) {
        disconnect(paste, &QAction::triggered, nullptr, nullptr);
        connect(paste, &QAction::triggered, this, [this] { pasteFromClipboard(); });
    }
    menu->exec(event->globalPos());
}
