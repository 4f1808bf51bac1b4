#include "shell/versionblock.h"

const QString ProductPageUrl = QStringLiteral("https://www.ostrel.example/qorvale/");

VersionBlock programVersionBlock() {
    VersionBlock block;
    const QString version = QStringLiteral(QORVALE_VERSION);
    block.values = {
        {QStringLiteral("CompanyName"), QStringLiteral("Ostrel")},
        {QStringLiteral("FileDescription"), QStringLiteral("Qorvale 配管材複合単価")},
        {QStringLiteral("FileVersion"), version},
        {QStringLiteral("InternalName"), QStringLiteral("qorvale")},
        {QStringLiteral("LegalCopyright"), QStringLiteral("Copyright (C) Ostrel")},
        {QStringLiteral("OriginalFilename"), QStringLiteral("qorvale")},
        {QStringLiteral("ProductName"), QStringLiteral("Qorvale Works")},
        {QStringLiteral("ProductVersion"), version},
        {QStringLiteral("Comments"), QStringLiteral("Velmora 設備積算システム 配管材複合単価")},
    };
    return block;
}

QStringList versionKeys() {
    return {QStringLiteral("CompanyName"),      QStringLiteral("FileDescription"),
            QStringLiteral("FileVersion"),      QStringLiteral("InternalName"),
            QStringLiteral("LegalCopyright"),   QStringLiteral("LegalTrademarks"),
            QStringLiteral("OriginalFilename"), QStringLiteral("ProductName"),
            QStringLiteral("ProductVersion"),   QStringLiteral("Comments"),
            QStringLiteral("SpecialBuild"),     QStringLiteral("PrivateBuild")};
}
