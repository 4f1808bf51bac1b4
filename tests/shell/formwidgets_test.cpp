// The framework-style standard controls: events on programmatic and person's
// changes, Enter reported once.
#include "shell/formwidgets.h"
#include "support/guitesting.h"

#include <QRadioButton>

namespace {

// A click of the person fires onClicked; a change of the program fires it
// for the check box alone, and for the radio group when it changes.
TEST(SwitchCheckBoxListAndRadioGroup, AClickReportsAndOnlyTheCheckBoxReportsTheProgramsChange) {
    ToggleSwitch sw("計算結果を表示", "歩掛を表示");
    CheckBox box("単価に掛率を使用");
    FixedList list({"a", "b"});
    int clicks = 0, boxClicks = 0, selects = 0;
    sw.onClicked = [&] { ++clicks; };
    box.onClicked = [&] { ++boxClicks; };
    list.onSelect = [&] { ++selects; };
    sw.resize(sw.sizeHint());
    sw.show();
    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_TRUE(sw.isOn());
    sw.setOn(false);
    EXPECT_EQ(std::pair(sw.isOn(), clicks), std::pair(false, 1));
    box.SetChecked(true); // checked already
    box.SetChecked(false);
    EXPECT_EQ(std::pair(box.checked(), boxClicks), std::pair(false, 1));
    list.setItemIndex(1);
    EXPECT_EQ(std::pair(list.itemIndex(), selects), std::pair(1, 0));

    // A radio group fires onClicked for a change, of the program or a click.
    RadioGroup group("モード", {"配管モード", "冷媒モード"});
    clicks = 0;
    group.onClicked = [&] { ++clicks; };
    EXPECT_EQ(group.itemIndex(), -1);
    group.setItemIndex(0);
    group.setItemIndex(0);
    group.setItemIndex(7); // clamped to the last item
    EXPECT_EQ(std::pair(group.itemIndex(), clicks), std::pair(1, 2));
    group.show();
    auto buttons = group.findChildren<QRadioButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton, {}, QPoint(5, buttons[0]->height() / 2));
    EXPECT_EQ(std::pair(group.itemIndex(), clicks), std::pair(0, 3));
}

TEST(EditCombo, EnterIsReportedOnceAndCanBeSwallowed) {
    EditCombo combo;
    combo.addItems({"ガス", "給水"});
    int enters = 0, others = 0;
    combo.onKeyPress = [&](int key, bool& handled) {
        handled = key == Qt::Key_Return;
        ++(handled ? enters : others);
    };
    combo.show();
    combo.setFocus();
    combo.setText(QString());
    QTest::keyClicks(&combo, "abc");
    EXPECT_EQ(combo.text() + QString::number(others), "abc3");
    QTest::keyClick(&combo, Qt::Key_Return);
    EXPECT_EQ(std::pair(enters, combo.count()), std::pair(1, 2)); // nothing inserted in the list
}

} // namespace
