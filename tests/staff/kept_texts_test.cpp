#include "staff/FamilyScreens.h"

using namespace Qt::Literals::StringLiterals;

// Inputs that take more than their columns keep.

using enum TAnswer;

TEST_F(StaffFamily, ALongCommentOfAMemberIsToldBeforeItIsCut)
{
    const auto screen = newMember();
    open(*screen, [&] {
        Keys::retype(screen->Name_EDT, u"سارا"_s);
        Keys::retype(screen->Comment_EDT, u"دانشجوی سال دوم"_s);
        messages.answer({No});
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgTextsCut(شرح)"_s));
        EXPECT_TRUE(screen->Comment_EDT->hasFocus());
        EXPECT_EQ(working(), "");
        messages.answer({Yes});
        press(*screen, Qt::Key_F3);
        EXPECT_FALSE(screen->isVisible());
    });
    EXPECT_EQ(db.text("select Comment from tmpStaffFamily"), u"دانشجوی سا"_s);
}

TEST_F(StaffFamily, ADeletedMemberIsNamedAndTheOneBehindIsCurrent)
{
    add(5, u"علی"_s, u"احمدی"_s, "IsMarried=1");
    for (int id = 1; id <= 3; ++id)
        addMember(id, 5, u"عضو%1"_s.arg(id));
    const auto editor = editorOf(5);
    open(*editor, [&] {
        toFamily(*editor);
        Staff_DM->Family_QUR->locate("ID", 2);
        messages.answer({Yes});
        press(*editor, Qt::Key_Delete);
        EXPECT_TRUE(messages.last().text.contains(u"نام و نام خانوادگي: \u2068عضو2\u2069"_s))
            << messages.last().text.toStdString();
        EXPECT_EQ(Staff_DM->Family_QUR->asInteger("ID"), 3);
        messages.answer({No});
        press(*editor, Qt::Key_Escape);
    });
}

TEST_F(StaffFamily, TheEmployeesLongTextsAreToldTogetherAndTheFirstGetsTheFocus)
{
    add(5, u"علی"_s, u"احمدی"_s, "CoDate='1400/01/01'");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        type(*editor, editor->FatherName_EDT, QString(40, QChar(u'ت')));
        type(*editor, editor->Job_EDT, QString(21, QChar(u'ت')));
        messages.answer({No});
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take().last(), u"MsgTextsCut(نام پدر|شغل)"_s);
        EXPECT_TRUE(editor->FatherName_EDT->hasFocus()) << "its page is turned to";
        messages.answer({No});
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(db.text("select FatherName from Staff"), "");
}
