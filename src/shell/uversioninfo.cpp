#include "shell/uversioninfo.h"

#include "platform/dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

TFversionInfo* FversionInfo = nullptr;

namespace {

// The emblem: a blue gradient square with the product's initial.
QPixmap emblemPicture() {
    QPixmap pixmap(72, 72);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 72, 72);
    g.setColorAt(0, QColor(0x2a, 0x5d, 0xa8));
    g.setColorAt(1, QColor(0x0c, 0x24, 0x4a));
    p.setBrush(g);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(2, 2, 68, 68), 10, 10);
    QFont f = p.font();
    f.setPixelSize(44);
    f.setBold(true);
    p.setFont(f);
    p.setPen(Qt::white);
    p.drawText(QRect(0, 0, 72, 72), Qt::AlignCenter, QStringLiteral("Q"));
    return pixmap;
}

} // namespace

TFversionInfo::TFversionInfo(QWidget* parent) : TFversionInfo(ProgramVersionBlock(), parent) {}

TFversionInfo::TFversionInfo(const VersionBlock& block, QWidget* parent) : QDialog(parent) {
    build();
    ReadVersionBlock(this, block);
    if (!FversionInfo) FversionInfo = this;
}

TFversionInfo::~TFversionInfo() {
    if (FversionInfo == this) FversionInfo = nullptr;
}

void TFversionInfo::build() {
    setObjectName(QStringLiteral("FversionInfo"));
    setWindowTitle(QStringLiteral("製品案内"));
    setModal(true);

    auto label = [this](const char* name, const QString& text) {
        auto* l = new QLabel(text, this);
        l->setObjectName(QString::fromLatin1(name));
        return l;
    };
    Appname = label("Appname", QStringLiteral("Appname"));
    Verlabel = label("Verlabel", QStringLiteral("Version"));
    Companylabel = label("Companylabel", QStringLiteral("Company"));
    Copyright = label("Copyright", QStringLiteral("Copyright"));
    Officelabel = label("Officelabel", QStringLiteral("Office"));
    LinkLabel1 = label("LinkLabel1", QString());
    Image2 = label("Image2", QString());
    Button1 = new QPushButton(QStringLiteral("閉じる"), this);
    Button1->setObjectName(QStringLiteral("Button1"));

    QFont big = Appname->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    Appname->setFont(big);
    Verlabel->setFont(QFont(QStringLiteral("monospace")));
    Image2->setPixmap(emblemPicture());
    Image2->setAlignment(Qt::AlignTop);
    LinkLabel1->setText(QStringLiteral("製品のご案内: <a href=\"%1\">%1</a>").arg(ProductPageUrl));
    LinkLabel1->setTextFormat(Qt::RichText);
    LinkLabel1->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(LinkLabel1, &QLabel::linkActivated, this, &TFversionInfo::LinkLabel1LinkClick);
    connect(Button1, &QPushButton::clicked, this, &QDialog::accept);

    auto* texts = new QVBoxLayout;
    for (QLabel* l : {Appname, Verlabel, Companylabel, Copyright, Officelabel, LinkLabel1})
        texts->addWidget(l);
    auto* top = new QHBoxLayout;
    top->addWidget(Image2);
    top->addSpacing(12);
    top->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(Button1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(18, 18, 18, 12);
    all->addLayout(top);
    all->addSpacing(8);
    all->addLayout(buttons);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

void TFversionInfo::LinkLabel1LinkClick(const QString& link) {
    CurrentDialogs().OpenDocument(link);
}

bool ReadVersionBlock(TFversionInfo* form, const VersionBlock& block) {
    if (!block.Present()) return false;
    form->Appname->setText(ApplicationTitle());
    for (const QString& key : VersionKeys()) {
        if (!block.values.contains(key)) continue;
        const QString value = block.values.value(key);
        if (key == QLatin1String("ProductVersion")) {
            form->Verlabel->setText(QString::asprintf("%-16s", "ProductVersion") +
                                    QStringLiteral(" : ") + value);
            ReleaseText = QStringLiteral("Release Version ") + value;
        } else if (key == QLatin1String("CompanyName")) {
            form->Companylabel->setText(value);
        } else if (key == QLatin1String("LegalCopyright")) {
            form->Copyright->setText(value);
        } else if (key == QLatin1String("Comments")) {
            form->Officelabel->setText(value);
        }
    }
    return true;
}
