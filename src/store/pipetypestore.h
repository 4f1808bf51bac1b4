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
// of its own; a failed row shows "ERROR" and the loop goes on. Puts the
// statement of row 1 on the clipboard. SavedLines takes CurrentLines. With
// showMessage 1 it closes with "保存しました。". ctg is ignored.
void SavePipeType(QWidget* form, int ctg, int grp, int showMessage, int kan);
