#pragma once
// The print program listpress: reads the hand-off under the data root and
// shows the sheets in a print preview, from which they go to a printer or a
// PDF file, or writes the PDF directly.

#include <QString>
#include <QStringList>
#include <QTextStream>

class Dialogs;

// The command line (without the program name):
//   listpress DATAROOT;                 print preview window
//   listpress --pdf FILE DATAROOT;      writes the PDF, no window
//   listpress --screenshot PNG DATAROOT;  opens the preview, saves a picture
//                                       of it and ends
//   listpress --help
// Exit code 0 on success, 1 on bad input or a failed write, 2 on bad
// arguments. Needs the application object (QApplication for the window).
int runListpress(const QStringList& args, Dialogs& dialogs, QTextStream& out, QTextStream& err);

// True when the arguments ask for no window (--pdf or --help), so the
// program can run without a display.
// The usage text of --help.
QString listpressUsage();

bool listpressNeedsNoWindow(const QStringList& args);

// The batch tool's "print --group G --kan K --pdf FILE [--style-index N]
// [--launch S]": loads a stored pipe type, writes the hand-off files and
// the PDF as listpress would. Exit code as runQorvaleTool.
int runPrintTool(const QStringList& args, QTextStream& out, QTextStream& err);
