#pragma once
// GradientPanel: a panel with a gradient or image background, a caption with a
// text effect and rotation, bevels, and optional moving and sizing by mouse.
//
// Backgrounds (backGroundEffect): bdFlat fills with colorStart; bdUp/bdDown
// and bdLeft/bdRight run a 100-step gradient over the height or width;
// bdHorzIn/Out and bdVertIn/Out run it out and back symmetrically;
// bdStretchImage and bdTileImage paint bitmap. colorStart and colorEnd must
// be valid colours (an invalid one raises ControlRangeError when a gradient
// is built). The caption is drawn in the widget's font (the form's Japanese
// UI face at 9 points unless set) and in fontColor.
//
// moveable panels answer hitTest with the desktop's zone codes, within
// marge pixels of a border a sizing zone and elsewhere the caption zone;
// dragging a border sizes the panel, dragging inside moves it, and every
// move fires onPanelMove.
//
// The panel paints into an off-screen image (renderImage); paintEvent only
// copies it.

#include "controls/boxlabl.h"
#include "controls/controlerrors.h"
#include "controls/controlobject.h"

#include <QColor>
#include <QImage>
#include <QWidget>

#include <array>

enum BackgroundEffect {
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
enum VertAlign { vlTop, vlCenter, VlBottom };
enum TextEffect { tenone, teShadow, teRaised, teLowered, teEmbossed };
enum TextRotation { trNone, TrUp, TrDown };
using GradientTable = std::array<QColor, 100>;

// Hit-test answers.
enum HitTestZone {
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
GradientTable makeGradientTable(const QColor& a, const QColor& b);
// Windows-style multiply-divide, rounded half away from zero.
int mulDiv(int number, int numerator, int denominator);

class GradientPanel : public QWidget, public ControlObject {
    Q_OBJECT
public:
    explicit GradientPanel(QWidget* parent = nullptr);
    ~GradientPanel() override;

    BackgroundEffect backGroundEffect() const { return m_backGroundEffect; }
    void setBackGroundEffect(BackgroundEffect value);
    VertAlign vertAlign() const { return m_vertAlign; }
    void setVertAlign(VertAlign value);
    QColor colorEnd() const { return m_colorEnd; }
    void setColorEnd(const QColor& value);
    QColor colorStart() const { return m_colorStart; }
    void setColorStart(const QColor& value);
    QColor colorShadow() const { return m_colorShadow; }
    void setColorShadow(const QColor& value);
    TextEffect textEffect() const { return m_textEffect; }
    void setTextEffect(TextEffect value);
    TextRotation textRotation() const { return m_textRotation; }
    void setTextRotation(TextRotation value);
    bool ctl3D() const { return m_ctl3D; }
    void setCtl3D(bool value);
    const QImage& bitmap() const { return m_bitmap; }
    void setBitmap(const QImage& value);
    int marge() const { return m_marge; }
    void setMarge(int value) { m_marge = value; }
    bool moveable() const { return m_moveable; }
    void setMoveable(bool value);
    NotifyEvent onPanelMove;
    // Gets the failures of painting and of onPanelMove.
    FailureHandler onFailure;

    // The panel's own settings.
    QString caption() const { return m_caption; }
    void setCaption(const QString& value);
    // Left, right or (anything else) centred; only the horizontal part counts.
    Qt::Alignment alignment() const { return m_alignment; }
    void setAlignment(Qt::Alignment value);
    BevelStyle bevelInner() const { return m_bevelInner; }
    void setBevelInner(BevelStyle value);
    BevelStyle bevelOuter() const { return m_bevelOuter; }
    void setBevelOuter(BevelStyle value);
    int bevelWidth() const { return m_bevelWidth; }
    void setBevelWidth(int value);
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int value);
    QColor color() const { return m_color; }
    void setColor(const QColor& value);
    QColor fontColor() const { return m_fontColor; }
    void setFontColor(const QColor& value);

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
    void paintBackground(QPainter& p);
    void paintCaption(QPainter& p);
    void paintBevels(QPainter& p);

    BackgroundEffect m_backGroundEffect = bdVertIn;
    VertAlign m_vertAlign = vlCenter;
    QColor m_colorEnd = Qt::white;
    QColor m_colorStart = QColor(0, 128, 128);
    QColor m_colorShadow = PanelColor::gray;
    TextEffect m_textEffect = teShadow;
    TextRotation m_textRotation = trNone;
    bool m_ctl3D = false;
    QImage m_bitmap;
    GradientTable m_gradient{};
    int m_marge = 6;
    bool m_moveable = false;

    QString m_caption;
    Qt::Alignment m_alignment = Qt::AlignHCenter;
    BevelStyle m_bevelInner = bvNone;
    BevelStyle m_bevelOuter = bvRaised;
    int m_bevelWidth = 1;
    int m_borderWidth = 0;
    QColor m_color = PanelColor::buttonFace;
    QColor m_fontColor = Qt::black;
    QImage m_buffer;

    int m_dragZone = HTNOWHERE;
    QPoint m_dragStart;
    QRect m_dragGeometry;
};
