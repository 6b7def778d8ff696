#include "host/Utility_ZLM/Decimal.h"

#include "host/Utility_ZLM/PersianText.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

const int significantDigits = 15;

/// A number as its decimal digits d1 d2 ... (no zeros at either end) with the point after `point` of them.
struct Decimal {
    bool negative = false;
    QByteArray digits;
    int point = 0;
};

Decimal decimal(double number)
{
    // "d.dddddddddddddde±xx"
    const QByteArray text = QByteArray::number(std::fabs(number), 'e', significantDigits - 1);
    const qsizetype exponent = text.indexOf('e');
    Decimal result{number < 0, text.left(exponent), text.mid(exponent + 1).toInt() + 1};
    result.digits.remove(1, 1);
    while (result.digits.endsWith('0'))
        result.digits.chop(1);
    return result;
}

QString text(Decimal number)
{
    while (number.digits.endsWith('0') && number.digits.size() > number.point)
        number.digits.chop(1);
    if (std::all_of(number.digits.begin(), number.digits.end(), [](char c) { return c == '0'; }))
        return u"0"_s;
    QByteArray whole = number.digits.left(std::max(number.point, 0));
    QByteArray fraction = number.digits.mid(std::max(number.point, 0));
    whole = whole.leftJustified(number.point, '0');
    fraction.prepend(QByteArray(std::max(-number.point, 0), '0'));
    return QString::fromLatin1((number.negative ? "-" : "") + (whole.isEmpty() ? "0" : whole) +
                               (fraction.isEmpty() ? "" : "." + fraction));
}

/// One more in the last of the decimal digits.
void roundUp(Decimal &number)
{
    qsizetype at = number.digits.size();
    while (at > 0 && number.digits[at - 1] == '9')
        number.digits[--at] = '0';
    if (at > 0) {
        ++number.digits[at - 1];
    } else {
        number.digits.prepend('1');
        ++number.point;
    }
}

} // namespace

double StrToFloat_ZLM(const QString &text)
{
    const double number = PersianText::plainNumber(text).toDouble();
    return std::isfinite(number) ? number : 0;
}

QString FloatToStr_ZLM(double number)
{
    return std::isfinite(number) ? text(decimal(number)) : u"0"_s;
}

int NumericPrecisionCount_ZLM()
{
    return 9;
}

QString RoundedText_ZLM(double number, int places)
{
    if (!std::isfinite(number))
        return u"0"_s;
    // On the decimal digits: in binary 2.675 is below its half and would go down.
    Decimal rounded = decimal(number);
    const int kept = rounded.point + places;
    if (kept < 0)
        return u"0"_s;
    if (kept < rounded.digits.size()) {
        const bool up = rounded.digits[kept] >= '5';
        rounded.digits.truncate(kept);
        if (up)
            roundUp(rounded);
    }
    return text(rounded);
}
