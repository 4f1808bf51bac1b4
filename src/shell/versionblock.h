#pragma once
// The version block of the program: the keyed texts that tell product,
// version and maker. Programs on this platform carry no such resource, so the
// block is made from the build (QORVALE_VERSION) and the maker's texts.

#include <QMap>
#include <QString>
#include <QStringList>

struct VersionBlock {
    // Key ("CompanyName", "ProductVersion", ...) to value. Empty when the
    // program has no block.
    QMap<QString, QString> values;
    bool present() const { return !values.isEmpty(); }
};

// The block of this build.
VersionBlock programVersionBlock();

// The keys read from a block, in the order they are read.
QStringList versionKeys();

// The address of the maker's product page, shown by the about dialog.
extern const QString ProductPageUrl;
