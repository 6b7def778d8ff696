#include "host/ZelmoSearch/ZelmoSearchManager.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Method_declare_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/ZelmoSearch/FoldExpression.h"
#include "host/database/Query.h"

#include <QScopedValueRollback>

using namespace Qt::Literals::StringLiterals;

namespace {

bool hasSearchFunctions()
{
    return !DM.ADOConnection1 || DM.ADOConnection1->hasSearchFunctions();
}

// Found by position, not by LIKE: no character of the text means more than itself.
TStatement contains(const QString &field, const QString &folded)
{
    if (hasSearchFunctions())
        return TStatement(u"(zelmo_finds("_s).text(folded).sql(u", "_s + field + u") = 1)"_s).walking();
    return TStatement(u"(charindex("_s)
        .text(folded)
        .sql(u", "_s + FoldExpression(field) + u") > 0)"_s)
        .walking();
}

TStatement beginsWith(const QString &expression, const QString &text)
{
    return TStatement(u"(charindex("_s).text(text).sql(u", "_s + expression + u") = 1)"_s).walking();
}

TStatement nothing()
{
    return TStatement(u"(1 = 0)"_s);
}

// Whole digits by their beginning; a decimal point fixes the digits before it and begins those behind it.
TStatement moneyCondition(const QString &field, const QString &text)
{
    const QString number = PersianText::plainNumber(text);
    if (number.isEmpty() || number == u"-")
        return nothing();
    const qsizetype point = number.indexOf(u'.');
    if (point < 0)
        return beginsWith(u"cast(cast(cast("_s + field + u" as float) as bigint) as nvarchar(30))"_s, number);
    const double low = number.toDouble();
    double step = 1;
    for (qsizetype i = point + 1; i < number.size(); ++i)
        step /= 10;
    const bool negative = number.startsWith(u'-');
    return TStatement(u"("_s + field + (negative ? u" > "_s : u" >= "_s))
        .amount(negative ? low - step : low)
        .sql(u" and "_s + field + (negative ? u" <= "_s : u" < "_s))
        .amount(negative ? low : low + step)
        .sql(u")"_s);
}

} // namespace

TZelmoSearchManager::TZelmoSearchManager(TQuery *listQuery, QObject *parent)
    : QObject(parent), m_query(listQuery)
{
    connect(m_query, &TQuery::currentChanged, this, [this] { rememberRow(); });
}

void TZelmoSearchManager::rememberRow()
{
    if (!m_running && !m_query->keyField().isEmpty() && m_query->active() && m_query->position() >= 0)
        m_lastKey = m_query->keyAt(m_query->position());
}

void TZelmoSearchManager::SetSQLScript(const TStatement &script)
{
    m_script = script;
}

void TZelmoSearchManager::SetCondition(const QString &frame, const TStatement &condition)
{
    const auto found = std::find_if(m_conditions.begin(), m_conditions.end(),
                                    [&](const auto &entry) { return entry.first == frame; });
    if (condition.isEmpty()) {
        if (found != m_conditions.end())
            m_conditions.erase(found);
    } else if (found != m_conditions.end()) {
        found->second = condition;
    } else {
        m_conditions.append({frame, condition});
    }
}

TStatement TZelmoSearchManager::ConditionFor(const TSearchItem &item, const QString &text)
{
    const QString folded = PersianText::fold(text).trimmed();
    if (folded.isEmpty())
        return {};
    switch (item.kind) {
    case TSearchItem::Digits:
        return beginsWith(u"cast("_s + item.field + u" as nvarchar(30))"_s, folded);
    case TSearchItem::Money:
        return moneyCondition(item.field, text);
    case TSearchItem::Date:
        if (const auto date = TPersianDate::parse(text))
            return contains(item.field, date->toText());
        break;
    case TSearchItem::Text:
        break;
    }
    return contains(item.field, folded);
}

TStatement TZelmoSearchManager::RangeCondition(const TSearchItem &item, const QString &from,
                                               const QString &to)
{
    TStatement condition;
    if (!from.isEmpty())
        AddFilter(condition, TStatement(u'(' + item.field + u" >= "_s).text(from).sql(u")"_s));
    if (!to.isEmpty()) {
        if (from.isEmpty())
            AddFilter(condition, TStatement(u'(' + item.field + u" <> '')"_s));
        AddFilter(condition, TStatement(u'(' + item.field + u" <= "_s).text(to).sql(u")"_s));
    }
    return condition;
}

void TZelmoSearchManager::ExecuteFilter_DataSet()
{
    run(m_ownFilter ? m_ownFilter() : TStatement());
}

void TZelmoSearchManager::ExecuteFilter(const TStatement &ownFilter)
{
    run(ownFilter);
}

bool TZelmoSearchManager::IsStored(qlonglong key) const
{
    const QString field = u'[' + m_query->keyField() + u']';
    return !m_query->connection()
                ->scalar(TStatement(u"select "_s + field + u" from ("_s)
                             .append(m_script)
                             .sql(u") as StoredT where "_s + field + u" = "_s)
                             .value(key))
                .isNull();
}

void TZelmoSearchManager::run(const TStatement &ownFilter)
{
    if (m_running || m_script.isEmpty())
        return;
    {
        rememberRow();
        const QScopedValueRollback running(m_running, true);
        try {
            TStatement filter = ownFilter;
            for (const auto &[frame, condition] : std::as_const(m_conditions))
                AddFilter(filter, condition);
            TStatement statement = m_script;
            if (!filter.isEmpty())
                statement = TStatement(u"select * from ("_s)
                                .append(m_script)
                                .sql(u") as SearchT where "_s)
                                .append(filter);
            m_query->setStatement(statement);
            m_query->openAt(m_lastKey);
        } catch (const TDatabaseError &) {
            m_query->close();
            TellFault();
        }
    }
    rememberRow();
    Q_EMIT executed();
}
