#include "store/pipetypestore.h"

#include "platform/dialogs.h"
#include "store/codepage.h"
#include "store/modulewrappersqlite.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <stdexcept>

namespace {

QString q(const QString& value) {
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}
QString qInt(std::int64_t v) {
    return q(QString::number(v));
}

Currency currOf(const QStringList& columns, const QString& line, const char* column) {
    return strToCurrDef(fieldOfLine(columns, line, QLatin1String(column)), Currency{});
}
int intOf(const QStringList& columns, const QString& line, const char* column) {
    return strToIntDef(fieldOfLine(columns, line, QLatin1String(column)), 0);
}
QByteArray textOf(const QStringList& columns, const QString& line, const char* column, int width) {
    return toAnsiCut(fieldOfLine(columns, line, QLatin1String(column)), width);
}

// The columns a load reads: what another program may change under us.
constexpr const char* LoadedColumns[] = {"UKEY",   "GOODS",  "KIND",  "SORT",  "SIZE",  "YOSAN",
                                         "CI",     "FLAG",   "NET",   "GROSS", "TEIKA", "DATA1",
                                         "DATA2",  "DATA3",  "DATA4", "DATA5", "DATA6", "DATA7",
                                         "NTANKA", "GTANKA", "FTANKA"};

} // namespace

QByteArray storedImage(SqliteDatabase& db, int grp, int kan) {
    QString columns;
    for (const char* column : LoadedColumns) {
        if (!columns.isEmpty()) columns += QLatin1Char(',');
        columns += QLatin1String(column);
    }
    return db.getTableImage(QStringLiteral("SELECT ") + columns +
                            QStringLiteral(" FROM ex_kanzai WHERE CTG='1' AND GRP='%1' AND "
                                           "KAN='%2' ORDER BY NO;")
                                .arg(grp)
                                .arg(kan));
}

namespace {

// Fills rows from a result of loadStatement, as LoadPipeType describes, and
// the change lines of what was read into saved when it is given.
void loadRows(const QueryResult& result, RowTable& rows, QStringList* saved) {
    if (saved) saved->clear();
    const QStringList& columns = result.columns;
    for (int i = 0; i < RowCount; ++i) {
        const int r = i + 1;
        if (i >= int(result.lines.size()))
            throw std::out_of_range(
                QStringLiteral("List index out of bounds (%1)").arg(i).toStdString());
        const QString& line = result.lines[i];
        PipeRow& row = rows[r];
        row.key = intOf(columns, line, "UKEY");
        row.goodsBytes = textOf(columns, line, "GOODS", GoodsWidth);
        row.kindBytes = textOf(columns, line, "KIND", KindWidth);
        row.sortOrder = Currency::fromInt(intOf(columns, line, "SORT"));
        row.sizeBytes = textOf(columns, line, "SIZE", SizeWidth);
        row.otherMethod = intOf(columns, line, "YOSAN");
        row.unitBytes = textOf(columns, line, "CI", UnitWidth);
        row.modeFlag = intOf(columns, line, "FLAG");
        row.costPrice = currOf(columns, line, "NET");
        row.submittedPrice = currOf(columns, line, "GROSS");
        row.listPrice = currOf(columns, line, "TEIKA");
        static const char* const data[7] = {"DATA1", "DATA2", "DATA3", "DATA4",
                                            "DATA5", "DATA6", "DATA7"};
        for (int d = 0; d < 7; ++d)
            row.factors[std::size_t(d)] = currOf(columns, line, data[d]);
        // Row 15's supply rate defaults to 1 before anything reads it.
        if (r == 15 && row.factor(1).isZero()) row.factor(1) = Currency::fromInt(1);
        row.costUnitPrice = currOf(columns, line, "NTANKA");
        row.submittedUnitPrice = currOf(columns, line, "GTANKA");
        row.adoptedUnitPrice = currOf(columns, line, "FTANKA");
        if (saved) saved->append(rowLine(row));
    }
    // The option row knows only item indexes 0 and 1 for these two.
    PipeRow& options = rows[OptionRow];
    if (options.modeFlag > 1) options.modeFlag = 0;
    if (options.otherMethod > 1) options.otherMethod = 0;
}

} // namespace

QString loadStatement(int grp, int kan) {
    return QStringLiteral("SELECT *") + QStringLiteral("FROM ex_kanzai where CTG=") + q("1") +
           QStringLiteral(" and Grp=") + qInt(grp) + QStringLiteral(" and KAN=") + qInt(kan) +
           QStringLiteral(" order by no;");
}

QByteArray saveStatementUtf8(const PipeRow& r, int grp, int kan, int n) {
    static const char* const DataNames[7] = {
        ",Data1=", ",Data2=", ",Data3=", ",Data4=", ",Data5=", ",Data6=", ",Data7="};
    static const char* const CalcGNames[7] = {
        ",CALC1_G=", ",CALC2_G=", ",CALC3_G=", ",CALC4_G=", ",CALC5_G=", ",CALC6_G=", ",CALC7_G="};
    static const char* const CalcNNames[7] = {
        ",CALC1_N=", ",CALC2_N=", ",CALC3_N=", ",CALC4_N=", ",CALC5_N=", ",CALC6_N=", ",CALC7_N="};
    // Written straight into the bytes the library parses: a save builds
    // sixty of these.
    QByteArray s;
    s.reserve(900);
    auto open = [&s](const char* name) {
        s += name;
        s += '\'';
    };
    auto text = [&](const char* name, const QByteArray& ansi) {
        open(name);
        s += quotedText(fromAnsi(ansi)).toUtf8();
        s += '\'';
    };
    auto number = [&](const char* name, std::int64_t v) {
        open(name);
        s += QByteArray::number(v);
        s += '\'';
    };
    auto curr = [&](const char* name, Currency c) {
        open(name);
        appendCurrText(s, c);
        s += '\'';
    };
    s += "UPDATE ex_kanzai SET ";
    text("GOODS=", r.goodsBytes);
    text(",KIND=", r.kindBytes);
    text(",SIZE=", r.sizeBytes);
    number(",YOSAN=", r.otherMethod);
    number(",SORT=", 0);
    text(",CI=", r.unitBytes);
    number(",FLAG=", r.modeFlag);
    curr(",NET=", r.costPrice);
    curr(",GROSS=", r.submittedPrice);
    curr(",TEIKA=", r.listPrice);
    for (int i = 0; i < 7; ++i)
        curr(DataNames[i], r.factors[std::size_t(i)]);
    for (int i = 0; i < 7; ++i)
        curr(CalcGNames[i], r.submittedAmounts[std::size_t(i)]);
    for (int i = 0; i < 7; ++i)
        curr(CalcNNames[i], r.costAmounts[std::size_t(i)]);
    curr(",NTANKA=", r.costUnitPrice);
    curr(",GTANKA=", r.submittedUnitPrice);
    curr(",FTANKA=", r.adoptedUnitPrice);
    number(" WHERE CTG=", 1);
    number(" and GRP=", grp);
    number(" and KAN=", kan);
    number(" and NO=", n);
    s += ";\r\n";
    return s;
}

QString saveStatement(const PipeRow& r, int grp, int kan, int n) {
    return QString::fromUtf8(saveStatementUtf8(r, grp, kan, n));
}

void loadPipeTypeIn(SqliteDatabase& db, int grp, int kan, RowTable& rows, QStringList* saved) {
    loadRows(queryLines(db, loadStatement(grp, kan)), rows, saved);
}

void writePipeTypeIn(SqliteDatabase& db, const RowTable& rows, int grp, int kan, Dialogs& dialogs) {
    for (int n = 1; n <= RowCount; ++n) {
        const QByteArray sql = saveStatementUtf8(rows[n], grp, kan, n);
        if (n == 1) dialogs.setClipboardText(QString::fromUtf8(sql));
        db.execUtf8(sql);
    }
}

QString exDatabaseProblem(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return QStringLiteral("ファイルがありません。");
    if (!info.isFile()) return QStringLiteral("ファイルではなくフォルダーです。");
    sqlite3* db = nullptr;
    int rc =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    QStringList tables;
    if (rc == SQLITE_OK) {
        sqlite3_stmt* st = nullptr;
        rc = sqlite3_prepare_v2(db,
                                "SELECT name FROM sqlite_master WHERE type='table' AND "
                                "name IN ('ex_kanzai','exconf')",
                                -1, &st, nullptr);
        if (rc == SQLITE_OK)
            while ((rc = sqlite3_step(st)) == SQLITE_ROW)
                tables << QString::fromUtf8(
                    reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
        if (rc == SQLITE_DONE) rc = SQLITE_OK;
        sqlite3_finalize(st);
    }
    const int code = db ? sqlite3_errcode(db) & 0xFF : rc;
    const QString reason = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
    sqlite3_close(db);
    if (rc != SQLITE_OK) {
        // Another program holds it: the load says so when it comes to it.
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) return QString();
        if (code == SQLITE_NOTADB)
            return QStringLiteral("データベースのファイルではありません。 (%1)").arg(reason);
        return QStringLiteral("データベースのファイルを読めません。 (%1)").arg(reason);
    }
    for (const char* table : {"ex_kanzai", "exconf"})
        if (!tables.contains(QLatin1String(table)))
            return QStringLiteral("表 %1 がありません。Velmora のデータベースではないか、"
                                  "壊れています。")
                .arg(QLatin1String(table));
    return QString();
}
