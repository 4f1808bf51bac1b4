// The main form: the main menu, the actions, the view menu and the naming of
// groups.
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"

#include "platform/dialogs.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTreeWidget>

const std::array<const char*, 10> MainWindow::DefaultGroupNames = {
    "給水", "排水", "通気", "給湯", "消火", "冷温水", "冷却水", "蒸気", "油", "冷媒"};

QAction* MainWindow::addItem(QMenu* menu, const char* name, const QString& caption) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(QString::fromLatin1(name));
    return item;
}

QAction* MainWindow::addSeparator(QMenu* menu, const char* name) {
    QAction* separator = menu->addSeparator();
    if (name) separator->setObjectName(QString::fromLatin1(name));
    return separator;
}

QAction* MainWindow::makeAction(const char* name, const QString& caption) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

void MainWindow::bindAction(QAction* item, QAction* action) {
    item->setEnabled(action->isEnabled());
    item->setVisible(action->isVisible());
    QObject::connect(action, &QAction::changed, item, [item, action] {
        item->setEnabled(action->isEnabled());
        item->setVisible(action->isVisible());
    });
    QObject::connect(item, &QAction::triggered, action, [action] { action->trigger(); });
}

void MainWindow::buildMenu() {
    // The named commands. Those whose work is not part of this program yet
    // stay disabled.
    aboutAction = makeAction("aboutAction", QStringLiteral("このソフトウェアについて"));
    printAction = makeAction("printAction", QStringLiteral("印  刷"));
    exitAction = makeAction("exitAction", QStringLiteral("終了(&X)"));
    undoAction = makeAction("undoAction", QStringLiteral("取消"));
    loadLibraryAction = makeAction("loadLibraryAction", QStringLiteral("標準歩掛選択"));
    labourCostChangeAction =
        makeAction("labourCostChangeAction",
                   QStringLiteral("表示中の基礎工費に書き換える(全付属品データ対象)"));
    optionChangeAction = makeAction(
        "optionChangeAction", QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    moveUpAction = makeAction("moveUpAction", QStringLiteral("↑上へ移動"));
    moveDownAction = makeAction("moveDownAction", QStringLiteral("↓下へ移動"));
    saveLibraryAction = makeAction("saveLibraryAction", QStringLiteral("選択用標準歩掛として登録"));
    excelOutAction = makeAction("excelOutAction", QStringLiteral("エクセル出力"));
    sizeSetAction = makeAction("sizeSetAction", QStringLiteral("サイズ設定"));
    for (QAction* a :
         {printAction, undoAction, loadLibraryAction, labourCostChangeAction, optionChangeAction,
          moveUpAction, moveDownAction, saveLibraryAction, excelOutAction, sizeSetAction})
        a->setEnabled(false);
    // Esc undoes wherever the focus is on the form.
    undoAction->setShortcut(QKeySequence(Qt::Key_Escape));
    undoAction->setShortcutContext(Qt::WindowShortcut);
    addAction(undoAction);
    connect(aboutAction, &QAction::triggered, this, &MainWindow::showAbout);
    connect(exitAction, &QAction::triggered, this, &MainWindow::exitProgram);

    mainMenu = menuBar();
    mainMenu->setObjectName(QStringLiteral("mainMenu"));
    auto addMenu = [this](const char* name, const QString& title) {
        QMenu* menu = mainMenu->addMenu(title);
        menu->setObjectName(QString::fromLatin1(name));
        menu->menuAction()->setObjectName(QString::fromLatin1(name));
        return menu;
    };

    // ファイル
    fileMenu = addMenu("fileMenu", QStringLiteral("ファイル(&F)"));
    aboutItem = addItem(fileMenu, "aboutItem", QStringLiteral("このソフトウェアについて"));
    installFolderItem =
        addItem(fileMenu, "installFolderItem", QStringLiteral("インストールフォルダー確認"));
    calculatorItem = addItem(fileMenu, "calculatorItem", QStringLiteral("電卓"));
    addSeparator(fileMenu);
    saveItem = addItem(fileMenu, "saveItem", QStringLiteral("保  存"));
    saveItem->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    saveItem->setEnabled(false); // until saving is joined to the form
    printItem = addItem(fileMenu, "printItem", QStringLiteral("印  刷"));
    fileSeparator = addSeparator(fileMenu, "fileSeparator");
    fileSeparator->setVisible(false);
    exitItem = addItem(fileMenu, "exitItem", QStringLiteral("終了(&X)"));
    bindAction(aboutItem, aboutAction);
    bindAction(printItem, printAction);
    bindAction(exitItem, exitAction);
    connect(installFolderItem, &QAction::triggered, this, &MainWindow::showInstallFolder);
    connect(calculatorItem, &QAction::triggered, this, &MainWindow::startCalculator);

    // 表示
    viewMenu = addMenu("viewMenu", QStringLiteral("表  示(&D)"));
    treeListItem = addItem(viewMenu, "treeListItem", QStringLiteral("ツリーリストを表示する"));
    statusBarItem = addItem(viewMenu, "statusBarItem", QStringLiteral("ステータスバーを表示する"));
    for (QAction* a : {treeListItem, statusBarItem}) {
        a->setCheckable(true);
        a->setChecked(true);
    }
    connect(treeListItem, &QAction::triggered, this, &MainWindow::toggleTree);
    connect(statusBarItem, &QAction::triggered, this, &MainWindow::toggleStatusBar);

    // 管種名称編集
    groupNamesMenu = addMenu("groupNamesMenu", QStringLiteral("管種名称編集(&P)"));
    for (int i = 0; i < 10; ++i) {
        QMenu* group =
            groupNamesMenu->addMenu(QString::fromUtf8(DefaultGroupNames[std::size_t(i)]));
        const QString number = QString::number(i + 1);
        group->setObjectName(QStringLiteral("groupMenu") + number);
        group->menuAction()->setObjectName(group->objectName());
        QAction* naming = addItem(group, nullptr, QStringLiteral("このグループに名称をつける"));
        naming->setObjectName(QStringLiteral("groupNamingItem") + number);
        naming->setData(i); // tag
        connect(naming, &QAction::triggered, this, &MainWindow::groupNamingTriggered);
        groupMenus_[std::size_t(i)] = group;
        groupNamingItems_[std::size_t(i)] = naming;
    }

    // 編集1
    editMenu = addMenu("editMenu", QStringLiteral("編 集1(&E)"));
    undoItem = addItem(editMenu, "undoItem", QStringLiteral("取消"));
    undoItem->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    addSeparator(editMenu);
    labourLibraryItem = addItem(editMenu, "labourLibraryItem", QStringLiteral("標準歩掛選択"));
    addSeparator(editMenu);
    labourCostChangeItem = addItem(editMenu, "labourCostChangeItem",
                                   QStringLiteral("グループ内の基礎工費を、表示中のものに変更"));
    optionChangeItem = addItem(editMenu, "optionChangeItem",
                               QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    addSeparator(editMenu);
    moveUpItem = addItem(editMenu, "moveUpItem", QStringLiteral("↑上へ移動"));
    moveDownItem = addItem(editMenu, "moveDownItem", QStringLiteral("↓下へ移動"));
    addSeparator(editMenu);
    currentPricesItem =
        addItem(editMenu, "currentPricesItem", QStringLiteral("現在の管材単価計算"));
    editSeparator = addSeparator(editMenu, "editSeparator");
    editSeparator->setVisible(false);
    copyWholeTableItem = addItem(editMenu, "copyWholeTableItem", QStringLiteral("全内容をコピー"));
    copyPricesItem = addItem(editMenu, "copyPricesItem", QStringLiteral("単価をコピー"));
    copyAllFactorsItem = addItem(editMenu, "copyAllFactorsItem", QStringLiteral("全歩掛をコピー"));
    copyLabourFactorsItem =
        addItem(editMenu, "copyLabourFactorsItem", QStringLiteral("歩掛（工費）をコピー"));
    addSeparator(editMenu);
    pasteWholeTableItem = addItem(editMenu, "pasteWholeTableItem", QStringLiteral("全内容を貼付"));
    pastePricesItem = addItem(editMenu, "pastePricesItem", QStringLiteral("単価を貼付"));
    pasteAllFactorsItem = addItem(editMenu, "pasteAllFactorsItem", QStringLiteral("全歩掛を貼付"));
    pasteLabourFactorsItem =
        addItem(editMenu, "pasteLabourFactorsItem", QStringLiteral("歩掛（工費）を貼付"));
    addSeparator(editMenu);
    saveLibraryItem =
        addItem(editMenu, "saveLibraryItem", QStringLiteral("選択用標準歩掛として登録"));
    addSeparator(editMenu);
    clearPipeTypeItem = addItem(editMenu, "clearPipeTypeItem", QStringLiteral("管材をクリアー"));
    bindAction(undoItem, undoAction);
    bindAction(labourLibraryItem, loadLibraryAction);
    bindAction(labourCostChangeItem, labourCostChangeAction);
    bindAction(optionChangeItem, optionChangeAction);
    bindAction(moveUpItem, moveUpAction);
    bindAction(moveDownItem, moveDownAction);
    bindAction(saveLibraryItem, saveLibraryAction);

    // 細目編集
    detailMenu = addMenu("detailMenu", QStringLiteral("細目編集(&B)"));
    copyDetailItem =
        addItem(detailMenu, "copyDetailItem", QStringLiteral("(細目)の全内容をコピー"));
    copyDetailPricesItem =
        addItem(detailMenu, "copyDetailPricesItem", QStringLiteral("(細目)の単価をコピー"));
    copyDetailFactorsItem =
        addItem(detailMenu, "copyDetailFactorsItem", QStringLiteral("(細目)の全歩掛をコピー"));
    copyDetailLabourItem =
        addItem(detailMenu, "copyDetailLabourItem", QStringLiteral("(細目)の歩掛（工費）をコピー"));
    addSeparator(detailMenu);
    pasteDetailItem =
        addItem(detailMenu, "pasteDetailItem", QStringLiteral("(細目)の全内容を貼付"));
    pasteDetailPricesItem =
        addItem(detailMenu, "pasteDetailPricesItem", QStringLiteral("(細目)に単価を貼付"));
    pasteDetailFactorsItem =
        addItem(detailMenu, "pasteDetailFactorsItem", QStringLiteral("(細目)へ全歩掛を貼付"));
    pasteDetailLabourItem =
        addItem(detailMenu, "pasteDetailLabourItem", QStringLiteral("(細目)へ歩掛（工費）を貼付"));
    addSeparator(detailMenu);
    copyDetailPricesAcrossItem = addItem(detailMenu, "copyDetailPricesAcrossItem",
                                         QStringLiteral("(細目)内、同一単価(No1→No2,3,4)"));
    // showPipeType gives it the captions of the details of the pipe type shown.
    copyFirstDetailAcrossItem =
        addItem(detailMenu, "copyFirstDetailAcrossItem",
                QStringLiteral("(細目)内全データ、同一デ－タ(No1→No2,3,4)"));
    addSeparator(detailMenu);
    clearDetailItem =
        addItem(detailMenu, "clearDetailItem", QStringLiteral("現在の細目をクリアー"));
    for (QAction* hidden :
         {copyDetailPricesItem, pasteDetailPricesItem, copyDetailPricesAcrossItem})
        hidden->setVisible(false);

    // 外部データ入出力
    externalDataMenu = addMenu("externalDataMenu", QStringLiteral("外部データ入出力(&O)"));
    excelOutItem = addItem(externalDataMenu, "excelOutItem", QStringLiteral("エクセル出力"));
    csvFileItem = addItem(externalDataMenu, "csvFileItem",
                          QStringLiteral("表示中の管材データをCSVファイルとして出力"));
    clipboardItem =
        addItem(externalDataMenu, "clipboardItem",
                QStringLiteral("表示中の管材データをクリップボードへＣＳＶ形式で取り出す"));
    bindAction(excelOutItem, excelOutAction);

    // Commands of the copy, paste, clear and output work are not joined yet.
    for (QAction* a : {copyWholeTableItem,
                       copyPricesItem,
                       copyAllFactorsItem,
                       copyLabourFactorsItem,
                       pasteWholeTableItem,
                       pastePricesItem,
                       pasteAllFactorsItem,
                       pasteLabourFactorsItem,
                       clearPipeTypeItem,
                       copyDetailItem,
                       copyDetailPricesItem,
                       copyDetailFactorsItem,
                       copyDetailLabourItem,
                       copyDetailPricesAcrossItem,
                       pasteDetailItem,
                       pasteDetailPricesItem,
                       pasteDetailFactorsItem,
                       pasteDetailLabourItem,
                       copyFirstDetailAcrossItem,
                       clearDetailItem,
                       csvFileItem,
                       clipboardItem})
        a->setEnabled(false);

    // The tree's pop-up menu.
    treePopupMenu = new QMenu(this);
    treePopupMenu->setObjectName(QStringLiteral("treePopupMenu"));
    popupMoveUpItem = addItem(treePopupMenu, "popupMoveUpItem", QStringLiteral("↑上へ移動"));
    popupMoveDownItem = addItem(treePopupMenu, "popupMoveDownItem", QStringLiteral("↓下へ移動"));
    bindAction(popupMoveUpItem, moveUpAction);
    bindAction(popupMoveDownItem, moveDownAction);
}

QMenu* MainWindow::groupMenu(int g) const {
    return g >= 1 && g <= 10 ? groupMenus_[std::size_t(g - 1)] : nullptr;
}

QAction* MainWindow::groupNamingItem(int g) const {
    return g >= 1 && g <= 10 ? groupNamingItems_[std::size_t(g - 1)] : nullptr;
}

QString MainWindow::groupName(int g) const {
    QMenu* item = groupMenu(g);
    return item ? item->title() : QString();
}

void MainWindow::setGroupName(int g, const QString& name) {
    if (QMenu* item = groupMenu(g)) item->setTitle(name);
}

void MainWindow::groupNamingTriggered() {
    if (auto* item = qobject_cast<QAction*>(sender())) nameGroup(item->data().toInt());
}

void MainWindow::nameGroup(int tag) {
    // The names live in the database: nothing is written to one that was
    // refused at the start.
    if (noDatabase && !rowsAreLoaded(QStringLiteral("名称を変更できません。"))) return;
    const int g = tag + 1;
    QString name = groupName(g);
    if (!dialogs_.inputQuery(this, QStringLiteral("Qorvale"),
                             QStringLiteral("グル－プ名を入力してください"), name))
        return;
    setGroupName(g, name);
    if (QTreeWidgetItem* node = tree->node(tag * 21)) node->setText(0, name);
    saveGroupNames();
}

void MainWindow::toggleTree() {
    // The check mark follows the click, and the tree follows the mark, so
    // that a hidden tree can be brought back.
    if (tree) tree->setVisible(treeListItem->isChecked());
}

void MainWindow::toggleStatusBar() {
    statusLine->setVisible(statusBarItem->isChecked());
}

void MainWindow::exitProgram() {
    close();
}
