#pragma once
// The batch tool for scripts and checks: prints a pipe type, or recalculates
// and stores the pipe types of a group the way the group recalculation does.

#include "platform/datapaths.h"

#include <QStringList>
#include <QTextStream>

// The command line:
//   show --group G --kan K [--launch S]
//   recalc --group G [--kan K] [--launch S]
// The database is found as the program finds it. Exit code 0 on success, 1
// when the database is missing, busy or fails, 2 on bad arguments.
int runQorvaleTool(const QStringList& args, QTextStream& out, QTextStream& err);

// Finds the database as the program does (field 5 of launch, else the
// default folder) and gives its paths. False, with a line on
// err, when there is no database file.
bool findToolDatabase(const QString& launch, DataPaths& paths, QTextStream& err);
