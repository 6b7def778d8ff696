#include "host/database/OdbcEngine.h"

#include <QRegularExpression>

// A commit whose answer never came may or may not have happened. The rows that the transaction inserted are its
// witnesses: a row that is there after the line came back was saved, and is not saved a second time.

namespace {

const qsizetype keptUncertain = 200;

} // namespace

/// Finds how to tell the row from all others, and forgets a key that is none of its table's.
void TOdbcEngine::identify(TInserted &inserted)
{
    // The form in which a dataset posts a new row.
    static const QRegularExpression form(
        QStringLiteral(
            "^\\s*insert\\s+into\\s+\\[?(\\w+)\\]?\\s*\\(([^()]*)\\)\\s*values\\s*\\([?,\\s]*\\)\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(inserted.text);
    if (!match.hasMatch())
        return;
    const TTableInfo *info = table(match.captured(1));
    if (!info)
        return;
    QStringList columns;
    for (const QString &name : match.captured(2).split(u',')) {
        QString plain = name.trimmed();
        plain.remove(u'[').remove(u']');
        columns.append(plain.toLower());
    }
    const bool hasCounter = std::any_of(info->columns.begin(), info->columns.end(),
                                        [](const TFieldInfo &column) { return column.autoIncrement; });
    if (!hasCounter && m_isServer)
        inserted.key = 0; // of an earlier row elsewhere
    QStringList conditions;
    QVariantList values;
    for (const TFieldInfo &column : info->columns) {
        if (column.autoIncrement && inserted.key != 0) {
            conditions = {QStringLiteral("[%1]=?").arg(column.name)};
            values = {inserted.key};
            break;
        }
        const qsizetype place = columns.indexOf(column.name.toLower());
        if (info->keys.contains(column.name, Qt::CaseInsensitive) && place >= 0 &&
            place < inserted.values.size()) {
            conditions.append(QStringLiteral("[%1]=?").arg(column.name));
            values.append(inserted.values[place]);
        }
    }
    if (conditions.isEmpty())
        return;
    inserted.witness = QStringLiteral("select count(*) from [%1] where %2")
                           .arg(match.captured(1), conditions.join(QStringLiteral(" and ")));
    inserted.witnessValues = values;
}

bool TOdbcEngine::isStored(const TInserted &inserted)
{
    makeReady(inserted.witness);
    return run(inserted.witness, inserted.witnessValues).toLongLong() > 0;
}

bool TOdbcEngine::isStoredAfterAll(const QList<TInserted> &inserted)
{
    for (const TInserted &row : inserted) {
        if (row.witness.isEmpty())
            continue;
        try {
            return isStored(row);
        } catch (const TDatabaseError &) {
            // Not to be told now: asked again when the same row is posted again.
            m_uncertain += inserted;
            while (m_uncertain.size() > keptUncertain)
                m_uncertain.removeFirst();
            return false;
        }
    }
    return false;
}

std::optional<qlonglong> TOdbcEngine::storedBefore(const TBoundStatement &statement)
{
    for (qsizetype i = 0; i < m_uncertain.size(); ++i) {
        if (m_uncertain[i].text != statement.text || m_uncertain[i].values != statement.values ||
            m_uncertain[i].witness.isEmpty())
            continue;
        const bool stored = isStored(m_uncertain[i]);
        const TInserted inserted = m_uncertain.takeAt(i);
        if (stored)
            return inserted.key;
        return std::nullopt;
    }
    return std::nullopt;
}
