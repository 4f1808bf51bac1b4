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
template <typename F> void runGuarded(const FailureHandler& onFailure, F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        reportControlFailure(onFailure, QString::fromUtf8(e.what()));
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
    runGuarded(FGrid->OnFailure, [&] {
        const int code = virtualKeyOf(event);
        int key = code;
        const ShiftState shift = shiftStateOf(event->modifiers());
        // A handler that raises ends the key here.
        if (FGrid->OnKeyDown) FGrid->OnKeyDown(FGrid, key, shift);
        if (key == 0 && code != 0) return;
        switch (key) {
        case VK_RETURN:
            FGrid->hideEditor();
            return;
        case VK_ESCAPE:
            if (FGrid->editorMode()) {
                FGrid->setCells(FGrid->col(), FGrid->row(), FGrid->FEditorOriginal);
                FGrid->hideEditor();
            }
            return;
        case VK_UP:
        case VK_DOWN:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_TAB:
            FGrid->hideEditor();
            FGrid->gridKey(key, shift);
            return;
        default:
            // Unless the handler closed the editor, the key edits the text.
            if (FGrid->editorMode()) QLineEdit::keyPressEvent(event);
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

QLineEdit* PriceGrid::inplaceEditor() const {
    return FEditor;
}

bool PriceGrid::editorMode() const {
    return FEditor && FEditor->isVisible();
}

void PriceGrid::setEditorMode(bool open) {
    if (open)
        showEditor();
    else
        hideEditor();
}

void PriceGrid::applyCellFontToEditor(SCGCellParam* AParam) {
    if (!FEditor) return;
    const FontSpec font = AParam && !AParam->fontName().isEmpty()
                              ? fonts()[fonts().indexOfName(AParam->fontName())]->font()
                              : Font();
    FEditor->setFont(font.Font);
    QPalette pal = FEditor->palette();
    pal.setColor(QPalette::Text, toQColor(font.Color == clWindowText ? clBlack : font.Color));
    pal.setColor(QPalette::Base, Qt::white);
    FEditor->setPalette(pal);
}

void PriceGrid::setImeModeOf(QWidget* widget, TImeMode mode) {
    widget->setAttribute(Qt::WA_InputMethodEnabled, mode != imDisable && mode != imClose);
}

void PriceGrid::applyImeMode() {
    setImeModeOf(this, imeMode());
    if (FEditor) setImeModeOf(FEditor, imeMode());
}

void PriceGrid::createEditor() {
    FEditor = new InplaceEdit(this);
    SCGCellParam* p = findCellParam(col(), row(), false);
    applyCellFontToEditor(p);
    setImeModeOf(FEditor, p ? p->imeMode() : imeMode());
    connect(FEditor, &QLineEdit::textEdited, this,
            [this](const QString& text) { editorTextEdited(text); });
}

void PriceGrid::editorTextEdited(const QString& text) {
    runGuarded(OnFailure, [&] {
        if (cells(col(), row()) == text) return;
        setCells(col(), row(), text);
        if (OnSetEditText) OnSetEditText(this, col(), row(), text);
    });
}

void PriceGrid::showEditor() {
    if (!inForceOptions().contains(goEditing)) return;
    if (col() < fixedCols() || row() < fixedRows()) return;
    if (!FEditor) createEditor();
    const TRect r = cellRect(col(), row());
    FEditor->setGeometry(r.toQRect());
    FEditorOriginal = cells(col(), row());
    FEditor->setText(FEditorOriginal);
    FEditor->show();
    FEditor->setFocus();
    FEditor->selectAll();
}

void PriceGrid::hideEditor() {
    if (!editorMode()) return;
    const bool hadFocus = FEditor->hasFocus();
    FEditor->hide();
    if (hadFocus) setFocus();
    invalidateCell(col(), row());
}

void PriceGrid::setCol(int value) {
    focusCell(value, row(), true);
}

void PriceGrid::setRow(int value) {
    focusCell(col(), value, true);
}

bool PriceGrid::focusCell(int ACol, int ARow, bool AMoveAnchor) {
    ACol = std::clamp(ACol, fixedCols(), colCount() - 1);
    ARow = std::clamp(ARow, fixedRows(), rowCount() - 1);
    if (!selectCell(ACol, ARow)) return false;
    hideEditor();
    const bool rowSelect = inForceOptions().contains(goRowSelect);
    const bool range = inForceOptions().contains(goRangeSelect);
    if (AMoveAnchor || !range || rowSelect)
        setCurrentRaw(ACol, ARow, ACol, ARow);
    else
        setCurrentRaw(ACol, ARow, FAnchorCol, FAnchorRow);
    invalidate();
    if (onClicked) onClicked(this);
    return true;
}

void PriceGrid::setSelection(const TGridRect& value) {
    setCurrentRaw(value.Right, value.Bottom, value.Left, value.Top);
    invalidate();
}

void PriceGrid::Repaint() {
    repaint();
}

void PriceGrid::invalidate() {
    update();
}

void PriceGrid::invalidateCell(int ACol, int ARow) {
    const TRect r = cellRect(ACol, ARow);
    update(r.toQRect().adjusted(0, 0, 1, 1));
}

void PriceGrid::geometryChanged() {
    updateGeometry();
    if (editorMode()) FEditor->setGeometry(cellRect(col(), row()).toQRect());
    update();
}

bool PriceGrid::gridFocused() const {
    return hasFocus() || (FEditor && FEditor->isVisible() && FEditor->hasFocus());
}

QSize PriceGrid::sizeHint() const {
    return QSize(gridWidth(), gridHeight());
}

// ---------------------------------------------------------------- painting

QImage PriceGrid::renderImage() {
    FBuffer = newCanvasImage(width(), height(), color());
    TCanvas canvas(FBuffer);
    FCanvas = &canvas;
    canvas.Font = Font();
    if (BeforeDraw) BeforeDraw(this);
    drawGridLines();
    const TGridRect sel = selection();
    const bool rowSelect = inForceOptions().contains(goRowSelect);
    const bool focused = gridFocused();
    for (int r = 0; r < rowCount(); ++r) {
        for (int c = 0; c < colCount(); ++c) {
            const TRect rect = cellRect(c, r);
            if (rect.Left >= width() || rect.Top >= height() || rect.width() <= 0 ||
                rect.height() <= 0)
                continue;
            GridDrawState state = 0;
            const bool fixed = c < fixedCols() || r < fixedRows();
            if (fixed) state |= gdFixed;
            if (!fixed && (rowSelect ? (r >= sel.Top && r <= sel.Bottom) : sel.contains(c, r)))
                state |= gdSelected;
            if (focused && c == col() && r == row()) state |= gdFocused;
            drawCell(c, r, rect, state);
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
        renderImage();
    } catch (const std::exception& e) {
        FCanvas = nullptr;
        reportControlFailure(OnFailure, QString::fromUtf8(e.what()));
    }
    QPainter painter(this);
    painter.drawImage(0, 0, FBuffer);
}

void PriceGrid::drawGridLines() {
    TCanvas& cv = *FCanvas;
    const int w = gridWidth();
    const int h = gridHeight();
    const int fixedW = cellRect(fixedCols(), 0).Left;
    const int fixedH = cellRect(0, fixedRows()).Top;
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    for (int c = 0; c < colCount(); ++c) {
        const int lw = vertLineWidth(c);
        if (lw <= 0) continue;
        const int x = cellRect(c, 0).Right;
        const bool fixed = c < fixedCols();
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = fixed ? clBlack : clSilver;
        cv.fillRect(Rect(x, 0, x + lw, fixed ? h : fixedH));
        if (!fixed) {
            cv.Brush.Color = inForceOptions().contains(goVertLine) ? clSilver : color();
            cv.fillRect(Rect(x, fixedH, x + lw, h));
            cv.Brush.Color = inForceOptions().contains(goFixedVertLine) ? clBlack : fixedColor();
            cv.fillRect(Rect(x, 0, x + lw, fixedH));
        }
    }
    for (int r = 0; r < rowCount(); ++r) {
        const int lw = horzLineWidth(r);
        if (lw <= 0) continue;
        const int y = cellRect(0, r).Bottom;
        const bool fixed = r < fixedRows();
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = fixed ? clBlack : clSilver;
        cv.fillRect(Rect(fixed ? 0 : fixedW, y, w, y + lw));
        if (!fixed && fixedW > 0) {
            cv.Brush.Color = inForceOptions().contains(goFixedHorzLine) ? clBlack : fixedColor();
            cv.fillRect(Rect(0, y, fixedW, y + lw));
        }
    }
}

void PriceGrid::saveCanvas() {
    FSaveBrush = FCanvas->Brush;
    FSavePen = FCanvas->Pen;
    FSaveFont = FCanvas->Font;
}

void PriceGrid::resetCanvas() {
    FCanvas->Brush = FSaveBrush;
    FCanvas->Pen = FSavePen;
    FCanvas->Font = FSaveFont;
}

namespace {

QString captionText(const SCGCellParam* p, const QString& S) {
    const QString C = p->caption();
    const QString CR(QChar(13));
    switch (p->captionType()) {
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

void PriceGrid::drawCell(int ACol, int ARow, const TRect& ARect, GridDrawState AState) {
    TCanvas& cv = *FCanvas;
    if (defaultDrawing()) {
        // The plain string grid's own look.
        const bool selected = (AState & gdSelected) && !(AState & gdFocused);
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = (AState & gdFixed) ? fixedColor() : selected ? clHighlight : color();
        cv.fillRect(ARect);
        cv.Font = Font();
        if (selected) cv.Font.Color = clHighlightText;
        cv.Brush.Style = bsClear;
        cv.textRect(ARect, ARect.Left + 2, ARect.Top + 2, cells(ACol, ARow));
        if (AState & gdFocused) drawFocusFrame(ACol, ARow, ARect, true, true);
        return;
    }
    SCGCellParam* p = findCellParam(ACol, ARow, false);
    const GridOptions options = p && p->optionsEnabled() ? p->options() : Options();
    doFillCell(ACol, ARow, AState, p, false);
    const bool focusColors = prepareFocusColors(p, AState);
    saveCanvas();

    int overstrike = 1;
    TAlignment alignment;
    TextLayout layout;
    QString text;
    bool called = false;
    bool reset = true;
    if (!p) {
        const bool fixed = AState & gdFixed;
        alignment = fixed ? fixedAlignment() : Alignment();
        layout = fixed ? fixedLayout() : Layout();
        text = cells(ACol, ARow);
        if (OnOutCellText) {
            OnOutCellText(this, this, ARect, ACol, ARow, FText, text, reset);
            called = true;
        }
    } else {
        overstrike = p->fontWidth();
        alignment = p->alignment();
        layout = p->layout();
        text = captionText(p, cells(ACol, ARow));
        if (p->OnOutCellText) {
            p->OnOutCellText(p, this, ARect, ACol, ARow, p->caption(), text, reset);
            called = true;
        }
    }
    if (called) {
        if (reset)
            resetCanvas();
        else
            saveCanvas();
    }
    if (focusColors) cv.fillRect(ARect);

    if (cellDivide()) {
        drawCellText(ACol, ARow, ARect, AState, p, options, text, alignment, layout, overstrike);
    } else {
        TRect r = Rect(ARect.Left + 2, ARect.Top + 2, ARect.Right - 2, ARect.Bottom - 2);
        cv.drawText(text, r, DT_LEFT | DT_WORDBREAK);
    }

    if (OnDrawCell) OnDrawCell(this, ACol, ARow, ARect, AState);
    if (p && p->OnDrawCell) p->OnDrawCell(p, this, ACol, ARow, ARect, AState);

    if (gridFocused()) {
        const bool rowSelect = options.contains(goRowSelect);
        if (!rowSelect && (AState & gdFocused)) {
            drawFocusFrame(ACol, ARow, ARect, true, true);
        } else if (rowSelect && ARow == row()) {
            int first = fixedCols(), last = colCount() - 1;
            if (p && p->optionsEnabled()) {
                first = p->col();
                last = p->colMax();
            }
            const bool left = ACol == first;
            const bool right = ACol == last && !left;
            drawFocusFrame(ACol, ARow, ARect, left, right);
        }
    }
    if (AState & gdFixed) drawFixedFrame(ARect);
}

void PriceGrid::drawCellText(int ACol, int ARow, const TRect& ARect, GridDrawState AState,
                             SCGCellParam* AParam, GridOptions AOptions, const QString& AText,
                             TAlignment AAlignment, TextLayout ALayout, int AOverstrike) {
    TCanvas& cv = *FCanvas;
    const QString text = AText.isEmpty() ? QString(QChar(13)) : AText;
    FCellTextDrawList = splitTextLines(text);
    const int count = FCellTextDrawList.size();
    const int H = ARect.height() / count;
    const bool fixed = AState & gdFixed;
    for (int i = 0; i < count; ++i) {
        TRect L = ARect;
        L.Top = ARect.Top + i * H;
        L.Bottom = i == count - 1 ? ARect.Bottom : ARect.Top + (i + 1) * H;
        QString line = FCellTextDrawList[i];
        TAlignment alignment = AAlignment;
        TextLayout layout = ALayout;
        bool innerLine = AOptions.contains(goHorzLine);
        if (OnDrawTextOneLine) {
            resetCanvas();
            OnDrawTextOneLine(this, this, L, ACol, ARow, i, AState, line, alignment, layout,
                              innerLine);
        }
        if (AParam && AParam->OnDrawTextOneLine) {
            resetCanvas();
            AParam->OnDrawTextOneLine(AParam, this, L, ACol, ARow, i, AState, line, alignment,
                                      layout, innerLine);
        }
        const int W = cv.textWidth(line);
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
        const int T = cv.textHeight(line);
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
            cv.textRect(L, X + k, Y, line);
        cv.Brush.Style = keep;
        if (innerLine) {
            cv.Pen.Width = 1;
            cv.Pen.Style = psSolid;
            if (i > 0) {
                cv.Pen.Color = fixed && ctl3D() ? clBtnHighlight : rgbColor(192, 192, 192);
                cv.moveTo(L.Left, L.Top);
                cv.lineTo(L.Right, L.Top);
            }
            if (i < count - 1 && fixed) {
                cv.Pen.Color = clBtnShadow;
                cv.moveTo(L.Left, L.Bottom - 1);
                cv.lineTo(L.Right, L.Bottom - 1);
            }
        }
    }
}

void PriceGrid::doFillCell(int ACol, int ARow, GridDrawState AState, SCGCellParam* AParam,
                           bool AUseFocus) {
    TCanvas& cv = *FCanvas;
    const TRect R = cellRect(ACol, ARow);
    if (AParam && !AParam->fontName().isEmpty())
        cv.Font = fonts()[fonts().indexOfName(AParam->fontName())]->font();
    else
        cv.Font = Font();
    if (ACol < fixedCols() || ARow < fixedRows()) AUseFocus = false;
    if (!AParam && (AState & gdFixed)) {
        cv.Brush.Style = bsSolid;
        cv.Brush.Color = fixedColor();
        cv.fillRect(R);
    } else {
        if (AUseFocus) {
            prepareFocusColors(AParam, AState);
            cv.fillRect(R);
        } else if (AParam) {
            cv.Brush.Style = bsSolid;
            cv.Brush.Color = AParam->cellColorEnabled() ? AParam->cellColor()
                             : (AState & gdFixed)       ? fixedColor()
                                                        : color();
            cv.fillRect(R);
            if (AParam->fontColorEnabled()) cv.Font.Color = AParam->fontColor();
        } else {
            cv.Brush.Style = bsSolid;
            cv.Brush.Color = color();
            cv.fillRect(R);
            cv.Font.Color = Font().Color;
        }
        if (AParam && AParam->brushEnabled()) {
            cv.Brush = AParam->brush();
            cv.Pen.Width = 0;
            cv.Pen.Style = psClear;
            cv.rectangle(R.Left, R.Top, R.Right + 1, R.Bottom + 1);
        }
    }
    cv.Brush.Style = bsClear;
    cv.Pen.Style = psSolid;
    cv.Pen.Width = 1;
    cv.Pen.Color = cv.Brush.Color;
    cv.Pen.Mode = pmCopy;
}

void PriceGrid::fillCell(int ACol, int ARow, GridDrawState AState) {
    if (!FCanvas) return;
    doFillCell(ACol, ARow, AState, findCellParam(ACol, ARow, false), true);
}

bool PriceGrid::prepareFocusColors(SCGCellParam* AParam, GridDrawState AState) {
    const GridOptions options =
        AParam && AParam->optionsEnabled() ? AParam->options() : inForceOptions();
    const bool selected = (gridFocused() || focusDraw()) && (AState & gdSelected) &&
                          (options.contains(goDrawFocusSelected) || !(AState & gdFocused) ||
                           options.contains(goRowSelect));
    if (!selected) return false;
    TCanvas& cv = *FCanvas;
    cv.Brush.Color = focusCellColor();
    if (cv.Brush.Style == bsClear) cv.Brush.Style = bsSolid;
    if (focusCellFontColorEnabled())
        cv.Font.Color = focusCellFontColor();
    else if (AParam && AParam->fontColorEnabled())
        cv.Font.Color = AParam->fontColor();
    return true;
}

void PriceGrid::invertFramePixel(int X, int Y) {
    TCanvas& cv = *FCanvas;
    const TColor C = cv.pixel(X, Y);
    if (C == clNone) return;
    TColor N = ~C & 0xFFFFFF;
    const int diff = std::abs(getRValue(C) - getRValue(N)) + std::abs(getGValue(C) - getGValue(N)) +
                     std::abs(getBValue(C) - getBValue(N));
    if (diff < 24) N = clWhite;
    cv.setPixel(X, Y, N);
}

void PriceGrid::drawFocusFrame(int ACol, int ARow, const TRect& ARect, bool ALeftEdge,
                               bool ARightEdge) {
    if (ACol < fixedCols() || ARow < fixedRows()) return;
    TCanvas& cv = *FCanvas;
    cv.Pen.Style = psSolid;
    cv.Brush.Style = bsSolid;
    const TRect R = Rect(ARect.Left, ARect.Top, ARect.Right - 1, ARect.Bottom - 1);
    for (int I = 0; I <= (R.Right - R.Left) / 2; ++I) {
        invertFramePixel(R.Left + 2 * I, R.Top);
        invertFramePixel(R.Left + 2 * I, R.Bottom);
    }
    for (int I = 1; I <= (R.Bottom - R.Top - 1) / 2; ++I) {
        if (ALeftEdge) invertFramePixel(R.Left, R.Top + 2 * I);
        if (ARightEdge) invertFramePixel(R.Right, R.Top + 2 * I);
    }
}

void PriceGrid::drawFixedFrame(const TRect& ARect) {
    if (!ctl3D() || !FCanvas) return;
    TCanvas& cv = *FCanvas;
    cv.Pen.Style = psSolid;
    cv.Pen.Mode = pmCopy;
    cv.Pen.Width = 1;
    cv.Pen.Color = clBtnHighlight;
    cv.moveTo(ARect.Right - 1, ARect.Top);
    cv.lineTo(ARect.Left, ARect.Top);
    cv.lineTo(ARect.Left, ARect.Bottom - 1);
    cv.Pen.Color = clGray;
    cv.lineTo(ARect.Right - 1, ARect.Bottom - 1);
    cv.lineTo(ARect.Right - 1, ARect.Top);
}

// ---------------------------------------------------------------- current cell

bool PriceGrid::selectCell(int ACol, int ARow) {
    bool result = true;
    if (OnSelectCell) OnSelectCell(this, ACol, ARow, result);
    SCGCellParam* newParam = findCellParam(ACol, ARow, false);
    SCGCellParam* oldParam = findCellParam(FOldCol, FOldRow, false);
    if (FEditor) {
        applyCellFontToEditor(newParam);
        setImeModeOf(FEditor,
                     newParam && newParam->imeModeEnabled() ? newParam->imeMode() : imeMode());
    }
    setInForceOptions(newParam && newParam->optionsEnabled() ? newParam->options() : Options());
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

void PriceGrid::loaded() {
    PriceGridModel::loaded();
    FOldCol = col();
    FOldRow = row();
    selectCell(col(), row());
    invalidate();
}

void PriceGrid::doEnter() {
    selectCell(col(), row());
}

void PriceGrid::focusInEvent(QFocusEvent* event) {
    runGuarded(OnFailure, [&] {
        QWidget::focusInEvent(event);
        doEnter();
        update();
    });
}

void PriceGrid::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

// ---------------------------------------------------------------- keyboard and mouse

void PriceGrid::moveBy(int dCol, int dRow, bool extend) {
    const bool range = extend && inForceOptions().contains(goRangeSelect);
    focusCell(col() + dCol, row() + dRow, !range);
}

bool PriceGrid::gridKey(int key, ShiftState shift) {
    const bool extend = shift & ssShift;
    const int page = std::max(1, (height() / std::max(1, defaultRowHeight())) - fixedRows());
    switch (key) {
    case VK_LEFT:
        moveBy(-1, 0, extend);
        return true;
    case VK_RIGHT:
        moveBy(1, 0, extend);
        return true;
    case VK_UP:
        moveBy(0, -1, extend);
        return true;
    case VK_DOWN:
        moveBy(0, 1, extend);
        return true;
    case VK_PRIOR:
        moveBy(0, -page, extend);
        return true;
    case VK_NEXT:
        moveBy(0, page, extend);
        return true;
    case VK_HOME:
        focusCell(fixedCols(), row(), !extend);
        return true;
    case VK_END:
        focusCell(colCount() - 1, row(), !extend);
        return true;
    case VK_TAB:
        if (!inForceOptions().contains(goTabs)) return false;
        moveBy((shift & ssShift) ? -1 : 1, 0, false);
        return true;
    case VK_F1 + 1: // F2
        showEditor();
        return true;
    default:
        return false;
    }
}

void PriceGrid::keyPressEvent(QKeyEvent* event) {
    runGuarded(OnFailure, [&] {
        const int code = virtualKeyOf(event);
        int key = code;
        const ShiftState shift = shiftStateOf(event->modifiers());
        // A handler that raises ends the key here.
        if (OnKeyDown) OnKeyDown(this, key, shift);
        if (key == 0 && code != 0) return;
        if (gridKey(key, shift)) return;
        if (key == VK_BACK && !editorMode() && inForceOptions().contains(goEditing) &&
            !(shift & (ssCtrl | ssAlt))) {
            // Backspace goes into the cell like a typed character: the editor
            // opens with the whole text selected, and the key deletes it.
            showEditor();
            if (editorMode() && !FEditor->text().isEmpty()) {
                FEditor->clear();
                editorTextEdited(QString());
            }
            return;
        }
        const QString text = event->text();
        if (!editorMode() && inForceOptions().contains(goEditing) && text.size() == 1 &&
            text.at(0).isPrint() && !(shift & (ssCtrl | ssAlt))) {
            showEditor();
            if (editorMode()) {
                FEditor->setText(text);
                editorTextEdited(text);
            }
            return;
        }
        QWidget::keyPressEvent(event);
    });
}

int PriceGrid::columnBorderAt(int x, int y) const {
    if (!inForceOptions().contains(goColSizing) || fixedRows() == 0) return -1;
    if (y >= cellRect(0, fixedRows()).Top) return -1;
    for (int c = 0; c < colCount(); ++c) {
        const int right = cellRect(c, 0).Right;
        if (std::abs(x - right) <= 2) return c;
    }
    return -1;
}

void PriceGrid::mousePressEvent(QMouseEvent* event) {
    runGuarded(OnFailure, [&] {
        if (event->button() != Qt::LeftButton) return;
        setFocus(Qt::MouseFocusReason);
        const QPoint pos = event->position().toPoint();
        const int border = columnBorderAt(pos.x(), pos.y());
        if (border >= 0) {
            FSizingCol = border;
            FSizingStartX = pos.x();
            FSizingStartWidth = colWidths(border);
            return;
        }
        int c, r;
        if (!mouseToCell(pos.x(), pos.y(), c, r)) return;
        if (c < fixedCols() || r < fixedRows()) return;
        const bool extend = event->modifiers().testFlag(Qt::ShiftModifier) &&
                            inForceOptions().contains(goRangeSelect);
        focusCell(c, r, !extend);
        FSelecting = inForceOptions().contains(goRangeSelect);
    });
}

void PriceGrid::mouseMoveEvent(QMouseEvent* event) {
    runGuarded(OnFailure, [&] {
        const QPoint pos = event->position().toPoint();
        if (FSizingCol >= 0) {
            setColWidths(FSizingCol, std::max(0, FSizingStartWidth + pos.x() - FSizingStartX));
            return;
        }
        setCursor(columnBorderAt(pos.x(), pos.y()) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
        if (!FSelecting || !(event->buttons() & Qt::LeftButton)) return;
        int c, r;
        if (!mouseToCell(pos.x(), pos.y(), c, r)) return;
        c = std::max(c, fixedCols());
        r = std::max(r, fixedRows());
        if (c != col() || r != row()) focusCell(c, r, false);
    });
}

void PriceGrid::mouseReleaseEvent(QMouseEvent* event) {
    Q_UNUSED(event);
    FSelecting = false;
    FSizingCol = -1;
}

void PriceGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    runGuarded(OnFailure, [&] {
        if (event->button() != Qt::LeftButton) return;
        const QPoint pos = event->position().toPoint();
        int c, r;
        if (!mouseToCell(pos.x(), pos.y(), c, r)) return;
        if (c == col() && r == row()) showEditor();
    });
}
