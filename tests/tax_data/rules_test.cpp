// The rules of tax tables and brackets without a window, as an import runs them.
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"
#include "tax/TaxRules.h"
#include "tax/Tax_DM_UNT.h"

namespace {

TEST(TaxRules, ATableWithEverythingWrongIsComplainedOfInTheEditorsOrder)
{
    TTaxSubject subject{{taxFields()}};
    const auto expect = [&](const QString &complaint) {
        EXPECT_EQ(Complaints::first(taxRules(), subject).toStdString(), complaint.toStdString());
    };
    subject.empty = {"Code"};
    expect(u"Code Required کد||"_s);
    subject.empty.clear();
    expect(u"Code NotZero کد||"_s);
    subject.record._Code = 5;
    expect(u"Title Required عنوان||"_s);
    subject.record._Title = u"سال جاری"_s;
    expect(u" NotEntered سطري||"_s);
    subject.brackets = 1;
    expect({});
}

class BracketRules : public testing::Test {
protected:
    BracketRules()
    {
        db.run("insert into TmpTax(TaxMainCode,FromSalary,ToSalary,[Percent]) values(5,100,200,10)");
        subject.record._TaxMainCode = 5;
    }
    void expect(const QString &complaint)
    {
        EXPECT_EQ(Complaints::first(bracketRules(), subject).toStdString(), complaint.toStdString());
    }

    TestDatabase db;
    ScriptedMessages messages;
    TTax_DM dm{nullptr};
    TBracketSubject subject{{bracketFields()}, dm};
};

TEST_F(BracketRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(bracketRules(), bracketFields());
}

// Mending what is complained of brings the next complaint.
TEST_F(BracketRules, ABracketWithEverythingWrongIsComplainedOfInTheScreensOrder)
{
    TTmpTax_Mapper &bracket = subject.record;
    subject.empty = {"FromSalary", "ToSalary", "Percent"};
    expect(u"FromSalary Required از حقوق||"_s);
    subject.empty.removeOne("FromSalary");
    bracket._FromSalary = 200;
    expect(u"ToSalary Required تا حقوق||"_s);
    subject.empty.removeOne("ToSalary");
    bracket._ToSalary = 199;
    expect(u"ToSalary Note || %1"_s.arg(ntBoundsReversed));
    bracket._ToSalary = 200;
    expect(u"ToSalary Note || %1"_s.arg(ntBoundsEqual));
    bracket._ToSalary = 300;
    expect(u"Percent Required در صد||"_s);
    subject.empty.clear();
    expect(u"FromSalary Note || %1"_s.arg(ntBracketsOverlap));
    subject.row = 1; // itself
    expect({});
    subject.row = 0;
    bracket._FromSalary = 200.5;
    expect({});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

} // namespace
