// The rules of a group without a window, as an import runs them.
#include "host/Groups_PKG/GroupRecord_UNT.h"
#include "host/ZelmoSearch/FoldedTwin.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

// Mending what is complained of brings the next complaint.
TEST(GroupRules, AGroupWithEverythingWrongIsComplainedOfInTheEditorsOrder)
{
    TestDatabase db;
    ScriptedMessages messages;
    db.run("insert into StaffGroup(Code,Name) values(4,N'اداری')");
    const TGroupKind &kind = *GroupKindOf(cspStaff);
    TGroupSubject subject{{groupFields()}, kind};
    const auto expect = [&](const QString &complaint) {
        const auto rules = groupRules(kind);
        EXPECT_EQ(Complaints::first<TGroupSubject>(rules, subject).toStdString(), complaint.toStdString());
    };
    subject.record = {5, u"  "_s};
    expect(u"Name Required نام||"_s);
    const QString taken = u"Name Repeated نام|گروه های کارمندان|"_s + TwinText({4, u"اداری"_s});
    subject.record._Name = u"اداری"_s;
    expect(taken);
    subject.record._Name = u" اداري"_s; // the same to a reader
    expect(taken);
    subject.record._Code = subject.loaded._Code = 4;
    expect({});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

TEST(GroupRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    const auto rules = groupRules(*GroupKindOf(cspFiscal));
    Complaints::expectInputs<TGroupSubject>(rules, groupFields());
}

} // namespace
