#include "store/modulewrappersqlite.h"

#include "platform/dialogs.h"

namespace {

// Runs the statements in one transaction on db. On a failure the transaction
// is rolled back and reason tells why; a rollback that fails raises.
bool runTransaction(SqliteDatabase& db, const QStringList& sqls, QString& reason) {
    try {
        db.BeginImmediateTransaction();
        for (const QString& sql : sqls)
            db.ExecSQL(sql);
        db.Commit();
        return true;
    } catch (const SqliteError& e) {
        reason = e.Reason();
    } catch (const std::exception& e) {
        reason = QString::fromUtf8(e.what());
    }
    if (db.IsTransactionOpen()) db.Rollback();
    return false;
}

int runGuarded(Dialogs& dialogs, const QString& path, const QStringList& sqls) {
    SqliteDatabase db(path);
    QString reason;
    if (runTransaction(db, sqls, reason)) return 1;
    dialogs.Message(nullptr, ApplicationTitle(), QStringLiteral("ERROR"));
    return 0;
}

} // namespace

void ShowWriteFailure(Dialogs& dialogs, QWidget* form, const QString& reason, const QString& what) {
    ShowTaskDialog(dialogs, form, ApplicationTitle(), QStringLiteral("ERROR"),
                   TaskDialog::IconError, TaskDialog::ButtonOk,
                   reason + QStringLiteral("\r\n") + what);
}

int TryExecStatements(const QString& path, const QStringList& sqls, QString& reason) {
    try {
        SqliteDatabase db(path);
        return runTransaction(db, sqls, reason) ? 1 : 0;
    } catch (const SqliteError& e) {
        // The open, or the rollback after a failure.
        if (reason.isEmpty()) reason = e.Reason();
    } catch (const std::exception& e) {
        if (reason.isEmpty()) reason = QString::fromUtf8(e.what());
    }
    return 0;
}

QueryResult QueryLines(SqliteDatabase& db, const QString& sql) {
    std::unique_ptr<SqliteTable> table = db.GetTable(sql);
    QueryResult result;
    result.columns = table->ColumnNames();
    const int cols = int(table->ColCount());
    result.lines.reserve(int(table->RowCount()));
    while (!table->Eof()) {
        QString line;
        for (int c = 0; c < cols; ++c) {
            line += EscapeField(table->FieldAsString(c));
            line += QLatin1Char(';');
        }
        result.lines.append(line);
        table->Next();
    }
    return result;
}

QueryResult QueryToLines(const QString& path, const QString& sql) {
    SqliteDatabase db(path);
    return QueryLines(db, sql);
}

int ExecStatement(Dialogs& dialogs, const QString& path, const QString& sql) {
    return runGuarded(dialogs, path, QStringList{sql});
}

int ExecStatements(Dialogs& dialogs, const QString& path, const QStringList& sqls) {
    return runGuarded(dialogs, path, sqls);
}

QString FieldOfLine(const QStringList& columns, const QString& line, const QString& columnName) {
    // No index of our own to run past the names: the field is counted along.
    int field = 0;
    for (const QString& column : columns) {
        ++field;
        if (column.compare(columnName, Qt::CaseInsensitive) == 0) return NthField(line, field);
    }
    return QString();
}

QString QuotedText(const QString& text) {
    if (!text.contains(QLatin1Char('\''))) return text;
    QString s = text;
    s.replace(QLatin1Char('\''), QStringLiteral("''"));
    return s;
}
