#include "controls/gradpan.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

GrArray makeGradientTable(TColor a, TColor b) {
    if (isSystemColor(a) || isSystemColor(b))
        throw ControlRangeError(QStringLiteral("Range check error"));
    const double sr = (getRValue(b) - getRValue(a)) / 100.0;
    const double sg = (getGValue(b) - getGValue(a)) / 100.0;
    const double sb = (getBValue(b) - getBValue(a)) / 100.0;
    GrArray table{};
    for (int I = 0; I < 100; ++I) {
        const int r = int(getRValue(a) + I * sr);
        const int g = int(getGValue(a) + I * sg);
        const int bl = int(getBValue(a) + I * sb);
        table[std::size_t(I)] = rgbColor(r, g, bl);
    }
    return table;
}

int mulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) return -1;
    return int(std::llround(double(number) * double(numerator) / double(denominator)));
}

GradientPanel::GradientPanel(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    FBitmap = newCanvasImage(50, 50, clWhite);
    {
        TCanvas cv(FBitmap);
        cv.Pen.Color = clBlack;
        cv.Brush.Color = clWhite;
        cv.rectangle(0, 0, 50, 50);
    }
    resize(185, 41);
}

GradientPanel::~GradientPanel() = default;

void GradientPanel::setBackGroundEffect(TDirection value) {
    FBackGroundEffect = value;
    update();
}
void GradientPanel::setVertAlign(TVertAlign value) {
    FVertAlign = value;
    update();
}
void GradientPanel::setColorEnd(TColor value) {
    FColorEnd = value;
    update();
}
void GradientPanel::setColorStart(TColor value) {
    FColorStart = value;
    update();
}
void GradientPanel::setColorShadow(TColor value) {
    FColorShadow = value;
    update();
}
void GradientPanel::setTextEffect(TTextEffect value) {
    FTextEffect = value;
    update();
}
void GradientPanel::setTextRotation(TTextRotation value) {
    FTextRotation = value;
    update();
}
void GradientPanel::setCtl3D(bool value) {
    FCtl3D = value;
    update();
}
void GradientPanel::setBitmap(const QImage& value) {
    FBitmap = value.copy();
    if (FBackGroundEffect == bdStretchImage || FBackGroundEffect == bdTileImage) update();
}
void GradientPanel::setMoveable(bool value) {
    FMoveable = value;
    setMouseTracking(value);
    if (!value) unsetCursor();
}
void GradientPanel::setCaption(const QString& value) {
    FCaption = value;
    update();
}
void GradientPanel::setAlignment(TAlignment value) {
    FAlignment = value;
    update();
}
void GradientPanel::setBevelInner(BevelStyle value) {
    FBevelInner = value;
    update();
}
void GradientPanel::setBevelOuter(BevelStyle value) {
    FBevelOuter = value;
    update();
}
void GradientPanel::setBevelWidth(int value) {
    FBevelWidth = value;
    update();
}
void GradientPanel::setBorderWidth(int value) {
    FBorderWidth = value;
    update();
}
void GradientPanel::setColor(TColor value) {
    FColor = value;
    update();
}
void GradientPanel::SetFont(const FontSpec& value) {
    FFont = value;
    update();
}

void GradientPanel::paintBackground(TCanvas& cv) {
    const int W = width(), H = height();
    cv.Brush.Style = bsSolid;
    auto flat = [&] {
        cv.Brush.Color = FColorStart;
        cv.fillRect(Rect(0, 0, W, H));
    };
    switch (FBackGroundEffect) {
    case bdFlat:
        flat();
        return;
    case bdUp:
    case bdDown:
    case bdLeft:
    case bdRight: {
        const bool forward = FBackGroundEffect == bdUp || FBackGroundEffect == bdLeft;
        FGradient = forward ? makeGradientTable(FColorStart, FColorEnd)
                            : makeGradientTable(FColorEnd, FColorStart);
        const bool vertical = FBackGroundEffect == bdUp || FBackGroundEffect == bdDown;
        for (int I = 0; I < 100; ++I) {
            cv.Brush.Color = FGradient[std::size_t(I)];
            if (vertical)
                cv.fillRect(Rect(0, mulDiv(I, H, 100), W, mulDiv(I + 1, H, 100)));
            else
                cv.fillRect(Rect(mulDiv(I, W, 100), 0, mulDiv(I + 1, W, 100), H));
        }
        return;
    }
    case bdHorzIn:
    case bdHorzOut:
    case bdVertIn:
    case bdVertOut: {
        const bool in = FBackGroundEffect == bdHorzIn || FBackGroundEffect == bdVertIn;
        FGradient = in ? makeGradientTable(FColorStart, FColorEnd)
                       : makeGradientTable(FColorEnd, FColorStart);
        const bool stacked = FBackGroundEffect == bdHorzIn || FBackGroundEffect == bdHorzOut;
        for (int I = 0; I < 100; ++I) {
            const int entry = I < 50 ? 2 * I + 1 : 98 - 2 * (I - 50);
            cv.Brush.Color = FGradient[std::size_t(entry)];
            if (stacked)
                cv.fillRect(Rect(0, mulDiv(I, H, 100), W, mulDiv(I + 1, H, 100)));
            else
                cv.fillRect(Rect(mulDiv(I, W, 100), 0, mulDiv(I + 1, W, 100), H));
        }
        return;
    }
    case bdStretchImage:
    case bdTileImage: {
        if (FBitmap.isNull() || FBitmap.width() == 0 || FBitmap.height() == 0) {
            flat();
            return;
        }
        const int inset = FCtl3D ? 2 * FBevelWidth + FBorderWidth : 0;
        QPainter& p = cv.painter();
        if (FBackGroundEffect == bdStretchImage) {
            p.drawImage(QRect(inset, inset, W - 2 * inset - 1, H - 2 * inset - 1), FBitmap);
        } else {
            const int cols = (W - 2 * inset) / FBitmap.width() + 1;
            const int rows = (H - 2 * inset) / FBitmap.height() + 1;
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < cols; ++c)
                    p.drawImage(inset + c * FBitmap.width(), inset + r * FBitmap.height(), FBitmap);
        }
        return;
    }
    }
}

void GradientPanel::paintCaption(TCanvas& cv) {
    if (FCaption.isEmpty()) return;
    const int W = width(), H = height();
    const int Inset = FBevelWidth + FBorderWidth;
    const int TH = cv.textHeight(QStringLiteral("^_"));
    int X = 0, Y = 0;
    // 0: the text's start at the point, 1: its middle, 2: its end.
    int anchor = 0;
    switch (FTextRotation) {
    case trNone:
        X = FAlignment == taLeftJustify    ? Inset + 2
            : FAlignment == taRightJustify ? W - Inset - 2
                                           : W / 2;
        Y = FVertAlign == vlTop      ? Inset + 2
            : FVertAlign == vlCenter ? H / 2 - TH / 2
                                     : H - Inset - TH - 1;
        anchor = FAlignment == taLeftJustify ? 0 : FAlignment == taRightJustify ? 2 : 1;
        break;
    case TrUp:
        X = FAlignment == taLeftJustify    ? Inset + 2
            : FAlignment == taRightJustify ? W - Inset - TH - 1
                                           : W / 2 - TH / 2;
        Y = FVertAlign == vlTop      ? Inset + 2
            : FVertAlign == vlCenter ? H / 2 - TH / 2
                                     : H - Inset - 1;
        anchor = FVertAlign == vlTop ? 2 : FVertAlign == vlCenter ? 1 : 0;
        break;
    case TrDown:
        X = FAlignment == taLeftJustify    ? TH + Inset + 1
            : FAlignment == taRightJustify ? W - Inset - 2
                                           : W / 2 + TH / 2;
        Y = FVertAlign == vlTop      ? Inset + 1
            : FVertAlign == vlCenter ? H / 2 - TH / 2
                                     : H - Inset - 2;
        anchor = FVertAlign == vlTop ? 0 : FVertAlign == vlCenter ? 1 : 2;
        break;
    }
    const int TW = cv.textWidth(FCaption);
    const int along = anchor == 0 ? 0 : anchor == 1 ? -TW / 2 : -TW;
    QPainter& p = cv.painter();
    auto pass = [&](int dx, int dy, TColor color) {
        cv.Font.Color = color;
        cv.Brush.Style = bsClear;
        if (FTextRotation == trNone) {
            cv.textOut(X + dx + along, Y + dy, FCaption);
            return;
        }
        p.save();
        p.translate(X + dx, Y + dy);
        p.rotate(FTextRotation == TrUp ? -90 : 90);
        cv.textOut(along, 0, FCaption);
        p.restore();
    };
    const TColor K = FFont.Color;
    const TColor S = FColorShadow;
    switch (FTextEffect) {
    case tenone:
        pass(0, 0, S);
        break;
    case teShadow:
        pass(1, 1, S);
        pass(0, 0, K);
        break;
    case teRaised:
        pass(-1, 0, S);
        pass(0, -1, S);
        pass(1, 0, clBlack);
        pass(0, 1, clBlack);
        pass(0, 0, K);
        break;
    case teLowered:
        pass(1, 0, S);
        pass(0, 1, S);
        pass(-1, 0, clBlack);
        pass(0, -1, clBlack);
        pass(0, 0, K);
        break;
    case teEmbossed:
        pass(-1, 0, S);
        pass(1, 0, S);
        pass(0, -1, S);
        pass(0, 1, S);
        pass(0, 0, K);
        break;
    }
    cv.Font.Color = K;
}

void GradientPanel::paintBevels(TCanvas& cv) {
    const int W = width(), H = height();
    const int BW = FBevelWidth;
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    auto draw = [&](BevelStyle style, int inset) {
        const TColor light = style == bvRaised ? clWhite : clGray;
        const TColor dark = style == bvRaised ? clGray : clWhite;
        for (int I = 0; I < BW; ++I) {
            const int o = inset + I;
            cv.Pen.Color = light;
            cv.moveTo(o, o);
            cv.lineTo(W - inset, o);
            cv.moveTo(o, o);
            cv.lineTo(o, H - inset);
            cv.Pen.Color = dark;
            cv.moveTo(o, H - 1 - o);
            cv.lineTo(W - o, H - 1 - o);
            cv.moveTo(W - 1 - o, inset == 0 ? H - 1 - o : H - inset - 1);
            cv.lineTo(W - 1 - o, o);
        }
    };
    if (FBevelOuter != bvNone) draw(FBevelOuter, 0);
    if (FBevelInner != bvNone) {
        const int inset = FBevelOuter != bvNone ? FBorderWidth + BW : FBorderWidth + 1;
        draw(FBevelInner, inset);
        if (FCtl3D) {
            const int O = FBevelOuter != bvNone ? BW - 1 : 0;
            cv.Pen.Color = FColor;
            cv.Brush.Style = bsClear;
            for (int K = 1; K <= FBorderWidth; ++K)
                cv.rectangle(O + K, O + K, W - K - O, H - K - O);
        }
    }
}

QImage GradientPanel::renderImage() {
    FBuffer = newCanvasImage(width(), height(), FColor);
    TCanvas cv(FBuffer);
    cv.Font = FFont;
    cv.Pen.Style = psSolid;
    cv.Pen.Mode = pmCopy;
    paintBackground(cv);
    paintCaption(cv);
    paintBevels(cv);
    return FBuffer;
}

void GradientPanel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event);
    try {
        renderImage();
    } catch (const std::exception& e) {
        reportControlFailure(OnFailure, QString::fromUtf8(e.what()));
    }
    QPainter painter(this);
    painter.drawImage(0, 0, FBuffer);
}

int GradientPanel::hitTest(int x, int y) const {
    if (!FMoveable) return HTNOWHERE;
    const int M = FMarge;
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
        if (OnPanelMove) OnPanelMove(this);
    } catch (const std::exception& e) {
        reportControlFailure(OnFailure, QString::fromUtf8(e.what()));
    }
    QWidget::moveEvent(event);
}

void GradientPanel::mousePressEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    FDragZone = event->button() == Qt::LeftButton ? hitTest(pos.x(), pos.y()) : HTNOWHERE;
    FDragStart = event->globalPosition().toPoint();
    FDragGeometry = geometry();
    if (FDragZone == HTNOWHERE) QWidget::mousePressEvent(event);
}

void GradientPanel::mouseMoveEvent(QMouseEvent* event) {
    if (FDragZone == HTNOWHERE || !(event->buttons() & Qt::LeftButton)) {
        if (FMoveable) {
            const QPoint pos = event->position().toPoint();
            setCursor(zoneCursor(hitTest(pos.x(), pos.y())));
        }
        QWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint d = event->globalPosition().toPoint() - FDragStart;
    QRect g = FDragGeometry;
    const int minSize = 2 * FMarge;
    switch (FDragZone) {
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
    switch (FDragZone) {
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
    FDragZone = HTNOWHERE;
    QWidget::mouseReleaseEvent(event);
}
