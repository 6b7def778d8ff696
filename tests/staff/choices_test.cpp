#include "staff/Screens.h"

using namespace Qt::Literals::StringLiterals;

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
    EXPECT_EQ(items(editor->Sex_CMB), QStringList({u"مرد"_s, u"زن"_s}));
    EXPECT_EQ(items(editor->IsMarried_CMB), QStringList({u"مجرد"_s, u"متاهل"_s}));
    EXPECT_EQ(items(editor->National_CMB), QStringList({u"ایرانی"_s, u"غیر ایرانی"_s}));
}

// Stored is the position, and both forms of yeh stand among the items as they always did.
TEST_F(StaffChoices, TheNumberedListsHaveTheirItemsInTheirOrder)
{
    const auto editor = newEditor();
    EXPECT_EQ(items(editor->EmploymentTitle_CMB),
              QStringList({u"سایر"_s, u"پیمانی"_s, u"رسمی"_s, u"رسمی آزمایشی"_s, u"قراردادی"_s, u"روزمزد"_s,
                           u"خرید خدمت"_s, u"مامور"_s, u"ساعتی"_s, u"رسمی فصلی"_s, u"کارمزدی"_s}));
    EXPECT_EQ(
        items(editor->FiscalExemption_CMB),
        QStringList({u"عدم معافیت"_s, u"شاغلین در مناطق کمتر توسعه یافته"_s, u"آزادگان"_s,
                     u"جانبازان انقلاب اسلامی و جنگ تحمیلی"_s, u"پرسنل نیروهای مسلح جمهوری اسلامی ایران"_s,
                     u"مشمولان قانون استخدامی وزارت اطلاعات"_s, u"شاغلین در مناطق آزاد تجاری - صنعتی"_s,
                     u"آزاده و جانباز"_s, u"بازنشسته ، وظیفه و مستمری بگیر"_s}));
    EXPECT_EQ(items(editor->Insurance_CMB),
              QStringList({u"سایر"_s, u"تامین اجتماعی"_s, u"خدمات درمانی"_s, u"بیمه نشده"_s}));
    EXPECT_EQ(items(editor->Category_CMB),
              QStringList({u"سایر"_s, u"اداری مالی"_s, u"آموزشی و فرهنگی"_s, u"امور اجتماعی"_s,
                           u"فن آوری اطلاعات"_s, u"بهداشت و درمان"_s, u"فنی مهندسی"_s, u"خدمات"_s,
                           u"کشاورزی و محیط زیست"_s, u"بازاریابی و فروش"_s, u"حراست و نگهبانی"_s, u"کارگری"_s,
                           u"ترابری"_s, u"تولیدی"_s, u"کنترل کیفی"_s, u"تحقیقات"_s, u"انبارداری"_s, u"قضات"_s,
                           u"اعضا هیئت علمی دانشگاهها و موسسات آموزش عالی"_s}));
    EXPECT_EQ(items(editor->Degree_CMB),
              QStringList({u"بي سواد و کم سواد"_s, u"زیر دیپلم"_s, u"ديپلم"_s, u"فوق ديپلم"_s, u"ليسانس"_s,
                           u"فوق ليسانس"_s, u"دکترا"_s, u"فوق دکترا"_s}));
    EXPECT_EQ(items(editor->Military_CMB),
              QStringList({u"کارت پايان خدمت"_s, u"کارت معافيت پزشکي"_s, u"کارت معافيت کفالت"_s,
                           u"کارت معافيت موقت"_s, u"مشمول"_s, u"غيره"_s, u"مشخص نشده"_s}));
}

TEST_F(StaffChoices, TheStaffListNamesDegreesAndMilitaryStatesAsTheEditorDoes)
{
    const auto editor = newEditor();
    const QStringList degrees = items(editor->Degree_CMB);
    const QStringList states = items(editor->Military_CMB);
    for (int i = 0; i < degrees.size(); ++i)
        add(i + 1, "n", QString::number(i), u"Degree=%1, Military=%1"_s.arg(i));
    EXPECT_EQ(db.rows("select DegreeTitle from staff_VW order by Code").split('\n'), degrees);
    EXPECT_EQ(db.rows("select MilitaryTitle from staff_VW where Code<=7 order by Code").split('\n'), states);
    EXPECT_EQ(db.text("select count(*) from staff_VW where MilitaryTitle is null"), "1"); // one past the last
}
