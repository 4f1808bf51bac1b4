// The main form: figures typed into the sheet, and the size presets.
#include "shell/mainwindow.h"

#include "controls/pricegrid.h"
#include "engine/calcrow.h"
#include "platform/dialogs.h"
#include "sheet/sheettexts.h"
#include "sheet/sizedialog.h"
#include "shell/formwidgets.h"

#include <QKeyEvent>
#include <QTabBar>

namespace {

// The field of a factor column (4 to 10) of compositeGrid; null for others.
Currency* factorField(PipeRow& row, int col) {
    return col >= 4 && col <= 10 ? &row.factor(col - 3) : nullptr;
}

// The field of a price column (1 to 3) of materialGrid; null for others.
Currency* priceField(PipeRow& row, int col) {
    switch (col) {
    case 1:
        return &row.submittedPrice;
    case 2:
        return &row.costPrice;
    case 3:
        return &row.listPrice;
    default:
        return nullptr;
    }
}

bool isEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

} // namespace

// ---- Remembered cells -------------------------------------------------------------

void MainWindow::selectCompositeCell(int col, int row) {
    compositeCol = col;
    compositeRow = row;
}

void MainWindow::selectMaterialCell(int col, int row) {
    materialCol = col;
    materialRow = row;
    // With the rate on the list price, only the list price is typed.
    materialGrid->setEditable(!(useRateCheck->checked() && col < 3));
}

void MainWindow::setMaterialEditText(int col, int row, const QString&) {
    materialCol = col;
    materialRow = row;
}

void MainWindow::updateCompositeEditing() {
    if (resultsSwitch->isOn()) compositeGrid->setEditorMode(false);
    compositeGrid->setEditable(!resultsSwitch->isOn());
}

// ---- The key filter -----------------------------------------------------------------

bool MainWindow::gridKeyCommits(PriceGrid* grid, const QKeyEvent& key) {
    const bool editorOpen = grid->editorMode();
    const KeyAction action = gridKeyAction(key.key(), key.modifiers(), editorOpen);
    if (action == KeyAction::MoveOnly) return false;
    if (editorOpen && isEnter(key)) grid->setEditorMode(false);
    switch (action) {
    case KeyAction::PassToCell:
        return false;
    case KeyAction::Commit:
        grid->setEditorMode(false);
        return true;
    default:
        grid->setEditorMode(false);
        dialogs_.beep();
        return true;
    }
}

void MainWindow::compositeKeyDown(const QKeyEvent& key) {
    if (resultsSwitch->isOn()) {
        // The columns show results: no key turns them into factors.
        const KeyAction action =
            gridKeyAction(key.key(), key.modifiers(), compositeGrid->editorMode());
        const bool modifier =
            key.key() == Qt::Key_Shift || key.key() == Qt::Key_Control || key.key() == Qt::Key_Alt;
        if (action != KeyAction::MoveOnly && !modifier) dialogs_.beep();
        return;
    }
    // The fill-down follows the Shift state that came with this key.
    if (gridKeyCommits(compositeGrid, key))
        commitCompositeCell(isEnter(key), key.modifiers().testFlag(Qt::ShiftModifier));
}

void MainWindow::materialKeyDown(const QKeyEvent& key) {
    if (gridKeyCommits(materialGrid, key)) commitMaterialCell(isEnter(key));
}

// ---- Commits ------------------------------------------------------------------------

void MainWindow::commitCompositeCell(bool enter, bool shiftDown) {
    const int c = compositeCol, g = compositeRow;
    const int base = tabBase();
    if (modeRadio->itemIndex() == 1 && c == 9) {
        showInfoDialog(dialogs_, this, QStringLiteral("確認"),
                       QStringLiteral("冷媒モードです。この列のセルは編集できません。"));
        showGridRow(base + g);
        return;
    }
    const Currency v = strToCurrDef(compositeGrid->text(c, g), Currency{});
    document().takeSnapshot();
    if (shiftDown) {
        for (int h = g; h <= SheetLines; ++h) {
            const int r = base + h;
            if (!compositeGrid->text(0, h).isEmpty())
                if (Currency* field = factorField(rows()[r], c)) *field = v;
            document().calculateRow(r);
            showGridRow(r);
            showPriceCells(r);
        }
    } else {
        const int r = base + g;
        if (Currency* field = factorField(rows()[r], c)) *field = v;
        document().calculateRow(r);
        showGridRow(r);
        showPriceCells(r);
        if (enter) {
            compositeRow = g >= compositeGrid->rowCount() - 1 ? 1 : g + 1;
            compositeGrid->selectCells(QRect(c, compositeRow, 1, 1));
            markRow(compositeRow);
        }
    }
    document().refreshLines();
}

void MainWindow::commitMaterialCell(bool enter) {
    const int c = materialCol, g = materialRow;
    document().takeSnapshot();
    QString text = materialGrid->text(c, g);
    Currency v;
    if (!text.isEmpty()) v = strToCurr(text.remove(QLatin1Char(','))); // raises on no number
    for (int r : {g, g + 15, g + 30, g + 45})
        if (r >= 1 && r <= RowCount)
            if (Currency* field = priceField(rows()[r], c)) *field = v;
    const int row = tabBase() + g;
    if (row >= 1 && row < OptionRow) document().calculateRow(row);
    showGridRow(row);
    showPriceCells(g);
    if (enter) {
        materialRow = g >= materialGrid->rowCount() - 1 ? 1 : g + 1;
        materialGrid->selectCells(QRect(c, materialRow, 1, 1));
    }
}

// ---- size presets -------------------------------------------------------------------

void MainWindow::setSizes() {
    SizeDialog* dialog = formDialogs_.sizes;
    std::unique_ptr<SizeDialog> own;
    if (!dialog) {
        own = std::make_unique<SizeDialog>(this);
        dialog = own.get();
    }
    const int n = compositeGrid->rowCount();
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << rows()[i].size();
    dialog->setLines(lines);
    if (dialog->exec() == SizeDialog::ResultCancel) return;
    document().takeSnapshot();
    for (int i = 1; i <= n; ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            rows()[r].sizeBytes.clear();
        compositeGrid->setText(0, i, QString());
        materialGrid->setText(0, i, QString());
    }
    const QStringList memo = dialog->lines();
    for (int i = 1; i <= n && i <= int(memo.size()); ++i) {
        for (int r : {i, i + 15, i + 30, i + 45})
            rows()[r].setSize(memo[i - 1]);
        compositeGrid->setText(0, i, rows()[i].size());
        materialGrid->setText(0, i, rows()[i].size());
    }
}
