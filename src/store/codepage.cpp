#include "store/codepage.h"
#include <QList>

#include <iconv.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace {

// One converter per direction and thread; iconv_t is not thread safe.
class Converter {
public:
    Converter(const char* to, const char* from) : cd_(iconv_open(to, from)) {
        if (cd_ == reinterpret_cast<iconv_t>(-1))
            throw std::runtime_error("code page 932 conversion is not available");
    }
    ~Converter() { iconv_close(cd_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Converts all of in; false when iconv refuses it.
    bool convert(const char* in, std::size_t inLen, std::string& out) {
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        char buf[64];
        char* src = const_cast<char*>(in);
        std::size_t left = inLen;
        while (left > 0) {
            char* dst = buf;
            std::size_t room = sizeof buf;
            std::size_t r = iconv(cd_, &src, &left, &dst, &room);
            out.append(buf, std::size_t(dst - buf));
            if (r == std::size_t(-1) && errno != E2BIG) return false;
        }
        return true;
    }

private:
    iconv_t cd_;
};

Converter& encoder() {
    thread_local Converter c("CP932", "UTF-32LE");
    return c;
}

Converter& decoder() {
    thread_local Converter c("UTF-32LE", "CP932");
    return c;
}

// What the converters said, kept per character: a conversion costs a call
// into iconv only the first time a character is met. Entries are 0 until
// known; threads that meet a character at once store the same value.
//   encoding, by UTF-16 unit: 0x10000 | bytes for one byte, 0x20000 | bytes
//   for two (lead byte high), 0x30000 for "not in the code page";
//   decoding, by lead << 8 | trail (or the byte alone): code point + 1.
std::atomic<std::uint32_t> encoded[0x10000];
std::atomic<std::uint32_t> decoded[0x10000];

std::uint32_t encodeOne(char32_t c) {
    char in[4] = {char(c & 0xFF), char((c >> 8) & 0xFF), char((c >> 16) & 0xFF),
                  char((c >> 24) & 0xFF)};
    std::string one;
    if (!encoder().convert(in, 4, one) || one.empty() || one.size() > 2) return 0x30000;
    if (one.size() == 1) return 0x10000 | static_cast<unsigned char>(one[0]);
    return 0x20000 | std::uint32_t(static_cast<unsigned char>(one[0])) << 8 |
           static_cast<unsigned char>(one[1]);
}

char32_t decodeOne(const char* bytes, int len) {
    std::string u;
    if (decoder().convert(bytes, std::size_t(len), u) && u.size() == 4)
        return char32_t(static_cast<unsigned char>(u[0])) |
               char32_t(static_cast<unsigned char>(u[1])) << 8 |
               char32_t(static_cast<unsigned char>(u[2])) << 16 |
               char32_t(static_cast<unsigned char>(u[3])) << 24;
    return 0xFFFD;
}

char32_t lookAlike(char32_t c) {
    switch (c) {
    case 0x301C:
        return 0xFF5E; // wave dash -> fullwidth tilde
    case 0x2212:
        return 0xFF0D; // minus sign -> fullwidth hyphen-minus
    case 0x2016:
        return 0x2225; // double vertical line -> parallel to
    case 0x2014:
        return 0x2015; // em dash -> horizontal bar
    case 0x00A2:
        return 0xFFE0; // cent
    case 0x00A3:
        return 0xFFE1; // pound
    case 0x00AC:
        return 0xFFE2; // not sign
    default:
        return c;
    }
}

} // namespace

bool isLeadByte(unsigned char b) {
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}

bool isTrailByte(unsigned char b) {
    return (b >= 0x40 && b <= 0x7E) || (b >= 0x80 && b <= 0xFC);
}

QByteArray toAnsi(const QString& text) {
    std::string out;
    out.reserve(std::size_t(text.size()) * 2);
    for (uint u : text.toUcs4()) {
        char32_t c = char32_t(u);
        c = lookAlike(c);
        if (c < 0x80) {
            out.push_back(char(c));
            continue;
        }
        std::uint32_t e = 0x30000; // beyond the BMP: not in the code page
        if (c <= 0xFFFF) {
            e = encoded[c].load(std::memory_order_relaxed);
            if (e == 0) {
                e = encodeOne(c);
                encoded[c].store(e, std::memory_order_relaxed);
            }
        }
        if ((e >> 16) == 1) {
            out.push_back(char(e & 0xFF));
        } else if ((e >> 16) == 2) {
            out.push_back(char((e >> 8) & 0xFF));
            out.push_back(char(e & 0xFF));
        } else {
            out.push_back('?');
        }
    }
    return QByteArray(out.data(), qsizetype(out.size()));
}

QByteArray cutBytes(const QByteArray& bytes, int maxBytes) {
    return bytes.size() <= maxBytes ? bytes : bytes.left(maxBytes);
}

QByteArray toAnsiCut(const QString& text, int maxBytes) {
    return cutBytes(toAnsi(text), maxBytes);
}

QString fromAnsi(const QByteArray& bytes) {
    QString out;
    out.reserve(bytes.size());
    const int n = int(bytes.size());
    for (int i = 0; i < n;) {
        const unsigned char b = static_cast<unsigned char>(bytes[i]);
        if (b < 0x80) {
            out += QChar(b);
            ++i;
            continue;
        }
        const int len = isLeadByte(b) ? 2 : 1;
        if (i + len > n) break; // lead byte without its trail: dropped
        if (len == 2 && !isTrailByte(static_cast<unsigned char>(bytes[i + 1]))) {
            ++i; // half a character in front of a delimiter: the delimiter stays
            continue;
        }
        const unsigned key = len == 2 ? b << 8 | static_cast<unsigned char>(bytes[i + 1]) : b;
        std::uint32_t d = decoded[key].load(std::memory_order_relaxed);
        if (d == 0) {
            d = std::uint32_t(decodeOne(bytes.constData() + i, len)) + 1;
            decoded[key].store(d, std::memory_order_relaxed);
        }
        const char32_t c = char32_t(d - 1);
        if (QChar::requiresSurrogates(c)) {
            out += QChar(QChar::highSurrogate(c));
            out += QChar(QChar::lowSurrogate(c));
        } else {
            out += QChar(char16_t(c));
        }
        i += len;
    }
    return out;
}
