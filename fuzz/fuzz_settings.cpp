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
    return textLinesOfBytes(QByteArray::fromStdString(bytes));
}

// lines as a file holding them reads after they were written.
QStringList written(const QStringList& lines) {
    return textLinesOfBytes(textFileBytes(lines));
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
    putFile(windowFilePath(dir, QStringLiteral("qorvale_k")), bytes);
    WindowRect r;
    readWindowFile(dir, QStringLiteral("qorvale_k"), r);
    checkSameRect(r, windowRectOfLines(linesOf(bytes)));
    writeWindowFile(dir, QStringLiteral("qorvale_k"), r.Top, r.Left, r.Width, r.Height);
    WindowRect again;
    readWindowFile(dir, QStringLiteral("qorvale_k"), again);
    checkSameRect(again, r);

    putFile(displayFilePath(dir), bytes);
    DisplaySettings s, expected;
    FUZZ_CHECK(readDisplaySettings(dir, s));
    applyDisplayLines(linesOf(bytes), expected);
    FUZZ_CHECK_EQ(s.TreeUse, expected.TreeUse);
    FUZZ_CHECK_EQ(s.StatusUse, expected.StatusUse);
    FUZZ_CHECK_EQ(s.TreeViewWidth, expected.TreeViewWidth);
    writeDisplaySettings(dir, s);
    DisplaySettings back;
    FUZZ_CHECK(readDisplaySettings(dir, back));
    FUZZ_CHECK_EQ(back.TreeViewWidth, s.TreeViewWidth);

    putFile(networkFilePath(dir), bytes);
    FUZZ_CHECK_EQ(readNetworkDir(dir), networkDirOfLines(linesOf(bytes)));
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
        const WindowRect r = windowRectOfLines(linesOf(in.ConsumeRandomLengthString(400)));
        checkSameRect(windowRectOfLines(written(windowLines(r.Top, r.Left, r.Width, r.Height))), r);
        break;
    }
    case 5:
    case 6:
    case 7:
    case 8: { // window file, values
        const int top = in.ConsumeIntegral<int>(), left = in.ConsumeIntegral<int>();
        const int width = in.ConsumeIntegral<int>(), height = in.ConsumeIntegral<int>();
        const WindowRect r = windowRectOfLines(written(windowLines(top, left, width, height)));
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
        applyDisplayLines(linesOf(in.ConsumeRandomLengthString(400)), s);
        if (!s.HasTreeViewWidth) s.TreeViewWidth = in.ConsumeIntegral<int>();
        s.resultsSwitch = in.ConsumeBool();
        DisplaySettings back;
        back.TreeUse = !s.TreeUse;
        back.StatusUse = !s.StatusUse;
        applyDisplayLines(written(displayLines(s)), back);
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
        (void)networkDirOfLines(linesOf(in.ConsumeRandomLengthString(400)));
        const QString value = oneLine(in.ConsumeBool() ? fuzzUtf8(in, 100) : fuzzText(in, 50));
        const QStringList lines = {QStringLiteral("[Version]=1"),
                                   keyLine(QStringLiteral("[Network_Dir]"), value)};
        // The file is code page 932: what the code page lacks reads as "?".
        FUZZ_CHECK_EQ(networkDirOfLines(written(lines)), fromAnsi(toAnsi(value)));
        break;
    }
    default: { // exconf text: any text applies; values written then read
        ConfRecord any;
        applyConfText(fuzzText(in, 300), any);
        ConfRecord c;
        c.Removal = oneLine(fuzzText(in, 8));
        c.Recycle = oneLine(fuzzText(in, 8));
        c.Keta = oneLine(fuzzUtf8(in, 8));
        c.CutLevel = oneLine(fuzzUtf8(in, 8));
        for (QString& name : c.GroupNames)
            name = oneLine(in.ConsumeBool() ? fuzzUtf8(in, 24) : fuzzText(in, 12));
        ConfRecord back;
        applyConfText(confText(c), back);
        FUZZ_CHECK_EQ(back.Removal, c.Removal);
        FUZZ_CHECK_EQ(back.Recycle, c.Recycle);
        FUZZ_CHECK_EQ(back.Keta, c.Keta);
        FUZZ_CHECK_EQ(back.CutLevel, c.CutLevel);
        for (int g = 0; g < GroupCount; ++g)
            FUZZ_CHECK_EQ(back.GroupNames[std::size_t(g)], c.GroupNames[std::size_t(g)]);
        // The record text stands in a statement: no quote breaks it out.
        const QString sql = confInsertStatement(c);
        FUZZ_CHECK(sql.endsWith(QStringLiteral("');")));
        break;
    }
    }
    return 0;
}
