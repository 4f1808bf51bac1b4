// NumberEdit as a widget: real key events through QTest, focus changes,
// paste and Value writes.
#include "controls/numberedit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Edit : ::testing::Test {
    std::unique_ptr<QWidget> window;
    NumberEdit* edit = nullptr;
    QLineEdit* other = nullptr;
    int changes = 0;

    void SetUp() override {
        window = std::make_unique<QWidget>();
        edit = new NumberEdit(window.get());
        edit->setGeometry(0, 0, 120, 24);
        other = new QLineEdit(window.get());
        other->setGeometry(0, 30, 120, 24);
        edit->onChange = [this](ControlObject*) { ++changes; };
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        edit->setFocus();
        QApplication::processEvents();
    }
    void type(const char* keys) { QTest::keyClicks(edit, QString::fromLatin1(keys)); }
    void clear() {
        edit->setNumberText(QString());
        edit->setSelStart(0);
    }
};

TEST_F(Edit, StartsAtZeroRightAligned) {
    EXPECT_EQ(edit->text(), QStringLiteral("0"));
    EXPECT_TRUE(edit->alignment() & Qt::AlignRight);
    EXPECT_EQ(double(edit->value()), 0.0);
}

TEST_F(Edit, AlignmentIsHorizontalAndTheTextStaysCentredVertically) {
    EXPECT_EQ(edit->numberAlignment(), Qt::Alignment(Qt::AlignRight));
    EXPECT_EQ(edit->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    edit->setNumberAlignment(Qt::AlignLeft | Qt::AlignBottom);
    EXPECT_EQ(edit->numberAlignment(), Qt::Alignment(Qt::AlignLeft));
    EXPECT_EQ(edit->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    edit->setNumberAlignment(Qt::AlignHCenter);
    EXPECT_EQ(edit->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
}

TEST_F(Edit, ValueWritesShowTheRoundedText) {
    edit->setFigure(2);
    edit->setFixed(true);
    edit->setComma(true);
    edit->setValue(1234.5L);
    EXPECT_EQ(edit->text(), QStringLiteral("1,234.50"));
    EXPECT_EQ(double(edit->value()), 1234.5);
    edit->setComma(false);
    edit->setFixed(false);
    edit->setFigure(1);
    edit->setRoundMode(rmRound);
    edit->setValue(-12.96L);
    EXPECT_EQ(edit->text(), QStringLiteral("-13.0"));
    edit->setFigure(0);
    edit->setRoundMode(rmUp);
    edit->setValue(1.2L);
    EXPECT_EQ(edit->text(), QStringLiteral("2"));
}

TEST_F(Edit, ThousandsSeparatorsWhileTypingKeepTheCaretBehindTheDigit) {
    edit->setComma(true);
    clear();
    type("1234");
    EXPECT_EQ(edit->text(), QStringLiteral("1,234"));
    EXPECT_EQ(edit->cursorPosition(), 5);
    type("5");
    EXPECT_EQ(edit->text(), QStringLiteral("12,345"));
    EXPECT_EQ(edit->cursorPosition(), 6);
    // Typing in the middle: the caret stays behind the typed digit.
    edit->setCursorPosition(1);
    type("9");
    EXPECT_EQ(edit->text(), QStringLiteral("192,345"));
    EXPECT_EQ(edit->cursorPosition(), 2);
    EXPECT_EQ(double(edit->value()), 192345.0);
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("12,345"));
    EXPECT_EQ(edit->cursorPosition(), 1);
}

TEST_F(Edit, FilterSignsAndDigitLimit) {
    clear();
    type("1a2");
    EXPECT_EQ(edit->text(), QStringLiteral("12"));
    for (int caret = 0; caret <= 2; ++caret) {
        edit->setCursorPosition(caret);
        QTest::keyClick(edit, Qt::Key_Minus);
        EXPECT_EQ(edit->text(), QStringLiteral("-12"));
        QTest::keyClick(edit, Qt::Key_Minus);
        EXPECT_EQ(edit->text(), QStringLiteral("12"));
    }
    int presses = 0;
    edit->onKeyPress = [&](ControlObject*, QChar&) { ++presses; };
    QTest::keyClick(edit, Qt::Key_Plus);
    EXPECT_EQ(edit->text(), QStringLiteral("+12"));
    EXPECT_EQ(presses, 0); // no onKeyPress for a sign
    type(".5.");
    EXPECT_EQ(edit->text(), QStringLiteral("+12.5"));
    EXPECT_EQ(presses, 2);

    edit->setMaxIntLength(3);
    clear();
    type("1234");
    EXPECT_EQ(edit->text(), QStringLiteral("123"));
    type(".45");
    EXPECT_EQ(edit->text(), QStringLiteral("123.45"));
    edit->setSelection(0, 1);
    type("9");
    EXPECT_EQ(edit->text(), QStringLiteral("923.45"));
}

TEST_F(Edit, LeavingTheBoxFormatsWithoutOnChange) {
    edit->setFigure(2);
    edit->setFixed(true);
    clear();
    type("1.239");
    EXPECT_EQ(edit->text(), QStringLiteral("1.239")); // digits past figure stay while typing
    EXPECT_EQ(double(edit->value()), 1.23);
    const int before = changes;
    other->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(edit->text(), QStringLiteral("1.23"));
    EXPECT_EQ(changes, before);
    EXPECT_TRUE(edit->isModified());

    edit->setFocus();
    edit->setNumberText(QString());
    other->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(edit->text(), QStringLiteral("0.00"));
}

TEST_F(Edit, ArrowKeysStepAndWrap) {
    edit->setAllowKeys(true);
    edit->setMax(10);
    edit->setMin(1);
    edit->setLimit(true);
    edit->setValue(9);
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("10"));
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("10"));
    edit->setWrap(true);
    QTest::keyClick(edit, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("1"));
    QTest::keyClick(edit, Qt::Key_Down);
    EXPECT_EQ(edit->text(), QStringLiteral("10"));
}

TEST_F(Edit, PasteGoesThroughTheFilter) {
    QApplication::clipboard()->setText(QStringLiteral("1,2x3.4.5"));
    clear();
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), QStringLiteral("123.45"));
    EXPECT_EQ(double(edit->value()), 123.45);
    // The context menu's paste is found by name and rerouted to the filter.
    std::unique_ptr<QMenu> menu(edit->createStandardContextMenu());
    QAction* paste = NumberEdit::findPasteAction(menu.get());
    ASSERT_NE(paste, nullptr);
    EXPECT_TRUE(paste->text().contains(QStringLiteral("Paste")));

    // Through the context menu itself.
    QApplication::clipboard()->setText(QStringLiteral("-9x9"));
    clear();
    QTimer::singleShot(50, [] {
        if (auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            NumberEdit::findPasteAction(popup)->trigger();
            popup->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            edit->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(edit, &event);
    EXPECT_EQ(edit->text(), QStringLiteral("-99"));
}

TEST_F(Edit, MiddleClickPasteGoesThroughTheFilter) {
    QClipboard* clipboard = QApplication::clipboard();
    clear();
    type("12");
    if (clipboard->supportsSelection())
        clipboard->setText(QStringLiteral("3x,4"), QClipboard::Selection);
    QTest::mouseClick(edit, Qt::MiddleButton, Qt::NoModifier, QPoint(2, 12));
    // Where the platform has a selection to paste, it arrives filtered;
    // elsewhere the click changes nothing.
    if (clipboard->supportsSelection())
        EXPECT_EQ(edit->text(), QStringLiteral("3412"));
    else
        EXPECT_EQ(edit->text(), QStringLiteral("12"));
}

TEST_F(Edit, ConversionErrorsGoToTheHandlerAndLeaveTheText) {
    QString reported;
    edit->onFailure = [&](const QString& m) { reported = m; };
    clear();
    type("-.");
    EXPECT_EQ(edit->text(), QStringLiteral("-."));
    EXPECT_FALSE(reported.isEmpty());
    edit->onFailure = nullptr;
}

} // namespace
