#include "app/TourScript.h"

#include <QMap>

namespace {

using S = TTourStep;

S await(const QString &screen)
{
    return {S::Await, screen, {}};
}
S press(const QString &key)
{
    return {S::Press, key, {}};
}
S picture(const QString &name)
{
    return {S::Picture, name, {}};
}

/// A list, its new record and its existing one.
QList<S> browse(const QString &list, const QString &editor, const QString &name)
{
    return {await(list),
            picture(name + QStringLiteral("-list")),
            press(QStringLiteral("F4")),
            await(editor),
            picture(name + QStringLiteral("-new")),
            press(QStringLiteral("Esc")),
            await(list),
            press(QStringLiteral("F5")),
            await(editor),
            picture(name + QStringLiteral("-edit")),
            press(QStringLiteral("Esc")),
            await(list),
            press(QStringLiteral("Esc"))};
}

QList<S> select(const QString &list, const QString &name)
{
    return {await(list), picture(name), press(QStringLiteral("Return"))};
}

QList<S> look(const QString &screen, const QString &name)
{
    return {await(screen), picture(name), press(QStringLiteral("Esc"))};
}

} // namespace

QList<TTourStep> TourScript::of(const char *entry)
{
    static const QMap<QString, QList<S>> scripts = {
        {"Open_PayRollInfo",
         {await("TPayrollInfoGet_FRM"), picture("payroll-settings"), press("Ctrl+2"),
          picture("payroll-settings-items"), press("Esc")}},
        {"Open_CalculatingMethods",
         browse("TCalcMethodList_FRM", "TCalcMethodGet_FRM", "calculation-methods")},
        {"Open_TaxList", browse("TTaxList_FRM", "TTaxGet_FRM", "tax-tables")},
        {"Open_WorkCalender", look("TCalender_List_FRM", "work-calendar")},
        {"Open_StaffList", browse("TStaffList_FRM", "TStaffGet_FRM", "staff")},
        {"Open_FiscalList", browse("TFiscalDeducation_List_FRM", "TFiscalDeducation_Get_FRM", "earnings")},
        {"Open_DeductionList",
         browse("TFiscalDeducation_List_FRM", "TFiscalDeducation_Get_FRM", "deductions")},
        {"Select_Staff", select("TStaffList_FRM", "select-staff")},
        {"Select_CalculatingMethods", select("TCalcMethodList_FRM", "select-calculation-method")},
        {"Select_TaxInfo", select("TTaxList_FRM", "select-tax-table")},
        {"Select_FiscalList", select("TFiscalDeducation_List_FRM", "select-earning")},
        {"Select_DeductionList", select("TFiscalDeducation_List_FRM", "select-deduction")},
        {"Select_FiscalDeducation", select("TFiscalDeducation_List_FRM", "select-earning-or-deduction")},
    };
    return scripts.value(QLatin1String(entry));
}

QList<TTourStep> TourScript::ofItem(const QString &item)
{
    static const QMap<QString, QList<S>> scripts = {
        {"DatabaseSettings_ACT", look("TDatabaseSettings_FRM", "database-settings")},
        {"Users_ACT", look("TUserList_FRM", "users")},
        {"Events_ACT", look("TEventLog_FRM", "event-log")},
        {"Locks_ACT", look("TLockList_FRM", "code-locks")},
        {"Workstations_ACT", look("TWorkstationList_FRM", "workstations")},
    };
    return scripts.value(item);
}
