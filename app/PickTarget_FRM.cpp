#include "app/PickTarget_FRM.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Query.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TTarget {
    QString title;
    const char *sql;
    QList<TGridColumn> columns;
    QList<TSearchItem> items;
    const char *callType;       ///< what the module's entries call this kind of record
    const char *workingRows[2]; ///< a code behind each
    TGridColumn amount;
};

const TTarget &targetOf(TPickTarget_FRM::Kind kind)
{
    static const TTarget targets[] = {
        {u"حکم های کارگزینی"_s,
         "select r.Code, s.fullnameTitle, r.DoDate, m.Title as MethodTitle from Recruitment r left join staff_VW s "
         "on s.Code = r.StaffCode left join CalcMethod m on m.Code = r.CalcMethodCode",
         {{"Code", u"کد حکم"_s, 80, true, TGridColumn::Code},
          {"fullnameTitle", u"کارمند"_s, 220},
          {"DoDate", u"تاریخ اجرا"_s, 100},
          {"MethodTitle", u"روش محاسباتی"_s, 200}},
         {{"Code", u"کد حکم"_s, TSearchItem::Digits},
          {"fullnameTitle", u"کارمند"_s, TSearchItem::Text, true},
          {"DoDate", u"تاریخ اجرا"_s, TSearchItem::Date},
          {"MethodTitle", u"روش محاسباتی"_s}},
         "2",
         {"select N'مزایا' as KindTitle, w.ItemCode, i.Title, w.Cost as Amount from tmpRecFiscal w left join Fiscal i "
          "on i.Code = w.ItemCode where w.RecruitmentCode=",
          " union all select N'کسورات' as KindTitle, w.ItemCode, i.Title, w.Cost as Amount from tmpRecDeduction w "
          "left join Deduction i on i.Code = w.ItemCode where w.Recruitmentcode="},
         {"Amount", u"مبلغ / نرخ"_s, 140, true, TGridColumn::Money}},
        {u"کارکردها"_s,
         "select Code, Title from StaffOutPut",
         {{"Code", u"کد"_s, 80, true, TGridColumn::Code}, {"Title", u"عنوان"_s, 320}},
         {{"Code", u"کد"_s, TSearchItem::Digits}, {"Title", u"عنوان"_s, TSearchItem::Text, true}},
         "3",
         {"select N'مزایا' as KindTitle, w.ItemCode, i.Title, w.Amount from tmpstaffOutPutDetail w left join Fiscal i "
          "on i.Code = w.ItemCode where w.Type = 0 and w.OutPutCode=",
          " union all select N'کسورات' as KindTitle, w.ItemCode, i.Title, w.Amount from tmpstaffOutPutDetail w left "
          "join Deduction i on i.Code = w.ItemCode where w.Type = 1 and w.OutPutCode="},
         {"Amount", u"مقدار"_s, 140, true, TGridColumn::Money}},
    };
    return targets[kind];
}

} // namespace

TPickTarget_FRM::TPickTarget_FRM(TSession &session, Kind kind)
    : TBaseDock_FRM(fmBrowse, {}), m_session(session), m_kind(kind)
{
    const TTarget &target = targetOf(kind);
    SetListPart(cspFiscal); // as the entries ask
    setObjectName(kind == Orders ? u"TPickTarget_Orders"_s : u"TPickTarget_Outputs"_s);
    SetTitle(target.title);
    auto *list = new TQuery(DM.ADOConnection1, u"List_QUR"_s, this);
    list->setKeyField(u"Code"_s);
    Items_QUR = new TQuery(DM.ADOConnection1, u"Items_QUR"_s, this);
    BuildList(list, u"PickTarget_GRD"_s, target.columns, target.items);
    BuildUsualLayout({});
    auto *items = new TSmartGrid_ZLM(u"Items_GRD"_s, this);
    items->SetColumns(Items_QUR, {{"KindTitle", u"نوع"_s, 90},
                                  {"ItemCode", u"کد"_s, 80, true, TGridColumn::Code},
                                  {"Title", u"عنوان"_s, 240},
                                  target.amount});
    items->setMaximumHeight(220);
    BelowGrid()->addWidget(items);
    Fiscal_BTN =
        addPick(u"Fiscal_BTN"_s, u"افزودن مزایا F6"_s, u"F6"_s, u"افزودن مزایا"_s, "Select_FiscalList");
    Deduction_BTN = addPick(u"Deduction_BTN"_s, u"افزودن کسورات F8"_s, u"F8"_s, u"افزودن کسورات"_s,
                            "Select_DeductionList");
    EXit_BTN = AddButton(u"EXit_BTN"_s, u"خروج Esc"_s, u"Esc"_s, u"خروج"_s);
    connect(EXit_BTN, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(list, &TQuery::currentChanged, this, &TPickTarget_FRM::showItems);
    connect(list, &TQuery::opened, this, &TPickTarget_FRM::showItems);
    TPickTarget_FRM::UpdateButtons();
}

TSmartButton_ZLM *TPickTarget_FRM::addPick(const QString &name, const QString &caption, const QString &key,
                                           const QString &shortCaption, const char *entry)
{
    TSmartButton_ZLM *button = AddButton(name, caption, key, shortCaption);
    connect(button, &QAbstractButton::clicked, this, [this, entry] { Guarded([&] { pick(entry); }); });
    return button;
}

void TPickTarget_FRM::SetListText()
{
    ListQuery()->setStatement(targetOf(m_kind).sql);
}

void TPickTarget_FRM::UpdateButtons()
{
    TBaseDock_FRM::UpdateButtons();
    const bool row = ListQuery() && ListQuery()->active() && !ListQuery()->isEmpty();
    for (TSmartButton_ZLM *button : {Fiscal_BTN, Deduction_BTN})
        if (button)
            button->setEnabled(row);
}

void TPickTarget_FRM::pick(const char *entry)
{
    if (!CurrentIsStored())
        return;
    const QString code = ListQuery()->asString(u"Code"_s);
    m_session.callEntry(*EntryPoints::find(QLatin1String(entry)),
                        {QLatin1String(targetOf(m_kind).callType), code});
    showItems();
}

void TPickTarget_FRM::showItems()
{
    Guarded([this] {
        Items_QUR->close();
        if (!ListQuery()->active() || ListQuery()->position() < 0)
            return;
        const QVariant code = ListQuery()->value(u"Code"_s);
        TStatement statement;
        for (const char *piece : targetOf(m_kind).workingRows)
            statement.sql(QString::fromUtf8(piece)).integer(code);
        Items_QUR->setStatement(statement);
        Items_QUR->open();
    });
}
