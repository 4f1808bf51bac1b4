// The .fdk reader: any file, whole, short, long or damaged, reads without
// harm; a whole one gives every row exactly the labour fields of its record
// and nothing else; a short one raises the Japanese error and keeps what was
// read; what was read, written again and read, is the same.

#include "edit/fdkfile.h"
#include "fuzzcheck.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>

namespace {

QString folder() {
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/qorvale-fuzz-XXXXXX"));
    return dir.path();
}

void checkRow(const QByteArray& file, int r, const PipeRow& row) {
    const auto* rec = reinterpret_cast<const unsigned char*>(file.constData()) +
                      std::size_t(r - 1) * FdkRecordSize;
    FUZZ_CHECK_EQ(row.otherMethod, qFromLittleEndian<std::int32_t>(rec + FdkOffset::YOSAN));
    const int len = std::min(int(rec[FdkOffset::SIZE]), SizeWidth);
    FUZZ_CHECK_EQ(row.sizeBytes,
                  QByteArray(reinterpret_cast<const char*>(rec + FdkOffset::SIZE + 1), len));
    for (int n = 1; n <= 7; ++n)
        FUZZ_CHECK_EQ(row.factor(n).raw,
                      qFromLittleEndian<std::int64_t>(rec + FdkOffset::DATA1 + (n - 1) * 8));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    // Mostly files near the real size: a record, repeated or cut.
    QByteArray file;
    const int shape = in.ConsumeIntegralInRange(0, 3);
    const std::string head = in.ConsumeRandomLengthString(FdkRecordSize * 2);
    if (shape == 0) {
        file = QByteArray(head.data(), qsizetype(head.size()));
    } else {
        const int records = shape == 1 ? FdkRecordCount : in.ConsumeIntegralInRange(0, 62);
        QByteArray rec(head.data(), qsizetype(std::min<std::size_t>(head.size(), FdkRecordSize)));
        rec.resize(FdkRecordSize, '\0');
        for (int r = 0; r < records; ++r) {
            file += rec;
            rec[FdkOffset::SIZE] = char(in.ConsumeIntegral<unsigned char>());
            rec[FdkOffset::YOSAN] = char(r);
        }
        if (shape == 3) file.chop(in.ConsumeIntegralInRange<int>(0, int(file.size())));
    }
    // Now and then through a real file; the rest in memory, the same bytes.
    const bool real = in.ConsumeIntegralInRange(0, 31) == 0;
    const QString path = folder() + QStringLiteral("/entry.fdk");
    if (real) {
        QFile f(path);
        FUZZ_CHECK(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(file);
    }

    RowTable rows;
    FdkRecord buffer{};
    // Marks in the fields a read never touches.
    for (int r = 1; r <= FdkRecordCount; ++r) {
        rows[r].key = r;
        rows[r].costPrice = Currency::fromRaw(r);
        rows[r].goodsBytes = "goods";
    }
    const int whole = int(file.size() / FdkRecordSize);
    bool failed = false;
    try {
        if (real)
            readFdkFile(path, rows, buffer);
        else
            readFdkBytes(file, path, rows, buffer);
    } catch (const FileError& e) {
        failed = true;
        FUZZ_CHECK(QString::fromUtf8(e.what()).startsWith(QStringLiteral("入出力エラー")));
    }
    FUZZ_CHECK_EQ(failed, whole < FdkReadRows);
    for (int r = 1; r <= std::min(whole, FdkReadRows); ++r)
        checkRow(file, r, rows[r]);
    for (int r = 1; r <= FdkRecordCount; ++r) {
        FUZZ_CHECK_EQ(rows[r].key, r);
        FUZZ_CHECK_EQ(rows[r].costPrice.raw, std::int64_t(r));
        FUZZ_CHECK(rows[r].sizeBytes.size() <= SizeWidth);
        if (r > whole || r == FdkRecordCount) FUZZ_CHECK(rows[r].sizeBytes.isEmpty());
    }
    if (failed) return 0;

    // Written and read again: the same labour fields.
    RowTable again;
    if (real) {
        const QString copy = folder() + QStringLiteral("/copy.fdk");
        writeFdkFile(copy, rows, buffer);
        FUZZ_CHECK_EQ(QFile(copy).size(), FdkFileSize);
        readFdkFile(copy, again, buffer);
    } else {
        const QByteArray copy = fdkFileBytes(rows, buffer);
        FUZZ_CHECK_EQ(copy.size(), FdkFileSize);
        readFdkBytes(copy, path, again, buffer);
    }
    for (int r = 1; r <= FdkReadRows; ++r) {
        FUZZ_CHECK_EQ(again[r].otherMethod, rows[r].otherMethod);
        FUZZ_CHECK_EQ(again[r].sizeBytes, rows[r].sizeBytes);
        for (int n = 1; n <= 7; ++n)
            FUZZ_CHECK_EQ(again[r].factor(n).raw, rows[r].factor(n).raw);
    }
    return 0;
}
