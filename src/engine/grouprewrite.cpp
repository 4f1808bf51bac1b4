#include "engine/grouprewrite.h"

#include "engine/calcrow.h"
#include "platform/dialogs.h"
#include "store/pipetypestore.h"

#include <exception>
#include <stdexcept>

namespace {

QString q(const QString& value) {
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}
QString qCurr(Currency c) {
    return q(currToStr(c));
}
QString qInt(int v) {
    return q(QString::number(v));
}

} // namespace

QString optionChangeStatement(const PipeRow& optionRow, int grp) {
    PipeRow row = optionRow;
    PipeTypeOptions o(row);
    QString s = QStringLiteral("UPDATE ex_kanzai SET ");
    s += QStringLiteral("DATA5=") + qCurr(o.labourSubmitted());
    s += QStringLiteral(",DATA4=") + qCurr(o.labourCost());
    s += QStringLiteral(",NET=") + qCurr(o.rateCost());
    s += QStringLiteral(",NTANKA=") + qCurr(o.rateOn());
    s += QStringLiteral(",GTANKA=") + qCurr(o.unitDigits());
    s += QStringLiteral(",FTANKA=") + qCurr(o.unitFraction());
    s += QStringLiteral(",DATA2=") + qCurr(o.adoptedDigits());
    s += QStringLiteral(",DATA3=") + qCurr(o.adoptedFraction());
    s += QStringLiteral(",DATA6=") + qCurr(o.elementDigits());
    s += QStringLiteral(",DATA7=") + qCurr(o.elementFraction());
    s += QStringLiteral(",FLAG=") + qInt(o.modeFlag());
    s += QStringLiteral(",YOSAN=") + qInt(o.otherMethod());
    s += QStringLiteral(" WHERE CTG=") + qInt(1) + QStringLiteral(" AND GRP=") + qInt(grp) +
         QStringLiteral(" AND NO=") + qInt(OptionRow) + QStringLiteral(";");
    return s;
}

QString labourChangeStatement(Currency cost, Currency submitted) {
    return QStringLiteral("UPDATE ex_kanzai SET ") + QStringLiteral("DATA4=") + qCurr(cost) +
           QStringLiteral(",DATA5=") + qCurr(submitted) + QStringLiteral(" WHERE ukey=") +
           qInt(OptionRow) + QStringLiteral(";");
}

QString groupProgressText(int kind, int i, int r, const QString& goods) {
    return QStringLiteral("データ更新中:") + QString::number(kind) + QLatin1Char('-') +
           QString::number(i) + QLatin1Char('-') + QString::number(r) + QLatin1Char('/') + goods;
}

void recalculatePipeType(SqliteDatabase& db, RowTable& rows, int grp, int kan, Dialogs& dialogs,
                         const std::function<void(int r)>& beforeRow) {
    db.beginImmediateTransaction();
    try {
        loadPipeTypeIn(db, grp, kan, rows);
        const PipeTypeOptions options(rows[OptionRow]);
        for (int r = 1; r <= GroupCalcRows; ++r) {
            if (beforeRow) beforeRow(r);
            calcRowWith(rows[r], options);
        }
        writePipeTypeIn(db, rows, grp, kan, dialogs);
        db.commit();
    } catch (...) {
        if (db.isTransactionOpen()) {
            try {
                db.rollback();
            } catch (...) {
                // The connection undoes what is left when it closes.
            }
        }
        throw;
    }
}

void runGroupRewrite(const QString& path, Dialogs& dialogs, int kind, int grp,
                     const GroupProgress& progress) {
    // The rows of the run, apart from the pipe type on the sheet; one table
    // for the 20, as the fields a load does not fill carry over.
    RowTable rows;
    int kan = 1;
    try {
        SqliteDatabase db(path); // the run's own connection, on its own thread
        for (int i = 0; i < GroupPipeTypes; ++i) {
            kan = i + 1;
            recalculatePipeType(db, rows, grp, kan, dialogs, [&](int r) {
                if (progress)
                    progress(groupProgressText(kind, i, r, rows[r].goods()), i * GroupCalcRows + r);
            });
        }
    } catch (const std::exception& e) {
        throw std::runtime_error(
            QStringLiteral("グループの再計算を管種%1で中止しました。管種%1から後は変更されて"
                           "いません。\r\n%2")
                .arg(kan)
                .arg(QString::fromUtf8(e.what()))
                .toStdString());
    }
}
