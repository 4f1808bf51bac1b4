#include "print/pricesheet.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Page measures in tenths of a millimetre (landscape A4 less the margins).
constexpr int Margin = 100;
constexpr int PageW = 2970 - 2 * Margin;
constexpr int PageH = 2100 - 2 * Margin;
constexpr int CaptionH = 55;
constexpr int HeadRowH = 45;
constexpr int LineH = 42;
constexpr int BlockGap = 40;
constexpr int FooterH = 60;
// Room between the text of a cell and its rules, on each side.
constexpr int CellPad = 10;
// pixel sizes of the table's text: the largest whose line fits the line
// height, and the smallest that still reads well; below it the columns are
// split over two pages.
constexpr int TablePx = 28;
constexpr int SmallestTablePx = 23;
// pixel sizes of the heading lines, and how far they may shrink before they
// wrap.
constexpr int TitlePx = 80;
constexpr int DatePx = 36;
constexpr int NamesPx = 40;
constexpr int SmallestNamesPx = 34;
constexpr int BuildingPx = 34;
constexpr int SmallestBuildingPx = 28;
constexpr int FooterPx = 28;
constexpr int SmallestFooterPx = 22;
// The gap between a text at the left and one at the right of a line.
constexpr int TextGap = 60;

QString u(const char* t) {
    return QString::fromUtf8(t);
}

QFont font(int px, bool bold = false) {
    QFont f(printFontFamily());
    f.setPixelSize(std::max(1, px));
    f.setBold(bold);
    f.setStyleHint(QFont::SansSerif);
    // Glyphs as the characters stand, so that text readers of the PDF find
    // every digit again; advances as the font designs them, so that what is
    // measured here is what the PDF writer and the printer set.
    f.setStyleStrategy(QFont::PreferNoShaping);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

double widthOf(const QFont& f, const QString& text) {
    return QFontMetricsF(f).horizontalAdvance(text);
}

double heightOf(const QFont& f) {
    return QFontMetricsF(f).height();
}

// The font made smaller until the text fits the width, never below
// `smallest` pixels. False when it does not fit at `smallest`.
bool shrinkToFit(QFont& f, const QString& text, double width, int smallest) {
    while (widthOf(f, text) > width) {
        if (f.pixelSize() <= smallest) return false;
        f.setPixelSize(f.pixelSize() - 1);
    }
    return true;
}

// A text set in one or more lines of one font.
struct TextBlock {
    QFont font;
    QStringList lines;
    double lineHeight() const { return heightOf(font); }
    double height() const { return lineHeight() * double(lines.size()); }
};

// lines of at most `width` of a text that has no room on one line: at the
// breaks the language allows, anywhere inside Japanese text.
QStringList wrapText(const QString& text, const QFont& f, double width) {
    QTextLayout layout(text, f);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

// Pieces of a text, joined by `joint`, in a width: on one line in the full
// font, else on one line in a font down to `smallest` pixels, else in the
// full font over as many lines as it takes, a piece to itself where it
// does not fit behind the one before.
TextBlock fitText(const QStringList& pieces, const QString& joint, const QFont& full, int smallest,
                  double width) {
    const QString one = pieces.join(joint);
    TextBlock t{full, {one}};
    if (shrinkToFit(t.font, one, width, smallest)) return t;
    t.font = full;
    t.lines.clear();
    QString current;
    for (const QString& piece : pieces) {
        const QString longer = current.isEmpty() ? piece : current + joint + piece;
        if (widthOf(full, longer) <= width) {
            current = longer;
            continue;
        }
        if (!current.isEmpty()) t.lines << current;
        current = piece;
        if (widthOf(full, piece) > width) {
            QStringList broken = wrapText(piece, full, width);
            current = broken.takeLast();
            t.lines << broken;
        }
    }
    t.lines << current;
    return t;
}

// Draws a text in a rectangle; a text wider than the rectangle is set in a
// smaller font rather than cut.
void drawFitted(QPainter& p, const QRectF& r, int flags, const QString& text, QFont f) {
    shrinkToFit(f, text, r.width(), 1);
    p.setFont(f);
    p.drawText(r, flags | Qt::TextDontClip, text);
}

void drawLines(QPainter& p, const TextBlock& t, double x, double y, double width, int flags) {
    for (const QString& line : t.lines) {
        drawFitted(p, QRectF(x, y, width, t.lineHeight()), flags | Qt::AlignVCenter, line, t.font);
        y += t.lineHeight();
    }
}

bool isTextKey(const QString& key) {
    return key == QLatin1String("SIZE") || key == QLatin1String("CI");
}

QString label(const StyleColumn& c, bool refrigerant) {
    return refrigerant && !c.refrigerantLabel.isEmpty() ? c.refrigerantLabel : c.label;
}

// ---- The table ---------------------------------------------------------------

// A run of the style's columns set on one page, with their widths.
struct TablePart {
    QVector<int> columns; // indexes into job.style.columns
    QVector<double> widths;
    int px = TablePx;
    double width() const { return std::accumulate(widths.begin(), widths.end(), 0.0); }
};

// The width of each column of the style at a text size: its widest text
// among all lines of the job, or its label.
QVector<double> ownNeeds(const PrintJob& job, int px) {
    const QFont body = font(px), head = font(px, true);
    QVector<double> need;
    for (const StyleColumn& c : job.style.columns) {
        double w = widthOf(head, label(c, job.isRefrigerant()));
        for (const PrintBlock& b : job.blocks)
            for (const PrintFields& f : b.lines)
                w = std::max(w, widthOf(body, printedCellText(job, f, c.key)));
        need << std::ceil(w) + 2 * CellPad;
    }
    return need;
}

// The widths the chosen columns need: their own, widened where a group
// heading is wider than the run of columns under it.
QVector<double> needsOf(const PrintJob& job, const QVector<int>& columns,
                        const QVector<double>& own, int px) {
    const QFont head = font(px, true);
    QVector<double> need;
    for (int c : columns)
        need << own[c];
    for (int i = 0; i < int(columns.size());) {
        const QString& group = job.style.columns[columns[i]].group;
        int j = i + 1;
        while (j < int(columns.size()) && job.style.columns[columns[j]].group == group)
            ++j;
        if (!group.isEmpty()) {
            const double span = std::accumulate(need.begin() + i, need.begin() + j, 0.0);
            const double want = std::ceil(widthOf(head, group)) + 2 * CellPad;
            for (int k = i; k < j && span < want; ++k)
                need[k] += (want - span) / (j - i);
        }
        i = j;
    }
    return need;
}

// Room left on the page goes to the columns, evenly, up to the widths of a
// roomy table: the size 16 mm, the unit 9 mm, a number 26 mm.
QVector<double> spread(const PrintJob& job, const QVector<int>& columns, QVector<double> w) {
    QVector<double> roomy;
    for (int c : columns) {
        const QString& key = job.style.columns[c].key;
        roomy << (key == QLatin1String("SIZE") ? 160 : key == QLatin1String("CI") ? 90 : 260);
    }
    double room = PageW - std::accumulate(w.begin(), w.end(), 0.0);
    while (room > 0.5) {
        int growing = 0;
        for (int i = 0; i < int(w.size()); ++i)
            growing += w[i] < roomy[i];
        if (growing == 0) break;
        const double share = room / growing;
        for (int i = 0; i < int(w.size()); ++i) {
            const double add = std::min(share, std::max(0.0, roomy[i] - w[i]));
            w[i] += add;
            room -= add;
        }
    }
    return w;
}

// The parts of the table: one when the columns fit the page at a text size
// down to the smallest, else two, split where a group ends if that fits,
// nearest the middle. A column whose text fits no page in any size still
// gets a part of its own size; the cells then shrink their text.
QVector<TablePart> tableParts(const PrintJob& job) {
    const int n = int(job.style.columns.size());
    QVector<QVector<double>> own(TablePx + 1);
    auto fits = [&](const QVector<int>& columns, int px, TablePart& part) {
        if (own[px].isEmpty()) own[px] = ownNeeds(job, px);
        const QVector<double> need = needsOf(job, columns, own[px], px);
        if (std::accumulate(need.begin(), need.end(), 0.0) > PageW) return false;
        part = {columns, spread(job, columns, need), px};
        return true;
    };
    QVector<int> all(n);
    std::iota(all.begin(), all.end(), 0);
    TablePart one;
    for (int px = TablePx; px >= SmallestTablePx; --px)
        if (fits(all, px, one)) return {one};

    // The size and the unit stand on both pages; the others are cut in two.
    QVector<int> others;
    for (int c = 0; c < n; ++c)
        if (!isTextKey(job.style.columns[c].key)) others << c;
    QVector<int> cuts;
    for (int k = 1; k < int(others.size()); ++k)
        cuts << k;
    auto groupEnds = [&](int k) {
        return job.style.columns[others[k - 1]].group != job.style.columns[others[k]].group;
    };
    const int middle = int(others.size()) / 2;
    std::stable_sort(cuts.begin(), cuts.end(), [&](int a, int b) {
        if (groupEnds(a) != groupEnds(b)) return groupEnds(a);
        return std::abs(a - middle) < std::abs(b - middle);
    });
    auto partColumns = [&](int from, int to) {
        QVector<int> columns;
        for (int c = 0; c < n; ++c) {
            const int k = int(others.indexOf(c));
            if (k < 0 || (k >= from && k < to)) columns << c;
        }
        return columns;
    };
    for (int px = TablePx; px >= 1; --px) {
        for (int k : cuts) {
            TablePart a, b;
            if (fits(partColumns(0, k), px, a) && fits(partColumns(k, n), px, b)) return {a, b};
        }
        if (cuts.isEmpty() && fits(all, px, one)) return {one};
    }
    // Nothing fits even in the smallest text: the columns as measured,
    // side by side, each cell shrinking its text to its width.
    const QVector<double> need = needsOf(job, all, ownNeeds(job, 1), 1);
    const double sum = std::accumulate(need.begin(), need.end(), 0.0);
    one = {all, need, 1};
    for (double& w : one.widths)
        w *= PageW / sum;
    return {one};
}

int blockHeight(const PrintBlock& b) {
    return CaptionH + 2 * HeadRowH + int(std::max<qsizetype>(1, b.lines.size())) * LineH + BlockGap;
}

void drawBlock(QPainter& p, const PrintJob& job, const TablePart& part, int partIndex,
               const PrintBlock& b, double top) {
    const PrintStyle& s = job.style;
    const QVector<int>& cols = part.columns;
    const QVector<double>& w = part.widths;
    const double width = part.width();
    const double left = std::max(0.0, (PageW - width) / 2);
    const QFont body = font(part.px), head = font(part.px, true);
    const QPen thin(Qt::black, 2), thick(Qt::black, 6);

    p.setPen(thin);
    drawFitted(p, QRectF(left, top, width, CaptionH - 8), Qt::AlignLeft | Qt::AlignBottom,
               u("■ ") + b.caption + (partIndex > 0 ? u("（続き）") : QString()), font(38, true));
    double y = top + CaptionH;

    // Two heading rows: the group over a run of columns, then the labels;
    // a column without a group takes both rows.
    p.setBrush(QColor(232, 236, 242));
    double x = left;
    for (int i = 0; i < int(cols.size());) {
        const StyleColumn& c = s.columns[cols[i]];
        if (c.group.isEmpty()) {
            const QRectF r(x, y, w[i], 2 * HeadRowH);
            p.drawRect(r);
            drawFitted(p, r.adjusted(CellPad, 0, -CellPad, 0), Qt::AlignCenter,
                       label(c, job.isRefrigerant()), head);
            x += w[i];
            ++i;
            continue;
        }
        int j = i;
        double span = 0;
        while (j < int(cols.size()) && s.columns[cols[j]].group == c.group)
            span += w[j++];
        const QRectF g(x, y, span, HeadRowH);
        p.drawRect(g);
        drawFitted(p, g.adjusted(CellPad, 0, -CellPad, 0), Qt::AlignCenter, c.group, head);
        for (int k = i; k < j; ++k) {
            const QRectF r(x, y + HeadRowH, w[k], HeadRowH);
            p.drawRect(r);
            drawFitted(p, r.adjusted(CellPad, 0, -CellPad, 0), Qt::AlignCenter,
                       label(s.columns[cols[k]], job.isRefrigerant()), head);
            x += w[k];
        }
        i = j;
    }
    y += 2 * HeadRowH;

    p.setBrush(Qt::NoBrush);
    for (int n = 0; n < int(b.lines.size()); ++n) {
        const PrintFields& f = b.lines[n];
        if (n % 2 == 1) p.fillRect(QRectF(left, y, width, LineH), QColor(246, 246, 246));
        x = left;
        for (int i = 0; i < int(cols.size()); ++i) {
            const QString& key = s.columns[cols[i]].key;
            const QRectF r(x, y, w[i], LineH);
            p.setPen(thin);
            p.drawLine(r.topRight(), r.bottomRight());
            if (i == 0) p.drawLine(r.topLeft(), r.bottomLeft());
            drawFitted(p, r.adjusted(CellPad, 0, -CellPad, 0),
                       (isTextKey(key) ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter,
                       printedCellText(job, f, key), body);
            x += w[i];
        }
        p.drawLine(QPointF(left, y + LineH), QPointF(left + width, y + LineH));
        y += LineH;
    }
    if (b.lines.isEmpty()) {
        const QRectF r(left, y, width, LineH);
        p.drawRect(r);
        drawFitted(p, r.adjusted(CellPad, 0, -CellPad, 0), Qt::AlignCenter,
                   u("（サイズの登録がありません）"), body);
        y += LineH;
    }
    // The frame of the table.
    p.setPen(thick);
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(left, top + CaptionH, width, y - top - CaptionH));
}

// ---- Heading and footer ------------------------------------------------------

// The heading of every page: the title in the middle with the date and the
// style at the right, then the pipe type's names, then the building/page
// text at the left and the base labour cost at the right.
struct PageHeading {
    QFont titleFont;
    QString title;
    double titleBaseline = 0;
    TextBlock right; // the date, the data title and style
    double rightWidth = 0;
    TextBlock names;
    double namesTop = 0;
    TextBlock building;
    QString labourCost;
    QFont labourFont;
    double labourWidth = 0;
    double buildingTop = 0;
    double height = 0; // to below the rule under it
};

PageHeading pageHeading(const PrintJob& job) {
    PageHeading h;
    // The right column takes at most a third of the width.
    const QStringList right = {job.dateText(), job.dataTitle + u("　") + job.style.name};
    h.right.font = font(DatePx);
    for (const QString& line : right) {
        h.right.lines << line;
        shrinkToFit(h.right.font, line, PageW / 3.0, 1);
    }
    for (const QString& line : right)
        h.rightWidth = std::max(h.rightWidth, widthOf(h.right.font, line));

    // The title is centred on the page and keeps clear of the right column
    // on both sides.
    h.title = job.style.title.isEmpty() ? u("複合単価計算書") : job.style.title;
    h.titleFont = font(TitlePx, true);
    shrinkToFit(h.titleFont, h.title, PageW - 2 * (h.rightWidth + TextGap), 1);
    const QFontMetricsF title(h.titleFont);
    h.titleBaseline = title.ascent();
    const double scale = h.titleFont.pixelSize() / double(TitlePx);
    const double top = std::max({h.right.height(), title.height(), h.titleBaseline + 30 * scale});

    QStringList names;
    for (const QString& n : job.names)
        if (!n.trimmed().isEmpty()) names << n.trimmed();
    if (!names.isEmpty())
        names[0].prepend(u("管種　"));
    else
        names << u("管種");
    h.namesTop = top + 10;
    h.names = fitText(names, u("　"), font(NamesPx, true), SmallestNamesPx, PageW);

    h.labourFont = font(BuildingPx);
    h.labourCost = u("基礎工費（提出）　") + job.labourCostText() + u(" 円");
    shrinkToFit(h.labourFont, h.labourCost, PageW / 2.0, 1);
    h.labourWidth = widthOf(h.labourFont, h.labourCost);
    h.buildingTop = h.namesTop + h.names.height();
    h.building = fitText({u("建物・ページ　") + job.buildingPage}, QString(), font(BuildingPx),
                         SmallestBuildingPx, PageW - h.labourWidth - TextGap);
    const double bottom = h.buildingTop + std::max(h.building.height(), heightOf(h.labourFont));
    h.height = bottom + 16;
    return h;
}

void drawHeading(QPainter& p, const PageHeading& h) {
    p.setPen(QPen(Qt::black, 2));
    drawFitted(p, QRectF(0, 0, PageW, QFontMetricsF(h.titleFont).height()),
               Qt::AlignHCenter | Qt::AlignTop, h.title, h.titleFont);
    const double tw = widthOf(h.titleFont, h.title);
    const double scale = h.titleFont.pixelSize() / double(TitlePx);
    p.setPen(QPen(Qt::black, 5 * scale));
    for (double y : {h.titleBaseline + 15 * scale, h.titleBaseline + 25 * scale})
        p.drawLine(QPointF(PageW / 2.0 - tw / 2 - 40 * scale, y),
                   QPointF(PageW / 2.0 + tw / 2 + 40 * scale, y));
    p.setPen(QPen(Qt::black, 2));
    drawLines(p, h.right, PageW - h.rightWidth, 0, h.rightWidth, Qt::AlignRight);
    drawLines(p, h.names, 0, h.namesTop, PageW, Qt::AlignLeft);
    drawLines(p, h.building, 0, h.buildingTop, PageW - h.labourWidth - TextGap, Qt::AlignLeft);
    drawFitted(p,
               QRectF(PageW - h.labourWidth, h.buildingTop, h.labourWidth, heightOf(h.labourFont)),
               Qt::AlignRight | Qt::AlignVCenter, h.labourCost, h.labourFont);
    p.setPen(QPen(Qt::black, 3));
    p.drawLine(QPointF(0, h.height - 10), QPointF(PageW, h.height - 10));
}

// The footer: the note of a stand-in style at the left, the page number at
// the right.
struct PageFooter {
    TextBlock note;
    double numberWidth = 0;
    double height = FooterH;
};

PageFooter pageFooter(const PrintJob& job) {
    PageFooter f;
    f.numberWidth = widthOf(font(FooterPx), QStringLiteral("999 / 999"));
    if (!job.styleNote.isEmpty())
        f.note = fitText({job.styleNote}, QString(), font(FooterPx), SmallestFooterPx,
                         PageW - f.numberWidth - TextGap);
    f.height = std::max<double>(FooterH, f.note.height() + 10);
    return f;
}

// Everything of the job's pages that depends on the job alone.
struct SheetLayout {
    PageHeading heading;
    PageFooter footer;
    QVector<TablePart> parts;
    QVector<SheetPage> pages;
};

SheetLayout layOut(const PrintJob& job) {
    SheetLayout s;
    s.heading = pageHeading(job);
    s.footer = pageFooter(job);
    s.parts = tableParts(job);
    // Blocks go on a page while they fit under the heading; the pages of
    // the second part of a split table follow those of the first.
    QVector<QVector<int>> groups;
    const double room = PageH - s.heading.height - s.footer.height;
    double used = room;
    for (int i = 0; i < int(job.blocks.size()); ++i) {
        const int h = blockHeight(job.blocks[i]);
        if (groups.isEmpty() || used + h > room) {
            groups.push_back({});
            used = 0;
        }
        groups.last().push_back(i);
        used += h;
    }
    if (groups.isEmpty()) groups.push_back({});
    for (const QVector<int>& g : groups)
        for (int part = 0; part < int(s.parts.size()); ++part)
            s.pages.push_back({part, g});
    return s;
}

void paintPage(QPainter& p, double dotsPerMm, const PrintJob& job, const SheetLayout& s, int page) {
    p.save();
    p.scale(dotsPerMm / 10.0, dotsPerMm / 10.0);
    p.translate(Margin, Margin);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setRenderHint(QPainter::TextAntialiasing, true);

    drawHeading(p, s.heading);
    const SheetPage& sheet = s.pages[page];
    double y = s.heading.height;
    for (int i : sheet.blocks) {
        drawBlock(p, job, s.parts[sheet.part], sheet.part, job.blocks[i], y);
        y += blockHeight(job.blocks[i]);
    }

    p.setPen(QPen(Qt::black, 2));
    const double footTop = PageH - s.footer.height + 10;
    drawLines(p, s.footer.note, 0, footTop, PageW - s.footer.numberWidth - TextGap, Qt::AlignLeft);
    drawFitted(p, QRectF(PageW - s.footer.numberWidth, footTop, s.footer.numberWidth, FooterH - 10),
               Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("%1 / %2").arg(page + 1).arg(s.pages.size()), font(FooterPx));
    p.restore();
}

} // namespace

QString printFontFamily() {
    return QStringLiteral("Noto Sans CJK JP");
}

QString printedCellText(const PrintJob& job, const PrintFields& fields, const QString& key) {
    if (job.isRefrigerant() && (key == QLatin1String("DATA6") || key == QLatin1String("CALC6")))
        return QString();
    QString t = fields[std::size_t(styleFieldIndex(key))];
    if (key == QLatin1String("DATA5") && !t.isEmpty()) {
        const int point = int(t.indexOf(QLatin1Char('.')));
        if (point < 0) t += QLatin1Char('.');
        const int decimals = point < 0 ? 0 : int(t.size()) - point - 1;
        if (decimals < 3) t += QString(3 - decimals, QLatin1Char('0'));
    }
    return t;
}

QVector<SheetPage> sheetPages(const PrintJob& job) {
    return layOut(job).pages;
}

bool paintPriceSheets(QPagedPaintDevice& device, const PrintJob& job, QString& reason) {
    QPainter p;
    if (!p.begin(&device)) {
        reason = u("印刷先を開けません。");
        return false;
    }
    const QRectF full = device.pageLayout().fullRectPixels(device.logicalDpiX());
    const double dotsPerMm = device.logicalDpiX() / 25.4;
    const QRectF paint = device.pageLayout().paintRectPixels(device.logicalDpiX());
    // The painter's origin is the corner of the printable area; the drawing
    // measures from the corner of the sheet.
    const QPointF shift = full.topLeft() - paint.topLeft();
    const SheetLayout layout = layOut(job);
    for (int i = 0; i < int(layout.pages.size()); ++i) {
        if (i > 0 && !device.newPage()) {
            reason = u("ページを追加できません。");
            return false;
        }
        p.save();
        p.translate(shift);
        paintPage(p, dotsPerMm, job, layout, i);
        p.restore();
    }
    return p.end();
}

bool writePriceSheetPdf(const PrintJob& job, const QString& path, QString& reason) {
    QPdfWriter pdf(path);
    pdf.setResolution(600);
    pdf.setTitle(job.style.title + u("　") + job.dataTitle);
    pdf.setCreator(QStringLiteral("listpress"));
    pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                  QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    if (!paintPriceSheets(pdf, job, reason)) {
        reason = u("PDF ファイル %1 を書けません: %2").arg(path, reason);
        return false;
    }
    if (!QFileInfo(path).isFile() || QFileInfo(path).size() == 0) {
        reason = u("PDF ファイル %1 を書けません。").arg(path);
        return false;
    }
    return true;
}
