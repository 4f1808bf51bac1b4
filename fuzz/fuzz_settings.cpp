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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const QString dir = folder();
    switch (in.ConsumeIntegralInRange(0, 4)) {
    case 0: { // window file, any bytes
        putFile(WindowFilePath(dir, QStringLiteral("qorvale_k")),
                in.ConsumeRandomLengthString(400));
        WindowRect r;
        ReadWindowFile(dir, QStringLiteral("qorvale_k"), r);
        // Written then read gives the same values.
        WriteWindowFile(dir, QStringLiteral("qorvale_k"), r.Top, r.Left, r.Width, r.Height);
        WindowRect again;
        ReadWindowFile(dir, QStringLiteral("qorvale_k"), again);
        FUZZ_CHECK_EQ(again.Top, r.Top);
        FUZZ_CHECK_EQ(again.Left, r.Left);
        FUZZ_CHECK_EQ(again.Width, r.Width);
        FUZZ_CHECK_EQ(again.Height, r.Height);
        break;
    }
    case 1: { // window file, values
        const int top = in.ConsumeIntegral<int>(), left = in.ConsumeIntegral<int>();
        const int width = in.ConsumeIntegral<int>(), height = in.ConsumeIntegral<int>();
        WriteWindowFile(dir, QStringLiteral("w"), top, left, width, height);
        WindowRect r;
        ReadWindowFile(dir, QStringLiteral("w"), r);
        FUZZ_CHECK_EQ(r.Top, top);
        FUZZ_CHECK_EQ(r.Left, left);
        FUZZ_CHECK_EQ(r.Width, width);
        FUZZ_CHECK_EQ(r.Height, height);
        break;
    }
    case 2: { // display file: any bytes, then its own values back
        putFile(DisplayFilePath(dir), in.ConsumeRandomLengthString(400));
        DisplaySettings s;
        ReadDisplaySettings(dir, s);
        if (!s.HasTreeViewWidth) s.TreeViewWidth = in.ConsumeIntegral<int>();
        s.CheckBox1 = in.ConsumeBool();
        WriteDisplaySettings(dir, s);
        DisplaySettings back;
        back.TreeUse = !s.TreeUse;
        back.StatusUse = !s.StatusUse;
        FUZZ_CHECK(ReadDisplaySettings(dir, back));
        FUZZ_CHECK_EQ(back.TreeUse, s.TreeUse);
        FUZZ_CHECK_EQ(back.StatusUse, s.StatusUse);
        FUZZ_CHECK_EQ(back.TreeViewWidth, s.TreeViewWidth);
        FUZZ_CHECK(back.HasTreeViewWidth);
        break;
    }
    case 3: { // network file: any bytes, then a value written and read
        putFile(NetworkFilePath(dir), in.ConsumeRandomLengthString(400));
        (void)ReadNetworkDir(dir);
        const QString value = oneLine(in.ConsumeBool() ? FuzzUtf8(in, 100) : FuzzText(in, 50));
        FUZZ_CHECK(
            WriteTextFile(NetworkFilePath(dir), {QStringLiteral("[Version]=1"),
                                                 KeyLine(QStringLiteral("[Network_Dir]"), value)}));
        // The file is code page 932: what the code page lacks reads as "?".
        FUZZ_CHECK_EQ(ReadNetworkDir(dir), FromAnsi(ToAnsi(value)));
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
