// Where the library lives, how names become files and how the folder is listed.
#include "edit/partslibrary.h"

#include "shell/settingsfiles.h"
#include "support/testing.h"

#include <dirent.h>

namespace {

class PartsLibrary : public ::testing::Test {
protected:
    QString path(const QString& name) const { return dir.filePath(name); }
    void touch(const QString& name) { writeFileBytes(path(name), {}); }
    // The folder by the rule, for a program in folder prog of the test folder.
    QString folderFor(const QString& prog) {
        return partsLibraryFolderFor(QString(), prog.startsWith('/') ? prog : path(prog),
                                     path("home"));
    }
    QTemporaryDir dir;
};

TEST_F(PartsLibrary, TheFolderIsTheConfiguredOneElseBesideTheProgramElseTheUsers) {
    const QString user = path("home/qorvale/ex_data");
    EXPECT_EQ(partsLibraryFolderFor(path("lib/"), path("prog"), path("home")), path("lib"));
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("prog")));
    EXPECT_EQ(folderFor("prog"), path("prog/ex_data"));
    EXPECT_FALSE(QFileInfo::exists(path("prog/ex_data"))); // choosing makes nothing
    ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("prog/ex_data")));
    EXPECT_EQ(folderFor("prog"), path("prog/ex_data"));
    // /usr is writable for root, as the tests may run: the rule does not ask.
    EXPECT_EQ(folderFor("/usr/lib/qorvale"), user);
    // A program "folder" that is a file: no folder there.
    touch("file");
    EXPECT_EQ(folderFor("file"), user);

    qputenv("QORVALE_LIBRARY_DIR", path("mine").toUtf8());
    EXPECT_EQ(partsLibraryFolder(), path("mine"));
    qunsetenv("QORVALE_LIBRARY_DIR");
    // The test program's folder is a build folder that can be written.
    EXPECT_EQ(partsLibraryFolder(), QCoreApplication::applicationDirPath() + "/ex_data");

    if (geteuid() == 0) GTEST_SKIP() << "the superuser writes every folder";
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("ro")));
    QFile::setPermissions(path("ro"), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(folderFor("ro"), user);
    QFile::setPermissions(path("ro"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(PartsLibrary, EntriesStandInTheFoldersOwnOrderAndNamesAreChecked) {
    EXPECT_TRUE(partsEntryNames(path("none")).isEmpty());
    for (const char* n :
         {"配管用炭素鋼鋼管", "b", "a", "zz", "c.d", "m", "塩ビ", "k", "x", "0", "y", " 空白 "})
        touch(QString::fromUtf8(n) + ".fdk");
    touch("other.txt");
    touch("upper.FDK");
    touch(".fdk"); // an entry with an empty name, from another installation
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder.fdk")));

    // The names as the system's own directory reading gives them.
    QStringList expected;
    DIR* d = opendir(QFile::encodeName(dir.path()).constData());
    ASSERT_NE(d, nullptr);
    while (dirent* e = readdir(d)) {
        const QString n = QFile::decodeName(e->d_name);
        if (n.endsWith(QStringLiteral(".fdk")) && n != QStringLiteral("folder.fdk"))
            expected << n.chopped(4);
    }
    closedir(d);
    ASSERT_EQ(expected.size(), 13);
    QStringList sorted = expected;
    sorted.sort();
    ASSERT_NE(expected, sorted); // else this test would say nothing about sorting
    EXPECT_EQ(partsEntryNames(dir.path()), expected);
    EXPECT_EQ(partsEntryNames(dir.path(), QStringLiteral("txt")),
              QStringList{QStringLiteral("other")});
    // Names are tried on the window, in Library.AFileNameOf255Bytes...; a NUL
    // can't be typed there.
    EXPECT_TRUE(partsNameProblem(QString(QChar(0)) + "a").contains(QStringLiteral("使えない文字")));
}

} // namespace
