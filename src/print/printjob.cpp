#include "print/printjob.h"

#include "output/excelworkbook.h" // isPlainNumber
#include "output/printhandoff.h"
#include "shell/settingsfiles.h"

#include <QFileInfo>

PrintInput::PrintInput(const QString& message) : std::runtime_error(message.toStdString()) {}

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

QStringList readLines(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    if (!QFileInfo(path).isFile())
        throw PrintInput(u("%1 が見つかりません（%2）。").arg(name, path));
    QStringList lines;
    if (!readTextFile(path, lines)) throw PrintInput(u("%1 を読めません（%2）。").arg(name, path));
    return lines;
}

// The keys of a file, each with the number of its line.
struct KeyFile {
    QString name;
    QMap<QString, QString> values;
    QMap<QString, int> lineOf;
    QString get(const char* key, bool required) const {
        const QString k = QString::fromLatin1(key);
        if (required && !values.contains(k))
            throw PrintInput(u("%1 に %2 の行がありません。").arg(name, k));
        return values.value(k);
    }
};

KeyFile readKeys(const QString& name, const QStringList& lines) {
    KeyFile f;
    f.name = name;
    for (int i = 0; i < int(lines.size()); ++i) {
        QString key, value;
        splitKeyLine(lines[i], key, value);
        if (key.isEmpty()) continue;
        f.values[key] = value;
        f.lineOf[key] = i + 1;
    }
    return f;
}

QString printConfName() {
    return QFileInfo(printConfPath(QString())).fileName();
}
QString printHeaderName() {
    return QFileInfo(printHeaderPath(QString())).fileName();
}
QString printDataName() {
    return QFileInfo(printDataPath(QString())).fileName();
}

// The texts the hand-off writes for numbers: a plain decimal, or an amount
// with thousands separators. Only the form is checked: the sheet prints the
// text as it stands, so an amount beyond what a price can hold still prints.
bool isNumberText(const QString& text) {
    return isPlainNumber(QString(text).remove(QLatin1Char(',')).trimmed());
}

// A number text that is not zero: any digit but 0 in it.
bool isNonZero(const QString& text) {
    for (const QChar c : text)
        if (c >= QLatin1Char('1') && c <= QLatin1Char('9')) return true;
    return false;
}

// "08" -> "8": a date written in Japanese has no leading zeros.
QString withoutLeadingZeros(const QString& digits) {
    int i = 0;
    while (i + 1 < int(digits.size()) && digits[i] == QLatin1Char('0'))
        ++i;
    return digits.mid(i);
}

// A number text with "," every three digits of its whole part, the sign
// and the decimals as they stand: "-1234567.5" -> "-1,234,567.5".
QString groupedNumber(const QString& number) {
    QString t = number.trimmed().remove(QLatin1Char(','));
    QString sign;
    if (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+'))) {
        if (t[0] == QLatin1Char('-')) sign = t.left(1);
        t.remove(0, 1);
    }
    const int point = int(t.indexOf(QLatin1Char('.')));
    QString whole = point < 0 ? t : t.left(point);
    const QString rest = point < 0 ? QString() : t.mid(point);
    for (int i = int(whole.size()) - 3; i > 0; i -= 3)
        whole.insert(i, QLatin1Char(','));
    return sign + whole + rest;
}

} // namespace

QString PrintJob::dateText() const {
    // The hand-off writes the year of the era with two digits ("令和08").
    int digits = int(era.size());
    while (digits > 0 && era[digits - 1].isDigit())
        --digits;
    const QString eraYear = era.left(digits) + withoutLeadingZeros(era.mid(digits));
    return u("%1年%2月%3日（%4）")
        .arg(eraYear, withoutLeadingZeros(month), withoutLeadingZeros(day), weekday);
}

QString PrintJob::labourCostText() const {
    return groupedNumber(labourCost);
}

QString dataRootOfArgument(const QString& argument) {
    QString root = argument;
    while (root.endsWith(QLatin1Char(';')))
        root.chop(1);
    while (root.size() > 1 && root.endsWith(QLatin1Char('/')))
        root.chop(1);
    return root;
}

void parsePrintConf(const QStringList& lines, PrintJob& job) {
    const KeyFile conf = readKeys(printConfName(), lines);
    job.appTitle = conf.get("[Application_Title]", false);
    job.dataTitle = conf.get("[Data_TITLE]", false);
    job.styleFile = conf.get("[STYLE_FILE]", true);
    job.fileMask = conf.get("[File_Mask]", false);
}

void parsePrintHeader(const QStringList& lines, PrintJob& job) {
    const KeyFile header = readKeys(printHeaderName(), lines);
    job.year = header.get("[ta]", true);
    job.era = header.get("[tb]", true);
    job.month = header.get("[tc]", true);
    job.day = header.get("[td]", true);
    job.weekday = header.get("[te]", true);
    job.buildingPage = header.get("[th]", true);
    job.labourCost = header.get("[ti]", true);
    if (!isNumberText(job.labourCost))
        throw PrintInput(u("%1 の %2 行目: 基礎工費「%3」が数値ではありません。")
                             .arg(header.name)
                             .arg(header.lineOf.value(QStringLiteral("[ti]")))
                             .arg(job.labourCost));
}

void parsePrintData(const QStringList& lines, PrintJob& job) {
    // Data lines: panel texts, the tab caption and 19 fields, each ended by
    // ";". A line of any other count is refused: a ";" inside a text would
    // move every field behind it, and a number would print in the column
    // of another.
    const QString dataName = printDataName();
    job.blocks.clear();
    int dataLines = 0;
    for (int i = 0; i < int(lines.size()); ++i) {
        const QString& line = lines[i];
        if (line.isEmpty()) continue;
        QStringList f = line.split(QLatin1Char(';'));
        if (f.last().isEmpty()) f.removeLast();
        if (f.size() < 23)
            throw PrintInput(u("%1 の %2 行目: 項目が足りません（23 項目のところ %3 項目）。")
                                 .arg(dataName)
                                 .arg(i + 1)
                                 .arg(f.size()));
        if (f.size() > 23)
            throw PrintInput(u("%1 の %2 行目: 項目が多すぎます（23 項目のところ %3 "
                               "項目）。名前や見出しの中の「;」で項目がずれています。")
                                 .arg(dataName)
                                 .arg(i + 1)
                                 .arg(f.size()));
        const int first = 4;
        PrintFields fields;
        for (int k = 0; k < 19; ++k)
            fields[std::size_t(k)] = f[first + k].trimmed();
        for (int k = 2; k < 19; ++k) {
            const QString& v = fields[std::size_t(k)];
            if (!v.isEmpty() && !isNumberText(v))
                throw PrintInput(u("%1 の %2 行目 %3 項目目: 「%4」は数値ではありません。")
                                     .arg(dataName)
                                     .arg(i + 1)
                                     .arg(first + k + 1)
                                     .arg(v));
        }
        // Every 14 lines are one detail, named by its caption.
        if (dataLines % 14 == 0) {
            job.blocks.push_back({f[3], {}});
            if (dataLines == 0) job.names = {f[0], f[1], f[2]};
        }
        ++dataLines;
        // The sheet shows a line with a size, be it only a blank, or with
        // a value; only the lines left empty stay off the paper.
        bool shown = !f[first].isEmpty();
        for (int k = 2; k < 19 && !shown; ++k)
            shown = isNonZero(fields[std::size_t(k)]);
        if (shown) job.blocks.last().lines.push_back(fields);
    }
    if (job.blocks.isEmpty()) throw PrintInput(u("%1 にデータがありません。").arg(dataName));
}

void readJobStyle(PrintJob& job) {
    const int builtIn = builtInStyleIndexOfFile(job.styleFile);
    QString reason;
    if (!readStyleFile(job.styleFile, job.style, reason)) {
        job.style = builtInStyle(builtIn < 0 ? 2 : builtIn);
        job.styleNote = reason + u(" 標準の書式「%1」で印刷しています。").arg(job.style.name);
    }
}

PrintJob readPrintJob(const QString& dataRoot) {
    if (dataRoot.isEmpty() || !QFileInfo(dataRoot).isDir())
        throw PrintInput(u("データフォルダー %1 が見つかりません。").arg(dataRoot));
    if (!QFileInfo(printFolderPath(dataRoot)).isDir())
        throw PrintInput(
            u("印刷データのフォルダー %1 が見つかりません。").arg(printFolderPath(dataRoot)));
    // Each file is read when the one before it was good.
    PrintJob job;
    parsePrintConf(readLines(printConfPath(dataRoot)), job);
    parsePrintHeader(readLines(printHeaderPath(dataRoot)), job);
    parsePrintData(readLines(printDataPath(dataRoot)), job);
    readJobStyle(job);
    return job;
}
