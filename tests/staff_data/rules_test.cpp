// The rules of an employee without a window, as an import runs them.
#include "staff/StaffFields.h"
#include "staff/StaffRules.h"
#include "staff/Staff_DM_UNT.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

class StaffRules : public testing::Test {
protected:
    StaffRules()
    {
        db.run("insert into StaffGroup(Code,Name) values(1,N'اداری')");
        subject.staff._Code = 7;
        subject.staff._StaffGroup = 1;
        subject.staff._Name = u"رضا"_s;
        subject.staff._LastName = u"کریمی"_s;
        subject.staff._CoDate = "1400/01/01";
    }
    void store(int code, const QString &name, const QString &column, const QString &text)
    {
        db.run(u"insert into Staff(Code,StaffGroup,Name,LastName,%3) values(%1,1,N'%2',N'کریمی',N'%4')"_s
                   .arg(code)
                   .arg(name, column, text));
    }
    QString complaint() { return Complaints::first(staffRules(), subject); }

    TestDatabase db;
    ScriptedMessages messages;
    TStaff_DM dm{nullptr};
    TStaffSubject subject{dm, {}, {}};
};

TEST_F(StaffRules, ARowThatKeepsThemAllIsTaken)
{
    EXPECT_EQ(complaint().toStdString(), "");
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

TEST_F(StaffRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(staffRules(), staffFields());
}

// Mending what is complained of brings the next complaint.
TEST_F(StaffRules, ARowWithEverythingWrongIsComplainedOfInTheEditorsOrder)
{
    store(6, u"علی"_s, "PersonnelCode", "55");
    db.run("update Staff set CardNumber='56', InsuranceNumber='57', NationalID='0084575948' where Code=6");
    store(7, u"حسن"_s, "PersonnelCode", "0");
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(1,7,'1400/06/01')");
    TStaff_Mapper &staff = subject.staff;
    staff._StaffGroup = 0;
    staff._Name.clear();
    staff._LastName.clear();
    staff._NationalID = "0084575947";
    staff._CoDate = "1404/12/30";
    staff._LeaveDate = "1404/12/29";
    subject.left = true;
    staff._PostCode = "123";
    staff._BirthDate = "1370/07/31";
    staff._PersonnelCode = "55";
    staff._CardNumber = "56";
    staff._InsuranceNumber = "57";
    staff._Email = "nobody.ir";
    staff._IssueDate = "1370/13/01";
    const QString six = TwinText({6, u"علی کریمی"_s});

    const auto next = [&](const QString &expected, const std::function<void()> &mend) {
        EXPECT_EQ(complaint().toStdString(), expected.toStdString());
        mend();
    };
    next(u"StaffGroup NotSaveable کليه کارمندان|کارمندی|"_s, [&] { subject.firstGroup = -1; });
    next(u"Name Required نام||"_s, [&] { staff._Name = u"علي"_s; });
    next(u"LastName Required نام خانوادگي||"_s, [&] { staff._LastName = u"كريمي"_s; });
    next(u"Name Repeated نام|نام خانوادگي|"_s + six, [&] { staff._Name = u"رضا"_s; });
    next(u"NationalID WrongForm ||"_s, [&] { staff._NationalID = "0084575948"; });
    next(u"LeaveDate Hint تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.||"_s,
         [&] { staff._LeaveDate = "1405/02/32"; });
    next(u"PostCode WrongForm ||"_s, [&] { staff._PostCode = "1234567890"; });
    next(u"CoDate WrongForm ||"_s, [&] { staff._CoDate = "1401/01/01"; });
    next(u"LeaveDate WrongForm ||"_s, [&] { staff._LeaveDate = "1405/02/31"; });
    next(u"BirthDate WrongForm ||"_s, [&] { staff._BirthDate = "1370/07/30"; });
    next(u"StaffGroup NotSaveable کليه کارمندان|کارمندي|"_s, [&] { staff._StaffGroup = 1; });
    next(u"PersonnelCode Repeated کد پرسنلي|کارمندان|"_s + six, [&] { staff._PersonnelCode = "0"; });
    next(u"CardNumber Repeated شماره کارت|کارمندان|"_s + six, [&] { staff._CardNumber.clear(); });
    next(u"InsuranceNumber Repeated کد بيمه|کارمندان|"_s + six, [&] { staff._InsuranceNumber = "58"; });
    next(u"NationalID Repeated کد ملي|کارمندان|"_s + six, [&] { subject.loaded._NationalID = "0084575948"; });
    next(u"Email WrongForm ||"_s, [&] { staff._Email = "some@body.ir"; });
    next(u"CoDate Explained تاریخ استخدام نمی تواند بعد از تاریخ حکم کارگزینی باشد|"
         u"کوچکترین تاریخ حکم کارگزینی که برای این کارمند ثبت شده است: |1400/06/01"_s,
         [&] { staff._CoDate = "1400/06/01"; });
    next(u"IssueDate WrongForm ||"_s, [&] { staff._IssueDate = "1370/12/01"; });
    next({}, [&] { staff._LeaveDate.clear(); });
    next(u"LeaveDate Hint تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.||"_s,
         [&] { staff._CoDate.clear(); });
    next(u"LeaveDate Required تاریخ ترک کار||"_s, [&] { subject.left = false; });
    next({}, [] {});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

} // namespace
