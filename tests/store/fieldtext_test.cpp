// field texts: NthField and the escape of result lines.
#include "util/fieldtext.h"

#include <gtest/gtest.h>

namespace {

TEST(NthField, CountsFromOneAndAddsTrailingSeparator) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"a;b;;d", 1, "a"},
        {"a;b;;d", 2, "b"},
        {"a;b;;d", 3, ""},
        {"a;b;;d", 4, "d"},
        {"a;b;;d", 5, ""},
        {"a;b;;d", 0, ""},
        {"a;b;;d", -1, ""},
        {"x;", 1, "x"},
        {"x;", 2, ""},
        {"", 1, ""},
        // Windows paths are untouched.
        {"0;1;0;0;c:\\programData\\ostrel\\database\\;", 5, "c:\\programData\\ostrel\\database\\"}};
    for (const auto& [text, n, field] : cases)
        EXPECT_EQ(nthField(text, n), field) << text << " " << n;
    // Escaped values round-trip.
    const QString odd = "a;b" + QString(QChar(0x1B)) + ":c;;" + QChar(0x1B);
    const QString line =
        escapeField("first") + ";" + escapeField(odd) + ";" + escapeField("配管's;") + ";";
    EXPECT_EQ(nthField(line, 1), "first");
    EXPECT_EQ(nthField(line, 2), odd);
    EXPECT_EQ(nthField(line, 3), "配管's;");
    EXPECT_EQ(nthField(line, 4), "");
}

} // namespace
