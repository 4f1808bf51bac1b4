#include "controls/controlssample.h"

#include "controls/boxlabl.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "controls/strcgrid.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWidget>

namespace {

constexpr TColor kDark = 7099731;
constexpr TColor kMark = 12615808;

FontSpec sampleFont(int size = 9, TColor color = clBlack) {
    return FontSpec(DefaultFontName(), size, color);
}

PriceGrid* makeGrid(QWidget* parent) {
    auto* g = new PriceGrid(parent);
    g->setObjectName(QStringLiteral("compositeGrid"));
    g->SetColCount(7);
    g->SetRowCount(7);
    g->SetFixedCols(1);
    g->SetFixedRows(1);
    g->SetDefaultRowHeight(26);
    g->SetDefaultColWidth(78);
    g->SetColWidths(0, 50);
    g->SetFont(sampleFont());
    g->SetCtl3D(false);
    g->SetFixedColor(kDark);
    g->SetFocusCellColor(kMark);
    g->SetFocusCellFontColor(clWhite);
    g->SetFocusCellFontColorEnabled(true);
    g->SetOptions(GridOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine,
                              goDrawFocusSelected, goColSizing, goEditing, goRangeSelect});

    // One range entry for columns 1 and 2, as the price sheet has it.
    SCGCellParam* range = g->CellParams().Add();
    range->SetColMax(2);
    range->SetRowMax(6);
    range->SetCol(1);
    range->SetRow(1);
    range->SetRangeEnabled(true);
    range->SetAlignment(taRightJustify);
    range->SetCellColor(clWhite);
    range->SetCellColorEnabled(true);
    range->SetFontColor(clBlack);
    range->SetFontColorEnabled(true);

    const char* heads[] = {"No", "採用単価", "複合単価", "提出単価", "管", "継 手 類", "配管工"};
    for (int c = 0; c < 7; ++c) {
        g->SetCells(c, 0, QString::fromUtf8(heads[c]));
        g->SetCellColors(c, 0, kDark);
        g->SetCellFontColors(c, 0, clWhite);
        g->SetCellAlignments(c, 0, taCenter);
    }
    const char* sizes[] = {"15A", "20A", "25A", "32A", "40A", "50A"};
    const char* adopted[] = {"1,230", "1,480", "1,910", "2,540", "2,980", "3,870"};
    const char* composite[] = {"4,210", "4,960", "6,020", "7,730", "8,840", "11,200"};
    const char* submitted[] = {"860", "1,040", "1,330", "1,770", "2,080", "2,700"};
    for (int r = 1; r <= 6; ++r) {
        g->SetCells(0, r, QString::fromUtf8(sizes[r - 1]));
        g->SetCellColors(0, r, r == 2 ? kMark : kDark);
        g->SetCellFontColors(0, r, clWhite);
        g->SetCellAlignments(0, r, taCenter);
        g->SetCells(1, r, QString::fromUtf8(adopted[r - 1]));
        g->SetCells(2, r, QString::fromUtf8(composite[r - 1]));
        g->SetCells(3, r, QString::fromUtf8(submitted[r - 1]));
        g->SetCellColors(3, r, kDark);
        g->SetCellFontColors(3, r, clWhite);
        g->SetCellAlignments(3, r, taRightJustify);
        for (int c = 4; c <= 6; ++c) {
            g->SetCellColors(c, r, c == 6 ? kDark : clWhite);
            g->SetCellFontColors(c, r, c == 6 ? clWhite : clBlack);
            g->SetCellAlignments(c, r, taRightJustify);
        }
        g->SetCells(4, r, QString::number(1.0 + 0.1 * r, 'g', 3));
        g->SetCells(5, r, QStringLiteral("0.35"));
        g->SetCells(6, r, QString::asprintf("%.3f", 0.1 + 0.013 * r));
    }
    // A divided cell: two bands, each line in its own, in a smaller named font.
    g->SetRowHeights(3, 40);
    g->AddFont(sampleFont(8));
    g->SetCellFonts(5, 3, 0);
    g->SetPropertyCellLines(5, 3, 0, QStringLiteral("上段 0.35"));
    g->SetPropertyCellLines(5, 3, 1, QStringLiteral("下段 0.12"));
    g->SetCellColors(5, 3, RGBColor(255, 242, 204));
    // Overstrike: drawn twice, one pixel apart.
    g->SetCellFontWidths(4, 5, 2);
    g->SetCellColors(4, 5, RGBColor(226, 239, 218));
    // A hatched cell.
    g->SetCellBrushEnabled(5, 6, true);
    g->SetCellBrushStyles(5, 6, bsDiagCross);
    g->SetCellBrushColors(5, 6, RGBColor(200, 200, 200));
    // A mid-grey cell: the frame's dots come out white there.
    g->SetCellColors(4, 2, RGBColor(128, 128, 128));
    g->SetCellFontColors(4, 2, clWhite);

    g->resize(g->GridWidth(), g->GridHeight());
    g->SetSelection(GridRect(4, 2, 5, 2));
    return g;
}

} // namespace

QWidget* CreateControlsSample(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setObjectName(QStringLiteral("ControlsSample"));
    w->setAutoFillBackground(true);
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, ToQColor(clBtnFace));
    w->setPalette(pal);
    w->setFont(sampleFont().Font);

    auto* emblem = new GradientPanel(w);
    emblem->setObjectName(QStringLiteral("velmoraEmblem"));
    emblem->setGeometry(8, 8, 180, 60);
    emblem->SetBackGroundEffect(bdDown);
    emblem->SetColorStart(RGBColor(0, 64, 128));
    emblem->SetColorEnd(RGBColor(200, 225, 255));
    emblem->SetFont(FontSpec(DefaultFontName(), 16, clWhite));
    emblem->SetCaption(QStringLiteral("Qorvale"));
    emblem->SetTextEffect(teShadow);

    auto* band = new GradientPanel(w);
    band->setObjectName(QStringLiteral("GradPan2"));
    band->setGeometry(196, 8, 180, 60);
    band->SetFont(FontSpec(DefaultFontName(), 11, clBlack));
    band->SetCaption(QStringLiteral("複合単価"));
    band->SetTextEffect(teEmbossed);
    band->SetColorShadow(clWhite);

    auto* caption = new BoxLabel(w);
    caption->setObjectName(QStringLiteral("BoxLabel1"));
    caption->setGeometry(392, 8, 120, 22);
    caption->SetFont(sampleFont());
    caption->SetCaption(QStringLiteral("基礎工費(提出)"));

    auto* number = new NumberEdit(w);
    number->setObjectName(QStringLiteral("NumberEdit1"));
    number->setGeometry(392, 32, 120, 24);
    number->setFont(sampleFont().Font);
    number->SetFigure(2);
    number->SetFixed(true);
    number->SetComma(true);
    number->SetValue(18000.5L);

    auto* caption2 = new BoxLabel(w);
    caption2->setObjectName(QStringLiteral("BoxLabel2"));
    caption2->setGeometry(520, 8, 120, 22);
    caption2->SetFont(sampleFont());
    caption2->SetBorderStyle(bsSingle);
    caption2->SetCaption(QStringLiteral("掛率 %"));
    caption2->setEnabled(false);

    auto* number2 = new NumberEdit(w);
    number2->setObjectName(QStringLiteral("NumberEdit2"));
    number2->setGeometry(520, 32, 120, 24);
    number2->setFont(sampleFont().Font);
    number2->SetFigure(1);
    number2->SetRoundMode(rmRound);
    number2->SetValue(-12.96L);

    PriceGrid* grid = makeGrid(w);
    grid->move(8, 78);
    w->resize(std::max(grid->width() + 16, 650), grid->height() + 86);
    return w;
}

PriceGrid* SampleGrid(QWidget* sample) {
    return sample->findChild<PriceGrid*>(QStringLiteral("compositeGrid"));
}

QImage GrabControlsSample(QWidget* sample) {
    sample->show();
    sample->activateWindow();
    PriceGrid* grid = SampleGrid(sample);
    QElapsedTimer timer;
    timer.start();
    while (!sample->isActiveWindow() && timer.elapsed() < 2000) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    grid->setFocus();
    QApplication::processEvents();
    return sample->grab().toImage();
}
