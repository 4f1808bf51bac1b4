// The workbook writer's instruction stream: any bytes replay without harm and
// either give a sheet whose cells, borders and widths follow the lines, or
// the error that names the line; a stream made of known instructions gives
// exactly the sheet they describe; cell names read back; and a workbook file
// is either written whole or not at all, the old one kept.

#include "fuzzcheck.h"
#include "output/excelworkbook.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "util/textlines.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <map>
#include <set>

namespace {

constexpr int MaxRow = 1048576;
constexpr int MaxColumn = 16384;

// "A" .. "Z", "AA" .. : the column's letters, written here independently of
// the reader.
QString columnLetters(int column) {
    QString s;
    for (; column > 0; column = (column - 1) / 26)
        s.prepend(QChar(char16_t('A' + (column - 1) % 26)));
    return s;
}

// A cell text the stream can carry: no ";" and no line break, and only what
// code page 932 holds, so that it comes back as it went.
QString cellText(FuzzedDataProvider& in) {
    static const QString pieces =
        QString::fromUtf8("0123456789.-+ ABCxyz,_eE亜配管工継手ｱｶﾞ　（）－①");
    QString s;
    const int n = in.ConsumeIntegralInRange(0, 12);
    for (int i = 0; i < n; ++i)
        s += pieces[in.ConsumeIntegralInRange<int>(0, int(pieces.size()) - 1)];
    return s;
}

QString shown(const WorkbookCell& c) {
    return c.number ? QString::number(c.text.toDouble(), 'g', 11) : c.text;
}

void checkSheetShape(const WorkbookSheet& sheet) {
    for (const auto& [column, cells] : sheet.columns) {
        FUZZ_CHECK(column >= 1 && column <= MaxColumn);
        for (const auto& [row, cell] : cells) {
            FUZZ_CHECK(row >= 1 && row <= MaxRow);
            FUZZ_CHECK_EQ(cell.number, isPlainNumber(cell.text));
        }
    }
    for (const auto& [column, width] : sheet.widths) {
        FUZZ_CHECK(column >= 1 && column <= MaxColumn);
        FUZZ_CHECK(width >= fittedWidth(1));
        // Kept to two decimals.
        FUZZ_CHECK(std::fabs(width * 100 - std::round(width * 100)) < 1e-6);
    }
}

// Any bytes as the stream file.
void anyStream(const std::string& bytes) {
    const QStringList lines = splitTextLines(fromAnsi(QByteArray::fromStdString(bytes)));
    try {
        checkSheetShape(replayExcelStream(lines));
    } catch (const WorkbookError& e) {
        // "エクセル出力の指示 N 行目..." and the line itself at the end.
        const QString m = e.message();
        const QString head = QString::fromUtf8("エクセル出力の指示 ");
        FUZZ_CHECK(m.startsWith(head));
        const int n = m.mid(head.size()).section(QLatin1Char(' '), 0, 0).toInt();
        FUZZ_CHECK(n >= 1 && n <= int(lines.size()));
        // The message goes through a C string: a NUL in the line ends it.
        FUZZ_CHECK(m.endsWith(QLatin1Char('\n') + lines[n - 1].section(QChar(u'\0'), 0, 0)));
    }
}

// A stream of known instructions, against a model of the sheet.
void knownStream(FuzzedDataProvider& in) {
    struct ModelCell {
        QString text;
        bool bottom = false, top = false;
    };
    std::map<std::pair<int, int>, ModelCell> model; // (column, row)
    std::map<int, int> widest;                      // fitted column -> display cells
    model[{2, 2}].text = QStringLiteral("ABC");
    QStringList lines;
    const int steps = in.ConsumeIntegralInRange(0, 40);
    for (int s = 0; s < steps; ++s) {
        switch (in.ConsumeIntegralInRange(0, 4)) {
        case 0:
        case 1: {
            const int row = in.ConsumeIntegralInRange(1, 30);
            const int column = in.ConsumeIntegralInRange(1, 20);
            const QString text = cellText(in);
            lines << QStringLiteral("DATA;%1;%2;%3;").arg(row).arg(column).arg(text);
            model[{column, row}].text = text;
            break;
        }
        case 2:
        case 3: {
            const bool bottom = in.ConsumeBool();
            const int c1 = in.ConsumeIntegralInRange(1, 20), c2 = in.ConsumeIntegralInRange(1, 20);
            const int r1 = in.ConsumeIntegralInRange(1, 30), r2 = in.ConsumeIntegralInRange(1, 30);
            auto name = [&](int c, int r) {
                const QString n = columnLetters(c) + QString::number(r);
                return in.ConsumeBool() ? n.toLower() : n;
            };
            lines << QStringLiteral("%1;%2;%3;;")
                         .arg(bottom ? QStringLiteral("xlEdgeBottom") : QStringLiteral("xlEdgeTop"),
                              name(c1, r1), name(c2, r2));
            const int row = bottom ? std::max(r1, r2) : std::min(r1, r2);
            for (int c = std::min(c1, c2); c <= std::max(c1, c2); ++c)
                (bottom ? model[{c, row}].bottom : model[{c, row}].top) = true;
            break;
        }
        default: {
            const int column = in.ConsumeIntegralInRange(1, 20);
            lines << QStringLiteral("AutoFit;%1;%2;;").arg(column).arg(s);
            int w = -1;
            for (const auto& [at, cell] : model)
                if (at.first == column && !cell.text.isEmpty()) {
                    WorkbookCell c;
                    c.text = cell.text;
                    c.number = isPlainNumber(cell.text);
                    w = std::max(w, displayCells(shown(c)));
                }
            if (w < 0)
                widest.erase(column);
            else
                widest[column] = w;
            break;
        }
        }
    }
    // Through the file's code page and line ends, as the program writes it.
    const QStringList read = splitTextLines(fromAnsi(toAnsi(joinTextLines(lines))));
    FUZZ_CHECK_EQ(read.size(), lines.size());
    const WorkbookSheet sheet = replayExcelStream(read);
    checkSheetShape(sheet);
    std::size_t cells = 0;
    for (const auto& [column, rows] : sheet.columns)
        for (const auto& [row, cell] : rows) {
            ++cells;
            const auto it = model.find({column, row});
            FUZZ_CHECK(it != model.end());
            FUZZ_CHECK_EQ(cell.text, it->second.text);
            FUZZ_CHECK_EQ(cell.bottom, it->second.bottom);
            FUZZ_CHECK_EQ(cell.top, it->second.top);
        }
    FUZZ_CHECK_EQ(cells, model.size());
    FUZZ_CHECK_EQ(sheet.widths.size(), widest.size());
    for (const auto& [column, w] : widest) {
        const auto it = sheet.widths.find(column);
        FUZZ_CHECK(it != sheet.widths.end());
        FUZZ_CHECK_EQ(it->second, fittedWidth(w));
    }
}

// Cell names: every cell of the sheet reads back, in either case; a name
// outside the sheet or with anything behind its digits does not.
void cellNames(FuzzedDataProvider& in) {
    const int column = in.ConsumeIntegralInRange(1, MaxColumn + 2);
    const int row = in.ConsumeIntegralInRange(0, MaxRow + 2);
    QString name = columnLetters(column) + QString::number(row);
    if (in.ConsumeBool()) name = name.toLower();
    const bool inSheet = column <= MaxColumn && row >= 1 && row <= MaxRow;
    int c = -1, r = -1;
    FUZZ_CHECK_EQ(parseCellName(name, c, r), inSheet);
    if (inSheet) {
        FUZZ_CHECK_EQ(c, column);
        FUZZ_CHECK_EQ(r, row);
    }
    const QString tail = fuzzText(in, 4);
    if (!tail.isEmpty()) {
        bool digits = true;
        for (QChar ch : tail)
            digits = digits && ch >= QLatin1Char('0') && ch <= QLatin1Char('9');
        if (!digits) FUZZ_CHECK(!parseCellName(name + tail, c, r));
    }
    // Display cells: one or two a character.
    const QString text = fuzzText(in, 40);
    const int n = int(text.toUcs4().size());
    const int cells = displayCells(text);
    FUZZ_CHECK(cells >= n && cells <= 2 * n);
}

QString folder() {
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/qorvale-fuzz-XXXXXX"));
    return dir.path();
}

// The stream file to a workbook file that already exists: whole or kept.
void workbookFile(const std::string& bytes) {
    const QString stream = folder() + QStringLiteral("/excelout.txt");
    const QString book = folder() + QStringLiteral("/book.xlsx");
    const QByteArray old("old workbook");
    for (const auto& [path, content] :
         {std::pair{stream, QByteArray::fromStdString(bytes)}, std::pair{book, old}}) {
        QFile f(path);
        FUZZ_CHECK(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        FUZZ_CHECK_EQ(f.write(content), content.size());
    }
    bool written = true;
    try {
        writeExcelWorkbook(stream, book);
    } catch (const WorkbookError&) {
        written = false;
    }
    QFile f(book);
    FUZZ_CHECK(f.open(QIODevice::ReadOnly));
    const QByteArray now = f.readAll();
    if (written)
        FUZZ_CHECK(now.startsWith(QByteArray("PK\x03\x04", 4)));
    else
        FUZZ_CHECK_EQ(now, old);
    // Nothing left beside the two files.
    FUZZ_CHECK_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    switch (in.ConsumeIntegralInRange(0, 63)) {
    case 0: // a real file now and then: a workbook costs a thousand replays
        workbookFile(in.ConsumeRemainingBytesAsString());
        break;
    case 1:
    case 2:
    case 3:
        cellNames(in);
        break;
    default:
        if (in.ConsumeBool())
            knownStream(in);
        else
            anyStream(in.ConsumeRemainingBytesAsString());
        break;
    }
    return 0;
}
