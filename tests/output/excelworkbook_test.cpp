// The workbook writer, read back by an independent reader (openpyxl).
#include "output/excelworkbook.h"

#include "output/excelstream.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/suitestandin.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

struct ReadCell {
    QString kind; // "n" number, "s" text
    QString value;
    QString bottom; // "thin:FF000000" or "-"
    QString top;
};

struct ReadBook {
    int sheets = 0;
    QMap<QString, ReadCell> cells;
    QMap<QString, double> widths;
};

// The workbook as openpyxl sees it.
ReadBook readBack(const QString& path) {
    QProcess p;
    p.start(QStringLiteral(QORVALE_PYTHON3),
            {QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/../read_workbook.py"), path});
    EXPECT_TRUE(p.waitForFinished(60000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    ReadBook book;
    const QStringList lines = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QStringList f = line.split(QLatin1Char('\t'));
        if (f[0] == QLatin1String("SHEETS"))
            book.sheets = f[1].toInt();
        else if (f[0] == QLatin1String("CELL") && f.size() == 6)
            book.cells[f[1]] = ReadCell{f[2], f[3], f[4], f[5]};
        else if (f[0] == QLatin1String("WIDTH"))
            book.widths[f[1]] = f[2].toDouble();
    }
    return book;
}

const QString Thin = QStringLiteral("thin:FF000000");

class ExcelWorkbookTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    // Writes a stream file in code page 932 with CR LF.
    QString stream(const QStringList& lines) {
        const QString path = dir.filePath(QStringLiteral("excelout.txt"));
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        for (const QString& l : lines)
            f.write(toAnsi(l) + "\r\n");
        return path;
    }
    QString book(const char* name = "out.xlsx") { return dir.filePath(QString::fromLatin1(name)); }
    QStringList filesInDir() const {
        return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
    }
    QTemporaryDir dir;
};

TEST_F(ExcelWorkbookTest, EmptyStreamGivesAbcInB2Alone) {
    writeExcelWorkbook(stream({}), book());
    const ReadBook b = readBack(book());
    EXPECT_EQ(b.sheets, 1);
    ASSERT_EQ(b.cells.size(), 1);
    EXPECT_EQ(b.cells[u("B2")].kind, u("s"));
    EXPECT_EQ(b.cells[u("B2")].value, u("ABC"));
    EXPECT_TRUE(b.widths.isEmpty());
}

TEST_F(ExcelWorkbookTest, CellsTakeNumbersAndTextsAsTyped) {
    writeExcelWorkbook(
        stream({u("DATA;2;2;配管用炭素鋼鋼管（白）;"), u("DATA;3;1;4330;"), u("DATA;3;2;-0.123;"),
                u("DATA;3;3;15A;"), u("DATA;3;4;1,234;"), u("DATA;3;5;6.35;"), u("DATA;3;6;1.2.3;"),
                u("DATA;3;7;+5;"), u("DATA;3;8;;"), u("DATA;3;9;ﾋﾞﾆﾙ;"), u("DATA;3;10;.5;"),
                u("DATA;3;11;-;"), u("DATA;3;12;0x10;"), u("DATA;3;13;1e3;")}),
        book());
    const ReadBook b = readBack(book());
    // The first pipe type's B2 replaces "ABC".
    EXPECT_EQ(b.cells[u("B2")].value, u("配管用炭素鋼鋼管（白）"));
    EXPECT_EQ(b.cells[u("A3")].kind, u("n"));
    EXPECT_EQ(b.cells[u("A3")].value.toDouble(), 4330.0);
    EXPECT_EQ(b.cells[u("B3")].kind, u("n"));
    EXPECT_EQ(b.cells[u("B3")].value.toDouble(), -0.123);
    EXPECT_EQ(b.cells[u("C3")].kind, u("s"));
    EXPECT_EQ(b.cells[u("D3")].kind, u("s"));
    EXPECT_EQ(b.cells[u("D3")].value, u("1,234"));
    EXPECT_EQ(b.cells[u("E3")].kind, u("n"));
    EXPECT_EQ(b.cells[u("F3")].kind, u("s"));
    EXPECT_EQ(b.cells[u("G3")].kind, u("n"));
    EXPECT_EQ(b.cells[u("G3")].value.toDouble(), 5.0);
    EXPECT_FALSE(b.cells.contains(u("H3"))) << "an empty text leaves the cell empty";
    EXPECT_EQ(b.cells[u("I3")].value, u("ﾋﾞﾆﾙ"));
    EXPECT_EQ(b.cells[u("J3")].kind, u("n"));
    EXPECT_EQ(b.cells[u("K3")].kind, u("s"));
    EXPECT_EQ(b.cells[u("L3")].kind, u("s"));
    EXPECT_EQ(b.cells[u("M3")].kind, u("s"));
}

TEST_F(ExcelWorkbookTest, EdgesAreThinBlackLinesMergedOnACell) {
    writeExcelWorkbook(stream({u("DATA;3;1;材 料 名;"), u("xlEdgeBottom;A3;Q3;;"),
                               u("xlEdgeTop;A3;Q3;;"), u("xlEdgeTop;B5;C5;;"), u("DATA;5;2;x;")}),
                       book());
    const ReadBook b = readBack(book());
    for (const char* c : {"A3", "B3", "P3", "Q3"}) {
        EXPECT_EQ(b.cells[u(c)].bottom, Thin) << c;
        EXPECT_EQ(b.cells[u(c)].top, Thin) << c;
    }
    EXPECT_EQ(b.cells[u("A3")].value, u("材 料 名"));
    EXPECT_FALSE(b.cells.contains(u("R3")));
    EXPECT_EQ(b.cells[u("B5")].top, Thin);
    EXPECT_EQ(b.cells[u("B5")].bottom, u("-"));
    EXPECT_EQ(b.cells[u("B5")].value, u("x")) << "a value later keeps the border";
    EXPECT_EQ(b.cells[u("C5")].top, Thin);
    EXPECT_FALSE(b.cells.contains(u("D5")));
}

TEST_F(ExcelWorkbookTest, EdgeOfARangeOfSeveralRowsIsItsOuterRow) {
    writeExcelWorkbook(stream({u("xlEdgeBottom;B2;C4;;"), u("xlEdgeTop;E6;D8;;")}), book());
    const ReadBook b = readBack(book());
    EXPECT_EQ(b.cells[u("B4")].bottom, Thin);
    EXPECT_EQ(b.cells[u("C4")].bottom, Thin);
    EXPECT_EQ(b.cells[u("B2")].bottom, u("-"));
    EXPECT_FALSE(b.cells.contains(u("C3")));
    EXPECT_EQ(b.cells[u("D6")].top, Thin);
    EXPECT_EQ(b.cells[u("E6")].top, Thin);
    EXPECT_FALSE(b.cells.contains(u("D8")));
}

TEST_F(ExcelWorkbookTest, KeywordsAreCaseSensitive) {
    writeExcelWorkbook(
        stream({u("data;4;4;lower;"), u("Data;5;5;mixed;"), u("XLEDGEBOTTOM;A1;B1;;"),
                u("autofit;1;1;;"), u("DATA;6;6;upper;"), u("comment line")}),
        book());
    const ReadBook b = readBack(book());
    EXPECT_FALSE(b.cells.contains(u("D4")));
    EXPECT_FALSE(b.cells.contains(u("E5")));
    EXPECT_FALSE(b.cells.contains(u("A1")));
    EXPECT_TRUE(b.widths.isEmpty());
    EXPECT_EQ(b.cells[u("F6")].value, u("upper"));
    EXPECT_EQ(b.cells.size(), 2); // B2 and F6
}

TEST_F(ExcelWorkbookTest, AutoFitWidensColumnAByTheDisplayWidthOfItsLongestText) {
    writeExcelWorkbook(stream({u("DATA;3;1;材 料 名;"), u("DATA;4;1;配管用炭素鋼鋼管（白）;"),
                               u("DATA;5;1;ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA);"),
                               u("DATA;3;2;abc;"), u("AutoFit;1;1;;")}),
                       book());
    const ReadBook b = readBack(book());
    ASSERT_TRUE(b.widths.contains(u("A")));
    EXPECT_FALSE(b.widths.contains(u("B")));
    // The half-width katakana name: 7 full-width kanji and 20 half-width
    // characters are 34 cells; the other name is 11 full-width characters, 22.
    EXPECT_EQ(displayCells(u("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)")), 34);
    EXPECT_EQ(displayCells(u("配管用炭素鋼鋼管（白）")), 22);
    const double fitted = fittedWidth(34);
    // The file keeps the width with the column's padding of 5 pixels.
    EXPECT_NEAR(b.widths[u("A")], fitted + 5.0 / 7.0, 0.01);
}

TEST_F(ExcelWorkbookTest, AutoFitTakesTheColumnAsItStandsAtThatLine) {
    writeExcelWorkbook(
        stream({u("DATA;3;1;配管;"), u("AutoFit;1;1;;"), u("DATA;4;1;配管用炭素鋼鋼管;")}), book());
    const ReadBook b = readBack(book());
    EXPECT_NEAR(b.widths[u("A")], fittedWidth(4) + 5.0 / 7.0, 0.01);
}

TEST_F(ExcelWorkbookTest, FullWidthCountsTwoHalfWidthOne) {
    EXPECT_EQ(displayCells(u("abc")), 3);
    EXPECT_EQ(displayCells(u("ｱｲｳ")), 3);
    EXPECT_EQ(displayCells(u("アイウ")), 6);
    EXPECT_EQ(displayCells(u("１５Ａ")), 6);
    EXPECT_EQ(displayCells(u("摘　　要")), 8);
    EXPECT_EQ(displayCells(u("×○")), 4);
    EXPECT_LT(fittedWidth(3), fittedWidth(6));
    EXPECT_NEAR(fittedWidth(10), 10.71, 1e-9);
}

TEST_F(ExcelWorkbookTest, PlainNumbers) {
    for (const char* t : {"0", "15", "-3", "+4", "1.5", "-0.25", "7.", ".5"})
        EXPECT_TRUE(isPlainNumber(u(t))) << t;
    for (const char* t : {"", "-", ".", "1.2.3", "1,234", "1e3", " 1", "15A", "０", "0x1"})
        EXPECT_FALSE(isPlainNumber(u(t))) << t;
}

TEST_F(ExcelWorkbookTest, CellNames) {
    int c = 0, r = 0;
    EXPECT_TRUE(parseCellName(u("Q12"), c, r));
    EXPECT_EQ(c, 17);
    EXPECT_EQ(r, 12);
    EXPECT_TRUE(parseCellName(u("AA1"), c, r));
    EXPECT_EQ(c, 27);
    for (const char* t : {"", "A", "12", "A0", "1A", "A1B", "XFE1", "A1048577"})
        EXPECT_FALSE(parseCellName(u(t), c, r)) << t;
}

TEST_F(ExcelWorkbookTest, RowZeroStopsTheRunAndLeavesNoFile) {
    try {
        writeExcelWorkbook(stream({u("DATA;1;1;a;"), u("DATA;0;3;b;")}), book());
        FAIL() << "no error";
    } catch (const WorkbookError& e) {
        EXPECT_TRUE(e.message().contains(u("2 行目"))) << e.what();
        EXPECT_TRUE(e.message().contains(u("行 0"))) << e.what();
    }
    EXPECT_FALSE(QFile::exists(book()));
    EXPECT_EQ(filesInDir(), QStringList{QStringLiteral("excelout.txt")});
}

TEST_F(ExcelWorkbookTest, ColumnThatIsNoNumberStopsAndKeepsAnOlderWorkbook) {
    writeExcelWorkbook(stream({u("DATA;1;1;old;")}), book());
    ASSERT_TRUE(QFile::exists(book()));
    EXPECT_THROW(writeExcelWorkbook(stream({u("DATA;1;x;new;")}), book()), WorkbookError);
    EXPECT_EQ(readBack(book()).cells[u("A1")].value, u("old"));
    EXPECT_THROW(writeExcelWorkbook(stream({u("xlEdgeBottom;A;Q3;;")}), book()), WorkbookError);
    EXPECT_THROW(writeExcelWorkbook(stream({u("AutoFit;0;1;;")}), book()), WorkbookError);
    EXPECT_EQ(filesInDir().size(), 2);
}

TEST_F(ExcelWorkbookTest, UnreadableStreamOrUnwritableWorkbookRaise) {
    EXPECT_THROW(writeExcelWorkbook(dir.filePath(QStringLiteral("none.txt")), book()), FileError);
    EXPECT_THROW(writeExcelWorkbook(stream({}), dir.filePath(QStringLiteral("no/such/out.xlsx"))),
                 WorkbookError);
    EXPECT_EQ(filesInDir(), QStringList{QStringLiteral("excelout.txt")});
}

TEST_F(ExcelWorkbookTest, ExistingWorkbookIsReplacedWithoutQuestion) {
    writeExcelWorkbook(stream({u("DATA;1;1;old;")}), book());
    writeExcelWorkbook(stream({u("DATA;1;1;new;")}), book());
    EXPECT_EQ(readBack(book()).cells[u("A1")].value, u("new"));
}

// The stream of a demo group, end to end: the cells of its first block.
TEST_F(ExcelWorkbookTest, DemoGroupStreamGivesItsCells) {
    const QString db = dir.filePath(QStringLiteral("demo.db3"));
    createSuiteDatabase(db, true);
    const QStringList lines =
        excelStream(db, 1, {u("屋内一般"), u("機械室・便所"), u("屋外架空"), u("地中埋設")});
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("temp")));
    writeExcelStream(excelStreamPath(dir.path()), lines);
    writeExcelWorkbook(excelStreamPath(dir.path()), book());
    const ReadBook b = readBack(book());
    EXPECT_EQ(b.cells[u("E1")].value, u("複 合 単 価 計 算 書"));
    EXPECT_EQ(b.cells[u("A2")].value, u("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)"));
    EXPECT_EQ(b.cells[u("B2")].value, u("給水"));
    EXPECT_EQ(b.cells[u("K2")].kind, u("n"));
    EXPECT_EQ(b.cells[u("K2")].value.toDouble(), 24200.0);
    EXPECT_EQ(b.cells[u("A3")].bottom, Thin);
    EXPECT_EQ(b.cells[u("Q3")].bottom, Thin);
    EXPECT_EQ(b.cells[u("C4")].value, u("屋内一般"));
    EXPECT_EQ(b.cells[u("E4")].kind, u("n"));
    EXPECT_EQ(b.cells[u("J4")].kind, u("n"));
    ASSERT_TRUE(b.widths.contains(u("A")));
    EXPECT_NEAR(b.widths[u("A")],
                fittedWidth(displayCells(u("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)"))) + 5.0 / 7.0,
                0.01);
}

} // namespace
