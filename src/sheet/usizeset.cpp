#include "sheet/usizeset.h"

TfsizeSet* FsizeSet = nullptr;

TfsizeSet::TfsizeSet(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("fsizeSet"));
    setWindowTitle(QStringLiteral("サイズ設定"));
    setModal(true);
    if (!FsizeSet) FsizeSet = this;
}

TfsizeSet::~TfsizeSet() {
    if (FsizeSet == this) FsizeSet = nullptr;
}
