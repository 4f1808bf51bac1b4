#pragma once
// The options dialog of the CSV and clipboard output: headings and results.
// Made anew for each output and released after it.

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

class ExcelOptionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit ExcelOptionsDialog(QWidget* parent = nullptr);

    // Modal results: the result starts at 0, so closing the window counts
    // as cancelling.
    static constexpr int ResultRun = 1;
    static constexpr int ResultCancel = 0;

    QLabel* settingsLabel = nullptr;     // 出力設定
    QCheckBox* headingsCheck = nullptr;  // 見出しを出力
    QCheckBox* resultsCheck = nullptr;   // 計算結果を出力
    QPushButton* runButton = nullptr;    // 実　行
    QPushButton* cancelButton = nullptr; // キャンセル

    // The close box and Escape answer as the cancel button does.
    void reject() override { done(ResultCancel); }

protected:
    // The dialog comes up in the middle of the screen.
    void showEvent(QShowEvent* event) override;
};
