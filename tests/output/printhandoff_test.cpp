// The print hand-off files: the era of a date, Print.conf, print_header.dat and print_Data.dat
// of a demo pipe type, byte for byte, and their failures.
#include "output/printhandoff.h"
#include "support/demo_data.h"

#include "output/printstyle.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"

namespace {

TEST(PrintHandOffTexts, EraWeekdayPrintConfAndStyleFiles) {
    const struct {
        QDate date;
        const char *era, *weekday;
    } dates[] = {{{1867, 12, 31}, "1867", "火"}, // before the first era: no era year
                 {{1868, 1, 1}, "明治01", "水"},   {{1912, 7, 29}, "明治45", "月"},
                 {{1912, 7, 30}, "大正01", "火"},  {{1926, 12, 24}, "大正15", "金"},
                 {{1926, 12, 25}, "昭和01", "土"}, {{1989, 1, 7}, "昭和64", "土"},
                 {{1989, 1, 8}, "平成01", "日"},   {{2019, 4, 30}, "平成31", "火"},
                 {{2019, 5, 1}, "令和01", "水"},   {{2026, 11, 23}, "令和08", "月"},
                 {{2119, 1, 1}, "令和101", "日"}};
    for (const auto& d : dates)
        EXPECT_EQ(eraYearText(d.date) + japaneseShortWeekday(d.date), u(d.era) + u(d.weekday));
    EXPECT_EQ(
        printConfText(u("/d/ex_style/A4横_複合単価_管材歩掛.qvk"), u("/p/Application.ico"), false),
        toAnsi(u("[Version]=2.00\r\n[Application_Title]=Qorvale\r\n[Data_TITLE]=複合単価印刷\r\n"
                 "[STYLE_FILE]=/d/ex_style/A4横_複合単価_管材歩掛.qvk\r\n"
                 "[Icon_File]=/p/Application.ico\r\n[File_Mask]=qvk\r\n")));
    // The styles of the radio, items out of range (-1, 3) taking the first: size, unit and 7
    // factors; size, unit, 2 prices, 7 amounts and the total; both.
    const struct {
        const char *file, *name;
        int columns;
    } styles[] = {
        {"管材歩掛", "歩掛", 9}, {"管材計算", "単価", 12}, {"管材_歩掛+計算", "歩掛+単価", 19}};
    for (int i = -1; i <= 3; ++i) {
        const int k = i == 1 || i == 2 ? i : 0;
        const QString path = styleFilePath(u("/d"), i);
        EXPECT_EQ(path, u("/d/ex_style/A4横_複合単価_%1.qvk").arg(u(styles[k].file))) << i;
        EXPECT_EQ(builtInStyleIndexOfFile(path), k);
        EXPECT_EQ(builtInStyle(i).name, u(styles[k].name)) << i;
        EXPECT_EQ(builtInStyle(i).title, u("複合単価計算書"));
        EXPECT_EQ(builtInStyle(i).columns.size(), styles[k].columns) << i;
    }
    EXPECT_EQ(builtInStyleIndexOfFile(u("/d/ex_style/x.qvk")), -1);
}

using PrintHandOffFiles = DemoDataFolder;

TEST_F(PrintHandOffFiles, PipingModeByteForByteOrNothingWithoutItsFolder) {
    ws().load(1, 1);
    doc().calculateAll();
    const PrintHandOff h{root, 0, u("/opt/qorvale/Application.ico"), QDate(1989, 1, 7)};
    writePrintHandOff(h, rows(), sheetOfRows(rows()));
    EXPECT_EQ(fileBytes(printConfPath(root)),
              printConfText(styleFilePath(root, 0), h.iconPath, false));
    EXPECT_EQ(
        fileBytes(printHeaderPath(root)),
        toAnsi(u("[ta]=1989\r\n[tb]=昭和64\r\n[tc]=01\r\n[td]=07\r\n[te]=土\r\n[tf]=\r\n[tg]=\r\n"
                 "[th]=公共建築工事標準単価積算基準令和6年版 P.211\r\n[ti]=24200\r\n")));
    // The captions and panels of the rows; the text of mode 2 (its golden: output_form_test).
    const QByteArray data = fileBytes(printDataPath(root));
    EXPECT_TRUE(data.startsWith(
        toAnsi(u("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA);給水;ねじ接合（管端防食継手）;屋内一般;15A;"))));
    EXPECT_EQ(data, exportRowsText(ExportPrint, rows(), sheetOfRows(rows()), {}) + "\r\n");

    // A missing folder fails at the first file and writes nothing; the folder is not made.
    EXPECT_EQ(printDataPath(root), root + u("/printdata/print_Data.dat"));
    ASSERT_TRUE(QDir(printFolderPath(root)).removeRecursively());
    EXPECT_THROW(writePrintHandOff(h, rows(), sheetOfRows(rows())), FileError);
    EXPECT_FALSE(QDir(printFolderPath(root)).exists());
    for (const QString& p : {printDataPath(root), printConfPath(root), printHeaderPath(root)})
        EXPECT_FALSE(QFile::exists(p)) << p.toStdString();
}

} // namespace
