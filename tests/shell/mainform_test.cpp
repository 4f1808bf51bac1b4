// The main form as it comes up: caption, paths, geometry, menu, status bar,
// view menu, naming of groups and the small tools.
#include "shell/utankaregist.h"

#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/uversioninfo.h"
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
    ScriptedDialogsScope dialogs;
};

TEST_F(MainFormTest, CreationSetsCaptionPathsAndGeometry) {
    TFtankaregist form("0;1;0;0;/srv/velmora/db/;");
    EXPECT_EQ(form.windowTitle(), "Qorvale-Ostrel-");
    EXPECT_EQ(DataRoot, common.path() + "/ostrel/velmora_main");
    EXPECT_EQ(DatabaseFolder, "/srv/velmora/db/");
    EXPECT_EQ(form.objectName(), "Ftankaregist");
    EXPECT_EQ(form.size(), QSize(1444, 851));
    EXPECT_EQ(form.pos(), QPoint(2, 2));
    EXPECT_EQ(form.centralArea(), form.centralWidget());
    EXPECT_EQ(form.CurrentCtg, 1);
    EXPECT_FALSE(form.NoDataFolder);

    TFtankaregist noArgument{QString()};
    EXPECT_EQ(DatabaseFolder, common.path() + "/ostrel/database/");
    EXPECT_TRUE(dialogs->Boxes().empty());
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
    {"K1", "N23", "このソフトウェアについて", "", true, true},
    {"K1", "N28", "インストールフォルダー確認", "", true, true},
    {"K1", "N31", "電卓", "", true, true},
    {"K1", "N1", "保  存", "Ctrl+S", true, true},
    {"K1", "N8", "印  刷", "", true, true},
    {"K1", "N21", "終了(&X)", "", true, true},
    {"N9", "tree_list", "ツリーリストを表示する", "", true, true},
    {"N9", "status_bar", "ステータスバーを表示する", "", true, true},
    {"N44", "x1", "給水", "", true, true},
    {"N44", "x22", "排水", "", true, true},
    {"N44", "x43", "通気", "", true, true},
    {"N44", "x64", "給湯", "", true, true},
    {"N44", "x85", "消火", "", true, true},
    {"N44", "x106", "冷温水", "", true, true},
    {"N44", "x127", "冷却水", "", true, true},
    {"N44", "x148", "蒸気", "", true, true},
    {"N44", "x169", "油", "", true, true},
    {"N44", "x190", "冷媒", "", true, true},
    {"K4", "N2", "取消", "Ctrl+Z", false, true},
    {"K4", "N12", "標準歩掛選択", "", true, true},
    {"K4", "N30", "グループ内の基礎工費を、表示中のものに変更", "", true, true},
    {"K4", "N10", "グループ内の計算オプションを、表示中のものに変更", "", true, true},
    {"K4", "N3", "↑上へ移動", "", true, true},
    {"K4", "N11", "↓下へ移動", "", true, true},
    {"K4", "K17", "現在の管材単価計算", "", true, true},
    {"K4", "all_copy_1", "全内容をコピー", "", true, true},
    {"K4", "all_copy_2", "単価をコピー", "", true, true},
    {"K4", "all_copy_3", "全歩掛をコピー", "", true, true},
    {"K4", "all_copy_4", "歩掛（工費）をコピー", "", true, true},
    {"K4", "all_paste_1", "全内容を貼付", "", false, true},
    {"K4", "all_paste_2", "単価を貼付", "", false, true},
    {"K4", "all_paste_3", "全歩掛を貼付", "", false, true},
    {"K4", "all_paste_4", "歩掛（工費）を貼付", "", false, true},
    {"K4", "ActionSaveParts1", "選択用標準歩掛として登録", "", true, true},
    {"K4", "N22", "管材をクリアー", "", true, true},
    {"K21", "item_copy_1", "(細目)の全内容をコピー", "", true, true},
    {"K21", "item_copy_2", "(細目)の単価をコピー", "", false, false},
    {"K21", "item_copy_3", "(細目)の全歩掛をコピー", "", true, true},
    {"K21", "item_copy_4", "(細目)の歩掛（工費）をコピー", "", true, true},
    {"K21", "item_paste_1", "(細目)の全内容を貼付", "", false, true},
    {"K21", "item_paste_2", "(細目)に単価を貼付", "", false, false},
    {"K21", "item_paste_3", "(細目)へ全歩掛を貼付", "", false, true},
    {"K21", "item_paste_4", "(細目)へ歩掛（工費）を貼付", "", false, true},
    {"K21", "item_copy_5", "(細目)内、同一単価(No1→No2,3,4)", "", false, false},
    {"K21", "item_paste_5", "(細目)内全データ、同一デ－タ(No1→No2,3,4)", "", false, true},
    {"K21", "N33", "現在の細目をクリアー", "", true, true},
    {"N18", "ActionExcelOut1", "エクセル出力", "", true, true},
    {"N18", "CSV1", "表示中の管材データをCSVファイルとして出力", "", true, true},
    {"N18", "N19", "表示中の管材データをクリップボードへＣＳＶ形式で取り出す", "", true, true},
};

TEST_F(MainFormTest, MainMenuHoldsEveryItemOfTheTable) {
    TFtankaregist form{QString()};
    ASSERT_EQ(form.MainMenu1, form.menuBar());
    EXPECT_EQ(form.MainMenu1->objectName(), "MainMenu1");

    const QList<QAction*> menus = form.MainMenu1->actions();
    const QStringList names = {"K1", "N9", "N44", "K4", "K21", "N18"};
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
    for (QAction* separator : {form.N20, form.N24}) {
        EXPECT_TRUE(separator->isSeparator());
        EXPECT_FALSE(separator->isVisible());
    }
    EXPECT_EQ(form.N20->objectName(), "N20");
    EXPECT_EQ(form.N24->objectName(), "N24");
    EXPECT_TRUE(form.tree_list->isChecked());
    EXPECT_TRUE(form.status_bar->isChecked());
}

TEST_F(MainFormTest, MenuItemsFollowTheirActions) {
    TFtankaregist form{QString()};
    int undos = 0;
    QObject::connect(form.ActionUndo, &QAction::triggered, [&undos] { ++undos; });
    EXPECT_EQ(form.ActionUndo->shortcut(), QKeySequence(Qt::Key_Escape));
    EXPECT_TRUE(form.actions().contains(form.ActionUndo));
    form.N2->trigger(); // disabled: nothing runs
    EXPECT_EQ(undos, 0);
    form.ActionUndo->setEnabled(true);
    EXPECT_TRUE(form.N2->isEnabled());
    form.N2->trigger();
    EXPECT_EQ(undos, 1);
    form.ActionUndo->setEnabled(false);
    EXPECT_FALSE(form.N2->isEnabled());

    // One action, two items: the edit menu and the tree's pop-up.
    EXPECT_EQ(form.PopupMenu1->actions(), QList<QAction*>({form.N27, form.N29}));
    form.ActionMoveDown->setEnabled(false);
    EXPECT_TRUE(form.N3->isEnabled());
    EXPECT_TRUE(form.N27->isEnabled());
    EXPECT_FALSE(form.N29->isEnabled());
    EXPECT_EQ(form.Actionwdatachange->text(), "表示中の基礎工費に書き換える(全付属品データ対象)");
    EXPECT_EQ(form.ActionSizeSet->text(), "サイズ設定");
    EXPECT_TRUE(form.ActionSizeSet->isEnabled());
}

TEST_F(MainFormTest, GroupsAreNamedFromTheMenu) {
    TFtankaregist form{QString()};
    for (int g = 1; g <= 10; ++g) {
        EXPECT_EQ(form.GroupName(g),
                  QString::fromUtf8(TFtankaregist::DefaultGroupNames[std::size_t(g - 1)]));
        QAction* naming = form.GroupNamingItem(g);
        EXPECT_EQ(naming->text(), "このグループに名称をつける");
        EXPECT_EQ(naming->data().toInt(), g - 1);
        EXPECT_EQ(form.GroupMenuItem(g)->actions(), QList<QAction*>{naming});
    }
    EXPECT_EQ(form.N71->objectName(), "N71");
    EXPECT_EQ(form.GroupMenuItem(11), nullptr);

    dialogs->AnswerInput("上水");
    form.N55->trigger();
    EXPECT_EQ(form.GroupName(2), "上水");
    EXPECT_EQ(form.x22->menuAction()->text(), "上水");
    const ScriptedDialogs::Input& asked = dialogs->Inputs().at(0);
    EXPECT_EQ(asked.title, "Qorvale");
    EXPECT_EQ(asked.prompt, "グル－プ名を入力してください");
    EXPECT_EQ(asked.initial, "排水");

    dialogs->CancelInput();
    form.N71->trigger();
    EXPECT_EQ(form.GroupName(10), "冷媒");
    EXPECT_TRUE(dialogs->Unanswered().isEmpty());
}

TEST_F(MainFormTest, StatusBarAndViewMenu) {
    TFtankaregist form{QString()};
    form.show();
    ASSERT_EQ(form.statusBar(), form.StatusBar1);
    EXPECT_EQ(form.StatusBar1->objectName(), "StatusBar1");
    const int widths[] = {200, 200, 150, 100, 50, 300, 50};
    for (int i = 0; i < 7; ++i) {
        ASSERT_NE(form.StatusPanelLabel(i), nullptr);
        EXPECT_EQ(form.StatusPanelLabel(i)->width(), widths[i]);
        EXPECT_EQ(form.StatusPanel(i), QString());
    }
    EXPECT_EQ(form.StatusPanelLabel(7), nullptr);
    form.SetStatusPanel(5, DatabaseFolder);
    form.SetStatusPanel(9, "ignored");
    EXPECT_EQ(form.StatusPanel(5), DatabaseFolder);
    EXPECT_TRUE(form.StatusPanelLabel(0)->x() < form.StatusPanelLabel(6)->x());

    form.status_bar->trigger();
    EXPECT_FALSE(form.status_bar->isChecked());
    EXPECT_FALSE(form.StatusBar1->isVisible());
    form.status_bar->trigger();
    EXPECT_TRUE(form.status_bar->isChecked());
    EXPECT_TRUE(form.StatusBar1->isVisible());

    // A widget of the same name elsewhere is not the tree.
    auto* other = new QWidget(form.centralArea());
    other->setObjectName("TreeView1");
    other->show();
    ASSERT_NE(static_cast<QWidget*>(form.TreeView1), other);
    ASSERT_TRUE(form.TreeView1->isVisible());
    form.tree_list->trigger();
    EXPECT_FALSE(form.tree_list->isChecked());
    EXPECT_FALSE(form.TreeView1->isVisible());
    EXPECT_TRUE(other->isVisible());
    form.tree_list->trigger();
    EXPECT_TRUE(form.TreeView1->isVisible());
}

TEST_F(MainFormTest, ExitClosesTheForm) {
    TFtankaregist form{QString()};
    form.show();
    ASSERT_TRUE(form.isVisible());
    form.N21->trigger();
    EXPECT_FALSE(form.isVisible());
}

TEST_F(MainFormTest, AboutCommandShowsTheVersionDialog) {
    TFtankaregist form{QString()};
    TFversionInfo about;
    ASSERT_EQ(FversionInfo, &about);
    QWidget* shown = nullptr;
    WhenModal([&shown](QWidget* w) {
        shown = w;
        qobject_cast<TFversionInfo*>(w)->Button1->click();
    });
    form.N23->trigger();
    EXPECT_EQ(shown, &about);
    EXPECT_FALSE(about.isVisible());
}

TEST_F(MainFormTest, InstallFolderIsShownInAnInfoBox) {
    TFtankaregist form{QString()};
    form.N28->trigger();
    ASSERT_EQ(dialogs->Boxes().size(), 1u);
    const ScriptedDialogs::Box& box = dialogs->Boxes()[0];
    EXPECT_EQ(box.title, ApplicationTitle());
    EXPECT_EQ(box.instruction, "確認");
    EXPECT_EQ(box.content,
              "現在のインストールフォルダー\r\n" + QCoreApplication::applicationDirPath());
    EXPECT_EQ(box.icon, TD::IconNone);
    EXPECT_EQ(box.buttons, TD::ButtonOk);
}

TEST_F(MainFormTest, CalculatorStartsWhenOneIsInstalled) {
    TFtankaregist form{QString()};
    const QByteArray oldPath = qgetenv("PATH");
    QTemporaryDir bin;
    qputenv("PATH", bin.path().toUtf8());
    form.N31->trigger();
    EXPECT_TRUE(dialogs->Processes().empty());
    EXPECT_TRUE(dialogs->Boxes().empty());

    const QString calculator = bin.path() + "/gnome-calculator";
    QFile file(calculator);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    dialogs->SetStartResult(false); // a failed start says nothing
    form.N31->trigger();
    qputenv("PATH", oldPath);
    ASSERT_EQ(dialogs->Processes().size(), 1u);
    EXPECT_EQ(dialogs->Processes()[0].program, calculator);
    EXPECT_TRUE(dialogs->Processes()[0].arguments.isEmpty());
    EXPECT_TRUE(dialogs->Boxes().empty());
}

} // namespace
