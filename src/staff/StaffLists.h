#pragma once

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

/// What an employee's numbered columns stand for: a column stores the position of the chosen item, counted from 0.
/// Items are only ever added at the end, and keep their spelling: lists and printed forms show them.
namespace StaffLists {

inline const QStringList &sexes()
{
    static const QStringList items = {u"مرد"_s, u"زن"_s};
    return items;
}

inline const QStringList &maritalStates()
{
    static const QStringList items = {u"مجرد"_s, u"متاهل"_s};
    return items;
}

inline const QStringList &nationalities()
{
    static const QStringList items = {u"ایرانی"_s, u"غیر ایرانی"_s};
    return items;
}

inline const QStringList &employments()
{
    static const QStringList items = {
        u"سایر"_s,      u"پیمانی"_s, u"رسمی"_s,  u"رسمی آزمایشی"_s, u"قراردادی"_s, u"روزمزد"_s,
        u"خرید خدمت"_s, u"مامور"_s,  u"ساعتی"_s, u"رسمی فصلی"_s,    u"کارمزدی"_s,
    };
    return items;
}

inline const QStringList &fiscalExemptions()
{
    static const QStringList items = {
        u"عدم معافیت"_s,
        u"شاغلین در مناطق کمتر توسعه یافته"_s,
        u"آزادگان"_s,
        u"جانبازان انقلاب اسلامی و جنگ تحمیلی"_s,
        u"پرسنل نیروهای مسلح جمهوری اسلامی ایران"_s,
        u"مشمولان قانون استخدامی وزارت اطلاعات"_s,
        u"شاغلین در مناطق آزاد تجاری - صنعتی"_s,
        u"آزاده و جانباز"_s,
        u"بازنشسته ، وظیفه و مستمری بگیر"_s,
    };
    return items;
}

inline const QStringList &insurers()
{
    static const QStringList items = {
        u"سایر"_s,
        u"تامین اجتماعی"_s,
        u"خدمات درمانی"_s,
        u"بیمه نشده"_s,
    };
    return items;
}

inline const QStringList &categories()
{
    static const QStringList items = {
        u"سایر"_s,
        u"اداری مالی"_s,
        u"آموزشی و فرهنگی"_s,
        u"امور اجتماعی"_s,
        u"فن آوری اطلاعات"_s,
        u"بهداشت و درمان"_s,
        u"فنی مهندسی"_s,
        u"خدمات"_s,
        u"کشاورزی و محیط زیست"_s,
        u"بازاریابی و فروش"_s,
        u"حراست و نگهبانی"_s,
        u"کارگری"_s,
        u"ترابری"_s,
        u"تولیدی"_s,
        u"کنترل کیفی"_s,
        u"تحقیقات"_s,
        u"انبارداری"_s,
        u"قضات"_s,
        u"اعضا هیئت علمی دانشگاهها و موسسات آموزش عالی"_s,
    };
    return items;
}

inline const QStringList &degrees()
{
    static const QStringList items = {
        u"بي سواد و کم سواد"_s, u"زیر دیپلم"_s, u"ديپلم"_s,     u"فوق ديپلم"_s, u"ليسانس"_s,
        u"فوق ليسانس"_s,        u"دکترا"_s,     u"فوق دکترا"_s,
    };
    return items;
}

inline const QStringList &militaryStates()
{
    static const QStringList items = {
        u"کارت پايان خدمت"_s,
        u"کارت معافيت پزشکي"_s,
        u"کارت معافيت کفالت"_s,
        u"کارت معافيت موقت"_s,
        u"مشمول"_s,
        u"غيره"_s,
        u"مشخص نشده"_s,
    };
    return items;
}

} // namespace StaffLists
