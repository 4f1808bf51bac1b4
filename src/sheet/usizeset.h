#pragma once
// The dialog "サイズ設定" that edits the sizes of a pipe type.

#include <QDialog>

class TfsizeSet : public QDialog {
    Q_OBJECT
public:
    explicit TfsizeSet(QWidget* parent = nullptr);
    ~TfsizeSet() override;
};

// The dialog made at start and reused.
extern TfsizeSet* FsizeSet;
