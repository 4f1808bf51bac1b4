// The main form: the lines of the sheet. Rows shown in the two grids, the
// marked line and the lines that follow each other between the grids.
#include "shell/mainwindow.h"

#include "controls/strcgrid.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"

#include <QTabBar>

void MainWindow::setCompositeHeadings(bool refrigerant, bool longForm) {
    const ElementHeadings h = longForm ? longHeadings(refrigerant) : shortHeadings(refrigerant);
    compositeGrid->setCells(5, 0, h.col5);
    compositeGrid->setCells(6, 0, h.col6);
    compositeGrid->setCells(7, 0, h.col7);
    compositeGrid->setCells(9, 0, h.col9);
    compositeGrid->setCells(10, 0, h.col10);
    if (!longForm) compositeGrid->setCells(8, 0, QStringLiteral("配 管 工"));
}

void MainWindow::showGridRow(int r) {
    const int g = r - currentTab() * 15;
    if (g < 1 || g > SheetLines) return;
    SheetView view;
    view.side = sideOfColumn(materialGrid->selection().Left);
    view.showResults = resultsSwitch->isOn();
    view.refrigerant = modeRadio->itemIndex() == 1;
    const auto texts = grid1LineTexts(rows()[r], view);
    compositeGrid->setCells(0, g, texts[0]);
    materialGrid->setCells(0, g, texts[0]);
    compositeGrid->setCells(2, g, texts[2]);
    compositeGrid->setCells(1, g, texts[1]);
    compositeGrid->setCells(3, g, texts[3]);
    for (int c = 4; c < Grid1Cols; ++c)
        compositeGrid->setCells(c, g, texts[std::size_t(c)]);
}

void MainWindow::showPriceCells(int r) {
    // Rows of other tabs lie beyond the grid: nothing to show.
    if (r < 1 || r > SheetLines) return;
    const auto texts = priceTexts(rows()[r]);
    for (int c = 1; c <= 3; ++c)
        materialGrid->setCells(c, r, texts[std::size_t(c - 1)]);
}

void MainWindow::markRow(int g) {
    for (PriceGrid* grid : {compositeGrid, materialGrid}) {
        for (int line = 1; line <= 15; ++line)
            grid->setCellColors(0, line, TColor(SheetDark));
        grid->setCellColors(0, g, TColor(SheetMark));
        grid->Repaint();
    }
}

void MainWindow::compositeCellChosen() {
    const int line = compositeGrid->row();
    const int col = materialGrid->selection().Left;
    materialGrid->setSelection(gridRect(col, line, col, line));
    markRow(line);
}

void MainWindow::materialCellChosen() {
    const int line = materialGrid->row();
    const int col = compositeGrid->selection().Left;
    compositeGrid->setSelection(gridRect(col, line, col, line));
    for (PriceGrid* grid : {compositeGrid, materialGrid}) {
        for (int l = 1; l <= 15; ++l)
            grid->setCellColors(0, l, TColor(SheetDark));
        grid->setCellColors(0, line, TColor(SheetMark));
    }
    const int base = tabBase();
    for (int g = 1; g <= SheetLines; ++g)
        showGridRow(base + g);
}
