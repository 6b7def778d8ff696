#pragma once

#include "common/QueryTools.h"
#include "host/Export.h"
#include "host/ZelmoSearch/FoldedTwin.h"
#include "staff/StaffFamily_DM_UNT.h"
#include "staff/Staff_Mapper.h"

/// The database work of the staff register: employees (Staff, staff_VW), their groups, the persons of the accounting
/// side (Perinf), the code locks, and the families (TStaffFamily_DM).
///
/// Operations that return a success answer false after a database error; all others throw TDatabaseError.
/// Look-ups leave their rows open in Temp_QUR; the next operation replaces them.
class KETEBIONPAP_CORE TStaff_DM : public TStaffFamily_DM {
    Q_OBJECT
public:
    explicit TStaff_DM(QObject *owner);

    TQuery *const StaffGet_QUR;  ///< the employee under edit; the pictures are saved through it
    TQuery *const List_QUR;      ///< all employees
    TQuery *const List_DS;       ///< what a grid of the employees is bound to
    TQuery *const GroupList_QUR; ///< the staff groups
    TQuery *const GroupList_DS;  ///< what a grid of the groups is bound to
    TQuery *const GroupGet_QUR;  ///< one group
    TQuery *const Perinf_QUR;    ///< persons

    void FillDataStaff(int code);
    void FillDataStaffGroup(int code);
    void Staff_Get();
    void StaffGroup_Get();
    TNamedCodes StaffGroup_Fill();
    /// Opens an employee and copies the row into the record; StaffGet_QUR is empty when there is none.
    void Staff_GetById(const QVariant &code, TStaff_Mapper &staff);
    /// Another employee of the same full name.
    /// What Staff_GetCode() opens.
    static TStatement NameStatement(const QString &name, const QString &lastName, int code);
    void Staff_GetCode(const QString &name, const QString &lastName, int code);
    // These three find the employee's own row too.
    void Staff_GetCardNumber(const QString &cardNumber);
    void Staff_GetInsuranceNumbber(const QString &insuranceNumber);
    void Staff_GetNationallID(const QString &nationalId);
    /// Another employee than `own` whose columns hold the same, however it is written.
    std::optional<TTwin> Staff_Twin(const QList<TUniqueText> &texts, int own);
    /// One more than the highest code of an employee or of a lock on a staff code, whoever holds it.
    int Staff_GetNewCode();
    [[nodiscard]] bool Staff_Insert(const TStaff_Mapper &staff);
    /// Changes the employee that Staff_GetById opened; the marks of creation stay.
    [[nodiscard]] bool Staff_Update(const TStaff_Mapper &staff);
    /// Deletes employees. `codes` parted by commas.
    [[nodiscard]] bool Staff_Del(const QString &codes);

    /// The first person.
    void Perinf_Get(TPerinf_Mapper &person);
    /// The next person code of a group; person codes are unique over all groups.
    int Perinf_GetNewCode(int group);
    /// Enters an employee as a person, if there is none of that name, the user agrees and chooses a person group.
    [[nodiscard]] bool PerInf_Insert(const TPerinf_Mapper &person);

    void CodeLock_DeleteAllRecovery(TSoftwarePart part, int comIndex);

private:
    /// 0: the person is there already, or the user does not want one.
    int groupForNewPerson(const TPerinf_Mapper &person);
    void find(const char *statement, const QString &value);
};

/// The one instance, made and freed by the entry points.
extern KETEBIONPAP_CORE TStaff_DM *Staff_DM;
