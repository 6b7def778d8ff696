#include "staff/StaffFamilyRules.h"

#include "common/QueryTools.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "staff/StaffFamily_DM_UNT.h"

using namespace Qt::Literals::StringLiterals;
using namespace Rules;

namespace {

TBroken codeIsFree(const TStaffFamilySubject &subject, const char *)
{
    const int code = subject.record._ID;
    QueryTools::open(subject.data.Temp_QUR,
                     TStatement("select id from tmpStaffFamily where id=").integer(code));
    const bool free = subject.data.Temp_QUR->isEmpty() || code == subject.loaded._ID;
    // One that was stored while the screen was open would let no save of the employee succeed.
    const bool stored =
        subject.loaded._ID == 0 && !ScalerQuery(u"StaffFamily"_s, u"ID"_s, u"ID"_s, code).isEmpty();
    return brokenUnless(free && !stored);
}

TBroken diedAfterBirth(const TStaffFamilySubject &subject, const char *)
{
    const TFamilly_Mapper &member = subject.record;
    return brokenUnless(!member._Death || member._DeathDate >= member._BirthDate);
}

// Without a date the row would be read back as of a living member.
TBroken deathDateGiven(const TStaffFamilySubject &subject, const char *column)
{
    return subject.record._Death ? given(subject, column) : TBroken();
}

using enum TRuleMessage;

constexpr TRule<TStaffFamilySubject> rules[] = {
    {"id", Required, u"کد", u"", given},
    {"id", Repeated, u"کد", u"خانواده", codeIsFree},
    {"Name", Required, u"نام و نام خانوادگي", u"", given},
    {"BirthDate", WrongForm, u"", u"", wellFormed},
    {"DeathDate", WrongForm, u"", u"", wellFormed},
    {"DeathDate", Hint, u"تاریخ فوت نمی تواند از تاریخ تولد کوچکتر باشد.", u"", diedAfterBirth},
    {"DeathDate", Required, u"تاریخ فوت", u"", deathDateGiven},
};

} // namespace

std::span<const TRule<TStaffFamilySubject>> staffFamilyRules()
{
    return rules;
}
