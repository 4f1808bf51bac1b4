// The main form as it comes up: caption, paths, geometry, menu, status bar,
// view menu, naming of groups and the small tools.
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"

#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/aboutdialog.h"
#include "support/modal.h"

#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

#include <QTreeWidget>

#include <gtest/gtest.h>

namespace TD = ::TaskDialog;

namespace {

class MainFormTest : public ::testing::Test {
protected:
    void SetUp() override { qputenv("QORVALE_COMMON_DATA", common.path().toUtf8()); }
    void TearDown() override { qunsetenv("QORVALE_COMMON_DATA"); }
    QTemporaryDir common;
    ScriptedDialogs dialogs;
};

TEST_F(MainFormTest, CreationSetsCaptionPathsAndGeometry) {
    MainWindow form(dialogs, "0;1;0;0;/srv/velmora/db/;");
    EXPECT_EQ(form.windowTitle(), "Qorvale-Ostrel-");
    EXPECT_EQ(form.workspace().paths().dataRoot, common.path() + "/ostrel/velmora_main");
    EXPECT_EQ(form.workspace().paths().databaseFolder, "/srv/velmora/db/");
    EXPECT_EQ(form.objectName(), "MainWindow");
    EXPECT_EQ(form.size(), QSize(1444, 851));
    EXPECT_EQ(form.pos(), QPoint(2, 2));
    EXPECT_EQ(form.currentCategory, 1);
    EXPECT_FALSE(form.noDataFolder);

    MainWindow noArgument{dialogs, QString()};
    EXPECT_EQ(noArgument.workspace().paths().databaseFolder, common.path() + "/ostrel/database/");
    EXPECT_TRUE(dialogs.boxes().empty());
}

struct MenuRow {
    const char* menu;
    const char* item;
    const char* caption;
    const char* shortcut;
    bool enabled;
    bool visible;
};

// Every item of the main menu, in menu order.
const MenuRow MenuTable[] = {
    {"fileMenu", "aboutItem", "このソフトウェアについて", "", true, true},
    {"fileMenu", "installFolderItem", "インストールフォルダー確認", "", true, true},
    {"fileMenu", "calculatorItem", "電卓", "", true, true},
    {"fileMenu", "saveItem", "保  存", "Ctrl+S", true, true},
    {"fileMenu", "printItem", "印  刷", "", true, true},
    {"fileMenu", "exitItem", "終了(&X)", "", true, true},
    {"viewMenu", "treeListItem", "ツリーリストを表示する", "", true, true},
    {"viewMenu", "statusBarItem", "ステータスバーを表示する", "", true, true},
    {"groupNamesMenu", "groupMenu1", "給水", "", true, true},
    {"groupNamesMenu", "groupMenu2", "排水", "", true, true},
    {"groupNamesMenu", "groupMenu3", "通気", "", true, true},
    {"groupNamesMenu", "groupMenu4", "給湯", "", true, true},
    {"groupNamesMenu", "groupMenu5", "消火", "", true, true},
    {"groupNamesMenu", "groupMenu6", "冷温水", "", true, true},
    {"groupNamesMenu", "groupMenu7", "冷却水", "", true, true},
    {"groupNamesMenu", "groupMenu8", "蒸気", "", true, true},
    {"groupNamesMenu", "groupMenu9", "油", "", true, true},
    {"groupNamesMenu", "groupMenu10", "冷媒", "", true, true},
    {"editMenu", "undoItem", "取消", "Ctrl+Z", false, true},
    {"editMenu", "labourLibraryItem", "標準歩掛選択", "", true, true},
    {"editMenu", "labourCostChangeItem", "グループ内の基礎工費を、表示中のものに変更", "", true,
     true},
    {"editMenu", "optionChangeItem", "グループ内の計算オプションを、表示中のものに変更", "", true,
     true},
    {"editMenu", "moveUpItem", "↑上へ移動", "", true, true},
    {"editMenu", "moveDownItem", "↓下へ移動", "", true, true},
    {"editMenu", "currentPricesItem", "現在の管材単価計算", "", true, true},
    {"editMenu", "copyWholeTableItem", "全内容をコピー", "", true, true},
    {"editMenu", "copyPricesItem", "単価をコピー", "", true, true},
    {"editMenu", "copyAllFactorsItem", "全歩掛をコピー", "", true, true},
    {"editMenu", "copyLabourFactorsItem", "歩掛（工費）をコピー", "", true, true},
    {"editMenu", "pasteWholeTableItem", "全内容を貼付", "", false, true},
    {"editMenu", "pastePricesItem", "単価を貼付", "", false, true},
    {"editMenu", "pasteAllFactorsItem", "全歩掛を貼付", "", false, true},
    {"editMenu", "pasteLabourFactorsItem", "歩掛（工費）を貼付", "", false, true},
    {"editMenu", "saveLibraryItem", "選択用標準歩掛として登録", "", true, true},
    {"editMenu", "clearPipeTypeItem", "管材をクリアー", "", true, true},
    {"detailMenu", "copyDetailItem", "(細目)の全内容をコピー", "", true, true},
    {"detailMenu", "copyDetailPricesItem", "(細目)の単価をコピー", "", false, false},
    {"detailMenu", "copyDetailFactorsItem", "(細目)の全歩掛をコピー", "", true, true},
    {"detailMenu", "copyDetailLabourItem", "(細目)の歩掛（工費）をコピー", "", true, true},
    {"detailMenu", "pasteDetailItem", "(細目)の全内容を貼付", "", false, true},
    {"detailMenu", "pasteDetailPricesItem", "(細目)に単価を貼付", "", false, false},
    {"detailMenu", "pasteDetailFactorsItem", "(細目)へ全歩掛を貼付", "", false, true},
    {"detailMenu", "pasteDetailLabourItem", "(細目)へ歩掛（工費）を貼付", "", false, true},
    {"detailMenu", "copyDetailPricesAcrossItem", "(細目)内、同一単価(No1→No2,3,4)", "", false,
     false},
    {"detailMenu", "copyFirstDetailAcrossItem", "(細目)内全データ、同一デ－タ(No1→No2,3,4)", "",
     false, true},
    {"detailMenu", "clearDetailItem", "現在の細目をクリアー", "", true, true},
    {"externalDataMenu", "excelOutItem", "エクセル出力", "", true, true},
    {"externalDataMenu", "csvFileItem", "表示中の管材データをCSVファイルとして出力", "", true,
     true},
    {"externalDataMenu", "clipboardItem",
     "表示中の管材データをクリップボードへＣＳＶ形式で取り出す", "", true, true},
};

TEST_F(MainFormTest, MainMenuHoldsEveryItemOfTheTable) {
    MainWindow form{dialogs, QString()};
    ASSERT_EQ(form.menuBar(), form.menuBar());
    EXPECT_EQ(form.menuBar()->objectName(), "mainMenu");

    const QList<QAction*> menus = form.menuBar()->actions();
    const QStringList names = {"fileMenu", "viewMenu",   "groupNamesMenu",
                               "editMenu", "detailMenu", "externalDataMenu"};
    const QStringList titles = {"ファイル(&F)", "表  示(&D)",   "管種名称編集(&P)",
                                "編 集1(&E)",   "細目編集(&B)", "外部データ入出力(&O)"};
    ASSERT_EQ(menus.size(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(menus[i]->objectName(), names[i]);
        EXPECT_EQ(menus[i]->text(), titles[i]);
    }

    QMap<QString, QStringList> order;
    for (const MenuRow& row : MenuTable) {
        SCOPED_TRACE(row.item);
        auto* menu = form.findChild<QMenu*>(row.menu);
        ASSERT_NE(menu, nullptr);
        auto* item = form.findChild<QAction*>(row.item);
        ASSERT_NE(item, nullptr);
        EXPECT_TRUE(menu->actions().contains(item));
        EXPECT_EQ(item->text(), QString::fromUtf8(row.caption));
        EXPECT_EQ(item->shortcut().toString(QKeySequence::PortableText), row.shortcut);
        EXPECT_EQ(item->isEnabled(), row.enabled);
        EXPECT_EQ(item->isVisible(), row.visible);
        order[row.menu] << row.item;
    }
    // The items stand in the menus in the order of the table, separators apart.
    for (auto it = order.begin(); it != order.end(); ++it) {
        QStringList inMenu;
        for (QAction* a : form.findChild<QMenu*>(it.key())->actions())
            if (!a->isSeparator()) inMenu << a->objectName();
        EXPECT_EQ(inMenu, it.value()) << it.key().toStdString();
    }
    // The two separators that the show step brings up.
    for (QAction* separator : {form.menus().file.separator, form.menus().edit.separator}) {
        EXPECT_TRUE(separator->isSeparator());
        EXPECT_FALSE(separator->isVisible());
    }
    EXPECT_EQ(form.menus().file.separator->objectName(), "fileSeparator");
    EXPECT_EQ(form.menus().edit.separator->objectName(), "editSeparator");
    EXPECT_TRUE(form.menus().view.treeListItem->isChecked());
    EXPECT_TRUE(form.menus().view.statusBarItem->isChecked());
}

TEST_F(MainFormTest, MenuItemsFollowTheirActions) {
    MainWindow form{dialogs, QString()};
    int undos = 0;
    QObject::connect(form.menus().actions.undoAction, &QAction::triggered, [&undos] { ++undos; });
    EXPECT_EQ(form.menus().actions.undoAction->shortcut(), QKeySequence(Qt::Key_Escape));
    EXPECT_TRUE(form.actions().contains(form.menus().actions.undoAction));
    form.menus().edit.undoItem->trigger(); // disabled: nothing runs
    EXPECT_EQ(undos, 0);
    form.menus().actions.undoAction->setEnabled(true);
    EXPECT_TRUE(form.menus().edit.undoItem->isEnabled());
    form.menus().edit.undoItem->trigger();
    EXPECT_EQ(undos, 1);
    form.menus().actions.undoAction->setEnabled(false);
    EXPECT_FALSE(form.menus().edit.undoItem->isEnabled());

    // One action, two items: the edit menu and the tree's pop-up.
    EXPECT_EQ(form.menus().treePopup.menu->actions(),
              QList<QAction*>({form.menus().treePopup.popupMoveUpItem,
                               form.menus().treePopup.popupMoveDownItem}));
    form.menus().actions.moveDownAction->setEnabled(false);
    EXPECT_TRUE(form.menus().edit.moveUpItem->isEnabled());
    EXPECT_TRUE(form.menus().treePopup.popupMoveUpItem->isEnabled());
    EXPECT_FALSE(form.menus().treePopup.popupMoveDownItem->isEnabled());
    EXPECT_EQ(form.menus().actions.labourCostChangeAction->text(),
              "表示中の基礎工費に書き換える(全付属品データ対象)");
    EXPECT_EQ(form.menus().actions.sizeSetAction->text(), "サイズ設定");
    EXPECT_TRUE(form.menus().actions.sizeSetAction->isEnabled());
}

TEST_F(MainFormTest, GroupsAreNamedFromTheMenu) {
    MainWindow form{dialogs, QString()};
    for (int g = 1; g <= 10; ++g) {
        EXPECT_EQ(form.groupName(g),
                  QString::fromUtf8(MainMenu::DefaultGroupNames[std::size_t(g - 1)]));
        QAction* naming = form.groupNamingItem(g);
        EXPECT_EQ(naming->text(), "このグループに名称をつける");
        EXPECT_EQ(naming->data().toInt(), g - 1);
        EXPECT_EQ(form.groupMenu(g)->actions(), QList<QAction*>{naming});
    }
    EXPECT_EQ(form.groupNamingItem(10)->objectName(), "groupNamingItem10");
    EXPECT_EQ(form.groupMenu(11), nullptr);

    dialogs.answerInput("上水");
    form.groupNamingItem(2)->trigger();
    EXPECT_EQ(form.groupName(2), "上水");
    EXPECT_EQ(form.groupMenu(2)->menuAction()->text(), "上水");
    const ScriptedDialogs::Input& asked = dialogs.inputs().at(0);
    EXPECT_EQ(asked.title, "Qorvale");
    EXPECT_EQ(asked.prompt, "グル－プ名を入力してください");
    EXPECT_EQ(asked.initial, "排水");

    dialogs.cancelInput();
    form.groupNamingItem(10)->trigger();
    EXPECT_EQ(form.groupName(10), "冷媒");
    EXPECT_TRUE(dialogs.unanswered().isEmpty());
}

TEST_F(MainFormTest, StatusBarAndViewMenu) {
    MainWindow form{dialogs, QString()};
    form.show();
    ASSERT_EQ(form.statusBar(), form.statusLine);
    EXPECT_EQ(form.statusLine->objectName(), "statusLine");
    const int widths[] = {200, 200, 150, 100, 50, 300, 50};
    for (int i = 0; i < 7; ++i) {
        ASSERT_NE(form.statusPanelLabel(i), nullptr);
        EXPECT_EQ(form.statusPanelLabel(i)->width(), widths[i]);
        EXPECT_EQ(form.statusPanel(i), QString());
    }
    EXPECT_EQ(form.statusPanelLabel(7), nullptr);
    form.setStatusPanel(5, form.workspace().paths().databaseFolder);
    form.setStatusPanel(9, "ignored");
    EXPECT_EQ(form.statusPanel(5), form.workspace().paths().databaseFolder);
    EXPECT_TRUE(form.statusPanelLabel(0)->x() < form.statusPanelLabel(6)->x());

    form.menus().view.statusBarItem->trigger();
    EXPECT_FALSE(form.menus().view.statusBarItem->isChecked());
    EXPECT_FALSE(form.statusLine->isVisible());
    form.menus().view.statusBarItem->trigger();
    EXPECT_TRUE(form.menus().view.statusBarItem->isChecked());
    EXPECT_TRUE(form.statusLine->isVisible());

    // A widget of the same name elsewhere is not the tree.
    auto* other = new QWidget(form.centralWidget());
    other->setObjectName("tree");
    other->show();
    ASSERT_NE(static_cast<QWidget*>(form.tree), other);
    ASSERT_TRUE(form.tree->isVisible());
    form.menus().view.treeListItem->trigger();
    EXPECT_FALSE(form.menus().view.treeListItem->isChecked());
    EXPECT_FALSE(form.tree->isVisible());
    EXPECT_TRUE(other->isVisible());
    form.menus().view.treeListItem->trigger();
    EXPECT_TRUE(form.tree->isVisible());
}

TEST_F(MainFormTest, ExitClosesTheForm) {
    MainWindow form{dialogs, QString()};
    form.show();
    ASSERT_TRUE(form.isVisible());
    form.menus().file.exitItem->trigger();
    EXPECT_FALSE(form.isVisible());
}

TEST_F(MainFormTest, AboutCommandShowsTheVersionDialog) {
    MainWindow form{dialogs, QString()};
    AboutDialog about(dialogs);
    form.setFormDialogs({&about, nullptr, nullptr});
    QWidget* shown = nullptr;
    whenModal([&shown](QWidget* w) {
        shown = w;
        qobject_cast<AboutDialog*>(w)->closeButton->click();
    });
    form.menus().file.aboutItem->trigger();
    EXPECT_EQ(shown, &about);
    EXPECT_FALSE(about.isVisible());
}

TEST_F(MainFormTest, InstallFolderIsShownInAnInfoBox) {
    MainWindow form{dialogs, QString()};
    form.menus().file.installFolderItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    const ScriptedDialogs::Box& box = dialogs.boxes()[0];
    EXPECT_EQ(box.title, applicationTitle());
    EXPECT_EQ(box.instruction, "確認");
    EXPECT_EQ(box.content,
              "現在のインストールフォルダー\r\n" + QCoreApplication::applicationDirPath());
    EXPECT_EQ(box.icon, TD::IconNone);
    EXPECT_EQ(box.buttons, TD::ButtonOk);
}

TEST_F(MainFormTest, CalculatorStartsWhenOneIsInstalled) {
    MainWindow form{dialogs, QString()};
    const QByteArray oldPath = qgetenv("PATH");
    QTemporaryDir bin;
    qputenv("PATH", bin.path().toUtf8());
    form.menus().file.calculatorItem->trigger();
    EXPECT_TRUE(dialogs.processes().empty());
    EXPECT_TRUE(dialogs.boxes().empty());

    const QString calculator = bin.path() + "/gnome-calculator";
    QFile file(calculator);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    dialogs.setStartResult(false); // a failed start says nothing
    form.menus().file.calculatorItem->trigger();
    qputenv("PATH", oldPath);
    ASSERT_EQ(dialogs.processes().size(), 1u);
    EXPECT_EQ(dialogs.processes()[0].program, calculator);
    EXPECT_TRUE(dialogs.processes()[0].arguments.isEmpty());
    EXPECT_TRUE(dialogs.boxes().empty());
}

} // namespace
