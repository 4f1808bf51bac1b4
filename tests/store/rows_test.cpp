// Rows, options tables, change lines and the snapshot.
#include "store/piperow.h"
#include "support/ownworkspace.h"

#include <gtest/gtest.h>

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromUtf8(t));
}
QString u(const char* t) {
    return QString::fromUtf8(t);
}

class RowsTest : public ::testing::Test, protected OwnWorkspace {};

TEST_F(RowsTest, RowLineFieldsAndOrder) {
    PipeRow r;
    r.setGoods(u("配管用炭素鋼鋼管"));
    r.setSize(u("15A"));
    r.setKind(u("屋内一般"));
    r.modeFlag = 1;
    r.setUnit(u("ｍ"));
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
    EXPECT_EQ(rowLine(r), u("配管用炭素鋼鋼管;15A;屋内一般;1;ｍ;750;860.5;1234;1.1;0;0;0;0.123;0;0;"
                            "3463;4092;4090;"));
}

TEST_F(RowsTest, FieldsNotInTheLineDoNotCountAsChange) {
    doc().takeSnapshot();
    doc().markSaved();
    rows()[3].sortOrder = c("9");
    rows()[3].otherMethod = 2;
    rows()[3].key = 99;
    rows()[3].costAmounts[2] = c("5");
    doc().refreshLines();
    EXPECT_FALSE(doc().isChanged());
    rows()[3].factor(7) = c("0.0001");
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(RowsTest, TextFieldsAreCutToTheirWidth) {
    PipeRow r;
    r.setGoods(QString(81, QLatin1Char('x')));
    EXPECT_EQ(r.goodsBytes.size(), 80);
    r.setKind(QString(30, QChar(0x914D)));
    EXPECT_EQ(r.kindBytes.size(), 40);
    r.setSize(u("1000A-X"));
    EXPECT_EQ(r.size(), u("1000A-"));
    r.setUnit(u("ｍｍｍ"));
    EXPECT_EQ(r.unit(), u("ｍｍ"));
}

TEST_F(RowsTest, SnapshotCopiesAllButCalcAndRestoreBringsBack) {
    rows()[5].setGoods(u("鋼管"));
    rows()[5].costPrice = c("100");
    rows()[5].key = 5;
    rows()[5].submittedAmounts[3] = c("77");
    bool enabled = false;
    QObject::connect(&doc(), &PipeTypeDocument::undoAvailableChanged, [&](bool e) { enabled = e; });
    doc().takeSnapshot();
    EXPECT_TRUE(enabled);
    EXPECT_EQ(doc().currentLines().size(), 60);
    EXPECT_EQ(doc().snapshot()[5].costPrice, c("100"));
    EXPECT_EQ(doc().snapshot()[5].submittedAmounts[3].raw, 0);

    rows()[5].costPrice = c("200");
    rows()[5].setGoods(u("changed"));
    rows()[5].submittedAmounts[3] = c("88");
    doc().restoreSnapshot();
    EXPECT_EQ(rows()[5].costPrice, c("100"));
    EXPECT_EQ(rows()[5].goods(), u("鋼管"));
    EXPECT_EQ(rows()[5].submittedAmounts[3], c("88")); // CALC fields are left
}

TEST_F(RowsTest, ClearRowsClearsBothTablesUpToCount) {
    rows()[1].costPrice = c("1");
    doc().takeSnapshot();
    rows()[2].costPrice = c("2");
    doc().clearRows(0);
    EXPECT_EQ(rows()[1].costPrice, c("1"));
    doc().clearRows(1);
    EXPECT_EQ(rows()[1].costPrice.raw, 0);
    EXPECT_EQ(doc().snapshot()[1].costPrice.raw, 0);
    EXPECT_EQ(rows()[2].costPrice, c("2"));
}

TEST_F(RowsTest, OptionIndexLookups) {
    EXPECT_EQ(digitIndexOf(c("1")), 0);
    EXPECT_EQ(digitIndexOf(c("1000")), 3);
    EXPECT_EQ(digitIndexOf(c("4")), 5);
    EXPECT_EQ(digitIndexOf(c("-2")), 7);
    EXPECT_EQ(digitIndexOf(c("7")), 0);
    EXPECT_EQ(fractionIndexOf(c("0.9")), 0);
    EXPECT_EQ(fractionIndexOf(c("0")), 1);
    EXPECT_EQ(fractionIndexOf(c("0.5")), 2);
    EXPECT_EQ(fractionIndexOf(c("0.4")), 0);
}

TEST_F(RowsTest, OptionsRideInRowSixty) {
    PipeTypeOptions o = doc().options();
    o.otherMethod() = 1;
    o.modeFlag() = 1;
    o.rateCost() = c("60");
    o.rateSubmitted() = c("70");
    o.adoptedDigits() = c("10");
    o.adoptedFraction() = c("0.5");
    o.labourCost() = c("15000");
    o.labourSubmitted() = c("18000");
    o.elementDigits() = c("100");
    o.elementFraction() = c("0.9");
    o.rateOn() = c("1");
    o.unitDigits() = c("1000");
    o.unitFraction() = c("0");
    const PipeRow& r = rows()[60];
    EXPECT_EQ(r.otherMethod, 1);
    EXPECT_EQ(r.modeFlag, 1);
    EXPECT_EQ(r.costPrice, c("60"));
    EXPECT_EQ(r.submittedPrice, c("70"));
    EXPECT_EQ(r.factor(2), c("10"));
    EXPECT_EQ(r.factor(3), c("0.5"));
    EXPECT_EQ(r.factor(4), c("15000"));
    EXPECT_EQ(r.factor(5), c("18000"));
    EXPECT_EQ(r.factor(6), c("100"));
    EXPECT_EQ(r.factor(7), c("0.9"));
    EXPECT_EQ(r.costUnitPrice, c("1"));
    EXPECT_EQ(r.submittedUnitPrice, c("1000"));
    EXPECT_EQ(r.adoptedUnitPrice, c("0"));
}

TEST_F(RowsTest, TabAndLineOfRow) {
    EXPECT_EQ(tabOfRow(1), 0);
    EXPECT_EQ(lineOfRow(1), 1);
    EXPECT_EQ(tabOfRow(15), 0);
    EXPECT_EQ(lineOfRow(15), 15);
    EXPECT_EQ(tabOfRow(16), 1);
    EXPECT_EQ(lineOfRow(16), 1);
    EXPECT_EQ(tabOfRow(60), 3);
    EXPECT_EQ(lineOfRow(60), 15);
}

} // namespace
