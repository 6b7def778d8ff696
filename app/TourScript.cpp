#include "app/TourScript.h"

#include <QMap>

namespace {

using S = TTourStep;

S await(const char *screen)
{
    return {S::Await, QLatin1String(screen), {}};
}
S press(const char *key)
{
    return {S::Press, QLatin1String(key), {}};
}
S click(const char *button)
{
    return {S::Click, QLatin1String(button), {}};
}
S type(const char *input, const QString &text)
{
    return {S::Type, QLatin1String(input), text};
}
S picture(const char *name)
{
    return {S::Picture, QLatin1String(name), {}};
}
S message(const char *name)
{
    return {S::Message, QLatin1String(name), {}};
}

QList<S> payrollSettings()
{
    return {await("TPayrollInfoGet_FRM"),
            picture("payroll-settings"),
            press("Ctrl+2"),
            picture("payroll-settings-items"),
            click("EditRow_BTN"),
            await("TPayrollInfoDetail_FRM"),
            picture("payroll-settings-item"),
            press("Esc"),
            await("TPayrollInfoGet_FRM"),
            press("Esc")};
}

/// A method is found by typing, looked at, and a new one is saved.
QList<S> calculationMethods()
{
    return {await("TCalcMethodList_FRM"),
            picture("calculation-methods"),
            press("F4"),
            await("TCalcMethodGet_FRM"),
            type("Title_EDT", u"روش کارکنان پاره وقت"_qs),
            picture("calculation-method"),
            press("Ctrl+2"),
            type("OverTime_EDT", u"120"_qs),
            picture("calculation-method-attendance"),
            press("F3"),
            await("TCalcMethodList_FRM"),
            type("Search_EDT", u"پاره"_qs),
            picture("calculation-methods-search"),
            press("Esc"),
            press("Esc")};
}

/// A new tax table gets two brackets and is saved with them; then it goes again.
QList<S> taxTables()
{
    QList<S> steps = {await("TTaxList_FRM"), picture("tax-tables"), press("F4"), await("TTaxGet_FRM"),
                      type("Title_EDT", u"جدول مالیاتی نمونه"_qs)};
    const char *const brackets[][3] = {{"0", "2880000000", "0"}, {"2880000001", "3600000000", "10"}};
    for (const auto &[from, to, percent] : brackets) {
        steps << click("AddRow_BTN") << await("TTax_GetDetail_FRM")
              << type("FromSalary_EDT", QLatin1String(from)) << type("ToSalary_EDT", QLatin1String(to))
              << type("Percent_EDT", QLatin1String(percent));
        if (from != QLatin1String("0"))
            steps << picture("tax-bracket");
        steps << press("F3") << await("TTaxGet_FRM");
    }
    return steps << picture("tax-table") << press("F3") << await("TTaxList_FRM")
                 << picture("tax-tables-saved") << message("question-before-a-delete") << press("F7")
                 << press("Esc");
}

QList<S> calendar()
{
    return {await("TCalender_List_FRM"),
            picture("work-calendar"),
            press("F5"),
            await("TCalender_Day_FRM"),
            picture("work-calendar-day"),
            press("Esc"),
            await("TCalender_List_FRM"),
            press("F4"),
            await("TCalender_Set_FRM"),
            picture("work-calendar-new-days"),
            press("Esc"),
            await("TCalender_List_FRM"),
            press("Esc")};
}

/// A married employee is found by typing; all pages of the record, and one of the family.
QList<S> staff()
{
    return {await("TStaffList_FRM"),
            picture("staff"),
            type("Search_EDT", u"كريمي"_qs),
            picture("staff-search"),
            press("F5"),
            await("TStaffGet_FRM"),
            picture("employee"),
            press("Ctrl+2"),
            picture("employee-personnel"),
            press("Ctrl+3"),
            picture("employee-supplementary"),
            press("Ctrl+4"),
            picture("employee-family"),
            click("NewRow_BTN"),
            await("TStaffFamily_GetDetil_FRM"),
            type("Name_EDT", u"نیلوفر کریمی"_qs),
            picture("family-member"),
            press("Esc"),
            await("TStaffGet_FRM"),
            press("Esc"),
            await("TStaffList_FRM"),
            press("Esc")};
}

QList<S> items(const char *list, const char *editor)
{
    return {await("TFiscalDeducation_List_FRM"), picture(list),   press("F5"),
            await("TFiscalDeducation_Get_FRM"),  picture(editor), press("Esc"),
            await("TFiscalDeducation_List_FRM"), press("Esc")};
}

QList<S> select(const char *list, const char *name)
{
    return {await(list), picture(name), press("Return")};
}

QList<S> look(const char *screen, const char *name)
{
    return {await(screen), picture(name), press("Esc")};
}

} // namespace

QList<TTourStep> TourScript::of(const char *entry)
{
    static const QMap<QString, QList<S>> scripts = {
        {"Open_PayRollInfo", payrollSettings()},
        {"Open_CalculatingMethods", calculationMethods()},
        {"Open_TaxList", taxTables()},
        {"Open_WorkCalender", calendar()},
        {"Open_StaffList", staff()},
        {"Open_FiscalList", items("earnings", "earning")},
        {"Open_DeductionList", items("deductions", "deduction")},
        {"Select_Staff", select("TStaffList_FRM", "select-staff")},
        {"Select_StaffGroup", {await("TGroupList_FRM"), picture("select-staff-group"), press("Return")}},
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
        {"Users_ACT",
         {await("TUserList_FRM"), press("F4"), await("TUserGet_FRM"), type("Name_EDT", u"مریم"_qs),
          type("FullName_EDT", u"مریم کریمی"_qs), picture("user"), press("Esc"), await("TUserList_FRM"),
          press("Esc")}},
        {"Events_ACT", look("TEventLog_FRM", "event-log")},
        {"Locks_ACT", look("TLockList_FRM", "code-locks")},
        {"Workstations_ACT", look("TWorkstationList_FRM", "workstations")},
    };
    return scripts.value(item);
}
