#include "staff/StaffRules.h"

#include "staff/StaffFields.h"
#include "staff/Staff_DM_UNT.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Rules::brokenUnless;

const TField<TStaff_Mapper> &fieldOf(const char *column)
{
    return *Fields::ofColumn(staffFields(), column);
}

const QString &textOf(const TStaff_Mapper &staff, const char *column)
{
    return staff.*std::get<QString TStaff_Mapper::*>(fieldOf(column).member);
}

TBroken given(const TStaffSubject &subject, const char *column)
{
    return brokenUnless(!textOf(subject.staff, column).isEmpty());
}

TBroken wellFormed(const TStaffSubject &subject, const char *column)
{
    return brokenUnless(Rules::isWellFormed(fieldOf(column).input.kind, textOf(subject.staff, column)));
}

TBroken groupChosen(const TStaffSubject &subject, const char *)
{
    return brokenUnless(subject.staff._StaffGroup != subject.firstGroup);
}

TBroken groupIsReal(const TStaffSubject &subject, const char *)
{
    return brokenUnless(subject.staff._StaffGroup != 0);
}

/// Whether another employee has the texts, however they are written there. `found`: one who has exactly them was found.
TBroken twin(const TStaffSubject &subject, const QList<TUniqueText> &texts, bool found)
{
    const auto twin = subject.data.Staff_Twin(texts, subject.staff._Code);
    if (!found && !twin)
        return {};
    return twin ? TwinText(*twin) : QString();
}

TBroken fullNameIsFree(const TStaffSubject &subject, const char *)
{
    const TStaff_Mapper &staff = subject.staff;
    subject.data.Staff_GetCode(staff._Name, staff._LastName, staff._Code);
    const bool found = !subject.data.Temp_QUR->isEmpty();
    if (!found && staff._Name == subject.loaded._Name && staff._LastName == subject.loaded._LastName)
        return {};
    return twin(subject, {{"Name", staff._Name}, {"LastName", staff._LastName}}, found);
}

TStatement lookUp(const char *column, const QString &text)
{
    const QString name = QString::fromLatin1(column);
    return TStatement(u"select %1 from Staff where %1="_s.arg(name)).text(text);
}

TStatement earliestOrder(const TStaffSubject &subject)
{
    return TStatement(" SELECT ISNULL(MIN(DoDate), 0) AS DoDateMin FROM Recruitment  WHERE StaffCode = ")
        .integer(subject.staff._Code);
}

TBroken numberIsFree(const TStaffSubject &subject, const char *column)
{
    const QString &text = textOf(subject.staff, column);
    if (text.isEmpty())
        return {};
    QueryTools::open(subject.data.Temp_QUR, lookUp(column, text));
    if (text == textOf(subject.loaded, column))
        return {};
    return twin(subject, {{QString::fromLatin1(column), text}}, !subject.data.Temp_QUR->isEmpty());
}

TBroken personnelCodeIsFree(const TStaffSubject &subject, const char *column)
{
    if (subject.staff._PersonnelCode != "0"_L1)
        return numberIsFree(subject, column);
    QueryTools::open(subject.data.Temp_QUR, lookUp(column, subject.staff._PersonnelCode));
    return {};
}

TBroken leftAfterEmployment(const TStaffSubject &subject, const char *)
{
    return brokenUnless(!subject.left || subject.staff._LeaveDate >= subject.staff._CoDate);
}

// Without a date nothing would be stored of the box.
TBroken leaveDateGiven(const TStaffSubject &subject, const char *column)
{
    return subject.left ? given(subject, column) : TBroken();
}

TBroken employedBeforeOrders(const TStaffSubject &subject, const char *)
{
    QueryTools::open(subject.data.Temp_QUR, earliestOrder(subject));
    const QString earliest = subject.data.Temp_QUR->asString("DoDateMin");
    if (earliest == "0"_L1 || subject.staff._CoDate <= earliest)
        return {};
    return earliest;
}

using enum TRuleMessage;

constexpr TRule<TStaffSubject> rules[] = {
    {"StaffGroup", NotSaveable, u"کليه کارمندان", u"کارمندی", groupChosen},
    {"Name", Required, u"نام", u"", given},
    {"LastName", Required, u"نام خانوادگي", u"", given},
    {"Name", Repeated, u"نام", u"نام خانوادگي", fullNameIsFree},
    {"NationalID", WrongForm, u"", u"", wellFormed},
    {"LeaveDate", Hint, u"تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد.", u"", leftAfterEmployment},
    {"PostCode", WrongForm, u"", u"", wellFormed},
    {"CoDate", WrongForm, u"", u"", wellFormed},
    {"LeaveDate", WrongForm, u"", u"", wellFormed},
    {"BirthDate", WrongForm, u"", u"", wellFormed},
    {"StaffGroup", NotSaveable, u"کليه کارمندان", u"کارمندي", groupIsReal},
    {"PersonnelCode", Repeated, u"کد پرسنلي", u"کارمندان", personnelCodeIsFree},
    {"CardNumber", Repeated, u"شماره کارت", u"کارمندان", numberIsFree},
    {"InsuranceNumber", Repeated, u"کد بيمه", u"کارمندان", numberIsFree},
    {"NationalID", Repeated, u"کد ملي", u"کارمندان", numberIsFree},
    {"Email", WrongForm, u"", u"", wellFormed},
    {"CoDate", Explained, u"تاریخ استخدام نمی تواند بعد از تاریخ حکم کارگزینی باشد",
     u"کوچکترین تاریخ حکم کارگزینی که برای این کارمند ثبت شده است: ", employedBeforeOrders},
    {"LeaveDate", Required, u"تاریخ ترک کار", u"", leaveDateGiven},
    {"IssueDate", WrongForm, u"", u"", wellFormed},
};

} // namespace

std::span<const TRule<TStaffSubject>> staffRules()
{
    return rules;
}

QList<TStatement> staffReads(const TStaffSubject &subject)
{
    const TStaff_Mapper &staff = subject.staff;
    QList<TStatement> reads{TStaff_DM::NameStatement(staff._Name, staff._LastName, staff._Code)};
    for (const char *column : {"PersonnelCode", "CardNumber", "InsuranceNumber", "NationalID"})
        if (const QString &text = textOf(staff, column); !text.isEmpty())
            reads.append(lookUp(column, text));
    reads.append(earliestOrder(subject));
    return reads;
}
