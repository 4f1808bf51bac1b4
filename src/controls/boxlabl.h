#pragma once
// BoxLabel: a painted label. A box filled with Color, an outer and an inner
// bevel with an optional one-pixel border between them, and the caption
// placed in it by Alignment (horizontal) and HorizontalAlign (vertical, in
// spite of its name). Numbers written through AsFloat / AsInteger become the
// caption by FormatString, or with Decimals fraction digits when it is
// empty; a format that does not fit shows "Format Error".
//
// The label paints into an off-screen image (RenderImage); paintEvent only
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

    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value);
    HorizontalAlignment HorizontalAlign() const { return FHoriAlign; }
    void SetHorizontalAlign(HorizontalAlignment value);
    QString Caption() const { return GetLabelText(); }
    void SetCaption(const QString& value) { SetLabelText(value); }
    // Stored only; the drawing takes no account of it.
    int TextBorder() const { return FTextBorder; }
    void SetTextBorder(int value);
    BevelStyle BevelInner() const { return FBevelInner; }
    void SetBevelInner(BevelStyle value);
    BevelStyle BevelOuter() const { return FBevelOuter; }
    void SetBevelOuter(BevelStyle value);
    int BevelWidth() const { return FBevelWidth; }
    void SetBevelWidth(int value);
    // Counts from the next number written.
    QString FormatString() const { return FFormatString; }
    void SetFormatString(const QString& value) { FFormatString = value; }
    bool WordWrap() const { return FWordWrap; }
    void SetWordWrap(bool value);
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    std::int8_t Decimals() const { return FDecimals; }
    void SetDecimals(std::int8_t value) { FDecimals = value; }
    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);

    // The number last written; reading parses the caption leniently (0 for
    // text that is no number).
    double AsFloat() const;
    void SetAsFloat(double value);
    std::int32_t AsInteger() const;
    void SetAsInteger(std::int32_t value);
    double StoredValue() const { return FValue; }

    // Paints the label into an image of its size and returns it.
    QImage RenderImage();

    virtual QString GetLabelText() const { return FCaption; }
    virtual void SetLabelText(const QString& value);

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
