// The workstation's files and the exconf text: any bytes in a window, display
// or network file read without harm, and values written then read come back.

#include "fuzzcheck.h"
#include "shell/confrecord.h"
#include "shell/settingsfiles.h"
#include "store/codepage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QString folder() {
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/qorvale-fuzz-XXXXXX"));
    return dir.path();
}

void putFile(const QString& path, const std::string& bytes) {
    QDir().mkpath(folder() + QStringLiteral("/conf"));
    QFile f(path);
    FUZZ_CHECK(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes.data(), qint64(bytes.size()));
}

// A value as the program writes it: one line, so no CR and no LF.
QString oneLine(QString s) {
    s.replace(QLatin1Char('\r'), QLatin1Char(' '));
    s.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return s;
}

// The lines of any bytes, as a file holding them reads.
QStringList linesOf(const std::string& bytes) {
    return TextLinesOfBytes(QByteArray::fromStdString(bytes));
}

// Lines as a file holding them reads after they were written.
QStringList written(const QStringList& lines) {
    return TextLinesOfBytes(TextFileBytes(lines));
}

void checkSameRect(const WindowRect& a, const WindowRect& b) {
    FUZZ_CHECK_EQ(a.Top, b.Top);
    FUZZ_CHECK_EQ(a.Left, b.Left);
    FUZZ_CHECK_EQ(a.Width, b.Width);
    FUZZ_CHECK_EQ(a.Height, b.Height);
}

// The same through real files, now and then: the file layer must give the
// text layer exactly what it gets in memory.
void realFiles(FuzzedDataProvider& in) {
    const QString dir = folder();
    const std::string bytes = in.ConsumeRandomLengthString(400);
    putFile(WindowFilePath(dir, QStringLiteral("qorvale_k")), bytes);
    WindowRect r;
    ReadWindowFile(dir, QStringLiteral("qorvale_k"), r);
    checkSameRect(r, WindowRectOfLines(linesOf(bytes)));
    WriteWindowFile(dir, QStringLiteral("qorvale_k"), r.Top, r.Left, r.Width, r.Height);
    WindowRect again;
    ReadWindowFile(dir, QStringLiteral("qorvale_k"), again);
    checkSameRect(again, r);

    putFile(DisplayFilePath(dir), bytes);
    DisplaySettings s, expected;
    FUZZ_CHECK(ReadDisplaySettings(dir, s));
    ApplyDisplayLines(linesOf(bytes), expected);
    FUZZ_CHECK_EQ(s.TreeUse, expected.TreeUse);
    FUZZ_CHECK_EQ(s.StatusUse, expected.StatusUse);
    FUZZ_CHECK_EQ(s.TreeViewWidth, expected.TreeViewWidth);
    WriteDisplaySettings(dir, s);
    DisplaySettings back;
    FUZZ_CHECK(ReadDisplaySettings(dir, back));
    FUZZ_CHECK_EQ(back.TreeViewWidth, s.TreeViewWidth);

    putFile(NetworkFilePath(dir), bytes);
    FUZZ_CHECK_EQ(ReadNetworkDir(dir), NetworkDirOfLines(linesOf(bytes)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    switch (in.ConsumeIntegralInRange(0, 31)) {
    case 0: // real files: a write costs a hundred reads in memory
        realFiles(in);
        break;
    case 1:
    case 2:
    case 3:
    case 4: { // window file, any bytes: its values written then read again
        const WindowRect r = WindowRectOfLines(linesOf(in.ConsumeRandomLengthString(400)));
        checkSameRect(WindowRectOfLines(written(WindowLines(r.Top, r.Left, r.Width, r.Height))), r);
        break;
    }
    case 5:
    case 6:
    case 7:
    case 8: { // window file, values
        const int top = in.ConsumeIntegral<int>(), left = in.ConsumeIntegral<int>();
        const int width = in.ConsumeIntegral<int>(), height = in.ConsumeIntegral<int>();
        const WindowRect r = WindowRectOfLines(written(WindowLines(top, left, width, height)));
        FUZZ_CHECK_EQ(r.Top, top);
        FUZZ_CHECK_EQ(r.Left, left);
        FUZZ_CHECK_EQ(r.Width, width);
        FUZZ_CHECK_EQ(r.Height, height);
        break;
    }
    case 9:
    case 10:
    case 11:
    case 12:
    case 13:
    case 14: { // display file: any bytes, then its own values back
        DisplaySettings s;
        ApplyDisplayLines(linesOf(in.ConsumeRandomLengthString(400)), s);
        if (!s.HasTreeViewWidth) s.TreeViewWidth = in.ConsumeIntegral<int>();
        s.resultsSwitch = in.ConsumeBool();
        DisplaySettings back;
        back.TreeUse = !s.TreeUse;
        back.StatusUse = !s.StatusUse;
        ApplyDisplayLines(written(DisplayLines(s)), back);
        FUZZ_CHECK_EQ(back.TreeUse, s.TreeUse);
        FUZZ_CHECK_EQ(back.StatusUse, s.StatusUse);
        FUZZ_CHECK_EQ(back.TreeViewWidth, s.TreeViewWidth);
        FUZZ_CHECK(back.HasTreeViewWidth);
        break;
    }
    case 15:
    case 16:
    case 17:
    case 18:
    case 19:
    case 20: { // network file: any bytes, then a value written and read
        (void)NetworkDirOfLines(linesOf(in.ConsumeRandomLengthString(400)));
        const QString value = oneLine(in.ConsumeBool() ? FuzzUtf8(in, 100) : FuzzText(in, 50));
        const QStringList lines = {QStringLiteral("[Version]=1"),
                                   KeyLine(QStringLiteral("[Network_Dir]"), value)};
        // The file is code page 932: what the code page lacks reads as "?".
        FUZZ_CHECK_EQ(NetworkDirOfLines(written(lines)), FromAnsi(ToAnsi(value)));
        break;
    }
    default: { // exconf text: any text applies; values written then read
        ConfRecord any;
        ApplyConfText(FuzzText(in, 300), any);
        ConfRecord c;
        c.Removal = oneLine(FuzzText(in, 8));
        c.Recycle = oneLine(FuzzText(in, 8));
        c.Keta = oneLine(FuzzUtf8(in, 8));
        c.CutLevel = oneLine(FuzzUtf8(in, 8));
        for (QString& name : c.GroupNames)
            name = oneLine(in.ConsumeBool() ? FuzzUtf8(in, 24) : FuzzText(in, 12));
        ConfRecord back;
        ApplyConfText(ConfText(c), back);
        FUZZ_CHECK_EQ(back.Removal, c.Removal);
        FUZZ_CHECK_EQ(back.Recycle, c.Recycle);
        FUZZ_CHECK_EQ(back.Keta, c.Keta);
        FUZZ_CHECK_EQ(back.CutLevel, c.CutLevel);
        for (int g = 0; g < GroupCount; ++g)
            FUZZ_CHECK_EQ(back.GroupNames[std::size_t(g)], c.GroupNames[std::size_t(g)]);
        // The record text stands in a statement: no quote breaks it out.
        const QString sql = ConfInsertStatement(c);
        FUZZ_CHECK(sql.endsWith(QStringLiteral("');")));
        break;
    }
    }
    return 0;
}
