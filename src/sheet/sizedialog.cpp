#include "sheet/sizedialog.h"

#include "platform/application.h"
#include "util/textlines.h"

#include <QGridLayout>
#include <QPlainTextEdit>
#include <QPushButton>

const QStringList SizeDialog::SteelSizes = {
    QStringLiteral("15A"),  QStringLiteral("20A"),  QStringLiteral("25A"),  QStringLiteral("32A"),
    QStringLiteral("40A"),  QStringLiteral("50A"),  QStringLiteral("65A"),  QStringLiteral("80A"),
    QStringLiteral("100A"), QStringLiteral("125A"), QStringLiteral("150A"), QStringLiteral("200A"),
    QStringLiteral("250A"), QStringLiteral("300A")};

const QStringList SizeDialog::RefrigerantSizes = {
    QStringLiteral("6.35"),  QStringLiteral("9.52"),  QStringLiteral("12.70"),
    QStringLiteral("15.88"), QStringLiteral("19.05"), QStringLiteral("22.22"),
    QStringLiteral("25.40"), QStringLiteral("28.58"), QStringLiteral("31.75"),
    QStringLiteral("34.92"), QStringLiteral("38.10"), QStringLiteral("44.45"),
    QStringLiteral("50.80")};

SizeDialog::SizeDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("SizeDialog"));
    setWindowTitle(QStringLiteral("サイズ設定"));
    setModal(true);

    sizesEdit = new QPlainTextEdit(this);
    sizesEdit->setObjectName(QStringLiteral("sizesEdit"));
    sizesEdit->setLineWrapMode(QPlainTextEdit::NoWrap);
    steelButton = new QPushButton(QStringLiteral("15A"), this);
    steelButton->setObjectName(QStringLiteral("steelButton"));
    refrigerantButton = new QPushButton(QStringLiteral("冷媒"), this);
    refrigerantButton->setObjectName(QStringLiteral("refrigerantButton"));
    runButton = new QPushButton(QStringLiteral("実   行"), this);
    runButton->setObjectName(QStringLiteral("runButton"));
    cancelButton = new QPushButton(QStringLiteral("キャンセル"), this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    runButton->setAutoDefault(false);
    cancelButton->setAutoDefault(false);
    steelButton->setAutoDefault(false);
    refrigerantButton->setAutoDefault(false);

    auto* layout = new QGridLayout(this);
    layout->addWidget(sizesEdit, 0, 0, 5, 1);
    layout->addWidget(steelButton, 0, 1);
    layout->addWidget(refrigerantButton, 1, 1);
    layout->setRowStretch(2, 1);
    layout->addWidget(runButton, 3, 1);
    layout->addWidget(cancelButton, 4, 1);
    setFixedSize(300, 420);

    connect(steelButton, &QPushButton::clicked, this, &SizeDialog::fillSteelSizes);
    connect(refrigerantButton, &QPushButton::clicked, this, &SizeDialog::fillRefrigerantSizes);
    connect(runButton, &QPushButton::clicked, this, [this] { done(ResultAccept); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { done(ResultCancel); });
}

void SizeDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    centreOnScreen(this);
}

SizeDialog::~SizeDialog() = default;

QStringList SizeDialog::lines() const {
    return splitTextLines(sizesEdit->toPlainText());
}

void SizeDialog::setLines(const QStringList& lines) {
    sizesEdit->setPlainText(lines.join(QLatin1Char('\n')));
}

void SizeDialog::fillSteelSizes() {
    setLines(SteelSizes);
}

void SizeDialog::fillRefrigerantSizes() {
    setLines(RefrigerantSizes);
}
