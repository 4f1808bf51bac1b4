#include "engine/rounding.h"

#include <cmath>
#include <limits>

InvalidOp::InvalidOp() : MathError("浮動小数点演算が無効です（計算結果が大きすぎます）。") {}
IntOverflow::IntOverflow() : MathError("整数オーバーフローです（計算結果が大きすぎます）。") {}

namespace {
constexpr Extended Two63 = 9223372036854775808.0L; // exact in the 64-bit significand
constexpr Extended E4 = 10000.0L;
constexpr Extended E8 = 100000000.0L;
constexpr Extended E12 = 1000000000000.0L;

Extended load(__int128 v) {
    return static_cast<Extended>(v);
}
Extended load(std::int64_t v) {
    return static_cast<Extended>(v);
}
} // namespace

std::int64_t cut(Extended x) {
    // trunc(x) fits when -2^63 - 1 < x < 2^63; NaN fails both tests.
    if (!(x < Two63 && x > -Two63 - 1.0L)) throw InvalidOp();
    return static_cast<std::int64_t>(x);
}

std::int64_t store(Extended x) {
    const Extended r = std::rint(x); // the default mode: nearest, ties to even
    if (!(r < Two63 && r >= -Two63)) throw InvalidOp();
    return static_cast<std::int64_t>(r);
}

Currency roundElement(__int128 baseRaw, Currency factor, Currency digits, Currency fraction) {
    Extended p = load(baseRaw) * load(factor.raw);
    p = p * load(digits.raw);
    const Extended n = p + load(fraction.raw) * E8;
    const std::int64_t t = cut(n / E12);
    return Currency::fromRaw(store(load(t) / load(digits.raw) * E8));
}

Currency wholeAmount(__int128 sumRaw, Currency fraction) {
    const Extended s = load(sumRaw) + load(fraction.raw);
    const std::int64_t t = cut(s / E4);
    return Currency::fromRaw(store(load(t) * E4));
}

Currency ratePrice(Currency list, Currency rate, Currency fraction) {
    Extended p = load(list.raw) * load(rate.raw);
    p = p / 100.0L;
    const Extended n = p + load(fraction.raw) * E4;
    const std::int64_t t = cut(n / E8);
    return Currency::fromRaw(store(load(t) * E4));
}

namespace {

Currency roundToStep(Currency x, Currency step, Currency fraction) {
    Extended q = load(x.raw) / load(step.raw);
    q = q * E4;
    q = q + load(fraction.raw);
    const std::int64_t t = cut(q / E4);
    return Currency::fromRaw(store(load(t) * load(step.raw)));
}

// Characters of the shortest decimal text of x (currToStr), sign and point
// included, counted without building the text.
int textLength(Currency x) {
    std::uint64_t mag = x.raw < 0 ? std::uint64_t(0) - std::uint64_t(x.raw) : std::uint64_t(x.raw);
    std::uint64_t whole = mag / 10000, frac = mag % 10000;
    int len = x.raw < 0 ? 1 : 0;
    do {
        ++len;
        whole /= 10;
    } while (whole != 0);
    if (frac != 0) {
        int fracDigits = 4;
        while (frac % 10 == 0) {
            frac /= 10;
            --fracDigits;
        }
        len += 1 + fracDigits;
    }
    return len;
}

Currency roundToSignificant(Currency x, Currency digits, int k, Currency fraction) {
    const int len = textLength(x);
    if (Extended(len) * E4 <= load(digits.raw)) return x;
    const int n = len - k;
    std::int32_t m = 1;
    for (int i = 0; i < n; ++i)
        if (__builtin_mul_overflow(m, 10, &m)) throw IntOverflow();
    const std::int64_t t = cut((load(x.raw) / load(std::int64_t(m)) + load(fraction.raw)) / E4);
    std::int64_t big;
    if (__builtin_mul_overflow(t, std::int64_t(m), &big)) throw IntOverflow();
    return Currency::fromRaw(store(load(big) * E4));
}

} // namespace

Currency roundDigits(Currency x, Currency digits, Currency fraction) {
    const std::int64_t k = cut(load(digits.raw) / E4);
    switch (k) {
    case 10:
    case 100:
    case 1000:
        return roundToStep(x, digits, fraction);
    case 3:
    case 4:
        return roundToSignificant(x, digits, int(k), fraction);
    default:
        return x;
    }
}
