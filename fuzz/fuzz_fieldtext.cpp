// Result lines: values escaped and joined as the database layer writes them
// come back field by field through nthField and fieldOfLine, whatever they
// hold; and any line at all can be read without harm.

#include "fuzzcheck.h"
#include "store/modulewrappersqlite.h"
#include "util/fieldtext.h"

#include <QStringList>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const int count = in.ConsumeIntegralInRange(0, 12);
    QStringList values;
    QStringList columns;
    QString line;
    for (int i = 0; i < count; ++i) {
        // Bias towards the characters that matter here.
        QString v = fuzzText(in, 16);
        const int extra = in.ConsumeIntegralInRange(0, 3);
        for (int k = 0; k < extra; ++k) {
            const char16_t pick[] = {u';', 0x1B, u':', u'\\'};
            v.insert(in.ConsumeIntegralInRange<int>(0, int(v.size())),
                     QChar(pick[in.ConsumeIntegralInRange(0, 3)]));
        }
        const QString escaped = escapeField(v);
        FUZZ_CHECK(!escaped.contains(QLatin1Char(';')));
        values << v;
        columns << QStringLiteral("COL%1").arg(i + 1);
        line += escaped + QLatin1Char(';');
    }
    for (int i = 0; i < count; ++i)
        FUZZ_CHECK_EQ(nthField(line, i + 1), values[i]);
    FUZZ_CHECK(nthField(line, count + 1).isEmpty());
    FUZZ_CHECK(nthField(line, count + 2).isEmpty());
    FUZZ_CHECK(nthField(line, 0).isEmpty());
    FUZZ_CHECK(nthField(line, -1).isEmpty());

    for (int i = 0; i < count; ++i) {
        FUZZ_CHECK_EQ(fieldOfLine(columns, line, columns[i]), values[i]);
        FUZZ_CHECK_EQ(fieldOfLine(columns, line, columns[i].toLower()), values[i]);
    }
    FUZZ_CHECK(fieldOfLine(columns, line, QStringLiteral("NO_SUCH")).isEmpty());

    // Any text as a line: reading never fails, and a field never holds ";".
    const QString raw = fuzzText(in, 256);
    const int n = in.ConsumeIntegralInRange(-2, 40);
    const QString field = nthField(raw, n);
    if (!raw.contains(QChar(0x1B))) FUZZ_CHECK(!field.contains(QLatin1Char(';')));
    if (n < 1) FUZZ_CHECK(field.isEmpty());
    FUZZ_CHECK(field.size() <= raw.size());
    return 0;
}
