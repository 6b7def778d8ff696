#include "kills/Deeds.h"

#include "support/Keys.h"

#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethodList_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "calender/Calender_DM_UNT.h"
#include "calender/Calender_Day_UNT.h"
#include "calender/Calender_List_UNT.h"
#include "calender/Calender_Set_UNT.h"
#include "entity/Entity_DM_UNT.h"
#include "entity/FiscalDeducation_Get_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Component_ZLM/AccountSelector_ZLM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfoGet_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "staff/StaffFamily_GetDetil_UNT.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffList_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "tax/TaxGet_UNT.h"
#include "tax/TaxList_UNT.h"
#include "tax/Tax_DM_UNT.h"
#include "tax/Tax_GetDetail_UNT.h"

#include <QImage>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

using TBegin = std::function<void()>;

const QStringList tables{
    u"PayrollInfo"_s, u"PayrollInfoDetail"_s, u"CalcMethod"_s, u"TaxMain"_s,     u"Tax"_s,
    u"Calender"_s,    u"StaffGroup"_s,        u"Staff"_s,      u"StaffFamily"_s, u"Perinf"_s,
    u"FiscalGrp"_s,   u"DeductionGrp"_s,      u"Fiscal"_s,     u"Deduction"_s};

QString text(const QString &query)
{
    return DM.ADOConnection1->scalar(query).toString();
}

/// Shows a screen and works in it.
void in(QDialog &screen, const std::function<void()> &work)
{
    Keys::runModal([&] { return screen.exec(); },
                   [&](QWidget *) {
                       Keys::waitFor([&] { return screen.isActiveWindow(); });
                       work();
                   });
}

/// Works in the screen that something in another one opens.
template <class Screen>
void through(const std::function<void()> &action, const std::function<void(Screen &)> &work)
{
    Keys::runModal(
        [&] {
            action();
            return 0;
        },
        [&](QWidget *screen) {
            Keys::waitFor([&] { return screen->isActiveWindow(); });
            work(dynamic_cast<Screen &>(*screen));
        });
}

void save(QWidget &screen, const TBegin &begin)
{
    begin();
    Keys::press(&screen, Qt::Key_F3);
}

/// Deletes the list's only row, or all its rows.
void deleteAll(TBaseDock_FRM &list, const TBegin &begin)
{
    in(list, [&] {
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_Home, Qt::ControlModifier);
        while (list.Grid()->currentIndex().row() < list.ListQuery()->recordCount() - 1)
            Keys::press(&list, Qt::Key_Down, Qt::ShiftModifier);
        begin();
        Keys::press(&list, Qt::Key_F7);
    });
}

void settings(const TBegin &begin)
{
    TPayrollInfoGet_FRM screen(cspPayrollInfo, 0, fmEdit, false);
    in(screen, [&] {
        screen.CaseNo_EDT->SetText(u"123456789012"_s);
        screen.LeisureIns_EDT->SetText(u"3"_s);
        screen.BranchCode_EDT->SetText(u"11"_s);
        screen.StageCode_EDT->SetText(u"1"_s);
        screen.OrganCode_EDT->SetText(u"77"_s);
        screen.BranchNo_EDT->SetText(u"5"_s);
        screen.PayerName_EDT->SetText(u"مریم"_s);
        screen.SignaturNameFirst_EDT->SetText(u"رضا"_s);
        screen.SignaturFamilyFirst_EDT->SetText(u"احمدی"_s);
        screen.SignaturIdNationalFirst_EDT->SetText(u"0013542419"_s);
        screen.SignaturPositionFirst_EDT->SetText(u"مدیر مالی"_s);
        save(screen, begin);
    });
}

void settingsItem(const TBegin &begin)
{
    const int id = text(u"select min(ID) from PayrollInfoDetail where Type=0"_s).toInt();
    TPayrollInfoDetail_FRM screen(cspPayrollInfo, 0, fmEdit, id);
    in(screen, [&] {
        Keys::retype(screen.FiscalDeducationCode_EDT, u"901"_s);
        save(screen, begin);
    });
}

void method(int code, const TBegin &begin)
{
    const std::unique_ptr<TCalcMethodGet_FRM> screen(
        code == 0 ? new TCalcMethodGet_FRM(cspCalcMethod, false, QString())
                  : new TCalcMethodGet_FRM(cspCalcMethod, code, fmEdit, false));
    in(*screen, [&] {
        Keys::retype(screen->Title_EDT, u"new"_s);
        Keys::press(screen.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::retype(screen->OverTime_EDT, u"120"_s);
        save(*screen, begin);
    });
}

void bracket(TTaxGet_FRM &editor, const QString &from, const QString &to, const QString &percent)
{
    if (Tax_DM->DetailList_QUR->locate(u"FromSalary"_s, from.toInt()))
        return;
    Keys::child(&editor, u"TaxDetail_List_GRD"_s)->setFocus();
    through<TTax_GetDetail_FRM>([&] { Keys::press(&editor, Qt::Key_Plus, Qt::KeypadModifier); },
                                [&](TTax_GetDetail_FRM &screen) {
                                    Keys::retype(screen.FromSalary_EDT, from);
                                    Keys::retype(screen.ToSalary_EDT, to);
                                    Keys::retype(screen.Percent_EDT, percent);
                                    Keys::press(&screen, Qt::Key_F3);
                                });
    editor.activateWindow();
    Keys::waitFor([&] { return editor.isActiveWindow(); });
}

void taxTable(int code, const TBegin &begin)
{
    const std::unique_ptr<TTaxGet_FRM> editor(code == 0 ? new TTaxGet_FRM(cspTax, false, QString())
                                                        : new TTaxGet_FRM(cspTax, code, fmEdit, false));
    in(*editor, [&] {
        Keys::retype(editor->Title_EDT, u"new"_s);
        begin(); // the brackets' own saves too
        bracket(*editor, u"2001"_s, u"3000"_s, u"20"_s);
        bracket(*editor, u"3001"_s, u"4000"_s, u"30"_s);
        Keys::press(editor.get(), Qt::Key_F3);
    });
}

/// A header that is stored without its brackets gets them back when it is opened.
void newTaxTable(const TBegin &begin)
{
    taxTable(text(u"select max(Code) from TaxMain"_s).toInt(), begin);
}

bool headerBeforeBrackets(const TStored &now, const TStored &before, const TStored &after)
{
    TStored header = before;
    header[u"TaxMain"_s] = after[u"TaxMain"_s];
    return now == header;
}

void day(const TBegin &begin)
{
    Calender_DM->Calender_Get();
    Calender_DM->List_QUR->open();
    TCalender_Day_FRM screen(cspCalender, Calender_DM->List_QUR->value(u"ID"_s), fmEdit, false);
    in(screen, [&] {
        Keys::retype(screen.Title_EDT, u"new"_s);
        save(screen, begin);
    });
}

/// A range of days, or what is left of it.
void generation(const TBegin &begin)
{
    const int stored = text(u"select count(*) from Calender"_s).toInt();
    TCalender_Set_FRM screen(cspCalender, false, QString());
    in(screen, [&] {
        Keys::retype(screen.Title_EDT, u"day"_s);
        Keys::retype(screen.Date1_EDT, u"1402/02/%1"_s.arg(stored + 1, 2, 10, QChar(u'0')));
        screen.StartDay_CMB->setCurrentIndex((6 + stored) % 7); // 1402/02/01 is a Friday
        screen.WeekEnd_CMB->setCurrentIndex(6);
        Keys::retype(screen.Date2_EDT, u"1402/02/20"_s);
        save(screen, begin);
    });
}

bool firstDays(const TStored &now, const TStored &before, const TStored &after)
{
    TStored some = before;
    some[u"Calender"_s] = now[u"Calender"_s];
    return now == some && after[u"Calender"_s].startsWith(now[u"Calender"_s] + u'\n');
}

QString picture(Qt::GlobalColor color)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"%1.png"_s.arg(int(color)));
    QImage image(300, 400, QImage::Format_RGB32);
    image.fill(color);
    image.save(path);
    return path;
}

void member(TStaffGet_FRM &editor, const QString &name)
{
    if (Staff_DM->Family_QUR->locate(u"Name"_s, name))
        return;
    Keys::press(&editor, Qt::Key_4, Qt::ControlModifier);
    editor.findChild<TDetail_Rows_Frame *>()->Grid()->setFocus();
    through<TStaffFamily_GetDetil_FRM>([&] { Keys::press(&editor, Qt::Key_Plus, Qt::KeypadModifier); },
                                       [&](TStaffFamily_GetDetil_FRM &screen) {
                                           Keys::retype(Keys::child(&screen, u"Name_EDT"_s), name);
                                           Keys::retype(Keys::child(&screen, u"BirthDate_EDT"_s),
                                                        u"1390/01/05"_s);
                                           Keys::press(&screen, Qt::Key_F3);
                                       });
    editor.activateWindow();
    Keys::waitFor([&] { return editor.isActiveWindow(); });
}

void employee(int code, const QStringList &members, const TBegin &begin)
{
    const std::unique_ptr<TStaffGet_FRM> editor(code == 0 ? new TStaffGet_FRM(cspStaff, false, u"1"_s)
                                                          : new TStaffGet_FRM(cspStaff, code, fmEdit, false));
    in(*editor, [&] {
        editor->StaffGroup_CMB->setCurrentIndex(1);
        editor->Name_EDT->SetText(u"new"_s);
        editor->LastName_EDT->SetText(u"new"_s);
        if (!members.isEmpty())
            editor->IsMarried_CMB->setCurrentIndex(1);
        editor->Picture_Get->TakeFile(picture(Qt::red));
        editor->FingerPrint_Get->TakeFile(picture(Qt::blue));
        begin(); // the members' own saves too
        for (const QString &name : members)
            member(*editor, name);
        Keys::press(editor.get(), Qt::Key_F3);
    });
}

/// The family is cleared before the transaction that holds all the rest.
bool familyCleared(const TStored &now, const TStored &before, const TStored &)
{
    TStored cleared = before;
    cleared[u"StaffFamily"_s].clear();
    return now == cleared;
}

/// Rows of the family only, of an employee who stays as he is.
void family(const TBegin &begin)
{
    TStaffGet_FRM editor(cspStaff, 5, fmEdit, false);
    in(editor, [&] {
        begin();
        member(editor, u"typed"_s);
        Keys::press(&editor, Qt::Key_F3);
    });
}

void item(TSoftwarePart part, int code, const TBegin &begin)
{
    const std::unique_ptr<TFiscalDeducation_Get_FRM> screen(
        code == 0
            ? new TFiscalDeducation_Get_FRM(part, false, u"1"_s)
            : new TFiscalDeducation_Get_FRM(part, code, fmEdit, part == cspDeduction ? 1 : 0, false, true));
    in(*screen, [&] {
        Keys::retype(screen->Title_EDT, u"new"_s);
        Keys::retype(screen->TSelect_AccountCode1->TotalCode_EDT, u"61"_s);
        Keys::retype(screen->TSelect_AccountCode1->AssistantCode_EDT, u"2"_s);
        Keys::retype(screen->TSelect_AccountCode1->DetailCode_EDT, u"1"_s);
        Keys::retype(screen->Cost_EDT, u"1500"_s);
        save(*screen, begin);
    });
}

void group(TSoftwarePart part, int code, const TBegin &begin)
{
    const TGroupKind &kind = *GroupKindOf(part);
    const std::unique_ptr<TGroupGet_FRM> screen(code == 0 ? new TGroupGet_FRM(kind)
                                                          : new TGroupGet_FRM(kind, code));
    in(*screen, [&] {
        Keys::retype(screen->Name_EDT, u"new"_s);
        save(*screen, begin);
    });
}

template <class List>
std::function<void(const TBegin &)> deletes()
{
    return [](const TBegin &begin) {
        List list(fmBrowse, {});
        deleteAll(list, begin);
    };
}

std::function<void(const TBegin &)> deletesItem(int kind)
{
    return [kind](const TBegin &begin) {
        TFiscalDeducation_List_FRM list(fmBrowse, kind, {});
        deleteAll(list, begin);
    };
}

const QString oldEmployee =
    u"insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber,LeaveDate,IsMarried) "
    "values(5,1,'old','old','0','','','',1)"_s;
const QString oldMember =
    u"insert into StaffFamily(ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment) "
    "values(1,5,1,'saved',0,'','1390/01/05',0,'','')"_s;
const QString oldMethod = u"insert into CalcMethod(Code,Title,OverTime) values(5,'old',110)"_s;
const QStringList oldTable{
    u"insert into TaxMain(Code,Title,Comment) values(5,'old','c')"_s,
    u"insert into Tax(TaxMainCode,FromSalary,ToSalary,[Percent]) values(5,0,1000,0)"_s,
    u"insert into Tax(TaxMainCode,FromSalary,ToSalary,[Percent]) values(5,1001,2000,10)"_s};
const QStringList accounts{u"insert into AccountTotal(Kol,Name) values(61,N'a')"_s,
                           u"insert into AccountAssistant(Kol,Moin,Name) values(61,2,N'a')"_s,
                           u"insert into AccountDetail(Tafzili,Name) values(1,N'a')"_s,
                           u"insert into FiscalGrp(Code,Name) values(1,N'g')"_s,
                           u"insert into DeductionGrp(Code,Name) values(1,N'g')"_s};

QStringList oldItem(const QString &table)
{
    return accounts +
           QStringList{u"insert into %1(Code,GrpCode,CalcType,Title,Cost,Kol,Moin,Tafzili,Comment) "
                       "values(5,1,0,'old',10,61,2,1,'')"_s.arg(table)};
}

QStringList days(int count)
{
    QStringList rows;
    for (int i = 1; i <= count; ++i)
        rows
            << u"insert into Calender(ID,Title,Date,Day,Type,Comment) values(%1,'old','1402/01/0%1',%1,1,'')"_s
                   .arg(i);
    return rows;
}

} // namespace

const QList<TDeed> &deeds()
{
    // A new record passes the code over that rows left behind are held under.
    const QHash<QString, QString> tableWithoutCode{{u"TaxMain"_s, u"Title, Comment"_s},
                                                   {u"Tax"_s, u"FromSalary, ToSalary, [Percent]"_s}};
    const QHash<QString, QString> employeeWithoutCode{
        {u"Staff"_s, u"Name, LastName, StaffGroup, IsMarried, Picture, FingerPrint"_s},
        {u"StaffFamily"_s, u"Name, BirthDate"_s},
        {u"Perinf"_s, u"Name, GrpCode"_s}};
    static const QList<TDeed> all{
        {"settings", settings},
        {"settings item", settingsItem, {u"insert into Fiscal(Code,Title) values(901,'e')"_s}},
        {"new method", [](const TBegin &begin) { method(0, begin); }},
        {"changed method", [](const TBegin &begin) { method(5, begin); }, {oldMethod}},
        {"deleted method", deletes<TCalcMethodList_FRM>(), {oldMethod}},
        {"deleted tax table", deletes<TTaxList_FRM>(), oldTable},
        {"changed day", day, days(1)},
        {"deleted days", deletes<TCalender_List_FRM>(), days(5)},
        {"deleted employee", deletes<TStaffList_FRM>(), {oldEmployee, oldMember}},
        {"new earning", [](const TBegin &begin) { item(cspFiscal, 0, begin); }, accounts},
        {"changed earning", [](const TBegin &begin) { item(cspFiscal, 5, begin); }, oldItem(u"Fiscal"_s)},
        {"deleted earning", deletesItem(0), oldItem(u"Fiscal"_s)},
        {"new deduction", [](const TBegin &begin) { item(cspDeduction, 0, begin); }, accounts},
        {"changed deduction", [](const TBegin &begin) { item(cspDeduction, 5, begin); },
         oldItem(u"Deduction"_s)},
        {"deleted deduction", deletesItem(1), oldItem(u"Deduction"_s)},
        {"new group", [](const TBegin &begin) { group(cspStaffGroup, 0, begin); }},
        {"changed group", [](const TBegin &begin) { group(cspFiscalGrp, 1, begin); }, accounts},
        {"deleted group",
         [](const TBegin &begin) {
             begin();
             TGroupList_FRM::Delete(*GroupKindOf(cspDeductionGrp), 1, cspDeductionGrp);
         },
         accounts},
        {"new tax table", newTaxTable, {}, headerBeforeBrackets, tableWithoutCode},
        {"changed tax table", [](const TBegin &begin) { taxTable(5, begin); }, oldTable,
         headerBeforeBrackets},
        {"family", family, {oldEmployee, oldMember}, familyCleared},
        {"changed employee",
         [](const TBegin &begin) { employee(5, {u"typed"_s}, begin); },
         {oldEmployee, oldMember},
         familyCleared},
        {"new employee",
         [](const TBegin &begin) {
             employee(0, {u"typed"_s, u"second"_s}, begin);
         },
         {},
         {},
         employeeWithoutCode},
        {"generated days", generation, {}, firstDays},
    };
    return all;
}

TStored storedRows(const TDeed &deed)
{
    TStored stored;
    for (const QString &table : tables) {
        TQuery query(DM.ADOConnection1, u"rows"_s);
        query.setStatement(
            TStatement(u"select %1 from %2 order by 1, 2"_s.arg(deed.columns.value(table, u"*"_s), table)));
        query.open();
        QStringList lines;
        for (int row = 0; row < query.recordCount(); ++row) {
            QStringList cells;
            for (int i = 0; i < query.fields().size(); ++i) {
                if (query.fields().at(i).name == "ModifiedTime"_L1) // the minute of the save
                    continue;
                const QVariant value = query.valueAt(row, i);
                cells << (value.typeId() == QMetaType::QByteArray
                              ? QString::fromLatin1(value.toByteArray().toHex())
                              : value.toString());
            }
            lines << cells.join(u'|');
        }
        stored[table] = lines.join(u'\n');
    }
    return stored;
}

DataModules::DataModules()
{
    PayrollInfo_DM = new TPayrollInfo_DM(nullptr);
    CalcMethod_DM = new TCalcMethod_DM(nullptr);
    Tax_DM = new TTax_DM(nullptr);
    Calender_DM = new TCalender_DM(nullptr);
    Staff_DM = new TStaff_DM(nullptr);
    Entity_DM = new TEntity_DM(nullptr);
}

DataModules::~DataModules()
{
    const auto free = [](auto *&module) {
        delete module; // the lists of items have freed theirs
        module = nullptr;
    };
    free(Entity_DM);
    free(Staff_DM);
    free(Calender_DM);
    free(Tax_DM);
    free(CalcMethod_DM);
    free(PayrollInfo_DM);
}
