#pragma once
// A data folder made by the suite stand-in for one test, with its demo
// database, a workspace on it, and scripted dialogs: for tests of the files the program hands
// on, without the window.
#include "platform/datapaths.h"
#include "platform/scripteddialogs.h"
#include "store/pipetypestore.h"
#include "store/suitestandin.h"
#include "support/ownworkspace.h"
#include "support/testing.h"

class DemoDataFolder : public ::testing::Test, protected OwnWorkspace {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        saved = qgetenv("QORVALE_COMMON_DATA");
        qputenv("QORVALE_COMMON_DATA", dir.path().toLocal8Bit());
        QString out, err;
        QTextStream o(&out), e(&err);
        ASSERT_EQ(runVelmoraSuite({QStringLiteral("init"), QStringLiteral("--demo")}, o, e), 0);
        root = dataRootPath();
        ws().paths() = DataPaths::fromLaunchString(QString());
        ws().paths().nameDatabaseFiles();
    }
    void TearDown() override { qputenv("QORVALE_COMMON_DATA", saved); }

    QTemporaryDir dir;
    QByteArray saved;
    QString root; // the data root
    ScriptedDialogs dialogs;
};
