#pragma once
// Row logic of the edit commands: which fields a copy or a paste carries, the
// detail spreading and the two clearings. Works on any RowTable, so the
// commands of the form only say which tables and which tab.

#include "store/piperow.h"

// The sets of fields that a copy or a paste carries.
enum class FieldSet {
    All, // goods, size, kind, modeFlag, unit, costPrice, submittedPrice, listPrice, factors 1-7,
         // costUnitPrice, submittedUnitPrice, adoptedUnitPrice
    AllButCostUnitPrice, // All, the target's costUnitPrice left alone (the detail paste of All)
    Prices,              // costPrice, submittedPrice, listPrice
    Labour,              // factors 1-7
    Pipefitter,          // factor 5
};

// Copies the fields of set from one row to another. Text is copied up to its
// byte width (goods 80, kind 40, size 6, unit 4). key, sortOrder, otherMethod and the
// CALC amounts are in no set and stay as the target has them.
void copyFieldSet(PipeRow& to, const PipeRow& from, FieldSet set);

// Row r of from to row r of to, for rows 1 to 60 (the option row included).
void copyFieldSet(RowTable& to, const RowTable& from, FieldSet set);

// The first row of detail tab (0..3): rows tab*15+1 .. tab*15+15 belong to it.
int detailBase(int tab);

// Detail copy: row tab*15+i of rows to row i of buffer, i from 1 to 15.
void copyDetailOut(RowTable& buffer, const RowTable& rows, int tab, FieldSet set);

// Detail paste: row i of buffer to row tab*15+i of rows, i from 1 to 15. The
// option row is never written: it keeps the options of the pipe type.
void pasteDetailIn(RowTable& rows, const RowTable& buffer, int tab, FieldSet set);

// The first detail spread over the other three: for k from 1 to 3 and i from
// 1 to 15, row k*15+i takes modeFlag, unit, listPrice, costPrice, submittedPrice, factors 1-7,
// submittedUnitPrice, costUnitPrice and adoptedUnitPrice of row i. goods, size and kind stay. The
// option row is left out.
void spreadFirstDetail(RowTable& rows);

// Prices spread from the buffer: for k from 1 to 3 and i from 1 to 15, row
// k*15+i takes listPrice, costPrice and submittedPrice of row i of buffer. The option row is
// left out.
void spreadBufferPrices(RowTable& rows, const RowTable& buffer);

// Clearing a pipe type, rows 1 to 60: goods, size, kind and unit empty; modeFlag
// and every field from costPrice to the last CALC amount 0. key, sortOrder and otherMethod
// stay.
void clearPipeTypeRows(RowTable& rows);

// Clearing a detail, rows tab*15+1 .. tab*15+15: factors 1-7, costUnitPrice, submittedUnitPrice,
// adoptedUnitPrice and the CALC amounts 0. Sizes, texts and material prices stay. The
// option row is left out.
void clearDetailRows(RowTable& rows, int tab);
