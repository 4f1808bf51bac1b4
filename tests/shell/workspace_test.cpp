// The main window on a real database made by the suite stand-in, offscreen,
// with the person at the keyboard played by the scripted dialogs.
#include "controls/numberedit.h"
#include "engine/calcrow.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"
#include "shell/settingsfiles.h"
#include "support/storedprices.h"
#include "support/workspace_fixture.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QSplitter>
#include <QToolTip>

namespace {

using Workspace = WorkspaceFixture;

// The start, and the results shown by the toggle for the side selected.
TEST_F(Workspace, StartShowsTheFirstPipeTypeWithTheEnginesPricesOnTheSideSelected) {
    MainWindow& f = open();
    EXPECT_FALSE(f.noDataFolder || f.menus().actions.undoAction->isEnabled());
    EXPECT_TRUE(f.tree->currentItem() == f.tree->node(1) && f.sheet()->tabs()->count() == 4);
    // No demo data at node 20.
    EXPECT_EQ(QStringList({f.tree->node(1)->text(0), f.tree->node(20)->text(0),
                           f.header()->goodsBox()->text(), f.statusPanel(5)}),
              QStringList({rows()[1].goods().trimmed(), u("----"), rows()[1].goods(),
                           f.workspace().paths().databaseFolder}));
    // The prices on the sheet are the engine's on the stored rows.
    ws().load(1, 1);
    doc().calculateAll();
    for (int g = 1; g <= 14; ++g) {
        const auto texts = grid1LineTexts(rows()[g], SheetView{});
        for (int c = 0; c < Grid1Cols; ++c)
            EXPECT_EQ(cell1(c, g), texts[std::size_t(c)]) << g;
        EXPECT_EQ(cell2(1, g), formatAmount(rows()[g].submittedPrice));
    }
    // The toggle shows the results of the side selected; the list side has none.
    PriceGrid* side = f.sheet()->materialGrid();
    ASSERT_TRUE(side->focusCell(3, 1));
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton);
    EXPECT_TRUE(f.header()->resultsSwitch()->isOn() && cell1(4, 1) == u("--"));
    ASSERT_TRUE(side->focusCell(1, 1));
    EXPECT_EQ(cell1(4, 1), formatGeneral(rows()[1].submittedAmounts[0]));
}

TEST_F(Workspace, MissingDataFolderRefusesAndWritesNothing) {
    QDir(dataRootPath()).removeRecursively();
    dialogs.answerBox(TaskDialog::IdYes);
    MainWindow& f = open();
    EXPECT_TRUE(f.noDataFolder && !f.isVisible());
    EXPECT_TRUE(dialogs.boxes().size() == 1 &&
                dialogs.boxes()[0].instruction.contains(u("Velmora本体を先に一度起動")));
    closeForm();
    EXPECT_FALSE(QDir(dataRootPath()).exists());
}

// Clicks and keys load what they select; names from the store: blanks only
// make an empty node, a long one shows whole in the hint, and an empty
// detail caption takes the default.
TEST_F(Workspace, ClicksAndKeysInTheTreeLoadWhatTheySelectAndTheStoredNamesShow) {
    const QString longName = u("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA) 屋内一般配管用の長い名前");
    for (const QString& sql :
         {u("UPDATE ex_kanzai SET GOODS='   ' where CTG='1' and GRP='3' and KAN='1' and NO='1';"),
          u("UPDATE ex_kanzai SET KIND='' where CTG='1' and GRP='1' and KAN='1' and NO='16';"),
          u("UPDATE ex_kanzai SET GOODS='%1' WHERE GRP='1' AND KAN='6' AND NO='1';").arg(longName)})
        ASSERT_EQ(execStatement(dialogs, db, sql), 1);
    MainWindow& f = open();
    auto at = [&](int node, int pipeType) {
        EXPECT_EQ(std::pair(f.selectedNode(), f.currentPipeType),
                  std::pair(f.tree->node(node), pipeType));
    };
    // A right click keeps the selection and opens the menu.
    clickNode(5, {}, Qt::RightButton);
    QCoreApplication::processEvents();
    at(1, 1);
    EXPECT_TRUE(f.menus().treePopup.menu->isVisible());
    f.menus().treePopup.menu->close();
    f.sheet()->tabs()->setCurrentIndex(2);
    clickNode(2); // group 1, pipe type 2
    EXPECT_EQ(std::tuple(f.currentGroup, f.currentPipeType, f.sheet()->tabs()->currentIndex()),
              std::tuple(1, 2, 0));
    f.tree->setFocus();
    // Down to pipe type 3, then up to the group node, which loads nothing.
    const int steps[][2] = {{3, 3}, {2, 2}, {1, 1}, {0, 1}};
    for (const auto& [node, pipeType] : steps) {
        QTest::keyClick(f.tree, node == 3 ? Qt::Key_Down : Qt::Key_Up);
        QCoreApplication::processEvents();
        at(node, pipeType);
    }
    EXPECT_EQ(f.tree->node(43)->text(0), QString());
    const QRect r = f.tree->visualItemRect(f.tree->node(6));
    QHelpEvent help(QEvent::ToolTip, r.center(), f.tree->viewport()->mapToGlobal(r.center()));
    QCoreApplication::sendEvent(f.tree->viewport(), &help);
    EXPECT_EQ(QToolTip::text(), longName);
    QToolTip::hideText();
    EXPECT_EQ(f.sheet()->tabs()->tabText(1) + '|' + rows()[16].kind(),
              u("機械室・便所|機械室・便所"));
    EXPECT_FALSE(doc().isChanged());
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged()); // the default caption is now in the row
}

// Names and a base labour cost entered with Enter, then the save: every
// field of the 60 rows is stored as shown, with the engine's prices.
TEST_F(Workspace, EnterAppliesTheBoxesAndTheSaveStoresEveryFieldOfAllSixtyRows) {
    MainWindow& f = open();
    f.activateWindow();
    OptionPanel& p = *f.optionPanel();
    auto enter = [](QWidget* w) { QTest::keyClick(w, Qt::Key_Return); };
    auto enterValue = [&](NumberEdit* e, Extended v) {
        e->setFocus();
        e->setValue(v);
        enter(e);
    };
    f.header()->goodsBox()->setText(u("  鋼管'; --\u3000"));
    f.header()->unitBox()->setText(u("本"));
    enter(f.header()->unitBox()); // the text of goodsBox, not of unitBox
    // Blanks go, the full-width space stays.
    EXPECT_EQ(QStringList({f.tree->node(1)->text(0), rows()[1].goods(), rows()[37].unit()}),
              QStringList({u("鋼管'; --\u3000"), u("  鋼管'; --\u3000"), u("本")}));
    enterValue(p.rateSubmittedEdit(), 72);
    EXPECT_EQ(doc().options().rateSubmitted(), Currency::fromInt(72));
    enterValue(p.labourCostCostEdit(), 14000);
    EXPECT_TRUE(doc().options().labourCost() == Currency::fromInt(14000) &&
                p.labourCostSubmittedEdit()->hasFocus());
    p.labourCostSubmittedEdit()->selectAll();
    QTest::keyClicks(p.labourCostSubmittedEdit(), "20500.04"); // as a float x 10000: 205000399.99
    enter(p.labourCostSubmittedEdit());
    EXPECT_TRUE(doc().options().labourSubmitted() == strToCurr("20500.04") &&
                p.labourCostCostEdit()->hasFocus());
    PipeRow copy = rows()[1];
    calcRowWith(copy, doc().options());
    EXPECT_EQ(cell1(2, 1), formatAmount(copy.submittedUnitPrice));
    f.header()->pageEdit()->setText(u("頁;12"));
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_FALSE(doc().isChanged());
    ws().load(1, 1);
    EXPECT_EQ(QStringList({rows()[1].goods(), rows()[5].goods(), rows()[OptionRow].unit()}),
              QStringList({u("  鋼管'; --\u3000"), u("頁;12"), u("本")}));
    EXPECT_EQ(doc().options().labourSubmitted(), strToCurr("20500.04"));
    // What the engine makes of the stored rows with the new costs.
    EXPECT_EQ(StoredPrices(db, 1, 1), computedPrices(db, 1, 1));
}

// A click on the tree and the close ask before changes are lost; each answer
// does what it says.
TEST_F(Workspace, TreeClicksAndClosingAskAboutChanges) {
    open();
    closeForm(); // unchanged: nothing asked
    MainWindow* f = &open();
    auto change = [&](int cost, bool apply = true) {
        f->optionPanel()->labourCostSubmittedEdit()->setValue(cost);
        if (apply) f->applyControls();
    };
    // The pipe type shown and the base labour cost stored for pipe type 1.
    auto shownAndStored = [&] {
        return QString::number(f->currentPipeType) + ' ' + stored(1, 1, 60, "DATA5");
    };
    const QString goods = f->header()->goodsBox()->text(), old2 = stored(1, 2, 60, "DATA5");
    // A group node asks but loads nothing; the save writes the pipe type shown.
    change(24000);
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(21); // group 2
    EXPECT_EQ(std::tuple(dialogs.boxes().size(), f->currentGroup, f->header()->goodsBox()->text()),
              std::tuple(std::size_t(1), 1, goods));
    change(27000, false);
    QTest::mouseClick(f->header()->saveButton(), Qt::LeftButton);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), "27000");
    // キャンセル loses the change.
    change(23000);
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(2);
    EXPECT_EQ(shownAndStored(), "2 27000");
    clickNode(1);
    // はい saves, then loads.
    change(22000);
    dialogs.answerBox(TaskDialog::IdYes);
    clickNode(2);
    ASSERT_EQ(dialogs.boxes().size(), 4u);
    EXPECT_EQ(shownAndStored(), "2 22000");
    // Closing: a cost not applied yet is applied by the close query itself.
    change(25000, false);
    dialogs.answerBox(TaskDialog::IdCancel);
    closeForm();
    EXPECT_EQ(stored(1, 2, 60, "DATA5"), old2);
    f = &open();
    change(26000, false);
    dialogs.answerBox(TaskDialog::IdYes);
    closeForm();
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), "26000");
}

TEST_F(Workspace, GroupNamesAndTheWindowAndDisplayFilesSurviveARestart) {
    MainWindow& f = open();
    dialogs.answerInput(u("上水"));
    f.nameGroup(0);
    f.setGeometry(30, 40, 1440, 845);
    // The user drags the splitter, then hides the status bar and the tree.
    f.treeSplitter->setSizes({220, f.treeSplitter->sizes().value(1) - 70});
    QCoreApplication::processEvents();
    f.menus().view.statusBarItem->trigger();
    f.menus().view.treeListItem->trigger();
    closeForm();
    WindowRect rect;
    readWindowFile(dataRoot, "qorvale_k", rect);
    EXPECT_EQ(QSize(rect.Width, rect.Height), QSize(1440, 845));
    MainWindow& g = open();
    EXPECT_EQ(g.groupName(1) + '|' + g.tree->node(0)->text(0), u("上水|上水"));
    EXPECT_FALSE(g.menus().view.statusBarItem->isChecked() || g.statusLine->isVisible());
    EXPECT_FALSE(g.menus().view.treeListItem->isChecked() || g.tree->isVisible());
    g.menus().view.treeListItem->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(g.tree->width(), 220);
    // Dragged past the window's edge, the tree keeps its least width: it never collapses.
    QSplitterHandle* handle = g.treeSplitter->handle(1);
    auto drag = [&](QEvent::Type type, int x) {
        QMouseEvent e(type, QPointF(x, 5), handle->mapToGlobal(QPointF(x, 5)), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QCoreApplication::sendEvent(handle, &e);
    };
    drag(QEvent::MouseButtonPress, 1);
    drag(QEvent::MouseMove, -300);
    drag(QEvent::MouseButtonRelease, -300);
    EXPECT_EQ(g.treeSplitter->sizes().value(0), 60);
}

// Column 9 of a refrigerant pipe type shows nothing and takes no figure.
TEST_F(Workspace, RefrigerantModeCaptionsAndColumnNine) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1); // the demo holds refrigerant pipe types in group 10
    ASSERT_EQ(doc().options().modeFlag(), 1);
    EXPECT_TRUE(f.sheet()->tabs()->count() == 1 &&
                !f.menus().detail.copyFirstDetailAcrossItem->isEnabled());
    EXPECT_EQ(cell1(5, 0) + '|' + cell1(9, 0), u("継手接合等|---"));
    const Currency old = rows()[2].factor(6);
    typeFactor(9, 2, "3");
    EXPECT_TRUE(rows()[2].factor(6) == old && dialogs.boxes().size() == 1 &&
                dialogs.boxes()[0].content.contains(u("冷媒モード")));
    for (int g = 1; g <= 14; ++g)
        EXPECT_TRUE(cell1(9, g).isEmpty()) << g;
    f.applyControls();
    // The single tab's caption in the rows.
    EXPECT_EQ(cell1(5, 0) + '|' + rows()[1].kind(), u("継手・接合材|一般"));
}

// Stored options with distinct values: each control shows its own, an
// option click recalculates the rows of every tab, and each control writes
// its own field back.
TEST_F(Workspace, OptionControlsMapToTheirFieldsAndAnOptionChangeRecalculatesAllRows) {
    ASSERT_EQ(execStatement(dialogs, db,
                            "UPDATE ex_kanzai SET YOSAN='1', FLAG='0', NET='55', GROSS='65', "
                            "DATA2='100', DATA3='0.5', DATA4='15000', DATA5='18000', DATA6='10', "
                            "DATA7='0', NTANKA='1', GTANKA='1000', FTANKA='0.5' where CTG='1' and "
                            "GRP='1' and KAN='1' and NO='60';"),
              1);
    MainWindow& f = open();
    OptionPanel& p = *f.optionPanel();
    // Laid out: no control of the panel lies over another.
    const QWidget* parts[] = {
        p.modeRadio(),         p.otherCostRadio(),   p.elementRadio(),
        p.fractionRadio(),     p.digitsRadio(),      p.belowDigitsRadio(),
        p.unitDigitsList(),    p.unitFractionList(), p.useRateCheck(),
        p.rateSubmittedEdit(), p.rateCostEdit(),     p.labourCostSubmittedEdit(),
        p.labourCostCostEdit()};
    auto at = [&](const QWidget* w) { return QRect(w->mapTo(&p, QPoint()), w->size()); };
    for (const QWidget* a : parts)
        for (const QWidget* b : parts)
            EXPECT_TRUE(a == b || !at(a).intersects(at(b)))
                << a->objectName().toStdString() << " " << b->objectName().toStdString();
    // Each control with its stored value and the one then set (-1: none), in
    // the order they are set.
    const std::tuple<NumberEdit*, int, int> edits[] = {{p.rateSubmittedEdit(), 65, 70},
                                                       {p.rateCostEdit(), 55, 60},
                                                       {p.labourCostSubmittedEdit(), 18000, 20000},
                                                       {p.labourCostCostEdit(), 15000, 16000}};
    const std::tuple<RadioGroup*, int, int> radios[] = {
        {p.digitsRadio(), 2, 4},   {p.belowDigitsRadio(), 2, 0}, {p.elementRadio(), 1, 3},
        {p.fractionRadio(), 1, 2}, {p.otherCostRadio(), 1, 0},   {p.modeRadio(), 0, -1}};
    for (auto [radio, index, next] : radios)
        EXPECT_EQ(radio->itemIndex(), index) << radio->objectName().toStdString();
    for (auto [edit, value, next] : edits)
        EXPECT_EQ(edit->value(), value) << edit->objectName().toStdString();
    EXPECT_EQ(std::tuple(p.useRateCheck()->checked(), p.unitDigitsList()->itemIndex(),
                         p.unitFractionList()->itemIndex()),
              std::tuple(true, 3, 2));
    EXPECT_EQ(f.sheet()->materialCaption()->text(), u("資材単価")); // untouched until applied
    p.digitsRadio()->setItemIndex(0);                               // adopted digits 1
    p.elementRadio()->setItemIndex(2);                              // two decimals per element
    for (int r : {3, 20, 47}) {
        PipeRow copy = rows()[r];
        calcRowWith(copy, doc().options());
        EXPECT_EQ(copy.submittedUnitPrice, rows()[r].submittedUnitPrice) << r;
    }
    EXPECT_EQ(cell1(1, 3), formatAmount(rows()[3].adoptedUnitPrice));
    EXPECT_EQ(rows()[3].adoptedUnitPrice, rows()[3].submittedUnitPrice);
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());

    for (auto [edit, value, next] : edits)
        edit->setValue(next);
    p.unitDigitsList()->setItemIndex(5);
    p.unitFractionList()->setItemIndex(1);
    for (auto [radio, index, next] : radios)
        if (next >= 0) radio->setItemIndex(next);
    EXPECT_EQ(f.sheet()->materialCaption()->text(), u("資材単価[単価に掛率を使用]"));
    // A plain check box: unchecked, the rate controls stay enabled.
    p.useRateCheck()->SetChecked(false);
    EXPECT_EQ(f.sheet()->materialCaption()->text(), u("資材単価"));
    EXPECT_TRUE(p.rateSubmittedEdit()->isEnabled() && p.rateCostEdit()->isEnabled() &&
                p.unitDigitsList()->isEnabled() && p.unitFractionList()->isEnabled());
    // Rates, base labour costs, unit digits and fraction, adopted digits and
    // fraction, element digits and fraction, rate check; other method, mode.
    const PipeRow& o = rows()[60];
    QStringList fields;
    for (Currency v :
         {o.submittedPrice, o.costPrice, o.factor(5), o.factor(4), o.submittedUnitPrice,
          o.adoptedUnitPrice, o.factor(2), o.factor(3), o.factor(6), o.factor(7), o.costUnitPrice})
        fields << currToStr(v);
    EXPECT_EQ(fields.join(' '), "70 60 20000 16000 4 0 3 0.9 1000 0.5 0");
    EXPECT_EQ(std::pair(o.otherMethod, o.modeFlag), std::pair(0, 0));
}

// A Shift+click on a changed pipe type asks about saving first, then names
// the node; on a group node it names the group in the stored record.
TEST_F(Workspace, ShiftClickAnswersTheSaveQuestionThenNamesTheNode) {
    MainWindow& f = open();
    typeFactor(4, 2, "5");
    // The box runs the event loop as a modal box does; no other box may
    // come up from inside it.
    std::size_t inputsDuringBox = 0;
    dialogs.onBox = [&] {
        const std::size_t before = dialogs.inputs().size();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        inputsDuringBox += dialogs.inputs().size() - before;
    };
    auto shiftClick = [&](int node, const char* name) {
        dialogs.answerInput(u(name));
        clickNode(node, Qt::ShiftModifier);
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    };
    dialogs.answerBox(TaskDialog::IdYes);
    shiftClick(4, "新しい名前");
    dialogs.onBox = nullptr;
    ASSERT_EQ(std::pair(inputsDuringBox, dialogs.inputs().size()), std::pair(0ul, 1ul));
    EXPECT_EQ(f.currentPipeType, 4); // the click loaded it first
    EXPECT_EQ(f.tree->node(4)->text(0) + '|' + stored(1, 1, 2, "DATA1"), u("新しい名前|5"));
    shiftClick(42, "上水");
    EXPECT_EQ(f.groupName(3), u("上水"));
    const QStringList notes =
        queryToLines(db, "SELECT notes FROM exconf where conf='kanzai';").lines;
    EXPECT_TRUE(notes.size() == 1 && nthField(notes[0], 1).contains(u("[GROUP_NAME3]=上水")));
}

} // namespace
