#include "calcmethod/CalcMethodGet_UNT.h"

#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"

#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int highestCode = 999999;
constexpr int mostHours = 1000;
const QString roundingUnits[] = {u"0"_s, u"10"_s, u"100"_s, u"1000"_s, u"10000"_s, u"100000"_s, u"1000000"_s};

QLabel *besideLabel(QWidget *parent, const QString &objectName)
{
    auto *label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

TCalcMethodGet_FRM::TCalcMethodGet_FRM(TSoftwarePart part, bool flag, const QString &text)
    : TRecordGet(part, flag, text)
{
    build();
}

TCalcMethodGet_FRM::TCalcMethodGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TRecordGet(part, code, mode, flag)
{
    build();
}

void TCalcMethodGet_FRM::build()
{
    SetTitle(u"روش محاسباتی"_s);
    using M = TCalcMethod_Mapper;
    Store = {.newCode = [] { return CalcMethod_DM->CalcMethod_GetNewCode(); },
             .read =
                 [](const QVariant &code, M &method) {
                     CalcMethod_DM->CalcMethod_GetById(code, method);
                     return !CalcMethod_DM->Get_QUR->isEmpty();
                 },
             .write =
                 [](const M &method, bool isNew) {
                     return isNew ? CalcMethod_DM->CalcMethod_Insert(method)
                                  : CalcMethod_DM->CalcMethod_Update(method);
                 },
             .readAgain = true};
    CalcMethod_PC = new QTabWidget(this);
    CalcMethod_PC->setObjectName(u"CalcMethod_PC"_s);
    SetPages(CalcMethod_PC);
    buildGeneralPage();
    buildAttendancePage();
    Body()->addWidget(CalcMethod_PC);
    KeepIn(u"CalcMethod"_s, {{Title_EDT, "Title"}, {Comment_EDT, "Comment"}});
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
    applyTaxRule();
    applyInsuranceRule();
    showRoundingUnit();
    resize(760, sizeHint().height());
}

void TCalcMethodGet_FRM::buildGeneralPage()
{
    using M = TCalcMethod_Mapper;
    QGridLayout *page = AddPage(CalcMethod_PC, u"عمومی"_s, u"ts1"_s);
    Code_EDT = Inputs.add(AddInput(page, 0, 0, u"  &کد :"_s, u"Code_EDT"_s,
                                   new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Integer, 15)),
                          &M::_Code);
    Code_EDT->SetRange(1, highestCode);
    Title_EDT = Inputs.add(AddInput(page, 0, 1, u"  &عنوان :"_s, u"Title_EDT"_s,
                                    new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50)),
                           &M::_Title);
    Tax_CHK = Inputs.add(
        AddInput(page, 1, 0, {}, u"Tax_CHK"_s, new TSmartCheckBox_ZLM(u"م&شمول  مالیات"_s, this)), &M::_Tax);
    CalcMethodCode_EDT = AddInput(page, 1, 1, u"  کد جدول مالیاتی :"_s, u"CalcMethodCode_EDT"_s,
                                  new TSmartButtonEdit_ZLM(this, 6));
    CalcMethodCode_LBL = besideLabel(this, u"CalcMethodCode_LBL"_s);
    AddBeside(CalcMethodCode_EDT, CalcMethodCode_LBL);
    Maskok_SPNEDT = Inputs.add(AddInput(page, 2, 0, u"  &مانده مسکوک :"_s, u"Maskok_SPNEDT"_s,
                                        new TSmartSpinEdit_ZLM(this, 0, int(std::size(roundingUnits)) - 1)),
                               &M::_Maskok);
    MandeMaskok_LBL = besideLabel(this, u"MandeMaskok_LBL"_s);
    AddBeside(Maskok_SPNEDT, MandeMaskok_LBL);
    Comment_EDT = Inputs.add(AddInput(page, 2, 1, u"  ش&رح :"_s, u"Comment_EDT"_s,
                                      new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50)),
                             &M::_Comment);
    BedBes_CHK = Inputs.add(AddInput(page, 3, 0, {}, u"BedBes_CHK"_s,
                                     new TSmartCheckBox_ZLM(u"محاسبه بدهکاري / &بستانکاري"_s, this)),
                            &M::_BedBes);
    Loan_CHK = Inputs.add(
        AddInput(page, 3, 1, {}, u"Loan_CHK"_s, new TSmartCheckBox_ZLM(u"محاسبه ا&قساط"_s, this)), &M::_Loan);
    DecTax_CHK = Inputs.add(
        AddInput(page, 4, 0, {}, u"DecTax_CHK"_s, new TSmartCheckBox_ZLM(u"کسر 2.7 مالي&ات"_s, this)),
        &M::_DecTax);
    auto *below = new QVBoxLayout;
    page->addLayout(below, page->rowCount(), 0, 1, page->columnCount());
    buildInsurance(below);

    connect(Tax_CHK, &TSmartCheckBox_ZLM::changed, this, &TCalcMethodGet_FRM::applyTaxRule);
    connect(Maskok_SPNEDT, &TSmartSpinEdit_ZLM::changed, this, &TCalcMethodGet_FRM::showRoundingUnit);
    CheckOnLeaving(CalcMethodCode_EDT, [this] { checkTaxCode(); });
    connect(CalcMethodCode_EDT, &TSmartPickEdit_ZLM::pick, this,
            [this] { Guarded([this] { pickTaxCode(); }); });
}

void TCalcMethodGet_FRM::buildInsurance(QLayout *into)
{
    using M = TCalcMethod_Mapper;
    QGridLayout *group = AddGroup(into, {}, u"Ins_GRP"_s);
    Insurance_CHK = Inputs.add(
        AddInput(group, 0, 0, {}, u"Insurance_CHK"_s, new TSmartCheckBox_ZLM(u"   مشمو&ل بیمه  "_s, this)),
        &M::_Insurance);
    StaffIns_EDT = Inputs.add(AddInput(group, 1, 0, u"  حق بیمه کارم&ند :"_s, u"StaffIns_EDT"_s,
                                       new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15), u"%"_s),
                              &M::_StaffIns);
    EmployerIns_EDT = Inputs.add(AddInput(group, 1, 1, u"  حق بیمه کار&فرما :"_s, u"EmployerIns_EDT"_s,
                                          new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15), u"%"_s),
                                 &M::_EmployerIns);
    DailyIns_EDT = Inputs.add(AddInput(group, 2, 0, u"  سقف بیمه روزانه& :"_s, u"DailyIns_EDT"_s,
                                       new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Money, 15)),
                              &M::_DailyIns);

    connect(Insurance_CHK, &TSmartCheckBox_ZLM::changed, this, &TCalcMethodGet_FRM::applyInsuranceRule);
    for (TSmartEdit_ZLM *share : {StaffIns_EDT, EmployerIns_EDT})
        connect(share, &TSmartEdit_ZLM::changed, this, [share] { GuardPercent(share, true); });
}

void TCalcMethodGet_FRM::buildAttendancePage()
{
    using M = TCalcMethod_Mapper;
    QGridLayout *page = AddPage(CalcMethod_PC, u"حضور و غیاب"_s, u"ts2"_s);
    Entrance_EDT = Inputs.add(
        AddInput(page, 0, 0, u"  ساعت ورود :"_s, u"Entrance_EDT"_s, new TSmartTime_ZLM(this)), &M::_Entrance);
    Exit_EDT = Inputs.add(AddInput(page, 0, 1, u"  ساعت خروج :"_s, u"Exit_EDT"_s, new TSmartTime_ZLM(this)),
                          &M::_Exit);
    OverDis_CMB = Inputs.add(AddInput(page, 1, 0, u"  مبنای اضافه کار / کسر کار :"_s, u"OverDis_CMB"_s,
                                      new TSmartComboBox_ZLM(this, {u"روزانه"_s, u"ماهانه"_s})),
                             &M::_OverDis);
    OutPut_EDT = Inputs.add(AddInput(page, 1, 1, u"  حداقل کارکرد روزانه :"_s, u"OutPut_EDT"_s,
                                     new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15), u"ساعت"_s),
                            &M::_OutPut);
    OutPut_EDT->SetRange(0, mostHours);
    LeaveCeil_EDT =
        Inputs.add(AddInput(page, 2, 0, u"  سقف مرخصی :"_s, u"LeaveCeil_EDT"_s,
                            new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15), u"روز در ماه"_s),
                   &M::_LeaveCeil);
    OverTime_EDT = Inputs.add(AddInput(page, 2, 1, u"  سقف اضافه کاری :"_s, u"OverTime_EDT"_s,
                                       new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Integer, 15), u"ساعت "_s),
                              &M::_OverTime);
    OverTime_EDT->SetRange(0, mostHours);
}

void TCalcMethodGet_FRM::applyTaxRule()
{
    CalcMethodCode_EDT->setEnabled(Tax_CHK->isChecked());
    if (!Tax_CHK->isChecked()) {
        CalcMethodCode_EDT->Clear();
        CalcMethodCode_LBL->clear();
    }
}

void TCalcMethodGet_FRM::applyInsuranceRule()
{
    for (TSmartEdit_ZLM *input : {StaffIns_EDT, EmployerIns_EDT, DailyIns_EDT})
        input->setEnabled(Insurance_CHK->isChecked());
}

void TCalcMethodGet_FRM::showRoundingUnit()
{
    MandeMaskok_LBL->setText(roundingUnits[Maskok_SPNEDT->value()]);
}

void TCalcMethodGet_FRM::showTaxTitle()
{
    CalcMethodCode_LBL->setText(
        CalcMethodCode_EDT->IsEmpty()
            ? QString()
            : ScalerQuery(u"TaxMain"_s, u"Title"_s, u"Code"_s, CalcMethodCode_EDT->GetValue()));
}

void TCalcMethodGet_FRM::checkTaxCode()
{
    if (CalcMethodCode_EDT->IsEmpty()) {
        CalcMethodCode_LBL->clear();
        return;
    }
    const int code = CalcMethodCode_EDT->asInteger();
    const QString title = ScalerQuery(u"TaxMain"_s, u"Title"_s, u"Code"_s, code);
    const bool untitled = title.isNull() && !ScalerQuery(u"TaxMain"_s, u"Code"_s, u"Code"_s, code).isEmpty();
    if (untitled) {
        MsgCodeNotAvailable(u"جدول مالياتي"_s, CalcMethodCode_EDT, this);
        FocusInput(CalcMethodCode_EDT);
        CalcMethodCode_LBL->clear();
    } else if (title.isEmpty()) {
        CalcMethodCode_EDT->Clear();
        CalcMethodCode_LBL->clear();
        ShowTooltipMessage(u"جدول مالیاتی با این کد ثبت نشده است"_s, CalcMethodCode_EDT);
        FocusInput(CalcMethodCode_EDT);
    } else {
        CalcMethodCode_LBL->setText(title);
    }
}

void TCalcMethodGet_FRM::pickTaxCode()
{
    const int code = Select_Entity(cspTax, {}, false);
    if (code == 0)
        return;
    CalcMethodCode_EDT->SetValue(code);
    checkTaxCode();
}

void TCalcMethodGet_FRM::ClearRecord()
{
    Title_EDT->Clear();
    Tax_CHK->setChecked(false);
    applyTaxRule();
    StaffIns_EDT->SetText(u"7"_s);
    EmployerIns_EDT->SetText(u"20"_s);
    DailyIns_EDT->Clear();
    DecTax_CHK->setChecked(true);
    Comment_EDT->Clear();
    LeaveCeil_EDT->SetValue(2);
    OutPut_EDT->SetValue(7.33);
    Entrance_EDT->SetText(u"08:00"_s);
    Exit_EDT->SetText(u"16:00"_s);
    Code_EDT->SetValue(Identifier());
    showRoundingUnit();
    Maskok_SPNEDT->setValue(0);
    OverDis_CMB->setCurrentIndex(0);
    SetTitle(u"روش محاسباتي"_s);
    LeaveCeil_EDT->SetText(u"2"_s);
    OutPut_EDT->SetText(u"7.33"_s);
    SetIsSaved(true);
}

void TCalcMethodGet_FRM::ShowRecord()
{
    Inputs.show(Stored);
    applyTaxRule();
    const bool hasTable = Stored._Tax && Stored._TaxMainCode != 0;
    CalcMethodCode_EDT->SetValue(hasTable ? QVariant(Stored._TaxMainCode) : QVariant());
    showTaxTitle();
}

bool TCalcMethodGet_FRM::isMissing(TSmartEdit_ZLM *input, const QString &caption)
{
    return !RequireInput(input, caption);
}

// A code that was not allotted must be free of other editors, too: the new record of another station may have it.
bool TCalcMethodGet_FRM::takeTypedCode()
{
    const int typed = Code_EDT->asInteger();
    if (typed == Identifier().toInt() || (Mode() == fmNew ? TakeCode(typed) : HoldCode(typed)))
        return true;
    MSGInUse(u"روش محاسباتی"_s);
    FocusInput(Code_EDT);
    return false;
}

bool TCalcMethodGet_FRM::Validate()
{
    Code_EDT->IsValid(); // brings a code that is still being typed into its range
    if (Code_EDT->IsEmpty())
        Code_EDT->SetValue(Identifier());
    if (CalcMethod_DM->CalcMedtho_GetCode(Code_EDT->GetValue()) &&
        Code_EDT->asInteger() != Identifier().toInt()) {
        MsgRepeatedField(u"کد"_s, {}, Code_EDT, this);
        FocusInput(Code_EDT);
        return false;
    }
    if (!takeTypedCode())
        return false;
    if (isMissing(Title_EDT, u"عنوان"_s))
        return false;
    if (Tax_CHK->isChecked() && isMissing(CalcMethodCode_EDT, u"کد جدول مالياتي"_s))
        return false;
    if (CheckTyped(CalcMethodCode_EDT) && CalcMethodCode_LBL->text().isEmpty())
        return false;
    if (Insurance_CHK->isChecked() &&
        (isMissing(StaffIns_EDT, u"حق بيمه کارمند"_s) || isMissing(EmployerIns_EDT, u"حق بيمه کارفرما"_s)))
        return false;
    if (isMissing(OverTime_EDT, u"سقف اضافه کاري"_s) || isMissing(LeaveCeil_EDT, u"سقف مرخصي"_s) ||
        isMissing(OutPut_EDT, u"حداقل کارکرد روزانه"_s))
        return false;
    for (TSmartTime_ZLM *time : {Entrance_EDT, Exit_EDT}) {
        if (time->IsValid())
            continue;
        FocusInput(time);
        return false;
    }
    return true;
}

TCalcMethod_Mapper TCalcMethodGet_FRM::Typed() const
{
    TCalcMethod_Mapper method = TRecordGet::Typed();
    method._TaxMainCode = Tax_CHK->isChecked() ? CalcMethodCode_EDT->asInteger() : 0;
    return method;
}

void TCalcMethodGet_FRM::RecordSaved(bool wasNew)
{
    SetIdentifier(Sent->_Code);
    TRecordGet::RecordSaved(wasNew);
}
