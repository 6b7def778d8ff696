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
    AddFields(inputs, payrollItemFields(), u"PayrollInfoDetail"_s);
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
    const QString title =
        ScalerQuery(isDeduction() ? u"Deduction"_s : u"Fiscal"_s, u"Title"_s, u"Code"_s, code.toInt());
    Code_LBL->setText(title);
    const auto complaint = title.isEmpty() ? FirstComplaint(payrollItemRules(), subject()) : std::nullopt;
    if (!complaint)
        return;
    FiscalDeducationCode_EDT->Clear();
    MsgCodeNotAvailable(complaint->word, FiscalDeducationCode_EDT, this);
}

TPayrollItemSubject TPayrollInfoDetail_FRM::subject() const
{
    return {{payrollItemFields(), Typed(), {}, m_inputs.empty()}, isDeduction()};
}

void TPayrollInfoDetail_FRM::pickCode()
{
    const int code = Open_FiscalDeductionList(isDeduction() ? cspDeduction : cspFiscal, pickOne, {});
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
    return Keeps(payrollItemRules().back(), payrollItemFields(), subject());
}

bool TPayrollInfoDetail_FRM::ReadyToSave()
{
    const TStanding standing = StandingOf(UserInfo, Part(), cpOpen);
    TellStanding(standing, Part(), cpOpen, u"آنچه نوشته اید ذخیره نشده و روی صفحه می ماند."_s);
    return standing == TStanding::Holds;
}

void TPayrollInfoDetail_FRM::RecordSaved(bool)
{
    SetUserEvent(Part(), cpEdit, u"%1: %2"_s.arg(Title1_LBL->text(), FiscalDeducationCode_EDT->GetText()),
                 false, true);
}
