#pragma once
// GradientPanel: a panel with a gradient or image background, a caption with a
// text effect and rotation, bevels, and optional moving and sizing by mouse.
//
// Backgrounds (backGroundEffect): bdFlat fills with colorStart; bdUp/bdDown
// and bdLeft/bdRight run a 100-step gradient over the height or width;
// bdHorzIn/Out and bdVertIn/Out run it out and back symmetrically;
// bdStretchImage and bdTileImage paint bitmap. colorStart and colorEnd must
// be plain RGB (a system colour raises ControlRangeError when a gradient is
// built).
//
// moveable panels answer hitTest with the desktop's zone codes, within
// marge pixels of a border a sizing zone and elsewhere the caption zone;
// dragging a border sizes the panel, dragging inside moves it, and every
// move fires OnPanelMove.
//
// The panel paints into an off-screen image (renderImage); paintEvent only
// copies it.

#include "controls/boxlabl.h"
#include "controls/controlerrors.h"
#include "controls/controlobject.h"
#include "controls/graphics.h"

#include <QImage>
#include <QWidget>

#include <array>

enum TDirection {
    bdFlat,
    bdStretchImage,
    bdTileImage,
    bdUp,
    bdDown,
    bdLeft,
    bdRight,
    bdHorzIn,
    bdHorzOut,
    bdVertIn,
    bdVertOut
};
enum TVertAlign { vlTop, vlCenter, VlBottom };
enum TTextEffect { tenone, teShadow, teRaised, teLowered, teEmbossed };
enum TTextRotation { trNone, TrUp, TrDown };
using GrArray = std::array<TColor, 100>;

// Hit-test answers.
enum THitTest {
    HTNOWHERE = 0,
    HTCAPTION = 2,
    HTLEFT = 10,
    HTRIGHT = 11,
    HTTOP = 12,
    HTTOPLEFT = 13,
    HTTOPRIGHT = 14,
    HTBOTTOM = 15,
    HTBOTTOMLEFT = 16,
    HTBOTTOMRIGHT = 17
};

// The gradient table from a to b: entry I is a + I * (b - a) / 100 in each
// of red, green and blue, the fraction cut off; entry 99 is one step short
// of b.
GrArray makeGradientTable(TColor a, TColor b);
// Windows-style multiply-divide, rounded half away from zero.
int mulDiv(int number, int numerator, int denominator);

class GradientPanel : public QWidget, public ControlObject {
    Q_OBJECT
public:
    explicit GradientPanel(QWidget* parent = nullptr);
    ~GradientPanel() override;

    TDirection backGroundEffect() const { return FBackGroundEffect; }
    void setBackGroundEffect(TDirection value);
    TVertAlign vertAlign() const { return FVertAlign; }
    void setVertAlign(TVertAlign value);
    TColor colorEnd() const { return FColorEnd; }
    void setColorEnd(TColor value);
    TColor colorStart() const { return FColorStart; }
    void setColorStart(TColor value);
    TColor colorShadow() const { return FColorShadow; }
    void setColorShadow(TColor value);
    TTextEffect textEffect() const { return FTextEffect; }
    void setTextEffect(TTextEffect value);
    TTextRotation textRotation() const { return FTextRotation; }
    void setTextRotation(TTextRotation value);
    bool ctl3D() const { return FCtl3D; }
    void setCtl3D(bool value);
    const QImage& bitmap() const { return FBitmap; }
    void setBitmap(const QImage& value);
    int marge() const { return FMarge; }
    void setMarge(int value) { FMarge = value; }
    bool moveable() const { return FMoveable; }
    void setMoveable(bool value);
    NotifyEvent OnPanelMove;
    // Gets the failures of painting and of OnPanelMove.
    FailureHandler OnFailure;

    // The panel's own settings.
    QString caption() const { return FCaption; }
    void setCaption(const QString& value);
    TAlignment alignment() const { return FAlignment; }
    void setAlignment(TAlignment value);
    BevelStyle bevelInner() const { return FBevelInner; }
    void setBevelInner(BevelStyle value);
    BevelStyle bevelOuter() const { return FBevelOuter; }
    void setBevelOuter(BevelStyle value);
    int bevelWidth() const { return FBevelWidth; }
    void setBevelWidth(int value);
    int borderWidth() const { return FBorderWidth; }
    void setBorderWidth(int value);
    TColor color() const { return FColor; }
    void setColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);

    // The zone of a point in client coordinates; HTNOWHERE unless moveable.
    int hitTest(int x, int y) const;
    // Paints the panel into an image of its size and returns it.
    QImage renderImage();

protected:
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void paintBackground(TCanvas& cv);
    void paintCaption(TCanvas& cv);
    void paintBevels(TCanvas& cv);

    TDirection FBackGroundEffect = bdVertIn;
    TVertAlign FVertAlign = vlCenter;
    TColor FColorEnd = 0xFFFFFF;
    TColor FColorStart = 0x808000;
    TColor FColorShadow = 0x808080;
    TTextEffect FTextEffect = teShadow;
    TTextRotation FTextRotation = trNone;
    bool FCtl3D = false;
    QImage FBitmap;
    GrArray FGradient{};
    int FMarge = 6;
    bool FMoveable = false;

    QString FCaption;
    TAlignment FAlignment = taCenter;
    BevelStyle FBevelInner = bvNone;
    BevelStyle FBevelOuter = bvRaised;
    int FBevelWidth = 1;
    int FBorderWidth = 0;
    TColor FColor = clBtnFace;
    FontSpec FFont;
    QImage FBuffer;

    int FDragZone = HTNOWHERE;
    QPoint FDragStart;
    QRect FDragGeometry;
};
