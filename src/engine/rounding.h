#pragma once
// The four rounding operations of the composite prices. They work on raw
// Currency integers in 80-bit extended arithmetic (x86_64 long double),
// with a fixed order of operations: every printed price depends on it.

#include "engine/currency.h"

#include <stdexcept>

// An arithmetic result that does not fit: a Cut or store beyond 64 bits
// (floating-point error), or a power or product of the significant-digit
// rounding beyond 32/64 bits (integer overflow).
class MathError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
class InvalidOp : public MathError {
public:
    InvalidOp();
};
class IntOverflow : public MathError {
public:
    IntOverflow();
};

using Extended = long double;
static_assert(sizeof(Extended) >= 10, "the price rules need 80-bit extended precision");

// Truncation toward zero into a signed 64-bit integer.
std::int64_t cut(Extended x);
// Round to nearest, ties to even, into a signed 64-bit integer.
std::int64_t store(Extended x);

// cut(base x factor x D + E) / D. baseRaw may be an exact sum of raws.
Currency roundElement(__int128 baseRaw, Currency factor, Currency digits, Currency fraction);
inline Currency roundElement(Currency base, Currency factor, Currency digits, Currency fraction) {
    return roundElement(__int128(base.raw), factor, digits, fraction);
}
// cut(sum + E), a whole number.
Currency wholeAmount(__int128 sumRaw, Currency fraction);
// cut(list x rate / 100 + A), a whole number.
Currency ratePrice(Currency list, Currency rate, Currency fraction);
// x rounded to the step (10, 100, 1000) or the significant digits (3, 4)
// that S selects; any other S leaves x.
Currency roundDigits(Currency x, Currency digits, Currency fraction);
