#include "store/modulewrappersqlite.h"

#include "platform/dialogs.h"

namespace {

// Runs the statements in one transaction on db. On a failure the transaction
// is rolled back and reason tells why; a rollback that fails raises.
bool runTransaction(SqliteDatabase& db, const QStringList& sqls, QString& reason) {
    try {
        db.beginImmediateTransaction();
        for (const QString& sql : sqls)
            db.execSql(sql);
        db.commit();
        return true;
    } catch (const SqliteError& e) {
        reason = e.reason();
    } catch (const std::exception& e) {
        reason = QString::fromUtf8(e.what());
    }
    if (db.isTransactionOpen()) db.rollback();
    return false;
}

int runGuarded(Dialogs& dialogs, const QString& path, const QStringList& sqls) {
    SqliteDatabase db(path);
    QString reason;
    if (runTransaction(db, sqls, reason)) return 1;
    dialogs.message(nullptr, applicationTitle(), QStringLiteral("ERROR"));
    return 0;
}

} // namespace

void showWriteFailure(Dialogs& dialogs, QWidget* form, const QString& reason, const QString& what) {
    showTaskDialog(dialogs, form, applicationTitle(), QStringLiteral("ERROR"),
                   TaskDialog::IconError, TaskDialog::ButtonOk,
                   reason + QStringLiteral("\r\n") + what);
}

int tryExecStatements(const QString& path, const QStringList& sqls, QString& reason) {
    try {
        SqliteDatabase db(path);
        return runTransaction(db, sqls, reason) ? 1 : 0;
    } catch (const SqliteError& e) {
        // The open, or the rollback after a failure.
        if (reason.isEmpty()) reason = e.reason();
    } catch (const std::exception& e) {
        if (reason.isEmpty()) reason = QString::fromUtf8(e.what());
    }
    return 0;
}

QueryResult queryLines(SqliteDatabase& db, const QString& sql) {
    std::unique_ptr<SqliteTable> table = db.getTable(sql);
    QueryResult result;
    result.columns = table->columnNames();
    const int cols = int(table->colCount());
    result.lines.reserve(int(table->rowCount()));
    while (!table->eof()) {
        QString line;
        for (int c = 0; c < cols; ++c) {
            line += escapeField(table->fieldAsString(c));
            line += QLatin1Char(';');
        }
        result.lines.append(line);
        table->next();
    }
    return result;
}

QueryResult queryToLines(const QString& path, const QString& sql) {
    SqliteDatabase db(path);
    return queryLines(db, sql);
}

int execStatement(Dialogs& dialogs, const QString& path, const QString& sql) {
    return runGuarded(dialogs, path, QStringList{sql});
}

int execStatements(Dialogs& dialogs, const QString& path, const QStringList& sqls) {
    return runGuarded(dialogs, path, sqls);
}

QString fieldOfLine(const QStringList& columns, const QString& line, const QString& columnName) {
    // No index of our own to run past the names: the field is counted along.
    int field = 0;
    for (const QString& column : columns) {
        ++field;
        if (column.compare(columnName, Qt::CaseInsensitive) == 0) return nthField(line, field);
    }
    return QString();
}

QString quotedText(const QString& text) {
    if (!text.contains(QLatin1Char('\''))) return text;
    QString s = text;
    s.replace(QLatin1Char('\''), QStringLiteral("''"));
    return s;
}
