#pragma once
// Row logic of the edit commands: which fields a copy or a paste carries, the
// detail spreading and the two clearings. Works on any RowTable, so the
// commands of the form only say which tables and which tab.

#include "store/ex_general.h"

// The sets of fields that a copy or a paste carries.
enum class FieldSet {
    All,          // GOODS, SIZE, KIND, FLAG, CI, NET, GROSS, TEIKA, DATA1-7, NTANKA, GTANKA, FTANKA
    AllButNTANKA, // All, the target's NTANKA left alone (the detail paste of All)
    Prices,       // NET, GROSS, TEIKA
    Labour,       // DATA1-7
    Pipefitter,   // DATA5
};

// Copies the fields of set from one row to another. Text is copied up to its
// byte width (GOODS 80, KIND 40, SIZE 6, CI 4). UKEY, SORT, YOSAN and the
// CALC amounts are in no set and stay as the target has them.
void CopyFieldSet(Fuzokurecordtypex& to, const Fuzokurecordtypex& from, FieldSet set);

// Row r of from to row r of to, for rows 1 to 60 (the option row included).
void CopyWholeTable(RowTable& to, const RowTable& from, FieldSet set);

// The first row of detail tab (0..3): rows tab*15+1 .. tab*15+15 belong to it.
int DetailBase(int tab);

// Detail copy: row tab*15+i of rows to row i of buffer, i from 1 to 15.
void CopyDetailOut(RowTable& buffer, const RowTable& rows, int tab, FieldSet set);

// Detail paste: row i of buffer to row tab*15+i of rows, i from 1 to 15. The
// option row is never written: it keeps the options of the pipe type.
void PasteDetailIn(RowTable& rows, const RowTable& buffer, int tab, FieldSet set);

// The first detail spread over the other three: for k from 1 to 3 and i from
// 1 to 15, row k*15+i takes FLAG, CI, TEIKA, NET, GROSS, DATA1-7, GTANKA,
// NTANKA and FTANKA of row i. GOODS, SIZE and KIND stay. The option row is
// left out.
void SpreadFirstDetail(RowTable& rows);

// Prices spread from the buffer: for k from 1 to 3 and i from 1 to 15, row
// k*15+i takes TEIKA, NET and GROSS of row i of buffer. The option row is
// left out.
void SpreadBufferPrices(RowTable& rows, const RowTable& buffer);

// Clearing a pipe type, rows 1 to 60: GOODS, SIZE, KIND and CI empty; FLAG
// and every field from NET to the last CALC amount 0. UKEY, SORT and YOSAN
// stay.
void ClearPipeTypeRows(RowTable& rows);

// Clearing a detail, rows tab*15+1 .. tab*15+15: DATA1-7, NTANKA, GTANKA,
// FTANKA and the CALC amounts 0. Sizes, texts and material prices stay. The
// option row is left out.
void ClearDetailRows(RowTable& rows, int tab);
