// The launch string to the data paths: whatever the suite or a user passes,
// the database folder is field 5 in this system's form, ends with "/", and
// the database file lies in it.

#include "fuzzcheck.h"
#include "platform/datapaths.h"
#include "util/fieldtext.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool once = [] {
        qputenv("QORVALE_COMMON_DATA", "/srv/common data/");
        return true;
    }();
    (void)once;
    FuzzedDataProvider in(data, size);
    const QString launch = in.ConsumeBool() ? fuzzUtf8(in, 300) : fuzzText(in, 300);

    const QString folder = databaseFolderFrom(launch);
    FUZZ_CHECK(folder.endsWith(QLatin1Char('/')));
    FUZZ_CHECK(!folder.contains(QLatin1Char('\\')));
    const QString field = nthField(launch.isEmpty() ? DefaultLaunchString : launch, 5);
    if (field.isEmpty()) {
        FUZZ_CHECK_EQ(folder, QStringLiteral("/srv/common data/ostrel/database/"));
    } else {
        QString expected = nativePath(field);
        if (!expected.endsWith(QLatin1Char('/'))) expected += QLatin1Char('/');
        FUZZ_CHECK_EQ(folder, expected);
        if (!field.startsWith(QStringLiteral("c:\\programdata\\"), Qt::CaseInsensitive))
            FUZZ_CHECK_EQ(folder.size(), expected.size());
        else
            FUZZ_CHECK(folder.startsWith(QStringLiteral("/srv/common data/")));
    }

    const QString db = exDatabasePathIn(folder);
    FUZZ_CHECK(db.startsWith(folder));
    FUZZ_CHECK(db.endsWith(QStringLiteral("/velmoraMainEX.db3")));
    FUZZ_CHECK(!db.contains(QLatin1Char('\\')));
    FUZZ_CHECK(!nativePath(launch).contains(QLatin1Char('\\')));
    return 0;
}
