// The 80-bit evaluation against exact integer arithmetic, within the bounds in
// which both must agree: base x factor below 1,000,000 for the elements,
// list x rate / 100 below 100,000,000 for rate prices, and any whole amount
// for the digit rounding.
#include "engine/rounding.h"
#include "store/piperow.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using i128 = __int128;

// Truncating division toward zero, as C++ does for integers.
i128 cutDiv(i128 n, i128 d) {
    return n / d;
}

std::int64_t exactElement(std::int64_t base, std::int64_t factor, std::int64_t d, std::int64_t e) {
    const i128 n = i128(base) * factor * d + i128(e) * 100000000;
    const i128 t = cutDiv(n, i128(1000000000000LL));
    return std::int64_t(t * 10000 * 10000 / d); // d divides 10^7 here
}

std::int64_t exactRate(std::int64_t list, std::int64_t rate, std::int64_t a) {
    const i128 n = i128(list) * rate + i128(a) * 1000000;
    return std::int64_t(cutDiv(n, i128(10000000000LL)) * 10000);
}

std::int64_t exactDigits(std::int64_t xRaw, std::int64_t sRaw, std::int64_t r) {
    const std::int64_t x = xRaw / 10000; // whole
    const std::int64_t k = sRaw / 10000;
    std::int64_t step;
    if (k == 10 || k == 100 || k == 1000) {
        step = k;
    } else if (k == 3 || k == 4) {
        const int len = int(currToStr(Currency::fromRaw(xRaw)).size());
        if (len <= k) return xRaw;
        step = 1;
        for (int i = 0; i < len - k; ++i)
            step *= 10;
    } else {
        return xRaw;
    }
    // cut(x / step + R), with R in ten-thousandths.
    const i128 t = cutDiv(i128(x) * 10000 + i128(r) * step, i128(step) * 10000);
    return std::int64_t(t * step * 10000);
}

TEST(ExactEvaluation, RoundElementMatchesWithinBounds) {
    std::mt19937_64 rng(20261122);
    std::uniform_int_distribution<std::int64_t> factorDist(-300000, 300000); // up to 30
    std::uniform_int_distribution<int> pick(0, 3);
    for (int i = 0; i < 400000; ++i) {
        const std::int64_t factor = factorDist(rng);
        const std::int64_t limit =
            factor == 0 ? 9999999999LL
                        : std::min<std::int64_t>(
                              9999999999LL, (1000000LL * 10000 * 10000) / std::abs(factor) - 1);
        std::uniform_int_distribution<std::int64_t> baseDist(-limit, limit);
        const std::int64_t base = baseDist(rng);
        const std::int64_t d = DigitSteps[std::size_t(pick(rng))].raw;
        const std::int64_t e = FractionSteps[std::size_t(pick(rng) % 3)].raw;
        ASSERT_EQ(roundElement(Currency::fromRaw(base), Currency::fromRaw(factor),
                               Currency::fromRaw(d), Currency::fromRaw(e))
                      .raw,
                  exactElement(base, factor, d, e))
            << "base " << base << " factor " << factor << " D " << d << " E " << e;
    }
}

TEST(ExactEvaluation, RatePriceMatchesWithinBounds) {
    std::mt19937_64 rng(7);
    std::uniform_int_distribution<std::int64_t> rateDist(0, 1500000); // 0 .. 150 per cent
    std::uniform_int_distribution<int> pick(0, 2);
    for (int i = 0; i < 400000; ++i) {
        const std::int64_t rate = rateDist(rng);
        const std::int64_t limit =
            rate == 0 ? 99999999999LL
                      : std::min<std::int64_t>(99999999999LL,
                                               i128(100000000LL) * 10000 * 100 * 10000 / rate - 1);
        std::uniform_int_distribution<std::int64_t> listDist(0, limit);
        const std::int64_t list = listDist(rng);
        const std::int64_t a = FractionSteps[std::size_t(pick(rng))].raw;
        ASSERT_EQ(
            ratePrice(Currency::fromRaw(list), Currency::fromRaw(rate), Currency::fromRaw(a)).raw,
            exactRate(list, rate, a))
            << "list " << list << " rate " << rate << " A " << a;
    }
}

TEST(ExactEvaluation, RoundDigitsMatchesForWholeAmounts) {
    std::mt19937_64 rng(11);
    std::uniform_int_distribution<int> digitsOf(1, 12);
    std::uniform_int_distribution<int> pickS(0, 7), pickR(0, 2);
    for (int i = 0; i < 400000; ++i) {
        std::int64_t top = 1;
        for (int k = digitsOf(rng); k > 0; --k)
            top *= 10;
        std::uniform_int_distribution<std::int64_t> xDist(0, top - 1);
        const std::int64_t x = xDist(rng) * 10000;
        const std::int64_t s = DigitSteps[std::size_t(pickS(rng))].raw;
        const std::int64_t r = FractionSteps[std::size_t(pickR(rng))].raw;
        ASSERT_EQ(roundDigits(Currency::fromRaw(x), Currency::fromRaw(s), Currency::fromRaw(r)).raw,
                  exactDigits(x, s, r))
            << "x " << x << " S " << s << " R " << r;
    }
}

} // namespace
