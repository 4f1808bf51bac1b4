#pragma once
// The about dialog "製品案内": application title, version, maker, link.

#include "shell/versionblock.h"

#include <QDialog>

class QLabel;
class QPushButton;

class TFversionInfo : public QDialog {
    Q_OBJECT
public:
    // Reads the program's version block, as the dialog's creation step.
    explicit TFversionInfo(QWidget* parent = nullptr);
    // Reads the given block instead.
    TFversionInfo(const VersionBlock& block, QWidget* parent);
    ~TFversionInfo() override;

    QLabel* Appname;
    QLabel* Verlabel;
    QLabel* Companylabel;
    QLabel* Copyright;
    QLabel* Officelabel;
    QLabel* LinkLabel1;
    QLabel* Image2;
    QPushButton* Button1;

    // A click on the link: opens the product page with the registered program.
    void LinkLabel1LinkClick(const QString& link);

private:
    void build();
};

// Fills the dialog from a version block and sets ReleaseText. False, with
// nothing set, when the block is missing.
bool ReadVersionBlock(TFversionInfo* form, const VersionBlock& block);

// The dialog made at start, for the main form's about command.
extern TFversionInfo* FversionInfo;
