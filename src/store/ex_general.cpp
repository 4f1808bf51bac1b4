#include "store/ex_general.h"

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

QString Fuzokurecordtypex::Goods() const {
    return FromAnsi(GOODS);
}
QString Fuzokurecordtypex::Kind() const {
    return FromAnsi(KIND);
}
QString Fuzokurecordtypex::Size() const {
    return FromAnsi(SIZE);
}
QString Fuzokurecordtypex::Ci() const {
    return FromAnsi(CI);
}
void Fuzokurecordtypex::SetGoods(const QString& text) {
    GOODS = ToAnsiCut(text, GoodsWidth);
}
void Fuzokurecordtypex::SetKind(const QString& text) {
    KIND = ToAnsiCut(text, KindWidth);
}
void Fuzokurecordtypex::SetSize(const QString& text) {
    SIZE = ToAnsiCut(text, SizeWidth);
}
void Fuzokurecordtypex::SetCi(const QString& text) {
    CI = ToAnsiCut(text, CiWidth);
}

int DigitIndexOf(Currency value) {
    return lastIndexOf(DigitSteps, value);
}
int FractionIndexOf(Currency value) {
    return lastIndexOf(FractionSteps, value);
}

QString RowLine(const Fuzokurecordtypex& r) {
    const QChar sep = QLatin1Char(';');
    QString s;
    s.reserve(160);
    s += r.Goods() + sep + r.Size() + sep + r.Kind() + sep + CurrToStr(Currency::FromInt(r.FLAG)) +
         sep + r.Ci() + sep;
    for (Currency c : {r.NET, r.GROSS, r.TEIKA})
        s += CurrToStr(c) + sep;
    for (Currency c : r.DATA)
        s += CurrToStr(c) + sep;
    for (Currency c : {r.NTANKA, r.GTANKA, r.FTANKA})
        s += CurrToStr(c) + sep;
    return s;
}
