#pragma once
// What every widget test uses besides: the widgets, Qt's event helpers, and
// the hook for modal dialogs.

#include "support/modal.h"
#include "support/testing.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
