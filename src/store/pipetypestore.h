#pragma once
// Loading and saving one pipe type: the 60 rows of ex_kanzai for a group and
// a pipe type, to and from KanzaiRows, on ExDatabasePath.

#include "store/ex_general.h"

#include <QString>

class QWidget;

// The SELECT of a pipe type.
QString LoadStatement(int grp, int kan);
// The UPDATE of row n (1..60) of a pipe type from row, ended by CR LF.
QString SaveStatement(const Fuzokurecordtypex& row, int grp, int kan, int n);

// Fills fields UKEY to FTANKA of the 60 rows of KanzaiRows and rebuilds
// SavedLines. ctg is ignored: the statement always says 1. Raises
// ESQLiteException when the query fails and std::out_of_range when the store
// gives fewer than 60 rows (the rows before the missing one are replaced).
void LoadPipeType(int ctg, int grp, int kan);

// Writes the 60 rows of KanzaiRows, one UPDATE a row, each in a transaction
// of its own, and puts the statement of row 1 on the clipboard. ctg is
// ignored. When every row was written: SavedLines takes CurrentLines, with
// showMessage 1 "保存しました。" is shown, and the result is true. When any row
// failed (the loop goes on over the others): one box "ERROR" with the
// database's reason, whatever showMessage is, SavedLines unchanged, false.
bool SavePipeType(QWidget* form, int ctg, int grp, int showMessage, int kan);

// What keeps the database file at path from being the suite's database, in
// Japanese words for the user: no file, no database, no ex_kanzai or exconf.
// Empty when it is one (or only busy for now). Looks without writing: the
// file is opened read-only and never created.
QString ExDatabaseProblem(const QString& path);
