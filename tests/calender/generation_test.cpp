#include "calender/CalenderScreens.h"

#include "host/Utility_ZLM/PersianCalendar.h"

#include <QLabel>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

/// What becomes of a generation that looks wrong, ends early, or meets another one.
class CalenderGeneration : public CalenderScreens {
protected:
    /// Lets the n-th day of a generation fail.
    void failDay(int n, TFault fault = TFault::DiskFull)
    {
        m_days = 0;
        db.connection().setStatementHook([this, n, fault](const TStatement &statement) {
            const QString text = statement.boundText();
            if (text.startsWith("insert", Qt::CaseInsensitive) &&
                text.contains("Calender", Qt::CaseInsensitive) && ++m_days == n)
                throw TDatabaseError(fault, "the test's own");
        });
    }
    void failNothing() { db.connection().setStatementHook({}); }
    /// Stops a generation from within, after its first days.
    static void stopSoon(TCalender_Set_FRM &screen)
    {
        QTimer::singleShot(0, &screen, [&] { screen.Cancel_BTN->click(); });
        QTest::sendKeyEvent(QTest::Click, screen.focusWidget(), Qt::Key_F3, QString(), Qt::NoModifier);
    }
    QString events()
    {
        return db.rows("select SoftwarePart, Permission, EventText from UserEvent order by ID");
    }
    QString locks() { return db.rows("select Code, Status, Com_Index from CodeLock_TBL"); }
    void leave(TCalender_Set_FRM &screen, bool asked = true)
    {
        if (asked)
            messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    }

private:
    int m_days = 0;
};

TEST_F(CalenderGeneration, AStartDayThatIsNotTheDatesIsAskedAboutBeforeAnyDayIsStored)
{
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1404/01/01", "1404/12/29", 0); // a Friday, taken for a Saturday
        messages.answer({No});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(messages.last().operation, "MsgGoOnAnyway");
        EXPECT_EQ(messages.last().shape, TMessageShape::Question);
        EXPECT_EQ(messages.last().defaultAnswer, No);
        for (const QString &word : {u"1404/01/01"_s, u"جمعه"_s, u"شنبه"_s, u"365"_s})
            EXPECT_TRUE(messages.last().text.contains(word)) << word.toStdString();
        EXPECT_TRUE(screen.isVisible());
        EXPECT_TRUE(screen.StartDay_CMB->hasFocus());
        EXPECT_EQ(count(), 0);
        screen.StartDay_CMB->setCurrentIndex(6);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي |365 روز)"_s));
    EXPECT_EQ(count(), 365);
}

TEST_F(CalenderGeneration, ADayThatTheCalendarDoesNotHaveIsAskedAbout)
{
    // The to-date's day holds in both years, and 1402 has no 12/30.
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/12/01", "1403/12/30");
        messages.answer({No});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.last().operation, "MsgGoOnAnyway");
        EXPECT_TRUE(messages.last().text.contains(u"1402/12/30"_s));
        EXPECT_FALSE(messages.last().text.contains(u"1403/12/30"_s));
        EXPECT_TRUE(screen.Date2_EDT->hasFocus());
        EXPECT_EQ(count(), 0);
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 60) << "as asked for: thirty days of Esfand in both years";
}

TEST_F(CalenderGeneration, TheDefaultEndOfACommonYearIsExplainedBesideIt)
{
    generate([&](TCalender_Set_FRM &screen) {
        Keys::type(screen.Title_EDT, "t");
        Keys::retype(screen.Date2_EDT, "1404/12/30");
        EXPECT_EQ(screen.Date2Hint_LBL->text(), u"اسفند 1404 تنها 29 روز دارد"_s);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_TRUE(screen.Date2_EDT->hasFocus());
        EXPECT_TRUE(screen.Date2Hint_LBL->isVisible());
        Keys::picture(&screen, "calender_generator_month");
        Keys::retype(screen.Date2_EDT, "1404/12/29");
        EXPECT_EQ(screen.Date2Hint_LBL->text(), "");
        Keys::retype(screen.Date2_EDT, "1403/12/30");
        EXPECT_EQ(screen.Date2Hint_LBL->text(), "");
        Keys::retype(screen.Date2_EDT, u"۱۴۰۴/۷/۳۱"_s);
        EXPECT_EQ(screen.Date2Hint_LBL->text(), u"مهر 1404 تنها 30 روز دارد"_s);
        Keys::retype(screen.Date2_EDT, "1404/13/30");
        EXPECT_EQ(screen.Date2Hint_LBL->text(), "");
        messages.take();
        leave(screen);
    });
}

TEST_F(CalenderGeneration, AnInsertThatFailsTellsHowFarItCameAndPutsTheRestIntoTheInputs)
{
    const int result = generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        failDay(6);
        Keys::press(&screen, Qt::Key_F3);
        failNothing();
        const QStringList told = messages.take();
        ASSERT_EQ(told.size(), 2);
        EXPECT_EQ(told[0], u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s);
        for (const char *date : {"1402/05/01", "1402/05/05", "1402/05/06", "1402/05/31"})
            EXPECT_TRUE(told[1].contains(date)) << date;
        EXPECT_EQ(events(), "803|1|1402/05/01 ... 1402/05/05");
        EXPECT_TRUE(screen.isVisible());
        EXPECT_FALSE(screen.IsSaved());
        EXPECT_FALSE(screen.Cancel_BTN->isVisible());
        EXPECT_TRUE(screen.Title_EDT->isEnabled());
        EXPECT_EQ(screen.Title_EDT->GetText(), u"روز"_s);
        EXPECT_EQ(screen.Date1_EDT->GetText(), "1402/05/06");
        EXPECT_EQ(screen.Date2_EDT->GetText(), "1402/05/31");
        EXPECT_EQ(screen.StartDayHint_LBL->text(), "") << "the weekday is counted on";
        EXPECT_EQ(count(), 5);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي |26 روز)"_s));
    EXPECT_EQ(events(), "803|1|1402/05/01 ... 1402/05/05\n803|1|1402/05/06 ... 1402/05/31");
    EXPECT_EQ(db.text("select count(distinct Date) from Calender"), "31");
    EXPECT_EQ(locks(), "");
}

TEST_F(CalenderGeneration, AnInsertThatFailsAtOnceLeavesAllAsTyped)
{
    const int result = generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        failDay(1);
        Keys::press(&screen, Qt::Key_F3);
        failNothing();
        EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s));
        EXPECT_EQ(screen.Date1_EDT->GetText(), "1402/05/01");
        leave(screen);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(events(), "");
    EXPECT_EQ(locks(), "") << "the screen that is left holds nothing";
}

TEST_F(CalenderGeneration, AStoppedGenerationHasItsEventAndTheRestIsSavedByOneKey)
{
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/01/01", "1402/12/29");
        stopSoon(screen);
        const int stored = count();
        ASSERT_GT(stored, 0);
        ASSERT_LT(stored, 365);
        const QString last = db.text("select max(Date) from Calender");
        EXPECT_EQ(events(), "803|1|1402/01/01 ... " + last);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(messages.last().text.contains(last));
        EXPECT_EQ(screen.Date1_EDT->GetText(), TPersianDate::parse(last)->addDays(1).toText());
        EXPECT_TRUE(messages.last().text.contains(screen.Date1_EDT->GetText()));
        EXPECT_EQ(locks(), "");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 365);
    EXPECT_EQ(db.text("select count(distinct Date) from Calender"), "365");
}

TEST_F(CalenderGeneration, TheRestOfTwoYearsIsToldYearByYear)
{
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1400/01/01", "1401/12/29");
        failDay(101);
        Keys::press(&screen, Qt::Key_F3);
        failNothing();
        EXPECT_EQ(screen.Date1_EDT->GetText(), "1400/04/08");
        EXPECT_EQ(screen.Date2_EDT->GetText(), "1400/12/29") << "the month bounds hold in every year";
        EXPECT_TRUE(messages.last().text.contains("1401/01/01"));
        EXPECT_TRUE(messages.last().text.contains("1401/12/29"));
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(count(), 365);
        leave(screen, false);
    });
}

TEST_F(CalenderGeneration, AnotherWorkstationThatGeneratesIsNamedAndNothingIsStored)
{
    db.run("insert into Workstation(Com_Index, Name) values(2, 'desk two')");
    db.run(
        "insert into CodeLock_TBL(Code, Status, Com_Index, UserName, ProcessID) values('0', 803, 2, 'sara', 1)");
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(messages.last().text.contains("desk two"));
        EXPECT_TRUE(messages.last().text.contains("sara"));
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(locks(), "0|803|2");
        db.run("delete from CodeLock_TBL");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 31);
    EXPECT_EQ(locks(), "");
}

TEST_F(CalenderGeneration, DaysThatAnotherWorkstationStoredSinceTheCheckAreNotStoredAgain)
{
    TConnection other;
    TestDatabase::open(other, db.path());
    bool stored = false;
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        // The other one generates between this one's look at the range and its lock.
        db.connection().setStatementHook([&](const TStatement &statement) {
            if (!stored && statement.boundText().contains("CodeLock_TBL")) {
                stored = true;
                other.execute("insert into Calender(Date, Day, Type, Title) values('1402/05/20', 6, 2, 'x')");
            }
        });
        Keys::press(&screen, Qt::Key_F3);
        failNothing();
        EXPECT_TRUE(stored);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10060()"));
        EXPECT_TRUE(screen.Date1_EDT->hasFocus());
        EXPECT_EQ(count(), 1);
        leave(screen);
    });
    EXPECT_EQ(locks(), "");
}
