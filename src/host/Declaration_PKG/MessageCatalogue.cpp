#include "host/Declaration_PKG/MessageCatalogue.h"

#include "host/Utility_ZLM/PersianText.h"

#include <algorithm>

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
        {7, miInformation, QStringLiteral("موردی برای انتخاب وجود ندارد.")},
        {8, miWarning, QStringLiteral("این گروه از آنِ خود برنامه است و تغییر یا حذف آن ممکن نیست.")},
        {10, miWarning, QStringLiteral("تاریخ درست نیست. نمونه: 1403/01/05")},
        {11, miWarning, QStringLiteral("ساعت درست نیست. نمونه: 08:30")},
        {12, miWarning, QStringLiteral("کد پستی باید ده رقم باشد.")},
        {13, miWarning, QStringLiteral("نشانی پست الکترونیکی درست نیست.")},
        {10060, miWarning, QStringLiteral("برای این بازه پیش از این روزهایی در تقویم ثبت شده است.")},
        {10061, miWarning, QStringLiteral("تاریخ شروع نمی تواند بعد از تاریخ پایان باشد.")},
        {10100, miWarning,
         QStringLiteral("برای این کارمند خانواده ثبت شده است. نخست سطرهای خانواده را حذف کنید.")},
        {10120, miWarning, QStringLiteral("آیتم با کد %1 را نمی توان به کارکرد اضافه کرد.")},
        {10121, miWarning, QStringLiteral("این آیتم را نمی توان به کارکرد اضافه کرد.")},
        {10122, miWarning, QStringLiteral("آیتمی را که مبلغ آن صفر است نمی توان اضافه کرد.")},
        {10232, miWarning, QStringLiteral("ابتدا و انتهای بازه حقوق نمی تواند برابر باشد.")},
        {10233, miWarning, QStringLiteral("انتهای بازه حقوق نمی تواند کوچکتر از ابتدای آن باشد.")},
        {10234, miWarning, QStringLiteral("این بازه با یکی از سطرهای موجود تداخل دارد.")},
        {10249, miWarning, QStringLiteral("آیتم با کد %1 در تنظیمات حقوق و دستمزد رزرو شده است.")},
        {10250, miWarning, QStringLiteral("آیتم با کد %1 قبلا انتخاب شده است.")},
        {10251, miWarning, QStringLiteral("این آیتم در تنظیمات حقوق و دستمزد رزرو شده است.")},
        {10310, miWarning, QStringLiteral("شماره ملی درست نیست.")},
        {20106, miQuestion, QStringLiteral("این کارمند در اشخاص ثبت نشده است. آیا به عنوان شخص هم ثبت شود؟")},
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
