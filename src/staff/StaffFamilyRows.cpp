#include "staff/StaffFamilyRows.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "staff/Staff_DM_UNT.h"

QStringList TStaffFamilyRows::LeftCodes()
{
    return Staff_DM->StaffFamily_GetRecoverysCode(cspStaff, IniOptions.Com_Index);
}

int TStaffFamilyRows::Count(const QString &code)
{
    return Staff_DM->TmpFamily_Count(code);
}

bool TStaffFamilyRows::AreLeft(const QString &code)
{
    return Staff_DM->StaffFamily_IsRecordHasRecovery(code, cspStaff, IniOptions.Com_Index);
}

void TStaffFamilyRows::TakeUp(const QString &leftCode, const QString &newCode)
{
    Staff_DM->StaffFamily_UpdateTmp(leftCode, newCode);
}

void TStaffFamilyRows::Discard(const QString &code)
{
    Staff_DM->StaffFamily_DelTmp(code);
}

void TStaffFamilyRows::DiscardAll()
{
    Staff_DM->StaffFamily_DeleteAllRecovery(cspStaff, IniOptions.Com_Index);
    Staff_DM->CodeLock_DeleteAllRecovery(cspStaff, IniOptions.Com_Index);
}

bool TStaffFamilyRows::Changed(const QString &code)
{
    return Staff_DM->Family_QUR->active() && Staff_DM->TmpFamily_Changed(code);
}

void TStaffFamilyRows::PutBack(const QString &code)
{
    Staff_DM->TmpFamily_PutBack(code);
}

void TStaffFamilyRows::Move(const QString &from, const QString &to, bool own)
{
    if (own)
        Staff_DM->StaffFamily_UpdateTmp(from, to);
    else
        Staff_DM->TmpFamily_PutBack(to);
    Show(to);
}

void TStaffFamilyRows::MoveBack(const QString &from, const QString &to)
{
    Staff_DM->StaffFamily_UpdateTmp(to, from); // they may have moved, though no answer came
}

void TStaffFamilyRows::Show(const QString &code)
{
    Staff_DM->FillDataFamilyList(code.toInt());
}
