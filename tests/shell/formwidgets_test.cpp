// The framework-style standard controls: events on programmatic and person's
// changes, Enter reported once.
#include "shell/formwidgets.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TEST(RadioGroup, ProgramAndClickFireOnClickOnChange) {
    RadioGroup group(QStringLiteral("モード"),
                     {QStringLiteral("配管モード"), QStringLiteral("冷媒モード")});
    int clicks = 0;
    group.onClicked = [&] { ++clicks; };
    EXPECT_EQ(group.itemIndex(), -1);
    group.setItemIndex(0);
    EXPECT_EQ(clicks, 1);
    group.setItemIndex(0);
    EXPECT_EQ(clicks, 1);
    group.setItemIndex(7); // clamped to the last item
    EXPECT_EQ(group.itemIndex(), 1);
    EXPECT_EQ(clicks, 2);
    group.show();
    auto buttons = group.findChildren<QRadioButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton, {}, QPoint(5, buttons[0]->height() / 2));
    EXPECT_EQ(group.itemIndex(), 0);
    EXPECT_EQ(clicks, 3);
    EXPECT_TRUE(buttons[0]->isChecked());
}

TEST(ToggleSwitch, ClickTogglesAndReports) {
    ToggleSwitch sw(QStringLiteral("計算結果を表示"), QStringLiteral("歩掛を表示"));
    int clicks = 0;
    sw.onClicked = [&] { ++clicks; };
    sw.resize(sw.sizeHint());
    sw.show();
    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_TRUE(sw.isOn());
    EXPECT_EQ(clicks, 1);
    sw.setOn(false); // the program's change is no click
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(sw.isOn());
}

TEST(CheckBox, ProgramChangeFiresOnClick) {
    CheckBox box(QStringLiteral("単価に掛率を使用"));
    int clicks = 0;
    box.onClicked = [&] { ++clicks; };
    EXPECT_TRUE(box.checked());
    box.SetChecked(true);
    EXPECT_EQ(clicks, 0);
    box.SetChecked(false);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(box.checked());
}

TEST(EditCombo, EnterIsReportedOnceAndCanBeSwallowed) {
    EditCombo combo;
    combo.addItems({QStringLiteral("ガス"), QStringLiteral("給水")});
    int enters = 0, others = 0;
    combo.onKeyPress = [&](int key, bool& handled) {
        if (key == Qt::Key_Return) {
            ++enters;
            handled = true;
        } else {
            ++others;
        }
    };
    combo.show();
    combo.setFocus();
    combo.setText(QString());
    QTest::keyClicks(&combo, "abc");
    EXPECT_EQ(combo.text(), "abc");
    EXPECT_EQ(others, 3);
    QTest::keyClick(&combo, Qt::Key_Return);
    EXPECT_EQ(enters, 1);
    EXPECT_EQ(combo.count(), 2); // nothing inserted into the list
}

TEST(FixedList, ProgramChangeIsSilent) {
    FixedList list({QStringLiteral("a"), QStringLiteral("b")});
    int selects = 0;
    list.onSelect = [&] { ++selects; };
    list.setItemIndex(1);
    EXPECT_EQ(list.itemIndex(), 1);
    EXPECT_EQ(selects, 0);
}

} // namespace
