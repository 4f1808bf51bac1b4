// Data paths from the launch string and the common data folder.
#include "platform/datapaths.h"
#include "support/testing.h"

namespace {

TEST(DataPathsTest, CommonDataFolderDataRootAndDatabaseFolder) {
    QTemporaryDir dir;
    qputenv("QORVALE_COMMON_DATA", dir.path().toUtf8());
    EXPECT_EQ(specialFolderPath(35) + specialFolderPath(5), dir.path());
    EXPECT_EQ(dataRootPath(), dir.path() + "/ostrel/velmora_main");
    // Field five names the folder; without it, the folder in the common data folder.
    const QString fallback = dir.path() + "/ostrel/database/";
    const std::pair<QString, QString> folders[] = {{QString(), fallback},
                                                   {"0;1;0;0;/srv/velmora/db;", "/srv/velmora/db/"},
                                                   {"a;b;c;d;/srv/db/;more;fields", "/srv/db/"},
                                                   {"0;1;0;0;;", fallback},
                                                   {"x", fallback}};
    for (const auto& [launch, folder] : folders)
        EXPECT_EQ(databaseFolderFrom(launch), folder) << launch.toStdString();
    EXPECT_EQ(exDatabasePathIn("/srv/db/"), "/srv/db//velmoraMainEX.db3");
    // The user's data location when the variable is not set.
    qunsetenv("QORVALE_COMMON_DATA");
    EXPECT_TRUE(!specialFolderPath(35).isEmpty() && !specialFolderPath(35).endsWith('/'));
}

} // namespace
