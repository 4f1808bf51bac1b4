// Cell texts of the sheet by side, toggle and mode; the key filter.
#include "controls/vkeys.h"
#include "sheet/sheettexts.h"

#include <gtest/gtest.h>

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromUtf8(t));
}

PipeRow exampleRow() {
    PipeRow r;
    r.setSize(QStringLiteral("15A"));
    r.submittedPrice = c("860");
    r.costPrice = c("750");
    r.listPrice = c("1234");
    const char* f[7] = {"1.1", "0.35", "0.05", "0.08", "0.1234", "0.015", "0.1"};
    for (int i = 0; i < 7; ++i)
        r.factors[std::size_t(i)] = c(f[i]);
    r.submittedUnitPrice = c("4092");
    r.adoptedUnitPrice = c("4090");
    r.costUnitPrice = c("3463");
    const char* g[7] = {"946", "301", "43", "68.8", "2214", "270", "249"};
    const char* n[7] = {"825", "262.5", "38", "0", "1845", "225", "207"};
    for (int i = 0; i < 7; ++i) {
        r.submittedAmounts[std::size_t(i)] = c(g[i]);
        r.costAmounts[std::size_t(i)] = c(n[i]);
    }
    return r;
}

using Texts = std::array<QString, Grid1Cols>;
Texts l(std::initializer_list<const char*> list) {
    Texts t;
    std::size_t i = 0;
    for (const char* s : list)
        t[i++] = QString::fromUtf8(s);
    return t;
}

TEST(Grid1LineTexts, FactorsOnEachSide) {
    const PipeRow r = exampleRow();
    EXPECT_EQ(grid1LineTexts(r, {PriceSide::Submitted, false, false}),
              l({"15A", "4,090", "4,092", "860", "1.1", "0.35", "0.05", "0.08", "0.123", "0.015",
                 "0.1"}));
    // The cost side has no adopted price: columns 1 and 2 agree.
    EXPECT_EQ(grid1LineTexts(r, {PriceSide::Cost, false, false}),
              l({"15A", "3,463", "3,463", "750", "1.1", "0.35", "0.05", "0.08", "0.123", "0.015",
                 "0.1"}));
    EXPECT_EQ(grid1LineTexts(r, {PriceSide::List, false, false}),
              l({"15A", "4,090", "4,092", "1,234", "1.1", "0.35", "0.05", "0.08", "0.123", "0.015",
                 "0.1"}));
}

TEST(Grid1LineTexts, ResultsOnEachSide) {
    const PipeRow r = exampleRow();
    EXPECT_EQ(
        grid1LineTexts(r, {PriceSide::Submitted, true, false}),
        l({"15A", "4,090", "4,092", "860", "946", "301", "43", "68.8", "2214", "270", "249"}));
    EXPECT_EQ(grid1LineTexts(r, {PriceSide::Cost, true, false}),
              l({"15A", "3,463", "3,463", "750", "825", "262.5", "38", "0", "1845", "225", "207"}));
    EXPECT_EQ(grid1LineTexts(r, {PriceSide::List, true, false}),
              l({"15A", "4,090", "4,092", "1,234", "--", "--", "--", "--", "--", "--", "--"}));
}

TEST(Grid1LineTexts, RefrigerantEmptiesColumnNine) {
    const PipeRow r = exampleRow();
    for (bool results : {false, true})
        for (PriceSide s : {PriceSide::Submitted, PriceSide::Cost, PriceSide::List})
            EXPECT_TRUE(grid1LineTexts(r, {s, results, true})[9].isEmpty());
}

TEST(Grid1LineTexts, ZeroRow) {
    const Texts t = grid1LineTexts(PipeRow{}, {});
    EXPECT_EQ(t, l({"", "0", "0", "0", "0", "0", "0", "0", "0.000", "0", "0"}));
}

TEST(SheetTexts, PriceCellsAndSides) {
    const auto p = priceTexts(exampleRow());
    EXPECT_EQ(p[0], "860");
    EXPECT_EQ(p[1], "750");
    EXPECT_EQ(p[2], "1,234");
    EXPECT_EQ(sideOfColumn(1), PriceSide::Submitted);
    EXPECT_EQ(sideOfColumn(2), PriceSide::Cost);
    EXPECT_EQ(sideOfColumn(3), PriceSide::List);
}

TEST(SheetTexts, Headings) {
    EXPECT_EQ(longHeadings(false).col5, QStringLiteral("継 手 類"));
    EXPECT_EQ(longHeadings(true).col7, QStringLiteral("雑 材 料"));
    EXPECT_EQ(shortHeadings(true).col5, QStringLiteral("継手・接合材"));
    EXPECT_EQ(shortHeadings(false).col9, QStringLiteral("はつり"));
}

TEST(GridKeyAction, TheFilterTable) {
    EXPECT_EQ(gridKeyAction(37, false), KeyAction::MoveOnly);
    EXPECT_EQ(gridKeyAction(40, false), KeyAction::MoveOnly);
    EXPECT_EQ(gridKeyAction(38, true), KeyAction::Commit);
    EXPECT_EQ(gridKeyAction(40, true), KeyAction::Commit);
    EXPECT_EQ(gridKeyAction(37, true), KeyAction::BeepCommit);
    EXPECT_EQ(gridKeyAction(39, true), KeyAction::BeepCommit);
    EXPECT_EQ(gridKeyAction(13, false), KeyAction::Commit);
    for (int k = 48; k <= 57; ++k)
        EXPECT_EQ(gridKeyAction(k, true), KeyAction::PassToCell);
    EXPECT_EQ(gridKeyAction(190, true), KeyAction::PassToCell);
    EXPECT_EQ(gridKeyAction(8, true), KeyAction::PassToCell);
    for (int k : {9, 16, 17, 18, 27, 65, 189, 96, 105, 110, 112})
        EXPECT_EQ(gridKeyAction(k, true), KeyAction::BeepCommit) << k;
}

// The key codes the grids hand to the sheet's key filter: the numeric pad
// speaks its own codes, so its digits and point beep and commit where the
// main keyboard's go into the cell.
TEST(VirtualKeyOf, TheGridsCodesReachTheKeyFilter) {
    const Qt::KeyboardModifiers none = Qt::NoModifier, pad = Qt::KeypadModifier;
    EXPECT_EQ(virtualKeyOf(Qt::Key_5, none), 53);
    EXPECT_EQ(virtualKeyOf(Qt::Key_5, pad), 101);
    EXPECT_EQ(virtualKeyOf(Qt::Key_0, pad), 96);
    EXPECT_EQ(virtualKeyOf(Qt::Key_9, pad), 105);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Period, none), 190);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Period, pad), 110);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Return, none), 13);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Enter, pad), 13);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Minus, none), 189);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Shift, Qt::ShiftModifier), 16);
    EXPECT_EQ(virtualKeyOf(Qt::Key_Escape, none), 27);
    for (int k = Qt::Key_0; k <= Qt::Key_9; ++k) {
        EXPECT_EQ(gridKeyAction(virtualKeyOf(k, none), true), KeyAction::PassToCell) << k;
        EXPECT_EQ(gridKeyAction(virtualKeyOf(k, pad), true), KeyAction::BeepCommit) << k;
    }
    EXPECT_EQ(gridKeyAction(virtualKeyOf(Qt::Key_Period, pad), true), KeyAction::BeepCommit);
    EXPECT_EQ(gridKeyAction(virtualKeyOf(Qt::Key_Enter, pad), true), KeyAction::Commit);
    EXPECT_EQ(gridKeyAction(virtualKeyOf(Qt::Key_Escape, none), true), KeyAction::BeepCommit);
}

} // namespace
