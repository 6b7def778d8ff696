// The rules of a calculation method without a window, as an import runs them.
#include "calcmethod/CalcMethodRules.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

class CalcMethodRulesTest : public testing::Test {
protected:
    CalcMethodRulesTest()
    {
        db.run("insert into CalcMethod(Code,Title) values(3,N'پیشین')");
        db.run("insert into TaxMain(Code,Title) values(1,N'سال جاری'),(2,null)");
    }
    void expect(const QString &complaint)
    {
        EXPECT_EQ(Complaints::first(calcMethodRules(), subject).toStdString(), complaint.toStdString());
    }

    TestDatabase db;
    ScriptedMessages messages;
    TCalcMethod_DM dm{nullptr};
    TCalcMethodSubject subject{{calcMethodFields()}, dm, 4};
};

TEST_F(CalcMethodRulesTest, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(calcMethodRules(), calcMethodFields());
}

// Mending what is complained of brings the next complaint.
TEST_F(CalcMethodRulesTest, ARowWithEverythingWrongIsComplainedOfInTheEditorsOrder)
{
    TCalcMethod_Mapper &method = subject.record;
    subject.empty = {"TaxMainCode", "StaffIns", "EmployerIns", "OverTime", "LeaveCeil", "OutPut"};
    method._Code = 3;
    method._Tax = method._Insurance = true;
    method._Entrance = "25:00";
    method._Exit = "8:00";
    expect(u"Code Repeated کد||"_s);
    subject.own = 3; // its own row
    expect(u"Title Required عنوان||"_s);
    method._Title = u"روش"_s;
    expect(u"TaxMainCode Required کد جدول مالياتي||"_s);
    subject.empty.removeOne("TaxMainCode");
    method._TaxMainCode = 7;
    expect(u"TaxMainCode Hint جدول مالیاتی با این کد ثبت نشده است||"_s);
    method._TaxMainCode = 2;
    expect(u"TaxMainCode Unknown جدول مالياتي||"_s);
    method._TaxMainCode = 1;
    expect(u"StaffIns Required حق بيمه کارمند||"_s);
    subject.empty.removeOne("StaffIns");
    expect(u"EmployerIns Required حق بيمه کارفرما||"_s);
    method._Insurance = false;
    expect(u"OverTime Required سقف اضافه کاري||"_s);
    subject.empty.removeOne("OverTime");
    expect(u"LeaveCeil Required سقف مرخصي||"_s);
    subject.empty.removeOne("LeaveCeil");
    expect(u"OutPut Required حداقل کارکرد روزانه||"_s);
    subject.empty.removeOne("OutPut");
    expect(u"Entrance WrongForm ||"_s);
    method._Entrance = "08:00";
    expect(u"Exit WrongForm ||"_s);
    method._Exit.clear();
    expect({});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

TEST_F(CalcMethodRulesTest, WithoutTaxNoTableIsAskedFor)
{
    subject.record._Code = 4;
    subject.record._Title = u"روش"_s;
    subject.empty = {"TaxMainCode", "StaffIns", "EmployerIns"};
    expect({});
}

} // namespace
