#include "shell/confrecord.h"

#include "platform/datapaths.h"
#include "shell/settingsfiles.h"
#include "store/modulewrappersqlite.h"

namespace {
const QString Removal = QStringLiteral("[REMOVAL]");
const QString Recycle = QStringLiteral("[RECYCLE]");
const QString Keta = QStringLiteral("[KETA]");
const QString CutLevel = QStringLiteral("[CUTLEVEL]");
QString groupKey(int g) {
    return QStringLiteral("[GROUP_NAME%1]").arg(g);
}
const QString CrLf = QStringLiteral("\r\n");
} // namespace

const std::array<QString, GroupCount>& defaultGroupNames() {
    static const std::array<QString, GroupCount> names = {
        QStringLiteral("給水"),   QStringLiteral("排水"), QStringLiteral("通気"),
        QStringLiteral("給湯"),   QStringLiteral("消火"), QStringLiteral("冷温水"),
        QStringLiteral("冷却水"), QStringLiteral("蒸気"), QStringLiteral("油"),
        QStringLiteral("冷媒")};
    return names;
}

QString confText(const ConfRecord& conf) {
    QString s;
    s += keyLine(Removal, conf.Removal) + CrLf;
    s += keyLine(Recycle, conf.Recycle) + CrLf;
    s += keyLine(Keta, conf.Keta) + CrLf;
    s += keyLine(CutLevel, conf.CutLevel) + CrLf;
    for (int g = 1; g <= GroupCount; ++g)
        s += keyLine(groupKey(g), conf.GroupNames[std::size_t(g - 1)]) + CrLf;
    return s;
}

void applyConfText(const QString& text, ConfRecord& conf) {
    QString key, value;
    for (const QString& line : splitTextLines(text)) {
        splitKeyLine(line, key, value);
        if (key == Removal)
            conf.Removal = value;
        else if (key == Recycle)
            conf.Recycle = value;
        else if (key == Keta)
            conf.Keta = value;
        else if (key == CutLevel)
            conf.CutLevel = value;
        else
            for (int g = 1; g <= GroupCount; ++g)
                if (key == groupKey(g)) conf.GroupNames[std::size_t(g - 1)] = value;
    }
}

QString confSelectStatement() {
    return QStringLiteral("SELECT notes FROM exconf where conf='kanzai';");
}

QString confDeleteStatement() {
    return QStringLiteral("delete from exconf where conf='kanzai';");
}

QString confInsertStatement(const ConfRecord& conf) {
    return QStringLiteral("INSERT INTO exconf(") + QStringLiteral("conf,") +
           QStringLiteral("notes") + QStringLiteral(") VALUES(") + QStringLiteral("'") +
           QStringLiteral("kanzai") + QStringLiteral("'") + QStringLiteral(",") +
           QStringLiteral("'") + quotedText(confText(conf)) + QStringLiteral("'") +
           QStringLiteral(");");
}

void readGroupNames(const QString& database, ConfRecord& conf) {
    conf.GroupNames = defaultGroupNames();
    const QStringList lines = queryToLines(database, confSelectStatement()).lines;
    if (lines.isEmpty()) return;
    applyConfText(nthField(lines.first(), 1), conf);
}

int writeGroupNames(Dialogs& dialogs, const QString& database, const ConfRecord& conf) {
    QString reason;
    if (tryExecStatements(database, {confDeleteStatement(), confInsertStatement(conf)}, reason))
        return 1;
    showWriteFailure(dialogs, nullptr, reason,
                     QStringLiteral("グループ名を保存できませんでした。"));
    return 0;
}
