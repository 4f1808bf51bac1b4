// The library file: the byte image of the records, the carried-over bytes of
// the one record buffer, and reading back the sizes and the labour factors.
#include "edit/fdkfile.h"

#include "store/codepage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

#include "fdkgolden.h"

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromLatin1(t));
}

// Rows with every field set, each row different, negative numbers too, and
// strings that get shorter from row to row.
RowTable knownRows() {
    RowTable rows;
    for (int r = 1; r <= 60; ++r) {
        PipeRow& x = rows[r];
        x.key = r;
        x.goodsBytes = QByteArray("GOODS-ABCDEFGHIJ").left(16 - (r % 7));
        x.kindBytes =
            r == 1 ? toAnsi(QStringLiteral("屋内一般")) : QByteArray("K") + QByteArray::number(r);
        x.sortOrder = Currency::fromInt(r * 3);
        x.sizeBytes = r % 2 ? QByteArray("1000A-") : QByteArray("15A");
        x.otherMethod = r == 7 ? -5 : r * 11;
        x.unitBytes = toAnsi(QStringLiteral("ｍ"));
        x.modeFlag = r == 60 ? 1 : -r;
        x.costPrice = Currency::fromRaw(1234567 + r);
        x.submittedPrice = Currency::fromRaw(-7654321 - r);
        x.listPrice = Currency::fromRaw(std::int64_t(1) << 40);
        for (int n = 1; n <= 7; ++n)
            x.factor(n) = Currency::fromRaw(r * 1000 + n);
        x.costUnitPrice = c("100.5");
        x.submittedUnitPrice = c("-0.0001");
        x.adoptedUnitPrice = c("922337203685477.5807");
        for (int n = 0; n < 7; ++n) {
            x.costAmounts[std::size_t(n)] = Currency::fromInt(99);
            x.submittedAmounts[std::size_t(n)] = Currency::fromInt(77);
        }
    }
    rows[60].goodsBytes.clear();
    return rows;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
    return f.readAll();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    ASSERT_EQ(f.write(bytes), bytes.size());
}

class FdkFile : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    QString path(const char* name) const { return dir.filePath(QString::fromUtf8(name)); }
    // The record buffer of the run, zeros at its start.
    void writeFdkFile(const QString& file, const RowTable& rows) {
        ::writeFdkFile(file, rows, buffer);
    }
    void readFdkFile(const QString& file, RowTable& rows) { ::readFdkFile(file, rows, buffer); }
    QTemporaryDir dir;
    FdkRecord buffer{};
};

TEST_F(FdkFile, OffsetsAndSizeAreTheTable) {
    EXPECT_EQ(FdkRecordSize, 376);
    EXPECT_EQ(FdkFileSize, 22560);
    EXPECT_EQ(FdkOffset::KIND, 85);
    EXPECT_EQ(FdkOffset::SORT, 128);
    EXPECT_EQ(FdkOffset::SIZE, 136);
    EXPECT_EQ(FdkOffset::YOSAN, 144);
    EXPECT_EQ(FdkOffset::CI, 148);
    EXPECT_EQ(FdkOffset::FLAG, 156);
    EXPECT_EQ(FdkOffset::DATA1, 184);
    EXPECT_EQ(FdkOffset::FTANKA, 256);
    EXPECT_EQ(FdkOffset::CALC + 112, FdkRecordSize);
}

TEST_F(FdkFile, WriterGivesTheGoldenBytes) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    const QByteArray bytes = readAll(path("a.fdk"));
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(rows[r]);
    ASSERT_EQ(bytes.size(), 22560);
    EXPECT_EQ(bytes, golden.file);

    // A few bytes by hand, to be sure of the builder too.
    EXPECT_EQ(int32In(bytes, 2, 0), 2);
    EXPECT_EQ(quint8(bytes[4]), 15); // GOODS of row 1: 16 - 1 bytes
    EXPECT_EQ(bytes.mid(5, 15), QByteArray("GOODS-ABCDEFGHI"));
    EXPECT_EQ(int64In(bytes, 1, 168), -7654322);
    EXPECT_EQ(int32In(bytes, 7, 144), -5);
    EXPECT_EQ(int64In(bytes, 3, 184 + 6 * 8), 3007);
    EXPECT_EQ(int64In(bytes, 1, 256), std::numeric_limits<std::int64_t>::max());
    // Nothing ever wrote the gaps or the CALC place of a fresh buffer.
    for (int r = 1; r <= 60; ++r) {
        const int at = (r - 1) * 376;
        EXPECT_EQ(bytes.mid(at + 126, 2), QByteArray(2, '\0')) << r;
        EXPECT_EQ(bytes[at + 143], '\0') << r;
        EXPECT_EQ(bytes.mid(at + 153, 3), QByteArray(3, '\0')) << r;
        EXPECT_EQ(bytes.mid(at + 264, 112), QByteArray(112, '\0')) << r;
    }
}

TEST_F(FdkFile, AShorterStringLeavesThePreviousRecordsBytesBehindIt) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    const QByteArray bytes = readAll(path("a.fdk"));
    // Row 1 SIZE "1000A-", row 2 "15A": record 2 holds "15A" and then "0A-".
    EXPECT_EQ(bytes.mid(376 + 136, 7), QByteArray("\x03"
                                                  "15A0A-",
                                                  7));
    // Row 1 KIND is 8 bytes of code page 932, row 2 "K2": "K2" and the rest.
    const QByteArray kind1 = toAnsi(QStringLiteral("屋内一般"));
    EXPECT_EQ(bytes.mid(376 + 85, 1 + 8), QByteArray("\x02K2", 3) + kind1.mid(2));
    // Row 60 has no GOODS: its length byte is 0 and row 59's text stays.
    EXPECT_EQ(quint8(bytes[59 * 376 + 4]), 0);
    EXPECT_EQ(bytes.mid(59 * 376 + 5, 16 - (59 % 7)), rows[59].goodsBytes);
}

TEST_F(FdkFile, TheBufferCarriesOverFromOneSaveToTheNext) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    RowTable shortRows = rows;
    shortRows[1].sizeBytes = "1";
    writeFdkFile(path("b.fdk"), shortRows);
    // Row 60 of the first save had "15A" in SIZE; its "5A" stays behind "1".
    EXPECT_EQ(readAll(path("b.fdk")).mid(136, 4), QByteArray("\x01"
                                                             "15A",
                                                             4));
}

TEST_F(FdkFile, ALoadLeavesItsBytesForTheNextSave) {
    // A file from elsewhere with bytes in the gaps and the CALC place, record
    // 59 marked apart from record 60.
    GoldenRecords other;
    const RowTable rows = knownRows();
    for (int r = 1; r <= 60; ++r) {
        other.fill(126, 2, char(r));
        other.fill(143, 1, char(r));
        other.fill(153, 3, char(r));
        other.fill(264, 112, char(0x80 + r));
        other.fill(137, 6, char('a' + r % 26)); // SIZE bytes behind any length
        other.append(rows[r]);
    }
    writeAll(path("other.fdk"), other.file);
    RowTable target = knownRows();
    readFdkFile(path("other.fdk"), target);

    RowTable next = knownRows();
    next[1].sizeBytes = "";
    writeFdkFile(path("next.fdk"), next);
    const QByteArray bytes = readAll(path("next.fdk"));
    // Record 1 of the save holds what record 59 of the load left; record 60
    // was never read.
    EXPECT_EQ(bytes.mid(126, 2), QByteArray(2, char(59)));
    EXPECT_EQ(bytes[143], char(59));
    EXPECT_EQ(bytes.mid(153, 3), QByteArray(3, char(59)));
    EXPECT_EQ(bytes.mid(264, 112), QByteArray(112, char(0x80 + 59)));
    // SIZE of row 1 is empty now; row 59's "1000A-" sits behind the 0.
    EXPECT_EQ(bytes.mid(136, 7), QByteArray("\x00"
                                            "1000A-",
                                            7));
    // The golden builder started from the loaded record gives the whole file.
    GoldenRecords golden(other.file.mid(58 * 376, 376));
    for (int r = 1; r <= 60; ++r)
        golden.append(next[r]);
    EXPECT_EQ(bytes, golden.file);
}

TEST_F(FdkFile, ReadTakesSizeYosanAndFactorsOfRowsOneTo59Only) {
    RowTable fileRows;
    for (int r = 1; r <= 60; ++r) {
        fileRows[r].key = 1000 + r;
        fileRows[r].goodsBytes = "FILE";
        fileRows[r].kindBytes = "FILEKIND";
        fileRows[r].sortOrder = Currency::fromInt(5);
        fileRows[r].sizeBytes = QByteArray("S") + QByteArray::number(r);
        fileRows[r].otherMethod = 500 + r;
        fileRows[r].unitBytes = "kg";
        fileRows[r].modeFlag = 9;
        fileRows[r].costPrice = fileRows[r].submittedPrice = fileRows[r].listPrice =
            Currency::fromInt(1);
        for (int n = 1; n <= 7; ++n)
            fileRows[r].factor(n) = Currency::fromRaw(-(r * 10 + n));
        fileRows[r].costUnitPrice = fileRows[r].submittedUnitPrice = fileRows[r].adoptedUnitPrice =
            Currency::fromInt(2);
    }
    GoldenRecords golden;
    for (int r = 1; r <= 60; ++r)
        golden.append(fileRows[r]);
    // The CALC place of the file says something; no reader looks at it.
    writeAll(path("in.fdk"), golden.file);

    const RowTable before = knownRows();
    RowTable rows = before;
    readFdkFile(path("in.fdk"), rows);
    for (int r = 1; r <= 59; ++r) {
        PipeRow expected = before[r];
        expected.otherMethod = 500 + r;
        expected.sizeBytes = QByteArray("S") + QByteArray::number(r);
        for (int n = 1; n <= 7; ++n)
            expected.factor(n) = Currency::fromRaw(-(r * 10 + n));
        const PipeRow& got = rows[r];
        EXPECT_EQ(got.key, expected.key);
        EXPECT_EQ(got.goodsBytes, expected.goodsBytes);
        EXPECT_EQ(got.kindBytes, expected.kindBytes);
        EXPECT_EQ(got.sortOrder, expected.sortOrder);
        EXPECT_EQ(got.sizeBytes, expected.sizeBytes) << r;
        EXPECT_EQ(got.otherMethod, expected.otherMethod);
        EXPECT_EQ(got.unitBytes, expected.unitBytes);
        EXPECT_EQ(got.modeFlag, expected.modeFlag);
        EXPECT_EQ(got.costPrice, expected.costPrice);
        EXPECT_EQ(got.submittedPrice, expected.submittedPrice);
        EXPECT_EQ(got.listPrice, expected.listPrice);
        EXPECT_EQ(got.factors, expected.factors);
        EXPECT_EQ(got.costUnitPrice, expected.costUnitPrice);
        EXPECT_EQ(got.submittedUnitPrice, expected.submittedUnitPrice);
        EXPECT_EQ(got.adoptedUnitPrice, expected.adoptedUnitPrice);
        EXPECT_EQ(got.costAmounts, expected.costAmounts);
        EXPECT_EQ(got.submittedAmounts, expected.submittedAmounts);
    }
    // Row 60, the options, is not read at all.
    EXPECT_EQ(rows[60].sizeBytes, before[60].sizeBytes);
    EXPECT_EQ(rows[60].otherMethod, before[60].otherMethod);
    EXPECT_EQ(rows[60].factors, before[60].factors);
    // The buffer holds record 59 whole.
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(buffer.data()), 376),
              golden.file.mid(58 * 376, 376));
}

TEST_F(FdkFile, ReadTakesOnlyTheStringsLength) {
    GoldenRecords golden;
    golden.fill(136, 7, 'Z');
    PipeRow row;
    row.sizeBytes = "20A";
    for (int r = 1; r <= 59; ++r)
        golden.append(row);
    writeAll(path("in.fdk"), golden.file);
    RowTable rows;
    readFdkFile(path("in.fdk"), rows);
    EXPECT_EQ(rows[1].sizeBytes, QByteArray("20A"));
    // A length beyond the field (a damaged file) takes the field and no more.
    QByteArray damaged = golden.file;
    damaged[136] = char(200);
    writeAll(path("damaged.fdk"), damaged);
    readFdkFile(path("damaged.fdk"), rows);
    EXPECT_EQ(rows[1].sizeBytes, QByteArray("20AZZZ"));
}

TEST_F(FdkFile, LongerFileIsReadLikeAnyOther) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    QByteArray bytes = readAll(path("a.fdk"));
    bytes += QByteArray(1000, 'x');
    writeAll(path("long.fdk"), bytes);
    RowTable target;
    readFdkFile(path("long.fdk"), target);
    EXPECT_EQ(target[59].sizeBytes, rows[59].sizeBytes);
    EXPECT_EQ(target[59].factors, rows[59].factors);
    // Exactly 59 records, no 60th, is enough too.
    writeAll(path("59.fdk"), bytes.left(59 * 376));
    RowTable target59;
    readFdkFile(path("59.fdk"), target59);
    EXPECT_EQ(target59[59].otherMethod, rows[59].otherMethod);
}

TEST_F(FdkFile, ShortFileFailsAtTheMissingRecordAndKeepsWhatWasRead) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    const QByteArray bytes = readAll(path("a.fdk"));
    writeAll(path("short.fdk"), bytes.left(10 * 376 + 100));
    RowTable target;
    try {
        readFdkFile(path("short.fdk"), target);
        FAIL() << "no error";
    } catch (const FileError& e) {
        const QString text = QString::fromUtf8(e.what());
        EXPECT_TRUE(text.startsWith(QStringLiteral("入出力エラー"))) << e.what();
        EXPECT_TRUE(text.contains(path("short.fdk"))) << e.what();
        EXPECT_TRUE(text.contains(QStringLiteral("3860 バイト"))) << e.what();
        EXPECT_TRUE(text.contains(QStringLiteral("22560 バイト"))) << e.what();
        EXPECT_TRUE(text.contains(QStringLiteral("1 行目から 10 行目まで"))) << e.what();
    }
    for (int r = 1; r <= 10; ++r)
        EXPECT_EQ(target[r].sizeBytes, rows[r].sizeBytes) << r;
    EXPECT_TRUE(target[11].sizeBytes.isEmpty());
    EXPECT_EQ(target[11].factors, PipeRow().factors);
    // The 100 bytes of record 11 that were there are in the buffer.
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(buffer.data()), 100),
              bytes.mid(10 * 376, 100));
}

TEST_F(FdkFile, EmptyFileReadsNoRow) {
    writeAll(path("empty.fdk"), QByteArray());
    RowTable target;
    try {
        readFdkFile(path("empty.fdk"), target);
        FAIL() << "no error";
    } catch (const FileError& e) {
        EXPECT_TRUE(
            QString::fromUtf8(e.what()).contains(QStringLiteral("読み込んだ行はありません")));
    }
}

TEST_F(FdkFile, MissingFileAndMissingFolderAreInputOutputErrors) {
    RowTable rows;
    auto message = [](const std::function<void()>& run) {
        try {
            run();
        } catch (const FileError& e) {
            return QString::fromUtf8(e.what());
        }
        return QString();
    };
    const QString missing = message([&] { readFdkFile(path("none.fdk"), rows); });
    EXPECT_TRUE(missing.startsWith(QStringLiteral("入出力エラー"))) << missing.toStdString();
    EXPECT_TRUE(missing.contains(path("none.fdk")));
    EXPECT_TRUE(missing.contains(QStringLiteral("ファイルがありません"))) << missing.toStdString();
    const QString noFolder = message([&] { writeFdkFile(path("no/folder/a.fdk"), rows); });
    EXPECT_TRUE(noFolder.contains(QStringLiteral("フォルダーがありません")))
        << noFolder.toStdString();
    EXPECT_FALSE(QFile::exists(path("no/folder/a.fdk")));
}

TEST_F(FdkFile, WritingReplacesAndAFailedWriteKeepsTheOldFile) {
    RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    rows[3].otherMethod = 4242;
    writeFdkFile(path("a.fdk"), rows);
    const QByteArray second = readAll(path("a.fdk"));
    EXPECT_EQ(second.size(), 22560);
    EXPECT_EQ(int32In(second, 3, 144), 4242);
    // A name that is a folder can't be replaced: the error comes and the
    // folder stays as it was.
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("d.fdk")));
    EXPECT_THROW(writeFdkFile(path("d.fdk"), rows), FileError);
    EXPECT_TRUE(QFileInfo(path("d.fdk")).isDir());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("a.fdk")});
}

TEST_F(FdkFile, RoundTripKeepsTheLabourFields) {
    const RowTable rows = knownRows();
    writeFdkFile(path("a.fdk"), rows);
    RowTable back;
    readFdkFile(path("a.fdk"), back);
    for (int r = 1; r <= 59; ++r) {
        EXPECT_EQ(back[r].sizeBytes, rows[r].sizeBytes);
        EXPECT_EQ(back[r].otherMethod, rows[r].otherMethod);
        EXPECT_EQ(back[r].factors, rows[r].factors);
        EXPECT_TRUE(back[r].goodsBytes.isEmpty());
    }
}

} // namespace
