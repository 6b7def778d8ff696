#include "host/database/RecordFields.h"

#include "host/Utility_ZLM/Decimal.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Bits>
QVariant wholeNumber(const QString &text, bool &isNumber)
{
    const qlonglong number = text.toLongLong(&isNumber);
    isNumber =
        isNumber && number >= std::numeric_limits<Bits>::min() && number <= std::numeric_limits<Bits>::max();
    return number;
}

} // namespace

QVariant Fields::stored(const char *column, TFieldForm form, const QString &text)
{
    if (form == TFieldForm::AsItIs)
        return text;
    if (text.isEmpty())
        return {};
    bool isNumber = false;
    QVariant number;
    if (form == TFieldForm::Decimal) {
        number = text.toDouble(&isNumber);
        isNumber = isNumber && qIsFinite(number.toDouble());
    } else {
        number = form == TFieldForm::SmallNumber ? wholeNumber<qint16>(text, isNumber)
                                                 : wholeNumber<qint32>(text, isNumber);
    }
    if (!isNumber)
        throw TDatabaseError(TFault::TooLong,
                             u"\"%1\" is no value of column %2"_s.arg(text, QLatin1StringView(column)));
    return number;
}

QString Fields::textOf(TFieldForm form, const QVariant &value)
{
    // Through the host's conversion: a column's own text may carry an exponent or trailing zeros.
    if (form == TFieldForm::Decimal)
        return value.isNull() ? QString() : FloatToStr_ZLM(value.toDouble());
    return value.toString();
}
