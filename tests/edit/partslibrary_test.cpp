// Where the library lives, how names become files and how the folder is listed.
#include "edit/partslibrary.h"

#include "shell/settingsfiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <dirent.h>

#include <gtest/gtest.h>

namespace {

void touch(const QString& path) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << path.toStdString();
}

// The names of a folder as the system's own directory reading gives them.
QStringList readdirOrder(const QString& folder) {
    QStringList names;
    DIR* d = opendir(QFile::encodeName(folder).constData());
    if (!d) return names;
    while (dirent* e = readdir(d))
        names << QFile::decodeName(e->d_name);
    closedir(d);
    return names;
}

class PartsLibrary : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    QString path(const QString& name) const { return dir.filePath(name); }
    QTemporaryDir dir;
};

TEST_F(PartsLibrary, TheConfiguredFolderComesFirst) {
    EXPECT_EQ(partsLibraryFolderFor(path("lib/"), path("prog"), path("home")), path("lib"));
}

TEST_F(PartsLibrary, BesideTheProgramWhenItCanBeMadeThere) {
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("prog")));
    EXPECT_EQ(partsLibraryFolderFor(QString(), path("prog"), path("home")), path("prog/ex_data"));
    // Choosing makes nothing: the first save does.
    EXPECT_FALSE(QFileInfo::exists(path("prog/ex_data")));
    ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("prog/ex_data")));
    EXPECT_EQ(partsLibraryFolderFor(QString(), path("prog"), path("home")), path("prog/ex_data"));
}

TEST_F(PartsLibrary, AnInstalledProgramNeverWritesBesideItself) {
    // /usr is writable for root, as the tests may run: the rule does not ask.
    EXPECT_EQ(partsLibraryFolderFor(QString(), QStringLiteral("/usr/lib/qorvale"), path("home")),
              path("home/qorvale/ex_data"));
    EXPECT_EQ(partsLibraryFolderFor(QString(), QStringLiteral("/usr/bin"), path("home")),
              path("home/qorvale/ex_data"));
}

TEST_F(PartsLibrary, UserFolderWhenNothingCanBeMadeBesideTheProgram) {
    // A program "folder" that is a file: no ex_data can be made under it.
    touch(path("prog"));
    EXPECT_EQ(partsLibraryFolderFor(QString(), path("prog"), path("home")),
              path("home/qorvale/ex_data"));
    // An ex_data beside the program that is a file is no folder either.
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("prog2")));
    touch(path("prog2/ex_data"));
    EXPECT_EQ(partsLibraryFolderFor(QString(), path("prog2"), path("home")),
              path("home/qorvale/ex_data"));
}

TEST_F(PartsLibrary, UserFolderWhenTheProgramFolderIsReadOnly) {
    if (geteuid() == 0) GTEST_SKIP() << "the superuser writes every folder";
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("prog")));
    QFile::setPermissions(path("prog"), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(partsLibraryFolderFor(QString(), path("prog"), path("home")),
              path("home/qorvale/ex_data"));
    QFile::setPermissions(path("prog"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(PartsLibrary, RunFolderFollowsTheEnvironment) {
    qputenv("QORVALE_LIBRARY_DIR", path("mine").toUtf8());
    EXPECT_EQ(partsLibraryFolder(), path("mine"));
    qunsetenv("QORVALE_LIBRARY_DIR");
    // The test program's folder is a build folder that can be written.
    EXPECT_EQ(partsLibraryFolder(), QCoreApplication::applicationDirPath() + "/ex_data");
}

TEST_F(PartsLibrary, EntryPathIsFolderNameAndExtension) {
    EXPECT_EQ(partsEntryPath(QStringLiteral("/a/ex_data"), QStringLiteral(" 鋼管 ")),
              QStringLiteral("/a/ex_data/ 鋼管 .fdk"));
    EXPECT_EQ(partsEntryPath(QStringLiteral("/a"), QStringLiteral("x"), QStringLiteral("txt")),
              QStringLiteral("/a/x.txt"));
}

TEST_F(PartsLibrary, EntriesStandInTheFoldersOwnOrder) {
    const QStringList names = {QStringLiteral("配管用炭素鋼鋼管"),
                               QStringLiteral("b"),
                               QStringLiteral("a"),
                               QStringLiteral("zz"),
                               QStringLiteral("c.d"),
                               QStringLiteral("m"),
                               QStringLiteral("塩ビ"),
                               QStringLiteral("k"),
                               QStringLiteral("x"),
                               QStringLiteral("0"),
                               QStringLiteral("y"),
                               QStringLiteral(" 空白 ")};
    for (const QString& n : names)
        touch(path(n + ".fdk"));
    touch(path("other.txt"));
    touch(path("upper.FDK"));
    touch(path(".fdk")); // an entry with an empty name, from another installation
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder.fdk")));

    QStringList expected;
    for (const QString& n : readdirOrder(dir.path()))
        if (n.endsWith(QStringLiteral(".fdk")) && n != QStringLiteral("folder.fdk"))
            expected << n.chopped(4);
    ASSERT_EQ(expected.size(), names.size() + 1);
    QStringList sorted = expected;
    sorted.sort();
    // The folder's order is no sorted one here, else this test would say
    // nothing about sorting.
    ASSERT_NE(expected, sorted);
    EXPECT_EQ(partsEntryNames(dir.path()), expected);
    EXPECT_TRUE(partsEntryNames(dir.path()).contains(QString()));
    EXPECT_EQ(partsEntryNames(dir.path(), QStringLiteral("txt")),
              QStringList{QStringLiteral("other")});
}

TEST_F(PartsLibrary, MissingFolderHasNoEntries) {
    EXPECT_TRUE(partsEntryNames(path("none")).isEmpty());
}

TEST_F(PartsLibrary, NamesThatCanNotNameAFile) {
    EXPECT_FALSE(partsNameProblem(QString()).isEmpty());
    EXPECT_FALSE(partsNameProblem(QStringLiteral("   ")).isEmpty());
    EXPECT_FALSE(partsNameProblem(QStringLiteral("　")).isEmpty()); // ideographic blank
    EXPECT_TRUE(partsNameProblem(QStringLiteral("a/b")).contains(QStringLiteral("「/」")));
    EXPECT_FALSE(partsNameProblem(QStringLiteral("/")).isEmpty());
    EXPECT_FALSE(partsNameProblem(QString(QChar(0)) + "a").isEmpty());
    EXPECT_FALSE(partsNameProblem(QString(100, QChar(0x9244))).isEmpty()); // 300 bytes
    EXPECT_TRUE(partsNameProblem(QStringLiteral(" 配管用炭素鋼鋼管 (白) ")).isEmpty());
    EXPECT_TRUE(partsNameProblem(QStringLiteral("..")).isEmpty());
    EXPECT_TRUE(partsNameProblem(QStringLiteral("a\\b")).isEmpty());
}

TEST_F(PartsLibrary, MakeFolderMakesTheWholePathOrSaysWhy) {
    makePartsFolder(path("x/y/ex_data"));
    EXPECT_TRUE(QFileInfo(path("x/y/ex_data")).isDir());
    makePartsFolder(path("x/y/ex_data")); // there already
    touch(path("file"));
    try {
        makePartsFolder(path("file/ex_data"));
        FAIL() << "no error";
    } catch (const FileError& e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).contains(path("file/ex_data")));
    }
}

} // namespace
