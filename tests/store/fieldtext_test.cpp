// Field texts: NthField and the escape of result lines.
#include "util/fieldtext.h"

#include <gtest/gtest.h>

namespace {

QString U(const char* t) {
    return QString::fromUtf8(t);
}

TEST(NthField, CountsFromOneAndAddsTrailingSeparator) {
    const QString s = U("a;b;;d");
    EXPECT_EQ(NthField(s, 1), "a");
    EXPECT_EQ(NthField(s, 2), "b");
    EXPECT_EQ(NthField(s, 3), "");
    EXPECT_EQ(NthField(s, 4), "d");
    EXPECT_EQ(NthField(s, 5), "");
    EXPECT_EQ(NthField(s, 0), "");
    EXPECT_EQ(NthField(s, -1), "");
    EXPECT_EQ(NthField(U("x;"), 1), "x");
    EXPECT_EQ(NthField(U("x;"), 2), "");
    EXPECT_EQ(NthField(U(""), 1), "");
}

TEST(NthField, EscapedValuesRoundTrip) {
    const QString odd = U("a;b") + QChar(0x1B) + U(":c;;") + QChar(0x1B);
    const QString line =
        EscapeField(U("first")) + ";" + EscapeField(odd) + ";" + EscapeField(U("配管's;")) + ";";
    EXPECT_EQ(NthField(line, 1), "first");
    EXPECT_EQ(NthField(line, 2), odd);
    EXPECT_EQ(NthField(line, 3), U("配管's;"));
    EXPECT_EQ(NthField(line, 4), "");
}

TEST(NthField, WindowsPathsAreUntouched) {
    const QString launch = U("0;1;0;0;c:\\programData\\ostrel\\database\\;");
    EXPECT_EQ(NthField(launch, 5), U("c:\\programData\\ostrel\\database\\"));
}

} // namespace
