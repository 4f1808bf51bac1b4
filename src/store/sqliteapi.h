#pragma once
// The binding of the SQLite library: its result codes and their texts.

#include <QString>

#include <sqlite3.h>

// The text of a library result code; "Unknown SQLite Error Code "..."" for a
// code the table does not know.
QString sqliteErrorText(int code);
