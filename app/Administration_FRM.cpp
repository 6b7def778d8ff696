#include "app/Administration_FRM.h"

#include "app/Ask.h"
#include "app/EventLogCheck.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

QString partName(int part)
{
    return part == 0 ? u"سیستم"_s : SoftwarePartName(TSoftwarePart(part));
}

/// A date with its time keeps its order in a line from right to left.
QString moment(const QString &text)
{
    return text.isEmpty() ? text : u"\u2066%1\u2069"_s.arg(text);
}

/// What is to become of rows that are not saved yet, under a code that is given up; none: nothing is to be done.
std::optional<TRowsFate> askFate(int rows)
{
    if (rows == 0)
        return TRowsFate::Discard;
    switch (ShowSmartMessage(
        u"%1 سطر ثبت نشده (خانواده یا بازه مالیاتی) زیر این قفل مانده است. برای بازیابی در همین ایستگاه نگه داشته شود؟ با «خیر» دور ریخته می شود."_s
            .arg(rows),
        TMessageButtons::YesNoCancel, TAnswer::Yes)) {
    case TAnswer::Yes:
        return TRowsFate::Keep;
    case TAnswer::No:
        return TRowsFate::Discard;
    default:
        return {};
    }
}

QString rightName(int right)
{
    return PermissionName(TPermission(right));
}

} // namespace

TLockList_FRM::TLockList_FRM()
    : TSmallList_FRM(u"قفل رکوردها"_s, u"Lock_List_GRD"_s,
                     {u"بخش"_s, u"کد"_s, u"ایستگاه"_s, u"نام ایستگاه"_s, u"کاربر"_s, u"از زمان"_s}, 3)
{
    AddRefreshButton();
    AddRowButton(u"Release_BTN"_s, u"آزاد کردن قفل F7"_s, u"F7"_s, [this] { release(); });
    AddExitButton();
}

QList<QStringList> TLockList_FRM::ReadRows()
{
    m_locks = ListCodeLocks();
    return TextsOf(m_locks, [](const TCodeLock &lock) {
        return QStringList{SoftwarePartName(lock.part),
                           lock.code,
                           QString::number(lock.comIndex),
                           lock.workstation,
                           lock.userName,
                           moment(lock.lockedAt)};
    });
}

void TLockList_FRM::release()
{
    const QString deed = u"آزاد کردن قفل"_s;
    if (!HaveAdministration(UserInfo, deed))
        return;
    const TCodeLock lock = m_locks.at(CurrentRow());
    if (!Ask(
            u"کد %1 از «%2» در ایستگاه %3 باز است. اگر آنجا هنوز کسی روی آن کار می کند، ممکن است کار او از دست برود. قفل آزاد شود؟"_s
                .arg(lock.code, SoftwarePartName(lock.part))
                .arg(lock.comIndex),
            TAnswer::No))
        return;
    const std::optional<TRowsFate> fate = askFate(CountWorkingRows(lock.part, lock.code));
    // The questions may have waited long.
    if (!fate || !HaveAdministration(UserInfo, deed))
        return;
    if (!ReleaseCodeLock(lock, *fate))
        Tell(u"این قفل دیگر برقرار نیست."_s);
    Refresh();
}

TWorkstationList_FRM::TWorkstationList_FRM()
    : TSmallList_FRM(u"ایستگاه های کاری"_s, u"Workstation_List_GRD"_s,
                     {u"شماره"_s, u"نام"_s, u"آخرین ورود"_s})
{
    AddRefreshButton();
    AddRowButton(u"Del_BTN"_s, u"حذف F7"_s, u"F7"_s, [this] { remove(); });
    AddExitButton();
}

QList<QStringList> TWorkstationList_FRM::ReadRows()
{
    m_workstations = ListWorkstations();
    return TextsOf(m_workstations, [](const TWorkstation &station) {
        return QStringList{QString::number(station.comIndex), station.name, moment(station.lastSeen)};
    });
}

void TWorkstationList_FRM::remove()
{
    const QString deed = u"حذف ایستگاه کاری"_s;
    if (!HaveAdministration(UserInfo, deed))
        return;
    const TWorkstation workstation = m_workstations.at(CurrentRow());
    if (workstation.comIndex == IniOptions.Com_Index) {
        Tell(u"این همان ایستگاهی است که با آن کار می کنید."_s, miWarning);
        return;
    }
    if (!Ask(
            u"ایستگاه %1 («%2») با همه قفل های آن حذف شود؟"_s.arg(workstation.comIndex).arg(workstation.name),
            TAnswer::No))
        return;
    const std::optional<TRowsFate> fate = askFate(CountWorkingRowsOf(workstation.comIndex));
    if (!fate || !HaveAdministration(UserInfo, deed))
        return;
    RemoveWorkstation(workstation.comIndex, *fate);
    Refresh();
}

TEventLog_FRM::TEventLog_FRM()
    : TBaseDock_FRM(fmBrowse, u"رویدادها"_s), m_query(DM.ADOConnection1, "List_QUR")
{
    m_query.setKeyField(u"ID"_s);
    const QList<TGridColumn> columns = {
        {"EventDate", u"تاریخ"_s, 90},
        {"EventTime", u"ساعت"_s, 70},
        {"UserName", u"کاربر"_s, 120},
        {"Com_Index", u"ایستگاه"_s, 70},
        {"SoftwarePart", u"بخش"_s, 140, true, TGridColumn::Plain, partName},
        {"Permission", u"عمل"_s, 90, true, TGridColumn::Plain, rightName},
        {"EventText", u"شرح"_s, 250},
    };
    BuildList(&m_query, u"Event_List_GRD"_s, columns,
              {{"EventText", u"شرح"_s, TSearchItem::Text, true},
               {"UserName", u"کاربر"_s, TSearchItem::Text},
               {"EventDate", u"تاریخ"_s, TSearchItem::Date}});
    BuildUsualLayout(u"رویدادها"_s);
    KeepToAdministrators();
    BuildButtons(false, true);
    Check_BTN = AddButton(u"Check_BTN"_s, u"بررسی درستی F8"_s, u"F8"_s, u"بررسی درستی"_s);
    connect(Check_BTN, &QAbstractButton::clicked, this, [this] { Guarded([this] { check(); }); });
    for (TSmartButton_ZLM *button : {New_BTN, EDit_BTN, Del_BTN})
        button->hide();
}

void TEventLog_FRM::check()
{
    if (!HaveAdministration(UserInfo, u"بررسی رویدادها"_s))
        return;
    const TEventLogVerdict verdict = CheckEventLogWithProgress(this);
    if (!verdict.finished) {
        if (!verdict.check.finished)
            Tell(u"بررسی رویدادها متوقف شد. %1 سطر بررسی شده بود."_s.arg(verdict.check.lines), miWarning);
        return;
    }
    const TEventCheck &check = verdict.check;
    SetUserEvent(TSoftwarePart(0), cpOpen,
                 check.isWhole() ? u"بررسی رویدادها: درست، %1 سطر"_s.arg(check.lines)
                                 : u"بررسی رویدادها: دستکاری شده"_s,
                 true, true);
    const QString text = EventCheckText(check);
    if (check.isWhole() || check.knownHeadFound) {
        Tell(text, check.isWhole() ? miInformation : miWarning);
    } else if (Ask(text + u"\nبررسی های بعدی این ایستگاه با پایان کنونی رویدادها سنجیده شود؟"_s,
                   TAnswer::No)) {
        KeepSeenHead(check.head);
    }
    RefreshList(); // with the line of the check
}

void TEventLog_FRM::SetListText()
{
    m_query.setStatement(
        "select ID, EventDate, EventTime, UserName, Com_Index, SoftwarePart, Permission, EventText "
        "from UserEvent");
}
