#include "engine/calcrow.h"

#include "engine/rounding.h"

namespace {

constexpr Currency One = Currency::fromInt(1);

struct Side {
    Currency unitPrice;
    Currency labour;
    Currency* total;
    std::array<Currency, 7>* elements;
};

} // namespace

void calcRowWith(PipeRow& r, PipeTypeOptions o) {
    if (o.rateOn() == One) {
        r.submittedPrice = roundDigits(ratePrice(r.listPrice, o.rateSubmitted(), o.unitFraction()),
                                       o.unitDigits(), o.unitFraction());
        r.costPrice = roundDigits(ratePrice(r.listPrice, o.rateCost(), o.unitFraction()),
                                  o.unitDigits(), o.unitFraction());
    }
    if (o.adoptedDigits().isZero()) o.adoptedDigits() = One;
    const Currency d = o.elementDigits().isZero() ? One : o.elementDigits();
    const Currency e = o.elementFraction();
    const bool refrigerant = o.modeFlag() == 1;
    const bool otherOnLabour = o.otherMethod() == 0;

    const Side sides[2] = {
        {r.submittedPrice, o.labourSubmitted(), &r.submittedUnitPrice, &r.submittedAmounts},
        {r.costPrice, o.labourCost(), &r.costUnitPrice, &r.costAmounts}};
    for (int s = 0; s < 2; ++s) {
        const Side& side = sides[s];
        const Currency w = side.unitPrice, p = side.labour;
        const Currency c1 = roundElement(w, r.factor(1), d, e);
        const Currency c2 = roundElement(w, r.factor(2), d, e);
        const Currency c3 = roundElement(w, r.factor(3), d, e);
        const Currency c5 = roundElement(p, r.factor(5), d, e);
        Currency c4, c6;
        if (refrigerant) {
            c4 = roundElement(__int128(c1.raw) + c2.raw + c3.raw, r.factor(4), d, e);
        } else {
            c4 = roundElement(w, r.factor(4), d, e);
            c6 = roundElement(p, r.factor(6), d, e);
        }
        const __int128 base7 = otherOnLabour
                                   ? __int128(c5.raw) + c6.raw
                                   : __int128(c1.raw) + c2.raw + c3.raw + c4.raw + c5.raw + c6.raw;
        const Currency c7 = roundElement(base7, r.factor(7), d, e);
        const Currency total =
            wholeAmount(__int128(c1.raw) + c2.raw + c3.raw + c4.raw + c5.raw + c6.raw + c7.raw, e);
        if (s == 0) r.adoptedUnitPrice = roundDigits(total, o.adoptedDigits(), o.adoptedFraction());
        *side.total = total;
        *side.elements = {c1, c2, c3, c4, c5, c6, c7};
    }
}
