#include "app/TourScript.h"

#include <QMap>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;

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

/// Looked at, an item's page is turned to, its item picked again, and all is saved.
QList<S> payrollSettings()
{
    return {await("TPayrollInfoGet_FRM"),
            picture("payroll-settings"),
            press("Ctrl+2"),
            picture("payroll-settings-items"),
            click("EditRow_BTN"),
            await("TPayrollInfoDetail_FRM"),
            picture("payroll-settings-item"),
            press("F2"),
            await("TFiscalDeducation_List_FRM"),
            press("Esc"),
            await("TPayrollInfoDetail_FRM"),
            press("F3"),
            await("TPayrollInfoGet_FRM"),
            press("F3")};
}

/// A new method with a picked tax table is saved and found by typing.
QList<S> calculationMethods()
{
    return {await("TCalcMethodList_FRM"),
            picture("calculation-methods"),
            press("F4"),
            await("TCalcMethodGet_FRM"),
            type("Title_EDT", u"روش کارکنان پاره وقت"_s),
            click("Tax_CHK"),
            type("CalcMethodCode_EDT", {}),
            press("F2"),
            await("TTaxList_FRM"),
            press("Return"),
            await("TCalcMethodGet_FRM"),
            click("Insurance_CHK"),
            type("DailyIns_EDT", u"24245592"_s),
            picture("calculation-method"),
            press("Ctrl+2"),
            type("OverTime_EDT", u"120"_s),
            picture("calculation-method-attendance"),
            press("F3"),
            await("TCalcMethodList_FRM"),
            type("Search_EDT", u"پاره"_s),
            picture("calculation-methods-search"),
            press("Esc"),
            press("Esc")};
}

/// A new tax table gets two brackets and is saved with them; then it goes again.
QList<S> taxTables()
{
    QList<S> steps = {await("TTaxList_FRM"), picture("tax-tables"), press("F4"), await("TTaxGet_FRM"),
                      type("Title_EDT", u"جدول مالیاتی نمونه"_s)};
    const char *const brackets[][3] = {{"0", "2880000000", "0"}, {"2880000001", "3600000000", "10"}};
    for (const auto &[from, to, percent] : brackets) {
        steps << click("AddRow_BTN") << await("TTax_GetDetail_FRM")
              << type("FromSalary_EDT", QLatin1String(from)) << type("ToSalary_EDT", QLatin1String(to))
              << type("Percent_EDT", QLatin1String(percent));
        if (from != "0"_L1)
            steps << picture("tax-bracket");
        steps << press("F3") << await("TTaxGet_FRM");
    }
    return steps << picture("tax-table") << press("F3") << await("TTaxList_FRM")
                 << type("Search_EDT", u"نمونه"_s) << picture("tax-tables-search")
                 << message("question-before-a-delete") << press("F7") << press("Esc") << press("Esc");
}

/// A day is looked at, and the days of the next year are made.
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
            type("Title_EDT", u"تقویم کاری 1406"_s),
            type("Date1_EDT", u"14060101"_s),
            type("StartDay_CMB", u"يکشنبه"_s),
            type("Date2_EDT", u"14061229"_s),
            picture("work-calendar-new-days"),
            press("F3"),
            await("TCalender_List_FRM"),
            type("Search_EDT", u"1406"_s),
            picture("work-calendar-search"),
            press("F9"),
            await("TListPreview_FRM"),
            picture("print-preview"),
            press("Esc"),
            await("TCalender_List_FRM"),
            press("Esc"),
            press("Esc")};
}

/// A group is added, a married employee found by typing; all pages of the record; one joins the family and is saved.
QList<S> staff()
{
    return {await("TStaffList_FRM"),
            picture("staff"),
            press("F11"),
            await("TGroupList_FRM"),
            press("F4"),
            await("TGroupGet_FRM"),
            type("Name_EDT", u"کارکنان پروژه"_s),
            picture("group"),
            press("F3"),
            await("TGroupList_FRM"),
            picture("groups"),
            press("Esc"),
            await("TStaffList_FRM"),
            type("Search_EDT", u"كريمي"_s),
            click("ShowPicture_BTN"),
            picture("staff-search"),
            press("F5"),
            await("TStaffGet_FRM"),
            picture("employee"),
            press("Ctrl+2"),
            picture("employee-personnel"),
            press("Ctrl+3"),
            picture("employee-supplementary"),
            press("Ctrl+4"),
            click("NewRow_BTN"),
            await("TStaffFamily_GetDetil_FRM"),
            type("Name_EDT", u"نیما محمدی"_s),
            type("BirthDate_EDT", u"14020510"_s),
            type("InsuranceNumber_EDT", u"0062718290"_s),
            picture("family-member"),
            press("F3"),
            await("TStaffGet_FRM"),
            picture("employee-family"),
            press("F3"),
            await("TStaffList_FRM"),
            press("Esc"),
            press("Esc")};
}

/// An item's account is looked up, and a new amount saved.
QList<S> items(const char *list, const char *editor, const char *accounts)
{
    return {await("TFiscalDeducation_List_FRM"),
            picture(list),
            press("F5"),
            await("TFiscalDeducation_Get_FRM"),
            picture(editor),
            type("TotalCode_EDT", {}),
            press("F2"),
            await("TAccountPicker_FRM"),
            picture(accounts),
            press("Esc"),
            await("TFiscalDeducation_Get_FRM"),
            type("Cost_EDT", u"12000000"_s),
            press("F3"),
            await("TFiscalDeducation_List_FRM"),
            press("Esc")};
}

QList<S> select(const char *list, const char *name)
{
    return {await(list), picture(name), press("Return")};
}

QList<S> look(const char *screen, const char *name)
{
    return {await(screen), picture(name), press("Esc")};
}

/// Two items are ticked and go into the record.
QList<S> pickInto(const char *screen, const char *key, const char *name)
{
    return {await(screen),       press("Down"), press(key),    await("TFiscalDeducation_List_FRM"),
            click("Select_BTN"), await(screen), picture(name), press("Esc")};
}

/// The first administrator and a clerk are made, and the clerk gets a right.
QList<S> users()
{
    const QString password = QString::number(QRandomGenerator::system()->generate64());
    const auto user = [&password](const QString &name, const QString &fullName) {
        return QList<S>{press("F4"),
                        await("TUserGet_FRM"),
                        type("Name_EDT", name),
                        type("FullName_EDT", fullName),
                        type("Password_EDT", password),
                        type("Repeat_EDT", password)};
    };
    const QList<S> saved = {press("F3"), await("TUserList_FRM")};
    return QList<S>{await("TUserList_FRM")}
           << user(u"modir"_s, u"رضا محمدی"_s) << click("IsAdmin_CHK") << saved
           << user(u"maryam"_s, u"مریم کریمی"_s) << picture("user") << saved << picture("users")
           << press("F6") << await("TUserRights_FRM") << press("Space") << picture("user-rights") << saved
           << press("Esc");
}

QList<S> databaseSettings()
{
    return {await("TDatabaseSettings_FRM"),
            type("File_EDT", u"/srv/payroll/ketebionpap.db"_s),
            click("Server_RB"),
            type("Server_EDT", u"db.example.ir"_s),
            type("Database_EDT", u"Payroll"_s),
            type("User_EDT", u"payroll"_s),
            picture("database-settings"),
            press("Esc")};
}

QList<S> file(const QString &name, const char *pictureName, std::initializer_list<const char *> messages)
{
    QList<S> steps = {await("QFileDialog"), type("fileNameEdit", name), picture(pictureName)};
    for (const char *one : messages)
        steps << message(one);
    return steps << press("Return");
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
        {"Open_FiscalList", ::items("earnings", "earning", "earning-account")},
        {"Open_DeductionList", ::items("deductions", "deduction", "deduction-account")},
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

QList<TourScript::TItem> TourScript::items(const QString &backup)
{
    return {
        {"PickIntoOrder_ACT", pickInto("TPickTarget_Orders", "F6", "pick-into-order")},
        {"PickIntoOutput_ACT", pickInto("TPickTarget_Outputs", "F8", "pick-into-output")},
        {"DatabaseSettings_ACT", databaseSettings()},
        {"Backup_ACT", file(backup, "backup", {"backup-made"})},
        {"Restore_ACT", file(backup, "restore", {"question-before-a-restore"})},
        {"Users_ACT", users()},
        {"Locks_ACT", {await("TLockList_FRM"), picture("code-locks"), press("F7"), press("Esc")}},
        {"Workstations_ACT", look("TWorkstationList_FRM", "workstations")},
        {"Events_ACT", look("TEventLog_FRM", "event-log")},
        {"About_ACT", {message("about")}},
    };
}
