#include "store/piperow.h"

#include "store/codepage.h"

const std::array<Currency, 8> DigitSteps = {
    Currency::FromInt(1), Currency::FromInt(10), Currency::FromInt(100), Currency::FromInt(1000),
    Currency::FromInt(3), Currency::FromInt(4),  Currency::FromInt(-1),  Currency::FromInt(-2)};
const std::array<Currency, 3> FractionSteps = {Currency::FromRaw(9000), Currency::FromRaw(0),
                                               Currency::FromRaw(5000)};

namespace {

template <std::size_t N> int lastIndexOf(const std::array<Currency, N>& table, Currency value) {
    int found = 0;
    for (std::size_t i = 0; i < N; ++i)
        if (table[i] == value) found = int(i);
    return found;
}

} // namespace

QString PipeRow::goods() const {
    return FromAnsi(goodsBytes);
}
QString PipeRow::kind() const {
    return FromAnsi(kindBytes);
}
QString PipeRow::size() const {
    return FromAnsi(sizeBytes);
}
QString PipeRow::unit() const {
    return FromAnsi(unitBytes);
}
void PipeRow::setGoods(const QString& text) {
    goodsBytes = ToAnsiCut(text, GoodsWidth);
}
void PipeRow::setKind(const QString& text) {
    kindBytes = ToAnsiCut(text, KindWidth);
}
void PipeRow::setSize(const QString& text) {
    sizeBytes = ToAnsiCut(text, SizeWidth);
}
void PipeRow::setUnit(const QString& text) {
    unitBytes = ToAnsiCut(text, UnitWidth);
}

int DigitIndexOf(Currency value) {
    return lastIndexOf(DigitSteps, value);
}
int FractionIndexOf(Currency value) {
    return lastIndexOf(FractionSteps, value);
}

QString RowLine(const PipeRow& r) {
    const QChar sep = QLatin1Char(';');
    QString s;
    s.reserve(160);
    s += r.goods() + sep + r.size() + sep + r.kind() + sep +
         CurrToStr(Currency::FromInt(r.modeFlag)) + sep + r.unit() + sep;
    for (Currency c : {r.costPrice, r.submittedPrice, r.listPrice})
        s += CurrToStr(c) + sep;
    for (Currency c : r.factors)
        s += CurrToStr(c) + sep;
    for (Currency c : {r.costUnitPrice, r.submittedUnitPrice, r.adoptedUnitPrice})
        s += CurrToStr(c) + sep;
    return s;
}
