#include "app/TourScript.h"

#include <QHash>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;

namespace {

// A script is a text, a line for each screen that is on top: its name, then the steps in it. A step is a key ("F4"), a
// button ("AddRow_BTN!"), a text over what an input holds ("Title_EDT=...", alone it takes the focus), a picture
// ("@tax-table"), the picture of the next message ("?about"). Underscores between words of a text stand for blanks.

constexpr QStringView payrollSettings = uR"(
TPayrollInfoGet_FRM @payroll-settings Ctrl+2 @payroll-settings-items EditRow_BTN!
TPayrollInfoDetail_FRM @payroll-settings-item F2
TFiscalDeducation_List_FRM Esc
TPayrollInfoDetail_FRM F3
TPayrollInfoGet_FRM F3)";

// A new method with a picked tax table is saved and found by typing.
constexpr QStringView calculationMethods = uR"(
TCalcMethodList_FRM @calculation-methods F4
TCalcMethodGet_FRM Title_EDT=روش_کارکنان_پاره_وقت Tax_CHK! CalcMethodCode_EDT= F2
TTaxList_FRM Return
TCalcMethodGet_FRM Insurance_CHK! DailyIns_EDT=24245592 @calculation-method
TCalcMethodGet_FRM Ctrl+2 OverTime_EDT=120 @calculation-method-attendance F3
TCalcMethodList_FRM Search_EDT=پاره @calculation-methods-search Esc Esc)";

// A new tax table gets two brackets and is saved with them; then it goes again.
constexpr QStringView taxTables = uR"(
TTaxList_FRM @tax-tables F4
TTaxGet_FRM Title_EDT=جدول_مالیاتی_نمونه AddRow_BTN!
TTax_GetDetail_FRM FromSalary_EDT=0 ToSalary_EDT=2880000000 Percent_EDT=0 F3
TTaxGet_FRM AddRow_BTN!
TTax_GetDetail_FRM FromSalary_EDT=2880000001 ToSalary_EDT=3600000000 Percent_EDT=10 @tax-bracket F3
TTaxGet_FRM @tax-table F3
TTaxList_FRM Search_EDT=نمونه @tax-tables-search ?question-before-a-delete F7 Esc Esc)";

// A day is looked at, and the days of the next year are made.
constexpr QStringView calendar = uR"(
TCalender_List_FRM @work-calendar F5
TCalender_Day_FRM @work-calendar-day Esc
TCalender_List_FRM F4
TCalender_Set_FRM Title_EDT=تقویم_کاری_1406 Date1_EDT=14060101 StartDay_CMB=يکشنبه Date2_EDT=14061229
TCalender_Set_FRM @work-calendar-new-days F3
TCalender_List_FRM Search_EDT=1406 @work-calendar-search F9
TListPreview_FRM @print-preview Esc
TCalender_List_FRM Esc Esc)";

// A group is added, a married employee found by typing; all pages of the record; one joins the family and is saved.
constexpr QStringView staff = uR"(
TStaffList_FRM @staff F11
TGroupList_FRM F4
TGroupGet_FRM Name_EDT=کارکنان_پروژه @group F3
TGroupList_FRM @groups Esc
TStaffList_FRM Search_EDT=كريمي ShowPicture_BTN! @staff-search F5
TStaffGet_FRM @employee Ctrl+2 @employee-personnel Ctrl+3 @employee-supplementary Ctrl+4 NewRow_BTN!
TStaffFamily_GetDetil_FRM Name_EDT=نیما_محمدی BirthDate_EDT=14020510 InsuranceNumber_EDT=0062718290
TStaffFamily_GetDetil_FRM @family-member F3
TStaffGet_FRM @employee-family F3
TStaffList_FRM Esc Esc)";

// An item's account is looked up, and a new amount saved.
constexpr QStringView items = uR"(
TFiscalDeducation_List_FRM @%1s F5
TFiscalDeducation_Get_FRM @%1 TotalCode_EDT= F2
TAccountPicker_FRM @%1-account Esc
TFiscalDeducation_Get_FRM Cost_EDT=12000000 F3
TFiscalDeducation_List_FRM Esc)";

// Two items are ticked and go into the record.
constexpr QStringView pickInto = uR"(
%1 Down %2
TFiscalDeducation_List_FRM Select_BTN!
%1 @%3 Esc)";

// The first administrator and a clerk are made, and the clerk gets a right.
constexpr QStringView users = uR"(
TUserList_FRM F4
TUserGet_FRM Name_EDT=modir FullName_EDT=رضا_محمدی Password_EDT=%1 Repeat_EDT=%1 IsAdmin_CHK! F3
TUserList_FRM F4
TUserGet_FRM Name_EDT=maryam FullName_EDT=مریم_کریمی Password_EDT=%1 Repeat_EDT=%1 @user F3
TUserList_FRM @users F6
TUserRights_FRM Space @user-rights F9
TUserPick_FRM @user-pick Esc
TUserRights_FRM F3
TUserList_FRM F8
TRoleList_FRM Down F5
TRoleGet_FRM @role Esc
TRoleList_FRM @roles Esc
TUserList_FRM F9
TRightsMatrix_FRM @rights-matrix Esc
TUserList_FRM Esc)";

// A backup is encrypted, and looked into.
constexpr QStringView newSeal =
    u"TNewSeal_FRM Password_EDT=%1 Repeat_EDT=%1 @backup-password ?backup-made F3";
constexpr QStringView openSeal = u"TSeal_FRM Password_EDT=%1 @encrypted-backup ?question-before-a-restore F3";

constexpr QStringView databaseSettings = uR"(
TDatabaseSettings_FRM File_EDT=/srv/payroll/ketebionpap.db Server_RB! Server_EDT=db.example.ir
TDatabaseSettings_FRM Database_EDT=Payroll User_EDT=payroll @database-settings Esc)";

TTourStep stepOf(const QString &word)
{
    if (word.startsWith(u'@'))
        return {TTourStep::Picture, word.mid(1), {}};
    if (word.startsWith(u'?'))
        return {TTourStep::Message, word.mid(1), {}};
    if (word.endsWith(u'!'))
        return {TTourStep::Click, word.chopped(1), {}};
    if (const qsizetype at = word.indexOf(u'='); at > 0)
        return {TTourStep::Type, word.left(at), word.mid(at + 1).replace(u'_', u' ')};
    return {TTourStep::Press, word, {}};
}

QList<TTourStep> steps(QStringView script)
{
    QList<TTourStep> all;
    for (const QStringView line : script.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList words = line.toString().split(u' ');
        all.append({TTourStep::Await, words.first(), {}});
        for (qsizetype i = 1; i < words.size(); ++i)
            all.append(stepOf(words.at(i)));
    }
    return all;
}

template <class... Words>
QList<TTourStep> steps(QStringView script, const Words &...words)
{
    return steps(QStringView(script.toString().arg(QString(words)...)));
}

QList<TTourStep> look(const QString &screen, const QString &name, const QString &key = u"Esc"_s)
{
    return steps(u"%1 @%2 %3", screen, name, key);
}

QList<TTourStep> select(const QString &list, const QString &name)
{
    return look(list, name, u"Return"_s);
}

QList<TTourStep> inFileDialog(const QString &name, QStringView more)
{
    QList<TTourStep> all = steps(u"QFileDialog fileNameEdit= %1 Return", more.toString());
    all[1].text = name;
    return all;
}

} // namespace

QList<TTourStep> TourScript::of(const char *entry)
{
    static const QHash<QString, QList<TTourStep>> scripts = {
        {"Open_PayRollInfo", steps(payrollSettings)},
        {"Open_CalculatingMethods", steps(calculationMethods)},
        {"Open_TaxList", steps(taxTables)},
        {"Open_WorkCalender", steps(calendar)},
        {"Open_StaffList", steps(staff)},
        {"Open_FiscalList", steps(::items, u"earning"_s)},
        {"Open_DeductionList", steps(::items, u"deduction"_s)},
        {"Select_Staff", select("TStaffList_FRM", "select-staff")},
        {"Select_StaffGroup", select("TGroupList_FRM", "select-staff-group")},
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
    const QString password = QString::number(QRandomGenerator::system()->generate64());
    return {
        {"PickIntoOrder_ACT", steps(pickInto, u"TPickTarget_Orders"_s, u"F6"_s, u"pick-into-order"_s)},
        {"PickIntoOutput_ACT", steps(pickInto, u"TPickTarget_Outputs"_s, u"F8"_s, u"pick-into-output"_s)},
        {"DatabaseSettings_ACT", steps(databaseSettings)},
        {"Backup_ACT", inFileDialog(backup, u"@backup") + steps(newSeal, password)},
        {"Restore_ACT", inFileDialog(backup, u"@restore") + steps(openSeal, password)},
        {"Users_ACT", steps(users, password)},
        {"Locks_ACT", steps(u"TLockList_FRM @code-locks F7 Esc")},
        {"Workstations_ACT", look("TWorkstationList_FRM", "workstations")},
        {"Events_ACT", look("TEventLog_FRM", "event-log")},
        {"About_ACT", {{TTourStep::Message, u"about"_s, {}}}},
    };
}
