#pragma once
// The configuration record: the row of exconf with conf='kanzai', which holds
// the group names and four settings that are only carried along.

#include <QString>

class Dialogs;
#include <QStringList>

#include <array>

constexpr int GroupCount = 10;

struct ConfRecord {
    QString Removal;                            // [REMOVAL]
    QString Recycle;                            // [RECYCLE]
    QString Keta;                               // [KETA]
    QString CutLevel;                           // [CUTLEVEL]
    std::array<QString, GroupCount> GroupNames; // [GROUP_NAME1] .. [GROUP_NAME10]
};

// The names the groups have before the record is read.
const std::array<QString, GroupCount>& defaultGroupNames();

// The text of the record: 14 lines, each ended by CR LF.
QString confText(const ConfRecord& conf);
// Applies a record text by key to conf; unknown keys are passed over.
void applyConfText(const QString& text, ConfRecord& conf);

// The statements of the record.
QString confSelectStatement();
QString confDeleteStatement();
QString confInsertStatement(const ConfRecord& conf);

// Sets the default names of conf, then reads the record from the database
// file into it when there is one. Raises SqliteError when the query fails.
void readGroupNames(const QString& database, ConfRecord& conf);
// Replaces the record on the database file with conf: the delete and the insert
// run in one transaction, so a failed insert keeps the old record. 1 on
// success; 0 after one box "ERROR" with the database's reason.
int writeGroupNames(Dialogs& dialogs, const QString& database, const ConfRecord& conf);
