// NumberEdit as a widget: what only the widget does (keys, focus, the caret and selection of the
// line edit, alignment, the paste paths); the logic itself is in numbereditcore_test.
#include "controls/numberedit.h"
#include "support/guitesting.h"

#include <QContextMenuEvent>

namespace {

struct Edit : ::testing::Test {
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    NumberEdit* edit = new NumberEdit(window.get());
    QLineEdit* other = new QLineEdit(window.get());
    int changes = 0;

    void SetUp() override {
        edit->onChange = [this](ControlObject*) { ++changes; };
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        edit->setFocus();
        QApplication::processEvents();
    }
    // Types the keys ("\b": Backspace) and gives the text and the caret then, as "text|caret".
    QString typed(const char* keys) {
        QTest::keyClicks(edit, QString::fromLatin1(keys));
        return edit->text() + '|' + QString::number(edit->cursorPosition());
    }
    QString pressed(Qt::Key key, Qt::KeyboardModifiers mods = {}) {
        QTest::keyClick(edit, key, mods);
        return edit->text();
    }
    void clear() {
        edit->setNumberText(QString());
        edit->setSelStart(0);
    }
};

// The caret stays behind the digit typed as separators come and go; keys the filter takes fire no
// onKeyPress; a selection is typed over; arrows step only when allowed; pastes go through the
// filter. Leaving the box formats the text without an onChange.
TEST_F(Edit, KeysAndPastesReachTheLogicWithTheCaretOfTheBox) {
    EXPECT_EQ(edit->text(), "0");
    EXPECT_EQ(edit->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    edit->setNumberAlignment(Qt::AlignLeft | Qt::AlignBottom);
    EXPECT_EQ(edit->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    edit->setComma(true);
    clear();
    EXPECT_EQ(typed("1234"), "1,234|5");
    edit->setCursorPosition(1);
    EXPECT_EQ(typed("9"), "19,234|2");
    EXPECT_EQ(typed("\b"), "1,234|1");

    edit->setComma(false);
    clear();
    int presses = 0;
    edit->onKeyPress = [&](ControlObject*, QChar&) { ++presses; };
    EXPECT_EQ(typed("1a2.5."), "12.5|4");
    EXPECT_EQ(presses, 4);
    edit->setMaxIntLength(3);
    edit->setNumberText("123.45");
    edit->setSelection(0, 1);
    EXPECT_EQ(typed("9"), "923.45|1");

    edit->setValue(9);
    EXPECT_EQ(pressed(Qt::Key_Up), "9");
    edit->setAllowKeys(true);
    EXPECT_EQ(pressed(Qt::Key_Up), "10");
    EXPECT_EQ(pressed(Qt::Key_Down), "9");

    // Ctrl+V, the context menu's paste and the middle button all go through the paste filter; a
    // conversion error goes to the handler and leaves the text.
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText("1,2x3.4.5");
    clear();
    EXPECT_EQ(pressed(Qt::Key_V, Qt::ControlModifier), "123.45");

    clipboard->setText("-9x9");
    clear();
    QTimer::singleShot(50, [] {
        if (auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            NumberEdit::findPasteAction(popup)->trigger();
            popup->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, edit->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(edit, &event);
    EXPECT_EQ(edit->text(), "-99");

    // Where the platform has a selection to paste, it arrives filtered; elsewhere the click
    // changes nothing.
    clear();
    typed("12");
    const bool selection = clipboard->supportsSelection();
    if (selection) clipboard->setText("3x,4", QClipboard::Selection);
    QTest::mouseClick(edit, Qt::MiddleButton, Qt::NoModifier, QPoint(2, 12));
    EXPECT_EQ(edit->text(), selection ? "3412" : "12");

    QString reported;
    edit->onFailure = [&](const QString& m) { reported = m; };
    clear();
    EXPECT_EQ(typed("-."), "-.|2");
    EXPECT_FALSE(reported.isEmpty());
    edit->onFailure = nullptr;

    edit->setFigure(2);
    edit->setFixed(true);
    clear();
    EXPECT_EQ(typed("1.239"), "1.239|5"); // digits past figure stay while typing
    EXPECT_EQ(double(edit->value()), 1.23);
    const int before = changes;
    other->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(std::tuple(edit->text(), changes, edit->isModified()),
              std::tuple(QString("1.23"), before, true));
}

} // namespace
