// Cell entry in both grids and the size presets, on the real window with
// real keys.
#include "controls/numberedit.h"
#include "controls/pricegrid.h"
#include "engine/calcrow.h"
#include "sheet/sheettexts.h"
#include "sheet/sizedialog.h"
#include "shell/formwidgets.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>

#include "support/modal.h"
#include "support/workspace_fixture.h"

namespace {

class CellEntry : public WorkspaceFixture {
protected:
    // Selects a cell as a click would, firing the grid's events.
    void select(PriceGrid* grid, int col, int row) { ASSERT_TRUE(grid->focusCell(col, row)); }
    // Sends a key to the grid, or to its editor while one is open.
    void press(PriceGrid* grid, Qt::Key key, Qt::KeyboardModifiers mods = {}) {
        QWidget* target = grid->editorMode() ? static_cast<QWidget*>(grid->inplaceEditor()) : grid;
        QTest::keyClick(target, key, mods);
    }
    void type(PriceGrid* grid, const QString& text) {
        for (QChar ch : text) {
            QWidget* target =
                grid->editorMode() ? static_cast<QWidget*>(grid->inplaceEditor()) : grid;
            QTest::keyClick(target, ch.toLatin1());
        }
    }
    // Types a figure into a cell and presses Enter.
    void enter(PriceGrid* grid, int col, int row, const QString& text,
               Qt::KeyboardModifiers mods = {}) {
        select(grid, col, row);
        type(grid, text);
        press(grid, Qt::Key_Return, mods);
    }
    Currency c(const char* t) { return strToCurr(QString::fromLatin1(t)); }
};

TEST_F(CellEntry, FactorEnterStoresRecalculatesAndMovesDown) {
    MainWindow& f = open();
    PipeRow expected = rows()[3];
    expected.factor(2) = c("0.75");
    calcRowWith(expected, doc().options());
    enter(f.sheet()->compositeGrid(), 5, 3, QStringLiteral("0.75"));
    EXPECT_EQ(rows()[3].factor(2), c("0.75"));
    EXPECT_EQ(rows()[3].submittedUnitPrice, expected.submittedUnitPrice);
    EXPECT_EQ(cell1(2, 3), formatAmount(expected.submittedUnitPrice));
    EXPECT_EQ(cell1(5, 3), QStringLiteral("0.75"));
    EXPECT_EQ(f.sheet()->compositeCell().y(), 4);
    EXPECT_EQ(f.sheet()->compositeGrid()->selectedCells(), QRect(QPoint(5, 4), QPoint(5, 4)));
    EXPECT_TRUE(doc().isChanged());
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
    EXPECT_EQ(dialogs.beeps(), 0);
}

TEST_F(CellEntry, LastLineWrapsToTheFirst) {
    MainWindow& f = open();
    enter(f.sheet()->compositeGrid(), 6, 14, QStringLiteral("0.06"));
    EXPECT_EQ(rows()[14].factor(3), c("0.06"));
    EXPECT_EQ(f.sheet()->compositeCell().y(), 1);
}

TEST_F(CellEntry, ShiftEnterFillsDownOnlyLinesWithASize) {
    MainWindow& f = open();
    // line 12 loses its size: the fill-down passes it over.
    rows()[12].sizeBytes.clear();
    f.sheet()->showGridRow(12);
    const Currency old12 = rows()[12].factor(4);
    // The Shift that counts is the one the key event carries.
    enter(f.sheet()->compositeGrid(), 7, 10, QStringLiteral("0.2"), Qt::ShiftModifier);
    for (int r : {10, 11, 13, 14})
        EXPECT_EQ(rows()[r].factor(4), c("0.2")) << r;
    EXPECT_EQ(rows()[12].factor(4), old12);
    EXPECT_NE(rows()[9].factor(4), c("0.2"));
    EXPECT_EQ(f.sheet()->compositeCell().y(), 10); // the cursor stays
    PipeRow expected = rows()[13];
    calcRowWith(expected, doc().options());
    EXPECT_EQ(cell1(2, 13), formatAmount(expected.submittedUnitPrice));
}

TEST_F(CellEntry, UpDownCommitQuietlyLeftRightWithABeep) {
    MainWindow& f = open();
    select(f.sheet()->compositeGrid(), 4, 5);
    type(f.sheet()->compositeGrid(), QStringLiteral("1.2"));
    press(f.sheet()->compositeGrid(), Qt::Key_Down);
    EXPECT_EQ(rows()[5].factor(1), c("1.2"));
    EXPECT_EQ(dialogs.beeps(), 0);
    select(f.sheet()->compositeGrid(), 4, 7);
    type(f.sheet()->compositeGrid(), QStringLiteral("1.3"));
    press(f.sheet()->compositeGrid(), Qt::Key_Left);
    EXPECT_EQ(rows()[7].factor(1), c("1.3"));
    EXPECT_EQ(dialogs.beeps(), 1);
    // The minus key is one of the other keys.
    select(f.sheet()->compositeGrid(), 4, 8);
    press(f.sheet()->compositeGrid(), Qt::Key_Minus);
    EXPECT_EQ(dialogs.beeps(), 2);
}

TEST_F(CellEntry, NoNumberInTheFactorGridStoresZero) {
    MainWindow& f = open();
    enter(f.sheet()->compositeGrid(), 4, 2, QStringLiteral("1.2.3"));
    EXPECT_EQ(rows()[2].factor(1).raw, 0);
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(CellEntry, NoNumberInThePriceGridShowsTheErrorAndKeepsTheRow) {
    MainWindow& f = open();
    const Currency gross = rows()[2].submittedPrice;
    enter(f.sheet()->materialGrid(), 1, 2, QStringLiteral("1.2.3"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains(QStringLiteral("1.2.3")));
    EXPECT_EQ(rows()[2].submittedPrice, gross);
    EXPECT_EQ(cell2(1, 2), QStringLiteral("1.2.3"));
}

TEST_F(CellEntry, PriceEntryWritesAllFourDetailsAndRecalculatesTheCurrentRow) {
    MainWindow& f = open();
    const Currency otherTab = rows()[19].submittedUnitPrice;
    enter(f.sheet()->materialGrid(), 1, 4, QStringLiteral("2000"));
    for (int r : {4, 19, 34, 49})
        EXPECT_EQ(rows()[r].submittedPrice, c("2000")) << r;
    EXPECT_EQ(rows()[19].submittedUnitPrice, otherTab); // not recalculated
    PipeRow expected = rows()[4];
    calcRowWith(expected, doc().options());
    EXPECT_EQ(rows()[4].submittedUnitPrice, expected.submittedUnitPrice);
    EXPECT_EQ(cell2(1, 4), QStringLiteral("2,000"));
    EXPECT_EQ(cell1(3, 4), QStringLiteral("2,000"));
    EXPECT_EQ(f.sheet()->materialCell().y(), 5);
    // No rebuild of the lines: the price entry alone is no change yet.
    EXPECT_FALSE(doc().isChanged());
    // The shown "2,000" committed unchanged stores 2000: separators go.
    select(f.sheet()->materialGrid(), 1, 4);
    press(f.sheet()->materialGrid(), Qt::Key_Return);
    EXPECT_EQ(rows()[4].submittedPrice, c("2000"));
}

TEST_F(CellEntry, RateOnLeavesOnlyTheListPriceEditable) {
    MainWindow& f = open();
    f.optionPanel()->useRateCheck()->SetChecked(true);
    select(f.sheet()->materialGrid(), 1, 3);
    EXPECT_FALSE(f.sheet()->materialGrid()->isEditable());
    select(f.sheet()->materialGrid(), 2, 3);
    EXPECT_FALSE(f.sheet()->materialGrid()->isEditable());
    select(f.sheet()->materialGrid(), 3, 3);
    EXPECT_TRUE(f.sheet()->materialGrid()->isEditable());
    select(f.sheet()->materialGrid(), 1, 3);
    type(f.sheet()->materialGrid(), QStringLiteral("5"));
    EXPECT_FALSE(f.sheet()->materialGrid()->editorMode());
}

TEST_F(CellEntry, RefrigerantColumnNineIsRefused) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1);
    ASSERT_EQ(doc().options().modeFlag(), 1);
    const Currency old = rows()[2].factor(6);
    enter(f.sheet()->compositeGrid(), 9, 2, QStringLiteral("3"));
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].instruction, QStringLiteral("確認"));
    EXPECT_EQ(dialogs.boxes()[0].content, u("冷媒モードです。この列のセルは編集できません。"));
    EXPECT_EQ(rows()[2].factor(6), old);
    EXPECT_TRUE(cell1(9, 2).isEmpty());
}

TEST_F(CellEntry, ThreeDecimalsShownAreWhatAnUnchangedCommitStores) {
    MainWindow& f = open();
    enter(f.sheet()->compositeGrid(), 8, 6, QStringLiteral("0.1234"));
    EXPECT_EQ(rows()[6].factor(5), c("0.1234"));
    EXPECT_EQ(cell1(8, 6), QStringLiteral("0.123"));
    select(f.sheet()->compositeGrid(), 8, 6);
    press(f.sheet()->compositeGrid(), Qt::Key_Return);
    EXPECT_EQ(rows()[6].factor(5), c("0.123"));
}

TEST_F(CellEntry, ResultsViewTurnsNoTextIntoFactors) {
    MainWindow& f = open();
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton);
    ASSERT_TRUE(f.header()->resultsSwitch()->isOn());
    const auto before = rows()[3].factors;
    select(f.sheet()->compositeGrid(), 4, 3);
    type(f.sheet()->compositeGrid(), QStringLiteral("9"));
    press(f.sheet()->compositeGrid(), Qt::Key_Return);
    EXPECT_FALSE(f.sheet()->compositeGrid()->editorMode());
    EXPECT_EQ(rows()[3].factors, before);
    EXPECT_EQ(dialogs.beeps(), 2);
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton);
    enter(f.sheet()->compositeGrid(), 4, 3, QStringLiteral("1.5"));
    EXPECT_EQ(rows()[3].factor(1), c("1.5"));
}

// What assistive technology reads of the sheet: both grids are tables whose
// cells carry the text shown, headed by the column headings; a figure typed
// with the keyboard is what the cells then report; the toggle of the factor
// columns reports whether it is on.
TEST_F(CellEntry, ScreenReadersReadTheGridsAsTablesOfTheFiguresShown) {
    MainWindow& f = open();
    const auto table = [](QWidget* grid) {
        QAccessibleInterface* view = QAccessible::queryAccessibleInterface(grid);
        EXPECT_EQ(view->role(), QAccessible::Table);
        return view->tableInterface();
    };
    const auto rowTexts = [](QAccessibleTableInterface* t, int row) {
        QStringList texts;
        for (int c = 0; c < t->columnCount(); ++c)
            texts << t->cellAt(row, c)->text(QAccessible::Name);
        return texts;
    };
    const auto headings = [](QAccessibleTableInterface* t) {
        QStringList texts;
        for (int c = 0; c < t->columnCount(); ++c) {
            // The header cells are made for the caller, who lets them go.
            for (QAccessibleInterface* h :
                 t->cellAt(0, c)->tableCellInterface()->columnHeaderCells()) {
                texts << h->text(QAccessible::Name);
                QAccessible::deleteAccessibleInterface(QAccessible::registerAccessibleInterface(h));
            }
        }
        return texts;
    };
    QAccessibleTableInterface* material = table(f.sheet()->materialGrid());
    QAccessibleTableInterface* composite = table(f.sheet()->compositeGrid());
    ASSERT_TRUE(material && composite);
    EXPECT_EQ(material->rowCount(), 14);
    EXPECT_EQ(rowTexts(material, 0), (QStringList{u("15A"), u("640"), u("540"), u("980")}));
    EXPECT_EQ(headings(material), (QStringList{QString(), u("提　出"), u("原　価"), u("定　価")}));
    EXPECT_EQ(headings(composite).mid(0, 5),
              (QStringList{u("No"), f.sheet()->compositeGrid()->text(1, 0), u("複合単価"),
                           u("提出単価"), u("管")}));
    EXPECT_EQ(rowTexts(composite, 0).first(), u("15A"));

    enter(f.sheet()->compositeGrid(), 5, 1, QStringLiteral("2"));
    EXPECT_EQ(rowTexts(composite, 0)[5], u("2"));
    EXPECT_EQ(rowTexts(composite, 0)[2], formatAmount(rows()[1].submittedUnitPrice));
    EXPECT_EQ(rowTexts(composite, 0)[2], cell1(2, 1));

    QAccessibleInterface* toggle =
        QAccessible::queryAccessibleInterface(f.header()->resultsSwitch());
    EXPECT_TRUE(toggle->state().checkable);
    EXPECT_FALSE(toggle->state().checked);
    EXPECT_EQ(toggle->text(QAccessible::Name), u("歩掛を表示"));
    QTest::keyClick(f.header()->resultsSwitch(), Qt::Key_Space);
    EXPECT_TRUE(f.header()->resultsSwitch()->isOn());
    EXPECT_TRUE(toggle->state().checked);
    EXPECT_EQ(toggle->text(QAccessible::Name), u("計算結果を表示"));
}

// The editor opens by a double click, by F2 and by Backspace (which empties
// the cell); the labels of the lines are never current; the marked line
// follows the cell chosen.
TEST_F(CellEntry, MouseAndKeysOpenTheEditorAndTheMarkFollows) {
    MainWindow& f = open();
    PriceGrid* g = f.sheet()->compositeGrid();
    const auto centre = [g](int col, int line) {
        return g->visualRect(g->cells().index(line - 1, col)).center();
    };
    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, centre(6, 4));
    EXPECT_EQ(f.sheet()->compositeCell().x(), 6);
    EXPECT_EQ(f.sheet()->compositeCell().y(), 4);
    EXPECT_EQ(g->cells().background(0, 4), sheetMark());
    EXPECT_EQ(g->cells().background(0, 1), sheetDark());
    EXPECT_EQ(f.sheet()->materialGrid()->cells().background(0, 4), sheetMark());
    QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, centre(6, 4));
    ASSERT_TRUE(g->editorMode());
    EXPECT_EQ(g->inplaceEditor()->text(), cell1(6, 4));
    press(g, Qt::Key_Return);
    EXPECT_FALSE(g->editorMode());

    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, centre(2, 7));
    EXPECT_EQ(g->row(), 5) << "a fixed column is not chosen";
    EXPECT_EQ(f.sheet()->compositeCell().y(), 5);
    press(g, Qt::Key_F2);
    ASSERT_TRUE(g->editorMode());
    press(g, Qt::Key_Escape);
    EXPECT_FALSE(g->editorMode());

    select(g, 7, 2);
    ASSERT_FALSE(cell1(7, 2).isEmpty());
    press(g, Qt::Key_Backspace);
    ASSERT_TRUE(g->editorMode());
    EXPECT_EQ(cell1(7, 2), QString());
    press(g, Qt::Key_Return);
    EXPECT_EQ(rows()[2].factor(4), Currency{});
}

// The side that the composite grid shows follows the selection of the price
// grid however it is made (a drag, a click inside the range, Shift with an
// arrow), and a grid that takes the focus works on its current cell.
TEST_F(CellEntry, TheSideAndTheRememberedCellFollowEveryWayOfChoosing) {
    MainWindow& f = open();
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    PriceGrid* m = f.sheet()->materialGrid();
    PriceGrid* g = f.sheet()->compositeGrid();
    const auto at = [](PriceGrid* grid, int col, int line) {
        return grid->visualRect(grid->cells().index(line - 1, col)).center();
    };
    const PipeRow& r = rows()[5];
    QTest::mousePress(m->viewport(), Qt::LeftButton, {}, at(m, 1, 5));
    QTest::mouseMove(m->viewport(), at(m, 3, 5));
    QTest::mouseRelease(m->viewport(), Qt::LeftButton, {}, at(m, 3, 5));
    EXPECT_EQ(m->selectedCells(), QRect(QPoint(1, 5), QPoint(3, 5)));
    EXPECT_EQ(cell1(3, 5), formatAmount(r.submittedPrice));
    QTest::mouseClick(m->viewport(), Qt::LeftButton, {}, at(m, 3, 5));
    EXPECT_EQ(m->selectedCells(), QRect(3, 5, 1, 1));
    EXPECT_EQ(cell1(3, 5), formatAmount(r.listPrice));
    QTest::keyClick(m, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(m->selectedCells().left(), 2);
    EXPECT_EQ(cell1(3, 5), formatAmount(r.costPrice));

    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, at(g, 5, 2));
    QTest::mouseClick(m->viewport(), Qt::LeftButton, {}, at(m, 1, 7));
    ASSERT_EQ(g->row(), 7);
    EXPECT_EQ(f.sheet()->compositeCell(), QPoint(5, 2));
    g->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(f.sheet()->compositeCell(), QPoint(5, 7));
}

TEST_F(CellEntry, NewPipeTypeByKeyboardAloneSurvivesARestart) {
    MainWindow& f = open();
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    clickNode(21 + 20); // group 2, pipe type 20: all zeros in the demo
    ASSERT_TRUE(rows()[1].sizeBytes.isEmpty());
    // Sizes by the dialog, typed into its memo.
    whenModal([](QWidget* w) {
        auto* d = qobject_cast<SizeDialog*>(w);
        d->sizesEdit->setFocus();
        QTest::keyClicks(d->sizesEdit, QStringLiteral("20A"));
        QTest::keyClick(d->sizesEdit, Qt::Key_Return);
        QTest::keyClicks(d->sizesEdit, QStringLiteral("25A"));
        d->runButton->click();
    });
    f.header()->sizeSetButton()->setFocus();
    QTest::keyClick(f.header()->sizeSetButton(), Qt::Key_Space);
    EXPECT_EQ(cell1(0, 2), QStringLiteral("25A"));
    // Prices and factors.
    enter(f.sheet()->materialGrid(), 1, 1, QStringLiteral("830"));
    enter(f.sheet()->materialGrid(), 2, 1, QStringLiteral("700"));
    enter(f.sheet()->compositeGrid(), 4, 1, QStringLiteral("1.1"));
    enter(f.sheet()->compositeGrid(), 8, 1, QStringLiteral("0.084"));
    f.optionPanel()->labourCostSubmittedEdit()->setFocus();
    f.optionPanel()->labourCostSubmittedEdit()->selectAll();
    QTest::keyClicks(f.optionPanel()->labourCostSubmittedEdit(), QStringLiteral("18000"));
    QTest::keyClick(f.optionPanel()->labourCostSubmittedEdit(), Qt::Key_Return);
    // The price column last used chose the cost side: 700 x 1.1 = 770.
    EXPECT_EQ(cell1(2, 1), QStringLiteral("770"));
    select(f.sheet()->materialGrid(), 1, 1);
    const QString price = cell1(2, 1);
    // Submitted: 830 x 1.1 = 913 and 18000 x 0.084 = 1512.
    EXPECT_EQ(price, QStringLiteral("2,425"));
    // Save with Ctrl+S.
    f.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    QTest::keyClick(f.optionPanel()->labourCostCostEdit(), Qt::Key_S, Qt::ControlModifier);
    ASSERT_FALSE(dialogs.boxes().empty());
    EXPECT_EQ(dialogs.boxes().back().content, u("保存しました。"));
    closeForm();
    MainWindow& g = open();
    clickNode(21 + 20);
    EXPECT_EQ(cell1(0, 1), QStringLiteral("20A"));
    EXPECT_EQ(cell2(1, 1), QStringLiteral("830"));
    EXPECT_EQ(cell1(8, 1), QStringLiteral("0.084"));
    EXPECT_EQ(cell1(2, 1), price);
    EXPECT_EQ(g.optionPanel()->labourCostSubmittedEdit()->value(), 18000);
}

TEST_F(CellEntry, EnterInThePriceGridAtStartStoresNothing) {
    MainWindow& f = open();
    const auto before = doc().currentLines();
    const Currency gross = rows()[1].submittedPrice;
    press(f.sheet()->materialGrid(), Qt::Key_Return); // remembered column 4: no field
    EXPECT_EQ(rows()[1].submittedPrice, gross);
    EXPECT_EQ(f.sheet()->materialCell().y(), 2);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled()); // the snapshot was taken
    EXPECT_EQ(doc().currentLines(), before);
}

TEST_F(CellEntry, FillDownFromTheLastLineTouchesItAlone) {
    MainWindow& f = open();
    const Currency line13 = rows()[13].factor(1);
    enter(f.sheet()->compositeGrid(), 4, 14, QStringLiteral("2"), Qt::ShiftModifier);
    EXPECT_EQ(rows()[14].factor(1), c("2"));
    EXPECT_EQ(rows()[13].factor(1), line13);
}

TEST_F(CellEntry, UpCommitsWithoutABeep) {
    MainWindow& f = open();
    select(f.sheet()->compositeGrid(), 10, 6);
    type(f.sheet()->compositeGrid(), QStringLiteral("0.3"));
    press(f.sheet()->compositeGrid(), Qt::Key_Up);
    EXPECT_EQ(rows()[6].factor(7), c("0.3"));
    EXPECT_EQ(dialogs.beeps(), 0);
    // With no editor open, up only moves.
    const auto before = rows()[5].factors;
    select(f.sheet()->compositeGrid(), 10, 5);
    press(f.sheet()->compositeGrid(), Qt::Key_Up);
    EXPECT_EQ(rows()[5].factors, before);
}

TEST_F(CellEntry, PriceCommitWithTheRateOnIsOverwrittenFromTheListPrice) {
    MainWindow& f = open();
    f.optionPanel()->useRateCheck()->SetChecked(true);
    const Currency fromList = rows()[2].submittedPrice;
    select(f.sheet()->materialGrid(), 1, 2);
    press(f.sheet()->materialGrid(), Qt::Key_Return);
    // The shown price went to the four rows; the current tab's row is then
    // made from the list price again.
    EXPECT_EQ(rows()[2].submittedPrice, fromList);
    EXPECT_EQ(rows()[17].submittedPrice, strToCurr(cell2(1, 2).remove(',')));
}

// ---- size presets -----------------------------------------------------------

class SizePresets : public CellEntry {
protected:
    // Opens the dialog from the button; act runs while it is up.
    void runDialog(std::function<void(SizeDialog*)> act) {
        whenModal([act](QWidget* w) {
            auto* dialog = qobject_cast<SizeDialog*>(w);
            ASSERT_NE(dialog, nullptr);
            act(dialog);
        });
        QTest::mouseClick(form->header()->sizeSetButton(), Qt::LeftButton);
    }
};

TEST_F(SizePresets, CancelChangesNothing) {
    MainWindow& f = open();
    const QString size1 = rows()[1].size();
    QStringList shown;
    runDialog([&shown](SizeDialog* d) {
        shown = d->lines();
        d->fillSteelSizes();
        d->cancelButton->click();
    });
    EXPECT_EQ(shown.value(0), size1);
    EXPECT_EQ(rows()[1].size(), size1);
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
}

TEST_F(SizePresets, EscapeCancels) {
    open();
    const QString size1 = rows()[1].size();
    runDialog([](SizeDialog* d) {
        d->fillSteelSizes();
        QTest::keyClick(d->sizesEdit, Qt::Key_Escape);
    });
    EXPECT_EQ(rows()[1].size(), size1);
}

TEST_F(SizePresets, SteelListEmptiesRowFifteen) {
    MainWindow& f = open();
    rows()[15].setSize(QStringLiteral("X"));
    runDialog([](SizeDialog* d) {
        d->fillSteelSizes();
        d->runButton->click();
    });
    EXPECT_EQ(rows()[1].size(), QStringLiteral("15A"));
    EXPECT_EQ(rows()[46].size(), QStringLiteral("15A"));
    EXPECT_EQ(rows()[14].size(), QStringLiteral("300A"));
    EXPECT_TRUE(rows()[15].sizeBytes.isEmpty());
    EXPECT_TRUE(rows()[60].sizeBytes.isEmpty());
    EXPECT_EQ(cell1(0, 14), QStringLiteral("300A"));
    EXPECT_EQ(cell2(0, 1), QStringLiteral("15A"));
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
}

TEST_F(SizePresets, TwentyLinesTakeFifteenAndTextStaysText) {
    open();
    runDialog([](SizeDialog* d) {
        QStringList lines;
        for (int i = 1; i <= 20; ++i)
            lines << QStringLiteral("S%1").arg(i);
        lines[0] = QStringLiteral("1000A-X");
        lines[1] = QStringLiteral("12.70");
        d->setLines(lines);
        d->runButton->click();
    });
    EXPECT_EQ(rows()[1].size(), QStringLiteral("1000A-"));
    EXPECT_EQ(rows()[2].size(), QStringLiteral("12.70"));
    EXPECT_EQ(rows()[15].size(), QStringLiteral("S15"));
    EXPECT_EQ(rows()[60].size(), QStringLiteral("S15"));
    EXPECT_EQ(rows()[30].size(), QStringLiteral("S15"));
}

TEST_F(SizePresets, RefrigerantListAndEmptyMemo) {
    open();
    runDialog([](SizeDialog* d) {
        d->fillRefrigerantSizes();
        EXPECT_EQ(d->lines().size(), 13);
        d->runButton->click();
    });
    EXPECT_EQ(rows()[3].size(), QStringLiteral("12.70"));
    EXPECT_TRUE(rows()[14].sizeBytes.isEmpty());
    runDialog([](SizeDialog* d) {
        d->sizesEdit->clear();
        d->runButton->click();
    });
    for (int r = 1; r <= 60; ++r)
        EXPECT_TRUE(rows()[r].sizeBytes.isEmpty()) << r;
    EXPECT_TRUE(cell1(0, 1).isEmpty());
}

} // namespace
