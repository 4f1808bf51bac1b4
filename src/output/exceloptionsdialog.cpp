#include "output/exceloptionsdialog.h"

#include "platform/application.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

ExcelOptionsDialog::ExcelOptionsDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("ExcelOptionsDialog"));
    setWindowTitle(QStringLiteral("Qorvale"));
    setModal(true);
    setResult(ResultCancel);

    settingsLabel = new QLabel(QStringLiteral("出力設定"), this);
    settingsLabel->setObjectName(QStringLiteral("settingsLabel"));
    headingsCheck = new QCheckBox(QStringLiteral("見出しを出力"), this);
    headingsCheck->setObjectName(QStringLiteral("headingsCheck"));
    resultsCheck = new QCheckBox(QStringLiteral("計算結果を出力"), this);
    resultsCheck->setObjectName(QStringLiteral("resultsCheck"));
    runButton = new QPushButton(QStringLiteral("実　行"), this);
    runButton->setObjectName(QStringLiteral("runButton"));
    cancelButton = new QPushButton(QStringLiteral("キャンセル"), this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    runButton->setAutoDefault(false);
    cancelButton->setAutoDefault(false);

    auto* layout = new QGridLayout(this);
    layout->addWidget(settingsLabel, 0, 0, 1, 2);
    layout->addWidget(headingsCheck, 1, 0, 1, 2);
    layout->addWidget(resultsCheck, 2, 0, 1, 2);
    layout->addWidget(runButton, 3, 0);
    layout->addWidget(cancelButton, 3, 1);

    connect(runButton, &QPushButton::clicked, this, [this] { done(ResultRun); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { done(ResultCancel); });
}

void ExcelOptionsDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    centreOnScreen(this);
}
