// The main form: the way between the rows and the controls, the tree, the
// tabs, line following and saving.
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"

#include "controls/numberedit.h"
#include "engine/calcrow.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "platform/waitcursor.h"
#include "sheet/optionpanel.h"
#include "sheet/pipetypeheader.h"
#include "sheet/pricesheet.h"
#include "sheet/sheettexts.h"
#include "shell/confrecord.h"
#include "shell/formwidgets.h"
#include "shell/pipetypetree.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "util/flagscope.h"
#include "util/textlines.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTreeWidget>

namespace {

const QString NotSavedText =
    QStringLiteral("この管種は保存されていません。データベースの内容は変わっていません。");

} // namespace

// ---- The tree ---------------------------------------------------------------

QTreeWidgetItem* MainWindow::selectedNode() const {
    return tree ? tree->currentItem() : nullptr;
}

void MainWindow::loadGroupNames() {
    ConfRecord& settings = workspace_->settings();
    readGroupNames(paths().exDatabase, settings);
    for (int g = 1; g <= 10; ++g) {
        setGroupName(g, settings.GroupNames[std::size_t(g - 1)]);
        tree->node((g - 1) * 21)->setText(0, groupName(g));
    }
}

void MainWindow::saveGroupNames() {
    for (int g = 1; g <= 10; ++g)
        workspace_->settings().GroupNames[std::size_t(g - 1)] = groupName(g);
    writeGroupNames(dialogs_, paths().exDatabase, workspace_->settings());
}

void MainWindow::fillGroupNodes(int g) {
    const QStringList names =
        queryToLines(paths().exDatabase,
                     QStringLiteral("SELECT GOODS FROM ex_kanzai where CTG='1' and GRP='") +
                         QString::number(g) + QStringLiteral("' and no='1';"))
            .lines;
    QStringList goods;
    for (const QString& line : names)
        goods << nthField(line, 1);
    tree->setPipeTypeNames(g, goods);
}

void MainWindow::takeSelection() {
    currentCategory = 1;
    tree->pipeTypeOf(selectedNode(), currentGroup, currentPipeType);
    setStatusPanel(0, QString::number(currentCategory));
    setStatusPanel(1, QString::number(currentGroup));
    setStatusPanel(2, QString::number(currentPipeType));
}

bool MainWindow::rowsAreLoaded(const QString& refusal) {
    // After a start whose load failed the rows belong to no pipe type:
    // writing them, or the controls showing them, would blank real data.
    if (!rowsLoaded)
        showInfoDialog(dialogs_, this, QStringLiteral("確認"),
                       QStringLiteral("管種が読み込まれていないため、") + refusal);
    return rowsLoaded;
}

MainWindow::SaveResult MainWindow::saveCurrentPipeType(int showMessage) {
    if (!rowsAreLoaded(QStringLiteral("保存できません。"))) return SaveResult::Failed;
    SaveCheck check = SaveCheck::AgainstLoaded;
    for (;;) {
        SaveOutcome outcome = SaveOutcome::ChangedElsewhere;
        QString failure;
        {
            const WaitCursor wait; // while a lock of another program is waited out
            try {
                outcome = workspace_->save(currentGroup, currentPipeType, check, dialogs_);
            } catch (const SqliteError& e) {
                failure = e.reason();
            } catch (const std::exception& e) {
                failure = QString::fromUtf8(e.what());
            }
        }
        if (!failure.isEmpty()) {
            // Nothing of the pipe type was written; the rows stay unsaved,
            // so the question comes again.
            showWriteFailure(dialogs_, this, failure, NotSavedText);
            return SaveResult::Failed;
        }
        if (outcome == SaveOutcome::Saved) {
            if (showMessage == 1)
                showInfoDialog(dialogs_, this, QStringLiteral("確認"),
                               QStringLiteral("保存しました。"));
            return SaveResult::Saved;
        }
        const int answer = showTaskDialog(
            dialogs_, this, applicationTitle(),
            QStringLiteral("この管種は読み込んだ後に他で変更されています。"),
            TaskDialog::IconWarning,
            TaskDialog::ButtonOverwrite | TaskDialog::ButtonReload | TaskDialog::ButtonCancel,
            header_->goods() +
                QStringLiteral("\r\n「上書き保存」で画面の内容を保存し、他での変更を消します。"
                               "\r\n「読み直す」で保存されている内容を読み込みます。"
                               "\r\n「キャンセル」で保存せずに画面に戻ります。"));
        if (answer == TaskDialog::IdOverwrite) {
            check = SaveCheck::Overwrite;
            continue;
        }
        if (answer == TaskDialog::IdReload &&
            showTaskDialog(dialogs_, this, applicationTitle(), QStringLiteral("確認"),
                           TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                           QStringLiteral("変更を破棄して読み直しますか?")) == TaskDialog::IdYes &&
            loadAndShow(nullptr))
            if (QTreeWidgetItem* node = currentPipeTypeNode())
                node->setText(0, trimBlanks(header_->goods()));
        return SaveResult::Declined;
    }
}

MainWindow::SaveResult MainWindow::askToSave() {
    if (!rowsLoaded || !document().isChanged()) return SaveResult::Saved;
    const int answer =
        showTaskDialog(dialogs_, this, applicationTitle(), QStringLiteral("確認"),
                       TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonCancel,
                       header_->goods() + QStringLiteral("\r\nデータを保存しますか?"));
    if (answer != TaskDialog::IdYes) return SaveResult::Saved;
    return saveCurrentPipeType(0);
}

bool MainWindow::loadAndShow(const std::function<void()>& select) {
    // A load that fails leaves everything as it was before: the triple, the
    // selected node, the rows and what counts as saved and as stored. Else
    // the next save would write these rows over the pipe type asked for.
    const PipeTypeDocument::State before = document().state();
    const int grp = currentGroup, kan = currentPipeType;
    QStringList panels;
    for (int i = 0; i < 3; ++i)
        panels << statusPanel(i);
    try {
        if (select) select();
        const WaitCursor wait;
        workspace_->load(currentGroup, currentPipeType);
        rowsLoaded = true;
    } catch (...) {
        document().restoreState(before);
        currentGroup = grp;
        currentPipeType = kan;
        for (int i = 0; i < 3; ++i)
            setStatusPanel(i, panels[i]);
        lastTreeNode_ = currentPipeTypeNode();
        tree->selectQuietly(lastTreeNode_);
        handleCurrentException(dialogs_);
        return false;
    }
    document().takeSnapshot();
    showPipeType();
    return true;
}

QTreeWidgetItem* MainWindow::currentPipeTypeNode() const {
    return tree->node((currentGroup - 1) * 21 + currentPipeType);
}

void MainWindow::treeClicked() {
    {
        const FlagScope running(treeClickRunning_);
        try {
            treeClickSteps();
        } catch (...) {
            // Input that waited for this click is not carried to the next.
            pendingTreeInput_ = nullptr;
            throw;
        }
    }
    // Tree input that came while the click was asking its question.
    if (pendingTreeInput_) {
        const std::function<void()> next = std::move(pendingTreeInput_);
        pendingTreeInput_ = nullptr;
        next();
    }
}

void MainWindow::treeClickSteps() {
    QTreeWidgetItem* node = selectedNode();
    // A save that did not reach the database keeps the user on the pipe type
    // with the unsaved rows: loading another now would drop them.
    if (askToSave() != SaveResult::Saved) {
        tree->selectQuietly(lastTreeNode_ ? lastTreeNode_ : currentPipeTypeNode());
        return;
    }
    lastTreeNode_ = node;
    if (!node || node->childCount() > 0) return;
    loadAndShow([this] { takeSelection(); });
}

void MainWindow::afterTreeInput(QTreeWidgetItem* namingNode) {
    // Runs once the tree has handled a key or a mouse button. A click that is
    // still asking its question finishes first; its end runs this again.
    if (treeClickRunning_) {
        pendingTreeInput_ = [this, namingNode] { afterTreeInput(namingNode); };
        return;
    }
    // No key or mouse path leaves the selected node and the pipe type on the
    // sheet apart: a selection moved without a click counts as a click.
    if (selectedNode() != lastTreeNode_) treeClicked();
    // Shift at the release names the node released on, once the click has
    // gone there; a click that was undone names nothing.
    if (namingNode && selectedNode() == namingNode) treeMouseReleased();
}

void MainWindow::treeMouseReleased() {
    QTreeWidgetItem* node = selectedNode();
    if (!node || (noDatabase && !rowsAreLoaded(QStringLiteral("名称を変更できません。")))) return;
    QString name = node->text(0);
    if (!dialogs_.inputQuery(this, QStringLiteral("Qorvale"),
                             QStringLiteral("名称を入力してください"), name))
        return;
    node->setText(0, name);
    const int index = tree->absoluteIndex(node);
    if (index % 21 == 0) setGroupName(index / 21 + 1, name);
    saveGroupNames();
}

// ---- Rows to controls ---------------------------------------------------------

void MainWindow::clearSheet() {
    header_->clearGoods();
    options_->clearLabourCosts();
    sheet_->clear();
}

void MainWindow::showPipeType() {
    const FlagScope filling(refreshing);
    clearSheet();
    PipeTypeOptions o = document().options();
    if (o.modeFlag() == 0) {
        menus_->detail.copyFirstDetailAcrossItem->setEnabled(true);
        QStringList kinds;
        for (int t = 0; t < 4; ++t) {
            PipeRow& row = rows()[t * 15 + 1];
            if (row.kindBytes.isEmpty()) row.setKind(DefaultDetailCaptions[std::size_t(t)]);
            kinds << row.kind();
        }
        sheet_->setTabCaptions(kinds);
        sheet_->setHeadings(false, true);
        menus_->detail.copyFirstDetailAcrossItem->setText(
            kinds[0] + QStringLiteral("のデータを") + kinds[1] + QStringLiteral("・") + kinds[2] +
            QStringLiteral("・") + kinds[3] + QStringLiteral("へコピ－"));
    } else if (o.modeFlag() == 1) {
        menus_->detail.copyFirstDetailAcrossItem->setEnabled(false);
        sheet_->setTabCaptions({RefrigerantTabCaption});
        sheet_->setHeadings(true, true);
    } else {
        sheet_->setTabCaptions({});
    }
    header_->showNames(rows());
    setStatusPanel(0, rows()[1].goods());
    setStatusPanel(1, rows()[2].goods());
    setStatusPanel(2, rows()[3].goods());
    setStatusPanel(3, sheet_->tabCaptions().value(sheet_->currentTab()));
    setStatusPanel(4, rows()[15].size());

    options_->showOptions(o);
    sheet_->selectFirstTab();

    for (int r = 1; r < OptionRow; ++r)
        document().calculateRow(r);
    sheet_->showTab();
    document().setUndoAvailable(false);
}

// ---- Controls to rows -----------------------------------------------------------

void MainWindow::applyControls() {
    if (refreshing) return;
    sheet_->setRateCaption(options_->rateOn());
    document().takeSnapshot();
    header_->applyNames(rows());
    const QStringList kinds = sheet_->tabCaptions();
    for (int t = 0; t < 4; ++t)
        if (t < kinds.size()) rows()[t * 15 + 1].setKind(kinds[t]);

    PipeTypeOptions o = document().options();
    options_->applyTo(o);

    try {
        recalcAndShowTab();
    } catch (...) {
        // The rows have taken the controls all the same: they count as
        // changed, so the next question sees them.
        document().refreshLines();
        throw;
    }
    document().refreshLines();
    sheet_->setHeadings(options_->refrigerant(), false);
}

void MainWindow::recalcAndShowTab() {
    for (int r = 1; r < OptionRow; ++r)
        document().calculateRow(r);
    sheet_->showTab();
}

// ---- Events -----------------------------------------------------------------------

void MainWindow::nameEntered() {
    if (QTreeWidgetItem* node = selectedNode()) node->setText(0, trimBlanks(header_->goods()));
    applyControls();
}

void MainWindow::saveButtonClicked() {
    applyControls();
    saveCurrentPipeType(1);
}

void MainWindow::setSizes() {
    sheet_->setSizes(formDialogs_.sizes);
}

void MainWindow::saveItemTriggered() {
    saveCurrentPipeType(1);
}

void MainWindow::followMovedPipeType(int kan) {
    currentPipeType = kan;
    lastTreeNode_ = currentPipeTypeNode();
    tree->selectQuietly(lastTreeNode_);
    fillGroupNodes(currentGroup);
    showPipeType();
}
