#include "shell/mainmenu.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

const std::array<const char*, 10> MainMenu::DefaultGroupNames = {
    "給水", "排水", "通気", "給湯", "消火", "冷温水", "冷却水", "蒸気", "油", "冷媒"};

namespace {

QAction* addItem(QMenu* menu, const char* name, const QString& caption) {
    QAction* item = menu->addAction(caption);
    if (name) item->setObjectName(QString::fromLatin1(name));
    return item;
}

QAction* addSeparator(QMenu* menu, const char* name = nullptr) {
    QAction* separator = menu->addSeparator();
    if (name) separator->setObjectName(QString::fromLatin1(name));
    return separator;
}

QAction* makeAction(QObject* parent, const char* name, const QString& caption) {
    auto* action = new QAction(caption, parent);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

} // namespace

void MainMenu::bindAction(QAction* item, QAction* action) {
    item->setEnabled(action->isEnabled());
    item->setVisible(action->isVisible());
    QObject::connect(action, &QAction::changed, item, [item, action] {
        item->setEnabled(action->isEnabled());
        item->setVisible(action->isVisible());
    });
    QObject::connect(item, &QAction::triggered, action, [action] { action->trigger(); });
}

MainMenu::MainMenu(QMainWindow* window) {
    // The named commands. Those whose work is not part of this program yet
    // stay disabled.
    actions.aboutAction =
        makeAction(window, "aboutAction", QStringLiteral("このソフトウェアについて"));
    actions.printAction = makeAction(window, "printAction", QStringLiteral("印  刷"));
    actions.exitAction = makeAction(window, "exitAction", QStringLiteral("終了(&X)"));
    actions.undoAction = makeAction(window, "undoAction", QStringLiteral("取消"));
    actions.loadLibraryAction =
        makeAction(window, "loadLibraryAction", QStringLiteral("標準歩掛選択"));
    actions.labourCostChangeAction =
        makeAction(window, "labourCostChangeAction",
                   QStringLiteral("表示中の基礎工費に書き換える(全付属品データ対象)"));
    actions.optionChangeAction =
        makeAction(window, "optionChangeAction",
                   QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    actions.moveUpAction = makeAction(window, "moveUpAction", QStringLiteral("↑上へ移動"));
    actions.moveDownAction = makeAction(window, "moveDownAction", QStringLiteral("↓下へ移動"));
    actions.saveLibraryAction =
        makeAction(window, "saveLibraryAction", QStringLiteral("選択用標準歩掛として登録"));
    actions.excelOutAction = makeAction(window, "excelOutAction", QStringLiteral("エクセル出力"));
    actions.sizeSetAction = makeAction(window, "sizeSetAction", QStringLiteral("サイズ設定"));
    for (QAction* a : {actions.printAction, actions.undoAction, actions.loadLibraryAction,
                       actions.labourCostChangeAction, actions.optionChangeAction,
                       actions.moveUpAction, actions.moveDownAction, actions.saveLibraryAction,
                       actions.excelOutAction, actions.sizeSetAction})
        a->setEnabled(false);
    // Esc undoes wherever the focus is on the form.
    actions.undoAction->setShortcut(QKeySequence(Qt::Key_Escape));
    actions.undoAction->setShortcutContext(Qt::WindowShortcut);
    window->addAction(actions.undoAction);

    QMenuBar* bar = window->menuBar();
    bar->setObjectName(QStringLiteral("mainMenu"));
    auto addMenu = [bar](const char* name, const QString& title) {
        QMenu* menu = bar->addMenu(title);
        menu->setObjectName(QString::fromLatin1(name));
        menu->menuAction()->setObjectName(QString::fromLatin1(name));
        return menu;
    };

    // ファイル
    file.menu = addMenu("fileMenu", QStringLiteral("ファイル(&F)"));
    file.aboutItem = addItem(file.menu, "aboutItem", QStringLiteral("このソフトウェアについて"));
    file.installFolderItem =
        addItem(file.menu, "installFolderItem", QStringLiteral("インストールフォルダー確認"));
    file.calculatorItem = addItem(file.menu, "calculatorItem", QStringLiteral("電卓"));
    addSeparator(file.menu);
    file.saveItem = addItem(file.menu, "saveItem", QStringLiteral("保  存"));
    file.saveItem->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    file.saveItem->setEnabled(false); // until saving is joined to the form
    file.printItem = addItem(file.menu, "printItem", QStringLiteral("印  刷"));
    file.separator = addSeparator(file.menu, "fileSeparator");
    file.separator->setVisible(false);
    file.exitItem = addItem(file.menu, "exitItem", QStringLiteral("終了(&X)"));
    bindAction(file.aboutItem, actions.aboutAction);
    bindAction(file.printItem, actions.printAction);
    bindAction(file.exitItem, actions.exitAction);

    // 表示
    view.menu = addMenu("viewMenu", QStringLiteral("表  示(&D)"));
    view.treeListItem =
        addItem(view.menu, "treeListItem", QStringLiteral("ツリーリストを表示する"));
    view.statusBarItem =
        addItem(view.menu, "statusBarItem", QStringLiteral("ステータスバーを表示する"));
    for (QAction* a : {view.treeListItem, view.statusBarItem}) {
        a->setCheckable(true);
        a->setChecked(true);
    }

    // 管種名称編集
    groupNames.menu = addMenu("groupNamesMenu", QStringLiteral("管種名称編集(&P)"));
    for (int i = 0; i < 10; ++i) {
        QMenu* group =
            groupNames.menu->addMenu(QString::fromUtf8(DefaultGroupNames[std::size_t(i)]));
        const QString number = QString::number(i + 1);
        group->setObjectName(QStringLiteral("groupMenu") + number);
        group->menuAction()->setObjectName(group->objectName());
        QAction* naming = addItem(group, nullptr, QStringLiteral("このグループに名称をつける"));
        naming->setObjectName(QStringLiteral("groupNamingItem") + number);
        naming->setData(i); // tag
        groupNames.groups[std::size_t(i)] = group;
        groupNames.namingItems[std::size_t(i)] = naming;
    }

    // 編集1
    edit.menu = addMenu("editMenu", QStringLiteral("編 集1(&E)"));
    edit.undoItem = addItem(edit.menu, "undoItem", QStringLiteral("取消"));
    edit.undoItem->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    addSeparator(edit.menu);
    edit.labourLibraryItem =
        addItem(edit.menu, "labourLibraryItem", QStringLiteral("標準歩掛選択"));
    addSeparator(edit.menu);
    edit.labourCostChangeItem =
        addItem(edit.menu, "labourCostChangeItem",
                QStringLiteral("グループ内の基礎工費を、表示中のものに変更"));
    edit.optionChangeItem =
        addItem(edit.menu, "optionChangeItem",
                QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    addSeparator(edit.menu);
    edit.moveUpItem = addItem(edit.menu, "moveUpItem", QStringLiteral("↑上へ移動"));
    edit.moveDownItem = addItem(edit.menu, "moveDownItem", QStringLiteral("↓下へ移動"));
    addSeparator(edit.menu);
    edit.currentPricesItem =
        addItem(edit.menu, "currentPricesItem", QStringLiteral("現在の管材単価計算"));
    edit.separator = addSeparator(edit.menu, "editSeparator");
    edit.separator->setVisible(false);
    edit.copyWholeTableItem =
        addItem(edit.menu, "copyWholeTableItem", QStringLiteral("全内容をコピー"));
    edit.copyPricesItem = addItem(edit.menu, "copyPricesItem", QStringLiteral("単価をコピー"));
    edit.copyAllFactorsItem =
        addItem(edit.menu, "copyAllFactorsItem", QStringLiteral("全歩掛をコピー"));
    edit.copyLabourFactorsItem =
        addItem(edit.menu, "copyLabourFactorsItem", QStringLiteral("歩掛（工費）をコピー"));
    addSeparator(edit.menu);
    edit.pasteWholeTableItem =
        addItem(edit.menu, "pasteWholeTableItem", QStringLiteral("全内容を貼付"));
    edit.pastePricesItem = addItem(edit.menu, "pastePricesItem", QStringLiteral("単価を貼付"));
    edit.pasteAllFactorsItem =
        addItem(edit.menu, "pasteAllFactorsItem", QStringLiteral("全歩掛を貼付"));
    edit.pasteLabourFactorsItem =
        addItem(edit.menu, "pasteLabourFactorsItem", QStringLiteral("歩掛（工費）を貼付"));
    addSeparator(edit.menu);
    edit.saveLibraryItem =
        addItem(edit.menu, "saveLibraryItem", QStringLiteral("選択用標準歩掛として登録"));
    addSeparator(edit.menu);
    edit.clearPipeTypeItem =
        addItem(edit.menu, "clearPipeTypeItem", QStringLiteral("管材をクリアー"));
    bindAction(edit.undoItem, actions.undoAction);
    bindAction(edit.labourLibraryItem, actions.loadLibraryAction);
    bindAction(edit.labourCostChangeItem, actions.labourCostChangeAction);
    bindAction(edit.optionChangeItem, actions.optionChangeAction);
    bindAction(edit.moveUpItem, actions.moveUpAction);
    bindAction(edit.moveDownItem, actions.moveDownAction);
    bindAction(edit.saveLibraryItem, actions.saveLibraryAction);

    // 細目編集
    detail.menu = addMenu("detailMenu", QStringLiteral("細目編集(&B)"));
    detail.copyDetailItem =
        addItem(detail.menu, "copyDetailItem", QStringLiteral("(細目)の全内容をコピー"));
    detail.copyDetailPricesItem =
        addItem(detail.menu, "copyDetailPricesItem", QStringLiteral("(細目)の単価をコピー"));
    detail.copyDetailFactorsItem =
        addItem(detail.menu, "copyDetailFactorsItem", QStringLiteral("(細目)の全歩掛をコピー"));
    detail.copyDetailLabourItem = addItem(detail.menu, "copyDetailLabourItem",
                                          QStringLiteral("(細目)の歩掛（工費）をコピー"));
    addSeparator(detail.menu);
    detail.pasteDetailItem =
        addItem(detail.menu, "pasteDetailItem", QStringLiteral("(細目)の全内容を貼付"));
    detail.pasteDetailPricesItem =
        addItem(detail.menu, "pasteDetailPricesItem", QStringLiteral("(細目)に単価を貼付"));
    detail.pasteDetailFactorsItem =
        addItem(detail.menu, "pasteDetailFactorsItem", QStringLiteral("(細目)へ全歩掛を貼付"));
    detail.pasteDetailLabourItem =
        addItem(detail.menu, "pasteDetailLabourItem", QStringLiteral("(細目)へ歩掛（工費）を貼付"));
    addSeparator(detail.menu);
    detail.copyDetailPricesAcrossItem = addItem(detail.menu, "copyDetailPricesAcrossItem",
                                                QStringLiteral("(細目)内、同一単価(No1→No2,3,4)"));
    // showPipeType gives it the captions of the details of the pipe type shown.
    detail.copyFirstDetailAcrossItem =
        addItem(detail.menu, "copyFirstDetailAcrossItem",
                QStringLiteral("(細目)内全データ、同一デ－タ(No1→No2,3,4)"));
    addSeparator(detail.menu);
    detail.clearDetailItem =
        addItem(detail.menu, "clearDetailItem", QStringLiteral("現在の細目をクリアー"));
    for (QAction* hidden : {detail.copyDetailPricesItem, detail.pasteDetailPricesItem,
                            detail.copyDetailPricesAcrossItem})
        hidden->setVisible(false);

    // 外部データ入出力
    externalData.menu = addMenu("externalDataMenu", QStringLiteral("外部データ入出力(&O)"));
    externalData.excelOutItem =
        addItem(externalData.menu, "excelOutItem", QStringLiteral("エクセル出力"));
    externalData.csvFileItem = addItem(externalData.menu, "csvFileItem",
                                       QStringLiteral("表示中の管材データをCSVファイルとして出力"));
    externalData.clipboardItem =
        addItem(externalData.menu, "clipboardItem",
                QStringLiteral("表示中の管材データをクリップボードへＣＳＶ形式で取り出す"));
    bindAction(externalData.excelOutItem, actions.excelOutAction);

    // Commands of the copy, paste, clear and output work are not joined yet.
    for (QAction* a : {edit.copyWholeTableItem,          edit.copyPricesItem,
                       edit.copyAllFactorsItem,          edit.copyLabourFactorsItem,
                       edit.pasteWholeTableItem,         edit.pastePricesItem,
                       edit.pasteAllFactorsItem,         edit.pasteLabourFactorsItem,
                       edit.clearPipeTypeItem,           detail.copyDetailItem,
                       detail.copyDetailPricesItem,      detail.copyDetailFactorsItem,
                       detail.copyDetailLabourItem,      detail.copyDetailPricesAcrossItem,
                       detail.pasteDetailItem,           detail.pasteDetailPricesItem,
                       detail.pasteDetailFactorsItem,    detail.pasteDetailLabourItem,
                       detail.copyFirstDetailAcrossItem, detail.clearDetailItem,
                       externalData.csvFileItem,         externalData.clipboardItem})
        a->setEnabled(false);

    // The tree's pop-up menu.
    treePopup.menu = new QMenu(window);
    treePopup.menu->setObjectName(QStringLiteral("treePopupMenu"));
    treePopup.popupMoveUpItem =
        addItem(treePopup.menu, "popupMoveUpItem", QStringLiteral("↑上へ移動"));
    treePopup.popupMoveDownItem =
        addItem(treePopup.menu, "popupMoveDownItem", QStringLiteral("↓下へ移動"));
    bindAction(treePopup.popupMoveUpItem, actions.moveUpAction);
    bindAction(treePopup.popupMoveDownItem, actions.moveDownAction);
}
