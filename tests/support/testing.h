#pragma once
// What every test uses: GoogleTest, Qt's core classes, the standard
// containers, and the helpers for files and Japanese texts.

#include "support/files.h"
#include "support/text.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <tuple>
#include <vector>
