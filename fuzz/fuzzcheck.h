#pragma once
// What every fuzz target shares: a property check that stops the run with
// the failing texts, and the ways to turn fuzz bytes into text.

#include <QByteArray>
#include <QString>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>
#include <string>

[[noreturn]] inline void FuzzFail(const char* what, const char* file, int line,
                                  const QString& detail = QString()) {
    std::fprintf(stderr, "%s:%d: property failed: %s\n", file, line, what);
    if (!detail.isEmpty()) std::fprintf(stderr, "  %s\n", detail.toUtf8().constData());
    std::abort();
}

#define FUZZ_CHECK(cond)                                                                           \
    do {                                                                                           \
        if (!(cond)) FuzzFail(#cond, __FILE__, __LINE__);                                          \
    } while (0)

#define FUZZ_CHECK_EQ(a, b)                                                                        \
    do {                                                                                           \
        const auto fuzzA_ = (a);                                                                   \
        const auto fuzzB_ = (b);                                                                   \
        if (!(fuzzA_ == fuzzB_))                                                                   \
            FuzzFail(#a " == " #b, __FILE__, __LINE__,                                             \
                     FuzzShow(fuzzA_) + " | " + FuzzShow(fuzzB_));                                 \
    } while (0)

inline QString FuzzShow(const QString& s) {
    QString out;
    for (QChar c : s)
        out += c.unicode() < 0x20 || c.unicode() >= 0x7F
                   ? QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'))
                   : QString(c);
    return QLatin1Char('"') + out + QLatin1Char('"');
}
inline QString FuzzShow(const QByteArray& b) {
    return QString::fromLatin1(b.toHex(' '));
}
template <typename T> QString FuzzShow(const T& v) {
    return QString::number(v);
}

// Any UTF-16 text, lone surrogates and control characters included.
inline QString fuzzText(FuzzedDataProvider& in, std::size_t maxUnits) {
    const std::string bytes = in.ConsumeRandomLengthString(maxUnits * 2);
    QString s;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        s += QChar(char16_t(static_cast<unsigned char>(bytes[i]) |
                            static_cast<unsigned char>(bytes[i + 1]) << 8));
    return s;
}

// Text as a user or a file would give it: UTF-8, so mostly ASCII with some
// Japanese.
inline QString fuzzUtf8(FuzzedDataProvider& in, std::size_t maxBytes) {
    return QString::fromStdString(in.ConsumeRandomLengthString(maxBytes));
}
