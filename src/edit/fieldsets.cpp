#include "edit/fieldsets.h"

namespace {

QByteArray cut(const QByteArray& text, int width) {
    return text.size() > width ? text.left(width) : text;
}

void copyAll(Fuzokurecordtypex& to, const Fuzokurecordtypex& from, bool withNTANKA) {
    to.GOODS = cut(from.GOODS, GoodsWidth);
    to.SIZE = cut(from.SIZE, SizeWidth);
    to.KIND = cut(from.KIND, KindWidth);
    to.FLAG = from.FLAG;
    to.CI = cut(from.CI, CiWidth);
    to.NET = from.NET;
    to.GROSS = from.GROSS;
    to.TEIKA = from.TEIKA;
    to.DATA = from.DATA;
    if (withNTANKA) to.NTANKA = from.NTANKA;
    to.GTANKA = from.GTANKA;
    to.FTANKA = from.FTANKA;
}

} // namespace

void CopyFieldSet(Fuzokurecordtypex& to, const Fuzokurecordtypex& from, FieldSet set) {
    switch (set) {
    case FieldSet::All:
        copyAll(to, from, true);
        break;
    case FieldSet::AllButNTANKA:
        copyAll(to, from, false);
        break;
    case FieldSet::Prices:
        to.NET = from.NET;
        to.GROSS = from.GROSS;
        to.TEIKA = from.TEIKA;
        break;
    case FieldSet::Labour:
        to.DATA = from.DATA;
        break;
    case FieldSet::Pipefitter:
        to.Data(5) = from.Data(5);
        break;
    }
}

void CopyWholeTable(RowTable& to, const RowTable& from, FieldSet set) {
    for (int r = 1; r <= RowCount; ++r)
        CopyFieldSet(to[r], from[r], set);
}

int DetailBase(int tab) {
    return tab * TabRows;
}

void CopyDetailOut(RowTable& buffer, const RowTable& rows, int tab, FieldSet set) {
    const int base = DetailBase(tab);
    for (int i = 1; i <= TabRows; ++i)
        CopyFieldSet(buffer[i], rows[base + i], set);
}

void PasteDetailIn(RowTable& rows, const RowTable& buffer, int tab, FieldSet set) {
    const int base = DetailBase(tab);
    for (int i = 1; i <= TabRows; ++i)
        if (base + i != OptionRow) CopyFieldSet(rows[base + i], buffer[i], set);
}

void SpreadFirstDetail(RowTable& rows) {
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= TabRows; ++i) {
            const int r = k * TabRows + i;
            if (r == OptionRow) continue;
            Fuzokurecordtypex& to = rows[r];
            const Fuzokurecordtypex& from = rows[i];
            to.FLAG = from.FLAG;
            to.CI = cut(from.CI, CiWidth);
            to.TEIKA = from.TEIKA;
            to.NET = from.NET;
            to.GROSS = from.GROSS;
            to.DATA = from.DATA;
            to.GTANKA = from.GTANKA;
            to.NTANKA = from.NTANKA;
            to.FTANKA = from.FTANKA;
        }
    }
}

void SpreadBufferPrices(RowTable& rows, const RowTable& buffer) {
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= TabRows; ++i) {
            const int r = k * TabRows + i;
            if (r == OptionRow) continue;
            rows[r].TEIKA = buffer[i].TEIKA;
            rows[r].NET = buffer[i].NET;
            rows[r].GROSS = buffer[i].GROSS;
        }
    }
}

void ClearPipeTypeRows(RowTable& rows) {
    for (int r = 1; r <= RowCount; ++r) {
        Fuzokurecordtypex& row = rows[r];
        Fuzokurecordtypex cleared;
        cleared.UKEY = row.UKEY;
        cleared.SORT = row.SORT;
        cleared.YOSAN = row.YOSAN;
        row = cleared;
    }
}

void ClearDetailRows(RowTable& rows, int tab) {
    const int base = DetailBase(tab);
    for (int i = 1; i <= TabRows; ++i) {
        if (base + i == OptionRow) continue;
        Fuzokurecordtypex& row = rows[base + i];
        row.DATA = {};
        row.NTANKA = Currency();
        row.GTANKA = Currency();
        row.FTANKA = Currency();
        row.CALC_N = {};
        row.CALC_G = {};
    }
}
