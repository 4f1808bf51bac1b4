#pragma once
// Files replaced whole: the new bytes go to a file beside the old one and
// take its place only when every byte has reached the disk, so a full disk,
// a folder without write permission or a crash leaves the old file as it
// was, never a cut-off copy.

#include <QByteArray>
#include <QString>

// Replaces (or creates) the file at path with bytes. False when it can't;
// then systemReason, when given, holds the system's own words and the file
// of that name is untouched. The folder is not made.
bool replaceFileWhole(const QString& path, const QByteArray& bytes,
                      QString* systemReason = nullptr);

// Why a file could not be read or written, in words a user knows, with the
// system's own text behind it: "理由: フォルダーがありません。 (...)".
QString fileFailureReason(const QString& path, const QString& systemReason, bool writing);
