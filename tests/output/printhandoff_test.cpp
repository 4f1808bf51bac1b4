// The print hand-off files: the era of a date, Print.conf, print_header.dat
// and print_Data.dat of demo pipe types, byte for byte, and their failures.
#include "output/printhandoff.h"
#include "support/demo_data.h"
#include "support/ownworkspace.h"

#include "engine/calcrow.h"
#include "output/printstyle.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}
QByteArray A(const char* t) {
    return toAnsi(QString::fromUtf8(t));
}
QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

TEST(JapaneseEraTest, BoundariesOfTheEras) {
    EXPECT_EQ(eraYearText(QDate(1868, 1, 1)), u("明治01"));
    EXPECT_EQ(eraYearText(QDate(1912, 7, 29)), u("明治45"));
    EXPECT_EQ(eraYearText(QDate(1912, 7, 30)), u("大正01"));
    EXPECT_EQ(eraYearText(QDate(1926, 12, 24)), u("大正15"));
    EXPECT_EQ(eraYearText(QDate(1926, 12, 25)), u("昭和01"));
    EXPECT_EQ(eraYearText(QDate(1989, 1, 7)), u("昭和64"));
    EXPECT_EQ(eraYearText(QDate(1989, 1, 8)), u("平成01"));
    EXPECT_EQ(eraYearText(QDate(2019, 4, 30)), u("平成31"));
    EXPECT_EQ(eraYearText(QDate(2019, 5, 1)), u("令和01"));
    EXPECT_EQ(eraYearText(QDate(2026, 11, 23)), u("令和08"));
    EXPECT_EQ(eraYearText(QDate(2119, 1, 1)), u("令和101"));
    // Before the first era there is no era year.
    EXPECT_EQ(eraYearText(QDate(1867, 12, 31)), u("1867"));
}

TEST(JapaneseEraTest, ShortWeekday) {
    EXPECT_EQ(japaneseShortWeekday(QDate(2026, 11, 23)), u("月"));
    EXPECT_EQ(japaneseShortWeekday(QDate(1989, 1, 7)), u("土"));
    EXPECT_EQ(japaneseShortWeekday(QDate(1989, 1, 8)), u("日"));
    EXPECT_EQ(japaneseShortWeekday(QDate(2019, 4, 30)), u("火"));
    EXPECT_EQ(japaneseShortWeekday(QDate(2019, 5, 1)), u("水"));
}

TEST(PrintConfTest, SixLinesByModeAndStyle) {
    EXPECT_EQ(
        printConfText(u("/d/ex_style/A4横_複合単価_管材歩掛.qvk"), u("/p/Application.ico"), false),
        A("[Version]=2.00\r\n[Application_Title]=Qorvale\r\n[Data_TITLE]=複合単価印刷\r\n"
          "[STYLE_FILE]=/d/ex_style/A4横_複合単価_管材歩掛.qvk\r\n"
          "[Icon_File]=/p/Application.ico\r\n[File_Mask]=qvk\r\n"));
    EXPECT_TRUE(printConfText(u("x"), u("y"), true).endsWith("[File_Mask]=qvr\r\n"));
    EXPECT_EQ(styleFilePath(u("/d"), 0), u("/d/ex_style/A4横_複合単価_管材歩掛.qvk"));
    EXPECT_EQ(styleFilePath(u("/d"), 1), u("/d/ex_style/A4横_複合単価_管材計算.qvk"));
    EXPECT_EQ(styleFilePath(u("/d"), 2), u("/d/ex_style/A4横_複合単価_管材_歩掛+計算.qvk"));
    EXPECT_EQ(printProgramArguments(u("/d/velmora_main")), QStringList{u("/d/velmora_main;")});
}

// A data folder made by the suite stand-in, with its demo database.
class PrintHandOffFiles : public DemoDataFolder {
protected:
    void load(int grp, int kan) {
        doc().clearRows(RowCount);
        ws().load(grp, kan);
        doc().calculateAll();
    }
    PrintHandOff handOff(int style, const QDate& date) const {
        PrintHandOff h;
        h.dataRoot = root;
        h.styleIndex = style;
        h.iconPath = u("/opt/qorvale/Application.ico");
        h.date = date;
        return h;
    }
};

TEST_F(PrintHandOffFiles, PipingModeByteForByte) {
    load(1, 1);
    writePrintHandOff(handOff(0, QDate(1989, 1, 7)), rows(), sheetOfRows(rows()));

    EXPECT_EQ(readAll(printConfPath(root)),
              A("[Version]=2.00\r\n[Application_Title]=Qorvale\r\n[Data_TITLE]=複合単価印刷\r\n"
                "[STYLE_FILE]=") +
                  toAnsi(root) +
                  A("/ex_style/A4横_複合単価_管材歩掛.qvk\r\n"
                    "[Icon_File]=/opt/qorvale/Application.ico\r\n[File_Mask]=qvk\r\n"));
    EXPECT_EQ(rows()[4].goodsBytes + rows()[5].goodsBytes,
              A("公共建築工事標準単価積算基準令和6年版 P.211"));
    EXPECT_EQ(readAll(printHeaderPath(root)),
              A("[ta]=1989\r\n[tb]=昭和64\r\n[tc]=01\r\n[td]=07\r\n[te]=土\r\n[tf]=\r\n[tg]=\r\n"
                "[th]=公共建築工事標準単価積算基準令和6年版 P.211\r\n[ti]=24200\r\n"));

    const QByteArray data = readAll(printDataPath(root));
    const QList<QByteArray> lines = data.split('\n');
    ASSERT_EQ(lines.size(), 57); // 56 lines, each ended by CR LF
    EXPECT_TRUE(lines.last().isEmpty());
    EXPECT_EQ(lines[0],
              A("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA);給水;ねじ接合（管端防食継手）;屋内一般;15A;"
                "ｍ;3,380;640;1.1;0.55;0.05;0.1;0.069;0.015;0.1;704;352;32;64;1,670;363;"
                "203;3,388;\r"));
    EXPECT_TRUE(lines[14].contains(A(";機械室・便所;15A;")));
    for (int i = 0; i < 56; ++i)
        EXPECT_EQ(lines[i].count(';'), 23) << i;
    EXPECT_EQ(data, exportRowsText(ExportPrint, rows(), sheetOfRows(rows()), {}) + "\r\n");
}

TEST_F(PrintHandOffFiles, RefrigerantModeOneTabEmptyElementSixAndMaskQvr) {
    load(10, 1);
    writePrintHandOff(handOff(1, QDate(2019, 5, 1)), rows(), sheetOfRows(rows()));
    const QByteArray conf = readAll(printConfPath(root));
    EXPECT_TRUE(conf.endsWith("[File_Mask]=qvr\r\n"));
    EXPECT_TRUE(conf.contains(A("A4横_複合単価_管材計算.qvk\r\n")));
    const QByteArray header = readAll(printHeaderPath(root));
    EXPECT_TRUE(
        header.startsWith(A("[ta]=2019\r\n[tb]=令和01\r\n[tc]=05\r\n[td]=01\r\n[te]=水\r\n")))
        << header.toStdString();

    const QList<QByteArray> lines = readAll(printDataPath(root)).split('\n');
    ASSERT_EQ(lines.size(), 15);
    for (int i = 0; i < 14; ++i) {
        const QList<QByteArray> f = lines[i].split(';');
        EXPECT_EQ(f[3], A("一般"));
        EXPECT_EQ(f.size(), 24);
        // Element 6 is field 21 of 23: empty, the fields after it in place.
        EXPECT_TRUE(f[20].isEmpty()) << i;
        EXPECT_FALSE(f[22].isEmpty()) << i;
    }
}

TEST_F(PrintHandOffFiles, SecondPrintWithAnotherStyleChangesLineFourOnly) {
    load(1, 2);
    writePrintHandOff(handOff(0, QDate(1989, 1, 8)), rows(), sheetOfRows(rows()));
    const QByteArray conf0 = readAll(printConfPath(root));
    const QByteArray header0 = readAll(printHeaderPath(root));
    const QByteArray data0 = readAll(printDataPath(root));
    EXPECT_TRUE(header0.contains(A("[tb]=平成01\r\n")));
    EXPECT_TRUE(header0.contains(A("[te]=日\r\n")));

    writePrintHandOff(handOff(2, QDate(1989, 1, 8)), rows(), sheetOfRows(rows()));
    const QList<QByteArray> a = conf0.split('\n'), b = readAll(printConfPath(root)).split('\n');
    ASSERT_EQ(a.size(), b.size());
    for (int i = 0; i < int(a.size()); ++i)
        if (i != 3) {
            EXPECT_EQ(a[i], b[i]) << i;
        }
    EXPECT_NE(a[3], b[3]);
    EXPECT_TRUE(b[3].endsWith(A("A4横_複合単価_管材_歩掛+計算.qvk\r")));
    EXPECT_EQ(readAll(printHeaderPath(root)), header0);
    EXPECT_EQ(readAll(printDataPath(root)), data0);

    // A change of date changes the header.
    writePrintHandOff(handOff(2, QDate(2019, 4, 30)), rows(), sheetOfRows(rows()));
    EXPECT_TRUE(readAll(printHeaderPath(root))
                    .contains(A("[tb]=平成31\r\n[tc]=04\r\n[td]=30\r\n[te]=火\r\n")));
}

TEST_F(PrintHandOffFiles, EmptyBuildingAndPageTexts) {
    load(1, 1);
    rows()[4].setGoods(QString());
    rows()[5].setGoods(QString());
    writePrintHandOff(handOff(0, QDate(2026, 11, 23)), rows(), sheetOfRows(rows()));
    EXPECT_TRUE(readAll(printHeaderPath(root)).contains("\r\n[th]=\r\n[ti]=24200\r\n"));
}

TEST_F(PrintHandOffFiles, MissingFolderFailsAtTheFirstFileAndWritesNothing) {
    load(1, 1);
    ASSERT_TRUE(QDir(printFolderPath(root)).removeRecursively());
    EXPECT_THROW(writePrintHandOff(handOff(0, QDate(2026, 11, 23)), rows(), sheetOfRows(rows())),
                 FileError);
    EXPECT_FALSE(QFile::exists(printDataPath(root)));
    EXPECT_FALSE(QFile::exists(printConfPath(root)));
    EXPECT_FALSE(QFile::exists(printHeaderPath(root)));
}

TEST_F(PrintHandOffFiles, SuiteWritesTheThreeStyleFilesInTheStyleFormat) {
    for (int i = 0; i < 3; ++i) {
        PrintStyle s;
        QString reason;
        ASSERT_TRUE(readStyleFile(styleFilePath(root, i), s, reason)) << reason.toStdString();
        EXPECT_EQ(s.name, builtInStyle(i).name);
        EXPECT_EQ(s.title, u("複合単価計算書"));
        EXPECT_EQ(s.columns.size(), builtInStyle(i).columns.size());
        EXPECT_EQ(builtInStyleIndexOfFile(styleFilePath(root, i)), i);
    }
    EXPECT_EQ(builtInStyle(0).columns.size(), 9);  // size, unit, 7 factors
    EXPECT_EQ(builtInStyle(1).columns.size(), 12); // size, unit, 2 prices, 7 amounts, total
    EXPECT_EQ(builtInStyle(2).columns.size(), 19);
}

} // namespace
