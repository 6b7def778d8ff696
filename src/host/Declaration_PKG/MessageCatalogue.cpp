#include "host/Declaration_PKG/MessageCatalogue.h"

#include "host/Utility_ZLM/PersianText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const int longestArgument = 200; // characters

QString shown(const QString &argument)
{
    const QString line = argument.simplified();
    return line.size() <= longestArgument ? line : PersianText::cut(line, longestArgument) + QChar(0x2026);
}

} // namespace

const QList<MessageCatalogue::TEntry> &MessageCatalogue::entries()
{
    static const QList<TEntry> all{
        {ntNothingToPick, miInformation, u"موردی برای انتخاب وجود ندارد."_s},
        {ntGroupOfAll, miWarning, u"این گروه از آنِ خود برنامه است و تغییر یا حذف آن ممکن نیست."_s},
        {ntWrongDate, miWarning, u"تاریخ درست نیست. نمونه: 1403/01/05"_s},
        {ntWrongTime, miWarning, u"ساعت درست نیست. نمونه: 08:30"_s},
        {ntWrongPostCode, miWarning, u"کد پستی باید ده رقم باشد."_s},
        {ntWrongEmail, miWarning, u"نشانی پست الکترونیکی درست نیست."_s},
        {ntRangeHoldsDays, miWarning, u"برای این بازه پیش از این روزهایی در تقویم ثبت شده است."_s},
        {ntRangeReversed, miWarning, u"تاریخ شروع نمی تواند بعد از تاریخ پایان باشد."_s},
        {ntSingleWithFamily, miWarning,
         u"برای این کارمند خانواده ثبت شده است. نخست سطرهای خانواده را حذف کنید."_s},
        {ntNotForOutputCode, miWarning, u"آیتم با کد %1 را نمی توان به کارکرد اضافه کرد."_s},
        {ntNotForOutput, miWarning, u"این آیتم را نمی توان به کارکرد اضافه کرد."_s},
        {ntZeroAmount, miWarning, u"آیتمی را که مبلغ آن صفر است نمی توان اضافه کرد."_s},
        {ntBoundsEqual, miWarning, u"ابتدا و انتهای بازه حقوق نمی تواند برابر باشد."_s},
        {ntBoundsReversed, miWarning, u"انتهای بازه حقوق نمی تواند کوچکتر از ابتدای آن باشد."_s},
        {ntBracketsOverlap, miWarning, u"این بازه با یکی از سطرهای موجود تداخل دارد."_s},
        {ntReservedCode, miWarning, u"آیتم با کد %1 در تنظیمات حقوق و دستمزد رزرو شده است."_s},
        {ntRepeatedCode, miWarning, u"آیتم با کد %1 قبلا انتخاب شده است."_s},
        {ntReserved, miWarning, u"این آیتم در تنظیمات حقوق و دستمزد رزرو شده است."_s},
        {ntWrongNationalCode, miWarning, u"شماره ملی درست نیست."_s},
        {ntEnterAsPerson, miQuestion, u"این کارمند در اشخاص ثبت نشده است. آیا به عنوان شخص هم ثبت شود؟"_s},
    };
    return all;
}

const MessageCatalogue::TEntry *MessageCatalogue::find(int number)
{
    const QList<TEntry> &all = entries();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const TEntry &entry) { return entry.number == number; });
    return found == all.end() ? nullptr : &*found;
}

QString MessageCatalogue::fill(const QString &text, const QStringList &arguments)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int place = text[i] == u'%' && i + 1 < text.size() ? text[i + 1].digitValue() : -1;
        if (place < 1) {
            result += text[i];
            continue;
        }
        result += shown(arguments.value(place - 1));
        ++i;
    }
    return result;
}
