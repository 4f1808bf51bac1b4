// The main form: the controls of the sheet, the pipe type and its options,
// their look and their events.
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"

#include "controls/boxlabl.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "platform/dialogs.h"
#include "sheet/optionpanel.h"
#include "sheet/pricesheet.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"
#include "shell/pipetypetree.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTabBar>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>
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

NumberEdit* numberEdit(QWidget* parent, const char* name) {
    auto* edit = new NumberEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setLimitOptions(LimitBoth);
    edit->setValue(0);
    edit->setMinimumWidth(88);
    return edit;
}

BoxLabel* boxCaption(QWidget* parent, const QString& text) {
    auto* box = new BoxLabel(parent);
    box->setCaption(text);
    box->setMinimumSize(QFontMetrics(parent->font()).horizontalAdvance(text) + 16, 24);
    return box;
}

} // namespace

void MainWindow::buildSheet() {
    auto* outer = new QHBoxLayout(centralArea_);
    outer->setContentsMargins(4, 4, 4, 4);
    outer->setSpacing(6);

    // Left: the emblem over the tree.
    auto* left = new QVBoxLayout;
    left->setSpacing(4);
    velmoraEmblem = new GradientPanel(centralArea_);
    velmoraEmblem->setObjectName(QStringLiteral("velmoraEmblem"));
    velmoraEmblem->setBackGroundEffect(bdDown);
    velmoraEmblem->setFixedHeight(84);
    auto* emblemLayout = new QVBoxLayout(velmoraEmblem);
    emblemLayout->setContentsMargins(10, 6, 10, 6);
    emblemLayout->setSpacing(0);
    ostrelLabel = new QLabel(QStringLiteral("Ostrel"), velmoraEmblem);
    ostrelLabel->setObjectName(QStringLiteral("ostrelLabel"));
    productLabel = new QLabel(QStringLiteral("Qorvale"), velmoraEmblem);
    productLabel->setObjectName(QStringLiteral("productLabel"));
    releaseLabel = new QLabel(QStringLiteral("Release Version"), velmoraEmblem);
    releaseLabel->setObjectName(QStringLiteral("releaseLabel"));
    QFont big = productLabel->font();
    big.setPointSize(big.pointSize() + 8);
    big.setBold(true);
    productLabel->setFont(big);
    for (QLabel* l : {ostrelLabel, productLabel, releaseLabel}) {
        l->setStyleSheet(QStringLiteral("color: white; background: transparent;"));
        emblemLayout->addWidget(l);
    }
    left->addWidget(velmoraEmblem);

    tree = new PipeTypeTree(centralArea_);
    for (int g = 1; g <= 10; ++g)
        tree->node((g - 1) * 21)->setText(0, groupName(g));
    left->addWidget(tree, 1);
    left->setContentsMargins(0, 0, 0, 0);
    // The tree's width is the user's: a splitter between it and the sheet.
    treeSplitter = new QSplitter(Qt::Horizontal, centralArea_);
    treeSplitter->setObjectName(QStringLiteral("treeSplitter"));
    treeSplitter->setChildrenCollapsible(false);
    auto* leftBox = new QWidget(treeSplitter);
    leftBox->setObjectName(QStringLiteral("LeftPanel"));
    leftBox->setLayout(left);
    leftBox->setMinimumWidth(60);
    treeSplitter->addWidget(leftBox);
    outer->addWidget(treeSplitter);

    // Right: names, the sheet, the options; on a screen smaller than the
    // form they scroll rather than being cut off.
    sheetScroll = new QScrollArea(treeSplitter);
    sheetScroll->setObjectName(QStringLiteral("sheetScroll"));
    sheetScroll->setWidgetResizable(true);
    sheetScroll->setFrameShape(QFrame::NoFrame);
    auto* rightBox = new QWidget(sheetScroll);
    rightBox->setObjectName(QStringLiteral("RightPanel"));
    auto* right = new QVBoxLayout(rightBox);
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(4);
    right->addWidget(buildNameBox());

    sheet_ = new PriceSheet(document(), dialogs_, rightBox);
    sheet_->setOptionsSource([this] {
        return PriceSheet::Options{resultsSwitch->isOn(), options_->refrigerant(),
                                   options_->rateOn()};
    });
    right->addWidget(sheet_, 1);

    options_ = new OptionPanel(rightBox);
    right->addWidget(options_);
    sheetScroll->setWidget(rightBox);
    sheet_->fitInto(sheetScroll);
    treeSplitter->addWidget(sheetScroll);
    treeSplitter->setStretchFactor(0, 0);
    treeSplitter->setStretchFactor(1, 1);
    treeSplitter->setSizes({180, DefaultWidth - 180});

    connectSheet();
}

QWidget* MainWindow::buildNameBox() {
    auto* row = new QWidget(centralArea_);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* names = new QGroupBox(QStringLiteral("管種名"), row);
    names->setObjectName(QStringLiteral("GroupBoxNames"));
    auto* grid = new QGridLayout(names);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setVerticalSpacing(3);
    goodsBox = nameCombo(names, "goodsBox", GoodsItems);
    useBox = nameCombo(names, "useBox", UseItems);
    jointBox = nameCombo(names, "jointBox", JointItems);
    unitBox = nameCombo(
        names, "unitBox",
        {QStringLiteral("ｍ"), QStringLiteral("本"), QStringLiteral("kg"), QStringLiteral("枚")});
    unitBox->setText(QStringLiteral("ｍ"));
    unitBox->setMinimumContentsLength(4);
    goodsBox->setMinimumContentsLength(24);
    useBox->setMinimumContentsLength(14);
    jointBox->setMinimumContentsLength(12);
    resultsSwitch =
        new ToggleSwitch(QStringLiteral("計算結果を表示"), QStringLiteral("歩掛を表示"), names);
    resultsSwitch->setObjectName(QStringLiteral("resultsSwitch"));
    sizeSetButton = new QPushButton(QStringLiteral("サイズ設定"), names);
    sizeSetButton->setObjectName(QStringLiteral("sizeSetButton"));
    labourLibraryButton = new QPushButton(QStringLiteral("標準歩掛選択"), names);
    labourLibraryButton->setObjectName(QStringLiteral("labourLibraryButton"));
    grid->addWidget(captionLabel(names, QStringLiteral("管材")), 0, 0);
    grid->addWidget(goodsBox, 0, 1, 1, 3);
    grid->addWidget(captionLabel(names, QStringLiteral("単位")), 0, 4);
    grid->addWidget(unitBox, 0, 5);
    grid->addWidget(captionLabel(names, QStringLiteral("用途")), 1, 0);
    grid->addWidget(useBox, 1, 1);
    grid->addWidget(captionLabel(names, QStringLiteral("接合")), 1, 2);
    grid->addWidget(jointBox, 1, 3);
    grid->addWidget(resultsSwitch, 2, 1);
    grid->addWidget(sizeSetButton, 2, 3, Qt::AlignLeft);
    grid->addWidget(labourLibraryButton, 2, 3, Qt::AlignRight);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    layout->addWidget(names, 1);

    auto* page = new QGroupBox(QStringLiteral("材料単価建物/ページ"), row);
    page->setObjectName(QStringLiteral("GroupBoxPage"));
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(6, 4, 6, 4);
    buildingEdit = new QLineEdit(page);
    buildingEdit->setObjectName(QStringLiteral("buildingEdit"));
    pageEdit = new QLineEdit(page);
    pageEdit->setObjectName(QStringLiteral("pageEdit"));
    pageLayout->addWidget(buildingEdit);
    pageLayout->addWidget(pageEdit);
    pageLayout->addStretch(1);
    page->setMinimumWidth(200);
    layout->addWidget(page);

    printStyleRadio = new RadioGroup(
        QStringLiteral("印刷スタイル選択"),
        {QStringLiteral("歩掛"), QStringLiteral("単価"), QStringLiteral("歩掛+単価")}, 1, row);
    printStyleRadio->setObjectName(QStringLiteral("printStyleRadio"));
    printStyleRadio->setItemIndex(0);
    layout->addWidget(printStyleRadio);

    saveButton = new QPushButton(QStringLiteral("登　録"), row);
    saveButton->setObjectName(QStringLiteral("saveButton"));
    saveButton->setMinimumSize(110, 64);
    QFont f = saveButton->font();
    f.setPointSize(f.pointSize() + 3);
    f.setBold(true);
    saveButton->setFont(f);
    layout->addWidget(saveButton, 0, Qt::AlignVCenter);
    return row;
}

void MainWindow::connectSheet() {
    options_->onChanged = [this] { applyControls(); };
    resultsSwitch->onClicked = [this] {
        sheet_->updateCompositeEditing();
        applyControls();
    };
    for (EditCombo* box : {goodsBox, useBox, jointBox, unitBox})
        box->OnKeyPress = [this](int key, bool& handled) { nameBoxKeyPress(key, handled); };

    connect(saveButton, &QPushButton::clicked, this, &MainWindow::saveButtonClicked);
    connect(sizeSetButton, &QPushButton::clicked, menus_->actions.sizeSetAction, &QAction::trigger);
    connect(labourLibraryButton, &QPushButton::clicked, menus_->actions.loadLibraryAction,
            &QAction::trigger);
    auto followAction = [](QPushButton* button, QAction* action) {
        button->setEnabled(action->isEnabled());
        connect(action, &QAction::changed, button,
                [button, action] { button->setEnabled(action->isEnabled()); });
    };
    followAction(sizeSetButton, menus_->actions.sizeSetAction);
    followAction(labourLibraryButton, menus_->actions.loadLibraryAction);

    connect(tree, &QTreeWidget::itemClicked, this, [this] { treeClicked(); });
    connect(tree, &PipeTypeTree::inputHandled, this,
            [this](QTreeWidgetItem* namingNode) { afterTreeInput(namingNode); });
    tree->setPopupMenu(menus_->treePopup.menu);
    menus_->actions.sizeSetAction->setEnabled(true);
    connect(menus_->actions.sizeSetAction, &QAction::triggered, this, &MainWindow::setSizes);
    connect(menus_->file.saveItem, &QAction::triggered, this, &MainWindow::saveItemTriggered);
    menus_->file.saveItem->setEnabled(true);
}
