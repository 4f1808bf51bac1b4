#include "document/pipetypedocument.h"

#include "engine/calcrow.h"
#include "store/sqliteclasses.h"

namespace {

// Every field but the computed amounts.
void copyFields(PipeRow& to, const PipeRow& from) {
    to.key = from.key;
    to.goodsBytes = from.goodsBytes;
    to.kindBytes = from.kindBytes;
    to.sortOrder = from.sortOrder;
    to.sizeBytes = from.sizeBytes;
    to.otherMethod = from.otherMethod;
    to.unitBytes = from.unitBytes;
    to.modeFlag = from.modeFlag;
    to.costPrice = from.costPrice;
    to.submittedPrice = from.submittedPrice;
    to.listPrice = from.listPrice;
    to.factors = from.factors;
    to.costUnitPrice = from.costUnitPrice;
    to.submittedUnitPrice = from.submittedUnitPrice;
    to.adoptedUnitPrice = from.adoptedUnitPrice;
}

} // namespace

PipeTypeDocument::PipeTypeDocument(QObject* parent) : QObject(parent) {}

void PipeTypeDocument::clearRows(int count) {
    for (int r = 1; r <= count && r <= RowCount; ++r) {
        m_rows[r] = PipeRow{};
        m_undoRows[r] = PipeRow{};
    }
}

void PipeTypeDocument::takeSnapshot() {
    setUndoAvailable(true);
    for (int r = 1; r <= RowCount; ++r)
        copyFields(m_undoRows[r], m_rows[r]);
    rebuildCurrentLines();
}

void PipeTypeDocument::refreshLines() {
    setUndoAvailable(true);
    rebuildCurrentLines();
}

void PipeTypeDocument::restoreSnapshot() {
    for (int r = 1; r <= RowCount; ++r)
        copyFields(m_rows[r], m_undoRows[r]);
}

void PipeTypeDocument::setUndoAvailable(bool available) {
    m_undoAvailable = available;
    emit undoAvailableChanged(available);
}

bool PipeTypeDocument::isChanged() const {
    return m_currentLines != m_savedLines;
}

void PipeTypeDocument::rebuildCurrentLines() {
    m_currentLines.clear();
    for (int r = 1; r <= RowCount; ++r)
        m_currentLines.append(rowLine(m_rows[r]));
}

void PipeTypeDocument::calculateRow(int r) {
    if (r == OptionRow) return;
    calcRowWith(m_rows[r], options());
}

void PipeTypeDocument::calculateAll() {
    for (int r = 1; r < OptionRow; ++r)
        calculateRow(r);
}

std::int64_t PipeTypeDocument::load(SqliteDatabase& db, int grp, int kan) {
    // Read into a copy: the computed amounts of the rows on screen stay, and
    // a load that stops half-way leaves nothing of its own behind.
    RowTable rows = m_rows;
    QStringList saved;
    db.beginTransaction();
    // The image first: a lock held elsewhere fails it with the database's
    // own words.
    QByteArray image = storedImage(db, grp, kan);
    loadPipeTypeIn(db, grp, kan, rows, &saved);
    const std::int64_t version = db.dataVersion();
    db.commit();
    m_rows = rows;
    m_savedLines = std::move(saved);
    m_storedImage = std::move(image);
    return version;
}

SaveOutcome PipeTypeDocument::save(SqliteDatabase& db, int grp, int kan, SaveCheck check,
                                   Dialogs& dialogs, std::int64_t& knownVersion) {
    db.beginImmediateTransaction();
    try {
        // Inside the write lock: what is stored now stays so until the
        // commit. No other connection has written since our last read or
        // write when the version is still the one we saw then.
        const std::int64_t version = db.dataVersion();
        if (check == SaveCheck::AgainstLoaded && version != knownVersion &&
            storedImage(db, grp, kan) != m_storedImage) {
            db.rollback();
            return SaveOutcome::ChangedElsewhere;
        }
        writePipeTypeIn(db, m_rows, grp, kan, dialogs);
        QByteArray image = storedImage(db, grp, kan);
        db.commit();
        m_storedImage = std::move(image);
        knownVersion = version; // our own commit leaves our version as it was
    } catch (...) {
        if (db.isTransactionOpen()) {
            try {
                db.rollback();
            } catch (...) {
            }
        }
        throw;
    }
    markSaved();
    return SaveOutcome::Saved;
}

void PipeTypeDocument::restoreState(const State& state) {
    m_rows = state.rows;
    m_savedLines = state.savedLines;
    m_storedImage = state.storedImage;
}
