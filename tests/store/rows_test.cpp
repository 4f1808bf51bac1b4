// Rows, options tables, change lines and the snapshot.
#include "store/piperow.h"
#include "support/ownworkspace.h"
#include "support/testing.h"

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromUtf8(t));
}

class RowsTest : public ::testing::Test, protected OwnWorkspace {};

TEST_F(RowsTest, RowLineFieldsAndOrder) {
    PipeRow r;
    r.setGoods("配管用炭素鋼鋼管");
    r.setSize("15A");
    r.setKind("屋内一般");
    r.modeFlag = 1;
    r.setUnit("ｍ");
    r.costPrice = c("750");
    r.submittedPrice = c("860.5");
    r.listPrice = c("1234");
    r.factor(1) = c("1.1");
    r.factor(5) = c("0.123");
    r.costUnitPrice = c("3463");
    r.submittedUnitPrice = c("4092");
    r.adoptedUnitPrice = c("4090");
    r.key = 7;
    r.sortOrder = c("3");
    r.otherMethod = 5;
    r.submittedAmounts[0] = c("946");
    EXPECT_EQ(rowLine(r), "配管用炭素鋼鋼管;15A;屋内一般;1;ｍ;750;860.5;1234;1.1;0;0;0;0.123;0;0;"
                          "3463;4092;4090;");
    // Text fields are cut to their width in bytes.
    r.setGoods(QString(81, 'x'));
    r.setKind(QString(30, QChar(0x914D)));
    r.setSize("1000A-X");
    r.setUnit("ｍｍｍ");
    EXPECT_EQ(QString("%1 %2 ").arg(r.goodsBytes.size()).arg(r.kindBytes.size()) + r.size() + ' ' +
                  r.unit(),
              "80 40 1000A- ｍｍ");
}

TEST_F(RowsTest, OptionIndexesAndRowPlaces) {
    for (auto [value, index] : {std::pair{"1", 0}, {"1000", 3}, {"4", 5}, {"-2", 7}, {"7", 0}})
        EXPECT_EQ(digitIndexOf(c(value)), index) << value;
    for (auto [value, index] : {std::pair{"0.9", 0}, {"0", 1}, {"0.5", 2}, {"0.4", 0}})
        EXPECT_EQ(fractionIndexOf(c(value)), index) << value;
    // row: tab, line
    for (auto [row, tab, line] : {std::tuple{1, 0, 1}, {15, 0, 15}, {16, 1, 1}, {60, 3, 15}})
        EXPECT_EQ(std::pair(tabOfRow(row), lineOfRow(row)), std::pair(tab, line)) << row;
}

TEST_F(RowsTest, SnapshotRestoreClearAndWhatCountsAsChange) {
    rows()[5].setGoods("鋼管");
    rows()[5].costPrice = c("100");
    rows()[5].submittedAmounts[3] = c("77");
    bool enabled = false;
    QObject::connect(&doc(), &PipeTypeDocument::undoAvailableChanged, [&](bool e) { enabled = e; });
    doc().takeSnapshot();
    EXPECT_TRUE(enabled);
    EXPECT_EQ(doc().snapshot()[5].submittedAmounts[3].raw, 0);
    rows()[5].costPrice = c("200");
    rows()[5].setGoods("changed");
    rows()[5].submittedAmounts[3] = c("88");
    doc().restoreSnapshot();
    EXPECT_EQ(rowLine(rows()[5]), "鋼管;;;0;;100;0;0;0;0;0;0;0;0;0;0;0;0;");
    EXPECT_EQ(rows()[5].submittedAmounts[3], c("88")); // CALC fields are left
    rows()[1].costPrice = c("1");
    rows()[2].costPrice = c("2");
    doc().takeSnapshot();
    doc().clearRows(0);
    EXPECT_EQ(rows()[1].costPrice, c("1"));
    doc().clearRows(1);
    EXPECT_EQ(rows()[1].costPrice.raw + doc().snapshot()[1].costPrice.raw, 0);
    EXPECT_EQ(rows()[2].costPrice, c("2"));

    // Fields not in the line do not count as a change.
    doc().takeSnapshot();
    doc().markSaved();
    rows()[3].sortOrder = c("9");
    rows()[3].key = 99;
    rows()[3].costAmounts[2] = c("5");
    doc().refreshLines();
    EXPECT_FALSE(doc().isChanged());
    rows()[3].factor(7) = c("0.0001");
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged());
}

} // namespace
