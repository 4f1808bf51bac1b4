// Cell entry in both grids and the size presets, on the real window with real keys.
#include "controls/numberedit.h"
#include "controls/pricegrid.h"
#include "engine/calcrow.h"
#include "sheet/sheettexts.h"
#include "sheet/sizedialog.h"
#include "shell/formwidgets.h"

#include <QAccessible>
#include <QPlainTextEdit>

#include "support/workspace_fixture.h"

namespace {

class CellEntry : public WorkspaceFixture {
protected:
    PriceGrid* g = nullptr; // the composite grid: prices and factors
    PriceGrid* m = nullptr; // the price grid
    MainWindow& start() {
        MainWindow& f = open();
        g = f.sheet()->compositeGrid();
        m = f.sheet()->materialGrid();
        return f;
    }
    // Keys go to the grid, or to its editor while one is open.
    static QWidget* keys(PriceGrid* grid) {
        return grid->editorMode() ? static_cast<QWidget*>(grid->inplaceEditor()) : grid;
    }
    // Chooses a cell as a click would, types the text and presses key (0: none).
    void type(PriceGrid* grid, int col, int row, const char* text, int key = Qt::Key_Return,
              Qt::KeyboardModifiers mods = {}) {
        ASSERT_TRUE(grid->focusCell(col, row));
        for (const char* p = text; *p; ++p)
            QTest::keyClick(keys(grid), *p);
        if (key) QTest::keyClick(keys(grid), Qt::Key(key), mods);
    }
    static QPoint at(PriceGrid* grid, int col, int line) {
        return grid->visualRect(grid->cells().index(line - 1, col)).center();
    }
    static void click(PriceGrid* grid, int col, int line) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(grid, col, line));
    }
    static Currency c(const char* t) { return strToCurr(QString::fromLatin1(t)); }
    QPoint cur() const { return form->sheet()->compositeCell(); }
    bool undoable() const { return form->menus().actions.undoAction->isEnabled(); }
    // The submitted unit price of a row as calculated with the options of now.
    Currency calc(PipeRow r) { return calcRowWith(r, doc().options()), r.submittedUnitPrice; }
    // Opens the size dialog by Space on its button; act runs while it is up, then Run unless run
    // is false.
    void runSizeDialog(std::function<void(SizeDialog*)> act, bool run = true) {
        whenModal([act, run](QWidget* w) {
            auto* dialog = qobject_cast<SizeDialog*>(w);
            ASSERT_NE(dialog, nullptr);
            act(dialog);
            if (run) dialog->runButton->click();
        });
        QTest::keyClick(form->header()->sizeSetButton(), Qt::Key_Space);
    }
};

// Enter stores, recalculates and moves down without filling down, from the last line to the
// first; up and down commit quietly, left, right and the minus key with a beep, and so does
// Escape in an open editor, which undoes nothing; three decimals are shown and an unchanged
// commit stores what is shown; no number stores zero, quietly; with no editor open up only
// moves; in the results view a typed figure is refused with a beep; Shift+Enter fills down.
TEST_F(CellEntry, KeysCommitTheFactorTyped) {
    MainWindow& f = start();
    const Currency below = rows()[4].factor(2);
    type(g, 5, 3, "0.75");
    EXPECT_TRUE(rows()[3].factor(2) == c("0.75") && cell1(2, 3) == formatAmount(calc(rows()[3])));
    EXPECT_TRUE(g->selectedCells() == QRect(5, 4, 1, 1) && rows()[4].factor(2) == below &&
                doc().isChanged() && undoable());
    type(g, 6, 14, "0.06");
    EXPECT_EQ(cur().y(), 1);
    // column, line, typed, closing key, factor stored then (nullptr: none), beeps so far
    const std::vector<std::tuple<int, int, const char*, int, const char*, int>> entries = {
        {8, 6, "0.1234", Qt::Key_Return, "0.1234", 0}, {8, 6, "", Qt::Key_Return, "0.123", 0},
        {4, 2, "1.2.3", Qt::Key_Return, "0", 0},       {4, 5, "1.2", Qt::Key_Down, "1.2", 0},
        {10, 6, "0.3", Qt::Key_Up, "0.3", 0},          {10, 5, "", Qt::Key_Up, nullptr, 0},
        {4, 7, "1.3", Qt::Key_Left, "1.3", 1},         {4, 8, "", Qt::Key_Minus, nullptr, 2}};
    for (const auto& [col, line, text, key, stored, beeps] : entries) {
        auto factors = rows()[line].factors; // column 4 holds the first
        if (stored) factors[std::size_t(col - 4)] = c(stored);
        type(g, col, line, text, key);
        EXPECT_TRUE(rows()[line].factors == factors && dialogs.beeps() == beeps)
            << col << "," << line;
    }
    type(g, 6, 5, "9", Qt::Key_Escape);
    EXPECT_TRUE(rows()[5].factor(3) == c("9") && dialogs.beeps() == 3 && !g->editorMode() &&
                cell1(8, 6) == "0.123" && dialogs.boxes().empty());
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton);
    const auto line3 = rows()[3].factors;
    type(g, 4, 3, "9");
    EXPECT_TRUE(!g->editorMode() && rows()[3].factors == line3 && dialogs.beeps() == 5);
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton); // the factors again
    // Shift+Enter fills down to the last line, passing over a line without a size, and
    // recalculates; from the last line it touches that line alone.
    rows()[12].sizeBytes.clear();
    f.sheet()->showGridRow(12);
    const Currency old12 = rows()[12].factor(4), old9 = rows()[9].factor(4);
    type(g, 7, 10, "0.2", Qt::Key_Return, Qt::ShiftModifier);
    for (int r : {10, 11, 13, 14})
        EXPECT_EQ(rows()[r].factor(4), c("0.2")) << r;
    EXPECT_TRUE(rows()[12].factor(4) == old12 && rows()[9].factor(4) == old9 && cur().y() == 10);
    EXPECT_EQ(cell1(2, 13), formatAmount(calc(rows()[13])));
    const Currency line13 = rows()[13].factor(1);
    type(g, 4, 14, "2", Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(rows()[14].factor(1) == c("2") && rows()[13].factor(1) == line13);
}

// A price goes to the line in all four details; only the current row is recalculated. With the
// rate on, the shown price goes to the four rows and the current tab's row is then made from the
// list price again; only the list price can be edited. First of all, Enter at start and a text
// that is no number.
TEST_F(CellEntry, PriceEntryWritesAllFourDetailsAndRecalculatesTheCurrentRow) {
    MainWindow& f = start();
    // Enter at start (remembered column 4: no field) stores nothing but takes the undo snapshot;
    // a text that is no number is named in a box and stays.
    const auto lines = doc().currentLines();
    const Currency gross2 = rows()[2].submittedPrice;
    QTest::keyClick(keys(m), Qt::Key_Return);
    EXPECT_TRUE(f.sheet()->materialCell().y() == 2 && dialogs.boxes().empty() && undoable());
    EXPECT_EQ(doc().currentLines(), lines);
    type(m, 1, 2, "1.2.3");
    EXPECT_TRUE(dialogs.boxes().size() == 1 && dialogs.boxes()[0].instruction.contains("1.2.3"));
    EXPECT_TRUE(rows()[2].submittedPrice == gross2 && cell2(1, 2) == "1.2.3");
    const Currency otherTab = rows()[19].submittedUnitPrice;
    type(m, 1, 4, "2000");
    for (int r : {4, 19, 34, 49})
        EXPECT_EQ(rows()[r].submittedPrice, c("2000")) << r;
    EXPECT_TRUE(rows()[19].submittedUnitPrice == otherTab &&
                rows()[4].submittedUnitPrice == calc(rows()[4]));
    // No rebuild of the lines: no change yet.
    EXPECT_TRUE(cell1(3, 4) == "2,000" && f.sheet()->materialCell().y() == 5 && !doc().isChanged());
    type(m, 1, 4, ""); // the shown "2,000" committed unchanged stores 2000
    EXPECT_EQ(rows()[4].submittedPrice, c("2000"));

    f.optionPanel()->useRateCheck()->SetChecked(true);
    const Currency fromList = rows()[5].submittedPrice;
    type(m, 1, 5, "");
    EXPECT_TRUE(rows()[5].submittedPrice == fromList &&
                rows()[20].submittedPrice == strToCurr(cell2(1, 5).remove(',')));
    for (int col : {1, 2, 3}) {
        type(m, col, 3, "", 0);
        EXPECT_EQ(m->isEditable(), col == 3) << col;
    }
    type(m, 1, 3, "5", 0);
    EXPECT_FALSE(m->editorMode());
}

// The editor opens by a double click, by F2 and by Backspace (which empties the cell); the
// labels of the lines are never current; the marked line follows the cell chosen. The side that
// the composite grid shows follows the selection of the price grid however it is made (a drag, a
// click inside the range, Shift with an arrow), and a grid that takes the focus works on its
// current cell. Then what a screen reader reads of both grids and of the toggle.
TEST_F(CellEntry, MouseAndKeysOpenTheEditorAndTheMarkFollows) {
    MainWindow& f = start();
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    click(g, 6, 4);
    EXPECT_EQ(cur(), QPoint(6, 4));
    EXPECT_EQ(QList<QColor>({g->cells().background(0, 4), g->cells().background(0, 1),
                             m->cells().background(0, 4)}),
              QList<QColor>({sheetMark(), sheetDark(), sheetMark()}));
    QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, at(g, 6, 4));
    ASSERT_TRUE(g->editorMode() && g->inplaceEditor()->text() == cell1(6, 4));
    QTest::keyClick(keys(g), Qt::Key_Return);
    EXPECT_FALSE(g->editorMode());

    click(g, 2, 7);
    EXPECT_TRUE(g->row() == 5 && cur().y() == 5) << "a fixed column is not chosen";
    QTest::keyClick(keys(g), Qt::Key_F2);
    ASSERT_TRUE(g->editorMode());
    QTest::keyClick(keys(g), Qt::Key_Escape);

    type(g, 7, 2, "", 0);
    ASSERT_FALSE(cell1(7, 2).isEmpty());
    QTest::keyClick(keys(g), Qt::Key_Backspace);
    ASSERT_TRUE(g->editorMode() && cell1(7, 2).isEmpty());
    QTest::keyClick(keys(g), Qt::Key_Return);
    EXPECT_EQ(rows()[2].factor(4), Currency{});

    const PipeRow& r = rows()[5];
    QTest::mousePress(m->viewport(), Qt::LeftButton, {}, at(m, 1, 5));
    QTest::mouseMove(m->viewport(), at(m, 3, 5));
    QTest::mouseRelease(m->viewport(), Qt::LeftButton, {}, at(m, 3, 5));
    EXPECT_TRUE(m->selectedCells() == QRect(QPoint(1, 5), QPoint(3, 5)) &&
                cell1(3, 5) == formatAmount(r.submittedPrice));
    click(m, 3, 5);
    EXPECT_TRUE(m->selectedCells() == QRect(3, 5, 1, 1) &&
                cell1(3, 5) == formatAmount(r.listPrice));
    QTest::keyClick(m, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_TRUE(m->selectedCells().left() == 2 && cell1(3, 5) == formatAmount(r.costPrice));

    click(g, 5, 2);
    click(m, 1, 7);
    ASSERT_EQ(g->row(), 7);
    EXPECT_EQ(cur(), QPoint(5, 2));
    g->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(cur(), QPoint(5, 7));

    // What assistive technology reads of the sheet: both grids are tables whose cells carry the
    // text shown, headed by the column headings; a figure typed with the keyboard is what the
    // cells then report; the toggle of the factor columns reports whether it is on.
    // The texts of a line of cells, or (row -1) the column headings, whose cells are made for
    // the caller, who lets them go.
    const auto line = [](QAccessibleTableInterface* t, int row) {
        QStringList texts;
        for (int c = 0; c < t->columnCount(); ++c)
            if (row >= 0)
                texts << t->cellAt(row, c)->text(QAccessible::Name);
            else
                for (QAccessibleInterface* h :
                     t->cellAt(0, c)->tableCellInterface()->columnHeaderCells()) {
                    texts << h->text(QAccessible::Name);
                    QAccessible::deleteAccessibleInterface(
                        QAccessible::registerAccessibleInterface(h));
                }
        return texts;
    };
    auto* material = QAccessible::queryAccessibleInterface(m)->tableInterface();
    auto* composite = QAccessible::queryAccessibleInterface(g)->tableInterface();
    ASSERT_TRUE(material && composite);
    EXPECT_EQ(material->rowCount(), 14);
    EXPECT_EQ(line(material, 0), (QStringList{"15A", "640", "540", "980"}));
    EXPECT_EQ(line(material, -1), (QStringList{QString(), "提　出", "原　価", "定　価"}));
    EXPECT_EQ(line(composite, -1).mid(0, 5),
              (QStringList{"No", g->text(1, 0), "複合単価", "提出単価", "管"}));
    type(g, 5, 1, "2");
    const QStringList first = line(composite, 0);
    EXPECT_EQ(first[0] + "|" + first[5] + "|" + first[2],
              "15A|2|" + formatAmount(rows()[1].submittedUnitPrice));

    QAccessibleInterface* toggle =
        QAccessible::queryAccessibleInterface(f.header()->resultsSwitch());
    EXPECT_TRUE(toggle->state().checkable && !toggle->state().checked);
    EXPECT_EQ(toggle->text(QAccessible::Name), "歩掛を表示");
    QTest::keyClick(f.header()->resultsSwitch(), Qt::Key_Space);
    EXPECT_TRUE(f.header()->resultsSwitch()->isOn() && toggle->state().checked);
    EXPECT_EQ(toggle->text(QAccessible::Name), "計算結果を表示");
}

// A new pipe type by keyboard alone: sizes typed into the dialog opened with Space, prices,
// factors and the labour cost typed, Ctrl+S.
TEST_F(CellEntry, NewPipeTypeByKeyboardAloneSurvivesARestart) {
    MainWindow& f = start();
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    clickNode(21 + 20); // group 2, pipe type 20: all zeros in the demo
    ASSERT_TRUE(rows()[1].sizeBytes.isEmpty());
    runSizeDialog([](SizeDialog* d) {
        d->sizesEdit->setFocus();
        QTest::keyClicks(d->sizesEdit, "20A");
        QTest::keyClick(d->sizesEdit, Qt::Key_Return);
        QTest::keyClicks(d->sizesEdit, "25A");
    });
    EXPECT_EQ(cell1(0, 2), "25A");
    type(m, 1, 1, "830");
    type(m, 2, 1, "700");
    type(g, 4, 1, "1.1");
    type(g, 8, 1, "0.084");
    NumberEdit* labour = f.optionPanel()->labourCostSubmittedEdit();
    labour->setFocus();
    labour->selectAll();
    QTest::keyClicks(labour, "18000");
    QTest::keyClick(labour, Qt::Key_Return);
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    QTest::keyClick(f.optionPanel()->labourCostCostEdit(), Qt::Key_S, Qt::ControlModifier);
    ASSERT_FALSE(dialogs.boxes().empty());
    closeForm();
    start();
    clickNode(21 + 20);
    // Submitted: 830 x 1.1 = 913 and 18000 x 0.084 = 1512.
    EXPECT_EQ(cell1(0, 1) + "|" + cell1(2, 1), "20A|2,425");
}

using SizePresets = CellEntry;

// Cancel and Escape change nothing. The steel list empties line 15, twenty lines take fifteen and
// text stays text, the refrigerant list has 13 lines, and an empty memo empties every line.
TEST_F(SizePresets, TheListsFillTheLinesOfEveryDetail) {
    start();
    const QString size1 = rows()[1].size();
    for (bool escape : {false, true}) {
        QStringList shown;
        runSizeDialog(
            [&](SizeDialog* d) {
                shown = d->lines();
                d->fillSteelSizes();
                escape ? QTest::keyClick(d->sizesEdit, Qt::Key_Escape) : d->cancelButton->click();
            },
            false);
        EXPECT_TRUE(shown.value(0) == size1 && rows()[1].size() == size1 && !undoable()) << escape;
    }
    // The sizes of rows as stored (nullptr: none).
    const auto expectSizes = [this](const std::vector<std::pair<int, const char*>>& sizes) {
        for (const auto& [r, size] : sizes)
            EXPECT_TRUE(size ? rows()[r].size() == size : rows()[r].sizeBytes.isEmpty())
                << r << ": " << rows()[r].size().toStdString();
    };
    rows()[15].setSize("X");
    runSizeDialog([](SizeDialog* d) { d->fillSteelSizes(); });
    expectSizes({{1, "15A"}, {46, "15A"}, {14, "300A"}, {15, nullptr}, {60, nullptr}});
    EXPECT_TRUE(cell1(0, 14) == "300A" && cell2(0, 1) == "15A" && undoable());
    runSizeDialog([](SizeDialog* d) {
        d->setLines(QString("1000A-X 12.70 S3 S4 S5 S6 S7 S8 S9 S10 S11 S12 S13 S14 S15 S16 S17 "
                            "S18 S19 S20")
                        .split(' '));
    });
    expectSizes({{1, "1000A-"}, {2, "12.70"}, {15, "S15"}, {30, "S15"}, {60, "S15"}});
    runSizeDialog([](SizeDialog* d) { d->fillRefrigerantSizes(); });
    expectSizes({{3, "12.70"}, {13, "50.80"}, {14, nullptr}});
    runSizeDialog([](SizeDialog* d) { d->sizesEdit->clear(); });
    for (int r = 1; r <= 60; ++r)
        EXPECT_TRUE(rows()[r].sizeBytes.isEmpty()) << r;
    EXPECT_TRUE(cell1(0, 1).isEmpty());
}

} // namespace
