#pragma once
// Loading and saving one pipe type: the 60 rows of ex_kanzai for a group and
// a pipe type, to and from KanzaiRows, on ExDatabasePath.

#include "store/ex_general.h"
#include "store/sqliteclasses.h"

#include <QString>

class Dialogs;
class QWidget;

// The SELECT of a pipe type.
QString LoadStatement(int grp, int kan);
// The UPDATE of row n (1..60) of a pipe type from row, ended by CR LF.
QString SaveStatement(const Fuzokurecordtypex& row, int grp, int kan, int n);

// The loaded columns of the 60 rows as the database held them at the last
// load or save of this program: a save compares them with what is stored,
// to find a change made elsewhere in between.
extern QByteArray StoredState;

// Fills fields UKEY to FTANKA of the 60 rows of KanzaiRows and rebuilds
// SavedLines and StoredState. ctg is ignored: the statement always says 1.
// Raises ESQLiteException when the query fails and std::out_of_range when the
// store gives fewer than 60 rows (the rows before the missing one are
// replaced, StoredState stays).
void LoadPipeType(int ctg, int grp, int kan);
// The rows of a pipe type into rows, on an open connection inside its
// transaction; nothing else changes.
void LoadPipeTypeIn(SqliteDatabase& db, int grp, int kan, RowTable& rows);
// The 60 UPDATEs of rows on an open connection, inside its transaction; the
// statement of row 1 goes to the clipboard of dialogs. Raises
// ESQLiteException at the first that fails.
void WritePipeTypeIn(SqliteDatabase& db, const RowTable& rows, int grp, int kan, Dialogs& dialogs);

enum class SaveOutcome { Saved, Failed, ChangedElsewhere };
enum class SaveCheck {
    AgainstLoaded, // nothing is written when the stored rows are no longer StoredState
    Overwrite      // the user has chosen to write over a change made elsewhere
};
// The words of a failed save: nothing was written.
extern const QString NotSavedText;

// Writes the 60 rows of KanzaiRows in one write transaction, all or nothing,
// and puts the statement of row 1 on the clipboard. ctg is ignored.
// - Saved: SavedLines takes CurrentLines, StoredState what is stored now;
//   with showMessage 1 "保存しました。" is shown.
// - ChangedElsewhere: the stored rows differ from StoredState (another
//   program has changed the pipe type since it was loaded); nothing is
//   written or shown.
// - Failed: nothing is written; one box "ERROR" with the database's reason,
//   whatever showMessage is. SavedLines stays, so the question comes again.
SaveOutcome SavePipeType(QWidget* form, int ctg, int grp, int showMessage, int kan,
                         SaveCheck check = SaveCheck::AgainstLoaded);

// What keeps the database file at path from being the suite's database, in
// Japanese words for the user: no file, no database, no ex_kanzai or exconf.
// Empty when it is one (or only busy for now). Looks without writing: the
// file is opened read-only and never created.
QString ExDatabaseProblem(const QString& path);
