#pragma once
// BoxLabel: a painted label. A box filled with color, an outer and an inner
// bevel with an optional one-pixel border between them, and the caption
// placed in it by alignment (horizontal) and horizontalAlign (vertical, in
// spite of its name). Numbers written through asFloat / asInteger become the
// caption by formatString, or with decimals fraction digits when it is
// empty; a format that does not fit shows "Format Error".
//
// The caption is drawn in the widget's font (the form's Japanese UI face at
// 9 points unless set) and in fontColor. The label paints into an off-screen
// image (renderImage); paintEvent only copies it.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QWidget>

#include <cstdint>

class QPainter;

// The colours the label and the gradient panel paint with. They stand for
// the desktop's button colours but are fixed, so that a picture is the same
// on every desktop.
namespace PanelColor {
constexpr QRgb buttonFace = qRgb(240, 240, 240);
constexpr QRgb buttonShadow = qRgb(160, 160, 160);
constexpr QRgb gray = qRgb(128, 128, 128);
} // namespace PanelColor

// Painting helpers shared with the gradient panel. The lines work in whole
// pixels on an unscaled painter.
//
// The caption font of a new label or panel: the form's Japanese UI face at
// 9 points.
QFont defaultPanelFont();
// An image of the given size (at least 1 by 1) at 96 dots per inch, so that
// point sizes come out as on a desktop screen, filled with the colour.
QImage newPanelImage(int width, int height, const QColor& fill);
// A horizontal or vertical line from `from` up to, but not including, `to`.
void drawPixelLine(QPainter& painter, QPoint from, QPoint to, const QColor& color);
// The outline of r, one pixel wide, along r's own outer pixels (none for a
// rectangle of a single pixel).
void drawPixelFrame(QPainter& painter, const QRect& r, const QColor& color);
// A width by height area moved in by inset on every side; where the insets
// cross, the part between them.
QRect insetRect(int width, int height, int inset);

enum HorizontalAlignment { haTop, haCenter, haBottom };
enum BorderStyle { bsSingle, bsNone };
enum BevelStyle { bvRaised, bvNone, bvLowered };

class CustomBoxLabel : public QWidget {
    Q_OBJECT
public:
    explicit CustomBoxLabel(QWidget* parent = nullptr);
    ~CustomBoxLabel() override;

    // Left, right or (anything else) centred; only the horizontal part counts.
    Qt::Alignment alignment() const { return m_alignment; }
    void setAlignment(Qt::Alignment value);
    HorizontalAlignment horizontalAlign() const { return m_horiAlign; }
    void setHorizontalAlign(HorizontalAlignment value);
    QString caption() const { return getLabelText(); }
    void setCaption(const QString& value) { setLabelText(value); }
    // Stored only; the drawing takes no account of it.
    int textBorder() const { return m_textBorder; }
    void setTextBorder(int value);
    BevelStyle bevelInner() const { return m_bevelInner; }
    void setBevelInner(BevelStyle value);
    BevelStyle bevelOuter() const { return m_bevelOuter; }
    void setBevelOuter(BevelStyle value);
    int bevelWidth() const { return m_bevelWidth; }
    void setBevelWidth(int value);
    // Counts from the next number written.
    QString formatString() const { return m_formatString; }
    void setFormatString(const QString& value) { m_formatString = value; }
    bool wordWrap() const { return m_wordWrap; }
    void setWordWrap(bool value);
    BorderStyle borderStyle() const { return m_borderStyle; }
    void setBorderStyle(BorderStyle value);
    std::int8_t decimals() const { return m_decimals; }
    void setDecimals(std::int8_t value) { m_decimals = value; }
    QColor color() const { return m_color; }
    void setColor(const QColor& value);
    QColor fontColor() const { return m_fontColor; }
    void setFontColor(const QColor& value);

    // The number last written; reading parses the caption leniently (0 for
    // text that is no number).
    double asFloat() const;
    void setAsFloat(double value);
    std::int32_t asInteger() const;
    void setAsInteger(std::int32_t value);
    double storedValue() const { return m_value; }

    // Paints the label into an image of its size and returns it.
    QImage renderImage();

    virtual QString getLabelText() const { return m_caption; }
    virtual void setLabelText(const QString& value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    Qt::Alignment m_alignment = Qt::AlignHCenter;
    HorizontalAlignment m_horiAlign = haCenter;
    int m_textBorder = 2;
    bool m_wordWrap = false;
    BorderStyle m_borderStyle = bsNone;
    std::int8_t m_decimals = 0;
    double m_value = 0;
    BevelStyle m_bevelInner = bvLowered;
    BevelStyle m_bevelOuter = bvRaised;
    int m_bevelWidth = 1;
    QString m_formatString;
    QString m_caption;
    QColor m_color = PanelColor::buttonFace;
    QColor m_fontColor = Qt::black;
    QImage m_buffer;
};

class BoxLabel : public CustomBoxLabel {
    Q_OBJECT
public:
    explicit BoxLabel(QWidget* parent = nullptr) : CustomBoxLabel(parent) {}
};
