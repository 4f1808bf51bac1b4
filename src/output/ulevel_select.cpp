#include "output/ulevel_select.h"

#include "platform/application.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

Tflevel_select::Tflevel_select(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("flevel_select"));
    setWindowTitle(QStringLiteral("Qorvale"));
    setModal(true);
    setResult(ResultCancel);

    Label52 = new QLabel(QStringLiteral("出力設定"), this);
    Label52->setObjectName(QStringLiteral("Label52"));
    CheckBox7 = new QCheckBox(QStringLiteral("見出しを出力"), this);
    CheckBox7->setObjectName(QStringLiteral("CheckBox7"));
    CheckBox8 = new QCheckBox(QStringLiteral("計算結果を出力"), this);
    CheckBox8->setObjectName(QStringLiteral("CheckBox8"));
    Button1 = new QPushButton(QStringLiteral("実　行"), this);
    Button1->setObjectName(QStringLiteral("Button1"));
    Button2 = new QPushButton(QStringLiteral("キャンセル"), this);
    Button2->setObjectName(QStringLiteral("Button2"));
    Button1->setAutoDefault(false);
    Button2->setAutoDefault(false);

    auto* layout = new QGridLayout(this);
    layout->addWidget(Label52, 0, 0, 1, 2);
    layout->addWidget(CheckBox7, 1, 0, 1, 2);
    layout->addWidget(CheckBox8, 2, 0, 1, 2);
    layout->addWidget(Button1, 3, 0);
    layout->addWidget(Button2, 3, 1);

    connect(Button1, &QPushButton::clicked, this, [this] { done(ResultRun); });
    connect(Button2, &QPushButton::clicked, this, [this] { done(ResultCancel); });
}

void Tflevel_select::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CentreOnScreen(this);
}
