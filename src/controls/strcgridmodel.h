#pragma once
// The cell model of PriceGrid: per-cell look kept in two ordered
// collections that the grid owns.
//
//   CellParams (SCGCellParams): entries of SCGCellParam. An entry governs
//     one cell (Col, Row), or the rectangle Col..ColMax, Row..RowMax when
//     RangeEnabled is set.
//   Fonts (SCGCellFonts): named fonts; an entry names one in FontName.
//
// The per-cell properties (GetCellColors / SetCellColors and the others)
// are views on the entries: a read looks up the entry that governs the cell,
// searching from the last entry to the first, so the entry added last wins;
// a write changes that entry, or appends a new one for the cell. Every
// per-cell call first checks the position: 0 <= col <= ColCount and
// 0 <= row <= RowCount (the counts themselves pass).
//
// Failures are ControlError / ControlRangeError with fixed texts.

#include "controls/controlerrors.h"
#include "controls/stringgridmodel.h"

#include <memory>
#include <vector>

class PriceGrid;
class PriceGridModel;
class SCGCellParam;

// How an entry's Caption (C) and the cell's string (S) make the drawn text.
enum SCGCellCaptionType {
    ctCaption = 0,  // C, or S if C is empty
    ctCellText = 1, // S, or C if S is empty
    ctHeader = 2,   // C then S
    ctFooter = 3,   // S then C
    ctTop = 4,      // C, CR, S (two lines even when S is empty)
    ctBottom = 5,   // S, CR, C
};

// The flat form of one cell's parameters.
struct CellDrawParams {
    int Col = 0;
    int Row = 0;
    TAlignment Alignment = taLeftJustify;
    TColor FontColor = clWindowText;
    int FontWidth = 1;
    TColor BackColor = clWindow;
    bool BrushEnabled = false;
    TBrushStyle BrushStyle = bsClear;
    TColor BrushColor = clWindow;
    int FontIndex = -1;
};

// Events of the grid (Sender is the grid) and of the entries (Sender is the
// entry, AGrid the grid). In/out parameters are references.
using SCGCellChangedEvent =
    std::function<void(ControlObject* Sender, int AOldCol, int AOldRow, int ANewCol, int ANewRow)>;
using SCGColChangedEvent = std::function<void(ControlObject* Sender, int AOldCol, int ANewCol)>;
using SCGRowChangedEvent = std::function<void(ControlObject* Sender, int AOldRow, int ANewRow)>;
using SCGParamsCellChangedEvent = std::function<void(
    ControlObject* Sender, PriceGrid* AGrid, int AOldCol, int AOldRow, int ANewCol, int ANewRow)>;
using SCGParamsColChangedEvent =
    std::function<void(ControlObject* Sender, PriceGrid* AGrid, int AOldCol, int ANewCol)>;
using SCGParamsRowChangedEvent =
    std::function<void(ControlObject* Sender, PriceGrid* AGrid, int AOldRow, int ANewRow)>;
using SCGOutCellTextEvent =
    std::function<void(ControlObject* Sender, PriceGrid* AGrid, const TRect& ARect, int ACol,
                       int ARow, const QString& ACaption, QString& AValue, bool& ADoCanvasReset)>;
using SCGDrawTextOneLineEvent =
    std::function<void(ControlObject* Sender, PriceGrid* AGrid, const TRect& ARect, int ACol,
                       int ARow, int AIndex, GridDrawState AState, QString& AText,
                       TAlignment& AAlignment, TextLayout& ALayout, bool& AInnerHorzLine)>;
using SCGDrawCellEvent = std::function<void(ControlObject* Sender, PriceGrid* AGrid, int Col,
                                            int Row, const TRect& Rect, GridDrawState State)>;

class SCGCellParams;
class SCGCellFonts;

// One entry of CellParams. Created through SCGCellParams::Add (or by a
// per-cell write), owned by the collection.
class SCGCellParam : public ControlObject {
public:
    explicit SCGCellParam(SCGCellParams* ACollection);
    ~SCGCellParam() override;

    SCGCellParams* Collection() const { return FCollection; }
    int Index() const;

    // Copies every setting and event of another entry.
    void Assign(const SCGCellParam& source);
    // "Name (col,row)-(colmax,rowmax)", each number three wide.
    QString GetDisplayName() const;

    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value);
    // Below 0 raises; with RangeEnabled, a Col past ColMax raises and Col
    // keeps its old value.
    int Col() const { return FCol; }
    void SetCol(int value);
    int ColMax() const { return FColMax; }
    void SetColMax(int value);
    QString Caption() const { return FCaption; }
    void SetCaption(const QString& value);
    SCGCellCaptionType CaptionType() const { return FCaptionType; }
    void SetCaptionType(SCGCellCaptionType value);
    TColor CellColor() const { return FCellColor; }
    void SetCellColor(TColor value);
    bool CellColorEnabled() const { return FCellColorEnabled; }
    void SetCellColorEnabled(bool value);
    const TBrush& Brush() const { return FBrush; }
    void SetBrush(const TBrush& value);
    void SetBrushStyle(TBrushStyle value);
    void SetBrushColor(TColor value);
    bool BrushEnabled() const { return FBrushEnabled; }
    void SetBrushEnabled(bool value);
    // Name of an item of the grid's Fonts, empty for the grid's own font.
    // A name that Fonts doesn't hold leaves it empty, without an error.
    QString FontName() const { return FFontName; }
    void SetFontName(const QString& value);
    TColor FontColor() const { return FFontColor; }
    void SetFontColor(TColor value);
    bool FontColorEnabled() const { return FFontColorEnabled; }
    void SetFontColorEnabled(bool value);
    // Overstrike count: the text is drawn this many times, each one pixel
    // to the right; 0 draws no text. Below 0 raises.
    int FontWidth() const { return FFontWidth; }
    void SetFontWidth(int value);
    TImeMode ImeMode() const { return FImeMode; }
    void SetImeMode(TImeMode value) { FImeMode = value; }
    bool ImeModeEnabled() const { return FImeModeEnabled; }
    void SetImeModeEnabled(bool value) { FImeModeEnabled = value; }
    TextLayout Layout() const { return FLayout; }
    void SetLayout(TextLayout value);
    QString Name() const { return FName; }
    void SetName(const QString& value) { FName = value; }
    // Options in force while this entry's cell is current (if enabled).
    GridOptions Options() const { return FOptions; }
    void SetOptions(GridOptions value);
    bool OptionsEnabled() const { return FOptionsEnabled; }
    void SetOptionsEnabled(bool value);
    // Setting True needs Col <= ColMax and Row <= RowMax (checked unless the
    // grid is loading); the flag stays as it was on failure.
    bool RangeEnabled() const { return FRangeEnabled; }
    void SetRangeEnabled(bool value);
    int Row() const { return FRow; }
    void SetRow(int value);
    int RowMax() const { return FRowMax; }
    void SetRowMax(int value);
    int Tag() const { return FTag; }
    void SetTag(int value) { FTag = value; }

    // True when this entry governs the cell.
    bool Governs(int col, int row) const;

    SCGParamsCellChangedEvent OnEnterCell, OnExitCell;
    SCGParamsColChangedEvent OnEnterCol, OnExitCol;
    SCGParamsRowChangedEvent OnEnterRow, OnExitRow;
    SCGOutCellTextEvent OnOutCellText;
    SCGDrawTextOneLineEvent OnDrawTextOneLine;
    SCGDrawCellEvent OnDrawCell;

private:
    friend class SCGCellFont;
    void Changed();
    bool GridLoading() const;
    QString Failure(const char* text) const;

    SCGCellParams* FCollection;
    TAlignment FAlignment = taLeftJustify;
    int FCol = 0;
    int FColMax = 0;
    QString FCaption;
    SCGCellCaptionType FCaptionType = ctCellText;
    TColor FCellColor = clWindow;
    bool FCellColorEnabled = false;
    TBrush FBrush;
    bool FBrushEnabled = false;
    QString FFontName;
    TColor FFontColor = clWindowText;
    bool FFontColorEnabled = false;
    int FFontWidth = 1;
    TImeMode FImeMode = imDontCare;
    bool FImeModeEnabled = false;
    TextLayout FLayout = tlTop;
    QString FName;
    GridOptions FOptions;
    bool FOptionsEnabled = false;
    bool FRangeEnabled = false;
    int FRow = 0;
    int FRowMax = 0;
    int FTag = 0;
};

// The ordered entries. A new entry is named "パラメータ" and the count.
class SCGCellParams {
public:
    explicit SCGCellParams(PriceGridModel* AOwner);
    ~SCGCellParams();
    SCGCellParams(const SCGCellParams&) = delete;
    SCGCellParams& operator=(const SCGCellParams&) = delete;

    PriceGridModel* Owner() const { return FOwner; }
    int Count() const { return int(FItems.size()); }
    SCGCellParam* Add();
    void Delete(int index);
    void Clear();
    int IndexOf(const SCGCellParam* item) const;
    // The entry at index; out of range raises.
    SCGCellParam* GetPropertyItem(int index) const;
    // Assigns value to the entry at index.
    void SetPropertyItem(int index, const SCGCellParam& value);
    SCGCellParam* operator[](int index) const { return GetPropertyItem(index); }
    // Last entry of that name; raises if none.
    SCGCellParam* ItemByName(const QString& AName) const;
    // The entry that governs the cell; raises if none.
    SCGCellParam* ItemByPos(int ACol, int ARow) const;
    // Replaces the entries by copies of those of source.
    void Assign(const SCGCellParams& source);
    // Called by an entry on each change; at run time it repaints nothing.
    void Update(SCGCellParam* item);

private:
    friend class SCGCellParam;
    PriceGridModel* FOwner;
    std::vector<std::unique_ptr<SCGCellParam>> FItems;
};

// One named font. A new item copies the grid's font and is named
// "フォント" and the count.
class SCGCellFont : public ControlObject {
public:
    explicit SCGCellFont(SCGCellFonts* ACollection);
    ~SCGCellFont() override;

    int Index() const;
    const FontSpec& Font() const { return FFont; }
    void SetFont(const FontSpec& value);
    QString Name() const { return FName; }
    // Empty raises; unless the grid is loading, a name that any item has,
    // this one included, raises. Entries naming the old name follow.
    void SetName(const QString& value);
    void Assign(const SCGCellFont& source);
    // "Name( family, size )".
    QString GetDisplayName() const;

private:
    friend class SCGCellFonts;
    SCGCellFonts* FCollection;
    FontSpec FFont;
    QString FName;
};

class SCGCellFonts {
public:
    explicit SCGCellFonts(PriceGridModel* AOwner);
    ~SCGCellFonts();
    SCGCellFonts(const SCGCellFonts&) = delete;
    SCGCellFonts& operator=(const SCGCellFonts&) = delete;

    PriceGridModel* Owner() const { return FOwner; }
    int Count() const { return int(FItems.size()); }
    SCGCellFont* Add();
    // Removes the item; entries that named it get an empty FontName.
    void Delete(int index);
    void Clear();
    int IndexOf(const SCGCellFont* item) const;
    SCGCellFont* GetPropertyItem(int index) const;
    void SetPropertyItem(int index, const SCGCellFont& value);
    SCGCellFont* operator[](int index) const { return GetPropertyItem(index); }
    // Index of the first font of that name; raises if none.
    int IndexOfName(const QString& AFontName) const;
    void Assign(const SCGCellFonts& source);

private:
    PriceGridModel* FOwner;
    std::vector<std::unique_ptr<SCGCellFont>> FItems;
};

// The grid's model: the string grid data plus the collections, the lookup
// and the per-cell properties. PriceGrid (the widget) derives from it.
class PriceGridModel : public StringGridModel {
public:
    PriceGridModel();
    ~PriceGridModel() override;

    SCGCellParams& CellParams() { return *FCellParams; }
    const SCGCellParams& CellParams() const { return *FCellParams; }
    SCGCellFonts& Fonts() { return *FFonts; }
    const SCGCellFonts& Fonts() const { return *FFonts; }
    int FontCount() const { return FFonts->Count(); }

    // Look of cells that no entry governs.
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value) { FAlignment = value; }
    TAlignment FixedAlignment() const { return FFixedAlignment; }
    void SetFixedAlignment(TAlignment value) { FFixedAlignment = value; }
    TextLayout FixedLayout() const { return FFixedLayout; }
    void SetFixedLayout(TextLayout value) { FFixedLayout = value; }
    TextLayout Layout() const { return FLayout; }
    void SetLayout(TextLayout value) { FLayout = value; }
    // Selection colours stay while the grid has no input focus.
    bool FocusDraw() const { return FFocusDraw; }
    void SetFocusDraw(bool value) { FFocusDraw = value; }
    TColor FocusCellColor() const { return FFocusCellColor; }
    void SetFocusCellColor(TColor value);
    TColor FocusCellFontColor() const { return FFocusCellFontColor; }
    void SetFocusCellFontColor(TColor value);
    bool FocusCellFontColorEnabled() const { return FFocusCellFontColorEnabled; }
    void SetFocusCellFontColorEnabled(bool value);
    TImeMode ImeMode() const { return FImeMode; }
    void SetImeMode(TImeMode value);
    // Split the cell's text into lines, each drawn in its own band.
    bool CellDivide() const { return FCellDivide; }
    void SetCellDivide(bool value) { FCellDivide = value; }
    // The options the user set; writing also puts them in force at once.
    GridOptions Options() const { return FInsideOptions; }
    void SetOptions(GridOptions value);

    // Loading from a stored form: range and font checks are skipped until
    // Loaded().
    void BeginLoading() { FLoading = true; }
    bool IsLoading() const { return FLoading; }
    virtual void Loaded() { FLoading = false; }

    // The one lookup: from the last entry to the first; with create, a new
    // entry for the cell when none governs it, carrying the cell's present
    // colours.
    SCGCellParam* FindCellParam(int ACol, int ARow, bool ACreate);
    const SCGCellParam* FindCellParam(int ACol, int ARow) const;
    // Raises "ｾﾙ位置がｸﾞﾘｯﾄﾞの範囲を超えました。" unless
    // 0 <= ACol <= ColCount and 0 <= ARow <= RowCount.
    void CheckCellPos(int ACol, int ARow) const;

    void ClearAllCellParams();
    CellDrawParams GetDefaultCellParams(int ACol, int ARow) const;
    CellDrawParams GetCellParams(int ACol, int ARow) const;
    void SetCellParams(const CellDrawParams& AValue);
    void AddFont(const FontSpec& AFont);
    void DeleteFont(int AIndex);

    TAlignment GetCellAlignments(int ACol, int ARow) const;
    void SetCellAlignments(int ACol, int ARow, TAlignment AValue);
    TColor GetCellFontColors(int ACol, int ARow) const;
    void SetCellFontColors(int ACol, int ARow, TColor AValue);
    int GetCellFontWidths(int ACol, int ARow) const;
    void SetCellFontWidths(int ACol, int ARow, int AValue);
    TColor GetCellColors(int ACol, int ARow) const;
    void SetCellColors(int ACol, int ARow, TColor AValue);
    bool GetCellBrushEnabled(int ACol, int ARow) const;
    void SetCellBrushEnabled(int ACol, int ARow, bool AValue);
    TBrushStyle GetCellBrushStyles(int ACol, int ARow) const;
    void SetCellBrushStyles(int ACol, int ARow, TBrushStyle AValue);
    TColor GetCellBrushColors(int ACol, int ARow) const;
    void SetCellBrushColors(int ACol, int ARow, TColor AValue);
    // Index in Fonts, -1 for the grid's font. A write outside -1..last
    // raises before any entry is made.
    int GetCellFonts(int ACol, int ARow) const;
    void SetCellFonts(int ACol, int ARow, int AValue);

    // One line of the cell's string; empty past the last line. A write
    // pads with empty lines and stores the lines each ended by CR LF.
    QString GetPropertyCellLines(int ACol, int ARow, int AIndex) const;
    void SetPropertyCellLines(int ACol, int ARow, int AIndex, const QString& AValue);

    // Style of the painting canvas's brush as the last paint left it; what
    // GetCellBrushStyles gives for a cell without an entry.
    TBrushStyle CanvasBrushStyle() const { return FCanvasBrushStyle; }

protected:
    virtual void ApplyImeMode() {}
    TBrushStyle FCanvasBrushStyle = bsSolid;
    int FOldCol = 0;
    int FOldRow = 0;

private:
    std::unique_ptr<SCGCellParams> FCellParams;
    std::unique_ptr<SCGCellFonts> FFonts;
    TAlignment FAlignment = taLeftJustify;
    TAlignment FFixedAlignment = taLeftJustify;
    TextLayout FFixedLayout = tlTop;
    bool FFocusDraw = true;
    TColor FFocusCellColor = clHighlight;
    TColor FFocusCellFontColor = clHighlightText;
    bool FFocusCellFontColorEnabled = false;
    TextLayout FLayout = tlTop;
    GridOptions FInsideOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine,
                               goRangeSelect};
    TImeMode FImeMode = imDontCare;
    bool FCellDivide = true;
    bool FLoading = false;
};
