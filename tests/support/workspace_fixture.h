#pragma once
// A fixture for tests of the main window: a data folder with the suite
// stand-in's demo database in a temporary folder, the scripted dialogs, and
// the real window offscreen.

#include "controls/pricegrid.h"
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "sheet/optionpanel.h"
#include "sheet/pipetypeheader.h"
#include "sheet/pricesheet.h"
#include "shell/mainmenu.h"
#include "shell/mainwindow.h"
#include "shell/pipetypetree.h"
#include "store/modulewrappersqlite.h"
#include "store/suitestandin.h"
#include "support/guitesting.h"

#include <QTreeWidget>

class WorkspaceFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        qputenv("QORVALE_COMMON_DATA", dir.path().toUtf8());
        QString out, err;
        QTextStream o(&out), e(&err);
        ASSERT_EQ(runVelmoraSuite({QStringLiteral("init"), QStringLiteral("--demo")}, o, e), 0)
            << err.toStdString();
        db = exDatabasePathIn(databaseFolderFrom(QString()));
        dataRoot = dataRootPath();
    }
    void TearDown() override {
        form.reset();
        qunsetenv("QORVALE_COMMON_DATA");
        EXPECT_TRUE(dialogs.unanswered().isEmpty())
            << dialogs.unanswered().join('\n').toStdString();
    }

    // The window's workspace, its document and rows.
    Workspace& ws() { return form->workspace(); }
    PipeTypeDocument& doc() { return form->document(); }
    RowTable& rows() { return form->document().rows(); }

    // Opens the window and runs its show step.
    MainWindow& open() {
        form = std::make_unique<MainWindow>(dialogs, QString());
        form->show();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        return *form;
    }
    void closeForm() {
        form->close();
        form.reset();
    }

    QString cell1(int c, int r) const { return form->sheet()->compositeGrid()->text(c, r); }
    QString cell2(int c, int r) const { return form->sheet()->materialGrid()->text(c, r); }

    // A click of the person on a node: the press selects it, the release
    // clicks it.
    void clickNode(int absoluteIndex, Qt::KeyboardModifiers mods = {},
                   Qt::MouseButton button = Qt::LeftButton) {
        QTreeWidgetItem* node = form->tree->node(absoluteIndex);
        form->tree->scrollToItem(node);
        const QRect r = form->tree->visualItemRect(node);
        QTest::mouseClick(form->tree->viewport(), button, mods, r.center());
    }

    // A figure typed into a cell of the factor grid and Enter: the pipe type
    // counts as changed.
    void typeFactor(int col, int line, const char* text) {
        ASSERT_TRUE(form->sheet()->compositeGrid()->focusCell(col, line));
        for (const char* p = text; *p; ++p)
            QTest::keyClick(
                form->sheet()->compositeGrid()->editorMode()
                    ? static_cast<QWidget*>(form->sheet()->compositeGrid()->inplaceEditor())
                    : form->sheet()->compositeGrid(),
                *p);
        QTest::keyClick(form->sheet()->compositeGrid()->inplaceEditor(), Qt::Key_Return);
    }

    // The stored value of a column of one row.
    QString stored(int grp, int kan, int no, const char* column) {
        const QStringList lines =
            queryToLines(db,
                         QStringLiteral("SELECT %1 FROM ex_kanzai where CTG='1' and GRP='%2' and "
                                        "KAN='%3' and NO='%4';")
                             .arg(QString::fromLatin1(column))
                             .arg(grp)
                             .arg(kan)
                             .arg(no))
                .lines;
        return lines.isEmpty() ? QString() : nthField(lines[0], 1);
    }

    QTemporaryDir dir;
    QString db;
    QString dataRoot; // the data root of the window
    ScriptedDialogs dialogs;
    std::unique_ptr<MainWindow> form;
};
