// The cell model of PriceGrid: lookup order, ranges, validation with
// rollback, fonts, CellLines and the position check.
#include "controls/strcgridmodel.h"

#include <gtest/gtest.h>

namespace {

QString u8(const char* s) {
    return QString::fromUtf8(s);
}

template <typename F> QString failureText(F&& f) {
    try {
        f();
    } catch (const ControlError& e) {
        return e.Message();
    }
    return QStringLiteral("<no exception>");
}

struct Model : ::testing::Test {
    PriceGridModel grid;
    void SetUp() override {
        grid.SetColCount(11);
        grid.SetRowCount(15);
        grid.SetColor(clWhite);
        grid.SetFixedColor(7099731);
    }
    SCGCellParam* addRange(int col, int row, int colMax, int rowMax) {
        SCGCellParam* p = grid.CellParams().Add();
        p->SetColMax(colMax);
        p->SetRowMax(rowMax);
        p->SetCol(col);
        p->SetRow(row);
        p->SetRangeEnabled(true);
        return p;
    }
};

TEST_F(Model, LastEntryWinsBetweenRangesAndSingleCells) {
    grid.SetCellAlignments(2, 2, taCenter); // single cell first
    SCGCellParam* range = addRange(1, 1, 3, 3);
    range->SetAlignment(taRightJustify);
    EXPECT_EQ(grid.GetCellAlignments(2, 2), taRightJustify); // the range added later wins
    grid.CellParams().Delete(0);
    grid.SetCellColors(2, 2, 123); // inside the range: changes the range, no new entry
    EXPECT_EQ(grid.CellParams().Count(), 1);
    EXPECT_EQ(grid.GetCellColors(3, 3), 123);
    // A single cell appended after the range overrides it in that cell only.
    SCGCellParam* single = grid.CellParams().Add();
    single->SetCol(2);
    single->SetRow(2);
    single->SetAlignment(taCenter);
    EXPECT_EQ(grid.GetCellAlignments(2, 2), taCenter);
    EXPECT_EQ(grid.GetCellAlignments(1, 1), taRightJustify);
    EXPECT_EQ(grid.CellParams().ItemByPos(2, 2), single);
    EXPECT_EQ(grid.CellParams().ItemByPos(3, 1), range);
}

TEST_F(Model, AWriteToACellInsideARangeChangesTheWholeRange) {
    addRange(1, 1, 2, 14);
    grid.SetCellAlignments(2, 7, taRightJustify);
    EXPECT_EQ(grid.CellParams().Count(), 1);
    EXPECT_EQ(grid.GetCellAlignments(1, 1), taRightJustify);
    EXPECT_EQ(grid.GetCellAlignments(2, 14), taRightJustify);
    EXPECT_EQ(grid.GetCellAlignments(3, 1), taLeftJustify);
}

TEST_F(Model, ACreatedEntryFreezesTheCellsColours) {
    FontSpec f = grid.Font();
    f.Color = 0x0000FF;
    grid.SetFont(f);
    grid.SetCellColors(4, 4, 0x00FF00);
    ASSERT_EQ(grid.CellParams().Count(), 1);
    SCGCellParam* p = grid.CellParams()[0];
    EXPECT_TRUE(p->FontColorEnabled());
    EXPECT_TRUE(p->CellColorEnabled());
    EXPECT_EQ(p->FontColor(), 0x0000FF);
    f.Color = 0xFF0000;
    grid.SetFont(f);
    EXPECT_EQ(grid.GetCellFontColors(4, 4), 0x0000FF);
    EXPECT_EQ(grid.GetCellFontColors(5, 5), 0xFF0000);
    // A created entry is left aligned whatever the grid says.
    grid.SetAlignment(taRightJustify);
    grid.SetCellFontWidths(6, 6, 1);
    EXPECT_EQ(grid.GetCellAlignments(6, 6), taLeftJustify);
    EXPECT_EQ(grid.GetCellAlignments(7, 7), taRightJustify);
    // A fixed cell's created entry takes the fixed colour.
    grid.SetCellFontWidths(0, 3, 1);
    EXPECT_EQ(grid.GetCellColors(0, 3), 7099731);
}

TEST_F(Model, ReadsWithoutAnEntryAndDefaultParamsDifferForFixedCells) {
    EXPECT_EQ(grid.GetCellColors(0, 0), clWhite);
    EXPECT_EQ(grid.GetDefaultCellParams(0, 0).BackColor, 7099731);
    EXPECT_EQ(grid.GetDefaultCellParams(3, 3).BackColor, clWhite);
    const CellDrawParams d = grid.GetCellParams(3, 3);
    EXPECT_EQ(d.FontWidth, 1);
    EXPECT_EQ(d.BrushStyle, bsClear);
    EXPECT_EQ(d.BrushColor, clWhite);
    EXPECT_EQ(d.FontIndex, -1);
    EXPECT_EQ(grid.GetCellFonts(3, 3), -1);
    EXPECT_FALSE(grid.GetCellBrushEnabled(3, 3));
    EXPECT_EQ(grid.CellParams().Count(), 0);
}

TEST_F(Model, EnablingFlagsAreSetOnlyByCellColors) {
    SCGCellParam* p = grid.CellParams().Add();
    p->SetCol(3);
    p->SetRow(3);
    grid.SetCellFontColors(3, 3, 0x123456);
    EXPECT_EQ(p->FontColor(), 0x123456);
    EXPECT_FALSE(p->FontColorEnabled());
    grid.SetCellBrushStyles(3, 3, bsCross);
    grid.SetCellBrushColors(3, 3, 0x0000FF);
    EXPECT_FALSE(p->BrushEnabled());
    grid.SetCellColors(3, 3, 0x00FF00);
    EXPECT_TRUE(p->CellColorEnabled());
}

TEST_F(Model, AnEntryWithoutRangeGovernsOnlyItsCell) {
    SCGCellParam* p = grid.CellParams().Add();
    p->SetColMax(5);
    p->SetCol(1);
    p->SetRow(1);
    EXPECT_TRUE(p->Governs(1, 1));
    EXPECT_FALSE(p->Governs(2, 1));
}

TEST_F(Model, RangeValidationRaisesAndRollsBack) {
    SCGCellParam* p = grid.CellParams().Add();
    p->SetColMax(1);
    p->SetCol(3);
    EXPECT_EQ(failureText([&] { p->SetRangeEnabled(true); }), u8("範囲が不正です"));
    EXPECT_FALSE(p->RangeEnabled());
    EXPECT_THROW(p->SetRangeEnabled(true), ControlRangeError);

    SCGCellParam* r = addRange(1, 1, 5, 5);
    EXPECT_EQ(failureText([&] { r->SetCol(9); }), u8("範囲が不正です"));
    EXPECT_EQ(r->Col(), 1);
    EXPECT_THROW(r->SetRowMax(0), ControlRangeError);
    EXPECT_EQ(r->RowMax(), 5);
    r->SetRangeEnabled(false); // always succeeds
    EXPECT_NO_THROW(r->SetCol(9));

    const QString name = r->GetDisplayName();
    EXPECT_EQ(name, u8("パラメータ2 (  9,  1)-(  5,  5)"));
    EXPECT_EQ(failureText([&] { r->SetCol(-1); }), name + u8(".Col の値が 0 を下まわりました"));
    EXPECT_EQ(failureText([&] { r->SetRow(-1); }), name + u8(".Row の値が 0 を下まわりました"));
    EXPECT_EQ(failureText([&] { r->SetFontWidth(-1); }),
              name + u8(".FontWidth の値が範囲を超えました"));
    EXPECT_NO_THROW(r->SetFontWidth(0));
    // While loading, the range check is skipped.
    SCGCellParam* loaded = grid.CellParams().Add();
    grid.BeginLoading();
    loaded->SetCol(4);
    loaded->SetRangeEnabled(true);
    grid.Loaded();
    EXPECT_TRUE(loaded->RangeEnabled());
}

TEST_F(Model, NamesLookupsAndTheirFailures) {
    SCGCellParam* a = grid.CellParams().Add();
    SCGCellParam* b = grid.CellParams().Add();
    EXPECT_EQ(a->Name(), u8("パラメータ1"));
    EXPECT_EQ(b->Name(), u8("パラメータ2"));
    grid.CellParams().Delete(0);
    SCGCellParam* c = grid.CellParams().Add(); // named by the count again
    EXPECT_EQ(c->Name(), u8("パラメータ2"));
    EXPECT_EQ(grid.CellParams().ItemByName(u8("パラメータ2")), c);
    EXPECT_EQ(failureText([&] { grid.CellParams().ItemByName(QStringLiteral("x")); }),
              u8("x はセルパラメータの中にありません"));
    EXPECT_EQ(failureText([&] { grid.CellParams().ItemByPos(7, 8); }),
              u8("列 7, 行8 にはセルパラメータがありません"));
}

TEST_F(Model, FontsNamingUseAndDeletion) {
    grid.AddFont(FontSpec(QStringLiteral("Noto Sans CJK JP"), 12));
    grid.AddFont(FontSpec(QStringLiteral("Noto Sans CJK JP"), 8));
    SCGCellFont* f0 = grid.Fonts()[0];
    EXPECT_EQ(f0->Name(), u8("フォント1"));
    EXPECT_EQ(f0->GetDisplayName(), u8("フォント1( Noto Sans CJK JP, 12 )"));
    EXPECT_EQ(failureText([&] { f0->SetName(QString()); }), u8("フォント名は空にできません"));
    EXPECT_EQ(failureText([&] { f0->SetName(u8("フォント1")); }),
              u8("このフォント名はすでに使用されています"));
    EXPECT_EQ(failureText([&] { f0->SetName(u8("フォント2")); }),
              u8("このフォント名はすでに使用されています"));

    grid.SetCellFonts(2, 2, 0);
    EXPECT_EQ(grid.GetCellFonts(2, 2), 0);
    f0->SetName(QStringLiteral("big")); // entries follow the rename
    EXPECT_EQ(grid.FindCellParam(2, 2)->FontName(), QStringLiteral("big"));
    EXPECT_EQ(grid.GetCellParams(2, 2).FontIndex, 0);

    EXPECT_EQ(failureText([&] { grid.DeleteFont(0); }), u8("使用中のﾌｫﾝﾄを削除しようとしました。"));
    EXPECT_EQ(failureText([&] { grid.DeleteFont(2); }), u8("ｲﾝﾃﾞｯｸｽが範囲を超えました。"));
    grid.DeleteFont(1);
    EXPECT_EQ(grid.FontCount(), 1);

    // A refused CellFonts write makes no entry; -1 on a new cell makes one.
    const int before = grid.CellParams().Count();
    EXPECT_EQ(failureText([&] { grid.SetCellFonts(5, 5, 1); }), u8("ｲﾝﾃﾞｯｸｽが範囲を超えました。"));
    EXPECT_THROW(grid.SetCellFonts(5, 5, -2), ControlRangeError);
    EXPECT_EQ(grid.CellParams().Count(), before);
    grid.SetCellFonts(6, 6, -1);
    EXPECT_EQ(grid.CellParams().Count(), before + 1);
    EXPECT_TRUE(grid.FindCellParam(6, 6)->FontName().isEmpty());

    // An unknown name ends empty, without an exception.
    SCGCellParam* p = grid.FindCellParam(2, 2, false);
    p->SetFontName(QStringLiteral("nowhere"));
    EXPECT_TRUE(p->FontName().isEmpty());

    // Deleting a font through the collection empties the names that used it.
    p->SetFontName(QStringLiteral("big"));
    grid.Fonts().Delete(0);
    EXPECT_TRUE(p->FontName().isEmpty());

    grid.AddFont(FontSpec());
    grid.ClearAllCellParams();
    EXPECT_EQ(grid.CellParams().Count(), 0);
    EXPECT_EQ(grid.FontCount(), 0);
    EXPECT_EQ(failureText([&] { grid.Fonts().IndexOfName(QStringLiteral("big")); }),
              u8("CellParams で指定されたフォント名が Fonts に登録されていません"));
}

TEST_F(Model, SetCellParamsWritesEveryFieldAndMovesARangeStart) {
    grid.AddFont(FontSpec());
    CellDrawParams d;
    d.Col = 4;
    d.Row = 5;
    d.Alignment = taCenter;
    d.FontColor = 0x111111;
    d.FontWidth = 3;
    d.BackColor = 0x222222;
    d.BrushEnabled = true;
    d.BrushStyle = bsCross;
    d.BrushColor = 0x333333;
    d.FontIndex = 0;
    grid.SetCellParams(d);
    const CellDrawParams r = grid.GetCellParams(4, 5);
    EXPECT_EQ(r.Alignment, taCenter);
    EXPECT_EQ(r.FontColor, 0x111111);
    EXPECT_EQ(r.FontWidth, 3);
    EXPECT_EQ(r.BackColor, 0x222222);
    EXPECT_TRUE(r.BrushEnabled);
    EXPECT_EQ(r.BrushStyle, bsCross);
    EXPECT_EQ(r.BrushColor, 0x333333);
    EXPECT_EQ(r.FontIndex, 0);

    SCGCellParam* range = addRange(1, 1, 3, 3);
    d.Col = 2;
    d.Row = 2;
    d.FontIndex = -1;
    grid.SetCellParams(d);
    EXPECT_EQ(range->Col(), 2);
    EXPECT_EQ(range->Row(), 2);
    EXPECT_FALSE(range->Governs(1, 1));
}

TEST_F(Model, CellLinesSplitsAndPads) {
    grid.SetPropertyCellLines(3, 3, 2, QStringLiteral("x"));
    EXPECT_EQ(grid.Cells(3, 3), QStringLiteral("\r\n\r\nx\r\n"));
    EXPECT_EQ(grid.GetPropertyCellLines(3, 3, 2), QStringLiteral("x"));
    EXPECT_EQ(grid.GetPropertyCellLines(3, 3, 3), QString());
    EXPECT_EQ(grid.Cells(3, 3), QStringLiteral("\r\n\r\nx\r\n"));
    grid.SetCells(4, 4, QStringLiteral("a\rb\nc\r\nd"));
    EXPECT_EQ(grid.GetPropertyCellLines(4, 4, 1), QStringLiteral("b"));
    EXPECT_EQ(grid.GetPropertyCellLines(4, 4, 3), QStringLiteral("d"));
    grid.SetPropertyCellLines(4, 4, 0, QStringLiteral("A"));
    EXPECT_EQ(grid.Cells(4, 4), QStringLiteral("A\r\nb\r\nc\r\nd\r\n"));
    EXPECT_EQ(grid.CellParams().Count(), 0);
    EXPECT_EQ(SplitTextLines(QStringLiteral("a\r\n")).size(), 1);
    EXPECT_TRUE(SplitTextLines(QString()).isEmpty());
}

TEST_F(Model, PositionCheckAllowsTheCountsThemselves) {
    const QString text = u8("ｾﾙ位置がｸﾞﾘｯﾄﾞの範囲を超えました。");
    EXPECT_NO_THROW(grid.SetCellColors(11, 15, 1)); // one past the last column and row
    EXPECT_EQ(failureText([&] { grid.SetCellColors(12, 1, 1); }), text);
    EXPECT_EQ(failureText([&] { grid.GetCellColors(-1, 1); }), text);
    EXPECT_EQ(failureText([&] { grid.GetCellColors(1, 16); }), text);
    EXPECT_EQ(failureText([&] { grid.GetPropertyCellLines(1, -1, 0); }), text);
    EXPECT_NO_THROW(grid.GetDefaultCellParams(-5, -5)); // no position check there
}

TEST_F(Model, AssignCopiesEveryFieldAndEvent) {
    SCGCellParam* a = addRange(1, 2, 3, 4);
    a->SetCaption(QStringLiteral("C"));
    a->SetCaptionType(ctTop);
    a->SetTag(7);
    a->SetOptions(GridOptions{goEditing});
    a->SetOptionsEnabled(true);
    int calls = 0;
    a->OnEnterCell = [&](ControlObject*, PriceGrid*, int, int, int, int) { ++calls; };
    SCGCellParam* b = grid.CellParams().Add();
    b->Assign(*a);
    EXPECT_TRUE(b->RangeEnabled());
    EXPECT_EQ(b->ColMax(), 3);
    EXPECT_EQ(b->Caption(), QStringLiteral("C"));
    EXPECT_EQ(b->CaptionType(), ctTop);
    EXPECT_EQ(b->Tag(), 7);
    EXPECT_EQ(b->Name(), a->Name());
    EXPECT_TRUE(b->Options().Contains(goEditing));
    ASSERT_TRUE(bool(b->OnEnterCell));
    b->OnEnterCell(b, nullptr, 0, 0, 0, 0);
    EXPECT_EQ(calls, 1);
    // A new entry takes the grid's options of that moment.
    grid.SetOptions(GridOptions{goRowSelect});
    EXPECT_EQ(grid.CellParams().Add()->Options(), GridOptions{goRowSelect});
}

} // namespace
