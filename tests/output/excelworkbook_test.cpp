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

QString U(const char* t) {
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
ReadBook ReadBack(const QString& path) {
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
            f.write(ToAnsi(l) + "\r\n");
        return path;
    }
    QString book(const char* name = "out.xlsx") { return dir.filePath(QString::fromLatin1(name)); }
    QStringList filesInDir() const {
        return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
    }
    QTemporaryDir dir;
};

TEST_F(ExcelWorkbookTest, EmptyStreamGivesAbcInB2Alone) {
    WriteExcelWorkbook(stream({}), book());
    const ReadBook b = ReadBack(book());
    EXPECT_EQ(b.sheets, 1);
    ASSERT_EQ(b.cells.size(), 1);
    EXPECT_EQ(b.cells[U("B2")].kind, U("s"));
    EXPECT_EQ(b.cells[U("B2")].value, U("ABC"));
    EXPECT_TRUE(b.widths.isEmpty());
}

TEST_F(ExcelWorkbookTest, CellsTakeNumbersAndTextsAsTyped) {
    WriteExcelWorkbook(
        stream({U("DATA;2;2;配管用炭素鋼鋼管（白）;"), U("DATA;3;1;4330;"), U("DATA;3;2;-0.123;"),
                U("DATA;3;3;15A;"), U("DATA;3;4;1,234;"), U("DATA;3;5;6.35;"), U("DATA;3;6;1.2.3;"),
                U("DATA;3;7;+5;"), U("DATA;3;8;;"), U("DATA;3;9;ﾋﾞﾆﾙ;"), U("DATA;3;10;.5;"),
                U("DATA;3;11;-;"), U("DATA;3;12;0x10;"), U("DATA;3;13;1e3;")}),
        book());
    const ReadBook b = ReadBack(book());
    // The first pipe type's B2 replaces "ABC".
    EXPECT_EQ(b.cells[U("B2")].value, U("配管用炭素鋼鋼管（白）"));
    EXPECT_EQ(b.cells[U("A3")].kind, U("n"));
    EXPECT_EQ(b.cells[U("A3")].value.toDouble(), 4330.0);
    EXPECT_EQ(b.cells[U("B3")].kind, U("n"));
    EXPECT_EQ(b.cells[U("B3")].value.toDouble(), -0.123);
    EXPECT_EQ(b.cells[U("C3")].kind, U("s"));
    EXPECT_EQ(b.cells[U("D3")].kind, U("s"));
    EXPECT_EQ(b.cells[U("D3")].value, U("1,234"));
    EXPECT_EQ(b.cells[U("E3")].kind, U("n"));
    EXPECT_EQ(b.cells[U("F3")].kind, U("s"));
    EXPECT_EQ(b.cells[U("G3")].kind, U("n"));
    EXPECT_EQ(b.cells[U("G3")].value.toDouble(), 5.0);
    EXPECT_FALSE(b.cells.contains(U("H3"))) << "an empty text leaves the cell empty";
    EXPECT_EQ(b.cells[U("I3")].value, U("ﾋﾞﾆﾙ"));
    EXPECT_EQ(b.cells[U("J3")].kind, U("n"));
    EXPECT_EQ(b.cells[U("K3")].kind, U("s"));
    EXPECT_EQ(b.cells[U("L3")].kind, U("s"));
    EXPECT_EQ(b.cells[U("M3")].kind, U("s"));
}

TEST_F(ExcelWorkbookTest, EdgesAreThinBlackLinesMergedOnACell) {
    WriteExcelWorkbook(stream({U("DATA;3;1;材 料 名;"), U("xlEdgeBottom;A3;Q3;;"),
                               U("xlEdgeTop;A3;Q3;;"), U("xlEdgeTop;B5;C5;;"), U("DATA;5;2;x;")}),
                       book());
    const ReadBook b = ReadBack(book());
    for (const char* c : {"A3", "B3", "P3", "Q3"}) {
        EXPECT_EQ(b.cells[U(c)].bottom, Thin) << c;
        EXPECT_EQ(b.cells[U(c)].top, Thin) << c;
    }
    EXPECT_EQ(b.cells[U("A3")].value, U("材 料 名"));
    EXPECT_FALSE(b.cells.contains(U("R3")));
    EXPECT_EQ(b.cells[U("B5")].top, Thin);
    EXPECT_EQ(b.cells[U("B5")].bottom, U("-"));
    EXPECT_EQ(b.cells[U("B5")].value, U("x")) << "a value later keeps the border";
    EXPECT_EQ(b.cells[U("C5")].top, Thin);
    EXPECT_FALSE(b.cells.contains(U("D5")));
}

TEST_F(ExcelWorkbookTest, EdgeOfARangeOfSeveralRowsIsItsOuterRow) {
    WriteExcelWorkbook(stream({U("xlEdgeBottom;B2;C4;;"), U("xlEdgeTop;E6;D8;;")}), book());
    const ReadBook b = ReadBack(book());
    EXPECT_EQ(b.cells[U("B4")].bottom, Thin);
    EXPECT_EQ(b.cells[U("C4")].bottom, Thin);
    EXPECT_EQ(b.cells[U("B2")].bottom, U("-"));
    EXPECT_FALSE(b.cells.contains(U("C3")));
    EXPECT_EQ(b.cells[U("D6")].top, Thin);
    EXPECT_EQ(b.cells[U("E6")].top, Thin);
    EXPECT_FALSE(b.cells.contains(U("D8")));
}

TEST_F(ExcelWorkbookTest, KeywordsAreCaseSensitive) {
    WriteExcelWorkbook(
        stream({U("data;4;4;lower;"), U("Data;5;5;mixed;"), U("XLEDGEBOTTOM;A1;B1;;"),
                U("autofit;1;1;;"), U("DATA;6;6;upper;"), U("comment line")}),
        book());
    const ReadBook b = ReadBack(book());
    EXPECT_FALSE(b.cells.contains(U("D4")));
    EXPECT_FALSE(b.cells.contains(U("E5")));
    EXPECT_FALSE(b.cells.contains(U("A1")));
    EXPECT_TRUE(b.widths.isEmpty());
    EXPECT_EQ(b.cells[U("F6")].value, U("upper"));
    EXPECT_EQ(b.cells.size(), 2); // B2 and F6
}

TEST_F(ExcelWorkbookTest, AutoFitWidensColumnAByTheDisplayWidthOfItsLongestText) {
    WriteExcelWorkbook(stream({U("DATA;3;1;材 料 名;"), U("DATA;4;1;配管用炭素鋼鋼管（白）;"),
                               U("DATA;5;1;ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA);"),
                               U("DATA;3;2;abc;"), U("AutoFit;1;1;;")}),
                       book());
    const ReadBook b = ReadBack(book());
    ASSERT_TRUE(b.widths.contains(U("A")));
    EXPECT_FALSE(b.widths.contains(U("B")));
    // The half-width katakana name: 7 full-width kanji and 20 half-width
    // characters are 34 cells; the other name is 11 full-width characters, 22.
    EXPECT_EQ(DisplayCells(U("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)")), 34);
    EXPECT_EQ(DisplayCells(U("配管用炭素鋼鋼管（白）")), 22);
    const double fitted = FittedWidth(34);
    // The file keeps the width with the column's padding of 5 pixels.
    EXPECT_NEAR(b.widths[U("A")], fitted + 5.0 / 7.0, 0.01);
}

TEST_F(ExcelWorkbookTest, AutoFitTakesTheColumnAsItStandsAtThatLine) {
    WriteExcelWorkbook(
        stream({U("DATA;3;1;配管;"), U("AutoFit;1;1;;"), U("DATA;4;1;配管用炭素鋼鋼管;")}), book());
    const ReadBook b = ReadBack(book());
    EXPECT_NEAR(b.widths[U("A")], FittedWidth(4) + 5.0 / 7.0, 0.01);
}

TEST_F(ExcelWorkbookTest, FullWidthCountsTwoHalfWidthOne) {
    EXPECT_EQ(DisplayCells(U("abc")), 3);
    EXPECT_EQ(DisplayCells(U("ｱｲｳ")), 3);
    EXPECT_EQ(DisplayCells(U("アイウ")), 6);
    EXPECT_EQ(DisplayCells(U("１５Ａ")), 6);
    EXPECT_EQ(DisplayCells(U("摘　　要")), 8);
    EXPECT_EQ(DisplayCells(U("×○")), 4);
    EXPECT_LT(FittedWidth(3), FittedWidth(6));
    EXPECT_NEAR(FittedWidth(10), 10.71, 1e-9);
}

TEST_F(ExcelWorkbookTest, PlainNumbers) {
    for (const char* t : {"0", "15", "-3", "+4", "1.5", "-0.25", "7.", ".5"})
        EXPECT_TRUE(IsPlainNumber(U(t))) << t;
    for (const char* t : {"", "-", ".", "1.2.3", "1,234", "1e3", " 1", "15A", "０", "0x1"})
        EXPECT_FALSE(IsPlainNumber(U(t))) << t;
}

TEST_F(ExcelWorkbookTest, CellNames) {
    int c = 0, r = 0;
    EXPECT_TRUE(ParseCellName(U("Q12"), c, r));
    EXPECT_EQ(c, 17);
    EXPECT_EQ(r, 12);
    EXPECT_TRUE(ParseCellName(U("AA1"), c, r));
    EXPECT_EQ(c, 27);
    for (const char* t : {"", "A", "12", "A0", "1A", "A1B", "XFE1", "A1048577"})
        EXPECT_FALSE(ParseCellName(U(t), c, r)) << t;
}

TEST_F(ExcelWorkbookTest, RowZeroStopsTheRunAndLeavesNoFile) {
    try {
        WriteExcelWorkbook(stream({U("DATA;1;1;a;"), U("DATA;0;3;b;")}), book());
        FAIL() << "no error";
    } catch (const WorkbookError& e) {
        EXPECT_TRUE(e.Message().contains(U("2 行目"))) << e.what();
        EXPECT_TRUE(e.Message().contains(U("行 0"))) << e.what();
    }
    EXPECT_FALSE(QFile::exists(book()));
    EXPECT_EQ(filesInDir(), QStringList{QStringLiteral("excelout.txt")});
}

TEST_F(ExcelWorkbookTest, ColumnThatIsNoNumberStopsAndKeepsAnOlderWorkbook) {
    WriteExcelWorkbook(stream({U("DATA;1;1;old;")}), book());
    ASSERT_TRUE(QFile::exists(book()));
    EXPECT_THROW(WriteExcelWorkbook(stream({U("DATA;1;x;new;")}), book()), WorkbookError);
    EXPECT_EQ(ReadBack(book()).cells[U("A1")].value, U("old"));
    EXPECT_THROW(WriteExcelWorkbook(stream({U("xlEdgeBottom;A;Q3;;")}), book()), WorkbookError);
    EXPECT_THROW(WriteExcelWorkbook(stream({U("AutoFit;0;1;;")}), book()), WorkbookError);
    EXPECT_EQ(filesInDir().size(), 2);
}

TEST_F(ExcelWorkbookTest, UnreadableStreamOrUnwritableWorkbookRaise) {
    EXPECT_THROW(WriteExcelWorkbook(dir.filePath(QStringLiteral("none.txt")), book()), FileError);
    EXPECT_THROW(WriteExcelWorkbook(stream({}), dir.filePath(QStringLiteral("no/such/out.xlsx"))),
                 WorkbookError);
    EXPECT_EQ(filesInDir(), QStringList{QStringLiteral("excelout.txt")});
}

TEST_F(ExcelWorkbookTest, ExistingWorkbookIsReplacedWithoutQuestion) {
    WriteExcelWorkbook(stream({U("DATA;1;1;old;")}), book());
    WriteExcelWorkbook(stream({U("DATA;1;1;new;")}), book());
    EXPECT_EQ(ReadBack(book()).cells[U("A1")].value, U("new"));
}

// The stream of a demo group, end to end: the cells of its first block.
TEST_F(ExcelWorkbookTest, DemoGroupStreamGivesItsCells) {
    const QString db = dir.filePath(QStringLiteral("demo.db3"));
    CreateSuiteDatabase(db, true);
    const QStringList lines =
        ExcelStream(db, 1, {U("屋内一般"), U("機械室・便所"), U("屋外架空"), U("地中埋設")});
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("temp")));
    WriteExcelStream(ExcelStreamPath(dir.path()), lines);
    WriteExcelWorkbook(ExcelStreamPath(dir.path()), book());
    const ReadBook b = ReadBack(book());
    EXPECT_EQ(b.cells[U("E1")].value, U("複 合 単 価 計 算 書"));
    EXPECT_EQ(b.cells[U("A2")].value, U("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)"));
    EXPECT_EQ(b.cells[U("B2")].value, U("給水"));
    EXPECT_EQ(b.cells[U("K2")].kind, U("n"));
    EXPECT_EQ(b.cells[U("K2")].value.toDouble(), 24200.0);
    EXPECT_EQ(b.cells[U("A3")].bottom, Thin);
    EXPECT_EQ(b.cells[U("Q3")].bottom, Thin);
    EXPECT_EQ(b.cells[U("C4")].value, U("屋内一般"));
    EXPECT_EQ(b.cells[U("E4")].kind, U("n"));
    EXPECT_EQ(b.cells[U("J4")].kind, U("n"));
    ASSERT_TRUE(b.widths.contains(U("A")));
    EXPECT_NEAR(b.widths[U("A")],
                FittedWidth(DisplayCells(U("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)"))) + 5.0 / 7.0,
                0.01);
}

} // namespace
