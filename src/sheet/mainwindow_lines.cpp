// The main form: the lines of the sheet. Rows shown in the two grids, the
// marked line and the lines that follow each other between the grids.
#include "shell/mainwindow.h"

#include "controls/pricegrid.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"

#include <QTabBar>

void MainWindow::setCompositeHeadings(bool refrigerant, bool longForm) {
    const ElementHeadings h = longForm ? longHeadings(refrigerant) : shortHeadings(refrigerant);
    compositeGrid->setText(5, 0, h.col5);
    compositeGrid->setText(6, 0, h.col6);
    compositeGrid->setText(7, 0, h.col7);
    compositeGrid->setText(9, 0, h.col9);
    compositeGrid->setText(10, 0, h.col10);
    if (!longForm) compositeGrid->setText(8, 0, QStringLiteral("配 管 工"));
}

void MainWindow::showGridRow(int r) {
    const int g = r - currentTab() * 15;
    if (g < 1 || g > SheetLines) return;
    SheetView view;
    view.side = sideOfColumn(materialGrid->selectedCells().left());
    view.showResults = resultsSwitch->isOn();
    view.refrigerant = modeRadio->itemIndex() == 1;
    const auto texts = grid1LineTexts(rows()[r], view);
    compositeGrid->setText(0, g, texts[0]);
    materialGrid->setText(0, g, texts[0]);
    compositeGrid->setText(2, g, texts[2]);
    compositeGrid->setText(1, g, texts[1]);
    compositeGrid->setText(3, g, texts[3]);
    for (int c = 4; c < Grid1Cols; ++c)
        compositeGrid->setText(c, g, texts[std::size_t(c)]);
}

void MainWindow::showPriceCells(int r) {
    // Rows of other tabs lie beyond the grid: nothing to show.
    if (r < 1 || r > SheetLines) return;
    const auto texts = priceTexts(rows()[r]);
    for (int c = 1; c <= 3; ++c)
        materialGrid->setText(c, r, texts[std::size_t(c - 1)]);
}

void MainWindow::markRow(int g) {
    for (PriceGrid* grid : {compositeGrid, materialGrid}) {
        for (int line = 1; line <= 15; ++line)
            grid->setCellColor(0, line, sheetDark());
        grid->setCellColor(0, g, sheetMark());
    }
}

void MainWindow::compositeCellChosen() {
    const int line = compositeGrid->row();
    const int col = materialGrid->selectedCells().left();
    materialGrid->selectCells(QRect(col, line, 1, 1));
    markRow(line);
}

void MainWindow::materialCellChosen() {
    const int line = materialGrid->row();
    const int col = compositeGrid->selectedCells().left();
    compositeGrid->selectCells(QRect(col, line, 1, 1));
    markRow(line);
    const int base = tabBase();
    for (int g = 1; g <= SheetLines; ++g)
        showGridRow(base + g);
}
