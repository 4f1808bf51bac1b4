// The 80-bit evaluation against exact integer arithmetic, within the bounds in which both must
// agree: base x factor below 1,000,000 for the elements, list x rate / 100 below 100,000,000
// for rate prices. Integer division cuts toward zero, as the rules do. The digit rounding is
// checked on its worked tables.
#include "engine/rounding.h"
#include "store/piperow.h"
#include "support/testing.h"

#include <random>

namespace {

using i128 = __int128;
using std::int64_t;
using Dist = std::uniform_int_distribution<int64_t>;

Currency raw(int64_t r) {
    return Currency::fromRaw(r);
}

TEST(ExactEvaluation, RoundElementAndRatePriceMatchWithinBounds) {
    std::mt19937_64 rng(20261122);
    Dist factorDist(-300000, 300000), rateDist(0, 1500000); // up to 30; 0 .. 150 per cent
    std::uniform_int_distribution<int> pick(0, 3);
    for (int i = 0; i < 400000; ++i) {
        const int64_t factor = factorDist(rng), rate = rateDist(rng);
        const int64_t limit = std::min<int64_t>(
            9999999999LL, factor ? (1000000LL * 10000 * 10000) / std::abs(factor) - 1 : 1LL << 62);
        const int64_t base = Dist(-limit, limit)(rng);
        const int64_t d = DigitSteps[std::size_t(pick(rng))].raw;
        const int64_t e = FractionSteps[std::size_t(pick(rng) % 3)].raw;
        const i128 t = (i128(base) * factor * d + i128(e) * 100000000) / i128(1000000000000LL);
        ASSERT_EQ(roundElement(raw(base), raw(factor), raw(d), raw(e)).raw,
                  int64_t(t * 10000 * 10000 / d)) // d divides 10^7 here
            << "base " << base << " factor " << factor << " D " << d << " E " << e;
        const int64_t listLimit = std::min<int64_t>(
            99999999999LL, rate ? i128(100000000LL) * 10000 * 100 * 10000 / rate - 1 : 1LL << 62);
        const int64_t list = Dist(0, listLimit)(rng);
        ASSERT_EQ(ratePrice(raw(list), raw(rate), raw(e)).raw,
                  int64_t((i128(list) * rate + i128(e) * 1000000) / i128(10000000000LL) * 10000))
            << "list " << list << " rate " << rate << " A " << e;
    }
}

} // namespace
