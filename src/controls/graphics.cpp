#include "controls/graphics.h"

#include <QFontDatabase>
#include <QFontMetrics>

#include <cstdlib>

TColor colorToRgb(TColor color) {
    if (!isSystemColor(color)) return color & 0xFFFFFF;
    switch (color & 0xFF) {
    case 5: // window background
        return clWhite;
    case 8: // window text
        return clBlack;
    case 13: // selection background
        return rgbColor(0, 120, 215);
    case 14: // selection text
        return clWhite;
    case 15: // button face
        return rgbColor(240, 240, 240);
    case 16: // button shadow
        return rgbColor(160, 160, 160);
    case 20: // button highlight
        return clWhite;
    case 21: // dark shadow
        return rgbColor(105, 105, 105);
    case 22: // light
        return rgbColor(227, 227, 227);
    default:
        return rgbColor(128, 128, 128);
    }
}

bool isSystemColor(TColor color) {
    return (std::uint32_t(color) & 0xFF000000u) == 0xFF000000u;
}

QColor toQColor(TColor color) {
    const TColor c = colorToRgb(color);
    return QColor(getRValue(c), getGValue(c), getBValue(c));
}

TColor fromQColor(const QColor& color) {
    return rgbColor(color.red(), color.green(), color.blue());
}

QString defaultFontName() {
    return QStringLiteral("Noto Sans CJK JP");
}

FontSpec::FontSpec() : FontSpec(defaultFontName(), 9) {}

FontSpec::FontSpec(const QString& name, int pointSize, TColor color) : Color(color) {
    Font.setFamily(name);
    Font.setPointSize(pointSize);
}

QImage newCanvasImage(int width, int height, TColor fill) {
    QImage image(qMax(1, width), qMax(1, height), QImage::Format_RGB32);
    image.setDotsPerMeterX(3780); // 96 dpi
    image.setDotsPerMeterY(3780);
    image.fill(toQColor(fill));
    return image;
}

namespace {

Qt::BrushStyle qtBrushStyle(TBrushStyle style) {
    switch (style) {
    case bsSolid:
        return Qt::SolidPattern;
    case bsClear:
        return Qt::NoBrush;
    case bsHorizontal:
        return Qt::HorPattern;
    case bsVertical:
        return Qt::VerPattern;
    case bsFDiagonal:
        return Qt::BDiagPattern;
    case bsBDiagonal:
        return Qt::FDiagPattern;
    case bsCross:
        return Qt::CrossPattern;
    case bsDiagCross:
        return Qt::DiagCrossPattern;
    }
    return Qt::SolidPattern;
}

QBrush qtBrush(const TBrush& brush) {
    return QBrush(toQColor(brush.Color), qtBrushStyle(brush.Style));
}

} // namespace

TCanvas::TCanvas(QImage& image) : FImage(&image) {
    FImage->setDotsPerMeterX(3780);
    FImage->setDotsPerMeterY(3780);
    FPainter.begin(FImage);
}

TCanvas::~TCanvas() {
    FPainter.end();
}

void TCanvas::fillRect(const TRect& r) {
    if (r.width() <= 0 || r.height() <= 0 || Brush.Style == bsClear) return;
    FPainter.fillRect(r.toQRect(), qtBrush(Brush));
}

void TCanvas::rectangle(int left, int top, int right, int bottom) {
    if (right < left) std::swap(left, right);
    if (bottom < top) std::swap(top, bottom);
    const bool outline = Pen.Style != psClear;
    if (Brush.Style != bsClear) {
        const TRect inner = outline ? Rect(left + 1, top + 1, right - 1, bottom - 1)
                                    : Rect(left, top, right - 1, bottom - 1);
        fillRect(inner);
    }
    if (outline && right > left && bottom > top) {
        const QPoint keep = FPenPos;
        moveTo(left, top);
        lineTo(right - 1, top);
        lineTo(right - 1, bottom - 1);
        lineTo(left, bottom - 1);
        lineTo(left, top);
        FPenPos = keep;
    }
}

void TCanvas::moveTo(int x, int y) {
    FPenPos = QPoint(x, y);
}

void TCanvas::drawPixelRun(int fromX, int fromY, int toX, int toY) {
    // Bresenham from (fromX, fromY) towards (toX, toY), the end point excluded.
    const int dx = std::abs(toX - fromX), sx = fromX < toX ? 1 : -1;
    const int dy = -std::abs(toY - fromY), sy = fromY < toY ? 1 : -1;
    int err = dx + dy;
    int x = fromX, y = fromY;
    const QColor color = toQColor(Pen.Color);
    while (x != toX || y != toY) {
        if (Pen.Mode == pmCopy) {
            FPainter.fillRect(QRect(x, y, 1, 1), color);
        } else if (FImage->rect().contains(x, y)) {
            const TColor under = pixel(x, y);
            const TColor value = Pen.Mode == pmNot ? (~under & 0xFFFFFF)
                                                   : ((under ^ colorToRgb(Pen.Color)) & 0xFFFFFF);
            setPixel(x, y, value);
        }
        const int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y += sy;
        }
    }
}

void TCanvas::lineTo(int x, int y) {
    const QPoint from = FPenPos;
    FPenPos = QPoint(x, y);
    if (Pen.Style == psClear) return;
    if (Pen.Width <= 1 && Pen.Style == psSolid) {
        drawPixelRun(from.x(), from.y(), x, y);
        return;
    }
    QPen pen(toQColor(Pen.Color));
    pen.setWidth(qMax(1, Pen.Width));
    switch (Pen.Style) {
    case psDash:
        pen.setStyle(Qt::DashLine);
        break;
    case psDot:
        pen.setStyle(Qt::DotLine);
        break;
    case psDashDot:
        pen.setStyle(Qt::DashDotLine);
        break;
    case psDashDotDot:
        pen.setStyle(Qt::DashDotDotLine);
        break;
    default:
        break;
    }
    FPainter.setPen(pen);
    FPainter.drawLine(from, QPoint(x, y));
    FPainter.setPen(Qt::NoPen);
}

void TCanvas::drawGlyphs(int x, int y, const QString& text) {
    QFontMetrics fm(Font.Font, FImage);
    if (Brush.Style != bsClear)
        FPainter.fillRect(QRect(x, y, fm.horizontalAdvance(text), fm.height()), qtBrush(Brush));
    FPainter.setFont(Font.Font);
    FPainter.setPen(toQColor(Font.Color));
    FPainter.drawText(QPoint(x, y + fm.ascent()), text);
    FPainter.setPen(Qt::NoPen);
}

void TCanvas::textOut(int x, int y, const QString& text) {
    drawGlyphs(x, y, text);
}

void TCanvas::textRect(const TRect& r, int x, int y, const QString& text) {
    if (r.width() <= 0 || r.height() <= 0) return;
    FPainter.save();
    FPainter.setClipRect(r.toQRect());
    drawGlyphs(x, y, text);
    FPainter.restore();
}

int TCanvas::textWidth(const QString& text) {
    return QFontMetrics(Font.Font, FImage).horizontalAdvance(text);
}

int TCanvas::textHeight(const QString& text) {
    Q_UNUSED(text);
    return QFontMetrics(Font.Font, FImage).height();
}

void TCanvas::drawText(const QString& text, TRect& r, unsigned flags) {
    int qflags = 0;
    if (flags & DT_CENTER)
        qflags |= Qt::AlignHCenter;
    else if (flags & DT_RIGHT)
        qflags |= Qt::AlignRight;
    else
        qflags |= Qt::AlignLeft;
    if (flags & DT_VCENTER)
        qflags |= Qt::AlignVCenter;
    else if (flags & DT_BOTTOM)
        qflags |= Qt::AlignBottom;
    else
        qflags |= Qt::AlignTop;
    if (flags & DT_WORDBREAK) qflags |= Qt::TextWordWrap;
    QFontMetrics fm(Font.Font, FImage);
    if (flags & DT_CALCRECT) {
        QRect bounds;
        if (flags & DT_WORDBREAK)
            bounds = fm.boundingRect(QRect(0, 0, qMax(1, r.width()), 1 << 20), qflags, text);
        else
            bounds = QRect(0, 0, fm.horizontalAdvance(text), fm.height());
        r.Right = r.Left + bounds.width();
        r.Bottom = r.Top + bounds.height();
        return;
    }
    FPainter.save();
    if (!(flags & DT_NOCLIP)) FPainter.setClipRect(r.toQRect());
    FPainter.setFont(Font.Font);
    if (Brush.Style != bsClear) {
        QRect bounds = fm.boundingRect(r.toQRect(), qflags, text);
        FPainter.fillRect(bounds, qtBrush(Brush));
    }
    FPainter.setPen(toQColor(Font.Color));
    FPainter.drawText(r.toQRect(), qflags, text);
    FPainter.restore();
}

TColor TCanvas::pixel(int x, int y) const {
    if (!FImage->rect().contains(x, y)) return clNone;
    return fromQColor(QColor(FImage->pixel(x, y)));
}

void TCanvas::setPixel(int x, int y, TColor color) {
    FPainter.save();
    FPainter.setClipping(false);
    FPainter.setCompositionMode(QPainter::CompositionMode_Source);
    FPainter.fillRect(QRect(x, y, 1, 1), toQColor(color));
    FPainter.restore();
}
