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
    return q(CurrToStr(c));
}
QString qInt(int v) {
    return q(QString::number(v));
}

} // namespace

QString OptionChangeStatement(const PipeRow& optionRow, int grp) {
    PipeRow row = optionRow;
    PipeTypeOptions o(row);
    QString s = QStringLiteral("UPDATE ex_kanzai SET ");
    s += QStringLiteral("DATA5=") + qCurr(o.LabourSubmitted());
    s += QStringLiteral(",DATA4=") + qCurr(o.LabourCost());
    s += QStringLiteral(",NET=") + qCurr(o.RateCost());
    s += QStringLiteral(",NTANKA=") + qCurr(o.RateOn());
    s += QStringLiteral(",GTANKA=") + qCurr(o.UnitDigits());
    s += QStringLiteral(",FTANKA=") + qCurr(o.UnitFraction());
    s += QStringLiteral(",DATA2=") + qCurr(o.AdoptedDigits());
    s += QStringLiteral(",DATA3=") + qCurr(o.AdoptedFraction());
    s += QStringLiteral(",DATA6=") + qCurr(o.ElementDigits());
    s += QStringLiteral(",DATA7=") + qCurr(o.ElementFraction());
    s += QStringLiteral(",FLAG=") + qInt(o.ModeFlag());
    s += QStringLiteral(",YOSAN=") + qInt(o.OtherMethod());
    s += QStringLiteral(" WHERE CTG=") + qInt(1) + QStringLiteral(" AND GRP=") + qInt(grp) +
         QStringLiteral(" AND NO=") + qInt(OptionRow) + QStringLiteral(";");
    return s;
}

QString LabourChangeStatement(Currency cost, Currency submitted) {
    return QStringLiteral("UPDATE ex_kanzai SET ") + QStringLiteral("DATA4=") + qCurr(cost) +
           QStringLiteral(",DATA5=") + qCurr(submitted) + QStringLiteral(" WHERE ukey=") +
           qInt(OptionRow) + QStringLiteral(";");
}

QString GroupProgressText(int kind, int i, int r, const QString& goods) {
    return QStringLiteral("データ更新中:") + QString::number(kind) + QLatin1Char('-') +
           QString::number(i) + QLatin1Char('-') + QString::number(r) + QLatin1Char('/') + goods;
}

void RecalculatePipeType(SqliteDatabase& db, RowTable& rows, int grp, int kan, Dialogs& dialogs,
                         const std::function<void(int r)>& beforeRow) {
    db.BeginImmediateTransaction();
    try {
        LoadPipeTypeIn(db, grp, kan, rows);
        const PipeTypeOptions options(rows[OptionRow]);
        for (int r = 1; r <= GroupCalcRows; ++r) {
            if (beforeRow) beforeRow(r);
            CalcRowWith(rows[r], options);
        }
        WritePipeTypeIn(db, rows, grp, kan, dialogs);
        db.Commit();
    } catch (...) {
        if (db.IsTransactionOpen()) {
            try {
                db.Rollback();
            } catch (...) {
                // The connection undoes what is left when it closes.
            }
        }
        throw;
    }
}

void RewriteGroup(const QString& path, Dialogs& dialogs, int kind, int grp,
                  const GroupProgress& progress) {
    // The rows of the run, apart from the pipe type on the sheet; one table
    // for the 20, as the fields a load does not fill carry over.
    RowTable rows;
    int kan = 1;
    try {
        SqliteDatabase db(path); // the run's own connection, on its own thread
        for (int i = 0; i < GroupPipeTypes; ++i) {
            kan = i + 1;
            RecalculatePipeType(db, rows, grp, kan, dialogs, [&](int r) {
                if (progress)
                    progress(GroupProgressText(kind, i, r, rows[r].goods()), i * GroupCalcRows + r);
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
