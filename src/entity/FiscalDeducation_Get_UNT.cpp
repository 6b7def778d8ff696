#include "entity/FiscalDeducation_Get_UNT.h"

#include "entity/Entity_DM_UNT.h"
#include "host/Component_ZLM/AccountSelector_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QLabel>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString monthly = u"ماهيانه"_s;

/// What an item's bases mean, by their position in the list of its kind.
QStringList basisHints(bool earning)
{
    const QString amount = u"با توجه به مقدار کارکرد کارمند محاسبه ميشود"_s;
    const QString percent = u"با توجه به درصدي از دستمزد کارمند محاسبه ميشود"_s;
    const QString byDays = u"با توجه به تعداد روزهاي کارکرد کارمند در ماه محاسبه ميشود"_s;
    const QString fixed = u"به صورت ثابت در هر فيش حقوقي اضافه ميشود"_s;
    return earning ? QStringList{amount, percent, byDays, fixed} : QStringList{amount, percent, fixed};
}

} // namespace

TFiscalDeducation_Get_FRM::TFiscalDeducation_Get_FRM(TSoftwarePart part, bool flag, const QString &text)
    : TRecordGet(part, flag, text), m_openedNew(true)
{
    build();
}

TFiscalDeducation_Get_FRM::TFiscalDeducation_Get_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode,
                                                     const QVariant &kind, bool flag1, bool flag2)
    : TRecordGet(part, code, mode, kind, flag1, flag2), m_openedNew(false)
{
    build();
}

void TFiscalDeducation_Get_FRM::build()
{
    SetTitle(isEarning() ? u"مزايا"_s : u"کسورات"_s);
    Store.newCode = [] { return Entity_DM->FiscalDeducation_GetNewCode(); };
    Store.read = [this](const QVariant &code, TFiscalDeducation_Mapper &item) {
        Entity_DM->FiscalDeducation_GetByID(code, Part(), item);
        return !Entity_DM->Get_QUR->isEmpty();
    };
    Store.write = [this](const TFiscalDeducation_Mapper &item, bool isNew) {
        return isNew ? Entity_DM->FiscalDeducation_Insert(item, Part())
                     : Entity_DM->FiscalDeducation_Update(item, Part());
    };
    SaveWords.done.clear();
    auto *grid = new QGridLayout;
    Body()->addLayout(grid);
    Body()->addStretch(1);

    AddFields(grid, entityFields(cspFiscal), table(), etAboveAccount);
    Code_EDT->SetSpin(true);
    Code_EDT->SetText(u"0"_s);
    Code_EDT->setEnabled(false);
    Insurance_LBL = CaptionOf(Insurance_CHK);
    Insurance_LBL->setObjectName(u"Insurance_LBL"_s);
    Tax_LBL = CaptionOf(Tax_CHK);
    Tax_LBL->setObjectName(u"Tax_LBL"_s);

    InstallmentWarning_LBL = new QLabel(
        u"در صورتی که کسورات مورد نظر اقساط باشد ، حساب قسط در حکم کارگزینی ملاک خواهد بود"_s, this);
    InstallmentWarning_LBL->setObjectName(u"InstallmentWarning_LBL"_s);
    InstallmentWarning_LBL->setWordWrap(true);
    QPalette maroon = palette();
    maroon.setColor(QPalette::WindowText, QColor(0x80, 0, 0));
    InstallmentWarning_LBL->setPalette(maroon);
    grid->addWidget(InstallmentWarning_LBL, 2, 2, 1, 4);

    TSelect_AccountCode1 =
        AddInput(grid, 3, 0, u"  &حساب :"_s, u"TSelect_AccountCode1"_s, new TSelect_AccountCode(this));
    for (QWidget *box : {TSelect_AccountCode1->TotalCode_EDT, TSelect_AccountCode1->AssistantCode_EDT,
                         TSelect_AccountCode1->DetailCode_EDT})
        AddTabStop(box);
    if (!isEarning())
        TSelect_AccountCode1->SetDetailLimit(std::numeric_limits<qint16>::max()); // its column is narrower

    AddFields(grid, entityFields(cspFiscal), table(), etBelowAccount);
    connect(CalcType_CMB, &TSmartComboBox_ZLM::changed, this, &TFiscalDeducation_Get_FRM::applyBasis);
    Cost_EDT->SetText(u"0"_s);
    Cost_LBL = CaptionOf(Cost_EDT);
    Cost_LBL->setObjectName(u"Cost_LBL"_s);
    CostPercent_EDT = new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Number, 15);
    CostPercent_EDT->setObjectName(u"CostPercent_EDT"_s);
    CostPercent_EDT->SetText(u"0"_s);
    CostPercent_EDT->setAccessibleName(u"نرخ"_s);
    Percent_LBL = new QLabel(u"%"_s, this);
    Percent_LBL->setObjectName(u"Percent_LBL"_s);
    Percent_LBL->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    AddBeside(Cost_EDT, CostPercent_EDT);
    AddBeside(Cost_EDT, Percent_LBL);
    AddTabStop(CostPercent_EDT, Cost_EDT);
    connect(CostPercent_EDT, &TSmartEdit_ZLM::changed, this, [this] {
        if (CostPercent_EDT->text().isEmpty()) {
            CostPercent_EDT->SetText(u"0"_s);
            CostPercent_EDT->selectAll(); // the next digit takes its place
        }
        SetIsSaved(false);
    });

    // What is the last of its line may use the rest of it; beside the note the title keeps most.
    grid->setColumnStretch(1, 2);
    QList<QPoint> lastOfLine{{1, 1}, {1, 3}, {3, 4}, {1, 5}};
    if (isEarning())
        lastOfLine << QPoint(1, 2);
    for (const QPoint &place : std::as_const(lastOfLine))
        if (QLayoutItem *cell = grid->itemAtPosition(place.y(), place.x())) {
            grid->removeItem(cell);
            grid->addLayout(cell->layout(), place.y(), place.x(), 1, -1);
        }
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s, svSaveClose);
    resize(820, sizeHint().height());
}

int TFiscalDeducation_Get_FRM::initialGroup() const
{
    // An editor that was opened on an item goes on in that item's group; its parameter is no group.
    return m_openedNew ? Parameter(0).toInt() : Stored._Grpcode;
}

void TFiscalDeducation_Get_FRM::fillGroups(int chosen)
{
    Group_CMB->clear();
    const TNamedCodes groups =
        isEarning() ? Entity_DM->FiscalGroup_Fill() : Entity_DM->DeducationGroup_Fill();
    for (const TNamedCode &group : groups)
        Group_CMB->AddItem(group.name, group.code);
    // A group that is gone leaves no choice, so that the user makes one.
    Group_CMB->setCurrentIndex(chosen == -1 && Group_CMB->count() > 0 ? 0 : -1);
    Group_CMB->SetCode(chosen);
}

void TFiscalDeducation_Get_FRM::showKind()
{
    for (QWidget *widget : std::initializer_list<QWidget *>{Insurance_LBL, Insurance_CHK, Tax_LBL, Tax_CHK})
        widget->setVisible(isEarning());
    InstallmentWarning_LBL->setVisible(!isEarning());
    // Deductions have no monthly basis: their position 2 is the fixed one.
    if (const int position = CalcType_CMB->findText(monthly); !isEarning() && position >= 0)
        CalcType_CMB->removeItem(position);
}

void TFiscalDeducation_Get_FRM::applyBasis()
{
    const int position = CalcType_CMB->currentIndex();
    m_percent = position == ebPercent;
    if (m_percent) {
        Cost_LBL->setText(u"&نرخ :"_s);
        Cost_EDT->SetText(u"0"_s);
    } else {
        Cost_LBL->setText(u" مب&لغ :"_s);
    }
    Cost_EDT->setVisible(!m_percent);
    CostPercent_EDT->setVisible(m_percent);
    Percent_LBL->setVisible(m_percent);
    Cost_LBL->setBuddy(m_percent ? CostPercent_EDT : Cost_EDT);
    const QStringList hints = basisHints(isEarning());
    if (position >= 0 && position < hints.size())
        CalcType_CMB->setToolTip(hints.at(position));
}

void TFiscalDeducation_Get_FRM::ClearRecord()
{
    RecordExists(); // opens the item's view on no row, which the insert needs
    fillGroups(initialGroup());
    TSelect_AccountCode1->EnableLevels(true, true, true);
    TSelect_AccountCode1->Clear();
    for (TSmartEdit_ZLM *edit : {Code_EDT, Title_EDT, Cost_EDT, CostPercent_EDT, Comment_EDT})
        edit->Clear();
    Insurance_CHK->setChecked(false);
    Tax_CHK->setChecked(false);
    showKind();
    CalcType_CMB->setCurrentIndex(isEarning() ? ebMonthly : 0);
    applyBasis();
    Code_EDT->SetValue(Identifier());
    SetIsSaved(true);
}

// No lock tells whose item stands under a code that others were offered too.
QVariant TFiscalDeducation_Get_FRM::SentRecord()
{
    TFiscalDeducation_Mapper stored;
    if (!Sent || !Store.read(Identifier(), stored) || stored._cost.toDouble() != Sent->_cost.toDouble())
        return {};
    TFiscalDeducation_Mapper sent = *Sent;
    sent._cost = stored._cost; // one amount, written in two ways
    sent._title = AsStored(table(), u"Title"_s, sent._title);
    sent._comment = AsStored(table(), u"Comment"_s, sent._comment);
    return stored == sent ? Identifier() : QVariant();
}

void TFiscalDeducation_Get_FRM::ShowRecord()
{
    showKind();
    fillGroups(Stored._Grpcode);
    m_inputs.show(Stored);
    applyBasis();
    if (m_percent)
        CostPercent_EDT->SetText(Stored._cost);
    TSelect_AccountCode1->EnableLevels(true, true, true);
    TSelect_AccountCode1->SetCodes(Stored._Kol, Stored._Moin, Stored._Tafzili);
    SetIsSaved(true);
}

bool TFiscalDeducation_Get_FRM::Validate()
{
    return std::ranges::all_of(entityRules(), [this](const auto &rule) { return keeps(rule); });
}

bool TFiscalDeducation_Get_FRM::keeps(const TRule<TEntitySubject> &rule)
{
    const auto fields = entityFields(Part());
    TEntitySubject subject{{fields, typedInputs(), Stored, m_inputs.empty()},
                           *Entity_DM,
                           Part(),
                           Mode() == fmNew ? 0 : Identifier().toInt()};
    if (Mode() == fmNew)
        subject.loaded._title.clear();
    const auto *field = Fields::ofColumn(fields, rule.column);
    if (field->input.page == etAccount)
        takeAccount(subject.record);
    if (Keeps(rule, fields, subject))
        return true;
    if (rule.message == TRuleMessage::Repeated && field->input.name == "Code_EDT"_L1)
        Code_EDT->SetValue(Identifier());
    return false;
}

TFiscalDeducation_Mapper TFiscalDeducation_Get_FRM::Typed() const
{
    TFiscalDeducation_Mapper item = typedInputs();
    takeAccount(item);
    return item;
}

TFiscalDeducation_Mapper TFiscalDeducation_Get_FRM::typedInputs() const
{
    TFiscalDeducation_Mapper item;
    m_inputs.read(item);
    item._Grpcode = Group_CMB->Code();
    // A stored basis that the list does not offer stays as it is until another one is chosen.
    if (CalcType_CMB->IsEmpty())
        item._CalcType = Stored._CalcType;
    if (m_percent && !Cost_EDT->IsEmpty()) // the check looks at the amount's box in either case
        item._cost = CostPercent_EDT->GetText();
    return item;
}

// Apart from the rest, since it may ask the chart of accounts.
void TFiscalDeducation_Get_FRM::takeAccount(TFiscalDeducation_Mapper &item) const
{
    item._Kol = QString::number(TSelect_AccountCode1->TotalCode());
    item._Moin = QString::number(TSelect_AccountCode1->AssistantCode());
    item._Tafzili = QString::number(TSelect_AccountCode1->DetailCode());
}
