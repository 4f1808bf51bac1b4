// The main form: the controls of the sheet, the pipe type and its options,
// their look and their events.
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"

#include "controls/boxlabl.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "platform/dialogs.h"
#include "sheet/optionpanel.h"
#include "sheet/pipetypeheader.h"
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
    header_ = new PipeTypeHeader(rightBox);
    right->addWidget(header_);

    sheet_ = new PriceSheet(document(), dialogs_, rightBox);
    sheet_->setOptionsSource([this] {
        return PriceSheet::Options{header_->resultsSwitch()->isOn(), options_->refrigerant(),
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

void MainWindow::connectSheet() {
    options_->onChanged = [this] { applyControls(); };
    header_->resultsSwitch()->onClicked = [this] {
        sheet_->updateCompositeEditing();
        applyControls();
    };
    connect(header_, &PipeTypeHeader::nameEntered, this, &MainWindow::nameEntered);
    connect(header_->saveButton(), &QPushButton::clicked, this, &MainWindow::saveButtonClicked);
    header_->bindButtons(menus_->actions.sizeSetAction, menus_->actions.loadLibraryAction);

    connect(tree, &QTreeWidget::itemClicked, this, [this] { treeClicked(); });
    connect(tree, &PipeTypeTree::inputHandled, this,
            [this](QTreeWidgetItem* namingNode) { afterTreeInput(namingNode); });
    tree->setPopupMenu(menus_->treePopup.menu);
    menus_->actions.sizeSetAction->setEnabled(true);
    connect(menus_->actions.sizeSetAction, &QAction::triggered, this, &MainWindow::setSizes);
    connect(menus_->file.saveItem, &QAction::triggered, this, &MainWindow::saveItemTriggered);
    menus_->file.saveItem->setEnabled(true);
}
