// The rules of earnings and deductions without a window, as an import runs them.
#include "entity/EntityRules.h"
#include "entity/Entity_DM_UNT.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

class EntityRules : public testing::Test {
protected:
    EntityRules()
    {
        db.run("insert into FiscalGrp(Code,Name) values(2,N'گروه')");
        db.run("insert into DeductionGrp(Code,Name) values(2,N'گروه')");
        db.run("insert into Fiscal(Code,GrpCode,Title) values(3,2,N'پاداش')");
        db.run("insert into Deduction(Code,GrpCode,Title) values(4,2,N'جریمه')");
    }
    void expect(const QString &complaint)
    {
        EXPECT_EQ(Complaints::first(entityRules(), subject).toStdString(), complaint.toStdString());
    }

    TestDatabase db;
    ScriptedMessages messages;
    TEntity_DM dm{nullptr};
    TEntitySubject subject{{entityFields(cspFiscal)}, dm};
};

TEST_F(EntityRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(entityRules(), entityFields(cspFiscal));
    Complaints::expectInputs(entityRules(), entityFields(cspDeduction));
}

// Mending what is complained of brings the next complaint.
TEST_F(EntityRules, AnEarningWithEverythingWrongIsComplainedOfInTheEditorsOrder)
{
    TFiscalDeducation_Mapper &item = subject.record;
    subject.empty = {"code"};
    expect(u"code Required کد||"_s);
    subject.empty.clear();
    item._code = 4; // a deduction's
    expect(u"code Repeated کد||"_s);
    item._code = 3;
    expect(u"code Repeated کد||"_s);
    subject.own = 3;
    expect(u"Grpcode NotSaveable کليه گروه ها|رکوردي|"_s);
    item._Grpcode = 2;
    expect(u"title Required عنوان||"_s);
    subject.own = 0;
    item._code = 5;
    item._title = u"پاداش"_s;
    expect(u"title Repeated عنوان|مزايا|"_s + TwinText({3, u"پاداش"_s}));
    item._title = u"جریمه"_s; // of the other kind
    expect(u"Kol Required حساب کارمند را به طور کامل||"_s);
    item._Kol = item._Moin = "1";
    item._Tafzili = "0";
    expect(u"Kol Required حساب کارمند را به طور کامل||"_s);
    item._Tafzili = "70000";
    expect(u"cost Required مبلغ||"_s);
    item._CalcType = ebPercent;
    expect(u"cost Required نرخ||"_s);
    item._cost = "0";
    expect({});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

TEST_F(EntityRules, ADeductionsTitleIsComparedWithDeductionsAndToldAsAnEarnings)
{
    subject.part = cspDeduction;
    TFiscalDeducation_Mapper &item = subject.record;
    item._code = 5;
    item._Grpcode = 2;
    item._title = u"جريمه"_s;
    item._Kol = item._Moin = item._Tafzili = "1";
    item._cost = "5";
    expect(u"title Repeated عنوان|مزايا|"_s + TwinText({4, u"جریمه"_s}));
    subject.record._title = u"پاداش"_s;
    expect({});
    subject.record._title = u"جريمه"_s;
    subject.loaded._title = u"جريمه"_s;
    expect({});
}

} // namespace
