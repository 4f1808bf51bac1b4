#include "output/excelworkbook.h"

#include "engine/currency.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "util/textlines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <xlsxwriter.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>

WorkbookError::WorkbookError(const QString& message)
    : std::runtime_error(message.toUtf8().toStdString()) {}

namespace {

// The sheet's bounds.
constexpr int MaxRow = 1048576;
constexpr int MaxColumn = 16384;

// The field n (from 1) of a stream line: the text between the (n-1)-th and
// the n-th ";"; empty when the line has fewer fields. No escapes.
QString streamField(const QString& line, int n) {
    int start = 0;
    for (int i = 1; i < n; ++i) {
        const int next = int(line.indexOf(QLatin1Char(';'), start));
        if (next < 0) return QString();
        start = next + 1;
    }
    const int end = int(line.indexOf(QLatin1Char(';'), start));
    return end < 0 ? line.mid(start) : line.mid(start, end - start);
}

bool isWide(char32_t c) {
    if (c < 0x80) return false;
    if (c >= 0xFF61 && c <= 0xFF9F) return false; // half-width katakana
    if (c <= 0xFFFF) {
        const QByteArray b = toAnsi(QString(QChar(char16_t(c))));
        if (b.size() == 2) return true;
        if (b != "?") return false;
    }
    // Not in the code page: the wide ranges of East Asian text.
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1F64F) ||
           (c >= 0x1F900 && c <= 0x1F9FF) || (c >= 0x20000 && c <= 0x3FFFD);
}

void setCell(WorkbookSheet& sheet, int row, int column, const QString& text) {
    WorkbookCell& c = sheet.columns[column][row];
    c.text = text;
    c.number = isPlainNumber(text);
}

void setEdge(WorkbookSheet& sheet, int row, int column, bool bottom) {
    WorkbookCell& c = sheet.columns[column][row];
    (bottom ? c.bottom : c.top) = true;
}

// What the cell shows: a number in the general form.
QString shownText(const WorkbookCell& c) {
    if (!c.number) return c.text;
    return QString::number(c.text.toDouble(), 'g', 11);
}

void fitColumn(WorkbookSheet& sheet, int column) {
    int widest = -1;
    const auto it = sheet.columns.find(column);
    if (it != sheet.columns.end())
        for (const auto& [row, cell] : it->second)
            if (!cell.text.isEmpty()) widest = std::max(widest, displayCells(shownText(cell)));
    if (widest < 0)
        sheet.widths.erase(column);
    else
        sheet.widths[column] = fittedWidth(widest);
}

// Row and column of a DATA line, both within the sheet.
void checkCell(int row, int column, int lineNo, const QString& line) {
    if (row < 1 || row > MaxRow || column < 1 || column > MaxColumn)
        throw WorkbookError(
            QStringLiteral(
                "エクセル出力の指示 %1 行目のセル（行 %2、列 %3）はシートにありません。\n%4")
                .arg(lineNo)
                .arg(row)
                .arg(column)
                .arg(line));
}

void checkRange(bool ok, int lineNo, const QString& line) {
    if (!ok)
        throw WorkbookError(
            QStringLiteral("エクセル出力の指示 %1 行目の範囲はセルの名前ではありません。\n%2")
                .arg(lineNo)
                .arg(line));
}

struct WorkbookCloser {
    void operator()(lxw_workbook* wb) const {
        // Only reached on a failure before the close: the file is dropped.
        if (wb) lxw_workbook_free(wb);
    }
};

void check(lxw_error error, const QString& what) {
    if (error != LXW_NO_ERROR)
        throw WorkbookError(QStringLiteral("エクセルファイルを作成できませんでした（%1）: %2")
                                .arg(what, QString::fromUtf8(lxw_strerror(error))));
}

void writeSheet(const WorkbookSheet& sheet, const QString& path) {
    const QByteArray file = QFile::encodeName(path);
    std::unique_ptr<lxw_workbook, WorkbookCloser> wb(workbook_new(file.constData()));
    if (!wb)
        throw WorkbookError(QStringLiteral("エクセルファイルを作成できませんでした: %1").arg(path));
    lxw_worksheet* ws = workbook_add_worksheet(wb.get(), nullptr);
    if (!ws)
        throw WorkbookError(QStringLiteral("エクセルファイルを作成できませんでした: %1").arg(path));

    // One format for each mix of the two edges.
    lxw_format* formats[4] = {nullptr, nullptr, nullptr, nullptr};
    for (int i = 1; i < 4; ++i) {
        formats[i] = workbook_add_format(wb.get());
        if (i & 1) {
            format_set_bottom(formats[i], LXW_BORDER_THIN);
            format_set_bottom_color(formats[i], LXW_COLOR_BLACK);
        }
        if (i & 2) {
            format_set_top(formats[i], LXW_BORDER_THIN);
            format_set_top_color(formats[i], LXW_COLOR_BLACK);
        }
    }
    for (const auto& [column, cells] : sheet.columns) {
        for (const auto& [row, cell] : cells) {
            lxw_format* f = formats[(cell.bottom ? 1 : 0) | (cell.top ? 2 : 0)];
            const lxw_row_t r = lxw_row_t(row - 1);
            const lxw_col_t c = lxw_col_t(column - 1);
            if (cell.text.isEmpty()) {
                if (f) check(worksheet_write_blank(ws, r, c, f), QStringLiteral("blank"));
            } else if (cell.number) {
                check(worksheet_write_number(ws, r, c, cell.text.toDouble(), f),
                      QStringLiteral("number"));
            } else {
                check(worksheet_write_string(ws, r, c, cell.text.toUtf8().constData(), f),
                      QStringLiteral("text"));
            }
        }
    }
    for (const auto& [column, width] : sheet.widths)
        check(
            worksheet_set_column(ws, lxw_col_t(column - 1), lxw_col_t(column - 1), width, nullptr),
            QStringLiteral("column"));
    const lxw_error closed = workbook_close(wb.release());
    check(closed, QStringLiteral("save"));
}

} // namespace

WorkbookSheet replayExcelStream(const QStringList& lines) {
    WorkbookSheet sheet;
    setCell(sheet, 2, 2, QStringLiteral("ABC"));
    int lineNo = 0;
    for (const QString& line : lines) {
        ++lineNo;
        const QString keyword = streamField(line, 1);
        if (keyword == QLatin1String("DATA")) {
            const int row = strToIntDef(streamField(line, 2), 0);
            const int column = strToIntDef(streamField(line, 3), 0);
            checkCell(row, column, lineNo, line);
            setCell(sheet, row, column, streamField(line, 4));
        } else if (keyword == QLatin1String("xlEdgeBottom") ||
                   keyword == QLatin1String("xlEdgeTop")) {
            int c1 = 0, r1 = 0, c2 = 0, r2 = 0;
            checkRange(parseCellName(streamField(line, 2), c1, r1), lineNo, line);
            checkRange(parseCellName(streamField(line, 3), c2, r2), lineNo, line);
            const bool bottom = keyword == QLatin1String("xlEdgeBottom");
            const int edgeRow = bottom ? std::max(r1, r2) : std::min(r1, r2);
            for (int c = std::min(c1, c2); c <= std::max(c1, c2); ++c)
                setEdge(sheet, edgeRow, c, bottom);
        } else if (keyword == QLatin1String("AutoFit")) {
            const int column = strToIntDef(streamField(line, 2), 0);
            checkCell(1, column, lineNo, line);
            fitColumn(sheet, column);
        }
    }
    return sheet;
}

bool isPlainNumber(const QString& text) {
    int i = 0;
    const int n = int(text.size());
    if (i < n && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) ++i;
    bool digit = false, point = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digit = true;
        else if (c == QLatin1Char('.') && !point)
            point = true;
        else
            return false;
    }
    return digit;
}

int displayCells(const QString& text) {
    int cells = 0;
    for (const char32_t c : text.toUcs4())
        cells += isWide(c) ? 2 : 1;
    return cells;
}

double fittedWidth(int displayCells) {
    // A cell of the default font's digit is 7 pixels; the column adds 5
    // pixels of padding and the fit 5 more of margin. Widths are kept to two
    // decimals as the sheet keeps them.
    const double pixels = displayCells * 7.0 + 10.0;
    return std::trunc((pixels - 5.0) / 7.0 * 100.0 + 0.5) / 100.0;
}

bool parseCellName(const QString& text, int& column, int& row) {
    int i = 0;
    const int n = int(text.size());
    long long c = 0, r = 0;
    while (i < n && text[i].toUpper() >= QLatin1Char('A') &&
           text[i].toUpper() <= QLatin1Char('Z')) {
        c = c * 26 + (text[i].toUpper().unicode() - 'A' + 1);
        if (c > MaxColumn) return false;
        ++i;
    }
    if (i == 0 || i == n) return false;
    for (; i < n; ++i) {
        if (!text[i].isDigit() || text[i].unicode() > '9') return false;
        r = r * 10 + (text[i].unicode() - '0');
        if (r > MaxRow) return false;
    }
    if (r < 1) return false;
    column = int(c);
    row = int(r);
    return true;
}

void writeExcelWorkbook(const QString& streamPath, const QString& workbookPath) {
    QFile in(streamPath);
    if (!in.open(QIODevice::ReadOnly))
        throw FileError(QStringLiteral("ファイルを読み込めませんでした: %1").arg(streamPath));
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError)
        throw FileError(QStringLiteral("ファイルを読み込めませんでした: %1").arg(streamPath));
    in.close();

    const WorkbookSheet sheet = replayExcelStream(splitTextLines(fromAnsi(bytes)));

    // Written aside and put in place only when complete.
    const QFileInfo target(workbookPath);
    const QString part = target.absolutePath() + QStringLiteral("/.") + target.fileName() +
                         QStringLiteral(".part.xlsx");
    QFile::remove(part);
    try {
        writeSheet(sheet, part);
    } catch (...) {
        QFile::remove(part);
        throw;
    }
    // rename replaces an existing file in one step.
    if (std::rename(QFile::encodeName(part).constData(),
                    QFile::encodeName(workbookPath).constData()) != 0) {
        QFile::remove(part);
        throw WorkbookError(
            QStringLiteral("エクセルファイルを保存できませんでした: %1").arg(workbookPath));
    }
}
