#include "sheet/optionpanel.h"

#include "controls/boxlabl.h"
#include "controls/numberedit.h"
#include "shell/formwidgets.h"
#include "store/piperow.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// A money value as the number boxes take it.
Extended currencyValue(Currency c) {
    return Extended(c.raw) / 10000.0L;
}

NumberEdit* numberEdit(QWidget* parent, const char* name) {
    auto* edit = new NumberEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setLimitOptions(LimitBoth);
    edit->setValue(0);
    edit->setMinimumWidth(88);
    return edit;
}

BoxLabel* boxCaption(QWidget* parent, const QString& text) {
    auto* box = new BoxLabel(parent);
    box->setCaption(text);
    box->setMinimumSize(QFontMetrics(parent->font()).horizontalAdvance(text) + 16, 24);
    return box;
}

} // namespace

OptionPanel::OptionPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("OptionPanel"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* modes = new QVBoxLayout;
    m_modeRadio =
        new RadioGroup(QStringLiteral("モード"),
                       {QStringLiteral("配管モード"), QStringLiteral("冷媒モード")}, 2, this);
    m_otherCostRadio = new RadioGroup(QStringLiteral("その他の計算方法"),
                                      {QStringLiteral("（配管工費＋はつり補修）×歩掛"),
                                       QStringLiteral("（配管材～はつり補修の合計）×歩掛")},
                                      1, this);
    modes->addWidget(m_modeRadio);
    modes->addWidget(m_otherCostRadio);
    layout->addLayout(modes);

    m_elementRadio = new RadioGroup(QStringLiteral("各要素単位の計算処理"),
                                    {QStringLiteral("端数処理"), QStringLiteral("小数1位有効"),
                                     QStringLiteral("小数2位有効"), QStringLiteral("小数3位有効")},
                                    1, this);
    m_fractionRadio = new RadioGroup(
        QStringLiteral("小数以下処理"),
        {QStringLiteral("切り上げ"), QStringLiteral("切り捨て"), QStringLiteral("四捨五入")}, 1,
        this);
    m_digitsRadio = new RadioGroup(QStringLiteral("採用有効桁設定[提出]"),
                                   {QStringLiteral("1"), QStringLiteral("10"),
                                    QStringLiteral("100"), QStringLiteral("1000"),
                                    QStringLiteral("有効3桁"), QStringLiteral("有効4桁")},
                                   2, this);
    m_belowDigitsRadio = new RadioGroup(
        QStringLiteral("有効桁以下"),
        {QStringLiteral("切り上げ"), QStringLiteral("切り捨て"), QStringLiteral("四捨五入")}, 1,
        this);
    for (RadioGroup* g : {m_elementRadio, m_fractionRadio, m_digitsRadio, m_belowDigitsRadio})
        layout->addWidget(g);

    // Base labour costs.
    auto* labour = new QGroupBox(QStringLiteral("基礎工費"), this);
    labour->setObjectName(QStringLiteral("GroupBoxLabour"));
    auto* labourLayout = new QGridLayout(labour);
    labourLayout->setContentsMargins(6, 4, 6, 4);
    m_labourCostSubmittedEdit = numberEdit(labour, "labourCostSubmittedEdit");
    m_labourCostCostEdit = numberEdit(labour, "labourCostCostEdit");
    labourLayout->addWidget(boxCaption(labour, QStringLiteral("提　出")), 0, 0);
    labourLayout->addWidget(m_labourCostSubmittedEdit, 0, 1);
    labourLayout->addWidget(boxCaption(labour, QStringLiteral("原　価")), 1, 0);
    labourLayout->addWidget(m_labourCostCostEdit, 1, 1);
    labourLayout->setRowStretch(2, 1);
    layout->addWidget(labour);

    // The rate on the list price, and the two groups beside it; they stay
    // usable whichever way the check box stands.
    auto* rateBox = new QWidget(this);
    rateBox->setObjectName(QStringLiteral("RatePanel"));
    auto* rateLayout = new QVBoxLayout(rateBox);
    rateLayout->setContentsMargins(0, 0, 0, 0);
    rateLayout->setSpacing(2);
    m_useRateCheck = new CheckBox(QStringLiteral("単価に掛率を使用"), rateBox);
    m_useRateCheck->setObjectName(QStringLiteral("useRateCheck"));
    rateLayout->addWidget(m_useRateCheck);
    auto* rates = new QGroupBox(QStringLiteral("掛率を指定"), rateBox);
    auto* ratesLayout = new QGridLayout(rates);
    ratesLayout->setContentsMargins(6, 4, 6, 4);
    m_rateSubmittedEdit = numberEdit(rates, "rateSubmittedEdit");
    m_rateCostEdit = numberEdit(rates, "rateCostEdit");
    m_rateSubmittedEdit->setMinimumWidth(64);
    m_rateCostEdit->setMinimumWidth(64);
    ratesLayout->addWidget(boxCaption(rates, QStringLiteral("提   出=定価×指定")), 0, 0);
    ratesLayout->addWidget(m_rateSubmittedEdit, 0, 1);
    ratesLayout->addWidget(new QLabel(QStringLiteral("%"), rates), 0, 2);
    ratesLayout->addWidget(boxCaption(rates, QStringLiteral("原　価=定価×指定")), 1, 0);
    ratesLayout->addWidget(m_rateCostEdit, 1, 1);
    ratesLayout->addWidget(new QLabel(QStringLiteral("%"), rates), 1, 2);
    rateLayout->addWidget(rates);
    auto* unit = new QGroupBox(QStringLiteral("単価計算処理"), rateBox);
    auto* unitLayout = new QHBoxLayout(unit);
    unitLayout->setContentsMargins(6, 4, 6, 4);
    m_unitDigitsList = new FixedList({QStringLiteral("有効桁1"), QStringLiteral("有効桁10"),
                                      QStringLiteral("有効桁100"), QStringLiteral("有効桁1000"),
                                      QStringLiteral("有効3桁"), QStringLiteral("有効4桁")},
                                     unit);
    m_unitDigitsList->setObjectName(QStringLiteral("unitDigitsList"));
    m_unitFractionList =
        new FixedList({QStringLiteral("有効桁以下切り上げ"), QStringLiteral("有効桁以下切り捨て"),
                       QStringLiteral("有効桁以下四捨五入")},
                      unit);
    m_unitFractionList->setObjectName(QStringLiteral("unitFractionList"));
    unitLayout->addWidget(m_unitDigitsList);
    unitLayout->addWidget(m_unitFractionList, 1);
    rateLayout->addWidget(unit);
    layout->addWidget(rateBox);
    layout->addStretch(1);

    // Names and defaults before the first pipe type is shown.
    const std::pair<RadioGroup*, const char*> groups[] = {
        {m_modeRadio, "modeRadio"},       {m_otherCostRadio, "otherCostRadio"},
        {m_elementRadio, "elementRadio"}, {m_fractionRadio, "fractionRadio"},
        {m_digitsRadio, "digitsRadio"},   {m_belowDigitsRadio, "belowDigitsRadio"}};
    for (const auto& [g, name] : groups) {
        g->setObjectName(QString::fromLatin1(name));
        g->setItemIndex(0);
    }
    m_digitsRadio->setItemIndex(3);
    m_unitDigitsList->setItemIndex(0);
    m_unitFractionList->setItemIndex(0);

    for (RadioGroup* g : {m_modeRadio, m_otherCostRadio, m_elementRadio, m_fractionRadio,
                          m_digitsRadio, m_belowDigitsRadio})
        g->onClicked = [this] { changed(); };
    m_unitDigitsList->onSelect = [this] { changed(); };
    m_unitFractionList->onSelect = [this] { changed(); };
    m_useRateCheck->onClicked = [this] { changed(); };
    for (NumberEdit* edit :
         {m_rateSubmittedEdit, m_rateCostEdit, m_labourCostSubmittedEdit, m_labourCostCostEdit})
        edit->installEventFilter(this);
}

void OptionPanel::changed() {
    if (onChanged) onChanged();
}

bool OptionPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            changed();
            // Enter in a base labour cost goes on to the other one.
            if (watched == m_labourCostSubmittedEdit)
                m_labourCostCostEdit->setFocus(Qt::TabFocusReason);
            else if (watched == m_labourCostCostEdit)
                m_labourCostSubmittedEdit->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool OptionPanel::refrigerant() const {
    return m_modeRadio->itemIndex() == 1;
}

bool OptionPanel::rateOn() const {
    return m_useRateCheck->checked();
}

void OptionPanel::clearLabourCosts() {
    m_labourCostSubmittedEdit->setValue(0);
    m_labourCostCostEdit->setValue(0);
}

void OptionPanel::showOptions(PipeTypeOptions& o) {
    m_labourCostSubmittedEdit->setValue(currencyValue(o.labourSubmitted()));
    m_labourCostCostEdit->setValue(currencyValue(o.labourCost()));
    m_rateSubmittedEdit->setValue(currencyValue(o.rateSubmitted()));
    m_rateCostEdit->setValue(currencyValue(o.rateCost()));
    m_unitDigitsList->setItemIndex(digitIndexOf(o.unitDigits()));
    m_unitFractionList->setItemIndex(fractionIndexOf(o.unitFraction()));
    m_digitsRadio->setItemIndex(digitIndexOf(o.adoptedDigits()));
    m_belowDigitsRadio->setItemIndex(fractionIndexOf(o.adoptedFraction()));
    m_elementRadio->setItemIndex(digitIndexOf(o.elementDigits()));
    m_fractionRadio->setItemIndex(fractionIndexOf(o.elementFraction()));
    m_modeRadio->setItemIndex(o.modeFlag());
    m_otherCostRadio->setItemIndex(o.otherMethod());
    // Any other value of the flag leaves the check box as it is.
    if (o.rateOn() == Currency::fromInt(1))
        m_useRateCheck->SetChecked(true);
    else if (o.rateOn().isZero())
        m_useRateCheck->SetChecked(false);
}

void OptionPanel::applyTo(PipeTypeOptions& o) const {
    o.labourSubmitted() = m_labourCostSubmittedEdit->storedCurrency();
    o.labourCost() = m_labourCostCostEdit->storedCurrency();
    o.rateSubmitted() = m_rateSubmittedEdit->storedCurrency();
    o.rateCost() = m_rateCostEdit->storedCurrency();
    o.rateOn() = Currency::fromInt(m_useRateCheck->checked() ? 1 : 0);
    auto digit = [](int index) { return DigitSteps[std::size_t(std::clamp(index, 0, 7))]; };
    auto fraction = [](int index) { return FractionSteps[std::size_t(std::clamp(index, 0, 2))]; };
    o.unitDigits() = digit(m_unitDigitsList->itemIndex());
    o.unitFraction() = fraction(m_unitFractionList->itemIndex());
    o.adoptedDigits() = digit(m_digitsRadio->itemIndex());
    o.adoptedFraction() = fraction(m_belowDigitsRadio->itemIndex());
    o.elementDigits() = digit(m_elementRadio->itemIndex());
    o.elementFraction() = fraction(m_fractionRadio->itemIndex());
    o.modeFlag() = m_modeRadio->itemIndex();
    o.otherMethod() = m_otherCostRadio->itemIndex();
}
