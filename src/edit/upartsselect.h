#pragma once
// The dialog "標準歩掛選択" that picks an entry of the standard labour library.

#include <QDialog>

class TFpartsSelect : public QDialog {
    Q_OBJECT
public:
    explicit TFpartsSelect(QWidget* parent = nullptr);
    ~TFpartsSelect() override;
};

// The dialog made at start and reused.
extern TFpartsSelect* FpartsSelect;
