#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "calender/CalenderDays.h"
#include "calender/Calender_DM_UNT.h"
#include "calender/Calender_Day_UNT.h"
#include "calender/Calender_List_UNT.h"
#include "calender/Calender_Set_UNT.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"

#include <QRadioButton>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// The calendar screens on a database of the test's own, worked by keys.
class CalenderScreens : public testing::Test {
protected:
    CalenderScreens();
    ~CalenderScreens() override;

    /// Opens the generator and works in it.
    int generate(const std::function<void(TCalender_Set_FRM &)> &work);
    /// Types a range and a title into the generator; without a start day the from-date's own.
    static void fill(TCalender_Set_FRM &screen, const QString &from, const QString &to, int startDay = -1,
                     int weekEnd = 6, const QString &title = u"روز"_s);
    /// Stores a day.
    void day(const QString &date, int weekday = 0, int type = 1, const QString &title = u"روز"_s);
    int open(TCalender_List_FRM &list, const std::function<void()> &work);
    /// The grid's visible columns, by lines.
    static QString rows(TCalender_List_FRM &list);
    /// The stored days, "date|weekday|type|title" by lines.
    QString stored() { return db.rows(u"select Date, Day, Type, Title from Calender order by ID"_s); }
    int count() { return db.text(u"select count(*) from Calender"_s).toInt(); }

    TestDatabase db;
    ScriptedMessages messages;
};
