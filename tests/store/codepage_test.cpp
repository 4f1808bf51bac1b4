// Code page 932: conversions, look-alikes and cuts inside a character.
#include "store/codepage.h"
#include "support/testing.h"

namespace {

// Cases "hex bytes=text" separated by "; ": the bytes read as the text, and with back set
// written back as the same bytes.
void checkBytes(const char* cases, bool back) {
    for (const QString& c : QString::fromUtf8(cases).split("; ")) {
        const QByteArray bytes = QByteArray::fromHex(c.section('=', 0, 0).toLatin1());
        EXPECT_EQ(fromAnsi(bytes), c.section('=', 1)) << c.toStdString();
        if (!back) continue;
        EXPECT_EQ(toAnsi(fromAnsi(bytes)).toHex(), bytes.toHex()) << c.toStdString();
    }
}

TEST(CodePage, ConversionsLookAlikesAndCutsInsideACharacter) {
    const QString text = u("配管用炭素鋼鋼管（白）ＳＧＰ 15A ｍ ﾊﾝｶｸ");
    EXPECT_EQ(fromAnsi(toAnsi(text)), text);
    // Half-width kana is one byte; "ソ" and "表" end in 0x5C, which is no separator there.
    EXPECT_EQ(toAnsi(u("配ｍﾊソ表")).toHex(), "947a828dca835c955c");
    checkBytes("835c955c=ソ表", false);
    // Look-alikes become the code page's characters, characters outside it "?".
    EXPECT_EQ(fromAnsi(toAnsi(u("〜|−|‖|—|¢£¬|a😀b|한"))), u("～|－|∥|―|￠￡￢|a?b|?"));

    // A cut inside a double-byte character never fails.
    const QString cuts = u("ab配管");
    EXPECT_EQ(toAnsiCut(cuts, 5).toHex(), "6162947a8a"); // a b 0x94 0x7A 0x8A | 0xC7
    EXPECT_EQ(fromAnsi(toAnsiCut(cuts, 5)) + '|' + fromAnsi(toAnsiCut(cuts, 4)) + '|' +
                  fromAnsi(toAnsiCut(cuts, 3)),
              u("ab配|ab配|ab"));
    // field widths: 81 double-byte bytes cut at 80.
    const QString long41 = QString(41, QChar(0x914D)); // 配 x 41 = 82 bytes
    EXPECT_EQ(toAnsiCut(long41, 80), toAnsi(QString(40, QChar(0x914D))));
    EXPECT_EQ(fromAnsi(toAnsiCut(u("a") + long41, 80)), u("a") + QString(39, QChar(0x914D)));
    // Broken bytes never throw.
    EXPECT_EQ(QList<qsizetype>({fromAnsi(QByteArray("\x81", 1)).size(),
                                fromAnsi(QByteArray("x\xFF", 2)).size(),
                                fromAnsi(QByteArray("\x81\x20", 2)).size()}),
              QList<qsizetype>({0, 2, 1}));

    // Found by fuzzing the print hand-off: a field cut inside a character and written with its
    // delimiter, or at the end of a line, must not take the delimiter or the line end with it
    // when the line is read back.
    const QByteArray size = toAnsiCut(u("ｱ鋼屋管"), 6); // B1 | 93 E0 | 89 AE | 8A
    ASSERT_EQ(size.size(), 6);
    ASSERT_TRUE(isLeadByte(static_cast<unsigned char>(size[5])));
    EXPECT_EQ(fromAnsi(size + ";m;\r\n" + size + ",1\r\n"), u("ｱ鋼屋;m;\r\nｱ鋼屋,1\r\n"));
    // A pair the code page does not have is still one character.
    checkBytes("85403b=\uFFFD;", false); // 0x3B is ";"
}

// The edges of the lead byte ranges 81-9F, E0-FC and of the trail byte ranges
// 40-7E, 80-FC, and the bytes just outside them.
TEST(CodePage, LeadAndTrailBytesAtTheEdgesOfTheirRanges) {
    std::string lead, trail;
    for (unsigned char b : {0x80, 0x81, 0x9F, 0xA0, 0xDF, 0xE0, 0xFC, 0xFD})
        lead += isLeadByte(b) ? '1' : '0';
    for (unsigned char b : {0x3F, 0x40, 0x7E, 0x7F, 0x80, 0xFC, 0xFD})
        trail += isTrailByte(b) ? '1' : '0';
    EXPECT_EQ(lead + ' ' + trail, "01100110 0110110");
    // One character, written back as the same two bytes.
    checkBytes("8140=\u3000; 9F40=\u6A97; E040=\u6F3E; FC40=\u9ADC; 817E=\u00D7; 8180=\u00F7; "
               "81FC=\u25EF",
               true);
    // No lead byte: read alone, u+FFFD when the code page lacks it. A lead byte in front of a
    // byte that can't follow it: dropped.
    checkBytes("8040=\uFFFD@; A040=\uFFFD@; DF40=\uFF9F@; FD40=\uFFFD@; 813F=?; 817F=\x7F; "
               "81FD=\uFFFD",
               false);
}

} // namespace
