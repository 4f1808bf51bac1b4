#include "sheet/pipetypeheader.h"

#include "shell/formwidgets.h"
#include "store/piperow.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QStringList GoodsItems = {
    QStringLiteral("ステンレス鋼鋼管"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPA"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPB"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPD"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVB)"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVD)"),
    QStringLiteral("圧力配管用炭素鋼鋼管(黒)"),
    QStringLiteral("圧力配管用炭素鋼鋼管(白)"),
    QStringLiteral("遠心力鉄筋ｺﾝｸﾘ-ﾄ管"),
    QStringLiteral("鉛管"),
    QStringLiteral("給湯用塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管"),
    QStringLiteral("硬質塩化ﾋﾞﾆﾙ管(VP)"),
    QStringLiteral("消火配管用炭素鋼鋼管（白）　SGP"),
    QStringLiteral("消火用ﾎﾟﾘｴﾁﾚﾝ外面被覆銅管(PS)"),
    QStringLiteral("消火用ﾎﾟﾘｴﾁﾚﾝ外面被覆銅管(STPG-PS)"),
    QStringLiteral("消火用硬質塩化ﾋﾞﾆﾙ外面被覆銅管(STPG-VS)"),
    QStringLiteral("消火用硬質塩化ﾋﾞﾆﾙ外面被覆銅管(VS)"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PA"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PB"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PD"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VB)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VD)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙ管"),
    QStringLiteral("水道用耐衝撃性硬質塩化ﾋﾞﾆﾙ管(HIVP)"),
    QStringLiteral("鋳鉄管"),
    QStringLiteral("銅管（Ｍ）"),
    QStringLiteral("排水用ﾀ-ﾙｴﾎﾟｷｼ塗装鋼管"),
    QStringLiteral("排水用塩化ﾋﾞﾆﾙｺ-ﾃｨﾝｸﾞ鋼管"),
    QStringLiteral("排水用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管（黒）"),
    QStringLiteral("配管用炭素鋼鋼管（白）"),
    QStringLiteral("被覆銅管"),
    QStringLiteral("保温付被覆銅管"),
    QStringLiteral("冷媒用銅管"),
    QStringLiteral("冷媒用被覆銅管"),
};

const QStringList UseItems = {
    QStringLiteral("ガス"),
    QStringLiteral("プロパン"),
    QStringLiteral("給水"),
    QStringLiteral("給水、給湯"),
    QStringLiteral("給水、給湯、蒸気還管、冷温水"),
    QStringLiteral("給水、冷温水"),
    QStringLiteral("給水、冷却水"),
    QStringLiteral("給湯"),
    QStringLiteral("消火、冷却水、冷温水"),
    QStringLiteral("蒸気、油"),
    QStringLiteral("蒸気給気管、蒸気還管"),
    QStringLiteral("通気"),
    QStringLiteral("通気、消火、給湯、ﾌﾟﾛﾊﾟﾝ、冷却水、冷温水"),
    QStringLiteral("低圧蒸気用"),
    QStringLiteral("排水"),
    QStringLiteral("冷温水"),
    QStringLiteral("冷却水"),
    QStringLiteral("冷媒"),
};

const QStringList JointItems = {
    QStringLiteral("ＭＤ継手"),
    QStringLiteral("ねじ接合"),
    QStringLiteral("ねじ接合（管端防食継手）"),
    QStringLiteral("ハウジング形管継手"),
    QStringLiteral("フランジ接合"),
    QStringLiteral("メカニカル形継手"),
    QStringLiteral("圧縮、プレス"),
    QStringLiteral("拡管式"),
    QStringLiteral("溶接接合"),
};

EditCombo* nameCombo(QWidget* parent, const char* name, const QStringList& items) {
    auto* box = new EditCombo(parent);
    box->setObjectName(QString::fromLatin1(name));
    // The lists stand in the order of their code page bytes: sorted as the
    // systems served sort them.
    box->addItems(items);
    box->setText(QString());
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

QLabel* captionLabel(QWidget* parent, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

} // namespace

PipeTypeHeader::PipeTypeHeader(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("PipeTypeHeader"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* names = new QGroupBox(QStringLiteral("管種名"), this);
    names->setObjectName(QStringLiteral("GroupBoxNames"));
    auto* grid = new QGridLayout(names);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setVerticalSpacing(3);
    m_goodsBox = nameCombo(names, "goodsBox", GoodsItems);
    m_useBox = nameCombo(names, "useBox", UseItems);
    m_jointBox = nameCombo(names, "jointBox", JointItems);
    m_unitBox = nameCombo(
        names, "unitBox",
        {QStringLiteral("ｍ"), QStringLiteral("本"), QStringLiteral("kg"), QStringLiteral("枚")});
    m_unitBox->setText(QStringLiteral("ｍ"));
    m_unitBox->setMinimumContentsLength(4);
    m_goodsBox->setMinimumContentsLength(24);
    m_useBox->setMinimumContentsLength(14);
    m_jointBox->setMinimumContentsLength(12);
    m_resultsSwitch =
        new ToggleSwitch(QStringLiteral("計算結果を表示"), QStringLiteral("歩掛を表示"), names);
    m_resultsSwitch->setObjectName(QStringLiteral("resultsSwitch"));
    m_sizeSetButton = new QPushButton(QStringLiteral("サイズ設定"), names);
    m_sizeSetButton->setObjectName(QStringLiteral("sizeSetButton"));
    m_labourLibraryButton = new QPushButton(QStringLiteral("標準歩掛選択"), names);
    m_labourLibraryButton->setObjectName(QStringLiteral("labourLibraryButton"));
    grid->addWidget(captionLabel(names, QStringLiteral("管材")), 0, 0);
    grid->addWidget(m_goodsBox, 0, 1, 1, 3);
    grid->addWidget(captionLabel(names, QStringLiteral("単位")), 0, 4);
    grid->addWidget(m_unitBox, 0, 5);
    grid->addWidget(captionLabel(names, QStringLiteral("用途")), 1, 0);
    grid->addWidget(m_useBox, 1, 1);
    grid->addWidget(captionLabel(names, QStringLiteral("接合")), 1, 2);
    grid->addWidget(m_jointBox, 1, 3);
    grid->addWidget(m_resultsSwitch, 2, 1);
    grid->addWidget(m_sizeSetButton, 2, 3, Qt::AlignLeft);
    grid->addWidget(m_labourLibraryButton, 2, 3, Qt::AlignRight);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    layout->addWidget(names, 1);

    auto* page = new QGroupBox(QStringLiteral("材料単価建物/ページ"), this);
    page->setObjectName(QStringLiteral("GroupBoxPage"));
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(6, 4, 6, 4);
    m_buildingEdit = new QLineEdit(page);
    m_buildingEdit->setObjectName(QStringLiteral("buildingEdit"));
    m_pageEdit = new QLineEdit(page);
    m_pageEdit->setObjectName(QStringLiteral("pageEdit"));
    pageLayout->addWidget(m_buildingEdit);
    pageLayout->addWidget(m_pageEdit);
    pageLayout->addStretch(1);
    page->setMinimumWidth(200);
    layout->addWidget(page);

    m_printStyleRadio = new RadioGroup(
        QStringLiteral("印刷スタイル選択"),
        {QStringLiteral("歩掛"), QStringLiteral("単価"), QStringLiteral("歩掛+単価")}, 1, this);
    m_printStyleRadio->setObjectName(QStringLiteral("printStyleRadio"));
    m_printStyleRadio->setItemIndex(0);
    layout->addWidget(m_printStyleRadio);

    m_saveButton = new QPushButton(QStringLiteral("登　録"), this);
    m_saveButton->setObjectName(QStringLiteral("saveButton"));
    m_saveButton->setMinimumSize(110, 64);
    QFont f = m_saveButton->font();
    f.setPointSize(f.pointSize() + 3);
    f.setBold(true);
    m_saveButton->setFont(f);
    layout->addWidget(m_saveButton, 0, Qt::AlignVCenter);

    for (EditCombo* box : {m_goodsBox, m_useBox, m_jointBox, m_unitBox})
        box->onKeyPress = [this](int key, bool& handled) {
            if (key != Qt::Key_Return && key != Qt::Key_Enter) return;
            handled = true;
            emit nameEntered();
        };
}

void PipeTypeHeader::showNames(RowTable& rows) {
    m_goodsBox->setText(rows[1].goods());
    m_useBox->setText(rows[2].goods());
    m_jointBox->setText(rows[3].goods());
    m_buildingEdit->setText(rows[4].goods());
    m_pageEdit->setText(rows[5].goods());
    m_unitBox->setText(rows[1].unit());
}

void PipeTypeHeader::applyNames(RowTable& rows) const {
    rows[1].setGoods(m_goodsBox->text());
    rows[2].setGoods(m_useBox->text());
    rows[3].setGoods(m_jointBox->text());
    rows[4].setGoods(m_buildingEdit->text());
    rows[5].setGoods(m_pageEdit->text());
    for (int r = 1; r <= RowCount; ++r)
        rows[r].setUnit(m_unitBox->text());
}

QString PipeTypeHeader::goods() const {
    return m_goodsBox->text();
}

void PipeTypeHeader::clearGoods() {
    m_goodsBox->setText(QString());
}

void PipeTypeHeader::bindButtons(QAction* sizeSet, QAction* labourLibrary) {
    const auto follow = [](QPushButton* button, QAction* action) {
        button->setEnabled(action->isEnabled());
        connect(action, &QAction::changed, button,
                [button, action] { button->setEnabled(action->isEnabled()); });
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
    };
    follow(m_sizeSetButton, sizeSet);
    follow(m_labourLibraryButton, labourLibrary);
}
