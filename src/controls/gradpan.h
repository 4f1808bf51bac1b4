#pragma once
// GradientPanel: a panel with a gradient or image background, a caption with a
// text effect and rotation, bevels, and optional moving and sizing by mouse.
//
// Backgrounds (BackGroundEffect): bdFlat fills with ColorStart; bdUp/bdDown
// and bdLeft/bdRight run a 100-step gradient over the height or width;
// bdHorzIn/Out and bdVertIn/Out run it out and back symmetrically;
// bdStretchImage and bdTileImage paint Bitmap. ColorStart and ColorEnd must
// be plain RGB (a system colour raises ControlRangeError when a gradient is
// built).
//
// Moveable panels answer HitTest with the desktop's zone codes, within
// Marge pixels of a border a sizing zone and elsewhere the caption zone;
// dragging a border sizes the panel, dragging inside moves it, and every
// move fires OnPanelMove.
//
// The panel paints into an off-screen image (RenderImage); paintEvent only
// copies it.

#include "controls/boxlabl.h"
#include "controls/controlerrors.h"
#include "controls/stringgridmodel.h"

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
GrArray MakeGradientTable(TColor a, TColor b);
// Windows-style multiply-divide, rounded half away from zero.
int MulDiv(int number, int numerator, int denominator);

class GradientPanel : public QWidget, public ControlObject {
    Q_OBJECT
public:
    explicit GradientPanel(QWidget* parent = nullptr);
    ~GradientPanel() override;

    TDirection BackGroundEffect() const { return FBackGroundEffect; }
    void SetBackGroundEffect(TDirection value);
    TVertAlign VertAlign() const { return FVertAlign; }
    void SetVertAlign(TVertAlign value);
    TColor ColorEnd() const { return FColorEnd; }
    void SetColorEnd(TColor value);
    TColor ColorStart() const { return FColorStart; }
    void SetColorStart(TColor value);
    TColor ColorShadow() const { return FColorShadow; }
    void SetColorShadow(TColor value);
    TTextEffect TextEffect() const { return FTextEffect; }
    void SetTextEffect(TTextEffect value);
    TTextRotation TextRotation() const { return FTextRotation; }
    void SetTextRotation(TTextRotation value);
    bool Ctl3D() const { return FCtl3D; }
    void SetCtl3D(bool value);
    const QImage& Bitmap() const { return FBitmap; }
    void SetBitmap(const QImage& value);
    int Marge() const { return FMarge; }
    void SetMarge(int value) { FMarge = value; }
    bool Moveable() const { return FMoveable; }
    void SetMoveable(bool value);
    NotifyEvent OnPanelMove;
    // Gets the failures of painting and of OnPanelMove.
    FailureHandler OnFailure;

    // The panel's own settings.
    QString Caption() const { return FCaption; }
    void SetCaption(const QString& value);
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value);
    BevelStyle BevelInner() const { return FBevelInner; }
    void SetBevelInner(BevelStyle value);
    BevelStyle BevelOuter() const { return FBevelOuter; }
    void SetBevelOuter(BevelStyle value);
    int BevelWidth() const { return FBevelWidth; }
    void SetBevelWidth(int value);
    int BorderWidth() const { return FBorderWidth; }
    void SetBorderWidth(int value);
    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);

    // The zone of a point in client coordinates; HTNOWHERE unless Moveable.
    int HitTest(int x, int y) const;
    // Paints the panel into an image of its size and returns it.
    QImage RenderImage();

protected:
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void PaintBackground(TCanvas& cv);
    void PaintCaption(TCanvas& cv);
    void PaintBevels(TCanvas& cv);

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
