#include "edit/upartsselect.h"

TFpartsSelect* FpartsSelect = nullptr;

TFpartsSelect::TFpartsSelect(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FpartsSelect"));
    setWindowTitle(QStringLiteral("標準歩掛選択"));
    setModal(true);
    if (!FpartsSelect) FpartsSelect = this;
}

TFpartsSelect::~TFpartsSelect() {
    if (FpartsSelect == this) FpartsSelect = nullptr;
}
