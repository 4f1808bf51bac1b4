#pragma once
// BoxLabel: a painted label. A box filled with Color, an outer and an inner
// bevel with an optional one-pixel border between them, and the caption
// placed in it by Alignment (horizontal) and horizontalAlign (vertical, in
// spite of its name). Numbers written through asFloat / asInteger become the
// caption by formatString, or with decimals fraction digits when it is
// empty; a format that does not fit shows "Format Error".
//
// The label paints into an off-screen image (renderImage); paintEvent only
// copies it.

#include "controls/graphics.h"

#include <QWidget>

#include <cstdint>

enum HorizontalAlignment { haTop, haCenter, haBottom };
enum TBorderStyle { bsSingle, bsNone };
enum BevelStyle { bvRaised, bvNone, bvLowered };

class CustomBoxLabel : public QWidget {
    Q_OBJECT
public:
    explicit CustomBoxLabel(QWidget* parent = nullptr);
    ~CustomBoxLabel() override;

    TAlignment alignment() const { return FAlignment; }
    void setAlignment(TAlignment value);
    HorizontalAlignment horizontalAlign() const { return FHoriAlign; }
    void setHorizontalAlign(HorizontalAlignment value);
    QString caption() const { return getLabelText(); }
    void setCaption(const QString& value) { setLabelText(value); }
    // Stored only; the drawing takes no account of it.
    int textBorder() const { return FTextBorder; }
    void setTextBorder(int value);
    BevelStyle bevelInner() const { return FBevelInner; }
    void setBevelInner(BevelStyle value);
    BevelStyle bevelOuter() const { return FBevelOuter; }
    void setBevelOuter(BevelStyle value);
    int bevelWidth() const { return FBevelWidth; }
    void setBevelWidth(int value);
    // Counts from the next number written.
    QString formatString() const { return FFormatString; }
    void setFormatString(const QString& value) { FFormatString = value; }
    bool wordWrap() const { return FWordWrap; }
    void setWordWrap(bool value);
    TBorderStyle borderStyle() const { return FBorderStyle; }
    void setBorderStyle(TBorderStyle value);
    std::int8_t decimals() const { return FDecimals; }
    void setDecimals(std::int8_t value) { FDecimals = value; }
    TColor color() const { return FColor; }
    void setColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);

    // The number last written; reading parses the caption leniently (0 for
    // text that is no number).
    double asFloat() const;
    void setAsFloat(double value);
    std::int32_t asInteger() const;
    void setAsInteger(std::int32_t value);
    double storedValue() const { return FValue; }

    // Paints the label into an image of its size and returns it.
    QImage renderImage();

    virtual QString getLabelText() const { return FCaption; }
    virtual void setLabelText(const QString& value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    TAlignment FAlignment = taCenter;
    HorizontalAlignment FHoriAlign = haCenter;
    int FTextBorder = 2;
    bool FWordWrap = false;
    TBorderStyle FBorderStyle = bsNone;
    std::int8_t FDecimals = 0;
    double FValue = 0;
    BevelStyle FBevelInner = bvLowered;
    BevelStyle FBevelOuter = bvRaised;
    int FBevelWidth = 1;
    QString FFormatString;
    QString FCaption;
    TColor FColor = clBtnFace;
    FontSpec FFont;
    QImage FBuffer;
};

class BoxLabel : public CustomBoxLabel {
    Q_OBJECT
public:
    explicit BoxLabel(QWidget* parent = nullptr) : CustomBoxLabel(parent) {}
};
