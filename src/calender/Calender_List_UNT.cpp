#include "calender/Calender_List_UNT.h"

#include "calender/Calender_Day_UNT.h"
#include "calender/Calender_Set_UNT.h"
#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Range_Date_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TCalender_List_FRM *Calender_List_FRM = nullptr;

namespace {

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {"ID", "ID", 60, false, TGridColumn::Code},
        {"Row", "ردیف", 60, true, TGridColumn::RowNumber},
        {"Date", "تاریخ", 100},
        {"Title", "عنوان", 260},
        {"DayOfWeek", "روز", 100},
        {"TypeDay", "نوع روز", 130},
    };
    return list;
}

const TSearchItem dateItem = {"Date", "تاریخ", TSearchItem::Date};

const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        dateItem,
        {"Title", "عنوان", TSearchItem::Text, true},
        {"DayOfWeek", "روز"},
        {"TypeDay", "نوع روز"},
    };
    return list;
}

} // namespace

TCalender_List_FRM::TCalender_List_FRM(TFormMode mode, const QString &text)
    : TBaseDock_FRM(mode, text), m_data(Calender_DM)
{
    if (text.isEmpty())
        SetTitle(u"تقویم کاری"_s);
    BuildList(Calender_DM->List_QUR, u"CalenderDB_List_GRD"_s, columns(), searchItems());
    Grid()->SetMultiSelect(true);
    Grid()->SetColumnOffered(u"ID"_s, false); // the rows' key is nothing for people
    BuildUsualLayout(u"تقویم کاری"_s);
    Range_Date_Search = new TRange_Date_Search_Frame(this);
    Tab_Search = new TTab_Search_Frame(this);
    Tab_Search->AddTab(u"جستجوی عمومی"_s, General_Search);
    Tab_Search->AddTab(u"جستجوی بازه تاریخ"_s, Range_Date_Search);
    SearchPanel()->addWidget(Tab_Search);
    connect(Range_Date_Search, &TSearch_Frame::searchChanged, ZelmoSearchManager1,
            &TZelmoSearchManager::ExecuteFilter_DataSet);
    connect(Tab_Search, &TTab_Search_Frame::tabChanged, ZelmoSearchManager1,
            &TZelmoSearchManager::ExecuteFilter_DataSet);
    SetListPart(cspCalender);
    BuildButtons(false, true);
}

void TCalender_List_FRM::SetListText()
{
    Calender_DM->Calender_Get();
}

void TCalender_List_FRM::PrepareSearch()
{
    Range_Date_Search->init(ZelmoSearchManager1, dateItem);
    TBaseDock_FRM::PrepareSearch();
}

TBaseGet_FRM *TCalender_List_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TCalender_Set_FRM(cspCalender, false, QString());
    return new TCalender_Day_FRM(cspCalender, ListQuery()->value(u"ID"_s), fmEdit, false);
}

// The list is read again however an editor was left: a generation that stopped has stored days too.
bool TCalender_List_FRM::ShowEditor(TBaseGet_FRM *editor)
{
    const bool saved = TBaseDock_FRM::ShowEditor(editor);
    if (!saved)
        RefreshList();
    return saved;
}

void TCalender_List_FRM::DeleteRecord()
{
    if (!MayDelete(cspCalender))
        return;
    QList<int> rows = Grid()->SelectedRows();
    if (rows.isEmpty() && !CurrentIsStored())
        return;
    if (rows.isEmpty())
        rows.append(ListQuery()->position());
    const auto named = [&](int row) { return Grid()->NameOfRow(row); };
    if (!MsgDeleteRow(rows.size() == 1 ? named(rows.first())
                                       : u"%1 ... %2"_s.arg(named(rows.first()), named(rows.last())),
                      int(rows.size())))
        return;
    QStringList ids;
    for (const int row : rows)
        ids.append(QString::number(ListQuery()->keyAt(row)));
    const int date = ListQuery()->fieldIndex(u"Date"_s);
    const QString first = ListQuery()->valueAt(rows.first(), date).toString();
    SetUserEvent(cspCalender, cpDelete,
                 rows.size() == 1 ? first
                                  : u"%1 روز: %2 ... %3"_s.arg(rows.size())
                                        .arg(first, ListQuery()->valueAt(rows.last(), date).toString()),
                 false, false); // what cannot be recorded is not deleted
    Calender_DM->Calender_del(ids.join(u','));
    RefreshList();
}
