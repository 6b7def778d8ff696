#include "staff/StaffGet_UNT.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/ListPlace.h"
#include "staff/StaffFamily_GetDetil_UNT.h"
#include "staff/Staff_DM_UNT.h"

#include <QLabel>
#include <QScopedValueRollback>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int familyPage = 3;
constexpr int single = 0;
constexpr int married = 1;
constexpr int firstRealGroup = 1;

} // namespace

TStaffGet_FRM::TStaffGet_FRM(TSoftwarePart part, bool flag, const QString &text)
    : TRecordGet(part, flag, text)
{
    build();
}

TStaffGet_FRM::TStaffGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TRecordGet(part, code, mode, flag)
{
    build();
}

void TStaffGet_FRM::Picture_GetPicInsert_BTNClick()
{
    Picture_Get->PicInsert();
    SetIsSaved(false);
}

void TStaffGet_FRM::Picture_GetPicDelete_BTNClick()
{
    Picture_Get->PicDelete();
    SetIsSaved(false);
}

void TStaffGet_FRM::FingerPrint_GetPicInsert_BTNClick()
{
    FingerPrint_Get->PicInsert();
    SetIsSaved(false);
}

void TStaffGet_FRM::FingerPrint_GetPicDelete_BTNClick()
{
    FingerPrint_Get->PicDelete();
    SetIsSaved(false);
}

QString TStaffGet_FRM::LockedEntityWord() const
{
    return u"کارمند"_s;
}

// The lock on the code does not tell: an administrator may have freed it while the line was lost. Full names do, since
// no two employees share one.
QVariant TStaffGet_FRM::SentRecord()
{
    TStaff_Mapper stored;
    const bool own = Sent && Store.read(Identifier(), stored) &&
                     stored._Name == AsStored(u"Staff"_s, u"Name"_s, Sent->_Name) &&
                     stored._LastName == AsStored(u"Staff"_s, u"LastName"_s, Sent->_LastName);
    return own ? Identifier() : QVariant();
}

void TStaffGet_FRM::fillGroups(int code)
{
    const TNamedCodes groups = Staff_DM->StaffGroup_Fill();
    StaffGroup_CMB->clear();
    for (const TNamedCode &group : groups)
        StaffGroup_CMB->AddItem(group.name, group.code);
    if (!StaffGroup_CMB->SetCode(code))
        StaffGroup_CMB->setCurrentIndex(0);
}

void TStaffGet_FRM::ClearRecord()
{
    const QScopedValueRollback showing(m_showing, true);
    Stored = {};
    m_person = {};
    m_saveFailed = false;
    m_savedMembers = 0;
    Staff_DM->Family_GetByStaffCode(Identifier());
    for (int page = 0; page < Staff_PC->count(); ++page) {
        for (auto *edit : Staff_PC->widget(page)->findChildren<TSmartEdit_ZLM *>())
            edit->Clear();
        for (auto *choice : Staff_PC->widget(page)->findChildren<TSmartComboBox_ZLM *>())
            choice->setCurrentIndex(0);
    }
    fillGroups(Parameter(0).toInt());
    Code_EDT->setReadOnly(false);
    Code_EDT->SetValue(Identifier());
    CardNumber_EDT->SetText(Identifier().toString());
    PersonnelCode_EDT->SetText(u"0"_s);
    InsuranceNumber_EDT->SetText(u"0"_s);
    // Family rows that were taken up must be seen.
    showMarried(!Staff_DM->Family_QUR->isEmpty());
    LeaveDate_CHK->setChecked(false);
    leaveDateChanged();
    Picture_Get->Clear();
    FingerPrint_Get->Clear();
    SetIsSaved(true);
    Staff_PC->setCurrentIndex(0);
}

QWidget *TStaffGet_FRM::FirstInput()
{
    return Mode() == fmNew && Parameter(0).toInt() == firstRealGroup ? static_cast<QWidget *>(StaffGroup_CMB)
                                                                     : Name_EDT;
}

void TStaffGet_FRM::LoadRecord()
{
    Stored = {};
    m_person = {};
    TRecordGet::LoadRecord();
    Staff_DM->Perinf_Get(m_person);
    m_saveFailed = false;
}

void TStaffGet_FRM::ShowRecord()
{
    const QScopedValueRollback showing(m_showing, true);
    const TStaff_Mapper &staff = Stored;
    m_savedMembers = 0;
    fillGroups(staff._StaffGroup);
    Code_EDT->setReadOnly(true);
    m_inputs.show(staff);
    LeaveDate_CHK->setChecked(!staff._LeaveDate.isEmpty());
    leaveDateChanged();

    Picture_Get->ShowStored(Staff_DM->StaffGet_QUR->value("Picture"));
    FingerPrint_Get->ShowStored(Staff_DM->StaffGet_QUR->value("FingerPrint"));
    if (RecoveryTaken()) {
        Staff_DM->FillDataFamilyList(staff._Code);
    } else {
        // This editor holds the code's lock: rows that nobody holds would come in beside the saved ones.
        Staff_DM->ClearDataTMPFamily(staff._Code);
        Staff_DM->Family_GetByStaffCode(staff._Code);
    }
    // Family rows that were taken up must be seen, and an employee who has them is married.
    showMarried(staff._IsMarried || (RecoveryTaken() && !Staff_DM->Family_QUR->isEmpty()));
    SetIsSaved(true);
}

void TStaffGet_FRM::BeforeClose()
{
    if (CodeWasLost())
        return;
    // The code in its input, but for one that was typed and not taken: its rows are somebody else's.
    Staff_DM->ClearDataTMPFamily(Identifier());
}

void TStaffGet_FRM::codeLeft()
{
    takeTypedCode();
    if (CardNumber_EDT->IsEmpty())
        CardNumber_EDT->SetText(Code_EDT->GetText());
}

bool TStaffGet_FRM::takeTypedCode()
{
    if (code() == Identifier().toInt())
        return true;
    const bool taken = TakeTypedCode(Code_EDT, u"کارمندان"_s);
    if (Mode() != fmNew)
        Code_EDT->setReadOnly(true);
    return taken;
}

void TStaffGet_FRM::showMarried(bool isMarried)
{
    const QScopedValueRollback showing(m_showing, true);
    IsMarried_CMB->setCurrentIndex(isMarried ? married : single);
    Staff_PC->setTabVisible(familyPage, isMarried);
}

void TStaffGet_FRM::marriedChanged()
{
    if (m_showing)
        return;
    const bool isMarried = IsMarried_CMB->currentIndex() == married;
    if (!isMarried && Staff_DM->Family_QUR->active() && !Staff_DM->Family_QUR->isEmpty()) {
        ShowSmartMessage(ntSingleWithFamily, IsMarried_CMB, this, noteTime);
        showMarried(true);
        return;
    }
    showMarried(isMarried);
}

void TStaffGet_FRM::leaveDateChanged()
{
    // The check of the dates looks at this one too, and nobody can correct it behind a clear box.
    if (!LeaveDate_CHK->isChecked() && LeaveDate_EDT->WrongNote())
        LeaveDate_EDT->Clear();
    LeaveDate_LBL->setEnabled(LeaveDate_CHK->isChecked());
    LeaveDate_EDT->setEnabled(LeaveDate_CHK->isChecked());
}

void TStaffGet_FRM::rereadFamily(const QVariant &id)
{
    const TListPlace place(*Staff_DM->Family_QUR, u"ID"_s);
    Staff_DM->FillDataFamilyList(code());
    if (id.isNull() || !Staff_DM->Family_QUR->locate("ID", id))
        place.restore(*Staff_DM->Family_QUR);
}

void TStaffGet_FRM::addRow()
{
    if (!RowsAreOwn())
        return;
    TStaffFamily_GetDetil_FRM member(int(Part()), code());
    if (member.exec() != QDialog::Accepted)
        return;
    SetIsSaved(false);
    Guarded([&] { rereadFamily(member.RowId()); });
}

void TStaffGet_FRM::editRow()
{
    if (!RowsAreOwn())
        return;
    const QVariant id = Staff_DM->Family_QUR->value("ID");
    TStaffFamily_GetDetil_FRM member(int(Part()), code(), fmEdit, id);
    if (member.exec() == QDialog::Accepted)
        SetIsSaved(false);
    Guarded([&] { rereadFamily(member.RowId()); });
}

void TStaffGet_FRM::deleteRow()
{
    if (!RowsAreOwn() || !MsgDeleteRow(m_family->Grid()->NameOfRow(Staff_DM->Family_QUR->position())))
        return;
    const QVariant id = Staff_DM->Family_QUR->value("ID");
    if (!Staff_DM->Family_Del(id.toString())) {
        if (const auto &error = DM.ADOConnection1->lastError())
            MsgDatabaseError(*error);
        try {
            Staff_DM->Family_GetByID(id);
            if (!Staff_DM->FamilyGet_QUR->isEmpty())
                return;
            // It is done, though no answer came.
        } catch (const TDatabaseError &) {
            return; // the line is still gone, and the user was told
        }
    }
    Guarded([&] {
        SetIsSaved(false);
        rereadFamily({});
    });
}
