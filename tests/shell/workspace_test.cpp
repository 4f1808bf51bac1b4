// The main window on a real database made by the suite stand-in, offscreen,
// with the person at the keyboard played by the scripted dialogs.
#include "controls/numberedit.h"
#include "controls/strcgrid.h"
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

QString U(const char* t) {
    return QString::fromUtf8(t);
}

TEST_F(Workspace, StartShowsTheFirstPipeTypeWithTheEnginesPrices) {
    MainWindow& f = open();
    EXPECT_FALSE(f.noDataFolder);
    EXPECT_EQ(f.windowTitle(), U("Qorvale-Ostrel-"));
    EXPECT_EQ(f.treeNode(0)->text(0), U("給水"));
    EXPECT_EQ(f.treeNode(189)->text(0), U("冷媒"));
    EXPECT_EQ(f.tree->currentItem(), f.treeNode(1));
    EXPECT_EQ(f.treeNode(1)->text(0), rows()[1].goods().trimmed());
    EXPECT_EQ(f.treeNode(20)->text(0), U("----")); // no demo data there
    EXPECT_EQ(f.goodsBox->Text(), rows()[1].goods());
    EXPECT_EQ(f.tabs->count(), 4);
    EXPECT_EQ(f.tabs->tabText(0), U("屋内一般"));
    EXPECT_EQ(f.statusPanel(5), f.workspace().paths().databaseFolder);

    // The prices on the sheet are the engine's on the stored rows.
    ws().load(1, 1);
    doc().calculateAll();
    for (int g = 1; g <= 14; ++g) {
        const auto texts = Grid1LineTexts(rows()[g], SheetView{});
        for (int c = 0; c < Grid1Cols; ++c)
            EXPECT_EQ(cell1(c, g), texts[std::size_t(c)]) << g;
        EXPECT_EQ(cell2(1, g), FormatAmount(rows()[g].submittedPrice));
    }
    EXPECT_TRUE(cell2(1, 1).contains(',') || rows()[1].submittedPrice.raw < 10000000);
    EXPECT_FALSE(f.undoAction->isEnabled());
}

TEST_F(Workspace, MissingDataFolderRefusesAndWritesNothing) {
    QDir(DataRootPath()).removeRecursively();
    dialogs.AnswerBox(TaskDialog::IdYes);
    MainWindow& f = open();
    EXPECT_TRUE(f.noDataFolder);
    ASSERT_EQ(dialogs.Boxes().size(), 1u);
    // An information box with the text alone, no heading, one yes button.
    EXPECT_EQ(dialogs.Boxes()[0].instruction,
              U("インストール直後は、Velmora本体を先に一度起動してください。"));
    EXPECT_EQ(dialogs.Boxes()[0].content, QString());
    EXPECT_EQ(dialogs.Boxes()[0].icon, TaskDialog::IconInformation);
    EXPECT_EQ(dialogs.Boxes()[0].buttons, TaskDialog::ButtonYes);
    EXPECT_FALSE(f.isVisible());
    closeForm();
    EXPECT_FALSE(QDir(DataRootPath()).exists());
}

TEST_F(Workspace, ClickOnAnotherPipeTypeLoadsItAtTabZero) {
    MainWindow& f = open();
    f.tabs->setCurrentIndex(2);
    clickNode(2); // group 1, pipe type 2
    EXPECT_EQ(f.currentGroup, 1);
    EXPECT_EQ(f.currentPipeType, 2);
    EXPECT_EQ(f.tabs->currentIndex(), 0);
    ws().load(1, 2);
    EXPECT_EQ(f.goodsBox->Text(), rows()[1].goods());
    EXPECT_EQ(cell1(0, 1), rows()[1].size());
    EXPECT_TRUE(dialogs.Boxes().empty()); // nothing changed, nothing asked
}

TEST_F(Workspace, OptionChangeRecalculatesAllRowsAndShowsThem) {
    MainWindow& f = open();
    const QString before = cell1(2, 3);
    f.digitsRadio->SetItemIndex(0);  // adopted digits 1
    f.elementRadio->SetItemIndex(2); // two decimals per element
    // Every row of every tab follows the engine.
    for (int r : {3, 20, 47}) {
        PipeRow copy = rows()[r];
        CalcRowWith(copy, doc().options());
        EXPECT_EQ(copy.submittedUnitPrice, rows()[r].submittedUnitPrice) << r;
    }
    EXPECT_EQ(cell1(1, 3), FormatAmount(rows()[3].adoptedUnitPrice));
    EXPECT_EQ(rows()[3].adoptedUnitPrice, rows()[3].submittedUnitPrice);
    EXPECT_NE(before, QString());
    EXPECT_TRUE(f.undoAction->isEnabled());
    EXPECT_EQ(cell1(1, 0), U("採用単価"));
}

TEST_F(Workspace, EnterInBaseLabourCostAppliesAndMovesFocus) {
    MainWindow& f = open();
    f.activateWindow();
    f.labourCostSubmittedEdit->setFocus();
    f.labourCostSubmittedEdit->SetValue(20000);
    QTest::keyClick(f.labourCostSubmittedEdit, Qt::Key_Return);
    EXPECT_EQ(doc().options().LabourSubmitted(), Currency::FromInt(20000));
    EXPECT_TRUE(f.labourCostCostEdit->hasFocus());
    PipeRow copy = rows()[1];
    CalcRowWith(copy, doc().options());
    EXPECT_EQ(cell1(2, 1), FormatAmount(copy.submittedUnitPrice));
}

TEST_F(Workspace, SaveWritesAllRowsAndSaysSo) {
    MainWindow& f = open();
    f.labourCostSubmittedEdit->SetValue(21000);
    QTest::mouseClick(f.saveButton, Qt::LeftButton);
    ASSERT_FALSE(dialogs.Boxes().empty());
    EXPECT_EQ(dialogs.Boxes().back().content, U("保存しました。"));
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), U("21000"));
    for (int no : {1, 14, 30, 59}) {
        EXPECT_EQ(stored(1, 1, no, "GTANKA"), CurrToStr(rows()[no].submittedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "FTANKA"), CurrToStr(rows()[no].adoptedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "NTANKA"), CurrToStr(rows()[no].costUnitPrice)) << no;
    }
    EXPECT_FALSE(doc().isChanged());
}

TEST_F(Workspace, NewBaseLabourCostByEnterThenSaveStoresTheEnginesPrices) {
    MainWindow& f = open();
    f.labourCostSubmittedEdit->setFocus();
    f.labourCostSubmittedEdit->selectAll();
    QTest::keyClicks(f.labourCostSubmittedEdit,
                     QStringLiteral("20500.04")); // as a float x 10000: 205000399.99...
    QTest::keyClick(f.labourCostSubmittedEdit, Qt::Key_Return);
    QTest::mouseClick(f.saveButton, Qt::LeftButton);
    // What the engine makes of the stored rows with the new cost.
    ws().load(1, 1);
    ASSERT_EQ(doc().options().LabourSubmitted(), StrToCurr(QStringLiteral("20500.04")));
    for (int no : {1, 7, 14, 22, 59}) {
        PipeRow row = rows()[no];
        CalcRowWith(row, doc().options());
        EXPECT_EQ(stored(1, 1, no, "GTANKA"), CurrToStr(row.submittedUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "NTANKA"), CurrToStr(row.costUnitPrice)) << no;
        EXPECT_EQ(stored(1, 1, no, "FTANKA"), CurrToStr(row.adoptedUnitPrice)) << no;
    }
}

TEST_F(Workspace, TreeClickAsksAboutChangesAndSavesOnYes) {
    MainWindow& f = open();
    f.labourCostSubmittedEdit->SetValue(22000);
    f.applyControls();
    dialogs.AnswerBox(TaskDialog::IdYes);
    clickNode(2);
    ASSERT_EQ(dialogs.Boxes().size(), 1u);
    EXPECT_TRUE(dialogs.Boxes()[0].content.endsWith(U("データを保存しますか?")));
    EXPECT_EQ(dialogs.Boxes()[0].buttons, TaskDialog::ButtonYes | TaskDialog::ButtonCancel);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), U("22000"));
    EXPECT_EQ(f.currentPipeType, 2);
}

TEST_F(Workspace, TreeClickCancelLosesTheChange) {
    MainWindow& f = open();
    const QString old = stored(1, 1, 60, "DATA5");
    f.labourCostSubmittedEdit->SetValue(23000);
    f.applyControls();
    dialogs.AnswerBox(TaskDialog::IdCancel);
    clickNode(2);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), old);
}

TEST_F(Workspace, GroupNodeClickAsksButLoadsNothing) {
    MainWindow& f = open();
    const QString goods = f.goodsBox->Text();
    f.labourCostSubmittedEdit->SetValue(24000);
    f.applyControls();
    dialogs.AnswerBox(TaskDialog::IdCancel);
    clickNode(21); // group 2
    EXPECT_EQ(dialogs.Boxes().size(), 1u);
    EXPECT_EQ(f.currentGroup, 1);
    EXPECT_EQ(f.goodsBox->Text(), goods);
}

TEST_F(Workspace, ClosingAsksAndCancelClosesWithoutSaving) {
    MainWindow& f = open();
    const QString old = stored(1, 1, 60, "DATA5");
    f.labourCostSubmittedEdit->SetValue(25000); // applied by the close query itself
    dialogs.AnswerBox(TaskDialog::IdCancel);
    closeForm();
    ASSERT_EQ(dialogs.Boxes().size(), 1u);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), old);
}

TEST_F(Workspace, ClosingWithYesSaves) {
    MainWindow& f = open();
    f.labourCostSubmittedEdit->SetValue(26000);
    dialogs.AnswerBox(TaskDialog::IdYes);
    closeForm();
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), U("26000"));
}

TEST_F(Workspace, ClosingUnchangedAsksNothing) {
    open();
    closeForm();
    EXPECT_TRUE(dialogs.Boxes().empty());
}

TEST_F(Workspace, RenamedGroupSurvivesRestart) {
    MainWindow& f = open();
    dialogs.AnswerInput(U("上水"));
    f.nameGroup(0);
    EXPECT_EQ(f.treeNode(0)->text(0), U("上水"));
    closeForm();
    MainWindow& g = open();
    EXPECT_EQ(g.groupName(1), U("上水"));
    EXPECT_EQ(g.treeNode(0)->text(0), U("上水"));
    EXPECT_EQ(g.groupName(2), U("排水"));
}

TEST_F(Workspace, WindowAndDisplayFilesAreWrittenAndApplied) {
    MainWindow& f = open();
    f.setGeometry(30, 40, 1440, 845);
    f.statusBarItem->trigger(); // hide the status bar
    closeForm();
    WindowRect rect;
    ReadWindowFile(DataRootPath(), QStringLiteral("qorvale_k"), rect);
    EXPECT_EQ(rect.Width, 1440);
    EXPECT_EQ(rect.Height, 845);
    QStringList lines;
    ASSERT_TRUE(ReadTextFile(DisplayFilePath(DataRootPath()), lines));
    EXPECT_EQ(lines.value(0), U("[Version]=2.00"));
    EXPECT_EQ(lines.value(3), U("[STATUS_USE]=FALSE"));
    MainWindow& g = open();
    EXPECT_EQ(g.width(), 1440);
    EXPECT_FALSE(g.statusBarItem->isChecked());
    EXPECT_FALSE(g.statusLine->isVisible());
}

TEST_F(Workspace, RefrigerantModeCaptionsAndColumnNine) {
    MainWindow& f = open();
    // The demo holds refrigerant pipe types in group 10.
    clickNode(9 * 21 + 1);
    ASSERT_EQ(doc().options().ModeFlag(), 1);
    EXPECT_EQ(f.tabs->count(), 1);
    EXPECT_EQ(f.tabs->tabText(0), U("一般"));
    EXPECT_EQ(cell1(5, 0), U("継手接合等"));
    EXPECT_EQ(cell1(9, 0), U("---"));
    EXPECT_FALSE(f.copyFirstDetailAcrossItem->isEnabled());
    for (int g = 1; g <= 14; ++g)
        EXPECT_TRUE(cell1(9, g).isEmpty()) << g;
    f.applyControls();
    EXPECT_EQ(cell1(5, 0), U("継手・接合材"));
}

TEST_F(Workspace, SideSelectionAndToggle) {
    MainWindow& f = open();
    const PipeRow& r = rows()[1];
    f.materialGrid->SetSelection(GridRect(2, 1, 2, 1));
    f.materialCellChosen();
    EXPECT_EQ(cell1(1, 1), FormatAmount(r.costUnitPrice));
    EXPECT_EQ(cell1(3, 1), FormatAmount(r.costPrice));
    f.materialGrid->SetSelection(GridRect(3, 1, 3, 1));
    f.materialCellChosen();
    EXPECT_EQ(cell1(3, 1), FormatAmount(r.listPrice));
    EXPECT_EQ(cell1(4, 1), CurrToStr(r.factor(1))); // factors while the toggle is off
    QTest::mouseClick(f.resultsSwitch, Qt::LeftButton);
    EXPECT_TRUE(f.resultsSwitch->IsOn());
    EXPECT_EQ(cell1(4, 1), U("--"));
    f.materialGrid->SetSelection(GridRect(1, 1, 1, 1));
    f.materialCellChosen();
    EXPECT_EQ(cell1(4, 1), FormatGeneral(r.submittedAmounts[0]));
    EXPECT_EQ(cell1(1, 1), FormatAmount(r.adoptedUnitPrice));
}

// Stored options with distinct values: each control shows its own, and
// each control writes its own field back.
TEST_F(Workspace, OptionControlsMapToTheirFieldsBothWays) {
    ASSERT_EQ(
        ExecStatement(dialogs, db,
                      QStringLiteral("UPDATE ex_kanzai SET YOSAN='1', FLAG='0', NET='55', "
                                     "GROSS='65', DATA2='100', DATA3='0.5', DATA4='15000', "
                                     "DATA5='18000', DATA6='10', DATA7='0', NTANKA='1', "
                                     "GTANKA='1000', FTANKA='0.5' where CTG='1' and GRP='1' and "
                                     "KAN='1' and NO='60';")),
        1);
    MainWindow& f = open();
    EXPECT_EQ(f.otherCostRadio->ItemIndex(), 1);
    EXPECT_EQ(f.modeRadio->ItemIndex(), 0);
    EXPECT_EQ(f.rateCostEdit->Value(), 55);
    EXPECT_EQ(f.rateSubmittedEdit->Value(), 65);
    EXPECT_EQ(f.digitsRadio->ItemIndex(), 2);
    EXPECT_EQ(f.belowDigitsRadio->ItemIndex(), 2);
    EXPECT_EQ(f.labourCostCostEdit->Value(), 15000);
    EXPECT_EQ(f.labourCostSubmittedEdit->Value(), 18000);
    EXPECT_EQ(f.elementRadio->ItemIndex(), 1);
    EXPECT_EQ(f.fractionRadio->ItemIndex(), 1);
    EXPECT_TRUE(f.useRateCheck->Checked());
    EXPECT_EQ(f.unitDigitsList->ItemIndex(), 3);
    EXPECT_EQ(f.unitFractionList->ItemIndex(), 2);
    EXPECT_EQ(f.materialCaption->text(), U("資材単価")); // untouched until the first apply

    f.rateSubmittedEdit->SetValue(70);
    f.rateCostEdit->SetValue(60);
    f.labourCostSubmittedEdit->SetValue(20000);
    f.labourCostCostEdit->SetValue(16000);
    f.unitDigitsList->SetItemIndex(5);
    f.unitFractionList->SetItemIndex(1);
    f.digitsRadio->SetItemIndex(4);
    f.belowDigitsRadio->SetItemIndex(0);
    f.elementRadio->SetItemIndex(3);
    f.fractionRadio->SetItemIndex(2);
    f.otherCostRadio->SetItemIndex(0);
    EXPECT_EQ(f.materialCaption->text(), U("資材単価[単価に掛率を使用]"));
    f.useRateCheck->SetChecked(false);
    EXPECT_EQ(f.materialCaption->text(), U("資材単価"));
    const PipeRow& o = rows()[60];
    EXPECT_EQ(o.submittedPrice, Currency::FromInt(70));
    EXPECT_EQ(o.costPrice, Currency::FromInt(60));
    EXPECT_EQ(o.factor(5), Currency::FromInt(20000));
    EXPECT_EQ(o.factor(4), Currency::FromInt(16000));
    EXPECT_EQ(o.submittedUnitPrice, Currency::FromInt(4));
    EXPECT_EQ(o.adoptedUnitPrice, Currency::FromInt(0));
    EXPECT_EQ(o.factor(2), Currency::FromInt(3));
    EXPECT_EQ(o.factor(3), Currency::FromRaw(9000));
    EXPECT_EQ(o.factor(6), Currency::FromInt(1000));
    EXPECT_EQ(o.factor(7), Currency::FromRaw(5000));
    EXPECT_EQ(o.otherMethod, 0);
    EXPECT_EQ(o.modeFlag, 0);
    EXPECT_EQ(o.costUnitPrice.raw, 0);
}

TEST_F(Workspace, EnterInANameBoxNamesTheNodeAndApplies) {
    MainWindow& f = open();
    f.goodsBox->SetText(U("  新しい管材\u3000"));
    f.unitBox->SetText(U("本"));
    QTest::keyClick(f.unitBox, Qt::Key_Return); // the text of goodsBox, not of unitBox
    // Blanks go, the full-width space stays.
    EXPECT_EQ(f.treeNode(1)->text(0), U("新しい管材\u3000"));
    EXPECT_EQ(rows()[1].goods(), U("  新しい管材\u3000"));
    EXPECT_EQ(rows()[37].unit(), U("本"));
    EXPECT_TRUE(doc().isChanged());
}

TEST_F(Workspace, ShiftReleaseOnTheTreeNamesTheNode) {
    MainWindow& f = open();
    dialogs.AnswerInput(U("仮の名前"));
    clickNode(3, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    ASSERT_EQ(dialogs.Inputs().size(), 1u);
    EXPECT_EQ(dialogs.Inputs()[0].prompt, U("名称を入力してください"));
    EXPECT_EQ(f.treeNode(3)->text(0), U("仮の名前"));
    EXPECT_EQ(f.currentPipeType, 3); // the click loaded it first
    // On a group node the menu caption follows, and the record is written.
    dialogs.AnswerInput(U("上水"));
    clickNode(42, Qt::ShiftModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(f.groupName(3), U("上水"));
    const QStringList notes =
        QueryToLines(db, QStringLiteral("SELECT notes FROM exconf where conf='kanzai';")).lines;
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(NthField(notes[0], 1).contains(U("[GROUP_NAME3]=上水")));
}

TEST_F(Workspace, EnterInTheRatesAppliesAndTheLabourCostsSwapFocus) {
    MainWindow& f = open();
    f.activateWindow();
    f.rateSubmittedEdit->setFocus();
    f.rateSubmittedEdit->SetValue(72);
    QTest::keyClick(f.rateSubmittedEdit, Qt::Key_Return);
    EXPECT_EQ(doc().options().RateSubmitted(), Currency::FromInt(72));
    f.labourCostCostEdit->setFocus();
    f.labourCostCostEdit->SetValue(14000);
    QTest::keyClick(f.labourCostCostEdit, Qt::Key_Return);
    EXPECT_EQ(doc().options().LabourCost(), Currency::FromInt(14000));
    EXPECT_TRUE(f.labourCostSubmittedEdit->hasFocus());
}

TEST_F(Workspace, SaveWritesEveryFieldOfAllSixtyRows) {
    MainWindow& f = open();
    f.goodsBox->SetText(U("鋼管'; --"));
    f.pageEdit->setText(U("頁;12"));
    f.unitBox->SetText(U("本"));
    QTest::mouseClick(f.saveButton, Qt::LeftButton);
    const QStringList shown = doc().currentLines();
    ws().load(1, 1);
    for (int r = 1; r <= 60; ++r)
        EXPECT_EQ(RowLine(rows()[r]), shown[r - 1]) << r;
    EXPECT_EQ(rows()[1].goods(), U("鋼管'; --"));
    EXPECT_EQ(rows()[5].goods(), U("頁;12"));
    EXPECT_EQ(rows()[OptionRow].unit(), U("本"));
}

TEST_F(Workspace, DisplayFileHidesTheTreeAndSetsItsWidth) {
    QDir().mkpath(DataRootPath() + QStringLiteral("/conf"));
    ASSERT_TRUE(WriteTextFile(DisplayFilePath(DataRootPath()),
                              {U("[Version]=2.00"), U("[CheckBox1]=TRUE"), U("[TREE_USE]=FALSE"),
                               U("[STATUS_USE]=TRUE"), U("[TREEVIEW_WIDTH]=150")}));
    MainWindow& f = open();
    EXPECT_FALSE(f.treeListItem->isChecked());
    EXPECT_FALSE(f.tree->isVisible());
    EXPECT_EQ(f.treeSplitter->sizes().value(0), 150);
    EXPECT_FALSE(f.resultsSwitch->IsOn()); // stored, never read back
    f.treeListItem->trigger();
    EXPECT_TRUE(f.tree->isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(f.tree->width(), 150);
    // The user drags the splitter; the close writes the tree's new width.
    f.treeSplitter->setSizes({220, f.treeSplitter->sizes().value(1) - 70});
    QCoreApplication::processEvents();
    EXPECT_EQ(f.tree->width(), 220);
    closeForm();
    QStringList lines;
    ASSERT_TRUE(ReadTextFile(DisplayFilePath(DataRootPath()), lines));
    EXPECT_EQ(lines.value(4), U("[TREEVIEW_WIDTH]=220"));
}

TEST_F(Workspace, TreeNamesAndDetailCaptionsFromTheStore) {
    ASSERT_EQ(ExecStatement(dialogs, db,
                            QStringLiteral("UPDATE ex_kanzai SET GOODS='   ' where CTG='1' "
                                           "and GRP='3' and KAN='1' and NO='1';")),
              1);
    ASSERT_EQ(ExecStatement(dialogs, db,
                            QStringLiteral("UPDATE ex_kanzai SET KIND='' where CTG='1' and "
                                           "GRP='1' and KAN='1' and NO='16';")),
              1);
    MainWindow& f = open();
    EXPECT_EQ(f.treeNode(43)->text(0), QString()); // blanks only: an empty name
    EXPECT_EQ(f.tabs->tabText(1), U("機械室・便所"));
    EXPECT_EQ(rows()[16].kind(), U("機械室・便所"));
    EXPECT_FALSE(doc().isChanged());
    doc().refreshLines();
    EXPECT_TRUE(doc().isChanged()); // the default caption is now in the row
}

TEST_F(Workspace, RefrigerantApplyWritesTheSingleTabCaption) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1);
    f.applyControls();
    EXPECT_EQ(rows()[1].kind(), U("一般"));
}

TEST_F(Workspace, SaveAfterAGroupNodeClickWritesTheShownPipeType) {
    MainWindow& f = open();
    clickNode(21);
    f.labourCostSubmittedEdit->SetValue(27000);
    QTest::mouseClick(f.saveButton, Qt::LeftButton);
    EXPECT_EQ(stored(1, 1, 60, "DATA5"), U("27000"));
}

} // namespace
