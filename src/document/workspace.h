#pragma once
// What the program works on: the document of the pipe type on screen, the
// copy buffer of the edit commands and the open connection to the database
// at its paths' exDatabase. One workspace per window; a worker thread makes its own
// rows and connection and never touches these.

#include "document/pipetypedocument.h"
#include "platform/datapaths.h"
#include "shell/confrecord.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <sys/types.h>

class Workspace : public QObject {
    Q_OBJECT
public:
    explicit Workspace(QObject* parent = nullptr);
    ~Workspace() override;

    PipeTypeDocument& document() { return m_document; }
    const PipeTypeDocument& document() const { return m_document; }
    // The buffer the copy commands fill and the paste commands read.
    RowTable& copyBuffer() { return m_copyBuffer; }
    // The settings record of the database: the group names and the settings
    // carried along with them.
    ConfRecord& settings() { return m_settings; }
    // Where the data lives; the window sets it as it is created and shown.
    DataPaths& paths() { return m_paths; }
    const DataPaths& paths() const { return m_paths; }

    // The connection to the database at paths().exDatabase, opened on first use
    // and opened again when the file there is no longer the one opened
    // (replaced, removed, its permissions or owner changed). Raises SqliteError
    // when it can't be opened; the file is never created.
    SqliteDatabase& database();
    // Closes the connection; the next use opens it again.
    void closeDatabase();

    // The document's load and save of pipe type kan of group grp on the
    // connection, as PipeTypeDocument describes. A failure closes the
    // connection, so that the next operation starts on a fresh one.
    void load(int grp, int kan);
    SaveOutcome save(int grp, int kan, SaveCheck check, Dialogs& dialogs);

    // Loads pipe type kan of group grp and calculates its rows 1 to 59, as
    // after a group rewrite. When that fails the document stays as it was
    // and the failure is raised.
    void bringBackPipeType(int grp, int kan);
    // RewriteGroup on the database at paths().exDatabase, on a connection of its
    // own, then bringBackPipeType(grp, currentKan); the failure of the run,
    // else that of the bringing back, is raised at the end.
    void recalculateGroup(int kind, int grp, int currentKan, Dialogs& dialogs,
                          const std::function<void(const QString&, int)>& progress);

private:
    struct FileIdentity {
        dev_t device = 0;
        ino_t inode = 0;
        mode_t mode = 0;
        uid_t owner = 0;
        gid_t group = 0;
        bool operator==(const FileIdentity& o) const {
            return device == o.device && inode == o.inode && mode == o.mode && owner == o.owner &&
                   group == o.group;
        }
        bool operator!=(const FileIdentity& o) const { return !(*this == o); }
    };
    static FileIdentity identityOf(const QString& path);

    PipeTypeDocument m_document;
    RowTable m_copyBuffer;
    ConfRecord m_settings;
    DataPaths m_paths;
    std::unique_ptr<SqliteDatabase> m_database;
    QString m_databasePath;
    FileIdentity m_identity;
    // The data version of the connection when the document's pipe type was
    // last read or written on it; -1 when unknown.
    std::int64_t m_knownVersion = -1;
};
