#include "sheet/sheettexts.h"

#include <Qt>

const std::array<QString, 4> DefaultDetailCaptions = {
    QStringLiteral("屋内一般"), QStringLiteral("機械室・便所"), QStringLiteral("屋外架空"),
    QStringLiteral("地中埋設")};
const QString RefrigerantTabCaption = QStringLiteral("一般");

PriceSide SideOfColumn(int left) {
    if (left == 2) return PriceSide::Cost;
    if (left == 3) return PriceSide::List;
    return PriceSide::Submitted;
}

std::array<QString, Grid1Cols> Grid1LineTexts(const Fuzokurecordtypex& r, const SheetView& v) {
    std::array<QString, Grid1Cols> t;
    t[0] = r.Size();
    switch (v.side) {
    case PriceSide::Submitted:
        t[1] = FormatAmount(r.FTANKA);
        t[2] = FormatAmount(r.GTANKA);
        t[3] = FormatAmount(r.GROSS);
        break;
    case PriceSide::Cost:
        t[1] = FormatAmount(r.NTANKA);
        t[2] = FormatAmount(r.NTANKA);
        t[3] = FormatAmount(r.NET);
        break;
    case PriceSide::List:
        t[1] = FormatAmount(r.FTANKA);
        t[2] = FormatAmount(r.GTANKA);
        t[3] = FormatAmount(r.TEIKA);
        break;
    }
    for (int e = 1; e <= 7; ++e) {
        QString& cell = t[std::size_t(e + 3)];
        if (!v.showResults)
            cell = e == 5 ? FormatFixed3(r.Data(e)) : CurrToStr(r.Data(e));
        else if (v.side == PriceSide::List)
            cell = QStringLiteral("--");
        else
            cell = FormatGeneral(v.side == PriceSide::Submitted ? r.CALC_G[std::size_t(e - 1)]
                                                                : r.CALC_N[std::size_t(e - 1)]);
    }
    if (v.refrigerant) t[9].clear();
    return t;
}

std::array<QString, 3> PriceTexts(const Fuzokurecordtypex& r) {
    return {FormatAmount(r.GROSS), FormatAmount(r.NET), FormatAmount(r.TEIKA)};
}

ElementHeadings LongHeadings(bool refrigerant) {
    if (refrigerant)
        return {QStringLiteral("継手接合等"), QStringLiteral("支持金物"),
                QStringLiteral("雑 材 料"), QStringLiteral("---"), QStringLiteral("その他")};
    return {QStringLiteral("継 手 類"), QStringLiteral("接 合 材"), QStringLiteral("支持金物"),
            QStringLiteral("はつり補修"), QStringLiteral("その他")};
}

ElementHeadings ShortHeadings(bool refrigerant) {
    if (refrigerant)
        return {QStringLiteral("継手・接合材"), QStringLiteral("支持金"), QStringLiteral("雑材料"),
                QStringLiteral("---"), QStringLiteral("その他")};
    return {QStringLiteral("継手"), QStringLiteral("接合材"), QStringLiteral("支持金"),
            QStringLiteral("はつり"), QStringLiteral("その他")};
}

KeyAction GridKeyAction(int k, bool editorOpen) {
    if (k >= 37 && k <= 40 && !editorOpen) return KeyAction::MoveOnly;
    if ((k >= 48 && k <= 57) || k == 190 || k == 8) return KeyAction::PassToCell;
    if (k == 13 || k == 38 || k == 40) return KeyAction::Commit;
    return KeyAction::BeepCommit;
}
