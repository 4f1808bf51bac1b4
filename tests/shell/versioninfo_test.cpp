// The about dialog and the version block.
#include "shell/aboutdialog.h"

#include "platform/scripteddialogs.h"
#include "support/guitesting.h"

namespace {

TEST(VersionInfoTest, ShowsTheVersionOfTheBuildOrOfABlock) {
    ScriptedDialogs dialogs;
    AboutDialog about(dialogs);
    EXPECT_EQ(about.versionLabel->text(), "ProductVersion   : " QORVALE_VERSION);
    EXPECT_EQ(about.releaseText(), "Release Version " QORVALE_VERSION);
    EXPECT_EQ(QStringList({about.appNameLabel->text(), about.copyrightLabel->text()}),
              QStringList({applicationTitle(), "Copyright (C) Ostrel"}));
    EXPECT_FALSE(about.officeLabel->text().isEmpty());
    EXPECT_TRUE(about.linkLabel->text().contains(ProductPageUrl));
    ASSERT_FALSE(about.imageLabel->pixmap().isNull());
    about.openLink(ProductPageUrl);
    EXPECT_EQ(dialogs.documents(), QStringList{ProductPageUrl});
    whenModal([](QWidget* w) { qobject_cast<AboutDialog*>(w)->closeButton->click(); });
    EXPECT_EQ(about.exec(), QDialog::Accepted);

    VersionBlock block;
    block.values = {{"ProductVersion", "5.5.5.2"}, {"CompanyName", "Maker"}};
    AboutDialog made(dialogs, block, nullptr);
    EXPECT_EQ(made.versionLabel->text(), "ProductVersion   : 5.5.5.2");
    EXPECT_EQ(made.companyLabel->text() + '|' + made.copyrightLabel->text(), "Maker|Copyright");
    EXPECT_EQ(made.releaseText(), "Release Version 5.5.5.2");
    AboutDialog none(dialogs, VersionBlock{}, nullptr); // no block: the design texts
    EXPECT_FALSE(readVersionBlock(&none, VersionBlock{}));
    EXPECT_EQ(none.releaseText(), QString());
    EXPECT_EQ(none.versionLabel->text() + '|' + none.appNameLabel->text(), "Version|Appname");
}

} // namespace
