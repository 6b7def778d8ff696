#include "host/Utility_ZLM/Utility_ZLM.h"

#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QRegularExpression>
#include <QTime>

using namespace Qt::Literals::StringLiterals;

namespace {

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

} // namespace

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

bool PostCode_Validation(const QString &text)
{
    return matches(text, u"\\d{10}"_s);
}

bool Email_Validation(const QString &text)
{
    return matches(text, u"[^@]+@[^@.]+(\\.[^@.]+)+"_s);
}
