#include "host/Declaration_PKG/Method_declare_unt.h"

#include "host/Utility_ZLM/PersianCalendar.h"

using namespace Qt::Literals::StringLiterals;

bool IsKabiseYear(int year)
{
    return TPersianDate::isLeap(year);
}

void AddFilter(TStatement &filter, const TStatement &condition)
{
    if (condition.isEmpty())
        return;
    if (!filter.isEmpty())
        filter.sql(u" AND "_s);
    filter.append(condition);
}
