#pragma once
// The byte image of a library record, built here from the offset table alone
// (no code of the program): little-endian integers, a length byte in front of
// each string, Currency as its raw 64-bit value. Records are assembled in one
// running buffer as the program does, so bytes that no field covers carry over.
// Also rows for the tests of the edit commands, every field of a row as one
// text, and whole files in and out.

#include "store/piperow.h"
#include "support/testing.h"

#include <QtEndian>

#include <cstdint>
#include <string>

struct GoldenRecords {
    void intAt(int offset, std::int64_t v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            buf[offset + i] = char((static_cast<std::uint64_t>(v) >> (8 * i)) & 0xff);
    }
    void stringAt(int offset, const QByteArray& s) {
        buf[offset] = char(s.size());
        buf.replace(offset + 1, s.size(), s);
    }
    // One row as the table places it; the CALC place (264, 112 bytes) is not
    // written.
    void append(const PipeRow& r) {
        intAt(0, r.key, 4);
        stringAt(4, r.goodsBytes);
        stringAt(85, r.kindBytes);
        intAt(128, r.sortOrder.raw, 8);
        stringAt(136, r.sizeBytes);
        intAt(144, r.otherMethod, 4);
        stringAt(148, r.unitBytes);
        intAt(156, r.modeFlag, 4);
        intAt(160, r.costPrice.raw, 8);
        intAt(168, r.submittedPrice.raw, 8);
        intAt(176, r.listPrice.raw, 8);
        for (int n = 0; n < 7; ++n)
            intAt(184 + 8 * n, r.factors[std::size_t(n)].raw, 8);
        intAt(240, r.costUnitPrice.raw, 8);
        intAt(248, r.submittedUnitPrice.raw, 8);
        intAt(256, r.adoptedUnitPrice.raw, 8);
        file += buf;
    }
    // Raw bytes into the running buffer, as a damaged or foreign file has them.
    void fill(int at, int n, char byte) { buf.replace(at, n, QByteArray(n, byte)); }

    QByteArray buf = QByteArray(376, '\0'); // the running buffer
    QByteArray file;
};

// The little-endian integer T at offset of record (from 1) of a file.
template <typename T> T intIn(const QByteArray& file, int record, int offset) {
    return qFromLittleEndian<T>(file.constData() + (record - 1) * 376 + offset);
}

// Every field of a row, CALC amounts included.
inline std::string rowImage(const PipeRow& r) {
    QByteArray s = QByteArray::number(r.key) + '|' + r.goodsBytes + '|' + r.kindBytes + '|' +
                   r.sizeBytes + '|' + r.unitBytes + '|' + QByteArray::number(r.otherMethod) + '|' +
                   QByteArray::number(r.modeFlag);
    for (Currency c : {r.sortOrder, r.costPrice, r.submittedPrice, r.listPrice, r.costUnitPrice,
                       r.submittedUnitPrice, r.adoptedUnitPrice})
        s += '|' + QByteArray::number(qint64(c.raw));
    for (const auto* a : {&r.factors, &r.costAmounts, &r.submittedAmounts})
        for (Currency c : *a)
            s += ';' + QByteArray::number(qint64(c.raw));
    return s.toStdString();
}

// A row whose every field differs from that of any other seed.
inline PipeRow seeded(int seed) {
    PipeRow r;
    r.key = seed;
    r.goodsBytes = "goods" + QByteArray::number(seed);
    r.kindBytes = "kind" + QByteArray::number(seed);
    r.sizeBytes = QByteArray::number(seed % 1000) + "A";
    r.otherMethod = seed + 1;
    r.unitBytes = "c" + QByteArray::number(seed % 100);
    r.modeFlag = seed + 2;
    std::int64_t v = seed * 100;
    for (Currency* c : {&r.sortOrder, &r.costPrice, &r.submittedPrice, &r.listPrice,
                        &r.costUnitPrice, &r.submittedUnitPrice, &r.adoptedUnitPrice})
        *c = Currency::fromRaw(++v);
    for (auto* a : {&r.factors, &r.costAmounts, &r.submittedAmounts})
        for (Currency& c : *a)
            c = Currency::fromRaw(++v);
    return r;
}

// The fields of a row, one bit each; the factor of the pipefitter (5) apart.
constexpr unsigned Goods = 1, Kind = 2, Size = 4, Unit = 8, Flag = 16, Net = 32, Gross = 64,
                   Teika = 128, Pipefitter = 256, OtherFactors = 512, NTanka = 1024, GTanka = 2048,
                   FTanka = 4096, Amounts = 8192, Key = 16384, Sort = 32768, Yosan = 65536,
                   Texts = Goods | Kind | Size | Unit | Flag, Prices = Net | Gross | Teika,
                   Labour = Pipefitter | OtherFactors, Results = NTanka | GTanka | FTanka,
                   All = Texts | Prices | Labour | Results;

// Row to with the fields of mask m taken from row from.
inline PipeRow mix(PipeRow to, const PipeRow& from, unsigned m) {
    if (m & Goods) to.goodsBytes = from.goodsBytes;
    if (m & Kind) to.kindBytes = from.kindBytes;
    if (m & Size) to.sizeBytes = from.sizeBytes;
    if (m & Unit) to.unitBytes = from.unitBytes;
    if (m & Flag) to.modeFlag = from.modeFlag;
    if (m & Net) to.costPrice = from.costPrice;
    if (m & Gross) to.submittedPrice = from.submittedPrice;
    if (m & Teika) to.listPrice = from.listPrice;
    for (int n = 1; n <= 7; ++n)
        if (m & (n == 5 ? Pipefitter : OtherFactors)) to.factor(n) = from.factor(n);
    if (m & NTanka) to.costUnitPrice = from.costUnitPrice;
    if (m & GTanka) to.submittedUnitPrice = from.submittedUnitPrice;
    if (m & FTanka) to.adoptedUnitPrice = from.adoptedUnitPrice;
    if (m & Amounts) to.costAmounts = from.costAmounts;
    if (m & Amounts) to.submittedAmounts = from.submittedAmounts;
    if (m & Key) to.key = from.key;
    if (m & Sort) to.sortOrder = from.sortOrder;
    if (m & Yosan) to.otherMethod = from.otherMethod;
    return to;
}
