#include "host/forms/FakeScreens.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/database/ListPlace.h"

using namespace Qt::Literals::StringLiterals;

// Where a list stands after its rows changed, and what its questions call the row.

using enum TAnswer;

class ListPlaces : public Things {
protected:
    ListPlaces() : list(&db.connection(), "List_QUR") { list.setKeyField("Code"); }
    void add(int code, const QString &title)
    {
        db.connection().execute(TStatement::format(
            "insert into Thing(Code, Title, Cost, Day) values(%d, %s, 1000, '1404/01/05')", {code, title}));
    }
    int open(TThingList_FRM &screen, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return screen.exec(); },
                              [&](QWidget *) {
                                  Keys::waitFor([&] { return screen.isActiveWindow(); });
                                  work();
                              });
    }
    void goTo(int code) { list.moveTo(list.rowOfKey(code)); }
    int current() { return list.isEmpty() ? 0 : list.asInteger("Code"); }
    static void search(TThingList_FRM &screen, const QString &text, int rows)
    {
        Keys::type(screen.General_Search->Search_EDT(), text);
        EXPECT_TRUE(Keys::waitFor([&] { return screen.ListQuery()->recordCount() == rows; }));
    }
    TQuery list;
};

TEST_F(ListPlaces, AfterADeleteTheNextRowIsCurrentAndAtTheEndTheOneBefore)
{
    for (int code = 1; code <= 5; ++code)
        add(code, u"چیز %1"_s.arg(code));
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        goTo(2);
        messages.answer({Yes, Yes, Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(current(), 3);
        EXPECT_EQ(screen.Grid()->currentIndex().row(), 1);
        goTo(5);
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(current(), 4);
        db.run("delete from Thing where Code=3"); // by another workstation
        goTo(1);
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(current(), 4) << "by key, not by place";
    });
}

TEST_F(ListPlaces, InASortedListTheNextRowOfItsOrderIsCurrentAfterADelete)
{
    add(1, "c");
    add(2, "a");
    add(3, "b");
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        list.setOrder("Title");
        goTo(2);
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(current(), 3);
    });
}

TEST_F(ListPlaces, TheQuestionKeepsItsSentenceAndNamesTheRecord)
{
    add(7, u"حقوق\nسال %1"_s);
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        messages.answer({No});
        Keys::press(&screen, Qt::Key_F7);
    });
    EXPECT_EQ(messages.last().text,
              u"آیا از حذف این سطر اطمینان دارید؟\nکد: \u20687\u2069 - عنوان: \u2068حقوق سال %1\u2069"_s);
    EXPECT_EQ(titles(), u"7|حقوق\nسال %1"_s);
}

TEST_F(ListPlaces, ARowThatIsGoneIsToldAndLeavesTheListInsteadOfBeingPicked)
{
    for (int code = 1; code <= 3; ++code)
        add(code, "x");
    TThingList_FRM screen(fmSelect, &list);
    const int result = open(screen, [&] {
        goTo(2);
        db.run("delete from Thing where Code=2");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
        EXPECT_EQ(list.recordCount(), 2);
        EXPECT_EQ(current(), 3);
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(screen.SelectedCode, 3);
}

TEST_F(ListPlaces, AMissingAnswerAboutARowPicksNothing)
{
    add(1, "x");
    TThingList_FRM screen(fmSelect, &list);
    open(screen, [&] {
        db.failStatement(1, TFault::ConnectionLost);
        Keys::press(&screen, Qt::Key_Return);
        db.failStatement(0);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take(), QStringList{"MsgDatabaseError()"});
    });
}

TEST_F(ListPlaces, ARowThatIsGoneLeavesTheListWhenItIsToBeEditedOrDeleted)
{
    for (int code = 1; code <= 4; ++code)
        add(code, "x");
    TThingList_FRM screen(fmBrowse, &list);
    open(screen, [&] {
        goTo(2);
        db.run("delete from Thing where Code=2");
        Keys::press(&screen, Qt::Key_F5);
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
        EXPECT_EQ(list.recordCount(), 3);
        EXPECT_EQ(current(), 3);
        db.run("delete from Thing where Code=3");
        Keys::press(&screen, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"}) << "nothing is asked";
        EXPECT_EQ(list.recordCount(), 2);
        EXPECT_EQ(current(), 4);
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
    });
}

TEST_F(ListPlaces, ANewRecordThatTheSearchLeavesOutIsTold)
{
    add(1, "red");
    add(2, "blue"); // the search is in force once it is gone
    TThingList_FRM screen(fmBrowse, &list);
    const auto enter = [&](const QString &title) {
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F4);
                return 0;
            },
            [&](QWidget *editor) {
                Keys::retype(Keys::child(editor, "Title_EDT"), title);
                Keys::press(editor, Qt::Key_F3);
            });
        QStringList told;
        for (const QString &one : messages.take())
            if (one.startsWith("MsgSavedOutOfSight"))
                told << one;
        return told;
    };
    open(screen, [&] {
        search(screen, "red", 1);
        EXPECT_EQ(enter("green"), QStringList{"MsgSavedOutOfSight(3)"});
        EXPECT_EQ(
            messages.last().text,
            u"رکورد 3 ذخیره شد، ولی جستجو یا گروهی که اکنون برگزیده است آن را نشان نمی دهد. برای دیدن آن جستجو را پاک کنید یا گروه دیگری برگزینید."_s);
        EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
        EXPECT_EQ(enter("dark red"), QStringList()) << "it is shown";
        EXPECT_EQ(current(), 4);
    });
}

TEST_F(ListPlaces, DetailRowsStayByTheirKeysToo)
{
    db.run("create table Part_TBL(ID int, Name nvarchar(10))");
    for (int id = 1; id <= 4; ++id)
        db.run(u"insert into Part_TBL(ID, Name) values(%1, 'x')"_s.arg(id));
    TQuery rows(&db.connection(), "Rows_QUR");
    rows.setStatement("select ID, Name from Part_TBL order by ID");
    TDetail_Rows_Frame frame(nullptr, "Rows_GRD", {u"جدید"_s, {}, {}}, {"Add_BTN"}, false);
    frame.SetColumns(&rows, {{"ID", u"کد"_s}, {"Name", u"نام"_s}});
    rows.open();
    rows.locate("ID", 3);
    db.run("delete from Part_TBL where ID in (1, 3)");
    frame.Reread("ID");
    EXPECT_EQ(rows.asInteger("ID"), 4) << "the third place is somebody else's";
    db.run("delete from Part_TBL where ID = 4");
    frame.Reread("ID");
    EXPECT_EQ(rows.asInteger("ID"), 2);
    db.run("delete from Part_TBL");
    frame.Reread("ID");
    EXPECT_TRUE(rows.isEmpty());
    EXPECT_EQ(frame.Grid()->NameOfRow(0), QString());
}
