#include "staff/StaffFamilyRows.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "staff/Staff_DM_UNT.h"

namespace {

class TStaffFamilyRows : public TRecordRows {
public:
    int Count(const QString &code) override { return Staff_DM->TmpFamily_Count(code); }

    bool AreLeft(const QString &code) override
    {
        return Staff_DM->StaffFamily_IsRecordHasRecovery(code, cspStaff, IniOptions.Com_Index);
    }

    void TakeUp(const QString &leftCode, const QString &newCode) override
    {
        Staff_DM->StaffFamily_UpdateTmp(leftCode, newCode);
    }

    void Discard(const QString &code) override { Staff_DM->StaffFamily_DelTmp(code); }

    void DiscardAll() override
    {
        Staff_DM->StaffFamily_DeleteAllRecovery(cspStaff, IniOptions.Com_Index);
        Staff_DM->CodeLock_DeleteAllRecovery(cspStaff, IniOptions.Com_Index);
    }

    bool Changed(const QString &code) override
    {
        return Staff_DM->Family_QUR->active() && Staff_DM->TmpFamily_Changed(code);
    }

    void PutBack(const QString &code) override { Staff_DM->TmpFamily_PutBack(code); }

    void Move(const QString &from, const QString &to, bool own) override
    {
        if (own)
            Staff_DM->StaffFamily_UpdateTmp(from, to);
        else
            Staff_DM->TmpFamily_PutBack(to);
        Show(to);
    }

    void MoveBack(const QString &from, const QString &to) override
    {
        Staff_DM->StaffFamily_UpdateTmp(to, from); // they may have moved, though no answer came
    }

    void Show(const QString &code) override { Staff_DM->FillDataFamilyList(code.toInt()); }
};

} // namespace

std::unique_ptr<TRecordRows> FamilyRows()
{
    return std::make_unique<TStaffFamilyRows>();
}
