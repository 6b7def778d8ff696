#include "app/Administration_FRM.h"

#include "app/Ask.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"

#include <optional>

namespace {

QString partName(int part)
{
    return part == 0 ? u"سیستم"_qs : SoftwarePartName(TSoftwarePart(part));
}

/// A date with its time keeps its order in a line from right to left.
QString moment(const QString &text)
{
    return text.isEmpty() ? text : QStringLiteral("\u2066%1\u2069").arg(text);
}

/// What is to become of rows that are not saved yet, under a code that is given up; none: nothing is to be done.
std::optional<TRowsFate> askFate(int rows)
{
    if (rows == 0)
        return TRowsFate::Discard;
    switch (ShowSmartMessage(
        u"%1 سطر ثبت نشده (خانواده یا بازه مالیاتی) زیر این قفل مانده است. برای بازیابی در همین ایستگاه نگه داشته شود؟ با «خیر» دور ریخته می شود."_qs
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
    : TSmallList_FRM(u"قفل رکوردها"_qs, QStringLiteral("Lock_List_GRD"),
                     {u"بخش"_qs, u"کد"_qs, u"ایستگاه"_qs, u"نام ایستگاه"_qs, u"کاربر"_qs, u"از زمان"_qs}, 3)
{
    AddFreeButton(QStringLiteral("Refresh_BTN"), u"بازخوانی F5"_qs, QStringLiteral("F5"),
                  [this] { Refresh(); });
    AddRowButton(QStringLiteral("Release_BTN"), u"آزاد کردن قفل F7"_qs, QStringLiteral("F7"),
                 [this] { release(); });
    AddExitButton();
}

QList<QStringList> TLockList_FRM::ReadRows()
{
    m_locks = ListCodeLocks();
    QList<QStringList> rows;
    for (const TCodeLock &lock : std::as_const(m_locks))
        rows << QStringList{SoftwarePartName(lock.part),
                            lock.code,
                            QString::number(lock.comIndex),
                            lock.workstation,
                            lock.userName,
                            moment(lock.lockedAt)};
    return rows;
}

void TLockList_FRM::release()
{
    const TCodeLock lock = m_locks.at(CurrentRow());
    if (!Ask(
            u"کد %1 از «%2» در ایستگاه %3 باز است. اگر آنجا هنوز کسی روی آن کار می کند، ممکن است کار او از دست برود. قفل آزاد شود؟"_qs
                .arg(lock.code, SoftwarePartName(lock.part))
                .arg(lock.comIndex),
            TAnswer::No))
        return;
    const std::optional<TRowsFate> fate = askFate(CountWorkingRows(lock.part, lock.code));
    if (!fate)
        return;
    if (!ReleaseCodeLock(lock, *fate))
        Tell(u"این قفل دیگر برقرار نیست."_qs);
    Refresh();
}

TWorkstationList_FRM::TWorkstationList_FRM()
    : TSmallList_FRM(u"ایستگاه های کاری"_qs, QStringLiteral("Workstation_List_GRD"),
                     {u"شماره"_qs, u"نام"_qs, u"آخرین ورود"_qs})
{
    AddFreeButton(QStringLiteral("Refresh_BTN"), u"بازخوانی F5"_qs, QStringLiteral("F5"),
                  [this] { Refresh(); });
    AddRowButton(QStringLiteral("Del_BTN"), u"حذف F7"_qs, QStringLiteral("F7"), [this] { remove(); });
    AddExitButton();
}

QList<QStringList> TWorkstationList_FRM::ReadRows()
{
    m_workstations = ListWorkstations();
    QList<QStringList> rows;
    for (const TWorkstation &workstation : std::as_const(m_workstations))
        rows << QStringList{QString::number(workstation.comIndex), workstation.name,
                            moment(workstation.lastSeen)};
    return rows;
}

void TWorkstationList_FRM::remove()
{
    const TWorkstation workstation = m_workstations.at(CurrentRow());
    if (workstation.comIndex == IniOptions.Com_Index) {
        Tell(u"این همان ایستگاهی است که با آن کار می کنید."_qs, miWarning);
        return;
    }
    if (!Ask(u"ایستگاه %1 («%2») با همه قفل های آن حذف شود؟"_qs.arg(workstation.comIndex)
                 .arg(workstation.name),
             TAnswer::No))
        return;
    const std::optional<TRowsFate> fate = askFate(CountWorkingRowsOf(workstation.comIndex));
    if (!fate)
        return;
    RemoveWorkstation(workstation.comIndex, *fate);
    Refresh();
}

TEventLog_FRM::TEventLog_FRM()
    : TBaseDock_FRM(fmBrowse, u"رویدادها"_qs), m_query(DM.ADOConnection1, "List_QUR")
{
    m_query.setKeyField(QStringLiteral("ID"));
    const QList<TGridColumn> columns = {
        {"EventDate", u"تاریخ"_qs, 90},
        {"EventTime", u"ساعت"_qs, 70},
        {"UserName", u"کاربر"_qs, 120},
        {"Com_Index", u"ایستگاه"_qs, 70},
        {"SoftwarePart", u"بخش"_qs, 140, true, TGridColumn::Plain, partName},
        {"Permission", u"عمل"_qs, 90, true, TGridColumn::Plain, rightName},
        {"EventText", u"شرح"_qs, 250},
    };
    BuildList(&m_query, QStringLiteral("Event_List_GRD"), columns,
              {{"EventText", u"شرح"_qs, TSearchItem::Text, true},
               {"UserName", u"کاربر"_qs, TSearchItem::Text},
               {"EventDate", u"تاریخ"_qs, TSearchItem::Date}});
    BuildUsualLayout(u"رویدادها"_qs);
    BuildButtons(false, true);
    for (TSmartButton_ZLM *button : {New_BTN, EDit_BTN, Del_BTN})
        button->hide();
}

void TEventLog_FRM::SetListText()
{
    m_query.setStatement(
        "select ID, EventDate, EventTime, UserName, Com_Index, SoftwarePart, Permission, EventText "
        "from UserEvent");
}
