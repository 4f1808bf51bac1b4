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
constexpr int CiWidth = 4;

constexpr int RowCount = 60;  // rows of a pipe type
constexpr int OptionRow = 60; // the row that carries the options
constexpr int TabRows = 15;   // rows of one detail
constexpr int SheetLines = 14;

// One row of ex_kanzai, fields in declared order. Text fields hold code
// page 932 bytes, never longer than their width.
struct Fuzokurecordtypex {
    std::int32_t UKEY = 0;
    QByteArray GOODS;
    QByteArray KIND;
    Currency SORT;
    QByteArray SIZE;
    std::int32_t YOSAN = 0;
    QByteArray CI;
    std::int32_t FLAG = 0;
    Currency NET;
    Currency GROSS;
    Currency TEIKA;
    std::array<Currency, 7> DATA{}; // DATA1 .. DATA7 at index 0 .. 6
    Currency NTANKA;
    Currency GTANKA;
    Currency FTANKA;
    std::array<Currency, 7> CALC_N{}; // CALC1_N .. CALC7_N
    std::array<Currency, 7> CALC_G{}; // CALC1_G .. CALC7_G

    // Field access by the 1-based element number of DATA1..DATA7.
    Currency& Data(int n) { return DATA[std::size_t(n - 1)]; }
    Currency Data(int n) const { return DATA[std::size_t(n - 1)]; }

    // Text fields as Unicode, and setters that encode and cut.
    QString Goods() const;
    QString Kind() const;
    QString Size() const;
    QString Ci() const;
    void SetGoods(const QString& text);
    void SetKind(const QString& text);
    void SetSize(const QString& text);
    void SetCi(const QString& text);
};

// 60 rows addressed 1..60.
class RowTable {
public:
    Fuzokurecordtypex& operator[](int row) { return rows_[std::size_t(row - 1)]; }
    const Fuzokurecordtypex& operator[](int row) const { return rows_[std::size_t(row - 1)]; }

private:
    std::array<Fuzokurecordtypex, RowCount> rows_{};
};

// The options of a pipe type, read from the number fields of row 60.
struct KanzaiOptions {
    explicit KanzaiOptions(Fuzokurecordtypex& row) : r(row) {}
    Fuzokurecordtypex& r;

    std::int32_t& OtherMethod() { return r.YOSAN; }
    std::int32_t& ModeFlag() { return r.FLAG; }
    Currency& RateCost() { return r.NET; }
    Currency& RateSubmitted() { return r.GROSS; }
    Currency& AdoptedDigits() { return r.Data(2); }
    Currency& AdoptedFraction() { return r.Data(3); }
    Currency& LabourCost() { return r.Data(4); }
    Currency& LabourSubmitted() { return r.Data(5); }
    Currency& ElementDigits() { return r.Data(6); }
    Currency& ElementFraction() { return r.Data(7); }
    Currency& RateOn() { return r.NTANKA; }
    Currency& UnitDigits() { return r.GTANKA; }
    Currency& UnitFraction() { return r.FTANKA; }
};

// Option steps: the item index of a control stands for an entry.
extern const std::array<Currency, 8> DigitSteps;    // 1, 10, 100, 1000, 3, 4, -1, -2
extern const std::array<Currency, 3> FractionSteps; // 0.9, 0, 0.5

// Index of the last entry equal to value, 0 when none is.
int DigitIndexOf(Currency value);
int FractionIndexOf(Currency value);

// Tab index (0..3) and line (1..15) of a row number.
inline int TabOfRow(int row) {
    return (row - 1) / TabRows;
}
inline int LineOfRow(int row) {
    return (row - 1) % TabRows + 1;
}

// The change line of one row.
QString RowLine(const Fuzokurecordtypex& row);
