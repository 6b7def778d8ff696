// The rules of the payroll settings and of the fixed items without a window, as an import runs them.
#include "payrollinfo/PayrollInfoRules.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

TEST(PayrollInfoRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(payrollInfoRules(), payrollInfoFields());
    Complaints::expectInputs(taxOfficeRules(), payrollInfoFields());
    Complaints::expectInputs(payrollItemRules(), payrollItemFields());
}

// Mending what is complained of brings the next complaint.
TEST(PayrollInfoRules, SettingsWithEverythingWrongAreComplainedOfInTheEditorsOrder)
{
    TPayrollInfoSubject subject{payrollInfoFields()};
    TPayrollInfo_Mapper &info = subject.record;
    const auto expect = [&](const QString &complaint, const QString &ofTaxOffice) {
        EXPECT_EQ(Complaints::first(payrollInfoRules(), subject).toStdString(), complaint.toStdString());
        EXPECT_EQ(Complaints::first(taxOfficeRules(), subject).toStdString(), ofTaxOffice.toStdString());
    };
    info._NationalNo = "0084575947";
    const QString payer = u"21 Required نام پرداخت کننده||"_s;
    expect(u"15 Hint شماره پرونده نمي تواند کوچکتر از 12 رقم باشد||"_s, payer);
    info._CaseNo = "123456789012";
    expect(u"18 WrongForm ||"_s, payer);
    info._NationalNo.clear();
    info._PayerName = u"رضا"_s; // stands for the family name, too
    const QString signatory = u"23 Required نام صاحب امضا اول||"_s;
    expect(u"11 Required حق بيمه بيکاري||"_s, signatory);
    info._LeisureIns = "3";
    info._SignaturNameFirst = u"رضا"_s;
    expect(u"12 Required کد شعبه||"_s, u"24 Required نام خانوادگي صاحب امضا اول||"_s);
    info._BranchCode = "1";
    info._SignaturFamilyFirst = u"کریمی"_s;
    expect(u"13 Required کد مرحله جاري||"_s, u"25 Required شماره ملي صاحب امضا اول||"_s);
    info._StageCode = "1";
    info._SignaturIdNationalFirst = "0084575948";
    expect(u"14 Required کد سازمان||"_s, u"26 Required سمت صاحب امضا اول||"_s);
    info._OrganCode = "1";
    info._SignaturPositionFirst = u"مدیر"_s;
    expect(u"19 Required شماره شعبه||"_s, {});
    info._BranchNo = "2";
    expect({}, {});
}

TEST(PayrollInfoRules, AnItemIsLinkedToAStoredEarningOrDeduction)
{
    TestDatabase db;
    ScriptedMessages messages;
    db.run("insert into FiscalGrp(Code,Name) values(2,N'گروه')");
    db.run("insert into DeductionGrp(Code,Name) values(2,N'گروه')");
    db.run("insert into Fiscal(Code,GrpCode,Title) values(3,2,N'پاداش')");
    db.run("insert into Deduction(Code,GrpCode) values(4,2)");
    const auto complaint = [](int code, bool isDeduction) {
        TPayrollItemSubject subject{{payrollItemFields(), {code}}, isDeduction};
        if (code == 0)
            subject.empty = {"UserCode"};
        return Complaints::first(payrollItemRules(), subject);
    };
    EXPECT_EQ(complaint(0, false), u"UserCode Required کد||"_s);
    EXPECT_EQ(complaint(3, false), QString());
    EXPECT_EQ(complaint(4, false), u"UserCode Unknown مزايا||"_s);
    EXPECT_EQ(complaint(3, true), u"UserCode Unknown کسورات||"_s);
    EXPECT_EQ(complaint(4, true), QString()) << "stored without a title, it is still there";
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

} // namespace
