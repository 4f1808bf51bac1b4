#include "sheet/sheettexts.h"

#include <Qt>

const std::array<QString, 4> DefaultDetailCaptions = {
    QStringLiteral("屋内一般"), QStringLiteral("機械室・便所"), QStringLiteral("屋外架空"),
    QStringLiteral("地中埋設")};
const QString RefrigerantTabCaption = QStringLiteral("一般");

PriceSide sideOfColumn(int left) {
    if (left == 2) return PriceSide::Cost;
    if (left == 3) return PriceSide::List;
    return PriceSide::Submitted;
}

std::array<QString, Grid1Cols> grid1LineTexts(const PipeRow& r, const SheetView& v) {
    std::array<QString, Grid1Cols> t;
    t[0] = r.size();
    switch (v.side) {
    case PriceSide::Submitted:
        t[1] = formatAmount(r.adoptedUnitPrice);
        t[2] = formatAmount(r.submittedUnitPrice);
        t[3] = formatAmount(r.submittedPrice);
        break;
    case PriceSide::Cost:
        t[1] = formatAmount(r.costUnitPrice);
        t[2] = formatAmount(r.costUnitPrice);
        t[3] = formatAmount(r.costPrice);
        break;
    case PriceSide::List:
        t[1] = formatAmount(r.adoptedUnitPrice);
        t[2] = formatAmount(r.submittedUnitPrice);
        t[3] = formatAmount(r.listPrice);
        break;
    }
    for (int e = 1; e <= 7; ++e) {
        QString& cell = t[std::size_t(e + 3)];
        if (!v.showResults)
            cell = e == 5 ? formatFixed3(r.factor(e)) : currToStr(r.factor(e));
        else if (v.side == PriceSide::List)
            cell = QStringLiteral("--");
        else
            cell = formatGeneral(v.side == PriceSide::Submitted
                                     ? r.submittedAmounts[std::size_t(e - 1)]
                                     : r.costAmounts[std::size_t(e - 1)]);
    }
    if (v.refrigerant) t[9].clear();
    return t;
}

std::array<QString, 3> priceTexts(const PipeRow& r) {
    return {formatAmount(r.submittedPrice), formatAmount(r.costPrice), formatAmount(r.listPrice)};
}

ElementHeadings longHeadings(bool refrigerant) {
    if (refrigerant)
        return {QStringLiteral("継手接合等"), QStringLiteral("支持金物"),
                QStringLiteral("雑 材 料"), QStringLiteral("---"), QStringLiteral("その他")};
    return {QStringLiteral("継 手 類"), QStringLiteral("接 合 材"), QStringLiteral("支持金物"),
            QStringLiteral("はつり補修"), QStringLiteral("その他")};
}

ElementHeadings shortHeadings(bool refrigerant) {
    if (refrigerant)
        return {QStringLiteral("継手・接合材"), QStringLiteral("支持金"), QStringLiteral("雑材料"),
                QStringLiteral("---"), QStringLiteral("その他")};
    return {QStringLiteral("継手"), QStringLiteral("接合材"), QStringLiteral("支持金"),
            QStringLiteral("はつり"), QStringLiteral("その他")};
}

KeyAction gridKeyAction(int key, Qt::KeyboardModifiers modifiers, bool editorOpen) {
    const bool arrow = key >= Qt::Key_Left && key <= Qt::Key_Down;
    if (arrow && !editorOpen) return KeyAction::MoveOnly;
    const bool keypad = modifiers.testFlag(Qt::KeypadModifier);
    switch (key) {
    case Qt::Key_Backspace:
    case Qt::Key_Exclam:
    case Qt::Key_At:
    case Qt::Key_NumberSign:
    case Qt::Key_Dollar:
    case Qt::Key_Percent:
    case Qt::Key_AsciiCircum:
    case Qt::Key_Ampersand:
    case Qt::Key_ParenLeft:
    case Qt::Key_ParenRight:
    case Qt::Key_Greater:
        return KeyAction::PassToCell;
    case Qt::Key_Period:
    case Qt::Key_Asterisk:
        return keypad ? KeyAction::BeepCommit : KeyAction::PassToCell;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return KeyAction::Commit;
    default:
        if (key >= Qt::Key_0 && key <= Qt::Key_9 && !keypad) return KeyAction::PassToCell;
        return KeyAction::BeepCommit;
    }
}
