// Text to Currency and to integer: every number read back from its own text
// gives the value back, and the two readers agree on plain integers.

#include "engine/currency.h"
#include "fuzzcheck.h"

#include <limits>

namespace {

void checkRoundTrip(Currency c) {
    const QString text = currToStr(c);
    // The shortest form: no "+", no trailing zero behind the point.
    FUZZ_CHECK(!text.startsWith(QLatin1Char('+')));
    if (text.contains(QLatin1Char('.'))) {
        FUZZ_CHECK(!text.endsWith(QLatin1Char('0')));
        FUZZ_CHECK(!text.endsWith(QLatin1Char('.')));
    }
    Currency back;
    FUZZ_CHECK(tryStrToCurr(text, back));
    FUZZ_CHECK_EQ(back.raw, c.raw);
    FUZZ_CHECK_EQ(strToCurr(text).raw, c.raw);
    // The formats of the sheet never fail and keep the sign.
    const QString amount = formatAmount(c);
    const QString fixed = formatFixed3(c);
    const QString general = formatGeneral(c);
    FUZZ_CHECK(!amount.isEmpty() && !fixed.isEmpty() && !general.isEmpty());
    if (c.raw > 0) FUZZ_CHECK(!general.startsWith(QLatin1Char('-')));
    // The general form reads back as a number within its rounding.
    Currency g;
    if (general.size() <= 21) {
        FUZZ_CHECK(tryStrToCurr(general, g) ||
                   c.raw > std::numeric_limits<std::int64_t>::max() - 10000 ||
                   c.raw < std::numeric_limits<std::int64_t>::min() + 10000);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    checkRoundTrip(Currency::fromRaw(in.ConsumeIntegral<std::int64_t>()));

    const QString text = in.ConsumeBool() ? fuzzUtf8(in, 64) : fuzzText(in, 64);
    Currency c;
    const bool ok = tryStrToCurr(text, c);
    bool threw = false;
    try {
        const Currency d = strToCurr(text);
        FUZZ_CHECK(ok);
        FUZZ_CHECK_EQ(d.raw, c.raw);
    } catch (const ConvertError& e) {
        threw = true;
        FUZZ_CHECK(!e.message().isEmpty());
    }
    FUZZ_CHECK(ok != threw);
    FUZZ_CHECK_EQ(strToCurrDef(text, Currency::fromRaw(-7)).raw, ok ? c.raw : std::int64_t(-7));
    if (ok) checkRoundTrip(c);

    // A plain integer is a number to both readers, with the same value.
    const int sentinel = std::numeric_limits<int>::min();
    const int v = strToIntDef(text, sentinel);
    if (v != sentinel) {
        FUZZ_CHECK(ok);
        FUZZ_CHECK_EQ(c.raw, std::int64_t(v) * Currency::Scale);
        FUZZ_CHECK_EQ(strToIntDef(QString::number(v), sentinel), v);
    }
    return 0;
}
