#include "host/database/RowWriter.h"

#include "host/Utility_ZLM/PersianText.h"
#include "host/database/Schema.h"
#include "host/database/SqlText.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool same(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString bracketed(const QString &name)
{
    return u'[' + name + u']';
}

// The table's own column behind a field; null for one that the statement computes or takes from elsewhere.
const TFieldInfo *columnOf(const TFieldInfo &field, const TTableInfo &table, bool engineKnows)
{
    if (engineKnows && !same(field.baseTable, table.name))
        return nullptr;
    for (const TFieldInfo &column : table.columns) {
        if (same(column.name, engineKnows ? field.baseColumn : field.name))
            return &column;
    }
    return nullptr;
}

QVariant cut(const QVariant &value, int width)
{
    if (width <= 0 || value.typeId() != QMetaType::QString)
        return value;
    return PersianText::cut(value.toString(), width);
}

} // namespace

QString RowWriter::baseTable(const QString &statementText)
{
    return Schema::baseTable(ReadSql(statementText).table);
}

void RowWriter::write(TConnection &connection, const QString &tableName, TRow &row, bool newRow)
{
    const TTableInfo *table = connection.engine().table(tableName);
    if (!table)
        throw TDatabaseError(TFault::BadStatement, u"no table behind the query: "_s + tableName);
    const bool engineKnows = connection.engine().knowsBaseTables();

    QStringList names;
    QVariantList values;
    int keyField = -1;
    QHash<QString, int> fieldOfColumn;
    for (int i = 0; i < row.fields.size(); ++i) {
        const TFieldInfo *column = columnOf(row.fields[i], *table, engineKnows);
        if (!column)
            continue;
        fieldOfColumn.insert(column->name.toLower(), i);
        if (column->autoIncrement)
            keyField = i;
        if (column->readOnly || !row.changed[i])
            continue;
        row.values[i] = cut(row.values[i], column->width);
        names.append(bracketed(column->name));
        values.append(row.values[i]);
    }

    TStatement statement;
    if (newRow) {
        statement.sql(u"insert into "_s + bracketed(table->name));
        if (names.isEmpty()) {
            statement.sql(u" default values"_s);
        } else {
            statement.sql(u'(' + names.join(u',') + u") values("_s);
            for (qsizetype i = 0; i < values.size(); ++i)
                (i > 0 ? statement.sql(u","_s) : statement).value(values[i]);
            statement.sql(u")"_s);
        }
    } else {
        if (names.isEmpty())
            return;
        statement.sql(u"update "_s + bracketed(table->name) + u" set "_s);
        for (qsizetype i = 0; i < values.size(); ++i)
            statement.sql((i > 0 ? u","_s : QString()) + names[i] + u'=').value(values[i]);
        statement.sql(u" where "_s);
        for (qsizetype i = 0; i < table->keys.size(); ++i) {
            const int field = fieldOfColumn.value(table->keys[i].toLower(), -1);
            if (field < 0)
                throw TDatabaseError(TFault::BadStatement,
                                     u"the query lacks the table's key "_s + table->keys[i]);
            statement.sql((i > 0 ? u" and "_s : QString()) + bracketed(table->keys[i]) + u'=')
                .value(row.original[field]);
        }
        if (table->keys.isEmpty())
            throw TDatabaseError(TFault::BadStatement, u"no key: "_s + table->name);
    }

    connection.beforeStatement(statement);
    const TBoundStatement bound{statement.boundText(), statement.values(), {}};
    if (QList<TBoundStatement> *kept = newRow ? connection.engine().keptInserts() : nullptr) {
        kept->append(bound);
    } else if (newRow) {
        const qlonglong key = connection.engine().insert(bound);
        if (keyField >= 0)
            row.values[keyField] = key;
    } else if (connection.engine().execute(bound) == 0) {
        throw TDatabaseError(TFault::RowGone, table->name);
    }
}
