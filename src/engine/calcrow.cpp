#include "engine/calcrow.h"

#include "engine/rounding.h"

namespace {

constexpr Currency One = Currency::FromInt(1);

struct Side {
    Currency unitPrice;
    Currency labour;
    Currency* total;
    std::array<Currency, 7>* elements;
};

} // namespace

void CalcRowWith(PipeRow& r, PipeTypeOptions o) {
    if (o.RateOn() == One) {
        r.submittedPrice = RoundDigits(RatePrice(r.listPrice, o.RateSubmitted(), o.UnitFraction()),
                                       o.UnitDigits(), o.UnitFraction());
        r.costPrice = RoundDigits(RatePrice(r.listPrice, o.RateCost(), o.UnitFraction()),
                                  o.UnitDigits(), o.UnitFraction());
    }
    if (o.AdoptedDigits().IsZero()) o.AdoptedDigits() = One;
    const Currency d = o.ElementDigits().IsZero() ? One : o.ElementDigits();
    const Currency e = o.ElementFraction();
    const bool refrigerant = o.ModeFlag() == 1;
    const bool otherOnLabour = o.OtherMethod() == 0;

    const Side sides[2] = {
        {r.submittedPrice, o.LabourSubmitted(), &r.submittedUnitPrice, &r.submittedAmounts},
        {r.costPrice, o.LabourCost(), &r.costUnitPrice, &r.costAmounts}};
    for (int s = 0; s < 2; ++s) {
        const Side& side = sides[s];
        const Currency w = side.unitPrice, p = side.labour;
        const Currency c1 = RoundElement(w, r.factor(1), d, e);
        const Currency c2 = RoundElement(w, r.factor(2), d, e);
        const Currency c3 = RoundElement(w, r.factor(3), d, e);
        const Currency c5 = RoundElement(p, r.factor(5), d, e);
        Currency c4, c6;
        if (refrigerant) {
            c4 = RoundElement(__int128(c1.raw) + c2.raw + c3.raw, r.factor(4), d, e);
        } else {
            c4 = RoundElement(w, r.factor(4), d, e);
            c6 = RoundElement(p, r.factor(6), d, e);
        }
        const __int128 base7 = otherOnLabour
                                   ? __int128(c5.raw) + c6.raw
                                   : __int128(c1.raw) + c2.raw + c3.raw + c4.raw + c5.raw + c6.raw;
        const Currency c7 = RoundElement(base7, r.factor(7), d, e);
        const Currency total =
            WholeAmount(__int128(c1.raw) + c2.raw + c3.raw + c4.raw + c5.raw + c6.raw + c7.raw, e);
        if (s == 0) r.adoptedUnitPrice = RoundDigits(total, o.AdoptedDigits(), o.AdoptedFraction());
        *side.total = total;
        *side.elements = {c1, c2, c3, c4, c5, c6, c7};
    }
}
