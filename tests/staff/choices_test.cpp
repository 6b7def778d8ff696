#include "staff/Screens.h"

namespace {

class StaffChoices : public StaffScreens {
protected:
    static QStringList items(const TSmartComboBox_ZLM *choice)
    {
        QStringList texts;
        for (int i = 0; i < choice->count(); ++i)
            texts << choice->itemText(i);
        return texts;
    }
};

} // namespace

TEST_F(StaffChoices, SexMarriageAndNationalityHaveTwoEach)
{
    const auto editor = newEditor();
    EXPECT_EQ(items(editor->Sex_CMB), QStringList({u"مرد"_qs, u"زن"_qs}));
    EXPECT_EQ(items(editor->IsMarried_CMB), QStringList({u"مجرد"_qs, u"متاهل"_qs}));
    EXPECT_EQ(items(editor->National_CMB), QStringList({u"ایرانی"_qs, u"غیر ایرانی"_qs}));
}

// Stored is the position, and both forms of yeh stand among the items as they always did.
TEST_F(StaffChoices, TheNumberedListsHaveTheirItemsInTheirOrder)
{
    const auto editor = newEditor();
    EXPECT_EQ(
        items(editor->EmploymentTitle_CMB),
        QStringList({u"سایر"_qs, u"پیمانی"_qs, u"رسمی"_qs, u"رسمی آزمایشی"_qs, u"قراردادی"_qs, u"روزمزد"_qs,
                     u"خرید خدمت"_qs, u"مامور"_qs, u"ساعتی"_qs, u"رسمی فصلی"_qs, u"کارمزدی"_qs}));
    EXPECT_EQ(
        items(editor->FiscalExemption_CMB),
        QStringList({u"عدم معافیت"_qs, u"شاغلین در مناطق کمتر توسعه یافته"_qs, u"آزادگان"_qs,
                     u"جانبازان انقلاب اسلامی و جنگ تحمیلی"_qs, u"پرسنل نیروهای مسلح جمهوری اسلامی ایران"_qs,
                     u"مشمولان قانون استخدامی وزارت اطلاعات"_qs, u"شاغلین در مناطق آزاد تجاری - صنعتی"_qs,
                     u"آزاده و جانباز"_qs, u"بازنشسته ، وظیفه و مستمری بگیر"_qs}));
    EXPECT_EQ(items(editor->Insurance_CMB),
              QStringList({u"سایر"_qs, u"تامین اجتماعی"_qs, u"خدمات درمانی"_qs, u"بیمه نشده"_qs}));
    EXPECT_EQ(items(editor->Category_CMB),
              QStringList({u"سایر"_qs, u"اداری مالی"_qs, u"آموزشی و فرهنگی"_qs, u"امور اجتماعی"_qs,
                           u"فن آوری اطلاعات"_qs, u"بهداشت و درمان"_qs, u"فنی مهندسی"_qs, u"خدمات"_qs,
                           u"کشاورزی و محیط زیست"_qs, u"بازاریابی و فروش"_qs, u"حراست و نگهبانی"_qs,
                           u"کارگری"_qs, u"ترابری"_qs, u"تولیدی"_qs, u"کنترل کیفی"_qs, u"تحقیقات"_qs,
                           u"انبارداری"_qs, u"قضات"_qs, u"اعضا هیئت علمی دانشگاهها و موسسات آموزش عالی"_qs}));
    EXPECT_EQ(items(editor->Degree_CMB),
              QStringList({u"بي سواد و کم سواد"_qs, u"زیر دیپلم"_qs, u"ديپلم"_qs, u"فوق ديپلم"_qs,
                           u"ليسانس"_qs, u"فوق ليسانس"_qs, u"دکترا"_qs, u"فوق دکترا"_qs}));
    EXPECT_EQ(items(editor->Military_CMB),
              QStringList({u"کارت پايان خدمت"_qs, u"کارت معافيت پزشکي"_qs, u"کارت معافيت کفالت"_qs,
                           u"کارت معافيت موقت"_qs, u"مشمول"_qs, u"غيره"_qs, u"مشخص نشده"_qs}));
}

TEST_F(StaffChoices, TheStaffListNamesDegreesAndMilitaryStatesAsTheEditorDoes)
{
    const auto editor = newEditor();
    const QStringList degrees = items(editor->Degree_CMB);
    const QStringList states = items(editor->Military_CMB);
    for (int i = 0; i < degrees.size(); ++i)
        add(i + 1, "n", QString::number(i), u"Degree=%1, Military=%1"_qs.arg(i));
    EXPECT_EQ(db.rows("select DegreeTitle from staff_VW order by Code").split('\n'), degrees);
    EXPECT_EQ(db.rows("select MilitaryTitle from staff_VW where Code<=7 order by Code").split('\n'), states);
    EXPECT_EQ(db.text("select count(*) from staff_VW where MilitaryTitle is null"), "1"); // one past the last
}
