#include "output/printstyle.h"

#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QFileInfo>

namespace {

const char* const FactorGroup = "歩　　掛";
const char* const AmountGroup = "単　価（円）";

// Element labels of piping and of refrigerant mode (empty: the same).
const std::array<const char*, 7> ElementLabels = {"所要材料", "継  手",     "接合材等", "支持金物",
                                                  "配管工",   "はつり補修", "その他"};
const std::array<const char*, 7> RefrigerantLabels = {"", "継手接合等", "支持金物", "雑材料",
                                                      "", "---",        ""};

QString u(const char* t) {
    return QString::fromUtf8(t);
}

void addFixed(PrintStyle& s, bool prices) {
    s.columns.push_back({QStringLiteral("SIZE"), {}, u("呼び径"), {}});
    s.columns.push_back({QStringLiteral("CI"), {}, u("単位"), {}});
    if (prices) {
        s.columns.push_back({QStringLiteral("FTANKA"), {}, u("採用単価"), {}});
        s.columns.push_back({QStringLiteral("GROSS"), {}, u("材料単価"), {}});
    }
}

void addElements(PrintStyle& s, const char* prefix, const char* group) {
    for (int e = 1; e <= 7; ++e)
        s.columns.push_back({QString::fromLatin1(prefix) + QString::number(e), u(group),
                             u(ElementLabels[std::size_t(e - 1)]),
                             u(RefrigerantLabels[std::size_t(e - 1)])});
}

} // namespace

const QStringList& styleFieldKeys() {
    static const QStringList keys = [] {
        QStringList k = {QStringLiteral("SIZE"), QStringLiteral("CI"), QStringLiteral("FTANKA"),
                         QStringLiteral("GROSS")};
        for (int e = 1; e <= 7; ++e)
            k << QStringLiteral("DATA%1").arg(e);
        for (int e = 1; e <= 7; ++e)
            k << QStringLiteral("CALC%1").arg(e);
        k << QStringLiteral("GTANKA");
        return k;
    }();
    return keys;
}

int styleFieldIndex(const QString& key) {
    return int(styleFieldKeys().indexOf(key));
}

bool isAmountField(const QString& key) {
    return key == QLatin1String("FTANKA") || key == QLatin1String("GROSS") ||
           key == QLatin1String("GTANKA") || key.startsWith(QLatin1String("CALC"));
}

PrintStyle builtInStyle(int index) {
    PrintStyle s;
    s.title = u("複合単価計算書");
    switch (index) {
    case 1:
        s.name = u("単価");
        addFixed(s, true);
        addElements(s, "CALC", AmountGroup);
        s.columns.push_back({QStringLiteral("GTANKA"), u(AmountGroup), u("合   計"), {}});
        break;
    case 2:
        s.name = u("歩掛+単価");
        addFixed(s, true);
        addElements(s, "DATA", FactorGroup);
        addElements(s, "CALC", AmountGroup);
        s.columns.push_back({QStringLiteral("GTANKA"), u(AmountGroup), u("合   計"), {}});
        break;
    default:
        s.name = u("歩掛");
        addFixed(s, false);
        addElements(s, "DATA", FactorGroup);
        break;
    }
    return s;
}

int builtInStyleIndexOfFile(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    if (name == u("A4横_複合単価_管材歩掛.qvk")) return 0;
    if (name == u("A4横_複合単価_管材計算.qvk")) return 1;
    if (name == u("A4横_複合単価_管材_歩掛+計算.qvk")) return 2;
    return -1;
}

QByteArray styleFileText(const PrintStyle& style) {
    QStringList lines;
    lines << keyLine(QStringLiteral("[Style]"), style.name)
          << keyLine(QStringLiteral("[Title]"), style.title);
    for (const StyleColumn& c : style.columns)
        lines << keyLine(QStringLiteral("[Column]"),
                         c.key + QLatin1Char(';') + c.group + QLatin1Char(';') + c.label +
                             QLatin1Char(';') + c.refrigerantLabel + QLatin1Char(';'));
    return toAnsi(joinTextLines(lines));
}

bool readStyleFile(const QString& path, PrintStyle& style, QString& reason) {
    const QString file = QFileInfo(path).fileName();
    QStringList lines;
    if (!QFileInfo(path).isFile() || !readTextFile(path, lines)) {
        reason = u("スタイルファイル %1 を読めません。").arg(file);
        return false;
    }
    return parseStyleLines(lines, file, style, reason);
}

bool parseStyleLines(const QStringList& lines, const QString& file, PrintStyle& style,
                     QString& reason) {
    PrintStyle s;
    for (int i = 0; i < int(lines.size()); ++i) {
        QString key, value;
        splitKeyLine(lines[i], key, value);
        if (key == QLatin1String("[Style]")) {
            s.name = value;
        } else if (key == QLatin1String("[Title]")) {
            s.title = value;
        } else if (key == QLatin1String("[Column]")) {
            const QStringList f = value.split(QLatin1Char(';'));
            if (f.size() < 3 || styleFieldIndex(f[0].trimmed()) < 0) {
                reason = u("スタイルファイル %1 の %2 行目: 列の指定「%3」が正しくありません。")
                             .arg(file)
                             .arg(i + 1)
                             .arg(value);
                return false;
            }
            s.columns.push_back({f[0].trimmed(), f[1], f[2], f.value(3)});
        }
    }
    if (s.columns.isEmpty()) {
        reason = u("スタイルファイル %1 に列の指定がありません。").arg(file);
        return false;
    }
    style = s;
    return true;
}
