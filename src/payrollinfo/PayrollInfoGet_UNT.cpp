#include "payrollinfo/PayrollInfoGet_UNT.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

const int legalEntity = 1; // position in the list of employer titles

const QList<TGridColumn> &itemColumns()
{
    static const QList<TGridColumn> columns = {
        {u"Row"_s, u"ردیف"_s, 60, true, TGridColumn::RowNumber},
        {u"Title"_s, u"عنوان"_s, 240},
        {u"UserCode"_s, u"کد"_s, 80, true, TGridColumn::Code},
        {u"UserTitle"_s, u"عنوان انتخاب شده"_s, 240},
    };
    return columns;
}

// The settings' second page is the tax office's: who may not open it, is not asked for what stands there. An error
// is no answer: it stops the save.
bool mayFillTaxOfficePage()
{
    return HoldsPermission(UserInfo, cspPayrollInfo, cpPayrollSecondPage);
}

} // namespace

TPayrollInfoGet_FRM::TPayrollInfoGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TRecordGet(part, code, mode, flag)
{
    SetTitle(u" اطلاعات پایه "_s);
    resize(900, 680);
    Store.read = [](const QVariant &, TPayrollInfo_Mapper &info) {
        PayrollInfo_DM->PayrollInfo_Get(info);
        PayrollInfo_DM->PayRollInfoDetill_Get();
        PayrollInfo_DM->PayrollDetailList_QUR->open();
        return true;
    };
    Store.write = [](const TPayrollInfo_Mapper &info, bool) {
        PayrollInfo_DM->PayrollInfo_Insert(info);
        return true;
    };
    SaveWords = {u"ذخيره سازي"_s, {}, u"ذخيره سازي "_s};
    Payroll_PC->setObjectName(u"Payroll_PC"_s);
    SetPages(Payroll_PC);
    buildCompanyPage();
    buildTaxOfficePage();
    Body()->addWidget(Payroll_PC);
    GuardPage(1, cspPayrollInfo, cpPayrollSecondPage);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
}

void TPayrollInfoGet_FRM::buildCompanyPage()
{
    QGridLayout *page = AddPage(Payroll_PC, u"اطلاعات شرکت"_s, u"Company_TS"_s);
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    AddFields(AddGroup(groups, u"عمومی"_s, u"General_GB"_s), payrollInfoFields(), u"PayrollInfo"_s, piGeneral,
              "Value");
    AddFields(AddGroup(groups, u" دیسکت بانک "_s, u"Bank_GB"_s), payrollInfoFields(), u"PayrollInfo"_s,
              piBank, "Value");
    groups->addStretch();
    for (TSmartEdit_ZLM *number : {LeisureIns_EDT, StageCode_EDT})
        number->SetText(u"0"_s);

    CheckOnLeaving(BranchNo_EDT, [this] { applyBranchNumber(); });
    connect(EmployeeTitle_CMB, &TSmartComboBox_ZLM::changed, this, [this] { applyEmployerTitle(); });
    connect(LeisureIns_EDT, &TSmartEdit_ZLM::changed, this, [this] { GuardPercent(LeisureIns_EDT, false); });
}

void TPayrollInfoGet_FRM::buildTaxOfficePage()
{
    QGridLayout *page = AddPage(Payroll_PC, u"اطلاعات تکمیلی دارایی"_s, u"TaxOffice_TS"_s);
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    AddFields(AddGroup(groups, u"  اطلاعات پرداخت کننده حقوق  "_s, u"Payer_GB"_s), payrollInfoFields(),
              u"PayrollInfo"_s, piPayer, "Value");
    AddFields(AddGroup(groups, u" اطلاعات حساب امضا "_s, u"Signatur_GB"_s), payrollInfoFields(),
              u"PayrollInfo"_s, piSignatories, "Value");
    for (TSmartMaskEdit_ZLM *number :
         {NationalNo_EDT, SignaturIdNationalFirst_EDT, SignaturIdNationalSecond_EDT})
        connect(number, &TSmartEdit_ZLM::exited, this,
                [number] { number->IsValid(); }); // tells the user at the input

    m_rows = new TDetail_Rows_Frame(this, u"PAyrollInfDB_List_TableView"_s,
                                    {QString(), u"ویرایش سطر"_s, QString()},
                                    {QString(), u"EditRow_BTN"_s, QString()}, true);
    m_rows->SetColumns(PayrollInfo_DM->PayrollDetailList_QUR, itemColumns());
    groups->addWidget(m_rows, 1);
    AddTabStop(m_rows->Grid());
    AddTabStop(m_rows->EditRow);
    connect(m_rows, &TDetail_Rows_Frame::editRow, this, &TPayrollInfoGet_FRM::editRow);
}

void TPayrollInfoGet_FRM::ShowRecord()
{
    m_inputs.show(Stored);
    applyBranchNumber();
    applyEmployerTitle();
    SetIsSaved(true);
}

void TPayrollInfoGet_FRM::applyBranchNumber()
{
    const bool headOffice = BranchNo_EDT->GetText() == u"1";
    if (headOffice)
        BranchName_EDT->SetText(u" دفتر مرکزي "_s);
    BranchName_EDT->setReadOnly(headOffice);
}

void TPayrollInfoGet_FRM::applyEmployerTitle()
{
    const bool legal = EmployeeTitle_CMB->currentIndex() == legalEntity;
    LegalTitle_CMB->setVisible(legal);
    CaptionOf(LegalTitle_CMB)->setVisible(legal);
}

bool TPayrollInfoGet_FRM::Validate()
{
    const auto keepAll = [this](auto rules) {
        return std::ranges::all_of(rules, [this](const auto &rule) { return keeps(rule); });
    };
    return keepAll(payrollInfoRules()) && (!mayFillTaxOfficePage() || keepAll(taxOfficeRules()));
}

bool TPayrollInfoGet_FRM::keeps(const TRule<TPayrollInfoSubject> &rule)
{
    TPayrollInfoSubject subject{payrollInfoFields()};
    m_inputs.read(subject.record);
    const bool broken = rule.message != TRuleMessage::WrongForm && rule.complaint(subject);
    auto *input = Input<TSmartEdit_ZLM>(Fields::ofColumn(payrollInfoFields(), rule.column)->input.name);
    if (broken)
        FocusInput(input); // its page comes forward first
    else if (input == PayerFamily_EDT)
        return true; // blanks will do
    return Keeps(rule, payrollInfoFields(), subject);
}

bool TPayrollInfoGet_FRM::SaveRecord()
{
    CheckTyped(BranchNo_EDT);
    return TRecordGet::SaveRecord();
}

void TPayrollInfoGet_FRM::editRow()
{
    Guarded([this] {
        const TQuery *items = PayrollInfo_DM->PayrollDetailList_QUR;
        const QVariant id = items->value(u"ID"_s);
        TPayrollInfoDetail_FRM editor(cspPayrollInfo, items->value(u"Type"_s), fmEdit, id);
        if (editor.exec() == QDialog::Accepted)
            m_rows->Reread(u"ID"_s, id);
    });
}
