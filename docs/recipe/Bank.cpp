#include "Bank.h"

#include "common/QueryTools.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

using namespace Qt::Literals::StringLiterals;
using namespace QueryTools;

// The fields with their inputs, in the order in which a save sets their columns.
static constexpr TField<TBank_Mapper> fields[] = {
    {"Code", &TBank_Mapper::_Code},
    {"Title", &TBank_Mapper::_Title, {"Title_EDT", u"  &عنوان :", TFieldInput::Text, 0, 0, 0, 50}},
    {"Branch", &TBank_Mapper::_Branch, {"Branch_EDT", u"  &شعبه :", TFieldInput::Text, 0, 1, 0, 20}},
    {"Active", &TBank_Mapper::_Active, {"Active_CHK", u"&فعال", TFieldInput::Tick, 0, 2, 0}},
};

class TBankGet_FRM : public TRecordGet<TBank_Mapper> {
    Q_OBJECT
public:
    TBankGet_FRM(TBank_DM &data, const QVariant &code, TFormMode mode)
        : TRecordGet(cspPerson, code, mode, false)
    {
        SetTitle(u"بانک"_s);
        using M = TBank_Mapper;
        Store = {.newCode = [&data] { return data.Bank_GetNewCode(); },
                 .fresh =
                     [](int code) {
                         return M{code, {}, {}, true};
                     },
                 .read = [&data](const QVariant &code, M &bank) { return data.Bank_GetById(code, bank); },
                 .write = [&data](const M &bank, bool isNew) { return data.Bank_Save(bank, isNew); }};
        auto *grid = new QGridLayout;
        MakeInputs(fields);
        AddFields<TBank_Mapper>(grid, fields, u"Bank"_s);
        Body()->addLayout(grid);
        BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s, svSaveClose);
    }

protected:
    bool Validate() override { return RequireInput(Input<TSmartEdit_ZLM>("Title_EDT"), u"عنوان"_s); }
};

TBank_DM::TBank_DM(QObject *owner)
    : TDataModule(owner), List_QUR(NewQuery("List_QUR")), Get_QUR(NewQuery("Get_QUR"))
{
    List_QUR->setKeyField("Code");
}

int TBank_DM::Bank_GetNewCode()
{
    return DM.ADOConnection1->scalar("select isnull(max(Code),0)+1 from Bank").toInt();
}

bool TBank_DM::Bank_GetById(const QVariant &code, TBank_Mapper &bank)
{
    open(Get_QUR, TStatement("select * from Bank where Code=").integer(code));
    Fields::read<TBank_Mapper>(*Get_QUR, fields, bank);
    return !Get_QUR->isEmpty();
}

bool TBank_DM::Bank_Save(const TBank_Mapper &bank, bool isNew)
{
    return Post(Get_QUR, isNew, [&] { Fields::write<TBank_Mapper>(*Get_QUR, fields, bank); });
}

bool TBank_DM::Bank_Delete(int code)
{
    return Try([&] { run(Get_QUR, TStatement("delete from Bank where Code=").integer(code)); });
}

TBankList_FRM::TBankList_FRM(TFormMode mode, TBank_DM &data) : TBaseDock_FRM(mode, QString()), m_data(data)
{
    SetTitle(u"بانک ها"_s);
    BuildList(m_data.List_QUR, u"Bank_GRD"_s,
              {{u"Code"_s, u"کد"_s, 60, true, TGridColumn::Code},
               {u"Title"_s, u"عنوان"_s, 200},
               {u"Branch"_s, u"شعبه"_s, 120},
               {u"Active"_s, u"فعال"_s, 60, true, TGridColumn::YesNo}},
              {{u"Title"_s, u"عنوان"_s, TSearchItem::Text, true}, {u"Code"_s, u"کد"_s, TSearchItem::Digits}});
    BuildUsualLayout(u"بانک ها"_s);
    BuildButtons(false, true);
}

TBaseGet_FRM *TBankList_FRM::CreateEditor(bool newRecord)
{
    return newRecord ? new TBankGet_FRM(m_data, 0, fmNew)
                     : new TBankGet_FRM(m_data, ListQuery()->value(u"Code"_s), fmEdit);
}

void TBankList_FRM::DeleteRecord()
{
    const int code = ListQuery()->asInteger(u"Code"_s);
    if (BeginDelete(cspPerson, QString::number(code)) && !m_data.Bank_Delete(code))
        TellDeleteFailed(u"بانک"_s);
    RefreshList();
}

#include "Bank.moc"
