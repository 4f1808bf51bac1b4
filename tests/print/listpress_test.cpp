// listpress --pdf on the hand-off of demo pipe types: the text of the PDF read back with
// pdftotext, the columns of each style, the page count, and the messages on broken input.
#include "output/printhandoff.h"
#include "print/printjob.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "support/demo_data.h"

#include <QImage>
#include <QRectF>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

struct RunResult {
    int code = -1;
    QString out, err;
};

RunResult run(const QString& program, const QStringList& args) {
    QProcess p;
    // The program finds its own way without a display.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    p.setProcessEnvironment(env);
    p.start(program, args);
    if (!p.waitForFinished(60000)) return {};
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}
const QString Listpress = QStringLiteral(LISTPRESS_EXE);

struct PdfWord {
    int page = 0;
    QString text;
    QRectF box; // in points
};

// A PDF as pdftotext reads it: the text with blanks and line ends as one blank, the words with
// their boxes page by page (-bbox), and the number of pages.
struct Pdf {
    QString text;
    QVector<PdfWord> words;
    int pages = 0;
};

Pdf readPdf(const QString& pdf) {
    // The reader gives some kanji as their radical forms (u+2F00..), which NFKC takes back to
    // the usual characters, and the middle dot of the font as u+2027.
    auto usual = [](const QString& t) {
        return t.normalized(QString::NormalizationForm_KC).replace(QChar(0x2027), QChar(0x30FB));
    };
    Pdf r;
    r.text = usual(run(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")}).out).simplified();
    static const QRegularExpression item(
        QStringLiteral("<page |<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" "
                       "yMax=\"([\\d.]+)\">([^<]*)</word>"));
    const QStringList bbox = {QStringLiteral("-bbox"), pdf, QStringLiteral("-")};
    for (const QRegularExpressionMatch& m : item.globalMatch(run(u("pdftotext"), bbox).out)) {
        if (m.captured(5).isNull()) {
            ++r.pages;
            continue;
        }
        auto at = [&](int i) { return m.captured(i).toDouble(); };
        r.words.push_back({r.pages - 1, usual(m.captured(5)),
                           QRectF(QPointF(at(1), at(2)), QPointF(at(3), at(4)))});
    }
    return r;
}

// Each text of a list "+shown|-not shown|..." as the PDF's text has it or not.
void expectTexts(const QString& pdf, const char* texts) {
    for (const QString& x : u(texts).split(QLatin1Char('|')))
        EXPECT_EQ(pdf.contains(x.mid(1)), x[0] == QLatin1Char('+')) << x.toStdString();
}

// Every word inside the 10 mm margin of the landscape A4 sheet and clear of every other word
// of its page; the first word that is not fails.
void expectWordsApartAndOnThePage(const QVector<PdfWord>& words) {
    const double m = 10 / 25.4 * 72 - 0.01;
    for (int i = 0; i < int(words.size()); ++i) {
        const PdfWord& a = words[i];
        ASSERT_TRUE(QRectF(QPointF(m, m), QPointF(842 - m, 595 - m)).contains(a.box))
            << "off the page: " << a.text.toStdString();
        for (const PdfWord& b : words.mid(i + 1)) {
            const QRectF both = a.box.intersected(b.box);
            ASSERT_FALSE(a.page == b.page && both.width() > 0.01 && both.height() > 0.01)
                << "over each other on page " << a.page + 1 << ": "
                << (a.text + " / " + b.text).toStdString();
        }
    }
}

class ListpressProgram : public DemoDataFolder {
protected:
    void handOff(int grp, int kan, int style) {
        ws().load(grp, kan);
        doc().calculateAll();
        writePrintHandOff({root, style, u("/opt/qorvale/Application.ico"), QDate(2026, 11, 23)},
                          rows(), sheetOfRows(rows()));
    }
    RunResult pdfOf(const QString& name) {
        return run(Listpress, {QStringLiteral("--pdf"), dir.filePath(name), root + ';'});
    }
    Pdf print(const QString& name = QStringLiteral("out.pdf")) {
        const RunResult r = pdfOf(name);
        EXPECT_EQ(r.code, 0) << r.err.toStdString();
        return readPdf(dir.filePath(name));
    }
    // Replaces line n (from 1) of a hand-off file; line 0 removes the file.
    void replaceLine(const QString& path, int n, const char* text) {
        QFile f(path);
        ASSERT_TRUE(n == 0 ? f.remove() : f.open(QIODevice::ReadOnly));
        if (n == 0) return;
        QList<QByteArray> lines = f.readAll().split('\n');
        lines[n - 1] = toAnsi(u(text)) + '\r';
        replaceFileBytes(path, lines.join('\n'));
    }
};

// Found by fuzzing: amounts at the ends of what a price holds are written rounded to the yen,
// one beyond the largest price, and a size may be cut inside a character by its field width;
// the sheet must still take them with every field in place. Text that is no number is still
// refused. The sheet shows a line with a blank size, or with no size but values, as a line of
// its own: so does the paper. Only a line with nothing stays off.
TEST(PrintJobReading, EveryLineWithASizeOrAValueIsReadWithItsFieldsInPlace) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    RowTable rows;
    rows[1].setSize(u("15A")), rows[1].adoptedUnitPrice = Currency::fromRaw(lowest);
    rows[1].submittedUnitPrice = Currency::fromRaw(std::numeric_limits<std::int64_t>::max());
    rows[OptionRow].factor(5) = Currency::fromRaw(lowest);
    rows[2].setSize(u(" ")), rows[2].submittedUnitPrice = strToCurr(u("1234"));
    rows[3].setSize(u(" ")), rows[4].factor(5) = strToCurr(u("0.0001")), rows[5].setUnit(u("ｍ"));
    rows[6].setSize(u("ｱ鋼屋管")); // six bytes: the last is half of 管
    rows[6].setUnit(u("ｍ")), rows[6].submittedUnitPrice = strToCurr(u("3388"));
    const QStringList data =
        textLinesOfBytes(exportRowsText(ExportPrint, rows, sheetOfRows(rows), {}));
    PrintJob job;
    parsePrintHeader(textLinesOfBytes(printHeaderText(QDate(2026, 11, 23), rows)), job);
    parsePrintData(data, job);
    EXPECT_EQ(job.labourCost, u("-922337203685477.5808"));
    ASSERT_EQ(job.blocks.size(), 4);
    const auto& l = job.blocks[0].lines;
    ASSERT_EQ(l.size(), 5);
    const QString fields =
        QStringList({l[0][2], l[0][18], l[1][18], l[3][8], l[4][0], l[4][1], l[4][18]}).join('|');
    EXPECT_EQ(fields, u("-922,337,203,685,478|922,337,203,685,478|1,234|0.0001|ｱ鋼屋|ｍ|3,388"));
    for (const char* bad : {"1e5", "1.2.3", "-", "１２"}) {
        QStringList f = data[0].split(QLatin1Char(';'));
        f[6] = u(bad);
        EXPECT_THROW(parsePrintData({f.join(QLatin1Char(';'))}, job), PrintInput) << bad;
    }
}

// The icon beside the programs: an icon file (reserved 0, type 1) whose directory entries of
// 16 bytes have the widths a desktop asks for, 16, 32 and 256 (written 0) among them.
TEST(ListpressInstall, IconBesideTheProgramsHasTheSizesOfADesktop) {
    QFile icon(QStringLiteral(QORVALE_EXE_DIR "/Application.ico"));
    ASSERT_TRUE(icon.open(QIODevice::ReadOnly));
    const QByteArray b = icon.readAll();
    ASSERT_TRUE(b.size() >= 6 && b.startsWith(QByteArray("\0\0\1\0", 4)));
    QList<int> widths;
    for (int i = 0; i < (uchar(b[4]) | uchar(b[5]) << 8) && 6 + 16 * i < b.size(); ++i)
        widths << uchar(b[6 + 16 * i]);
    EXPECT_TRUE(widths.size() >= 4 && widths.contains(16) && widths.contains(32) &&
                widths.contains(0));
}

// The hardest pages of the widest style: amounts of nine digits in every column, and the
// largest amount in the last line; a line whose size is one blank; three long names in both
// widths; a building/page text of 60 characters. Every text stands whole and apart from every
// other, inside the margins. With fifteen digits the columns go over two pages.
// QORVALE_PRINT_SAMPLE names a file to keep the PDF of nine digits in (the picture of the
// README).
TEST_F(ListpressProgram, HardestPagesShowEveryTextWholeAndApart) {
    RowTable rows;
    const QStringList names = {u("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)ｽｹｼﾞｭｰﾙ40ﾈｼﾞ兼用"),
                               u("給水・給湯・消火設備兼用系統（高層階加圧ポンプ二次側）"),
                               u("ﾌﾗﾝｼﾞ接合（ﾙｰｽﾞﾌﾗﾝｼﾞ）及びねじ接合（管端防食継手）")};
    const QString building = u("公共建築工事標準単価積算基準令和六年版機械設備工事編第二章");
    const QString page = u("配管工事第三節給水給湯設備配管歩掛参考資料二百十一から二百十五");
    for (int i = 0; i < 5; ++i)
        rows[i + 1].setGoods((names + QStringList{building, page})[i]);
    rows[OptionRow].factor(5) = strToCurr(u("98765432.1"));
    const QStringList sizes = {u("15A"), u(" "), u("300A")};
    for (const auto& [digits, pages] : {std::pair{9, 1}, std::pair{15, 2}}) {
        SCOPED_TRACE(digits);
        // Three lines of 17 numbers, each number of its own.
        QStringList amounts;
        for (int line = 1; line <= 3; ++line) {
            PipeRow& r = rows[line];
            r.setSize(sizes[line - 1]), r.setUnit(u("ｍ"));
            auto next = [&] {
                const Currency c = strToCurr(QString::number(
                    std::pow(10.0, digits - 1) * line + 1234567.0 * (amounts.size() % 17 + 1), 'f',
                    0));
                amounts << formatAmount(c);
                return c;
            };
            r.adoptedUnitPrice = next(), r.submittedPrice = next();
            for (int e = 1; e <= 7; ++e)
                r.factor(e) = next();
            for (int e = 0; e < 7; ++e)
                r.submittedAmounts[std::size_t(e)] = next();
            r.submittedUnitPrice = next();
        }
        rows[3].submittedUnitPrice = Currency::fromRaw(std::numeric_limits<std::int64_t>::max());
        amounts.last() = u("922,337,203,685,478");
        writePrintHandOff({root, 2, {}, QDate(2026, 11, 23)}, rows, sheetOfRows(rows));
        const QString sample = qEnvironmentVariable("QORVALE_PRINT_SAMPLE");
        const Pdf pdf =
            print(digits == 9 && !sample.isEmpty() ? QFileInfo(sample).absoluteFilePath()
                                                   : u("hard.pdf"));
        EXPECT_EQ(pdf.pages, pages);
        QStringList texts;
        for (const PdfWord& w : pdf.words)
            texts << w.text;
        // Each number once, as a word of its own; the factors are plain numbers, the
        // pipefitter's with three decimals.
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
        expectWordsApartAndOnThePage(pdf.words);
    }
}

TEST_F(ListpressProgram, EachStyleShowsItsColumnsAndTheWidestAllOfTheDataFile) {
    // Row 1 of demo 1/1: the pipefitter's factor 0.069, its amount 1,670, the total 3,388; the
    // factor 0.34 of 100A with three decimals, as the sheet shows it. The suite's style files
    // are read: no note of a built-in style. The widest style (the last) has the title, the
    // year of the era without a leading zero, the base labour cost grouped as the amounts are,
    // the building/page text and the captions of the details.
    const char* const styles[] = {
        "+歩 掛|+ 0.069 |+ 0.340 |- 1,670 |- 3,388 |-採用単価|-合 計|-標準の書式",
        "+ 1,670 |+ 3,388 |+採用単価|+合 計|- 0.069 |-歩 掛|-標準の書式",
        "+ 0.069 |+ 1,670 |+ 3,388 |+歩 掛|+採用単価|-標準の書式|+複合単価計算書|+複合単価印刷|"
        "+令和8年11月23日(月)|+24,200 円|+公共建築工事標準単価積算基準令和6年版 P.211|+屋内一般|"
        "+機械室・便所|+屋外架空|+地中埋設"};
    Pdf pdf;
    for (int style = 0; style < 3; ++style) {
        SCOPED_TRACE(style);
        handOff(1, 1, style);
        pdf = print();
        expectTexts(pdf.text, styles[style]);
    }
    // Every size and every amount of every line of the data file (whose lines are checked byte
    // for byte by PrintHandOffFiles.PipingModeByteForByteOrNothingWithoutItsFolder).
    QFile data(printDataPath(root));
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    for (const QByteArray& line : data.readAll().split('\n')) {
        const QStringList f = fromAnsi(line).split(';');
        if (f.size() < 23 || f[4].isEmpty()) continue;
        EXPECT_TRUE(pdf.text.contains(f[4])) << f[4].toStdString();
        // Field 13, the pipefitter's factor, may gain zeros up to three decimals.
        for (int k = 6; k < 23; ++k)
            EXPECT_TRUE(f[k].isEmpty() ||
                        pdf.text.contains(QRegularExpression(QStringLiteral(" %1%2 ").arg(
                            QRegularExpression::escape(f[k]), k == 12 ? "0*" : ""))))
                << f[k].toStdString();
    }
    expectWordsApartAndOnThePage(pdf.words);
    // Two details to the page.
    EXPECT_EQ(pdf.pages, 2);
    EXPECT_TRUE(
        pdf.text.contains(QRegularExpression(QStringLiteral("\\b1 ?/ ?2\\b.*\\b2 ?/ ?2\\b"))));

    // A missing style file, or one that can't be read: the built-in style of its name, and a
    // note on the footer.
    handOff(1, 1, 1);
    ASSERT_TRUE(QFile::remove(styleFilePath(root, 1)));
    expectTexts(print().text, "+標準の書式「単価」|+ 3,388 |- 0.069 ");
    writeExportFile(styleFilePath(root, 1), toAnsi(u("[Column]=NOSUCH;x;y;;")));
    EXPECT_TRUE(print(QStringLiteral("b.pdf")).text.contains(u("標準の書式「単価」")));

    // A refrigerant sheet is one page. Element 6 has no place in refrigerant mode: its column
    // keeps the sheet's heading "---" and stays empty, the factor too.
    handOff(10, 1, 2);
    pdf = print();
    EXPECT_EQ(pdf.pages, 1);
    expectTexts(pdf.text, "+一般|+継手接合等|-はつり補修|+ --- ");
    for (const PdfWord& w : pdf.words)
        EXPECT_NE(w.text, QLatin1String("0"));
}

TEST_F(ListpressProgram, BrokenInputGivesTheMessageAndExitCodeOne) {
    // (--help: tests/package/cli_test.sh.)
    const QString x = dir.filePath(u("x.pdf"));
    EXPECT_EQ(run(Listpress, {u("--pdf"), x}).code, 2);
    RunResult r = run(Listpress, {u("--pdf"), x, dir.filePath(u("nowhere")) + ';'});
    EXPECT_TRUE(r.code == 1 && r.err.contains(u("データフォルダー")) &&
                r.err.contains(QStringLiteral("nowhere")))
        << r.err.toStdString();
    // A line of the data file replaced by a text (line 0: the file removed; line 9: of the
    // header), and the message. A ";" inside a text gives too many fields: no number is taken from
    // the wrong place.
    const std::tuple<int, const char*, const char*> cases[] = {
        {0, "", "print_Data.dat が見つかりません"},
        {3, "a;b;c;d;15A;m;1;2;", "print_Data.dat の 3 行目: 項目が足りません"},
        {4,
         "a;b;c;屋内;一般;15A;ｍ;3,380;640;1.1;0.55;0.05;0.1;0.069;0.015;0.1;704;352;32;64;1,670;"
         "363;203;3,388;",
         "print_Data.dat の 4 行目: 項目が多すぎます（23 項目のところ 24 項目）"},
        {5,
         "a;b;c;屋内一般;15A;ｍ;3,380;abc;1.1;0.55;0.05;0.1;0.069;0.015;0.1;704;352;32;64;1,670;"
         "363;203;3,388;",
         "print_Data.dat の 5 行目 8 項目目: 「abc」は数値ではありません"},
        {9, "[ti]=x1", "print_header.dat の 9 行目"}};
    for (const auto& [line, text, message] : cases) {
        handOff(1, 1, 0);
        replaceLine(line == 9 ? printHeaderPath(root) : printDataPath(root), line, text);
        r = pdfOf(u("x.pdf"));
        EXPECT_TRUE(r.code == 1 && r.err.contains(u(message))) << r.code << r.err.toStdString();
    }
}

// Without --pdf the sheet opens in a preview that stays until the user closes it; with
// --screenshot the preview is saved as a picture and closed.
TEST_F(ListpressProgram, ThePreviewStaysOpenOrGivesItsPicture) {
    handOff(1, 1, 0);
    QProcess p;
    p.start(Listpress, {root + ';'});
    ASSERT_TRUE(p.waitForStarted());
    EXPECT_FALSE(p.waitForFinished(3000)) << p.readAllStandardError().toStdString();
    p.kill();
    p.waitForFinished();
    const QString png = dir.filePath(u("preview.png"));
    p.start(Listpress, {u("--screenshot"), png, root + ';'});
    EXPECT_TRUE(p.waitForFinished(60000) && p.exitCode() == 0)
        << p.readAllStandardError().toStdString();
    EXPECT_FALSE(QImage(png).isNull());
}

TEST_F(ListpressProgram, ToolPrintsAStoredPipeType) {
    const QString pdf = dir.filePath(QStringLiteral("tool.pdf"));
    const RunResult r = run(QStringLiteral(QORVALE_TOOL_EXE),
                            u("print --group 1 --kan 1 --style-index 1 --pdf").split(' ') << pdf);
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    expectTexts(readPdf(pdf).text, "+複合単価計算書|+ 3,388 |- 0.069 ");
    // The hand-off files stay as the print command would leave them.
    EXPECT_TRUE(QFile::exists(printDataPath(root)) && QFile::exists(printConfPath(root)));
}

} // namespace
