#include "host/database/OdbcCursor.h"

namespace {

enum { TableNamePlace = 3, ColumnNamePlace = 4, TypePlace = 5, SizePlace = 7 };
const int longestPlainText = 4000;

QString textAt(SQLHSTMT statement, SQLUSMALLINT place)
{
    SQLRETURN code = SQL_SUCCESS;
    return Odbc::read(statement, place, {SQL_WVARCHAR, 0, 0}, code).toString();
}

int numberAt(SQLHSTMT statement, SQLUSMALLINT place)
{
    SQLRETURN code = SQL_SUCCESS;
    return Odbc::read(statement, place, {SQL_INTEGER, 0, 0}, code).toInt();
}

bool isText(int type)
{
    return type == SQL_CHAR || type == SQL_VARCHAR || type == SQL_WCHAR || type == SQL_WVARCHAR;
}

} // namespace

// Any driver's own list of columns and keys.
TTableInfo TOdbcEngine::readTableOfDriver(const QString &name)
{
    TTableInfo info;
    Odbc::TStatementHandle columns(m_connection);
    if (!SQL_SUCCEEDED(SQLColumnsW(columns, nullptr, 0, nullptr, 0, Odbc::wide(name), SQL_NTS, nullptr, 0)))
        fail(SQL_HANDLE_STMT, columns, name);
    SQLRETURN code = SQL_SUCCESS;
    while (SQL_SUCCEEDED(code = SQLFetch(columns))) {
        // The name is taken for a pattern, in which "_" is any letter.
        const QString table = textAt(columns, TableNamePlace);
        if (table.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        info.name = table;
        TFieldInfo field;
        field.baseTable = table;
        field.name = field.baseColumn = textAt(columns, ColumnNamePlace);
        const int type = numberAt(columns, TypePlace);
        const int size = numberAt(columns, SizePlace);
        if (isText(type) && size <= longestPlainText)
            field.width = size;
        info.columns.append(field);
    }
    if (code != SQL_NO_DATA)
        fail(SQL_HANDLE_STMT, columns, name);
    columns = Odbc::TStatementHandle();
    if (info.columns.isEmpty())
        return info;
    Odbc::TStatementHandle keys(m_connection);
    if (!SQL_SUCCEEDED(SQLPrimaryKeysW(keys, nullptr, 0, nullptr, 0, Odbc::wide(info.name), SQL_NTS)))
        fail(SQL_HANDLE_STMT, keys, name);
    while (SQL_SUCCEEDED(code = SQLFetch(keys)))
        info.keys.append(textAt(keys, ColumnNamePlace));
    if (code != SQL_NO_DATA)
        fail(SQL_HANDLE_STMT, keys, name);
    keys = Odbc::TStatementHandle();
    return info;
}

TTableInfo TOdbcEngine::readTable(const QString &name)
{
    const auto rows = [&](const QString &sql) {
        TOdbcCursor cursor(*this, start(sql, {name}), sql);
        QList<QVariantList> list;
        while (cursor.next()) {
            list.append(QVariantList());
            for (qsizetype i = 0; i < cursor.fields().size(); ++i)
                list.last().append(cursor.value(int(i)));
        }
        return list;
    };
    TTableInfo info;
    for (const QVariantList &row : rows(QStringLiteral(
             "select TABLE_NAME, COLUMN_NAME, CHARACTER_MAXIMUM_LENGTH, DATA_TYPE, "
             "columnproperty(object_id(TABLE_NAME), COLUMN_NAME, 'IsIdentity') "
             "from INFORMATION_SCHEMA.COLUMNS where TABLE_NAME = ? order by ORDINAL_POSITION"))) {
        info.name = row[0].toString();
        TFieldInfo field;
        field.baseTable = info.name;
        field.name = field.baseColumn = row[1].toString();
        const int size = row[2].toInt();
        if (size > 0 && size <= longestPlainText && row[3].toString().contains(QLatin1String("char")))
            field.width = size;
        field.autoIncrement = field.readOnly = row[4].toInt() == 1;
        info.columns.append(field);
    }
    if (info.columns.isEmpty())
        return info;
    for (const QVariantList &row : rows(QStringLiteral(
             "select k.COLUMN_NAME from INFORMATION_SCHEMA.TABLE_CONSTRAINTS c "
             "inner join INFORMATION_SCHEMA.KEY_COLUMN_USAGE k on k.CONSTRAINT_NAME = c.CONSTRAINT_NAME "
             "where c.TABLE_NAME = ? and c.CONSTRAINT_TYPE = 'PRIMARY KEY' order by k.ORDINAL_POSITION"))) {
        for (const TFieldInfo &field : info.columns) {
            if (field.name.compare(row[0].toString(), Qt::CaseInsensitive) == 0)
                info.keys.append(field.name);
        }
    }
    return info;
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
            info = m_isServer ? readTable(name) : readTableOfDriver(name);
            break;
        } catch (const TDatabaseError &error) {
            // As with a select: a line that was lost while nothing was at stake is not worth a message.
            if (error.fault() != TFault::ConnectionLost || !again)
                throw;
        }
    }
    return info.columns.isEmpty() ? nullptr : &m_tables.insert({key, info}).first->second;
}
