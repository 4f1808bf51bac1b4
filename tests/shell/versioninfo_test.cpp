// The about dialog and the version block, and the two dialogs made at start.
#include "shell/uversioninfo.h"

#include "edit/upartsselect.h"
#include "platform/scripteddialogs.h"
#include "sheet/usizeset.h"
#include "support/modal.h"

#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

TEST(VersionInfoTest, ShowsTheVersionOfTheBuild) {
    ScriptedDialogsScope dialogs;
    ReleaseText.clear();
    TFversionInfo about;
    const QString version = QStringLiteral(QORVALE_VERSION);
    EXPECT_EQ(about.windowTitle(), "製品案内");
    EXPECT_EQ(about.Appname->text(), ApplicationTitle());
    EXPECT_EQ(about.Verlabel->text(), "ProductVersion   : " + version);
    EXPECT_EQ(about.Companylabel->text(), "Ostrel");
    EXPECT_EQ(about.Copyright->text(), "Copyright (C) Ostrel");
    EXPECT_FALSE(about.Officelabel->text().isEmpty());
    EXPECT_EQ(ReleaseText, "Release Version " + version);
    EXPECT_EQ(about.Button1->text(), "閉じる");
    EXPECT_TRUE(about.LinkLabel1->text().contains("製品のご案内:"));
    EXPECT_TRUE(about.LinkLabel1->text().contains(ProductPageUrl));
    ASSERT_FALSE(about.Image2->pixmap().isNull());

    about.LinkLabel1LinkClick(ProductPageUrl);
    EXPECT_EQ(dialogs->Documents(), QStringList{ProductPageUrl});
}

TEST(VersionInfoTest, ReadsTheProductVersionOfABlock) {
    VersionBlock block;
    block.values = {{"ProductVersion", "5.5.5.2"}, {"CompanyName", "Maker"}};
    TFversionInfo about(block, nullptr);
    EXPECT_EQ(about.Verlabel->text(), "ProductVersion   : 5.5.5.2");
    EXPECT_EQ(ReleaseText, "Release Version 5.5.5.2");
    EXPECT_EQ(about.Companylabel->text(), "Maker");
    EXPECT_EQ(about.Copyright->text(), "Copyright"); // design text
}

TEST(VersionInfoTest, NoBlockLeavesTheDesignTexts) {
    ReleaseText.clear();
    TFversionInfo about(VersionBlock{}, nullptr);
    EXPECT_FALSE(ReadVersionBlock(&about, VersionBlock{}));
    EXPECT_EQ(ReleaseText, QString());
    EXPECT_EQ(about.Verlabel->text(), "Version");
    EXPECT_EQ(about.Appname->text(), "Appname");
}

TEST(VersionInfoTest, CloseButtonEndsTheDialog) {
    TFversionInfo about;
    WhenModal([](QWidget* w) { qobject_cast<TFversionInfo*>(w)->Button1->click(); });
    EXPECT_EQ(about.exec(), QDialog::Accepted);
}

TEST(VersionInfoTest, DialogsMadeAtStart) {
    TfsizeSet sizeSet;
    TFpartsSelect partsSelect;
    EXPECT_EQ(FsizeSet, &sizeSet);
    EXPECT_EQ(FpartsSelect, &partsSelect);
    EXPECT_EQ(sizeSet.windowTitle(), "サイズ設定");
    EXPECT_EQ(partsSelect.windowTitle(), "標準歩掛選択");
    EXPECT_TRUE(sizeSet.isModal());
}

} // namespace
