#include "store/ex_general.h"

#include "store/codepage.h"

RowTable KanzaiRows;
RowTable UndoRows;
RowTable CopyRows;
QStringList SavedLines;
QStringList CurrentLines;

const std::array<Currency, 8> DigitSteps = {
    Currency::FromInt(1), Currency::FromInt(10), Currency::FromInt(100), Currency::FromInt(1000),
    Currency::FromInt(3), Currency::FromInt(4),  Currency::FromInt(-1),  Currency::FromInt(-2)};
const std::array<Currency, 3> FractionSteps = {Currency::FromRaw(9000), Currency::FromRaw(0),
                                               Currency::FromRaw(5000)};

namespace {

std::function<void(bool)> undoHandler;
bool undoEnabled = false;

template <std::size_t N> int lastIndexOf(const std::array<Currency, N>& table, Currency value) {
    int found = 0;
    for (std::size_t i = 0; i < N; ++i)
        if (table[i] == value) found = int(i);
    return found;
}

// Copies every field but the CALC fields.
void copyFields(Fuzokurecordtypex& to, const Fuzokurecordtypex& from) {
    to.UKEY = from.UKEY;
    to.GOODS = from.GOODS;
    to.KIND = from.KIND;
    to.SORT = from.SORT;
    to.SIZE = from.SIZE;
    to.YOSAN = from.YOSAN;
    to.CI = from.CI;
    to.FLAG = from.FLAG;
    to.NET = from.NET;
    to.GROSS = from.GROSS;
    to.TEIKA = from.TEIKA;
    to.DATA = from.DATA;
    to.NTANKA = from.NTANKA;
    to.GTANKA = from.GTANKA;
    to.FTANKA = from.FTANKA;
}

void rebuildCurrentLines() {
    CurrentLines.clear();
    for (int r = 1; r <= RowCount; ++r)
        CurrentLines.append(RowLine(KanzaiRows[r]));
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

void ClearRows(int count) {
    for (int r = 1; r <= count && r <= RowCount; ++r) {
        KanzaiRows[r] = Fuzokurecordtypex{};
        UndoRows[r] = Fuzokurecordtypex{};
    }
}

void TakeSnapshot() {
    SetUndoEnabled(true);
    CurrentLines.clear();
    for (int r = 1; r <= RowCount; ++r) {
        copyFields(UndoRows[r], KanzaiRows[r]);
        CurrentLines.append(RowLine(KanzaiRows[r]));
    }
}

void RefreshLines() {
    SetUndoEnabled(true);
    rebuildCurrentLines();
}

void RestoreSnapshot() {
    for (int r = 1; r <= RowCount; ++r)
        copyFields(KanzaiRows[r], UndoRows[r]);
}

bool PipeTypeChanged() {
    return CurrentLines.join(QLatin1Char('\n')) != SavedLines.join(QLatin1Char('\n'));
}

void SetUndoEnabledHandler(std::function<void(bool)> handler) {
    undoHandler = std::move(handler);
}
bool UndoEnabled() {
    return undoEnabled;
}
void SetUndoEnabled(bool enabled) {
    undoEnabled = enabled;
    if (undoHandler) undoHandler(enabled);
}
