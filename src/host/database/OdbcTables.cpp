#include "host/database/OdbcCursor.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const int longestPlainText = 4000;

} // namespace

TTableInfo TOdbcEngine::readTable(const QString &name)
{
    // The columns and the key, asked for together.
    const QString sql =
        u"select TABLE_NAME, COLUMN_NAME, CHARACTER_MAXIMUM_LENGTH, DATA_TYPE, "
        "columnproperty(object_id(TABLE_NAME), COLUMN_NAME, 'IsIdentity') "
        "from INFORMATION_SCHEMA.COLUMNS where TABLE_NAME = ? order by ORDINAL_POSITION\n"
        "select k.COLUMN_NAME from INFORMATION_SCHEMA.TABLE_CONSTRAINTS c "
        "inner join INFORMATION_SCHEMA.KEY_COLUMN_USAGE k on k.CONSTRAINT_NAME = c.CONSTRAINT_NAME "
        "where c.TABLE_NAME = ? and c.CONSTRAINT_TYPE = 'PRIMARY KEY' order by k.ORDINAL_POSITION"_s;
    TOdbcCursor cursor(*this, start(sql, {name, name}), sql);
    cursor.expectMore();
    const auto rows = [&cursor] {
        QList<QVariantList> list;
        while (cursor.next()) {
            list.append(QVariantList());
            for (qsizetype i = 0; i < cursor.fields().size(); ++i)
                list.last().append(cursor.value(int(i)));
        }
        return list;
    };
    TTableInfo info;
    for (const QVariantList &row : rows()) {
        info.name = row[0].toString();
        TFieldInfo field;
        field.baseTable = info.name;
        field.name = field.baseColumn = row[1].toString();
        const int size = row[2].toInt();
        if (size > 0 && size <= longestPlainText && row[3].toString().contains("char"_L1))
            field.width = size;
        field.autoIncrement = field.readOnly = row[4].toInt() == 1;
        info.columns.append(field);
    }
    for (const QVariantList &row : cursor.nextSelect() ? rows() : QList<QVariantList>()) {
        for (const TFieldInfo &field : info.columns) {
            if (field.name.compare(row[0].toString(), Qt::CaseInsensitive) == 0)
                info.keys.append(field.name);
        }
    }
    return info;
}

QStringList TOdbcEngine::tables()
{
    const auto cursor =
        select({u"select TABLE_NAME from INFORMATION_SCHEMA.TABLES where TABLE_TYPE='BASE TABLE'"_s, {}, {}});
    QStringList names;
    while (cursor->next())
        names.append(cursor->value(0).toString());
    return names;
}

void TOdbcEngine::lockSchema()
{
    try {
        runScript(u"DECLARE @Answer INT\n"
                  "EXEC @Answer = sp_getapplock @Resource = 'Ketebionpap_Schema', "
                  "@LockMode = 'Exclusive', @LockOwner = 'Transaction', "
                  "@LockTimeout = 60000\n"
                  "IF @Answer < 0 RAISERROR('the schema is being changed', 16, 1)"_s);
    } catch (const TDatabaseError &error) {
        if (error.fault() == TFault::Refused)
            throw TDatabaseError(TFault::Locked, error.detail());
        throw;
    }
}

const TTableInfo *TOdbcEngine::table(const QString &name)
{
    const QString key = name.toLower();
    if (const auto found = m_tables.find(key); found != m_tables.end())
        return &found->second;
    TTableInfo info;
    for (bool again = !m_begun;; again = false) {
        makeReady(name);
        try {
            info = readTable(name);
            break;
        } catch (const TDatabaseError &error) {
            // As with a select: a line that was lost while nothing was at stake is not worth a message.
            if (error.fault() != TFault::ConnectionLost || !again)
                throw;
        }
    }
    return info.columns.isEmpty() ? nullptr : &m_tables.insert({key, info}).first->second;
}
