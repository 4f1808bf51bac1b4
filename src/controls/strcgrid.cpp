#include "controls/strcgrid.h"

#include "controls/vkeys.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace {

// Input reaches the grid from Qt's event dispatch, which an exception must
// not cross: a failure of a handler (a key handler's conversion error, a
// refused move) goes to the program's handler, as the desktop's message loop
// shows it, and the input ends there.
template <typename F> void RunGuarded(const FailureHandler& onFailure, F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        ReportControlFailure(onFailure, QString::fromUtf8(e.what()));
    }
}

} // namespace

// ---------------------------------------------------------------- InplaceEdit

InplaceEdit::InplaceEdit(PriceGrid* grid) : QLineEdit(grid), FGrid(grid) {
    setFrame(false);
    hide();
}

bool InplaceEdit::event(QEvent* event) {
    // An open editor owns the Escape key: a shortcut of the window on it
    // does not take the key away from the grid's key handling.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void InplaceEdit::keyPressEvent(QKeyEvent* event) {
    RunGuarded(FGrid->OnFailure, [&] {
        const int code = VirtualKeyOf(event);
        int key = code;
        const ShiftState shift = ShiftStateOf(event->modifiers());
        // A handler that raises ends the key here.
        if (FGrid->OnKeyDown) FGrid->OnKeyDown(FGrid, key, shift);
        if (key == 0 && code != 0) return;
        switch (key) {
        case VK_RETURN:
            FGrid->HideEditor();
            return;
        case VK_ESCAPE:
            if (FGrid->EditorMode()) {
                FGrid->SetCells(FGrid->Col(), FGrid->Row(), FGrid->FEditorOriginal);
                FGrid->HideEditor();
            }
            return;
        case VK_UP:
        case VK_DOWN:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_TAB:
            FGrid->HideEditor();
            FGrid->GridKey(key, shift);
            return;
        default:
            // Unless the handler closed the editor, the key edits the text.
            if (FGrid->EditorMode()) QLineEdit::keyPressEvent(event);
        }
    });
}

// ---------------------------------------------------------------- PriceGrid

PriceGrid::PriceGrid(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    FOldCol = 0;
    FOldRow = 0;
}

PriceGrid::~PriceGrid() = default;

QLineEdit* PriceGrid::InplaceEditor() const {
    return FEditor;
}

bool PriceGrid::EditorMode() const {
    return FEditor && FEditor->isVisible();
}

void PriceGrid::SetEditorMode(bool open) {
    if (open)
        ShowEditor();
    else
        HideEditor();
}

void PriceGrid::ApplyCellFontToEditor(SCGCellParam* AParam) {
    if (!FEditor) return;
    const FontSpec font = AParam && !AParam->FontName().isEmpty()
                              ? Fonts()[Fonts().IndexOfName(AParam->FontName())]->Font()
                              : Font();
    FEditor->setFont(font.Font);
    QPalette pal = FEditor->palette();
    pal.setColor(QPalette::Text, ToQColor(font.Color == clWindowText ? clBlack : font.Color));
    pal.setColor(QPalette::Base, Qt::white);
    FEditor->setPalette(pal);
}

void PriceGrid::SetImeModeOf(QWidget* widget, TImeMode mode) {
    widget->setAttribute(Qt::WA_InputMethodEnabled, mode != imDisable && mode != imClose);
}

void PriceGrid::ApplyImeMode() {
    SetImeModeOf(this, ImeMode());
    if (FEditor) SetImeModeOf(FEditor, ImeMode());
}

void PriceGrid::CreateEditor() {
    FEditor = new InplaceEdit(this);
    SCGCellParam* p = FindCellParam(Col(), Row(), false);
    ApplyCellFontToEditor(p);
    SetImeModeOf(FEditor, p ? p->ImeMode() : ImeMode());
    connect(FEditor, &QLineEdit::textEdited, this,
            [this](const QString& text) { EditorTextEdited(text); });
}

void PriceGrid::EditorTextEdited(const QString& text) {
    RunGuarded(OnFailure, [&] {
        if (Cells(Col(), Row()) == text) return;
        SetCells(Col(), Row(), text);
        if (OnSetEditText) OnSetEditText(this, Col(), Row(), text);
    });
}

void PriceGrid::ShowEditor() {
    if (!InForceOptions().Contains(goEditing)) return;
    if (Col() < FixedCols() || Row() < FixedRows()) return;
    if (!FEditor) CreateEditor();
    const TRect r = CellRect(Col(), Row());
    FEditor->setGeometry(r.ToQRect());
    FEditorOriginal = Cells(Col(), Row());
    FEditor->setText(FEditorOriginal);
    FEditor->show();
    FEditor->setFocus();
    FEditor->selectAll();
}

void PriceGrid::HideEditor() {
    if (!EditorMode()) return;
    const bool hadFocus = FEditor->hasFocus();
    FEditor->hide();
    if (hadFocus) setFocus();
    InvalidateCell(Col(), Row());
}

void PriceGrid::SetCol(int value) {
    FocusCell(value, Row(), true);
}

void PriceGrid::SetRow(int value) {
    FocusCell(Col(), value, true);
}

bool PriceGrid::FocusCell(int ACol, int ARow, bool AMoveAnchor) {
    ACol = std::clamp(ACol, FixedCols(), ColCount() - 1);
    ARow = std::clamp(ARow, FixedRows(), RowCount() - 1);
    if (!SelectCell(ACol, ARow)) return false;
    HideEditor();
    const bool rowSelect = InForceOptions().Contains(goRowSelect);
    const bool range = InForceOptions().Contains(goRangeSelect);
    if (AMoveAnchor || !range || rowSelect)
        SetCurrentRaw(ACol, ARow, ACol, ARow);
    else
        SetCurrentRaw(ACol, ARow, FAnchorCol, FAnchorRow);
    Invalidate();
    if (onClicked) onClicked(this);
    return true;
}

void PriceGrid::SetSelection(const TGridRect& value) {
    SetCurrentRaw(value.Right, value.Bottom, value.Left, value.Top);
    Invalidate();
}

void PriceGrid::Repaint() {
    repaint();
}

void PriceGrid::Invalidate() {
    update();
}

void PriceGrid::InvalidateCell(int ACol, int ARow) {
    const TRect r = CellRect(ACol, ARow);
    update(r.ToQRect().adjusted(0, 0, 1, 1));
}

void PriceGrid::GeometryChanged() {
    updateGeometry();
    if (EditorMode()) FEditor->setGeometry(CellRect(Col(), Row()).ToQRect());
    update();
}

bool PriceGrid::GridFocused() const {
    return hasFocus() || (FEditor && FEditor->isVisible() && FEditor->hasFocus());
}

QSize PriceGrid::sizeHint() const {
    return QSize(GridWidth(), GridHeight());
}

// ---------------------------------------------------------------- painting

QImage PriceGrid::RenderImage() {
    FBuffer = NewCanvasImage(width(), height(), Color());
    TCanvas canvas(FBuffer);
    FCanvas = &canvas;
    canvas.Font = Font();
    if (BeforeDraw) BeforeDraw(this);
    DrawGridLines();
    const TGridRect sel = Selection();
    const bool rowSelect = InForceOptions().Contains(goRowSelect);
    const bool focused = GridFocused();
    for (int r = 0; r < RowCount(); ++r) {
        for (int c = 0; c < ColCount(); ++c) {
            const TRect rect = CellRect(c, r);
            if (rect.Left >= width() || rect.Top >= height() || rect.Width() <= 0 ||
                rect.Height() <= 0)
                continue;
            GridDrawState state = 0;
            const bool fixed = c < FixedCols() || r < FixedRows();
            if (fixed) state |= gdFixed;
            if (!fixed && (rowSelect ? (r >= sel.Top && r <= sel.Bottom) : sel.Contains(c, r)))
                state |= gdSelected;
            if (focused && c == Col() && r == Row()) state |= gdFocused;
            DrawCell(c, r, rect, state);
        }
    }
    FCanvasBrushStyle = canvas.Brush.Style;
    FCanvas = nullptr;
    FCurrentCellMoved = false;
    return FBuffer;
}

void PriceGrid::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event);
    try {
        RenderImage();
    } catch (const std::exception& e) {
        FCanvas = nullptr;
        ReportControlFailure(OnFailure, QString::fromUtf8(e.what()));
    }
    QPainter painter(this);
    painter.drawImage(0, 0, FBuffer);
}

void PriceGrid::DrawGridLines() {
    TCanvas& cv = *FCanvas;
    const int w = GridWidth();
    const int h = GridHeight();
    const int fixedW = CellRect(FixedCols(), 0).Left;
    const int fixedH = CellRect(0, FixedRows()).Top;
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    for (int c = 0; c < ColCount(); ++c) {
        const int lw = VertLineWidth(c);
        if (lw <= 0) continue;
        const int x = CellRect(c, 0).Right;
        const bool fixed = c < FixedCols();
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = fixed ? clBlack : clSilver;
        cv.FillRect(Rect(x, 0, x + lw, fixed ? h : fixedH));
        if (!fixed) {
            cv.Brush.Color = InForceOptions().Contains(goVertLine) ? clSilver : Color();
            cv.FillRect(Rect(x, fixedH, x + lw, h));
            cv.Brush.Color = InForceOptions().Contains(goFixedVertLine) ? clBlack : FixedColor();
            cv.FillRect(Rect(x, 0, x + lw, fixedH));
        }
    }
    for (int r = 0; r < RowCount(); ++r) {
        const int lw = HorzLineWidth(r);
        if (lw <= 0) continue;
        const int y = CellRect(0, r).Bottom;
        const bool fixed = r < FixedRows();
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = fixed ? clBlack : clSilver;
        cv.FillRect(Rect(fixed ? 0 : fixedW, y, w, y + lw));
        if (!fixed && fixedW > 0) {
            cv.Brush.Color = InForceOptions().Contains(goFixedHorzLine) ? clBlack : FixedColor();
            cv.FillRect(Rect(0, y, fixedW, y + lw));
        }
    }
}

void PriceGrid::SaveCanvas() {
    FSaveBrush = FCanvas->Brush;
    FSavePen = FCanvas->Pen;
    FSaveFont = FCanvas->Font;
}

void PriceGrid::ResetCanvas() {
    FCanvas->Brush = FSaveBrush;
    FCanvas->Pen = FSavePen;
    FCanvas->Font = FSaveFont;
}

namespace {

QString captionText(const SCGCellParam* p, const QString& S) {
    const QString C = p->Caption();
    const QString CR(QChar(13));
    switch (p->CaptionType()) {
    case ctCaption:
        return C.isEmpty() ? S : C;
    case ctCellText:
        return S.isEmpty() ? C : S;
    case ctHeader:
        return C + S;
    case ctFooter:
        return S + C;
    case ctTop:
        return S.isEmpty() ? C + CR + S + CR : C + CR + S;
    case ctBottom:
        return S + CR + C;
    }
    return S;
}

} // namespace

void PriceGrid::DrawCell(int ACol, int ARow, const TRect& ARect, GridDrawState AState) {
    TCanvas& cv = *FCanvas;
    if (DefaultDrawing()) {
        // The plain string grid's own look.
        const bool selected = (AState & gdSelected) && !(AState & gdFocused);
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = (AState & gdFixed) ? FixedColor() : selected ? clHighlight : Color();
        cv.FillRect(ARect);
        cv.Font = Font();
        if (selected) cv.Font.Color = clHighlightText;
        cv.Brush.Style = bsClear;
        cv.TextRect(ARect, ARect.Left + 2, ARect.Top + 2, Cells(ACol, ARow));
        if (AState & gdFocused) DrawFocusFrame(ACol, ARow, ARect, true, true);
        return;
    }
    SCGCellParam* p = FindCellParam(ACol, ARow, false);
    const GridOptions options = p && p->OptionsEnabled() ? p->Options() : Options();
    DoFillCell(ACol, ARow, AState, p, false);
    const bool focusColors = PrepareFocusColors(p, AState);
    SaveCanvas();

    int overstrike = 1;
    TAlignment alignment;
    TextLayout layout;
    QString text;
    bool called = false;
    bool reset = true;
    if (!p) {
        const bool fixed = AState & gdFixed;
        alignment = fixed ? FixedAlignment() : Alignment();
        layout = fixed ? FixedLayout() : Layout();
        text = Cells(ACol, ARow);
        if (OnOutCellText) {
            OnOutCellText(this, this, ARect, ACol, ARow, FText, text, reset);
            called = true;
        }
    } else {
        overstrike = p->FontWidth();
        alignment = p->Alignment();
        layout = p->Layout();
        text = captionText(p, Cells(ACol, ARow));
        if (p->OnOutCellText) {
            p->OnOutCellText(p, this, ARect, ACol, ARow, p->Caption(), text, reset);
            called = true;
        }
    }
    if (called) {
        if (reset)
            ResetCanvas();
        else
            SaveCanvas();
    }
    if (focusColors) cv.FillRect(ARect);

    if (CellDivide()) {
        DrawCellText(ACol, ARow, ARect, AState, p, options, text, alignment, layout, overstrike);
    } else {
        TRect r = Rect(ARect.Left + 2, ARect.Top + 2, ARect.Right - 2, ARect.Bottom - 2);
        cv.DrawText(text, r, DT_LEFT | DT_WORDBREAK);
    }

    if (OnDrawCell) OnDrawCell(this, ACol, ARow, ARect, AState);
    if (p && p->OnDrawCell) p->OnDrawCell(p, this, ACol, ARow, ARect, AState);

    if (GridFocused()) {
        const bool rowSelect = options.Contains(goRowSelect);
        if (!rowSelect && (AState & gdFocused)) {
            DrawFocusFrame(ACol, ARow, ARect, true, true);
        } else if (rowSelect && ARow == Row()) {
            int first = FixedCols(), last = ColCount() - 1;
            if (p && p->OptionsEnabled()) {
                first = p->Col();
                last = p->ColMax();
            }
            const bool left = ACol == first;
            const bool right = ACol == last && !left;
            DrawFocusFrame(ACol, ARow, ARect, left, right);
        }
    }
    if (AState & gdFixed) DrawFixedFrame(ARect);
}

void PriceGrid::DrawCellText(int ACol, int ARow, const TRect& ARect, GridDrawState AState,
                             SCGCellParam* AParam, GridOptions AOptions, const QString& AText,
                             TAlignment AAlignment, TextLayout ALayout, int AOverstrike) {
    TCanvas& cv = *FCanvas;
    const QString text = AText.isEmpty() ? QString(QChar(13)) : AText;
    FCellTextDrawList = SplitTextLines(text);
    const int count = FCellTextDrawList.size();
    const int H = ARect.Height() / count;
    const bool fixed = AState & gdFixed;
    for (int i = 0; i < count; ++i) {
        TRect L = ARect;
        L.Top = ARect.Top + i * H;
        L.Bottom = i == count - 1 ? ARect.Bottom : ARect.Top + (i + 1) * H;
        QString line = FCellTextDrawList[i];
        TAlignment alignment = AAlignment;
        TextLayout layout = ALayout;
        bool innerLine = AOptions.Contains(goHorzLine);
        if (OnDrawTextOneLine) {
            ResetCanvas();
            OnDrawTextOneLine(this, this, L, ACol, ARow, i, AState, line, alignment, layout,
                              innerLine);
        }
        if (AParam && AParam->OnDrawTextOneLine) {
            ResetCanvas();
            AParam->OnDrawTextOneLine(AParam, this, L, ACol, ARow, i, AState, line, alignment,
                                      layout, innerLine);
        }
        const int W = cv.TextWidth(line);
        int X;
        switch (alignment) {
        case taRightJustify:
            X = ARect.Right - (W + 2);
            break;
        case taCenter:
            X = ARect.Left + (ARect.Right - ARect.Left - W) / 2;
            break;
        default:
            X = ARect.Left + 2;
        }
        const int T = cv.TextHeight(line);
        int Y;
        switch (layout) {
        case tlCenter:
            Y = L.Top + (L.Bottom - L.Top - T) / 2 + 1;
            break;
        case tlBottom:
            Y = L.Bottom - T - 1;
            break;
        default:
            Y = L.Top + 2;
        }
        const TBrushStyle keep = cv.Brush.Style;
        cv.Brush.Style = bsClear;
        for (int k = 0; k < AOverstrike; ++k)
            cv.TextRect(L, X + k, Y, line);
        cv.Brush.Style = keep;
        if (innerLine) {
            cv.Pen.Width = 1;
            cv.Pen.Style = psSolid;
            if (i > 0) {
                cv.Pen.Color = fixed && Ctl3D() ? clBtnHighlight : RGBColor(192, 192, 192);
                cv.MoveTo(L.Left, L.Top);
                cv.LineTo(L.Right, L.Top);
            }
            if (i < count - 1 && fixed) {
                cv.Pen.Color = clBtnShadow;
                cv.MoveTo(L.Left, L.Bottom - 1);
                cv.LineTo(L.Right, L.Bottom - 1);
            }
        }
    }
}

void PriceGrid::DoFillCell(int ACol, int ARow, GridDrawState AState, SCGCellParam* AParam,
                           bool AUseFocus) {
    TCanvas& cv = *FCanvas;
    const TRect R = CellRect(ACol, ARow);
    if (AParam && !AParam->FontName().isEmpty())
        cv.Font = Fonts()[Fonts().IndexOfName(AParam->FontName())]->Font();
    else
        cv.Font = Font();
    if (ACol < FixedCols() || ARow < FixedRows()) AUseFocus = false;
    if (!AParam && (AState & gdFixed)) {
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = FixedColor();
        cv.FillRect(R);
    } else {
        if (AUseFocus) {
            PrepareFocusColors(AParam, AState);
            cv.FillRect(R);
        } else if (AParam) {
            cv.Brush.Style = bsSolid;
            cv.Brush.Color = AParam->CellColorEnabled() ? AParam->CellColor()
                             : (AState & gdFixed)       ? FixedColor()
                                                        : Color();
            cv.FillRect(R);
            if (AParam->FontColorEnabled()) cv.Font.Color = AParam->FontColor();
        } else {
            cv.Brush.Style = bsSolid;
            cv.Brush.Color = Color();
            cv.FillRect(R);
            cv.Font.Color = Font().Color;
        }
        if (AParam && AParam->BrushEnabled()) {
            cv.Brush = AParam->Brush();
            cv.Pen.Width = 0;
            cv.Pen.Style = psClear;
            cv.Rectangle(R.Left, R.Top, R.Right + 1, R.Bottom + 1);
        }
    }
    cv.Brush.Style = bsClear;
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    cv.Pen.Color = cv.Brush.Color;
    cv.Pen.Mode = pmCopy;
}

void PriceGrid::FillCell(int ACol, int ARow, GridDrawState AState) {
    if (!FCanvas) return;
    DoFillCell(ACol, ARow, AState, FindCellParam(ACol, ARow, false), true);
}

bool PriceGrid::PrepareFocusColors(SCGCellParam* AParam, GridDrawState AState) {
    const GridOptions options =
        AParam && AParam->OptionsEnabled() ? AParam->Options() : InForceOptions();
    const bool selected = (GridFocused() || FocusDraw()) && (AState & gdSelected) &&
                          (options.Contains(goDrawFocusSelected) || !(AState & gdFocused) ||
                           options.Contains(goRowSelect));
    if (!selected) return false;
    TCanvas& cv = *FCanvas;
    cv.Brush.Color = FocusCellColor();
    if (cv.Brush.Style == bsClear) cv.Brush.Style = bsSolid;
    if (FocusCellFontColorEnabled())
        cv.Font.Color = FocusCellFontColor();
    else if (AParam && AParam->FontColorEnabled())
        cv.Font.Color = AParam->FontColor();
    return true;
}

void PriceGrid::InvertFramePixel(int X, int Y) {
    TCanvas& cv = *FCanvas;
    const TColor C = cv.Pixel(X, Y);
    if (C == clNone) return;
    TColor N = ~C & 0xFFFFFF;
    const int diff = std::abs(GetRValue(C) - GetRValue(N)) + std::abs(GetGValue(C) - GetGValue(N)) +
                     std::abs(GetBValue(C) - GetBValue(N));
    if (diff < 24) N = clWhite;
    cv.SetPixel(X, Y, N);
}

void PriceGrid::DrawFocusFrame(int ACol, int ARow, const TRect& ARect, bool ALeftEdge,
                               bool ARightEdge) {
    if (ACol < FixedCols() || ARow < FixedRows()) return;
    TCanvas& cv = *FCanvas;
    cv.Pen.Style = psSolid;
    cv.Brush.Style = bsSolid;
    const TRect R = Rect(ARect.Left, ARect.Top, ARect.Right - 1, ARect.Bottom - 1);
    for (int I = 0; I <= (R.Right - R.Left) / 2; ++I) {
        InvertFramePixel(R.Left + 2 * I, R.Top);
        InvertFramePixel(R.Left + 2 * I, R.Bottom);
    }
    for (int I = 1; I <= (R.Bottom - R.Top - 1) / 2; ++I) {
        if (ALeftEdge) InvertFramePixel(R.Left, R.Top + 2 * I);
        if (ARightEdge) InvertFramePixel(R.Right, R.Top + 2 * I);
    }
}

void PriceGrid::DrawFixedFrame(const TRect& ARect) {
    if (!Ctl3D() || !FCanvas) return;
    TCanvas& cv = *FCanvas;
    cv.Pen.Style = psSolid;
    cv.Pen.Mode = pmCopy;
    cv.Pen.Width = 1;
    cv.Pen.Color = clBtnHighlight;
    cv.MoveTo(ARect.Right - 1, ARect.Top);
    cv.LineTo(ARect.Left, ARect.Top);
    cv.LineTo(ARect.Left, ARect.Bottom - 1);
    cv.Pen.Color = clGray;
    cv.LineTo(ARect.Right - 1, ARect.Bottom - 1);
    cv.LineTo(ARect.Right - 1, ARect.Top);
}

// ---------------------------------------------------------------- current cell

bool PriceGrid::SelectCell(int ACol, int ARow) {
    bool result = true;
    if (OnSelectCell) OnSelectCell(this, ACol, ARow, result);
    SCGCellParam* newParam = FindCellParam(ACol, ARow, false);
    SCGCellParam* oldParam = FindCellParam(FOldCol, FOldRow, false);
    if (FEditor) {
        ApplyCellFontToEditor(newParam);
        SetImeModeOf(FEditor,
                     newParam && newParam->ImeModeEnabled() ? newParam->ImeMode() : ImeMode());
    }
    SetInForceOptions(newParam && newParam->OptionsEnabled() ? newParam->Options() : Options());
    const int oc = FOldCol, orow = FOldRow;
    if (ACol != oc || ARow != orow) {
        try {
            if (oldParam) {
                if (oldParam->OnExitCell)
                    oldParam->OnExitCell(oldParam, this, oc, orow, ACol, ARow);
                if (ACol != oc && oldParam->OnExitCol)
                    oldParam->OnExitCol(oldParam, this, oc, ACol);
                if (ARow != orow && oldParam->OnExitRow)
                    oldParam->OnExitRow(oldParam, this, orow, ARow);
            }
            if (newParam) {
                if (newParam->OnEnterCell)
                    newParam->OnEnterCell(newParam, this, oc, orow, ACol, ARow);
                if (ACol != oc && newParam->OnEnterCol)
                    newParam->OnEnterCol(newParam, this, oc, ACol);
                if (ARow != orow && newParam->OnEnterRow)
                    newParam->OnEnterRow(newParam, this, orow, ARow);
            }
            if (OnCellChanged) OnCellChanged(this, oc, orow, ACol, ARow);
            if (ACol != oc && OnColChanged) OnColChanged(this, oc, ACol);
            if (ARow != orow && OnRowChanged) OnRowChanged(this, orow, ARow);
        } catch (...) {
            return false;
        }
    }
    FCurrentCellMoved = true;
    FOldCol = ACol;
    FOldRow = ARow;
    return result;
}

void PriceGrid::Loaded() {
    PriceGridModel::Loaded();
    FOldCol = Col();
    FOldRow = Row();
    SelectCell(Col(), Row());
    Invalidate();
}

void PriceGrid::DoEnter() {
    SelectCell(Col(), Row());
}

void PriceGrid::focusInEvent(QFocusEvent* event) {
    RunGuarded(OnFailure, [&] {
        QWidget::focusInEvent(event);
        DoEnter();
        update();
    });
}

void PriceGrid::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

// ---------------------------------------------------------------- keyboard and mouse

void PriceGrid::MoveBy(int dCol, int dRow, bool extend) {
    const bool range = extend && InForceOptions().Contains(goRangeSelect);
    FocusCell(Col() + dCol, Row() + dRow, !range);
}

bool PriceGrid::GridKey(int key, ShiftState shift) {
    const bool extend = shift & ssShift;
    const int page = std::max(1, (height() / std::max(1, DefaultRowHeight())) - FixedRows());
    switch (key) {
    case VK_LEFT:
        MoveBy(-1, 0, extend);
        return true;
    case VK_RIGHT:
        MoveBy(1, 0, extend);
        return true;
    case VK_UP:
        MoveBy(0, -1, extend);
        return true;
    case VK_DOWN:
        MoveBy(0, 1, extend);
        return true;
    case VK_PRIOR:
        MoveBy(0, -page, extend);
        return true;
    case VK_NEXT:
        MoveBy(0, page, extend);
        return true;
    case VK_HOME:
        FocusCell(FixedCols(), Row(), !extend);
        return true;
    case VK_END:
        FocusCell(ColCount() - 1, Row(), !extend);
        return true;
    case VK_TAB:
        if (!InForceOptions().Contains(goTabs)) return false;
        MoveBy((shift & ssShift) ? -1 : 1, 0, false);
        return true;
    case VK_F1 + 1: // F2
        ShowEditor();
        return true;
    default:
        return false;
    }
}

void PriceGrid::keyPressEvent(QKeyEvent* event) {
    RunGuarded(OnFailure, [&] {
        const int code = VirtualKeyOf(event);
        int key = code;
        const ShiftState shift = ShiftStateOf(event->modifiers());
        // A handler that raises ends the key here.
        if (OnKeyDown) OnKeyDown(this, key, shift);
        if (key == 0 && code != 0) return;
        if (GridKey(key, shift)) return;
        if (key == VK_BACK && !EditorMode() && InForceOptions().Contains(goEditing) &&
            !(shift & (ssCtrl | ssAlt))) {
            // Backspace goes into the cell like a typed character: the editor
            // opens with the whole text selected, and the key deletes it.
            ShowEditor();
            if (EditorMode() && !FEditor->text().isEmpty()) {
                FEditor->clear();
                EditorTextEdited(QString());
            }
            return;
        }
        const QString text = event->text();
        if (!EditorMode() && InForceOptions().Contains(goEditing) && text.size() == 1 &&
            text.at(0).isPrint() && !(shift & (ssCtrl | ssAlt))) {
            ShowEditor();
            if (EditorMode()) {
                FEditor->setText(text);
                EditorTextEdited(text);
            }
            return;
        }
        QWidget::keyPressEvent(event);
    });
}

int PriceGrid::ColumnBorderAt(int x, int y) const {
    if (!InForceOptions().Contains(goColSizing) || FixedRows() == 0) return -1;
    if (y >= CellRect(0, FixedRows()).Top) return -1;
    for (int c = 0; c < ColCount(); ++c) {
        const int right = CellRect(c, 0).Right;
        if (std::abs(x - right) <= 2) return c;
    }
    return -1;
}

void PriceGrid::mousePressEvent(QMouseEvent* event) {
    RunGuarded(OnFailure, [&] {
        if (event->button() != Qt::LeftButton) return;
        setFocus(Qt::MouseFocusReason);
        const QPoint pos = event->position().toPoint();
        const int border = ColumnBorderAt(pos.x(), pos.y());
        if (border >= 0) {
            FSizingCol = border;
            FSizingStartX = pos.x();
            FSizingStartWidth = ColWidths(border);
            return;
        }
        int c, r;
        if (!MouseToCell(pos.x(), pos.y(), c, r)) return;
        if (c < FixedCols() || r < FixedRows()) return;
        const bool extend = event->modifiers().testFlag(Qt::ShiftModifier) &&
                            InForceOptions().Contains(goRangeSelect);
        FocusCell(c, r, !extend);
        FSelecting = InForceOptions().Contains(goRangeSelect);
    });
}

void PriceGrid::mouseMoveEvent(QMouseEvent* event) {
    RunGuarded(OnFailure, [&] {
        const QPoint pos = event->position().toPoint();
        if (FSizingCol >= 0) {
            SetColWidths(FSizingCol, std::max(0, FSizingStartWidth + pos.x() - FSizingStartX));
            return;
        }
        setCursor(ColumnBorderAt(pos.x(), pos.y()) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
        if (!FSelecting || !(event->buttons() & Qt::LeftButton)) return;
        int c, r;
        if (!MouseToCell(pos.x(), pos.y(), c, r)) return;
        c = std::max(c, FixedCols());
        r = std::max(r, FixedRows());
        if (c != Col() || r != Row()) FocusCell(c, r, false);
    });
}

void PriceGrid::mouseReleaseEvent(QMouseEvent* event) {
    Q_UNUSED(event);
    FSelecting = false;
    FSizingCol = -1;
}

void PriceGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    RunGuarded(OnFailure, [&] {
        if (event->button() != Qt::LeftButton) return;
        const QPoint pos = event->position().toPoint();
        int c, r;
        if (!MouseToCell(pos.x(), pos.y(), c, r)) return;
        if (c == Col() && r == Row()) ShowEditor();
    });
}
