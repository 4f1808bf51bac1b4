#include "shell/batchtool.h"

#include "engine/calcrow.h"
#include "platform/consoledialogs.h"
#include "platform/datapaths.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <optional>

namespace {

const char* const Usage = "usage: qorvale-tool show --group G --kan K [--launch LAUNCHSTRING]\n"
                          "       qorvale-tool recalc --group G [--kan K] [--launch LAUNCHSTRING]\n"
                          "       qorvale-tool print --group G --kan K --pdf FILE [--style-index N] "
                          "[--launch LAUNCHSTRING]\n"
                          "  G is a group from 1 to 10, K a pipe type from 1 to 20.\n";

struct Args {
    QString command;
    int group = 0;
    int kan = 0;
    QString launch;
};

// Parses the arguments; an error text when they are bad.
QString parse(const QStringList& args, Args& a) {
    if (args.isEmpty()) return QStringLiteral("no command");
    a.command = args.first();
    if (a.command != QLatin1String("show") && a.command != QLatin1String("recalc"))
        return QStringLiteral("unknown command: ") + a.command;
    for (int i = 1; i < int(args.size()); ++i) {
        const QString& name = args[i];
        if (name != QLatin1String("--group") && name != QLatin1String("--kan") &&
            name != QLatin1String("--launch"))
            return QStringLiteral("unknown argument: ") + name;
        if (i + 1 >= int(args.size())) return name + QStringLiteral(" needs a value");
        const QString value = args[++i];
        if (name == QLatin1String("--launch")) {
            a.launch = value;
            continue;
        }
        bool ok = false;
        const int v = value.toInt(&ok);
        const int max = name == QLatin1String("--group") ? 10 : 20;
        if (!ok || v < 1 || v > max)
            return QStringLiteral("%1 must be a number from 1 to %2, not \"%3\"")
                .arg(name)
                .arg(max)
                .arg(value);
        (name == QLatin1String("--group") ? a.group : a.kan) = v;
    }
    if (a.group == 0) return QStringLiteral("--group is missing");
    if (a.command == QLatin1String("show") && a.kan == 0) return QStringLiteral("--kan is missing");
    return QString();
}

// Tells whether another connection holds a lock that keeps us from writing;
// takes the write lock for a moment and gives it back.
std::optional<QString> writeBlocked(const QString& path) {
    try {
        TSQLiteDatabase db(path);
        db.ExecSQL(QStringLiteral("BEGIN IMMEDIATE"));
        db.ExecSQL(QStringLiteral("ROLLBACK"));
    } catch (const ESQLiteException& e) {
        return e.Message();
    }
    return std::nullopt;
}

QString oneLine(const QString& text) {
    QString s = text;
    s.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return s;
}

void printPipeType(QTextStream& out, int group, int kan) {
    out << "group " << group << " pipe type " << kan << ": " << KanzaiRows[1].Goods() << " / "
        << KanzaiRows[2].Goods() << " / " << KanzaiRows[3].Goods() << "\n";
    out << "row; GOODS;SIZE;KIND;FLAG;CI;NET;GROSS;TEIKA;DATA1..DATA7;NTANKA;GTANKA;FTANKA; | "
           "CALC1_G..CALC7_G | CALC1_N..CALC7_N\n";
    for (int r = 1; r <= RowCount; ++r) {
        const Fuzokurecordtypex& row = KanzaiRows[r];
        out << QStringLiteral("%1; ").arg(r, 2) << RowLine(row) << " |";
        for (Currency c : row.CALC_G)
            out << " " << CurrToStr(c);
        out << " |";
        for (Currency c : row.CALC_N)
            out << " " << CurrToStr(c);
        out << "\n";
    }
}

} // namespace

int RunQorvaleTool(const QStringList& args, QTextStream& out, QTextStream& err) {
    Args a;
    const QString bad = parse(args, a);
    if (!bad.isEmpty()) {
        err << "qorvale-tool: " << bad << "\n" << Usage;
        return 2;
    }
    DataRoot = DataRootPath();
    DatabaseFolder = DatabaseFolderFrom(a.launch);
    ExDatabasePath = ExDatabasePathIn(DatabaseFolder);
    if (!QFileInfo(ExDatabasePath).isFile()) {
        err << "qorvale-tool: no database at " << QDir::cleanPath(ExDatabasePath)
            << " (velmora-suite init creates one)\n";
        return 1;
    }

    // Boxes of the store ("ERROR") go to standard error and are counted.
    auto* console = new ConsoleDialogs(stderr);
    std::unique_ptr<Dialogs> previous = InstallDialogs(std::unique_ptr<Dialogs>(console));
    struct Restore {
        std::unique_ptr<Dialogs>& previous;
        ~Restore() { InstallDialogs(std::move(previous)); }
    } restore{previous};

    try {
        if (a.command == QLatin1String("show")) {
            ClearRows(RowCount);
            LoadPipeType(1, a.group, a.kan);
            CalcAllRows();
            printPipeType(out, a.group, a.kan);
            return 0;
        }
        if (const auto blocked = writeBlocked(ExDatabasePath)) {
            err << "qorvale-tool: the database is busy or read-only, nothing written: "
                << oneLine(*blocked) << "\n";
            return 1;
        }
        const int first = a.kan ? a.kan : 1;
        const int last = a.kan ? a.kan : 20;
        for (int kan = first; kan <= last; ++kan) {
            LoadPipeType(1, a.group, kan);
            for (int r = 1; r < OptionRow; ++r)
                CalcRow(r);
            const bool saved = SavePipeType(nullptr, 1, a.group, 0, kan);
            out << "group " << a.group << " pipe type " << kan << " ("
                << KanzaiRows[1].Goods().trimmed() << "): "
                << (saved ? QStringLiteral("recalculated and saved") : QStringLiteral("not saved"))
                << "\n";
            if (!saved) {
                err << "qorvale-tool: stopped after a failed save\n";
                return 1;
            }
        }
        return 0;
    } catch (const std::exception& e) {
        err << "qorvale-tool: " << oneLine(QString::fromUtf8(e.what())) << "\n";
        return 1;
    }
}
