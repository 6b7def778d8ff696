#include "host/NewBaseForms_PKG/AccountPicker_UNT.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TLevelList {
    QString title;
    const char *key;
    const char *sql;
    QList<TGridColumn> columns;
    QList<TSearchItem> items;
};

const TLevelList &listOf(TAccountLevel level)
{
    static const TLevelList lists[] = {
        {u"حسابهای کل"_s,
         "Kol",
         "select Kol, Name from AccountTotal",
         {{"Kol", u"کد کل"_s, 80, true, TGridColumn::Code}, {"Name", u"نام حساب"_s, 300}},
         {{"Kol", u"کد کل"_s, TSearchItem::Digits}, {"Name", u"نام حساب"_s, TSearchItem::Text, true}}},
        {u"حسابهای معین"_s,
         "ID",
         "select cast(a.Kol as bigint) * 100000 + a.Moin as ID, a.Kol, a.Moin, a.Name, t.Name as TotalName "
         "from AccountAssistant a left join AccountTotal t on t.Kol = a.Kol",
         {{"Moin", u"کد معین"_s, 80, true, TGridColumn::Code},
          {"Name", u"نام حساب"_s, 240},
          {"Kol", u"کد کل"_s, 80, true, TGridColumn::Code},
          {"TotalName", u"نام حساب کل"_s, 200}},
         {{"Moin", u"کد معین"_s, TSearchItem::Digits},
          {"Name", u"نام حساب"_s, TSearchItem::Text, true},
          {"Kol", u"کد کل"_s, TSearchItem::Digits},
          {"TotalName", u"نام حساب کل"_s}}},
        {u"حسابهای تفصیلی"_s,
         "Tafzili",
         "select Tafzili, Name from AccountDetail",
         {{"Tafzili", u"کد تفصیلی"_s, 100, true, TGridColumn::Code}, {"Name", u"نام حساب"_s, 300}},
         {{"Tafzili", u"کد تفصیلی"_s, TSearchItem::Digits},
          {"Name", u"نام حساب"_s, TSearchItem::Text, true}}},
    };
    return lists[level];
}

} // namespace

TAccountPicker_FRM::TAccountPicker_FRM(TQuery *list, TAccountLevel level, int total)
    : TBaseDock_FRM(fmSelect, {}), m_level(level), m_total(total)
{
    const TLevelList &shown = listOf(level);
    SetTitle(shown.title);
    list->setKeyField(QString::fromLatin1(shown.key));
    BuildList(list, u"Account%1_GRD"_s.arg(int(level)), shown.columns, shown.items);
    BuildUsualLayout({});
    m_none = new QLabel(this);
    m_none->setObjectName(u"NoAccounts_LBL"_s);
    m_none->setWordWrap(true);
    m_none->setAlignment(Qt::AlignCenter);
    m_none->hide();
    BelowGrid()->addWidget(m_none, 1);
    Select_BTN = AddButton(u"Select_BTN"_s, u"انتخاب Enter"_s, u"Enter"_s, u"انتخاب"_s);
    connect(Select_BTN, &QAbstractButton::clicked, this, [this] { Guarded([this] { Select(); }); });
    EXit_BTN = AddButton(u"EXit_BTN"_s, u"خروج Esc"_s, u"Esc"_s, u"خروج"_s);
    connect(EXit_BTN, &QAbstractButton::clicked, this, [this] { reject(); });
    resize(640, 480);
}

void TAccountPicker_FRM::SetListText()
{
    TStatement statement(listOf(m_level).sql);
    if (m_level == alAssistant && m_total != 0)
        statement.sql(" where a.Kol=").integer(m_total);
    ListQuery()->setStatement(statement);
}

bool TAccountPicker_FRM::SelectRecord()
{
    if (m_level == alDetail)
        Selected.Tafzili = ListQuery()->asInteger(u"Tafzili"_s);
    else
        Selected.Kol = ListQuery()->asInteger(u"Kol"_s);
    if (m_level == alAssistant)
        Selected.Moin = ListQuery()->asInteger(u"Moin"_s);
    return true;
}

void TAccountPicker_FRM::UpdateButtons()
{
    TBaseDock_FRM::UpdateButtons();
    if (m_none)
        tellWhereFrom();
}

void TAccountPicker_FRM::tellWhereFrom()
{
    const bool none = ListQuery()->active() && ListQuery()->isEmpty() && !ZelmoSearchManager1->IsFiltered();
    Grid()->setVisible(!none);
    m_none->setVisible(none);
    if (!none)
        return;
    QString missing = u"هنوز هیچ حسابی از این سطح در این پایگاه داده نیست."_s;
    if (m_level == alAssistant && m_total != 0)
        missing = u"حساب کل %1 هیچ حساب معینی ندارد."_s.arg(m_total);
    m_none->setText(
        missing + u' ' +
        u"حسابهای کل، معین و تفصیلی در بخش حسابداری مجموعه ساخته می شوند و در اینجا فقط برگزیده می شوند. لطفا نخست آنها را در حسابداری بسازید، یا از مدیر سیستم بخواهید آنها را وارد این پایگاه داده کند."_s);
}

void TAccountPicker_FRM::AfterShow()
{
    General_Search->setFocus(Qt::OtherFocusReason);
}

bool Select_Account(TAccountLevel level, TAccountCode &account)
{
    int total = 0;
    if (!Guarded([&] {
            if (level == alAssistant && account.Kol != 0 && AccountName(alTotal, account))
                total = account.Kol;
        }))
        return false;
    TQuery list(DM.ADOConnection1, u"Account_QUR"_s);
    TAccountPicker_FRM picker(&list, level, total);
    if (picker.exec() != QDialog::Accepted)
        return false;
    if (level == alDetail)
        account.Tafzili = picker.Selected.Tafzili;
    else
        account.Kol = picker.Selected.Kol;
    if (level == alAssistant)
        account.Moin = picker.Selected.Moin;
    return true;
}
