#include "calender/CalenderScreens.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class CalenderDelete : public CalenderScreens {
protected:
    void week()
    {
        for (int i = 1; i <= 7; ++i)
            day(u"1402/05/0%1"_s.arg(i), i - 1, 1, i == 4 ? u"عاشورا"_s : u"روز"_s);
    }
    static QString current(TCalender_List_FRM &list) { return list.ListQuery()->asString("Date"); }
};

TEST_F(CalenderDelete, OneDayIsNamedAndTheNextOneIsCurrent)
{
    week();
    TCalender_List_FRM list(fmBrowse, {});
    open(list, [&] {
        list.Grid()->setFocus();
        list.ListQuery()->moveTo(3);
        messages.answer({Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.last().text,
                  u"آیا از حذف این سطر اطمینان دارید؟\nتاریخ: \u20681402/05/04\u2069 - عنوان: "
                  u"\u2068عاشورا\u2069"_s);
        EXPECT_EQ(current(list), "1402/05/05");
    });
    EXPECT_EQ(count(), 6);
}

TEST_F(CalenderDelete, OfSeveralDaysTheNumberIsToldAndTheDayBehindThemIsCurrent)
{
    week();
    TCalender_List_FRM list(fmBrowse, {});
    open(list, [&] {
        list.Grid()->setFocus();
        list.ListQuery()->moveTo(4);
        Keys::press(&list, Qt::Key_Up, Qt::ShiftModifier);
        Keys::press(&list, Qt::Key_Up, Qt::ShiftModifier);
        messages.answer({Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_TRUE(messages.last().text.startsWith(u"آیا از حذف این سطر اطمینان دارید؟\n3 سطر: تاریخ: "_s))
            << messages.last().text.toStdString();
        EXPECT_EQ(current(list), "1402/05/06");
        EXPECT_EQ(messages.take(), QStringList{"MsgDeleteRow()"});
    });
    EXPECT_EQ(count(), 4);
}

TEST_F(CalenderDelete, ALongTitleIsToldBeforeADayIsSaved)
{
    week();
    TCalender_List_FRM list(fmBrowse, {});
    open(list, [&] {
        list.Grid()->setFocus();
        list.ListQuery()->moveTo(3);
        Keys::runModal(
            [&] {
                Keys::press(&list, Qt::Key_F5);
                return 0;
            },
            [&](QWidget *editor) {
                Keys::retype(Keys::child(editor, "Title_EDT"), QString(40, QChar(u'ت')));
                messages.answer({No});
                Keys::press(editor, Qt::Key_F3);
                EXPECT_EQ(messages.take(), QStringList{u"MsgTextsCut(عنوان)"_s});
                messages.answer({No});
                Keys::press(editor, Qt::Key_Escape);
            });
    });
    EXPECT_EQ(db.text("select count(*) from Calender where Title=N'عاشورا'"), "1");
}
