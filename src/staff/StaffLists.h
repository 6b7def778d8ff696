#pragma once

#include <QStringList>

/// What an employee's numbered columns stand for: a column stores the position of the chosen item, counted from 0.
/// Items are only ever added at the end, and keep their spelling: lists and printed forms show them.
namespace StaffLists {

inline const QStringList &employments()
{
    static const QStringList items = {
        u"سایر"_qs,      u"پیمانی"_qs, u"رسمی"_qs,  u"رسمی آزمایشی"_qs, u"قراردادی"_qs, u"روزمزد"_qs,
        u"خرید خدمت"_qs, u"مامور"_qs,  u"ساعتی"_qs, u"رسمی فصلی"_qs,    u"کارمزدی"_qs,
    };
    return items;
}

inline const QStringList &fiscalExemptions()
{
    static const QStringList items = {
        u"عدم معافیت"_qs,
        u"شاغلین در مناطق کمتر توسعه یافته"_qs,
        u"آزادگان"_qs,
        u"جانبازان انقلاب اسلامی و جنگ تحمیلی"_qs,
        u"پرسنل نیروهای مسلح جمهوری اسلامی ایران"_qs,
        u"مشمولان قانون استخدامی وزارت اطلاعات"_qs,
        u"شاغلین در مناطق آزاد تجاری - صنعتی"_qs,
        u"آزاده و جانباز"_qs,
        u"بازنشسته ، وظیفه و مستمری بگیر"_qs,
    };
    return items;
}

inline const QStringList &insurers()
{
    static const QStringList items = {
        u"سایر"_qs,
        u"تامین اجتماعی"_qs,
        u"خدمات درمانی"_qs,
        u"بیمه نشده"_qs,
    };
    return items;
}

inline const QStringList &categories()
{
    static const QStringList items = {
        u"سایر"_qs,
        u"اداری مالی"_qs,
        u"آموزشی و فرهنگی"_qs,
        u"امور اجتماعی"_qs,
        u"فن آوری اطلاعات"_qs,
        u"بهداشت و درمان"_qs,
        u"فنی مهندسی"_qs,
        u"خدمات"_qs,
        u"کشاورزی و محیط زیست"_qs,
        u"بازاریابی و فروش"_qs,
        u"حراست و نگهبانی"_qs,
        u"کارگری"_qs,
        u"ترابری"_qs,
        u"تولیدی"_qs,
        u"کنترل کیفی"_qs,
        u"تحقیقات"_qs,
        u"انبارداری"_qs,
        u"قضات"_qs,
        u"اعضا هیئت علمی دانشگاهها و موسسات آموزش عالی"_qs,
    };
    return items;
}

inline const QStringList &degrees()
{
    static const QStringList items = {
        u"بي سواد و کم سواد"_qs, u"زیر دیپلم"_qs, u"ديپلم"_qs,     u"فوق ديپلم"_qs, u"ليسانس"_qs,
        u"فوق ليسانس"_qs,        u"دکترا"_qs,     u"فوق دکترا"_qs,
    };
    return items;
}

inline const QStringList &militaryStates()
{
    static const QStringList items = {
        u"کارت پايان خدمت"_qs,
        u"کارت معافيت پزشکي"_qs,
        u"کارت معافيت کفالت"_qs,
        u"کارت معافيت موقت"_qs,
        u"مشمول"_qs,
        u"غيره"_qs,
        u"مشخص نشده"_qs,
    };
    return items;
}

} // namespace StaffLists
