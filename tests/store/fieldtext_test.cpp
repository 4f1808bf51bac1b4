// field texts: NthField and the escape of result lines.
#include "util/fieldtext.h"

#include <gtest/gtest.h>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

TEST(NthField, CountsFromOneAndAddsTrailingSeparator) {
    const QString s = u("a;b;;d");
    EXPECT_EQ(nthField(s, 1), "a");
    EXPECT_EQ(nthField(s, 2), "b");
    EXPECT_EQ(nthField(s, 3), "");
    EXPECT_EQ(nthField(s, 4), "d");
    EXPECT_EQ(nthField(s, 5), "");
    EXPECT_EQ(nthField(s, 0), "");
    EXPECT_EQ(nthField(s, -1), "");
    EXPECT_EQ(nthField(u("x;"), 1), "x");
    EXPECT_EQ(nthField(u("x;"), 2), "");
    EXPECT_EQ(nthField(u(""), 1), "");
}

TEST(NthField, EscapedValuesRoundTrip) {
    const QString odd = u("a;b") + QChar(0x1B) + u(":c;;") + QChar(0x1B);
    const QString line =
        escapeField(u("first")) + ";" + escapeField(odd) + ";" + escapeField(u("配管's;")) + ";";
    EXPECT_EQ(nthField(line, 1), "first");
    EXPECT_EQ(nthField(line, 2), odd);
    EXPECT_EQ(nthField(line, 3), u("配管's;"));
    EXPECT_EQ(nthField(line, 4), "");
}

TEST(NthField, WindowsPathsAreUntouched) {
    const QString launch = u("0;1;0;0;c:\\programData\\ostrel\\database\\;");
    EXPECT_EQ(nthField(launch, 5), u("c:\\programData\\ostrel\\database\\"));
}

} // namespace
