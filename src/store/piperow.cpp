#include "store/piperow.h"

#include "store/codepage.h"

const std::array<Currency, 8> DigitSteps = {
    Currency::fromInt(1), Currency::fromInt(10), Currency::fromInt(100), Currency::fromInt(1000),
    Currency::fromInt(3), Currency::fromInt(4),  Currency::fromInt(-1),  Currency::fromInt(-2)};
const std::array<Currency, 3> FractionSteps = {Currency::fromRaw(9000), Currency::fromRaw(0),
                                               Currency::fromRaw(5000)};

namespace {

template <std::size_t N> int lastIndexOf(const std::array<Currency, N>& table, Currency value) {
    int found = 0;
    for (std::size_t i = 0; i < N; ++i)
        if (table[i] == value) found = int(i);
    return found;
}

} // namespace

QString PipeRow::goods() const {
    return fromAnsi(goodsBytes);
}
QString PipeRow::kind() const {
    return fromAnsi(kindBytes);
}
QString PipeRow::size() const {
    return fromAnsi(sizeBytes);
}
QString PipeRow::unit() const {
    return fromAnsi(unitBytes);
}
void PipeRow::setGoods(const QString& text) {
    goodsBytes = toAnsiCut(text, GoodsWidth);
}
void PipeRow::setKind(const QString& text) {
    kindBytes = toAnsiCut(text, KindWidth);
}
void PipeRow::setSize(const QString& text) {
    sizeBytes = toAnsiCut(text, SizeWidth);
}
void PipeRow::setUnit(const QString& text) {
    unitBytes = toAnsiCut(text, UnitWidth);
}

int digitIndexOf(Currency value) {
    return lastIndexOf(DigitSteps, value);
}
int fractionIndexOf(Currency value) {
    return lastIndexOf(FractionSteps, value);
}

QString rowLine(const PipeRow& r) {
    const QChar sep = QLatin1Char(';');
    QString s;
    s.reserve(160);
    s += r.goods() + sep + r.size() + sep + r.kind() + sep +
         currToStr(Currency::fromInt(r.modeFlag)) + sep + r.unit() + sep;
    for (Currency c : {r.costPrice, r.submittedPrice, r.listPrice})
        s += currToStr(c) + sep;
    for (Currency c : r.factors)
        s += currToStr(c) + sep;
    for (Currency c : {r.costUnitPrice, r.submittedUnitPrice, r.adoptedUnitPrice})
        s += currToStr(c) + sep;
    return s;
}
