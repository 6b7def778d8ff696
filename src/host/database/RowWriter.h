#pragma once

#include "host/database/Connection.h"
#include "host/database/Engine.h"

/// Writes one row of a query to the table behind it, also when the query reads a view.
namespace RowWriter {

struct TRow {
    QList<TFieldInfo> fields;
    QVariantList original; ///< the row as it was read; empty for a new one
    QVariantList values;   ///< cut to the columns' widths by the write; a new key is filled in
    QList<bool> changed;
};

/// The table that a statement's rows belong to: the first one that it reads from, or the table behind that view.
QString baseTable(const QString &statementText);

/// Throws TDatabaseError; RowGone when the row is no longer there.
void write(TConnection &connection, const QString &table, TRow &row, bool newRow);

} // namespace RowWriter
