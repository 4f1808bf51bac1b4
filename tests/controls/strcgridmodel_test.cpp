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
        return e.message();
    }
    return QStringLiteral("<no exception>");
}

struct Model : ::testing::Test {
    PriceGridModel grid;
    void SetUp() override {
        grid.setColCount(11);
        grid.setRowCount(15);
        grid.setColor(clWhite);
        grid.setFixedColor(7099731);
    }
    SCGCellParam* addRange(int col, int row, int colMax, int rowMax) {
        SCGCellParam* p = grid.cellParams().add();
        p->setColMax(colMax);
        p->setRowMax(rowMax);
        p->setCol(col);
        p->setRow(row);
        p->setRangeEnabled(true);
        return p;
    }
};

TEST_F(Model, LastEntryWinsBetweenRangesAndSingleCells) {
    grid.setCellAlignments(2, 2, taCenter); // single cell first
    SCGCellParam* range = addRange(1, 1, 3, 3);
    range->setAlignment(taRightJustify);
    EXPECT_EQ(grid.getCellAlignments(2, 2), taRightJustify); // the range added later wins
    grid.cellParams().Delete(0);
    grid.setCellColors(2, 2, 123); // inside the range: changes the range, no new entry
    EXPECT_EQ(grid.cellParams().count(), 1);
    EXPECT_EQ(grid.getCellColors(3, 3), 123);
    // A single cell appended after the range overrides it in that cell only.
    SCGCellParam* single = grid.cellParams().add();
    single->setCol(2);
    single->setRow(2);
    single->setAlignment(taCenter);
    EXPECT_EQ(grid.getCellAlignments(2, 2), taCenter);
    EXPECT_EQ(grid.getCellAlignments(1, 1), taRightJustify);
    EXPECT_EQ(grid.cellParams().itemByPos(2, 2), single);
    EXPECT_EQ(grid.cellParams().itemByPos(3, 1), range);
}

TEST_F(Model, AWriteToACellInsideARangeChangesTheWholeRange) {
    addRange(1, 1, 2, 14);
    grid.setCellAlignments(2, 7, taRightJustify);
    EXPECT_EQ(grid.cellParams().count(), 1);
    EXPECT_EQ(grid.getCellAlignments(1, 1), taRightJustify);
    EXPECT_EQ(grid.getCellAlignments(2, 14), taRightJustify);
    EXPECT_EQ(grid.getCellAlignments(3, 1), taLeftJustify);
}

TEST_F(Model, ACreatedEntryFreezesTheCellsColours) {
    FontSpec f = grid.Font();
    f.Color = 0x0000FF;
    grid.SetFont(f);
    grid.setCellColors(4, 4, 0x00FF00);
    ASSERT_EQ(grid.cellParams().count(), 1);
    SCGCellParam* p = grid.cellParams()[0];
    EXPECT_TRUE(p->fontColorEnabled());
    EXPECT_TRUE(p->cellColorEnabled());
    EXPECT_EQ(p->fontColor(), 0x0000FF);
    f.Color = 0xFF0000;
    grid.SetFont(f);
    EXPECT_EQ(grid.getCellFontColors(4, 4), 0x0000FF);
    EXPECT_EQ(grid.getCellFontColors(5, 5), 0xFF0000);
    // A created entry is left aligned whatever the grid says.
    grid.setAlignment(taRightJustify);
    grid.setCellFontWidths(6, 6, 1);
    EXPECT_EQ(grid.getCellAlignments(6, 6), taLeftJustify);
    EXPECT_EQ(grid.getCellAlignments(7, 7), taRightJustify);
    // A fixed cell's created entry takes the fixed colour.
    grid.setCellFontWidths(0, 3, 1);
    EXPECT_EQ(grid.getCellColors(0, 3), 7099731);
}

TEST_F(Model, ReadsWithoutAnEntryAndDefaultParamsDifferForFixedCells) {
    EXPECT_EQ(grid.getCellColors(0, 0), clWhite);
    EXPECT_EQ(grid.getDefaultCellParams(0, 0).BackColor, 7099731);
    EXPECT_EQ(grid.getDefaultCellParams(3, 3).BackColor, clWhite);
    const CellDrawParams d = grid.getCellParams(3, 3);
    EXPECT_EQ(d.FontWidth, 1);
    EXPECT_EQ(d.BrushStyle, bsClear);
    EXPECT_EQ(d.BrushColor, clWhite);
    EXPECT_EQ(d.FontIndex, -1);
    EXPECT_EQ(grid.getCellFonts(3, 3), -1);
    EXPECT_FALSE(grid.getCellBrushEnabled(3, 3));
    EXPECT_EQ(grid.cellParams().count(), 0);
}

TEST_F(Model, EnablingFlagsAreSetOnlyByCellColors) {
    SCGCellParam* p = grid.cellParams().add();
    p->setCol(3);
    p->setRow(3);
    grid.setCellFontColors(3, 3, 0x123456);
    EXPECT_EQ(p->fontColor(), 0x123456);
    EXPECT_FALSE(p->fontColorEnabled());
    grid.setCellBrushStyles(3, 3, bsCross);
    grid.setCellBrushColors(3, 3, 0x0000FF);
    EXPECT_FALSE(p->brushEnabled());
    grid.setCellColors(3, 3, 0x00FF00);
    EXPECT_TRUE(p->cellColorEnabled());
}

TEST_F(Model, AnEntryWithoutRangeGovernsOnlyItsCell) {
    SCGCellParam* p = grid.cellParams().add();
    p->setColMax(5);
    p->setCol(1);
    p->setRow(1);
    EXPECT_TRUE(p->governs(1, 1));
    EXPECT_FALSE(p->governs(2, 1));
}

TEST_F(Model, RangeValidationRaisesAndRollsBack) {
    SCGCellParam* p = grid.cellParams().add();
    p->setColMax(1);
    p->setCol(3);
    EXPECT_EQ(failureText([&] { p->setRangeEnabled(true); }), u8("範囲が不正です"));
    EXPECT_FALSE(p->rangeEnabled());
    EXPECT_THROW(p->setRangeEnabled(true), ControlRangeError);

    SCGCellParam* r = addRange(1, 1, 5, 5);
    EXPECT_EQ(failureText([&] { r->setCol(9); }), u8("範囲が不正です"));
    EXPECT_EQ(r->col(), 1);
    EXPECT_THROW(r->setRowMax(0), ControlRangeError);
    EXPECT_EQ(r->rowMax(), 5);
    r->setRangeEnabled(false); // always succeeds
    EXPECT_NO_THROW(r->setCol(9));

    const QString name = r->getDisplayName();
    EXPECT_EQ(name, u8("パラメータ2 (  9,  1)-(  5,  5)"));
    EXPECT_EQ(failureText([&] { r->setCol(-1); }), name + u8(".Col の値が 0 を下まわりました"));
    EXPECT_EQ(failureText([&] { r->setRow(-1); }), name + u8(".Row の値が 0 を下まわりました"));
    EXPECT_EQ(failureText([&] { r->setFontWidth(-1); }),
              name + u8(".FontWidth の値が範囲を超えました"));
    EXPECT_NO_THROW(r->setFontWidth(0));
    // While loading, the range check is skipped.
    SCGCellParam* loaded = grid.cellParams().add();
    grid.beginLoading();
    loaded->setCol(4);
    loaded->setRangeEnabled(true);
    grid.loaded();
    EXPECT_TRUE(loaded->rangeEnabled());
}

TEST_F(Model, NamesLookupsAndTheirFailures) {
    SCGCellParam* a = grid.cellParams().add();
    SCGCellParam* b = grid.cellParams().add();
    EXPECT_EQ(a->name(), u8("パラメータ1"));
    EXPECT_EQ(b->name(), u8("パラメータ2"));
    grid.cellParams().Delete(0);
    SCGCellParam* c = grid.cellParams().add(); // named by the count again
    EXPECT_EQ(c->name(), u8("パラメータ2"));
    EXPECT_EQ(grid.cellParams().itemByName(u8("パラメータ2")), c);
    EXPECT_EQ(failureText([&] { grid.cellParams().itemByName(QStringLiteral("x")); }),
              u8("x はセルパラメータの中にありません"));
    EXPECT_EQ(failureText([&] { grid.cellParams().itemByPos(7, 8); }),
              u8("列 7, 行8 にはセルパラメータがありません"));
}

TEST_F(Model, FontsNamingUseAndDeletion) {
    grid.addFont(FontSpec(QStringLiteral("Noto Sans CJK JP"), 12));
    grid.addFont(FontSpec(QStringLiteral("Noto Sans CJK JP"), 8));
    SCGCellFont* f0 = grid.fonts()[0];
    EXPECT_EQ(f0->name(), u8("フォント1"));
    EXPECT_EQ(f0->getDisplayName(), u8("フォント1( Noto Sans CJK JP, 12 )"));
    EXPECT_EQ(failureText([&] { f0->setName(QString()); }), u8("フォント名は空にできません"));
    EXPECT_EQ(failureText([&] { f0->setName(u8("フォント1")); }),
              u8("このフォント名はすでに使用されています"));
    EXPECT_EQ(failureText([&] { f0->setName(u8("フォント2")); }),
              u8("このフォント名はすでに使用されています"));

    grid.setCellFonts(2, 2, 0);
    EXPECT_EQ(grid.getCellFonts(2, 2), 0);
    f0->setName(QStringLiteral("big")); // entries follow the rename
    EXPECT_EQ(grid.findCellParam(2, 2)->fontName(), QStringLiteral("big"));
    EXPECT_EQ(grid.getCellParams(2, 2).FontIndex, 0);

    EXPECT_EQ(failureText([&] { grid.deleteFont(0); }), u8("使用中のﾌｫﾝﾄを削除しようとしました。"));
    EXPECT_EQ(failureText([&] { grid.deleteFont(2); }), u8("ｲﾝﾃﾞｯｸｽが範囲を超えました。"));
    grid.deleteFont(1);
    EXPECT_EQ(grid.fontCount(), 1);

    // A refused CellFonts write makes no entry; -1 on a new cell makes one.
    const int before = grid.cellParams().count();
    EXPECT_EQ(failureText([&] { grid.setCellFonts(5, 5, 1); }), u8("ｲﾝﾃﾞｯｸｽが範囲を超えました。"));
    EXPECT_THROW(grid.setCellFonts(5, 5, -2), ControlRangeError);
    EXPECT_EQ(grid.cellParams().count(), before);
    grid.setCellFonts(6, 6, -1);
    EXPECT_EQ(grid.cellParams().count(), before + 1);
    EXPECT_TRUE(grid.findCellParam(6, 6)->fontName().isEmpty());

    // An unknown name ends empty, without an exception.
    SCGCellParam* p = grid.findCellParam(2, 2, false);
    p->setFontName(QStringLiteral("nowhere"));
    EXPECT_TRUE(p->fontName().isEmpty());

    // Deleting a font through the collection empties the names that used it.
    p->setFontName(QStringLiteral("big"));
    grid.fonts().Delete(0);
    EXPECT_TRUE(p->fontName().isEmpty());

    grid.addFont(FontSpec());
    grid.clearAllCellParams();
    EXPECT_EQ(grid.cellParams().count(), 0);
    EXPECT_EQ(grid.fontCount(), 0);
    EXPECT_EQ(failureText([&] { grid.fonts().indexOfName(QStringLiteral("big")); }),
              u8("CellParams で指定されたフォント名が Fonts に登録されていません"));
}

TEST_F(Model, SetCellParamsWritesEveryFieldAndMovesARangeStart) {
    grid.addFont(FontSpec());
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
    grid.setCellParams(d);
    const CellDrawParams r = grid.getCellParams(4, 5);
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
    grid.setCellParams(d);
    EXPECT_EQ(range->col(), 2);
    EXPECT_EQ(range->row(), 2);
    EXPECT_FALSE(range->governs(1, 1));
}

TEST_F(Model, CellLinesSplitsAndPads) {
    grid.setPropertyCellLines(3, 3, 2, QStringLiteral("x"));
    EXPECT_EQ(grid.cells(3, 3), QStringLiteral("\r\n\r\nx\r\n"));
    EXPECT_EQ(grid.getPropertyCellLines(3, 3, 2), QStringLiteral("x"));
    EXPECT_EQ(grid.getPropertyCellLines(3, 3, 3), QString());
    EXPECT_EQ(grid.cells(3, 3), QStringLiteral("\r\n\r\nx\r\n"));
    grid.setCells(4, 4, QStringLiteral("a\rb\nc\r\nd"));
    EXPECT_EQ(grid.getPropertyCellLines(4, 4, 1), QStringLiteral("b"));
    EXPECT_EQ(grid.getPropertyCellLines(4, 4, 3), QStringLiteral("d"));
    grid.setPropertyCellLines(4, 4, 0, QStringLiteral("A"));
    EXPECT_EQ(grid.cells(4, 4), QStringLiteral("A\r\nb\r\nc\r\nd\r\n"));
    EXPECT_EQ(grid.cellParams().count(), 0);
    EXPECT_EQ(splitTextLines(QStringLiteral("a\r\n")).size(), 1);
    EXPECT_TRUE(splitTextLines(QString()).isEmpty());
}

TEST_F(Model, PositionCheckAllowsTheCountsThemselves) {
    const QString text = u8("ｾﾙ位置がｸﾞﾘｯﾄﾞの範囲を超えました。");
    EXPECT_NO_THROW(grid.setCellColors(11, 15, 1)); // one past the last column and row
    EXPECT_EQ(failureText([&] { grid.setCellColors(12, 1, 1); }), text);
    EXPECT_EQ(failureText([&] { grid.getCellColors(-1, 1); }), text);
    EXPECT_EQ(failureText([&] { grid.getCellColors(1, 16); }), text);
    EXPECT_EQ(failureText([&] { grid.getPropertyCellLines(1, -1, 0); }), text);
    EXPECT_NO_THROW(grid.getDefaultCellParams(-5, -5)); // no position check there
}

TEST_F(Model, AssignCopiesEveryFieldAndEvent) {
    SCGCellParam* a = addRange(1, 2, 3, 4);
    a->setCaption(QStringLiteral("C"));
    a->setCaptionType(ctTop);
    a->setTag(7);
    a->setOptions(GridOptions{goEditing});
    a->setOptionsEnabled(true);
    int calls = 0;
    a->OnEnterCell = [&](ControlObject*, PriceGrid*, int, int, int, int) { ++calls; };
    SCGCellParam* b = grid.cellParams().add();
    b->assign(*a);
    EXPECT_TRUE(b->rangeEnabled());
    EXPECT_EQ(b->colMax(), 3);
    EXPECT_EQ(b->caption(), QStringLiteral("C"));
    EXPECT_EQ(b->captionType(), ctTop);
    EXPECT_EQ(b->tag(), 7);
    EXPECT_EQ(b->name(), a->name());
    EXPECT_TRUE(b->options().contains(goEditing));
    ASSERT_TRUE(bool(b->OnEnterCell));
    b->OnEnterCell(b, nullptr, 0, 0, 0, 0);
    EXPECT_EQ(calls, 1);
    // A new entry takes the grid's options of that moment.
    grid.setOptions(GridOptions{goRowSelect});
    EXPECT_EQ(grid.cellParams().add()->options(), GridOptions{goRowSelect});
}

} // namespace
