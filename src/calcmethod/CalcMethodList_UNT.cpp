#include "calcmethod/CalcMethodList_UNT.h"

#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/database/Query.h"

using namespace Qt::Literals::StringLiterals;

TCalcMethodList_FRM *CalcMethodList_FRM = nullptr;

namespace {

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {u"Code"_s, u"کد"_s, 43, true, TGridColumn::Code},
        {u"Title"_s, u"عنوان"_s, 152},
        {u"StaffIns"_s, u"حق بيمه کارمند"_s, 90, true, TGridColumn::Money},
        {u"EmployerIns"_s, u"حق بيمه کارفرما"_s, 89, true, TGridColumn::Money},
        {u"DailyIns"_s, u"سقف بيمه روزانه"_s, 97, true, TGridColumn::Money},
        {u"TaxTitle"_s, u"عنوان جدول مالياتي"_s, 145},
        {u"OverTime"_s, u"سقف اضافه کاری"_s, 0, false, TGridColumn::Money},
        {u"MaskokTitle"_s, u"مانده مسکوک"_s, 0, false},
    };
    return list;
}

const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        {u"Code"_s, u"کد"_s, TSearchItem::Digits},
        {u"Title"_s, u"عنوان"_s, TSearchItem::Text, true},
        {u"StaffIns"_s, u"حق بيمه کارمند"_s, TSearchItem::Money},
        {u"EmployerIns"_s, u"حق بيمه کارفرما"_s, TSearchItem::Money},
        {u"DailyIns"_s, u"سقف بيمه روزانه"_s, TSearchItem::Money},
        {u"TaxTitle"_s, u"عنوان جدول مالياتي"_s, TSearchItem::Text},
    };
    return list;
}

} // namespace

TCalcMethodList_FRM::TCalcMethodList_FRM(TFormMode mode, const QString &text) : TBaseDock_FRM(mode, text)
{
    SetTitle(u"ليست روش هاي محاسباتي"_s);
    BuildList(CalcMethod_DM->List_QUR, u"CalcMethod_GRD"_s, columns(), searchItems());
    BuildUsualLayout(u"ليست روش هاي محاسباتي"_s);
    SetListPart(cspCalcMethod);
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
    return new TCalcMethodGet_FRM(cspCalcMethod, ListQuery()->asInteger(u"Code"_s), fmEdit, false);
}

void TCalcMethodList_FRM::DeleteRecord()
{
    const int code = ListQuery()->asInteger(u"Code"_s);
    if (!BeginDelete(cspCalcMethod, QString::number(code)))
        return;
    DM.ADOConnection1->clearLastError();
    if (!CalcMethod_DM->CalcMethod_Delete(code))
        TellDeleteFailed(u"روش"_s);
    RefreshList();
}

bool TCalcMethodList_FRM::SelectRecord()
{
    SelectedCode = ListQuery()->asInteger(u"code"_s);
    SelectedTitle = ListQuery()->asString(u"title"_s);
    return true;
}
