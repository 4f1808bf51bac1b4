// PriceGrid on screen (offscreen platform): cells painted into the
// off-screen image and checked pixel by pixel, the current-cell events,
// and keys, mouse and the in-place editor through real input events.
#include "controls/strcgrid.h"
#include "controls/vkeys.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr TColor kGrey = rgbColor(128, 128, 128);
constexpr TColor kFocus = 12615808;

TColor px(const QImage& im, int x, int y) {
    return fromQColor(QColor(im.pixel(x, y)));
}

bool dark(TColor c) {
    return getRValue(c) + getGValue(c) + getBValue(c) < 300;
}

int darkCount(const QImage& im, const TRect& r) {
    int n = 0;
    for (int y = r.Top; y < r.Bottom; ++y)
        for (int x = r.Left; x < r.Right; ++x)
            if (dark(px(im, x, y))) ++n;
    return n;
}

int rightmostDark(const QImage& im, const TRect& r) {
    int best = -1;
    for (int y = r.Top; y < r.Bottom; ++y)
        for (int x = r.Left; x < r.Right; ++x)
            if (dark(px(im, x, y))) best = std::max(best, x);
    return best;
}

struct Grid : ::testing::Test {
    std::unique_ptr<QWidget> window;
    PriceGrid* grid = nullptr;

    void SetUp() override {
        window = std::make_unique<QWidget>();
        grid = new PriceGrid(window.get());
        grid->setColCount(6);
        grid->setRowCount(6);
        grid->setDefaultColWidth(80);
        grid->setDefaultRowHeight(26);
        grid->setColor(clWhite);
        grid->setFixedColor(7099731);
        grid->setCtl3D(false);
        grid->SetFont(FontSpec(defaultFontName(), 9, clBlack));
        grid->resize(grid->gridWidth(), grid->gridHeight());
        window->resize(grid->size() + QSize(10, 10));
    }

    void focusGrid() {
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        grid->setFocus();
        QApplication::processEvents();
        ASSERT_TRUE(grid->gridFocused());
    }

    // The grid's own text bands, as the one-line event sees them.
    struct Band {
        TRect rect;
        QString text;
    };
    std::vector<Band> bandsOf(int col, int row) {
        std::vector<Band> bands;
        grid->OnDrawTextOneLine = [&](ControlObject*, PriceGrid*, const TRect& r, int c, int rw,
                                      int, GridDrawState, QString& text, TAlignment&, TextLayout&,
                                      bool&) {
            if (c == col && rw == row) bands.push_back({r, text});
        };
        grid->renderImage();
        grid->OnDrawTextOneLine = nullptr;
        return bands;
    }
};

TEST_F(Grid, BandsSplitTheCellHeight) {
    const TRect cell = grid->cellRect(2, 2);
    grid->setCells(2, 2, QStringLiteral("\r\r"));
    auto two = bandsOf(2, 2);
    ASSERT_EQ(two.size(), 2u);
    EXPECT_EQ(two[0].rect.height(), 13);
    EXPECT_EQ(two[1].rect.height(), 13);
    QImage im = grid->renderImage();
    EXPECT_EQ(px(im, cell.Left + 5, cell.Top + 13), rgbColor(192, 192, 192)); // inner line
    EXPECT_EQ(px(im, cell.Left + 5, cell.Top + 12), clWhite);

    grid->setCells(2, 2, QStringLiteral("\r\r\r"));
    auto three = bandsOf(2, 2);
    ASSERT_EQ(three.size(), 3u);
    EXPECT_EQ(three[0].rect.height(), 8);
    EXPECT_EQ(three[1].rect.height(), 8);
    EXPECT_EQ(three[2].rect.height(), 10);
    im = grid->renderImage();
    EXPECT_EQ(px(im, cell.Left + 5, cell.Top + 8), rgbColor(192, 192, 192));
    EXPECT_EQ(px(im, cell.Left + 5, cell.Top + 16), rgbColor(192, 192, 192));

    // An empty cell is one empty band, with no inner line.
    grid->setCells(2, 2, QString());
    auto one = bandsOf(2, 2);
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one[0].rect, cell);
    im = grid->renderImage();
    for (int y = cell.Top; y < cell.Bottom; ++y)
        EXPECT_EQ(px(im, cell.Left + 5, y), clWhite);

    // More lines than pixels: the last band takes the whole height.
    grid->setCells(2, 2, QString(30, QChar(13)));
    auto many = bandsOf(2, 2);
    ASSERT_EQ(many.size(), 30u);
    EXPECT_EQ(many.back().rect, cell);
    EXPECT_EQ(many.front().rect.height(), 0);
}

TEST_F(Grid, CaptionTypesMakeTheDrawnText) {
    SCGCellParam* p = grid->cellParams().add();
    p->setCol(3);
    p->setRow(3);
    p->setCaption(QStringLiteral("A"));
    p->setCaptionType(ctTop);
    auto top = bandsOf(3, 3);
    ASSERT_EQ(top.size(), 2u);
    EXPECT_EQ(top[0].text, QStringLiteral("A"));
    EXPECT_EQ(top[1].text, QString());
    p->setCaptionType(ctBottom);
    auto bottom = bandsOf(3, 3);
    ASSERT_EQ(bottom.size(), 2u);
    EXPECT_EQ(bottom[0].text, QString());
    EXPECT_EQ(bottom[1].text, QStringLiteral("A"));
    p->setCaptionType(ctCellText);
    EXPECT_EQ(bandsOf(3, 3)[0].text, QStringLiteral("A"));
    grid->setCells(3, 3, QStringLiteral("S"));
    EXPECT_EQ(bandsOf(3, 3)[0].text, QStringLiteral("S"));
    p->setCaptionType(ctHeader);
    EXPECT_EQ(bandsOf(3, 3)[0].text, QStringLiteral("AS"));
    p->setCaptionType(ctFooter);
    EXPECT_EQ(bandsOf(3, 3)[0].text, QStringLiteral("SA"));
    p->setCaption(QString());
    p->setCaptionType(ctCaption);
    EXPECT_EQ(bandsOf(3, 3)[0].text, QStringLiteral("S"));
}

TEST_F(Grid, OverstrikeDrawsAgainOnePixelRight) {
    const TRect cell = grid->cellRect(2, 2);
    grid->setCells(2, 2, QStringLiteral("W"));
    grid->setCellFontWidths(2, 2, 1);
    const QImage once = grid->renderImage();
    grid->setCellFontWidths(2, 2, 2);
    const QImage twice = grid->renderImage();
    EXPECT_EQ(rightmostDark(twice, cell), rightmostDark(once, cell) + 1);
    EXPECT_GT(darkCount(twice, cell), darkCount(once, cell));

    // Width 0 draws no text, but the inner line still shows.
    grid->setCells(2, 2, QStringLiteral("AB\rCD"));
    grid->setCellFontWidths(2, 2, 0);
    const QImage none = grid->renderImage();
    EXPECT_EQ(darkCount(none, cell), 0);
    EXPECT_EQ(px(none, cell.Left + 5, cell.Top + 13), rgbColor(192, 192, 192));
}

TEST_F(Grid, SelectedCellShowsFocusColourOverTheHatch) {
    grid->setFocusCellColor(kFocus);
    for (int c = 2; c <= 3; ++c) {
        grid->setCellBrushEnabled(c, 2, true);
        grid->setCellBrushStyles(c, 2, bsCross);
        grid->setCellBrushColors(c, 2, clBlack);
    }
    grid->setSelection(gridRect(1, 1, 2, 2)); // (2, 2) selected, (3, 2) not
    const QImage im = grid->renderImage();
    const TRect sel = grid->cellRect(2, 2);
    const TRect plain = grid->cellRect(3, 2);
    for (int y = sel.Top; y < sel.Bottom; ++y)
        for (int x = sel.Left; x < sel.Right; ++x)
            ASSERT_EQ(px(im, x, y), kFocus) << x << "," << y;
    EXPECT_GT(darkCount(im, plain), 20);
    EXPECT_EQ(grid->getCellBrushStyles(4, 4), grid->canvasBrushStyle());
}

TEST_F(Grid, FocusDrawDecidesTheSelectionColoursWithoutFocus) {
    grid->setFocusCellColor(kFocus);
    grid->setSelection(gridRect(1, 1, 2, 1));
    const TRect r = grid->cellRect(1, 1);
    ASSERT_FALSE(grid->gridFocused());
    EXPECT_EQ(px(grid->renderImage(), r.Left + 1, r.Top + 1), kFocus);
    grid->setFocusDraw(false);
    const QImage im = grid->renderImage();
    EXPECT_EQ(px(im, r.Left + 1, r.Top + 1), clWhite);
    EXPECT_EQ(px(im, r.Left + 2, r.Top), clWhite); // no dotted frame either
}

TEST_F(Grid, FocusFrameDotsInvertWhatLiesUnder) {
    grid->setCellColors(2, 2, kGrey);
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    ASSERT_TRUE(grid->focusCell(2, 2, true));
    QImage im = grid->renderImage();
    const TRect r = grid->cellRect(2, 2);
    const int right = r.Right - 1, bottom = r.Bottom - 1;
    EXPECT_EQ(px(im, r.Left, r.Top), clWhite);
    EXPECT_EQ(px(im, r.Left + 2, r.Top), clWhite);
    EXPECT_EQ(px(im, r.Left + 1, r.Top), kGrey);
    EXPECT_EQ(px(im, r.Left + 2, bottom), clWhite);
    EXPECT_EQ(px(im, r.Left, r.Top + 2), clWhite);
    EXPECT_EQ(px(im, r.Left, r.Top + 3), kGrey);
    EXPECT_EQ(px(im, right, r.Top + 4), clWhite);

    // On white the dots are the plain complement, black.
    ASSERT_TRUE(grid->focusCell(3, 3, true));
    im = grid->renderImage();
    const TRect w = grid->cellRect(3, 3);
    EXPECT_EQ(px(im, w.Left + 4, w.Top), clBlack);
    EXPECT_EQ(px(im, w.Left + 5, w.Top), clWhite);
    // The grey cell lost its frame.
    EXPECT_EQ(px(im, r.Left + 2, r.Top), kGrey);

    // With goDrawFocusSelected the focused cell takes the focus colour first.
    grid->setFocusCellColor(kFocus);
    grid->setOptions(grid->Options() + goDrawFocusSelected);
    im = grid->renderImage();
    EXPECT_EQ(px(im, w.Left + 1, w.Top + 1), kFocus);
    EXPECT_EQ(px(im, w.Left + 2, w.Top), TColor(~kFocus & 0xFFFFFF));
}

TEST_F(Grid, RowSelectFramesTheRowAsOne) {
    grid->setOptions(grid->Options() + goRowSelect);
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    ASSERT_TRUE(grid->focusCell(2, 2, true));
    const QImage im = grid->renderImage();
    const TRect first = grid->cellRect(1, 2), middle = grid->cellRect(3, 2),
                last = grid->cellRect(5, 2);
    // The row is selected, so it shows the selection colour under the dots.
    const TColor fill = colorToRgb(clHighlight);
    const TColor dot = ~fill & 0xFFFFFF;
    EXPECT_EQ(px(im, first.Left, first.Top + 2), dot);    // left edge
    EXPECT_EQ(px(im, middle.Left, middle.Top + 2), fill); // no side edges
    EXPECT_EQ(px(im, middle.Left, middle.Top), dot);      // top dots
    EXPECT_EQ(px(im, last.Right - 1, last.Top + 2), dot); // right edge
    EXPECT_EQ(px(im, first.Right - 1, first.Top + 2), fill);
}

TEST_F(Grid, CellDivideOffWrapsLeftAligned) {
    grid->setColWidths(2, 60);
    grid->setRowHeights(2, 80);
    grid->setCellAlignments(2, 2, taRightJustify);
    grid->setCells(2, 2, QStringLiteral("WW WW WW"));
    grid->setCellDivide(false);
    const QImage im = grid->renderImage();
    const TRect r = grid->cellRect(2, 2);
    EXPECT_GT(darkCount(im, Rect(r.Left, r.Top, r.Left + 8, r.Top + 20)), 0);
    EXPECT_GT(darkCount(im, Rect(r.Left, r.Top + 22, r.Right, r.Top + 40)), 0); // second line
}

TEST_F(Grid, FixedCellWithEntryKeepsFixedColourAndEntryAlignment) {
    grid->setFixedAlignment(taRightJustify);
    SCGCellParam* p = grid->cellParams().add();
    p->setCol(2);
    p->setRow(0);
    grid->setCells(2, 0, QStringLiteral("W"));
    const QImage im = grid->renderImage();
    const TRect r = grid->cellRect(2, 0);
    EXPECT_EQ(px(im, r.Right - 2, r.Bottom - 2), 7099731);
    EXPECT_GT(darkCount(im, Rect(r.Left, r.Top, r.Left + 20, r.Bottom)), 0); // left aligned
}

TEST_F(Grid, OutCellTextCanvasResetDecidesTheColour) {
    grid->setCells(2, 2, QStringLiteral("WWW"));
    bool keep = true;
    grid->OnOutCellText = [&](ControlObject*, PriceGrid* g, const TRect&, int c, int r,
                              const QString&, QString&, bool& reset) {
        if (c == 2 && r == 2) {
            g->canvas()->Font.Color = rgbColor(255, 0, 0);
            reset = keep;
        }
    };
    auto redPixels = [&](const QImage& im) {
        const TRect cell = grid->cellRect(2, 2);
        int n = 0;
        for (int y = cell.Top; y < cell.Bottom; ++y)
            for (int x = cell.Left; x < cell.Right; ++x) {
                const TColor c = px(im, x, y);
                if (getRValue(c) > 200 && getGValue(c) < 80) ++n;
            }
        return n;
    };
    EXPECT_EQ(redPixels(grid->renderImage()), 0);
    keep = false;
    EXPECT_GT(redPixels(grid->renderImage()), 0);
}

TEST_F(Grid, CurrentCellEventsFireInOrder) {
    std::vector<std::string> log;
    SCGCellParam* from = grid->cellParams().add();
    from->setCol(1);
    from->setRow(1);
    SCGCellParam* to = grid->cellParams().add();
    to->setCol(2);
    to->setRow(2);
    for (auto* p : {from, to}) {
        const std::string n = p == from ? "old." : "new.";
        p->OnExitCell = [&log, n](ControlObject*, PriceGrid*, int, int, int, int) {
            log.push_back(n + "ExitCell");
        };
        p->OnExitCol = [&log, n](ControlObject*, PriceGrid*, int, int) {
            log.push_back(n + "ExitCol");
        };
        p->OnExitRow = [&log, n](ControlObject*, PriceGrid*, int, int) {
            log.push_back(n + "ExitRow");
        };
        p->OnEnterCell = [&log, n](ControlObject*, PriceGrid*, int, int, int, int) {
            log.push_back(n + "EnterCell");
        };
        p->OnEnterCol = [&log, n](ControlObject*, PriceGrid*, int, int) {
            log.push_back(n + "EnterCol");
        };
        p->OnEnterRow = [&log, n](ControlObject*, PriceGrid*, int, int) {
            log.push_back(n + "EnterRow");
        };
    }
    grid->OnSelectCell = [&](ControlObject*, int, int, bool&) { log.push_back("SelectCell"); };
    grid->OnCellChanged = [&](ControlObject*, int oc, int orow, int nc, int nr) {
        log.push_back("CellChanged " + std::to_string(oc) + std::to_string(orow) +
                      std::to_string(nc) + std::to_string(nr));
    };
    grid->OnColChanged = [&](ControlObject*, int, int) { log.push_back("ColChanged"); };
    grid->OnRowChanged = [&](ControlObject*, int, int) { log.push_back("RowChanged"); };
    grid->loaded(); // old cell := current cell (1, 1)
    log.clear();
    ASSERT_TRUE(grid->focusCell(2, 2, true));
    const std::vector<std::string> expected = {
        "SelectCell",   "old.ExitCell", "old.ExitCol",      "old.ExitRow", "new.EnterCell",
        "new.EnterCol", "new.EnterRow", "CellChanged 1122", "ColChanged",  "RowChanged"};
    EXPECT_EQ(log, expected);

    // A move of the row alone fires no column events.
    log.clear();
    ASSERT_TRUE(grid->focusCell(2, 3, true));
    EXPECT_EQ(log, (std::vector<std::string>{"SelectCell", "new.ExitCell", "new.ExitRow",
                                             "CellChanged 2223", "RowChanged"}));

    // The same cell again: no events, but the moved flag.
    grid->renderImage();
    EXPECT_FALSE(grid->currentCellMoved());
    log.clear();
    grid->selectCell(2, 3);
    EXPECT_EQ(log, std::vector<std::string>{"SelectCell"});
    EXPECT_TRUE(grid->currentCellMoved());
    grid->renderImage();
    EXPECT_FALSE(grid->currentCellMoved());
}

TEST_F(Grid, ARaisingHandlerRefusesTheMove) {
    SCGCellParam* p = grid->cellParams().add();
    p->setCol(1);
    p->setRow(1);
    bool raise = true;
    p->OnExitCell = [&](ControlObject*, PriceGrid*, int, int, int, int) {
        if (raise) throw ControlError(QStringLiteral("no"));
    };
    int changed = 0;
    std::pair<int, int> lastOld;
    grid->OnCellChanged = [&](ControlObject*, int oc, int orow, int, int) {
        ++changed;
        lastOld = {oc, orow};
    };
    grid->loaded();
    grid->renderImage();
    EXPECT_FALSE(grid->focusCell(3, 3, true));
    EXPECT_EQ(grid->col(), 1);
    EXPECT_EQ(grid->row(), 1);
    EXPECT_EQ(changed, 0);
    EXPECT_FALSE(grid->currentCellMoved());
    raise = false;
    EXPECT_TRUE(grid->focusCell(3, 3, true));
    EXPECT_EQ(lastOld, std::make_pair(1, 1));
}

TEST_F(Grid, OptionsFollowTheCurrentCell) {
    SCGCellParam* p = grid->cellParams().add();
    p->setCol(2);
    p->setRow(2);
    p->setOptions(grid->Options() + goEditing);
    p->setOptionsEnabled(true);
    ASSERT_TRUE(grid->focusCell(2, 2, true));
    EXPECT_TRUE(grid->inForceOptions().contains(goEditing));
    EXPECT_FALSE(grid->Options().contains(goEditing));
    ASSERT_TRUE(grid->focusCell(3, 3, true));
    EXPECT_FALSE(grid->inForceOptions().contains(goEditing));
    // Written options are in force at once; the next move applies them again.
    grid->setOptions(grid->Options() + goEditing);
    EXPECT_TRUE(grid->inForceOptions().contains(goEditing));
}

TEST_F(Grid, KeysMoveTheCellAndOnKeyDownSeesThemFirst) {
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    std::vector<int> keys;
    int clicks = 0;
    bool swallow = false;
    grid->OnKeyDown = [&](ControlObject*, int& key, ShiftState) {
        keys.push_back(key);
        if (swallow) key = 0;
    };
    grid->onClicked = [&](ControlObject*) { ++clicks; };
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->col(), 2);
    EXPECT_EQ(grid->row(), 2);
    EXPECT_EQ(keys, (std::vector<int>{VK_DOWN, VK_RIGHT}));
    EXPECT_EQ(clicks, 2);
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(grid->selection(), gridRect(2, 2, 2, 3));
    swallow = true;
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(grid->row(), 3);
    // fixed cells are never current.
    swallow = false;
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(grid, Qt::Key_Up);
    EXPECT_EQ(grid->row(), 1);
}

TEST_F(Grid, EditorOpensOnTypingAndClosesOnEnter) {
    grid->setOptions(grid->Options() + goEditing);
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    std::vector<int> keys;
    std::vector<QString> edits;
    grid->OnKeyDown = [&](ControlObject*, int& key, ShiftState) { keys.push_back(key); };
    grid->OnSetEditText = [&](ControlObject*, int c, int r, const QString& v) {
        EXPECT_EQ(c, 1);
        EXPECT_EQ(r, 1);
        edits.push_back(v);
    };
    EXPECT_EQ(grid->inplaceEditor(), nullptr);
    QTest::keyClick(grid, Qt::Key_5);
    ASSERT_TRUE(grid->editorMode());
    QLineEdit* editor = grid->inplaceEditor();
    QTest::keyClick(editor, Qt::Key_0);
    QTest::keyClick(editor, Qt::Key_Period);
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("50."));
    EXPECT_EQ(edits.back(), QStringLiteral("50."));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(grid->editorMode());
    EXPECT_TRUE(grid->hasFocus());
    EXPECT_EQ(keys, (std::vector<int>{53, 48, VK_OEM_PERIOD, VK_RETURN}));

    // Escape restores the cell; a double click opens the editor.
    const QPoint centre = grid->cellRect(1, 1).toQRect().center();
    QTest::mouseDClick(grid, Qt::LeftButton, Qt::NoModifier, centre);
    ASSERT_TRUE(grid->editorMode());
    QTest::keyClick(editor, Qt::Key_7);
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("7"));
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_FALSE(grid->editorMode());
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("50."));

    // A key handler can close the editor itself, as the price sheet does.
    grid->OnKeyDown = [&](ControlObject*, int& key, ShiftState) {
        if (key == VK_DOWN && grid->editorMode()) grid->setEditorMode(false);
    };
    // Backspace opens the editor on the emptied cell.
    QTest::keyClick(grid, Qt::Key_Backspace);
    ASSERT_TRUE(grid->editorMode());
    EXPECT_EQ(grid->cells(1, 1), QString());
    QTest::keyClick(editor, Qt::Key_2);
    QTest::keyClick(editor, Qt::Key_Down);
    EXPECT_FALSE(grid->editorMode());
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("2"));
    EXPECT_EQ(grid->row(), 2);

    // Without goEditing typing opens nothing.
    grid->setOptions(grid->Options() - goEditing);
    QTest::keyClick(grid, Qt::Key_3);
    EXPECT_FALSE(grid->editorMode());
}

TEST_F(Grid, EveryPrintableKeyReachesTheCell) {
    grid->setOptions(grid->Options() + goEditing);
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    std::vector<int> keys;
    grid->OnKeyDown = [&](ControlObject*, int& key, ShiftState) { keys.push_back(key); };
    // Punctuation opens the editor and comes with the code of its key.
    QTest::keyClick(grid, Qt::Key_Equal);
    ASSERT_TRUE(grid->editorMode());
    QLineEdit* editor = grid->inplaceEditor();
    QTest::keyClick(editor, Qt::Key_ParenLeft);
    QTest::keyClick(editor, Qt::Key_Semicolon);
    // A key with no desktop code is typed all the same.
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
    QApplication::sendEvent(editor, &press);
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("=(;\u00e9"));
    EXPECT_EQ(keys, (std::vector<int>{VK_OEM_PLUS, 57, VK_OEM_1, 0}));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(grid->editorMode());
    // Typed into the closed cell, such a key opens the editor too.
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9"));
    QApplication::sendEvent(grid, &again);
    ASSERT_TRUE(grid->editorMode());
    EXPECT_EQ(grid->cells(1, 1), QStringLiteral("\u00e9"));
}

TEST_F(Grid, HandlerFailuresGoToTheProgramsHandler) {
    grid->setOptions(grid->Options() + goEditing);
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    QStringList reported;
    grid->OnFailure = [&](const QString& m) { reported << m; };
    // A raising key handler ends the key: the cell doesn't move.
    grid->OnKeyDown = [&](ControlObject*, int& key, ShiftState) {
        if (key == VK_DOWN) throw ControlError(QStringLiteral("key"));
    };
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(grid->row(), 1);
    // The move is made before onClicked runs.
    grid->onClicked = [&](ControlObject*) { throw ControlError(QStringLiteral("click")); };
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(grid->col(), 2);
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier,
                      grid->cellRect(3, 3).toQRect().center());
    EXPECT_EQ(grid->col(), 3);
    grid->onClicked = nullptr;
    grid->OnSelectCell = [&](ControlObject*, int, int, bool&) {
        throw ControlError(QStringLiteral("select"));
    };
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier,
                      grid->cellRect(4, 4).toQRect().center());
    EXPECT_EQ(grid->col(), 3);
    grid->OnSelectCell = nullptr;
    grid->OnSetEditText = [&](ControlObject*, int, int, const QString&) {
        throw ControlError(QStringLiteral("edit"));
    };
    QTest::keyClick(grid, Qt::Key_5);
    EXPECT_TRUE(grid->editorMode());
    EXPECT_EQ(grid->cells(3, 3), QStringLiteral("5"));
    grid->OnFailure = nullptr;
    EXPECT_EQ(reported,
              (QStringList{QStringLiteral("key"), QStringLiteral("click"), QStringLiteral("click"),
                           QStringLiteral("select"), QStringLiteral("edit")}));
}

TEST_F(Grid, MouseSelectsCellsAndRanges) {
    ASSERT_NO_FATAL_FAILURE(focusGrid());
    int clicks = 0;
    grid->onClicked = [&](ControlObject*) { ++clicks; };
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier,
                      grid->cellRect(3, 2).toQRect().center());
    EXPECT_EQ(grid->col(), 3);
    EXPECT_EQ(grid->row(), 2);
    EXPECT_EQ(clicks, 1);
    QTest::mouseClick(grid, Qt::LeftButton, Qt::ShiftModifier,
                      grid->cellRect(4, 4).toQRect().center());
    EXPECT_EQ(grid->selection(), gridRect(3, 2, 4, 4));
    // A click on a fixed cell selects nothing.
    QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier,
                      grid->cellRect(0, 0).toQRect().center());
    EXPECT_EQ(grid->col(), 4);
    // Column sizing on the fixed row's border.
    grid->setOptions(grid->Options() + goColSizing);
    const int border = grid->cellRect(1, 0).Right;
    QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, QPoint(border, 5));
    QMouseEvent move(QEvent::MouseMove, QPointF(border + 20, 5),
                     grid->mapToGlobal(QPointF(border + 20, 5)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(grid, &move);
    QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, QPoint(border + 20, 5));
    EXPECT_EQ(grid->colWidths(1), 100);
}

} // namespace
