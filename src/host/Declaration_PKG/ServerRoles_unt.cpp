#include "host/Declaration_PKG/ServerRoles_unt.h"

#include <QHash>
#include <QStringList>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

QString partWord(TSoftwarePart part)
{
    static const QHash<int, QString> words = {{cspPerson, u"person_groups"_s},
                                              {cspPayrollInfo, u"payroll_settings"_s},
                                              {cspTax, u"tax"_s},
                                              {cspCalender, u"calendar"_s},
                                              {cspFiscal, u"earnings"_s},
                                              {cspDeduction, u"deductions"_s},
                                              {cspStaff, u"staff"_s},
                                              {cspCalcMethod, u"methods"_s},
                                              {cspStaffGroup, u"staff_groups"_s},
                                              {cspFiscalGrp, u"earning_groups"_s},
                                              {cspDeductionGrp, u"deduction_groups"_s}};
    return words.value(part, QString::number(int(part)));
}

QString rightWord(TPermission right)
{
    static const QHash<int, QString> words = {{cpNew, u"new"_s},
                                              {cpEdit, u"edit"_s},
                                              {cpDelete, u"delete"_s},
                                              {cpPrint, u"print"_s},
                                              {cpOpen, u"open"_s},
                                              {cpPayrollSecondPage, u"second_page"_s},
                                              {cpStaffFamilyPage, u"family_page"_s}};
    return words.value(right, QString::number(int(right)));
}

/// An item's tables: a new code is one that neither kind has.
QList<TServerGrant> itemGrants(TPermission right, const QString &table, const QString &other,
                               const QString &working)
{
    const QString groups = table + u"Grp"_s;
    switch (right) {
    case cpOpen:
        return {{table + u"_vw"_s, u"S"_s}, {groups, u"S"_s}};
    case cpNew:
        return {{table, u"SI"_s}, {other, u"S"_s}};
    case cpEdit:
        return {{table, u"SU"_s}, {other, u"S"_s}};
    case cpDelete:
        return {{table, u"SD"_s},
                {working, u"S"_s},
                {u"tmpsalarybilldetail"_s, u"S"_s},
                {u"PayrollInfoDetail"_s, u"S"_s}};
    default:
        return {};
    }
}

/// A group's table, and the one whose rows keep it from being deleted.
QList<TServerGrant> groupGrants(TPermission right, const QString &table, const QString &members)
{
    switch (right) {
    case cpNew:
        return {{table, u"SI"_s}};
    case cpEdit:
        return {{table, u"SU"_s}};
    case cpDelete:
        return {{table, u"SD"_s}, {members, u"S"_s}};
    default:
        return {};
    }
}

QList<TServerGrant> methodGrants(TPermission right)
{
    switch (right) {
    case cpOpen:
        return {{u"CalcMethod_VW"_s, u"S"_s}};
    case cpNew:
        return {{u"CalcMethod"_s, u"SI"_s}};
    case cpEdit:
        return {{u"CalcMethod"_s, u"SU"_s}, {u"Recruitment"_s, u"S"_s}};
    case cpDelete:
        return {{u"CalcMethod"_s, u"SD"_s}, {u"Recruitment"_s, u"S"_s}};
    default:
        return {};
    }
}

QList<TServerGrant> taxGrants(TPermission right)
{
    switch (right) {
    case cpOpen:
        return {{u"TaxMain"_s, u"S"_s}};
    case cpNew:
        return {{u"TaxMain"_s, u"SI"_s}, {u"Tax"_s, u"SID"_s}, {u"TmpTax"_s, u"SIUD"_s}};
    case cpEdit:
        return {{u"TaxMain"_s, u"SU"_s}, {u"Tax"_s, u"SID"_s}, {u"TmpTax"_s, u"SIUD"_s}};
    case cpDelete:
        return {{u"TaxMain"_s, u"SD"_s}, {u"Tax"_s, u"SD"_s}, {u"CalcMethod"_s, u"S"_s}};
    default:
        return {};
    }
}

QList<TServerGrant> calendarGrants(TPermission right)
{
    static const QHash<int, QString> deeds = {
        {cpOpen, u"S"_s}, {cpNew, u"SI"_s}, {cpEdit, u"SU"_s}, {cpDelete, u"SD"_s}};
    return deeds.contains(right) ? QList<TServerGrant>{{u"Calender"_s, deeds.value(right)}}
                                 : QList<TServerGrant>();
}

QList<TServerGrant> staffGrants(TPermission right)
{
    // The family's rows are replaced when the employee is saved.
    const QList<TServerGrant> family{
        {u"StaffFamily"_s, u"SID"_s}, {u"tmpStaffFamily"_s, u"SIUD"_s}, {u"Recruitment"_s, u"S"_s}};
    switch (right) {
    case cpOpen:
        return {{u"staff_VW"_s, u"S"_s}, {u"StaffGroup"_s, u"S"_s}};
    case cpNew: // also changed: a picture that is saved after the row
        return QList<TServerGrant>{{u"Staff"_s, u"SIU"_s}} + family;
    case cpEdit:
        return QList<TServerGrant>{{u"Staff"_s, u"SU"_s}, {u"Perinf"_s, u"S"_s}} + family;
    case cpDelete:
        return {{u"Staff"_s, u"SD"_s},
                {u"StaffFamily"_s, u"SD"_s},
                {u"tmpStaffFamily"_s, u"SD"_s},
                {u"Recruitment"_s, u"S"_s}};
    default:
        return {};
    }
}

QList<TServerGrant> settingsGrants(TPermission right)
{
    switch (right) {
    case cpOpen: // its window saves by the same right
        return {{u"PayrollInfo"_s, u"SU"_s},
                {u"PayrollInfoDetail"_s, u"S"_s},
                {u"Fiscal"_s, u"S"_s},
                {u"Deduction"_s, u"S"_s}};
    case cpPayrollSecondPage:
        return {{u"PayrollInfoDetail"_s, u"SU"_s}, {u"Fiscal"_s, u"S"_s}, {u"Deduction"_s, u"S"_s}};
    default:
        return {};
    }
}

QList<TServerGrant> grantsOf(const TRight &right)
{
    switch (right.part) {
    case cspPayrollInfo:
        return settingsGrants(right.right);
    case cspCalcMethod:
        return methodGrants(right.right);
    case cspTax:
        return taxGrants(right.right);
    case cspCalender:
        return calendarGrants(right.right);
    case cspStaff:
        return staffGrants(right.right);
    case cspFiscal:
        return itemGrants(right.right, u"Fiscal"_s, u"Deduction"_s, u"tmpstaffFiscal"_s);
    case cspDeduction:
        return itemGrants(right.right, u"Deduction"_s, u"Fiscal"_s, u"tmpstaffdeduction"_s);
    case cspStaffGroup:
        return groupGrants(right.right, u"StaffGroup"_s, u"Staff"_s);
    case cspFiscalGrp:
        return groupGrants(right.right, u"FiscalGrp"_s, u"Fiscal"_s);
    case cspDeductionGrp:
        return groupGrants(right.right, u"DeductionGrp"_s, u"Deduction"_s);
    case cspPerson:
        return groupGrants(right.right, u"PersonGroup"_s, u"Perinf"_s);
    }
    return {};
}

QString textOf(const TServerGrant &grant)
{
    static const std::pair<QChar, QString> words[] = {{u'S', u"select"_s},
                                                      {u'I', u"insert"_s},
                                                      {u'U', u"update"_s},
                                                      {u'D', u"delete"_s},
                                                      {u'X', u"execute"_s}};
    QStringList deeds;
    for (const auto &[letter, word] : words)
        if (grant.deeds.contains(letter))
            deeds += word;
    return deeds.join(u", "_s) + u" on dbo."_s + grant.object +
           (grant.columns.isEmpty() ? QString() : u" ("_s + grant.columns + u')');
}

QString textOf(const TServerRole &role)
{
    QString text =
        u"if not exists (select 1 from sys.database_principals where name = N'%1') create role %1\n"_s.arg(
            role.name);
    for (const TServerGrant &grant : role.grants)
        text += u"grant %1 to %2\n"_s.arg(textOf(grant), role.name);
    return text + u'\n';
}

} // namespace

const TServerRole &EverydayServerRole()
{
    static const TServerRole role{u"ketebionpap_everyday"_s,
                                  {{u"SchemaVersion_TBL"_s, u"S"_s},
                                   {u"UserAccount"_s, u"S"_s},
                                   {u"UserAccount"_s, u"U"_s, u"FailedCount, NextTry, PasswordHash"_s},
                                   {u"UserRight"_s, u"S"_s},
                                   {u"UserRoleMember"_s, u"S"_s},
                                   {u"UserRoleRight"_s, u"S"_s},
                                   {u"UnknownNameTry"_s, u"SU"_s},
                                   {u"UtcNow_FNC"_s, u"X"_s},
                                   {u"UserEvent"_s, u"I"_s},
                                   {u"UserEventHead"_s, u"SU"_s},
                                   {u"EventLink_FNC"_s, u"X"_s},
                                   {u"GetUinqueCode_FNC"_s, u"X"_s},
                                   {u"CodeLock_TBL"_s, u"SIUD"_s},
                                   {u"Workstation"_s, u"SIU"_s},
                                   {u"WorkingTable"_s, u"S"_s},
                                   {u"WorkingRows"_s, u"SIUD"_s},
                                   {u"AccountTotal"_s, u"S"_s},
                                   {u"AccountAssistant"_s, u"S"_s},
                                   {u"AccountDetail"_s, u"S"_s}}};
    return role;
}

const TServerRole &AdministrationServerRole()
{
    static const TServerRole role{u"ketebionpap_administration"_s,
                                  {{u"UserAccount"_s, u"SIUD"_s},
                                   {u"UserRight"_s, u"SID"_s},
                                   {u"UserRole"_s, u"SIUD"_s},
                                   {u"UserRoleRight"_s, u"SID"_s},
                                   {u"UserRoleMember"_s, u"SID"_s},
                                   {u"UserRightSource_VW"_s, u"S"_s},
                                   {u"UserEvent"_s, u"S"_s},
                                   {u"Workstation"_s, u"SD"_s},
                                   {u"TmpTax"_s, u"SD"_s},
                                   {u"tmpStaffFamily"_s, u"SD"_s}}};
    return role;
}

const TServerRole &PickServerRole()
{
    static const TServerRole role{u"ketebionpap_picks"_s,
                                  {{u"Recruitment"_s, u"S"_s},
                                   {u"StaffOutPut"_s, u"S"_s},
                                   {u"CalcMethod"_s, u"S"_s},
                                   {u"staff_VW"_s, u"S"_s},
                                   {u"PayrollInfoDetail"_s, u"S"_s},
                                   {u"Fiscal"_s, u"S"_s},
                                   {u"Deduction"_s, u"S"_s},
                                   {u"tmpRecFiscal"_s, u"SI"_s},
                                   {u"tmpRecDeduction"_s, u"SI"_s},
                                   {u"tmpstaffOutPutDetail"_s, u"SI"_s}}};
    return role;
}

TServerRole ServerRoleOf(const TRight &right)
{
    return {u"ketebionpap_%1_%2"_s.arg(partWord(right.part), rightWord(right.right)), grantsOf(right)};
}

QString ServerRolesScript()
{
    QString text =
        u"-- Database roles for people with a login of their own. Run it in the suite's database, as its owner,\n"
        "-- when the tables are there; run it again after the program was brought up to date.\n"
        "--   create login maryam with password = '...'          (or: create login [DOMAIN\\maryam] from windows)\n"
        "--   create user maryam for login maryam with default_schema = dbo\n"
        "--   alter role ketebionpap_everyday add member maryam  -- everybody\n"
        "--   alter role ketebionpap_staff_open add member maryam -- and each right that she has in the program\n"
        "\n"_s;
    text += textOf(EverydayServerRole());
    for (const TRightName &row : AllRights())
        text += textOf(ServerRoleOf(row.right));
    text += textOf(PickServerRole());
    return text + textOf(AdministrationServerRole());
}
