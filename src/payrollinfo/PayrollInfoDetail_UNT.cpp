#include "payrollinfo/PayrollInfoDetail_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

const int pickOne = 4; // the kind of choosing that gives one code back

/// Where the codes of an item's type are looked up, and what the user calls them.
struct TLinked {
    TSoftwarePart part;
    const char *table;
    const char *entity;
};
const TLinked linked[] = {{cspFiscal, "Fiscal", "مزايا"}, {cspDeduction, "Deduction", "کسورات"}};

} // namespace

TPayrollInfoDetail_FRM::TPayrollInfoDetail_FRM(const QVariant &part, const QVariant &type, TFormMode mode,
                                               const QVariant &rowId)
    : TRecordGet(part, type, mode, rowId)
{
    SetTitle(u" اطلاعات پایه "_s);
    Store.read = [](const QVariant &id, TPayrollInfoDetail_Mapper &) {
        PayrollInfo_DM->PayRollInfoDetill_GetByID(id);
        return !PayrollInfo_DM->PayrollDetailGet_QUR->isEmpty();
    };
    Store.write = [](const TPayrollInfoDetail_Mapper &link, bool) {
        return PayrollInfo_DM->PayrollInfoDetails_Insert(link);
    };
    SaveWords = {u"ذخيره سازي"_s, {}, {}};
    auto *inputs = new QGridLayout;
    Body()->addLayout(inputs); // first: what stands beside an input is looked for in the screen's layouts
    Title1_LBL = new QLabel(this);
    Title1_LBL->setObjectName(u"Title1_LBL"_s);
    inputs->addWidget(new QLabel(u"  عنوان :"_s, this), 0, 0);
    inputs->addWidget(Title1_LBL, 0, 1);
    FiscalDeducationCode_EDT = AddInput(inputs, 1, 0, u"  &کد :"_s, u"FiscalDeducationCode_EDT"_s,
                                        new TSmartButtonEdit_ZLM(this, 6));
    Code_LBL = new QLabel(this);
    Code_LBL->setObjectName(u"Code_LBL"_s);
    Code_LBL->setMinimumWidth(220);
    Code_LBL->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    AddBeside(FiscalDeducationCode_EDT, Code_LBL);
    CheckOnLeaving(FiscalDeducationCode_EDT, [this] { lookUpCode(); });
    connect(FiscalDeducationCode_EDT, &TSmartPickEdit_ZLM::pick, this, [this] { pickCode(); });
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
}

void TPayrollInfoDetail_FRM::ShowRecord()
{
    const TQuery *item = PayrollInfo_DM->PayrollDetailGet_QUR;
    Title1_LBL->setText(item->asString(u"Title"_s));
    FiscalDeducationCode_EDT->SetText(item->asString(u"UserCode"_s));
    codeExit();
    SetIsSaved(true);
}

void TPayrollInfoDetail_FRM::codeExit()
{
    Guarded([this] { lookUpCode(); });
}

void TPayrollInfoDetail_FRM::lookUpCode()
{
    Code_LBL->clear();
    const QString code = FiscalDeducationCode_EDT->GetText();
    if (code.isEmpty())
        return;
    const TLinked &target = linked[isDeduction() ? 1 : 0];
    const auto columnOf = [&](const QString &column) {
        return ScalerQuery(QString::fromLatin1(target.table), column, u"Code"_s, code.toInt());
    };
    const QString title = columnOf(u"Title"_s);
    Code_LBL->setText(title);
    if (!title.isEmpty() || !columnOf(u"Code"_s).isEmpty()) // stored without a title, it is still there
        return;
    FiscalDeducationCode_EDT->Clear();
    MsgCodeNotAvailable(QString::fromUtf8(target.entity), FiscalDeducationCode_EDT, this);
}

void TPayrollInfoDetail_FRM::pickCode()
{
    const int code = Open_FiscalDeductionList(linked[isDeduction() ? 1 : 0].part, pickOne, {});
    if (code == 0)
        return; // nothing chosen: what was typed stays
    FiscalDeducationCode_EDT->SetText(QString::number(code));
    codeExit();
    SetIsSaved(false);
}

bool TPayrollInfoDetail_FRM::Validate()
{
    if (!FiscalDeducationCode_EDT->IsEmpty()) {
        // Not guarded: a save must not go on without it. A code without a title is one whose look-up failed.
        if (!CheckTyped(FiscalDeducationCode_EDT) && Code_LBL->text().isEmpty())
            lookUpCode();
        if (FiscalDeducationCode_EDT->IsEmpty())
            return false; // the user was told that there is no such code
    }
    if (!FiscalDeducationCode_EDT->IsEmpty())
        return true;
    MsgRequiredField(u"کد"_s, FiscalDeducationCode_EDT, this);
    FocusInput(FiscalDeducationCode_EDT);
    return false;
}

void TPayrollInfoDetail_FRM::RecordSaved(bool)
{
    SetUserEvent(Part(), cpEdit, u"%1: %2"_s.arg(Title1_LBL->text(), FiscalDeducationCode_EDT->GetText()),
                 false, true);
}

TPayrollInfoDetail_Mapper TPayrollInfoDetail_FRM::Typed() const
{
    TPayrollInfoDetail_Mapper link;
    link._Code = FiscalDeducationCode_EDT->asInteger();
    return link;
}
