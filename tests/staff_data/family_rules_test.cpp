// The rules of a member of a family without a window, as an import runs them.
#include "staff/StaffFamilyRules.h"
#include "staff/Staff_DM_UNT.h"
#include "support/Complaints.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

namespace {

class FamilyRules : public testing::Test {
protected:
    void expect(const QString &complaint)
    {
        EXPECT_EQ(Complaints::first(staffFamilyRules(), subject).toStdString(), complaint.toStdString());
    }

    TestDatabase db;
    ScriptedMessages messages;
    TStaff_DM dm{nullptr};
    TStaffFamilySubject subject{{staffFamilyFields()}, dm};
};

TEST_F(FamilyRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(staffFamilyRules(), staffFamilyFields());
}

// Mending what is complained of brings the next complaint.
TEST_F(FamilyRules, AMemberWithEverythingWrongIsComplainedOfInTheScreensOrder)
{
    db.run("insert into Staff(Code,StaffGroup,Name,LastName) values(1,0,N'رضا',N'کریمی')");
    db.run("insert into StaffFamily(ID,StaffCode,Name) values(3,1,N'مینا')");
    db.run("insert into tmpStaffFamily(ID,StaffCode,Name) values(4,1,N'سارا')");
    TFamilly_Mapper &member = subject.record;
    subject.empty = {"id"};
    member._BirthDate = "1390/13/01";
    member._Death = true;
    member._DeathDate = "1390/02/32";
    expect(u"id Required کد||"_s);
    subject.empty.clear();
    member._ID = 4; // a working row
    expect(u"id Repeated کد|خانواده|"_s);
    member._ID = 3; // a saved row
    expect(u"id Repeated کد|خانواده|"_s);
    subject.loaded._ID = 3;
    expect(u"Name Required نام و نام خانوادگي||"_s);
    member._Name = u"مینا"_s;
    expect(u"BirthDate WrongForm ||"_s);
    member._BirthDate = "1390/02/05";
    expect(u"DeathDate WrongForm ||"_s);
    member._DeathDate = "1390/02/04";
    expect(u"DeathDate Hint تاریخ فوت نمی تواند از تاریخ تولد کوچکتر باشد.||"_s);
    member._DeathDate = "1390/02/05";
    expect({});
    member._BirthDate.clear();
    member._DeathDate.clear();
    expect(u"DeathDate Required تاریخ فوت||"_s);
    member._Death = false;
    expect({});
    EXPECT_EQ(messages.take(), QStringList()) << "nobody is asked or told";
}

} // namespace
