#pragma once
// The cell model of PriceGrid: per-cell look kept in two ordered
// collections that the grid owns.
//
//   cellParams (SCGCellParams): entries of SCGCellParam. An entry governs
//     one cell (Col, Row), or the rectangle Col..colMax, Row..rowMax when
//     rangeEnabled is set.
//   fonts (SCGCellFonts): named fonts; an entry names one in fontName.
//
// The per-cell properties (getCellColors / setCellColors and the others)
// are views on the entries: a read looks up the entry that governs the cell,
// searching from the last entry to the first, so the entry added last wins;
// a write changes that entry, or appends a new one for the cell. Every
// per-cell call first checks the position: 0 <= col <= colCount and
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

// How an entry's caption (C) and the cell's string (S) make the drawn text.
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

// One entry of cellParams. Created through SCGCellParams::add (or by a
// per-cell write), owned by the collection.
class SCGCellParam : public ControlObject {
public:
    explicit SCGCellParam(SCGCellParams* ACollection);
    ~SCGCellParam() override;

    SCGCellParams* collection() const { return FCollection; }
    int index() const;

    // Copies every setting and event of another entry.
    void assign(const SCGCellParam& source);
    // "name (col,row)-(colmax,rowmax)", each number three wide.
    QString getDisplayName() const;

    TAlignment alignment() const { return FAlignment; }
    void setAlignment(TAlignment value);
    // Below 0 raises; with rangeEnabled, a Col past colMax raises and Col
    // keeps its old value.
    int col() const { return FCol; }
    void setCol(int value);
    int colMax() const { return FColMax; }
    void setColMax(int value);
    QString caption() const { return FCaption; }
    void setCaption(const QString& value);
    SCGCellCaptionType captionType() const { return FCaptionType; }
    void setCaptionType(SCGCellCaptionType value);
    TColor cellColor() const { return FCellColor; }
    void setCellColor(TColor value);
    bool cellColorEnabled() const { return FCellColorEnabled; }
    void setCellColorEnabled(bool value);
    const TBrush& brush() const { return FBrush; }
    void setBrush(const TBrush& value);
    void setBrushStyle(TBrushStyle value);
    void setBrushColor(TColor value);
    bool brushEnabled() const { return FBrushEnabled; }
    void setBrushEnabled(bool value);
    // name of an item of the grid's fonts, empty for the grid's own font.
    // A name that fonts doesn't hold leaves it empty, without an error.
    QString fontName() const { return FFontName; }
    void setFontName(const QString& value);
    TColor fontColor() const { return FFontColor; }
    void setFontColor(TColor value);
    bool fontColorEnabled() const { return FFontColorEnabled; }
    void setFontColorEnabled(bool value);
    // Overstrike count: the text is drawn this many times, each one pixel
    // to the right; 0 draws no text. Below 0 raises.
    int fontWidth() const { return FFontWidth; }
    void setFontWidth(int value);
    TImeMode imeMode() const { return FImeMode; }
    void setImeMode(TImeMode value) { FImeMode = value; }
    bool imeModeEnabled() const { return FImeModeEnabled; }
    void setImeModeEnabled(bool value) { FImeModeEnabled = value; }
    TextLayout layout() const { return FLayout; }
    void setLayout(TextLayout value);
    QString name() const { return FName; }
    void setName(const QString& value) { FName = value; }
    // Options in force while this entry's cell is current (if enabled).
    GridOptions options() const { return FOptions; }
    void setOptions(GridOptions value);
    bool optionsEnabled() const { return FOptionsEnabled; }
    void setOptionsEnabled(bool value);
    // Setting True needs Col <= colMax and Row <= rowMax (checked unless the
    // grid is loading); the flag stays as it was on failure.
    bool rangeEnabled() const { return FRangeEnabled; }
    void setRangeEnabled(bool value);
    int row() const { return FRow; }
    void setRow(int value);
    int rowMax() const { return FRowMax; }
    void setRowMax(int value);
    int tag() const { return FTag; }
    void setTag(int value) { FTag = value; }

    // True when this entry governs the cell.
    bool governs(int col, int row) const;

    SCGParamsCellChangedEvent OnEnterCell, OnExitCell;
    SCGParamsColChangedEvent OnEnterCol, OnExitCol;
    SCGParamsRowChangedEvent OnEnterRow, OnExitRow;
    SCGOutCellTextEvent OnOutCellText;
    SCGDrawTextOneLineEvent OnDrawTextOneLine;
    SCGDrawCellEvent OnDrawCell;

private:
    friend class SCGCellFont;
    void changed();
    bool gridLoading() const;
    QString failure(const char* text) const;

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

    PriceGridModel* owner() const { return FOwner; }
    int count() const { return int(FItems.size()); }
    SCGCellParam* add();
    void Delete(int index);
    void clear();
    int indexOf(const SCGCellParam* item) const;
    // The entry at index; out of range raises.
    SCGCellParam* getPropertyItem(int index) const;
    // Assigns value to the entry at index.
    void setPropertyItem(int index, const SCGCellParam& value);
    SCGCellParam* operator[](int index) const { return getPropertyItem(index); }
    // Last entry of that name; raises if none.
    SCGCellParam* itemByName(const QString& AName) const;
    // The entry that governs the cell; raises if none.
    SCGCellParam* itemByPos(int ACol, int ARow) const;
    // Replaces the entries by copies of those of source.
    void assign(const SCGCellParams& source);
    // Called by an entry on each change; at run time it repaints nothing.
    void update(SCGCellParam* item);

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

    int index() const;
    const FontSpec& font() const { return FFont; }
    void setFont(const FontSpec& value);
    QString name() const { return FName; }
    // Empty raises; unless the grid is loading, a name that any item has,
    // this one included, raises. Entries naming the old name follow.
    void setName(const QString& value);
    void assign(const SCGCellFont& source);
    // "name( family, size )".
    QString getDisplayName() const;

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

    PriceGridModel* owner() const { return FOwner; }
    int count() const { return int(FItems.size()); }
    SCGCellFont* add();
    // Removes the item; entries that named it get an empty fontName.
    void Delete(int index);
    void clear();
    int indexOf(const SCGCellFont* item) const;
    SCGCellFont* getPropertyItem(int index) const;
    void setPropertyItem(int index, const SCGCellFont& value);
    SCGCellFont* operator[](int index) const { return getPropertyItem(index); }
    // Index of the first font of that name; raises if none.
    int indexOfName(const QString& AFontName) const;
    void assign(const SCGCellFonts& source);

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

    SCGCellParams& cellParams() { return *FCellParams; }
    const SCGCellParams& cellParams() const { return *FCellParams; }
    SCGCellFonts& fonts() { return *FFonts; }
    const SCGCellFonts& fonts() const { return *FFonts; }
    int fontCount() const { return FFonts->count(); }

    // Look of cells that no entry governs.
    TAlignment Alignment() const { return FAlignment; }
    void setAlignment(TAlignment value) { FAlignment = value; }
    TAlignment fixedAlignment() const { return FFixedAlignment; }
    void setFixedAlignment(TAlignment value) { FFixedAlignment = value; }
    TextLayout fixedLayout() const { return FFixedLayout; }
    void setFixedLayout(TextLayout value) { FFixedLayout = value; }
    TextLayout Layout() const { return FLayout; }
    void SetLayout(TextLayout value) { FLayout = value; }
    // Selection colours stay while the grid has no input focus.
    bool focusDraw() const { return FFocusDraw; }
    void setFocusDraw(bool value) { FFocusDraw = value; }
    TColor focusCellColor() const { return FFocusCellColor; }
    void setFocusCellColor(TColor value);
    TColor focusCellFontColor() const { return FFocusCellFontColor; }
    void setFocusCellFontColor(TColor value);
    bool focusCellFontColorEnabled() const { return FFocusCellFontColorEnabled; }
    void setFocusCellFontColorEnabled(bool value);
    TImeMode imeMode() const { return FImeMode; }
    void setImeMode(TImeMode value);
    // Split the cell's text into lines, each drawn in its own band.
    bool cellDivide() const { return FCellDivide; }
    void setCellDivide(bool value) { FCellDivide = value; }
    // The options the user set; writing also puts them in force at once.
    GridOptions Options() const { return FInsideOptions; }
    void setOptions(GridOptions value);

    // Loading from a stored form: range and font checks are skipped until
    // loaded().
    void beginLoading() { FLoading = true; }
    bool isLoading() const { return FLoading; }
    virtual void loaded() { FLoading = false; }

    // The one lookup: from the last entry to the first; with create, a new
    // entry for the cell when none governs it, carrying the cell's present
    // colours.
    SCGCellParam* findCellParam(int ACol, int ARow, bool ACreate);
    const SCGCellParam* findCellParam(int ACol, int ARow) const;
    // Raises "ｾﾙ位置がｸﾞﾘｯﾄﾞの範囲を超えました。" unless
    // 0 <= ACol <= colCount and 0 <= ARow <= RowCount.
    void checkCellPos(int ACol, int ARow) const;

    void clearAllCellParams();
    CellDrawParams getDefaultCellParams(int ACol, int ARow) const;
    CellDrawParams getCellParams(int ACol, int ARow) const;
    void setCellParams(const CellDrawParams& AValue);
    void addFont(const FontSpec& AFont);
    void deleteFont(int AIndex);

    TAlignment getCellAlignments(int ACol, int ARow) const;
    void setCellAlignments(int ACol, int ARow, TAlignment AValue);
    TColor getCellFontColors(int ACol, int ARow) const;
    void setCellFontColors(int ACol, int ARow, TColor AValue);
    int getCellFontWidths(int ACol, int ARow) const;
    void setCellFontWidths(int ACol, int ARow, int AValue);
    TColor getCellColors(int ACol, int ARow) const;
    void setCellColors(int ACol, int ARow, TColor AValue);
    bool getCellBrushEnabled(int ACol, int ARow) const;
    void setCellBrushEnabled(int ACol, int ARow, bool AValue);
    TBrushStyle getCellBrushStyles(int ACol, int ARow) const;
    void setCellBrushStyles(int ACol, int ARow, TBrushStyle AValue);
    TColor getCellBrushColors(int ACol, int ARow) const;
    void setCellBrushColors(int ACol, int ARow, TColor AValue);
    // Index in fonts, -1 for the grid's font. A write outside -1..last
    // raises before any entry is made.
    int getCellFonts(int ACol, int ARow) const;
    void setCellFonts(int ACol, int ARow, int AValue);

    // One line of the cell's string; empty past the last line. A write
    // pads with empty lines and stores the lines each ended by CR LF.
    QString getPropertyCellLines(int ACol, int ARow, int AIndex) const;
    void setPropertyCellLines(int ACol, int ARow, int AIndex, const QString& AValue);

    // Style of the painting canvas's brush as the last paint left it; what
    // getCellBrushStyles gives for a cell without an entry.
    TBrushStyle canvasBrushStyle() const { return FCanvasBrushStyle; }

protected:
    virtual void applyImeMode() {}
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
