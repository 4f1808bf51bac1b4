// Faults that real desktops produce, against the real window and the real
// tools: a read-only or full disk during a save, a tool killed in the middle
// of a group rewrite, a data folder that goes away, a library folder that
// cannot be written, a database file that is none. Each ends without a
// crash, with a Japanese message, and with every row saved before intact.
#include "controls/pricegrid.h"
#include "edit/fdkfile.h"
#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/outputcommands.h"
#include "output/printhandoff.h"
#include "shell/formwidgets.h"
#include "shell/settingsfiles.h"
#include "store/pipetypestore.h"
#include "support/modal.h"
#include "support/sqliterows.h"
#include "support/workspace_fixture.h"

#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <sqlite3.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// One query with the library itself. Read-write, as the program opens it: a
// journal left by a killed writer is rolled back first. Never creates a file.
QStringList dump(const QString& path, const QString& sql) {
    return sqliteRows(path, sql, SQLITE_OPEN_READWRITE);
}

QStringList group(const QString& path, int grp) {
    return dump(path, QStringLiteral("SELECT * FROM ex_kanzai WHERE GRP='%1' ORDER BY "
                                     "CAST(KAN AS INTEGER), CAST(NO AS INTEGER)")
                          .arg(grp));
}

QString integrity(const QString& path) {
    return dump(path, QStringLiteral("PRAGMA integrity_check")).join(QLatin1Char('\n'));
}

void exec(const QString& path, const char* sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("missing");
}

// A disk that is full: no file of this process grows beyond `bytes` while it
// lives (the signal of the limit is ignored, so a write just fails).
class DiskFull {
public:
    explicit DiskFull(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &old_);
        previous_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lim = old_;
        lim.rlim_cur = bytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &lim), 0);
    }
    ~DiskFull() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, previous_);
    }

private:
    rlimit old_{};
    void (*previous_)(int) = nullptr;
};

// File permissions that hold: the process acts as an ordinary user while it
// lives (root passes over every permission bit).
class OrdinaryUser {
public:
    OrdinaryUser() {
        if (geteuid() == 0) {
            EXPECT_EQ(setegid(65534), 0);
            EXPECT_EQ(seteuid(65534), 0);
            active_ = true;
        }
    }
    ~OrdinaryUser() {
        if (!active_) return;
        EXPECT_EQ(seteuid(0), 0);
        EXPECT_EQ(setegid(0), 0);
    }

private:
    bool active_ = false;
};

void setMode(const QString& path, mode_t mode) {
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}

class Faults : public WorkspaceFixture {
protected:
    // The box i, its instruction and its content together.
    QString box(std::size_t i) const {
        const auto& boxes = dialogs.boxes();
        return i < boxes.size() ? boxes[i].instruction + QLatin1Char('|') + boxes[i].content
                                : QStringLiteral("(no box)");
    }
    static bool japanese(const QString& text) {
        for (QChar c : text)
            if (c.unicode() >= 0x3040 && c.unicode() <= 0x9FFF) return true;
        return false;
    }
    // Everything readable by the ordinary user of OrdinaryUser.
    void openFolders() {
        for (QString p = QFileInfo(db).absolutePath();
             p.startsWith(dir.path()) && p.size() >= dir.path().size();
             p = QFileInfo(p).absolutePath()) {
            setMode(p, 0755);
            if (p == dir.path()) break;
        }
        setMode(dataRootPath(), 0777);
    }
};

TEST_F(Faults, AReadOnlyDatabaseRefusesTheSaveAndKeepsEverything) {
    MainWindow& f = open();
    typeFactor(4, 2, "9");
    const QStringList before = group(db, 1);
    const QStringList saved = doc().savedLines();
    openFolders();
    setMode(db, 0444);
    setMode(QFileInfo(db).absolutePath(), 0555);
    {
        OrdinaryUser user;
        f.header()->saveButton()->click();
    }
    setMode(QFileInfo(db).absolutePath(), 0755);
    setMode(db, 0644);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(box(0).startsWith(u("ERROR|"))) << box(0).toStdString();
    EXPECT_TRUE(
        box(0).endsWith(u("この管種は保存されていません。データベースの内容は変わっていません。")))
        << box(0).toStdString();
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(doc().savedLines(), saved);
    EXPECT_TRUE(doc().isChanged());
    EXPECT_EQ(group(db, 1), before);
    EXPECT_EQ(integrity(db), QStringLiteral("ok"));
    // Writable again: the same rows save.
    f.header()->saveButton()->click();
    EXPECT_TRUE(box(1).contains(u("保存しました。"))) << box(1).toStdString();
    EXPECT_EQ(stored(1, 1, 2, "DATA1"), QStringLiteral("9"));
}

TEST_F(Faults, AFullDiskRefusesTheSaveAndKeepsEverything) {
    MainWindow& f = open();
    typeFactor(4, 3, "8");
    const QStringList before = group(db, 1);
    const QStringList saved = doc().savedLines();
    {
        DiskFull full(512); // not even the journal of one statement fits
        f.header()->saveButton()->click();
    }
    ASSERT_EQ(dialogs.boxes().size(), 1u) << box(1).toStdString();
    EXPECT_TRUE(box(0).startsWith(u("ERROR|"))) << box(0).toStdString();
    EXPECT_TRUE(
        box(0).endsWith(u("この管種は保存されていません。データベースの内容は変わっていません。")))
        << box(0).toStdString();
    EXPECT_EQ(doc().savedLines(), saved);
    EXPECT_EQ(group(db, 1), before);
    EXPECT_EQ(integrity(db), QStringLiteral("ok"));
    EXPECT_FALSE(QFileInfo::exists(db + QStringLiteral("-journal")));
    f.header()->saveButton()->click();
    EXPECT_TRUE(box(1).contains(u("保存しました。"))) << box(1).toStdString();
    EXPECT_EQ(stored(1, 1, 3, "DATA1"), QStringLiteral("8"));
}

TEST_F(Faults, AFullDiskAtClosingSaysSoAndClosesWithTheRowsSaved) {
    MainWindow& f = open();
    typeFactor(4, 2, "6");
    dialogs.answerBox(TaskDialog::IdYes); // save?
    f.header()->saveButton()->click();    // saved before the disk fills
    ASSERT_TRUE(box(0).contains(u("保存しました。")));
    const QByteArray display = bytesOf(displayFilePath(dataRoot));
    QFile::remove(displayFilePath(dataRoot));
    {
        DiskFull full(0);
        EXPECT_TRUE(f.close());
    }
    EXPECT_FALSE(QFileInfo::exists(displayFilePath(dataRoot)));
    form.reset();
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(japanese(box(1))) << box(1).toStdString();
    EXPECT_TRUE(box(1).contains(u("表示設定"))) << box(1).toStdString();
    EXPECT_EQ(stored(1, 1, 2, "DATA1"), QStringLiteral("6"));
    EXPECT_EQ(integrity(db), QStringLiteral("ok"));
    (void)display;
}

TEST_F(Faults, ADataFolderThatGoesAwayClosesWithAMessageAndNoCrash) {
    MainWindow& f = open();
    const QStringList before = group(db, 1);
    // The data root is removed, and a file stands where it was.
    ASSERT_TRUE(QDir(dataRoot).removeRecursively());
    {
        QFile blocker(dataRoot);
        ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    }
    EXPECT_TRUE(f.close());
    form.reset();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(japanese(box(0))) << box(0).toStdString();
    EXPECT_TRUE(box(0).contains(u("表示設定"))) << box(0).toStdString();
    EXPECT_EQ(group(db, 1), before);

    // Only removed: the files come back at the next close, no message.
    QFile::remove(dataRoot);
    QDir().mkpath(dataRoot);
    open();
    ASSERT_TRUE(QDir(dataRoot).removeRecursively());
    EXPECT_TRUE(form->close());
    form.reset();
    EXPECT_EQ(dialogs.boxes().size(), 1u) << box(1).toStdString();
    EXPECT_EQ(group(db, 1), before);
}

TEST_F(Faults, ALibraryFolderThatCannotBeWrittenKeepsItsEntries) {
    // A folder with one entry, read-only to the user.
    const QString library = dir.path() + QStringLiteral("/library");
    QDir().mkpath(library);
    qputenv("QORVALE_LIBRARY_DIR", library.toUtf8());
    MainWindow& f = open();
    f.header()->goodsBox()->setText(u("既存"));
    f.menus().edit.saveLibraryItem->trigger();
    ASSERT_TRUE(box(0).contains(u("選択用標準歩掛として登録しました。"))) << box(0).toStdString();
    const QString entry = library + u("/既存.fdk");
    const QByteArray kept = bytesOf(entry);
    ASSERT_EQ(kept.size(), FdkFileSize);

    openFolders();
    setMode(dir.path(), 0755);
    setMode(library, 0555);
    setMode(entry, 0444);
    typeFactor(4, 2, "5");
    {
        OrdinaryUser user;
        f.menus().edit.saveLibraryItem->trigger(); // the same name
        f.header()->goodsBox()->setText(u("新規"));
        f.menus().edit.saveLibraryItem->trigger(); // a new one
    }
    setMode(library, 0755);
    ASSERT_EQ(dialogs.boxes().size(), 3u);
    for (std::size_t i = 1; i <= 2; ++i) {
        EXPECT_TRUE(box(i).contains(u("入出力エラー: 標準歩掛のファイル"))) << box(i).toStdString();
        EXPECT_TRUE(box(i).contains(u("理由: "))) << box(i).toStdString();
    }
    EXPECT_EQ(bytesOf(entry), kept);
    EXPECT_FALSE(QFileInfo::exists(library + u("/新規.fdk")));
    EXPECT_EQ(QDir(library).entryList(QDir::Files | QDir::Hidden).size(), 1);

    // No folder at all where the library should be made.
    QFile blocker(dir.path() + QStringLiteral("/file"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    qputenv("QORVALE_LIBRARY_DIR", (blocker.fileName() + QStringLiteral("/ex_data")).toUtf8());
    f.menus().edit.saveLibraryItem->trigger();
    EXPECT_TRUE(box(3).contains(u("標準歩掛のフォルダーを作成できません。")))
        << box(3).toStdString();
    qunsetenv("QORVALE_LIBRARY_DIR");
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

TEST_F(Faults, AFullDiskKeepsALibraryEntryAndTheSettingsFilesWhole) {
    const QString library = dir.path() + QStringLiteral("/library");
    qputenv("QORVALE_LIBRARY_DIR", library.toUtf8());
    MainWindow& f = open();
    f.header()->goodsBox()->setText(u("既存"));
    f.menus().edit.saveLibraryItem->trigger();
    const QString entry = library + u("/既存.fdk");
    const QByteArray kept = bytesOf(entry);
    ASSERT_EQ(kept.size(), FdkFileSize);
    writeWindowFile(dataRoot, QStringLiteral("w"), 1, 2, 3, 4);
    const QByteArray window = bytesOf(windowFilePath(dataRoot, QStringLiteral("w")));
    typeFactor(4, 2, "5");
    {
        DiskFull full(4096); // less than one entry
        f.menus().edit.saveLibraryItem->trigger();
    }
    {
        DiskFull full(16); // less than the window file
        writeWindowFile(dataRoot, QStringLiteral("w"), 5, 6, 7, 8);
    }
    qunsetenv("QORVALE_LIBRARY_DIR");
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(box(1).contains(u("入出力エラー: 標準歩掛のファイルに書き込めません。")))
        << box(1).toStdString();
    EXPECT_EQ(bytesOf(entry), kept);
    EXPECT_EQ(QDir(library).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(bytesOf(windowFilePath(dataRoot, QStringLiteral("w"))), window);
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

TEST_F(Faults, AFullDiskKeepsTheOldCsvAndPrintFilesWhole) {
    MainWindow& f = open();
    // Files of an earlier run, each larger than what a full disk lets through.
    const QString csv = dir.filePath(QStringLiteral("out.CSV"));
    const QByteArray oldCsv(20000, 'x');
    QFile old(csv);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write(oldCsv);
    old.close();
    f.menus().actions.printAction->trigger();
    ASSERT_EQ(dialogs.processes().size(), 1u);
    const QByteArray oldData = bytesOf(printDataPath(dataRoot));
    ASSERT_GT(oldData.size(), 4096);
    const QStringList before = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
    const QStringList printBefore =
        QDir(printFolderPath(dataRoot)).entryList(QDir::Files | QDir::Hidden);

    {
        DiskFull full(1024);
        whenModal([](QWidget* w) {
            auto* d = qobject_cast<ExcelOptionsDialog*>(w);
            ASSERT_NE(d, nullptr);
            d->headingsCheck->setChecked(true);
            d->runButton->click();
        });
        dialogs.answerFile(csv);
        // The CSV command's failure goes to the program's error handler.
        try {
            f.outputs()->exportCsvFile();
            ADD_FAILURE() << "the CSV was written on a full disk";
        } catch (const FileError& e) {
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(u("ディスクに空きがありません")))
                << e.what();
        }
        f.menus().actions.printAction->trigger();
    }
    ASSERT_EQ(dialogs.boxes().size(), 1u) << box(0).toStdString();
    EXPECT_TRUE(box(0).contains(u("ファイルを書き込めませんでした"))) << box(0).toStdString();
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    // The old files as they were, nothing beside them, and no print run.
    EXPECT_EQ(bytesOf(csv), oldCsv);
    EXPECT_EQ(bytesOf(printDataPath(dataRoot)), oldData);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), before);
    EXPECT_EQ(QDir(printFolderPath(dataRoot)).entryList(QDir::Files | QDir::Hidden), printBefore);
    EXPECT_EQ(dialogs.processes().size(), 1u);
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

TEST_F(Faults, PrintAndTempFoldersThatCannotBeWrittenKeepTheirFiles) {
    MainWindow& f = open();
    f.menus().actions.printAction->trigger();
    f.menus().actions.excelOutAction->trigger();
    ASSERT_EQ(dialogs.processes().size(), 1u);
    ASSERT_EQ(dialogs.documents().size(), 1);
    ASSERT_TRUE(dialogs.boxes().empty()) << box(0).toStdString();
    const QString temp = QFileInfo(excelStreamPath(dataRoot)).absolutePath();
    const QStringList files = {printConfPath(dataRoot), printHeaderPath(dataRoot),
                               printDataPath(dataRoot), excelStreamPath(dataRoot)};
    QList<QByteArray> kept;
    for (const QString& p : files) {
        kept << bytesOf(p);
        setMode(p, 0444);
    }
    ASSERT_TRUE(QFile::remove(dialogs.documents()[0]));
    openFolders();
    setMode(printFolderPath(dataRoot), 0555);
    setMode(temp, 0555);
    setMode(dataRoot, 0555);
    typeFactor(4, 2, "5"); // something on screen that differs from the files
    QString excelError;
    {
        OrdinaryUser user;
        f.menus().actions.printAction->trigger();
        // The Excel command's failure goes to the program's error handler.
        try {
            f.outputs()->exportWorkbook();
        } catch (const std::exception& e) {
            excelError = QString::fromUtf8(e.what());
        }
    }
    setMode(dataRoot, 0777);
    setMode(printFolderPath(dataRoot), 0755);
    setMode(temp, 0755);
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(box(0).contains(u("ファイルを書き込めませんでした"))) << box(0).toStdString();
    EXPECT_EQ(dialogs.boxes()[0].icon, TaskDialog::IconError);
    EXPECT_TRUE(excelError.contains(u("ファイルを書き込めませんでした")))
        << excelError.toStdString();
    for (int i = 0; i < int(files.size()); ++i)
        EXPECT_EQ(bytesOf(files[i]), kept[i]) << files[i].toStdString();
    EXPECT_EQ(QDir(printFolderPath(dataRoot)).entryList(QDir::Files | QDir::Hidden).size(), 3);
    EXPECT_EQ(QDir(temp).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_TRUE(QDir(dataRoot).entryList({QStringLiteral("*.xlsx")}, QDir::Files).isEmpty());
    EXPECT_EQ(dialogs.processes().size(), 1u);
    EXPECT_EQ(dialogs.documents().size(), 1);
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

// A database refused at the start: every command that writes is refused
// too, and the file and its folder stay byte for byte as they were.
class BadDatabase : public Faults {
protected:
    void expectRefusedAtStart(const char* reason) {
        const QDir folder = QFileInfo(db).dir();
        auto listing = [&] {
            QStringList l;
            for (const QFileInfo& i : folder.entryInfoList(QDir::AllEntries | QDir::Hidden |
                                                           QDir::System | QDir::NoDotAndDotDot))
                l << i.fileName() + QLatin1Char(' ') + QString::number(i.size());
            return l;
        };
        const QStringList files = listing();
        const QByteArray before = bytesOf(db);
        MainWindow& f = open();
        ASSERT_GE(dialogs.boxes().size(), 1u);
        EXPECT_TRUE(box(0).contains(u("データベースを開けません。"))) << box(0).toStdString();
        EXPECT_TRUE(box(0).contains(u(reason))) << box(0).toStdString();
        EXPECT_EQ(dialogs.boxes().size(), 1u) << box(1).toStdString();
        const QList<QAction*> writers = {f.menus().actions.moveUpAction,
                                         f.menus().actions.moveDownAction,
                                         f.menus().file.saveItem,
                                         f.menus().actions.optionChangeAction,
                                         f.menus().actions.labourCostChangeAction,
                                         f.groupNamingItem(3)};
        for (QAction* a : writers) {
            const std::size_t n = dialogs.boxes().size();
            a->trigger();
            ASSERT_EQ(dialogs.boxes().size(), n + 1) << a->objectName().toStdString();
            EXPECT_TRUE(box(n).contains(u("管種が読み込まれていないため、")))
                << box(n).toStdString();
        }
        EXPECT_TRUE(dialogs.inputs().empty());
        EXPECT_TRUE(f.close());
        form.reset();
        EXPECT_EQ(dialogs.boxes().size(), 1u + writers.size());
        EXPECT_EQ(bytesOf(db), before);
        EXPECT_EQ(listing(), files);
    }
};

TEST_F(BadDatabase, AFileThatIsNoDatabaseIsNamedAtStartAndLeftAlone) {
    QFile f(db);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(QByteArray(8192, 'x'));
    f.close();
    expectRefusedAtStart("データベースのファイルではありません。");
}

TEST_F(BadDatabase, ADatabaseWithoutItsTablesIsNamedAtStartAndLeftAlone) {
    exec(db, "DROP TABLE ex_kanzai");
    expectRefusedAtStart("ex_kanzai");
}

TEST_F(BadDatabase, ADatabaseWithoutExconfIsNamedAtStartAndLeftAlone) {
    exec(db, "DROP TABLE exconf");
    expectRefusedAtStart("exconf");
}

TEST_F(BadDatabase, AMissingDatabaseFileIsNamedAtStartAndNotCreated) {
    ASSERT_TRUE(QFile::remove(db));
    expectRefusedAtStart("ファイルがありません。");
    EXPECT_FALSE(QFileInfo::exists(db));
}

// The tool killed at random moments of a group rewrite: each pipe type
// commits as a whole, so the file stays whole and every pipe type is either
// wholly as it was or wholly as the rewrite computes it.
TEST(KilledRecalc, LeavesAWholeFileWithEveryRowOldOrNew) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    qputenv("QORVALE_COMMON_DATA", dir.path().toUtf8());
    QString out, err;
    QTextStream o(&out), e(&err);
    ASSERT_EQ(runVelmoraSuite({QStringLiteral("init"), QStringLiteral("--demo")}, o, e), 0);
    const QString db = exDatabasePathIn(databaseFolderFrom(QString()));
    // Prices out of date, so that the rewrite changes every computed row.
    exec(db, "UPDATE ex_kanzai SET NTANKA='1', GTANKA='2' WHERE GRP='1' AND NO<>'60'");
    const QString pristine = dir.path() + QStringLiteral("/pristine.db3");
    ASSERT_TRUE(QFile::copy(db, pristine));
    const QStringList oldRows = group(db, 1);

    auto run = [&](int killAfterMs, bool& finished) {
        QProcess p;
        p.setProgram(QStringLiteral(QORVALE_TOOL));
        p.setArguments({QStringLiteral("recalc"), QStringLiteral("--group"), QStringLiteral("1")});
        p.start();
        EXPECT_TRUE(p.waitForStarted());
        finished = p.waitForFinished(killAfterMs < 0 ? 120000 : killAfterMs);
        if (!finished) {
            ::kill(pid_t(p.processId()), SIGKILL);
            p.waitForFinished(10000);
        }
        return p.exitCode();
    };
    QElapsedTimer timer;
    timer.start();
    bool finished = false;
    ASSERT_EQ(run(-1, finished), 0);
    const int fullMs = int(timer.elapsed());
    const QStringList newRows = group(db, 1);
    ASSERT_EQ(newRows.size(), oldRows.size());
    ASSERT_EQ(newRows.size(), 20 * 60);
    int changed = 0;
    for (int i = 0; i < int(newRows.size()); ++i)
        changed += newRows[i] != oldRows[i];
    ASSERT_GT(changed, 20 * 50);

    // At most eight kills, within about a minute.
    auto* rng = QRandomGenerator::global();
    int kills = 0, between = 0, mixedTypes = 0;
    for (int trial = 0; trial < 8 && timer.elapsed() < 60000; ++trial) {
        // The journal a killed run leaves belongs to that run's file only.
        QFile::remove(db);
        QFile::remove(db + QStringLiteral("-journal"));
        ASSERT_TRUE(QFile::copy(pristine, db));
        const int at = int(rng->bounded(std::max(1, fullMs)));
        run(at, finished);
        if (finished) continue;
        ++kills;
        EXPECT_EQ(integrity(db), QStringLiteral("ok"));
        const QStringList rows = group(db, 1);
        ASSERT_EQ(rows.size(), oldRows.size());
        int asNew = 0;
        for (int i = 0; i < int(rows.size()); ++i) {
            EXPECT_TRUE(rows[i] == oldRows[i] || rows[i] == newRows[i])
                << "row " << i << ": " << rows[i].toStdString();
            if (rows[i] == newRows[i] && rows[i] != oldRows[i]) ++asNew;
        }
        // A pipe type caught between: some of its rows rewritten, not all.
        for (int k = 0; k < 20; ++k) {
            int n = 0, differ = 0;
            for (int r = 0; r < 60; ++r) {
                const int i = k * 60 + r;
                differ += newRows[i] != oldRows[i];
                n += rows[i] == newRows[i] && rows[i] != oldRows[i];
            }
            if (n > 0 && n < differ) {
                ++mixedTypes;
                between += differ - n;
            }
        }
        std::printf("kill %d after %d ms of %d: %d rows rewritten\n", kills, at, fullMs, asNew);
    }
    std::printf("killed %d times; %d pipe types caught between, %d rows still old in them\n", kills,
                mixedTypes, between);
    EXPECT_EQ(mixedTypes, 0);
    qunsetenv("QORVALE_COMMON_DATA");
}

} // namespace
