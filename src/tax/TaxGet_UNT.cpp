#include "tax/TaxGet_UNT.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Component_ZLM/DetailStrip_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "tax/Tax_DM_UNT.h"
#include "tax/Tax_GetDetail_UNT.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<TGridColumn> &bracketColumns()
{
    static const QList<TGridColumn> columns = {
        {"FromSalary", "از حقوق", 170, true, TGridColumn::Money},
        {"ToSalary", "تا حقوق", 170, true, TGridColumn::Money},
        {"Percent", "نرخ مالیات", 100, true, TGridColumn::Money},
    };
    return columns;
}

const QList<TGridColumn> &detailFields()
{
    static const QList<TGridColumn> fields = {
        {"Comment", "شرح"},
        {"FromSalary", "از حقوق", 0, true, TGridColumn::Money},
        {"ToSalary", "تا حقوق", 0, true, TGridColumn::Money},
        {"Percent", "نرخ مالیات", 0, true, TGridColumn::Money},
    };
    return fields;
}

// Its spelling and its blanks are the ones that users know.
const char *const notice =
    "توجه : جهت محاسبه صحیح مالیات لطفا بازه های مالیاتی را به ترتیب  و با دقت وارد نمایید. همچنین بازه معاف از "
    "مالیات که ار صفر شروع میشود را نیز وارد نمایید.";

} // namespace

TTaxGet_FRM::TTaxGet_FRM(TSoftwarePart part, bool flag, const QString &text) : TRecordGet(part, flag, text)
{
    build();
}

TTaxGet_FRM::TTaxGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TRecordGet(part, code, mode, flag)
{
    build();
}

void TTaxGet_FRM::build()
{
    SetTitle(u"جدول مالیاتی"_s);
    resize(820, 640);
    Store.newCode = [] { return Tax_DM->Tax_GetNewCode(); };
    Store.read = [](const QVariant &code, TTax_Mapper &table) {
        Tax_DM->Tax_GetByID(code, table);
        return !Tax_DM->Get_QUR->isEmpty();
    };
    Store.write = [this](const TTax_Mapper &table, bool isNew) { return store(table, isNew); };
    SaveWords = {u"ذخيره سازي"_s, {}, u"ذخيره سازي "_s};

    auto *inputs = new QGridLayout;
    AddFields(inputs, taxFields(), u"TaxMain"_s);
    Code_EDT->SetSpinRange(1, 999999);
    Code_EDT->SetText(u"0"_s);
    Body()->addLayout(inputs);
    connect(Code_EDT, &TSmartEdit_ZLM::exited, this, [this] { (void)codeTyped(); });

    auto *note = new QLabel(QString::fromUtf8(notice), this);
    note->setObjectName(u"Notice_LBL"_s);
    QFont bold = note->font();
    bold.setBold(true);
    note->setFont(bold);
    note->setWordWrap(true);
    Body()->addWidget(note);

    auto *panel = new QGroupBox(u"لیست"_s, this);
    auto *panelLayout = new QVBoxLayout(panel);
    m_rows =
        new TDetail_Rows_Frame(panel, u"TaxDetail_List_GRD"_s, {u"سطر جدید"_s, u"ویرایش سطر"_s, u"حذف سطر"_s},
                               {u"AddRow_BTN"_s, u"EditRow_BTN"_s, u"DelRow_BTN"_s}, true);
    m_rows->SetColumns(Tax_DM->DetailList_QUR, bracketColumns());
    panelLayout->addWidget(m_rows, 1);
    panelLayout->addWidget(new TDetailStrip_ZLM(panel, u"TaxDetail_View"_s, u"سطر جاری"_s,
                                                Tax_DM->DetailList_QUR, detailFields(), 2));
    Body()->addWidget(panel, 1);
    for (QWidget *stop : {static_cast<QWidget *>(m_rows->Grid()), static_cast<QWidget *>(m_rows->AddRow),
                          static_cast<QWidget *>(m_rows->EditRow), static_cast<QWidget *>(m_rows->DelRow)})
        AddTabStop(stop);
    connect(m_rows, &TDetail_Rows_Frame::addRow, this, &TTaxGet_FRM::addRow);
    connect(m_rows, &TDetail_Rows_Frame::editRow, this, &TTaxGet_FRM::editRow);
    connect(m_rows, &TDetail_Rows_Frame::deleteRow, this, &TTaxGet_FRM::deleteRow);

    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
}

// Opening a table drops what stands under its code, then copies the saved brackets; what an editor that ended abnormally
// left behind was offered before, and is not dropped when it was taken up.
void TTaxGet_FRM::openWorkingRows()
{
    NoteWorkingRows(Part(), Identifier().toString(), IniOptions.Com_Index);
    if (RecoveryTaken()) {
        Tax_DM->TmpTax_OpenList(Identifier());
        return;
    }
    Tax_DM->ClearDataTempDetail(Identifier().toInt());
    Tax_DM->TmpTax_GetByTaxMainCode(Identifier());
}

void TTaxGet_FRM::ClearRecord()
{
    Code_EDT->SetValue(Identifier());
    openWorkingRows();
    Store.read(Identifier(), Stored);
    Title_EDT->Clear();
    Comment_EDT->Clear();
    SetIsSaved(true);
}

void TTaxGet_FRM::ShowRecord()
{
    openWorkingRows();
    m_inputs.show(Stored);
    SetIsSaved(true);
}

// The lock on the code does not tell: an administrator may have freed it while the line was lost. A header whose insert
// got no answer has no brackets yet, while nobody else stores one without.
QVariant TTaxGet_FRM::SentRecord()
{
    TTax_Mapper stored;
    const bool own = Sent && Store.read(Identifier(), stored) &&
                     stored._Title == AsStored(u"TaxMain"_s, u"Title"_s, Sent->_Title) &&
                     stored._Comment == AsStored(u"TaxMain"_s, u"Comment"_s, Sent->_Comment) &&
                     ScalerQuery(u"Tax"_s, u"TaxMainCode"_s, u"TaxMainCode"_s, Identifier()).isEmpty();
    return own ? Identifier() : QVariant();
}

bool TTaxGet_FRM::codeTyped()
{
    const int held = Identifier().toInt();
    const int typed = Code_EDT->asInteger();
    if (Code_EDT->IsEmpty() || typed == 0 || typed == held)
        return true;
    bool taken = false;
    Guarded([&] {
        SettleLostSave(); // a table that is stored by now keeps its code
        if (Mode() == fmNew)
            taken = TakeTypedCode(Code_EDT, u"جدول مالیاتی"_s);
        else
            NotSaveable(u"کد"_s, u"جدول مالیاتی"_s, Code_EDT);
    });
    if (!taken) {
        Code_EDT->SetValue(held);
        FocusInput(Code_EDT);
    }
    return taken;
}

void TTaxGet_FRM::addRow()
{
    if (Code_EDT->IsEmpty()) {
        MsgRequiredField(u"کد"_s, Code_EDT, this);
        FocusInput(Code_EDT);
        return;
    }
    if (!codeTyped() || !RowsAreOwn())
        return;
    TTax_GetDetail_FRM bracket(int(Part()), Identifier());
    if (bracket.exec() != QDialog::Accepted)
        return;
    Guarded([&] {
        m_rows->Reread(u"ID"_s);
        Tax_DM->DetailList_QUR->last();
        SetIsSaved(false);
    });
}

void TTaxGet_FRM::editRow()
{
    if (!RowsAreOwn())
        return;
    const QVariant id = Tax_DM->DetailList_QUR->value(u"ID"_s);
    TTax_GetDetail_FRM bracket(int(Part()), Identifier(), fmEdit, id);
    const bool changed = bracket.exec() == QDialog::Accepted;
    // Read in any case: another workstation may have deleted the bracket.
    Guarded([&] { m_rows->Reread(u"ID"_s, id); });
    if (changed)
        SetIsSaved(false);
}

void TTaxGet_FRM::deleteRow()
{
    const QString bracket = m_rows->Grid()->NameOfRow(Tax_DM->DetailList_QUR->position(),
                                                      {u"FromSalary"_s, u"ToSalary"_s, u"Percent"_s});
    if (!HavePermission(UserInfo, Part(), cpDelete, false, true, QString()) || !RowsAreOwn() ||
        !MsgDeleteRow(bracket))
        return;
    const QVariant id = Tax_DM->DetailList_QUR->value(u"ID"_s);
    bool gone = Guarded([&] { Tax_DM->TaxDetail_Del(id.toString()); });
    try {
        // One that got no answer may have been done.
        if (!gone) {
            Tax_DM->TmpTax_GetById(id);
            gone = Tax_DM->TmpGet_QUR->isEmpty();
        }
    } catch (const TDatabaseError &) {
        return; // the line is still gone, and the user was told
    }
    if (!gone)
        return;
    SetIsSaved(false);
    Guarded([&] { m_rows->Reread(u"ID"_s); });
}

bool TTaxGet_FRM::Validate()
{
    return std::ranges::all_of(taxRules(), [this](const auto &rule) { return keeps(rule); });
}

bool TTaxGet_FRM::keeps(const TRule<TTaxSubject> &rule)
{
    const TQuery *rows = Tax_DM->DetailList_QUR;
    if (rule.message == TRuleMessage::NotEntered && !rows->active()) // a reading that failed closed it
        Tax_DM->TmpTax_OpenList(Identifier());
    const TTaxSubject subject{{taxFields(), Typed(), {}, m_inputs.empty()},
                              rows->active() ? rows->recordCount() : 0};
    return Keeps(rule, taxFields(), subject, m_rows->Grid()) &&
           (rule.message != TRuleMessage::NotZero || codeTyped());
}

bool TTaxGet_FRM::store(const TTax_Mapper &record, bool isNew)
{
    // Header and brackets are two steps without a transaction: the second one only after the first.
    const bool header = isNew ? Tax_DM->Tax_Insert(record) : Tax_DM->Tax_Update(record);
    if (header && Tax_DM->TaxDetail_Insert(record._Code))
        return true;
    if (header) {
        // The header is stored by now: saving again must change it, and the list must show it.
        SetMode(fmEdit);
        m_savedOnce = true;
    }
    m_headerOnly = header;
    return false;
}

void TTaxGet_FRM::SaveFailed()
{
    // A line that was lost does not tell what is stored.
    const auto &error = DM.ADOConnection1->lastError();
    if (std::exchange(m_headerOnly, false) && !(error && IsLineLost(error->fault())))
        ShowSmartMessage(
            u"عنوان و شرح جدول ذخیره شد، ولی سطرها ذخیره نشد و سطرهای ثبت شده همان سطرهای پیشین است."_s,
            u"سطرهای این صفحه هنوز اینجاست؛ دوباره ذخیره کنید."_s, miWarning);
}

void TTaxGet_FRM::BeforeClose()
{
    if (CodeWasLost())
        return;
    // Not the code that stands in the input: one that was typed last is another table's until it is taken.
    Tax_DM->ClearDataTempDetail(Identifier().toInt());
    ForgetWorkingRows(Part(), Identifier().toString());
}
