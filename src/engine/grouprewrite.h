#pragma once
// The group rewrites: the two statements that carry what the form shows to
// the option rows in the table, and the recalculation of a whole group that
// follows them. No widgets: the form runs RecalculateGroup on its worker
// thread and shows the progress it reports.

#include "store/ex_general.h"

#include <QString>

#include <functional>

class QWidget;

constexpr int GroupPipeTypes = 20; // KAN 1 to 20 of a group
constexpr int GroupCalcRows = 59;  // rows calculated in each, 1 to 59
constexpr int GroupRewriteSteps = GroupPipeTypes * GroupCalcRows;

// The options of optionRow (row 60) for the option rows of all 20 pipe types
// of group grp: twelve assignments, GROSS not among them.
QString OptionChangeStatement(const Fuzokurecordtypex& optionRow, int grp);

// The two base labour costs for every option row of every group (UKEY 60).
QString LabourChangeStatement(Currency cost, Currency submitted);

// The progress text before row r (1..59) of pipe type i + 1 (i 0..19):
// "データ更新中:" kind "-" i "-" r "/" goods.
QString GroupProgressText(int kind, int i, int r, const QString& goods);

// Called before each CalcRow with the progress text and the step, 1 to
// GroupRewriteSteps.
using GroupProgress = std::function<void(const QString& text, int step)>;

// One pipe type of a group rewrite, in one write transaction: load it, call
// beforeRow(r) and calculate rows 1 to 59, write its 60 rows. Another program
// sees it wholly old or wholly new. Raises ESQLiteException (nothing of the
// pipe type written) or what the calculation raises.
void RecalculatePipeType(int grp, int kan, const std::function<void(int r)>& beforeRow);

// RecalculatePipeType for the 20 pipe types of group grp, reporting each row.
// Then the rows of pipe type currentKan come back into KanzaiRows, as
// stored, with their computed fields, and SavedLines and StoredState as
// loaded.
//
// Uses KanzaiRows, SavedLines and StoredState; the caller makes sure nothing
// else touches them while it runs. A failure ends the run with an exception
// that says at which pipe type it stopped (the ones before it are rewritten,
// it and those after it are as they were), after the rows of pipe type
// currentKan have been brought back as far as the table allows (else the
// rows as they were at the start), so that no later save writes another
// pipe type's rows over it.
void RecalculateGroup(int kind, int grp, int currentKan, const GroupProgress& progress);
