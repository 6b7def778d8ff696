// What the staff editor checks before a save, and the save.

#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Picturefunctions_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "host/database/ReadAhead.h"
#include "staff/StaffFields.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"

using namespace Qt::Literals::StringLiterals;

bool TStaffGet_FRM::Validate()
{
    // The order is the users': they are sent from page to page as they always were.
    if (!takeTypedCode())
        return false;
    const TReadAhead ahead(*DM.ADOConnection1, staffReads(subject()));
    return std::ranges::all_of(staffRules(),
                               [this](const auto &rule) { return Keeps(rule, staffFields(), subject()); });
}

TStaffSubject TStaffGet_FRM::subject() const
{
    const QVariant firstGroup = StaffGroup_CMB->itemData(0);
    return {*Staff_DM, Typed(), Stored, firstGroup.isValid() ? firstGroup.toInt() : -1,
            LeaveDate_CHK->isChecked()};
}

bool TStaffGet_FRM::SaveRecord()
{
    const bool newRecord = Mode() == fmNew;
    const int staffCode = code();
    if (m_saveFailed) {
        // A save that failed was rolled back, but not what the query remembers of the row.
        TStaff_Mapper stored;
        Store.read(staffCode, stored);
    }
    m_saveFailed = true;
    // Outside the transaction, as it always was: a save that fails later leaves the employee without saved family
    // rows, while the working rows stay until the editor closes.
    if (!newRecord) {
        m_savedMembers = qMax(m_savedMembers, Staff_DM->Family_Count(staffCode));
        Staff_DM->ClearDataFamily(staffCode);
    }
    DM.ADOConnection1->BeginTrans();
    Sent = Typed();
    mark(*Sent, newRecord);
    const bool written = newRecord ? Staff_DM->Staff_Insert(*Sent) : Staff_DM->Staff_Update(*Sent);
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

TStaff_Mapper TStaffGet_FRM::Typed() const
{
    TStaff_Mapper staff = TRecordGet::Typed();
    staff._StaffGroup = StaffGroup_CMB->Code();
    if (!LeaveDate_CHK->isChecked())
        staff._LeaveDate.clear();
    return staff;
}

void TStaffGet_FRM::mark(TStaff_Mapper &staff, bool newRecord)
{
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
