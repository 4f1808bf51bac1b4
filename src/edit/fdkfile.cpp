#include "edit/fdkfile.h"

#include "util/wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

void putInt32(FdkRecord& r, int offset, std::int32_t value) {
    qToLittleEndian<std::int32_t>(value, r.data() + offset);
}

void putCurrency(FdkRecord& r, int offset, Currency value) {
    qToLittleEndian<std::int64_t>(value.raw, r.data() + offset);
}

// Length byte and bytes; the rest of the field keeps what it holds.
void putString(FdkRecord& r, int offset, int width, const QByteArray& text) {
    const int n = std::min(int(text.size()), width);
    r[std::size_t(offset)] = static_cast<unsigned char>(n);
    if (n > 0) std::memcpy(r.data() + offset + 1, text.constData(), std::size_t(n));
}

std::int32_t int32At(const FdkRecord& r, int offset) {
    return qFromLittleEndian<std::int32_t>(r.data() + offset);
}

Currency currencyAt(const FdkRecord& r, int offset) {
    return Currency::fromRaw(qFromLittleEndian<std::int64_t>(r.data() + offset));
}

// A length byte beyond the field's width (a damaged file) takes the field
// and no more: the row's width holds.
QByteArray stringAt(const FdkRecord& r, int offset, int width) {
    const int n = std::min(int(r[std::size_t(offset)]), width);
    return QByteArray(reinterpret_cast<const char*>(r.data() + offset + 1), n);
}

QString fileLine(const QString& path) {
    return QStringLiteral("\nファイル: ") + path;
}

QString reasonLine(const QString& path, const QString& systemReason, bool writing) {
    return QLatin1Char('\n') + fileFailureReason(path, systemReason, writing);
}

} // namespace

void putRowFields(const PipeRow& row, FdkRecord& record) {
    putString(record, FdkOffset::GOODS, GoodsWidth, row.goodsBytes);
    putString(record, FdkOffset::KIND, KindWidth, row.kindBytes);
    putString(record, FdkOffset::CI, UnitWidth, row.unitBytes);
    putInt32(record, FdkOffset::UKEY, row.key);
    putInt32(record, FdkOffset::YOSAN, row.otherMethod);
    putCurrency(record, FdkOffset::SORT, row.sortOrder);
    putInt32(record, FdkOffset::FLAG, row.modeFlag);
    putString(record, FdkOffset::SIZE, SizeWidth, row.sizeBytes);
    putCurrency(record, FdkOffset::NET, row.costPrice);
    putCurrency(record, FdkOffset::GROSS, row.submittedPrice);
    putCurrency(record, FdkOffset::TEIKA, row.listPrice);
    putCurrency(record, FdkOffset::NTANKA, row.costUnitPrice);
    putCurrency(record, FdkOffset::GTANKA, row.submittedUnitPrice);
    putCurrency(record, FdkOffset::FTANKA, row.adoptedUnitPrice);
    for (int n = 1; n <= 7; ++n)
        putCurrency(record, FdkOffset::DATA1 + (n - 1) * 8, row.factor(n));
}

void takeLabourFields(const FdkRecord& record, PipeRow& row) {
    row.otherMethod = int32At(record, FdkOffset::YOSAN);
    row.sizeBytes = stringAt(record, FdkOffset::SIZE, SizeWidth);
    for (int n = 1; n <= 7; ++n)
        row.factor(n) = currencyAt(record, FdkOffset::DATA1 + (n - 1) * 8);
}

QByteArray fdkFileBytes(const RowTable& rows, FdkRecord& buffer) {
    QByteArray bytes;
    bytes.reserve(FdkFileSize);
    for (int r = 1; r <= FdkRecordCount; ++r) {
        putRowFields(rows[r], buffer);
        bytes.append(reinterpret_cast<const char*>(buffer.data()), FdkRecordSize);
    }
    return bytes;
}

void writeFdkFile(const QString& path, const RowTable& rows, FdkRecord& buffer) {
    // Whole or not at all: a failure halfway leaves the entry of that name as
    // it was, never a cut-off file.
    QString systemReason;
    if (!replaceFileWhole(path, fdkFileBytes(rows, buffer), &systemReason))
        throw FileError(QStringLiteral("入出力エラー: 標準歩掛のファイルに書き込めません。") +
                        fileLine(path) + reasonLine(path, systemReason, true));
}

void readFdkBytes(const QByteArray& bytes, const QString& path, RowTable& rows, FdkRecord& buffer) {
    for (int r = 1; r <= FdkReadRows; ++r) {
        const qsizetype at = qsizetype(r - 1) * FdkRecordSize;
        if (bytes.size() - at >= FdkRecordSize) {
            std::memcpy(buffer.data(), bytes.constData() + at, FdkRecordSize);
            takeLabourFields(buffer, rows[r]);
            continue;
        }
        // The file ends inside the entry. What was read stays read, and the
        // buffer holds the part record as a read leaves it.
        if (bytes.size() > at)
            std::memcpy(buffer.data(), bytes.constData() + at, std::size_t(bytes.size() - at));
        QString text = QStringLiteral("入出力エラー: 標準歩掛のファイルが途中で終わっています。") +
                       fileLine(path) +
                       QStringLiteral("\n大きさ: %1 バイト (標準歩掛は %2 バイトです)")
                           .arg(bytes.size())
                           .arg(FdkFileSize);
        if (r == 1)
            text += QStringLiteral("\n読み込んだ行はありません。");
        else
            text += QStringLiteral("\n1 行目から %1 行目まではサイズと歩掛を読み込みました "
                                   "(再計算はしていません)。")
                        .arg(r - 1);
        throw FileError(text);
    }
}

void readFdkFile(const QString& path, RowTable& rows, FdkRecord& buffer) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(QStringLiteral("入出力エラー: 標準歩掛のファイルを開けません。") +
                        fileLine(path) + reasonLine(path, file.errorString(), false));
    // Only the records an entry gives back; a longer file is fine.
    const QByteArray bytes = file.read(qint64(FdkReadRows) * FdkRecordSize);
    if (file.error() != QFileDevice::NoError)
        throw FileError(QStringLiteral("入出力エラー: 標準歩掛のファイルを読み込めません。") +
                        fileLine(path) + reasonLine(path, file.errorString(), false));
    readFdkBytes(bytes, path, rows, buffer);
}
