#include "platform/datapaths.h"

#include "util/fieldtext.h"

#include <QDir>
#include <QStandardPaths>

const QString DefaultLaunchString = QStringLiteral("0;1;0;0;c:\\programData\\ostrel\\database\\;");

namespace {
constexpr int CommonAppData = 35;
const QString ProgramDataPrefix = QStringLiteral("c:\\programdata\\");
} // namespace

QString SpecialFolderPath(int id) {
    if (id != CommonAppData) return QString();
    QString dir = qEnvironmentVariable("QORVALE_COMMON_DATA");
    if (dir.isEmpty()) dir = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    while (dir.size() > 1 && dir.endsWith(QLatin1Char('/')))
        dir.chop(1);
    return dir.left(260);
}

QString CommonDataPath(const QString& suffix) {
    return SpecialFolderPath(CommonAppData) + suffix;
}

QString NativePath(const QString& path) {
    QString p = path;
    if (p.startsWith(ProgramDataPrefix, Qt::CaseInsensitive))
        p = SpecialFolderPath(CommonAppData) + QLatin1Char('/') + p.mid(ProgramDataPrefix.size());
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return p;
}

QString DataRootPath() {
    return NativePath(CommonDataPath(QStringLiteral("\\ostrel\\velmora_main")));
}

QString DatabaseFolderFrom(const QString& launchString) {
    const QString launch = launchString.isEmpty() ? DefaultLaunchString : launchString;
    QString folder = NthField(launch, 5);
    if (folder.isEmpty()) folder = CommonDataPath(QStringLiteral("\\ostrel\\database\\"));
    folder = NativePath(folder);
    if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    return folder;
}

QString ExDatabasePathIn(const QString& databaseFolder) {
    return NativePath(databaseFolder + QStringLiteral("\\velmoraMainEX.db3"));
}

DataPaths DataPaths::fromLaunchString(const QString& launchString) {
    DataPaths p;
    p.dataRoot = DataRootPath();
    p.databaseFolder = DatabaseFolderFrom(launchString); // the default string when empty
    return p;
}

void DataPaths::nameDatabaseFiles() {
    mainDatabase = NativePath(databaseFolder + QStringLiteral("\\velmoraMain.db3"));
    addressDatabase = NativePath(databaseFolder + QStringLiteral("\\velmoraAddr.db3"));
    exDatabase = ExDatabasePathIn(databaseFolder);
    dxDatabase = NativePath(databaseFolder + QStringLiteral("\\velmoraMainDX.db3"));
}
