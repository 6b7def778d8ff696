#include "calender/CalenderScreens.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "support/TestUser.h"

CalenderScreens::CalenderScreens()
{
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    Calender_DM = new TCalender_DM(nullptr);
}

CalenderScreens::~CalenderScreens()
{
    EXPECT_EQ(messages.unansweredQuestions(), 0);
    delete Calender_DM;
    Calender_DM = nullptr;
    UserInfo = {};
}

int CalenderScreens::generate(const std::function<void(TCalender_Set_FRM &)> &work)
{
    TCalender_Set_FRM screen(cspCalender, false, QString());
    return Keys::runModal([&] { return screen.exec(); },
                          [&](QWidget *) {
                              Keys::waitFor([&] { return screen.isActiveWindow(); });
                              work(screen);
                          });
}

void CalenderScreens::fill(TCalender_Set_FRM &screen, const QString &from, const QString &to, int startDay,
                           int weekEnd, const QString &title)
{
    Keys::retype(screen.Title_EDT, title);
    Keys::retype(screen.Date1_EDT, from);
    const auto date = TPersianDate::parse(from);
    screen.StartDay_CMB->setCurrentIndex(startDay < 0 && date ? date->weekday() : startDay);
    screen.WeekEnd_CMB->setCurrentIndex(weekEnd);
    Keys::retype(screen.Date2_EDT, to);
}

void CalenderScreens::day(const QString &date, int weekday, int type, const QString &title)
{
    ASSERT_TRUE(Calender_DM->Calender_Insert({title, date, weekday, type, "c"}));
}

int CalenderScreens::open(TCalender_List_FRM &list, const std::function<void()> &work)
{
    return Keys::runModal([&] { return list.exec(); },
                          [&](QWidget *) {
                              Keys::waitFor([&] { return list.isActiveWindow(); });
                              work();
                          });
}

QString CalenderScreens::rows(TCalender_List_FRM &list)
{
    const QAbstractItemModel *model = list.Grid()->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            if (!list.Grid()->isColumnHidden(column))
                cells << model->index(row, column).data().toString();
        lines << cells.join(u'|');
    }
    return lines.join(u'\n');
}
