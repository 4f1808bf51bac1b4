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
TColor ColorToRGB(TColor color);
bool IsSystemColor(TColor color);
QColor ToQColor(TColor color);
TColor FromQColor(const QColor& color);
constexpr TColor RGBColor(int r, int g, int b) {
    return TColor(r | (g << 8) | (b << 16));
}
constexpr int GetRValue(TColor c) {
    return c & 0xFF;
}
constexpr int GetGValue(TColor c) {
    return (c >> 8) & 0xFF;
}
constexpr int GetBValue(TColor c) {
    return (c >> 16) & 0xFF;
}

struct TRect {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    int Width() const { return Right - Left; }
    int Height() const { return Bottom - Top; }
    bool Contains(int x, int y) const { return x >= Left && x < Right && y >= Top && y < Bottom; }
    QRect ToQRect() const { return QRect(Left, Top, Right - Left, Bottom - Top); }
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
    QString Name() const { return Font.family(); }
    void SetName(const QString& name) { Font.setFamily(name); }
    int Size() const { return Font.pointSize(); }
    void SetSize(int points) { Font.setPointSize(points); }
    bool Bold() const { return Font.bold(); }
    void SetBold(bool on) { Font.setBold(on); }
    friend bool operator==(const FontSpec& a, const FontSpec& b) {
        return a.Font == b.Font && a.Color == b.Color;
    }
};

// The family used when nothing else is set: the Japanese UI font.
QString DefaultFontName();

// Flags of TCanvas::DrawText.
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
// call reads, so they can be saved and restored by copying. Pixel reads and
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

    QImage& Image() { return *FImage; }
    QPainter& Painter() { return FPainter; }

    // The rectangle in the brush, right and bottom edges excluded.
    void FillRect(const TRect& r);
    // Outline in the pen and inside in the brush, from (left, top) up to but
    // not including (right, bottom); with a clear pen the filled area is one pixel
    // smaller on the right and bottom.
    void Rectangle(int left, int top, int right, int bottom);
    void Rectangle(const TRect& r) { Rectangle(r.Left, r.Top, r.Right, r.Bottom); }
    void MoveTo(int x, int y);
    // A line in the pen from the pen position to (x, y), the end point
    // excluded; the pen position moves there.
    void LineTo(int x, int y);
    QPoint PenPos() const { return FPenPos; }

    // Text with its top left at (x, y): with a solid brush its cell is
    // filled first, with a clear brush only the glyphs are drawn.
    void TextOut(int x, int y, const QString& text);
    // Like TextOut, clipped to r.
    void TextRect(const TRect& r, int x, int y, const QString& text);
    int TextWidth(const QString& text);
    int TextHeight(const QString& text);
    // Formatted text in r by DT_ flags; with DT_CALCRECT nothing is drawn
    // and r receives the text's extent (keeping Left and Top).
    void DrawText(const QString& text, TRect& r, unsigned flags);

    TColor Pixel(int x, int y) const;
    void SetPixel(int x, int y, TColor color);

private:
    void drawPixelRun(int fromX, int fromY, int toX, int toY);
    void drawGlyphs(int x, int y, const QString& text);

    QImage* FImage;
    QPainter FPainter;
    QPoint FPenPos;
};

// A new image of the given size, 96 dpi, filled with the colour.
QImage NewCanvasImage(int width, int height, TColor fill = clWhite);
