#include "common/WorkingRows.h"

#include "common/DataModule_UNT.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList contents(const QList<QVariantList> &rows)
{
    QStringList texts;
    for (const QVariantList &row : rows) {
        QStringList cells;
        for (const QVariant &cell : row)
            cells << cell.toString();
        texts << cells.join(QChar(0));
    }
    texts.sort();
    return texts;
}

} // namespace

TWorkingRows::TWorkingRows(TQuery *shown, const QString &table, const QString &codeColumn,
                           const QStringList &columns)
    : m_shown(shown), m_table(table), m_codeColumn(codeColumn), m_columns(columns)
{
}

QList<QVariantList> TWorkingRows::rowsOf(const TQuery &query) const
{
    QList<int> fields;
    for (const QString &column : m_columns)
        fields << query.fieldIndex(column);
    QList<QVariantList> rows;
    rows.reserve(query.recordCount());
    for (int row = 0; row < query.recordCount(); ++row) {
        QVariantList cells;
        cells.reserve(fields.size());
        for (const int field : fields)
            cells << query.valueAt(row, field);
        rows << cells;
    }
    return rows;
}

bool TWorkingRows::Changed(const QVariant &code) const
{
    TQuery stored(m_shown->connection(), u"WorkingRows_QUR"_s);
    stored.setStatement(TStatement(u"select * from %1 where %2="_s.arg(m_table, m_codeColumn)).integer(code));
    stored.open();
    const QList<QVariantList> now = rowsOf(stored);
    const QList<QVariantList> then = rowsOf(*m_shown);
    return now != then && contents(now) != contents(then); // mostly they stand in one order, too
}

void TWorkingRows::PutBack(const QVariant &code,
                           const std::function<QVariant(const QVariant &)> &keyFor) const
{
    TConnection *connection = m_shown->connection();
    const QList<QVariantList> rows = rowsOf(*m_shown);
    QStringList names{u"[%1]"_s.arg(m_codeColumn)};
    for (const QString &column : m_columns)
        names << u"[%1]"_s.arg(column);
    InOneUnit(connection, [&] {
        connection->execute(
            TStatement(u"delete from %1 where %2="_s.arg(m_table, m_codeColumn)).integer(code));
        for (QVariantList row : rows) {
            if (keyFor)
                row[0] = keyFor(row[0]);
            TStatement insert(u"insert into %1(%2) values("_s.arg(m_table, names.join(u',')));
            insert.integer(code);
            for (const QVariant &cell : std::as_const(row))
                insert.sql(u","_s).value(cell);
            connection->execute(insert.sql(u")"_s));
        }
    });
}
