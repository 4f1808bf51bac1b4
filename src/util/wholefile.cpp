#include "util/wholefile.h"

#include <QSaveFile>

#include <cerrno>
#include <cstring>

bool ReplaceFileWhole(const QString& path, const QByteArray& bytes, QString* systemReason) {
    QSaveFile f(path);
    errno = 0;
    auto fail = [&] {
        // A failed flush leaves the file's own text at "Unknown error"; the
        // system's says what happened (a full disk, a size limit).
        const int error = errno;
        if (systemReason)
            *systemReason =
                error != 0 ? QString::fromLocal8Bit(std::strerror(error)) : f.errorString();
        f.cancelWriting();
        return false;
    };
    if (!f.open(QIODevice::WriteOnly)) return fail();
    // The flush is asked for on its own: commit() passes over a buffer that
    // did not reach the disk (a full disk) and would put a cut-off file in
    // place of the old one.
    if (f.write(bytes) != bytes.size() || !f.flush()) return fail();
    if (!f.commit()) {
        if (systemReason) *systemReason = f.errorString();
        return false;
    }
    return true;
}
