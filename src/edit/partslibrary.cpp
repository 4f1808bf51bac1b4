#include "edit/partslibrary.h"

#include "shell/settingsfiles.h" // FileError

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

const QString PartsExtension = QStringLiteral("fdk");

namespace {

// The longest file name the systems we run on take, in bytes.
constexpr int MaxFileNameBytes = 255;

bool writableDir(const QString& path) {
    const QFileInfo info(path);
    return info.isDir() && info.isWritable();
}

} // namespace

QString partsLibraryFolderFor(const QString& configured, const QString& programDir,
                              const QString& userDataDir) {
    if (!configured.isEmpty()) return QDir::cleanPath(configured);
    // A program installed by the package manager lives under /usr, where
    // nothing is written at run time, even by root.
    const bool installed = QDir::cleanPath(programDir).startsWith(QStringLiteral("/usr/"));
    if (!programDir.isEmpty() && !installed) {
        const QString beside = QDir::cleanPath(programDir + QStringLiteral("/ex_data"));
        const QFileInfo info(beside);
        if (info.exists() ? writableDir(beside) : writableDir(programDir)) return beside;
    }
    return QDir::cleanPath(userDataDir + QStringLiteral("/qorvale/ex_data"));
}

QString partsLibraryFolder() {
    const QString programDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return partsLibraryFolderFor(
        qEnvironmentVariable("QORVALE_LIBRARY_DIR"), programDir,
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

QString partsEntryPath(const QString& folder, const QString& name, const QString& extension) {
    return folder + QLatin1Char('/') + name + QLatin1Char('.') + extension;
}

QStringList partsEntryNames(const QString& folder, const QString& extension) {
    QStringList names;
    const QString suffix = QLatin1Char('.') + extension;
    // Unsorted, hidden and system files too: the order is the folder's own.
    QDirIterator it(folder, {QStringLiteral("*") + suffix},
                    QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        it.next();
        const QFileInfo info = it.fileInfo();
        // The mask is matched exactly here (a.FDK is another file than a.fdk).
        if (!info.fileName().endsWith(suffix, Qt::CaseSensitive)) continue;
        if (!info.isFile()) continue;
        names << info.fileName().chopped(suffix.size());
    }
    return names;
}

QString partsNameProblem(const QString& name) {
    if (name.trimmed().isEmpty())
        return QStringLiteral("標準歩掛の名前がありません。\n管種名の欄に名前を入れてから登録して"
                              "ください。");
    if (name.contains(QLatin1Char('/')))
        return QStringLiteral("標準歩掛の名前に「/」は使えません。\n「%1」\n別の名前にしてから"
                              "登録してください。")
            .arg(name);
    if (name.contains(QChar(0)))
        return QStringLiteral("標準歩掛の名前に使えない文字が含まれています。\n別の名前にしてから"
                              "登録してください。");
    const QString fileName = name + QLatin1Char('.') + PartsExtension;
    if (QFile::encodeName(fileName).size() > MaxFileNameBytes)
        return QStringLiteral("標準歩掛の名前が長すぎます。\n「%1」\n短い名前にしてから登録して"
                              "ください。")
            .arg(name);
    return QString();
}

void makePartsFolder(const QString& folder) {
    if (QFileInfo(folder).isDir()) return;
    if (!QDir().mkpath(folder))
        throw FileError(
            QStringLiteral("入出力エラー: 標準歩掛のフォルダーを作成できません。\nフォルダー: ") +
            folder);
}
