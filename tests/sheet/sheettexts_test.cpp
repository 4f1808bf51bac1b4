// Cell texts of the sheet by side, toggle and mode; the key filter. (The headings by mode are
// checked on the window by Workspace.RefrigerantModeCaptionsAndColumnNine, the price cells and
// the side of each price column by CellEntry.)
#include "sheet/sheettexts.h"
#include "support/testing.h"

namespace {

// The cost side has no adopted price: columns 1 and 2 agree; the list side has no results.
TEST(Grid1LineTexts, FactorsAndResultsOnEachSide) {
    PipeRow r;
    r.setSize("15A");
    r.submittedPrice = strToCurr("860");
    r.costPrice = strToCurr("750");
    r.listPrice = strToCurr("1234");
    r.submittedUnitPrice = strToCurr("4092");
    r.adoptedUnitPrice = strToCurr("4090");
    r.costUnitPrice = strToCurr("3463");
    const QStringList f = QString("1.1 0.35 0.05 0.08 0.1234 0.015 0.1").split(' ');
    const QStringList g = QString("946 301 43 68.8 2214 270 249").split(' ');
    const QStringList n = QString("825 262.5 38 0 1845 225 207").split(' ');
    for (std::size_t i = 0; i < 7; ++i) {
        r.factors[i] = strToCurr(f[int(i)]);
        r.submittedAmounts[i] = strToCurr(g[int(i)]);
        r.costAmounts[i] = strToCurr(n[int(i)]);
    }
    const std::vector<std::tuple<PriceSide, bool, const char*>> cases = {
        {PriceSide::Submitted, false, "15A|4,090|4,092|860|1.1|0.35|0.05|0.08|0.123|0.015|0.1"},
        {PriceSide::Cost, false, "15A|3,463|3,463|750|1.1|0.35|0.05|0.08|0.123|0.015|0.1"},
        {PriceSide::List, false, "15A|4,090|4,092|1,234|1.1|0.35|0.05|0.08|0.123|0.015|0.1"},
        {PriceSide::Submitted, true, "15A|4,090|4,092|860|946|301|43|68.8|2214|270|249"},
        {PriceSide::Cost, true, "15A|3,463|3,463|750|825|262.5|38|0|1845|225|207"},
        {PriceSide::List, true, "15A|4,090|4,092|1,234|--|--|--|--|--|--|--"}};
    const auto joined = [](const std::array<QString, Grid1Cols>& t) {
        return QStringList(t.begin(), t.end()).join('|');
    };
    for (const auto& [side, results, texts] : cases) {
        EXPECT_EQ(joined(grid1LineTexts(r, {side, results, false})), texts);
        // Refrigerant mode empties column 9 alone, on every side and view.
        QStringList refrigerant = QString(texts).split('|');
        refrigerant[9].clear();
        EXPECT_EQ(joined(grid1LineTexts(r, {side, results, true})), refrigerant.join('|'));
    }
    EXPECT_EQ(joined(grid1LineTexts(PipeRow{}, {})), "|0|0|0|0|0|0|0|0.000|0|0");
}

// The key filter of both grids. The numeric pad's digits and point are other keys than the main
// keyboard's: they beep and commit.
TEST(GridKeyAction, TheFilterTable) {
    const Qt::KeyboardModifiers none = Qt::NoModifier, pad = Qt::KeypadModifier,
                                shift = Qt::ShiftModifier;
    const KeyAction move = KeyAction::MoveOnly, pass = KeyAction::PassToCell,
                    commit = KeyAction::Commit, beep = KeyAction::BeepCommit;
    using namespace Qt;
    const std::vector<std::tuple<int, Qt::KeyboardModifiers, int, KeyAction>> cases = {
        {Key_Left, none, 0, move},     {Key_Down, none, 0, move},      {Key_Up, none, 1, commit},
        {Key_Down, none, 1, commit},   {Key_Left, none, 1, beep},      {Key_Right, none, 1, beep},
        {Key_Return, none, 0, commit}, {Key_Enter, pad, 1, commit},    {Key_Period, none, 1, pass},
        {Key_Period, pad, 1, beep},    {Key_Backspace, none, 1, pass}, {Key_Exclam, shift, 1, pass},
        {Key_Tab, none, 1, beep},      {Key_Shift, shift, 1, beep},    {Key_Control, none, 1, beep},
        {Key_Escape, none, 1, beep},   {Key_A, none, 1, beep},         {Key_Minus, none, 1, beep},
        {Key_Minus, pad, 1, beep},     {Key_F1, none, 1, beep},        {Key_0, none, 1, pass},
        {Key_9, none, 1, pass},        {Key_0, pad, 1, beep},          {Key_9, pad, 1, beep}};
    // key, modifiers, editor open, action
    for (const auto& [key, modifiers, editorOpen, action] : cases)
        EXPECT_EQ(gridKeyAction(key, modifiers, editorOpen), action) << key;
}

} // namespace
