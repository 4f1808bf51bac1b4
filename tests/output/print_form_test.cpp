// "印  刷" on the main window: the three hand-off files, the start of the print program through
// the dialog interface, and its failures.
#include "output/outputcommands.h"
#include "output/printhandoff.h"
#include "shell/formwidgets.h"
#include "support/workspace_fixture.h"

#include "store/codepage.h"

namespace {

using PrintCommand = WorkspaceFixture;

TEST_F(PrintCommand, WritesTheFilesAndStartsTheProgramWithDataRootAndSemicolon) {
    MainWindow& f = open();
    f.outputs()->setPrintDate(QDate(1989, 1, 7));
    f.sheet()->materialGrid()->selectCells(QRect(3, 5, 1, 1));
    f.menus().file.printItem->trigger();
    ASSERT_EQ(dialogs.processes().size(), 1u);
    EXPECT_EQ(dialogs.processes()[0].program,
              QCoreApplication::applicationDirPath() + QStringLiteral("/listpress"));
    EXPECT_EQ(dialogs.processes()[0].arguments, QStringList{dataRoot + QLatin1Char(';')});
    // The submitted side is selected for the next redisplay.
    EXPECT_EQ(f.sheet()->materialGrid()->selectedCells(), QRect(1, 5, 1, 1));
    EXPECT_EQ(fileBytes(printConfPath(dataRoot)),
              printConfText(styleFilePath(dataRoot, 0), applicationIconPath(), false));
    EXPECT_TRUE(
        fileBytes(printHeaderPath(dataRoot))
            .startsWith(toAnsi(u("[ta]=1989\r\n[tb]=昭和64\r\n[tc]=01\r\n[td]=07\r\n[te]=土"))));
    // The rows as the window shows them, with its tab captions and panels (output_form_test).
    const QByteArray data = fileBytes(printDataPath(dataRoot));
    f.outputs()->exportRows(ExportPrint);
    EXPECT_EQ(fileBytes(printDataPath(dataRoot)), data);

    // Another style; a failed start is not reported, the files stay.
    f.header()->printStyleRadio()->setItemIndex(2);
    dialogs.setStartResult(false);
    for (const QString& p :
         {printConfPath(dataRoot), printHeaderPath(dataRoot), printDataPath(dataRoot)})
        QFile::remove(p);
    f.menus().actions.printAction->trigger();
    EXPECT_EQ(fileBytes(printConfPath(dataRoot)),
              printConfText(styleFilePath(dataRoot, 2), applicationIconPath(), false));
    EXPECT_TRUE(QFile::exists(printHeaderPath(dataRoot)));
    EXPECT_EQ(fileBytes(printDataPath(dataRoot)), data);
    EXPECT_EQ(dialogs.processes().size(), 2u);
    EXPECT_TRUE(dialogs.boxes().empty() && dialogs.messages().empty());

    ASSERT_TRUE(QDir(printFolderPath(dataRoot)).removeRecursively());
    dialogs.answerBox(TaskDialog::IdOk);
    f.menus().actions.printAction->trigger();
    EXPECT_EQ(dialogs.processes().size(), 2u);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_TRUE(dialogs.boxes()[0].instruction.contains(QStringLiteral("print_Data.dat")));
}

} // namespace
