#pragma once
// The statements and the reading and writing of one pipe type: the 60 rows
// of ex_kanzai for a group and a pipe type.

#include "store/piperow.h"
#include "store/sqliteclasses.h"

#include <QString>

class Dialogs;

// The SELECT of a pipe type.
QString loadStatement(int grp, int kan);
// The UPDATE of row n (1..60) of a pipe type from row, ended by CR LF.
QString saveStatement(const PipeRow& row, int grp, int kan, int n);
// The same statement as the UTF-8 bytes the database parses.
QByteArray saveStatementUtf8(const PipeRow& row, int grp, int kan, int n);

// The loaded columns of the 60 rows of a pipe type as stored, each value by
// its type and bytes: two images are equal exactly when the rows are.
QByteArray storedImage(SqliteDatabase& db, int grp, int kan);

// Fills fields UKEY to FTANKA of the 60 rows from the table, on an open
// connection inside its transaction, and the change lines of what was read
// into saved when it is given. Raises SqliteError when the query fails
// and std::out_of_range when the table holds fewer than 60 rows (the rows
// before the missing one are replaced).
void loadPipeTypeIn(SqliteDatabase& db, int grp, int kan, RowTable& rows,
                    QStringList* saved = nullptr);
// The 60 UPDATEs of rows on an open connection, inside its transaction; the
// statement of row 1 goes to the clipboard of dialogs. Raises
// SqliteError at the first that fails.
void writePipeTypeIn(SqliteDatabase& db, const RowTable& rows, int grp, int kan, Dialogs& dialogs);

enum class SaveOutcome { Saved, ChangedElsewhere };
enum class SaveCheck {
    AgainstLoaded, // nothing is written when the stored rows changed since they were read
    Overwrite      // the user has chosen to write over a change made elsewhere
};

// What keeps the database file at path from being the suite's database, in
// Japanese words for the user: no file, no database, no ex_kanzai or exconf.
// Empty when it is one (or only busy for now). Looks without writing: the
// file is opened read-only and never created.
QString exDatabaseProblem(const QString& path);
