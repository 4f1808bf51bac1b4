#include "shell/settingsfiles.h"

#include "engine/currency.h"
#include "store/codepage.h"
#include "util/wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

FileError::FileError(const QString& message) : std::runtime_error(message.toUtf8().toStdString()) {}

void splitKeyLine(const QString& line, QString& key, QString& value) {
    const int eq = int(line.indexOf(QLatin1Char('=')));
    if (eq < 0) {
        key.clear();
        value = line;
        return;
    }
    key = line.left(eq);
    value = line.mid(eq + 1);
}

QMap<QString, QString> readKeyLines(const QStringList& lines) {
    QMap<QString, QString> map;
    QString key, value;
    for (const QString& line : lines) {
        splitKeyLine(line, key, value);
        if (!key.isEmpty()) map.insert(key, value);
    }
    return map;
}

QString keyLine(const QString& key, const QString& value) {
    return key + QLatin1Char('=') + value;
}

QStringList textLinesOfBytes(const QByteArray& bytes) {
    return splitTextLines(fromAnsi(bytes));
}

QByteArray textFileBytes(const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += toAnsi(line) + "\r\n";
    return bytes;
}

bool readTextFile(const QString& path, QStringList& lines) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) return false;
    lines = textLinesOfBytes(bytes);
    return true;
}

bool writeTextFile(const QString& path, const QStringList& lines) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    return replaceFileWhole(path, textFileBytes(lines));
}

// ---- window file

namespace {
const QString ScreenTop = QStringLiteral("[Screen_Top]");
const QString ScreenLeft = QStringLiteral("[Screen_Left]");
const QString ScreenWidth = QStringLiteral("[Screen_Width]");
const QString ScreenHeight = QStringLiteral("[Screen_Height]");
const QString NetworkDir = QStringLiteral("[Network_Dir]");
const QString TreeUseTrue = QStringLiteral("[TREE_USE]=TRUE");
const QString TreeUseFalse = QStringLiteral("[TREE_USE]=FALSE");
const QString StatusUseTrue = QStringLiteral("[STATUS_USE]=TRUE");
const QString StatusUseFalse = QStringLiteral("[STATUS_USE]=FALSE");
const QString TreeViewWidth = QStringLiteral("[TREEVIEW_WIDTH]");

QString confFile(const QString& folder, const QString& name) {
    return folder + QStringLiteral("/conf/") + name;
}

// Values go through the program's one text-to-integer conversion.
int intOr(const QString& text, int def) {
    return strToIntDef(text, def);
}

QString flag(bool on) {
    return on ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}
} // namespace

QString windowFilePath(const QString& folder, const QString& name) {
    return confFile(folder, name + QStringLiteral(".ini"));
}

WindowRect windowRectOfLines(const QStringList& lines) {
    WindowRect rect;
    QString key, value;
    for (const QString& line : lines) {
        splitKeyLine(line, key, value);
        if (key == ScreenTop)
            rect.Top = intOr(value, 0);
        else if (key == ScreenLeft)
            rect.Left = intOr(value, 0);
        else if (key == ScreenWidth)
            rect.Width = intOr(value, 0);
        else if (key == ScreenHeight)
            rect.Height = intOr(value, 0);
    }
    return rect;
}

QStringList windowLines(int top, int left, int width, int height) {
    return {keyLine(ScreenTop, QString::number(top)), keyLine(ScreenLeft, QString::number(left)),
            keyLine(ScreenWidth, QString::number(width)),
            keyLine(ScreenHeight, QString::number(height))};
}

void readWindowFile(const QString& folder, const QString& name, WindowRect& rect) {
    rect = WindowRect{};
    QStringList lines;
    if (readTextFile(windowFilePath(folder, name), lines)) rect = windowRectOfLines(lines);
}

void writeWindowFile(const QString& folder, const QString& name, int top, int left, int width,
                     int height) {
    writeTextFile(windowFilePath(folder, name), windowLines(top, left, width, height));
}

// ---- network file

QString networkFilePath(const QString& folder) {
    return confFile(folder, QStringLiteral("Network_conf.conf"));
}

QString readNetworkDir(const QString& folder) {
    QStringList lines;
    if (!readTextFile(networkFilePath(folder), lines)) return QString();
    return networkDirOfLines(lines);
}

QString networkDirOfLines(const QStringList& lines) {
    return readKeyLines(lines).value(NetworkDir);
}

// ---- display file

QString displayFilePath(const QString& folder) {
    return confFile(folder, QStringLiteral("qorvale_p.disp"));
}

QStringList displayLines(const DisplaySettings& s) {
    return {QStringLiteral("[Version]=2.00"),
            QStringLiteral("[CheckBox1]=") + flag(s.resultsSwitch),
            QStringLiteral("[TREE_USE]=") + flag(s.TreeUse),
            QStringLiteral("[STATUS_USE]=") + flag(s.StatusUse),
            keyLine(TreeViewWidth, QString::number(s.TreeViewWidth))};
}

void applyDisplayLines(const QStringList& lines, DisplaySettings& s) {
    QString key, value;
    for (const QString& line : lines) {
        if (line == TreeUseTrue)
            s.TreeUse = true;
        else if (line == TreeUseFalse)
            s.TreeUse = false;
        else if (line == StatusUseTrue)
            s.StatusUse = true;
        else if (line == StatusUseFalse)
            s.StatusUse = false;
        splitKeyLine(line, key, value);
        if (key == TreeViewWidth) {
            s.TreeViewWidth = intOr(value, 100);
            s.HasTreeViewWidth = true;
        }
    }
}

bool readDisplaySettings(const QString& folder, DisplaySettings& s) {
    const QString path = displayFilePath(folder);
    if (!QFileInfo::exists(path)) return false;
    QStringList lines;
    if (!readTextFile(path, lines))
        throw FileError(
            QStringLiteral("入出力エラー: 表示設定のファイルを読み込めません。\nファイル: %1")
                .arg(path));
    applyDisplayLines(lines, s);
    return true;
}

void writeDisplaySettings(const QString& folder, const DisplaySettings& s) {
    const QString path = displayFilePath(folder);
    if (!writeTextFile(path, displayLines(s)))
        throw FileError(QStringLiteral("入出力エラー: 表示設定のファイルを書き込めません。"
                                       "フォルダーがないか、ディスクに空きがありません。\n"
                                       "ファイル: %1")
                            .arg(path));
}
