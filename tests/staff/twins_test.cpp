#include "staff/FamilyScreens.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

/// What is there already is found however it is written, and who has it is named.
class StaffTwins : public StaffFamily {
protected:
    void with(const std::function<void(TStaffGet_FRM &)> &work)
    {
        const auto editor = newEditor();
        open(*editor, [&] {
            fill(*editor);
            work(*editor);
            if (!editor->IsSaved())
                messages.answer({No});
            press(*editor, Qt::Key_Escape);
        });
        messages.take();
    }
    void refusedFor(TStaffGet_FRM &editor, const QString &message, int page, QWidget *focus,
                    const QString &holder)
    {
        refused(editor, message, page, focus);
        EXPECT_TRUE(messages.last().text.contains(holder)) << messages.last().text.toStdString();
    }
};

} // namespace

TEST_F(StaffTwins, ANumberIsRepeatedInWhateverDigitsAndBlanksItIsStored)
{
    add(5, u"علی"_s, u"رضایی"_s, u"PersonnelCode=N'۱۲۰۰', CardNumber=N' ١٣٠٠', InsuranceNumber=N'14۰0 '"_s);
    const QString holder = u"علی رضایی (کد 5)"_s;
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.PersonnelCode_EDT, "1200");
        refusedFor(editor, u"MsgRepeatedField(کد پرسنلي|کارمندان)"_s, 1, editor.PersonnelCode_EDT, holder);
        type(editor, editor.PersonnelCode_EDT, "1201");
        type(editor, editor.CardNumber_EDT, "1300");
        refusedFor(editor, u"MsgRepeatedField(شماره کارت|کارمندان)"_s, 1, editor.CardNumber_EDT, holder);
        type(editor, editor.CardNumber_EDT, "1301");
        type(editor, editor.InsuranceNumber_EDT, "1400");
        refusedFor(editor, u"MsgRepeatedField(کد بيمه|کارمندان)"_s, 1, editor.InsuranceNumber_EDT, holder);
        type(editor, editor.InsuranceNumber_EDT, "140");
        press(editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage)) << "a part of a number is another one";
    });
}

TEST_F(StaffTwins, TheEmployeeWhoHasExactlyTheNumberIsNamedToo)
{
    add(5, u"علی"_s, u"رضایی"_s, "CardNumber='1300'");
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.CardNumber_EDT, "1300");
        refusedFor(editor, u"MsgRepeatedField(شماره کارت|کارمندان)"_s, 1, editor.CardNumber_EDT,
                   u"علی رضایی (کد 5)"_s);
    });
}

TEST_F(StaffTwins, TypedNumbersAreStoredInLatinDigitsWithoutBlanksAtTheirEnds)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.PersonnelCode_EDT, u" ۱۲۰۰ "_s);
        type(editor, editor.CardNumber_EDT, u"ک ١٣"_s);
        type(editor, editor.InsuranceNumber_EDT, u"۱۴۰۰"_s);
        press(editor, Qt::Key_F3, Qt::ShiftModifier); // without leaving the last one
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    });
    EXPECT_EQ(db.rows("select PersonnelCode,CardNumber,InsuranceNumber from Staff"), u"1200|ک 13|1400"_s);
}

TEST_F(StaffTwins, StoredTwinsCanBeSavedAsLongAsTheirNumbersStay)
{
    add(5, u"علی"_s, u"رضایی"_s, "PersonnelCode='1200', CardNumber='7', InsuranceNumber='8'");
    add(6, u"علي"_s, u"رضايي"_s, u"PersonnelCode=N'۱۲۰۰', CardNumber=N'۷', InsuranceNumber=N'۸'"_s);
    const auto editor = editorOf(6);
    open(*editor, [&] {
        type(*editor, editor->Job_EDT, "clerk");
        press(*editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    });
    EXPECT_EQ(value("Job", 6), "clerk");
    EXPECT_EQ(value("CardNumber", 6), u"۷"_s) << "what nobody typed stays as it is stored";
}

TEST_F(StaffTwins, AFullNameIsRepeatedInBothFormsOfItsLetters)
{
    add(5, u"علي"_s, u" رضايي كيا "_s);
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.Name_EDT, u"علی"_s);
        type(editor, editor.LastName_EDT, u"رضایی کیا"_s);
        refusedFor(editor, u"MsgRepeatedField(نام|نام خانوادگي)"_s, 0, editor.Name_EDT, u"(کد 5)"_s);
        type(editor, editor.LastName_EDT, u"رضایی"_s);
        press(editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    });
}

TEST_F(StaffTwins, NamesOfBlanksOnlyAreAskedForBehindTheOtherChecks)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.Name_EDT, "   ");
        type(editor, editor.Email_EDT, "nobody.ir");
        refused(editor, "ShowSmartMessage:13()", 2, editor.Email_EDT);
        type(editor, editor.Email_EDT, {});
        refused(editor, u"MsgRequiredField(نام)"_s, 0, editor.Name_EDT);
    });
    EXPECT_EQ(db.text("select count(*) from Staff"), "0");
}

TEST_F(StaffTwins, ALeaveBoxWithoutADateIsTold)
{
    with([&](TStaffGet_FRM &editor) {
        tick(editor, editor.LeaveDate_CHK);
        refused(editor, u"MsgRequiredField(تاریخ ترک کار)"_s, 1, editor.LeaveDate_EDT);
        type(editor, editor.LeaveDate_EDT, "1403/01/05");
        press(editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    });
}

TEST_F(StaffTwins, AWrongDateOfIssueIsTold)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.IssueDate_EDT, "1403/13/01");
        refused(editor, "ShowSmartMessage:10()", 0, editor.IssueDate_EDT);
    });
    EXPECT_EQ(db.text("select count(*) from Staff"), "0");
}

TEST_F(StaffTwins, ADeathBoxWithoutADateIsTold)
{
    const auto screen = newMember();
    open(*screen, [&] {
        Keys::retype(screen->Name_EDT, "m");
        screen->Death_CHK->setFocus();
        press(*screen, Qt::Key_Space);
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(تاریخ فوت)"_s));
        EXPECT_EQ(screen->focusWidget(), screen->DeathDate_EDT);
        Keys::retype(screen->DeathDate_EDT, "1403/01/05");
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(db.text("select DeathDate from tmpStaffFamily"), "1403/01/05");
}
