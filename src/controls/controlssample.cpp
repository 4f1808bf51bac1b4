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
    return FontSpec(defaultFontName(), size, color);
}

PriceGrid* makeGrid(QWidget* parent) {
    auto* g = new PriceGrid(parent);
    g->setObjectName(QStringLiteral("compositeGrid"));
    g->setColCount(7);
    g->setRowCount(7);
    g->setFixedCols(1);
    g->setFixedRows(1);
    g->setDefaultRowHeight(26);
    g->setDefaultColWidth(78);
    g->setColWidths(0, 50);
    g->SetFont(sampleFont());
    g->setCtl3D(false);
    g->setFixedColor(kDark);
    g->setFocusCellColor(kMark);
    g->setFocusCellFontColor(clWhite);
    g->setFocusCellFontColorEnabled(true);
    g->setOptions(GridOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine,
                              goDrawFocusSelected, goColSizing, goEditing, goRangeSelect});

    // One range entry for columns 1 and 2, as the price sheet has it.
    SCGCellParam* range = g->cellParams().add();
    range->setColMax(2);
    range->setRowMax(6);
    range->setCol(1);
    range->setRow(1);
    range->setRangeEnabled(true);
    range->setAlignment(taRightJustify);
    range->setCellColor(clWhite);
    range->setCellColorEnabled(true);
    range->setFontColor(clBlack);
    range->setFontColorEnabled(true);

    const char* heads[] = {"No", "採用単価", "複合単価", "提出単価", "管", "継 手 類", "配管工"};
    for (int c = 0; c < 7; ++c) {
        g->setCells(c, 0, QString::fromUtf8(heads[c]));
        g->setCellColors(c, 0, kDark);
        g->setCellFontColors(c, 0, clWhite);
        g->setCellAlignments(c, 0, taCenter);
    }
    const char* sizes[] = {"15A", "20A", "25A", "32A", "40A", "50A"};
    const char* adopted[] = {"1,230", "1,480", "1,910", "2,540", "2,980", "3,870"};
    const char* composite[] = {"4,210", "4,960", "6,020", "7,730", "8,840", "11,200"};
    const char* submitted[] = {"860", "1,040", "1,330", "1,770", "2,080", "2,700"};
    for (int r = 1; r <= 6; ++r) {
        g->setCells(0, r, QString::fromUtf8(sizes[r - 1]));
        g->setCellColors(0, r, r == 2 ? kMark : kDark);
        g->setCellFontColors(0, r, clWhite);
        g->setCellAlignments(0, r, taCenter);
        g->setCells(1, r, QString::fromUtf8(adopted[r - 1]));
        g->setCells(2, r, QString::fromUtf8(composite[r - 1]));
        g->setCells(3, r, QString::fromUtf8(submitted[r - 1]));
        g->setCellColors(3, r, kDark);
        g->setCellFontColors(3, r, clWhite);
        g->setCellAlignments(3, r, taRightJustify);
        for (int c = 4; c <= 6; ++c) {
            g->setCellColors(c, r, c == 6 ? kDark : clWhite);
            g->setCellFontColors(c, r, c == 6 ? clWhite : clBlack);
            g->setCellAlignments(c, r, taRightJustify);
        }
        g->setCells(4, r, QString::number(1.0 + 0.1 * r, 'g', 3));
        g->setCells(5, r, QStringLiteral("0.35"));
        g->setCells(6, r, QString::asprintf("%.3f", 0.1 + 0.013 * r));
    }
    // A divided cell: two bands, each line in its own, in a smaller named font.
    g->setRowHeights(3, 40);
    g->addFont(sampleFont(8));
    g->setCellFonts(5, 3, 0);
    g->setPropertyCellLines(5, 3, 0, QStringLiteral("上段 0.35"));
    g->setPropertyCellLines(5, 3, 1, QStringLiteral("下段 0.12"));
    g->setCellColors(5, 3, rgbColor(255, 242, 204));
    // Overstrike: drawn twice, one pixel apart.
    g->setCellFontWidths(4, 5, 2);
    g->setCellColors(4, 5, rgbColor(226, 239, 218));
    // A hatched cell.
    g->setCellBrushEnabled(5, 6, true);
    g->setCellBrushStyles(5, 6, bsDiagCross);
    g->setCellBrushColors(5, 6, rgbColor(200, 200, 200));
    // A mid-grey cell: the frame's dots come out white there.
    g->setCellColors(4, 2, rgbColor(128, 128, 128));
    g->setCellFontColors(4, 2, clWhite);

    g->resize(g->gridWidth(), g->gridHeight());
    g->setSelection(gridRect(4, 2, 5, 2));
    return g;
}

} // namespace

QWidget* createControlsSample(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setObjectName(QStringLiteral("ControlsSample"));
    w->setAutoFillBackground(true);
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, toQColor(clBtnFace));
    w->setPalette(pal);
    w->setFont(sampleFont().Font);

    auto* emblem = new GradientPanel(w);
    emblem->setObjectName(QStringLiteral("velmoraEmblem"));
    emblem->setGeometry(8, 8, 180, 60);
    emblem->setBackGroundEffect(bdDown);
    emblem->setColorStart(rgbColor(0, 64, 128));
    emblem->setColorEnd(rgbColor(200, 225, 255));
    emblem->SetFont(FontSpec(defaultFontName(), 16, clWhite));
    emblem->setCaption(QStringLiteral("Qorvale"));
    emblem->setTextEffect(teShadow);

    auto* band = new GradientPanel(w);
    band->setObjectName(QStringLiteral("GradPan2"));
    band->setGeometry(196, 8, 180, 60);
    band->SetFont(FontSpec(defaultFontName(), 11, clBlack));
    band->setCaption(QStringLiteral("複合単価"));
    band->setTextEffect(teEmbossed);
    band->setColorShadow(clWhite);

    auto* caption = new BoxLabel(w);
    caption->setObjectName(QStringLiteral("BoxLabel1"));
    caption->setGeometry(392, 8, 120, 22);
    caption->SetFont(sampleFont());
    caption->setCaption(QStringLiteral("基礎工費(提出)"));

    auto* number = new NumberEdit(w);
    number->setObjectName(QStringLiteral("NumberEdit1"));
    number->setGeometry(392, 32, 120, 24);
    number->setFont(sampleFont().Font);
    number->setFigure(2);
    number->setFixed(true);
    number->setComma(true);
    number->setValue(18000.5L);

    auto* caption2 = new BoxLabel(w);
    caption2->setObjectName(QStringLiteral("BoxLabel2"));
    caption2->setGeometry(520, 8, 120, 22);
    caption2->SetFont(sampleFont());
    caption2->setBorderStyle(bsSingle);
    caption2->setCaption(QStringLiteral("掛率 %"));
    caption2->setEnabled(false);

    auto* number2 = new NumberEdit(w);
    number2->setObjectName(QStringLiteral("NumberEdit2"));
    number2->setGeometry(520, 32, 120, 24);
    number2->setFont(sampleFont().Font);
    number2->setFigure(1);
    number2->setRoundMode(rmRound);
    number2->setValue(-12.96L);

    PriceGrid* grid = makeGrid(w);
    grid->move(8, 78);
    w->resize(std::max(grid->width() + 16, 650), grid->height() + 86);
    return w;
}

PriceGrid* sampleGrid(QWidget* sample) {
    return sample->findChild<PriceGrid*>(QStringLiteral("compositeGrid"));
}

QImage grabControlsSample(QWidget* sample) {
    sample->show();
    sample->activateWindow();
    PriceGrid* grid = sampleGrid(sample);
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
