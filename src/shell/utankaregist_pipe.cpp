// The main form: the way between the rows and the controls, the tree, the
// tabs, line following and saving.
#include "shell/utankaregist.h"

#include "controls/numberedit.h"
#include "controls/strcgrid.h"
#include "engine/calcrow.h"
#include "engine/rounding.h"
#include "platform/application.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "platform/waitcursor.h"
#include "sheet/sheettexts.h"
#include "shell/confrecord.h"
#include "shell/formwidgets.h"
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

// Number edit value to Currency: times 10000, stored to nearest.
Currency editCurrency(const TNumberEdit* edit) {
    return Currency::FromRaw(Store(edit->Value() * 10000.0L));
}

Extended currencyValue(Currency c) {
    return Extended(c.raw) / 10000.0L;
}

} // namespace

// ---- The tree ---------------------------------------------------------------

QTreeWidgetItem* TFtankaregist::TreeNode(int absoluteIndex) const {
    if (!TreeView1 || absoluteIndex < 0 || absoluteIndex >= 210) return nullptr;
    QTreeWidgetItem* group = TreeView1->topLevelItem(absoluteIndex / 21);
    const int k = absoluteIndex % 21;
    return k == 0 ? group : group->child(k - 1);
}

int TFtankaregist::AbsoluteIndex(QTreeWidgetItem* node) const {
    if (!node) return -1;
    if (QTreeWidgetItem* parent = node->parent())
        return TreeView1->indexOfTopLevelItem(parent) * 21 + parent->indexOfChild(node) + 1;
    return TreeView1->indexOfTopLevelItem(node) * 21;
}

QTreeWidgetItem* TFtankaregist::SelectedNode() const {
    return TreeView1 ? TreeView1->currentItem() : nullptr;
}

void TFtankaregist::LoadGroupNames() {
    ::LoadGroupNames();
    for (int g = 1; g <= 10; ++g) {
        SetGroupName(g, KanzaiConf.GroupNames[std::size_t(g - 1)]);
        TreeNode((g - 1) * 21)->setText(0, GroupName(g));
    }
}

void TFtankaregist::SaveGroupNames() {
    for (int g = 1; g <= 10; ++g)
        KanzaiConf.GroupNames[std::size_t(g - 1)] = GroupName(g);
    ::SaveGroupNames();
}

void TFtankaregist::FillGroupNodes(int g) {
    QueryToLines(ExDatabasePath,
                 QStringLiteral("SELECT GOODS FROM ex_kanzai where CTG='1' and GRP='") +
                     QString::number(g) + QStringLiteral("' and no='1';"));
    for (int i = 0; i < int(ResultLines.size()); ++i) {
        QString text = NthField(ResultLines[i], 1);
        if (text.isEmpty()) text = QStringLiteral("----");
        if (QTreeWidgetItem* node = TreeNode((g - 1) * 21 + 1 + i))
            node->setText(0, TrimBlanks(text));
    }
}

void TFtankaregist::TakeSelection() {
    QTreeWidgetItem* node = SelectedNode();
    QTreeWidgetItem* parent = node ? node->parent() : nullptr;
    CurrentCtg = 1;
    if (parent) {
        CurrentGrp = TreeView1->indexOfTopLevelItem(parent) + 1;
        CurrentKan = parent->indexOfChild(node) + 1;
    }
    SetStatusPanel(0, QString::number(CurrentCtg));
    SetStatusPanel(1, QString::number(CurrentGrp));
    SetStatusPanel(2, QString::number(CurrentKan));
}

bool TFtankaregist::RowsAreLoaded(const QString& refusal) {
    // After a start whose load failed the rows belong to no pipe type:
    // writing them, or the controls showing them, would blank real data.
    if (!RowsLoaded)
        ShowInfoDialog(this, QStringLiteral("確認"),
                       QStringLiteral("管種が読み込まれていないため、") + refusal);
    return RowsLoaded;
}

TFtankaregist::SaveResult TFtankaregist::SaveCurrentPipeType(int showMessage) {
    if (!RowsAreLoaded(QStringLiteral("保存できません。"))) return SaveResult::Failed;
    SaveCheck check = SaveCheck::AgainstLoaded;
    for (;;) {
        SaveOutcome outcome;
        {
            const WaitCursor wait; // while a lock of another program is waited out
            outcome = SavePipeType(this, CurrentCtg, CurrentGrp, showMessage, CurrentKan, check);
        }
        if (outcome == SaveOutcome::Saved) return SaveResult::Saved;
        if (outcome == SaveOutcome::Failed) return SaveResult::Failed;
        const int answer = ShowTaskDialog(
            this, ApplicationTitle(),
            QStringLiteral("この管種は読み込んだ後に他で変更されています。"),
            TaskDialog::IconWarning,
            TaskDialog::ButtonOverwrite | TaskDialog::ButtonReload | TaskDialog::ButtonCancel,
            GOODSBOX->Text() +
                QStringLiteral("\r\n「上書き保存」で画面の内容を保存し、他での変更を消します。"
                               "\r\n「読み直す」で保存されている内容を読み込みます。"
                               "\r\n「キャンセル」で保存せずに画面に戻ります。"));
        if (answer == TaskDialog::IdOverwrite) {
            check = SaveCheck::Overwrite;
            continue;
        }
        if (answer == TaskDialog::IdReload &&
            ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"),
                           TaskDialog::IconQuestion, TaskDialog::ButtonYes | TaskDialog::ButtonNo,
                           QStringLiteral("変更を破棄して読み直しますか?")) == TaskDialog::IdYes &&
            LoadAndShow(nullptr))
            if (QTreeWidgetItem* node = CurrentPipeTypeNode())
                node->setText(0, TrimBlanks(GOODSBOX->Text()));
        return SaveResult::Declined;
    }
}

TFtankaregist::SaveResult TFtankaregist::AskToSave() {
    if (!RowsLoaded || !PipeTypeChanged()) return SaveResult::Saved;
    const int answer =
        ShowTaskDialog(this, ApplicationTitle(), QStringLiteral("確認"), TaskDialog::IconQuestion,
                       TaskDialog::ButtonYes | TaskDialog::ButtonCancel,
                       GOODSBOX->Text() + QStringLiteral("\r\nデータを保存しますか?"));
    if (answer != TaskDialog::IdYes) return SaveResult::Saved;
    return SaveCurrentPipeType(0);
}

bool TFtankaregist::LoadAndShow(const std::function<void()>& select) {
    // A load that fails leaves everything as it was before: the triple, the
    // selected node, the rows and what counts as saved and as stored. Else
    // the next save would write these rows over the pipe type asked for.
    const RowTable rows = KanzaiRows;
    const QStringList saved = SavedLines;
    const QByteArray stored = StoredState;
    const int grp = CurrentGrp, kan = CurrentKan;
    QStringList panels;
    for (int i = 0; i < 3; ++i)
        panels << StatusPanel(i);
    try {
        if (select) select();
        const WaitCursor wait;
        LoadPipeType(CurrentCtg, CurrentGrp, CurrentKan);
        RowsLoaded = true;
    } catch (...) {
        KanzaiRows = rows;
        SavedLines = saved;
        StoredState = stored;
        CurrentGrp = grp;
        CurrentKan = kan;
        for (int i = 0; i < 3; ++i)
            SetStatusPanel(i, panels[i]);
        lastTreeNode_ = CurrentPipeTypeNode();
        SelectNodeQuietly(lastTreeNode_);
        HandleCurrentException();
        return false;
    }
    TakeSnapshot();
    ShowPipeType();
    return true;
}

QTreeWidgetItem* TFtankaregist::CurrentPipeTypeNode() const {
    return TreeNode((CurrentGrp - 1) * 21 + CurrentKan);
}

void TFtankaregist::SelectNodeQuietly(QTreeWidgetItem* node) {
    if (!node) return;
    const QSignalBlocker block(TreeView1);
    TreeView1->setCurrentItem(node);
    TreeView1->scrollToItem(node);
}

void TFtankaregist::TreeView1Click() {
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

void TFtankaregist::treeClickSteps() {
    QTreeWidgetItem* node = SelectedNode();
    // A save that did not reach the database keeps the user on the pipe type
    // with the unsaved rows: loading another now would drop them.
    if (AskToSave() != SaveResult::Saved) {
        SelectNodeQuietly(lastTreeNode_ ? lastTreeNode_ : CurrentPipeTypeNode());
        return;
    }
    lastTreeNode_ = node;
    if (!node || node->childCount() > 0) return;
    LoadAndShow([this] { TakeSelection(); });
}

void TFtankaregist::AfterTreeInput(QTreeWidgetItem* namingNode) {
    // Runs once the tree has handled a key or a mouse button. A click that is
    // still asking its question finishes first; its end runs this again.
    if (treeClickRunning_) {
        pendingTreeInput_ = [this, namingNode] { AfterTreeInput(namingNode); };
        return;
    }
    // No key or mouse path leaves the selected node and the pipe type on the
    // sheet apart: a selection moved without a click counts as a click.
    if (SelectedNode() != lastTreeNode_) TreeView1Click();
    // Shift at the release names the node released on, once the click has
    // gone there; a click that was undone names nothing.
    if (namingNode && SelectedNode() == namingNode) TreeView1MouseUp();
}

void TFtankaregist::TreeView1MouseUp() {
    QTreeWidgetItem* node = SelectedNode();
    if (!node || (NoDatabase && !RowsAreLoaded(QStringLiteral("名称を変更できません。")))) return;
    QString name = node->text(0);
    if (!CurrentDialogs().InputQuery(this, QStringLiteral("Qorvale"),
                                     QStringLiteral("名称を入力してください"), name))
        return;
    node->setText(0, name);
    const int index = AbsoluteIndex(node);
    if (index % 21 == 0) SetGroupName(index / 21 + 1, name);
    SaveGroupNames();
}

// ---- Rows to controls ---------------------------------------------------------

int TFtankaregist::CurrentTab() const {
    return std::max(0, TabControl1->currentIndex());
}

void TFtankaregist::ClearSheet() {
    GOODSBOX->SetText(QString());
    GpayDay1->SetValue(0);
    GpayDay_N->SetValue(0);
    for (int r = 1; r < GridRows; ++r) {
        for (int c = 1; c <= 3; ++c)
            StrColGrid2->SetCells(c, r, QString());
        for (int c = 1; c <= 10; ++c)
            StrColGrid1->SetCells(c, r, QString());
    }
}

void TFtankaregist::ShowPipeType() {
    const FlagScope refreshing(Refreshing);
    ClearSheet();
    KanzaiOptions o = CurrentOptions();
    {
        const FlagScope settingTabs(settingTabs_);
        while (TabControl1->count() > 0)
            TabControl1->removeTab(0);
        if (o.ModeFlag() == 0) {
            item_paste_5->setEnabled(true);
            for (int t = 0; t < 4; ++t) {
                Fuzokurecordtypex& row = KanzaiRows[t * 15 + 1];
                if (row.KIND.isEmpty()) row.SetKind(DefaultDetailCaptions[std::size_t(t)]);
                TabControl1->addTab(row.Kind());
            }
            SetGrid1Headings(false, true);
            item_paste_5->setText(TabControl1->tabText(0) + QStringLiteral("のデータを") +
                                  TabControl1->tabText(1) + QStringLiteral("・") +
                                  TabControl1->tabText(2) + QStringLiteral("・") +
                                  TabControl1->tabText(3) + QStringLiteral("へコピ－"));
        } else if (o.ModeFlag() == 1) {
            item_paste_5->setEnabled(false);
            TabControl1->addTab(RefrigerantTabCaption);
            TabControl1->setCurrentIndex(0);
            SetGrid1Headings(true, true);
        }
    }
    GOODSBOX->SetText(KanzaiRows[1].Goods());
    ComboBox4->SetText(KanzaiRows[2].Goods());
    ComboBox5->SetText(KanzaiRows[3].Goods());
    StaticText1->setText(KanzaiRows[4].Goods());
    StaticText2->setText(KanzaiRows[5].Goods());
    ci->SetText(KanzaiRows[1].Ci());
    SetStatusPanel(0, KanzaiRows[1].Goods());
    SetStatusPanel(1, KanzaiRows[2].Goods());
    SetStatusPanel(2, KanzaiRows[3].Goods());
    SetStatusPanel(3, TabControl1->tabText(TabControl1->currentIndex()));
    SetStatusPanel(4, KanzaiRows[15].Size());

    GpayDay1->SetValue(currencyValue(o.LabourSubmitted()));
    GpayDay_N->SetValue(currencyValue(o.LabourCost()));
    avr_1->SetValue(currencyValue(o.RateSubmitted()));
    avr_N->SetValue(currencyValue(o.RateCost()));
    ComboBox1->SetItemIndex(DigitIndexOf(o.UnitDigits()));
    ComboBox3->SetItemIndex(FractionIndexOf(o.UnitFraction()));
    SBorRadio14->SetItemIndex(DigitIndexOf(o.AdoptedDigits()));
    SBorRadio11->SetItemIndex(FractionIndexOf(o.AdoptedFraction()));
    SBorRadio4->SetItemIndex(DigitIndexOf(o.ElementDigits()));
    SBorRadio8->SetItemIndex(FractionIndexOf(o.ElementFraction()));
    SBorRadio1->SetItemIndex(o.ModeFlag());
    Scalc_opt1->SetItemIndex(o.OtherMethod());

    {
        const FlagScope settingTabs(settingTabs_);
        TabControl1->setCurrentIndex(0);
    }

    if (o.RateOn() == Currency::FromInt(1))
        CheckGroupBox1->SetChecked(true);
    else if (o.RateOn().IsZero())
        CheckGroupBox1->SetChecked(false);

    for (int r = 1; r < OptionRow; ++r)
        CalcRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        ShowGridRow(r);
    for (int r = 1; r <= SheetLines; ++r)
        ShowPriceCells(r);
    SetUndoEnabled(false);
}

// ---- Controls to rows -----------------------------------------------------------

void TFtankaregist::ApplyControls() {
    if (Refreshing) return;
    Label1->setText(CheckGroupBox1->Checked() ? QStringLiteral("資材単価[単価に掛率を使用]")
                                              : QStringLiteral("資材単価"));
    TakeSnapshot();
    KanzaiRows[1].SetGoods(GOODSBOX->Text());
    KanzaiRows[2].SetGoods(ComboBox4->Text());
    KanzaiRows[3].SetGoods(ComboBox5->Text());
    KanzaiRows[4].SetGoods(StaticText1->text());
    KanzaiRows[5].SetGoods(StaticText2->text());
    for (int t = 0; t < 4; ++t)
        if (t < TabControl1->count()) KanzaiRows[t * 15 + 1].SetKind(TabControl1->tabText(t));
    for (int r = 1; r <= RowCount; ++r)
        KanzaiRows[r].SetCi(ci->Text());

    KanzaiOptions o = CurrentOptions();
    o.LabourSubmitted() = editCurrency(GpayDay1);
    o.LabourCost() = editCurrency(GpayDay_N);
    o.RateSubmitted() = editCurrency(avr_1);
    o.RateCost() = editCurrency(avr_N);
    o.RateOn() = Currency::FromInt(CheckGroupBox1->Checked() ? 1 : 0);
    auto digit = [](int index) { return DigitSteps[std::size_t(std::clamp(index, 0, 7))]; };
    auto fraction = [](int index) { return FractionSteps[std::size_t(std::clamp(index, 0, 2))]; };
    o.UnitDigits() = digit(ComboBox1->ItemIndex());
    o.UnitFraction() = fraction(ComboBox3->ItemIndex());
    o.AdoptedDigits() = digit(SBorRadio14->ItemIndex());
    o.AdoptedFraction() = fraction(SBorRadio11->ItemIndex());
    o.ElementDigits() = digit(SBorRadio4->ItemIndex());
    o.ElementFraction() = fraction(SBorRadio8->ItemIndex());
    o.ModeFlag() = SBorRadio1->ItemIndex();
    o.OtherMethod() = Scalc_opt1->ItemIndex();

    try {
        RecalcAndShowTab();
    } catch (...) {
        // The rows have taken the controls all the same: they count as
        // changed, so the next question sees them.
        RefreshLines();
        throw;
    }
    RefreshLines();
    SetGrid1Headings(SBorRadio1->ItemIndex() == 1, false);
    StrColGrid1->SetCells(1, 0, QStringLiteral("採用単価"));
}

void TFtankaregist::RecalcAndShowTab() {
    for (int r = 1; r < OptionRow; ++r)
        CalcRow(r);
    const int base = TabBase();
    for (int g = 1; g <= SheetLines; ++g)
        ShowGridRow(base + g);
    for (int r = 1; r <= SheetLines; ++r)
        ShowPriceCells(r);
}

// ---- Events -----------------------------------------------------------------------

void TFtankaregist::TabControl1Change() {
    const int base = TabBase();
    for (int g = 1; g <= SheetLines; ++g)
        ShowGridRow(base + g);
}

void TFtankaregist::GOODSBOXKeyPress(int key, bool& handled) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return;
    handled = true;
    if (QTreeWidgetItem* node = SelectedNode()) node->setText(0, TrimBlanks(GOODSBOX->Text()));
    ApplyControls();
}

void TFtankaregist::Button1Click() {
    ApplyControls();
    SaveCurrentPipeType(1);
}

void TFtankaregist::N1Click() {
    SaveCurrentPipeType(1);
}
