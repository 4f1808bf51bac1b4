// The library file: the byte image of the records, the carried-over bytes of
// the one record buffer, and reading back the sizes and the labour factors.
#include "edit/fdkfile.h"

#include "store/codepage.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>
#include <limits>

#include "fdkgolden.h"

namespace {

// Rows with every field set, each row different, negative numbers too, and
// strings that get shorter from row to row.
RowTable knownRows() {
    RowTable rows;
    for (int r = 1; r <= 60; ++r) {
        PipeRow& x = rows[r] = seeded(r);
        x.goodsBytes = QByteArray("GOODS-ABCDEFGHIJ").left(16 - (r % 7));
        x.kindBytes = r == 1 ? toAnsi(QStringLiteral("屋内一般")) : "K" + QByteArray::number(r);
        x.sizeBytes = r % 2 ? "1000A-" : "15A";
        x.otherMethod = r == 7 ? -5 : r * 11;
        x.submittedPrice = Currency::fromRaw(-7654321 - r);
        x.adoptedUnitPrice = strToCurr(QStringLiteral("922337203685477.5807"));
    }
    rows[60].goodsBytes.clear();
    return rows;
}

class FdkFile : public ::testing::Test {
protected:
    QString path(const char* name) const { return dir.filePath(QString::fromUtf8(name)); }
    // Through the record buffer of the run, zeros at its start.
    QByteArray write(const char* name, const RowTable& rows) {
        writeFdkFile(path(name), rows, buffer);
        return fileBytes(path(name));
    }
    void read(const char* name, RowTable& rows) { readFdkFile(path(name), rows, buffer); }
    // The message of the error a read raises, empty when none.
    QString readError(const char* name, RowTable& rows) {
        try {
            read(name, rows);
        } catch (const FileError& e) {
            return QString::fromUtf8(e.what());
        }
        return QString();
    }
    QByteArray bufferBytes(int n) const {
        return QByteArray(reinterpret_cast<const char*>(buffer.data()), n);
    }
    QTemporaryDir dir;
    FdkRecord buffer{};
};

TEST_F(FdkFile, WriterGivesTheGoldenBytes) {
    const RowTable rows = knownRows();
    const QByteArray bytes = write("a.fdk", rows);
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(rows[r]);
    ASSERT_EQ(bytes.size(), 22560);
    EXPECT_EQ(bytes, golden.file);

    // A few bytes by hand, to be sure of the builder too.
    EXPECT_EQ(intIn<qint32>(bytes, 2, 0), 2);
    EXPECT_EQ(bytes.mid(4, 16), QByteArray(1, 15) + "GOODS-ABCDEFGHI"); // GOODS of row 1
    EXPECT_EQ(intIn<qint64>(bytes, 1, 168), -7654322);
    EXPECT_EQ(intIn<qint32>(bytes, 7, 144), -5);
    EXPECT_EQ(intIn<qint64>(bytes, 3, 184 + 6 * 8), 314);
    EXPECT_EQ(intIn<qint64>(bytes, 1, 256), std::numeric_limits<std::int64_t>::max());
    // Nothing ever wrote the gaps or the CALC place of a fresh buffer.
    for (int r = 1; r <= 60; ++r) {
        const int at = (r - 1) * 376;
        EXPECT_EQ(bytes.mid(at + 126, 2), QByteArray(2, '\0')) << r;
        EXPECT_EQ(bytes[at + 143], '\0') << r;
        EXPECT_EQ(bytes.mid(at + 153, 3), QByteArray(3, '\0')) << r;
        EXPECT_EQ(bytes.mid(at + 264, 112), QByteArray(112, '\0')) << r;
    }
    // A shorter string leaves the record before's bytes behind it: row 1 SIZE
    // "1000A-", row 2 "15A"; row 1 KIND 8 bytes of code page 932, row 2 "K2".
    EXPECT_EQ(bytes.mid(376 + 136, 7), QByteArray(1, 3) + "15A0A-");
    EXPECT_EQ(bytes.mid(376 + 85, 1 + 8),
              QByteArray("\x02K2", 3) + toAnsi(QStringLiteral("屋内一般")).mid(2));
    // Row 60 has no GOODS: its length byte is 0 and row 59's 13 bytes stay.
    EXPECT_EQ(bytes.mid(59 * 376 + 4, 14), QByteArray(1, 0) + rows[59].goodsBytes);

    // The buffer carries over to the next save: row 60 had "15A" in SIZE.
    RowTable shortRows = rows;
    shortRows[1].sizeBytes = "1";
    EXPECT_EQ(write("b.fdk", shortRows).mid(136, 4), QByteArray(1, 1) + "15A");
}

// Exactly 59 records are enough: row 60, the options, is not read at all.
TEST_F(FdkFile, ReadTakesSizeYosanAndFactorsOfRowsOneTo59Only) {
    GoldenRecords golden;
    golden.fill(136, 7, 'Z');
    for (int r = 1; r <= 59; ++r) {
        golden.fill(264, 112, char(r)); // no reader looks at the CALC place
        golden.append(seeded(100 + r));
    }
    writeFileBytes(path("59.fdk"), golden.file);
    const RowTable before = knownRows();
    RowTable rows = before;
    read("59.fdk", rows);
    for (int r = 1; r <= 60; ++r)
        EXPECT_EQ(
            rowImage(rows[r]),
            rowImage(r < 60 ? mix(before[r], seeded(100 + r), Size | Yosan | Labour) : before[r]))
            << r;
    EXPECT_EQ(bufferBytes(376), golden.file.mid(58 * 376, 376)); // record 59 whole
    // A length beyond the field (a damaged file) takes the field and no more;
    // bytes after record 59 are not looked at.
    QByteArray damaged = golden.file + QByteArray(1000, 'x');
    damaged[136] = char(200);
    writeFileBytes(path("damaged.fdk"), damaged);
    read("damaged.fdk", rows);
    EXPECT_EQ(rows[1].sizeBytes, QByteArray("101AZZ"));
    EXPECT_EQ(rows[59].sizeBytes, QByteArray("159A"));
}

TEST_F(FdkFile, ShortFileFailsAtTheMissingRecordAndKeepsWhatWasRead) {
    const RowTable rows = knownRows();
    const QByteArray bytes = write("a.fdk", rows);
    writeFileBytes(path("short.fdk"), bytes.left(10 * 376 + 100));
    RowTable target;
    const QString text = readError("short.fdk", target);
    for (const QString& part :
         {QStringLiteral("入出力エラー"), path("short.fdk"), QStringLiteral("3860 バイト"),
          QStringLiteral("22560 バイト"), QStringLiteral("1 行目から 10 行目まで")})
        EXPECT_TRUE(text.contains(part)) << text.toStdString();
    for (int r = 1; r <= 11; ++r)
        EXPECT_EQ(rowImage(target[r]),
                  rowImage(r <= 10 ? mix({}, rows[r], Size | Yosan | Labour) : PipeRow()))
            << r;
    // The 100 bytes of record 11 that were there are in the buffer.
    EXPECT_EQ(bufferBytes(100), bytes.mid(10 * 376, 100));
    // An empty file, a missing file.
    writeFileBytes(path("empty.fdk"), QByteArray());
    EXPECT_TRUE(
        readError("empty.fdk", target).contains(QStringLiteral("読み込んだ行はありません")));
    EXPECT_TRUE(readError("none.fdk", target).contains(path("none.fdk")));
}

TEST_F(FdkFile, WritingReplacesAndAFailedWriteKeepsTheOldFile) {
    RowTable rows = knownRows();
    write("a.fdk", rows);
    rows[3].otherMethod = 4242;
    const QByteArray second = write("a.fdk", rows);
    EXPECT_EQ(second.size(), 22560);
    EXPECT_EQ(intIn<qint32>(second, 3, 144), 4242);
    // A name that is a folder can't be replaced, nor a file in a missing
    // folder made: the error comes and the folder stays as it was.
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("d.fdk")));
    EXPECT_THROW(writeFdkFile(path("d.fdk"), rows, buffer), FileError);
    EXPECT_THROW(writeFdkFile(path("no/folder/a.fdk"), rows, buffer), FileError);
    EXPECT_TRUE(QFileInfo(path("d.fdk")).isDir());
    EXPECT_EQ(
        QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot),
        (QStringList{QStringLiteral("a.fdk"), QStringLiteral("d.fdk")}));
}

} // namespace
