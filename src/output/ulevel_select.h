#pragma once
// The options dialog of the CSV and clipboard output: headings and results.
// Made anew for each output and released after it.

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

class Tflevel_select : public QDialog {
    Q_OBJECT
public:
    explicit Tflevel_select(QWidget* parent = nullptr);

    // Modal results: the result starts at 0, so closing the window counts
    // as cancelling.
    static constexpr int ResultRun = 1;
    static constexpr int ResultCancel = 0;

    QLabel* Label52 = nullptr;      // 出力設定
    QCheckBox* CheckBox7 = nullptr; // 見出しを出力
    QCheckBox* CheckBox8 = nullptr; // 計算結果を出力
    QPushButton* Button1 = nullptr; // 実　行
    QPushButton* Button2 = nullptr; // キャンセル

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

protected:
    // The dialog comes up in the middle of the screen.
    void showEvent(QShowEvent* event) override;
};
