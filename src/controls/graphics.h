#pragma once
// The drawing surface of the controls: colours, rectangles, brush, pen, font
// and a canvas that paints into a QImage.
//
// Colours are TColor values, 0x00BBGGRR as plain RGB, or a system colour
// 0xFF0000nn with the number nn of the classic system palette. Rectangles
// are TRect with Right and Bottom exclusive, as the canvas calls expect them.

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QString>

#include <cstdint>
#include <memory>

using TColor = std::int32_t;

constexpr TColor clSystemColor = TColor(0xFF000000u);
constexpr TColor clBlack = 0x000000;
constexpr TColor clWhite = 0xFFFFFF;
constexpr TColor clGray = 0x808080;
constexpr TColor clSilver = 0xC0C0C0;
constexpr TColor clNone = 0x1FFFFFFF;
constexpr TColor clWindow = clSystemColor | 5;
constexpr TColor clWindowText = clSystemColor | 8;
constexpr TColor clHighlight = clSystemColor | 13;
constexpr TColor clHighlightText = clSystemColor | 14;
constexpr TColor clBtnFace = clSystemColor | 15;
constexpr TColor clBtnShadow = clSystemColor | 16;
constexpr TColor clBtnHighlight = clSystemColor | 20;

// RGB value (0x00BBGGRR) of a colour; system colours map to a fixed light
// theme, so that a picture is the same on every desktop.
TColor colorToRgb(TColor color);
bool isSystemColor(TColor color);
QColor toQColor(TColor color);
TColor fromQColor(const QColor& color);
constexpr TColor rgbColor(int r, int g, int b) {
    return TColor(r | (g << 8) | (b << 16));
}
constexpr int getRValue(TColor c) {
    return c & 0xFF;
}
constexpr int getGValue(TColor c) {
    return (c >> 8) & 0xFF;
}
constexpr int getBValue(TColor c) {
    return (c >> 16) & 0xFF;
}

struct TRect {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    int width() const { return Right - Left; }
    int height() const { return Bottom - Top; }
    bool contains(int x, int y) const { return x >= Left && x < Right && y >= Top && y < Bottom; }
    QRect toQRect() const { return QRect(Left, Top, Right - Left, Bottom - Top); }
    friend bool operator==(const TRect& a, const TRect& b) {
        return a.Left == b.Left && a.Top == b.Top && a.Right == b.Right && a.Bottom == b.Bottom;
    }
};
inline TRect Rect(int left, int top, int right, int bottom) {
    return TRect{left, top, right, bottom};
}

enum TAlignment { taLeftJustify = 0, taRightJustify = 1, taCenter = 2 };
enum TextLayout { tlTop = 0, tlCenter = 1, tlBottom = 2 };

// 0 solid, 1 clear, the rest hatches.
enum TBrushStyle {
    bsSolid = 0,
    bsClear = 1,
    bsHorizontal = 2,
    bsVertical = 3,
    bsFDiagonal = 4,
    bsBDiagonal = 5,
    bsCross = 6,
    bsDiagCross = 7
};
enum PenStyle { psSolid, psDash, psDot, psDashDot, psDashDotDot, psClear };
enum PenMode { pmCopy, pmNot, pmXor };

struct TBrush {
    TColor Color = clWhite;
    TBrushStyle Style = bsSolid;
    friend bool operator==(const TBrush& a, const TBrush& b) {
        return a.Color == b.Color && a.Style == b.Style;
    }
};

struct TPen {
    TColor Color = clBlack;
    int Width = 1;
    PenStyle Style = psSolid;
    PenMode Mode = pmCopy;
};

// A font: the Qt font (family, size in points, style) and its colour.
struct FontSpec {
    QFont Font;
    TColor Color = clWindowText;

    FontSpec();
    FontSpec(const QString& name, int pointSize, TColor color = clWindowText);
    QString name() const { return Font.family(); }
    void setName(const QString& name) { Font.setFamily(name); }
    int size() const { return Font.pointSize(); }
    void setSize(int points) { Font.setPointSize(points); }
    bool bold() const { return Font.bold(); }
    void setBold(bool on) { Font.setBold(on); }
    friend bool operator==(const FontSpec& a, const FontSpec& b) {
        return a.Font == b.Font && a.Color == b.Color;
    }
};

// The family used when nothing else is set: the Japanese UI font.
QString defaultFontName();

// Flags of TCanvas::drawText.
enum DrawTextFlag : unsigned {
    DT_LEFT = 0x0,
    DT_CENTER = 0x1,
    DT_RIGHT = 0x2,
    DT_VCENTER = 0x4,
    DT_BOTTOM = 0x8,
    DT_WORDBREAK = 0x10,
    DT_SINGLELINE = 0x20,
    DT_NOCLIP = 0x100,
    DT_CALCRECT = 0x400,
};

// A canvas over a QImage. Brush, Pen and Font are plain values that each
// call reads, so they can be saved and restored by copying. pixel reads and
// writes work while the canvas paints.
class TCanvas {
public:
    // Paints into image, which must outlive the canvas. The image gets 96
    // dots per inch so that point sizes come out as on a desktop screen.
    explicit TCanvas(QImage& image);
    ~TCanvas();
    TCanvas(const TCanvas&) = delete;
    TCanvas& operator=(const TCanvas&) = delete;

    TBrush Brush;
    TPen Pen;
    FontSpec Font;

    QImage& image() { return *FImage; }
    QPainter& painter() { return FPainter; }

    // The rectangle in the brush, right and bottom edges excluded.
    void fillRect(const TRect& r);
    // Outline in the pen and inside in the brush, from (left, top) up to but
    // not including (right, bottom); with a clear pen the filled area is one pixel
    // smaller on the right and bottom.
    void rectangle(int left, int top, int right, int bottom);
    void rectangle(const TRect& r) { rectangle(r.Left, r.Top, r.Right, r.Bottom); }
    void moveTo(int x, int y);
    // A line in the pen from the pen position to (x, y), the end point
    // excluded; the pen position moves there.
    void lineTo(int x, int y);
    QPoint penPos() const { return FPenPos; }

    // Text with its top left at (x, y): with a solid brush its cell is
    // filled first, with a clear brush only the glyphs are drawn.
    void textOut(int x, int y, const QString& text);
    // Like textOut, clipped to r.
    void textRect(const TRect& r, int x, int y, const QString& text);
    int textWidth(const QString& text);
    int textHeight(const QString& text);
    // Formatted text in r by DT_ flags; with DT_CALCRECT nothing is drawn
    // and r receives the text's extent (keeping Left and Top).
    void drawText(const QString& text, TRect& r, unsigned flags);

    TColor pixel(int x, int y) const;
    void setPixel(int x, int y, TColor color);

private:
    void drawPixelRun(int fromX, int fromY, int toX, int toY);
    void drawGlyphs(int x, int y, const QString& text);

    QImage* FImage;
    QPainter FPainter;
    QPoint FPenPos;
};

// A new image of the given size, 96 dpi, filled with the colour.
QImage newCanvasImage(int width, int height, TColor fill = clWhite);
