#include "shell/aboutdialog.h"

#include "platform/dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

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

AboutDialog::AboutDialog(Dialogs& dialogs, QWidget* parent)
    : AboutDialog(dialogs, programVersionBlock(), parent) {}

AboutDialog::AboutDialog(Dialogs& dialogs, const VersionBlock& block, QWidget* parent)
    : QDialog(parent), m_dialogs(dialogs) {
    build();
    readVersionBlock(this, block);
}

AboutDialog::~AboutDialog() = default;

void AboutDialog::build() {
    setObjectName(QStringLiteral("AboutDialog"));
    setWindowTitle(QStringLiteral("製品案内"));
    setModal(true);

    auto label = [this](const char* name, const QString& text) {
        auto* l = new QLabel(text, this);
        l->setObjectName(QString::fromLatin1(name));
        return l;
    };
    appNameLabel = label("appNameLabel", QStringLiteral("Appname"));
    versionLabel = label("versionLabel", QStringLiteral("Version"));
    companyLabel = label("companyLabel", QStringLiteral("Company"));
    copyrightLabel = label("copyrightLabel", QStringLiteral("Copyright"));
    officeLabel = label("officeLabel", QStringLiteral("Office"));
    linkLabel = label("linkLabel", QString());
    imageLabel = label("imageLabel", QString());
    closeButton = new QPushButton(QStringLiteral("閉じる"), this);
    closeButton->setObjectName(QStringLiteral("closeButton"));

    QFont big = appNameLabel->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    appNameLabel->setFont(big);
    versionLabel->setFont(QFont(QStringLiteral("monospace")));
    imageLabel->setPixmap(emblemPicture());
    imageLabel->setAlignment(Qt::AlignTop);
    linkLabel->setText(QStringLiteral("製品のご案内: <a href=\"%1\">%1</a>").arg(ProductPageUrl));
    linkLabel->setTextFormat(Qt::RichText);
    linkLabel->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(linkLabel, &QLabel::linkActivated, this, &AboutDialog::openLink);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);

    auto* texts = new QVBoxLayout;
    for (QLabel* l :
         {appNameLabel, versionLabel, companyLabel, copyrightLabel, officeLabel, linkLabel})
        texts->addWidget(l);
    auto* top = new QHBoxLayout;
    top->addWidget(imageLabel);
    top->addSpacing(12);
    top->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(closeButton);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(18, 18, 18, 12);
    all->addLayout(top);
    all->addSpacing(8);
    all->addLayout(buttons);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

void AboutDialog::openLink(const QString& link) {
    m_dialogs.openDocument(link);
}

bool readVersionBlock(AboutDialog* form, const VersionBlock& block) {
    if (!block.present()) return false;
    form->appNameLabel->setText(applicationTitle());
    for (const QString& key : versionKeys()) {
        if (!block.values.contains(key)) continue;
        const QString value = block.values.value(key);
        if (key == QLatin1String("ProductVersion")) {
            form->versionLabel->setText(QString::asprintf("%-16s", "ProductVersion") +
                                        QStringLiteral(" : ") + value);
            form->releaseText_ = QStringLiteral("Release Version ") + value;
        } else if (key == QLatin1String("CompanyName")) {
            form->companyLabel->setText(value);
        } else if (key == QLatin1String("LegalCopyright")) {
            form->copyrightLabel->setText(value);
        } else if (key == QLatin1String("Comments")) {
            form->officeLabel->setText(value);
        }
    }
    return true;
}
