#pragma once

#include "host/database/Query.h"

/// A name with the code that it stands for, as drop-down lists carry them.
struct TNamedCode {
    QString name;
    int code = 0;
    bool operator==(const TNamedCode &) const = default;
};
using TNamedCodes = QList<TNamedCode>;

/// The few steps that all data modules take with their queries. All throw TDatabaseError.
namespace QueryTools {

inline void open(TQuery *query, const TStatement &statement)
{
    query->close();
    query->setStatement(statement);
    query->open();
}

/// Opens a statement with one typed parameter.
inline void open(TQuery *query, const TStatement &statement, const QString &parameter, int value)
{
    query->close();
    query->setStatement(statement);
    query->setParam(parameter, value);
    query->open();
}

inline int run(TQuery *query, const TStatement &statement)
{
    query->close();
    query->setStatement(statement);
    return query->execSql();
}

/// Column `index` of the first row of an open query as an integer; 0 when there is no row.
inline int integerAt(TQuery *query, int index = 0)
{
    return query->isEmpty() ? 0 : query->valueAt(0, index).toInt();
}

/// The columns Name and Code of all rows of an open query.
inline TNamedCodes namedCodes(TQuery *query)
{
    TNamedCodes list;
    for (query->first(); !query->eof(); query->next())
        list.append({query->asString("Name"), query->asInteger("Code")});
    return list;
}

} // namespace QueryTools
