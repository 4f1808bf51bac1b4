// The text of exportRows: fields, field counts, headings, blocks, line ends,
// number forms and code page 932.
#include "output/exportrows.h"

#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromUtf8(t));
}
QString u(const char* t) {
    return QString::fromUtf8(t);
}
// Expected text written as UTF-8 in the test, compared as code page 932 bytes.
QByteArray a(const char* t) {
    return toAnsi(QString::fromUtf8(t));
}

const QStringList FourTabs = {u("屋内一般"), u("機械室・便所"), u("屋外架空"), u("地中埋設")};
const QStringList OneTab = {u("一般")};

// A row with distinct values in every exported field, and the _N side set
// to values that must not appear.
PipeRow sampleRow() {
    PipeRow r;
    r.setSize(u("15A"));
    r.setUnit(u("ｍ"));
    r.goodsBytes = a("配管用炭素鋼鋼管");
    r.adoptedUnitPrice = c("4090");
    r.submittedPrice = c("1234.5");
    r.costPrice = c("999");
    r.listPrice = c("888");
    for (int e = 1; e <= 7; ++e)
        r.factor(e) = strToCurr(QStringLiteral("0.%1").arg(e));
    r.factor(5) = c("0.123");
    for (int e = 0; e < 7; ++e) {
        r.submittedAmounts[std::size_t(e)] = Currency::fromInt(1000 * (e + 1) + 1);
        r.costAmounts[std::size_t(e)] = c("77777");
    }
    r.submittedUnitPrice = c("4092.25");
    r.costUnitPrice = c("66666");
    return r;
}

int fieldCount(const QByteArray& line, char delimiter) {
    return int(line.count(delimiter));
}

TEST(ExportRowsTest, DelimiterByMode) {
    EXPECT_EQ(exportDelimiter(ExportCsv), QByteArray(","));
    EXPECT_EQ(exportDelimiter(ExportClipboard), QByteArray(","));
    EXPECT_EQ(exportDelimiter(ExportPrint), QByteArray(";"));
}

TEST(ExportRowsTest, HeadingLineHasTwelveLabelsWithTheirBlanks) {
    const QByteArray expected = a("呼び径,単位,採用単価,材料単価,所要材料,継  手,接合材等,支持金物,"
                                  "配管工,はつり補修,その他,合   計\r\n");
    EXPECT_EQ(exportHeadingLine(ExportCsv), expected);
    // The blanks are half-width: two in 継  手, three in 合   計.
    EXPECT_TRUE(expected.contains(QByteArray("\x8c\x70  \x8e\xe8")));
    EXPECT_TRUE(expected.contains(QByteArray("\x8d\x87   \x8c\x76")));
    EXPECT_FALSE(expected.endsWith(",\r\n"));
    EXPECT_EQ(exportHeadingLine(ExportPrint),
              a("呼び径;単位;採用単価;材料単価;所要材料;継  手;接合材等;支持金物;"
                "配管工;はつり補修;その他;合   計\r\n"));
}

TEST(ExportRowsTest, RowWithFactorsHasNineteenFields) {
    const ExportSheet sheet{FourTabs, {}};
    const QByteArray line = exportRowLine(ExportCsv, sampleRow(), 0, sheet, {});
    EXPECT_EQ(line, a("15A,ｍ,4090,1234.5,0.1,0.2,0.3,0.4,0.123,0.6,0.7,"
                      "1001,2001,3001,4001,5001,6001,7001,4092.25,"));
    EXPECT_EQ(fieldCount(line, ','), 19);
}

TEST(ExportRowsTest, ResultsOnlyRowHasTwelveFieldsUnderTheHeading) {
    const ExportSheet sheet{FourTabs, {}};
    ExportOptions o;
    o.resultsOnly = true;
    const QByteArray line = exportRowLine(ExportClipboard, sampleRow(), 2, sheet, o);
    EXPECT_EQ(line, a("15A,ｍ,4090,1234.5,1001,2001,3001,4001,5001,6001,7001,4092.25,"));
    EXPECT_EQ(fieldCount(line, ','), 12);
}

TEST(ExportRowsTest, OneTabLeavesElementSixEmpty) {
    const ExportSheet sheet{OneTab, {}};
    ExportOptions o;
    o.resultsOnly = true;
    EXPECT_EQ(exportRowLine(ExportCsv, sampleRow(), 0, sheet, o),
              a("15A,ｍ,4090,1234.5,1001,2001,3001,4001,5001,,7001,4092.25,"));
    EXPECT_EQ(exportRowLine(ExportCsv, sampleRow(), 0, sheet, {}),
              a("15A,ｍ,4090,1234.5,0.1,0.2,0.3,0.4,0.123,0.6,0.7,"
                "1001,2001,3001,4001,5001,,7001,4092.25,"));
}

TEST(ExportRowsTest, PrintRowHasTwentyThreeFieldsWithAmountTexts) {
    ExportSheet sheet{FourTabs, {u("配管用炭素鋼鋼管"), u("給水"), u("ねじ接合")}};
    PipeRow r = sampleRow();
    r.submittedAmounts[0] = c("1234567.5");
    const QByteArray line = exportRowLine(ExportPrint, r, 1, sheet, {});
    EXPECT_EQ(line, a("配管用炭素鋼鋼管;給水;ねじ接合;機械室・便所;15A;ｍ;4,090;1,235;"
                      "0.1;0.2;0.3;0.4;0.123;0.6;0.7;"
                      "1,234,568;2,001;3,001;4,001;5,001;6,001;7,001;4,092;"));
    EXPECT_EQ(fieldCount(line, ';'), 23);
    // Options of the dialog play no part in mode 2.
    ExportOptions o;
    o.resultsOnly = true;
    o.headings = true;
    EXPECT_EQ(fieldCount(exportRowLine(ExportPrint, r, 1, sheet, o), ';'), 23);
}

TEST(ExportRowsTest, PrintRowKeepsTheMinusOfANegativeAmount) {
    const ExportSheet sheet{OneTab, {}};
    PipeRow r;
    r.submittedUnitPrice = c("-1234");
    r.adoptedUnitPrice = c("-1230");
    r.submittedAmounts[2] = c("-5");
    r.factor(1) = c("-0.5");
    EXPECT_EQ(exportRowLine(ExportPrint, r, 0, sheet, {}),
              QByteArray(";;;") + a("一般") + ";;;-1,230;0;-0.5;0;0;0;0;0;0;0;0;-5;0;0;;0;-1,234;");
}

TEST(ExportRowsTest, EmptyRowGivesEmptySizeAndZeros) {
    const ExportSheet sheet{FourTabs, {}};
    PipeRow r;
    r.setUnit(u("本"));
    EXPECT_EQ(exportRowLine(ExportCsv, r, 0, sheet, {}),
              a(",本,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"));
}

TEST(ExportRowsTest, DelimiterInsideATextPassesUnchanged) {
    const ExportSheet sheet{FourTabs, {}};
    PipeRow r;
    r.setSize(u("1,5"));
    r.setUnit(u("\"m"));
    ExportOptions o;
    o.resultsOnly = true;
    EXPECT_EQ(exportRowLine(ExportCsv, r, 0, sheet, o), QByteArray("1,5,\"m,0,0,0,0,0,0,0,0,0,0,"));
}

// The print program reads a line at a time and splits it at ";": there a
// ";" inside a text becomes the full-width "；" and a line break a blank,
// so that no field moves.
TEST(ExportRowsTest, PrintRowReplacesTheDelimiterInsideTexts) {
    const ExportSheet sheet{{u("屋内;一般")}, {u("鋼管;VA"), u(";"), u("ねじ;接合\r\n")}};
    PipeRow r;
    r.setSize(u("1;5"));
    r.setUnit(u("m;"));
    EXPECT_EQ(exportRowLine(ExportPrint, r, 0, sheet, {}),
              a("鋼管；VA;；;ねじ；接合  ;屋内；一般;1；5;m；;0;0;0;0;0;0;0;0;0;0;0;0;0;0;;0;0;"));
}

class ExportRowsTextTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (int n = 1; n <= RowCount; ++n) {
            PipeRow& r = rows[n];
            r = PipeRow();
            r.setUnit(u("ｍ"));
            r.setSize(QStringLiteral("S%1").arg(n));
            r.submittedUnitPrice = Currency::fromInt(n);
        }
    }
    // The expected line of row n with results only.
    static QByteArray resultLine(int n, bool oneTab = false) {
        return QStringLiteral("S%1,").arg(n).toLatin1() + a("ｍ") + ",0,0,0,0,0,0,0," +
               (oneTab ? "" : "0") + ",0," + QByteArray::number(n) + ",";
    }
    RowTable rows;
};

TEST_F(ExportRowsTextTest, FourBlocksOfCaptionHeadingAndFourteenRows) {
    const ExportSheet sheet{FourTabs, {}};
    ExportOptions o;
    o.headings = true;
    o.resultsOnly = true;
    QByteArray expected;
    for (int t = 0; t < 4; ++t) {
        expected += toAnsi(FourTabs[t]) + "\r\n";
        expected += exportHeadingLine(ExportCsv);
        for (int g = 1; g <= 14; ++g) {
            expected += resultLine(t * 15 + g);
            if (!(t == 3 && g == 14)) expected += "\r\n";
        }
    }
    const QByteArray text = exportRowsText(ExportCsv, rows, sheet, o);
    EXPECT_EQ(text, expected);
    // Rows 15, 30, 45 and 60 are never exported; no empty line between blocks.
    EXPECT_FALSE(text.contains("S15,"));
    EXPECT_FALSE(text.contains("S60,"));
    EXPECT_FALSE(text.contains("\r\n\r\n"));
    EXPECT_FALSE(text.endsWith("\r\n"));
    EXPECT_EQ(text.count("\r\n"), 4 * 16 - 1);
}

TEST_F(ExportRowsTextTest, WithoutHeadingsEachBlockIsCaptionAndRows) {
    const ExportSheet sheet{FourTabs, {}};
    const QByteArray text = exportRowsText(ExportClipboard, rows, sheet, {});
    const QList<QByteArray> lines = text.split('\n');
    ASSERT_EQ(lines.size(), 4 * 15);
    EXPECT_EQ(lines[0], toAnsi(FourTabs[0]) + "\r");
    EXPECT_EQ(lines[1], a("S1,ｍ,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1,\r"));
    EXPECT_EQ(lines[15], toAnsi(FourTabs[1]) + "\r");
    EXPECT_EQ(lines[16].left(4), QByteArray("S16,"));
    EXPECT_EQ(lines[59], a("S59,ｍ,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,59,"));
    for (const QByteArray& line : lines) {
        if (line.startsWith('S')) {
            EXPECT_EQ(fieldCount(line, ','), 19) << line.constData();
        }
    }
}

TEST_F(ExportRowsTextTest, RefrigerantModeIsOneBlockUnderGeneral) {
    const ExportSheet sheet{OneTab, {}};
    ExportOptions o;
    o.resultsOnly = true;
    o.headings = true;
    QByteArray expected = a("一般") + "\r\n" + exportHeadingLine(ExportCsv);
    for (int g = 1; g <= 14; ++g) {
        expected += resultLine(g, true);
        if (g < 14) expected += "\r\n";
    }
    EXPECT_EQ(exportRowsText(ExportCsv, rows, sheet, o), expected);
}

TEST_F(ExportRowsTextTest, PrintTextHasNoCaptionLinesAndNoHeading) {
    ExportSheet sheet{FourTabs, {u("a"), u("b"), u("c")}};
    const QByteArray text = exportRowsText(ExportPrint, rows, sheet, {});
    const QList<QByteArray> lines = text.split('\n');
    ASSERT_EQ(lines.size(), 56);
    EXPECT_EQ(lines[0], a("a;b;c;屋内一般;S1;ｍ;") + QByteArray("0;").repeated(16) + "1;\r");
    EXPECT_EQ(lines[14], a("a;b;c;機械室・便所;S16;ｍ;") + QByteArray("0;").repeated(16) + "16;\r");
    EXPECT_EQ(lines[55], a("a;b;c;地中埋設;S59;ｍ;") + QByteArray("0;").repeated(16) + "59;");
    for (const QByteArray& line : lines)
        EXPECT_EQ(fieldCount(line, ';'), 23);
}

TEST_F(ExportRowsTextTest, CharactersOutsideTheCodePageAreLost) {
    ExportSheet sheet{{u("屋内😀")}, {}};
    const QByteArray text = exportRowsText(ExportCsv, rows, sheet, {});
    EXPECT_TRUE(text.startsWith(a("屋内") + "?\r\n")) << text.left(10).toHex().constData();
}

TEST(WriteExportFileTest, WritesTextAndOneLineEndReplacingTheFile) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("out.CSV"));
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("an older and longer file content");
    }
    writeExportFile(path, a("一般\r\nS1,ｍ,"));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    EXPECT_EQ(bytes, a("一般\r\nS1,ｍ,\r\n"));
    EXPECT_FALSE(bytes.startsWith("\xEF\xBB\xBF"));
}

TEST(WriteExportFileTest, MissingFolderRaisesAndLeavesNothing) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = printDataPath(dir.path());
    EXPECT_EQ(path, dir.path() + u("/printdata/print_Data.dat"));
    EXPECT_THROW(writeExportFile(path, "x"), FileError);
    EXPECT_FALSE(QDir(dir.filePath(QStringLiteral("printdata"))).exists());
}

} // namespace
