// The print program's three files and its style files: any bytes read
// without harm and either give a job that holds together or the Japanese
// error that names the file; what the hand-off writes for any rows reads
// back field by field; a style written then read is the same style.

#include "engine/currency.h"
#include "fuzzcheck.h"
#include "output/exportrows.h"
#include "output/printhandoff.h"
#include "output/printstyle.h"
#include "print/printjob.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QDate>
#include <QRegularExpression>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

// Text from pieces that code page 932 holds; a ";" only when allowed.
QString safeText(FuzzedDataProvider& in, int maxLength, bool semicolon) {
    static const QString pieces = u("0123456789 .,-=ABCabcxyz[]_配管工継手鋼管屋内ｱｶﾞ　（）①");
    QString s;
    const int n = in.ConsumeIntegralInRange(0, maxLength);
    for (int i = 0; i < n; ++i)
        s += semicolon && in.ConsumeIntegralInRange(0, 7) == 0
                 ? QLatin1Char(';')
                 : pieces[in.ConsumeIntegralInRange<int>(0, int(pieces.size()) - 1)];
    return s;
}

Currency anyAmount(FuzzedDataProvider& in) {
    switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return Currency::fromRaw(in.ConsumeIntegral<std::int64_t>());
    case 1:
        return Currency::fromRaw(0);
    default: // amounts as they are: up to a thousand million yen
        return Currency::fromRaw(
            in.ConsumeIntegralInRange<std::int64_t>(-10000000000000LL, 10000000000000LL));
    }
}

// What the sheet takes for a number: a sign, digits with or without
// thousands separators, one point, at least one digit; blanks and
// separators around it.
bool numberText(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral("^[\\s,]*[+-]?[0-9,]*(\\.[0-9,]*)?[\\s,]*$"),
        QRegularExpression::UseUnicodePropertiesOption);
    return form.match(text).hasMatch() &&
           text.contains(QRegularExpression(QStringLiteral("[0-9]")));
}

// Any bytes as the three files.
void anyFiles(FuzzedDataProvider& in) {
    const QStringList conf =
        textLinesOfBytes(QByteArray::fromStdString(in.ConsumeRandomLengthString(300)));
    const QStringList header =
        textLinesOfBytes(QByteArray::fromStdString(in.ConsumeRandomLengthString(300)));
    const QStringList data =
        textLinesOfBytes(QByteArray::fromStdString(in.ConsumeRemainingBytesAsString()));
    PrintJob job;
    const char* stage = "Print.conf";
    try {
        parsePrintConf(conf, job);
        stage = "print_header.dat";
        parsePrintHeader(header, job);
        stage = "print_Data.dat";
        parsePrintData(data, job);
    } catch (const PrintInput& e) {
        FUZZ_CHECK(e.message().startsWith(QString::fromLatin1(stage)));
        return;
    }
    FUZZ_CHECK(numberText(job.labourCost));
    FUZZ_CHECK(!job.blocks.isEmpty());
    for (const PrintBlock& b : job.blocks) {
        FUZZ_CHECK(b.lines.size() <= 14);
        for (const PrintFields& f : b.lines) {
            for (std::size_t k = 2; k < f.size(); ++k)
                FUZZ_CHECK(f[k].isEmpty() || numberText(f[k]));
        }
    }
}

// Rows as the hand-off writes them, read back by the print program.
void handOff(FuzzedDataProvider& in) {
    RowTable rows;
    const bool refrigerant = in.ConsumeBool();
    rows[OptionRow].modeFlag = refrigerant ? 1 : 0;
    rows[OptionRow].factor(5) = anyAmount(in);
    // Any text may hold a ";": the hand-off writes it as "；".
    for (int r = 1; r <= 5; ++r)
        rows[r].setGoods(safeText(in, 30, true));
    for (int t = 0; t < 4; ++t)
        rows[t * TabRows + 1].setKind(safeText(in, 12, true));
    const int filled = in.ConsumeIntegralInRange(0, 59);
    for (int r = 1; r <= filled; ++r) {
        PipeRow& row = rows[r];
        row.setSize(safeText(in, 6, true));
        row.setUnit(safeText(in, 3, true));
        row.adoptedUnitPrice = anyAmount(in);
        row.submittedPrice = anyAmount(in);
        row.submittedUnitPrice = anyAmount(in);
        for (int e = 0; e < 7; ++e) {
            row.factors[std::size_t(e)] = anyAmount(in);
            row.submittedAmounts[std::size_t(e)] = anyAmount(in);
        }
    }
    const QDate date = QDate(1868, 10, 23).addDays(in.ConsumeIntegralInRange(0, 120000));
    const QString stylePath = u("/data/print/") + safeText(in, 20, true) + u(".qvk");
    const ExportSheet sheet = sheetOfRows(rows);

    PrintJob job;
    parsePrintConf(
        textLinesOfBytes(printConfText(stylePath, QStringLiteral("/x.ico"), refrigerant)), job);
    parsePrintHeader(textLinesOfBytes(printHeaderText(date, rows)), job);
    parsePrintData(
        textLinesOfBytes(exportRowsText(ExportPrint, rows, sheet, {}) + QByteArray("\r\n")), job);

    FUZZ_CHECK_EQ(job.styleFile, stylePath);
    FUZZ_CHECK_EQ(job.isRefrigerant(), refrigerant);
    FUZZ_CHECK_EQ(job.labourCost, currToStr(rows[OptionRow].factor(5)));
    FUZZ_CHECK_EQ(job.buildingPage, rows[4].goods() + rows[5].goods());
    // The date of the page has no leading zeros: "令和8年1月7日（水）".
    FUZZ_CHECK_EQ(job.dateText(),
                  eraYearText(date).replace(QRegularExpression(u("(\\D)0+(\\d)")), u("\\1\\2")) +
                      u("年%1月%2日（%3）")
                          .arg(date.month())
                          .arg(date.day())
                          .arg(japaneseShortWeekday(date)));
    auto written = [](QString text) { return text.replace(QLatin1Char(';'), u("；")); };
    for (int i = 0; i < 3; ++i)
        FUZZ_CHECK_EQ(job.names[std::size_t(i)], written(rows[i + 1].goods()));
    FUZZ_CHECK_EQ(job.blocks.size(), sheet.tabCaptions.size());
    for (int t = 0; t < int(job.blocks.size()); ++t) {
        const PrintBlock& b = job.blocks[t];
        FUZZ_CHECK_EQ(b.caption, written(sheet.tabCaptions[t]));
        int n = 0;
        for (int line = 1; line <= SheetLines; ++line) {
            const PipeRow& row = rows[t * TabRows + line];
            PrintFields want;
            want[0] = written(row.size()).trimmed();
            want[1] = written(row.unit()).trimmed();
            want[2] = formatAmount(row.adoptedUnitPrice);
            want[3] = formatAmount(row.submittedPrice);
            for (int e = 0; e < 7; ++e) {
                want[std::size_t(4 + e)] = currToStr(row.factors[std::size_t(e)]);
                want[std::size_t(11 + e)] =
                    e == 5 && refrigerant ? QString()
                                          : formatAmount(row.submittedAmounts[std::size_t(e)]);
            }
            want[18] = formatAmount(row.submittedUnitPrice);
            // A line is printed with a size, be it blanks, or a value.
            bool shown = !row.size().isEmpty();
            for (std::size_t k = 2; k < want.size(); ++k)
                shown = shown || want[k].contains(QRegularExpression(QStringLiteral("[1-9]")));
            if (!shown) continue;
            FUZZ_CHECK(n < int(b.lines.size()));
            const PrintFields& f = b.lines[n++];
            for (std::size_t k = 0; k < want.size(); ++k)
                FUZZ_CHECK_EQ(f[k], want[k]);
        }
        FUZZ_CHECK_EQ(n, int(b.lines.size()));
    }
}

// Style files: any bytes, and a style written then read.
void styles(FuzzedDataProvider& in) {
    const QString file = QStringLiteral("style.qvk");
    PrintStyle any;
    QString reason;
    if (parseStyleLines(
            textLinesOfBytes(QByteArray::fromStdString(in.ConsumeRandomLengthString(400))), file,
            any, reason)) {
        FUZZ_CHECK(!any.columns.isEmpty());
        for (const StyleColumn& c : any.columns)
            FUZZ_CHECK(styleFieldIndex(c.key) >= 0);
    } else {
        FUZZ_CHECK(reason.contains(file));
    }

    PrintStyle s;
    s.name = safeText(in, 8, true);
    s.title = safeText(in, 12, true);
    const int columns = in.ConsumeIntegralInRange(1, 20);
    for (int i = 0; i < columns; ++i) {
        const QStringList& keys = styleFieldKeys();
        s.columns.push_back({keys[in.ConsumeIntegralInRange<int>(0, int(keys.size()) - 1)],
                             safeText(in, 6, false), safeText(in, 6, false),
                             safeText(in, 6, false)});
    }
    PrintStyle back;
    FUZZ_CHECK(parseStyleLines(textLinesOfBytes(styleFileText(s)), file, back, reason));
    FUZZ_CHECK_EQ(back.name, s.name);
    FUZZ_CHECK_EQ(back.title, s.title);
    FUZZ_CHECK_EQ(back.columns.size(), s.columns.size());
    for (int i = 0; i < int(s.columns.size()); ++i) {
        FUZZ_CHECK_EQ(back.columns[i].key, s.columns[i].key);
        FUZZ_CHECK_EQ(back.columns[i].group, s.columns[i].group);
        FUZZ_CHECK_EQ(back.columns[i].label, s.columns[i].label);
        FUZZ_CHECK_EQ(back.columns[i].refrigerantLabel, s.columns[i].refrigerantLabel);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    switch (in.ConsumeIntegralInRange(0, 2)) {
    case 0:
        anyFiles(in);
        break;
    case 1:
        handOff(in);
        break;
    default:
        styles(in);
        break;
    }
    return 0;
}
