#include "calender/CalenderFields.h"

#include "calender/CalenderDays.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using M = TCalenderMapper;
using enum TFieldInput::Kind;
constexpr auto never = TFieldChange::Never;

const QStringList &dayTypes()
{
    static const QStringList items = {u"روز&کاری"_s, u"روز تع&طیل هفته"_s, u"تعطیل ر&سمی"_s};
    return items;
}

constexpr TField<M> fields[] = {
    {"Title", &M::_Title, {"Title_EDT", u"  &عنوان :", Text, 0, 1, 0, 50}},
    {"Date", &M::_Date, {"Date_EDT", u"  تار&یخ :", Date, 0, 0, 0}, never},
    {"Day", &M::_Day, {"Day_LBL", u"  روز :", Own, -1, 0, 1, 0, CalenderDays::weekdays}, never},
    {"Type", &M::_Type, {"WorkDay_RB", u"", Own, -1, 3, 0, 0, dayTypes, 1}},
    {"Comment", &M::_Comment, {"Comment_EDT", u"  &شرح :", Text, 0, 2, 0, 50}},
};

} // namespace

std::span<const TField<TCalenderMapper>> dayFields()
{
    return fields;
}
