// Rows, options tables, change lines and the snapshot.
#include "store/ex_general.h"
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
    Fuzokurecordtypex r;
    r.SetGoods(U("配管用炭素鋼鋼管"));
    r.SetSize(U("15A"));
    r.SetKind(U("屋内一般"));
    r.FLAG = 1;
    r.SetCi(U("ｍ"));
    r.NET = C("750");
    r.GROSS = C("860.5");
    r.TEIKA = C("1234");
    r.Data(1) = C("1.1");
    r.Data(5) = C("0.123");
    r.NTANKA = C("3463");
    r.GTANKA = C("4092");
    r.FTANKA = C("4090");
    r.UKEY = 7;
    r.SORT = C("3");
    r.YOSAN = 5;
    r.CALC_G[0] = C("946");
    EXPECT_EQ(RowLine(r), U("配管用炭素鋼鋼管;15A;屋内一般;1;ｍ;750;860.5;1234;1.1;0;0;0;0.123;0;0;"
                            "3463;4092;4090;"));
}

TEST_F(RowsTest, FieldsNotInTheLineDoNotCountAsChange) {
    doc().takeSnapshot();
    doc().markSaved();
    rows()[3].SORT = C("9");
    rows()[3].YOSAN = 2;
    rows()[3].UKEY = 99;
    rows()[3].CALC_N[2] = C("5");
    doc().refreshLines();
    EXPECT_FALSE(doc().isChanged());
    rows()[3].Data(7) = C("0.0001");
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(RowsTest, TextFieldsAreCutToTheirWidth) {
    Fuzokurecordtypex r;
    r.SetGoods(QString(81, QLatin1Char('x')));
    EXPECT_EQ(r.GOODS.size(), 80);
    r.SetKind(QString(30, QChar(0x914D)));
    EXPECT_EQ(r.KIND.size(), 40);
    r.SetSize(U("1000A-X"));
    EXPECT_EQ(r.Size(), U("1000A-"));
    r.SetCi(U("ｍｍｍ"));
    EXPECT_EQ(r.Ci(), U("ｍｍ"));
}

TEST_F(RowsTest, SnapshotCopiesAllButCalcAndRestoreBringsBack) {
    rows()[5].SetGoods(U("鋼管"));
    rows()[5].NET = C("100");
    rows()[5].UKEY = 5;
    rows()[5].CALC_G[3] = C("77");
    bool enabled = false;
    QObject::connect(&doc(), &PipeTypeDocument::undoAvailableChanged, [&](bool e) { enabled = e; });
    doc().takeSnapshot();
    EXPECT_TRUE(enabled);
    EXPECT_EQ(doc().currentLines().size(), 60);
    EXPECT_EQ(doc().snapshot()[5].NET, C("100"));
    EXPECT_EQ(doc().snapshot()[5].CALC_G[3].raw, 0);

    rows()[5].NET = C("200");
    rows()[5].SetGoods(U("changed"));
    rows()[5].CALC_G[3] = C("88");
    doc().restoreSnapshot();
    EXPECT_EQ(rows()[5].NET, C("100"));
    EXPECT_EQ(rows()[5].Goods(), U("鋼管"));
    EXPECT_EQ(rows()[5].CALC_G[3], C("88")); // CALC fields are left
}

TEST_F(RowsTest, ClearRowsClearsBothTablesUpToCount) {
    rows()[1].NET = C("1");
    doc().takeSnapshot();
    rows()[2].NET = C("2");
    doc().clearRows(0);
    EXPECT_EQ(rows()[1].NET, C("1"));
    doc().clearRows(1);
    EXPECT_EQ(rows()[1].NET.raw, 0);
    EXPECT_EQ(doc().snapshot()[1].NET.raw, 0);
    EXPECT_EQ(rows()[2].NET, C("2"));
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
    KanzaiOptions o = doc().options();
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
    const Fuzokurecordtypex& r = rows()[60];
    EXPECT_EQ(r.YOSAN, 1);
    EXPECT_EQ(r.FLAG, 1);
    EXPECT_EQ(r.NET, C("60"));
    EXPECT_EQ(r.GROSS, C("70"));
    EXPECT_EQ(r.Data(2), C("10"));
    EXPECT_EQ(r.Data(3), C("0.5"));
    EXPECT_EQ(r.Data(4), C("15000"));
    EXPECT_EQ(r.Data(5), C("18000"));
    EXPECT_EQ(r.Data(6), C("100"));
    EXPECT_EQ(r.Data(7), C("0.9"));
    EXPECT_EQ(r.NTANKA, C("1"));
    EXPECT_EQ(r.GTANKA, C("1000"));
    EXPECT_EQ(r.FTANKA, C("0"));
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
