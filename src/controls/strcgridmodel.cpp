#include "controls/strcgridmodel.h"

namespace {

const char* const kPositionError = "ｾﾙ位置がｸﾞﾘｯﾄﾞの範囲を超えました。";
const char* const kIndexError = "ｲﾝﾃﾞｯｸｽが範囲を超えました。";
const char* const kRangeError = "範囲が不正です";
const char* const kFontNotRegistered =
    "CellParams で指定されたフォント名が Fonts に登録されていません";

QString u8(const char* text) {
    return QString::fromUtf8(text);
}

[[noreturn]] void listIndexError(int index) {
    throw ControlRangeError(QStringLiteral("List index out of bounds (%1)").arg(index));
}

} // namespace

// ---------------------------------------------------------------- SCGCellParam

SCGCellParam::SCGCellParam(SCGCellParams* ACollection) : FCollection(ACollection) {
    if (FCollection && FCollection->Owner()) FOptions = FCollection->Owner()->Options();
}

SCGCellParam::~SCGCellParam() = default;

int SCGCellParam::Index() const {
    return FCollection ? FCollection->IndexOf(this) : -1;
}

void SCGCellParam::Assign(const SCGCellParam& source) {
    if (&source == this) return;
    FAlignment = source.FAlignment;
    FCol = source.FCol;
    FColMax = source.FColMax;
    FCaption = source.FCaption;
    FCaptionType = source.FCaptionType;
    FCellColor = source.FCellColor;
    FCellColorEnabled = source.FCellColorEnabled;
    FBrush = source.FBrush;
    FBrushEnabled = source.FBrushEnabled;
    FFontName = source.FFontName;
    FFontColor = source.FFontColor;
    FFontColorEnabled = source.FFontColorEnabled;
    FFontWidth = source.FFontWidth;
    FImeMode = source.FImeMode;
    FImeModeEnabled = source.FImeModeEnabled;
    FLayout = source.FLayout;
    FName = source.FName;
    FOptions = source.FOptions;
    FOptionsEnabled = source.FOptionsEnabled;
    FRangeEnabled = source.FRangeEnabled;
    FRow = source.FRow;
    FRowMax = source.FRowMax;
    FTag = source.FTag;
    OnEnterCell = source.OnEnterCell;
    OnExitCell = source.OnExitCell;
    OnEnterCol = source.OnEnterCol;
    OnExitCol = source.OnExitCol;
    OnEnterRow = source.OnEnterRow;
    OnExitRow = source.OnExitRow;
    OnOutCellText = source.OnOutCellText;
    OnDrawTextOneLine = source.OnDrawTextOneLine;
    OnDrawCell = source.OnDrawCell;
    Changed();
}

QString SCGCellParam::GetDisplayName() const {
    return QString::asprintf("%s (%3d,%3d)-(%3d,%3d)", FName.toUtf8().constData(), FCol, FRow,
                             FColMax, FRowMax);
}

QString SCGCellParam::Failure(const char* text) const {
    return GetDisplayName() + u8(text);
}

void SCGCellParam::Changed() {
    if (FCollection) FCollection->Update(this);
}

bool SCGCellParam::GridLoading() const {
    return FCollection && FCollection->Owner() && FCollection->Owner()->IsLoading();
}

bool SCGCellParam::Governs(int col, int row) const {
    if (FRangeEnabled) return FCol <= col && col <= FColMax && FRow <= row && row <= FRowMax;
    return FCol == col && FRow == row;
}

void SCGCellParam::SetAlignment(TAlignment value) {
    FAlignment = value;
    Changed();
}

void SCGCellParam::SetCol(int value) {
    if (value < 0) throw ControlRangeError(Failure(".Col の値が 0 を下まわりました"));
    const int old = FCol;
    FCol = value;
    try {
        SetRangeEnabled(FRangeEnabled);
    } catch (...) {
        FCol = old;
        throw;
    }
    Changed();
}

void SCGCellParam::SetColMax(int value) {
    const int old = FColMax;
    FColMax = value;
    try {
        SetRangeEnabled(FRangeEnabled);
    } catch (...) {
        FColMax = old;
        throw;
    }
    Changed();
}

void SCGCellParam::SetRow(int value) {
    if (value < 0) throw ControlRangeError(Failure(".Row の値が 0 を下まわりました"));
    const int old = FRow;
    FRow = value;
    try {
        SetRangeEnabled(FRangeEnabled);
    } catch (...) {
        FRow = old;
        throw;
    }
    Changed();
}

void SCGCellParam::SetRowMax(int value) {
    const int old = FRowMax;
    FRowMax = value;
    try {
        SetRangeEnabled(FRangeEnabled);
    } catch (...) {
        FRowMax = old;
        throw;
    }
    Changed();
}

void SCGCellParam::SetRangeEnabled(bool value) {
    if (value && !GridLoading() && (FCol > FColMax || FRow > FRowMax))
        throw ControlRangeError(u8(kRangeError));
    FRangeEnabled = value;
    Changed();
}

void SCGCellParam::SetCaption(const QString& value) {
    FCaption = value;
    Changed();
}

void SCGCellParam::SetCaptionType(SCGCellCaptionType value) {
    FCaptionType = value;
    Changed();
}

void SCGCellParam::SetCellColor(TColor value) {
    FCellColor = value;
    Changed();
}

void SCGCellParam::SetCellColorEnabled(bool value) {
    FCellColorEnabled = value;
    Changed();
}

void SCGCellParam::SetBrush(const TBrush& value) {
    FBrush = value;
    Changed();
}

void SCGCellParam::SetBrushStyle(TBrushStyle value) {
    FBrush.Style = value;
    Changed();
}

void SCGCellParam::SetBrushColor(TColor value) {
    FBrush.Color = value;
    Changed();
}

void SCGCellParam::SetBrushEnabled(bool value) {
    FBrushEnabled = value;
    Changed();
}

void SCGCellParam::SetFontName(const QString& value) {
    FFontName = value;
    if (!value.isEmpty() && !GridLoading() && FCollection && FCollection->Owner()) {
        try {
            FCollection->Owner()->Fonts().IndexOfName(value);
        } catch (const ControlError&) {
            FFontName.clear();
        }
    }
    Changed();
}

void SCGCellParam::SetFontColor(TColor value) {
    FFontColor = value;
    Changed();
}

void SCGCellParam::SetFontColorEnabled(bool value) {
    FFontColorEnabled = value;
    Changed();
}

void SCGCellParam::SetFontWidth(int value) {
    if (value < 0) throw ControlRangeError(Failure(".FontWidth の値が範囲を超えました"));
    FFontWidth = value;
    Changed();
}

void SCGCellParam::SetLayout(TextLayout value) {
    FLayout = value;
    Changed();
}

void SCGCellParam::SetOptions(GridOptions value) {
    FOptions = value;
    Changed();
}

void SCGCellParam::SetOptionsEnabled(bool value) {
    FOptionsEnabled = value;
    Changed();
}

// ---------------------------------------------------------------- SCGCellParams

SCGCellParams::SCGCellParams(PriceGridModel* AOwner) : FOwner(AOwner) {}

SCGCellParams::~SCGCellParams() = default;

SCGCellParam* SCGCellParams::Add() {
    FItems.push_back(std::make_unique<SCGCellParam>(this));
    SCGCellParam* item = FItems.back().get();
    item->SetName(u8("パラメータ") + QString::number(Count()));
    return item;
}

void SCGCellParams::Delete(int index) {
    if (index < 0 || index >= Count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void SCGCellParams::Clear() {
    FItems.clear();
}

int SCGCellParams::IndexOf(const SCGCellParam* item) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

SCGCellParam* SCGCellParams::GetPropertyItem(int index) const {
    if (index < 0 || index >= Count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void SCGCellParams::SetPropertyItem(int index, const SCGCellParam& value) {
    GetPropertyItem(index)->Assign(value);
}

SCGCellParam* SCGCellParams::ItemByName(const QString& AName) const {
    for (int i = Count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->Name() == AName) return FItems[std::size_t(i)].get();
    throw ControlRangeError(AName + u8(" はセルパラメータの中にありません"));
}

SCGCellParam* SCGCellParams::ItemByPos(int ACol, int ARow) const {
    for (int i = Count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->Governs(ACol, ARow)) return FItems[std::size_t(i)].get();
    throw ControlRangeError(
        QString::asprintf("列 %d, 行%d にはセルパラメータがありません", ACol, ARow));
}

void SCGCellParams::Assign(const SCGCellParams& source) {
    if (&source == this) return;
    Clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<SCGCellParam>(this));
        FItems.back()->Assign(*item);
    }
}

void SCGCellParams::Update(SCGCellParam* item) {
    // At run time a change of an entry repaints nothing: the caller asks
    // for the repaint.
    Q_UNUSED(item);
}

// ---------------------------------------------------------------- SCGCellFont

SCGCellFont::SCGCellFont(SCGCellFonts* ACollection) : FCollection(ACollection) {
    if (FCollection && FCollection->Owner()) FFont = FCollection->Owner()->Font();
}

SCGCellFont::~SCGCellFont() {
    if (!FCollection || !FCollection->Owner()) return;
    SCGCellParams& params = FCollection->Owner()->CellParams();
    for (int i = 0; i < params.Count(); ++i)
        if (params[i]->FFontName == FName && !FName.isEmpty()) params[i]->FFontName.clear();
}

int SCGCellFont::Index() const {
    return FCollection ? FCollection->IndexOf(this) : -1;
}

void SCGCellFont::SetFont(const FontSpec& value) {
    FFont = value;
}

void SCGCellFont::SetName(const QString& value) {
    if (value.isEmpty()) throw ControlError(u8("フォント名は空にできません"));
    const bool loading = FCollection && FCollection->Owner() && FCollection->Owner()->IsLoading();
    if (!loading && FCollection) {
        for (int i = 0; i < FCollection->Count(); ++i)
            if (FCollection->GetPropertyItem(i)->Name() == value)
                throw ControlError(u8("このフォント名はすでに使用されています"));
    }
    const QString old = FName;
    FName = value;
    if (FCollection && FCollection->Owner() && !old.isEmpty()) {
        SCGCellParams& params = FCollection->Owner()->CellParams();
        for (int i = 0; i < params.Count(); ++i)
            if (params[i]->FFontName == old) params[i]->FFontName = value;
    }
}

void SCGCellFont::Assign(const SCGCellFont& source) {
    FFont = source.FFont;
    FName = source.FName;
}

QString SCGCellFont::GetDisplayName() const {
    return QStringLiteral("%1( %2, %3 )").arg(FName, FFont.Name()).arg(FFont.Size());
}

// ---------------------------------------------------------------- SCGCellFonts

SCGCellFonts::SCGCellFonts(PriceGridModel* AOwner) : FOwner(AOwner) {}

SCGCellFonts::~SCGCellFonts() {
    Clear();
}

SCGCellFont* SCGCellFonts::Add() {
    FItems.push_back(std::make_unique<SCGCellFont>(this));
    SCGCellFont* item = FItems.back().get();
    item->FName = u8("フォント") + QString::number(Count());
    return item;
}

void SCGCellFonts::Delete(int index) {
    if (index < 0 || index >= Count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void SCGCellFonts::Clear() {
    while (!FItems.empty())
        FItems.pop_back();
}

int SCGCellFonts::IndexOf(const SCGCellFont* item) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

SCGCellFont* SCGCellFonts::GetPropertyItem(int index) const {
    if (index < 0 || index >= Count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void SCGCellFonts::SetPropertyItem(int index, const SCGCellFont& value) {
    GetPropertyItem(index)->Assign(value);
}

int SCGCellFonts::IndexOfName(const QString& AFontName) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)]->Name() == AFontName) return i;
    throw ControlError(u8(kFontNotRegistered));
}

void SCGCellFonts::Assign(const SCGCellFonts& source) {
    if (&source == this) return;
    Clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<SCGCellFont>(this));
        FItems.back()->Assign(*item);
    }
}

// ---------------------------------------------------------------- PriceGridModel

PriceGridModel::PriceGridModel()
    : FCellParams(std::make_unique<SCGCellParams>(this)),
      FFonts(std::make_unique<SCGCellFonts>(this)) {
    SetInForceOptions(FInsideOptions);
    SetDefaultDrawing(false);
}

PriceGridModel::~PriceGridModel() {
    // Fonts first: a destroyed font clears the names in the entries.
    FFonts->Clear();
}

void PriceGridModel::SetFocusCellColor(TColor value) {
    FFocusCellColor = value;
    Invalidate();
}

void PriceGridModel::SetFocusCellFontColor(TColor value) {
    FFocusCellFontColor = value;
    Invalidate();
}

void PriceGridModel::SetFocusCellFontColorEnabled(bool value) {
    FFocusCellFontColorEnabled = value;
    Invalidate();
}

void PriceGridModel::SetImeMode(TImeMode value) {
    FImeMode = value;
    ApplyImeMode();
}

void PriceGridModel::SetOptions(GridOptions value) {
    FInsideOptions = value;
    SetInForceOptions(value);
}

SCGCellParam* PriceGridModel::FindCellParam(int ACol, int ARow, bool ACreate) {
    for (int i = FCellParams->Count() - 1; i >= 0; --i) {
        SCGCellParam* p = FCellParams->GetPropertyItem(i);
        if (p->Governs(ACol, ARow)) return p;
    }
    if (!ACreate) return nullptr;
    SCGCellParam* p = FCellParams->Add();
    p->SetCaption(QString());
    p->SetFontColor(Font().Color);
    p->SetCellColor(ACol >= FixedCols() && ARow >= FixedRows() ? Color() : FixedColor());
    p->SetCellColorEnabled(true);
    p->SetFontColorEnabled(true);
    p->SetCol(ACol);
    p->SetRow(ARow);
    return p;
}

const SCGCellParam* PriceGridModel::FindCellParam(int ACol, int ARow) const {
    for (int i = FCellParams->Count() - 1; i >= 0; --i) {
        const SCGCellParam* p = FCellParams->GetPropertyItem(i);
        if (p->Governs(ACol, ARow)) return p;
    }
    return nullptr;
}

void PriceGridModel::CheckCellPos(int ACol, int ARow) const {
    if (ACol < 0 || ARow < 0 || ACol > ColCount() || ARow > RowCount())
        throw ControlRangeError(u8(kPositionError));
}

void PriceGridModel::ClearAllCellParams() {
    FCellParams->Clear();
    FFonts->Clear();
}

CellDrawParams PriceGridModel::GetDefaultCellParams(int ACol, int ARow) const {
    CellDrawParams d;
    d.Col = ACol;
    d.Row = ARow;
    d.Alignment = FAlignment;
    d.FontColor = Font().Color;
    d.FontWidth = 1;
    d.BackColor = ACol >= FixedCols() && ARow >= FixedRows() ? Color() : FixedColor();
    d.BrushEnabled = false;
    d.BrushStyle = bsClear;
    d.BrushColor = Color();
    d.FontIndex = -1;
    return d;
}

CellDrawParams PriceGridModel::GetCellParams(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    if (!p) return GetDefaultCellParams(ACol, ARow);
    CellDrawParams d;
    d.Col = ACol;
    d.Row = ARow;
    d.Alignment = p->Alignment();
    d.FontColor = p->FontColor();
    d.FontWidth = p->FontWidth();
    d.BackColor = p->CellColor();
    d.BrushEnabled = p->BrushEnabled();
    d.BrushStyle = p->Brush().Style;
    d.BrushColor = p->Brush().Color;
    d.FontIndex = p->FontName().isEmpty() ? -1 : FFonts->IndexOfName(p->FontName());
    return d;
}

void PriceGridModel::SetCellParams(const CellDrawParams& AValue) {
    CheckCellPos(AValue.Col, AValue.Row);
    SCGCellParam* p = FindCellParam(AValue.Col, AValue.Row, true);
    p->SetCol(AValue.Col);
    p->SetRow(AValue.Row);
    p->SetAlignment(AValue.Alignment);
    p->SetFontColor(AValue.FontColor);
    p->SetFontColorEnabled(true);
    p->SetFontWidth(AValue.FontWidth);
    p->SetCellColor(AValue.BackColor);
    p->SetCellColorEnabled(true);
    p->SetBrushEnabled(AValue.BrushEnabled);
    p->SetBrushStyle(AValue.BrushStyle);
    p->SetBrushColor(AValue.BrushColor);
    p->SetFontName(AValue.FontIndex == -1 ? QString()
                                          : FFonts->GetPropertyItem(AValue.FontIndex)->Name());
}

void PriceGridModel::AddFont(const FontSpec& AFont) {
    FFonts->Add()->SetFont(AFont);
}

void PriceGridModel::DeleteFont(int AIndex) {
    if (AIndex < 0 || AIndex >= FFonts->Count()) throw ControlRangeError(u8(kIndexError));
    const QString name = FFonts->GetPropertyItem(AIndex)->Name();
    for (int i = 0; i < FCellParams->Count(); ++i)
        if (FCellParams->GetPropertyItem(i)->FontName() == name)
            throw ControlError(u8("使用中のﾌｫﾝﾄを削除しようとしました。"));
    FFonts->Delete(AIndex);
}

TAlignment PriceGridModel::GetCellAlignments(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Alignment() : FAlignment;
}

void PriceGridModel::SetCellAlignments(int ACol, int ARow, TAlignment AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetAlignment(AValue);
}

TColor PriceGridModel::GetCellFontColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->FontColor() : Font().Color;
}

void PriceGridModel::SetCellFontColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetFontColor(AValue);
}

int PriceGridModel::GetCellFontWidths(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->FontWidth() : 1;
}

void PriceGridModel::SetCellFontWidths(int ACol, int ARow, int AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetFontWidth(AValue);
}

TColor PriceGridModel::GetCellColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->CellColor() : Color();
}

void PriceGridModel::SetCellColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    SCGCellParam* p = FindCellParam(ACol, ARow, true);
    p->SetCellColor(AValue);
    p->SetCellColorEnabled(true);
}

bool PriceGridModel::GetCellBrushEnabled(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->BrushEnabled() : false;
}

void PriceGridModel::SetCellBrushEnabled(int ACol, int ARow, bool AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushEnabled(AValue);
}

TBrushStyle PriceGridModel::GetCellBrushStyles(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Brush().Style : FCanvasBrushStyle;
}

void PriceGridModel::SetCellBrushStyles(int ACol, int ARow, TBrushStyle AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushStyle(AValue);
}

TColor PriceGridModel::GetCellBrushColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Brush().Color : Color();
}

void PriceGridModel::SetCellBrushColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushColor(AValue);
}

int PriceGridModel::GetCellFonts(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const SCGCellParam* p = FindCellParam(ACol, ARow);
    if (!p || p->FontName().isEmpty()) return -1;
    return FFonts->IndexOfName(p->FontName());
}

void PriceGridModel::SetCellFonts(int ACol, int ARow, int AValue) {
    CheckCellPos(ACol, ARow);
    if (AValue < -1 || AValue >= FFonts->Count()) throw ControlRangeError(u8(kIndexError));
    SCGCellParam* p = FindCellParam(ACol, ARow, true);
    p->SetFontName(AValue == -1 ? QString() : FFonts->GetPropertyItem(AValue)->Name());
}

QString PriceGridModel::GetPropertyCellLines(int ACol, int ARow, int AIndex) const {
    CheckCellPos(ACol, ARow);
    const QStringList lines = SplitTextLines(Cells(ACol, ARow));
    return AIndex >= 0 && AIndex < lines.size() ? lines[AIndex] : QString();
}

void PriceGridModel::SetPropertyCellLines(int ACol, int ARow, int AIndex, const QString& AValue) {
    CheckCellPos(ACol, ARow);
    if (AIndex < 0) throw ControlRangeError(u8(kIndexError));
    QStringList lines = SplitTextLines(Cells(ACol, ARow));
    while (lines.size() <= AIndex)
        lines << QString();
    lines[AIndex] = AValue;
    SetCells(ACol, ARow, JoinTextLines(lines));
}
