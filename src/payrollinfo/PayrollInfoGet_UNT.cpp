#include "payrollinfo/PayrollInfoGet_UNT.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

const int caseNumberDigits = 12;
const int legalEntity = 1; // position in the list of employer titles

const QStringList &employerTitles()
{
    static const QStringList titles = {u"حقیقی"_s, u"حقوقی"_s};
    return titles;
}

const QStringList &legalTitles()
{
    static const QStringList titles = {
        u"وزارت خانه"_s,
        u"موسسه دولتی"_s,
        u"شرکت دولتی"_s,
        u"سایر دستگاههای دولتی"_s,
        u"نهادهای عمومی غیر دولتی"_s,
        u"بخش خصوصی"_s,
        u"سایر پرداخت کنندگان حقوق"_s,
    };
    return titles;
}

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

/// An input that must not be empty, with the name that the message gives it.
struct TPayrollInfoGet_FRM::TRequired {
    TSmartEdit_ZLM *input;
    QString caption;
    TSmartEdit_ZLM *tested = nullptr; ///< null: the input itself
};

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
    Payroll_PC = new QTabWidget(this);
    Payroll_PC->setObjectName(u"Payroll_PC"_s);
    SetPages(Payroll_PC);
    buildCompanyPage();
    buildTaxOfficePage();
    Body()->addWidget(Payroll_PC);
    GuardPage(1, cspPayrollInfo, cpPayrollSecondPage);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
}

TSmartEdit_ZLM *TPayrollInfoGet_FRM::addText(QGridLayout *into, int row, int column, const QString &caption,
                                             const QString &name, QString TPayrollInfo_Mapper::*field,
                                             int maxLength)
{
    auto *input =
        AddInput(into, row, column, caption, name, new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, maxLength));
    KeepIn(u"PayrollInfo"_s, {{input, "Value"}});
    return Inputs.add(input, field);
}

TSmartEdit_ZLM *TPayrollInfoGet_FRM::addNumber(QGridLayout *into, int row, int column, const QString &caption,
                                               const QString &name, QString TPayrollInfo_Mapper::*field,
                                               const QString &suffix)
{
    auto *input = new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15);
    input->SetText(u"0"_s);
    return Inputs.add(AddInput(into, row, column, caption, name, input, suffix), field);
}

TSmartMaskEdit_ZLM *TPayrollInfoGet_FRM::addNationalNumber(QGridLayout *into, int row, int column,
                                                           const QString &caption, const QString &name,
                                                           QString TPayrollInfo_Mapper::*field)
{
    auto *input = AddInput(into, row, column, caption, name,
                           new TSmartMaskEdit_ZLM(this, TSmartMaskEdit_ZLM::NationalCode, 10));
    connect(input, &TSmartEdit_ZLM::exited, this,
            [input] { input->IsValid(); }); // tells the user at the input
    return Inputs.add(input, field);
}

void TPayrollInfoGet_FRM::buildCompanyPage()
{
    using M = TPayrollInfo_Mapper;
    QGridLayout *page = AddPage(Payroll_PC, u"اطلاعات شرکت"_s, u"Company_TS"_s);
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    QGridLayout *general = AddGroup(groups, u"عمومی"_s, u"General_GB"_s);
    CaseNo_EDT = addText(general, 0, 0, u"  &شماره پرونده :"_s, u"CaseNo_EDT"_s, &M::_CaseNo, 20);
    EmployeeTitle_CMB = AddInput(general, 0, 1, u"  &عنوان کارفرما :"_s, u"EmployeeTitle_CMB"_s,
                                 new TSmartComboBox_ZLM(this, employerTitles()));
    EmployerName_EDT =
        addText(general, 1, 0, u"  ن&ام کارفرما :"_s, u"EmployerName_EDT"_s, &M::_EmployerName);
    LegalTitle_CMB = AddInput(general, 1, 1, u"  عن&وان شخص حقوقی :"_s, u"LegalTitle_CMB"_s,
                              new TSmartComboBox_ZLM(this, legalTitles()));
    Ejtemae_EDT = addText(general, 2, 0, u"  نام شعبه &تامین اجتماعی :"_s, u"Ejtemae_EDT"_s, &M::_Ejtemae);
    FactoryID_EDT = addText(general, 2, 1, u"  شما&ره کارگاه :"_s, u"FactoryID_EDT"_s, &M::_FactoryID);
    FactoryName_EDT = addText(general, 3, 0, u"  نام &کارگاه :"_s, u"FactoryName_EDT"_s, &M::_FactoryName);
    FactoryAdrr_EDT =
        addText(general, 3, 1, u"  نشانی کار&گاه :"_s, u"FactoryAdrr_EDT"_s, &M::_FactoryAdrr, 200);
    LeisureIns_EDT =
        addNumber(general, 4, 0, u"  &حق بیمه بیکاری :"_s, u"LeisureIns_EDT"_s, &M::_LeisureIns, u"%"_s);
    NationalNo_EDT =
        addNationalNumber(general, 4, 1, u"  ش&ماره ملی کارفرما :"_s, u"NationalNo_EDT"_s, &M::_NationalNo);

    QGridLayout *bank = AddGroup(groups, u" دیسکت بانک "_s, u"Bank_GB"_s);
    BranchName_EDT = addText(bank, 0, 0, u"  نام شعبه :"_s, u"BranchName_EDT"_s, &M::_BranchName);
    BranchCode_EDT = addText(bank, 0, 1, u"  کد شع&به :"_s, u"BranchCode_EDT"_s, &M::_BranchCode);
    BranchNo_EDT = addText(bank, 1, 0, u"  شماره شعب&ه :"_s, u"BranchNo_EDT"_s, &M::_BranchNo);
    StageCode_EDT = addNumber(bank, 1, 1, u"  کد مر&حله جاری :"_s, u"StageCode_EDT"_s, &M::_StageCode);
    OrganCode_EDT = addText(bank, 2, 0, u"  کد &سازمان :"_s, u"OrganCode_EDT"_s, &M::_OrganCode);
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
    QGridLayout *page = AddPage(Payroll_PC, u"اطلاعات تکمیلی دارایی"_s, u"TaxOffice_TS"_s);
    auto *groups = new QVBoxLayout;
    page->addLayout(groups, 0, 0);

    QGridLayout *payer = AddGroup(groups, u"  اطلاعات پرداخت کننده حقوق  "_s, u"Payer_GB"_s);
    PayerName_EDT = addText(payer, 0, 0, u"  &نام پرداخت کننده :"_s, u"PayerName_EDT"_s, &M::_PayerName);
    PayerFamily_EDT =
        addText(payer, 0, 1, u"  نام &خانوادگی پرداخت کننده :"_s, u"PayerFamily_EDT"_s, &M::_PayerFamily);

    QGridLayout *signatories = AddGroup(groups, u" اطلاعات حساب امضا "_s, u"Signatur_GB"_s);
    SignaturNameFirst_EDT = addText(signatories, 0, 0, u"  نام صاحب امضا اول :"_s, u"SignaturNameFirst_EDT"_s,
                                    &M::_SignaturNameFirst);
    SignaturFamilyFirst_EDT = addText(signatories, 0, 1, u"  نام خانوادگی صاحب امضا اول :"_s,
                                      u"SignaturFamilyFirst_EDT"_s, &M::_SignaturFamilyFirst);
    SignaturIdNationalFirst_EDT =
        addNationalNumber(signatories, 1, 0, u"  شماره ملی صاحب امضا اول :"_s,
                          u"SignaturIdNationalFirst_EDT"_s, &M::_SignaturIdNationalFirst);
    SignaturPositionFirst_EDT = addText(signatories, 1, 1, u"  سمت صاحب امضا اول :"_s,
                                        u"SignaturPositionFirst_EDT"_s, &M::_SignaturPositionFirst);
    SignaturNameSecond_EDT = addText(signatories, 2, 0, u"  نام صاحب امضا دوم :"_s,
                                     u"SignaturNameSecond_EDT"_s, &M::_SignaturNameSecond);
    SignaturFamilySecond_EDT = addText(signatories, 2, 1, u"  نام خانوادگی صاحب امضا دوم :"_s,
                                       u"SignaturFamilySecond_EDT"_s, &M::_SignaturFamilySecond);
    SignaturIdNationalSecond_EDT =
        addNationalNumber(signatories, 3, 0, u"  شماره ملی صاحب امضا دوم :"_s,
                          u"SignaturIdNationalSecond_EDT"_s, &M::_SignaturIdNationalSecond);
    SignaturPositionSecond_EDT = addText(signatories, 3, 1, u"  سمت صاحب امضا دوم :"_s,
                                         u"SignaturPositionSecond_EDT"_s, &M::_SignaturPositionSecond);

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
    Inputs.show(Stored);
    const auto choose = [](TSmartComboBox_ZLM *list, const QString &position) {
        bool ok = false;
        const int index = position.toInt(&ok);
        list->setCurrentIndex(ok && index < list->count() ? index : -1);
    };
    choose(EmployeeTitle_CMB, Stored._EmployeeTitle);
    choose(LegalTitle_CMB, Stored._LegalTitle);
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
        ShowTooltipMessage(u"شماره پرونده نمي تواند کوچکتر از 12 رقم باشد"_s, CaseNo_EDT, noteTime);
        return false;
    }
    if (!CheckInput(NationalNo_EDT))
        return false;
    if (!require({
            {LeisureIns_EDT, u"حق بيمه بيکاري"_s},
            {BranchCode_EDT, u"کد شعبه"_s},
            {StageCode_EDT, u"کد مرحله جاري"_s},
            {OrganCode_EDT, u"کد سازمان"_s},
            {BranchNo_EDT, u"شماره شعبه"_s},
        }))
        return false;
    if (!mayFillTaxOfficePage())
        return true;
    return require({
        {PayerName_EDT, u"نام پرداخت کننده"_s},
        // The payer's name is tested again, so that the family name is in effect never required.
        {PayerFamily_EDT, u"نام خانوادگي پرداخت کننده"_s, PayerName_EDT},
        {SignaturNameFirst_EDT, u"نام صاحب امضا اول"_s},
        {SignaturFamilyFirst_EDT, u"نام خانوادگي صاحب امضا اول"_s},
        {SignaturIdNationalFirst_EDT, u"شماره ملي صاحب امضا اول"_s},
        {SignaturPositionFirst_EDT, u"سمت صاحب امضا اول"_s},
    });
}

TPayrollInfo_Mapper TPayrollInfoGet_FRM::Typed() const
{
    TPayrollInfo_Mapper info = TRecordGet::Typed();
    const auto position = [](const TSmartComboBox_ZLM *list) {
        return list->currentIndex() < 0 ? QString() : QString::number(list->currentIndex());
    };
    info._EmployeeTitle = position(EmployeeTitle_CMB);
    info._LegalTitle = position(LegalTitle_CMB);
    return info;
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
