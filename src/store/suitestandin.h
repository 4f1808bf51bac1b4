#pragma once
// A stand-in for the Velmora suite: it creates what the suite provides to
// this program, the data folder with its sub-folders and style files and the
// database with ex_kanzai (12,000 rows) and exconf, and nothing more.

#include <QString>
#include <QStringList>
#include <QTextStream>

// The sub-folders of the data root.
const QStringList& dataRootFolders();
// The style files of the print program, relative to the data root.
const QStringList& styleFiles();

// Creates the data root, its sub-folders and the placeholder style files
// that are missing. Appends what it created to created. False on failure.
bool createDataRoot(const QString& root, QStringList& created);

// Writes a new database at path, with zero rows or, with demo, demo pipe
// types whose computed prices are stored. The file is built aside and moved
// into place when complete; an existing file is replaced only with force.
// Raises SqliteError or std::runtime_error on failure.
void createSuiteDatabase(const QString& path, bool demo);

// The command line "init [--demo] [--force] [--launch STRING]". Messages go
// to out, failures to err. Exit code 0 on success, 1 on failure, 2 on bad
// arguments.
int runVelmoraSuite(const QStringList& args, QTextStream& out, QTextStream& err);
