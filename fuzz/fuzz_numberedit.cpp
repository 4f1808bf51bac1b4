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
    const QString t = e.Text();
    int points = 0;
    for (int i = 0; i < int(t.size()); ++i) {
        const QChar c = t[i];
        if (c == QLatin1Char('+') || c == QLatin1Char('-')) {
            FUZZ_CHECK(i == 0);
            continue;
        }
        if (e.NumberType() == ntHex) {
            FUZZ_CHECK(isHexDigit(c));
            continue;
        }
        if (c == QLatin1Char('.')) {
            ++points;
            continue;
        }
        if (c == QLatin1Char(',')) {
            FUZZ_CHECK(e.Comma());
            continue;
        }
        FUZZ_CHECK(c >= QLatin1Char('0') && c <= QLatin1Char('9'));
    }
    FUZZ_CHECK(points <= 1);
    FUZZ_CHECK(e.SelStart() >= 0 && e.SelStart() <= int(t.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    NumberEditCore e;
    e.SetNumberType(in.ConsumeBool() ? ntDecimal : ntHex);
    e.SetComma(in.ConsumeBool());
    e.SetFigure(in.ConsumeIntegralInRange(-1, 6));
    e.SetFixed(in.ConsumeBool());
    e.SetValidMinus(in.ConsumeBool());
    e.SetMaxIntLength(in.ConsumeIntegralInRange(0, 12));
    e.SetRoundMode(TRoundMode(in.ConsumeIntegralInRange(0, 2)));
    e.SetZeroVisible(in.ConsumeBool());
    e.SetAllowKeys(true);
    if (in.ConsumeBool()) {
        e.SetMin(Extended(in.ConsumeIntegralInRange(-100000, 0)));
        e.SetMax(Extended(in.ConsumeIntegralInRange(0, 100000)));
        e.SetLimit(true);
    }
    e.SetText(QString());
    e.DoEnter();

    try {
        const int steps = in.ConsumeIntegralInRange(1, 24);
        for (int s = 0; s < steps && in.remaining_bytes() > 0; ++s) {
            switch (in.ConsumeIntegralInRange(0, 5)) {
            case 0:
            case 1: { // typing
                const QString typed = in.ConsumeBool() ? FuzzUtf8(in, 8) : FuzzText(in, 4);
                e.TypeText(typed);
                break;
            }
            case 2: // paste
                e.PasteText(in.ConsumeBool() ? FuzzUtf8(in, 40) : FuzzText(in, 20));
                break;
            case 3: { // caret and selection
                const int len = int(e.Text().size());
                e.SetSelStart(in.ConsumeIntegralInRange(0, len));
                e.SetSelLength(in.ConsumeIntegralInRange(0, len - e.SelStart()));
                break;
            }
            case 4: { // arrow keys
                int key = in.ConsumeBool() ? 38 : 40;
                e.KeyDown(key, ShiftState{});
                break;
            }
            default: // leave the box and come back
                e.DoExit();
                e.DoEnter();
                break;
            }
            if (e.Limit() && e.LimitOptions() == LimitBoth) {
                FUZZ_CHECK(e.Value() >= e.Min());
                FUZZ_CHECK(e.Value() <= e.Max());
            }
            checkFiltered(e);
        }
        e.DoExit();
        checkFiltered(e);
        // What the box shows after leaving it reads back as its value.
        QString shown = e.Text();
        if (!shown.isEmpty()) FUZZ_CHECK(e.ParseNumberText(shown) == e.Value());
    } catch (const ConvertError&) {
        // Text the filter lets through but that is no number in range: the
        // platform's conversion error, as the box documents.
    }
    return 0;
}
