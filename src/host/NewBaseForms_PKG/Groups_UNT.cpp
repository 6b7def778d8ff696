#include "host/NewBaseForms_PKG/Groups_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QGridLayout>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

QString groupWord()
{
    return u"گروه"_s;
}

TStatement on(const char *beginning, const TGroupKind &kind, const char *end)
{
    return TStatement(QString::fromLatin1(beginning) + kind.table + QString::fromLatin1(end));
}

QString nameOf(const TGroupKind &kind, int code)
{
    return ScalerQuery(kind.table, u"Name"_s, u"Code"_s, code);
}

bool groupIsStored(const TGroupKind &kind, int code)
{
    return !DM.ADOConnection1->scalar(on("select Code from ", kind, " where Code=").integer(code)).isNull();
}

/// The group that stands for all: the lists' first row, made with the database.
bool isFixed(const TGroupKind &kind, int code)
{
    return code == 0 && kind.part != cspPerson;
}

} // namespace

bool RefuseGroupOfAll(const TGroupKind &kind, int code)
{
    if (!isFixed(kind, code))
        return false;
    ShowSmartMessage(ntGroupOfAll, nullptr, nullptr, 0);
    return true;
}

TGroupGet_FRM::TGroupGet_FRM(const TGroupKind &kind) : TRecordGet(kind.part, false, {}), m_kind(kind)
{
    build();
}

TGroupGet_FRM::TGroupGet_FRM(const TGroupKind &kind, int code)
    : TRecordGet(kind.part, code, fmEdit, false), m_kind(kind)
{
    build();
}

void TGroupGet_FRM::build()
{
    SetTitle(QString::fromUtf16(m_kind.editorTitle));
    Store.newCode = [this] {
        return DM.ADOConnection1->scalar(on("select isnull(max(Code),0)+1 from ", m_kind, "")).toInt();
    };
    Store.fresh = [](int code) { return TGroup_Mapper{code, {}}; };
    Store.read = [this](const QVariant &code, TGroup_Mapper &group) {
        group = {code.toInt(), nameOf(m_kind, code.toInt())};
        return true;
    };
    auto *inputs = new QGridLayout;
    Body()->addLayout(inputs);
    AddFields(inputs, groupFields(), m_kind.table);
    Code_EDT->setReadOnly(true);
    Code_EDT->setFocusPolicy(Qt::NoFocus);
    Body()->addStretch(1);
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
    resize(420, sizeHint().height());
}

bool TGroupGet_FRM::Validate()
{
    const TGroupSubject subject{{groupFields(), Typed(), Stored}, m_kind};
    return std::ranges::all_of(groupRules(m_kind),
                               [&](const auto &rule) { return Keeps(rule, groupFields(), subject); });
}

bool TGroupGet_FRM::SaveRecord()
{
    const QString name = AsStored(m_kind.table, u"Name"_s, Name_EDT->GetText().trimmed());
    bool stored = false;
    const bool sound = Written([&] {
        stored =
            DM.ADOConnection1->execute(Mode() == fmNew ? on("insert into ", m_kind, "(Code, Name) values(")
                                                             .integer(Identifier())
                                                             .sql(",")
                                                             .text(name)
                                                             .sql(")")
                                                       : on("update ", m_kind, " set Name=")
                                                             .text(name)
                                                             .sql(" where Code=")
                                                             .integer(Identifier())) > 0;
        return true;
    });
    if (!sound)
        MSGFinishedNotSuccessfully(u"ذخیره سازی"_s);
    else if (!stored)
        MsgRecordGone(); // deleted by another workstation; the name stays as typed
    else
        MSGCompeletedSuccessfully(u"ذخیره سازی"_s);
    return stored;
}

bool TGroupGet_FRM::RecordExists()
{
    return groupIsStored(m_kind, Identifier().toInt());
}

QString TGroupGet_FRM::LockedEntityWord() const
{
    return groupWord();
}

TGroupList_FRM::TGroupList_FRM(TFormMode mode, const TGroupKind &kind, const QString &text)
    : TBaseDock_FRM(mode, text), m_kind(kind), m_query(DM.ADOConnection1, u"GroupList_QUR"_s)
{
    if (text.isEmpty())
        SetTitle(QString::fromUtf16(kind.listTitle));
    m_query.setKeyField(u"Code"_s);
    BuildList(
        &m_query, u"Group_GRD"_s,
        {{u"Code"_s, u"کد"_s, 80, true, TGridColumn::Code}, {u"Name"_s, u"نام گروه"_s, 300}},
        {{u"Code"_s, u"کد"_s, TSearchItem::Digits}, {u"Name"_s, u"نام گروه"_s, TSearchItem::Text, true}});
    BuildUsualLayout({});
    SetListPart(kind.part);
    BuildButtons(true, false);
    resize(560, 460);
}

TGroupList_FRM::~TGroupList_FRM() = default;

void TGroupList_FRM::SetListText()
{
    m_query.setStatement(on("select Code, Name from ", m_kind, ""));
}

TBaseGet_FRM *TGroupList_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TGroupGet_FRM(m_kind);
    return new TGroupGet_FRM(m_kind, m_query.asInteger(u"Code"_s));
}

bool TGroupList_FRM::Delete(const TGroupKind &kind, int code, TSoftwarePart part)
{
    if (!MayDelete(part))
        return false;
    if (RefuseGroupOfAll(kind, code))
        return false;
    if (LocateLockCode_SoftwarePart(QString::number(code), kind.part, IniOptions.Com_Index, false)) {
        MSGInUse(groupWord());
        return false;
    }
    if (!groupIsStored(kind, code)) {
        MsgRecordGone();
        return false;
    }
    const QString name = nameOf(kind, code);
    if (!ConfirmDelete(part, name, u"کد: %1 - نام گروه: \u2068%2\u2069"_s.arg(code).arg(name)))
        return false;
    try {
        return DM.ADOConnection1->execute(on("delete from ", kind, " where Code=").integer(code)) > 0;
    } catch (const TDatabaseError &error) {
        if (error.fault() != TFault::Refused)
            throw;
        DM.ADOConnection1->noteError(error);
        MsgHasSubRecords(groupWord());
        return false;
    }
}

void TGroupList_FRM::DeleteRecord()
{
    const int code = m_query.asInteger(u"Code"_s);
    if (Delete(m_kind, code, m_kind.part) || !groupIsStored(m_kind, code))
        RefreshList();
}

bool TGroupList_FRM::SelectRecord()
{
    SelectedCode = m_query.asInteger(u"Code"_s);
    return true;
}

void TGroupList_FRM::UpdateButtons()
{
    TBaseDock_FRM::UpdateButtons();
    const bool row = m_query.active() && m_query.position() >= 0;
    if (row && isFixed(m_kind, m_query.asInteger(u"Code"_s))) {
        for (TSmartButton_ZLM *button : {EDit_BTN, Del_BTN})
            if (button)
                button->setEnabled(false);
    }
}
