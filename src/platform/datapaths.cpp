#include "platform/datapaths.h"

#include "util/fieldtext.h"

#include <QDir>
#include <QStandardPaths>

const QString DefaultLaunchString = QStringLiteral("0;1;0;0;c:\\programData\\ostrel\\database\\;");

namespace {
constexpr int CommonAppData = 35;
const QString ProgramDataPrefix = QStringLiteral("c:\\programdata\\");
} // namespace

QString specialFolderPath(int id) {
    if (id != CommonAppData) return QString();
    QString dir = qEnvironmentVariable("QORVALE_COMMON_DATA");
    if (dir.isEmpty()) dir = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    while (dir.size() > 1 && dir.endsWith(QLatin1Char('/')))
        dir.chop(1);
    return dir.left(260);
}

QString commonDataPath(const QString& suffix) {
    return specialFolderPath(CommonAppData) + suffix;
}

QString nativePath(const QString& path) {
    QString p = path;
    if (p.startsWith(ProgramDataPrefix, Qt::CaseInsensitive))
        p = specialFolderPath(CommonAppData) + QLatin1Char('/') + p.mid(ProgramDataPrefix.size());
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return p;
}

QString dataRootPath() {
    return nativePath(commonDataPath(QStringLiteral("\\ostrel\\velmora_main")));
}

QString databaseFolderFrom(const QString& launchString) {
    const QString launch = launchString.isEmpty() ? DefaultLaunchString : launchString;
    QString folder = nthField(launch, 5);
    if (folder.isEmpty()) folder = commonDataPath(QStringLiteral("\\ostrel\\database\\"));
    folder = nativePath(folder);
    if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    return folder;
}

QString exDatabasePathIn(const QString& databaseFolder) {
    return nativePath(databaseFolder + QStringLiteral("\\velmoraMainEX.db3"));
}

DataPaths DataPaths::fromLaunchString(const QString& launchString) {
    DataPaths p;
    p.dataRoot = dataRootPath();
    p.databaseFolder = databaseFolderFrom(launchString); // the default string when empty
    return p;
}

void DataPaths::nameDatabaseFiles() {
    mainDatabase = nativePath(databaseFolder + QStringLiteral("\\velmoraMain.db3"));
    addressDatabase = nativePath(databaseFolder + QStringLiteral("\\velmoraAddr.db3"));
    exDatabase = exDatabasePathIn(databaseFolder);
    dxDatabase = nativePath(databaseFolder + QStringLiteral("\\velmoraMainDX.db3"));
}
