#pragma once
// Where the entries of the standard labour library live and how an entry's
// name becomes a file: the entry "name" is the file "name.fdk" in the library
// folder.
//
// The library folder is
//   1. $QORVALE_LIBRARY_DIR when it is set;
//   2. else "ex_data" beside the program file, when that folder can be
//      written or, missing, can be made there (a build tree, a portable copy);
//   3. else "qorvale/ex_data" in the user's data folder
//      (~/.local/share/qorvale/ex_data), for an installed program whose
//      folder users cannot write.
// Nothing makes the folder before the first save.

#include <QString>
#include <QStringList>

// The extension of an entry's file, without the dot.
extern const QString PartsExtension;

// The library folder of this run, by the rule above.
QString partsLibraryFolder();
// The rule with its inputs given: the value of QORVALE_LIBRARY_DIR, the
// program's folder and the user's data folder (~/.local/share).
QString partsLibraryFolderFor(const QString& configured, const QString& programDir,
                              const QString& userDataDir);

// The file of an entry: folder, "/", name, "." and the extension.
QString partsEntryPath(const QString& folder, const QString& name,
                       const QString& extension = PartsExtension);

// The entries in folder: the names, without the extension, of the files
// "*.<extension>" in the order the folder gives them (no sorting). Folders
// of such a name are left out. A missing folder has none.
QStringList partsEntryNames(const QString& folder, const QString& extension = PartsExtension);

// Why name can't name an entry, as a message for the person; empty when it
// can. A name must hold something besides blanks and no "/", which would
// put the file into another folder, and must fit a file name.
QString partsNameProblem(const QString& name);

// Makes the folder when it is missing. Raises FileError.
void makePartsFolder(const QString& folder);
