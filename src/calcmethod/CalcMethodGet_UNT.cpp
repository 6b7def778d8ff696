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

const QString table = u"CalcMethod"_s;
const QString roundingUnits[] = {u"0"_s, u"10"_s, u"100"_s, u"1000"_s, u"10000"_s, u"100000"_s, u"1000000"_s};

QLabel *besideLabel(QWidget *parent, const QString &objectName)
{
    auto *label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// Whether a rule is looked at when the tax code is left; before a save only where it was typed since.
bool isTaxTables(const TRule<TCalcMethodSubject> &rule)
{
    return rule.message == TRuleMessage::Unknown || rule.message == TRuleMessage::Hint;
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
    Store.newCode = [] { return CalcMethod_DM->CalcMethod_GetNewCode(); };
    Store.read = [](const QVariant &code, M &method) {
        CalcMethod_DM->CalcMethod_GetById(code, method);
        return !CalcMethod_DM->Get_QUR->isEmpty();
    };
    Store.write = [](const M &method, bool isNew) {
        return isNew ? CalcMethod_DM->CalcMethod_Insert(method) : CalcMethod_DM->CalcMethod_Update(method);
    };
    Store.readAgain = true;
    CalcMethod_PC->setObjectName(u"CalcMethod_PC"_s);
    SetPages(CalcMethod_PC);
    buildGeneralPage();
    AddFields(AddPage(CalcMethod_PC, u"حضور و غیاب"_s, u"ts2"_s), calcMethodFields(), table, cmAttendance);
    Body()->addWidget(CalcMethod_PC);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
    applyTaxRule();
    applyInsuranceRule();
    showRoundingUnit();
    resize(760, sizeHint().height());
}

void TCalcMethodGet_FRM::buildGeneralPage()
{
    QGridLayout *page = AddPage(CalcMethod_PC, u"عمومی"_s, u"ts1"_s);
    AddFields(page, calcMethodFields(), table, cmGeneral);
    CalcMethodCode_LBL = besideLabel(this, u"CalcMethodCode_LBL"_s);
    AddBeside(CalcMethodCode_EDT, CalcMethodCode_LBL);
    MandeMaskok_LBL = besideLabel(this, u"MandeMaskok_LBL"_s);
    AddBeside(Maskok_SPNEDT, MandeMaskok_LBL);
    auto *below = new QVBoxLayout;
    page->addLayout(below, page->rowCount(), 0, 1, page->columnCount());
    AddFields(AddGroup(below, {}, u"Ins_GRP"_s), calcMethodFields(), table, cmInsurance);

    connect(Tax_CHK, &TSmartCheckBox_ZLM::changed, this, &TCalcMethodGet_FRM::applyTaxRule);
    connect(Maskok_SPNEDT, &TSmartSpinEdit_ZLM::changed, this, &TCalcMethodGet_FRM::showRoundingUnit);
    CheckOnLeaving(CalcMethodCode_EDT, [this] { checkTaxCode(); });
    connect(CalcMethodCode_EDT, &TSmartPickEdit_ZLM::pick, this,
            [this] { Guarded([this] { pickTaxCode(); }); });
    connect(Insurance_CHK, &TSmartCheckBox_ZLM::changed, this, &TCalcMethodGet_FRM::applyInsuranceRule);
    for (TSmartEdit_ZLM *share : {StaffIns_EDT, EmployerIns_EDT})
        connect(share, &TSmartEdit_ZLM::changed, this, [share] { GuardPercent(share, true); });
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
    showTaxTitle();
    if (CalcMethodCode_EDT->IsEmpty() || !CalcMethodCode_LBL->text().isEmpty())
        return;
    for (const auto &rule : calcMethodRules())
        if (const auto complaint = isTaxTables(rule) ? rule.complaint(subject()) : std::nullopt) {
            if (complaint->message == TRuleMessage::Hint)
                CalcMethodCode_EDT->Clear();
            TellComplaint(*complaint, CalcMethodCode_EDT);
            return;
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
    Stored = {};
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
    m_inputs.show(Stored);
    applyTaxRule();
    showTaxTitle();
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
    return std::ranges::all_of(calcMethodRules(), [this](const auto &rule) { return keeps(rule); });
}

bool TCalcMethodGet_FRM::keeps(const TRule<TCalcMethodSubject> &rule)
{
    if (rule.message == TRuleMessage::Hint)
        return !CheckTyped(CalcMethodCode_EDT) || !CalcMethodCode_LBL->text().isEmpty();
    if (isTaxTables(rule))
        return true;
    return Keeps(rule, calcMethodFields(), subject()) &&
           (rule.message != TRuleMessage::Repeated || takeTypedCode());
}

TCalcMethodSubject TCalcMethodGet_FRM::subject() const
{
    return {{calcMethodFields(), Typed(), Stored, m_inputs.empty()}, *CalcMethod_DM, Identifier().toInt()};
}

void TCalcMethodGet_FRM::RecordSaved(bool wasNew)
{
    SetIdentifier(Sent->_Code);
    TRecordGet::RecordSaved(wasNew);
}
