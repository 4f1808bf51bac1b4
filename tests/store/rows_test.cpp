// Rows, options tables, change lines and the snapshot.
#include "store/piperow.h"
#include "support/ownworkspace.h"

#include <gtest/gtest.h>

namespace {

Currency C(const char* t) {
    return StrToCurr(QString::fromUtf8(t));
}
QString U(const char* t) {
    return QString::fromUtf8(t);
}

class RowsTest : public ::testing::Test, protected OwnWorkspace {};

TEST_F(RowsTest, RowLineFieldsAndOrder) {
    PipeRow r;
    r.setGoods(U("配管用炭素鋼鋼管"));
    r.setSize(U("15A"));
    r.setKind(U("屋内一般"));
    r.modeFlag = 1;
    r.setUnit(U("ｍ"));
    r.costPrice = C("750");
    r.submittedPrice = C("860.5");
    r.listPrice = C("1234");
    r.factor(1) = C("1.1");
    r.factor(5) = C("0.123");
    r.costUnitPrice = C("3463");
    r.submittedUnitPrice = C("4092");
    r.adoptedUnitPrice = C("4090");
    r.key = 7;
    r.sortOrder = C("3");
    r.otherMethod = 5;
    r.submittedAmounts[0] = C("946");
    EXPECT_EQ(RowLine(r), U("配管用炭素鋼鋼管;15A;屋内一般;1;ｍ;750;860.5;1234;1.1;0;0;0;0.123;0;0;"
                            "3463;4092;4090;"));
}

TEST_F(RowsTest, FieldsNotInTheLineDoNotCountAsChange) {
    doc().takeSnapshot();
    doc().markSaved();
    rows()[3].sortOrder = C("9");
    rows()[3].otherMethod = 2;
    rows()[3].key = 99;
    rows()[3].costAmounts[2] = C("5");
    doc().refreshLines();
    EXPECT_FALSE(doc().isChanged());
    rows()[3].factor(7) = C("0.0001");
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(RowsTest, TextFieldsAreCutToTheirWidth) {
    PipeRow r;
    r.setGoods(QString(81, QLatin1Char('x')));
    EXPECT_EQ(r.goodsBytes.size(), 80);
    r.setKind(QString(30, QChar(0x914D)));
    EXPECT_EQ(r.kindBytes.size(), 40);
    r.setSize(U("1000A-X"));
    EXPECT_EQ(r.size(), U("1000A-"));
    r.setUnit(U("ｍｍｍ"));
    EXPECT_EQ(r.unit(), U("ｍｍ"));
}

TEST_F(RowsTest, SnapshotCopiesAllButCalcAndRestoreBringsBack) {
    rows()[5].setGoods(U("鋼管"));
    rows()[5].costPrice = C("100");
    rows()[5].key = 5;
    rows()[5].submittedAmounts[3] = C("77");
    bool enabled = false;
    QObject::connect(&doc(), &PipeTypeDocument::undoAvailableChanged, [&](bool e) { enabled = e; });
    doc().takeSnapshot();
    EXPECT_TRUE(enabled);
    EXPECT_EQ(doc().currentLines().size(), 60);
    EXPECT_EQ(doc().snapshot()[5].costPrice, C("100"));
    EXPECT_EQ(doc().snapshot()[5].submittedAmounts[3].raw, 0);

    rows()[5].costPrice = C("200");
    rows()[5].setGoods(U("changed"));
    rows()[5].submittedAmounts[3] = C("88");
    doc().restoreSnapshot();
    EXPECT_EQ(rows()[5].costPrice, C("100"));
    EXPECT_EQ(rows()[5].goods(), U("鋼管"));
    EXPECT_EQ(rows()[5].submittedAmounts[3], C("88")); // CALC fields are left
}

TEST_F(RowsTest, ClearRowsClearsBothTablesUpToCount) {
    rows()[1].costPrice = C("1");
    doc().takeSnapshot();
    rows()[2].costPrice = C("2");
    doc().clearRows(0);
    EXPECT_EQ(rows()[1].costPrice, C("1"));
    doc().clearRows(1);
    EXPECT_EQ(rows()[1].costPrice.raw, 0);
    EXPECT_EQ(doc().snapshot()[1].costPrice.raw, 0);
    EXPECT_EQ(rows()[2].costPrice, C("2"));
}

TEST_F(RowsTest, OptionIndexLookups) {
    EXPECT_EQ(DigitIndexOf(C("1")), 0);
    EXPECT_EQ(DigitIndexOf(C("1000")), 3);
    EXPECT_EQ(DigitIndexOf(C("4")), 5);
    EXPECT_EQ(DigitIndexOf(C("-2")), 7);
    EXPECT_EQ(DigitIndexOf(C("7")), 0);
    EXPECT_EQ(FractionIndexOf(C("0.9")), 0);
    EXPECT_EQ(FractionIndexOf(C("0")), 1);
    EXPECT_EQ(FractionIndexOf(C("0.5")), 2);
    EXPECT_EQ(FractionIndexOf(C("0.4")), 0);
}

TEST_F(RowsTest, OptionsRideInRowSixty) {
    PipeTypeOptions o = doc().options();
    o.OtherMethod() = 1;
    o.ModeFlag() = 1;
    o.RateCost() = C("60");
    o.RateSubmitted() = C("70");
    o.AdoptedDigits() = C("10");
    o.AdoptedFraction() = C("0.5");
    o.LabourCost() = C("15000");
    o.LabourSubmitted() = C("18000");
    o.ElementDigits() = C("100");
    o.ElementFraction() = C("0.9");
    o.RateOn() = C("1");
    o.UnitDigits() = C("1000");
    o.UnitFraction() = C("0");
    const PipeRow& r = rows()[60];
    EXPECT_EQ(r.otherMethod, 1);
    EXPECT_EQ(r.modeFlag, 1);
    EXPECT_EQ(r.costPrice, C("60"));
    EXPECT_EQ(r.submittedPrice, C("70"));
    EXPECT_EQ(r.factor(2), C("10"));
    EXPECT_EQ(r.factor(3), C("0.5"));
    EXPECT_EQ(r.factor(4), C("15000"));
    EXPECT_EQ(r.factor(5), C("18000"));
    EXPECT_EQ(r.factor(6), C("100"));
    EXPECT_EQ(r.factor(7), C("0.9"));
    EXPECT_EQ(r.costUnitPrice, C("1"));
    EXPECT_EQ(r.submittedUnitPrice, C("1000"));
    EXPECT_EQ(r.adoptedUnitPrice, C("0"));
}

TEST_F(RowsTest, TabAndLineOfRow) {
    EXPECT_EQ(TabOfRow(1), 0);
    EXPECT_EQ(LineOfRow(1), 1);
    EXPECT_EQ(TabOfRow(15), 0);
    EXPECT_EQ(LineOfRow(15), 15);
    EXPECT_EQ(TabOfRow(16), 1);
    EXPECT_EQ(LineOfRow(16), 1);
    EXPECT_EQ(TabOfRow(60), 3);
    EXPECT_EQ(LineOfRow(60), 15);
}

} // namespace
