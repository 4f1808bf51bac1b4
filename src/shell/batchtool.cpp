#include "shell/batchtool.h"

#include "document/pipetypedocument.h"
#include "engine/grouprewrite.h"
#include "platform/commandline.h"
#include "platform/consoledialogs.h"
#include "platform/datapaths.h"
#include "sheet/sheettexts.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "util/textwidth.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

namespace {

const char* const Usage =
    "usage: qorvale-tool show --group G --kan K [--csv] [--launch LAUNCHSTRING]\n"
    "       qorvale-tool recalc --group G [--kan K] [--launch LAUNCHSTRING]\n"
    "       qorvale-tool print --group G --kan K --pdf FILE [--style-index N]\n"
    "                          [--launch LAUNCHSTRING]\n"
    "       qorvale-tool --help | --version\n"
    "  show    prints the sizes, prices, factors and composite prices of a pipe type\n"
    "          as a table (--csv: comma-separated, for other programs)\n"
    "  recalc  recalculates and stores the pipe types of a group as the program's\n"
    "          group recalculation does\n"
    "  print   writes the printed sheet of a stored pipe type as a PDF (style index\n"
    "          0 歩掛, 1 単価, 2 歩掛+単価)\n"
    "  G is a group from 1 to 10, K a pipe type from 1 to 20. The database is found\n"
    "  as the program finds it (field 5 of LAUNCHSTRING, else the default folder).\n"
    "  Exit code 0 on success, 1 when the database is missing, busy or fails,\n"
    "  2 on bad arguments.\n";

struct Args {
    QString command;
    int group = 0;
    int kan = 0;
    bool csv = false;
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
        if (name == QLatin1String("--csv") && a.command == QLatin1String("show")) {
            a.csv = true;
            continue;
        }
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
        SqliteDatabase db(path);
        db.execSql(QStringLiteral("BEGIN IMMEDIATE"));
        db.execSql(QStringLiteral("ROLLBACK"));
    } catch (const SqliteError& e) {
        return e.message();
    }
    return std::nullopt;
}

QString oneLine(const QString& text) {
    QString s = text;
    s.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return s;
}

// The columns of the show table, in the words of the sheet.
QStringList showHeadings(bool refrigerant) {
    const ElementHeadings h = longHeadings(refrigerant);
    auto plain = [](QString s) { return s.remove(QLatin1Char(' ')); };
    return {QStringLiteral("呼び径"),
            QStringLiteral("提出"),
            QStringLiteral("原価"),
            QStringLiteral("定価"),
            QStringLiteral("管"),
            plain(h.col5),
            plain(h.col6),
            plain(h.col7),
            QStringLiteral("配管工"),
            plain(h.col9),
            plain(h.col10),
            QStringLiteral("複合単価提出"),
            QStringLiteral("複合単価原価"),
            QStringLiteral("採用単価")};
}

// One line of a detail: size, the three prices, the seven factors as the
// sheet shows them, and the composite prices of both sides and the adopted.
QStringList showLine(const PipeRow& row, bool refrigerant, bool plainNumbers) {
    SheetView view;
    view.refrigerant = refrigerant;
    const auto cells = grid1LineTexts(row, view);
    auto amount = [plainNumbers](Currency c) {
        return plainNumbers ? currToStr(c) : formatAmount(c);
    };
    QStringList line{row.size(), amount(row.submittedPrice), amount(row.costPrice),
                     amount(row.listPrice)};
    for (int c = 4; c <= 10; ++c)
        line << (plainNumbers ? currToStr(row.factor(c - 3)) : cells[std::size_t(c)]);
    line << amount(row.submittedUnitPrice) << amount(row.costUnitPrice)
         << amount(row.adoptedUnitPrice);
    return line;
}

void printPipeType(QTextStream& out, PipeTypeDocument& doc, int group, int kan, bool csv) {
    const RowTable& rows = doc.rows();
    const bool refrigerant = doc.options().modeFlag() == 1;
    const int details = refrigerant ? 1 : 4;
    const QStringList headings = showHeadings(refrigerant);
    auto detailCaption = [&](int t) {
        return refrigerant ? RefrigerantTabCaption : rows[t * 15 + 1].kind();
    };
    if (csv) {
        out << QStringLiteral("細目,") << headings.join(QLatin1Char(',')) << "\n";
        for (int t = 0; t < details; ++t)
            for (int g = 1; g <= SheetLines; ++g) {
                const PipeRow& row = rows[t * 15 + g];
                if (row.size().isEmpty()) continue;
                out << detailCaption(t) << ","
                    << showLine(row, refrigerant, true).join(QLatin1Char(',')) << "\n";
            }
        return;
    }
    PipeTypeOptions o = doc.options();
    out << QStringLiteral("グループ %1 管種 %2: ").arg(group).arg(kan) << rows[1].goods() << " / "
        << rows[2].goods() << " / " << rows[3].goods() << "\n";
    out << (refrigerant ? QStringLiteral("冷媒モード") : QStringLiteral("配管モード"))
        << QStringLiteral("  基礎工費 提出 ") << formatAmount(o.labourSubmitted())
        << QStringLiteral(" 原価 ") << formatAmount(o.labourCost()) << "\n";
    for (int t = 0; t < details; ++t) {
        std::vector<QStringList> lines{headings};
        for (int g = 1; g <= SheetLines; ++g) {
            const PipeRow& row = rows[t * 15 + g];
            if (!row.size().isEmpty()) lines.push_back(showLine(row, refrigerant, false));
        }
        std::vector<int> widths(std::size_t(headings.size()), 0);
        for (const QStringList& l : lines)
            for (int c = 0; c < int(l.size()); ++c)
                widths[std::size_t(c)] = std::max(widths[std::size_t(c)], displayWidth(l[c]));
        out << "\n[" << detailCaption(t) << "]\n";
        if (lines.size() == 1) {
            out << QStringLiteral("（サイズなし）") << "\n";
            continue;
        }
        for (const QStringList& l : lines) {
            QStringList cells;
            for (int c = 0; c < int(l.size()); ++c)
                cells << padToWidth(l[c], widths[std::size_t(c)], c > 0);
            out << cells.join(QStringLiteral("  ")).trimmed() << "\n";
        }
    }
}

} // namespace

bool findToolDatabase(const QString& launch, DataPaths& paths, QTextStream& err) {
    paths = DataPaths::fromLaunchString(launch);
    paths.nameDatabaseFiles();
    if (QFileInfo(paths.exDatabase).isFile()) return true;
    err << "qorvale-tool: no database at " << QDir::cleanPath(paths.exDatabase)
        << " (velmora-suite init creates one)\n";
    return false;
}

int runQorvaleTool(const QStringList& args, QTextStream& out, QTextStream& err) {
    const int standard =
        standardOptions(args, QStringLiteral("qorvale-tool"), QString::fromUtf8(Usage),
                        {QStringLiteral("--group"), QStringLiteral("--kan"),
                         QStringLiteral("--launch"), QStringLiteral("--csv")},
                        out, err);
    if (standard >= 0) return standard;
    Args a;
    const QString bad = parse(args, a);
    if (!bad.isEmpty()) {
        err << "qorvale-tool: " << bad << "\n" << Usage;
        return 2;
    }
    DataPaths paths;
    if (!findToolDatabase(a.launch, paths, err)) return 1;
    // Boxes of the store ("ERROR") go to standard error.
    ConsoleDialogs console(stderr);

    try {
        if (a.command == QLatin1String("show")) {
            PipeTypeDocument doc;
            SqliteDatabase db(paths.exDatabase);
            doc.load(db, a.group, a.kan);
            doc.calculateAll();
            printPipeType(out, doc, a.group, a.kan, a.csv);
            return 0;
        }
        if (const auto blocked = writeBlocked(paths.exDatabase)) {
            err << "qorvale-tool: the database is busy or read-only, nothing written: "
                << oneLine(*blocked) << "\n";
            return 1;
        }
        const int first = a.kan ? a.kan : 1;
        const int last = a.kan ? a.kan : 20;
        RowTable rows;
        std::unique_ptr<SqliteDatabase> db; // one connection for the run
        for (int kan = first; kan <= last; ++kan) {
            // Each pipe type in one transaction: a run that is stopped leaves
            // every pipe type wholly old or wholly new.
            QString failure;
            try {
                if (!db) db = std::make_unique<SqliteDatabase>(paths.exDatabase);
                recalculatePipeType(*db, rows, a.group, kan, console, nullptr);
            } catch (const std::exception& e) {
                failure = oneLine(QString::fromUtf8(e.what()));
            }
            out << "group " << a.group << " pipe type " << kan << " (" << rows[1].goods().trimmed()
                << "): "
                << (failure.isEmpty() ? QStringLiteral("recalculated and saved")
                                      : QStringLiteral("not saved"))
                << "\n";
            if (!failure.isEmpty()) {
                err << "qorvale-tool: " << failure << "\n"
                    << "qorvale-tool: stopped after a failed save; pipe type " << kan
                    << " and those after it are unchanged\n";
                return 1;
            }
        }
        return 0;
    } catch (const std::exception& e) {
        err << "qorvale-tool: " << oneLine(QString::fromUtf8(e.what())) << "\n";
        return 1;
    }
}
