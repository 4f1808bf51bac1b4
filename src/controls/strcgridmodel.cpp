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
    if (FCollection && FCollection->owner()) FOptions = FCollection->owner()->Options();
}

SCGCellParam::~SCGCellParam() = default;

int SCGCellParam::index() const {
    return FCollection ? FCollection->indexOf(this) : -1;
}

void SCGCellParam::assign(const SCGCellParam& source) {
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
    changed();
}

QString SCGCellParam::getDisplayName() const {
    return QString::asprintf("%s (%3d,%3d)-(%3d,%3d)", FName.toUtf8().constData(), FCol, FRow,
                             FColMax, FRowMax);
}

QString SCGCellParam::failure(const char* text) const {
    return getDisplayName() + u8(text);
}

void SCGCellParam::changed() {
    if (FCollection) FCollection->update(this);
}

bool SCGCellParam::gridLoading() const {
    return FCollection && FCollection->owner() && FCollection->owner()->isLoading();
}

bool SCGCellParam::governs(int col, int row) const {
    if (FRangeEnabled) return FCol <= col && col <= FColMax && FRow <= row && row <= FRowMax;
    return FCol == col && FRow == row;
}

void SCGCellParam::setAlignment(TAlignment value) {
    FAlignment = value;
    changed();
}

void SCGCellParam::setCol(int value) {
    if (value < 0) throw ControlRangeError(failure(".Col の値が 0 を下まわりました"));
    const int old = FCol;
    FCol = value;
    try {
        setRangeEnabled(FRangeEnabled);
    } catch (...) {
        FCol = old;
        throw;
    }
    changed();
}

void SCGCellParam::setColMax(int value) {
    const int old = FColMax;
    FColMax = value;
    try {
        setRangeEnabled(FRangeEnabled);
    } catch (...) {
        FColMax = old;
        throw;
    }
    changed();
}

void SCGCellParam::setRow(int value) {
    if (value < 0) throw ControlRangeError(failure(".Row の値が 0 を下まわりました"));
    const int old = FRow;
    FRow = value;
    try {
        setRangeEnabled(FRangeEnabled);
    } catch (...) {
        FRow = old;
        throw;
    }
    changed();
}

void SCGCellParam::setRowMax(int value) {
    const int old = FRowMax;
    FRowMax = value;
    try {
        setRangeEnabled(FRangeEnabled);
    } catch (...) {
        FRowMax = old;
        throw;
    }
    changed();
}

void SCGCellParam::setRangeEnabled(bool value) {
    if (value && !gridLoading() && (FCol > FColMax || FRow > FRowMax))
        throw ControlRangeError(u8(kRangeError));
    FRangeEnabled = value;
    changed();
}

void SCGCellParam::setCaption(const QString& value) {
    FCaption = value;
    changed();
}

void SCGCellParam::setCaptionType(SCGCellCaptionType value) {
    FCaptionType = value;
    changed();
}

void SCGCellParam::setCellColor(TColor value) {
    FCellColor = value;
    changed();
}

void SCGCellParam::setCellColorEnabled(bool value) {
    FCellColorEnabled = value;
    changed();
}

void SCGCellParam::setBrush(const TBrush& value) {
    FBrush = value;
    changed();
}

void SCGCellParam::setBrushStyle(TBrushStyle value) {
    FBrush.Style = value;
    changed();
}

void SCGCellParam::setBrushColor(TColor value) {
    FBrush.Color = value;
    changed();
}

void SCGCellParam::setBrushEnabled(bool value) {
    FBrushEnabled = value;
    changed();
}

void SCGCellParam::setFontName(const QString& value) {
    FFontName = value;
    if (!value.isEmpty() && !gridLoading() && FCollection && FCollection->owner()) {
        try {
            FCollection->owner()->fonts().indexOfName(value);
        } catch (const ControlError&) {
            FFontName.clear();
        }
    }
    changed();
}

void SCGCellParam::setFontColor(TColor value) {
    FFontColor = value;
    changed();
}

void SCGCellParam::setFontColorEnabled(bool value) {
    FFontColorEnabled = value;
    changed();
}

void SCGCellParam::setFontWidth(int value) {
    if (value < 0) throw ControlRangeError(failure(".FontWidth の値が範囲を超えました"));
    FFontWidth = value;
    changed();
}

void SCGCellParam::setLayout(TextLayout value) {
    FLayout = value;
    changed();
}

void SCGCellParam::setOptions(GridOptions value) {
    FOptions = value;
    changed();
}

void SCGCellParam::setOptionsEnabled(bool value) {
    FOptionsEnabled = value;
    changed();
}

// ---------------------------------------------------------------- SCGCellParams

SCGCellParams::SCGCellParams(PriceGridModel* AOwner) : FOwner(AOwner) {}

SCGCellParams::~SCGCellParams() = default;

SCGCellParam* SCGCellParams::add() {
    FItems.push_back(std::make_unique<SCGCellParam>(this));
    SCGCellParam* item = FItems.back().get();
    item->setName(u8("パラメータ") + QString::number(count()));
    return item;
}

void SCGCellParams::Delete(int index) {
    if (index < 0 || index >= count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void SCGCellParams::clear() {
    FItems.clear();
}

int SCGCellParams::indexOf(const SCGCellParam* item) const {
    for (int i = 0; i < count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

SCGCellParam* SCGCellParams::getPropertyItem(int index) const {
    if (index < 0 || index >= count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void SCGCellParams::setPropertyItem(int index, const SCGCellParam& value) {
    getPropertyItem(index)->assign(value);
}

SCGCellParam* SCGCellParams::itemByName(const QString& AName) const {
    for (int i = count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->name() == AName) return FItems[std::size_t(i)].get();
    throw ControlRangeError(AName + u8(" はセルパラメータの中にありません"));
}

SCGCellParam* SCGCellParams::itemByPos(int ACol, int ARow) const {
    for (int i = count() - 1; i >= 0; --i)
        if (FItems[std::size_t(i)]->governs(ACol, ARow)) return FItems[std::size_t(i)].get();
    throw ControlRangeError(
        QString::asprintf("列 %d, 行%d にはセルパラメータがありません", ACol, ARow));
}

void SCGCellParams::assign(const SCGCellParams& source) {
    if (&source == this) return;
    clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<SCGCellParam>(this));
        FItems.back()->assign(*item);
    }
}

void SCGCellParams::update(SCGCellParam* item) {
    // At run time a change of an entry repaints nothing: the caller asks
    // for the repaint.
    Q_UNUSED(item);
}

// ---------------------------------------------------------------- SCGCellFont

SCGCellFont::SCGCellFont(SCGCellFonts* ACollection) : FCollection(ACollection) {
    if (FCollection && FCollection->owner()) FFont = FCollection->owner()->Font();
}

SCGCellFont::~SCGCellFont() {
    if (!FCollection || !FCollection->owner()) return;
    SCGCellParams& params = FCollection->owner()->cellParams();
    for (int i = 0; i < params.count(); ++i)
        if (params[i]->FFontName == FName && !FName.isEmpty()) params[i]->FFontName.clear();
}

int SCGCellFont::index() const {
    return FCollection ? FCollection->indexOf(this) : -1;
}

void SCGCellFont::setFont(const FontSpec& value) {
    FFont = value;
}

void SCGCellFont::setName(const QString& value) {
    if (value.isEmpty()) throw ControlError(u8("フォント名は空にできません"));
    const bool loading = FCollection && FCollection->owner() && FCollection->owner()->isLoading();
    if (!loading && FCollection) {
        for (int i = 0; i < FCollection->count(); ++i)
            if (FCollection->getPropertyItem(i)->name() == value)
                throw ControlError(u8("このフォント名はすでに使用されています"));
    }
    const QString old = FName;
    FName = value;
    if (FCollection && FCollection->owner() && !old.isEmpty()) {
        SCGCellParams& params = FCollection->owner()->cellParams();
        for (int i = 0; i < params.count(); ++i)
            if (params[i]->FFontName == old) params[i]->FFontName = value;
    }
}

void SCGCellFont::assign(const SCGCellFont& source) {
    FFont = source.FFont;
    FName = source.FName;
}

QString SCGCellFont::getDisplayName() const {
    return QStringLiteral("%1( %2, %3 )").arg(FName, FFont.name()).arg(FFont.size());
}

// ---------------------------------------------------------------- SCGCellFonts

SCGCellFonts::SCGCellFonts(PriceGridModel* AOwner) : FOwner(AOwner) {}

SCGCellFonts::~SCGCellFonts() {
    clear();
}

SCGCellFont* SCGCellFonts::add() {
    FItems.push_back(std::make_unique<SCGCellFont>(this));
    SCGCellFont* item = FItems.back().get();
    item->FName = u8("フォント") + QString::number(count());
    return item;
}

void SCGCellFonts::Delete(int index) {
    if (index < 0 || index >= count()) listIndexError(index);
    FItems.erase(FItems.begin() + index);
}

void SCGCellFonts::clear() {
    while (!FItems.empty())
        FItems.pop_back();
}

int SCGCellFonts::indexOf(const SCGCellFont* item) const {
    for (int i = 0; i < count(); ++i)
        if (FItems[std::size_t(i)].get() == item) return i;
    return -1;
}

SCGCellFont* SCGCellFonts::getPropertyItem(int index) const {
    if (index < 0 || index >= count()) listIndexError(index);
    return FItems[std::size_t(index)].get();
}

void SCGCellFonts::setPropertyItem(int index, const SCGCellFont& value) {
    getPropertyItem(index)->assign(value);
}

int SCGCellFonts::indexOfName(const QString& AFontName) const {
    for (int i = 0; i < count(); ++i)
        if (FItems[std::size_t(i)]->name() == AFontName) return i;
    throw ControlError(u8(kFontNotRegistered));
}

void SCGCellFonts::assign(const SCGCellFonts& source) {
    if (&source == this) return;
    clear();
    for (const auto& item : source.FItems) {
        FItems.push_back(std::make_unique<SCGCellFont>(this));
        FItems.back()->assign(*item);
    }
}

// ---------------------------------------------------------------- PriceGridModel

PriceGridModel::PriceGridModel()
    : FCellParams(std::make_unique<SCGCellParams>(this)),
      FFonts(std::make_unique<SCGCellFonts>(this)) {
    setInForceOptions(FInsideOptions);
    setDefaultDrawing(false);
}

PriceGridModel::~PriceGridModel() {
    // fonts first: a destroyed font clears the names in the entries.
    FFonts->clear();
}

void PriceGridModel::setFocusCellColor(TColor value) {
    FFocusCellColor = value;
    invalidate();
}

void PriceGridModel::setFocusCellFontColor(TColor value) {
    FFocusCellFontColor = value;
    invalidate();
}

void PriceGridModel::setFocusCellFontColorEnabled(bool value) {
    FFocusCellFontColorEnabled = value;
    invalidate();
}

void PriceGridModel::setImeMode(TImeMode value) {
    FImeMode = value;
    applyImeMode();
}

void PriceGridModel::setOptions(GridOptions value) {
    FInsideOptions = value;
    setInForceOptions(value);
}

SCGCellParam* PriceGridModel::findCellParam(int ACol, int ARow, bool ACreate) {
    for (int i = FCellParams->count() - 1; i >= 0; --i) {
        SCGCellParam* p = FCellParams->getPropertyItem(i);
        if (p->governs(ACol, ARow)) return p;
    }
    if (!ACreate) return nullptr;
    SCGCellParam* p = FCellParams->add();
    p->setCaption(QString());
    p->setFontColor(Font().Color);
    p->setCellColor(ACol >= fixedCols() && ARow >= fixedRows() ? color() : fixedColor());
    p->setCellColorEnabled(true);
    p->setFontColorEnabled(true);
    p->setCol(ACol);
    p->setRow(ARow);
    return p;
}

const SCGCellParam* PriceGridModel::findCellParam(int ACol, int ARow) const {
    for (int i = FCellParams->count() - 1; i >= 0; --i) {
        const SCGCellParam* p = FCellParams->getPropertyItem(i);
        if (p->governs(ACol, ARow)) return p;
    }
    return nullptr;
}

void PriceGridModel::checkCellPos(int ACol, int ARow) const {
    if (ACol < 0 || ARow < 0 || ACol > colCount() || ARow > rowCount())
        throw ControlRangeError(u8(kPositionError));
}

void PriceGridModel::clearAllCellParams() {
    FCellParams->clear();
    FFonts->clear();
}

CellDrawParams PriceGridModel::getDefaultCellParams(int ACol, int ARow) const {
    CellDrawParams d;
    d.Col = ACol;
    d.Row = ARow;
    d.Alignment = FAlignment;
    d.FontColor = Font().Color;
    d.FontWidth = 1;
    d.BackColor = ACol >= fixedCols() && ARow >= fixedRows() ? color() : fixedColor();
    d.BrushEnabled = false;
    d.BrushStyle = bsClear;
    d.BrushColor = color();
    d.FontIndex = -1;
    return d;
}

CellDrawParams PriceGridModel::getCellParams(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    if (!p) return getDefaultCellParams(ACol, ARow);
    CellDrawParams d;
    d.Col = ACol;
    d.Row = ARow;
    d.Alignment = p->alignment();
    d.FontColor = p->fontColor();
    d.FontWidth = p->fontWidth();
    d.BackColor = p->cellColor();
    d.BrushEnabled = p->brushEnabled();
    d.BrushStyle = p->brush().Style;
    d.BrushColor = p->brush().Color;
    d.FontIndex = p->fontName().isEmpty() ? -1 : FFonts->indexOfName(p->fontName());
    return d;
}

void PriceGridModel::setCellParams(const CellDrawParams& AValue) {
    checkCellPos(AValue.Col, AValue.Row);
    SCGCellParam* p = findCellParam(AValue.Col, AValue.Row, true);
    p->setCol(AValue.Col);
    p->setRow(AValue.Row);
    p->setAlignment(AValue.Alignment);
    p->setFontColor(AValue.FontColor);
    p->setFontColorEnabled(true);
    p->setFontWidth(AValue.FontWidth);
    p->setCellColor(AValue.BackColor);
    p->setCellColorEnabled(true);
    p->setBrushEnabled(AValue.BrushEnabled);
    p->setBrushStyle(AValue.BrushStyle);
    p->setBrushColor(AValue.BrushColor);
    p->setFontName(AValue.FontIndex == -1 ? QString()
                                          : FFonts->getPropertyItem(AValue.FontIndex)->name());
}

void PriceGridModel::addFont(const FontSpec& AFont) {
    FFonts->add()->setFont(AFont);
}

void PriceGridModel::deleteFont(int AIndex) {
    if (AIndex < 0 || AIndex >= FFonts->count()) throw ControlRangeError(u8(kIndexError));
    const QString name = FFonts->getPropertyItem(AIndex)->name();
    for (int i = 0; i < FCellParams->count(); ++i)
        if (FCellParams->getPropertyItem(i)->fontName() == name)
            throw ControlError(u8("使用中のﾌｫﾝﾄを削除しようとしました。"));
    FFonts->Delete(AIndex);
}

TAlignment PriceGridModel::getCellAlignments(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->alignment() : FAlignment;
}

void PriceGridModel::setCellAlignments(int ACol, int ARow, TAlignment AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setAlignment(AValue);
}

TColor PriceGridModel::getCellFontColors(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->fontColor() : Font().Color;
}

void PriceGridModel::setCellFontColors(int ACol, int ARow, TColor AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setFontColor(AValue);
}

int PriceGridModel::getCellFontWidths(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->fontWidth() : 1;
}

void PriceGridModel::setCellFontWidths(int ACol, int ARow, int AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setFontWidth(AValue);
}

TColor PriceGridModel::getCellColors(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->cellColor() : color();
}

void PriceGridModel::setCellColors(int ACol, int ARow, TColor AValue) {
    checkCellPos(ACol, ARow);
    SCGCellParam* p = findCellParam(ACol, ARow, true);
    p->setCellColor(AValue);
    p->setCellColorEnabled(true);
}

bool PriceGridModel::getCellBrushEnabled(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->brushEnabled() : false;
}

void PriceGridModel::setCellBrushEnabled(int ACol, int ARow, bool AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setBrushEnabled(AValue);
}

TBrushStyle PriceGridModel::getCellBrushStyles(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->brush().Style : FCanvasBrushStyle;
}

void PriceGridModel::setCellBrushStyles(int ACol, int ARow, TBrushStyle AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setBrushStyle(AValue);
}

TColor PriceGridModel::getCellBrushColors(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    return p ? p->brush().Color : color();
}

void PriceGridModel::setCellBrushColors(int ACol, int ARow, TColor AValue) {
    checkCellPos(ACol, ARow);
    findCellParam(ACol, ARow, true)->setBrushColor(AValue);
}

int PriceGridModel::getCellFonts(int ACol, int ARow) const {
    checkCellPos(ACol, ARow);
    const SCGCellParam* p = findCellParam(ACol, ARow);
    if (!p || p->fontName().isEmpty()) return -1;
    return FFonts->indexOfName(p->fontName());
}

void PriceGridModel::setCellFonts(int ACol, int ARow, int AValue) {
    checkCellPos(ACol, ARow);
    if (AValue < -1 || AValue >= FFonts->count()) throw ControlRangeError(u8(kIndexError));
    SCGCellParam* p = findCellParam(ACol, ARow, true);
    p->setFontName(AValue == -1 ? QString() : FFonts->getPropertyItem(AValue)->name());
}

QString PriceGridModel::getPropertyCellLines(int ACol, int ARow, int AIndex) const {
    checkCellPos(ACol, ARow);
    const QStringList lines = splitTextLines(cells(ACol, ARow));
    return AIndex >= 0 && AIndex < lines.size() ? lines[AIndex] : QString();
}

void PriceGridModel::setPropertyCellLines(int ACol, int ARow, int AIndex, const QString& AValue) {
    checkCellPos(ACol, ARow);
    if (AIndex < 0) throw ControlRangeError(u8(kIndexError));
    QStringList lines = splitTextLines(cells(ACol, ARow));
    while (lines.size() <= AIndex)
        lines << QString();
    lines[AIndex] = AValue;
    setCells(ACol, ARow, joinTextLines(lines));
}
