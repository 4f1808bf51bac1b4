#pragma once
// The about dialog "製品案内": application title, version, maker, link.

#include "shell/versionblock.h"

#include <QDialog>

class Dialogs;
class QLabel;
class QPushButton;

class AboutDialog : public QDialog {
    Q_OBJECT
public:
    // Reads the program's version block, as the dialog's creation step.
    explicit AboutDialog(Dialogs& dialogs, QWidget* parent = nullptr);
    // Reads the given block instead.
    AboutDialog(Dialogs& dialogs, const VersionBlock& block, QWidget* parent);
    ~AboutDialog() override;

    QLabel* appNameLabel;
    QLabel* versionLabel;
    QLabel* companyLabel;
    QLabel* copyrightLabel;
    QLabel* officeLabel;
    QLabel* linkLabel;
    QLabel* imageLabel;
    QPushButton* closeButton;

    // A click on the link: opens the product page with the registered program.
    void openLink(const QString& link);
    // "Release version " and the product version of the block read; empty
    // when the block has none.
    QString releaseText() const { return releaseText_; }

private:
    friend bool readVersionBlock(AboutDialog* form, const VersionBlock& block);
    void build();
    QString releaseText_;
    Dialogs& m_dialogs;
};

// Fills the dialog from a version block and its release text. False, with
// nothing set, when the block is missing.
bool readVersionBlock(AboutDialog* form, const VersionBlock& block);

// The dialog made at start, for the main form's about command.