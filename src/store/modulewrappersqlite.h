#pragma once
// The two operations the program calls on the database, and the field access
// on their results. No connection lives longer than one operation: each call
// opens the file, does its one job and closes it again.
//
// A result line holds the text of each column followed by ";". A value is
// written with escapeField (util/fieldtext.h): ESC becomes ESC ESC and ";"
// becomes ESC ":", so a ";" in a stored text never shifts the fields behind
// it. nthField and fieldOfLine undo the escape.

#include "store/sqliteclasses.h"
#include "util/fieldtext.h"

#include <QString>
#include <QStringList>

class Dialogs;
class QWidget;

// The rows of a query as result lines, and its column names in upper case.
struct QueryResult {
    QStringList columns;
    QStringList lines;
};
// Runs a query on an open connection (inside its transaction, if one is
// open). Raises SqliteError on failure.
QueryResult queryLines(SqliteDatabase& db, const QString& sql);

// Runs a query on the database file at path and gives back its rows. Raises
// SqliteError on any failure, with the connection closed.
QueryResult queryToLines(const QString& path, const QString& sql);

// Every write below runs in one write transaction ("BEGIN IMMEDIATE"), which
// waits out a short lock of another program (SqliteDatabase::BusyWaitMs).
//
// Runs one statement in a transaction of its own. 1 on success; on failure
// the transaction is rolled back, the box "ERROR" is shown and the result is
// 0. A failure to open the file or to roll back raises SqliteError.
int execStatement(Dialogs& dialogs, const QString& path, const QString& sql);

// The same for several statements in one transaction: all of them or none.
int execStatements(Dialogs& dialogs, const QString& path, const QStringList& sqls);

// The same, showing nothing and raising nothing: 1 on success; 0 on any
// failure, the opening of the file included, with the database's own words
// for it ("database is locked") in reason.
int tryExecStatements(const QString& path, const QStringList& sqls, QString& reason);

// The one box of a write that did not reach the database: "ERROR", with the
// database's reason and what was not written.
void showWriteFailure(Dialogs& dialogs, QWidget* form, const QString& reason, const QString& what);

// The value of a column of a result line with the given column names; the
// name is looked up without regard to case. Empty for an unknown column.
QString fieldOfLine(const QStringList& columns, const QString& line, const QString& columnName);

// A text value for a statement: the quotes doubled, so that the store holds
// exactly the text and no text changes the meaning of the statement.
QString quotedText(const QString& text);
