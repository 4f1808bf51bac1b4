#pragma once
// Where the data lives: the common data folder, the data root and the
// database folder named by the launch string.

#include <QString>

// The launch string used when the program gets no argument.
extern const QString DefaultLaunchString;

// The folder of a special folder id. Only 35, the common application data
// folder, is known here: the directory in QORVALE_COMMON_DATA when that is
// set, else the user's generic data location (~/.local/share).
QString specialFolderPath(int id);
// specialFolderPath(35) with suffix behind it.
QString commonDataPath(const QString& suffix);

// Turns a path written the Windows way ("\ostrel\database\", "c:\programData\...")
// into this system's form: "\" becomes "/", and the default string's
// "c:\programData\" stands for the common data folder.
QString nativePath(const QString& path);

// The data root: common data folder + "/ostrel/velmora_main".
QString dataRootPath();
// The database folder: field 5 of the launch string (the default string when
// it is empty), or common data folder + "/ostrel/database/" when that field
// is empty. Always ends with "/".
QString databaseFolderFrom(const QString& launchString);
// The database file of ex_kanzai and exconf in that folder.
QString exDatabasePathIn(const QString& databaseFolder);

// The paths a window or a tool works with: the data root and the database
// folder come from the launch string as the window is created, the database
// files of that folder as it is shown. Only exDatabase is ever opened.
struct DataPaths {
    QString dataRoot;
    QString databaseFolder;
    QString mainDatabase;
    QString addressDatabase;
    QString exDatabase;
    QString dxDatabase;

    // The data root and the database folder of the launch string, no files yet.
    static DataPaths fromLaunchString(const QString& launchString);
    // Names the four database files of databaseFolder.
    void nameDatabaseFiles();
};
