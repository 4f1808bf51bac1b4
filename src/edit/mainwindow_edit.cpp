// The main form: the edit commands. Copy and paste between pipe types and
// details through workspace_->copyBuffer(), the spreading of the first detail, moving a pipe
// type in its group, clearing, and the one-level undo.
//
// The option block lives in row 60, which is also the 15th row of the fourth
// detail. Detail commands never write it: the options stay what the user set.
// Whole-table commands carry it, for that is what they are asked to do.
#include "shell/mainwindow.h"

#include "edit/fieldsets.h"
#include "engine/calcrow.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "shell/formwidgets.h"
#include "store/modulewrappersqlite.h"
#include "util/textlines.h"

#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QTreeWidget>

namespace {

// A command run from a menu item: a failure is shown like any other and the
// program goes on.
template <typename F> void guarded(F&& command) {
    try {
        command();
    } catch (...) {
        HandleCurrentException();
    }
}

// One statement of a move: the pipe type at KAN old of group g gets KAN new.
QString moveStatement(int g, int newKan, int oldKan) {
    return QStringLiteral("UPDATE ex_kanzai SET KAN='") + QString::number(newKan) +
           QStringLiteral("'") + QStringLiteral(" WHERE CTG=") + QStringLiteral("'") +
           QStringLiteral("1") + QStringLiteral("'") + QStringLiteral(" and GRP=") +
           QStringLiteral("'") + QString::number(g) + QStringLiteral("'") +
           QStringLiteral(" and KAN=") + QStringLiteral("'") + QString::number(oldKan) +
           QStringLiteral("'") + QStringLiteral(";") + QStringLiteral("\r\n");
}

// The position no pipe type uses, where one waits while two change places.
constexpr int ParkingKan = 2000;
constexpr int PipeTypesInGroup = 20;

} // namespace

void MainWindow::connectEditCommands() {
    auto join = [this](QAction* item, void (MainWindow::*handler)()) {
        item->setEnabled(true);
        connect(item, &QAction::triggered, this,
                [this, handler] { guarded([&] { (this->*handler)(); }); });
    };
    join(copyWholeTableItem, &MainWindow::copyWholeTable);
    join(copyPricesItem, &MainWindow::copyPrices);
    join(copyAllFactorsItem, &MainWindow::copyAllFactors);
    join(copyLabourFactorsItem, &MainWindow::copyLabourFactors);
    join(pasteWholeTableItem, &MainWindow::pasteWholeTable);
    join(pastePricesItem, &MainWindow::pastePrices);
    join(pasteAllFactorsItem, &MainWindow::pasteAllFactors);
    join(pasteLabourFactorsItem, &MainWindow::pasteLabourFactors);
    join(copyDetailItem, &MainWindow::copyDetail);
    join(copyDetailPricesItem, &MainWindow::copyDetailPrices);
    join(copyDetailFactorsItem, &MainWindow::copyDetailFactors);
    join(copyDetailLabourItem, &MainWindow::copyDetailLabour);
    join(copyDetailPricesAcrossItem, &MainWindow::copyDetailPricesAcross);
    join(pasteDetailItem, &MainWindow::pasteDetail);
    join(pasteDetailPricesItem, &MainWindow::pasteDetailPrices);
    join(pasteDetailFactorsItem, &MainWindow::pasteDetailFactors);
    join(pasteDetailLabourItem, &MainWindow::pasteDetailLabour);
    join(copyFirstDetailAcrossItem, &MainWindow::copyFirstDetailAcross);
    join(clearPipeTypeItem, &MainWindow::clearPipeType);
    join(clearDetailItem, &MainWindow::clearDetail);
    // The paste items wait for a copy; copyFirstDetailAcrossItem follows the mode, by
    // showPipeType.
    for (QAction* paste : pasteItems())
        paste->setEnabled(false);
    copyFirstDetailAcrossItem->setEnabled(false);
    // copyDetailPricesItem, pasteDetailPricesItem and their separator detailPricesSeparator stay
    // out of reach.
    if (!detailPricesSeparator) {
        detailPricesSeparator = new QAction(this);
        detailPricesSeparator->setObjectName(QStringLiteral("detailPricesSeparator"));
        detailPricesSeparator->setSeparator(true);
        detailMenu->insertAction(pasteDetailFactorsItem, detailPricesSeparator);
    }
    for (QAction* hidden : {copyDetailPricesItem, pasteDetailPricesItem, detailPricesSeparator,
                            copyDetailPricesAcrossItem})
        hidden->setVisible(false);

    connect(undoAction, &QAction::triggered, this, [this] { guarded([this] { undo(); }); });
    connect(moveUpAction, &QAction::triggered, this, [this] { guarded([this] { moveUp(); }); });
    connect(moveDownAction, &QAction::triggered, this, [this] { guarded([this] { moveDown(); }); });
    moveUpAction->setEnabled(true);
    moveDownAction->setEnabled(true);
}

std::array<QAction*, 8> MainWindow::pasteItems() const {
    return {pasteWholeTableItem,    pastePricesItem,      pasteAllFactorsItem,
            pasteLabourFactorsItem, pasteDetailItem,      pasteDetailPricesItem,
            pasteDetailFactorsItem, pasteDetailLabourItem};
}

void MainWindow::enableOnlyPaste(QAction* paste) {
    for (QAction* item : pasteItems())
        item->setEnabled(item == paste);
}

void MainWindow::finishPaste(bool renameNode) {
    showPipeType();
    // The pasted rows count as changed: the next tree click or the close
    // asks to save them.
    document().refreshLines();
    if (renameNode)
        if (QTreeWidgetItem* node = currentPipeTypeNode())
            node->setText(0, TrimBlanks(goodsBox->Text()));
    // After showPipeType, which disables it.
    document().setUndoAvailable(true);
}

// ---- Whole-table copy and paste ------------------------------------------------

void MainWindow::copyWholeTable() {
    CopyWholeTable(workspace_->copyBuffer(), rows(), FieldSet::All);
    enableOnlyPaste(pasteWholeTableItem);
}

void MainWindow::copyPrices() {
    CopyWholeTable(workspace_->copyBuffer(), rows(), FieldSet::Prices);
    enableOnlyPaste(pastePricesItem);
}

void MainWindow::copyAllFactors() {
    CopyWholeTable(workspace_->copyBuffer(), rows(), FieldSet::Labour);
    enableOnlyPaste(pasteAllFactorsItem);
}

void MainWindow::copyLabourFactors() {
    CopyWholeTable(workspace_->copyBuffer(), rows(), FieldSet::Pipefitter);
    enableOnlyPaste(pasteLabourFactorsItem);
}

void MainWindow::pasteWholeTable() {
    document().takeSnapshot();
    CopyWholeTable(rows(), workspace_->copyBuffer(), FieldSet::All);
    finishPaste(true);
}

void MainWindow::pastePrices() {
    document().takeSnapshot();
    CopyWholeTable(rows(), workspace_->copyBuffer(), FieldSet::Prices);
    finishPaste(false);
}

void MainWindow::pasteAllFactors() {
    document().takeSnapshot();
    CopyWholeTable(rows(), workspace_->copyBuffer(), FieldSet::Labour);
    finishPaste(false);
}

void MainWindow::pasteLabourFactors() {
    document().takeSnapshot();
    CopyWholeTable(rows(), workspace_->copyBuffer(), FieldSet::Pipefitter);
    finishPaste(false);
}

// ---- Detail copy and paste ----------------------------------------------------------

void MainWindow::copyDetail() {
    CopyDetailOut(workspace_->copyBuffer(), rows(), currentTab(), FieldSet::All);
    enableOnlyPaste(pasteDetailItem);
}

void MainWindow::copyDetailPrices() {
    CopyDetailOut(workspace_->copyBuffer(), rows(), currentTab(), FieldSet::Prices);
    enableOnlyPaste(pasteDetailPricesItem);
}

void MainWindow::copyDetailFactors() {
    CopyDetailOut(workspace_->copyBuffer(), rows(), currentTab(), FieldSet::Labour);
    enableOnlyPaste(pasteDetailFactorsItem);
}

void MainWindow::copyDetailLabour() {
    CopyDetailOut(workspace_->copyBuffer(), rows(), currentTab(), FieldSet::Pipefitter);
    enableOnlyPaste(pasteDetailLabourItem);
}

void MainWindow::pasteDetail() {
    document().takeSnapshot();
    PasteDetailIn(rows(), workspace_->copyBuffer(), currentTab(), FieldSet::AllButCostUnitPrice);
    finishPaste(false);
}

void MainWindow::pasteDetailPrices() {
    document().takeSnapshot();
    PasteDetailIn(rows(), workspace_->copyBuffer(), currentTab(), FieldSet::Prices);
    finishPaste(false);
}

void MainWindow::pasteDetailFactors() {
    document().takeSnapshot();
    PasteDetailIn(rows(), workspace_->copyBuffer(), currentTab(), FieldSet::Labour);
    finishPaste(false);
}

void MainWindow::pasteDetailLabour() {
    document().takeSnapshot();
    PasteDetailIn(rows(), workspace_->copyBuffer(), currentTab(), FieldSet::Pipefitter);
    finishPaste(false);
}

// ---- Spreading the first detail --------------------------------------------------------

void MainWindow::copyFirstDetailAcross() {
    document().takeSnapshot();
    SpreadFirstDetail(rows());
    tabs->setCurrentIndex(0);
    finishPaste(false);
}

void MainWindow::copyDetailPricesAcross() {
    SpreadBufferPrices(rows(), workspace_->copyBuffer());
    showPipeType();
    document().refreshLines();
    document().setUndoAvailable(false); // no snapshot was taken
    enableOnlyPaste(nullptr);
}

// ---- Undo -------------------------------------------------------------------------------

void MainWindow::undo() {
    document().restoreSnapshot();
    tabs->setCurrentIndex(0);
    showPipeType();
    if (QTreeWidgetItem* node = currentPipeTypeNode())
        node->setText(0, TrimBlanks(goodsBox->Text()));
    document().refreshLines();
    document().setUndoAvailable(false);
}

// ---- Moving ------------------------------------------------------------------------------

void MainWindow::moveUp() {
    movePipeType(-1);
}

void MainWindow::moveDown() {
    movePipeType(+1);
}

void MainWindow::movePipeType(int d) {
    // Without a loaded pipe type the database is missing or not the suite's:
    // nothing is written to it.
    if (!rowsAreLoaded(QStringLiteral("移動できません。"))) return;
    const int g = currentGroup;
    const int k = currentPipeType;
    if ((d < 0 && k <= 1) || (d > 0 && k >= PipeTypesInGroup)) {
        ShowInfoDialog(this, QStringLiteral("確認"), QStringLiteral("移動できません。"));
        return;
    }
    // The three steps go in one transaction: a failure in the middle would
    // leave a pipe type parked or two on one place. On failure the box
    // "ERROR" has been shown and nothing moved.
    const QStringList statements = {moveStatement(g, ParkingKan, k), moveStatement(g, k, k + d),
                                    moveStatement(g, k + d, ParkingKan)};
    if (!ExecStatements(paths().exDatabase, statements)) return;
    // The rows in memory now belong at k+d: the triple and the selection go
    // with them, so that a save writes them where they live now. Unsaved
    // changes stay in the rows and still count as changes.
    currentPipeType = k + d;
    lastTreeNode_ = currentPipeTypeNode();
    selectNodeQuietly(lastTreeNode_);
    fillGroupNodes(g);
    showPipeType();
}

// ---- Clearing ----------------------------------------------------------------------------

void MainWindow::clearPipeType() {
    if (ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の内容をすべてクリア－しますか？")) != TaskDialog::IdYes)
        return;
    document().takeSnapshot();
    ClearPipeTypeRows(rows());
    tabs->setCurrentIndex(0);
    for (int r = 1; r <= SheetLines; ++r)
        document().calculateRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        showGridRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        showPriceCells(r);
    if (QTreeWidgetItem* node = currentPipeTypeNode()) node->setText(0, QString());
    document().refreshLines();
}

void MainWindow::clearDetail() {
    if (ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の細目をクリア－しますか？")) != TaskDialog::IdYes)
        return;
    const int t = currentTab();
    document().takeSnapshot();
    ClearDetailRows(rows(), t);
    for (int r = 1; r <= SheetLines; ++r)
        document().calculateRow(r);
    for (int g = 1; g <= SheetLines; ++g)
        showGridRow(t * TabRows + g);
    for (int r = 1; r <= SheetLines; ++r)
        showPriceCells(r);
    document().refreshLines();
}
