#pragma once

#include "store/ex_general.h"

// Fills the computed fields of one row of KanzaiRows (1..60; 60 is left
// alone) from its figures and the options of row 60. May write 1 into
// AdoptedDigits when it is 0. Raises EMathError on overflow, leaving the
// row as far as it had come.
void CalcRow(int row);

// The same on any row with any option block.
void CalcRowWith(Fuzokurecordtypex& row, KanzaiOptions options);

// Rows 1..59 of KanzaiRows.
void CalcAllRows();
