// Code page 932: conversions, look-alikes and cuts inside a character.
#include "store/codepage.h"

#include <gtest/gtest.h>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

TEST(CodePage, ConversionsAndLookAlikes) {
    const QString text = u("配管用炭素鋼鋼管（白）ＳＧＰ 15A ｍ ﾊﾝｶｸ");
    EXPECT_EQ(fromAnsi(toAnsi(text)), text);
    EXPECT_EQ(toAnsi(u("配")).size(), 2);
    EXPECT_EQ(toAnsi(u("ｍ")).size(), 2);
    EXPECT_EQ(toAnsi(u("ﾊ")).size(), 1); // half-width kana is one byte
    // "ソ" is 0x83 0x5C: the trail byte must not be read as a separator.
    const QByteArray b = toAnsi(u("ソ表"));
    ASSERT_EQ(b.size(), 4);
    EXPECT_EQ(static_cast<unsigned char>(b[1]), 0x5C);
    EXPECT_EQ(fromAnsi(b), u("ソ表"));
    // Look-alikes become the code page's characters, characters outside it "?".
    for (auto [in, out] : {std::pair{"〜", "～"},
                           {"−", "－"},
                           {"‖", "∥"},
                           {"—", "―"},
                           {"¢£¬", "￠￡￢"},
                           {"a😀b", "a?b"},
                           {"한", "?"}})
        EXPECT_EQ(fromAnsi(toAnsi(u(in))), u(out)) << in;
}

TEST(CodePage, CutInsideDoubleByteCharacterNeverFails) {
    const QString text = u("ab配管");
    const QByteArray cut = toAnsiCut(text, 5); // a b 0x94 0x7A 0x8A | 0xC7
    ASSERT_EQ(cut.size(), 5);
    EXPECT_EQ(fromAnsi(cut), u("ab配"));
    EXPECT_EQ(fromAnsi(toAnsiCut(text, 4)), u("ab配"));
    EXPECT_EQ(fromAnsi(toAnsiCut(text, 3)), u("ab"));
    // field widths: 81 double-byte bytes cut at 80.
    const QString long41 = QString(41, QChar(0x914D)); // 配 x 41 = 82 bytes
    EXPECT_EQ(toAnsiCut(long41, 80).size(), 80);
    EXPECT_EQ(fromAnsi(toAnsiCut(long41, 80)), QString(40, QChar(0x914D)));
    EXPECT_EQ(fromAnsi(toAnsiCut(u("a") + long41, 80)), u("a") + QString(39, QChar(0x914D)));
    // Broken bytes never throw.
    EXPECT_EQ(fromAnsi(QByteArray("\x81", 1)), QString());
    EXPECT_EQ(fromAnsi(QByteArray("x\xFF", 2)).size(), 2);
    EXPECT_EQ(fromAnsi(QByteArray("\x81\x20", 2)).size(), 1);
}

// Found by fuzzing the print hand-off: a field cut inside a character and written with its
// delimiter, or at the end of a line, must not take the delimiter or the line end with it
// when the line is read back.
TEST(CodePage, HalfACharacterInFrontOfADelimiterLeavesTheDelimiter) {
    const QByteArray size = toAnsiCut(u("ｱ鋼屋管"), 6); // B1 | 93 E0 | 89 AE | 8A
    ASSERT_EQ(size.size(), 6);
    ASSERT_TRUE(isLeadByte(static_cast<unsigned char>(size[5])));
    EXPECT_EQ(fromAnsi(size + ";m;\r\n" + size + ",1\r\n"), u("ｱ鋼屋;m;\r\nｱ鋼屋,1\r\n"));
    // A pair the code page does not have is still one character.
    EXPECT_EQ(fromAnsi(QByteArray("\x85\x40;", 3)), QString(QChar(0xFFFD)) + u(";"));
}

// The edges of the lead byte ranges 81-9F, E0-FC and of the trail byte ranges
// 40-7E, 80-FC, and the bytes just outside them.
TEST(CodePage, LeadAndTrailBytesAtTheEdgesOfTheirRanges) {
    for (unsigned char b : {0x81, 0x9F, 0xE0, 0xFC})
        EXPECT_TRUE(isLeadByte(b)) << int(b);
    for (unsigned char b : {0x80, 0xA0, 0xDF, 0xFD})
        EXPECT_FALSE(isLeadByte(b)) << int(b);
    for (unsigned char b : {0x40, 0x7E, 0x80, 0xFC})
        EXPECT_TRUE(isTrailByte(b)) << int(b);
    for (unsigned char b : {0x3F, 0x7F, 0xFD})
        EXPECT_FALSE(isTrailByte(b)) << int(b);
    // One character, written back as the same two bytes.
    for (auto [bytes, text] : {std::pair{"\x81\x40", "\u3000"},
                               {"\x9F\x40", "\u6A97"},
                               {"\xE0\x40", "\u6F3E"},
                               {"\xFC\x40", "\u9ADC"},
                               {"\x81\x7E", "\u00D7"},
                               {"\x81\x80", "\u00F7"},
                               {"\x81\xFC", "\u25EF"}}) {
        EXPECT_EQ(fromAnsi(bytes).toStdString(), text) << QByteArray(bytes).toHex().toStdString();
        EXPECT_EQ(toAnsi(fromAnsi(bytes)).toHex(), QByteArray(bytes).toHex());
    }
    // No lead byte: read alone, u+FFFD when the code page lacks it. A lead byte in front of a
    // byte that can't follow it: dropped.
    for (auto [bytes, text] : {std::pair{"\x80\x40", "\uFFFD@"},
                               {"\xA0\x40", "\uFFFD@"},
                               {"\xDF\x40", "\uFF9F@"},
                               {"\xFD\x40", "\uFFFD@"},
                               {"\x81\x3F", "?"},
                               {"\x81\x7F", "\x7F"},
                               {"\x81\xFD", "\uFFFD"}})
        EXPECT_EQ(fromAnsi(bytes).toStdString(), text) << QByteArray(bytes).toHex().toStdString();
}

} // namespace
