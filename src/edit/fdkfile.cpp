#include "edit/fdkfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

FdkRecord recordBuffer{};

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
    return Currency::FromRaw(qFromLittleEndian<std::int64_t>(r.data() + offset));
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

// The cause in words a user knows, with the system's own text behind it.
QString reasonLine(const QString& path, const QFileDevice& file, bool writing) {
    const QFileInfo info(path);
    QString reason;
    if (info.isDir())
        reason = QStringLiteral("同じ名前のフォルダーがあります。");
    else if (!info.dir().exists())
        reason = QStringLiteral("フォルダーがありません。");
    else if (!writing && !info.exists())
        reason = QStringLiteral("ファイルがありません。");
    else if (writing)
        reason = QStringLiteral("書き込みが許可されていないか、ディスクに空きがありません。");
    else
        reason = QStringLiteral("読み取りが許可されていないか、ファイルを読めません。");
    return QStringLiteral("\n理由: ") + reason + QStringLiteral(" (") + file.errorString() +
           QLatin1Char(')');
}

} // namespace

FdkRecord& FdkRecordBuffer() {
    return recordBuffer;
}

void ResetFdkRecordBuffer() {
    recordBuffer.fill(0);
}

void PutRowFields(const Fuzokurecordtypex& row, FdkRecord& record) {
    putString(record, FdkOffset::GOODS, GoodsWidth, row.GOODS);
    putString(record, FdkOffset::KIND, KindWidth, row.KIND);
    putString(record, FdkOffset::CI, CiWidth, row.CI);
    putInt32(record, FdkOffset::UKEY, row.UKEY);
    putInt32(record, FdkOffset::YOSAN, row.YOSAN);
    putCurrency(record, FdkOffset::SORT, row.SORT);
    putInt32(record, FdkOffset::FLAG, row.FLAG);
    putString(record, FdkOffset::SIZE, SizeWidth, row.SIZE);
    putCurrency(record, FdkOffset::NET, row.NET);
    putCurrency(record, FdkOffset::GROSS, row.GROSS);
    putCurrency(record, FdkOffset::TEIKA, row.TEIKA);
    putCurrency(record, FdkOffset::NTANKA, row.NTANKA);
    putCurrency(record, FdkOffset::GTANKA, row.GTANKA);
    putCurrency(record, FdkOffset::FTANKA, row.FTANKA);
    for (int n = 1; n <= 7; ++n)
        putCurrency(record, FdkOffset::DATA1 + (n - 1) * 8, row.Data(n));
}

void TakeLabourFields(const FdkRecord& record, Fuzokurecordtypex& row) {
    row.YOSAN = int32At(record, FdkOffset::YOSAN);
    row.SIZE = stringAt(record, FdkOffset::SIZE, SizeWidth);
    for (int n = 1; n <= 7; ++n)
        row.Data(n) = currencyAt(record, FdkOffset::DATA1 + (n - 1) * 8);
}

void WriteFdkFile(const QString& path, const RowTable& rows) {
    // Through a temporary file: a failure halfway leaves the entry of that
    // name as it was, never a cut-off file.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルを作成できません。") +
                          fileLine(path) + reasonLine(path, file, true));
    FdkRecord& buffer = FdkRecordBuffer();
    for (int r = 1; r <= FdkRecordCount; ++r) {
        PutRowFields(rows[r], buffer);
        if (file.write(reinterpret_cast<const char*>(buffer.data()), FdkRecordSize) !=
            FdkRecordSize)
            throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルに書き込めません。") +
                              fileLine(path) + reasonLine(path, file, true));
    }
    // A buffer that does not reach the disk (a full disk) must fail here:
    // commit() passes over it and would replace the entry by a cut-off file.
    if (!file.flush()) {
        file.cancelWriting();
        throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルに書き込めません。") +
                          fileLine(path) + reasonLine(path, file, true));
    }
    if (!file.commit())
        throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルに書き込めません。") +
                          fileLine(path) + reasonLine(path, file, true));
}

void ReadFdkFile(const QString& path, RowTable& rows) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルを開けません。") +
                          fileLine(path) + reasonLine(path, file, false));
    FdkRecord& buffer = FdkRecordBuffer();
    for (int r = 1; r <= FdkReadRows; ++r) {
        const qint64 got = file.read(reinterpret_cast<char*>(buffer.data()), FdkRecordSize);
        if (got == FdkRecordSize) {
            TakeLabourFields(buffer, rows[r]);
            continue;
        }
        if (got < 0)
            throw EInOutError(QStringLiteral("入出力エラー: 標準歩掛のファイルを読み込めません。") +
                              fileLine(path) + reasonLine(path, file, false));
        // The file ends inside the entry. What was read stays read.
        QString text = QStringLiteral("入出力エラー: 標準歩掛のファイルが途中で終わっています。") +
                       fileLine(path) +
                       QStringLiteral("\n大きさ: %1 バイト (標準歩掛は %2 バイトです)")
                           .arg(file.size())
                           .arg(FdkFileSize);
        if (r == 1)
            text += QStringLiteral("\n読み込んだ行はありません。");
        else
            text += QStringLiteral("\n1 行目から %1 行目まではサイズと歩掛を読み込みました "
                                   "(再計算はしていません)。")
                        .arg(r - 1);
        throw EInOutError(text);
    }
}
