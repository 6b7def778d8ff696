#include "staff/Screens.h"

#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "staff/StaffLists.h"
#include "support/TestUser.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

class StaffEditor : public StaffScreens {};

TEST_F(StaffEditor, ANewEmployeeHasItsDefaults)
{
    add(6, "six", "six");
    const auto editor = newEditor(2);
    open(*editor, [&] {
        EXPECT_EQ(editor->objectName(), "TStaffGet_FRM");
        EXPECT_EQ(editor->windowTitle(), u" اطلاعات کارمندان"_s);
        EXPECT_EQ(editor->Code_EDT->GetText(), "7");
        EXPECT_EQ(editor->CardNumber_EDT->GetText(), "7");
        EXPECT_EQ(editor->PersonnelCode_EDT->GetText(), "0");
        EXPECT_EQ(editor->InsuranceNumber_EDT->GetText(), "0");
        EXPECT_EQ(editor->StaffGroup_CMB->Code(), 2);
        for (TSmartDateEdit_ZLM *date : {editor->CoDate_EDT, editor->LeaveDate_EDT, editor->BirthDate_EDT})
            EXPECT_TRUE(date->IsEmpty());
        EXPECT_EQ(editor->IsMarried_CMB->currentIndex(), 0);
        EXPECT_FALSE(editor->Staff_PC->isTabVisible(3));
        EXPECT_FALSE(editor->LeaveDate_CHK->isChecked());
        EXPECT_FALSE(editor->LeaveDate_EDT->isEnabled());
        EXPECT_FALSE(editor->LeaveDate_LBL->isEnabled());
        EXPECT_TRUE(editor->Picture_Get->IsEmpty());
        EXPECT_TRUE(editor->FingerPrint_Get->IsEmpty());
        EXPECT_TRUE(editor->IsSaved());
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 0);
        EXPECT_EQ(editor->focusWidget(), editor->Name_EDT);
        EXPECT_EQ(locks(), "7|806|1");
        for (int page = 0; page < 3; ++page) {
            press(*editor, Qt::Key(Qt::Key_1 + page), Qt::ControlModifier);
            Keys::picture(editor.get(), u"staff_new_%1"_s.arg(page + 1));
        }
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffEditor, TheFocusBeginsOnTheGroupWhenTheListStandsOnGroupOne)
{
    const auto editor = newEditor(1);
    open(*editor, [&] { EXPECT_EQ(editor->focusWidget(), editor->StaffGroup_CMB); });
}

TEST_F(StaffEditor, AGroupThatIsNotThereLeavesTheFirstOneChosen)
{
    const auto editor = newEditor(9);
    open(*editor, [&] {
        EXPECT_EQ(editor->StaffGroup_CMB->currentIndex(), 0);
        EXPECT_EQ(editor->StaffGroup_CMB->currentText(), u"کليه کارمندان"_s);
    });
}

TEST_F(StaffEditor, EveryInputHasItsCaptionAndItsWidth)
{
    const auto editor = newEditor();
    struct TRow {
        TSmartEdit_ZLM *input;
        QString caption;
        int length;
    };
    const QList<TRow> rows = {
        {editor->Code_EDT, u"  &کد :"_s, 15},
        {editor->Name_EDT, u"  &نام :"_s, 50},
        {editor->LastName_EDT, u"  نام خانواد&گی :"_s, 50},
        {editor->NationalCode_EDT, u"  کد م&لی :"_s, 10},
        {editor->BirthPlace_EDT, u"  محل &تولد :"_s, 50},
        {editor->IssuePlace_EDT, u"  محل &صدور :"_s, 50},
        {editor->IDNumber_EDT, u"  شماره شناسنا&مه :"_s, 10},
        {editor->FatherName_EDT, u"  نام پد&ر :"_s, 50},
        {editor->BirthDate_EDT, u"  تاریخ ت&ولد :"_s, 10},
        {editor->IssueDate_EDT, u"  تاریخ ص&دور :"_s, 10},
        {editor->CoDate_EDT, u"  تاری&خ استخدام :"_s, 10},
        {editor->PersonnelCode_EDT, u"  کد پرس&نلی :"_s, 15},
        {editor->Job_EDT, u"  ش&غل :"_s, 50},
        {editor->BankTitle_EDT, u"  &عنوان بانک :"_s, 50},
        {editor->Comment_EDT, u"  &شرح :"_s, 50},
        {editor->LeaveDate_EDT, u"  تاریخ &ترک کار :"_s, 10},
        {editor->CardNumber_EDT, u"  شماره ک&ارت :"_s, 20},
        {editor->Department_EDT, u"  م&حل خدمت :"_s, 50},
        {editor->AccountNumber_EDT, u"  شماره ح&ساب :"_s, 30},
        {editor->InsuranceNumber_EDT, u"  کد &بیمه :"_s, 10},
        {editor->JobCode_EDT, u"  کد شغ&ل :"_s, 6},
        {editor->JobGroup_EDT, u"  &گروه شغل :"_s, 50},
        {editor->Tel1_EDT, u"  ت&لفن1 :"_s, 15},
        {editor->Tel2_EDT, u"  &تلفن2 :"_s, 15},
        {editor->Fax_EDT, u"  فاکس& :"_s, 50},
        {editor->Mobile_EDT, u"  موبایل& :"_s, 50},
        {editor->Addr1_EDT, u"  آدر&س1 :"_s, 300},
        {editor->Addr2_EDT, u"  آد&رس2 :"_s, 300},
        {editor->PostCode_EDT, u"  کد پستی :"_s, 10},
        {editor->Major_EDT, u"  رشته تح&صیلی :"_s, 50},
        {editor->Email_EDT, u"  پست الکترونی&کی :"_s, 50},
    };
    const auto labelOf = [&](QWidget *input) -> QString {
        for (auto *label : editor->findChildren<QLabel *>())
            if (label->buddy() == input)
                return label->text();
        return {};
    };
    for (const TRow &row : rows) {
        EXPECT_EQ(labelOf(row.input), row.caption) << row.input->objectName().toStdString();
        EXPECT_EQ(row.input->MaxLength(), row.length) << row.input->objectName().toStdString();
    }
    const QList<std::pair<TSmartComboBox_ZLM *, QString>> choices = {
        {editor->Sex_CMB, u"  &جنسیت :"_s},
        {editor->StaffGroup_CMB, u"  &گروه کارمند :"_s},
        {editor->IsMarried_CMB, u"  و&ضعیت تاهل :"_s},
        {editor->EmploymentTitle_CMB, u"  استخدام :"_s},
        {editor->FiscalExemption_CMB, u"  معافیت مالی :"_s},
        {editor->Insurance_CMB, u"  بیمه :"_s},
        {editor->Category_CMB, u"  رسته :"_s},
        {editor->National_CMB, u"  ملیت :"_s},
        {editor->Degree_CMB, u"  م&درک تحصیلی :"_s},
        {editor->Military_CMB, u"  وضعیت ن&ظام وظیفه :"_s},
    };
    for (const auto &[choice, caption] : choices)
        EXPECT_EQ(labelOf(choice), caption) << choice->objectName().toStdString();
    const QStringList pages = {u"عمومی"_s, u"پرسنلی"_s, u"تکمیلی"_s, u"خانواده"_s};
    for (int page = 0; page < pages.size(); ++page) {
        EXPECT_EQ(editor->Staff_PC->tabText(page), pages[page]);
        EXPECT_EQ(editor->Staff_PC->widget(page)->objectName(), u"ts%1"_s.arg(page + 1));
    }
    EXPECT_EQ(editor->LeaveDate_LBL->objectName(), "LeaveDate_LBL");
}

// Every column goes from the screen to the table and back.
TEST_F(StaffEditor, EveryInputIsStoredAndShownAgain)
{
    const auto editor = newEditor();
    const int result = open(*editor, [&] {
        choose(*editor, editor->StaffGroup_CMB, 2);
        type(*editor, editor->Name_EDT, u"علي"_s);
        type(*editor, editor->LastName_EDT, u"O'Brien کاشانی"_s);
        type(*editor, editor->NationalCode_EDT, u"۰۰۸۴۵۷۵۹۴۸"_s);
        choose(*editor, editor->Sex_CMB, 1);
        type(*editor, editor->BirthPlace_EDT, u"یزد"_s);
        type(*editor, editor->IssuePlace_EDT, u"تفت"_s);
        type(*editor, editor->IDNumber_EDT, "1234");
        type(*editor, editor->FatherName_EDT, u"حسن"_s);
        type(*editor, editor->BirthDate_EDT, "13700130");
        type(*editor, editor->IssueDate_EDT, "1370/02/05");
        choose(*editor, editor->IsMarried_CMB, 1);
        type(*editor, editor->CoDate_EDT, "1403/12/30");
        choose(*editor, editor->EmploymentTitle_CMB, 4);
        choose(*editor, editor->FiscalExemption_CMB, 2);
        type(*editor, editor->PersonnelCode_EDT, "P-77");
        type(*editor, editor->Job_EDT, u"حسابدار"_s);
        type(*editor, editor->BankTitle_EDT, u"ملي"_s);
        choose(*editor, editor->Insurance_CMB, 1);
        type(*editor, editor->Comment_EDT, u"شرح"_s);
        tick(*editor, editor->LeaveDate_CHK);
        type(*editor, editor->LeaveDate_EDT, "1404/05/01");
        choose(*editor, editor->Category_CMB, 18);
        choose(*editor, editor->National_CMB, 1);
        type(*editor, editor->CardNumber_EDT, "C-1");
        type(*editor, editor->Department_EDT, u"دفتر"_s);
        type(*editor, editor->AccountNumber_EDT, "0101-22");
        type(*editor, editor->InsuranceNumber_EDT, "0012345678");
        type(*editor, editor->JobCode_EDT, "000125");
        type(*editor, editor->JobGroup_EDT, u"اداری"_s);
        type(*editor, editor->Tel1_EDT, "021-88001122");
        type(*editor, editor->Tel2_EDT, "02188");
        type(*editor, editor->Fax_EDT, "88");
        type(*editor, editor->Mobile_EDT, "0912");
        type(*editor, editor->Addr1_EDT, u"خیابان"_s);
        type(*editor, editor->Addr2_EDT, u"کوچه"_s);
        type(*editor, editor->PostCode_EDT, "1234567890");
        choose(*editor, editor->Degree_CMB, 5);
        choose(*editor, editor->Military_CMB, 6);
        type(*editor, editor->Major_EDT, u"حسابداری"_s);
        type(*editor, editor->Email_EDT, "a@b.ir");
        EXPECT_FALSE(editor->IsSaved());
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(
        db.rows(
            "select Code,StaffGroup,Name,LastName,NationalID,Sex,BirthPlace,IssuePlace,IDNumber,FatherName,"
            "BirthDate,IssueDate,IsMarried,CoDate,Employment,FiscalExemption,PersonnelCode,Job,BankTitle,"
            "Insurance,Comment,LeaveDate,Category,[National],CardNumber,Department,AccountNumber,"
            "InsuranceNumber,JobCode,JobGroup,Tel1,Tel2,Fax,Mob,Add1,Add2,PostCode,Degree,Military,Major,"
            "Email from Staff"),
        u"1|2|علي|O'Brien کاشانی|0084575948|1|یزد|تفت|1234|حسن|1370/01/30|1370/02/05|1|1403/12/30|4|2|P-77|"
        "حسابدار|ملي|1|شرح|1404/05/01|18|1|C-1|دفتر|0101-22|0012345678|000125|اداری|021-88001122|02188|88|0912|"
        "خیابان|کوچه|1234567890|5|6|حسابداری|a@b.ir"_s);
    EXPECT_EQ(db.rows("select CreatedDate,UserCreated,ModifiedDate,ModifiedTime,UserModified from Staff"),
              NowDate() + u"|clerk (مریم کاتب)|||"_s);
    EXPECT_TRUE(QRegularExpression("^\\d\\d:\\d\\d$").match(value("CreatedTime", 1)).hasMatch());
    EXPECT_EQ(locks(), "");

    const auto again = editorOf(1);
    open(*again, [&] {
        EXPECT_TRUE(again->Code_EDT->isReadOnly());
        EXPECT_EQ(again->focusWidget(), again->Name_EDT);
        EXPECT_EQ(again->StaffGroup_CMB->Code(), 2);
        EXPECT_EQ(again->LastName_EDT->GetText(), u"O'Brien کاشانی"_s);
        EXPECT_EQ(again->Sex_CMB->currentIndex(), 1);
        EXPECT_EQ(again->BirthDate_EDT->GetText(), "1370/01/30");
        EXPECT_EQ(again->CoDate_EDT->GetText(), "1403/12/30");
        EXPECT_TRUE(again->LeaveDate_CHK->isChecked());
        EXPECT_TRUE(again->LeaveDate_EDT->isEnabled());
        EXPECT_EQ(again->LeaveDate_EDT->GetText(), "1404/05/01");
        EXPECT_EQ(again->Category_CMB->currentIndex(), 18);
        EXPECT_EQ(again->National_CMB->currentIndex(), 1);
        EXPECT_EQ(again->Military_CMB->currentIndex(), 6);
        EXPECT_EQ(again->Email_EDT->GetText(), "a@b.ir");
        EXPECT_TRUE(again->Staff_PC->isTabVisible(3));
        EXPECT_EQ(locks(), "1|806|1");
        EXPECT_TRUE(again->IsSaved());
        for (int page = 0; page < 4; ++page) {
            press(*again, Qt::Key(Qt::Key_1 + page), Qt::ControlModifier);
            Keys::picture(again.get(), u"staff_edit_%1"_s.arg(page + 1));
        }
        press(*again, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(db.rows("select Name,LeaveDate,Military,ModifiedDate,UserModified from Staff"),
              u"علي|1404/05/01|6|"_s + NowDate() + u"|clerk (مریم کاتب)"_s);
}

TEST_F(StaffEditor, ClearingTheLeaveDateBoxStoresNoLeaveDate)
{
    add(5, "five", "five", "LeaveDate='1404/05/01'");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        tick(*editor, editor->LeaveDate_CHK);
        EXPECT_FALSE(editor->LeaveDate_EDT->isEnabled());
        EXPECT_FALSE(editor->LeaveDate_LBL->isEnabled());
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(value("LeaveDate", 5), "");
}

TEST_F(StaffEditor, LeavingTheCodeWithAnEmptyCardNumberCopiesTheCode)
{
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        type(*editor, editor->CardNumber_EDT, {});
        turnTo(*editor, editor->Code_EDT);
        editor->Code_EDT->setFocus();
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(editor->CardNumber_EDT->GetText(), "1");
        type(*editor, editor->CardNumber_EDT, "77");
        turnTo(*editor, editor->Code_EDT);
        editor->Code_EDT->setFocus();
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(editor->CardNumber_EDT->GetText(), "77");
        press(*editor, Qt::Key_Escape);
    });
}

TEST_F(StaffEditor, ATypedCodeTakesItsLockAndTheWorkingRowsAlong)
{
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        addMember(1, 1, "child", "tmpStaffFamily");
        Staff_DM->FillDataFamilyList(1);
        type(*editor, editor->Code_EDT, "40");
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(locks(), "40|806|1");
        EXPECT_EQ(working(), "1|40|child");
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.rows("select Code, CardNumber from Staff"), "40|1");
    EXPECT_EQ(saved(), "1|40|child");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

// Esc in the code's input leaves it without the code being taken.
TEST_F(StaffEditor, ClosingOnACodeThatWasNotTakenLeavesItsRowsToTheirEditor)
{
    add(5, "five", "five", "IsMarried=1");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('5',806,2)");
    addMember(1, 5, "typed elsewhere", "tmpStaffFamily");
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        addMember(2, 6, "own", "tmpStaffFamily");
        type(*editor, editor->Code_EDT, "5");
        press(*editor, Qt::Key_Escape);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(working(), "1|5|typed elsewhere");
    EXPECT_EQ(locks(), "5|806|2");
}

TEST_F(StaffEditor, ATypedCodeLeavesRoomForTheNextOnes)
{
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        type(*editor, editor->Code_EDT, "2147483647");
        EXPECT_EQ(editor->Code_EDT->GetText(), "214748364");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffEditor, ATypedCodeThatIsTakenComesBack)
{
    add(5, "five", "five");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('30',806,2)");
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        EXPECT_EQ(editor->Code_EDT->GetText(), "31");
        type(*editor, editor->Code_EDT, "5");
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|کارمندان)"_s));
        EXPECT_EQ(editor->Code_EDT->GetText(), "31");
        type(*editor, editor->Code_EDT, "30");
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(کارمند)"_s));
        EXPECT_EQ(editor->Code_EDT->GetText(), "31");
        type(*editor, editor->Code_EDT, {});
        press(*editor, Qt::Key_Tab);
        EXPECT_EQ(editor->Code_EDT->GetText(), "31");
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_EQ(locks(), "30|806|2\n31|806|1");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(locks(), "30|806|2");
}

TEST_F(StaffEditor, SavingAndGoingOnStartsAClearedEmployee)
{
    const auto editor = newEditor(2);
    open(*editor, [&] {
        fill(*editor);
        type(*editor, editor->InsuranceNumber_EDT, "12");
        type(*editor, editor->Comment_EDT, "text");
        tick(*editor, editor->LeaveDate_CHK);
        type(*editor, editor->LeaveDate_EDT, "1404/05/01");
        press(*editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
        EXPECT_EQ(editor->Code_EDT->GetText(), "2");
        EXPECT_EQ(editor->CardNumber_EDT->GetText(), "2");
        EXPECT_TRUE(editor->Name_EDT->IsEmpty());
        EXPECT_TRUE(editor->Comment_EDT->IsEmpty());
        EXPECT_FALSE(editor->LeaveDate_CHK->isChecked());
        EXPECT_EQ(editor->StaffGroup_CMB->Code(), 2);
        EXPECT_EQ(editor->focusWidget(), editor->Name_EDT);
        EXPECT_EQ(locks(), "2|806|1");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(db.rows("select Code, Name from Staff"), u"1|رضا"_s);
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffEditor, ASavedEmployeeThatStaysOpenIsEditedFromThenOn)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        press(*editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(editor->Mode(), fmEdit);
        EXPECT_TRUE(editor->Code_EDT->isReadOnly());
        type(*editor, editor->Name_EDT, u"حسن"_s);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.rows("select Code, Name from Staff"), u"1|حسن"_s);
}

TEST_F(StaffEditor, AnEmployeeHeldByAnotherWorkstationDoesNotOpen)
{
    add(5, "five", "five");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('5',806,2)");
    const auto editor = editorOf(5);
    EXPECT_EQ(editor->exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(کارمند)"_s));
}

TEST_F(StaffEditor, AnEmployeeThatIsGoneDoesNotOpen)
{
    const auto editor = editorOf(5);
    EXPECT_EQ(editor->exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList("MsgRecordGone()"));
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffEditor, AnEmployeeDeletedByAnotherWorkstationWhileOpenIsNotSavedAndStaysAsTyped)
{
    add(5, "five", "five");
    const auto editor = editorOf(5);
    messages.answer({No});
    open(*editor, [&] {
        type(*editor, editor->Name_EDT, "typed");
        db.run("delete from Staff where Code=5");
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        EXPECT_EQ(editor->Name_EDT->GetText(), "typed");
        EXPECT_FALSE(editor->IsSaved());
        EXPECT_FALSE(db.connection().InTransaction());
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(db.text("select count(*) from Staff"), "0");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffEditor, LongTextsAreCutAtTheInputsWidths)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        type(*editor, editor->Comment_EDT, QString(51, u'ش'));
        EXPECT_EQ(editor->Comment_EDT->GetText().size(), 50);
        type(*editor, editor->Job_EDT, QString(50, u'ج'));
        EXPECT_EQ(editor->Job_EDT->GetText().size(), 50);
        messages.answer({Yes});
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(value("Comment", 1), QString(50, u'ش'));
    EXPECT_EQ(value("Job", 1), QString(20, u'ج')); // the column is narrower than the input
}

TEST_F(StaffEditor, ALongTextIsCutWhenItIsPastedAndTheUserIsTold)
{
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        turnTo(*editor, editor->Comment_EDT);
        editor->Comment_EDT->setFocus();
        QApplication::clipboard()->setText(QString(5000, u'ش') + '\n' + QString(5000, u'ر'));
        press(*editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor->Comment_EDT->GetText(), QString(50, u'ش'));
        EXPECT_TRUE(Keys::waitFor([&] { return messages.last().control == editor->Comment_EDT; }));
        EXPECT_TRUE(messages.take().value(0).startsWith(u"ShowTooltipMessage(متن از 50 نویسه بلندتر بود"_s));
        press(*editor, Qt::Key_Escape);
    });
}

TEST_F(StaffEditor, TheRightsAreAskedBeforeItOpens)
{
    SeatUser(TUserInfo{7, "other", "other", false, true});
    EXPECT_TRUE(newEditor()->NotShowable);
    EXPECT_TRUE(editorOf(5)->NotShowable);
    db.run("insert into UserRight(UserCode,SoftwarePart,Permission) values(7,806,1)");
    EXPECT_FALSE(newEditor()->NotShowable);
    EXPECT_TRUE(editorOf(5)->NotShowable);
}

TEST_F(StaffEditor, EnterGoesThroughTheFirstPageInItsOrder)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        editor->Code_EDT->setFocus();
        const QList<QWidget *> order = {
            editor->Code_EDT,         editor->StaffGroup_CMB, editor->Name_EDT,       editor->LastName_EDT,
            editor->NationalCode_EDT, editor->IDNumber_EDT,   editor->Sex_CMB,        editor->FatherName_EDT,
            editor->BirthPlace_EDT,   editor->BirthDate_EDT,  editor->IssuePlace_EDT, editor->IssueDate_EDT,
            editor->IsMarried_CMB,    editor->Picture_Get,    editor->FingerPrint_Get};
        for (QWidget *input : order) {
            EXPECT_EQ(editor->focusWidget(), input) << input->objectName().toStdString();
            if (input == editor->Picture_Get)
                Keys::picture(editor.get(), "staff_picture_focus");
            press(*editor, Qt::Key_Return);
        }
    });
}

TEST_F(StaffEditor, ChangesAreAskedAboutOnClosing)
{
    const auto editor = newEditor();
    messages.answer({Cancel, No});
    open(*editor, [&] {
        type(*editor, editor->Name_EDT, "x");
        press(*editor, Qt::Key_Escape);
        EXPECT_TRUE(editor->isVisible());
        press(*editor, Qt::Key_Escape);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(messages.take(), QStringList({"MsgNotSaved()", "MsgNotSaved()"}));
}

} // namespace
