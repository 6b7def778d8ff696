#include "host/Declaration_PKG/Method_declare_unt.h"

#include "host/Utility_ZLM/PersianCalendar.h"

bool IsKabiseYear(int year)
{
    return TPersianDate::isLeap(year);
}

void AddFilter(TStatement &filter, const TStatement &condition)
{
    if (condition.isEmpty())
        return;
    if (!filter.isEmpty())
        filter.sql(QStringLiteral(" AND "));
    filter.append(condition);
}
