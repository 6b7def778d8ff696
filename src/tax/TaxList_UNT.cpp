#include "tax/TaxList_UNT.h"

#include "tax/TaxGet_UNT.h"

using namespace Qt::Literals::StringLiterals;

TTaxList_FRM *TaxList_FRM = nullptr;

namespace {

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {"Code", "کد", 70, true, TGridColumn::Code},
        {"Title", "عنوان", 260},
        {"Comment", "شرح", 320},
    };
    return list;
}

const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        {"Code", "کد", TSearchItem::Digits},
        {"Title", "عنوان", TSearchItem::Text, true},
        {"Comment", "شرح"},
    };
    return list;
}

} // namespace

TTaxList_FRM::TTaxList_FRM(TFormMode mode, const QString &text) : TBaseDock_FRM(mode, text), m_data(Tax_DM)
{
    if (text.isEmpty())
        SetTitle(u"جدول مالیاتی"_s);
    BuildList(Tax_DM->List_QUR, u"TaxDB_List_TableView"_s, columns(), searchItems());
    BuildUsualLayout(u"جدول مالیاتی"_s);
    SetListPart(cspTax);
    BuildButtons(true, false);
}

void TTaxList_FRM::SetListText()
{
    Tax_DM->Tax_Get();
}

TBaseGet_FRM *TTaxList_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TTaxGet_FRM(cspTax, false, QString());
    return new TTaxGet_FRM(cspTax, ListQuery()->value(u"Code"_s), fmEdit, false);
}

void TTaxList_FRM::DeleteRecord()
{
    const int code = ListQuery()->asInteger(u"Code"_s);
    if (!BeginDelete(cspTaxualList, QString::number(code)))
        return;
    // Brackets and header go together or not at all.
    if (!Tax_DM->Tax_DelWhole(code))
        TellDeleteFailed(u"سطر"_s);
    RefreshList();
}

bool TTaxList_FRM::SelectRecord()
{
    SelectedCode = ListQuery()->asInteger(u"code"_s);
    SelectedTitle = ListQuery()->asString(u"title"_s);
    IsSelected = true;
    return true;
}
