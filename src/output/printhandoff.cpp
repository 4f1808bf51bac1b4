#include "output/printhandoff.h"

#include "engine/currency.h"
#include "sheet/sheettexts.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QCoreApplication>

const std::array<JapaneseEra, 5> JapaneseEras = {{{"明治", 1868, 1, 1},
                                                  {"大正", 1912, 7, 30},
                                                  {"昭和", 1926, 12, 25},
                                                  {"平成", 1989, 1, 8},
                                                  {"令和", 2019, 5, 1}}};

bool eraOfDate(const QDate& date, QString& era, int& year) {
    for (auto it = JapaneseEras.rbegin(); it != JapaneseEras.rend(); ++it) {
        if (date >= QDate(it->year, it->month, it->day)) {
            era = QString::fromUtf8(it->name);
            year = date.year() - it->year + 1;
            return true;
        }
    }
    return false;
}

QString eraYearText(const QDate& date) {
    QString era;
    int year = 0;
    if (!eraOfDate(date, era, year))
        return QStringLiteral("%1").arg(date.year(), 4, 10, QChar('0'));
    return era + QStringLiteral("%1").arg(year, 2, 10, QChar('0'));
}

QString japaneseShortWeekday(const QDate& date) {
    // dayOfWeek: 1 Monday .. 7 Sunday.
    static const QString names = QStringLiteral("月火水木金土日");
    const int d = date.dayOfWeek();
    return d >= 1 && d <= 7 ? names.mid(d - 1, 1) : QString();
}

const std::array<const char*, 3> StyleFileNames = {"ex_style/A4横_複合単価_管材歩掛.qvk",
                                                   "ex_style/A4横_複合単価_管材計算.qvk",
                                                   "ex_style/A4横_複合単価_管材_歩掛+計算.qvk"};

QString styleFilePath(const QString& dataRoot, int styleIndex) {
    if (styleIndex < 0 || styleIndex >= int(StyleFileNames.size())) styleIndex = 0;
    return dataRoot + QLatin1Char('/') + QString::fromUtf8(StyleFileNames[std::size_t(styleIndex)]);
}

QString printFolderPath(const QString& dataRoot) {
    return dataRoot + QStringLiteral("/printdata");
}
QString printConfPath(const QString& dataRoot) {
    return printFolderPath(dataRoot) + QStringLiteral("/Print.conf");
}
QString printHeaderPath(const QString& dataRoot) {
    return printFolderPath(dataRoot) + QStringLiteral("/print_header.dat");
}

namespace {

const QByteArray LineEnd("\r\n");

QByteArray line(const char* key, const QByteArray& value) {
    return QByteArray(key) + value + LineEnd;
}

} // namespace

QByteArray printConfText(const QString& stylePath, const QString& iconPath, bool refrigerant) {
    QByteArray t;
    t += line("[Version]=2.00", {});
    t += line("[Application_Title]=Qorvale", {});
    t += toAnsi(QStringLiteral("[Data_TITLE]=複合単価印刷")) + LineEnd;
    t += line("[STYLE_FILE]=", toAnsi(stylePath));
    t += line("[Icon_File]=", toAnsi(iconPath));
    t += line("[File_Mask]=", refrigerant ? "qvr" : "qvk");
    return t;
}

QByteArray printHeaderText(const QDate& date, const RowTable& rows) {
    auto two = [](int v) { return QStringLiteral("%1").arg(v, 2, 10, QChar('0')).toLatin1(); };
    QByteArray t;
    t += line("[ta]=", QStringLiteral("%1").arg(date.year(), 4, 10, QChar('0')).toLatin1());
    t += line("[tb]=", toAnsi(eraYearText(date)));
    t += line("[tc]=", two(date.month()));
    t += line("[td]=", two(date.day()));
    t += line("[te]=", toAnsi(japaneseShortWeekday(date)));
    t += line("[tf]=", {});
    t += line("[tg]=", {});
    // The two texts of "材料単価建物/ページ" as their bytes stand, joined.
    t += line("[th]=", rows[4].goodsBytes + rows[5].goodsBytes);
    t += line("[ti]=", currToStr(rows[OptionRow].factor(5)).toLatin1());
    return t;
}

void writePrintHandOff(const PrintHandOff& h, const RowTable& rows, const ExportSheet& sheet) {
    writeExportFile(printDataPath(h.dataRoot), exportRowsText(ExportPrint, rows, sheet, {}));
    writePrintConfAndHeader(h, rows);
}

void writePrintConfAndHeader(const PrintHandOff& h, const RowTable& rows) {
    replaceFileBytes(
        printConfPath(h.dataRoot),
        printConfText(styleFilePath(h.dataRoot, h.styleIndex), h.iconPath, refrigerantRows(rows)));
    replaceFileBytes(printHeaderPath(h.dataRoot), printHeaderText(h.date, rows));
}

bool refrigerantRows(const RowTable& rows) {
    return rows[OptionRow].modeFlag == 1;
}

ExportSheet sheetOfRows(const RowTable& rows) {
    ExportSheet s;
    if (refrigerantRows(rows)) {
        s.tabCaptions << RefrigerantTabCaption;
    } else {
        for (int t = 0; t < 4; ++t) {
            const QString kind = rows[t * TabRows + 1].kind();
            s.tabCaptions << (rows[t * TabRows + 1].kindBytes.isEmpty()
                                  ? DefaultDetailCaptions[std::size_t(t)]
                                  : kind);
        }
    }
    for (int i = 0; i < 3; ++i)
        s.statusPanels[std::size_t(i)] = rows[i + 1].goods();
    return s;
}

QString printProgramPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/listpress");
}

QString applicationIconPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/Application.ico");
}

QStringList printProgramArguments(const QString& dataRoot) {
    return {dataRoot + QLatin1Char(';')};
}
