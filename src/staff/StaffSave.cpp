// What the staff editor checks before a save, and the save.

#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Picturefunctions_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"

using namespace Qt::Literals::StringLiterals;

bool TStaffGet_FRM::Validate()
{
    // The order is the users': they are sent from page to page as they always were.
    return takeTypedCode() && checkGroupChosen() && RequireInput(Name_EDT, u"نام"_s) &&
           RequireInput(LastName_EDT, u"نام خانوادگي"_s) && checkFullName() && CheckInput(NationalCode_EDT) &&
           checkLeaveAfterEmployment() && CheckInput(PostCode_EDT) && CheckInput(CoDate_EDT) &&
           CheckInput(LeaveDate_EDT) && CheckInput(BirthDate_EDT) && checkGroupCode() &&
           checkPersonnelCode() && checkRepeated(CardNumber_EDT, u"شماره کارت"_s, m_staff._CardNumber) &&
           checkRepeated(InsuranceNumber_EDT, u"کد بيمه"_s, m_staff._InsuranceNumber) &&
           checkRepeated(NationalCode_EDT, u"کد ملي"_s, m_staff._NationalID) && CheckInput(Email_EDT) &&
           checkOrders() && checkLeaveDateGiven() && CheckInput(IssueDate_EDT);
}

bool TStaffGet_FRM::checkGroupChosen()
{
    if (StaffGroup_CMB->currentIndex() != 0)
        return true;
    NotSaveable(u"کليه کارمندان"_s, u"کارمندی"_s, StaffGroup_CMB);
    FocusInput(StaffGroup_CMB);
    return false;
}

bool TStaffGet_FRM::checkFullName()
{
    Staff_DM->Staff_GetCode(Name_EDT->GetText(), LastName_EDT->GetText(), code());
    const bool found = !Staff_DM->Temp_QUR->isEmpty();
    if (!found && Name_EDT->GetText() == m_staff._Name && LastName_EDT->GetText() == m_staff._LastName)
        return true;
    return checkTwin({{"Name", Name_EDT->GetText()}, {"LastName", LastName_EDT->GetText()}}, found, Name_EDT,
                     u"نام"_s, u"نام خانوادگي"_s);
}

bool TStaffGet_FRM::checkTwin(const QList<TUniqueText> &texts, bool found, TSmartEdit_ZLM *input,
                              const QString &word, const QString &entity)
{
    const auto twin = Staff_DM->Staff_Twin(texts, code());
    if (!found && !twin)
        return true;
    MsgRepeatedField(word, entity, input, this, twin ? TwinText(*twin) : QString());
    FocusInput(input);
    return false;
}

bool TStaffGet_FRM::checkLeaveAfterEmployment()
{
    if (!LeaveDate_CHK->isChecked() || LeaveDate_EDT->GetText() >= CoDate_EDT->GetText())
        return true;
    FocusInput(LeaveDate_EDT);
    ShowTooltipMessage(u"تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد."_s, LeaveDate_EDT, noteTime, 4,
                       QColor(192, 192, 192), 0, 250);
    return false;
}

bool TStaffGet_FRM::checkGroupCode()
{
    if (StaffGroup_CMB->Code() != 0)
        return true;
    NotSaveable(u"کليه کارمندان"_s, u"کارمندي"_s, StaffGroup_CMB);
    FocusInput(StaffGroup_CMB);
    return false;
}

bool TStaffGet_FRM::checkPersonnelCode()
{
    const QString typed = PersonnelCode_EDT->GetText();
    if (typed.isEmpty())
        return true;
    QueryTools::open(Staff_DM->Temp_QUR,
                     TStatement("select PersonnelCode from Staff where PersonnelCode=").text(typed));
    if (typed == "0"_L1 || typed == m_staff._PersonnelCode)
        return true;
    return checkTwin({{"PersonnelCode", typed}}, !Staff_DM->Temp_QUR->isEmpty(), PersonnelCode_EDT,
                     u"کد پرسنلي"_s, u"کارمندان"_s);
}

bool TStaffGet_FRM::checkRepeated(TSmartEdit_ZLM *input, const QString &word, const QString &loaded)
{
    const QString typed = input->GetText();
    if (typed.isEmpty())
        return true;
    const char *column = "NationalID";
    if (input == CardNumber_EDT) {
        Staff_DM->Staff_GetCardNumber(typed);
        column = "CardNumber";
    } else if (input == InsuranceNumber_EDT) {
        Staff_DM->Staff_GetInsuranceNumbber(typed);
        column = "InsuranceNumber";
    } else {
        Staff_DM->Staff_GetNationallID(typed);
    }
    return typed == loaded || checkTwin({{QString::fromLatin1(column), typed}},
                                        !Staff_DM->Temp_QUR->isEmpty(), input, word, u"کارمندان"_s);
}

// Without a date nothing would be stored of the box.
bool TStaffGet_FRM::checkLeaveDateGiven()
{
    return !LeaveDate_CHK->isChecked() || RequireInput(LeaveDate_EDT, u"تاریخ ترک کار"_s);
}

bool TStaffGet_FRM::checkOrders()
{
    QueryTools::open(
        Staff_DM->Temp_QUR,
        TStatement(" SELECT ISNULL(MIN(DoDate), 0) AS DoDateMin FROM Recruitment  WHERE StaffCode = ")
            .integer(code()));
    const QString earliest = Staff_DM->Temp_QUR->asString("DoDateMin");
    if (earliest == "0"_L1 || CoDate_EDT->GetText() <= earliest)
        return true;
    ShowSmartMessage(u"تاریخ استخدام نمی تواند بعد از تاریخ حکم کارگزینی باشد"_s,
                     u"کوچکترین تاریخ حکم کارگزینی که برای این کارمند ثبت شده است: "_s + earliest, miError);
    FocusInput(CoDate_EDT);
    return false;
}

bool TStaffGet_FRM::SaveRecord()
{
    const bool newRecord = Mode() == fmNew;
    const int staffCode = code();
    if (m_saveFailed) {
        // A save that failed was rolled back, but not what the query remembers of the row.
        TStaff_Mapper stored;
        Staff_DM->Staff_GetById(staffCode, stored);
    }
    m_saveFailed = true;
    // Outside the transaction, as it always was: a save that fails later leaves the employee without saved family
    // rows, while the working rows stay until the editor closes.
    if (!newRecord) {
        m_savedMembers = qMax(m_savedMembers, Staff_DM->Family_Count(staffCode));
        Staff_DM->ClearDataFamily(staffCode);
    }
    DM.ADOConnection1->BeginTrans();
    m_sent = typedStaff(newRecord);
    const bool written = newRecord ? Staff_DM->Staff_Insert(m_sent) : Staff_DM->Staff_Update(m_sent);
    bool pictures = true;
    try {
        pictures = savePicture(Picture_Get, u"Picture"_s) && savePicture(FingerPrint_Get, u"FingerPrint"_s);
    } catch (const TDatabaseError &) {
        if (written)
            throw;
    }
    if (!written || !pictures) {
        MSGFinishedNotSuccessfully(u"ذخيره سازي "_s, u"ذخيره سازي"_s);
        return false;
    }
    Staff_DM->Family_Insert(staffCode);
    if (newRecord)
        fillPerson();
    DM.ADOConnection1->CommitTrans();
    m_saveFailed = false;
    m_savedMembers = 0;
    SetIdentifier(staffCode);
    MSGCompeletedSuccessfully(u"ذخيره سازي "_s);
    return true;
}

/// Whether a save that did not come to its end took the saved family rows away. A line that is gone does not tell: they
/// may be.
bool TStaffGet_FRM::familyIsGone()
{
    if (m_savedMembers == 0)
        return false;
    try {
        return Staff_DM->Family_Count(code()) == 0;
    } catch (const TDatabaseError &) {
        return true;
    }
}

void TStaffGet_FRM::SaveFailed()
{
    if (familyIsGone())
        ShowSmartMessage(
            u"این کارمند %1 سطر خانواده ثبت شده داشت که پیش از شکست ذخیره پاک شد؛ اکنون سطر ثبت شده ای ندارد."_s
                .arg(m_savedMembers),
            u"سطرهای صفحه خانواده هنوز اینجاست؛ دوباره ذخیره کنید تا ثبت شود."_s, miWarning);
}

bool TStaffGet_FRM::MayDiscard()
{
    if (!familyIsGone() || Staff_DM->Family_QUR->isEmpty())
        return true;
    const TAnswer answer = ShowSmartMessage(
        u"سطرهای خانواده ثبت شده این کارمند با ذخیره ناموفق پاک شده است و تنها سطرهای همین صفحه باقی است."
        u"\nاین سطرها برای بازیابی نگه داشته شود؟ (با «بله» هنگام باز کردن دوباره این کارمند پیشنهاد می شود؛ با «خیر» خانواده او از دست می رود.)"_s,
        TMessageButtons::YesNoCancel, TAnswer::Yes);
    if (answer == TAnswer::Yes)
        KeepRows();
    return answer != TAnswer::Cancel;
}

bool TStaffGet_FRM::savePicture(const TPic_Get *picture, const QString &column)
{
    if (picture->HasFile())
        return SaveJpegToTable(Staff_DM->StaffGet_QUR, column, picture->FileName());
    if (picture->IsEmpty())
        DelJpegToTable(Staff_DM->StaffGet_QUR, column);
    return true;
}

TStaff_Mapper TStaffGet_FRM::typedStaff(bool newRecord) const
{
    TStaff_Mapper staff = m_staff;
    m_inputs.read(staff);
    staff._StaffGroup = StaffGroup_CMB->Code();
    if (!LeaveDate_CHK->isChecked())
        staff._LeaveDate.clear();

    const QString user = UserInfo.Name + u" ("_s + UserInfo.FullName + u')';
    if (newRecord) {
        staff._CreatedTime = NowTime();
        staff._CreatedDate = NowDate();
        staff._UserCreated = user;
    } else {
        staff._ModifiedTime = NowTime();
        staff._ModifiedDate = NowDate();
        staff._UserModified = user;
    }
    return staff;
}

void TStaffGet_FRM::fillPerson()
{
    m_person._Name = Name_EDT->GetText();
    m_person._LName = LastName_EDT->GetText();
    m_person._FullName = m_person._Name + u' ' + m_person._LName;
    m_person._Tel1 = Tel1_EDT->GetText();
    m_person._Tel2 = Tel2_EDT->GetText();
    m_person._Addr1 = Addr1_EDT->GetText();
    m_person._Addr2 = Addr2_EDT->GetText();
    m_person._Fax = Fax_EDT->GetText();
    m_person._Email = Email_EDT->GetText();
    m_person._Mobile = Mobile_EDT->GetText();
}
