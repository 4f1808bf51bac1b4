// The about dialog and the version block, and the two dialogs made at start.
#include "shell/aboutdialog.h"

#include "edit/labourlibrarydialog.h"
#include "platform/scripteddialogs.h"
#include "sheet/sizedialog.h"
#include "support/modal.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

TEST(VersionInfoTest, ShowsTheVersionOfTheBuild) {
    ScriptedDialogs dialogs;
    AboutDialog about(dialogs);
    const QString version = QStringLiteral(QORVALE_VERSION);
    EXPECT_EQ(about.windowTitle(), "製品案内");
    EXPECT_EQ(about.appNameLabel->text(), applicationTitle());
    EXPECT_EQ(about.versionLabel->text(), "ProductVersion   : " + version);
    EXPECT_EQ(about.companyLabel->text(), "Ostrel");
    EXPECT_EQ(about.copyrightLabel->text(), "Copyright (C) Ostrel");
    EXPECT_FALSE(about.officeLabel->text().isEmpty());
    EXPECT_EQ(about.releaseText(), "Release Version " + version);
    EXPECT_EQ(about.closeButton->text(), "閉じる");
    EXPECT_TRUE(about.linkLabel->text().contains("製品のご案内:"));
    EXPECT_TRUE(about.linkLabel->text().contains(ProductPageUrl));
    ASSERT_FALSE(about.imageLabel->pixmap().isNull());

    about.openLink(ProductPageUrl);
    EXPECT_EQ(dialogs.documents(), QStringList{ProductPageUrl});
}

TEST(VersionInfoTest, ReadsTheProductVersionOfABlock) {
    ScriptedDialogs dialogs;
    VersionBlock block;
    block.values = {{"ProductVersion", "5.5.5.2"}, {"CompanyName", "Maker"}};
    AboutDialog about(dialogs, block, nullptr);
    EXPECT_EQ(about.versionLabel->text(), "ProductVersion   : 5.5.5.2");
    EXPECT_EQ(about.releaseText(), "Release Version 5.5.5.2");
    EXPECT_EQ(about.companyLabel->text(), "Maker");
    EXPECT_EQ(about.copyrightLabel->text(), "Copyright"); // design text
}

TEST(VersionInfoTest, NoBlockLeavesTheDesignTexts) {
    ScriptedDialogs dialogs;
    AboutDialog about(dialogs, VersionBlock{}, nullptr);
    EXPECT_FALSE(readVersionBlock(&about, VersionBlock{}));
    EXPECT_EQ(about.releaseText(), QString());
    EXPECT_EQ(about.versionLabel->text(), "Version");
    EXPECT_EQ(about.appNameLabel->text(), "Appname");
}

TEST(VersionInfoTest, CloseButtonEndsTheDialog) {
    ScriptedDialogs dialogs;
    AboutDialog about(dialogs);
    whenModal([](QWidget* w) { qobject_cast<AboutDialog*>(w)->closeButton->click(); });
    EXPECT_EQ(about.exec(), QDialog::Accepted);
}

TEST(VersionInfoTest, DialogsMadeAtStart) {
    ScriptedDialogs dialogs;
    SizeDialog sizeSet;
    LabourLibraryDialog partsSelect(dialogs);
    EXPECT_EQ(sizeSet.windowTitle(), "サイズ設定");
    EXPECT_EQ(partsSelect.windowTitle(), "標準歩掛選択");
    EXPECT_TRUE(sizeSet.isModal());
}

} // namespace
