#pragma once
// The row of a pipe type, the working tables and the change-detection lists.

#include "engine/currency.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <functional>

// Byte widths of the text fields (code page 932 bytes).
constexpr int GoodsWidth = 80;
constexpr int KindWidth = 40;
constexpr int SizeWidth = 6;
constexpr int UnitWidth = 4;

constexpr int RowCount = 60;  // rows of a pipe type
constexpr int OptionRow = 60; // the row that carries the options
constexpr int TabRows = 15;   // rows of one detail
constexpr int SheetLines = 14;

// One row of a pipe type, its fields in the order of the table's record
// (the columns are named in the statements of store/pipetypestore.cpp
// only). Text fields hold code page 932 bytes, never longer than their
// width.
struct PipeRow {
    std::int32_t key = 0;         // the row's key; 60 in the option row
    QByteArray goodsBytes;        // name (GoodsWidth bytes)
    QByteArray kindBytes;         // kind (KindWidth bytes)
    Currency sortOrder;           // read as an integer, always saved as 0
    QByteArray sizeBytes;         // nominal size such as "15A" (SizeWidth bytes)
    std::int32_t otherMethod = 0; // the option row's method of other cost
    QByteArray unitBytes;         // unit of the pipe type (UnitWidth bytes)
    std::int32_t modeFlag = 0;    // the option row's mode: 0 piping, 1 refrigerant
    Currency costPrice;           // material unit price, cost side
    Currency submittedPrice;      // material unit price, submitted side
    Currency listPrice;           // list price
    // The seven factors (歩掛) at index 0..6: supply rate, fittings,
    // jointing, supports, pipefitter, chipping and repair, other.
    std::array<Currency, 7> factors{};
    Currency costUnitPrice;                     // composite unit price, cost side
    Currency submittedUnitPrice;                // composite unit price, submitted side
    Currency adoptedUnitPrice;                  // the submitted one rounded as adopted
    std::array<Currency, 7> costAmounts{};      // element amounts, cost side
    std::array<Currency, 7> submittedAmounts{}; // element amounts, submitted side

    // A factor by its element number, 1..7.
    Currency& factor(int n) { return factors[std::size_t(n - 1)]; }
    Currency factor(int n) const { return factors[std::size_t(n - 1)]; }

    // Text fields as Unicode, and setters that encode and cut.
    QString goods() const;
    QString kind() const;
    QString size() const;
    QString unit() const;
    void setGoods(const QString& text);
    void setKind(const QString& text);
    void setSize(const QString& text);
    void setUnit(const QString& text);
};

// 60 rows addressed 1..60.
class RowTable {
public:
    PipeRow& operator[](int row) { return rows_[std::size_t(row - 1)]; }
    const PipeRow& operator[](int row) const { return rows_[std::size_t(row - 1)]; }

private:
    std::array<PipeRow, RowCount> rows_{};
};

// The options of a pipe type, read from the number fields of row 60.
struct PipeTypeOptions {
    explicit PipeTypeOptions(PipeRow& row) : r(row) {}
    PipeRow& r;

    std::int32_t& otherMethod() { return r.otherMethod; }
    std::int32_t& modeFlag() { return r.modeFlag; }
    Currency& rateCost() { return r.costPrice; }
    Currency& rateSubmitted() { return r.submittedPrice; }
    Currency& adoptedDigits() { return r.factor(2); }
    Currency& adoptedFraction() { return r.factor(3); }
    Currency& labourCost() { return r.factor(4); }
    Currency& labourSubmitted() { return r.factor(5); }
    Currency& elementDigits() { return r.factor(6); }
    Currency& elementFraction() { return r.factor(7); }
    Currency& rateOn() { return r.costUnitPrice; }
    Currency& unitDigits() { return r.submittedUnitPrice; }
    Currency& unitFraction() { return r.adoptedUnitPrice; }
};

// option steps: the item index of a control stands for an entry.
extern const std::array<Currency, 8> DigitSteps;    // 1, 10, 100, 1000, 3, 4, -1, -2
extern const std::array<Currency, 3> FractionSteps; // 0.9, 0, 0.5

// Index of the last entry equal to value, 0 when none is.
int digitIndexOf(Currency value);
int fractionIndexOf(Currency value);

// Tab index (0..3) and line (1..15) of a row number.
inline int tabOfRow(int row) {
    return (row - 1) / TabRows;
}
inline int lineOfRow(int row) {
    return (row - 1) % TabRows + 1;
}

// The change line of one row.
QString rowLine(const PipeRow& row);
