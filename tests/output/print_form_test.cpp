// "印  刷" on the main window: the three hand-off files, the start of the
// print program through the dialog interface, and its failures.
#include "output/outputcommands.h"
#include "output/printhandoff.h"
#include "shell/formwidgets.h"
#include "support/workspace_fixture.h"

#include "store/codepage.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTabBar>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

class PrintCommand : public WorkspaceFixture {
protected:
    // The window, its printed page dated 1989-01-07.
    MainWindow& open() {
        MainWindow& f = WorkspaceFixture::open();
        f.outputs()->setPrintDate(QDate(1989, 1, 7));
        return f;
    }
};

TEST_F(PrintCommand, WritesTheFilesAndStartsTheProgramWithDataRootAndSemicolon) {
    MainWindow& f = open();
    ASSERT_TRUE(f.menus().actions.printAction->isEnabled());
    ASSERT_TRUE(f.menus().file.printItem->isEnabled());
    EXPECT_EQ(f.menus().file.printItem->text(), u("印  刷"));
    f.sheet()->materialGrid()->selectCells(QRect(3, 5, 1, 1));

    f.menus().file.printItem->trigger();

    ASSERT_EQ(dialogs.processes().size(), 1u);
    const auto& p = dialogs.processes()[0];
    EXPECT_EQ(p.program, printProgramPath());
    EXPECT_TRUE(p.program.endsWith(QStringLiteral("/listpress")));
    EXPECT_EQ(p.arguments, QStringList{dataRoot + QLatin1Char(';')});
    EXPECT_TRUE(dialogs.boxes().empty());

    // The submitted side is selected for the next redisplay.
    EXPECT_EQ(f.sheet()->materialGrid()->selectedCells(), QRect(1, 5, 1, 1));

    const QByteArray conf = readAll(printConfPath(dataRoot));
    EXPECT_TRUE(conf.startsWith("[Version]=2.00\r\n[Application_Title]=Qorvale\r\n"));
    EXPECT_TRUE(conf.contains(toAnsi(styleFilePath(dataRoot, 0)) + "\r\n"));
    EXPECT_TRUE(conf.contains("[Icon_File]=" + toAnsi(applicationIconPath()) + "\r\n"));
    EXPECT_TRUE(conf.endsWith("[File_Mask]=qvk\r\n"));
    EXPECT_TRUE(readAll(printHeaderPath(dataRoot))
                    .startsWith(toAnsi(u("[ta]=1989\r\n[tb]=昭和64\r\n[tc]=01\r\n[td]=07\r\n"
                                         "[te]=土\r\n[tf]=\r\n[tg]=\r\n[th]="))));
    // The rows as the window shows them, with its tab captions and panels.
    const QByteArray data = readAll(printDataPath(dataRoot));
    EXPECT_EQ(data.count('\n'), 56);
    EXPECT_TRUE(data.startsWith(toAnsi(f.statusPanel(0) + QLatin1Char(';') + f.statusPanel(1) +
                                       QLatin1Char(';') + f.statusPanel(2) + u(";屋内一般;15A;"))));

    // Another style: only line 4 of Print.conf changes.
    f.header()->printStyleRadio()->setItemIndex(2);
    f.menus().file.printItem->trigger();
    const QList<QByteArray> a = conf.split('\n');
    const QList<QByteArray> b = readAll(printConfPath(dataRoot)).split('\n');
    ASSERT_EQ(a.size(), b.size());
    for (int i = 0; i < int(a.size()); ++i)
        EXPECT_EQ(a[i] == b[i], i != 3) << i;
    EXPECT_EQ(readAll(printDataPath(dataRoot)), data);
    EXPECT_EQ(dialogs.processes().size(), 2u);
}

TEST_F(PrintCommand, AFailedStartLeavesTheFilesAndSaysNothing) {
    MainWindow& f = open();
    for (const QString& p :
         {printConfPath(dataRoot), printHeaderPath(dataRoot), printDataPath(dataRoot)})
        QFile::remove(p);
    dialogs.setStartResult(false);
    f.menus().actions.printAction->trigger();
    EXPECT_EQ(dialogs.processes().size(), 1u);
    EXPECT_TRUE(dialogs.boxes().empty());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_TRUE(QFile::exists(printConfPath(dataRoot)));
    EXPECT_TRUE(QFile::exists(printHeaderPath(dataRoot)));
    EXPECT_TRUE(QFile::exists(printDataPath(dataRoot)));
}

TEST_F(PrintCommand, MissingFolderShowsTheErrorAndStartsNothing) {
    MainWindow& f = open();
    ASSERT_TRUE(QDir(printFolderPath(dataRoot)).removeRecursively());
    dialogs.answerBox(TaskDialog::IdOk);
    f.menus().actions.printAction->trigger();
    EXPECT_TRUE(dialogs.processes().empty());
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains(QStringLiteral("print_Data.dat")));
}

TEST_F(PrintCommand, RefrigerantPipeTypeGivesOneTabAndMaskQvr) {
    MainWindow& f = open();
    clickNode(9 * 21 + 1);
    QCoreApplication::processEvents();
    ASSERT_EQ(f.sheet()->tabs()->count(), 1);
    f.menus().actions.printAction->trigger();
    EXPECT_TRUE(readAll(printConfPath(dataRoot)).endsWith("[File_Mask]=qvr\r\n"));
    EXPECT_EQ(readAll(printDataPath(dataRoot)).count('\n'), 14);
}

} // namespace
