#pragma once

#include "store/piperow.h"

// Fills the computed fields of a row (1..59) from its figures and the
// options of row 60. May write 1 into adoptedDigits when it is 0. Raises
// MathError on overflow, leaving the row as far as it had come.
void calcRowWith(PipeRow& row, PipeTypeOptions options);
