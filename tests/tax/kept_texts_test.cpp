#include "tax/TaxScreens.h"

#include "host/Utility_ZLM/PersianText.h"

#include <QLabel>

using namespace Qt::Literals::StringLiterals;

// Texts that are longer than their columns, and the brackets' delete.

using enum TAnswer;

namespace {

const QString smiley = QString::fromUtf8("\U0001F600");

QString letters(int count)
{
    return QString(count, QChar(u'ت'));
}

} // namespace

TEST_F(TaxEditor, ATitleThatItsColumnDoesNotKeepIsToldBeforeTheSave)
{
    table(3, "three");
    edit(3, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, letters(50) + u" سال ۱۴۰۴"_s);
        messages.answer({No});
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(editor.isVisible());
        expectFocus(editor.Title_EDT);
        EXPECT_EQ(messages.take(), QStringList{u"MsgTextsCut(عنوان)"_s});
        EXPECT_EQ(messages.last().text,
                  u"از «عنوان» تنها 50 نویسه نخست ذخیره می شود و این بخش از دست می رود: «سال ۱۴۰۴»\n"
                  u"آیا به همین صورت ذخیره شود؟"_s);
        EXPECT_EQ(headers(), "3|three|c");
        EXPECT_EQ(editor.Title_EDT->GetText(), letters(50) + u" سال ۱۴۰۴"_s) << "nothing typed is lost";
        messages.answer({Yes});
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(headers(), u"3|%1|c"_s.arg(letters(50)));
}

TEST_F(TaxEditor, TheGivenChecksComeBeforeTheQuestionAboutALongTitle)
{
    edit(0, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, letters(60));
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgNotEntered(سطري)"_s});
        messages.answer({No});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(TaxEditor, NoLetterIsCutInHalfAndTheLostPartIsNamedWhole)
{
    table(3, "three");
    edit(3, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, letters(49) + smiley);
        messages.answer({Yes});
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_TRUE(messages.last().text.contains(u"تنها 49 نویسه"_s) ||
                messages.all().at(0).text.contains(u"تنها 49 نویسه"_s));
    EXPECT_TRUE(messages.all().at(0).text.contains(u"«%1»"_s.arg(smiley)));
    EXPECT_EQ(headers(), u"3|%1|c"_s.arg(letters(49)));
}

TEST_F(TaxEditor, ATextThatFitsIsSavedWithoutAQuestion)
{
    table(3, "three");
    edit(3, [&](TTaxGet_FRM &editor) {
        Keys::retype(editor.Title_EDT, letters(50) + "  ");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList{u"MSGCompeletedSuccessfully(ذخيره سازي )"_s});
}

TEST_F(TaxEditor, ADeletedBracketIsNamedAndTheNextOneIsCurrent)
{
    table(3, "three", "0|1000|0\n1001|2000000|10\n2000001|3000000|20");
    edit(3, [&](TTaxGet_FRM &editor) {
        grid(editor)->setFocus();
        Tax_DM->DetailList_QUR->moveTo(1);
        messages.answer({Yes, No});
        Keys::press(&editor, Qt::Key_Delete);
        EXPECT_EQ(messages.last().text,
                  u"آیا از حذف این سطر اطمینان دارید؟\nاز حقوق: \u20681,001\u2069 - تا حقوق: "
                  u"\u20682,000,000\u2069 - نرخ مالیات: \u206810\u2069"_s);
        EXPECT_EQ(Tax_DM->DetailList_QUR->asInteger("FromSalary"), 2000001);
        Keys::press(&editor, Qt::Key_Escape);
    });
}
