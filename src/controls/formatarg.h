#pragma once
// The format call of the desktop runtime for one number: "%[-][width][.prec]type"
// with d, u, x for integers and e, f, g, n, m for floats, "%%" for a percent
// sign, other text copied. A specifier that does not fit the argument's
// kind, a string or pointer specifier, or a second specifier raises
// ControlError.

#include "controls/controlerrors.h"

#include <QString>

#include <cstdint>

QString formatFloatArg(const QString& format, long double value);
QString formatIntArg(const QString& format, std::int64_t value);
