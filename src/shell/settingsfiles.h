#pragma once
// The workstation's settings files and their one text style: lines of
// "[KEY]=value". The key is everything in front of the first "=", the value
// everything behind it, untrimmed; keys compare exactly; a line without "="
// has an empty key; a key given twice takes its last value.
//
// Files are code page 932 with CR LF line ends and no byte order mark.

#include <QMap>
#include <QString>
#include <QStringList>

#include "util/textlines.h"

#include <stdexcept>

// A read or write failure of a settings file that must be reported.
class FileError : public std::runtime_error {
public:
    explicit FileError(const QString& message);
};

// Key and value of one line.
void splitKeyLine(const QString& line, QString& key, QString& value);
// The keys of a sequence of lines, last value winning; keyless lines dropped.
QMap<QString, QString> readKeyLines(const QStringList& lines);
// "[KEY]=value".
QString keyLine(const QString& key, const QString& value);

// The lines of a file's bytes (code page 932), and the bytes of lines.
QStringList textLinesOfBytes(const QByteArray& bytes);
QByteArray textFileBytes(const QStringList& lines);

// Reads a code page 932 text file into lines; false when it can't be read.
bool readTextFile(const QString& path, QStringList& lines);
// Replaces a file with the lines, each ended by CR LF, in code page 932;
// false when it can't be written. The old file stays until the new one is
// complete.
bool writeTextFile(const QString& path, const QStringList& lines);

// ---- window file: <data root>/conf/<name>.ini
struct WindowRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};
QString windowFilePath(const QString& folder, const QString& name);
// The values of the lines: zeros where a key is missing, and a value that is
// no integer reads as 0.
WindowRect windowRectOfLines(const QStringList& lines);
// The lines as written.
QStringList windowLines(int top, int left, int width, int height);
// Zeros, then what the file holds when it exists. Read errors are passed
// over.
void readWindowFile(const QString& folder, const QString& name, WindowRect& rect);
// Replaces the file; a write error is passed over.
void writeWindowFile(const QString& folder, const QString& name, int top, int left, int width,
                     int height);

// ---- network file: <data root>/conf/Network_conf.conf
QString networkFilePath(const QString& folder);
// The value of "[Network_Dir]"; empty when the file or the key is missing.
QString readNetworkDir(const QString& folder);
QString networkDirOfLines(const QStringList& lines);

// ---- display file: <data root>/conf/qorvale_p.disp
struct DisplaySettings {
    bool resultsSwitch = false; // stored, never read back
    bool TreeUse = true;        // check mark of treeListItem
    bool StatusUse = true;      // check mark of statusBarItem
    int TreeViewWidth = 100;
    bool HasTreeViewWidth = false; // the file named a width
};
QString displayFilePath(const QString& folder);
// The lines as written.
QStringList displayLines(const DisplaySettings& s);
// Applies lines to s: "[TREE_USE]=TRUE"/"=FALSE" and "[STATUS_USE]=..." by
// the whole line, "[TREEVIEW_WIDTH]" by key (no integer reads as 100).
void applyDisplayLines(const QStringList& lines, DisplaySettings& s);
// Applies the file when it exists; false when it doesn't (s unchanged).
// Raises FileError when it exists but can't be read.
bool readDisplaySettings(const QString& folder, DisplaySettings& s);
// Replaces the file; raises FileError when it can't be written.
void writeDisplaySettings(const QString& folder, const DisplaySettings& s);
