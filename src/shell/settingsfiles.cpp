#include "shell/settingsfiles.h"

#include "engine/currency.h"
#include "store/codepage.h"
#include "util/wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

FileError::FileError(const QString& message) : std::runtime_error(message.toUtf8().toStdString()) {}

void SplitKeyLine(const QString& line, QString& key, QString& value) {
    const int eq = int(line.indexOf(QLatin1Char('=')));
    if (eq < 0) {
        key.clear();
        value = line;
        return;
    }
    key = line.left(eq);
    value = line.mid(eq + 1);
}

QMap<QString, QString> ReadKeyLines(const QStringList& lines) {
    QMap<QString, QString> map;
    QString key, value;
    for (const QString& line : lines) {
        SplitKeyLine(line, key, value);
        if (!key.isEmpty()) map.insert(key, value);
    }
    return map;
}

QString KeyLine(const QString& key, const QString& value) {
    return key + QLatin1Char('=') + value;
}

QStringList TextLinesOfBytes(const QByteArray& bytes) {
    return SplitTextLines(FromAnsi(bytes));
}

QByteArray TextFileBytes(const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += ToAnsi(line) + "\r\n";
    return bytes;
}

bool ReadTextFile(const QString& path, QStringList& lines) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) return false;
    lines = TextLinesOfBytes(bytes);
    return true;
}

bool WriteTextFile(const QString& path, const QStringList& lines) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    return ReplaceFileWhole(path, TextFileBytes(lines));
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
    return StrToIntDef(text, def);
}

QString flag(bool on) {
    return on ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}
} // namespace

QString WindowFilePath(const QString& folder, const QString& name) {
    return confFile(folder, name + QStringLiteral(".ini"));
}

WindowRect WindowRectOfLines(const QStringList& lines) {
    WindowRect rect;
    QString key, value;
    for (const QString& line : lines) {
        SplitKeyLine(line, key, value);
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

QStringList WindowLines(int top, int left, int width, int height) {
    return {KeyLine(ScreenTop, QString::number(top)), KeyLine(ScreenLeft, QString::number(left)),
            KeyLine(ScreenWidth, QString::number(width)),
            KeyLine(ScreenHeight, QString::number(height))};
}

void ReadWindowFile(const QString& folder, const QString& name, WindowRect& rect) {
    rect = WindowRect{};
    QStringList lines;
    if (ReadTextFile(WindowFilePath(folder, name), lines)) rect = WindowRectOfLines(lines);
}

void WriteWindowFile(const QString& folder, const QString& name, int top, int left, int width,
                     int height) {
    WriteTextFile(WindowFilePath(folder, name), WindowLines(top, left, width, height));
}

// ---- network file

QString NetworkFilePath(const QString& folder) {
    return confFile(folder, QStringLiteral("Network_conf.conf"));
}

QString ReadNetworkDir(const QString& folder) {
    QStringList lines;
    if (!ReadTextFile(NetworkFilePath(folder), lines)) return QString();
    return NetworkDirOfLines(lines);
}

QString NetworkDirOfLines(const QStringList& lines) {
    return ReadKeyLines(lines).value(NetworkDir);
}

// ---- display file

QString DisplayFilePath(const QString& folder) {
    return confFile(folder, QStringLiteral("qorvale_p.disp"));
}

QStringList DisplayLines(const DisplaySettings& s) {
    return {QStringLiteral("[Version]=2.00"),
            QStringLiteral("[CheckBox1]=") + flag(s.resultsSwitch),
            QStringLiteral("[TREE_USE]=") + flag(s.TreeUse),
            QStringLiteral("[STATUS_USE]=") + flag(s.StatusUse),
            KeyLine(TreeViewWidth, QString::number(s.TreeViewWidth))};
}

void ApplyDisplayLines(const QStringList& lines, DisplaySettings& s) {
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
        SplitKeyLine(line, key, value);
        if (key == TreeViewWidth) {
            s.TreeViewWidth = intOr(value, 100);
            s.HasTreeViewWidth = true;
        }
    }
}

bool ReadDisplaySettings(const QString& folder, DisplaySettings& s) {
    const QString path = DisplayFilePath(folder);
    if (!QFileInfo::exists(path)) return false;
    QStringList lines;
    if (!ReadTextFile(path, lines))
        throw FileError(
            QStringLiteral("入出力エラー: 表示設定のファイルを読み込めません。\nファイル: %1")
                .arg(path));
    ApplyDisplayLines(lines, s);
    return true;
}

void WriteDisplaySettings(const QString& folder, const DisplaySettings& s) {
    const QString path = DisplayFilePath(folder);
    if (!WriteTextFile(path, DisplayLines(s)))
        throw FileError(QStringLiteral("入出力エラー: 表示設定のファイルを書き込めません。"
                                       "フォルダーがないか、ディスクに空きがありません。\n"
                                       "ファイル: %1")
                            .arg(path));
}
