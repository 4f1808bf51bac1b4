#pragma once
// The standard labour library of the window: "選択用標準歩掛として登録" keeps
// every row of the pipe type on screen as an entry; "標準歩掛選択" takes back
// only the sizes and the labour factors of an entry, so the prices and the
// options of the pipe type on screen stay.

#include "edit/fdkfile.h"

#include <QObject>

class Dialogs;
class MainWindow;

class LibraryCommands : public QObject {
    Q_OBJECT
public:
    // Joins the two commands to the window's actions and enables them.
    LibraryCommands(MainWindow& window, Dialogs& dialogs);

    void saveLibraryEntry();
    void applyLibraryEntry();

private:
    MainWindow& m_window;
    Dialogs& m_dialogs;
    // The record buffer of the entries saved and loaded in this run.
    FdkRecord m_recordBuffer{};
};
