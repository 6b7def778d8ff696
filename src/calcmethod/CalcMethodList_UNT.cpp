#include "calcmethod/CalcMethodList_UNT.h"

#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/database/Query.h"

TCalcMethodList_FRM *CalcMethodList_FRM = nullptr;

namespace {

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {u"Code"_qs, u"کد"_qs, 43, true, TGridColumn::Code},
        {u"Title"_qs, u"عنوان"_qs, 152},
        {u"StaffIns"_qs, u"حق بيمه کارمند"_qs, 90, true, TGridColumn::Money},
        {u"EmployerIns"_qs, u"حق بيمه کارفرما"_qs, 89, true, TGridColumn::Money},
        {u"DailyIns"_qs, u"سقف بيمه روزانه"_qs, 97, true, TGridColumn::Money},
        {u"TaxTitle"_qs, u"عنوان جدول مالياتي"_qs, 145},
        {u"OverTime"_qs, u"سقف اضافه کاری"_qs, 0, false, TGridColumn::Money},
        {u"MaskokTitle"_qs, u"مانده مسکوک"_qs, 0, false},
    };
    return list;
}

const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        {u"Code"_qs, u"کد"_qs, TSearchItem::Digits},
        {u"Title"_qs, u"عنوان"_qs, TSearchItem::Text, true},
        {u"StaffIns"_qs, u"حق بيمه کارمند"_qs, TSearchItem::Money},
        {u"EmployerIns"_qs, u"حق بيمه کارفرما"_qs, TSearchItem::Money},
        {u"DailyIns"_qs, u"سقف بيمه روزانه"_qs, TSearchItem::Money},
        {u"TaxTitle"_qs, u"عنوان جدول مالياتي"_qs, TSearchItem::Text},
    };
    return list;
}

} // namespace

TCalcMethodList_FRM::TCalcMethodList_FRM(TFormMode mode, const QString &text) : TBaseDock_FRM(mode, text)
{
    SetTitle(u"ليست روش هاي محاسباتي"_qs);
    BuildList(CalcMethod_DM->List_QUR, u"CalcMethod_GRD"_qs, columns(), searchItems());
    BuildUsualLayout(u"ليست روش هاي محاسباتي"_qs);
    BuildButtons(true, false);
}

void TCalcMethodList_FRM::SetListText()
{
    CalcMethod_DM->CalcMethod_Get();
}

TBaseGet_FRM *TCalcMethodList_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TCalcMethodGet_FRM(cspCalcMethod, false, QString());
    return new TCalcMethodGet_FRM(cspCalcMethod, ListQuery()->asInteger(u"Code"_qs), fmEdit, false);
}

void TCalcMethodList_FRM::DeleteRecord()
{
    const int code = ListQuery()->asInteger(u"Code"_qs);
    if (!BeginDelete(cspCalcMethod, QString::number(code)))
        return;
    DM.ADOConnection1->clearLastError();
    if (!CalcMethod_DM->CalcMethod_Delete(code))
        TellDeleteFailed(u"روش"_qs);
    RefreshList();
}

bool TCalcMethodList_FRM::SelectRecord()
{
    SelectedCode = ListQuery()->asInteger(u"code"_qs);
    SelectedTitle = ListQuery()->asString(u"title"_qs);
    return true;
}
