// The main form: the main menu, the actions, the view menu and the naming of
// groups.
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"

#include "platform/dialogs.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTreeWidget>

void MainWindow::buildMenu() {
    menus_ = std::make_unique<MainMenu>(this);
    connect(menus_->actions.aboutAction, &QAction::triggered, this, &MainWindow::showAbout);
    connect(menus_->actions.exitAction, &QAction::triggered, this, &MainWindow::exitProgram);
    connect(menus_->file.installFolderItem, &QAction::triggered, this,
            &MainWindow::showInstallFolder);
    connect(menus_->file.calculatorItem, &QAction::triggered, this, &MainWindow::startCalculator);
    connect(menus_->view.treeListItem, &QAction::triggered, this, &MainWindow::toggleTree);
    connect(menus_->view.statusBarItem, &QAction::triggered, this, &MainWindow::toggleStatusBar);
    for (QAction* naming : menus_->groupNames.namingItems)
        connect(naming, &QAction::triggered, this, &MainWindow::groupNamingTriggered);
}

QMenu* MainWindow::groupMenu(int g) const {
    return g >= 1 && g <= 10 ? menus_->groupNames.groups[std::size_t(g - 1)] : nullptr;
}

QAction* MainWindow::groupNamingItem(int g) const {
    return g >= 1 && g <= 10 ? menus_->groupNames.namingItems[std::size_t(g - 1)] : nullptr;
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
    if (tree) tree->setVisible(menus_->view.treeListItem->isChecked());
}

void MainWindow::toggleStatusBar() {
    statusLine->setVisible(menus_->view.statusBarItem->isChecked());
}

void MainWindow::exitProgram() {
    close();
}
