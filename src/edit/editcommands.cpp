#include "edit/editcommands.h"

#include "sheet/pricesheet.h"

#include "edit/fieldsets.h"
#include "engine/calcrow.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "sheet/pipetypeheader.h"
#include "shell/formwidgets.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "store/modulewrappersqlite.h"
#include "util/textlines.h"

#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QTreeWidget>

namespace {

// A command run from a menu item: a failure is shown like any other and the
// program goes on.
template <typename F> void guarded(Dialogs& dialogs, F&& command) {
    try {
        command();
    } catch (...) {
        handleCurrentException(dialogs);
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

EditCommands::EditCommands(MainWindow& window, Dialogs& dialogs)
    : QObject(&window), m_window(window), m_dialogs(dialogs) {
    auto join = [this](QAction* item, void (EditCommands::*handler)()) {
        item->setEnabled(true);
        connect(item, &QAction::triggered, this,
                [this, handler] { guarded(m_dialogs, [&] { (this->*handler)(); }); });
    };
    join(m_window.menus().edit.copyWholeTableItem, &EditCommands::copyWholeTable);
    join(m_window.menus().edit.copyPricesItem, &EditCommands::copyPrices);
    join(m_window.menus().edit.copyAllFactorsItem, &EditCommands::copyAllFactors);
    join(m_window.menus().edit.copyLabourFactorsItem, &EditCommands::copyLabourFactors);
    join(m_window.menus().edit.pasteWholeTableItem, &EditCommands::pasteWholeTable);
    join(m_window.menus().edit.pastePricesItem, &EditCommands::pastePrices);
    join(m_window.menus().edit.pasteAllFactorsItem, &EditCommands::pasteAllFactors);
    join(m_window.menus().edit.pasteLabourFactorsItem, &EditCommands::pasteLabourFactors);
    join(m_window.menus().detail.copyDetailItem, &EditCommands::copyDetail);
    join(m_window.menus().detail.copyDetailPricesItem, &EditCommands::copyDetailPrices);
    join(m_window.menus().detail.copyDetailFactorsItem, &EditCommands::copyDetailFactors);
    join(m_window.menus().detail.copyDetailLabourItem, &EditCommands::copyDetailLabour);
    join(m_window.menus().detail.copyDetailPricesAcrossItem, &EditCommands::copyDetailPricesAcross);
    join(m_window.menus().detail.pasteDetailItem, &EditCommands::pasteDetail);
    join(m_window.menus().detail.pasteDetailPricesItem, &EditCommands::pasteDetailPrices);
    join(m_window.menus().detail.pasteDetailFactorsItem, &EditCommands::pasteDetailFactors);
    join(m_window.menus().detail.pasteDetailLabourItem, &EditCommands::pasteDetailLabour);
    join(m_window.menus().detail.copyFirstDetailAcrossItem, &EditCommands::copyFirstDetailAcross);
    join(m_window.menus().edit.clearPipeTypeItem, &EditCommands::clearPipeType);
    join(m_window.menus().detail.clearDetailItem, &EditCommands::clearDetail);
    // The paste items wait for a copy; the spreading of the first detail
    // follows the mode, by showPipeType.
    for (QAction* paste : pasteItems())
        paste->setEnabled(false);
    m_window.menus().detail.copyFirstDetailAcrossItem->setEnabled(false);
    // The copy and paste of a detail's prices, their separator and the
    // spreading of the copied prices stay out of reach.
    m_detailPricesSeparator = new QAction(this);
    m_detailPricesSeparator->setObjectName(QStringLiteral("detailPricesSeparator"));
    m_detailPricesSeparator->setSeparator(true);
    m_window.menus().detail.menu->insertAction(m_window.menus().detail.pasteDetailFactorsItem,
                                               m_detailPricesSeparator);
    for (QAction* hidden : {m_window.menus().detail.copyDetailPricesItem,
                            m_window.menus().detail.pasteDetailPricesItem, m_detailPricesSeparator,
                            m_window.menus().detail.copyDetailPricesAcrossItem})
        hidden->setVisible(false);

    connect(m_window.menus().actions.undoAction, &QAction::triggered, this,
            [this] { guarded(m_dialogs, [this] { undo(); }); });
    connect(m_window.menus().actions.moveUpAction, &QAction::triggered, this,
            [this] { guarded(m_dialogs, [this] { moveUp(); }); });
    connect(m_window.menus().actions.moveDownAction, &QAction::triggered, this,
            [this] { guarded(m_dialogs, [this] { moveDown(); }); });
    m_window.menus().actions.moveUpAction->setEnabled(true);
    m_window.menus().actions.moveDownAction->setEnabled(true);
}

std::array<QAction*, 8> EditCommands::pasteItems() const {
    return {m_window.menus().edit.pasteWholeTableItem,
            m_window.menus().edit.pastePricesItem,
            m_window.menus().edit.pasteAllFactorsItem,
            m_window.menus().edit.pasteLabourFactorsItem,
            m_window.menus().detail.pasteDetailItem,
            m_window.menus().detail.pasteDetailPricesItem,
            m_window.menus().detail.pasteDetailFactorsItem,
            m_window.menus().detail.pasteDetailLabourItem};
}

void EditCommands::enableOnlyPaste(QAction* paste) {
    for (QAction* item : pasteItems())
        item->setEnabled(item == paste);
}

void EditCommands::finishPaste(bool renameNode) {
    m_window.showPipeType();
    // The pasted rows count as changed: the next tree click or the close
    // asks to save them.
    m_window.document().refreshLines();
    if (renameNode)
        if (QTreeWidgetItem* node = m_window.currentPipeTypeNode())
            node->setText(0, trimBlanks(m_window.header()->goods()));
    // After showPipeType, which disables it.
    m_window.document().setUndoAvailable(true);
}

// ---- Whole-table copy and paste ------------------------------------------------

void EditCommands::copyWholeTable() {
    copyFieldSet(m_window.workspace().copyBuffer(), m_window.document().rows(), FieldSet::All);
    enableOnlyPaste(m_window.menus().edit.pasteWholeTableItem);
}

void EditCommands::copyPrices() {
    copyFieldSet(m_window.workspace().copyBuffer(), m_window.document().rows(), FieldSet::Prices);
    enableOnlyPaste(m_window.menus().edit.pastePricesItem);
}

void EditCommands::copyAllFactors() {
    copyFieldSet(m_window.workspace().copyBuffer(), m_window.document().rows(), FieldSet::Labour);
    enableOnlyPaste(m_window.menus().edit.pasteAllFactorsItem);
}

void EditCommands::copyLabourFactors() {
    copyFieldSet(m_window.workspace().copyBuffer(), m_window.document().rows(),
                 FieldSet::Pipefitter);
    enableOnlyPaste(m_window.menus().edit.pasteLabourFactorsItem);
}

void EditCommands::pasteWholeTable() {
    m_window.document().takeSnapshot();
    copyFieldSet(m_window.document().rows(), m_window.workspace().copyBuffer(), FieldSet::All);
    finishPaste(true);
}

void EditCommands::pastePrices() {
    m_window.document().takeSnapshot();
    copyFieldSet(m_window.document().rows(), m_window.workspace().copyBuffer(), FieldSet::Prices);
    finishPaste(false);
}

void EditCommands::pasteAllFactors() {
    m_window.document().takeSnapshot();
    copyFieldSet(m_window.document().rows(), m_window.workspace().copyBuffer(), FieldSet::Labour);
    finishPaste(false);
}

void EditCommands::pasteLabourFactors() {
    m_window.document().takeSnapshot();
    copyFieldSet(m_window.document().rows(), m_window.workspace().copyBuffer(),
                 FieldSet::Pipefitter);
    finishPaste(false);
}

// ---- Detail copy and paste ----------------------------------------------------------

void EditCommands::copyDetail() {
    copyDetailOut(m_window.workspace().copyBuffer(), m_window.document().rows(),
                  m_window.sheet()->currentTab(), FieldSet::All);
    enableOnlyPaste(m_window.menus().detail.pasteDetailItem);
}

void EditCommands::copyDetailPrices() {
    copyDetailOut(m_window.workspace().copyBuffer(), m_window.document().rows(),
                  m_window.sheet()->currentTab(), FieldSet::Prices);
    enableOnlyPaste(m_window.menus().detail.pasteDetailPricesItem);
}

void EditCommands::copyDetailFactors() {
    copyDetailOut(m_window.workspace().copyBuffer(), m_window.document().rows(),
                  m_window.sheet()->currentTab(), FieldSet::Labour);
    enableOnlyPaste(m_window.menus().detail.pasteDetailFactorsItem);
}

void EditCommands::copyDetailLabour() {
    copyDetailOut(m_window.workspace().copyBuffer(), m_window.document().rows(),
                  m_window.sheet()->currentTab(), FieldSet::Pipefitter);
    enableOnlyPaste(m_window.menus().detail.pasteDetailLabourItem);
}

void EditCommands::pasteDetail() {
    m_window.document().takeSnapshot();
    pasteDetailIn(m_window.document().rows(), m_window.workspace().copyBuffer(),
                  m_window.sheet()->currentTab(), FieldSet::AllButCostUnitPrice);
    finishPaste(false);
}

void EditCommands::pasteDetailPrices() {
    m_window.document().takeSnapshot();
    pasteDetailIn(m_window.document().rows(), m_window.workspace().copyBuffer(),
                  m_window.sheet()->currentTab(), FieldSet::Prices);
    finishPaste(false);
}

void EditCommands::pasteDetailFactors() {
    m_window.document().takeSnapshot();
    pasteDetailIn(m_window.document().rows(), m_window.workspace().copyBuffer(),
                  m_window.sheet()->currentTab(), FieldSet::Labour);
    finishPaste(false);
}

void EditCommands::pasteDetailLabour() {
    m_window.document().takeSnapshot();
    pasteDetailIn(m_window.document().rows(), m_window.workspace().copyBuffer(),
                  m_window.sheet()->currentTab(), FieldSet::Pipefitter);
    finishPaste(false);
}

// ---- Spreading the first detail --------------------------------------------------------

void EditCommands::copyFirstDetailAcross() {
    m_window.document().takeSnapshot();
    spreadFirstDetail(m_window.document().rows());
    m_window.sheet()->tabs()->setCurrentIndex(0);
    finishPaste(false);
}

void EditCommands::copyDetailPricesAcross() {
    spreadBufferPrices(m_window.document().rows(), m_window.workspace().copyBuffer());
    m_window.showPipeType();
    m_window.document().refreshLines();
    m_window.document().setUndoAvailable(false); // no snapshot was taken
    enableOnlyPaste(nullptr);
}

// ---- Undo -------------------------------------------------------------------------------

void EditCommands::undo() {
    m_window.document().restoreSnapshot();
    m_window.sheet()->tabs()->setCurrentIndex(0);
    m_window.showPipeType();
    if (QTreeWidgetItem* node = m_window.currentPipeTypeNode())
        node->setText(0, trimBlanks(m_window.header()->goods()));
    m_window.document().refreshLines();
    m_window.document().setUndoAvailable(false);
}

// ---- Moving ------------------------------------------------------------------------------

void EditCommands::moveUp() {
    movePipeType(-1);
}

void EditCommands::moveDown() {
    movePipeType(+1);
}

void EditCommands::movePipeType(int d) {
    // Without a loaded pipe type the database is missing or not the suite's:
    // nothing is written to it.
    if (!m_window.rowsAreLoaded(QStringLiteral("移動できません。"))) return;
    const int g = m_window.currentGroup;
    const int k = m_window.currentPipeType;
    if ((d < 0 && k <= 1) || (d > 0 && k >= PipeTypesInGroup)) {
        showInfoDialog(m_dialogs, &m_window, QStringLiteral("確認"),
                       QStringLiteral("移動できません。"));
        return;
    }
    // The three steps go in one transaction: a failure in the middle would
    // leave a pipe type parked or two on one place. On failure the box
    // "ERROR" has been shown and nothing moved.
    const QStringList statements = {moveStatement(g, ParkingKan, k), moveStatement(g, k, k + d),
                                    moveStatement(g, k + d, ParkingKan)};
    if (!execStatements(m_dialogs, m_window.workspace().paths().exDatabase, statements)) return;
    // The rows in memory now belong at k+d: the triple and the selection go
    // with them, so that a save writes them where they live now. Unsaved
    // changes stay in the rows and still count as changes.
    m_window.followMovedPipeType(k + d);
}

// ---- Clearing ----------------------------------------------------------------------------

void EditCommands::clearPipeType() {
    if (showTaskDialog(m_dialogs, &m_window, applicationTitle(), QStringLiteral("確認"),
                       TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の内容をすべてクリア－しますか？")) != TaskDialog::IdYes)
        return;
    m_window.document().takeSnapshot();
    clearPipeTypeRows(m_window.document().rows());
    m_window.sheet()->tabs()->setCurrentIndex(0);
    for (int r = 1; r <= SheetLines; ++r)
        m_window.document().calculateRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        m_window.sheet()->showGridRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        m_window.sheet()->showPriceCells(r);
    if (QTreeWidgetItem* node = m_window.currentPipeTypeNode()) node->setText(0, QString());
    m_window.document().refreshLines();
}

void EditCommands::clearDetail() {
    if (showTaskDialog(m_dialogs, &m_window, applicationTitle(), QStringLiteral("確認"),
                       TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の細目をクリア－しますか？")) != TaskDialog::IdYes)
        return;
    const int t = m_window.sheet()->currentTab();
    m_window.document().takeSnapshot();
    clearDetailRows(m_window.document().rows(), t);
    for (int r = 1; r <= SheetLines; ++r)
        m_window.document().calculateRow(r);
    for (int g = 1; g <= SheetLines; ++g)
        m_window.sheet()->showGridRow(t * TabRows + g);
    for (int r = 1; r <= SheetLines; ++r)
        m_window.sheet()->showPriceCells(r);
    m_window.document().refreshLines();
}
