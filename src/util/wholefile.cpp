#include "util/wholefile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

bool replaceFileWhole(const QString& path, const QByteArray& bytes, QString* systemReason) {
    QSaveFile f(path);
    auto fail = [&](const QString& reason) {
        if (systemReason) *systemReason = reason;
        f.cancelWriting();
        return false;
    };
    if (!f.open(QIODevice::WriteOnly)) return fail(f.errorString());
    if (f.write(bytes) != bytes.size()) return fail(f.errorString());
    // The flush is asked for on its own: commit() passes over a buffer that
    // did not reach the disk (a full disk) and would put a cut-off file in
    // place of the old one. The file's own text says "Unknown error" then;
    // the system's says what happened.
    errno = 0;
    if (!f.flush())
        return fail(errno != 0 ? QString::fromLocal8Bit(std::strerror(errno)) : f.errorString());
    if (!f.commit()) {
        if (systemReason) *systemReason = f.errorString();
        return false;
    }
    return true;
}

QString fileFailureReason(const QString& path, const QString& systemReason, bool writing) {
    const QFileInfo info(path);
    QString reason;
    if (info.isDir())
        reason = QStringLiteral("同じ名前のフォルダーがあります。");
    else if (!info.dir().exists())
        reason = QStringLiteral("フォルダーがありません。");
    else if (!writing && !info.exists())
        reason = QStringLiteral("ファイルがありません。");
    else if (writing)
        reason = QStringLiteral("書き込みが許可されていないか、ディスクに空きがありません。");
    else
        reason = QStringLiteral("読み取りが許可されていないか、ファイルを読めません。");
    return QStringLiteral("理由: ") + reason + QStringLiteral(" (") + systemReason +
           QLatin1Char(')');
}
