#include "payrollinfo/PayrollInfoGet_UNT.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace {

const int caseNumberDigits = 12;
const int legalEntity = 1; // position in the list of employer titles

const QStringList &employerTitles()
{
    static const QStringList titles = {QStringLiteral("حقیقی"), QStringLiteral("حقوقی")};
    return titles;
}

const QStringList &legalTitles()
{
    static const QStringList titles = {
        QStringLiteral("وزارت خانه"),
        QStringLiteral("موسسه دولتی"),
        QStringLiteral("شرکت دولتی"),
        QStringLiteral("سایر دستگاههای دولتی"),
        QStringLiteral("نهادهای عمومی غیر دولتی"),
        QStringLiteral("بخش خصوصی"),
        QStringLiteral("سایر پرداخت کنندگان حقوق"),
    };
    return titles;
}

const QList<TGridColumn> &itemColumns()
{
    static const QList<TGridColumn> columns = {
        {QStringLiteral("Row"), QStringLiteral("ردیف"), 60, true, TGridColumn::RowNumber},
        {QStringLiteral("Title"), QStringLiteral("عنوان"), 240},
        {QStringLiteral("UserCode"), QStringLiteral("کد"), 80, true, TGridColumn::Code},
        {QStringLiteral("UserTitle"), QStringLiteral("عنوان انتخاب شده"), 240},
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

/// An input that must not be empty, with the name that the message gives it.
struct TPayrollInfoGet_FRM::TRequired {
    TSmartEdit_ZLM *input;
    QString caption;
    TSmartEdit_ZLM *tested = nullptr; ///< null: the input itself
};

TPayrollInfoGet_FRM::TPayrollInfoGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TBaseGet_FRM(part, code, mode, flag)
{
    SetTitle(QStringLiteral(" اطلاعات پایه "));
    resize(900, 680);
    Payroll_PC = new QTabWidget(this);
    Payroll_PC->setObjectName(QStringLiteral("Payroll_PC"));
    SetPages(Payroll_PC);
    buildCompanyPage();
    buildTaxOfficePage();
    Body()->addWidget(Payroll_PC);
    GuardPage(1, cspPayrollInfo, cpPayrollSecondPage);
    BuildFooter(QStringLiteral("ذخيره F3"), QStringLiteral("خروج Esc"));
}

TSmartEdit_ZLM *TPayrollInfoGet_FRM::addText(QGridLayout *into, int row, int column, const QString &caption,
                                             const QString &name, QString TPayrollInfo_Mapper::*field,
                                             int maxLength)
{
    auto *input =
        AddInput(into, row, column, caption, name, new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, maxLength));
    m_bound.append({input, field});
    KeepIn(QStringLiteral("PayrollInfo"), {{input, "Value"}});
    return input;
}

TSmartEdit_ZLM *TPayrollInfoGet_FRM::addNumber(QGridLayout *into, int row, int column, const QString &caption,
                                               const QString &name, QString TPayrollInfo_Mapper::*field,
                                               const QString &suffix)
{
    auto *input = new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15);
    input->SetText(QStringLiteral("0"));
    m_bound.append({input, field});
    return AddInput(into, row, column, caption, name, input, suffix);
}

TSmartMaskEdit_ZLM *TPayrollInfoGet_FRM::addNationalNumber(QGridLayout *into, int row, int column,
                                                           const QString &caption, const QString &name,
                                                           QString TPayrollInfo_Mapper::*field)
{
    auto *input = AddInput(into, row, column, caption, name,
                           new TSmartMaskEdit_ZLM(this, TSmartMaskEdit_ZLM::NationalCode, 10));
    connect(input, &TSmartEdit_ZLM::exited, this,
            [input] { input->IsValid(); }); // tells the user at the input
    m_bound.append({input, field});
    return input;
}

void TPayrollInfoGet_FRM::buildCompanyPage()
{
    using M = TPayrollInfo_Mapper;
    QGridLayout *page = AddPage(Payroll_PC, QStringLiteral("اطلاعات شرکت"), QStringLiteral("Company_TS"));
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    QGridLayout *general = AddGroup(groups, QStringLiteral("عمومی"), QStringLiteral("General_GB"));
    CaseNo_EDT = addText(general, 0, 0, QStringLiteral("  &شماره پرونده :"), QStringLiteral("CaseNo_EDT"),
                         &M::_CaseNo, 20);
    EmployeeTitle_CMB =
        AddInput(general, 0, 1, QStringLiteral("  &عنوان کارفرما :"), QStringLiteral("EmployeeTitle_CMB"),
                 new TSmartComboBox_ZLM(this, employerTitles()));
    EmployerName_EDT = addText(general, 1, 0, QStringLiteral("  ن&ام کارفرما :"),
                               QStringLiteral("EmployerName_EDT"), &M::_EmployerName);
    LegalTitle_CMB = AddInput(general, 1, 1, QStringLiteral("  عن&وان شخص حقوقی :"),
                              QStringLiteral("LegalTitle_CMB"), new TSmartComboBox_ZLM(this, legalTitles()));
    Ejtemae_EDT = addText(general, 2, 0, QStringLiteral("  نام شعبه &تامین اجتماعی :"),
                          QStringLiteral("Ejtemae_EDT"), &M::_Ejtemae);
    FactoryID_EDT = addText(general, 2, 1, QStringLiteral("  شما&ره کارگاه :"),
                            QStringLiteral("FactoryID_EDT"), &M::_FactoryID);
    FactoryName_EDT = addText(general, 3, 0, QStringLiteral("  نام &کارگاه :"),
                              QStringLiteral("FactoryName_EDT"), &M::_FactoryName);
    FactoryAdrr_EDT = addText(general, 3, 1, QStringLiteral("  نشانی کار&گاه :"),
                              QStringLiteral("FactoryAdrr_EDT"), &M::_FactoryAdrr, 200);
    LeisureIns_EDT = addNumber(general, 4, 0, QStringLiteral("  &حق بیمه بیکاری :"),
                               QStringLiteral("LeisureIns_EDT"), &M::_LeisureIns, QStringLiteral("%"));
    NationalNo_EDT = addNationalNumber(general, 4, 1, QStringLiteral("  ش&ماره ملی کارفرما :"),
                                       QStringLiteral("NationalNo_EDT"), &M::_NationalNo);

    QGridLayout *bank = AddGroup(groups, QStringLiteral(" دیسکت بانک "), QStringLiteral("Bank_GB"));
    BranchName_EDT = addText(bank, 0, 0, QStringLiteral("  نام شعبه :"), QStringLiteral("BranchName_EDT"),
                             &M::_BranchName);
    BranchCode_EDT = addText(bank, 0, 1, QStringLiteral("  کد شع&به :"), QStringLiteral("BranchCode_EDT"),
                             &M::_BranchCode);
    BranchNo_EDT =
        addText(bank, 1, 0, QStringLiteral("  شماره شعب&ه :"), QStringLiteral("BranchNo_EDT"), &M::_BranchNo);
    StageCode_EDT = addNumber(bank, 1, 1, QStringLiteral("  کد مر&حله جاری :"),
                              QStringLiteral("StageCode_EDT"), &M::_StageCode);
    OrganCode_EDT = addText(bank, 2, 0, QStringLiteral("  کد &سازمان :"), QStringLiteral("OrganCode_EDT"),
                            &M::_OrganCode);
    groups->addStretch();
    for (TSmartEdit_ZLM *number : {CaseNo_EDT, FactoryID_EDT, BranchCode_EDT, OrganCode_EDT})
        number->SetCodeForm(TSmartEdit_ZLM::PlainCode);
    BranchNo_EDT->SetCodeForm(TSmartEdit_ZLM::LatinDigits); // " 1" is not the head office

    CheckOnLeaving(BranchNo_EDT, [this] { applyBranchNumber(); });
    connect(EmployeeTitle_CMB, &TSmartComboBox_ZLM::changed, this, [this] { applyEmployerTitle(); });
    connect(LeisureIns_EDT, &TSmartEdit_ZLM::changed, this, [this] { GuardPercent(LeisureIns_EDT, false); });
}

void TPayrollInfoGet_FRM::buildTaxOfficePage()
{
    using M = TPayrollInfo_Mapper;
    QGridLayout *page =
        AddPage(Payroll_PC, QStringLiteral("اطلاعات تکمیلی دارایی"), QStringLiteral("TaxOffice_TS"));
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    QGridLayout *payer =
        AddGroup(groups, QStringLiteral("  اطلاعات پرداخت کننده حقوق  "), QStringLiteral("Payer_GB"));
    PayerName_EDT = addText(payer, 0, 0, QStringLiteral("  &نام پرداخت کننده :"),
                            QStringLiteral("PayerName_EDT"), &M::_PayerName);
    PayerFamily_EDT = addText(payer, 0, 1, QStringLiteral("  نام &خانوادگی پرداخت کننده :"),
                              QStringLiteral("PayerFamily_EDT"), &M::_PayerFamily);

    QGridLayout *signatories =
        AddGroup(groups, QStringLiteral(" اطلاعات حساب امضا "), QStringLiteral("Signatur_GB"));
    SignaturNameFirst_EDT = addText(signatories, 0, 0, QStringLiteral("  نام صاحب امضا اول :"),
                                    QStringLiteral("SignaturNameFirst_EDT"), &M::_SignaturNameFirst);
    SignaturFamilyFirst_EDT = addText(signatories, 0, 1, QStringLiteral("  نام خانوادگی صاحب امضا اول :"),
                                      QStringLiteral("SignaturFamilyFirst_EDT"), &M::_SignaturFamilyFirst);
    SignaturIdNationalFirst_EDT =
        addNationalNumber(signatories, 1, 0, QStringLiteral("  شماره ملی صاحب امضا اول :"),
                          QStringLiteral("SignaturIdNationalFirst_EDT"), &M::_SignaturIdNationalFirst);
    SignaturPositionFirst_EDT =
        addText(signatories, 1, 1, QStringLiteral("  سمت صاحب امضا اول :"),
                QStringLiteral("SignaturPositionFirst_EDT"), &M::_SignaturPositionFirst);
    SignaturNameSecond_EDT = addText(signatories, 2, 0, QStringLiteral("  نام صاحب امضا دوم :"),
                                     QStringLiteral("SignaturNameSecond_EDT"), &M::_SignaturNameSecond);
    SignaturFamilySecond_EDT = addText(signatories, 2, 1, QStringLiteral("  نام خانوادگی صاحب امضا دوم :"),
                                       QStringLiteral("SignaturFamilySecond_EDT"), &M::_SignaturFamilySecond);
    SignaturIdNationalSecond_EDT =
        addNationalNumber(signatories, 3, 0, QStringLiteral("  شماره ملی صاحب امضا دوم :"),
                          QStringLiteral("SignaturIdNationalSecond_EDT"), &M::_SignaturIdNationalSecond);
    SignaturPositionSecond_EDT =
        addText(signatories, 3, 1, QStringLiteral("  سمت صاحب امضا دوم :"),
                QStringLiteral("SignaturPositionSecond_EDT"), &M::_SignaturPositionSecond);

    m_rows = new TDetail_Rows_Frame(this, QStringLiteral("PAyrollInfDB_List_TableView"),
                                    {QString(), QStringLiteral("ویرایش سطر"), QString()},
                                    {QString(), QStringLiteral("EditRow_BTN"), QString()}, true);
    m_rows->SetColumns(PayrollInfo_DM->PayrollDetailList_QUR, itemColumns());
    groups->addWidget(m_rows, 1);
    AddTabStop(m_rows->Grid());
    AddTabStop(m_rows->EditRow);
    connect(m_rows, &TDetail_Rows_Frame::editRow, this, &TPayrollInfoGet_FRM::editRow);
}

void TPayrollInfoGet_FRM::LoadRecord()
{
    PayrollInfo_DM->PayrollInfo_Get(m_info);
    PayrollInfo_DM->PayRollInfoDetill_Get();
    PayrollInfo_DM->PayrollDetailList_QUR->open();
}

void TPayrollInfoGet_FRM::ShowRecord()
{
    for (const auto &[input, field] : std::as_const(m_bound))
        input->SetText(m_info.*field);
    const auto choose = [](TSmartComboBox_ZLM *list, const QString &position) {
        bool ok = false;
        const int index = position.toInt(&ok);
        list->setCurrentIndex(ok && index < list->count() ? index : -1);
    };
    choose(EmployeeTitle_CMB, m_info._EmployeeTitle);
    choose(LegalTitle_CMB, m_info._LegalTitle);
    applyBranchNumber();
    applyEmployerTitle();
    SetIsSaved(true);
}

void TPayrollInfoGet_FRM::applyBranchNumber()
{
    const bool headOffice = BranchNo_EDT->GetText() == u"1";
    if (headOffice)
        BranchName_EDT->SetText(QStringLiteral(" دفتر مرکزي "));
    BranchName_EDT->setReadOnly(headOffice);
}

void TPayrollInfoGet_FRM::applyEmployerTitle()
{
    const bool legal = EmployeeTitle_CMB->currentIndex() == legalEntity;
    LegalTitle_CMB->setVisible(legal);
    CaptionOf(LegalTitle_CMB)->setVisible(legal);
}

bool TPayrollInfoGet_FRM::require(const QList<TRequired> &inputs)
{
    for (const TRequired &required : inputs) {
        if (!(required.tested ? required.tested : required.input)->IsEmpty()) {
            if (!required.tested)
                RefuseBlanks(required.input, required.caption);
            continue;
        }
        FocusInput(required.input);
        MsgRequiredField(required.caption, required.input, this);
        FocusInput(required.input);
        return false;
    }
    return true;
}

bool TPayrollInfoGet_FRM::Validate()
{
    if (CaseNo_EDT->GetText().size() < caseNumberDigits) {
        FocusInput(CaseNo_EDT);
        ShowTooltipMessage(QStringLiteral("شماره پرونده نمي تواند کوچکتر از 12 رقم باشد"), CaseNo_EDT, 3000);
        return false;
    }
    if (!CheckInput(NationalNo_EDT))
        return false;
    if (!require({
            {LeisureIns_EDT, QStringLiteral("حق بيمه بيکاري")},
            {BranchCode_EDT, QStringLiteral("کد شعبه")},
            {StageCode_EDT, QStringLiteral("کد مرحله جاري")},
            {OrganCode_EDT, QStringLiteral("کد سازمان")},
            {BranchNo_EDT, QStringLiteral("شماره شعبه")},
        }))
        return false;
    if (!mayFillTaxOfficePage())
        return true;
    return require({
        {PayerName_EDT, QStringLiteral("نام پرداخت کننده")},
        // The payer's name is tested again, so that the family name is in effect never required.
        {PayerFamily_EDT, QStringLiteral("نام خانوادگي پرداخت کننده"), PayerName_EDT},
        {SignaturNameFirst_EDT, QStringLiteral("نام صاحب امضا اول")},
        {SignaturFamilyFirst_EDT, QStringLiteral("نام خانوادگي صاحب امضا اول")},
        {SignaturIdNationalFirst_EDT, QStringLiteral("شماره ملي صاحب امضا اول")},
        {SignaturPositionFirst_EDT, QStringLiteral("سمت صاحب امضا اول")},
    });
}

bool TPayrollInfoGet_FRM::SaveRecord()
{
    CheckTyped(BranchNo_EDT);
    for (const auto &[input, field] : std::as_const(m_bound))
        m_info.*field = input->GetText();
    const auto position = [](const TSmartComboBox_ZLM *list) {
        return list->currentIndex() < 0 ? QString() : QString::number(list->currentIndex());
    };
    m_info._EmployeeTitle = position(EmployeeTitle_CMB);
    m_info._LegalTitle = position(LegalTitle_CMB);
    try {
        PayrollInfo_DM->PayrollInfo_Insert(m_info);
    } catch (const TDatabaseError &error) {
        DM.ADOConnection1->noteError(error); // the failure message tells its reason
        MSGFinishedNotSuccessfully(QStringLiteral("ذخيره سازي"));
        return false;
    }
    MSGCompeletedSuccessfully(QStringLiteral("ذخيره سازي "));
    return true;
}

void TPayrollInfoGet_FRM::editRow()
{
    Guarded([this] {
        const TQuery *items = PayrollInfo_DM->PayrollDetailList_QUR;
        const QVariant id = items->value(QStringLiteral("ID"));
        TPayrollInfoDetail_FRM editor(cspPayrollInfo, items->value(QStringLiteral("Type")), fmEdit, id);
        if (editor.exec() == QDialog::Accepted)
            m_rows->Reread(QStringLiteral("ID"), id);
    });
}
