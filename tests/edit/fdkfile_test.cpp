// The library file: the byte image of the records, the carried-over bytes of
// the one record buffer, and reading back the sizes and the labour factors.
#include "edit/fdkfile.h"

#include "store/codepage.h"

#include "fdkgolden.h"
#include "support/testing.h"

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

TEST_F(FdkFile, WriterGivesTheGoldenBytesAndAShortFileFailsAtTheMissingRecord) {
    const RowTable rows = knownRows();
    const QByteArray bytes = write("a.fdk", rows);
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(rows[r]);
    // The running buffer of the builder carries the bytes that no field of a
    // record covers: gaps, the CALC place, the tails of shorter strings.
    EXPECT_EQ(bytes, golden.file);
    // The buffer carries over to the next save: row 60 had "15A" in SIZE.
    RowTable shortRows = rows;
    shortRows[1].sizeBytes = "1";
    EXPECT_EQ(write("b.fdk", shortRows).mid(136, 4), QByteArray(1, 1) + "15A");

    // A short file fails at the missing record and keeps what was read.
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
    EXPECT_EQ(rows[1].sizeBytes + '|' + rows[59].sizeBytes, QByteArray("101AZZ|159A"));
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
