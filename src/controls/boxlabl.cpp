#include "controls/boxlabl.h"

#include "controls/formatarg.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <cmath>
#include <cstdio>

QFont defaultPanelFont() {
    QFont font;
    font.setFamily(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSize(9);
    return font;
}

QImage newPanelImage(int width, int height, const QColor& fill) {
    QImage image(qMax(1, width), qMax(1, height), QImage::Format_RGB32);
    image.setDotsPerMeterX(3780); // 96 dpi
    image.setDotsPerMeterY(3780);
    image.fill(fill);
    return image;
}

void drawPixelLine(QPainter& painter, QPoint from, QPoint to, const QColor& color) {
    if (from == to) return;
    const QPoint step((to.x() > from.x()) - (to.x() < from.x()),
                      (to.y() > from.y()) - (to.y() < from.y()));
    const QPoint last = to - step;
    painter.fillRect(QRect(QPoint(qMin(from.x(), last.x()), qMin(from.y(), last.y())),
                           QPoint(qMax(from.x(), last.x()), qMax(from.y(), last.y()))),
                     color);
}

void drawPixelFrame(QPainter& painter, const QRect& r, const QColor& color) {
    // Drawn as four lines that leave out their end points, a frame of a
    // single pixel has nothing to draw.
    if (r.width() <= 0 || r.height() <= 0 || (r.width() == 1 && r.height() == 1)) return;
    painter.fillRect(QRect(r.left(), r.top(), r.width(), 1), color);
    painter.fillRect(QRect(r.left(), r.bottom(), r.width(), 1), color);
    painter.fillRect(QRect(r.left(), r.top(), 1, r.height()), color);
    painter.fillRect(QRect(r.right(), r.top(), 1, r.height()), color);
}

QRect insetRect(int width, int height, int inset) {
    const int left = qMin(inset, width - inset), right = qMax(inset, width - inset);
    const int top = qMin(inset, height - inset), bottom = qMax(inset, height - inset);
    return QRect(left, top, right - left, bottom - top);
}

CustomBoxLabel::CustomBoxLabel(QWidget* parent) : QWidget(parent) {
    resize(70, 20);
    setFont(defaultPanelFont());
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CustomBoxLabel::~CustomBoxLabel() = default;

void CustomBoxLabel::setAlignment(Qt::Alignment value) {
    if (value == m_alignment) return;
    m_alignment = value;
    update();
}

void CustomBoxLabel::setHorizontalAlign(HorizontalAlignment value) {
    if (value == m_horiAlign) return;
    m_horiAlign = value;
    update();
}

void CustomBoxLabel::setTextBorder(int value) {
    if (value == m_textBorder) return;
    m_textBorder = value;
    update();
}

void CustomBoxLabel::setBevelInner(BevelStyle value) {
    if (value == m_bevelInner) return;
    m_bevelInner = value;
    update();
}

void CustomBoxLabel::setBevelOuter(BevelStyle value) {
    if (value == m_bevelOuter) return;
    m_bevelOuter = value;
    update();
}

void CustomBoxLabel::setBevelWidth(int value) {
    if (value == m_bevelWidth) return;
    m_bevelWidth = value;
    update();
}

void CustomBoxLabel::setWordWrap(bool value) {
    if (value == m_wordWrap) return;
    m_wordWrap = value;
    update();
}

void CustomBoxLabel::setBorderStyle(BorderStyle value) {
    if (value == m_borderStyle) return;
    m_borderStyle = value;
    update();
}

void CustomBoxLabel::setColor(const QColor& value) {
    if (value == m_color) return;
    m_color = value;
    update();
}

void CustomBoxLabel::setFontColor(const QColor& value) {
    if (value == m_fontColor) return;
    m_fontColor = value;
    update();
}

void CustomBoxLabel::setLabelText(const QString& value) {
    if (value == m_caption) return;
    m_caption = value;
    update();
}

void CustomBoxLabel::setAsFloat(double value) {
    m_value = value;
    if (m_formatString.isEmpty()) {
        char buf[512];
        std::snprintf(buf, sizeof buf, "%10.*f", qMax(0, int(m_decimals)), value);
        setLabelText(QString::fromLatin1(buf).trimmed());
        return;
    }
    try {
        setLabelText(formatFloatArg(m_formatString, value));
    } catch (const ControlError&) {
        setLabelText(QStringLiteral("Format Error"));
    }
}

void CustomBoxLabel::setAsInteger(std::int32_t value) {
    m_value = value;
    if (m_formatString.isEmpty()) {
        char buf[512];
        std::snprintf(buf, sizeof buf, "%10.*f", qMax(0, int(m_decimals)), double(value));
        setLabelText(QString::fromLatin1(buf).trimmed());
        return;
    }
    try {
        setLabelText(formatIntArg(m_formatString, value));
    } catch (const ControlError&) {
        setLabelText(QStringLiteral("Format Error"));
    }
}

double CustomBoxLabel::asFloat() const {
    bool ok = false;
    const double v = getLabelText().trimmed().toDouble(&ok);
    return ok ? v : 0.0;
}

std::int32_t CustomBoxLabel::asInteger() const {
    bool ok = false;
    const int v = getLabelText().trimmed().toInt(&ok);
    return ok ? v : 0;
}

void CustomBoxLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange) update();
    QWidget::changeEvent(event);
}

namespace {

// Round to nearest, ties to even.
int roundEven(double v) {
    return int(std::nearbyint(v));
}

void drawBevel(QPainter& p, int w, int h, int bw, int inset, const QColor& light,
               const QColor& dark) {
    for (int i = 0; i < bw; ++i) {
        const int n = i + inset;
        drawPixelLine(p, {w - 1 - n, n}, {n, n}, light);
        drawPixelLine(p, {n, n}, {n, h - n}, light);
        drawPixelLine(p, {w - 1 - n, n}, {w - 1 - n, h - 1 - n}, dark);
        drawPixelLine(p, {w - 1 - n, h - 1 - n}, {n, h - 1 - n}, dark);
    }
}

} // namespace

QImage CustomBoxLabel::renderImage() {
    const int w = width(), h = height();
    m_buffer = newPanelImage(w, h, m_color);
    QPainter p(&m_buffer);
    // inner: the edge of what the bevels and border take; offset: the
    // text's distance from the sides.
    int inner = 0, offset = 0;
    const int bw = m_bevelWidth;
    const QColor white(Qt::white), shadow(PanelColor::buttonShadow);
    if (m_bevelOuter != bvNone) {
        const bool raised = m_bevelOuter == bvRaised;
        offset += bw;
        drawBevel(p, w, h, bw, 0, raised ? white : shadow, raised ? shadow : white);
        inner = bw;
    }
    if (m_borderStyle == bsSingle) {
        // A black rectangle filled with the label's colour (which only shows
        // when the label is smaller than its bevels).
        const QRect frame = insetRect(w, h, inner);
        if (frame.width() > 2 && frame.height() > 2)
            p.fillRect(frame.adjusted(1, 1, -1, -1), m_color);
        drawPixelFrame(p, frame, Qt::black);
        ++inner;
        ++offset;
    }
    if (m_bevelInner != bvNone) {
        const bool raised = m_bevelInner == bvRaised;
        drawBevel(p, w, h, bw, inner, raised ? white : shadow, raised ? shadow : white);
        offset += bw;
        inner += bw;
    }

    // The text's extent, then its place: the edges left, top, right and
    // bottom, right and bottom excluded.
    const QString text = getLabelText().left(255);
    const QFontMetrics fm(font(), &m_buffer);
    int left = 0, top = 0, right = 0, bottom = 0;
    if (m_wordWrap) {
        const QRect extent = fm.boundingRect(QRect(0, 0, qMax(1, w), 1 << 20),
                                             Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
        right = extent.width();
        bottom = extent.height();
    } else {
        right = fm.horizontalAdvance(text);
        bottom = fm.height();
    }
    switch (m_horiAlign) {
    case haTop:
        top += inner;
        bottom += inner;
        break;
    case haCenter: {
        const int s = roundEven(h / 2.0 - bottom / 2.0);
        top = s;
        bottom += s;
        break;
    }
    case haBottom:
        top = h - bottom - inner;
        bottom = h - inner;
        break;
    }
    const bool toLeft = m_alignment.testFlag(Qt::AlignLeft);
    const bool toRight = !toLeft && m_alignment.testFlag(Qt::AlignRight);
    if (toLeft) {
        left += inner + offset;
        right += inner + offset;
    } else if (toRight) {
        left = w - right - inner - offset - 1;
        right = w - inner - offset - 1;
    } else {
        left = inner;
        right = w - inner;
    }
    left = qMax(left, offset);
    top = qMax(top, offset);
    right = qMin(right, w - offset);
    bottom = qMin(bottom, h - offset);
    const QRect place(left, top, right - left, bottom - top);

    int flags = Qt::AlignTop | (toLeft    ? Qt::AlignLeft
                                : toRight ? Qt::AlignRight
                                          : Qt::AlignHCenter);
    if (m_wordWrap) flags |= Qt::TextWordWrap;
    p.setFont(font());
    auto drawCaption = [&](const QRect& r, const QColor& color) {
        p.save();
        p.setClipRect(r);
        p.setPen(color);
        p.drawText(r, flags, text);
        p.restore();
    };
    if (isEnabled()) {
        drawCaption(place, m_fontColor);
    } else {
        drawCaption(place.translated(1, 1), Qt::white);
        drawCaption(place, QColor(PanelColor::gray));
    }
    return m_buffer;
}

void CustomBoxLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event);
    renderImage();
    QPainter painter(this);
    painter.drawImage(0, 0, m_buffer);
}
