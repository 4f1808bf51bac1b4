// Data paths from the launch string and the common data folder.
#include "platform/datapaths.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class DataPathsTest : public ::testing::Test {
protected:
    void SetUp() override { qputenv("QORVALE_COMMON_DATA", dir.path().toUtf8()); }
    void TearDown() override { qunsetenv("QORVALE_COMMON_DATA"); }
    QTemporaryDir dir;
};

TEST_F(DataPathsTest, CommonDataFolderAndDataRoot) {
    EXPECT_EQ(specialFolderPath(35), dir.path());
    EXPECT_EQ(specialFolderPath(5), QString());
    EXPECT_EQ(dataRootPath(), dir.path() + "/ostrel/velmora_main");
}

TEST_F(DataPathsTest, NoArgumentUsesTheDefaultString) {
    EXPECT_EQ(databaseFolderFrom(QString()), dir.path() + "/ostrel/database/");
    EXPECT_EQ(databaseFolderFrom(DefaultLaunchString), dir.path() + "/ostrel/database/");
}

TEST_F(DataPathsTest, FieldFiveNamesTheFolder) {
    EXPECT_EQ(databaseFolderFrom("0;1;0;0;/srv/velmora/db;"), "/srv/velmora/db/");
    EXPECT_EQ(databaseFolderFrom("a;b;c;d;/srv/db/;more;fields"), "/srv/db/");
    EXPECT_EQ(exDatabasePathIn("/srv/db/"), "/srv/db//velmoraMainEX.db3");
}

TEST_F(DataPathsTest, EmptyOrMissingFieldFiveFallsBack) {
    const QString fallback = dir.path() + "/ostrel/database/";
    EXPECT_EQ(databaseFolderFrom("0;1;0;0;;"), fallback);
    EXPECT_EQ(databaseFolderFrom("0;1;0;0"), fallback);
    EXPECT_EQ(databaseFolderFrom("x"), fallback);
}

TEST_F(DataPathsTest, UserDataLocationWhenNoVariable) {
    qunsetenv("QORVALE_COMMON_DATA");
    EXPECT_FALSE(specialFolderPath(35).isEmpty());
    EXPECT_FALSE(specialFolderPath(35).endsWith('/'));
}

} // namespace
