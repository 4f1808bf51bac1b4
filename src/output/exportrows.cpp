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

QByteArray plain(Currency value) {
    return currToStr(value).toLatin1();
}

// A text of the print hand-off: the print program splits a line at ";"
// and reads it line by line, so a ";" inside a text becomes the full-width
// "；" and a line break a blank. The bytes are those of code page 932, where
// neither byte is ever the second byte of a character.
QByteArray printText(QByteArray text) {
    static const QByteArray fullWidthSemicolon = toAnsi(QStringLiteral("；"));
    text.replace(';', fullWidthSemicolon);
    text.replace('\r', ' ');
    text.replace('\n', ' ');
    return text;
}

// Amounts: plain in modes 0 and 1, the sheet's amount text in mode 2.
QByteArray amount(int mode, Currency value) {
    return mode == ExportPrint ? toAnsi(formatAmount(value)) : plain(value);
}

} // namespace

QByteArray exportDelimiter(int mode) {
    return mode == ExportPrint ? QByteArray(";") : QByteArray(",");
}

QByteArray exportHeadingLine(int mode) {
    const QByteArray delimiter = exportDelimiter(mode);
    QByteArray line;
    for (std::size_t i = 0; i < HeadingLabels.size(); ++i) {
        if (i > 0) line += delimiter;
        line += toAnsi(QString::fromUtf8(HeadingLabels[i]));
    }
    return line + LineEnd;
}

QByteArray exportRowLine(int mode, const PipeRow& row, int tab, const ExportSheet& sheet,
                         const ExportOptions& options) {
    const QByteArray d = exportDelimiter(mode);
    QByteArray line;
    auto field = [&](const QByteArray& text) {
        line += text;
        line += d;
    };
    const bool print = mode == ExportPrint;
    if (print) {
        for (const QString& panel : sheet.statusPanels)
            field(printText(toAnsi(panel)));
        field(printText(toAnsi(sheet.tabCaptions.value(tab))));
    }
    field(print ? printText(row.sizeBytes) : row.sizeBytes);
    field(print ? printText(row.unitBytes) : row.unitBytes);
    field(amount(mode, row.adoptedUnitPrice));
    field(amount(mode, row.submittedPrice));
    if (print || !options.resultsOnly) {
        for (const Currency& factor : row.factors)
            field(plain(factor));
    }
    const bool oneTab = sheet.tabCaptions.size() == 1;
    for (int e = 1; e <= 7; ++e) {
        if (e == 6 && oneTab)
            field(QByteArray());
        else
            field(amount(mode, row.submittedAmounts[std::size_t(e - 1)]));
    }
    field(amount(mode, row.submittedUnitPrice));
    return line;
}

QByteArray exportRowsText(int mode, const RowTable& rows, const ExportSheet& sheet,
                          const ExportOptions& options) {
    const QByteArray heading = options.headings ? exportHeadingLine(mode) : QByteArray();
    const int tabs = int(sheet.tabCaptions.size());
    QByteArray text;
    for (int t = 0; t < tabs; ++t) {
        if (mode != ExportPrint) text += toAnsi(sheet.tabCaptions[t]) + LineEnd;
        text += heading;
        for (int line = 1; line <= SheetLines; ++line) {
            text += exportRowLine(mode, rows[t * TabRows + line], t, sheet, options);
            if (!(t == tabs - 1 && line == SheetLines)) text += LineEnd;
        }
    }
    return text;
}

void writeExportFile(const QString& path, const QByteArray& text) {
    replaceFileBytes(path, text + LineEnd);
}

void replaceFileBytes(const QString& path, const QByteArray& bytes) {
    QString reason;
    if (!replaceFileWhole(path, bytes, &reason))
        throw FileError(QStringLiteral("ファイルを書き込めませんでした: %1\n").arg(path) +
                        fileFailureReason(path, reason, true));
}

QString printDataPath(const QString& dataRoot) {
    return dataRoot + QStringLiteral("/printdata/print_Data.dat");
}
