#include "host/database/RecordRules.h"

#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QTime>

using namespace Qt::Literals::StringLiterals;

bool Rules::isWellFormed(TFieldInput::Kind kind, const QString &text)
{
    if (text.isEmpty())
        return true;
    switch (kind) {
    case TFieldInput::NationalCode:
        return NationalCode_Validation(text);
    case TFieldInput::PostCode:
        return PostCode_Validation(text);
    case TFieldInput::Email:
        return Email_Validation(text);
    case TFieldInput::Date:
        return TPersianDate::parse(text).has_value();
    case TFieldInput::Time:
        return QTime::fromString(text, u"HH:mm"_s).isValid();
    default:
        return true;
    }
}
