#include "output/excelstream.h"

#include "engine/currency.h"
#include "output/exportrows.h"
#include "sheet/sheettexts.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"
#include "store/piperow.h"
#include "store/pipetypestore.h"
#include "util/textlines.h"

#include <QDateTime>

const QString ExcelOutCaption =
    QStringLiteral("エクセルファイル出力中・・・しばらくお待ちください");

namespace {

constexpr int PipeTypesInGroup = 20;
constexpr int Details = 4;
constexpr int BlockColumns = 17;

// Headings of columns A to Q.
const std::array<const char*, BlockColumns> HeadingTexts = {
    "材 料 名", "摘　　要", "区　分",   "単位",     "材料価格", "補給率",
    "継手",     "接合材等", "支持金物", "材料費計", "歩掛り",   "はつり補修",
    "その他",   "労務費計", "合　計",   "複合単価", "資料名"};

QString dataLine(int row, int column, const QString& text) {
    return QStringLiteral("DATA;%1;%2;").arg(row).arg(column) + text + QLatin1Char(';');
}

// The sum of columns of one line; a text that is no number counts 0.
QString sumOf(const QStringList& names, const QString& line,
              std::initializer_list<const char*> columns) {
    std::int64_t raw = 0;
    for (const char* c : columns)
        raw += strToCurrDef(fieldOfLine(names, line, QString::fromLatin1(c)), Currency{}).raw;
    return currToStr(Currency::fromRaw(raw));
}

QString field(const QStringList& names, const QString& line, const char* column) {
    return fieldOfLine(names, line, QString::fromLatin1(column));
}

// The caption of detail t for column C.
QString detailCaption(const QueryResult& result, const QStringList& tabCaptions, int t) {
    if (t < int(tabCaptions.size())) return tabCaptions[t];
    const QString kind = field(result.columns, result.lines.value(t * TabRows), "KIND");
    return kind.isEmpty() ? DefaultDetailCaptions[std::size_t(t)] : kind;
}

} // namespace

QStringList excelStream(const QString& databasePath, int grp, const QStringList& tabCaptions) {
    QStringList out;
    int R = 1;
    for (int k = 1; k <= PipeTypesInGroup; ++k) {
        const QueryResult query = queryToLines(databasePath, loadStatement(grp, k));
        const QStringList& result = query.lines;
        const QStringList& names = query.columns;
        // line n of the pipe type; empty text for a line the store lacks.
        auto line = [&](int n) { return result.value(n - 1); };
        const QString material = field(names, line(1), "GOODS");
        if (material.isEmpty()) continue;

        out << dataLine(R, 5, QStringLiteral("複 合 単 価 計 算 書"));
        ++R;
        out << dataLine(R, 1, material) << dataLine(R, 2, field(names, line(2), "GOODS"))
            << dataLine(R, 3, field(names, line(3), "GOODS"))
            << dataLine(R, 10, QStringLiteral("配管工費"))
            << dataLine(R, 11, field(names, line(OptionRow), "DATA5"));
        ++R;
        const QString source = field(names, line(4), "GOODS") + field(names, line(5), "GOODS");
        for (int t = 0; t < Details; ++t) {
            for (int c = 0; c < BlockColumns; ++c)
                out << dataLine(R, c + 1, QString::fromUtf8(HeadingTexts[std::size_t(c)]));
            out << QStringLiteral("xlEdgeBottom;A%1;Q%1;;").arg(R);
            ++R;
            const QString caption = detailCaption(query, tabCaptions, t);
            for (int g = 1; g <= SheetLines; ++g) {
                const QString l = line(t * TabRows + g);
                const QString size = field(names, l, "SIZE");
                if (size.isEmpty()) continue;
                const QString cells[BlockColumns] = {
                    material,
                    size,
                    caption,
                    field(names, l, "CI"),
                    field(names, l, "GROSS"),
                    field(names, l, "DATA1"),
                    field(names, l, "DATA2"),
                    field(names, l, "DATA3"),
                    field(names, l, "DATA4"),
                    sumOf(names, l, {"CALC1_G", "CALC2_G", "CALC3_G", "CALC4_G"}),
                    field(names, l, "DATA5"),
                    field(names, l, "DATA6"),
                    field(names, l, "DATA7"),
                    sumOf(names, l, {"CALC5_G", "CALC6_G", "CALC7_G"}),
                    field(names, l, "GTANKA"),
                    field(names, l, "FTANKA"),
                    source};
                for (int c = 0; c < BlockColumns; ++c)
                    out << dataLine(R, c + 1, cells[c]);
                ++R;
            }
            ++R; // the empty row under the detail
        }
        out << QStringLiteral("AutoFit;1;1;;");
    }
    return out;
}

void writeExcelStream(const QString& path, const QStringList& lines) {
    replaceFileBytes(path, toAnsi(joinTextLines(lines)));
}

QString excelStreamPath(const QString& dataRoot) {
    return dataRoot + QStringLiteral("/temp/excelout.txt");
}

QString excelWorkbookPath(const QString& dataRoot, const QDateTime& now) {
    return dataRoot + QLatin1Char('/') + now.toString(QStringLiteral("yyyyMMdd HHmmss")) +
           QStringLiteral(".xlsx");
}
