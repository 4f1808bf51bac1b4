// The main form: figures typed into the sheet, and the size presets.
#include "shell/utankaregist.h"

#include "controls/strcgrid.h"
#include "engine/calcrow.h"
#include "platform/dialogs.h"
#include "sheet/sheettexts.h"
#include "sheet/usizeset.h"
#include "shell/formwidgets.h"

#include <QTabBar>

namespace {

// The field of a factor column (4 to 10) of StrColGrid1; null for others.
Currency* factorField(Fuzokurecordtypex& row, int col) {
    return col >= 4 && col <= 10 ? &row.Data(col - 3) : nullptr;
}

// The field of a price column (1 to 3) of StrColGrid2; null for others.
Currency* priceField(Fuzokurecordtypex& row, int col) {
    switch (col) {
    case 1:
        return &row.GROSS;
    case 2:
        return &row.NET;
    case 3:
        return &row.TEIKA;
    default:
        return nullptr;
    }
}

constexpr int VkEnter = 13;

} // namespace

// ---- Remembered cells -------------------------------------------------------------

void TFtankaregist::StrColGrid1SelectCell(int col, int row, bool&) {
    Grid1Col = col;
    Grid1Row = row;
}

void TFtankaregist::StrColGrid2SelectCell(int col, int row, bool&) {
    Grid2Col = col;
    Grid2Row = row;
    // With the rate on the list price, only the list price is typed.
    TGridOptions options = StrColGrid2->Options();
    if (CheckGroupBox1->Checked() && col < 3)
        options -= goEditing;
    else
        options += goEditing;
    StrColGrid2->SetOptions(options);
}

void TFtankaregist::StrColGrid2SetEditText(int col, int row, const QString&) {
    Grid2Col = col;
    Grid2Row = row;
}

void TFtankaregist::UpdateGrid1Editing() {
    TGridOptions options = StrColGrid1->Options();
    if (CheckBox1->IsOn()) {
        StrColGrid1->SetEditorMode(false);
        options -= goEditing;
    } else {
        options += goEditing;
    }
    StrColGrid1->SetOptions(options);
}

// ---- The key filter -----------------------------------------------------------------

bool TFtankaregist::GridKeyCommits(TStrColGrid* grid, int key) {
    const bool editorOpen = grid->EditorMode();
    const KeyAction action = GridKeyAction(key, editorOpen);
    if (action == KeyAction::MoveOnly) return false;
    if (editorOpen && key == VkEnter) grid->SetEditorMode(false);
    switch (action) {
    case KeyAction::PassToCell:
        return false;
    case KeyAction::Commit:
        grid->SetEditorMode(false);
        return true;
    default:
        grid->SetEditorMode(false);
        CurrentDialogs().Beep();
        return true;
    }
}

void TFtankaregist::StrColGrid1KeyDown(int& key, unsigned shift) {
    if (CheckBox1->IsOn()) {
        // The columns show results: no key turns them into factors.
        const KeyAction action = GridKeyAction(key, StrColGrid1->EditorMode());
        const bool modifier = key == 16 || key == 17 || key == 18;
        if (action != KeyAction::MoveOnly && !modifier) CurrentDialogs().Beep();
        return;
    }
    // The fill-down follows the Shift state that came with this key.
    if (GridKeyCommits(StrColGrid1, key)) CommitGrid1(key, (shift & ssShift) != 0);
}

void TFtankaregist::StrColGrid2KeyDown(int& key, unsigned) {
    if (GridKeyCommits(StrColGrid2, key)) CommitGrid2(key);
}

// ---- Commits ------------------------------------------------------------------------

void TFtankaregist::CommitGrid1(int key, bool shiftDown) {
    const int c = Grid1Col, g = Grid1Row;
    const int base = TabBase();
    if (SBorRadio1->ItemIndex() == 1 && c == 9) {
        ShowInfoDialog(this, QStringLiteral("確認"),
                       QStringLiteral("冷媒モードです。この列のセルは編集できません。"));
        ShowGridRow(base + g);
        return;
    }
    const Currency v = StrToCurrDef(StrColGrid1->Cells(c, g), Currency{});
    TakeSnapshot();
    if (shiftDown) {
        for (int h = g; h <= SheetLines; ++h) {
            const int r = base + h;
            if (!StrColGrid1->Cells(0, h).isEmpty())
                if (Currency* field = factorField(KanzaiRows[r], c)) *field = v;
            CalcRow(r);
            ShowGridRow(r);
            ShowPriceCells(r);
        }
    } else {
        const int r = base + g;
        if (Currency* field = factorField(KanzaiRows[r], c)) *field = v;
        CalcRow(r);
        ShowGridRow(r);
        ShowPriceCells(r);
        if (key == VkEnter) {
            Grid1Row = g >= StrColGrid1->RowCount() - 1 ? 1 : g + 1;
            StrColGrid1->SetSelection(GridRect(c, Grid1Row, c, Grid1Row));
            MarkRow(Grid1Row);
        }
    }
    RefreshLines();
}

void TFtankaregist::CommitGrid2(int key) {
    const int c = Grid2Col, g = Grid2Row;
    TakeSnapshot();
    QString text = StrColGrid2->Cells(c, g);
    Currency v;
    if (!text.isEmpty()) v = StrToCurr(text.remove(QLatin1Char(','))); // raises on no number
    for (int r : {g, g + 15, g + 30, g + 45})
        if (r >= 1 && r <= RowCount)
            if (Currency* field = priceField(KanzaiRows[r], c)) *field = v;
    const int row = TabBase() + g;
    if (row >= 1 && row < OptionRow) CalcRow(row);
    ShowGridRow(row);
    ShowPriceCells(g);
    if (key == VkEnter) {
        Grid2Row = g >= StrColGrid2->RowCount() - 1 ? 1 : g + 1;
        StrColGrid2->SetSelection(GridRect(c, Grid2Row, c, Grid2Row));
        StrColGrid2->Repaint();
    }
}

// ---- Size presets -------------------------------------------------------------------

void TFtankaregist::ActionSizeSetExecute() {
    TfsizeSet* dialog = FsizeSet;
    std::unique_ptr<TfsizeSet> own;
    if (!dialog) {
        own = std::make_unique<TfsizeSet>(this);
        dialog = own.get();
    }
    const int n = StrColGrid1->RowCount();
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << KanzaiRows[i].Size();
    dialog->SetLines(lines);
    if (dialog->exec() == TfsizeSet::ResultCancel) return;
    TakeSnapshot();
    for (int i = 1; i <= n; ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            KanzaiRows[r].SIZE.clear();
        StrColGrid1->SetCells(0, i, QString());
        StrColGrid2->SetCells(0, i, QString());
    }
    const QStringList memo = dialog->Lines();
    for (int i = 1; i <= n && i <= int(memo.size()); ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            KanzaiRows[r].SetSize(memo[i - 1]);
        StrColGrid1->SetCells(0, i, KanzaiRows[i].Size());
        StrColGrid2->SetCells(0, i, KanzaiRows[i].Size());
    }
}
