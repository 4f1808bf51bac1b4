// The main window on a real database made by the suite stand-in, offscreen,
// with the person at the keyboard played by the scripted dialogs.
#include "controls/numberedit.h"
#include "controls/pricegrid.h"
#include "engine/calcrow.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "sheet/sheettexts.h"
#include "shell/confrecord.h"
#include "shell/formwidgets.h"
#include "shell/mainwindow.h"
#include "shell/settingsfiles.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "util/textlines.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <QSplitter>

#include <gtest/gtest.h>

#include "support/workspace_fixture.h"

namespace {

using Workspace = WorkspaceFixture;

QString u(const char* t) {
    return QString::fromUtf8(t);
}

TEST_F(Workspace, StartShowsTheFirstPipeTypeWithTheEnginesPrices) {
    MainWindow& f = open();
    EXPECT_FALSE(f.noDataFolder);
    EXPECT_EQ(f.windowTitle(), u("Qorvale-Ostrel-"));
    EXPECT_EQ(f.tree->node(0)->text(0), u("給水"));
    EXPECT_EQ(f.tree->node(189)->text(0), u("冷媒"));
    EXPECT_EQ(f.tree->currentItem(), f.tree->node(1));
    EXPECT_EQ(f.tree->node(1)->text(0), rows()[1].goods().trimmed());
    EXPECT_EQ(f.tree->node(20)->text(0), u("----")); // no demo data there
    EXPECT_EQ(f.header()->goodsBox()->text(), rows()[1].goods());
    EXPECT_EQ(f.sheet()->tabs()->count(), 4);
    EXPECT_EQ(f.sheet()->tabs()->tabText(0), u("屋内一般"));
    EXPECT_EQ(f.statusPanel(5), f.workspace().paths().databaseFolder);

    // The prices on the sheet are the engine's on the stored rows.
    ws().load(1, 1);
    doc().calculateAll();
    for (int g = 1; g <= 14; ++g) {
        const auto texts = grid1LineTexts(rows()[g], SheetView{});
        for (int c = 0; c < Grid1Cols; ++c)
            EXPECT_EQ(cell1(c, g), texts[std::size_t(c)]) << g;
        EXPECT_EQ(cell2(1, g), formatAmount(rows()[g].submittedPrice));
    }
    EXPECT_TRUE(cell2(1, 1).contains(',') || rows()[1].submittedPrice.raw < 10000000);
    EXPECT_FALSE(f.menus().actions.undoAction->isEnabled());
}

TEST_F(Workspace, MissingDataFolderRefusesAndWritesNothing) {
    QDir(dataRootPath()).removeRecursively();
    dialogs.answerBox(TaskDialog::IdYes);
    MainWindow& f = open();
    EXPECT_TRUE(f.noDataFolder);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    // An information box with the text alone, no heading, one yes button.
    EXPECT_EQ(dialogs.boxes()[0].instruction,
              u("インストール直後は、Velmora本体を先に一度起動してください。"));
    EXPECT_EQ(dialogs.boxes()[0].content, QString());
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconInformation);
    EXPECT_EQ(dialogs.boxes()[0].buttons, TaskDialog::ButtonYes);
    EXPECT_FALSE(f.isVisible());
    closeForm();
    EXPECT_FALSE(QDir(dataRootPath()).exists());
}

TEST_F(Workspace, ClickOnAnotherPipeTypeLoadsItAtTabZero) {
    MainWindow& f = open();
    f.sheet()->tabs()->setCurrentIndex(2);
    clickNode(2); // group 1, pipe type 2
    EXPECT_EQ(f.currentGroup, 1);
    EXPECT_EQ(f.currentPipeType, 2);
    EXPECT_EQ(f.sheet()->tabs()->currentIndex(), 0);
    ws().load(1, 2);
    EXPECT_EQ(f.header()->goodsBox()->text(), rows()[1].goods());
    EXPECT_EQ(cell1(0, 1), rows()[1].size());
    EXPECT_TRUE(dialogs.boxes().empty()); // nothing changed, nothing asked
}

TEST_F(Workspace, OptionChangeRecalculatesAllRowsAndShowsThem) {
    MainWindow& f = open();
    const QString before = cell1(2, 3);
    f.optionPanel()->digitsRadio()->setItemIndex(0);  // adopted digits 1
    f.optionPanel()->elementRadio()->setItemIndex(2); // two decimals per element
    // Every row of every tab follows the engine.
    for (int r : {3, 20, 47}) {
        PipeRow copy = rows()[r];
        calcRowWith(copy, doc().options());
        EXPECT_EQ(copy.submittedUnitPrice, rows()[r].submittedUnitPrice) << r;
    }
    EXPECT_EQ(cell1(1, 3), formatAmount(rows()[3].adoptedUnitPrice));
    EXPECT_EQ(rows()[3].adoptedUnitPrice, rows()[3].submittedUnitPrice);
    EXPECT_NE(before, QString());
    EXPECT_TRUE(f.menus().actions.undoAction->isEnabled());
    EXPECT_EQ(cell1(1, 0), u("採用単価"));
}

TEST_F(Workspace, EnterInBaseLabourCostAppliesAndMovesFocus) {
    MainWindow& f = open();
    f.activateWindow();
    f.optionPanel()->labourCostSubmittedEdit()->setFocus();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(20000);
    QTest::keyClick(f.optionPanel()->labourCostSubmittedEdit(), Qt::Key_Return);
    EXPECT_EQ(doc().options().labourSubmitted(), Currency::fromInt(20000));
    EXPECT_TRUE(f.optionPanel()->labourCostCostEdit()->hasFocus());
    PipeRow copy = rows()[1];
    calcRowWith(copy, doc().options());
    EXPECT_EQ(cell1(2, 1), formatAmount(copy.submittedUnitPrice));
}

TEST_F(Workspace, SaveWritesAllRowsAndSaysSo) {
    MainWindow& f = open();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(21000);
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    ASSERT_FALSE(dialogs.boxes().empty());
    EXPECT_EQ(dialogs.boxes().back().content, u("保存しました。"));
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), u("21000"));
    for (int no : {1, 14, 30, 59}) {
        EXPECT_EQ(stored(1, 1, no, "GTANKA"), currToStr(rows()[no].submittedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "FTANKA"), currToStr(rows()[no].adoptedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "NTANKA"), currToStr(rows()[no].costUnitPrice)) << no;
    }
    EXPECT_FALSE(doc().isChanged());
}

TEST_F(Workspace, NewBaseLabourCostByEnterThenSaveStoresTheEnginesPrices) {
    MainWindow& f = open();
    f.optionPanel()->labourCostSubmittedEdit()->setFocus();
    f.optionPanel()->labourCostSubmittedEdit()->selectAll();
    QTest::keyClicks(f.optionPanel()->labourCostSubmittedEdit(),
                     QStringLiteral("20500.04")); // as a float x 10000: 205000399.99...
    QTest::keyClick(f.optionPanel()->labourCostSubmittedEdit(), Qt::Key_Return);
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    // What the engine makes of the stored rows with the new cost.
    ws().load(1, 1);
    ASSERT_EQ(doc().options().labourSubmitted(), strToCurr(QStringLiteral("20500.04")));
    for (int no : {1, 7, 14, 22, 59}) {
        PipeRow row = rows()[no];
        calcRowWith(row, doc().options());
        EXPECT_EQ(stored(1, 1, no, "GTANKA"), currToStr(row.submittedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "NTANKA"), currToStr(row.costUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "FTANKA"), currToStr(row.adoptedUnitPrice)) << no;
    }
}

TEST_F(Workspace, TreeClickAsksAboutChangesAndSavesOnYes) {
    MainWindow& f = open();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(22000);
    f.applyControls();
    dialogs.answerBox(TaskDialog::IdYes);
    clickNode(2);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].content.endsWith(u("データを保存しますか?")));
    EXPECT_EQ(dialogs.boxes()[0].buttons, TaskDialog::ButtonYes | TaskDialog::ButtonCancel);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), u("22000"));
    EXPECT_EQ(f.currentPipeType, 2);
}

TEST_F(Workspace, TreeClickCancelLosesTheChange) {
    MainWindow& f = open();
    const QString old = stored(1, 1, 60, "DATA5");
    f.optionPanel()->labourCostSubmittedEdit()->setValue(23000);
    f.applyControls();
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(2);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), old);
}

TEST_F(Workspace, GroupNodeClickAsksButLoadsNothing) {
    MainWindow& f = open();
    const QString goods = f.header()->goodsBox()->text();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(24000);
    f.applyControls();
    dialogs.answerBox(TaskDialog::IdCancel);
    clickNode(21); // group 2
    EXPECT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(f.currentGroup, 1);
    EXPECT_EQ(f.header()->goodsBox()->text(), goods);
}

TEST_F(Workspace, ClosingAsksAndCancelClosesWithoutSaving) {
    MainWindow& f = open();
    const QString old = stored(1, 1, 60, "DATA5");
    f.optionPanel()->labourCostSubmittedEdit()->setValue(
        25000); // applied by the close query itself
    dialogs.answerBox(TaskDialog::IdCancel);
    closeForm();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), old);
}

TEST_F(Workspace, ClosingWithYesSaves) {
    MainWindow& f = open();
    f.optionPanel()->labourCostSubmittedEdit()->setValue(26000);
    dialogs.answerBox(TaskDialog::IdYes);
    closeForm();
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), u("26000"));
}

TEST_F(Workspace, ClosingUnchangedAsksNothing) {
    open();
    closeForm();
    EXPECT_TRUE(dialogs.boxes().empty());
}

TEST_F(Workspace, RenamedGroupSurvivesRestart) {
    MainWindow& f = open();
    dialogs.answerInput(u("上水"));
    f.nameGroup(0);
    EXPECT_EQ(f.tree->node(0)->text(0), u("上水"));
    closeForm();
    MainWindow& g = open();
    EXPECT_EQ(g.groupName(1), u("上水"));
    EXPECT_EQ(g.tree->node(0)->text(0), u("上水"));
    EXPECT_EQ(g.groupName(2), u("排水"));
}

TEST_F(Workspace, WindowAndDisplayFilesAreWrittenAndApplied) {
    MainWindow& f = open();
    f.setGeometry(30, 40, 1440, 845);
    f.menus().view.statusBarItem->trigger(); // hide the status bar
    closeForm();
    WindowRect rect;
    readWindowFile(dataRootPath(), QStringLiteral("qorvale_k"), rect);
    EXPECT_EQ(rect.Width, 1440);
    EXPECT_EQ(rect.Height, 845);
    QStringList lines;
    ASSERT_TRUE(readTextFile(displayFilePath(dataRootPath()), lines));
    EXPECT_EQ(lines.value(0), u("[Version]=2.00"));
    EXPECT_EQ(lines.value(3), u("[STATUS_USE]=FALSE"));
    MainWindow& g = open();
    EXPECT_EQ(g.width(), 1440);
    EXPECT_FALSE(g.menus().view.statusBarItem->isChecked());
    EXPECT_FALSE(g.statusLine->isVisible());
}

TEST_F(Workspace, RefrigerantModeCaptionsAndColumnNine) {
    MainWindow& f = open();
    // The demo holds refrigerant pipe types in group 10.
    clickNode(9 * 21 + 1);
    ASSERT_EQ(doc().options().modeFlag(), 1);
    EXPECT_EQ(f.sheet()->tabs()->count(), 1);
    EXPECT_EQ(f.sheet()->tabs()->tabText(0), u("一般"));
    EXPECT_EQ(cell1(5, 0), u("継手接合等"));
    EXPECT_EQ(cell1(9, 0), u("---"));
    EXPECT_FALSE(f.menus().detail.copyFirstDetailAcrossItem->isEnabled());
    for (int g = 1; g <= 14; ++g)
        EXPECT_TRUE(cell1(9, g).isEmpty()) << g;
    f.applyControls();
    EXPECT_EQ(cell1(5, 0), u("継手・接合材"));
}

TEST_F(Workspace, SideSelectionAndToggle) {
    MainWindow& f = open();
    const PipeRow& r = rows()[1];
    ASSERT_TRUE(f.sheet()->materialGrid()->focusCell(2, 1));
    EXPECT_EQ(cell1(1, 1), formatAmount(r.costUnitPrice));
    EXPECT_EQ(cell1(3, 1), formatAmount(r.costPrice));
    ASSERT_TRUE(f.sheet()->materialGrid()->focusCell(3, 1));
    EXPECT_EQ(cell1(3, 1), formatAmount(r.listPrice));
    EXPECT_EQ(cell1(4, 1), currToStr(r.factor(1))); // factors while the toggle is off
    QTest::mouseClick(f.header()->resultsSwitch(), Qt::LeftButton);
    EXPECT_TRUE(f.header()->resultsSwitch()->isOn());
    EXPECT_EQ(cell1(4, 1), u("--"));
    ASSERT_TRUE(f.sheet()->materialGrid()->focusCell(1, 1));
    EXPECT_EQ(cell1(4, 1), formatGeneral(r.submittedAmounts[0]));
    EXPECT_EQ(cell1(1, 1), formatAmount(r.adoptedUnitPrice));
}

// Stored options with distinct values: each control shows its own, and
// each control writes its own field back.
TEST_F(Workspace, OptionControlsMapToTheirFieldsBothWays) {
    ASSERT_EQ(
        execStatement(dialogs, db,
                      QStringLiteral("UPDATE ex_kanzai SET YOSAN='1', FLAG='0', NET='55', "
                                     "GROSS='65', DATA2='100', DATA3='0.5', DATA4='15000', "
                                     "DATA5='18000', DATA6='10', DATA7='0', NTANKA='1', "
                                     "GTANKA='1000', FTANKA='0.5' where CTG='1' and GRP='1' and "
                                     "KAN='1' and NO='60';")),
        1);
    MainWindow& f = open();
    EXPECT_EQ(f.optionPanel()->otherCostRadio()->itemIndex(), 1);
    EXPECT_EQ(f.optionPanel()->modeRadio()->itemIndex(), 0);
    EXPECT_EQ(f.optionPanel()->rateCostEdit()->value(), 55);
    EXPECT_EQ(f.optionPanel()->rateSubmittedEdit()->value(), 65);
    EXPECT_EQ(f.optionPanel()->digitsRadio()->itemIndex(), 2);
    EXPECT_EQ(f.optionPanel()->belowDigitsRadio()->itemIndex(), 2);
    EXPECT_EQ(f.optionPanel()->labourCostCostEdit()->value(), 15000);
    EXPECT_EQ(f.optionPanel()->labourCostSubmittedEdit()->value(), 18000);
    EXPECT_EQ(f.optionPanel()->elementRadio()->itemIndex(), 1);
    EXPECT_EQ(f.optionPanel()->fractionRadio()->itemIndex(), 1);
    EXPECT_TRUE(f.optionPanel()->useRateCheck()->checked());
    EXPECT_EQ(f.optionPanel()->unitDigitsList()->itemIndex(), 3);
    EXPECT_EQ(f.optionPanel()->unitFractionList()->itemIndex(), 2);
    EXPECT_EQ(f.sheet()->materialCaption()->text(),
              u("資材単価")); // untouched until the first apply

    f.optionPanel()->rateSubmittedEdit()->setValue(70);
    f.optionPanel()->rateCostEdit()->setValue(60);
    f.optionPanel()->labourCostSubmittedEdit()->setValue(20000);
    f.optionPanel()->labourCostCostEdit()->setValue(16000);
    f.optionPanel()->unitDigitsList()->setItemIndex(5);
    f.optionPanel()->unitFractionList()->setItemIndex(1);
    f.optionPanel()->digitsRadio()->setItemIndex(4);
    f.optionPanel()->belowDigitsRadio()->setItemIndex(0);
    f.optionPanel()->elementRadio()->setItemIndex(3);
    f.optionPanel()->fractionRadio()->setItemIndex(2);
    f.optionPanel()->otherCostRadio()->setItemIndex(0);
    EXPECT_EQ(f.sheet()->materialCaption()->text(), u("資材単価[単価に掛率を使用]"));
    f.optionPanel()->useRateCheck()->SetChecked(false);
    EXPECT_EQ(f.sheet()->materialCaption()->text(), u("資材単価"));
    const PipeRow& o = rows()[60];
    EXPECT_EQ(o.submittedPrice, Currency::fromInt(70));
    EXPECT_EQ(o.costPrice, Currency::fromInt(60));
    EXPECT_EQ(o.factor(5), Currency::fromInt(20000));
    EXPECT_EQ(o.factor(4), Currency::fromInt(16000));
    EXPECT_EQ(o.submittedUnitPrice, Currency::fromInt(4));
    EXPECT_EQ(o.adoptedUnitPrice, Currency::fromInt(0));
    EXPECT_EQ(o.factor(2), Currency::fromInt(3));
    EXPECT_EQ(o.factor(3), Currency::fromRaw(9000));
    EXPECT_EQ(o.factor(6), Currency::fromInt(1000));
    EXPECT_EQ(o.factor(7), Currency::fromRaw(5000));
    EXPECT_EQ(o.otherMethod, 0);
    EXPECT_EQ(o.modeFlag, 0);
    EXPECT_EQ(o.costUnitPrice.raw, 0);
}

TEST_F(Workspace, EnterInANameBoxNamesTheNodeAndApplies) {
    MainWindow& f = open();
    f.header()->goodsBox()->setText(u("  新しい管材\u3000"));
    f.header()->unitBox()->setText(u("本"));
    QTest::keyClick(f.header()->unitBox(), Qt::Key_Return); // the text of goodsBox, not of unitBox
    // Blanks go, the full-width space stays.
    EXPECT_EQ(f.tree->node(1)->text(0), u("新しい管材\u3000"));
    EXPECT_EQ(rows()[1].goods(), u("  新しい管材\u3000"));
    EXPECT_EQ(rows()[37].unit(), u("本"));
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(Workspace, ShiftReleaseOnTheTreeNamesTheNode) {
    MainWindow& f = open();
    dialogs.answerInput(u("仮の名前"));
    clickNode(3, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    ASSERT_EQ(dialogs.inputs().size(), 1u);
    EXPECT_EQ(dialogs.inputs()[0].prompt, u("名称を入力してください"));
    EXPECT_EQ(f.tree->node(3)->text(0), u("仮の名前"));
    EXPECT_EQ(f.currentPipeType, 3); // the click loaded it first
    // On a group node the menu caption follows, and the record is written.
    dialogs.answerInput(u("上水"));
    clickNode(42, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.groupName(3), u("上水"));
    const QStringList notes =
        queryToLines(db, QStringLiteral("SELECT notes FROM exconf where conf='kanzai';")).lines;
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(nthField(notes[0], 1).contains(u("[GROUP_NAME3]=上水")));
}

TEST_F(Workspace, EnterInTheRatesAppliesAndTheLabourCostsSwapFocus) {
    MainWindow& f = open();
    f.activateWindow();
    f.optionPanel()->rateSubmittedEdit()->setFocus();
    f.optionPanel()->rateSubmittedEdit()->setValue(72);
    QTest::keyClick(f.optionPanel()->rateSubmittedEdit(), Qt::Key_Return);
    EXPECT_EQ(doc().options().rateSubmitted(), Currency::fromInt(72));
    f.optionPanel()->labourCostCostEdit()->setFocus();
    f.optionPanel()->labourCostCostEdit()->setValue(14000);
    QTest::keyClick(f.optionPanel()->labourCostCostEdit(), Qt::Key_Return);
    EXPECT_EQ(doc().options().labourCost(), Currency::fromInt(14000));
    EXPECT_TRUE(f.optionPanel()->labourCostSubmittedEdit()->hasFocus());
}

TEST_F(Workspace, SaveWritesEveryFieldOfAllSixtyRows) {
    MainWindow& f = open();
    f.header()->goodsBox()->setText(u("鋼管'; --"));
    f.header()->pageEdit()->setText(u("頁;12"));
    f.header()->unitBox()->setText(u("本"));
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    const QStringList shown = doc().currentLines();
    ws().load(1, 1);
    for (int r = 1; r <= 60; ++r)
        EXPECT_EQ(rowLine(rows()[r]), shown[r - 1]) << r;
    EXPECT_EQ(rows()[1].goods(), u("鋼管'; --"));
    EXPECT_EQ(rows()[5].goods(), u("頁;12"));
    EXPECT_EQ(rows()[OptionRow].unit(), u("本"));
}

TEST_F(Workspace, DisplayFileHidesTheTreeAndSetsItsWidth) {
    QDir().mkpath(dataRootPath() + QStringLiteral("/conf"));
    ASSERT_TRUE(writeTextFile(displayFilePath(dataRootPath()),
                              {u("[Version]=2.00"), u("[CheckBox1]=TRUE"), u("[TREE_USE]=FALSE"),
                               u("[STATUS_USE]=TRUE"), u("[TREEVIEW_WIDTH]=150")}));
    MainWindow& f = open();
    EXPECT_FALSE(f.menus().view.treeListItem->isChecked());
    EXPECT_FALSE(f.tree->isVisible());
    EXPECT_EQ(f.treeSplitter->sizes().value(0), 150);
    EXPECT_FALSE(f.header()->resultsSwitch()->isOn()); // stored, never read back
    f.menus().view.treeListItem->trigger();
    EXPECT_TRUE(f.tree->isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(f.tree->width(), 150);
    // The user drags the splitter; the close writes the tree's new width.
    f.treeSplitter->setSizes({220, f.treeSplitter->sizes().value(1) - 70});
    QCoreApplication::processEvents();
    EXPECT_EQ(f.tree->width(), 220);
    closeForm();
    QStringList lines;
    ASSERT_TRUE(readTextFile(displayFilePath(dataRootPath()), lines));
    EXPECT_EQ(lines.value(4), u("[TREEVIEW_WIDTH]=220"));
}

TEST_F(Workspace, TreeNamesAndDetailCaptionsFromTheStore) {
    ASSERT_EQ(execStatement(dialogs, db,
                            QStringLiteral("UPDATE ex_kanzai SET GOODS='   ' where CTG='1' "
                                           "and GRP='3' and KAN='1' and NO='1';")),
              1);
    ASSERT_EQ(execStatement(dialogs, db,
                            QStringLiteral("UPDATE ex_kanzai SET KIND='' where CTG='1' and "
                                           "GRP='1' and KAN='1' and NO='16';")),
              1);
    MainWindow& f = open();
    EXPECT_EQ(f.tree->node(43)->text(0), QString()); // blanks only: an empty name
    EXPECT_EQ(f.sheet()->tabs()->tabText(1), u("機械室・便所"));
    EXPECT_EQ(rows()[16].kind(), u("機械室・便所"));
    EXPECT_FALSE(doc().isChanged());
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged()); // the default caption is now in the row
}

TEST_F(Workspace, RefrigerantApplyWritesTheSingleTabCaption) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1);
    f.applyControls();
    EXPECT_EQ(rows()[1].kind(), u("一般"));
}

TEST_F(Workspace, SaveAfterAGroupNodeClickWritesTheShownPipeType) {
    MainWindow& f = open();
    clickNode(21);
    f.optionPanel()->labourCostSubmittedEdit()->setValue(27000);
    QTest::mouseClick(f.header()->saveButton(), Qt::LeftButton);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), u("27000"));
}

} // namespace
