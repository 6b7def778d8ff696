#include "entity/FiscalDeducation_List_UNT.h"

#include "entity/FiscalDeducation_Get_UNT.h"
#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/DetailStrip_ZLM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"
#include "host/database/ReadAhead.h"
#include "host/database/Transaction.h"

#include <QAction>
#include <QLabel>
#include <QScopeGuard>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TFiscalDeducation_List_FRM *FiscalDeducation_List_FRM = nullptr;

namespace {

enum TFiscalDeducationFormCall { ctPick = 1, ctOrder = 2, ctOutput = 3, ctPickForSuite = 4, ctPickToo = 5 };

const int groupPaneWidth = 169;

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {"code", u"کد"_s, 65, true, TGridColumn::Code},
        {"title", u"عنوان"_s, 186},
        {"CalcTitle", u"مبنای محاسباتی"_s, 131},
        {"Cost", u"مبلغ / نرخ"_s, 129, true, TGridColumn::Money},
        {"InsuranceTitle", u"بیمه"_s, 73},
        {"TaxTitle", u"مالیات"_s, 68},
    };
    return list;
}

const QList<TGridColumn> &detailFields()
{
    static const QList<TGridColumn> list = {
        {"Code", u"کد"_s, 0, true, TGridColumn::Code},
        {"Title", u"عنوان"_s},
        {"CalcTitle", u"مبنای محاسباتی"_s},
        {"Cost", u"مبلغ / نرخ"_s, 0, true, TGridColumn::Money},
        {"Comment", u"شرح"_s},
    };
    return list;
}

const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        {"Code", u"کد"_s, TSearchItem::Digits},
        {"CodeName", u"کد و عنوان"_s, TSearchItem::Text, true},
        {"Title", u"عنوان"_s},
        {"CalcTitle", u"مبنای محاسباتی"_s},
        {"Cost", u"مبلغ / نرخ"_s, TSearchItem::Money},
        {"Comment", u"شرح"_s},
    };
    return list;
}

/// Items that the payroll settings bind to something that the payroll computes itself.
constexpr qsizetype itemsAtOnce = 100;

bool isReserved(int payrollCode)
{
    return payrollCode == 1 || payrollCode == 6 || payrollCode == 7 || payrollCode == 8;
}

} // namespace

TFiscalDeducation_List_FRM::TFiscalDeducation_List_FRM(TFormMode mode, const QVariant &value,
                                                       const QString &text)
    : TBaseDock_FRM(mode, value, text), m_data(Entity_DM, TDataModuleHolder<TEntity_DM>::TakenOver),
      m_kind(Parameter(0).toInt() == 1 ? 1 : 0)
{
    setMinimumSize(750, 550);
    BuildList(Entity_DM->List_QUR, u"FiscalDeducation_List_GRD"_s, columns(), searchItems());
    Grid()->SetMultiSelect(true);
    Grid()->SetRowChecks(true);
    BuildUsualLayout({});
    m_ticks = new QLabel(this);
    m_ticks->setObjectName(u"Ticks_LBL"_s);
    m_ticks->hide();
    BelowGrid()->addWidget(m_ticks);
    connect(Grid()->Model(), &TQueryModel::checksChanged, this, &TFiscalDeducation_List_FRM::tellTicks);
    connect(ZelmoSearchManager1, &TZelmoSearchManager::executed, this,
            &TFiscalDeducation_List_FRM::tellTicks);
    BelowGrid()->addWidget(new TDetailStrip_ZLM(this, u"FiscalDeducation_View"_s, u"سطر جاری"_s,
                                                Entity_DM->List_QUR, detailFields(), 2));
    BuildGroups(Entity_DM->GroupList_QUR, u"GroupListDBList_GRD"_s, u"نام گردوه"_s, u"گروه F11"_s);
    Groups->Grid->SetColumns(Entity_DM->GroupList_QUR, {{"Row", u"#"_s, 30, true, TGridColumn::RowNumber},
                                                        {"Name", u"نام گردوه"_s, 90}});
    resize(960, 620);
    Center()->setSizes({groupPaneWidth, width() - groupPaneWidth});
    SetListPart(itemPart());
    BuildButtons(true, false);
    connectGroups();
}

QString TFiscalDeducation_List_FRM::kindWord() const
{
    return IsDeduction() ? u"کسورات"_s : u"مزايا"_s;
}

void TFiscalDeducation_List_FRM::ParameterStep()
{
    Groups->Group_BTN->setText(IsDeduction() ? u"گروه کسورات"_s : u"گروه مزايا"_s);
    Entity_DM->FiscalDeducationGroup_Get(IsDeduction() ? edDeductionGrp : edFiscalGrp);
}

void TFiscalDeducation_List_FRM::SetListText()
{
    Entity_DM->FiscalDeducationList_get(IsDeduction() ? edDeduction : edFiscal);
}

void TFiscalDeducation_List_FRM::PrepareSearch()
{
    // The all-groups row, and a list without groups, filter nothing.
    ZelmoSearchManager1->SetOwnFilter([this] {
        const int group = Groups->CurrentCode();
        return group == 0 ? TStatement() : TStatement::format(u"(GrpCode = %d)"_s, {group});
    });
    TBaseDock_FRM::PrepareSearch();
}

void TFiscalDeducation_List_FRM::AfterShow()
{
    if (Mode() == fmSelect) {
        m_callType = Parameter(1).toInt();
        m_target = Parameter(2).toString();
    }
    connect(Groups, &TGroup_Pane::groupMoved, ZelmoSearchManager1,
            &TZelmoSearchManager::ExecuteFilter_DataSet);
    // The kept layout comes first: these two are shown at each opening, also when they were hidden in the last one.
    Grid()->RestoreLayout();
    for (const auto &field : {u"InsuranceTitle"_s, u"TaxTitle"_s})
        Grid()->SetColumnOffered(field, !IsDeduction());
    SetTitle(IsDeduction() ? u" ليست کسورات"_s : u" ليست مزايا "_s);
    General_Search->setFocus(Qt::OtherFocusReason);
}

void TFiscalDeducation_List_FRM::connectGroups()
{
    connect(Groups->Group_BTN, &QAbstractButton::clicked, this, [this] { Guarded([this] { pickGroup(); }); });
    connect(Groups->GNew_PMI, &QAction::triggered, this, [this] {
        Guarded([this] {
            if (New_Group(groupPart()))
                Groups->Reread(true);
        });
    });
    connect(Groups->GEdit_PMI, &QAction::triggered, this, [this] {
        Guarded([this] {
            Edit_Group(groupPart(), Groups->CurrentCode());
            Groups->Reread(false);
        });
    });
    connect(Groups->GDelete_PMI, &QAction::triggered, this, [this] {
        Guarded([this] {
            // The part of the deductions themselves, where new and edit pass that of their groups.
            Delete_Group(IsDeduction() ? cspDeduction : cspFiscalGrp, Groups->CurrentCode());
            Groups->Reread(false);
        });
    });
}

void TFiscalDeducation_List_FRM::pickGroup()
{
    const int picked = Select_GroupList(groupPart(), {});
    Groups->Reread(false); // the picker may have made the group that it returns
    Entity_DM->GroupList_QUR->locate(u"Code"_s, picked);
    RefreshList();
}

TBaseGet_FRM *TFiscalDeducation_List_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TFiscalDeducation_Get_FRM(itemPart(), false, QString::number(Groups->CurrentCode()));
    return new TFiscalDeducation_Get_FRM(itemPart(), ListQuery()->value(u"Code"_s), fmEdit, m_kind, false,
                                         true);
}

void TFiscalDeducation_List_FRM::NewRecord()
{
    const auto onlyAllGroups = [] { return Entity_DM->GroupList_QUR->recordCount() <= 1; };
    if (onlyAllGroups()) {
        MakeGroup();
        Groups->Reread(false);
        if (onlyAllGroups())
            return;
    }
    if (ShowEditor(CreateEditor(true)) && ListQuery()->active())
        ListQuery()->last();
}

void TFiscalDeducation_List_FRM::DeleteRecord()
{
    if (!MayDelete(itemPart()) || !CurrentIsStored())
        return;
    const int code = ListQuery()->asInteger(u"Code"_s);
    const auto inUse = [this, code] {
        if (ListQuery()->asInteger(u"PayrollCode"_s) != 0)
            return true;
        Entity_DM->TmpStaff_Count(code, IsDeduction());
        return QueryTools::integerAt(Entity_DM->Temp_QUR, 0) != 0 ||
               QueryTools::integerAt(Entity_DM->Temp_QUR, 1) != 0;
    };
    if (inUse()) {
        MsgHasSubRecords(kindWord());
        Grid()->setFocus(Qt::OtherFocusReason);
        return;
    }
    // Deleted deductions, too, are logged under the part of the earnings.
    if (!ConfirmDelete(cspFiscal, QString::number(code), RecordName()))
        return;
    DM.ADOConnection1->clearLastError();
    if (!Entity_DM->FiscalDeducation_Delete(code, IsDeduction()))
        TellDeleteFailed(kindWord());
    RefreshList();
}

bool TFiscalDeducation_List_FRM::SelectRecord()
{
    switch (m_callType) {
    case ctPick:
    case ctPickForSuite:
    case ctPickToo:
        takeCurrent();
        return true;
    case ctOrder:
    case ctOutput:
        return addChosen();
    default:
        return false;
    }
}

void TFiscalDeducation_List_FRM::takeCurrent()
{
    SelectedCode = ListQuery()->asInteger(u"code"_s);
    SelectedTitle = ListQuery()->asString(u"title"_s);
}

/// The ticked rows, listed or not; none: the current one is meant, whatever else is highlighted.
QList<int> TFiscalDeducation_List_FRM::chosenCodes() const
{
    QList<int> codes;
    for (const qlonglong key : Grid()->Model()->checkedKeys() + Grid()->Model()->unlistedChecks())
        codes << int(key);
    return codes;
}

bool TFiscalDeducation_List_FRM::ChoiceIsStored()
{
    const bool ofTicks = (m_callType == ctOrder || m_callType == ctOutput) && !chosenCodes().isEmpty();
    return ofTicks || CurrentIsStored(); // ticked rows are asked for one by one
}

void TFiscalDeducation_List_FRM::tellTicks()
{
    Guarded([this] {
        const qsizetype listed = Grid()->Model()->checkedKeys().size();
        const qsizetype unlisted = Grid()->Model()->unlistedChecks().size();
        m_ticks->setVisible(listed + unlisted > 0);
        if (listed + unlisted == 0)
            return;
        QString text = u"%1 سطر تیک خورده است"_s.arg(listed + unlisted);
        if (unlisted > 0)
            text += u" ، %1 سطر از آنها در این لیست دیده نمی شود"_s.arg(unlisted);
        m_ticks->setText(text);
    });
}

/// An item as it is stored now; null when it was deleted.
std::optional<TFiscalDeducation_List_FRM::TRow> TFiscalDeducation_List_FRM::storedRow(int code) const
{
    TFiscalDeducation_Mapper item;
    Entity_DM->FiscalDeducation_GetByID(code, itemPart(), item);
    const TQuery *found = Entity_DM->Get_QUR;
    if (found->isEmpty())
        return {};
    return TRow{item._code, found->asInteger(u"PayrollCode"_s), item._CalcType, found->value(u"Cost"_s)};
}

bool TFiscalDeducation_List_FRM::addChosen()
{
    bool isCode = false;
    m_target.toInt(&isCode);
    if (!isCode) {
        ShowSmartMessage(m_callType == ctOrder ? u"کد حکم کارگزینی معتبر نیست"_s : u"کد کارکرد معتبر نیست"_s,
                         {}, miWarning);
        return false;
    }
    TAdded added;
    // Rows that were added before an error stay added, and so the screen closes with OK.
    Guarded([&] {
        const QList<int> codes = chosenCodes();
        for (qsizetype done = 0; done < codes.size(); done += itemsAtOnce) {
            if (!addSome(codes.mid(done, itemsAtOnce), added))
                return;
            if (codes.size() > itemsAtOnce)
                m_ticks->setText(u"%1 سطر از %2 سطر بررسی شد"_s.arg(qMin(done + itemsAtOnce, codes.size()))
                                     .arg(codes.size()));
        }
        if (!codes.isEmpty())
            return;
        const std::optional<TRow> item = storedRow(ListQuery()->asInteger(u"Code"_s));
        const TOutcome outcome = item ? add(*item, false) : TOutcome::Refused;
        added.taken = outcome == TOutcome::Taken;
        if (outcome == TOutcome::Refused)
            Grid()->setFocus(Qt::OtherFocusReason);
    });
    tellTicks();
    if (added.gone && !added.taken)
        RefreshList();
    return added.taken;
}

TFiscalDeducation_List_FRM::TOutcome TFiscalDeducation_List_FRM::add(const TRow &row, bool oneOfMany)
{
    return m_callType == ctOrder ? addToOrder(row, oneOfMany) : addToOutput(row, oneOfMany);
}

// Behind a line they are read together and written together; each is looked at by itself, as ever.
bool TFiscalDeducation_List_FRM::addSome(const QList<int> &codes, TAdded &added)
{
    TConnection &connection = *DM.ADOConnection1;
    const TReadAhead ahead(connection,
                           TEntity_DM::StatementsOfPick(codes, itemPart(), m_target, m_callType == ctOrder));
    TManyWrites writes(connection);
    m_waiting.clear();
    m_writes = &writes;
    const auto back = qScopeGuard([this] { m_writes = nullptr; });
    TAdded some;
    bool goesOn = true;
    try {
        goesOn = addTicked(codes, some);
    } catch (const TDatabaseError &) {
        sendWaiting();
        added.taken = added.taken || writes.stored() > 0;
        throw;
    }
    added.gone = added.gone || some.gone;
    const auto told = qScopeGuard(
        [&] { added.taken = added.taken || (some.taken && (m_waiting.isEmpty() || writes.stored() > 0)); });
    sendWaiting();
    writes.finish();
    return goesOn;
}

bool TFiscalDeducation_List_FRM::addTicked(const QList<int> &codes, TAdded &added)
{
    for (const int code : codes) {
        const std::optional<TRow> item = storedRow(code);
        if (!item) {
            MsgRecordGone(u"کد: %1"_s.arg(code));
            Grid()->Model()->uncheck(code);
            added.gone = true;
            continue;
        }
        const TOutcome outcome = add(*item, true);
        added.taken = added.taken || outcome == TOutcome::Taken;
        if (outcome == TOutcome::Stop)
            return false;
    }
    return true;
}

// The items of inserts that got no answer are found on the target, if they came there.
void TFiscalDeducation_List_FRM::sendWaiting()
{
    const qsizetype before = m_writes->stored();
    try {
        m_writes->send();
        m_waiting.clear();
    } catch (const TDatabaseError &error) {
        if (IsLineLost(error.fault()))
            for (const int code : m_waiting.mid(m_writes->stored() - before))
                m_unsure.insert(code);
        throw;
    }
}

void TFiscalDeducation_List_FRM::insert(const TRow &row, const std::function<void()> &work)
{
    try {
        if (!m_writes)
            return work();
        const qsizetype stored = m_writes->stored();
        m_writes->add([&] {
            work();
            return true;
        });
        if (m_writes->stored() == stored)
            m_waiting.append(row.code);
    } catch (const TDatabaseError &error) {
        if (IsLineLost(error.fault()))
            m_unsure.insert(row.code);
        throw;
    }
}

TFiscalDeducation_List_FRM::TOutcome TFiscalDeducation_List_FRM::refuse(const TRow &row, bool oneOfMany,
                                                                        int noteOfMany, int noteOfOne)
{
    if (oneOfMany)
        ShowSmartMessage(noteOfMany, Grid(), this, 0, {QString::number(row.code)});
    else
        ShowSmartMessage(noteOfOne, Grid(), this, noteTime);
    return TOutcome::Refused;
}

TFiscalDeducation_List_FRM::TOutcome TFiscalDeducation_List_FRM::refuseRepeated(const TRow &row,
                                                                                bool oneOfMany)
{
    if (m_unsure.contains(row.code))
        return TOutcome::Taken;
    if (oneOfMany)
        ShowSmartMessage(ntRepeatedCode, Grid(), this, 0, {QString::number(row.code)});
    else
        SelectBefore(u"سطر"_s, Select_BTN);
    return TOutcome::Refused;
}

TFiscalDeducation_List_FRM::TOutcome TFiscalDeducation_List_FRM::addToOrder(const TRow &row, bool oneOfMany)
{
    if (isReserved(row.payrollCode))
        return refuse(row, oneOfMany, ntReservedCode, ntReserved);
    Entity_DM->tmpRec_GetID(row.code, m_target, IsDeduction());
    if (!Entity_DM->Temp_QUR->isEmpty())
        return refuseRepeated(row, oneOfMany);
    if (ShownInGrid({u"Cost"_s, {}, 0, true, TGridColumn::Money}, row.cost) == u"0") {
        ShowSmartMessage(ntZeroAmount, Grid(), this, noteTime);
        return TOutcome::Refused;
    }
    switch (Entity_DM->RepeatInfo(m_target, QString::number(row.code))) {
    case 1:
        ShowSmartMessage(u" کد بیمه در روش محاسباتی و کسورات حکم کارگزینی تکراری می باشد"_s, {}, miWarning);
        return TOutcome::Stop;
    case 2:
        ShowSmartMessage(u" کد مالیات در روش محاسباتی و کسورات حکم کارگزینی تکراری می باشد"_s, {}, miWarning);
        return TOutcome::Stop;
    default:
        break;
    }
    insert(row, [&] { Entity_DM->tmpRec_Insert(row.code, m_target, IsDeduction(), row.cost.toDouble()); });
    return TOutcome::Taken;
}

TFiscalDeducation_List_FRM::TOutcome TFiscalDeducation_List_FRM::addToOutput(const TRow &row, bool oneOfMany)
{
    // Basis 2 is monthly for an earning and fixed for a deduction; an output takes neither.
    if (isReserved(row.payrollCode) || row.calcType == 2 || row.calcType == 3)
        return refuse(row, oneOfMany, ntNotForOutputCode, ntNotForOutput);
    Entity_DM->tmpstaffOutPutDetail_Get(row.code, m_target);
    if (!Entity_DM->Temp_QUR->isEmpty())
        return refuseRepeated(row, oneOfMany);
    insert(row, [&] { Entity_DM->tmpstaffOutPutDetail_Insert(row.code, m_target, m_kind); });
    return TOutcome::Taken;
}
