#include "controls/controlssample.h"

#include "controls/boxlabl.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "controls/pricegrid.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWidget>

namespace {

QFont sampleFont(int size = 9) {
    QFont font = defaultPanelFont();
    font.setPointSize(size);
    return font;
}

PriceGrid* makeGrid(QWidget* parent) {
    const QColor dark(83, 85, 108), mark(128, 128, 192);
    auto* g = new PriceGrid(7, 6, 1, parent);
    g->setObjectName(QStringLiteral("compositeGrid"));
    g->setRangeSelect(true);
    g->setHeadingColors(dark, Qt::white);
    g->setSelectionColors(mark, Qt::white);
    g->setFont(sampleFont());
    const char* heads[] = {"No", "採用単価", "複合単価", "提出単価", "管", "継 手 類", "配管工"};
    const char* sizes[] = {"15A", "20A", "25A", "32A", "40A", "50A"};
    const char* adopted[] = {"1,230", "1,480", "1,910", "2,540", "2,980", "3,870"};
    const char* composite[] = {"4,210", "4,960", "6,020", "7,730", "8,840", "11,200"};
    const char* submitted[] = {"860", "1,040", "1,330", "1,770", "2,080", "2,700"};
    for (int c = 0; c < 7; ++c) {
        g->setText(c, 0, QString::fromUtf8(heads[c]));
        g->setCellAlignment(c, 0, Qt::AlignHCenter);
        g->setColumnWidth(c, c == 0 ? 50 : 78);
    }
    for (int r = 1; r <= 6; ++r) {
        g->setText(0, r, QString::fromUtf8(sizes[r - 1]));
        g->setText(1, r, QString::fromUtf8(adopted[r - 1]));
        g->setText(2, r, QString::fromUtf8(composite[r - 1]));
        g->setText(3, r, QString::fromUtf8(submitted[r - 1]));
        g->setText(4, r, QString::number(1.0 + 0.1 * r, 'g', 3));
        g->setText(5, r, QStringLiteral("0.35"));
        g->setText(6, r, QString::asprintf("%.3f", 0.1 + 0.013 * r));
        for (int c = 0; c < 7; ++c) {
            const bool darkCell = c == 0 || c == 3 || c == 6;
            g->setCellColor(c, r, c == 0 && r == 2 ? mark : darkCell ? dark : QColor(Qt::white));
            g->setCellFontColor(c, r, darkCell ? QColor(Qt::white) : QColor(Qt::black));
            g->setCellAlignment(c, r, c == 0 ? Qt::AlignHCenter : Qt::AlignRight);
        }
    }
    g->resize(50 + 6 * 78 + 2 * g->frameWidth(), g->contentHeight());
    g->selectCells(QRect(QPoint(4, 2), QPoint(5, 2)));
    return g;
}

} // namespace

QWidget* createControlsSample(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setObjectName(QStringLiteral("ControlsSample"));
    w->setAutoFillBackground(true);
    QPalette pal = w->palette();
    pal.setColor(QPalette::Window, QColor(PanelColor::buttonFace));
    w->setPalette(pal);
    w->setFont(sampleFont());

    auto* emblem = new GradientPanel(w);
    emblem->setObjectName(QStringLiteral("velmoraEmblem"));
    emblem->setGeometry(8, 8, 180, 60);
    emblem->setBackGroundEffect(bdDown);
    emblem->setColorStart(QColor(0, 64, 128));
    emblem->setColorEnd(QColor(200, 225, 255));
    emblem->setFont(sampleFont(16));
    emblem->setFontColor(Qt::white);
    emblem->setCaption(QStringLiteral("Qorvale"));
    emblem->setTextEffect(teShadow);

    auto* band = new GradientPanel(w);
    band->setObjectName(QStringLiteral("bandPanel"));
    band->setGeometry(196, 8, 180, 60);
    band->setFont(sampleFont(11));
    band->setCaption(QStringLiteral("複合単価"));
    band->setTextEffect(teEmbossed);
    band->setColorShadow(Qt::white);

    auto* caption = new BoxLabel(w);
    caption->setObjectName(QStringLiteral("labourCaption"));
    caption->setGeometry(392, 8, 120, 22);
    caption->setFont(sampleFont());
    caption->setCaption(QStringLiteral("基礎工費(提出)"));

    auto* number = new NumberEdit(w);
    number->setObjectName(QStringLiteral("labourEdit"));
    number->setGeometry(392, 32, 120, 24);
    number->setFont(sampleFont());
    number->setFigure(2);
    number->setFixed(true);
    number->setComma(true);
    number->setValue(18000.5L);

    auto* caption2 = new BoxLabel(w);
    caption2->setObjectName(QStringLiteral("rateCaption"));
    caption2->setGeometry(520, 8, 120, 22);
    caption2->setFont(sampleFont());
    caption2->setBorderStyle(bsSingle);
    caption2->setCaption(QStringLiteral("掛率 %"));
    caption2->setEnabled(false);

    auto* number2 = new NumberEdit(w);
    number2->setObjectName(QStringLiteral("rateEdit"));
    number2->setGeometry(520, 32, 120, 24);
    number2->setFont(sampleFont());
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
