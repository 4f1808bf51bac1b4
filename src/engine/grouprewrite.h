#pragma once
// The group rewrites: the two statements that carry what the form shows to
// the option rows in the table, and the recalculation of a whole group that
// follows them. No widgets: the form runs RecalculateGroup on its worker
// thread and shows the progress it reports.

#include "store/piperow.h"

#include <QString>

#include <functional>

class Dialogs;
class SqliteDatabase;

constexpr int GroupPipeTypes = 20; // KAN 1 to 20 of a group
constexpr int GroupCalcRows = 59;  // rows calculated in each, 1 to 59
constexpr int GroupRewriteSteps = GroupPipeTypes * GroupCalcRows;

// The options of optionRow (row 60) for the option rows of all 20 pipe types
// of group grp: twelve assignments, submittedPrice not among them.
QString optionChangeStatement(const PipeRow& optionRow, int grp);

// The two base labour costs for every option row of every group (key 60).
QString labourChangeStatement(Currency cost, Currency submitted);

// The progress text before row r (1..59) of pipe type i + 1 (i 0..19):
// "データ更新中:" kind "-" i "-" r "/" goods.
QString groupProgressText(int kind, int i, int r, const QString& goods);

// Called before each CalcRow with the progress text and the step, 1 to
// GroupRewriteSteps.
using GroupProgress = std::function<void(const QString& text, int step)>;

// One pipe type of a group rewrite, in one write transaction on db: load it
// into rows, call beforeRow(r) and calculate rows 1
// to 59, write its 60 rows (row 1's statement to the clipboard of dialogs).
// Another program sees it wholly old or wholly new. Raises SqliteError
// (nothing of the pipe type written) or what the calculation raises.
void recalculatePipeType(SqliteDatabase& db, RowTable& rows, int grp, int kan, Dialogs& dialogs,
                         const std::function<void(int r)>& beforeRow);

// recalculatePipeType for the 20 pipe types of group grp, reporting each row.
// Shares nothing with the pipe type on the sheet: it runs on a worker thread
// with its own rows and connections. A failure ends the run with an exception
// that says at which pipe type it stopped (the ones before it are rewritten,
// it and those after it are as they were).
void runGroupRewrite(const QString& path, Dialogs& dialogs, int kind, int grp,
                     const GroupProgress& progress);
