// The main form: the main menu, the actions, the view menu and the naming of
// groups.
#include "shell/utankaregist.h"

#include "platform/dialogs.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTreeWidget>

const std::array<const char*, 10> TFtankaregist::DefaultGroupNames = {
    "給水", "排水", "通気", "給湯", "消火", "冷温水", "冷却水", "蒸気", "油", "冷媒"};

QAction* TFtankaregist::addItem(QMenu* menu, const char* name, const QString& caption) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(QString::fromLatin1(name));
    return item;
}

QAction* TFtankaregist::addSeparator(QMenu* menu, const char* name) {
    QAction* separator = menu->addSeparator();
    if (name) separator->setObjectName(QString::fromLatin1(name));
    return separator;
}

QAction* TFtankaregist::makeAction(const char* name, const QString& caption) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

void TFtankaregist::BindAction(QAction* item, QAction* action) {
    item->setEnabled(action->isEnabled());
    item->setVisible(action->isVisible());
    QObject::connect(action, &QAction::changed, item, [item, action] {
        item->setEnabled(action->isEnabled());
        item->setVisible(action->isVisible());
    });
    QObject::connect(item, &QAction::triggered, action, [action] { action->trigger(); });
}

void TFtankaregist::buildMenu() {
    // The named commands. Those whose work is not part of this program yet
    // stay disabled.
    ActionRelaseVersion =
        makeAction("ActionRelaseVersion", QStringLiteral("このソフトウェアについて"));
    ActionPrint = makeAction("ActionPrint", QStringLiteral("印  刷"));
    FileExit1 = makeAction("FileExit1", QStringLiteral("終了(&X)"));
    ActionUndo = makeAction("ActionUndo", QStringLiteral("取消"));
    ActionLoadparts = makeAction("ActionLoadparts", QStringLiteral("標準歩掛選択"));
    Actionwdatachange = makeAction(
        "Actionwdatachange", QStringLiteral("表示中の基礎工費に書き換える(全付属品データ対象)"));
    ActionOptionChange = makeAction(
        "ActionOptionChange", QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    ActionMoveUp = makeAction("ActionMoveUp", QStringLiteral("↑上へ移動"));
    ActionMoveDown = makeAction("ActionMoveDown", QStringLiteral("↓下へ移動"));
    ActionSaveParts = makeAction("ActionSaveParts", QStringLiteral("選択用標準歩掛として登録"));
    ActionExcelOut = makeAction("ActionExcelOut", QStringLiteral("エクセル出力"));
    ActionSizeSet = makeAction("ActionSizeSet", QStringLiteral("サイズ設定"));
    for (QAction* a :
         {ActionPrint, ActionUndo, ActionLoadparts, Actionwdatachange, ActionOptionChange,
          ActionMoveUp, ActionMoveDown, ActionSaveParts, ActionExcelOut, ActionSizeSet})
        a->setEnabled(false);
    // Esc undoes wherever the focus is on the form.
    ActionUndo->setShortcut(QKeySequence(Qt::Key_Escape));
    ActionUndo->setShortcutContext(Qt::WindowShortcut);
    addAction(ActionUndo);
    connect(ActionRelaseVersion, &QAction::triggered, this,
            &TFtankaregist::ActionRelaseVersionExecute);
    connect(FileExit1, &QAction::triggered, this, &TFtankaregist::FileExit1Execute);

    MainMenu1 = menuBar();
    MainMenu1->setObjectName(QStringLiteral("MainMenu1"));
    auto addMenu = [this](const char* name, const QString& title) {
        QMenu* menu = MainMenu1->addMenu(title);
        menu->setObjectName(QString::fromLatin1(name));
        menu->menuAction()->setObjectName(QString::fromLatin1(name));
        return menu;
    };

    // ファイル
    K1 = addMenu("K1", QStringLiteral("ファイル(&F)"));
    N23 = addItem(K1, "N23", QStringLiteral("このソフトウェアについて"));
    N28 = addItem(K1, "N28", QStringLiteral("インストールフォルダー確認"));
    N31 = addItem(K1, "N31", QStringLiteral("電卓"));
    addSeparator(K1);
    N1 = addItem(K1, "N1", QStringLiteral("保  存"));
    N1->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    N1->setEnabled(false); // until saving is joined to the form
    N8 = addItem(K1, "N8", QStringLiteral("印  刷"));
    N20 = addSeparator(K1, "N20");
    N20->setVisible(false);
    N21 = addItem(K1, "N21", QStringLiteral("終了(&X)"));
    BindAction(N23, ActionRelaseVersion);
    BindAction(N8, ActionPrint);
    BindAction(N21, FileExit1);
    connect(N28, &QAction::triggered, this, &TFtankaregist::N28Click);
    connect(N31, &QAction::triggered, this, &TFtankaregist::N31Click);

    // 表示
    N9 = addMenu("N9", QStringLiteral("表  示(&D)"));
    tree_list = addItem(N9, "tree_list", QStringLiteral("ツリーリストを表示する"));
    status_bar = addItem(N9, "status_bar", QStringLiteral("ステータスバーを表示する"));
    for (QAction* a : {tree_list, status_bar}) {
        a->setCheckable(true);
        a->setChecked(true);
    }
    connect(tree_list, &QAction::triggered, this, &TFtankaregist::tree_listClick);
    connect(status_bar, &QAction::triggered, this, &TFtankaregist::status_barClick);

    // 管種名称編集
    N44 = addMenu("N44", QStringLiteral("管種名称編集(&P)"));
    static const char* const groupItems[10] = {"x1",   "x22",  "x43",  "x64",  "x85",
                                               "x106", "x127", "x148", "x169", "x190"};
    static const char* const namingItems[10] = {"N53", "N55", "N57", "N59", "N60",
                                                "N63", "N65", "N67", "N69", "N71"};
    QMenu** groups[10] = {&x1, &x22, &x43, &x64, &x85, &x106, &x127, &x148, &x169, &x190};
    QAction** namings[10] = {&N53, &N55, &N57, &N59, &N60, &N63, &N65, &N67, &N69, &N71};
    for (int i = 0; i < 10; ++i) {
        QMenu* group = N44->addMenu(QString::fromUtf8(DefaultGroupNames[std::size_t(i)]));
        group->setObjectName(QString::fromLatin1(groupItems[i]));
        group->menuAction()->setObjectName(QString::fromLatin1(groupItems[i]));
        QAction* naming =
            addItem(group, namingItems[i], QStringLiteral("このグループに名称をつける"));
        naming->setData(i); // Tag
        connect(naming, &QAction::triggered, this, &TFtankaregist::N53Click);
        *groups[i] = group;
        *namings[i] = naming;
    }

    // 編集1
    K4 = addMenu("K4", QStringLiteral("編 集1(&E)"));
    N2 = addItem(K4, "N2", QStringLiteral("取消"));
    N2->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    addSeparator(K4);
    N12 = addItem(K4, "N12", QStringLiteral("標準歩掛選択"));
    addSeparator(K4);
    N30 = addItem(K4, "N30", QStringLiteral("グループ内の基礎工費を、表示中のものに変更"));
    N10 = addItem(K4, "N10", QStringLiteral("グループ内の計算オプションを、表示中のものに変更"));
    addSeparator(K4);
    N3 = addItem(K4, "N3", QStringLiteral("↑上へ移動"));
    N11 = addItem(K4, "N11", QStringLiteral("↓下へ移動"));
    addSeparator(K4);
    K17 = addItem(K4, "K17", QStringLiteral("現在の管材単価計算"));
    N24 = addSeparator(K4, "N24");
    N24->setVisible(false);
    all_copy_1 = addItem(K4, "all_copy_1", QStringLiteral("全内容をコピー"));
    all_copy_2 = addItem(K4, "all_copy_2", QStringLiteral("単価をコピー"));
    all_copy_3 = addItem(K4, "all_copy_3", QStringLiteral("全歩掛をコピー"));
    all_copy_4 = addItem(K4, "all_copy_4", QStringLiteral("歩掛（工費）をコピー"));
    addSeparator(K4);
    all_paste_1 = addItem(K4, "all_paste_1", QStringLiteral("全内容を貼付"));
    all_paste_2 = addItem(K4, "all_paste_2", QStringLiteral("単価を貼付"));
    all_paste_3 = addItem(K4, "all_paste_3", QStringLiteral("全歩掛を貼付"));
    all_paste_4 = addItem(K4, "all_paste_4", QStringLiteral("歩掛（工費）を貼付"));
    addSeparator(K4);
    ActionSaveParts1 = addItem(K4, "ActionSaveParts1", QStringLiteral("選択用標準歩掛として登録"));
    addSeparator(K4);
    N22 = addItem(K4, "N22", QStringLiteral("管材をクリアー"));
    BindAction(N2, ActionUndo);
    BindAction(N12, ActionLoadparts);
    BindAction(N30, Actionwdatachange);
    BindAction(N10, ActionOptionChange);
    BindAction(N3, ActionMoveUp);
    BindAction(N11, ActionMoveDown);
    BindAction(ActionSaveParts1, ActionSaveParts);

    // 細目編集
    K21 = addMenu("K21", QStringLiteral("細目編集(&B)"));
    item_copy_1 = addItem(K21, "item_copy_1", QStringLiteral("(細目)の全内容をコピー"));
    item_copy_2 = addItem(K21, "item_copy_2", QStringLiteral("(細目)の単価をコピー"));
    item_copy_3 = addItem(K21, "item_copy_3", QStringLiteral("(細目)の全歩掛をコピー"));
    item_copy_4 = addItem(K21, "item_copy_4", QStringLiteral("(細目)の歩掛（工費）をコピー"));
    addSeparator(K21);
    item_paste_1 = addItem(K21, "item_paste_1", QStringLiteral("(細目)の全内容を貼付"));
    item_paste_2 = addItem(K21, "item_paste_2", QStringLiteral("(細目)に単価を貼付"));
    item_paste_3 = addItem(K21, "item_paste_3", QStringLiteral("(細目)へ全歩掛を貼付"));
    item_paste_4 = addItem(K21, "item_paste_4", QStringLiteral("(細目)へ歩掛（工費）を貼付"));
    addSeparator(K21);
    item_copy_5 = addItem(K21, "item_copy_5", QStringLiteral("(細目)内、同一単価(No1→No2,3,4)"));
    // ShowPipeType gives it the captions of the details of the pipe type shown.
    item_paste_5 =
        addItem(K21, "item_paste_5", QStringLiteral("(細目)内全データ、同一デ－タ(No1→No2,3,4)"));
    addSeparator(K21);
    N33 = addItem(K21, "N33", QStringLiteral("現在の細目をクリアー"));
    for (QAction* hidden : {item_copy_2, item_paste_2, item_copy_5})
        hidden->setVisible(false);

    // 外部データ入出力
    N18 = addMenu("N18", QStringLiteral("外部データ入出力(&O)"));
    ActionExcelOut1 = addItem(N18, "ActionExcelOut1", QStringLiteral("エクセル出力"));
    CSV1 = addItem(N18, "CSV1", QStringLiteral("表示中の管材データをCSVファイルとして出力"));
    N19 = addItem(N18, "N19",
                  QStringLiteral("表示中の管材データをクリップボードへＣＳＶ形式で取り出す"));
    BindAction(ActionExcelOut1, ActionExcelOut);

    // Commands of the copy, paste, clear and output work are not joined yet.
    for (QAction* a :
         {all_copy_1,   all_copy_2,  all_copy_3,   all_copy_4,   all_paste_1,  all_paste_2,
          all_paste_3,  all_paste_4, N22,          item_copy_1,  item_copy_2,  item_copy_3,
          item_copy_4,  item_copy_5, item_paste_1, item_paste_2, item_paste_3, item_paste_4,
          item_paste_5, N33,         CSV1,         N19})
        a->setEnabled(false);

    // The tree's pop-up menu.
    PopupMenu1 = new QMenu(this);
    PopupMenu1->setObjectName(QStringLiteral("PopupMenu1"));
    N27 = addItem(PopupMenu1, "N27", QStringLiteral("↑上へ移動"));
    N29 = addItem(PopupMenu1, "N29", QStringLiteral("↓下へ移動"));
    BindAction(N27, ActionMoveUp);
    BindAction(N29, ActionMoveDown);
}

QMenu* TFtankaregist::GroupMenuItem(int g) const {
    const std::array<QMenu*, 10> items = {x1, x22, x43, x64, x85, x106, x127, x148, x169, x190};
    return g >= 1 && g <= 10 ? items[std::size_t(g - 1)] : nullptr;
}

QAction* TFtankaregist::GroupNamingItem(int g) const {
    const std::array<QAction*, 10> items = {N53, N55, N57, N59, N60, N63, N65, N67, N69, N71};
    return g >= 1 && g <= 10 ? items[std::size_t(g - 1)] : nullptr;
}

QString TFtankaregist::GroupName(int g) const {
    QMenu* item = GroupMenuItem(g);
    return item ? item->title() : QString();
}

void TFtankaregist::SetGroupName(int g, const QString& name) {
    if (QMenu* item = GroupMenuItem(g)) item->setTitle(name);
}

void TFtankaregist::N53Click() {
    if (auto* item = qobject_cast<QAction*>(sender())) NameGroup(item->data().toInt());
}

void TFtankaregist::NameGroup(int tag) {
    // The names live in the database: nothing is written to one that was
    // refused at the start.
    if (NoDatabase && !RowsAreLoaded(QStringLiteral("名称を変更できません。"))) return;
    const int g = tag + 1;
    QString name = GroupName(g);
    if (!CurrentDialogs().InputQuery(this, QStringLiteral("Qorvale"),
                                     QStringLiteral("グル－プ名を入力してください"), name))
        return;
    SetGroupName(g, name);
    if (QTreeWidgetItem* node = TreeNode(tag * 21)) node->setText(0, name);
    SaveGroupNames();
}

void TFtankaregist::tree_listClick() {
    // The check mark follows the click, and the tree follows the mark, so
    // that a hidden tree can be brought back.
    if (TreeView1) TreeView1->setVisible(tree_list->isChecked());
}

void TFtankaregist::status_barClick() {
    StatusBar1->setVisible(status_bar->isChecked());
}

void TFtankaregist::FileExit1Execute() {
    close();
}
