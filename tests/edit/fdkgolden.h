#pragma once
// The byte image of a library record, built here from the offset table alone
// (no code of the program): little-endian integers, a length byte in front of
// each string, Currency as its raw 64-bit value. Records are assembled in one
// running buffer as the program does, so bytes that no field covers carry over.

#include "store/piperow.h"

#include <QByteArray>

#include <cstdint>

class GoldenRecords {
public:
    // The running buffer starts as given (zeros by default).
    explicit GoldenRecords(QByteArray start = QByteArray(376, '\0')) : buf(std::move(start)) {}

    void int32At(int offset, std::int32_t v) {
        const auto u = static_cast<std::uint32_t>(v);
        for (int i = 0; i < 4; ++i)
            buf[offset + i] = char((u >> (8 * i)) & 0xff);
    }
    void int64At(int offset, std::int64_t v) {
        const auto u = static_cast<std::uint64_t>(v);
        for (int i = 0; i < 8; ++i)
            buf[offset + i] = char((u >> (8 * i)) & 0xff);
    }
    void stringAt(int offset, const QByteArray& s) {
        buf[offset] = char(s.size());
        for (int i = 0; i < s.size(); ++i)
            buf[offset + 1 + i] = s[i];
    }

    // One row as the table places it; the CALC place (264, 112 bytes) is not
    // written.
    void append(const PipeRow& r) {
        int32At(0, r.key);
        stringAt(4, r.goodsBytes);
        stringAt(85, r.kindBytes);
        int64At(128, r.sortOrder.raw);
        stringAt(136, r.sizeBytes);
        int32At(144, r.otherMethod);
        stringAt(148, r.unitBytes);
        int32At(156, r.modeFlag);
        int64At(160, r.costPrice.raw);
        int64At(168, r.submittedPrice.raw);
        int64At(176, r.listPrice.raw);
        for (int n = 0; n < 7; ++n)
            int64At(184 + 8 * n, r.factors[std::size_t(n)].raw);
        int64At(240, r.costUnitPrice.raw);
        int64At(248, r.submittedUnitPrice.raw);
        int64At(256, r.adoptedUnitPrice.raw);
        file += buf;
    }
    // Raw bytes into the running buffer, as a damaged or foreign file has them.
    void fill(int offset, int count, char byte) {
        for (int i = 0; i < count; ++i)
            buf[offset + i] = byte;
    }
    void appendBuffer() { file += buf; }

    QByteArray buf;
    QByteArray file;
};

inline std::int32_t int32In(const QByteArray& file, int record, int offset) {
    std::uint32_t u = 0;
    const int at = (record - 1) * 376 + offset;
    for (int i = 0; i < 4; ++i)
        u |= std::uint32_t(std::uint8_t(file[at + i])) << (8 * i);
    return static_cast<std::int32_t>(u);
}

inline std::int64_t int64In(const QByteArray& file, int record, int offset) {
    std::uint64_t u = 0;
    const int at = (record - 1) * 376 + offset;
    for (int i = 0; i < 8; ++i)
        u |= std::uint64_t(std::uint8_t(file[at + i])) << (8 * i);
    return static_cast<std::int64_t>(u);
}
