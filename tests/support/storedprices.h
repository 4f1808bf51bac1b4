#pragma once
// The computed columns of one pipe type as the file holds them, one line a
// row (rows 1 to 59): the prices a test compares with the engine's, and the
// same columns as the engine computes them.

#include "engine/calcrow.h"
#include "engine/currency.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"
#include "support/testing.h"

inline QStringList StoredPrices(const QString& path, int grp, int kan) {
    const QueryResult rows = queryToLines(
        path, QStringLiteral("SELECT NO,GROSS,NET,CALC1_G,CALC2_G,CALC3_G,CALC4_G,CALC5_G,"
                             "CALC6_G,CALC7_G,CALC1_N,CALC2_N,CALC3_N,CALC4_N,CALC5_N,"
                             "CALC6_N,CALC7_N,NTANKA,GTANKA,FTANKA FROM ex_kanzai WHERE "
                             "CTG='1' AND GRP='%1' AND KAN='%2' AND NO<60 ORDER BY NO;")
                  .arg(grp)
                  .arg(kan));
    QStringList out;
    for (const QString& line : rows.lines) {
        QStringList fields;
        for (int f = 1; f <= 20; ++f)
            fields << currToStr(strToCurrDef(nthField(line, f), Currency::fromInt(-999999)));
        out << fields.join(QLatin1Char(' '));
    }
    return out;
}

// The computed columns as the engine computes them from the stored figures
// and options of the pipe type, in the lines of StoredPrices.
inline QStringList computedPrices(const QString& path, int grp, int kan) {
    RowTable rows;
    {
        SqliteDatabase db(path);
        loadPipeTypeIn(db, grp, kan, rows);
    }
    QStringList out;
    for (int n = 1; n < OptionRow; ++n) {
        PipeRow row = rows[n];
        PipeRow options = rows[OptionRow];
        calcRowWith(row, PipeTypeOptions(options));
        QStringList fields{QString::number(n), currToStr(row.submittedPrice),
                           currToStr(row.costPrice)};
        for (Currency v : row.submittedAmounts)
            fields << currToStr(v);
        for (Currency v : row.costAmounts)
            fields << currToStr(v);
        fields << currToStr(row.costUnitPrice) << currToStr(row.submittedUnitPrice)
               << currToStr(row.adoptedUnitPrice);
        out << fields.join(QLatin1Char(' '));
    }
    return out;
}
