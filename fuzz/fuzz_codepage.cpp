// Code page 932: any bytes decode, any text encodes, the encoding is stable
// through a second round, and the text read from a byte cut never ends in
// half a character: it is the text of the whole characters in front of the cut.

#include "fuzzcheck.h"
#include "store/codepage.h"

namespace {

// Byte length of the whole characters within the first n bytes, as a reader
// walks them from the start.
int wholeCharBytes(const QByteArray& b, int n) {
    int i = 0;
    while (i < n) {
        const int len = isLeadByte(static_cast<unsigned char>(b[i])) ? 2 : 1;
        if (i + len > n) break;
        i += len;
    }
    return i;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const int cut = in.ConsumeIntegralInRange(0, 90);
    const bool asText = in.ConsumeBool();
    const std::string rest = in.ConsumeRemainingBytesAsString();
    const QByteArray bytes(rest.data(), qsizetype(rest.size()));

    // Bytes as a file or a row holds them.
    const QString decoded = fromAnsi(bytes);
    FUZZ_CHECK(decoded.size() <= bytes.size());
    const QByteArray encoded = toAnsi(decoded);
    FUZZ_CHECK(encoded.size() <= bytes.size());
    FUZZ_CHECK_EQ(toAnsi(fromAnsi(encoded)), encoded);

    const QByteArray shortened = cutBytes(bytes, cut);
    FUZZ_CHECK(shortened.size() <= cut);
    FUZZ_CHECK(bytes.startsWith(shortened));
    const QString cutText = fromAnsi(shortened);
    FUZZ_CHECK(decoded.startsWith(cutText));
    FUZZ_CHECK_EQ(cutText, fromAnsi(bytes.left(wholeCharBytes(bytes, int(shortened.size())))));
    FUZZ_CHECK(toAnsi(cutText).size() <= shortened.size());

    // Text as a user types or pastes it.
    if (asText) {
        QString text;
        for (std::size_t i = 0; i + 1 < rest.size(); i += 2)
            text += QChar(char16_t(static_cast<unsigned char>(rest[i]) |
                                   static_cast<unsigned char>(rest[i + 1]) << 8));
        const QByteArray a = toAnsi(text);
        FUZZ_CHECK_EQ(toAnsi(fromAnsi(a)), a);
        const QByteArray c = toAnsiCut(text, cut);
        FUZZ_CHECK(c.size() <= cut);
        FUZZ_CHECK(a.startsWith(c));
        const QString back = fromAnsi(c);
        FUZZ_CHECK(fromAnsi(a).startsWith(back));
        FUZZ_CHECK_EQ(back, fromAnsi(a.left(wholeCharBytes(a, int(c.size())))));
    }
    return 0;
}
