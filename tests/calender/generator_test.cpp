#include "calender/CalenderScreens.h"

#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "support/TestServer.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <thread>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class CalenderGenerator : public CalenderScreens {
protected:
    void expectRefused(TCalender_Set_FRM &screen, const QStringList &told, QWidget *focus)
    {
        messages.take();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), told);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_TRUE(focus->hasFocus()) << focus->objectName().toStdString();
        EXPECT_EQ(db.text("select count(*) from Calender where Title='refused'"), "0");
    }
    void leave(TCalender_Set_FRM &screen)
    {
        messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
    }
};

TEST_F(CalenderGenerator, OpensWithTheYearAndItsTexts)
{
    generate([&](TCalender_Set_FRM &screen) {
        const QString year = NowDate().left(4);
        EXPECT_EQ(screen.Date1_EDT->GetText(), year + "/01/01");
        EXPECT_EQ(screen.Date2_EDT->GetText(), year + "/12/30"); // the thirtieth in every year
        EXPECT_EQ(screen.StartDay_CMB->currentIndex(), 0);
        EXPECT_EQ(screen.StartDay_CMB->currentText(), u"شنبه"_s);
        EXPECT_EQ(screen.WeekEnd_CMB->currentIndex(), 6);
        EXPECT_EQ(screen.WeekEnd_CMB->currentText(), u"جمعه"_s);
        EXPECT_EQ(screen.Title_EDT->MaxLength(), 50);
        EXPECT_EQ(screen.Comment_EDT->MaxLength(), 50);
        EXPECT_TRUE(screen.Title_EDT->hasFocus());
        EXPECT_EQ(screen.Save_BTN->text(), u"ذخیره F3"_s);
        EXPECT_EQ(screen.EXit_BTN->text(), u"خروج Esc"_s);
        EXPECT_FALSE(screen.Progress_PB->isVisible());
        EXPECT_FALSE(screen.Progress_LBL->isVisible());
        EXPECT_FALSE(screen.Cancel_BTN->isVisible());
        const auto caption = [&](const QString &input) {
            return Keys::find<QLabel>(&screen, input + u"_Caption"_s)->text();
        };
        EXPECT_EQ(caption("Title_EDT"), u"  &عنوان :"_s);
        EXPECT_EQ(caption("Date1_EDT"), u"  از &تاریخ :"_s);
        EXPECT_EQ(caption("StartDay_CMB"), u"  روز &شروع :"_s);
        EXPECT_EQ(caption("Comment_EDT"), u"  ش&رح :"_s);
        EXPECT_EQ(caption("WeekEnd_CMB"), u"  روز تعط&یل هفته :"_s);
        EXPECT_EQ(caption("Date2_EDT"), u"  تا ت&اریخ :"_s);
        Keys::picture(&screen, "calender_generator");
        // Title, from, start day, comment, week end, to.
        for (QWidget *next :
             std::initializer_list<QWidget *>{screen.Date1_EDT, screen.StartDay_CMB, screen.Comment_EDT,
                                              screen.WeekEnd_CMB, screen.Date2_EDT}) {
            Keys::press(&screen, Qt::Key_Return);
            EXPECT_TRUE(next->hasFocus()) << next->objectName().toStdString();
        }
    });
}

TEST_F(CalenderGenerator, ValidatesInItsOrder)
{
    day("1399/05/10");
    generate([&](TCalender_Set_FRM &screen) {
        expectRefused(screen, {u"MsgRequiredField(عنوان)"_s}, screen.Title_EDT);
        Keys::type(screen.Title_EDT, "refused");
        Keys::retype(screen.Date1_EDT, "1399/13/01");
        expectRefused(screen, {"ShowSmartMessage:10()"}, screen.Date1_EDT);
        EXPECT_EQ(messages.last().control, screen.Date1_EDT);
        EXPECT_EQ(screen.Date1_EDT->text(), "1399/13/01"); // stays as typed
        Keys::retype(screen.Date1_EDT, "1399/05/11");
        Keys::retype(screen.Date2_EDT, "1400/12/30"); // 1400 is no leap year
        expectRefused(screen, {"ShowSmartMessage:10()"}, screen.Date2_EDT);
        // A stored day in the range comes before the order of the dates and their distance.
        Keys::retype(screen.Date1_EDT, "1399/05/10");
        Keys::retype(screen.Date2_EDT, "1499/05/10");
        expectRefused(screen, {"ShowSmartMessage:10060()"}, screen.Date1_EDT);
        EXPECT_EQ(messages.last().control, screen.Date1_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        Keys::retype(screen.Date2_EDT, "1399/05/09");
        expectRefused(screen, {"ShowSmartMessage:10061()"}, screen.Date2_EDT);
        EXPECT_EQ(messages.last().control, screen.Date2_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        Keys::retype(screen.Date1_EDT, "1400/12/29");
        Keys::retype(screen.Date2_EDT, "1402/01/01");
        messages.take();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(messages.last().operation, "ShowSmartMessage");
        EXPECT_EQ(messages.last().words.value(0), u"بازه انتخاب تاریخ نباید بیش از یک سال باشد"_s);
        EXPECT_EQ(messages.last().icon, miWarning);
        EXPECT_TRUE(screen.Date2_EDT->hasFocus());
        leave(screen);
    });
    EXPECT_EQ(count(), 1);
}

TEST_F(CalenderGenerator, AnEmptyDateIsNotValid)
{
    generate([&](TCalender_Set_FRM &screen) {
        Keys::type(screen.Title_EDT, "refused");
        Keys::retype(screen.Date1_EDT, "");
        expectRefused(screen, {"ShowSmartMessage:10()"}, screen.Date1_EDT);
        Keys::retype(screen.Date1_EDT, "1399/01/01");
        Keys::retype(screen.Date2_EDT, "");
        expectRefused(screen, {"ShowSmartMessage:10()"}, screen.Date2_EDT);
        leave(screen);
    });
}

TEST_F(CalenderGenerator, GeneratesTheFirstWeekOf1399)
{
    const int result = generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1399/1/1", u"۱۳۹۹/۰۱/۰۷"_s, 0); // a Friday, taken for a Saturday
        Keys::type(screen.Comment_EDT, "c");
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(messages.take().last(), u"MSGCompeletedSuccessfully(ذخيره سازي |7 روز)"_s);
    EXPECT_EQ(stored(),
              u"1399/01/01|0|3|عيد نوروز\n1399/01/02|1|3|عيد نوروز\n1399/01/03|2|3|عيد نوروز\n"
              u"1399/01/04|3|3|عيد نوروز\n1399/01/05|4|1|روز\n1399/01/06|5|1|روز\n1399/01/07|6|2|روز"_s);
    EXPECT_EQ(db.text("select count(*) from Calender where Comment='c'"), "7");
}

TEST_F(CalenderGenerator, GeneratesAYearAndAPartOfAMonthAndTwoYears)
{
    const struct {
        const char *from;
        const char *to;
        int days;
        bool asked;
    } cases[] = {{"1404/01/01", "1404/12/29", 365, false},
                 {"1402/05/10", "1402/05/20", 11, false},
                 {"1400/03/01", "1401/03/31", 62, true},
                 {"1399/01/01", "1400/12/29", 2 * 365, true}};
    for (const auto &row : cases) {
        db.run("delete from Calender");
        generate([&](TCalender_Set_FRM &screen) {
            fill(screen, row.from, row.to);
            if (row.asked)
                messages.answer({Yes});
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(count(), row.days) << row.from;
        EXPECT_EQ(db.text("select min(Date) from Calender"), row.from);
        EXPECT_EQ(db.text("select max(Date) from Calender"), row.to);
        EXPECT_EQ(db.text("select count(distinct Date) from Calender").toInt(), row.days);
    }
}

TEST_F(CalenderGenerator, ARangeAcrossTheEndOfAYearMayGenerateNothingAndThatIsNoSuccess)
{
    for (const auto &[from, to] : {std::pair("1399/10/01", "1400/03/01"), {"1399/05/20", "1400/05/10"}}) {
        const int result = generate([&](TCalender_Set_FRM &screen) {
            fill(screen, from, to);
            messages.take();
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_TRUE(screen.isVisible());
            EXPECT_FALSE(screen.IsSaved());
            EXPECT_TRUE(screen.Date2_EDT->hasFocus());
            EXPECT_EQ(messages.take().size(), 1);
            EXPECT_EQ(messages.last().operation, "ShowSmartMessage");
            EXPECT_EQ(messages.last().icon, miWarning);
            EXPECT_TRUE(messages.last().text.contains(u"1399"_s)) << "where to part the range";
            leave(screen);
        });
        EXPECT_EQ(result, QDialog::Rejected);
    }
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
    EXPECT_EQ(db.text("select count(*) from CodeLock_TBL"), "0");
}

TEST_F(CalenderGenerator, ARangeThatWasStoredAndStaysOpenIsRefusedUntilItIsAnotherOne)
{
    const int result = generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1399/02/01", "1399/02/03");
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_TRUE(screen.IsSaved());
        messages.take();
        for (int again = 0; again < 2; ++again) {
            Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
            EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10060()"));
            EXPECT_TRUE(screen.Date1_EDT->hasFocus());
            EXPECT_EQ(count(), 3);
        }
        Keys::retype(screen.Date1_EDT, "1399/02/04");
        Keys::retype(screen.Date2_EDT, u"۱۳۹۹۰۲۰۵"_s);
        screen.StartDay_CMB->setCurrentIndex(5);
        Keys::press(&screen, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(count(), 5);
        EXPECT_TRUE(screen.Title_EDT->IsEmpty()) << "the next range starts from the beginning";
        EXPECT_EQ(screen.Date1_EDT->GetText(), NowDate().left(4) + "/01/01");
        EXPECT_EQ(screen.StartDay_CMB->currentIndex(), 0);
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(db.rows("select Date, Day, Type from Calender where ID>3 order by ID"),
              "1399/02/04|5|1\n1399/02/05|6|2");
}

TEST_F(CalenderGenerator, OneStoredDayRefusesTheWholeRange)
{
    day("1399/01/31");
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1399/01/01", "1399/01/31", -1, 6, "refused");
        expectRefused(screen, {"ShowSmartMessage:10060()"}, screen.Date1_EDT);
        Keys::retype(screen.Date2_EDT, "1399/01/30");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 31);
}

TEST_F(CalenderGenerator, LongTitlesAreCutToTheirColumn)
{
    for (const int length : {31, 50}) {
        db.run("delete from Calender");
        generate([&](TCalender_Set_FRM &screen) {
            fill(screen, "1402/05/10", "1402/05/10", -1, 6, QString(length, u'ع'));
            EXPECT_EQ(screen.Title_EDT->GetText().size(), length);
            messages.answer({Yes});
            Keys::press(&screen, Qt::Key_F3);
        });
        EXPECT_EQ(db.text("select Title from Calender"), QString(30, u'ع'));
    }
}

TEST_F(CalenderGenerator, AHintTellsTheRealWeekdayWhileAnotherOneIsChosen)
{
    generate([&](TCalender_Set_FRM &screen) {
        Keys::retype(screen.Date1_EDT, "1399/01/01"); // a Friday
        EXPECT_TRUE(screen.StartDayHint_LBL->text().contains(u"جمعه"_s));
        Keys::picture(&screen, "calender_generator_hint");
        screen.StartDay_CMB->setFocus();
        Keys::press(&screen, Qt::Key_End);
        EXPECT_EQ(screen.StartDay_CMB->currentIndex(), 6);
        EXPECT_EQ(screen.StartDayHint_LBL->text(), "");
        Keys::retype(screen.Date1_EDT, "1399/01/02");
        EXPECT_TRUE(screen.StartDayHint_LBL->text().contains(u"شنبه"_s));
        EXPECT_EQ(screen.StartDay_CMB->currentIndex(), 6); // the user's choice is not touched
        Keys::retype(screen.Date1_EDT, "1399/13/01");
        EXPECT_EQ(screen.StartDayHint_LBL->text(), "");
        leave(screen);
    });
}

TEST_F(CalenderGenerator, ADatabaseErrorOfTheRangeCheckIsToldAndNothingIsLost)
{
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        db.failStatement(1, TFault::Locked);
        Keys::press(&screen, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Title_EDT->GetText(), u"روز"_s);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 31);
}

TEST_F(CalenderGenerator, EscStopsTheGenerationAtThatDay)
{
    const int result = generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/01/01", "1402/12/29");
        bool shown = false;
        QTimer::singleShot(0, &screen, [&] {
            shown = screen.Progress_PB->isVisible() && screen.Cancel_BTN->isVisible() &&
                    !screen.Save_BTN->isEnabled() && !screen.EXit_BTN->isEnabled();
            EXPECT_TRUE(screen.Cancel_BTN->hasFocus());
            EXPECT_EQ(screen.Progress_PB->maximum(), 365);
            const int reached = screen.Progress_PB->value();
            EXPECT_GT(reached, 0);
            const QString last = db.text(u"select Date from Calender where ID=%1"_s.arg(reached));
            EXPECT_EQ(screen.Progress_LBL->text(), u"%1 روز از 365 روز، تا %2"_s.arg(reached).arg(last));
            Keys::picture(&screen, "calender_generating");
            Keys::press(&screen, Qt::Key_Escape);
        });
        QTest::sendKeyEvent(QTest::Click, screen.focusWidget(), Qt::Key_F3, QString(), Qt::NoModifier);
        EXPECT_TRUE(shown);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_FALSE(screen.Progress_PB->isVisible());
        EXPECT_FALSE(screen.Progress_LBL->isVisible());
        EXPECT_TRUE(screen.EXit_BTN->isEnabled());
        EXPECT_TRUE(screen.Date2_EDT->hasFocus()); // where the user was
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_EQ(messages.last().operation, "ShowSmartMessage");
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible()); // no question: what was to be kept is stored
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_GT(count(), 0);
    EXPECT_LT(count(), 365);
}

TEST_F(CalenderGenerator, TheStopButtonStopsToo)
{
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/01/01", "1402/12/29");
        QTimer::singleShot(0, &screen, [&] { screen.Cancel_BTN->click(); });
        QTest::sendKeyEvent(QTest::Click, screen.focusWidget(), Qt::Key_F3, QString(), Qt::NoModifier);
        EXPECT_LT(count(), 365);
        EXPECT_TRUE(screen.isVisible());
    });
}

TEST_F(CalenderGenerator, AYearFromTheDayThatTheHintNamesHasItsRealWeekdays)
{
    for (const int year : {1403, 1404}) {
        db.run("delete from Calender");
        const QString first = u"%1/01/01"_s.arg(year);
        generate([&](TCalender_Set_FRM &screen) {
            fill(screen, first, u"%1/12/%2"_s.arg(year).arg(year == 1403 ? 30 : 29), 3);
            const QString hint = screen.StartDayHint_LBL->text();
            for (int day = 0; day < 7; ++day)
                if (hint.contains(u" %1 "_s.arg(CalenderDays::weekdays().at(day))))
                    screen.StartDay_CMB->setCurrentIndex(day);
            EXPECT_EQ(screen.StartDayHint_LBL->text(), "") << hint.toStdString();
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible()) << year;
        });
        const QStringList days = db.rows("select Date, Day from Calender order by ID").split(u'\n');
        ASSERT_EQ(days.size(), year == 1403 ? 366 : 365);
        QDate real(year == 1403 ? 2024 : 2025, 3, year == 1403 ? 20 : 21);
        for (const QString &day : days) {
            EXPECT_EQ(day.section(u'|', 0, 0), TPersianDate::fromGregorian(real).toText());
            // Monday is 1 in the one count, Saturday 0 in the other.
            EXPECT_EQ(day.section(u'|', 1).toInt(), (real.dayOfWeek() + 1) % 7) << day.toStdString();
            real = real.addDays(1);
        }
    }
}

TEST_F(CalenderGenerator, ADatabaseHeldByAnotherProcessIsToldAfterTheWait)
{
    if (TestServer::available())
        GTEST_SKIP()
            << "only a file is held as a whole; a server's locks are among the tests of the workstations";
    TConnection other;
    TestDatabase::open(other, db.path());
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        other.BeginTrans();
        other.execute(TStatement("delete from Calender"));
        db.connection().setPatience(300);
        QElapsedTimer watch;
        watch.start();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_GE(watch.elapsed(), 250);
        EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s));
        ASSERT_TRUE(db.connection().lastError() && db.connection().lastError()->fault() == TFault::Locked);
        EXPECT_TRUE(messages.last().text.endsWith(db.connection().lastError()->userText()));
        EXPECT_FALSE(screen.Progress_PB->isVisible());
        EXPECT_EQ(screen.Title_EDT->GetText(), u"روز"_s);
        other.RollbackTrans();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(count(), 31);
}

TEST_F(CalenderGenerator, ADatabaseHeldForAWhileIsWaitedFor)
{
    TConnection other;
    TestDatabase::open(other, db.path());
    generate([&](TCalender_Set_FRM &screen) {
        fill(screen, "1402/05/01", "1402/05/31");
        other.BeginTrans();
        other.execute(TStatement("delete from Calender"));
        std::thread later([&] {
            QThread::msleep(700);
            other.RollbackTrans(); // this thread's alone by now: the screen waits
        });
        Keys::press(&screen, Qt::Key_F3);
        later.join();
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي |31 روز)"_s));
    EXPECT_EQ(count(), 31);
}

TEST_F(CalenderGenerator, AChangedTitleIsAskedAboutWhenClosing)
{
    generate([&](TCalender_Set_FRM &screen) {
        EXPECT_TRUE(screen.IsSaved());
        Keys::type(screen.Title_EDT, "x");
        EXPECT_FALSE(screen.IsSaved());
        messages.answer({Cancel, No});
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Title_EDT->GetText(), "x");
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), (QStringList{"MsgNotSaved()", "MsgNotSaved()"}));
}
