#include "calender/CalenderScreens.h"

#include <QLabel>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class CalenderDay : public CalenderScreens {
protected:
    /// Opens the day screen on a stored day, which is the list's current row, and works in it.
    int edit(const QString &date, const std::function<void(TCalender_Day_FRM &)> &work)
    {
        Calender_DM->Calender_Get();
        Calender_DM->List_QUR->open();
        EXPECT_TRUE(Calender_DM->List_QUR->locate("Date", date));
        TCalender_Day_FRM screen(cspCalender, Calender_DM->List_QUR->value("ID"), fmEdit, false);
        return Keys::runModal([&] { return screen.exec(); },
                              [&](QWidget *) {
                                  Keys::waitFor([&] { return screen.isActiveWindow(); });
                                  work(screen);
                              });
    }
    QString wholeDay()
    {
        return db.rows("select Date, Day, Type, Title, Comment from Calender order by Date");
    }
};

TEST_F(CalenderDay, ShowsTheDayAndItsTexts)
{
    day("1402/05/10", 3, 3, u"عاشورا"_s);
    day("1402/05/11", 4, 2);
    edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
        EXPECT_EQ(screen.Date_EDT->GetText(), "1402/05/10");
        EXPECT_EQ(screen.Day_LBL->text().trimmed(), u"سه شنبه"_s);
        EXPECT_EQ(screen.Title_EDT->GetText(), u"عاشورا"_s);
        EXPECT_EQ(screen.Comment_EDT->GetText(), "c");
        EXPECT_TRUE(screen.Holiday_RB->isChecked());
        EXPECT_FALSE(screen.WorkDay_RB->isChecked());
        EXPECT_EQ(screen.WorkDay_RB->text(), u"روز&کاری"_s);
        EXPECT_EQ(screen.WeekEnd_RB->text(), u"روز تع&طیل هفته"_s);
        EXPECT_EQ(screen.Holiday_RB->text(), u"تعطیل ر&سمی"_s);
        const auto caption = [&](const QString &input) {
            return Keys::find<QLabel>(&screen, input + u"_Caption"_s)->text();
        };
        EXPECT_EQ(caption("Date_EDT"), u"  تار&یخ :"_s);
        EXPECT_EQ(caption("Title_EDT"), u"  &عنوان :"_s);
        EXPECT_EQ(caption("Comment_EDT"), u"  &شرح :"_s);
        const auto labels = screen.findChildren<QLabel *>();
        const auto day = std::find_if(labels.begin(), labels.end(),
                                      [](const QLabel *label) { return label->text() == u"  روز :"_s; });
        ASSERT_NE(day, labels.end());
        EXPECT_EQ((*day)->geometry().center().y(), screen.Day_LBL->geometry().center().y())
            << "beside the day";
        EXPECT_EQ(screen.Save_BTN->text(), u"ذخیره F3"_s);
        EXPECT_EQ(screen.Title_EDT->MaxLength(), 50);
        EXPECT_EQ(screen.Comment_EDT->MaxLength(), 50);
        EXPECT_TRUE(screen.IsSaved());
        Keys::picture(&screen, "calender_day");
    });
    edit("1402/05/11", [&](TCalender_Day_FRM &screen) { EXPECT_TRUE(screen.WeekEnd_RB->isChecked()); });
}

TEST_F(CalenderDay, IsDashedBeforeItIsFilled)
{
    day("1402/05/10");
    TCalender_Day_FRM screen(cspCalender, 1, fmEdit, false);
    EXPECT_EQ(screen.Day_LBL->text(), "-------------");
}

TEST_F(CalenderDay, StoresTitleCommentAndTypeNeverTheDate)
{
    day("1402/05/10", 3, 1);
    for (const int type : {3, 2, 1}) {
        const int result = edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
            Keys::retype(screen.Date_EDT, "1402/05/20");
            Keys::retype(screen.Title_EDT, u"عاشورا"_s);
            Keys::retype(screen.Comment_EDT, u"تعطیل"_s);
            QRadioButton *choices[] = {screen.WorkDay_RB, screen.WeekEnd_RB, screen.Holiday_RB};
            choices[type - 1]->setFocus();
            Keys::press(&screen, Qt::Key_Space);
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(result, QDialog::Accepted);
        EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي )"_s));
        EXPECT_EQ(wholeDay(), u"1402/05/10|3|%1|عاشورا|تعطیل"_s.arg(type));
    }
}

TEST_F(CalenderDay, NeedsATitleAndADate)
{
    day("1402/05/10", 3, 1);
    edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Title_EDT, "");
        Keys::retype(screen.Date_EDT, "1402/15/20");
        messages.take();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(عنوان)"_s));
        EXPECT_TRUE(screen.Title_EDT->hasFocus());
        Keys::type(screen.Title_EDT, "t");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10()"));
        EXPECT_TRUE(screen.Date_EDT->hasFocus());
        EXPECT_TRUE(screen.isVisible());
        messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(wholeDay(), u"1402/05/10|3|1|روز|c"_s);
}

TEST_F(CalenderDay, ADayThatTheCalendarDoesNotHaveKeepsItsDateAndIsSaved)
{
    day("1402/12/30", 3, 1); // a generated one: the to-date's day holds in every year
    edit("1402/12/30", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Title_EDT, "t");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(messages.take(), QStringList(u"MSGCompeletedSuccessfully(ذخيره سازي )"_s));
    EXPECT_EQ(wholeDay(), "1402/12/30|3|1|t|c");
    edit("1402/12/30", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Date_EDT, "1402/12/31"); // another date that is none
        messages.take();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10()"));
        EXPECT_TRUE(screen.Date_EDT->hasFocus());
        messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
    });
}

TEST_F(CalenderDay, SavingAndStayingShowsWhatIsStored)
{
    day("1402/05/10", 3, 1);
    edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Date_EDT, "1402/05/20");
        Keys::retype(screen.Title_EDT, QString(40, u'ع'));
        screen.Holiday_RB->setChecked(true);
        messages.answer({Yes}); // cut to its column
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Date_EDT->GetText(), "1402/05/10");
        EXPECT_EQ(screen.Title_EDT->GetText(), QString(30, u'ع'));
        EXPECT_TRUE(screen.Holiday_RB->isChecked());
        EXPECT_TRUE(screen.IsSaved());
    });
}

TEST_F(CalenderDay, ADayDeletedMeanwhileIsToldAndNothingTypedIsLost)
{
    day("1402/05/10", 3, 1);
    edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Title_EDT, "new");
        db.run("delete from Calender");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Title_EDT->GetText(), "new");
        messages.answer({No});
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(count(), 0);
}

TEST_F(CalenderDay, AFaultAtEveryStatementOfASaveLosesNothing)
{
    day("1402/05/10", 3, 1);
    int fault = 0;
    edit("1402/05/10", [&](TCalender_Day_FRM &screen) {
        Keys::retype(screen.Title_EDT, "new");
        screen.Holiday_RB->setChecked(true);
        do {
            messages.take();
            db.failStatement(++fault, TFault::ConnectionLost);
            Keys::press(&screen, Qt::Key_F3);
            db.failStatement(0);
            if (screen.isVisible()) {
                EXPECT_EQ(messages.take().size(), 1) << fault;
                EXPECT_EQ(screen.Title_EDT->GetText(), "new");
                EXPECT_TRUE(screen.Holiday_RB->isChecked());
                EXPECT_EQ(wholeDay(), u"1402/05/10|3|1|روز|c"_s);
            }
        } while (screen.isVisible() && fault < 20);
    });
    EXPECT_GT(fault, 2); // reading and writing
    EXPECT_EQ(wholeDay(), "1402/05/10|3|3|new|c");
}

TEST_F(CalenderDay, ADayWithoutItsValuesOpensAsAWorkingDay)
{
    db.run("insert into Calender(Date,Day,Type) values('1399/01/05',9,7)");
    db.run("insert into Calender(Date) values('1399/01/06')");
    for (const char *date : {"1399/01/05", "1399/01/06"})
        edit(date, [&](TCalender_Day_FRM &screen) {
            EXPECT_EQ(screen.Day_LBL->text().trimmed(), "");
            EXPECT_TRUE(screen.WorkDay_RB->isChecked());
            EXPECT_TRUE(screen.IsSaved());
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(عنوان)"_s));
            Keys::type(screen.Title_EDT, u"ي'ی"_s);
            Keys::press(&screen, Qt::Key_F3);
            messages.take();
        });
    EXPECT_EQ(wholeDay(), u"1399/01/05|9|1|ي'ی|\n1399/01/06||1|ي'ی|"_s);
}

TEST_F(CalenderDay, TheTypeThatWasChosenLastIsStored)
{
    day("1399/01/05", 2, 2);
    edit("1399/01/05", [&](TCalender_Day_FRM &screen) {
        screen.Holiday_RB->click();
        EXPECT_FALSE(screen.WeekEnd_RB->isChecked());
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(db.text("select Type from Calender"), "3");
        screen.WorkDay_RB->click();
        screen.WeekEnd_RB->click();
        screen.WorkDay_RB->click();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(db.text("select Type from Calender"), "1");
        messages.take();
    });
}
