#include "host/Utility_ZLM/Utility_ZLM.h"

#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QTime>

using namespace Qt::Literals::StringLiterals;

QString NowDate()
{
    return TPersianDate::today().toText();
}

QString NowTime()
{
    return QTime::currentTime().toString(u"HH:mm"_s);
}

bool NationalCode_Validation(const QString &text)
{
    const QString code = PersianText::latinDigits(text);
    if (code.size() != 10 || code.count(code[0]) == 10)
        return false;
    int sum = 0;
    for (int i = 0; i < 10; ++i) {
        const QChar c = code[i];
        if (c < u'0' || c > u'9')
            return false;
        if (i < 9)
            sum += (c.unicode() - u'0') * (10 - i);
    }
    const int rest = sum % 11;
    return code[9].unicode() - u'0' == (rest < 2 ? rest : 11 - rest);
}
