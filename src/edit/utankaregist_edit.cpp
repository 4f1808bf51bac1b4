// The main form: the edit commands. Copy and paste between pipe types and
// details through CopyRows, the spreading of the first detail, moving a pipe
// type in its group, clearing, and the one-level undo.
//
// The option block lives in row 60, which is also the 15th row of the fourth
// detail. Detail commands never write it: the options stay what the user set.
// Whole-table commands carry it, for that is what they are asked to do.
#include "shell/utankaregist.h"

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

void TFtankaregist::ConnectEditCommands() {
    auto join = [this](QAction* item, void (TFtankaregist::*handler)()) {
        item->setEnabled(true);
        connect(item, &QAction::triggered, this,
                [this, handler] { guarded([&] { (this->*handler)(); }); });
    };
    join(all_copy_1, &TFtankaregist::all_copy_1Click);
    join(all_copy_2, &TFtankaregist::all_copy_2Click);
    join(all_copy_3, &TFtankaregist::all_copy_3Click);
    join(all_copy_4, &TFtankaregist::all_copy_4Click);
    join(all_paste_1, &TFtankaregist::all_paste_1Click);
    join(all_paste_2, &TFtankaregist::all_paste_2Click);
    join(all_paste_3, &TFtankaregist::all_paste_3Click);
    join(all_paste_4, &TFtankaregist::all_paste_4Click);
    join(item_copy_1, &TFtankaregist::item_copy_1Click);
    join(item_copy_2, &TFtankaregist::item_copy_2Click);
    join(item_copy_3, &TFtankaregist::item_copy_3Click);
    join(item_copy_4, &TFtankaregist::item_copy_4Click);
    join(item_copy_5, &TFtankaregist::item_copy_5Click);
    join(item_paste_1, &TFtankaregist::item_paste_1Click);
    join(item_paste_2, &TFtankaregist::item_paste_2Click);
    join(item_paste_3, &TFtankaregist::item_paste_3Click);
    join(item_paste_4, &TFtankaregist::item_paste_4Click);
    join(item_paste_5, &TFtankaregist::item_paste_5Click);
    join(N22, &TFtankaregist::N22Click);
    join(N33, &TFtankaregist::N33Click);
    // The paste items wait for a copy; item_paste_5 follows the mode, by
    // ShowPipeType.
    for (QAction* paste : PasteItems())
        paste->setEnabled(false);
    item_paste_5->setEnabled(false);
    // item_copy_2, item_paste_2 and their separator N15 stay out of reach.
    if (!N15) {
        N15 = new QAction(this);
        N15->setObjectName(QStringLiteral("N15"));
        N15->setSeparator(true);
        K21->insertAction(item_paste_3, N15);
    }
    for (QAction* hidden : {item_copy_2, item_paste_2, N15, item_copy_5})
        hidden->setVisible(false);

    connect(ActionUndo, &QAction::triggered, this,
            [this] { guarded([this] { ActionUndoExecute(); }); });
    connect(ActionMoveUp, &QAction::triggered, this,
            [this] { guarded([this] { ActionMoveUpExecute(); }); });
    connect(ActionMoveDown, &QAction::triggered, this,
            [this] { guarded([this] { ActionMoveDownExecute(); }); });
    ActionMoveUp->setEnabled(true);
    ActionMoveDown->setEnabled(true);
}

std::array<QAction*, 8> TFtankaregist::PasteItems() const {
    return {all_paste_1,  all_paste_2,  all_paste_3,  all_paste_4,
            item_paste_1, item_paste_2, item_paste_3, item_paste_4};
}

void TFtankaregist::EnableOnlyPaste(QAction* paste) {
    for (QAction* item : PasteItems())
        item->setEnabled(item == paste);
}

void TFtankaregist::FinishPaste(bool renameNode) {
    ShowPipeType();
    // The pasted rows count as changed: the next tree click or the close
    // asks to save them.
    RefreshLines();
    if (renameNode)
        if (QTreeWidgetItem* node = CurrentPipeTypeNode())
            node->setText(0, TrimBlanks(GOODSBOX->Text()));
    // After ShowPipeType, which disables it.
    SetUndoEnabled(true);
}

// ---- Whole-table copy and paste ------------------------------------------------

void TFtankaregist::all_copy_1Click() {
    CopyWholeTable(CopyRows, KanzaiRows, FieldSet::All);
    EnableOnlyPaste(all_paste_1);
}

void TFtankaregist::all_copy_2Click() {
    CopyWholeTable(CopyRows, KanzaiRows, FieldSet::Prices);
    EnableOnlyPaste(all_paste_2);
}

void TFtankaregist::all_copy_3Click() {
    CopyWholeTable(CopyRows, KanzaiRows, FieldSet::Labour);
    EnableOnlyPaste(all_paste_3);
}

void TFtankaregist::all_copy_4Click() {
    CopyWholeTable(CopyRows, KanzaiRows, FieldSet::Pipefitter);
    EnableOnlyPaste(all_paste_4);
}

void TFtankaregist::all_paste_1Click() {
    TakeSnapshot();
    CopyWholeTable(KanzaiRows, CopyRows, FieldSet::All);
    FinishPaste(true);
}

void TFtankaregist::all_paste_2Click() {
    TakeSnapshot();
    CopyWholeTable(KanzaiRows, CopyRows, FieldSet::Prices);
    FinishPaste(false);
}

void TFtankaregist::all_paste_3Click() {
    TakeSnapshot();
    CopyWholeTable(KanzaiRows, CopyRows, FieldSet::Labour);
    FinishPaste(false);
}

void TFtankaregist::all_paste_4Click() {
    TakeSnapshot();
    CopyWholeTable(KanzaiRows, CopyRows, FieldSet::Pipefitter);
    FinishPaste(false);
}

// ---- Detail copy and paste ----------------------------------------------------------

void TFtankaregist::item_copy_1Click() {
    CopyDetailOut(CopyRows, KanzaiRows, CurrentTab(), FieldSet::All);
    EnableOnlyPaste(item_paste_1);
}

void TFtankaregist::item_copy_2Click() {
    CopyDetailOut(CopyRows, KanzaiRows, CurrentTab(), FieldSet::Prices);
    EnableOnlyPaste(item_paste_2);
}

void TFtankaregist::item_copy_3Click() {
    CopyDetailOut(CopyRows, KanzaiRows, CurrentTab(), FieldSet::Labour);
    EnableOnlyPaste(item_paste_3);
}

void TFtankaregist::item_copy_4Click() {
    CopyDetailOut(CopyRows, KanzaiRows, CurrentTab(), FieldSet::Pipefitter);
    EnableOnlyPaste(item_paste_4);
}

void TFtankaregist::item_paste_1Click() {
    TakeSnapshot();
    PasteDetailIn(KanzaiRows, CopyRows, CurrentTab(), FieldSet::AllButNTANKA);
    FinishPaste(false);
}

void TFtankaregist::item_paste_2Click() {
    TakeSnapshot();
    PasteDetailIn(KanzaiRows, CopyRows, CurrentTab(), FieldSet::Prices);
    FinishPaste(false);
}

void TFtankaregist::item_paste_3Click() {
    TakeSnapshot();
    PasteDetailIn(KanzaiRows, CopyRows, CurrentTab(), FieldSet::Labour);
    FinishPaste(false);
}

void TFtankaregist::item_paste_4Click() {
    TakeSnapshot();
    PasteDetailIn(KanzaiRows, CopyRows, CurrentTab(), FieldSet::Pipefitter);
    FinishPaste(false);
}

// ---- Spreading the first detail --------------------------------------------------------

void TFtankaregist::item_paste_5Click() {
    TakeSnapshot();
    SpreadFirstDetail(KanzaiRows);
    TabControl1->setCurrentIndex(0);
    FinishPaste(false);
}

void TFtankaregist::item_copy_5Click() {
    SpreadBufferPrices(KanzaiRows, CopyRows);
    ShowPipeType();
    RefreshLines();
    SetUndoEnabled(false); // no snapshot was taken
    EnableOnlyPaste(nullptr);
}

// ---- Undo -------------------------------------------------------------------------------

void TFtankaregist::ActionUndoExecute() {
    RestoreSnapshot();
    TabControl1->setCurrentIndex(0);
    ShowPipeType();
    if (QTreeWidgetItem* node = CurrentPipeTypeNode())
        node->setText(0, TrimBlanks(GOODSBOX->Text()));
    RefreshLines();
    SetUndoEnabled(false);
}

// ---- Moving ------------------------------------------------------------------------------

void TFtankaregist::ActionMoveUpExecute() {
    MovePipeType(-1);
}

void TFtankaregist::ActionMoveDownExecute() {
    MovePipeType(+1);
}

void TFtankaregist::MovePipeType(int d) {
    // Without a loaded pipe type the database is missing or not the suite's:
    // nothing is written to it.
    if (!RowsAreLoaded(QStringLiteral("移動できません。"))) return;
    const int g = CurrentGrp;
    const int k = CurrentKan;
    if ((d < 0 && k <= 1) || (d > 0 && k >= PipeTypesInGroup)) {
        ShowInfoDialog(this, QStringLiteral("確認"), QStringLiteral("移動できません。"));
        return;
    }
    // The three steps go in one transaction: a failure in the middle would
    // leave a pipe type parked or two on one place. On failure the box
    // "ERROR" has been shown and nothing moved.
    const QStringList statements = {moveStatement(g, ParkingKan, k), moveStatement(g, k, k + d),
                                    moveStatement(g, k + d, ParkingKan)};
    if (!ExecStatements(ExDatabasePath, statements)) return;
    // The rows in memory now belong at k+d: the triple and the selection go
    // with them, so that a save writes them where they live now. Unsaved
    // changes stay in the rows and still count as changes.
    CurrentKan = k + d;
    lastTreeNode_ = CurrentPipeTypeNode();
    SelectNodeQuietly(lastTreeNode_);
    FillGroupNodes(g);
    ShowPipeType();
}

// ---- Clearing ----------------------------------------------------------------------------

void TFtankaregist::N22Click() {
    if (ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の内容をすべてクリア－しますか？")) != TaskDialog::IdYes)
        return;
    TakeSnapshot();
    ClearPipeTypeRows(KanzaiRows);
    TabControl1->setCurrentIndex(0);
    for (int r = 1; r <= SheetLines; ++r)
        CalcRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        ShowGridRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        ShowPriceCells(r);
    if (QTreeWidgetItem* node = CurrentPipeTypeNode()) node->setText(0, QString());
    RefreshLines();
}

void TFtankaregist::N33Click() {
    if (ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                       QStringLiteral("現在の細目をクリア－しますか？")) != TaskDialog::IdYes)
        return;
    const int t = CurrentTab();
    TakeSnapshot();
    ClearDetailRows(KanzaiRows, t);
    for (int r = 1; r <= SheetLines; ++r)
        CalcRow(r);
    for (int g = 1; g <= SheetLines; ++g)
        ShowGridRow(t * TabRows + g);
    for (int r = 1; r <= SheetLines; ++r)
        ShowPriceCells(r);
    RefreshLines();
}
