#include "host/Groups_PKG/GroupRecord_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/ZelmoSearch/FoldedTwin.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using M = TGroup_Mapper;
using enum TFieldInput::Kind;
using enum TRuleMessage;

constexpr TField<M> fields[] = {
    {"Code", &M::_Code, {"Code_EDT", u"کد :", Integer, 0, 0, 0, 9}, TFieldChange::Never},
    {"Name", &M::_Name, {"Name_EDT", u"&نام :", Text, 0, 1, 0, 50}},
};

TBroken nameIsVisible(const TGroupSubject &subject, const char *)
{
    return Rules::brokenUnless(!subject.record._Name.trimmed().isEmpty());
}

TBroken nameIsFree(const TGroupSubject &subject, const char *)
{
    const auto &[code, name] = subject.record;
    const QString &table = subject.kind.table;
    const QVariant others =
        DM.ADOConnection1->scalar(TStatement(u"select count(*) from %1 where Name="_s.arg(table))
                                      .text(AsStored(table, u"Name"_s, name.trimmed()))
                                      .sql(" and Code<>")
                                      .integer(code));
    const bool found = others.toInt() > 0;
    std::optional<TTwin> twin;
    if (found || subject.loaded._Code != code || name != subject.loaded._Name)
        twin = FindTwin(*DM.ADOConnection1, table, {{u"Name"_s, name}}, code, {u"Name"_s});
    if (!found && !twin)
        return {};
    return twin ? TwinText(*twin) : QString();
}

} // namespace

const TGroupKind *GroupKindOf(TSoftwarePart part)
{
    static const QList<TGroupKind> kinds{
        {cspStaffGroup, u"StaffGroup"_s, u"گروه های کارمندان", u"گروه کارمندان"},
        {cspFiscalGrp, u"FiscalGrp"_s, u"گروه های مزایا", u"گروه مزایا"},
        {cspDeductionGrp, u"DeductionGrp"_s, u"گروه های کسورات", u"گروه کسورات"},
        {cspPerson, u"PersonGroup"_s, u"گروه های اشخاص", u"گروه اشخاص"},
    };
    static const QHash<int, int> groupsOfItems{
        {cspStaff, cspStaffGroup}, {cspFiscal, cspFiscalGrp}, {cspDeduction, cspDeductionGrp}};
    const int wanted = groupsOfItems.value(part, part);
    for (const TGroupKind &kind : kinds) {
        if (kind.part == wanted)
            return &kind;
    }
    return nullptr;
}

std::span<const TField<TGroup_Mapper>> groupFields()
{
    return fields;
}

QList<TRule<TGroupSubject>> groupRules(const TGroupKind &kind)
{
    return {{"Name", Required, u"نام", u"", nameIsVisible},
            {"Name", Repeated, u"نام", kind.listTitle, nameIsFree}};
}
