#pragma once
// PriceGrid: the string grid with per-cell look (see strcgridmodel.h for
// the cell model). This widget adds what the desktop string grid gives:
// painting, keyboard and mouse selection, the in-place editor and the
// grid's events; and on top of it the cell drawing and current-cell
// tracking of PriceGrid.
//
// Painting: every cell of the grid is drawn by DrawCell into an off-screen
// image (RenderImage), and paintEvent only copies that image to the screen,
// so a picture can be checked pixel by pixel.
//
// Keys: OnKeyDown receives every key pressed in the grid and in its
// in-place editor, with the desktop key code (vkeys.h), before the grid
// handles it; a handler that sets the key to 0 swallows it. The editor opens
// on a double click, on F2, or on typing into the current cell, while
// goEditing is in force (typing puts the character in, Backspace empties
// the cell); it closes on Enter, on Escape (restoring the cell),
// on moving to another cell and on SetEditorMode(false). Each edit writes
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
    QString Text() const { return FText; }
    void SetText(const QString& value) { FText = value; }

    // True from a SelectCell until the end of the next complete paint.
    bool CurrentCellMoved() const { return FCurrentCellMoved; }
    // The in-place editor; null until it is first opened.
    QLineEdit* InplaceEditor() const;
    bool EditorMode() const;
    void SetEditorMode(bool open);
    void ShowEditor();
    void HideEditor();

    // Moves the current cell through SelectCell (which may refuse) and
    // makes it the whole selection. Returns false when refused.
    void SetCol(int value);
    void SetRow(int value);
    bool FocusCell(int ACol, int ARow, bool AMoveAnchor);
    // Sets the selection; the current cell becomes its bottom right, the
    // anchor its top left. No SelectCell, no events.
    void SetSelection(const TGridRect& value);

    void Repaint();
    void Invalidate() override;
    void InvalidateCell(int ACol, int ARow) override;

    // Paints every cell into the off-screen image and returns it.
    QImage RenderImage();
    // The canvas of the paint in progress; null outside a paint.
    TCanvas* Canvas() const { return FCanvas; }
    // True while the grid or its editor has the input focus.
    bool GridFocused() const;

    // Fills a cell as a selected cell would be (during a paint).
    void FillCell(int ACol, int ARow, GridDrawState AState);
    // The raised frame of a fixed cell (with Ctl3D only).
    void DrawFixedFrame(const TRect& ARect);

    void Loaded() override;
    virtual bool SelectCell(int ACol, int ARow);
    virtual void DrawCell(int ACol, int ARow, const TRect& ARect, GridDrawState AState);
    virtual void DoFillCell(int ACol, int ARow, GridDrawState AState, SCGCellParam* AParam,
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
    void GeometryChanged() override;
    void ApplyImeMode() override;
    void DoEnter();

private:
    friend class InplaceEdit;
    bool PrepareFocusColors(SCGCellParam* AParam, GridDrawState AState);
    void DrawFocusFrame(int ACol, int ARow, const TRect& ARect, bool ALeftEdge, bool ARightEdge);
    void InvertFramePixel(int X, int Y);
    void DrawCellText(int ACol, int ARow, const TRect& ARect, GridDrawState AState,
                      SCGCellParam* AParam, GridOptions AOptions, const QString& AText,
                      TAlignment AAlignment, TextLayout ALayout, int AOverstrike);
    void ResetCanvas();
    void SaveCanvas();
    void DrawGridLines();
    void CreateEditor();
    void ApplyCellFontToEditor(SCGCellParam* AParam);
    // Input-method modes map onto Qt's input method switch: disabled and
    // closed turn it off, the others leave it on.
    static void SetImeModeOf(QWidget* widget, TImeMode mode);
    void EditorTextEdited(const QString& text);
    // Key handling shared by the grid and the editor; true when handled.
    bool GridKey(int key, ShiftState shift);
    void MoveBy(int dCol, int dRow, bool extend);
    int ColumnBorderAt(int x, int y) const;

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
