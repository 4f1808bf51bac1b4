#pragma once
// PriceGrid: the string grid with per-cell look (see strcgridmodel.h for
// the cell model). This widget adds what the desktop string grid gives:
// painting, keyboard and mouse selection, the in-place editor and the
// grid's events; and on top of it the cell drawing and current-cell
// tracking of PriceGrid.
//
// Painting: every cell of the grid is drawn by drawCell into an off-screen
// image (renderImage), and paintEvent only copies that image to the screen,
// so a picture can be checked pixel by pixel.
//
// Keys: OnKeyDown receives every key pressed in the grid and in its
// in-place editor, with the desktop key code (vkeys.h), before the grid
// handles it; a handler that sets the key to 0 swallows it. The editor opens
// on a double click, on F2, or on typing into the current cell, while
// goEditing is in force (typing puts the character in, Backspace empties
// the cell); it closes on Enter, on Escape (restoring the cell),
// on moving to another cell and on setEditorMode(false). Each edit writes
// the cell's string at once and fires OnSetEditText.

#include "controls/controlerrors.h"
#include "controls/strcgridmodel.h"

#include <QLineEdit>
#include <QWidget>

class PriceGrid;

// The grid's in-place editor.
class InplaceEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit InplaceEdit(PriceGrid* grid);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    PriceGrid* FGrid;
};

class PriceGrid : public QWidget, public PriceGridModel {
    Q_OBJECT
public:
    using SelectCellEvent =
        std::function<void(ControlObject* Sender, int ACol, int ARow, bool& CanSelect)>;
    using SetEditEvent =
        std::function<void(ControlObject* Sender, int ACol, int ARow, const QString& Value)>;
    using KeyEvent = std::function<void(ControlObject* Sender, int& Key, ShiftState Shift)>;
    using DrawCellEvent = std::function<void(ControlObject* Sender, int ACol, int ARow,
                                             const TRect& Rect, GridDrawState State)>;

    explicit PriceGrid(QWidget* parent = nullptr);
    ~PriceGrid() override;

    // ---- events of the string grid
    SelectCellEvent OnSelectCell; // before the current cell moves; may refuse
    SetEditEvent OnSetEditText;   // the editor changed the cell's string
    KeyEvent OnKeyDown;           // every key, also those typed in the editor
    NotifyEvent onClicked;        // the current cell was set by mouse or key
    FailureHandler OnFailure;     // failures of the grid's event handling
    DrawCellEvent OnDrawCell;     // after a cell's text is drawn

    // ---- events of PriceGrid
    SCGCellChangedEvent OnCellChanged;
    SCGColChangedEvent OnColChanged;
    SCGRowChangedEvent OnRowChanged;
    SCGOutCellTextEvent OnOutCellText;
    SCGDrawTextOneLineEvent OnDrawTextOneLine;
    NotifyEvent BeforeDraw;

    // The control's own text, handed to OnOutCellText as ACaption.
    QString text() const { return FText; }
    void setText(const QString& value) { FText = value; }

    // True from a selectCell until the end of the next complete paint.
    bool currentCellMoved() const { return FCurrentCellMoved; }
    // The in-place editor; null until it is first opened.
    QLineEdit* inplaceEditor() const;
    bool editorMode() const;
    void setEditorMode(bool open);
    void showEditor();
    void hideEditor();

    // Moves the current cell through selectCell (which may refuse) and
    // makes it the whole selection. Returns false when refused.
    void setCol(int value);
    void setRow(int value);
    bool focusCell(int ACol, int ARow, bool AMoveAnchor);
    // Sets the selection; the current cell becomes its bottom right, the
    // anchor its top left. No selectCell, no events.
    void setSelection(const TGridRect& value);

    void Repaint();
    void invalidate() override;
    void invalidateCell(int ACol, int ARow) override;

    // Paints every cell into the off-screen image and returns it.
    QImage renderImage();
    // The canvas of the paint in progress; null outside a paint.
    TCanvas* canvas() const { return FCanvas; }
    // True while the grid or its editor has the input focus.
    bool gridFocused() const;

    // Fills a cell as a selected cell would be (during a paint).
    void fillCell(int ACol, int ARow, GridDrawState AState);
    // The raised frame of a fixed cell (with ctl3D only).
    void drawFixedFrame(const TRect& ARect);

    void loaded() override;
    virtual bool selectCell(int ACol, int ARow);
    virtual void drawCell(int ACol, int ARow, const TRect& ARect, GridDrawState AState);
    virtual void doFillCell(int ACol, int ARow, GridDrawState AState, SCGCellParam* AParam,
                            bool AUseFocus);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void geometryChanged() override;
    void applyImeMode() override;
    void doEnter();

private:
    friend class InplaceEdit;
    bool prepareFocusColors(SCGCellParam* AParam, GridDrawState AState);
    void drawFocusFrame(int ACol, int ARow, const TRect& ARect, bool ALeftEdge, bool ARightEdge);
    void invertFramePixel(int X, int Y);
    void drawCellText(int ACol, int ARow, const TRect& ARect, GridDrawState AState,
                      SCGCellParam* AParam, GridOptions AOptions, const QString& AText,
                      TAlignment AAlignment, TextLayout ALayout, int AOverstrike);
    void resetCanvas();
    void saveCanvas();
    void drawGridLines();
    void createEditor();
    void applyCellFontToEditor(SCGCellParam* AParam);
    // Input-method modes map onto Qt's input method switch: disabled and
    // closed turn it off, the others leave it on.
    static void setImeModeOf(QWidget* widget, TImeMode mode);
    void editorTextEdited(const QString& text);
    // Key handling shared by the grid and the editor; true when handled.
    bool gridKey(int key, ShiftState shift);
    void moveBy(int dCol, int dRow, bool extend);
    int columnBorderAt(int x, int y) const;

    QString FText;
    QImage FBuffer;
    TCanvas* FCanvas = nullptr;
    TBrush FSaveBrush;
    TPen FSavePen;
    FontSpec FSaveFont;
    QStringList FCellTextDrawList;
    bool FCurrentCellMoved = false;
    InplaceEdit* FEditor = nullptr;
    QString FEditorOriginal;
    bool FSelecting = false;
    int FSizingCol = -1;
    int FSizingStartX = 0;
    int FSizingStartWidth = 0;
};
