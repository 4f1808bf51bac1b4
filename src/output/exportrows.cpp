#include "output/exportrows.h"

#include "engine/currency.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"
#include "util/wholefile.h"

namespace {

const QByteArray LineEnd("\r\n");

// The labels of the heading line, blanks as they stand.
const std::array<const char*, 12> HeadingLabels = {"呼び径",   "単位",       "採用単価", "材料単価",
                                                   "所要材料", "継  手",     "接合材等", "支持金物",
                                                   "配管工",   "はつり補修", "その他",   "合   計"};

QByteArray Plain(Currency value) {
    return CurrToStr(value).toLatin1();
}

// A text of the print hand-off: the print program splits a line at ";"
// and reads it line by line, so a ";" inside a text becomes the full-width
// "；" and a line break a blank. The bytes are those of code page 932, where
// neither byte is ever the second byte of a character.
QByteArray PrintText(QByteArray text) {
    static const QByteArray fullWidthSemicolon = ToAnsi(QStringLiteral("；"));
    text.replace(';', fullWidthSemicolon);
    text.replace('\r', ' ');
    text.replace('\n', ' ');
    return text;
}

// Amounts: plain in modes 0 and 1, the sheet's amount text in mode 2.
QByteArray Amount(int mode, Currency value) {
    return mode == ExportPrint ? ToAnsi(FormatAmount(value)) : Plain(value);
}

} // namespace

QByteArray ExportDelimiter(int mode) {
    return mode == ExportPrint ? QByteArray(";") : QByteArray(",");
}

QByteArray ExportHeadingLine(int mode) {
    const QByteArray delimiter = ExportDelimiter(mode);
    QByteArray line;
    for (std::size_t i = 0; i < HeadingLabels.size(); ++i) {
        if (i > 0) line += delimiter;
        line += ToAnsi(QString::fromUtf8(HeadingLabels[i]));
    }
    return line + LineEnd;
}

QByteArray ExportRowLine(int mode, const PipeRow& row, int tab, const ExportSheet& sheet,
                         const ExportOptions& options) {
    const QByteArray d = ExportDelimiter(mode);
    QByteArray line;
    auto field = [&](const QByteArray& text) {
        line += text;
        line += d;
    };
    const bool print = mode == ExportPrint;
    if (print) {
        for (const QString& panel : sheet.statusPanels)
            field(PrintText(ToAnsi(panel)));
        field(PrintText(ToAnsi(sheet.tabCaptions.value(tab))));
    }
    field(print ? PrintText(row.sizeBytes) : row.sizeBytes);
    field(print ? PrintText(row.unitBytes) : row.unitBytes);
    field(Amount(mode, row.adoptedUnitPrice));
    field(Amount(mode, row.submittedPrice));
    if (print || !options.resultsOnly) {
        for (const Currency& factor : row.factors)
            field(Plain(factor));
    }
    const bool oneTab = sheet.tabCaptions.size() == 1;
    for (int e = 1; e <= 7; ++e) {
        if (e == 6 && oneTab)
            field(QByteArray());
        else
            field(Amount(mode, row.submittedAmounts[std::size_t(e - 1)]));
    }
    field(Amount(mode, row.submittedUnitPrice));
    return line;
}

QByteArray ExportRowsText(int mode, const RowTable& rows, const ExportSheet& sheet,
                          const ExportOptions& options) {
    const QByteArray heading = options.headings ? ExportHeadingLine(mode) : QByteArray();
    const int tabs = int(sheet.tabCaptions.size());
    QByteArray text;
    for (int t = 0; t < tabs; ++t) {
        if (mode != ExportPrint) text += ToAnsi(sheet.tabCaptions[t]) + LineEnd;
        text += heading;
        for (int line = 1; line <= SheetLines; ++line) {
            text += ExportRowLine(mode, rows[t * TabRows + line], t, sheet, options);
            if (!(t == tabs - 1 && line == SheetLines)) text += LineEnd;
        }
    }
    return text;
}

void WriteExportFile(const QString& path, const QByteArray& text) {
    ReplaceFileBytes(path, text + LineEnd);
}

void ReplaceFileBytes(const QString& path, const QByteArray& bytes) {
    QString reason;
    if (!ReplaceFileWhole(path, bytes, &reason))
        throw FileError(QStringLiteral("ファイルを書き込めませんでした: %1\n").arg(path) +
                        FileFailureReason(path, reason, true));
}

QString PrintDataPath(const QString& dataRoot) {
    return dataRoot + QStringLiteral("/printdata/print_Data.dat");
}
