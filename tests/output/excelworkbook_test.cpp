// The workbook writer, read back by an independent reader (openpyxl, read_workbook.py).
#include "output/excelworkbook.h"

#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "support/testing.h"

#include <gmock/gmock.h>

namespace {

class ExcelWorkbook : public ::testing::Test {
protected:
    // Writes the stream file, its lines each ended by "\n" in stream (code page 932 with CR LF
    // in the file), and the workbook of it.
    void write(const char* stream, const QString& to = QString()) {
        writeFileBytes(streamPath, toAnsi(u(stream)).replace("\n", "\r\n"));
        writeExcelWorkbook(streamPath, to.isEmpty() ? xlsx : to);
    }
    // The workbook as openpyxl sees it, after writing the stream unless null.
    std::string book(const char* stream) {
        if (stream) write(stream);
        QProcess p;
        p.start(QStringLiteral(QORVALE_PYTHON3),
                {QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/../read_workbook.py"), xlsx});
        EXPECT_TRUE(p.waitForFinished(60000));
        EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
        return p.readAllStandardOutput().toStdString();
    }
    QStringList files() const { return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir dir;
    const QString streamPath = dir.filePath(QStringLiteral("excelout.txt"));
    const QString xlsx = dir.filePath(QStringLiteral("out.xlsx"));
};

// The first pipe type's B2 replaces "ABC"; keywords compare case included; a range of several
// rows has its edge on its outer row; a value after an edge keeps it. Row 20: a plain decimal
// number is a number, anything else a text, an empty text no cell. Column A fits its longest
// text, the name in half-width katakana: 7 full-width and 20 half-width characters are 34 cells
// of 7 pixels and 10 of margins, 248 pixels, kept by the file as 248 / 7 in 1/256. Column C
// fits 4 cells (38 pixels) at its AutoFit; the longer text comes after it. What openpyxl reads
// of it: data/workbook_cells.txt.
TEST_F(ExcelWorkbook, StreamGivesCellsAsTypedEdgesAndFittedWidths) {
    EXPECT_EQ(
        book("DATA;2;2;配管用炭素鋼鋼管（白）;\nDATA;3;1;材 料 名;\nxlEdgeBottom;A3;Q3;;\n"
             "xlEdgeTop;A3;Q3;;\nxlEdgeTop;B5;C5;;\nDATA;5;2;x;\ndata;4;4;lower;\n"
             "Data;5;5;mixed;\nXLEDGEBOTTOM;A1;B1;;\nautofit;2;1;;\nDATA;6;6;upper;\n"
             "comment line\nxlEdgeBottom;B7;C9;;\nxlEdgeTop;E11;D13;;\n"
             "DATA;20;1;4390;\nDATA;20;2;-0.123;\nDATA;20;3;15A;\nDATA;20;4;1,234;\n"
             "DATA;20;5;6.35;\nDATA;20;6;1.2.3;\nDATA;20;7;+5;\nDATA;20;8;;\n"
             "DATA;20;9;ﾋﾞﾆﾙ;\nDATA;20;10;.5;\nDATA;20;11;-;\nDATA;20;12;0x10;\n"
             "DATA;20;13;1e3;\nDATA;30;1;ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA);\n"
             "DATA;31;1;配管用炭素鋼鋼管（白）;\nAutoFit;1;1;;\nDATA;30;3;配管;\n"
             "AutoFit;3;1;;\nDATA;31;3;配管用炭素鋼鋼管;\n"),
        fileBytes(QStringLiteral(QORVALE_OUTPUT_TEST_DATA "/workbook_cells.txt")).toStdString());
    // 10 cells: 80 pixels, less the padding of 5, in digits of 7 pixels to two decimals.
    EXPECT_NEAR(fittedWidth(10), 10.71, 1e-9);
    int c = 0, r = 0;
    EXPECT_TRUE(parseCellName(u("AA12"), c, r) && c == 27 && r == 12);
    EXPECT_TRUE(parseCellName(u("XFD1048576"), c, r) && c == 16384 && r == 1048576);
    for (const char* t : {"", "A", "12", "A0", "1A", "A1B", "XFE1", "A1048577"})
        EXPECT_FALSE(parseCellName(u(t), c, r)) << t;
}

TEST_F(ExcelWorkbook, FailureLeavesNoFileAndAnOlderWorkbookAsItWas) {
    EXPECT_THROW(writeExcelWorkbook(dir.filePath(QStringLiteral("none.txt")), xlsx), FileError);
    EXPECT_THROW(write("", dir.filePath(QStringLiteral("no/such/out.xlsx"))), WorkbookError);
    try {
        write("DATA;1;1;a;\nDATA;0;3;b;\n");
        ADD_FAILURE() << "no error";
    } catch (const WorkbookError& e) {
        EXPECT_TRUE(e.message().contains(u("2 行目のセル（行 0、列 3）"))) << e.what();
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("excelout.txt")});

    EXPECT_EQ(book(""), "sheets 1\nB2 s:ABC\n");
    EXPECT_THAT(book("DATA;1;1;old;\n"), ::testing::HasSubstr("\nA1 s:old\n"));
    for (const char* bad : {"DATA;1;x;new;\n", "xlEdgeBottom;A;Q3;;\n", "AutoFit;0;1;;\n"})
        EXPECT_THROW(write(bad), WorkbookError) << bad;
    EXPECT_THAT(book(nullptr), ::testing::HasSubstr("\nA1 s:old\n"));
    EXPECT_EQ(files().size(), 2);
    EXPECT_EQ(book("DATA;1;1;new;\n"), "sheets 1\nA1 s:new\nB2 s:ABC\n"); // without a question
}

} // namespace
