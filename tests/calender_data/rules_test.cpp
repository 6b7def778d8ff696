// The rules of a day without a window, as an import runs them.
#include "calender/CalenderRules.h"
#include "support/Complaints.h"

namespace {

TEST(DayRules, EveryRuleConcernsAFieldThatHasAnInput)
{
    Complaints::expectInputs(dayRules(), dayFields());
}

TEST(DayRules, ADayWithEverythingWrongIsComplainedOfInTheScreensOrder)
{
    TDaySubject subject{dayFields()};
    const auto expect = [&](const QString &complaint) {
        EXPECT_EQ(Complaints::first(dayRules(), subject).toStdString(), complaint.toStdString());
    };
    expect(u"Title Required عنوان||"_s);
    subject.record._Title = u"کاری"_s;
    expect(u"Date WrongForm ||"_s);
    subject.record._Date = "1404/12/30"; // 29 days
    expect(u"Date WrongForm ||"_s);
    subject.loaded._Date = "1404/12/30"; // stored so
    expect({});
    subject.record._Date = "1404/12/29";
    expect({});
}

} // namespace
