#include "staff/Screens.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

// What the editor checks before it saves, in the order of the users.
class StaffChecks : public StaffScreens {
protected:
    /// Opens a new employee that could be saved as it stands, and closes it without saving.
    void with(const std::function<void(TStaffGet_FRM &)> &work)
    {
        const auto editor = newEditor();
        messages.answer({No});
        open(*editor, [&] {
            fill(*editor);
            work(*editor);
            press(*editor, Qt::Key_Escape);
        });
        messages.take();
    }
    void accepted(TStaffGet_FRM &editor)
    {
        press(editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    }
};

// An employee with everything wrong at once: mending what was told brings the next message.
TEST_F(StaffChecks, TheFifteenChecksComeInTheirOrder)
{
    db.run("insert into StaffGroup(Code,Name) values(-1,N'before')");
    add(5, "five", "five",
        "PersonnelCode='55', CardNumber='56', InsuranceNumber='57', NationalID='0084575948'");
    add(6, "six", "six");
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(1,6,'1400/06/01')");
    const QString leaveNote = u"ShowTooltipMessage(تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.)"_s;
    const QString ordersNote =
        u"ShowSmartMessage(تاریخ استخدام نمی تواند بعد از تاریخ حکم کارگزینی باشد|کوچکترین تاریخ حکم "
        "کارگزینی که برای این کارمند ثبت شده است: 1400/06/01)"_s;
    const auto opened = editorOf(6);
    TStaffGet_FRM &editor = *opened;
    open(editor, [&] {
        choose(editor, editor.StaffGroup_CMB, 0);
        for (TSmartEdit_ZLM *name : {editor.Name_EDT, editor.LastName_EDT})
            type(editor, name, {});
        type(editor, editor.NationalCode_EDT, "0084575947");
        type(editor, editor.BirthDate_EDT, "1370/07/31");
        type(editor, editor.CoDate_EDT, "1404/12/30");
        tick(editor, editor.LeaveDate_CHK);
        type(editor, editor.LeaveDate_EDT, "1404/12/29");
        type(editor, editor.PersonnelCode_EDT, "55");
        type(editor, editor.CardNumber_EDT, "56");
        type(editor, editor.InsuranceNumber_EDT, "57");
        type(editor, editor.PostCode_EDT, "123");
        type(editor, editor.Email_EDT, "nobody.ir");

        refused(editor, u"NotSaveable(کليه کارمندان|کارمندی)"_s, 0, editor.StaffGroup_CMB);
        choose(editor, editor.StaffGroup_CMB, 1); // the group of all, in the second place
        refused(editor, u"MsgRequiredField(نام)"_s, 0, editor.Name_EDT);
        type(editor, editor.Name_EDT, "five");
        refused(editor, u"MsgRequiredField(نام خانوادگي)"_s, 0, editor.LastName_EDT);
        type(editor, editor.LastName_EDT, "five");
        refused(editor, u"MsgRepeatedField(نام|نام خانوادگي)"_s, 0, editor.Name_EDT);
        type(editor, editor.Name_EDT, "six");
        refused(editor, "ShowSmartMessage:10310()", 0, editor.NationalCode_EDT);
        type(editor, editor.NationalCode_EDT, "0084575948");
        refused(editor, leaveNote, 1, editor.LeaveDate_EDT);
        type(editor, editor.LeaveDate_EDT, "1404/13/01");
        refused(editor, "ShowSmartMessage:12()", 2, editor.PostCode_EDT);
        type(editor, editor.PostCode_EDT, "1234567890");
        refused(editor, "ShowSmartMessage:10()", 1, editor.CoDate_EDT);
        type(editor, editor.CoDate_EDT, "1403/12/30");
        refused(editor, "ShowSmartMessage:10()", 1, editor.LeaveDate_EDT);
        type(editor, editor.LeaveDate_EDT, "1404/12/29");
        refused(editor, "ShowSmartMessage:10()", 0, editor.BirthDate_EDT);
        type(editor, editor.BirthDate_EDT, "1370/07/30");
        refused(editor, u"NotSaveable(کليه کارمندان|کارمندي)"_s, 0, editor.StaffGroup_CMB);
        choose(editor, editor.StaffGroup_CMB, 2);
        refused(editor, u"MsgRepeatedField(کد پرسنلي|کارمندان)"_s, 1, editor.PersonnelCode_EDT);
        type(editor, editor.PersonnelCode_EDT, "0");
        refused(editor, u"MsgRepeatedField(شماره کارت|کارمندان)"_s, 1, editor.CardNumber_EDT);
        type(editor, editor.CardNumber_EDT, "6");
        refused(editor, u"MsgRepeatedField(کد بيمه|کارمندان)"_s, 1, editor.InsuranceNumber_EDT);
        type(editor, editor.InsuranceNumber_EDT, "6");
        refused(editor, u"MsgRepeatedField(کد ملي|کارمندان)"_s, 0, editor.NationalCode_EDT);
        type(editor, editor.NationalCode_EDT, {});
        refused(editor, "ShowSmartMessage:13()", 2, editor.Email_EDT);
        type(editor, editor.Email_EDT, "some@body.ir");
        refused(editor, ordersNote, 1, editor.CoDate_EDT);
        type(editor, editor.CoDate_EDT, "1400/06/01");
        EXPECT_EQ(db.text("select count(*) from Staff where Name='six' and CoDate is null"), "1");
        accepted(editor);
    });
    EXPECT_EQ(value("CoDate", 6), "1400/06/01");
}

TEST_F(StaffChecks, TheGroupOfAllIsRefusedFirst)
{
    with([&](TStaffGet_FRM &editor) {
        choose(editor, editor.StaffGroup_CMB, 0);
        type(editor, editor.Name_EDT, {});
        turnTo(editor, editor.CoDate_EDT);
        refused(editor, u"NotSaveable(کليه کارمندان|کارمندی)"_s, 0, editor.StaffGroup_CMB);
    });
}

TEST_F(StaffChecks, TheNamesAreRequired)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.Name_EDT, {});
        type(editor, editor.LastName_EDT, {});
        turnTo(editor, editor.CoDate_EDT);
        refused(editor, u"MsgRequiredField(نام)"_s, 0, editor.Name_EDT);
        type(editor, editor.Name_EDT, " "); // a blank is a text, here as in the other screens
        turnTo(editor, editor.CoDate_EDT);
        refused(editor, u"MsgRequiredField(نام خانوادگي)"_s, 0, editor.LastName_EDT);
    });
}

TEST_F(StaffChecks, AnotherEmployeeOfTheSameFullNameIsRefused)
{
    add(5, u"D''Arc"_s, u"ژان"_s);
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.Name_EDT, "D'Arc");
        type(editor, editor.LastName_EDT, u"ژان"_s);
        type(editor, editor.NationalCode_EDT, "123"); // checked later
        turnTo(editor, editor.CoDate_EDT);
        refused(editor, u"MsgRepeatedField(نام|نام خانوادگي)"_s, 0, editor.Name_EDT);
    });
    const auto own = editorOf(5);
    open(*own, [&] { accepted(*own); });
}

TEST_F(StaffChecks, ANationalCodeWithAWrongCheckDigitIsRefused)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.NationalCode_EDT, "0084575947");
        type(editor, editor.PostCode_EDT, "12");
        refused(editor, "ShowSmartMessage:10310()", 0, editor.NationalCode_EDT);
    });
}

TEST_F(StaffChecks, ALeaveDateBeforeTheEmploymentDateIsRefused)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.CoDate_EDT, "1403/12/30");
        tick(editor, editor.LeaveDate_CHK);
        type(editor, editor.LeaveDate_EDT, "1403/12/29");
        type(editor, editor.PostCode_EDT, "12"); // checked later
        refused(editor, u"ShowTooltipMessage(تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.)"_s, 1,
                editor.LeaveDate_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        EXPECT_EQ(messages.last().icon, 4);
        EXPECT_EQ(messages.last().color, QColor(192, 192, 192));
        EXPECT_EQ(messages.last().width, 250);
        EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
        EXPECT_EQ(messages.last().control, editor.LeaveDate_EDT);
        type(editor, editor.LeaveDate_EDT, "1403/12/30"); // the same day is right
        refused(editor, "ShowSmartMessage:12()", 2, editor.PostCode_EDT);
        // A ticked box without a date is earlier than any employment.
        type(editor, editor.LeaveDate_EDT, {});
        refused(editor, u"ShowTooltipMessage(تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.)"_s, 1,
                editor.LeaveDate_EDT);
    });
}

TEST_F(StaffChecks, TheLeaveDateIsNotComparedWhileTheBoxIsClear)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.CoDate_EDT, "1403/12/30");
        accepted(editor);
    });
}

TEST_F(StaffChecks, DatesThatDoNotExistAreRefusedInTheirOrder)
{
    with([&](TStaffGet_FRM &editor) {
        tick(editor, editor.LeaveDate_CHK);
        type(editor, editor.LeaveDate_EDT, "1404/13/01");
        type(editor, editor.BirthDate_EDT, "1370/07/31");
        type(editor, editor.CoDate_EDT, "1404/12/30"); // 1404 is no leap year
        turnTo(editor, editor.Email_EDT);
        refused(editor, "ShowSmartMessage:10()", 1, editor.CoDate_EDT);
        type(editor, editor.CoDate_EDT, "1403/12/30"); // 1403 is one
        turnTo(editor, editor.Email_EDT);
        refused(editor, "ShowSmartMessage:10()", 1, editor.LeaveDate_EDT);
        type(editor, editor.LeaveDate_EDT, "1404/12/01");
        turnTo(editor, editor.Email_EDT);
        refused(editor, "ShowSmartMessage:10()", 0, editor.BirthDate_EDT);
    });
}

// Behind a clear box nobody could correct it.
TEST_F(StaffChecks, AWrongLeaveDateGoesWithItsBox)
{
    with([&](TStaffGet_FRM &editor) {
        tick(editor, editor.LeaveDate_CHK);
        type(editor, editor.LeaveDate_EDT, "1404/13/01");
        tick(editor, editor.LeaveDate_CHK);
        EXPECT_TRUE(editor.LeaveDate_EDT->IsEmpty());
        accepted(editor);
    });
    EXPECT_EQ(value("LeaveDate", 1), "");
}

TEST_F(StaffChecks, AGroupOfCodeZeroIsRefusedWhereverItStands)
{
    db.run("insert into StaffGroup(Code,Name) values(-1,N'before')");
    with([&](TStaffGet_FRM &editor) {
        choose(editor, editor.StaffGroup_CMB, 1);
        ASSERT_EQ(editor.StaffGroup_CMB->Code(), 0);
        turnTo(editor, editor.CoDate_EDT);
        refused(editor, u"NotSaveable(کليه کارمندان|کارمندي)"_s, 0, editor.StaffGroup_CMB); // the other yeh
    });
}

TEST_F(StaffChecks, ARepeatedPersonnelCodeIsRefused)
{
    add(5, "five", "five", "PersonnelCode='77'");
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.PersonnelCode_EDT, "77");
        type(editor, editor.CardNumber_EDT, "5"); // checked later
        turnTo(editor, editor.Name_EDT);
        refused(editor, u"MsgRepeatedField(کد پرسنلي|کارمندان)"_s, 1, editor.PersonnelCode_EDT);
    });
    const auto own = editorOf(5);
    open(*own, [&] { accepted(*own); });
}

TEST_F(StaffChecks, PersonnelCodeZeroNeverCountsAsRepeated)
{
    add(5, "five", "five", "PersonnelCode='0'");
    with([&](TStaffGet_FRM &editor) {
        EXPECT_EQ(editor.PersonnelCode_EDT->GetText(), "0");
        accepted(editor);
    });
}

TEST_F(StaffChecks, RepeatedNumbersAreRefusedInTheirOrder)
{
    add(5, "five", "five", "CardNumber='9', InsuranceNumber='8', NationalID='0084575948'");
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.CardNumber_EDT, "9");
        type(editor, editor.InsuranceNumber_EDT, "8");
        type(editor, editor.NationalCode_EDT, "0084575948");
        type(editor, editor.Email_EDT, "no");
        turnTo(editor, editor.Name_EDT);
        refused(editor, u"MsgRepeatedField(شماره کارت|کارمندان)"_s, 1, editor.CardNumber_EDT);
        type(editor, editor.CardNumber_EDT, {}); // an empty one is not looked up
        turnTo(editor, editor.Name_EDT);
        refused(editor, u"MsgRepeatedField(کد بيمه|کارمندان)"_s, 1, editor.InsuranceNumber_EDT);
        type(editor, editor.InsuranceNumber_EDT, {});
        turnTo(editor, editor.Email_EDT);
        refused(editor, u"MsgRepeatedField(کد ملي|کارمندان)"_s, 0, editor.NationalCode_EDT);
        type(editor, editor.NationalCode_EDT, {});
        turnTo(editor, editor.Name_EDT);
        refused(editor, "ShowSmartMessage:13()", 2, editor.Email_EDT);
        type(editor, editor.Email_EDT, "a@b.ir");
        accepted(editor);
    });
    // The numbers of the employee itself are no repeats.
    const auto own = editorOf(5);
    open(*own, [&] { accepted(*own); });
}

// Unlike the personnel code, an insurance number of "0" counts: only the first employee may keep it.
TEST_F(StaffChecks, InsuranceNumberZeroCountsAsRepeated)
{
    add(5, "five", "five", "InsuranceNumber='0'");
    with([&](TStaffGet_FRM &editor) {
        refused(editor, u"MsgRepeatedField(کد بيمه|کارمندان)"_s, 1, editor.InsuranceNumber_EDT);
    });
}

TEST_F(StaffChecks, APostCodeIsCheckedBeforeTheDates)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.PostCode_EDT, "123456789");
        type(editor, editor.CoDate_EDT, "1404/12/30");
        refused(editor, "ShowSmartMessage:12()", 2, editor.PostCode_EDT);
    });
}

TEST_F(StaffChecks, AnEmploymentAfterTheEarliestOrderIsRefused)
{
    add(5, "five", "five", "CoDate='1400/01/01'");
    add(6, "six", "six");
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(1,5,'1402/06/01')");
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(2,5,'1401/06/01')");
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(3,6,'1390/06/01')");
    const auto editor = editorOf(5);
    messages.answer({No});
    open(*editor, [&] {
        type(*editor, editor->CoDate_EDT, "1401/06/02");
        turnTo(*editor, editor->Name_EDT);
        refused(*editor,
                u"ShowSmartMessage(تاریخ استخدام نمی تواند بعد از تاریخ حکم کارگزینی باشد|کوچکترین تاریخ حکم "
                "کارگزینی که برای این کارمند ثبت شده است: 1401/06/01)"_s,
                1, editor->CoDate_EDT);
        EXPECT_EQ(messages.last().icon, 1);
        type(*editor, editor->CoDate_EDT, "1401/06/01");
        accepted(*editor);
        press(*editor, Qt::Key_Escape);
    });
}

TEST_F(StaffChecks, AnEmployeeWithoutOrdersPasses)
{
    with([&](TStaffGet_FRM &editor) {
        type(editor, editor.CoDate_EDT, "1404/01/01");
        accepted(editor);
    });
}

} // namespace
