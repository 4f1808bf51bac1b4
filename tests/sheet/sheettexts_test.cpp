// Cell texts of the sheet by side, toggle and mode; the key filter.
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

// The key filter of both grids. The numeric pad's digits and point are
// other keys than the main keyboard's: they beep and commit.
TEST(GridKeyAction, TheFilterTable) {
    const Qt::KeyboardModifiers none = Qt::NoModifier, pad = Qt::KeypadModifier;
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        bool editorOpen;
        KeyAction action;
    } cases[] = {
        {Qt::Key_Left, none, false, KeyAction::MoveOnly},
        {Qt::Key_Down, none, false, KeyAction::MoveOnly},
        {Qt::Key_Up, none, true, KeyAction::Commit},
        {Qt::Key_Down, none, true, KeyAction::Commit},
        {Qt::Key_Left, none, true, KeyAction::BeepCommit},
        {Qt::Key_Right, none, true, KeyAction::BeepCommit},
        {Qt::Key_Return, none, false, KeyAction::Commit},
        {Qt::Key_Enter, pad, true, KeyAction::Commit},
        {Qt::Key_Period, none, true, KeyAction::PassToCell},
        {Qt::Key_Period, pad, true, KeyAction::BeepCommit},
        {Qt::Key_Backspace, none, true, KeyAction::PassToCell},
        {Qt::Key_Exclam, Qt::ShiftModifier, true, KeyAction::PassToCell},
        {Qt::Key_Tab, none, true, KeyAction::BeepCommit},
        {Qt::Key_Shift, Qt::ShiftModifier, true, KeyAction::BeepCommit},
        {Qt::Key_Control, none, true, KeyAction::BeepCommit},
        {Qt::Key_Escape, none, true, KeyAction::BeepCommit},
        {Qt::Key_A, none, true, KeyAction::BeepCommit},
        {Qt::Key_Minus, none, true, KeyAction::BeepCommit},
        {Qt::Key_Minus, pad, true, KeyAction::BeepCommit},
        {Qt::Key_F1, none, true, KeyAction::BeepCommit},
    };
    for (const auto& c : cases)
        EXPECT_EQ(gridKeyAction(c.key, c.modifiers, c.editorOpen), c.action) << c.key;
    for (int k = Qt::Key_0; k <= Qt::Key_9; ++k) {
        EXPECT_EQ(gridKeyAction(k, none, true), KeyAction::PassToCell) << k;
        EXPECT_EQ(gridKeyAction(k, pad, true), KeyAction::BeepCommit) << k;
    }
}

} // namespace
