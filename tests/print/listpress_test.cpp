// listpress --pdf on the hand-off of demo pipe types: the text of the PDF
// read back with pdftotext, the columns of each style, the page count, and
// the messages on broken input.
#include "engine/calcrow.h"
#include "engine/currency.h"
#include "output/exportrows.h"
#include "output/printhandoff.h"
#include "output/printstyle.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "print/printjob.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "support/demo_data.h"
#include "support/ownworkspace.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRectF>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

struct RunResult {
    int code = -1;
    QString out, err;
};

RunResult run(const QString& program, const QStringList& args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(
        QStringLiteral("QT_QPA_PLATFORM")); // the program finds its own way without a display
    p.setProcessEnvironment(env);
    p.start(program, args);
    RunResult r;
    if (!p.waitForFinished(60000)) return r;
    r.code = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

// The text of a PDF as pdftotext reads it, blanks and line ends as one blank.
QString pdfText(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    p.waitForFinished(60000);
    QString t = QString::fromUtf8(p.readAllStandardOutput());
    // The reader gives some kanji as their radical forms (u+2F00..); NFKC
    // takes them back to the usual characters.
    t = t.normalized(QString::NormalizationForm_KC);
    // and the middle dot of the font comes back as u+2027.
    t.replace(QChar(0x2027), QChar(0x30FB));
    return t.simplified();
}

// The words of a PDF with their boxes in points, as pdftotext -bbox gives
// them, page by page.
struct PdfWord {
    int page = 0;
    QString text;
    QRectF box;
};

QVector<PdfWord> pdfWords(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    p.waitForFinished(60000);
    const QString html = QString::fromUtf8(p.readAllStandardOutput());
    static const QRegularExpression item(
        QStringLiteral("<page |<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" "
                       "yMax=\"([\\d.]+)\">([^<]*)</word>"));
    QVector<PdfWord> words;
    int page = -1;
    for (const QRegularExpressionMatch& m : item.globalMatch(html)) {
        if (m.captured(5).isNull()) {
            ++page;
            continue;
        }
        QString t = m.captured(5).normalized(QString::NormalizationForm_KC);
        t.replace(QStringLiteral("&amp;"), QStringLiteral("&"))
            .replace(QStringLiteral("&lt;"), QStringLiteral("<"))
            .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
            .replace(QChar(0x2027), QChar(0x30FB));
        words.push_back({page, t,
                         QRectF(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                                QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()))});
    }
    return words;
}

// Every word inside the 10 mm margin of the landscape A4 sheet and clear of
// every other word of its page.
void expectWordsApartAndOnThePage(const QVector<PdfWord>& words) {
    const double margin = 10 / 25.4 * 72 - 0.01;
    const QRectF printable(QPointF(margin, margin), QPointF(842 - margin, 595 - margin));
    QStringList faults;
    for (int i = 0; i < int(words.size()); ++i) {
        const PdfWord& a = words[i];
        if (!printable.contains(a.box)) faults << QStringLiteral("off the page: ") + a.text;
        for (int j = i + 1; j < int(words.size()); ++j) {
            const PdfWord& b = words[j];
            const QRectF both = a.box.intersected(b.box);
            if (a.page == b.page && both.width() > 0.01 && both.height() > 0.01)
                faults << QStringLiteral("over each other on page %1: %2 / %3")
                              .arg(a.page + 1)
                              .arg(a.text, b.text);
        }
    }
    EXPECT_TRUE(faults.isEmpty()) << faults.size() << " faults, the first: "
                                  << faults.mid(0, 6).join(QStringLiteral("; ")).toStdString();
}

int pdfPages(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdfinfo"), {pdf});
    p.waitForFinished(60000);
    const QString info = QString::fromUtf8(p.readAllStandardOutput());
    const QRegularExpressionMatch m =
        QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(info);
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

class ListpressProgram : public DemoDataFolder {
protected:
    void handOff(int grp, int kan, int style) {
        ws().load(grp, kan);
        doc().calculateAll();
        PrintHandOff h;
        h.dataRoot = root;
        h.styleIndex = style;
        h.iconPath = u("/opt/qorvale/Application.ico");
        h.date = QDate(2026, 11, 23);
        writePrintHandOff(h, rows(), sheetOfRows(rows()));
    }
    // listpress --pdf; the text of the PDF.
    QString print(const QString& name = QStringLiteral("out.pdf")) {
        const QString pdf = dir.filePath(name);
        const RunResult r =
            run(QStringLiteral(LISTPRESS_EXE), {QStringLiteral("--pdf"), pdf, root + ';'});
        EXPECT_EQ(r.code, 0) << r.err.toStdString();
        return pdfText(pdf);
    }
    // Replaces line n (from 1) of a hand-off file.
    void replaceLine(const QString& path, int n, const QString& text) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        QList<QByteArray> lines = f.readAll().split('\n');
        f.close();
        lines[n - 1] = toAnsi(text) + '\r';
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(lines.join('\n'));
    }
    RunResult broken() {
        return run(QStringLiteral(LISTPRESS_EXE),
                   {QStringLiteral("--pdf"), dir.filePath(QStringLiteral("x.pdf")), root + ';'});
    }
};

// Found by fuzzing: amounts at the ends of what a price holds are written
// rounded to the yen, one beyond the largest price, and the sheet must still
// take them. Text that is no number is still refused.
TEST(PrintJobReading, AmountsAtTheEndsOfThePriceRangeReadBack) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    RowTable rows;
    rows[1].setSize(u("15A"));
    rows[1].adoptedUnitPrice = Currency::fromRaw(lowest);
    rows[1].submittedUnitPrice = Currency::fromRaw(highest);
    rows[OptionRow].factor(5) = Currency::fromRaw(lowest);
    PrintJob job;
    parsePrintHeader(textLinesOfBytes(printHeaderText(QDate(2026, 11, 23), rows)), job);
    parsePrintData(textLinesOfBytes(exportRowsText(ExportPrint, rows, sheetOfRows(rows), {})), job);
    ASSERT_EQ(job.blocks.size(), 4);
    ASSERT_EQ(job.blocks[0].lines.size(), 1);
    EXPECT_EQ(job.blocks[0].lines[0][2], u("-922,337,203,685,478"));
    EXPECT_EQ(job.blocks[0].lines[0][18], u("922,337,203,685,478"));
    EXPECT_EQ(job.labourCost, u("-922337203685477.5808"));

    QStringList line = textLinesOfBytes(exportRowsText(ExportPrint, rows, sheetOfRows(rows), {}));
    for (const char* bad : {"1e5", "1.2.3", "-", "１２"}) {
        QStringList f = line[0].split(QLatin1Char(';'));
        f[6] = u(bad);
        try {
            parsePrintData({f.join(QLatin1Char(';'))}, job);
            ADD_FAILURE() << bad;
        } catch (const PrintInput& e) {
            EXPECT_TRUE(e.message().contains(u("「%1」は数値ではありません").arg(u(bad))))
                << e.message().toStdString();
        }
    }
}

// Found by fuzzing: a size cut inside a character by its field width still
// leaves every field of its line in place.
TEST(PrintJobReading, ASizeCutInsideACharacterKeepsTheFieldsInPlace) {
    RowTable rows;
    rows[2].setSize(u("ｱ鋼屋管")); // six bytes: the last is half of 管
    rows[2].setUnit(u("ｍ"));
    rows[2].submittedUnitPrice = strToCurr(u("3388"));
    PrintJob job;
    parsePrintData(textLinesOfBytes(exportRowsText(ExportPrint, rows, sheetOfRows(rows), {})), job);
    ASSERT_EQ(job.blocks.size(), 4);
    ASSERT_EQ(job.blocks[0].lines.size(), 1);
    EXPECT_EQ(job.blocks[0].lines[0][0], u("ｱ鋼屋"));
    EXPECT_EQ(job.blocks[0].lines[0][1], u("ｍ"));
    EXPECT_EQ(job.blocks[0].lines[0][18], u("3,388"));
}

// The sheet shows a line with a blank size, or with no size but values, as
// a line of its own: so does the paper. Only a line with nothing stays off.
TEST(PrintJobReading, EveryLineWithASizeOrAValueIsRead) {
    RowTable rows;
    rows[1].setSize(u(" "));
    rows[1].submittedUnitPrice = strToCurr(u("1234"));
    rows[2].setSize(u(" "));
    rows[3].factor(5) = strToCurr(u("0.0001"));
    rows[4].setUnit(u("ｍ"));
    PrintJob job;
    parsePrintData(textLinesOfBytes(exportRowsText(ExportPrint, rows, sheetOfRows(rows), {})), job);
    ASSERT_EQ(job.blocks[0].lines.size(), 3);
    EXPECT_EQ(job.blocks[0].lines[0][18], u("1,234"));
    EXPECT_EQ(job.blocks[0].lines[2][8], u("0.0001"));
}

TEST(ListpressInstall, ProgramAndIconLieBesideTheProgram) {
    const QString dir = QStringLiteral(QORVALE_EXE_DIR);
    EXPECT_TRUE(QFileInfo(dir + QStringLiteral("/listpress")).isExecutable());
    QFile icon(dir + QStringLiteral("/Application.ico"));
    ASSERT_TRUE(icon.open(QIODevice::ReadOnly));
    const QByteArray bytes = icon.readAll();
    // An icon file: reserved 0, type 1, and the images of the sizes a
    // desktop asks for, 16 to 256 pixels.
    ASSERT_GE(bytes.size(), 6);
    EXPECT_TRUE(bytes.startsWith(QByteArray("\0\0\1\0", 4)));
    const int images = uchar(bytes[4]) | uchar(bytes[5]) << 8;
    EXPECT_GE(images, 4);
    QList<int> widths;
    for (int i = 0; i < images && 6 + 16 * i < bytes.size(); ++i)
        widths << (uchar(bytes[6 + 16 * i]) == 0 ? 256 : uchar(bytes[6 + 16 * i]));
    EXPECT_TRUE(widths.contains(16) && widths.contains(32) && widths.contains(256));
}

TEST_F(ListpressProgram, HelpSaysHowToWriteAPdf) {
    const RunResult r = run(QStringLiteral(LISTPRESS_EXE), {QStringLiteral("--help")});
    EXPECT_EQ(r.code, 0);
    EXPECT_TRUE(r.out.contains(QStringLiteral("--pdf"))) << r.out.toStdString();
}

TEST_F(ListpressProgram, PdfHoldsTitleSizesAndAmountsOfTheDataFile) {
    handOff(1, 1, 2);
    const QString text = print();
    EXPECT_TRUE(text.contains(u("複合単価計算書"))) << text.toStdString();
    EXPECT_TRUE(text.contains(u("複合単価印刷")));
    // The year of the era without a leading zero; the base labour cost
    // grouped as the amounts are.
    EXPECT_TRUE(text.contains(u("令和8年11月23日(月)")));
    EXPECT_TRUE(text.contains(u("公共建築工事標準単価積算基準令和6年版 P.211")));
    EXPECT_TRUE(text.contains(u("24,200 円")));
    for (const char* caption : {"屋内一般", "機械室・便所", "屋外架空", "地中埋設"})
        EXPECT_TRUE(text.contains(u(caption))) << caption;
    // Every size and every amount of every line of the data file.
    const QList<QByteArray> lines = [&] {
        QFile f(printDataPath(root));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().split('\n');
    }();
    int checked = 0;
    for (const QByteArray& line : lines) {
        const QStringList f = fromAnsi(line).split(';');
        if (f.size() < 23 || f[4].isEmpty()) continue;
        EXPECT_TRUE(text.contains(f[4])) << f[4].toStdString();
        // field 13, the pipefitter's factor, may gain zeros up to three
        // decimals.
        for (int k = 6; k < 23; ++k)
            if (!f[k].isEmpty()) {
                EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral(" %1%2 ").arg(
                    QRegularExpression::escape(f[k]), k == 12 ? "0*" : ""))))
                    << f[k].toStdString();
            }
        ++checked;
    }
    EXPECT_EQ(checked, 56);
    expectWordsApartAndOnThePage(pdfWords(dir.filePath(QStringLiteral("out.pdf"))));
    // Two details to the page.
    EXPECT_EQ(pdfPages(dir.filePath(QStringLiteral("out.pdf"))), 2);
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("\\b1 ?/ ?2\\b"))));
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("\\b2 ?/ ?2\\b"))));
}

// The hardest pages of the widest style: amounts of nine digits in every
// column, and the largest amount in the last line; a line whose size is one
// blank; three long names in both widths; a building/page text of 60
// characters. Every text stands whole and apart from every other, inside
// the margins. With fifteen digits the columns go over two pages.
// QORVALE_PRINT_SAMPLE names a file to keep the PDF of nine digits in (the
// picture of the README).
TEST_F(ListpressProgram, HardestPagesShowEveryTextWholeAndApart) {
    RowTable rows;
    const QStringList names = {u("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)ｽｹｼﾞｭｰﾙ40ﾈｼﾞ兼用"),
                               u("給水・給湯・消火設備兼用系統（高層階加圧ポンプ二次側）"),
                               u("ﾌﾗﾝｼﾞ接合（ﾙｰｽﾞﾌﾗﾝｼﾞ）及びねじ接合（管端防食継手）")};
    for (int i = 0; i < 3; ++i)
        rows[i + 1].setGoods(names[i]);
    const QString building = u("公共建築工事標準単価積算基準令和六年版機械設備工事編第二章");
    const QString page = u("配管工事第三節給水給湯設備配管歩掛参考資料二百十一から二百十五");
    rows[4].setGoods(building);
    rows[5].setGoods(page);
    ASSERT_EQ((rows[4].goods() + rows[5].goods()).size(), 60);
    rows[OptionRow].factor(5) = strToCurr(u("98765432.1"));
    const QStringList sizes = {u("15A"), u(" "), u("300A")};
    for (const auto& [digits, pages] : {std::pair{9, 1}, std::pair{15, 2}}) {
        SCOPED_TRACE(digits);
        // Three lines of 17 numbers, each number of its own.
        QStringList amounts;
        for (int line = 1; line <= 3; ++line) {
            PipeRow& r = rows[line];
            r.setSize(sizes[line - 1]);
            r.setUnit(u("ｍ"));
            auto next = [&] {
                const Currency c = strToCurr(QString::number(
                    std::pow(10.0, digits - 1) * line + 1234567.0 * (amounts.size() % 17 + 1), 'f',
                    0));
                amounts << formatAmount(c);
                return c;
            };
            r.adoptedUnitPrice = next();
            r.submittedPrice = next();
            for (int e = 1; e <= 7; ++e)
                r.factor(e) = next();
            for (int e = 0; e < 7; ++e)
                r.submittedAmounts[std::size_t(e)] = next();
            r.submittedUnitPrice = next();
        }
        rows[3].submittedUnitPrice = Currency::fromRaw(std::numeric_limits<std::int64_t>::max());
        amounts.last() = u("922,337,203,685,478");
        PrintHandOff h;
        h.dataRoot = root;
        h.styleIndex = 2;
        h.date = QDate(2026, 11, 23);
        writePrintHandOff(h, rows, sheetOfRows(rows));
        const QString pdf = dir.filePath(QStringLiteral("hard.pdf"));
        const RunResult r =
            run(QStringLiteral(LISTPRESS_EXE), {QStringLiteral("--pdf"), pdf, root + ';'});
        ASSERT_EQ(r.code, 0) << r.err.toStdString();
        EXPECT_EQ(pdfPages(pdf), pages);
        const QString sample = qEnvironmentVariable("QORVALE_PRINT_SAMPLE");
        if (digits == 9 && !sample.isEmpty()) {
            QFile::remove(sample);
            QFile::copy(pdf, sample);
        }

        const QVector<PdfWord> words = pdfWords(pdf);
        QStringList texts;
        for (const PdfWord& w : words)
            texts << w.text;
        // Each number once, as a word of its own; the factors are plain
        // numbers, the pipefitter's with three decimals.
        QStringList missing;
        for (int i = 0; i < int(amounts.size()); ++i) {
            QString a = amounts[i];
            if (i % 17 >= 2 && i % 17 < 9) a.remove(QLatin1Char(','));
            if (i % 17 == 6) a += QStringLiteral(".000");
            if (texts.count(a) != 1) missing << a;
        }
        const QString all = texts.join(QString());
        for (const QString& t :
             names + QStringList{building + page, u("基礎工費(提出)"), u("98,765,432.1円"),
                                 u("令和8年11月23日(月)")}) {
            const QString s = t.normalized(QString::NormalizationForm_KC)
                                  .remove(QRegularExpression(QStringLiteral("\\s")));
            if (!all.contains(s)) missing << s;
        }
        EXPECT_TRUE(missing.isEmpty()) << missing.join(QLatin1Char(' ')).toStdString();
        expectWordsApartAndOnThePage(words);
    }
}

TEST_F(ListpressProgram, EachStyleShowsItsColumnsAndNoOthers) {
    // Values of row 1 of demo 1/1: factor of the pipefitter 0.069, its
    // amount 1,670, the total 3,388.
    handOff(1, 1, 0);
    QString t = print();
    EXPECT_TRUE(t.contains(u("歩 掛")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 0.069 ")));
    // The pipefitter's factor with three decimals at least, as the sheet
    // shows it (0.34 of 100A).
    EXPECT_TRUE(t.contains(QStringLiteral(" 0.340 ")));
    EXPECT_FALSE(t.contains(QStringLiteral(" 1,670 ")));
    EXPECT_FALSE(t.contains(QStringLiteral(" 3,388 ")));
    EXPECT_FALSE(t.contains(u("採用単価")));
    EXPECT_FALSE(t.contains(u("合 計")));

    handOff(1, 1, 1);
    t = print();
    EXPECT_FALSE(t.contains(QStringLiteral(" 0.069 ")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 1,670 ")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 3,388 ")));
    EXPECT_TRUE(t.contains(u("採用単価")));
    EXPECT_TRUE(t.contains(u("合 計")));
    EXPECT_FALSE(t.contains(u("歩 掛")));

    handOff(1, 1, 2);
    t = print();
    EXPECT_TRUE(t.contains(QStringLiteral(" 0.069 ")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 1,670 ")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 3,388 ")));
    EXPECT_TRUE(t.contains(u("歩 掛")));
    EXPECT_TRUE(t.contains(u("採用単価")));
    EXPECT_FALSE(t.contains(u("標準の書式")));
}

TEST_F(ListpressProgram, RefrigerantSheetIsOnePageWithItsLabels) {
    handOff(10, 1, 2);
    const QString t = print();
    EXPECT_EQ(pdfPages(dir.filePath(QStringLiteral("out.pdf"))), 1);
    EXPECT_TRUE(t.contains(u("一般")));
    EXPECT_TRUE(t.contains(u("継手接合等")));
    EXPECT_FALSE(t.contains(u("はつり補修")));
    // Element 6 has no place in refrigerant mode: its column keeps the
    // sheet's heading "---" and stays empty, the factor too.
    EXPECT_TRUE(t.contains(QStringLiteral(" --- ")));
    int zeros = 0;
    for (const PdfWord& w : pdfWords(dir.filePath(QStringLiteral("out.pdf"))))
        zeros += w.text == QLatin1String("0");
    EXPECT_EQ(zeros, 0);
}

TEST_F(ListpressProgram, MissingStyleFileFallsBackWithANoteOnTheFooter) {
    handOff(1, 1, 1);
    ASSERT_TRUE(QFile::remove(styleFilePath(root, 1)));
    const QString t = print();
    EXPECT_TRUE(t.contains(u("標準の書式「単価」"))) << t.toStdString();
    EXPECT_TRUE(t.contains(QStringLiteral(" 3,388 ")));
    EXPECT_FALSE(t.contains(QStringLiteral(" 0.069 ")));

    // An unreadable one the same way.
    QFile f(styleFilePath(root, 1));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(toAnsi(u("[Column]=NOSUCH;x;y;;\r\n")));
    f.close();
    EXPECT_TRUE(print(QStringLiteral("b.pdf")).contains(u("標準の書式「単価」")));
}

TEST_F(ListpressProgram, BrokenInputGivesTheMessageAndExitCodeOne) {
    // A missing folder.
    RunResult r = run(QStringLiteral(LISTPRESS_EXE),
                      {QStringLiteral("--pdf"), dir.filePath(QStringLiteral("x.pdf")),
                       dir.filePath(QStringLiteral("nowhere")) + ';'});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(u("データフォルダー"))) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("nowhere")));

    // A missing data file.
    handOff(1, 1, 0);
    ASSERT_TRUE(QFile::remove(printDataPath(root)));
    r = broken();
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(u("print_Data.dat が見つかりません"))) << r.err.toStdString();

    // A line with too few fields.
    handOff(1, 1, 0);
    replaceLine(printDataPath(root), 3, QStringLiteral("a;b;c;d;15A;m;1;2;"));
    r = broken();
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(u("print_Data.dat の 3 行目: 項目が足りません")))
        << r.err.toStdString();

    // A line with too many fields: no number is taken from the wrong place.
    handOff(1, 1, 0);
    replaceLine(
        printDataPath(root), 4,
        u("a;b;c;屋内;一般;15A;ｍ;3,380;640;1.1;0.55;0.05;0.1;0.069;0.015;0.1;704;352;32;64;"
          "1,670;363;203;3,388;"));
    r = broken();
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(
        r.err.contains(u("print_Data.dat の 4 行目: 項目が多すぎます（23 項目のところ 24 項目）")))
        << r.err.toStdString();

    // Text that is no number.
    handOff(1, 1, 0);
    replaceLine(printDataPath(root), 5,
                u("a;b;c;屋内一般;15A;ｍ;3,380;abc;1.1;0.55;0.05;0.1;0.069;0.015;0.1;704;352;32;64;"
                  "1,670;363;203;3,388;"));
    r = broken();
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(u("print_Data.dat の 5 行目 8 項目目: 「abc」は数値ではありません")))
        << r.err.toStdString();

    // A base labour cost that is no number, in the header.
    handOff(1, 1, 0);
    replaceLine(printHeaderPath(root), 9, QStringLiteral("[ti]=x1"));
    r = broken();
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(u("print_header.dat の 9 行目"))) << r.err.toStdString();

    // No argument at all.
    r = run(QStringLiteral(LISTPRESS_EXE),
            {QStringLiteral("--pdf"), dir.filePath(QStringLiteral("x.pdf"))});
    EXPECT_EQ(r.code, 2);
}

TEST_F(ListpressProgram, ToolPrintsAStoredPipeType) {
    const QString pdf = dir.filePath(QStringLiteral("tool.pdf"));
    const RunResult r =
        run(QStringLiteral(QORVALE_TOOL_EXE),
            {QStringLiteral("print"), QStringLiteral("--group"), QStringLiteral("1"),
             QStringLiteral("--kan"), QStringLiteral("1"), QStringLiteral("--pdf"), pdf,
             QStringLiteral("--style-index"), QStringLiteral("1")});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    const QString t = pdfText(pdf);
    EXPECT_TRUE(t.contains(u("複合単価計算書")));
    EXPECT_TRUE(t.contains(QStringLiteral(" 3,388 ")));
    EXPECT_FALSE(t.contains(QStringLiteral(" 0.069 ")));
    // The hand-off files stay as the print command would leave them.
    EXPECT_TRUE(QFile::exists(printDataPath(root)));
    EXPECT_TRUE(QFile::exists(printConfPath(root)));
}

} // namespace
