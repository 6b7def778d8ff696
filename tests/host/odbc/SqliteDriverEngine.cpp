#include "SqliteDriverEngine.h"

using namespace Qt::Literals::StringLiterals;

namespace {

enum { TableNamePlace = 3, ColumnNamePlace = 4, TypePlace = 5, SizePlace = 7 };

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

SqliteDriverEngine::SqliteDriverEngine(const QString &file) : SqliteDriverEngine(file, ConnectLater)
{
    open();
}

QStringList SqliteDriverEngine::readKeys(const QString &table)
{
    const Odbc::TStatementHandle keys{SQLHANDLE(connection())};
    if (!SQL_SUCCEEDED(SQLPrimaryKeysW(keys, nullptr, 0, nullptr, 0, Odbc::wide(table), SQL_NTS)))
        fail(SQL_HANDLE_STMT, keys, table);
    QStringList names;
    SQLRETURN code = SQL_SUCCESS;
    while (SQL_SUCCEEDED(code = SQLFetch(keys)))
        names.append(textAt(keys, ColumnNamePlace));
    if (code != SQL_NO_DATA)
        fail(SQL_HANDLE_STMT, keys, table);
    return names;
}

TTableInfo SqliteDriverEngine::readTable(const QString &name)
{
    TTableInfo info;
    {
        const Odbc::TStatementHandle columns{SQLHANDLE(connection())};
        if (!SQL_SUCCEEDED(
                SQLColumnsW(columns, nullptr, 0, nullptr, 0, Odbc::wide(name), SQL_NTS, nullptr, 0)))
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
            if (isText(type))
                field.width = size;
            field.autoIncrement = type == SQL_INTEGER; // if it is the key
            info.columns.append(field);
        }
        if (code != SQL_NO_DATA)
            fail(SQL_HANDLE_STMT, columns, name);
    }
    if (!info.columns.isEmpty())
        info.keys = readKeys(info.name);
    for (TFieldInfo &field : info.columns)
        field.autoIncrement = field.readOnly = field.autoIncrement && info.keys == QStringList(field.name);
    return info;
}
