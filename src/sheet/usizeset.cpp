#include "sheet/usizeset.h"

#include "platform/application.h"
#include "util/textlines.h"

#include <QGridLayout>
#include <QPlainTextEdit>
#include <QPushButton>

TfsizeSet* FsizeSet = nullptr;

const QStringList TfsizeSet::SteelSizes = {
    QStringLiteral("15A"),  QStringLiteral("20A"),  QStringLiteral("25A"),  QStringLiteral("32A"),
    QStringLiteral("40A"),  QStringLiteral("50A"),  QStringLiteral("65A"),  QStringLiteral("80A"),
    QStringLiteral("100A"), QStringLiteral("125A"), QStringLiteral("150A"), QStringLiteral("200A"),
    QStringLiteral("250A"), QStringLiteral("300A")};

const QStringList TfsizeSet::RefrigerantSizes = {
    QStringLiteral("6.35"),  QStringLiteral("9.52"),  QStringLiteral("12.70"),
    QStringLiteral("15.88"), QStringLiteral("19.05"), QStringLiteral("22.22"),
    QStringLiteral("25.40"), QStringLiteral("28.58"), QStringLiteral("31.75"),
    QStringLiteral("34.92"), QStringLiteral("38.10"), QStringLiteral("44.45"),
    QStringLiteral("50.80")};

TfsizeSet::TfsizeSet(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("fsizeSet"));
    setWindowTitle(QStringLiteral("サイズ設定"));
    setModal(true);

    Memo1 = new QPlainTextEdit(this);
    Memo1->setObjectName(QStringLiteral("Memo1"));
    Memo1->setLineWrapMode(QPlainTextEdit::NoWrap);
    Button4 = new QPushButton(QStringLiteral("15A"), this);
    Button4->setObjectName(QStringLiteral("Button4"));
    Button5 = new QPushButton(QStringLiteral("冷媒"), this);
    Button5->setObjectName(QStringLiteral("Button5"));
    Button2 = new QPushButton(QStringLiteral("実   行"), this);
    Button2->setObjectName(QStringLiteral("Button2"));
    Button1 = new QPushButton(QStringLiteral("キャンセル"), this);
    Button1->setObjectName(QStringLiteral("Button1"));
    Button2->setAutoDefault(false);
    Button1->setAutoDefault(false);
    Button4->setAutoDefault(false);
    Button5->setAutoDefault(false);

    auto* layout = new QGridLayout(this);
    layout->addWidget(Memo1, 0, 0, 5, 1);
    layout->addWidget(Button4, 0, 1);
    layout->addWidget(Button5, 1, 1);
    layout->setRowStretch(2, 1);
    layout->addWidget(Button2, 3, 1);
    layout->addWidget(Button1, 4, 1);
    setFixedSize(300, 420);

    connect(Button4, &QPushButton::clicked, this, &TfsizeSet::Button4Click);
    connect(Button5, &QPushButton::clicked, this, &TfsizeSet::Button5Click);
    connect(Button2, &QPushButton::clicked, this, [this] { done(ResultAccept); });
    connect(Button1, &QPushButton::clicked, this, [this] { done(ResultCancel); });
    if (!FsizeSet) FsizeSet = this;
}

void TfsizeSet::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CentreOnScreen(this);
}

TfsizeSet::~TfsizeSet() {
    if (FsizeSet == this) FsizeSet = nullptr;
}

QStringList TfsizeSet::Lines() const {
    return SplitTextLines(Memo1->toPlainText());
}

void TfsizeSet::SetLines(const QStringList& lines) {
    Memo1->setPlainText(lines.join(QLatin1Char('\n')));
}

void TfsizeSet::Button4Click() {
    SetLines(SteelSizes);
}

void TfsizeSet::Button5Click() {
    SetLines(RefrigerantSizes);
}
