// Faults that real desktops produce, against the real window and the real
// tools: a read-only or full disk during a save, a tool killed in the middle
// of a group rewrite, a data folder that goes away, a library folder that
// cannot be written, a database file that is none. Each ends without a
// crash, with a Japanese message, and with every row saved before intact.
#include "edit/fdkfile.h"
#include "output/exceloptionsdialog.h"
#include "output/excelstream.h"
#include "output/outputcommands.h"
#include "output/printhandoff.h"
#include "shell/formwidgets.h"
#include "support/sqliterows.h"
#include "support/workspace_fixture.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

// Runs act with a disk that is full: no file of this process grows beyond
// `bytes` (the signal of the limit is ignored, so a write just fails).
void onFullDisk(rlim_t bytes, const std::function<void()>& act) {
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    rlimit lim{bytes, old.rlim_max};
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &lim), 0);
    act();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);
}

// The message of what act throws as an E.
template <class E> QString thrown(const std::function<void()>& act) {
    try {
        act();
    } catch (const E& e) {
        return QString::fromUtf8(e.what());
    }
    return "(nothing thrown)";
}

// Runs act as an ordinary user, so that file permissions hold (root passes
// over every permission bit).
void asOrdinaryUser(const std::function<void()>& act) {
    const bool root = geteuid() == 0;
    EXPECT_TRUE(!root || (setegid(65534) == 0 && seteuid(65534) == 0));
    act();
    EXPECT_TRUE(!root || (seteuid(0) == 0 && setegid(0) == 0));
}

void setModes(std::initializer_list<std::pair<QString, mode_t>> modes) {
    for (const auto& [path, mode] : modes)
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}

class Faults : public WorkspaceFixture {
protected:
    // One query with the library itself. Read-write, as the program opens it:
    // a journal left by a killed writer is rolled back first.
    QStringList dump(const QString& sql) { return sqliteRows(db, sql, SQLITE_OPEN_READWRITE); }
    QStringList group1() {
        return dump("SELECT * FROM ex_kanzai WHERE GRP='1' ORDER BY CAST(KAN AS INTEGER), "
                    "CAST(NO AS INTEGER)");
    }
    QString integrity() { return dump("PRAGMA integrity_check").join('\n'); }
    void save() { form->header()->saveButton()->click(); }

    // The box i, its instruction and its content together.
    QString box(std::size_t i) const {
        const auto& boxes = dialogs.boxes();
        return i < boxes.size() ? boxes[i].instruction + '|' + boxes[i].content : "(no box)";
    }
    testing::AssertionResult boxHas(std::size_t i, const char* text) const {
        if (box(i).contains(u(text))) return testing::AssertionSuccess();
        return testing::AssertionFailure() << box(i).toStdString();
    }
    // The one box of an output that could not write its files.
    bool writeErrorShown() const {
        return boxHas(0, "ファイルを書き込めませんでした") &&
               dialogs.boxes()[0].icon == TaskDialog::IconError;
    }
    // Everything readable by the ordinary user of asOrdinaryUser.
    void openFolders() {
        for (QString p = QFileInfo(db).absolutePath();
             p.startsWith(dir.path()) && p.size() >= dir.path().size();
             p = QFileInfo(p).absolutePath()) {
            setModes({{p, 0755}});
            if (p == dir.path()) break;
        }
        setModes({{dataRootPath(), 0777}});
    }
};

// A read-only database, then a full disk: each save is refused and keeps
// the rows on screen and in the file; writable again, the same rows save.
TEST_F(Faults, AReadOnlyDatabaseOrAFullDiskRefusesTheSaveAndKeepsEverything) {
    open();
    typeFactor(4, 2, "9");
    const QStringList before = group1(), saved = doc().savedLines();
    auto refused = [&](std::size_t i) {
        ASSERT_EQ(dialogs.boxes().size(), i + 1) << box(i + 1).toStdString();
        EXPECT_TRUE(box(i).startsWith(u("ERROR|")) &&
                    box(i).endsWith(u("この管種は保存されていません。データベースの内容は変"
                                      "わっていません。")))
            << box(i).toStdString();
        EXPECT_TRUE(doc().savedLines() == saved && doc().isChanged() && group1() == before &&
                    integrity() == "ok");
    };
    const QString folder = QFileInfo(db).absolutePath();
    openFolders();
    setModes({{db, 0444}, {folder, 0555}});
    asOrdinaryUser([&] { save(); });
    setModes({{folder, 0755}, {db, 0644}});
    refused(0);
    EXPECT_TRUE(dialogs.messages().empty());
    typeFactor(4, 3, "8");
    onFullDisk(512, [&] { save(); }); // not even the journal of one statement fits
    refused(1);
    EXPECT_FALSE(QFileInfo::exists(db + "-journal"));
    save();
    EXPECT_TRUE(boxHas(2, "保存しました。"));
    EXPECT_EQ(QStringList({stored(1, 1, 2, "DATA1"), stored(1, 1, 3, "DATA1")}).join('|'), "9|8");
}

TEST_F(Faults, AFullDiskAtClosingSaysSoAndClosesWithTheRowsSaved) {
    MainWindow& f = open();
    typeFactor(4, 2, "6");
    save(); // saved before the disk fills
    ASSERT_TRUE(boxHas(0, "保存しました。"));
    QFile::remove(displayFilePath(dataRoot));
    onFullDisk(0, [&] { EXPECT_TRUE(f.close()); });
    EXPECT_FALSE(QFileInfo::exists(displayFilePath(dataRoot)));
    form.reset();
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(boxHas(1, "表示設定")); // in Japanese
    EXPECT_TRUE(stored(1, 1, 2, "DATA1") == "6" && integrity() == "ok");
}

TEST_F(Faults, ADataFolderThatGoesAwayClosesWithAMessageAndNoCrash) {
    MainWindow& f = open();
    const QStringList before = group1();
    // The data root is removed, and a file stands where it was.
    ASSERT_TRUE(QDir(dataRoot).removeRecursively());
    writeFileBytes(dataRoot, {});
    EXPECT_TRUE(f.close());
    form.reset();
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(boxHas(0, "表示設定") && group1() == before);

    // Only removed: the files come back at the next close, no message.
    QFile::remove(dataRoot);
    QDir().mkpath(dataRoot);
    open();
    ASSERT_TRUE(QDir(dataRoot).removeRecursively());
    EXPECT_TRUE(form->close());
    form.reset();
    EXPECT_EQ(dialogs.boxes().size(), 1u) << box(1).toStdString();
    EXPECT_EQ(group1(), before);
}

// A full disk, a library folder read-only to the user, then no folder at all
// where the library should be made: the entry there stays as it was.
TEST_F(Faults, ALibraryFolderThatCannotBeWrittenOrAFullDiskKeepsItsEntries) {
    const QString library = dir.path() + "/library", entry = library + u("/既存.fdk");
    qputenv("QORVALE_LIBRARY_DIR", library.toUtf8());
    MainWindow& f = open();
    f.header()->goodsBox()->setText(u("既存"));
    f.menus().edit.saveLibraryItem->trigger();
    ASSERT_TRUE(boxHas(0, "選択用標準歩掛として登録しました。"));
    const QByteArray kept = fileBytes(entry);
    ASSERT_EQ(kept.size(), FdkFileSize);
    writeWindowFile(dataRoot, "w", 1, 2, 3, 4);
    const QByteArray window = fileBytes(windowFilePath(dataRoot, "w"));
    auto entryKept = [&] {
        EXPECT_TRUE(fileBytes(entry) == kept && filesIn(library).size() == 1 &&
                    fileBytes(windowFilePath(dataRoot, "w")) == window);
    };
    typeFactor(4, 2, "5");
    // Less than one entry, less than the window file.
    onFullDisk(4096, [&] { f.menus().edit.saveLibraryItem->trigger(); });
    onFullDisk(16, [&] { writeWindowFile(dataRoot, "w", 5, 6, 7, 8); });
    ASSERT_EQ(dialogs.boxes().size(), 2u);
    EXPECT_TRUE(boxHas(1, "入出力エラー: 標準歩掛のファイルに書き込めません。"));
    entryKept();

    openFolders();
    setModes({{dir.path(), 0755}, {library, 0555}, {entry, 0444}});
    asOrdinaryUser([&] {
        f.menus().edit.saveLibraryItem->trigger(); // the same name
        f.header()->goodsBox()->setText(u("新規"));
        f.menus().edit.saveLibraryItem->trigger(); // a new one
    });
    setModes({{library, 0755}});
    ASSERT_EQ(dialogs.boxes().size(), 4u);
    for (std::size_t i = 2; i <= 3; ++i)
        EXPECT_TRUE(boxHas(i, "入出力エラー: 標準歩掛のファイル") && boxHas(i, "理由: "));
    entryKept();
    EXPECT_FALSE(QFileInfo::exists(library + u("/新規.fdk")));

    writeFileBytes(dir.path() + "/file", {});
    qputenv("QORVALE_LIBRARY_DIR", (dir.path() + "/file/ex_data").toUtf8());
    f.menus().edit.saveLibraryItem->trigger();
    EXPECT_TRUE(boxHas(4, "標準歩掛のフォルダーを作成できません。"));
    qunsetenv("QORVALE_LIBRARY_DIR");
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

TEST_F(Faults, AFullDiskKeepsTheOldCsvAndPrintFilesWhole) {
    MainWindow& f = open();
    // Files of an earlier run, each larger than what a full disk lets through.
    const QString csv = dir.filePath("out.CSV");
    const QByteArray oldCsv(20000, 'x');
    writeFileBytes(csv, oldCsv);
    f.menus().actions.printAction->trigger();
    ASSERT_EQ(dialogs.processes().size(), 1u);
    const QByteArray oldData = fileBytes(printDataPath(dataRoot));
    ASSERT_GT(oldData.size(), 4096);
    auto listing = [&] {
        return std::tuple(filesIn(dir.path()), filesIn(printFolderPath(dataRoot)),
                          dialogs.processes().size());
    };
    const auto before = listing();
    onFullDisk(1024, [&] {
        whenModal([](QWidget* w) {
            auto* d = qobject_cast<ExcelOptionsDialog*>(w);
            ASSERT_NE(d, nullptr);
            d->headingsCheck->setChecked(true);
            d->runButton->click();
        });
        dialogs.answerFile(csv);
        // The CSV command's failure goes to the program's error handler.
        const QString csvError = thrown<FileError>([&] { f.outputs()->exportCsvFile(); });
        EXPECT_TRUE(csvError.contains(u("ディスクに空きがありません"))) << csvError.toStdString();
        f.menus().actions.printAction->trigger();
    });
    ASSERT_EQ(dialogs.boxes().size(), 1u) << box(0).toStdString();
    EXPECT_TRUE(writeErrorShown());
    // The old files as they were, nothing beside them, and no print run.
    EXPECT_TRUE(fileBytes(csv) == oldCsv && fileBytes(printDataPath(dataRoot)) == oldData);
    EXPECT_EQ(listing(), before);
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

TEST_F(Faults, PrintAndTempFoldersThatCannotBeWrittenKeepTheirFiles) {
    MainWindow& f = open();
    f.menus().actions.printAction->trigger();
    f.menus().actions.excelOutAction->trigger();
    ASSERT_TRUE(dialogs.processes().size() == 1 && dialogs.documents().size() == 1);
    ASSERT_TRUE(dialogs.boxes().empty()) << box(0).toStdString();
    const QString temp = QFileInfo(excelStreamPath(dataRoot)).absolutePath();
    const QString print = printFolderPath(dataRoot);
    const QStringList files = {printConfPath(dataRoot), printHeaderPath(dataRoot),
                               printDataPath(dataRoot), excelStreamPath(dataRoot)};
    QList<QByteArray> kept;
    for (const QString& p : files) {
        kept << fileBytes(p);
        setModes({{p, 0444}});
    }
    ASSERT_TRUE(QFile::remove(dialogs.documents()[0]));
    openFolders();
    setModes({{print, 0555}, {temp, 0555}, {dataRoot, 0555}});
    typeFactor(4, 2, "5"); // something on screen that differs from the files
    QString excelError;
    asOrdinaryUser([&] {
        f.menus().actions.printAction->trigger();
        // The Excel command's failure goes to the program's error handler.
        excelError = thrown<std::exception>([&] { f.outputs()->exportWorkbook(); });
    });
    setModes({{dataRoot, 0777}, {print, 0755}, {temp, 0755}});
    ASSERT_EQ(dialogs.boxes().size(), 1u);
    EXPECT_TRUE(writeErrorShown());
    EXPECT_TRUE(excelError.contains(u("ファイルを書き込めませんでした")))
        << excelError.toStdString();
    for (int i = 0; i < int(files.size()); ++i)
        EXPECT_EQ(fileBytes(files[i]), kept[i]) << files[i].toStdString();
    // No workbook, no print run.
    EXPECT_EQ(std::tuple(filesIn(print).size(), filesIn(temp).size(), dialogs.documents().size(),
                         QDir(dataRoot).entryList({"*.xlsx"}, QDir::Files).size(),
                         dialogs.processes().size()),
              std::tuple(3, 1, 1, 0, std::size_t(1)));
    dialogs.answerBox(TaskDialog::IdNo); // close: do not save the rows
}

// A database refused at the start: every command that writes is refused
// too, and the file and its folder stay byte for byte as they were.
struct Refusal {
    // What is done to the file ("junk": bytes that are no database, "remove":
    // no file, else the table dropped), and the reason named.
    const char *change, *reason;
    friend void PrintTo(const Refusal& r, std::ostream* os) { *os << r.change; }
};
class BadDatabase : public Faults, public testing::WithParamInterface<Refusal> {};

TEST_P(BadDatabase, IsNamedAtStartAndLeftAlone) {
    const QString change = QString::fromUtf8(GetParam().change);
    if (change == "junk")
        writeFileBytes(db, QByteArray(8192, 'x'));
    else if (change == "remove")
        ASSERT_TRUE(QFile::remove(db));
    else
        ASSERT_EQ(dump("DROP TABLE " + change), QStringList());
    auto listing = [&] {
        QStringList l;
        for (const QFileInfo& i : QFileInfo(db).dir().entryInfoList(
                 QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
            l << i.fileName() + ' ' + QString::number(i.size());
        return l;
    };
    const QStringList files = listing();
    const QByteArray before = fileBytes(db);
    MainWindow& f = open();
    ASSERT_EQ(dialogs.boxes().size(), 1u) << box(1).toStdString();
    EXPECT_TRUE(boxHas(0, "データベースを開けません。") && boxHas(0, GetParam().reason));
    const WindowActions& a = f.menus().actions;
    const QList<QAction*> writers = {a.moveUpAction,           a.moveDownAction,
                                     f.menus().file.saveItem,  a.optionChangeAction,
                                     a.labourCostChangeAction, f.groupNamingItem(3)};
    for (QAction* w : writers) {
        const std::size_t n = dialogs.boxes().size();
        w->trigger();
        ASSERT_EQ(dialogs.boxes().size(), n + 1) << w->objectName().toStdString();
        EXPECT_TRUE(boxHas(n, "管種が読み込まれていないため、"));
    }
    EXPECT_TRUE(dialogs.inputs().empty());
    EXPECT_TRUE(f.close());
    form.reset();
    EXPECT_EQ(dialogs.boxes().size(), 1u + writers.size());
    EXPECT_TRUE(fileBytes(db) == before && listing() == files);
    EXPECT_EQ(QFileInfo::exists(db), change != "remove"); // a missing file is not created
}

INSTANTIATE_TEST_SUITE_P(Faults, BadDatabase,
                         testing::Values(Refusal{"junk", "データベースのファイルではありません。"},
                                         Refusal{"ex_kanzai", "ex_kanzai"},
                                         Refusal{"exconf", "exconf"},
                                         Refusal{"remove", "ファイルがありません。"}));

// The tool killed at random moments of a group rewrite: each pipe type
// commits as a whole, so the file stays whole and every pipe type is either
// wholly as it was or wholly as the rewrite computes it.
using KilledRecalc = Faults;
TEST_F(KilledRecalc, LeavesAWholeFileWithEveryRowOldOrNew) {
    // Prices out of date, so that the rewrite changes every computed row.
    ASSERT_EQ(dump("UPDATE ex_kanzai SET NTANKA='1', GTANKA='2' WHERE GRP='1' AND NO<>'60'"),
              QStringList());
    const QString pristine = dir.path() + "/pristine.db3";
    ASSERT_TRUE(QFile::copy(db, pristine));
    const QStringList oldRows = group1();
    // Runs the tool, killed after killAfterMs unless it ends before: its exit
    // code, or -1 when it was killed.
    auto run = [&](int killAfterMs) {
        QProcess p;
        p.start(QORVALE_TOOL, {"recalc", "--group", "1"});
        EXPECT_TRUE(p.waitForStarted());
        if (p.waitForFinished(killAfterMs)) return p.exitCode();
        ::kill(pid_t(p.processId()), SIGKILL);
        p.waitForFinished(10000);
        return -1;
    };
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(run(120000), 0);
    const int fullMs = int(timer.elapsed());
    const QStringList newRows = group1();
    ASSERT_TRUE(newRows.size() == oldRows.size() && newRows.size() == 20 * 60);
    int changed = 0;
    for (int i = 0; i < int(newRows.size()); ++i)
        changed += newRows[i] != oldRows[i];
    ASSERT_GT(changed, 20 * 50);

    // At most eight kills, within about a minute.
    int kills = 0, mixedTypes = 0;
    for (int trial = 0; trial < 8 && timer.elapsed() < 60000; ++trial) {
        // The journal a killed run leaves belongs to that run's file only.
        QFile::remove(db);
        QFile::remove(db + "-journal");
        ASSERT_TRUE(QFile::copy(pristine, db));
        const int at = int(QRandomGenerator::global()->bounded(std::max(1, fullMs)));
        if (run(at) != -1) continue;
        ++kills;
        EXPECT_EQ(integrity(), "ok");
        const QStringList rows = group1();
        ASSERT_EQ(rows.size(), oldRows.size());
        for (int i = 0; i < int(rows.size()); ++i)
            EXPECT_TRUE(rows[i] == oldRows[i] || rows[i] == newRows[i])
                << "row " << i << ": " << rows[i].toStdString();
        // A pipe type caught between: some of its rows rewritten, not all.
        for (int k = 0; k < 20; ++k) {
            int n = 0, differ = 0;
            for (int i = k * 60; i < k * 60 + 60; ++i) {
                differ += newRows[i] != oldRows[i];
                n += rows[i] == newRows[i] && rows[i] != oldRows[i];
            }
            mixedTypes += n > 0 && n < differ;
        }
    }
    std::printf("killed %d times of %d ms; %d pipe types caught between\n", kills, fullMs,
                mixedTypes);
    EXPECT_EQ(mixedTypes, 0);
}

} // namespace
