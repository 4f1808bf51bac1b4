// The main form: the lines of the sheet. Rows shown in the two grids, the
// marked line and the lines that follow each other between the grids.
#include "shell/utankaregist.h"

#include "controls/strcgrid.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"

#include <QTabBar>

void TFtankaregist::SetGrid1Headings(bool refrigerant, bool longForm) {
    const ElementHeadings h = longForm ? LongHeadings(refrigerant) : ShortHeadings(refrigerant);
    StrColGrid1->SetCells(5, 0, h.col5);
    StrColGrid1->SetCells(6, 0, h.col6);
    StrColGrid1->SetCells(7, 0, h.col7);
    StrColGrid1->SetCells(9, 0, h.col9);
    StrColGrid1->SetCells(10, 0, h.col10);
    if (!longForm) StrColGrid1->SetCells(8, 0, QStringLiteral("配 管 工"));
}

void TFtankaregist::ShowGridRow(int r) {
    const int g = r - CurrentTab() * 15;
    if (g < 1 || g > SheetLines) return;
    SheetView view;
    view.side = SideOfColumn(StrColGrid2->Selection().Left);
    view.showResults = CheckBox1->IsOn();
    view.refrigerant = SBorRadio1->ItemIndex() == 1;
    const auto texts = Grid1LineTexts(KanzaiRows[r], view);
    StrColGrid1->SetCells(0, g, texts[0]);
    StrColGrid2->SetCells(0, g, texts[0]);
    StrColGrid1->SetCells(2, g, texts[2]);
    StrColGrid1->SetCells(1, g, texts[1]);
    StrColGrid1->SetCells(3, g, texts[3]);
    for (int c = 4; c < Grid1Cols; ++c)
        StrColGrid1->SetCells(c, g, texts[std::size_t(c)]);
}

void TFtankaregist::ShowPriceCells(int r) {
    // Rows of other tabs lie beyond the grid: nothing to show.
    if (r < 1 || r > SheetLines) return;
    const auto texts = PriceTexts(KanzaiRows[r]);
    for (int c = 1; c <= 3; ++c)
        StrColGrid2->SetCells(c, r, texts[std::size_t(c - 1)]);
}

void TFtankaregist::MarkRow(int g) {
    for (TStrColGrid* grid : {StrColGrid1, StrColGrid2}) {
        for (int line = 1; line <= 15; ++line)
            grid->SetCellColors(0, line, TColor(SheetDark));
        grid->SetCellColors(0, g, TColor(SheetMark));
        grid->Repaint();
    }
}

void TFtankaregist::StrColGrid1Click() {
    const int line = StrColGrid1->Row();
    const int col = StrColGrid2->Selection().Left;
    StrColGrid2->SetSelection(GridRect(col, line, col, line));
    MarkRow(line);
}

void TFtankaregist::StrColGrid2Click() {
    const int line = StrColGrid2->Row();
    const int col = StrColGrid1->Selection().Left;
    StrColGrid1->SetSelection(GridRect(col, line, col, line));
    for (TStrColGrid* grid : {StrColGrid1, StrColGrid2}) {
        for (int l = 1; l <= 15; ++l)
            grid->SetCellColors(0, l, TColor(SheetDark));
        grid->SetCellColors(0, line, TColor(SheetMark));
    }
    const int base = TabBase();
    for (int g = 1; g <= SheetLines; ++g)
        ShowGridRow(base + g);
}
