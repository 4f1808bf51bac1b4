// field texts: NthField and the escape of result lines.
#include "support/testing.h"
#include "util/fieldtext.h"

namespace {

// Fields first to last of text, joined by "|".
QString fields(const QString& text, int first, int last) {
    QStringList f;
    for (int n = first; n <= last; ++n)
        f << nthField(text, n);
    return f.join('|');
}

TEST(NthField, CountsFromOneAndAddsTrailingSeparator) {
    EXPECT_EQ(fields("a;b;;d", -1, 5), "||a|b||d|");
    EXPECT_EQ(fields("x;", 1, 2) + fields("", 1, 1), "x|");
    // Windows paths are untouched.
    EXPECT_EQ(nthField("0;1;0;0;c:\\programData\\ostrel\\database\\;", 5),
              "c:\\programData\\ostrel\\database\\");
    // Escaped values round-trip.
    const QString odd = "a;b" + QString(QChar(0x1B)) + ":c;;" + QChar(0x1B);
    const QString line =
        escapeField("first") + ";" + escapeField(odd) + ";" + escapeField("配管's;") + ";";
    EXPECT_EQ(fields(line, 1, 4), "first|" + odd + "|配管's;|");
}

} // namespace
