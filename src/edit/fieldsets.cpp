#include "edit/fieldsets.h"

namespace {

QByteArray cut(const QByteArray& text, int width) {
    return text.size() > width ? text.left(width) : text;
}

void copyAll(PipeRow& to, const PipeRow& from, bool withCostUnitPrice) {
    to.goodsBytes = cut(from.goodsBytes, GoodsWidth);
    to.sizeBytes = cut(from.sizeBytes, SizeWidth);
    to.kindBytes = cut(from.kindBytes, KindWidth);
    to.modeFlag = from.modeFlag;
    to.unitBytes = cut(from.unitBytes, UnitWidth);
    to.costPrice = from.costPrice;
    to.submittedPrice = from.submittedPrice;
    to.listPrice = from.listPrice;
    to.factors = from.factors;
    if (withCostUnitPrice) to.costUnitPrice = from.costUnitPrice;
    to.submittedUnitPrice = from.submittedUnitPrice;
    to.adoptedUnitPrice = from.adoptedUnitPrice;
}

} // namespace

void copyFieldSet(PipeRow& to, const PipeRow& from, FieldSet set) {
    switch (set) {
    case FieldSet::All:
        copyAll(to, from, true);
        break;
    case FieldSet::AllButCostUnitPrice:
        copyAll(to, from, false);
        break;
    case FieldSet::Prices:
        to.costPrice = from.costPrice;
        to.submittedPrice = from.submittedPrice;
        to.listPrice = from.listPrice;
        break;
    case FieldSet::Labour:
        to.factors = from.factors;
        break;
    case FieldSet::Pipefitter:
        to.factor(5) = from.factor(5);
        break;
    }
}

void copyFieldSet(RowTable& to, const RowTable& from, FieldSet set) {
    for (int r = 1; r <= RowCount; ++r)
        copyFieldSet(to[r], from[r], set);
}

int detailBase(int tab) {
    return tab * TabRows;
}

void copyDetailOut(RowTable& buffer, const RowTable& rows, int tab, FieldSet set) {
    const int base = detailBase(tab);
    for (int i = 1; i <= TabRows; ++i)
        copyFieldSet(buffer[i], rows[base + i], set);
}

void pasteDetailIn(RowTable& rows, const RowTable& buffer, int tab, FieldSet set) {
    const int base = detailBase(tab);
    for (int i = 1; i <= TabRows; ++i)
        if (base + i != OptionRow) copyFieldSet(rows[base + i], buffer[i], set);
}

void spreadFirstDetail(RowTable& rows) {
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= TabRows; ++i) {
            const int r = k * TabRows + i;
            if (r == OptionRow) continue;
            PipeRow& to = rows[r];
            const PipeRow& from = rows[i];
            to.modeFlag = from.modeFlag;
            to.unitBytes = cut(from.unitBytes, UnitWidth);
            to.listPrice = from.listPrice;
            to.costPrice = from.costPrice;
            to.submittedPrice = from.submittedPrice;
            to.factors = from.factors;
            to.submittedUnitPrice = from.submittedUnitPrice;
            to.costUnitPrice = from.costUnitPrice;
            to.adoptedUnitPrice = from.adoptedUnitPrice;
        }
    }
}

void spreadBufferPrices(RowTable& rows, const RowTable& buffer) {
    for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= TabRows; ++i) {
            const int r = k * TabRows + i;
            if (r == OptionRow) continue;
            rows[r].listPrice = buffer[i].listPrice;
            rows[r].costPrice = buffer[i].costPrice;
            rows[r].submittedPrice = buffer[i].submittedPrice;
        }
    }
}

void clearPipeTypeRows(RowTable& rows) {
    for (int r = 1; r <= RowCount; ++r) {
        PipeRow& row = rows[r];
        PipeRow cleared;
        cleared.key = row.key;
        cleared.sortOrder = row.sortOrder;
        cleared.otherMethod = row.otherMethod;
        row = cleared;
    }
}

void clearDetailRows(RowTable& rows, int tab) {
    const int base = detailBase(tab);
    for (int i = 1; i <= TabRows; ++i) {
        if (base + i == OptionRow) continue;
        PipeRow& row = rows[base + i];
        row.factors = {};
        row.costUnitPrice = Currency();
        row.submittedUnitPrice = Currency();
        row.adoptedUnitPrice = Currency();
        row.costAmounts = {};
        row.submittedAmounts = {};
    }
}
