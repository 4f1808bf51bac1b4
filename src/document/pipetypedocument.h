#pragma once
// The document of one pipe type: its 60 rows, the state as loaded or last
// saved, the undo snapshot and the change test. Loading and saving run on a
// connection that the caller owns; nothing here shows anything.

#include "store/piperow.h"
#include "store/pipetypestore.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

#include <cstdint>

class Dialogs;
class SqliteDatabase;

class PipeTypeDocument : public QObject {
    Q_OBJECT
public:
    explicit PipeTypeDocument(QObject* parent = nullptr);

    // The rows 1..60. A command changes them in place, then takes a
    // snapshot before (takeSnapshot) or refreshes the lines after
    // (refreshLines) so that the change test and undo follow.
    RowTable& rows() { return m_rows; }
    const RowTable& rows() const { return m_rows; }
    // The options of the pipe type: the number fields of row 60.
    PipeTypeOptions options() { return PipeTypeOptions(m_rows[OptionRow]); }

    // Rows 1..count and their undo copies to zeros and empty texts.
    void clearRows(int count);
    // Copies the rows into the undo snapshot (no computed amounts), rebuilds
    // the current lines and makes undo available.
    void takeSnapshot();
    // Rebuilds the current lines and makes undo available; the snapshot stays.
    void refreshLines();
    // Copies the rows back from the snapshot; the computed amounts stay.
    void restoreSnapshot();
    // The rows as the last snapshot took them.
    const RowTable& snapshot() const { return m_undoRows; }
    bool isUndoAvailable() const { return m_undoAvailable; }
    void setUndoAvailable(bool available);

    // True when the rows differ from the rows as loaded or last saved.
    bool isChanged() const;
    const QStringList& savedLines() const { return m_savedLines; }
    const QStringList& currentLines() const { return m_currentLines; }
    // Takes the current lines as the saved ones: the rows count as unchanged.
    void markSaved() { m_savedLines = m_currentLines; }

    // The computed fields of row r (1..59; 60 is left alone) from its figures
    // and the options. Raises MathError on overflow.
    void calculateRow(int r);
    // Rows 1..59.
    void calculateAll();

    // Reads the 60 rows of a pipe type in one read transaction: fields key
    // to adoptedUnitPrice of every row, the saved lines and the stored image; the
    // computed amounts keep their values until the next calculation. All or
    // nothing: on a failure (SqliteError, or std::out_of_range when the
    // table holds fewer than 60 rows) the document is as it was. Returns the
    // database's data version at the read.
    std::int64_t load(SqliteDatabase& db, int grp, int kan);

    // Writes the 60 rows in one write transaction, all or nothing, and puts
    // the statement of row 1 on the clipboard of dialogs. With
    // SaveCheck::AgainstLoaded nothing is written when the stored rows are no
    // longer those this document last read or wrote (ChangedElsewhere); that
    // compare is left out when the data version of db is still knownVersion,
    // the version the last load or save on this same connection returned
    // (-1: unknown). On Saved, knownVersion takes the version of the write
    // and the saved lines the current lines. Raises SqliteError when
    // the database refuses: nothing is written and the rows stay unsaved.
    SaveOutcome save(SqliteDatabase& db, int grp, int kan, SaveCheck check, Dialogs& dialogs,
                     std::int64_t& knownVersion);

    // Everything a failed operation must be able to put back.
    struct State {
        RowTable rows;
        QStringList savedLines;
        QByteArray storedImage;
    };
    State state() const { return {m_rows, m_savedLines, m_storedImage}; }
    void restoreState(const State& state);

signals:
    void undoAvailableChanged(bool available);

private:
    void rebuildCurrentLines();

    RowTable m_rows;
    RowTable m_undoRows;
    QStringList m_savedLines;
    QStringList m_currentLines;
    // The loaded columns of the 60 rows as the database held them at the
    // last load or save: a save compares them with what is stored.
    QByteArray m_storedImage;
    bool m_undoAvailable = false;
};
