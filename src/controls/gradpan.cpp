#include "controls/gradpan.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

GradientTable makeGradientTable(const QColor& a, const QColor& b) {
    if (!a.isValid() || !b.isValid()) throw ControlRangeError(QStringLiteral("Range check error"));
    const double sr = (b.red() - a.red()) / 100.0;
    const double sg = (b.green() - a.green()) / 100.0;
    const double sb = (b.blue() - a.blue()) / 100.0;
    GradientTable table{};
    for (int i = 0; i < 100; ++i)
        table[std::size_t(i)] =
            QColor(int(a.red() + i * sr), int(a.green() + i * sg), int(a.blue() + i * sb));
    return table;
}

int mulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) return -1;
    return int(std::llround(double(number) * double(numerator) / double(denominator)));
}

GradientPanel::GradientPanel(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFont(defaultPanelFont());
    // The image for the image backgrounds until one is set: a white square
    // with a black outline.
    m_bitmap = newPanelImage(50, 50, Qt::white);
    {
        QPainter p(&m_bitmap);
        drawPixelFrame(p, m_bitmap.rect(), Qt::black);
    }
    resize(185, 41);
}

GradientPanel::~GradientPanel() = default;

void GradientPanel::setBackGroundEffect(BackgroundEffect value) {
    m_backGroundEffect = value;
    update();
}
void GradientPanel::setVertAlign(VertAlign value) {
    m_vertAlign = value;
    update();
}
void GradientPanel::setColorEnd(const QColor& value) {
    m_colorEnd = value;
    update();
}
void GradientPanel::setColorStart(const QColor& value) {
    m_colorStart = value;
    update();
}
void GradientPanel::setColorShadow(const QColor& value) {
    m_colorShadow = value;
    update();
}
void GradientPanel::setTextEffect(TextEffect value) {
    m_textEffect = value;
    update();
}
void GradientPanel::setTextRotation(TextRotation value) {
    m_textRotation = value;
    update();
}
void GradientPanel::setCtl3D(bool value) {
    m_ctl3D = value;
    update();
}
void GradientPanel::setBitmap(const QImage& value) {
    m_bitmap = value.copy();
    if (m_backGroundEffect == bdStretchImage || m_backGroundEffect == bdTileImage) update();
}
void GradientPanel::setMoveable(bool value) {
    m_moveable = value;
    setMouseTracking(value);
    if (!value) unsetCursor();
}
void GradientPanel::setCaption(const QString& value) {
    m_caption = value;
    update();
}
void GradientPanel::setAlignment(Qt::Alignment value) {
    m_alignment = value;
    update();
}
void GradientPanel::setBevelInner(BevelStyle value) {
    m_bevelInner = value;
    update();
}
void GradientPanel::setBevelOuter(BevelStyle value) {
    m_bevelOuter = value;
    update();
}
void GradientPanel::setBevelWidth(int value) {
    m_bevelWidth = value;
    update();
}
void GradientPanel::setBorderWidth(int value) {
    m_borderWidth = value;
    update();
}
void GradientPanel::setColor(const QColor& value) {
    m_color = value;
    update();
}
void GradientPanel::setFontColor(const QColor& value) {
    m_fontColor = value;
    update();
}

void GradientPanel::paintBackground(QPainter& p) {
    const int w = width(), h = height();
    auto fill = [&](const QRect& r, const QColor& color) {
        if (!r.isEmpty()) p.fillRect(r, color);
    };
    // Band i of 100: a stripe down the height or across the width.
    auto band = [&](int i, bool down) {
        return down ? QRect(0, mulDiv(i, h, 100), w, mulDiv(i + 1, h, 100) - mulDiv(i, h, 100))
                    : QRect(mulDiv(i, w, 100), 0, mulDiv(i + 1, w, 100) - mulDiv(i, w, 100), h);
    };
    switch (m_backGroundEffect) {
    case bdFlat:
        fill(QRect(0, 0, w, h), m_colorStart);
        return;
    case bdUp:
    case bdDown:
    case bdLeft:
    case bdRight: {
        const bool forward = m_backGroundEffect == bdUp || m_backGroundEffect == bdLeft;
        m_gradient = forward ? makeGradientTable(m_colorStart, m_colorEnd)
                             : makeGradientTable(m_colorEnd, m_colorStart);
        const bool vertical = m_backGroundEffect == bdUp || m_backGroundEffect == bdDown;
        for (int i = 0; i < 100; ++i)
            fill(band(i, vertical), m_gradient[std::size_t(i)]);
        return;
    }
    case bdHorzIn:
    case bdHorzOut:
    case bdVertIn:
    case bdVertOut: {
        const bool in = m_backGroundEffect == bdHorzIn || m_backGroundEffect == bdVertIn;
        m_gradient = in ? makeGradientTable(m_colorStart, m_colorEnd)
                        : makeGradientTable(m_colorEnd, m_colorStart);
        const bool stacked = m_backGroundEffect == bdHorzIn || m_backGroundEffect == bdHorzOut;
        for (int i = 0; i < 100; ++i) {
            const int entry = i < 50 ? 2 * i + 1 : 98 - 2 * (i - 50);
            fill(band(i, stacked), m_gradient[std::size_t(entry)]);
        }
        return;
    }
    case bdStretchImage:
    case bdTileImage: {
        if (m_bitmap.isNull() || m_bitmap.width() == 0 || m_bitmap.height() == 0) {
            fill(QRect(0, 0, w, h), m_colorStart);
            return;
        }
        const int inset = m_ctl3D ? 2 * m_bevelWidth + m_borderWidth : 0;
        if (m_backGroundEffect == bdStretchImage) {
            p.drawImage(QRect(inset, inset, w - 2 * inset - 1, h - 2 * inset - 1), m_bitmap);
        } else {
            const int cols = (w - 2 * inset) / m_bitmap.width() + 1;
            const int rows = (h - 2 * inset) / m_bitmap.height() + 1;
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < cols; ++c)
                    p.drawImage(inset + c * m_bitmap.width(), inset + r * m_bitmap.height(),
                                m_bitmap);
        }
        return;
    }
    }
}

void GradientPanel::paintCaption(QPainter& p) {
    if (m_caption.isEmpty()) return;
    const int w = width(), h = height();
    const int inset = m_bevelWidth + m_borderWidth;
    const QFontMetrics fm(font(), p.device());
    const int th = fm.height();
    const bool toLeft = m_alignment.testFlag(Qt::AlignLeft);
    const bool toRight = !toLeft && m_alignment.testFlag(Qt::AlignRight);
    int x = 0, y = 0;
    // 0: the text's start at the point, 1: its middle, 2: its end.
    int anchor = 0;
    switch (m_textRotation) {
    case trNone:
        x = toLeft ? inset + 2 : toRight ? w - inset - 2 : w / 2;
        y = m_vertAlign == vlTop      ? inset + 2
            : m_vertAlign == vlCenter ? h / 2 - th / 2
                                      : h - inset - th - 1;
        anchor = toLeft ? 0 : toRight ? 2 : 1;
        break;
    case TrUp:
        x = toLeft ? inset + 2 : toRight ? w - inset - th - 1 : w / 2 - th / 2;
        y = m_vertAlign == vlTop      ? inset + 2
            : m_vertAlign == vlCenter ? h / 2 - th / 2
                                      : h - inset - 1;
        anchor = m_vertAlign == vlTop ? 2 : m_vertAlign == vlCenter ? 1 : 0;
        break;
    case TrDown:
        x = toLeft ? th + inset + 1 : toRight ? w - inset - 2 : w / 2 + th / 2;
        y = m_vertAlign == vlTop      ? inset + 1
            : m_vertAlign == vlCenter ? h / 2 - th / 2
                                      : h - inset - 2;
        anchor = m_vertAlign == vlTop ? 0 : m_vertAlign == vlCenter ? 1 : 2;
        break;
    }
    const int tw = fm.horizontalAdvance(m_caption);
    const int along = anchor == 0 ? 0 : anchor == 1 ? -tw / 2 : -tw;
    p.setFont(font());
    // One pass of the caption, moved by (dx, dy): the text's top edge runs
    // through (x, y), its anchor point there (turned with the text).
    auto pass = [&](int dx, int dy, const QColor& color) {
        p.setPen(color);
        if (m_textRotation == trNone) {
            p.drawText(QPoint(x + dx + along, y + dy + fm.ascent()), m_caption);
            return;
        }
        p.save();
        p.translate(x + dx, y + dy);
        p.rotate(m_textRotation == TrUp ? -90 : 90);
        p.drawText(QPoint(along, fm.ascent()), m_caption);
        p.restore();
    };
    const QColor k = m_fontColor, s = m_colorShadow, black = Qt::black;
    switch (m_textEffect) {
    case tenone:
        pass(0, 0, s);
        break;
    case teShadow:
        pass(1, 1, s);
        pass(0, 0, k);
        break;
    case teRaised:
        pass(-1, 0, s);
        pass(0, -1, s);
        pass(1, 0, black);
        pass(0, 1, black);
        pass(0, 0, k);
        break;
    case teLowered:
        pass(1, 0, s);
        pass(0, 1, s);
        pass(-1, 0, black);
        pass(0, -1, black);
        pass(0, 0, k);
        break;
    case teEmbossed:
        pass(-1, 0, s);
        pass(1, 0, s);
        pass(0, -1, s);
        pass(0, 1, s);
        pass(0, 0, k);
        break;
    }
}

void GradientPanel::paintBevels(QPainter& p) {
    const int w = width(), h = height();
    const int bw = m_bevelWidth;
    auto draw = [&](BevelStyle style, int inset) {
        const QColor white(Qt::white), gray(PanelColor::gray);
        const QColor light = style == bvRaised ? white : gray;
        const QColor dark = style == bvRaised ? gray : white;
        for (int i = 0; i < bw; ++i) {
            const int o = inset + i;
            drawPixelLine(p, {o, o}, {w - inset, o}, light);
            drawPixelLine(p, {o, o}, {o, h - inset}, light);
            drawPixelLine(p, {o, h - 1 - o}, {w - o, h - 1 - o}, dark);
            drawPixelLine(p, {w - 1 - o, inset == 0 ? h - 1 - o : h - inset - 1}, {w - 1 - o, o},
                          dark);
        }
    };
    if (m_bevelOuter != bvNone) draw(m_bevelOuter, 0);
    if (m_bevelInner != bvNone) {
        const int inset = m_bevelOuter != bvNone ? m_borderWidth + bw : m_borderWidth + 1;
        draw(m_bevelInner, inset);
        if (m_ctl3D) {
            // Frames in the panel's colour fill the border between the bevels.
            const int o = m_bevelOuter != bvNone ? bw - 1 : 0;
            for (int k = 1; k <= m_borderWidth; ++k)
                drawPixelFrame(p, insetRect(w, h, o + k), m_color);
        }
    }
}

QImage GradientPanel::renderImage() {
    m_buffer = newPanelImage(width(), height(), m_color);
    QPainter p(&m_buffer);
    paintBackground(p);
    paintCaption(p);
    paintBevels(p);
    return m_buffer;
}

void GradientPanel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event);
    try {
        renderImage();
    } catch (const std::exception& e) {
        reportControlFailure(onFailure, QString::fromUtf8(e.what()));
    }
    QPainter painter(this);
    painter.drawImage(0, 0, m_buffer);
}

int GradientPanel::hitTest(int x, int y) const {
    if (!m_moveable) return HTNOWHERE;
    const int M = m_marge;
    const bool left = x < M, right = width() - x < M;
    const bool top = y < M, bottom = height() - y < M;
    if (left && top) return HTTOPLEFT;
    if (left && bottom) return HTBOTTOMLEFT;
    if (left) return HTLEFT;
    if (right && top) return HTTOPRIGHT;
    if (right && bottom) return HTBOTTOMRIGHT;
    if (right) return HTRIGHT;
    if (top) return HTTOP;
    if (bottom) return HTBOTTOM;
    return HTCAPTION;
}

namespace {
Qt::CursorShape zoneCursor(int zone) {
    switch (zone) {
    case HTLEFT:
    case HTRIGHT:
        return Qt::SizeHorCursor;
    case HTTOP:
    case HTBOTTOM:
        return Qt::SizeVerCursor;
    case HTTOPLEFT:
    case HTBOTTOMRIGHT:
        return Qt::SizeFDiagCursor;
    case HTTOPRIGHT:
    case HTBOTTOMLEFT:
        return Qt::SizeBDiagCursor;
    case HTCAPTION:
        return Qt::SizeAllCursor;
    default:
        return Qt::ArrowCursor;
    }
}
} // namespace

void GradientPanel::moveEvent(QMoveEvent* event) {
    // A failing handler goes to the program's handler, not through Qt.
    try {
        if (onPanelMove) onPanelMove(this);
    } catch (const std::exception& e) {
        reportControlFailure(onFailure, QString::fromUtf8(e.what()));
    }
    QWidget::moveEvent(event);
}

void GradientPanel::mousePressEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    m_dragZone = event->button() == Qt::LeftButton ? hitTest(pos.x(), pos.y()) : HTNOWHERE;
    m_dragStart = event->globalPosition().toPoint();
    m_dragGeometry = geometry();
    if (m_dragZone == HTNOWHERE) QWidget::mousePressEvent(event);
}

void GradientPanel::mouseMoveEvent(QMouseEvent* event) {
    if (m_dragZone == HTNOWHERE || !(event->buttons() & Qt::LeftButton)) {
        if (m_moveable) {
            const QPoint pos = event->position().toPoint();
            setCursor(zoneCursor(hitTest(pos.x(), pos.y())));
        }
        QWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint d = event->globalPosition().toPoint() - m_dragStart;
    QRect g = m_dragGeometry;
    const int minSize = 2 * m_marge;
    switch (m_dragZone) {
    case HTCAPTION:
        g.moveTopLeft(g.topLeft() + d);
        break;
    case HTLEFT:
    case HTTOPLEFT:
    case HTBOTTOMLEFT:
        g.setLeft(qMin(g.left() + d.x(), g.right() - minSize));
        break;
    case HTRIGHT:
    case HTTOPRIGHT:
    case HTBOTTOMRIGHT:
        g.setRight(qMax(g.right() + d.x(), g.left() + minSize));
        break;
    default:
        break;
    }
    switch (m_dragZone) {
    case HTTOP:
    case HTTOPLEFT:
    case HTTOPRIGHT:
        g.setTop(qMin(g.top() + d.y(), g.bottom() - minSize));
        break;
    case HTBOTTOM:
    case HTBOTTOMLEFT:
    case HTBOTTOMRIGHT:
        g.setBottom(qMax(g.bottom() + d.y(), g.top() + minSize));
        break;
    default:
        break;
    }
    setGeometry(g);
}

void GradientPanel::mouseReleaseEvent(QMouseEvent* event) {
    m_dragZone = HTNOWHERE;
    QWidget::mouseReleaseEvent(event);
}
