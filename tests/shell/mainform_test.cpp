// The main form as it comes up: paths, menus enabled, status bar, view menu,
// naming of groups and the small tools.
#include "controls/gradpan.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "shell/aboutdialog.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"
#include "support/guitesting.h"

namespace {

class MainFormTest : public ::testing::Test {
protected:
    void SetUp() override { qputenv("QORVALE_COMMON_DATA", common.path().toUtf8()); }
    void TearDown() override { qunsetenv("QORVALE_COMMON_DATA"); }
    QTemporaryDir common;
    ScriptedDialogs dialogs;
};

// The paths from the launch string, and the items disabled ("-") or hidden
// ("!") before anything is loaded.
TEST_F(MainFormTest, CreationTakesThePathsAndDisablesWhatHasNothingToWorkOn) {
    MainWindow form(dialogs, "0;1;0;0;/srv/velmora/db/;");
    EXPECT_EQ(form.workspace().paths().dataRoot + '|' + form.workspace().paths().databaseFolder,
              common.path() + "/ostrel/velmora_main|/srv/velmora/db/");
    QStringList off;
    for (QAction* m : form.menuBar()->actions())
        for (QAction* a : m->menu()->actions())
            if (!a->isSeparator() && (!a->isEnabled() || !a->isVisible()))
                off << a->objectName() + (a->isEnabled() ? "" : "-") + (a->isVisible() ? "" : "!");
    EXPECT_EQ(off.join(' '),
              "undoItem- pasteWholeTableItem- pastePricesItem- pasteAllFactorsItem- "
              "pasteLabourFactorsItem- copyDetailPricesItem-! pasteDetailItem- "
              "pasteDetailPricesItem-! pasteDetailFactorsItem- pasteDetailLabourItem- "
              "copyDetailPricesAcrossItem-! copyFirstDetailAcrossItem-");
    for (QAction* separator : {form.menus().file.separator, form.menus().edit.separator})
        EXPECT_TRUE(separator->isSeparator() && !separator->isVisible());
    EXPECT_EQ(form.menus().file.saveItem->shortcut().toString() + ' ' +
                  form.menus().edit.undoItem->shortcut().toString(),
              "Ctrl+S Ctrl+Z");
    form.show(); // the emblem over the tree keeps its height as the tree grows
    EXPECT_EQ(form.findChild<GradientPanel*>("velmoraEmblem")->height(), 84);
}

// The items follow their actions, each group is named from its menu, the
// status bar and the view menu, and the tools of the file menu.
TEST_F(MainFormTest, MenuItemsGroupNamesStatusBarViewMenuAndTools) {
    MainWindow form{dialogs, QString()};
    const WindowActions& actions = form.menus().actions;
    // One action, two items: the edit menu and the tree's pop-up.
    const TreePopupMenu& popup = form.menus().treePopup;
    EXPECT_EQ(popup.menu->actions(),
              QList<QAction*>({popup.popupMoveUpItem, popup.popupMoveDownItem}));
    actions.undoAction->setEnabled(true);
    actions.moveDownAction->setEnabled(false);
    EXPECT_EQ(std::tuple(form.menus().edit.undoItem->isEnabled(),
                         form.menus().edit.moveUpItem->isEnabled(),
                         popup.popupMoveUpItem->isEnabled(), popup.popupMoveDownItem->isEnabled()),
              std::tuple(true, true, true, false));

    // About, the install folder and the calculator, from the file menu.
    AboutDialog about(dialogs);
    form.setFormDialogs({&about, nullptr, nullptr});
    QWidget* shown = nullptr;
    whenModal([&shown](QWidget* w) {
        shown = w;
        qobject_cast<AboutDialog*>(w)->closeButton->click();
    });
    form.menus().file.aboutItem->trigger();
    EXPECT_EQ(shown, &about);
    form.menus().file.installFolderItem->trigger();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes()[0].content.endsWith(QCoreApplication::applicationDirPath()));
    // The calculator starts when one is installed; a failed start says nothing.
    const QByteArray oldPath = qgetenv("PATH");
    QTemporaryDir bin;
    qputenv("PATH", bin.path().toUtf8());
    form.menus().file.calculatorItem->trigger();
    EXPECT_TRUE(dialogs.processes().empty());
    const QString calculator = bin.path() + "/gnome-calculator";
    writeFileBytes(calculator, {});
    QFile::setPermissions(calculator, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    dialogs.setStartResult(false);
    form.menus().file.calculatorItem->trigger();
    qputenv("PATH", oldPath);
    ASSERT_EQ(dialogs.processes().size(), 1u);
    EXPECT_EQ(dialogs.processes()[0].program, calculator);
    EXPECT_EQ(dialogs.boxes().size(), 1u);

    // Each group's menu holds its own naming item; the items name the groups
    // they are triggered for.
    for (int g = 1; g <= 10; ++g)
        EXPECT_EQ(form.groupMenu(g)->actions(), QList<QAction*>{form.groupNamingItem(g)});
    EXPECT_EQ(form.groupMenu(11), nullptr);
    dialogs.answerInput("上水");
    form.groupNamingItem(2)->trigger();
    EXPECT_EQ(form.groupName(2) + '|' + form.groupMenu(2)->menuAction()->text() + '|' +
                  dialogs.inputs().at(0).initial,
              "上水|上水|排水");
    dialogs.cancelInput();
    form.groupNamingItem(10)->trigger();
    EXPECT_EQ(form.groupName(10), "冷媒");

    form.show();
    ASSERT_EQ(form.statusBar(), form.statusLine);
    ASSERT_TRUE(form.statusPanelLabel(6) && !form.statusPanelLabel(7));
    form.setStatusPanel(9, "ignored"); // no such panel: nothing
    EXPECT_TRUE(form.statusPanelLabel(0)->x() < form.statusPanelLabel(6)->x());
    // Each view item hides what it names and brings it back; a widget of the
    // tree's name elsewhere is not the tree.
    auto* other = new QWidget(form.centralWidget());
    other->setObjectName("tree");
    other->show();
    const ViewMenu& view = form.menus().view;
    for (auto [item, widget] : std::initializer_list<std::pair<QAction*, QWidget*>>{
             {view.statusBarItem, form.statusLine}, {view.treeListItem, form.tree}}) {
        ASSERT_TRUE(item->isChecked() && widget->isVisible());
        item->trigger();
        EXPECT_FALSE(item->isChecked() || widget->isVisible() || !other->isVisible())
            << widget->objectName().toStdString();
        item->trigger();
        EXPECT_TRUE(item->isChecked() && widget->isVisible()) << widget->objectName().toStdString();
    }
    form.menus().file.exitItem->trigger();
    EXPECT_FALSE(form.isVisible());
}

} // namespace
