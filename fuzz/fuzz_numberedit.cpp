// The number box: typed characters and pasted text go through its filters
// under any setting. What stands in the box afterwards is only what the
// filters let through (digits, one point, one sign in front, the box's own
// separators), and leaving the box either shows its value or raises the
// conversion error, never anything else.

#include "controls/numbereditcore.h"
#include "fuzzcheck.h"

namespace {

bool isHexDigit(QChar c) {
    const ushort k = c.unicode();
    return (k >= '0' && k <= '9') || (k >= 'A' && k <= 'F') || (k >= 'a' && k <= 'f');
}

// Checks what the filters allow; the text written by the box itself (after
// leaving it) may carry its separators and an exponent-free decimal form.
void checkFiltered(const NumberEditCore& e) {
    const QString t = e.numberText();
    int points = 0;
    for (int i = 0; i < int(t.size()); ++i) {
        const QChar c = t[i];
        if (c == QLatin1Char('+') || c == QLatin1Char('-')) {
            FUZZ_CHECK(i == 0);
            continue;
        }
        if (e.numberType() == ntHex) {
            FUZZ_CHECK(isHexDigit(c));
            continue;
        }
        if (c == QLatin1Char('.')) {
            ++points;
            continue;
        }
        if (c == QLatin1Char(',')) {
            FUZZ_CHECK(e.comma());
            continue;
        }
        FUZZ_CHECK(c >= QLatin1Char('0') && c <= QLatin1Char('9'));
    }
    FUZZ_CHECK(points <= 1);
    FUZZ_CHECK(e.selStart() >= 0 && e.selStart() <= int(t.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    NumberEditCore e;
    e.setNumberType(in.ConsumeBool() ? ntDecimal : ntHex);
    e.setComma(in.ConsumeBool());
    e.setFigure(in.ConsumeIntegralInRange(-1, 6));
    e.setFixed(in.ConsumeBool());
    e.setValidMinus(in.ConsumeBool());
    e.setMaxIntLength(in.ConsumeIntegralInRange(0, 12));
    e.setRoundMode(RoundMode(in.ConsumeIntegralInRange(0, 2)));
    e.setZeroVisible(in.ConsumeBool());
    e.setAllowKeys(true);
    if (in.ConsumeBool()) {
        e.setMin(Extended(in.ConsumeIntegralInRange(-100000, 0)));
        e.setMax(Extended(in.ConsumeIntegralInRange(0, 100000)));
        e.setLimit(true);
    }
    e.setNumberText(QString());
    e.doEnter();

    try {
        const int steps = in.ConsumeIntegralInRange(1, 24);
        for (int s = 0; s < steps && in.remaining_bytes() > 0; ++s) {
            switch (in.ConsumeIntegralInRange(0, 5)) {
            case 0:
            case 1: { // typing
                const QString typed = in.ConsumeBool() ? fuzzUtf8(in, 8) : fuzzText(in, 4);
                e.typeText(typed);
                break;
            }
            case 2: // paste
                e.pasteText(in.ConsumeBool() ? fuzzUtf8(in, 40) : fuzzText(in, 20));
                break;
            case 3: { // caret and selection
                const int len = int(e.numberText().size());
                e.setSelStart(in.ConsumeIntegralInRange(0, len));
                e.setSelLength(in.ConsumeIntegralInRange(0, len - e.selStart()));
                break;
            }
            case 4: { // arrow keys
                e.arrowKey(in.ConsumeBool() ? adUp : adDown);
                break;
            }
            default: // leave the box and come back
                e.doExit();
                e.doEnter();
                break;
            }
            if (e.limit() && e.limitOptions() == LimitBoth) {
                FUZZ_CHECK(e.value() >= e.min());
                FUZZ_CHECK(e.value() <= e.max());
            }
            checkFiltered(e);
        }
        e.doExit();
        checkFiltered(e);
        // What the box shows after leaving it reads back as its value.
        QString shown = e.numberText();
        if (!shown.isEmpty()) FUZZ_CHECK(e.parseNumberText(shown) == e.value());
    } catch (const ConvertError&) {
        // Text the filter lets through but that is no number in range: the
        // platform's conversion error, as the box documents.
    }
    return 0;
}
