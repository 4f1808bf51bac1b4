#include "controls/boxlabl.h"

#include "controls/formatarg.h"

#include <QEvent>
#include <QPainter>

#include <cmath>
#include <cstdio>

CustomBoxLabel::CustomBoxLabel(QWidget* parent) : QWidget(parent) {
    resize(70, 20);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CustomBoxLabel::~CustomBoxLabel() = default;

void CustomBoxLabel::setAlignment(TAlignment value) {
    if (value == FAlignment) return;
    FAlignment = value;
    update();
}

void CustomBoxLabel::setHorizontalAlign(HorizontalAlignment value) {
    if (value == FHoriAlign) return;
    FHoriAlign = value;
    update();
}

void CustomBoxLabel::setTextBorder(int value) {
    if (value == FTextBorder) return;
    FTextBorder = value;
    update();
}

void CustomBoxLabel::setBevelInner(BevelStyle value) {
    if (value == FBevelInner) return;
    FBevelInner = value;
    update();
}

void CustomBoxLabel::setBevelOuter(BevelStyle value) {
    if (value == FBevelOuter) return;
    FBevelOuter = value;
    update();
}

void CustomBoxLabel::setBevelWidth(int value) {
    if (value == FBevelWidth) return;
    FBevelWidth = value;
    update();
}

void CustomBoxLabel::setWordWrap(bool value) {
    if (value == FWordWrap) return;
    FWordWrap = value;
    update();
}

void CustomBoxLabel::setBorderStyle(TBorderStyle value) {
    if (value == FBorderStyle) return;
    FBorderStyle = value;
    update();
}

void CustomBoxLabel::setColor(TColor value) {
    if (value == FColor) return;
    FColor = value;
    update();
}

void CustomBoxLabel::SetFont(const FontSpec& value) {
    FFont = value;
    update();
}

void CustomBoxLabel::setLabelText(const QString& value) {
    if (value == FCaption) return;
    FCaption = value;
    update();
}

void CustomBoxLabel::setAsFloat(double value) {
    FValue = value;
    if (FFormatString.isEmpty()) {
        char buf[512];
        std::snprintf(buf, sizeof buf, "%10.*f", qMax(0, int(FDecimals)), value);
        setLabelText(QString::fromLatin1(buf).trimmed());
        return;
    }
    try {
        setLabelText(formatFloatArg(FFormatString, value));
    } catch (const ControlError&) {
        setLabelText(QStringLiteral("Format Error"));
    }
}

void CustomBoxLabel::setAsInteger(std::int32_t value) {
    FValue = value;
    if (FFormatString.isEmpty()) {
        char buf[512];
        std::snprintf(buf, sizeof buf, "%10.*f", qMax(0, int(FDecimals)), double(value));
        setLabelText(QString::fromLatin1(buf).trimmed());
        return;
    }
    try {
        setLabelText(formatIntArg(FFormatString, value));
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

void bevel(TCanvas& cv, int W, int H, int BW, int inset, TColor light, TColor dark) {
    for (int I = 0; I < BW; ++I) {
        cv.Pen.Color = light;
        cv.moveTo(W - 1 - I - inset, I + inset);
        cv.lineTo(I + inset, I + inset);
        cv.lineTo(I + inset, H - I - inset);
        cv.Pen.Color = dark;
        cv.moveTo(W - 1 - I - inset, I + inset);
        cv.lineTo(W - 1 - I - inset, H - 1 - I - inset);
        cv.lineTo(I + inset, H - 1 - I - inset);
    }
}

} // namespace

QImage CustomBoxLabel::renderImage() {
    const int W = width(), H = height();
    FBuffer = newCanvasImage(W, H, FColor);
    TCanvas cv(FBuffer);
    cv.Font = FFont;
    cv.Brush.Style = bsSolid;
    cv.Brush.Color = FColor;
    cv.fillRect(Rect(0, 0, W, H));
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    cv.Pen.Color = clBlack;
    int Inner = 0, Offset = 0;
    const int BW = FBevelWidth;
    if (FBevelOuter != bvNone) {
        const bool raised = FBevelOuter == bvRaised;
        Offset += BW;
        bevel(cv, W, H, BW, 0, raised ? clWhite : clBtnShadow, raised ? clBtnShadow : clWhite);
        Inner = BW;
    }
    if (FBorderStyle == bsSingle) {
        cv.Pen.Color = clBlack;
        cv.rectangle(Inner, Inner, W - Inner, H - Inner);
        ++Inner;
        ++Offset;
    }
    if (FBevelInner != bvNone) {
        const bool raised = FBevelInner == bvRaised;
        bevel(cv, W, H, BW, Inner, raised ? clWhite : clBtnShadow, raised ? clBtnShadow : clWhite);
        Offset += BW;
        Inner += BW;
    }
    const QString text = getLabelText().left(255);
    TRect R = Rect(0, 0, W, H);
    cv.drawText(text, R, DT_CALCRECT | (FWordWrap ? unsigned(DT_WORDBREAK) : 0u));
    const TRect C = Rect(0, 0, W, H);
    switch (FHoriAlign) {
    case haTop:
        R.Top += Inner;
        R.Bottom += Inner;
        break;
    case haCenter: {
        const int S = roundEven(C.Bottom / 2.0 - R.Bottom / 2.0);
        R.Top = S;
        R.Bottom += S;
        break;
    }
    case haBottom:
        R.Top = C.Bottom - R.Bottom - Inner;
        R.Bottom = C.Bottom - Inner;
        break;
    }
    switch (FAlignment) {
    case taLeftJustify:
        R.Left += Inner + Offset;
        R.Right += Inner + Offset;
        break;
    case taRightJustify:
        R.Left = C.Right - R.Right - Inner - Offset - 1;
        R.Right = C.Right - Inner - Offset - 1;
        break;
    case taCenter:
        R.Left = C.Left + Inner;
        R.Right = C.Right - Inner;
        break;
    }
    R.Left = qMax(R.Left, Offset);
    R.Top = qMax(R.Top, Offset);
    R.Right = qMin(R.Right, W - Offset);
    R.Bottom = qMin(R.Bottom, H - Offset);
    unsigned flags = FAlignment == taLeftJustify    ? DT_LEFT
                     : FAlignment == taRightJustify ? DT_RIGHT
                                                    : DT_CENTER;
    if (FWordWrap) flags |= DT_WORDBREAK;
    cv.Brush.Style = bsClear;
    if (isEnabled()) {
        cv.drawText(text, R, flags);
    } else {
        const TColor keep = cv.Font.Color;
        cv.Font.Color = clWhite;
        TRect shifted = Rect(R.Left + 1, R.Top + 1, R.Right + 1, R.Bottom + 1);
        cv.drawText(text, shifted, flags);
        cv.Font.Color = clGray;
        cv.drawText(text, R, flags);
        cv.Font.Color = keep;
    }
    return FBuffer;
}

void CustomBoxLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event);
    renderImage();
    QPainter painter(this);
    painter.drawImage(0, 0, FBuffer);
}
