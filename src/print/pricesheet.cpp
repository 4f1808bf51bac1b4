#include "print/pricesheet.h"

#include <QFileInfo>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPdfWriter>

#include <algorithm>

namespace {

// Page measures in tenths of a millimetre (landscape A4 less the margins).
constexpr int Margin = 100;
constexpr int PageW = 2970 - 2 * Margin;
constexpr int PageH = 2100 - 2 * Margin;
constexpr int HeaderH = 260;
constexpr int FooterH = 60;
constexpr int CaptionH = 55;
constexpr int HeadRowH = 45;
constexpr int LineH = 42;
constexpr int BlockGap = 40;

QString U(const char* t) {
    return QString::fromUtf8(t);
}

int blockHeight(const PrintBlock& b) {
    return CaptionH + 2 * HeadRowH + int(std::max<qsizetype>(1, b.lines.size())) * LineH + BlockGap;
}

QFont font(int tenthsMm, bool bold = false) {
    QFont f(PrintFontFamily());
    f.setPixelSize(tenthsMm);
    f.setBold(bold);
    f.setStyleHint(QFont::SansSerif);
    // Glyphs as the characters stand, so that text readers of the PDF find
    // every digit again.
    f.setStyleStrategy(QFont::PreferNoShaping);
    return f;
}

// Column widths in tenths of a millimetre: the text columns narrow, the
// numbers sharing the rest.
QVector<int> columnWidths(const PrintStyle& style) {
    QVector<int> w;
    int fixed = 0, numbers = 0;
    for (const StyleColumn& c : style.columns) {
        if (c.key == QLatin1String("SIZE")) {
            w << 160;
            fixed += 160;
        } else if (c.key == QLatin1String("CI")) {
            w << 90;
            fixed += 90;
        } else {
            w << 0;
            ++numbers;
        }
    }
    const int each = numbers ? std::min(260, (PageW - fixed) / numbers) : 0;
    for (int& x : w)
        if (x == 0) x = each;
    return w;
}

int tableWidth(const QVector<int>& w) {
    int s = 0;
    for (int x : w)
        s += x;
    return s;
}

QString label(const StyleColumn& c, bool refrigerant) {
    return refrigerant && !c.refrigerantLabel.isEmpty() ? c.refrigerantLabel : c.label;
}

void drawBlock(QPainter& p, const PrintJob& job, const PrintBlock& b, int top) {
    const PrintStyle& s = job.style;
    const QVector<int> w = columnWidths(s);
    const int width = tableWidth(w);
    const int left = std::max(0, (PageW - width) / 2);
    const QPen thin(Qt::black, 2), thick(Qt::black, 6);

    p.setFont(font(38, true));
    p.drawText(QRect(left, top, width, CaptionH - 8), Qt::AlignLeft | Qt::AlignBottom,
               U("■ ") + b.caption);
    int y = top + CaptionH;

    // Two heading rows: the group over a run of columns, then the labels;
    // a column without a group takes both rows.
    p.setFont(font(30, true));
    p.setPen(thin);
    p.setBrush(QColor(232, 236, 242));
    int x = left;
    for (int i = 0; i < int(s.columns.size());) {
        const StyleColumn& c = s.columns[i];
        if (c.group.isEmpty()) {
            const QRect r(x, y, w[i], 2 * HeadRowH);
            p.drawRect(r);
            p.drawText(r, Qt::AlignCenter, label(c, job.Refrigerant()));
            x += w[i];
            ++i;
            continue;
        }
        int j = i, span = 0;
        while (j < int(s.columns.size()) && s.columns[j].group == c.group)
            span += w[j++];
        const QRect g(x, y, span, HeadRowH);
        p.drawRect(g);
        p.drawText(g, Qt::AlignCenter, c.group);
        for (int k = i; k < j; ++k) {
            const QRect r(x, y + HeadRowH, w[k], HeadRowH);
            p.drawRect(r);
            p.drawText(r, Qt::AlignCenter, label(s.columns[k], job.Refrigerant()));
            x += w[k];
        }
        i = j;
    }
    y += 2 * HeadRowH;

    p.setBrush(Qt::NoBrush);
    p.setFont(font(32));
    for (int n = 0; n < int(b.lines.size()); ++n) {
        const PrintFields& f = b.lines[n];
        if (n % 2 == 1) p.fillRect(QRect(left, y, width, LineH), QColor(246, 246, 246));
        x = left;
        for (int i = 0; i < int(s.columns.size()); ++i) {
            const StyleColumn& c = s.columns[i];
            const int field = StyleFieldIndex(c.key);
            const QRect r(x, y, w[i], LineH);
            p.setPen(thin);
            p.drawLine(r.topRight(), r.bottomRight());
            if (i == 0) p.drawLine(r.topLeft(), r.bottomLeft());
            const bool text = c.key == QLatin1String("SIZE") || c.key == QLatin1String("CI");
            p.drawText(r.adjusted(12, 0, -12, 0),
                       (text ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter,
                       f[std::size_t(field)]);
            x += w[i];
        }
        p.drawLine(left, y + LineH, left + width, y + LineH);
        y += LineH;
    }
    if (b.lines.isEmpty()) {
        const QRect r(left, y, width, LineH);
        p.drawRect(r);
        p.drawText(r, Qt::AlignCenter, U("（サイズの登録がありません）"));
        y += LineH;
    }
    // The frame of the table.
    p.setPen(thick);
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRect(left, top + CaptionH, width, y - top - CaptionH));
}

} // namespace

QString PrintFontFamily() {
    return QStringLiteral("Noto Sans CJK JP");
}

QVector<QVector<int>> PageBlocks(const PrintJob& job) {
    QVector<QVector<int>> pages;
    const int room = PageH - HeaderH - FooterH;
    int used = room;
    for (int i = 0; i < int(job.blocks.size()); ++i) {
        const int h = blockHeight(job.blocks[i]);
        if (pages.isEmpty() || used + h > room) {
            pages.push_back({});
            used = 0;
        }
        pages.last().push_back(i);
        used += h;
    }
    if (pages.isEmpty()) pages.push_back({});
    return pages;
}

void PaintPriceSheet(QPainter& p, double dotsPerMm, const PrintJob& job, int page, int pageCount,
                     const QVector<int>& blocks) {
    p.save();
    p.scale(dotsPerMm / 10.0, dotsPerMm / 10.0);
    p.translate(Margin, Margin);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    p.setPen(QPen(Qt::black, 2));

    // Heading: the title in the middle, the date at the right, the pipe
    // type and the building/page text and base labour cost at the left.
    p.setFont(font(80, true));
    const QString title = job.style.title.isEmpty() ? U("複合単価計算書") : job.style.title;
    const QRect titleRect(0, 0, PageW, 100);
    p.drawText(titleRect, Qt::AlignHCenter | Qt::AlignTop, title);
    const int tw = p.fontMetrics().horizontalAdvance(title);
    p.setPen(QPen(Qt::black, 5));
    p.drawLine(PageW / 2 - tw / 2 - 40, 108, PageW / 2 + tw / 2 + 40, 108);
    p.drawLine(PageW / 2 - tw / 2 - 40, 118, PageW / 2 + tw / 2 + 40, 118);
    p.setPen(QPen(Qt::black, 2));

    p.setFont(font(36));
    p.drawText(QRect(0, 0, PageW, 50), Qt::AlignRight | Qt::AlignTop, job.DateText());
    p.drawText(QRect(0, 55, PageW, 50), Qt::AlignRight | Qt::AlignTop,
               job.dataTitle + U("　") + job.style.name);

    p.setFont(font(40, true));
    QStringList names;
    for (const QString& n : job.names)
        if (!n.trimmed().isEmpty()) names << n.trimmed();
    p.drawText(QRect(0, 140, PageW, 55), Qt::AlignLeft | Qt::AlignVCenter,
               U("管種　") + names.join(U("　")));
    p.setFont(font(34));
    p.drawText(QRect(0, 195, PageW, 50), Qt::AlignLeft | Qt::AlignVCenter,
               U("建物・ページ　") + job.buildingPage);
    p.drawText(QRect(0, 195, PageW, 50), Qt::AlignRight | Qt::AlignVCenter,
               U("基礎工費（提出）　") + job.labourCost + U(" 円"));
    p.setPen(QPen(Qt::black, 3));
    p.drawLine(0, HeaderH - 10, PageW, HeaderH - 10);

    int y = HeaderH;
    for (int i : blocks) {
        drawBlock(p, job, job.blocks[i], y);
        y += blockHeight(job.blocks[i]);
    }

    // Footer: the note of a stand-in style at the left, the page number.
    p.setPen(QPen(Qt::black, 2));
    p.setFont(font(28));
    const QRect foot(0, PageH - FooterH + 10, PageW, FooterH - 10);
    if (!job.styleNote.isEmpty()) p.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter, job.styleNote);
    p.drawText(foot, Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("%1 / %2").arg(page + 1).arg(pageCount));
    p.restore();
}

bool PaintPriceSheets(QPagedPaintDevice& device, const PrintJob& job, QString& reason) {
    QPainter p;
    if (!p.begin(&device)) {
        reason = U("印刷先を開けません。");
        return false;
    }
    const QRectF full = device.pageLayout().fullRectPixels(device.logicalDpiX());
    const double dotsPerMm = device.logicalDpiX() / 25.4;
    const QRectF paint = device.pageLayout().paintRectPixels(device.logicalDpiX());
    // The painter's origin is the corner of the printable area; the drawing
    // measures from the corner of the sheet.
    const QPointF shift = full.topLeft() - paint.topLeft();
    const QVector<QVector<int>> pages = PageBlocks(job);
    for (int i = 0; i < int(pages.size()); ++i) {
        if (i > 0 && !device.newPage()) {
            reason = U("ページを追加できません。");
            return false;
        }
        p.save();
        p.translate(shift);
        PaintPriceSheet(p, dotsPerMm, job, i, int(pages.size()), pages[i]);
        p.restore();
    }
    return p.end();
}

bool WritePriceSheetPdf(const PrintJob& job, const QString& path, QString& reason) {
    QPdfWriter pdf(path);
    pdf.setResolution(600);
    pdf.setTitle(job.style.title + U("　") + job.dataTitle);
    pdf.setCreator(QStringLiteral("listpress"));
    pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                  QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    if (!PaintPriceSheets(pdf, job, reason)) {
        reason = U("PDF ファイル %1 を書けません: %2").arg(path, reason);
        return false;
    }
    if (!QFileInfo(path).isFile() || QFileInfo(path).size() == 0) {
        reason = U("PDF ファイル %1 を書けません。").arg(path);
        return false;
    }
    return true;
}
