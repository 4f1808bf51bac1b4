#include "document/workspace.h"

#include "engine/grouprewrite.h"
#include "store/sqliteclasses.h"

#include <QFile>

#include <sys/stat.h>

Workspace::Workspace(QObject* parent) : QObject(parent) {}

Workspace::~Workspace() {
    closeDatabase();
}

Workspace::FileIdentity Workspace::identityOf(const QString& path) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0) return {};
    return {st.st_dev, st.st_ino, st.st_mode, st.st_uid, st.st_gid};
}

SqliteDatabase& Workspace::database() {
    if (m_database &&
        (m_databasePath != m_paths.exDatabase || identityOf(m_databasePath) != m_identity))
        closeDatabase();
    if (!m_database) {
        m_database = std::make_unique<SqliteDatabase>(m_paths.exDatabase);
        m_databasePath = m_paths.exDatabase;
        m_identity = identityOf(m_databasePath);
        m_knownVersion = -1;
    }
    return *m_database;
}

void Workspace::closeDatabase() {
    m_knownVersion = -1;
    SqliteDatabase* db = m_database.release();
    try {
        delete db; // rolls back an open transaction, and may raise when that fails
    } catch (...) {
        // A rollback that fails on closing: the database undoes the open
        // transaction itself when the connection goes.
    }
}

void Workspace::load(int grp, int kan) {
    try {
        m_knownVersion = m_document.load(database(), grp, kan);
    } catch (...) {
        closeDatabase();
        throw;
    }
}

SaveOutcome Workspace::save(int grp, int kan, SaveCheck check, Dialogs& dialogs) {
    try {
        return m_document.save(database(), grp, kan, check, dialogs, m_knownVersion);
    } catch (...) {
        closeDatabase();
        throw;
    }
}

void Workspace::bringBackPipeType(int grp, int kan) {
    const PipeTypeDocument::State before = m_document.state();
    try {
        load(grp, kan);
        m_document.calculateAll();
    } catch (...) {
        m_document.restoreState(before);
        m_knownVersion = -1; // the image put back is older than the last read
        throw;
    }
}

void Workspace::recalculateGroup(int kind, int grp, int currentKan, Dialogs& dialogs,
                                 const std::function<void(const QString&, int)>& progress) {
    std::exception_ptr failure;
    try {
        runGroupRewrite(m_paths.exDatabase, dialogs, kind, grp, progress);
    } catch (...) {
        failure = std::current_exception();
    }
    try {
        bringBackPipeType(grp, currentKan);
    } catch (...) {
        if (!failure) failure = std::current_exception();
    }
    if (failure) std::rethrow_exception(failure);
}
