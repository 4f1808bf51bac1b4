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

const std::array<QString, GroupCount>& DefaultGroupNames() {
    static const std::array<QString, GroupCount> names = {
        QStringLiteral("給水"),   QStringLiteral("排水"), QStringLiteral("通気"),
        QStringLiteral("給湯"),   QStringLiteral("消火"), QStringLiteral("冷温水"),
        QStringLiteral("冷却水"), QStringLiteral("蒸気"), QStringLiteral("油"),
        QStringLiteral("冷媒")};
    return names;
}

QString ConfText(const ConfRecord& conf) {
    QString s;
    s += KeyLine(Removal, conf.Removal) + CrLf;
    s += KeyLine(Recycle, conf.Recycle) + CrLf;
    s += KeyLine(Keta, conf.Keta) + CrLf;
    s += KeyLine(CutLevel, conf.CutLevel) + CrLf;
    for (int g = 1; g <= GroupCount; ++g)
        s += KeyLine(groupKey(g), conf.GroupNames[std::size_t(g - 1)]) + CrLf;
    return s;
}

void ApplyConfText(const QString& text, ConfRecord& conf) {
    QString key, value;
    for (const QString& line : SplitTextLines(text)) {
        SplitKeyLine(line, key, value);
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

QString ConfSelectStatement() {
    return QStringLiteral("SELECT notes FROM exconf where conf='kanzai';");
}

QString ConfDeleteStatement() {
    return QStringLiteral("delete from exconf where conf='kanzai';");
}

QString ConfInsertStatement(const ConfRecord& conf) {
    return QStringLiteral("INSERT INTO exconf(") + QStringLiteral("conf,") +
           QStringLiteral("notes") + QStringLiteral(") VALUES(") + QStringLiteral("'") +
           QStringLiteral("kanzai") + QStringLiteral("'") + QStringLiteral(",") +
           QStringLiteral("'") + QuotedText(ConfText(conf)) + QStringLiteral("'") +
           QStringLiteral(");");
}

void LoadGroupNames(const QString& database, ConfRecord& conf) {
    conf.GroupNames = DefaultGroupNames();
    const QStringList lines = QueryToLines(database, ConfSelectStatement()).lines;
    if (lines.isEmpty()) return;
    ApplyConfText(NthField(lines.first(), 1), conf);
}

int SaveGroupNames(Dialogs& dialogs, const QString& database, const ConfRecord& conf) {
    QString reason;
    if (TryExecStatements(database, {ConfDeleteStatement(), ConfInsertStatement(conf)}, reason))
        return 1;
    ShowWriteFailure(dialogs, nullptr, reason,
                     QStringLiteral("グループ名を保存できませんでした。"));
    return 0;
}
