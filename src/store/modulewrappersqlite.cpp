#include "store/modulewrappersqlite.h"

#include "platform/dialogs.h"

QStringList ResultLines;
QStringList ResultColumns;

namespace {

void showError() {
    CurrentDialogs().Message(nullptr, ApplicationTitle(), QStringLiteral("ERROR"));
}

int runGuarded(const QString& path, const QStringList& sqls) {
    TSQLiteDatabase db(path);
    try {
        db.BeginTransaction();
        for (const QString& sql : sqls)
            db.ExecSQL(sql);
        db.Commit();
    } catch (const std::exception&) {
        db.Rollback();
        showError();
        return 0;
    }
    return 1;
}

} // namespace

void ShowWriteFailure(QWidget* form, const QString& reason, const QString& what) {
    ShowTaskDialog(form, ApplicationTitle(), QStringLiteral("ERROR"), TaskDialog::IconError,
                   TaskDialog::ButtonOk, reason + QStringLiteral("\r\n") + what);
}

int TryExecStatements(const QString& path, const QStringList& sqls, QString& reason) {
    try {
        TSQLiteDatabase db(path);
        try {
            db.BeginTransaction();
            for (const QString& sql : sqls)
                db.ExecSQL(sql);
            db.Commit();
        } catch (const ESQLiteException& e) {
            reason = e.Reason();
            db.Rollback();
            return 0;
        }
    } catch (const ESQLiteException& e) {
        // The open, or the rollback after a failure.
        if (reason.isEmpty()) reason = e.Reason();
        return 0;
    } catch (const std::exception& e) {
        if (reason.isEmpty()) reason = QString::fromUtf8(e.what());
        return 0;
    }
    return 1;
}

void QueryToLines(const QString& path, const QString& sql) {
    ResultLines.clear();
    ResultColumns.clear();
    TSQLiteDatabase db(path);
    std::unique_ptr<TSQLiteTable> table = db.GetTable(sql);
    ResultColumns = table->ColumnNames();
    const int cols = int(table->ColCount());
    QStringList lines;
    lines.reserve(int(table->RowCount()));
    while (!table->Eof()) {
        QString line;
        for (int c = 0; c < cols; ++c) {
            line += EscapeField(table->FieldAsString(c));
            line += QLatin1Char(';');
        }
        lines.append(line);
        table->Next();
    }
    ResultLines = std::move(lines);
}

int ExecStatement(const QString& path, const QString& sql) {
    return runGuarded(path, QStringList{sql});
}

int ExecStatements(const QString& path, const QStringList& sqls) {
    return runGuarded(path, sqls);
}

QString FieldOfLine(const QString& line, const QString& columnName) {
    for (int i = 0; i < int(ResultColumns.size()); ++i)
        if (ResultColumns[i].compare(columnName, Qt::CaseInsensitive) == 0)
            return NthField(line, i + 1);
    return QString();
}

QString QuotedText(const QString& text) {
    QString s = text;
    s.replace(QLatin1Char('\''), QStringLiteral("''"));
    return s;
}
