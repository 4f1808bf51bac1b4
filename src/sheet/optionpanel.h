#pragma once
// The calculation options of the pipe type under the sheet: the mode, how
// other costs and the element amounts are calculated and rounded, the base
// labour costs, and the rate on the list price. The panel shows the options
// of a pipe type and gives what the user set back to them; every choice the
// user makes is reported by onChanged.

#include <QWidget>

#include <functional>

class CheckBox;
class FixedList;
class NumberEdit;
struct PipeTypeOptions;
class RadioGroup;

class OptionPanel : public QWidget {
    Q_OBJECT
public:
    explicit OptionPanel(QWidget* parent = nullptr);

    // The options of the pipe type in the controls.
    void showOptions(PipeTypeOptions& options);
    // What the controls say, to the options.
    void applyTo(PipeTypeOptions& options) const;
    // Both base labour costs 0, as on an empty sheet.
    void clearLabourCosts();

    bool refrigerant() const;
    bool rateOn() const;

    // A choice of the user, or Enter in one of the number boxes.
    std::function<void()> onChanged;

    RadioGroup* modeRadio() const { return m_modeRadio; }           // モード
    RadioGroup* otherCostRadio() const { return m_otherCostRadio; } // その他の計算方法
    RadioGroup* elementRadio() const { return m_elementRadio; }   // 各要素単位の計算処理
    RadioGroup* fractionRadio() const { return m_fractionRadio; } // 小数以下処理
    RadioGroup* digitsRadio() const { return m_digitsRadio; }     // 採用有効桁設定[提出]
    RadioGroup* belowDigitsRadio() const { return m_belowDigitsRadio; } // 有効桁以下
    FixedList* unitDigitsList() const { return m_unitDigitsList; }     // 単価計算処理: digits
    FixedList* unitFractionList() const { return m_unitFractionList; } // 単価計算処理: fraction
    CheckBox* useRateCheck() const { return m_useRateCheck; }          // 単価に掛率を使用
    NumberEdit* rateSubmittedEdit() const { return m_rateSubmittedEdit; }
    NumberEdit* rateCostEdit() const { return m_rateCostEdit; }
    NumberEdit* labourCostSubmittedEdit() const { return m_labourCostSubmittedEdit; }
    NumberEdit* labourCostCostEdit() const { return m_labourCostCostEdit; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void changed();

    RadioGroup* m_modeRadio = nullptr;
    RadioGroup* m_otherCostRadio = nullptr;
    RadioGroup* m_elementRadio = nullptr;
    RadioGroup* m_fractionRadio = nullptr;
    RadioGroup* m_digitsRadio = nullptr;
    RadioGroup* m_belowDigitsRadio = nullptr;
    FixedList* m_unitDigitsList = nullptr;
    FixedList* m_unitFractionList = nullptr;
    CheckBox* m_useRateCheck = nullptr;
    NumberEdit* m_rateSubmittedEdit = nullptr;
    NumberEdit* m_rateCostEdit = nullptr;
    NumberEdit* m_labourCostSubmittedEdit = nullptr;
    NumberEdit* m_labourCostCostEdit = nullptr;
};
