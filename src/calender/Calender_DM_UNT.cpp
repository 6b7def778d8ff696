#include "calender/Calender_DM_UNT.h"

#include "calender/CalenderFields.h"
#include "common/QueryTools.h"

using namespace QueryTools;

TCalender_DM *Calender_DM = nullptr;

namespace {
constexpr qsizetype idsAtOnce = 1000;
const char wholeList[] = "select *,\n"
                         "case [day]\n"
                         "when 0 then 'شنبه'\n"
                         "when 1 then 'يکشنبه' \n"
                         "when 2 then 'دوشنبه' \n"
                         "when 3 then 'سه شنبه' \n"
                         "when 4 then 'چهار شنبه' \n"
                         "when 5 then 'پنجشنبه' \n"
                         "when 6 then 'جمعه'\n"
                         "end as DayOfWeek,\n"
                         "case Type\n"
                         "when 1 then 'روز کاري' \n"
                         "when 2 then 'روز تعطيل هفته' \n"
                         "when 3 then 'روز تعطيل رسمي'\n"
                         "end as TypeDay \n"
                         " \n"
                         "from calender";
const char listOnOneLine[] = "select *, case [day] "
                             "when 0 then 'شنبه'  "
                             "when 1 then 'يکشنبه'  "
                             "when 2 then 'دوشنبه'  "
                             "when 3 then 'سه شنبه'  "
                             "when 4 then 'چهار شنبه'  "
                             "when 5 then 'پنجشنبه'  "
                             "when 6 then 'جمعه'  "
                             "end as DayOfWeek,  "
                             "case Type  "
                             "when 1 then 'روز کاري'  "
                             "when 2 then 'روز تعطيل هفته'  "
                             "when 3 then 'روز تعطيل رسمي'  "
                             "end as TypeDay  "
                             "from calender ";
} // namespace

TCalender_DM::TCalender_DM(QObject *owner)
    : TDataModule(owner), List_QUR(NewQuery("List_QUR")), List_DS(List_QUR), Get_QUR(NewQuery("Get_QUR")),
      Temp_QUR(NewQuery("Temp_QUR"))
{
    List_QUR->setKeyField("ID");
    List_QUR->setStatement(wholeList);
}

void TCalender_DM::Calender_Get()
{
    List_QUR->setStatement(listOnOneLine);
}

void TCalender_DM::Calender_GetByID(const QVariant &id, TCalenderMapper &day)
{
    open(Get_QUR, TStatement("Select * from Calender where ID = ").integer(id));
    Fields::read(*Get_QUR, dayFields(), day);
}

void TCalender_DM::Calender_GetWithDates(const QString &from, const QString &to)
{
    open(Temp_QUR,
         TStatement("select Date from calender where Date>=").text(from).sql(" and Date<=").text(to));
}

bool TCalender_DM::Calender_Insert(const TCalenderMapper &day)
{
    // The generator adds days without having loaded one.
    if (!Get_QUR->active() &&
        !Try([&] { open(Get_QUR, TStatement("Select * from Calender where ID = ").integer(0)); }))
        return false;
    return Post(Get_QUR, true, [&] { Fields::write(*Get_QUR, dayFields(), day); });
}

bool TCalender_DM::Calender_InsertAll(const QList<TCalenderMapper> &days,
                                      const std::function<bool(qsizetype)> &goOn)
{
    bool done = true;
    return Try([&] {
               TManyWrites writes(*DM.ADOConnection1);
               qsizetype told = 0;
               const auto tell = [&] { return writes.stored() == told || goOn(told = writes.stored()); };
               for (qsizetype i = 0; i < days.size() && done; ++i) {
                   done = writes.add([&] { return Calender_Insert(days.at(i)); });
                   if (done && !writes.isFull() && i + 1 < days.size())
                       continue;
                   try {
                       writes.send();
                   } catch (const TDatabaseError &) {
                       tell();
                       throw;
                   }
                   if (!tell())
                       break;
               }
               writes.finish();
           }) &&
           done;
}

bool TCalender_DM::Calender_Update(const TCalenderMapper &day)
{
    return Post(Get_QUR, false, [&] { Fields::write(*Get_QUR, dayFields(), day, false); });
}

void TCalender_DM::Calender_del(const QString &ids)
{
    // A server takes 2100 values with one statement.
    const QStringList all = ids.split(u',');
    for (qsizetype done = 0; done < all.size(); done += idsAtOnce)
        run(Temp_QUR, TStatement("Delete Calender where ID in (")
                          .integers(all.mid(done, idsAtOnce).join(u','))
                          .sql(")"));
}
