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
    throw EControlRangeError(QStringLiteral("List index out of bounds (%1)").arg(index));
}

} // namespace

// ---------------------------------------------------------------- TSCGCellParam

TSCGCellParam::TSCGCellParam(TSCGCellParams* ACollection) : FCollection(ACollection) {
    if (FCollection && FCollection->Owner()) FOptions = FCollection->Owner()->Options();
}

TSCGCellParam::~TSCGCellParam() = default;

int TSCGCellParam::Index() const {
    return FCollection ? FCollection->IndexOf(this) : -1;
}

void TSCGCellParam::Assign(const TSCGCellParam& source) {
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

QString TSCGCellParam::GetDisplayName() const {
    return QString::asprintf("%s (%3d,%3d)-(%3d,%3d)", FName.toUtf8().constData(), FCol, FRow,
                             FColMax, FRowMax);
}

QString TSCGCellParam::Failure(const char* text) const {
    return GetDisplayName() + u8(text);
}

void TSCGCellParam::Changed() {
    if (FCollection) FCollection->Update(this);
}

bool TSCGCellParam::GridLoading() const {
    return FCollection && FCollection->Owner() && FCollection->Owner()->IsLoading();
}

bool TSCGCellParam::Governs(int col, int row) const {
    if (FRangeEnabled) return FCol <= col && col <= FColMax && FRow <= row && row <= FRowMax;
    return FCol == col && FRow == row;
}

void TSCGCellParam::SetAlignment(TAlignment value) {
    FAlignment = value;
    Changed();
}

void TSCGCellParam::SetCol(int value) {
    if (value < 0) throw EControlRangeError(Failure(".Col の値が 0 を下まわりました"));
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

void TSCGCellParam::SetColMax(int value) {
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

void TSCGCellParam::SetRow(int value) {
    if (value < 0) throw EControlRangeError(Failure(".Row の値が 0 を下まわりました"));
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

void TSCGCellParam::SetRowMax(int value) {
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

void TSCGCellParam::SetRangeEnabled(bool value) {
    if (value && !GridLoading() && (FCol > FColMax || FRow > FRowMax))
        throw EControlRangeError(u8(kRangeError));
    FRangeEnabled = value;
    Changed();
}

void TSCGCellParam::SetCaption(const QString& value) {
    FCaption = value;
    Changed();
}

void TSCGCellParam::SetCaptionType(TSCGCellCaptionType value) {
    FCaptionType = value;
    Changed();
}

void TSCGCellParam::SetCellColor(TColor value) {
    FCellColor = value;
    Changed();
}

void TSCGCellParam::SetCellColorEnabled(bool value) {
    FCellColorEnabled = value;
    Changed();
}

void TSCGCellParam::SetBrush(const TBrush& value) {
    FBrush = value;
    Changed();
}

void TSCGCellParam::SetBrushStyle(TBrushStyle value) {
    FBrush.Style = value;
    Changed();
}

void TSCGCellParam::SetBrushColor(TColor value) {
    FBrush.Color = value;
    Changed();
}

void TSCGCellParam::SetBrushEnabled(bool value) {
    FBrushEnabled = value;
    Changed();
}

void TSCGCellParam::SetFontName(const QString& value) {
    FFontName = value;
    if (!value.isEmpty() && !GridLoading() && FCollection && FCollection->Owner()) {
        try {
            FCollection->Owner()->Fonts().IndexOfName(value);
        } catch (const EControlError&) {
            FFontName.clear();
        }
    }
    Changed();
}

void TSCGCellParam::SetFontColor(TColor value) {
    FFontColor = value;
    Changed();
}

void TSCGCellParam::SetFontColorEnabled(bool value) {
    FFontColorEnabled = value;
    Changed();
}

void TSCGCellParam::SetFontWidth(int value) {
    if (value < 0) throw EControlRangeError(Failure(".FontWidth の値が範囲を超えました"));
    FFontWidth = value;
    Changed();
}

void TSCGCellParam::SetLayout(TTextLayout value) {
    FLayout = value;
    Changed();
}

void TSCGCellParam::SetOptions(TGridOptions value) {
    FOptions = value;
    Changed();
}

void TSCGCellParam::SetOptionsEnabled(bool value) {
    FOptionsEnabled = value;
    Changed();
}

// ---------------------------------------------------------------- TSCGCellParams

TSCGCellParams::TSCGCellParams(PriceGridModel* AOwner) : FOwner(AOwner) {}

TSCGCellParams::~TSCGCellParams() = default;

TSCGCellParam* TSCGCellParams::Add() {
    FItems.push_back(std::make_unique<TSCGCellParam>(this));
    TSCGCellParam* item = FItems.back().get();
    item->SetName(u8("パラメータ") + QString::number(Count()));
    return item;
}

void TSCGCellParams::Delete(int index) {
    if (index < 0 || index >= Count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void TSCGCellParams::Clear() {
    FItems.clear();
}

int TSCGCellParams::IndexOf(const TSCGCellParam* item) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

TSCGCellParam* TSCGCellParams::GetPropertyItem(int index) const {
    if (index < 0 || index >= Count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void TSCGCellParams::SetPropertyItem(int index, const TSCGCellParam& value) {
    GetPropertyItem(index)->Assign(value);
}

TSCGCellParam* TSCGCellParams::ItemByName(const QString& AName) const {
    for (int i = Count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->Name() == AName) return FItems[std::size_t(i)].get();
    throw EControlRangeError(AName + u8(" はセルパラメータの中にありません"));
}

TSCGCellParam* TSCGCellParams::ItemByPos(int ACol, int ARow) const {
    for (int i = Count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->Governs(ACol, ARow)) return FItems[std::size_t(i)].get();
    throw EControlRangeError(
        QString::asprintf("列 %d, 行%d にはセルパラメータがありません", ACol, ARow));
}

void TSCGCellParams::Assign(const TSCGCellParams& source) {
    if (&source == this) return;
    Clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<TSCGCellParam>(this));
        FItems.back()->Assign(*item);
    }
}

void TSCGCellParams::Update(TSCGCellParam* item) {
    // At run time a change of an entry repaints nothing: the caller asks
    // for the repaint.
    Q_UNUSED(item);
}

// ---------------------------------------------------------------- TSCGCellFont

TSCGCellFont::TSCGCellFont(TSCGCellFonts* ACollection) : FCollection(ACollection) {
    if (FCollection && FCollection->Owner()) FFont = FCollection->Owner()->Font();
}

TSCGCellFont::~TSCGCellFont() {
    if (!FCollection || !FCollection->Owner()) return;
    TSCGCellParams& params = FCollection->Owner()->CellParams();
    for (int i = 0; i < params.Count(); ++i)
        if (params[i]->FFontName == FName && !FName.isEmpty()) params[i]->FFontName.clear();
}

int TSCGCellFont::Index() const {
    return FCollection ? FCollection->IndexOf(this) : -1;
}

void TSCGCellFont::SetFont(const FontSpec& value) {
    FFont = value;
}

void TSCGCellFont::SetName(const QString& value) {
    if (value.isEmpty()) throw EControlError(u8("フォント名は空にできません"));
    const bool loading = FCollection && FCollection->Owner() && FCollection->Owner()->IsLoading();
    if (!loading && FCollection) {
        for (int i = 0; i < FCollection->Count(); ++i)
            if (FCollection->GetPropertyItem(i)->Name() == value)
                throw EControlError(u8("このフォント名はすでに使用されています"));
    }
    const QString old = FName;
    FName = value;
    if (FCollection && FCollection->Owner() && !old.isEmpty()) {
        TSCGCellParams& params = FCollection->Owner()->CellParams();
        for (int i = 0; i < params.Count(); ++i)
            if (params[i]->FFontName == old) params[i]->FFontName = value;
    }
}

void TSCGCellFont::Assign(const TSCGCellFont& source) {
    FFont = source.FFont;
    FName = source.FName;
}

QString TSCGCellFont::GetDisplayName() const {
    return QStringLiteral("%1( %2, %3 )").arg(FName, FFont.Name()).arg(FFont.Size());
}

// ---------------------------------------------------------------- TSCGCellFonts

TSCGCellFonts::TSCGCellFonts(PriceGridModel* AOwner) : FOwner(AOwner) {}

TSCGCellFonts::~TSCGCellFonts() {
    Clear();
}

TSCGCellFont* TSCGCellFonts::Add() {
    FItems.push_back(std::make_unique<TSCGCellFont>(this));
    TSCGCellFont* item = FItems.back().get();
    item->FName = u8("フォント") + QString::number(Count());
    return item;
}

void TSCGCellFonts::Delete(int index) {
    if (index < 0 || index >= Count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void TSCGCellFonts::Clear() {
    while (!FItems.empty())
        FItems.pop_back();
}

int TSCGCellFonts::IndexOf(const TSCGCellFont* item) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

TSCGCellFont* TSCGCellFonts::GetPropertyItem(int index) const {
    if (index < 0 || index >= Count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void TSCGCellFonts::SetPropertyItem(int index, const TSCGCellFont& value) {
    GetPropertyItem(index)->Assign(value);
}

int TSCGCellFonts::IndexOfName(const QString& AFontName) const {
    for (int i = 0; i < Count(); ++i)
        if (FItems[std::size_t(i)]->Name() == AFontName) return i;
    throw EControlError(u8(kFontNotRegistered));
}

void TSCGCellFonts::Assign(const TSCGCellFonts& source) {
    if (&source == this) return;
    Clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<TSCGCellFont>(this));
        FItems.back()->Assign(*item);
    }
}

// ---------------------------------------------------------------- PriceGridModel

PriceGridModel::PriceGridModel()
    : FCellParams(std::make_unique<TSCGCellParams>(this)),
      FFonts(std::make_unique<TSCGCellFonts>(this)) {
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

void PriceGridModel::SetOptions(TGridOptions value) {
    FInsideOptions = value;
    SetInForceOptions(value);
}

TSCGCellParam* PriceGridModel::FindCellParam(int ACol, int ARow, bool ACreate) {
    for (int i = FCellParams->Count() - 1; i >= 0; --i) {
        TSCGCellParam* p = FCellParams->GetPropertyItem(i);
        if (p->Governs(ACol, ARow)) return p;
    }
    if (!ACreate) return nullptr;
    TSCGCellParam* p = FCellParams->Add();
    p->SetCaption(QString());
    p->SetFontColor(Font().Color);
    p->SetCellColor(ACol >= FixedCols() && ARow >= FixedRows() ? Color() : FixedColor());
    p->SetCellColorEnabled(true);
    p->SetFontColorEnabled(true);
    p->SetCol(ACol);
    p->SetRow(ARow);
    return p;
}

const TSCGCellParam* PriceGridModel::FindCellParam(int ACol, int ARow) const {
    for (int i = FCellParams->Count() - 1; i >= 0; --i) {
        const TSCGCellParam* p = FCellParams->GetPropertyItem(i);
        if (p->Governs(ACol, ARow)) return p;
    }
    return nullptr;
}

void PriceGridModel::CheckCellPos(int ACol, int ARow) const {
    if (ACol < 0 || ARow < 0 || ACol > ColCount() || ARow > RowCount())
        throw EControlRangeError(u8(kPositionError));
}

void PriceGridModel::ClearAllCellParams() {
    FCellParams->Clear();
    FFonts->Clear();
}

TCellDrawParams PriceGridModel::GetDefaultCellParams(int ACol, int ARow) const {
    TCellDrawParams d;
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

TCellDrawParams PriceGridModel::GetCellParams(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    if (!p) return GetDefaultCellParams(ACol, ARow);
    TCellDrawParams d;
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

void PriceGridModel::SetCellParams(const TCellDrawParams& AValue) {
    CheckCellPos(AValue.Col, AValue.Row);
    TSCGCellParam* p = FindCellParam(AValue.Col, AValue.Row, true);
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
    if (AIndex < 0 || AIndex >= FFonts->Count()) throw EControlRangeError(u8(kIndexError));
    const QString name = FFonts->GetPropertyItem(AIndex)->Name();
    for (int i = 0; i < FCellParams->Count(); ++i)
        if (FCellParams->GetPropertyItem(i)->FontName() == name)
            throw EControlError(u8("使用中のﾌｫﾝﾄを削除しようとしました。"));
    FFonts->Delete(AIndex);
}

TAlignment PriceGridModel::GetCellAlignments(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Alignment() : FAlignment;
}

void PriceGridModel::SetCellAlignments(int ACol, int ARow, TAlignment AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetAlignment(AValue);
}

TColor PriceGridModel::GetCellFontColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->FontColor() : Font().Color;
}

void PriceGridModel::SetCellFontColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetFontColor(AValue);
}

int PriceGridModel::GetCellFontWidths(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->FontWidth() : 1;
}

void PriceGridModel::SetCellFontWidths(int ACol, int ARow, int AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetFontWidth(AValue);
}

TColor PriceGridModel::GetCellColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->CellColor() : Color();
}

void PriceGridModel::SetCellColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    TSCGCellParam* p = FindCellParam(ACol, ARow, true);
    p->SetCellColor(AValue);
    p->SetCellColorEnabled(true);
}

bool PriceGridModel::GetCellBrushEnabled(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->BrushEnabled() : false;
}

void PriceGridModel::SetCellBrushEnabled(int ACol, int ARow, bool AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushEnabled(AValue);
}

TBrushStyle PriceGridModel::GetCellBrushStyles(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Brush().Style : FCanvasBrushStyle;
}

void PriceGridModel::SetCellBrushStyles(int ACol, int ARow, TBrushStyle AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushStyle(AValue);
}

TColor PriceGridModel::GetCellBrushColors(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    return p ? p->Brush().Color : Color();
}

void PriceGridModel::SetCellBrushColors(int ACol, int ARow, TColor AValue) {
    CheckCellPos(ACol, ARow);
    FindCellParam(ACol, ARow, true)->SetBrushColor(AValue);
}

int PriceGridModel::GetCellFonts(int ACol, int ARow) const {
    CheckCellPos(ACol, ARow);
    const TSCGCellParam* p = FindCellParam(ACol, ARow);
    if (!p || p->FontName().isEmpty()) return -1;
    return FFonts->IndexOfName(p->FontName());
}

void PriceGridModel::SetCellFonts(int ACol, int ARow, int AValue) {
    CheckCellPos(ACol, ARow);
    if (AValue < -1 || AValue >= FFonts->Count()) throw EControlRangeError(u8(kIndexError));
    TSCGCellParam* p = FindCellParam(ACol, ARow, true);
    p->SetFontName(AValue == -1 ? QString() : FFonts->GetPropertyItem(AValue)->Name());
}

QString PriceGridModel::GetPropertyCellLines(int ACol, int ARow, int AIndex) const {
    CheckCellPos(ACol, ARow);
    const QStringList lines = SplitTextLines(Cells(ACol, ARow));
    return AIndex >= 0 && AIndex < lines.size() ? lines[AIndex] : QString();
}

void PriceGridModel::SetPropertyCellLines(int ACol, int ARow, int AIndex, const QString& AValue) {
    CheckCellPos(ACol, ARow);
    if (AIndex < 0) throw EControlRangeError(u8(kIndexError));
    QStringList lines = SplitTextLines(Cells(ACol, ARow));
    while (lines.size() <= AIndex)
        lines << QString();
    lines[AIndex] = AValue;
    SetCells(ACol, ARow, JoinTextLines(lines));
}
