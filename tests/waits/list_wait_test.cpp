#include "waits/Waits.h"

#include <QScrollBar>

namespace {

// The list of employees, some pages long.
class ListWait : public Waits {
protected:
    static int work(TStaffList_FRM &list, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return list.exec(); },
                              [&](QWidget *shown) {
                                  Keys::waitFor([&] { return shown->isActiveWindow(); });
                                  work();
                              });
    }
    static QString cell(TStaffList_FRM &list, int row)
    {
        const auto &columns = list.Grid()->Model()->columns();
        for (int i = 0; i < columns.size(); ++i) {
            if (columns[i].field == "Code")
                return list.Grid()->Model()->index(row, i).data().toString();
        }
        return {};
    }
    static bool comes(TStaffList_FRM &list, int row)
    {
        return Keys::waitFor([&] { return cell(list, row) == QString::number(row + 1); });
    }
    static void scrollTo(TStaffList_FRM &list, int row)
    {
        list.Grid()->verticalScrollBar()->setValue(row);
        list.Grid()->viewport()->repaint();
    }
    int told() { return int(messages.take().size()); }
};

TEST_F(ListWait, RowsThatHaveNotComeAreEmptyAndFillIn)
{
    employees(1000);
    goBehindLine();
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        EXPECT_EQ(cell(list, 999), "1000"); // the page that it opens with
        play->setDelay(150);
        TurnWatch watch;
        scrollTo(list, 300);
        EXPECT_EQ(cell(list, 300), "");
        EXPECT_TRUE(comes(list, 300));
        EXPECT_EQ(told(), 0);
        scrollTo(list, 0);
        EXPECT_TRUE(comes(list, 0));
        EXPECT_LE(watch.longest(), 50);
    });
}

TEST_F(ListWait, ALongListOverASlowLineNeverStandsStill)
{
    employees(1000);
    goBehindLine();
    play->setDelay(80);
    TurnWatch watch;
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        EXPECT_LE(watch.longest(), 50);
        for (const Qt::Key key :
             {Qt::Key_Home, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Up}) {
            Keys::press(&list, key, key == Qt::Key_Home ? Qt::ControlModifier : Qt::NoModifier);
            EXPECT_TRUE(comes(list, list.ListQuery()->position()));
            EXPECT_LE(watch.longest(), 50);
        }
    });
}

TEST_F(ListWait, ALineThatBreaksWhileRowsArePaintedIsToldOnceAndAskedAgainByAKeyOnly)
{
    employees(1000);
    goBehindLine();
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        told();
        const int connects = play->connects();
        play->breakLine();
        scrollTo(list, 300);
        EXPECT_TRUE(Keys::waitFor([&] { return !messages.all().isEmpty(); }));
        const int requests = play->requests();
        for (int row = 0; row < 900; row += 50) {
            scrollTo(list, row);
            QApplication::processEvents();
        }
        EXPECT_FALSE(Keys::waitFor([&] { return play->requests() != requests; }, 200));
        EXPECT_EQ(told(), 1);
        EXPECT_EQ(play->connects(), connects);
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_TRUE(comes(list, 0));
        EXPECT_EQ(play->connects(), connects + 1);
        EXPECT_EQ(told(), 0);
    });
}

TEST_F(ListWait, ASilentLineWhileRowsArePaintedLeavesTheWindowAliveAndEscGetsOutOfWhatComesAfter)
{
    employees(1000);
    goBehindLine();
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        told();
        TurnWatch watch;
        play->goSilentAt(1);
        scrollTo(list, 300);
        EXPECT_TRUE(Keys::waitFor([&] { return play->isSilent(); }));
        for (int row = 0; row < 900; row += 50) {
            scrollTo(list, row);
            QApplication::processEvents();
        }
        EXPECT_LE(watch.longest(), 50);
        EXPECT_EQ(told(), 0);
        whenPanel([&] { pressInFront(Qt::Key_Escape); });
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_F5);
        EXPECT_LE(watch.longest(), 50);
        EXPECT_GE(told(), 1);
        play->speak();
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_TRUE(comes(list, 0));
        Keys::runModal(
            [&] {
                Keys::press(&list, Qt::Key_F5);
                return 0;
            },
            [&](QWidget *screen) { EXPECT_TRUE(qobject_cast<TStaffGet_FRM *>(screen)); });
    });
}

TEST_F(ListWait, AListThatIsClosedWhileItsRowsAreReadGoesInOrder)
{
    employees(1000);
    goBehindLine();
    {
        TStaffList_FRM list(fmBrowse, {});
        work(list, [&] {
            play->goSilentAt(1);
            scrollTo(list, 300);
            EXPECT_TRUE(Keys::waitFor([&] { return play->isSilent(); }));
        });
    }
    play->speak();
    QTest::qWait(50);
    EXPECT_EQ(stored("select count(*) from Staff"), "1000");
}

TEST_F(ListWait, EscGetsOutOfAListThatOpensAndOfAnEditorThatOpens)
{
    employees(300);
    goBehindLine();
    QWidget host; // the window that the list is opened from, which gets the key
    host.show();
    ASSERT_TRUE(Keys::waitFor([&] { return QApplication::activeWindow() == &host; }));
    TurnWatch watch;
    TStaffList_FRM list(fmBrowse, {});
    play->setHearsCancel(true);
    play->goSilentAt(1);
    QTimer impatient;
    QObject::connect(&impatient, &QTimer::timeout, &impatient, [] {
        if (AnswerWait().isWaiting() && panel() && QApplication::activeWindow() &&
            QApplication::activeWindow()->windowHandle())
            pressInFront(Qt::Key_Escape);
    });
    impatient.start(20);
    work(list, [&] {
        impatient.stop();
        EXPECT_GE(told(), 1);
        EXPECT_TRUE(list.isVisible());
        play->speak();
    });
    TStaffList_FRM again(fmBrowse, {});
    work(again, [&] {
        EXPECT_EQ(cell(again, 299), "300");
        again.Grid()->setFocus();
        play->goSilentAt(2);
        impatient.start(20);
        Keys::press(&again, Qt::Key_F5);
        impatient.stop();
        play->speak();
        EXPECT_GE(told(), 1);
        EXPECT_EQ(cell(again, 299), "300");
        EXPECT_LE(watch.longest(), 50);
    });
}

TEST_F(ListWait, AnEditorOpensOverASlowLineInAWindowThatIsAlive)
{
    employees(300);
    goBehindLine();
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        play->setDelay(80);
        TurnWatch watch;
        Keys::runModal(
            [&] {
                list.Grid()->setFocus();
                Keys::press(&list, Qt::Key_F5);
                return 0;
            },
            [&](QWidget *screen) {
                EXPECT_TRUE(qobject_cast<TStaffGet_FRM *>(screen));
                EXPECT_LE(watch.longest(), 50);
                play->setDelay(0);
            });
    });
}

TEST_F(ListWait, WhatIsCopiedIsReadFirst)
{
    employees(1000);
    goBehindLine();
    TStaffList_FRM list(fmBrowse, {});
    work(list, [&] {
        EXPECT_TRUE(list.Grid()->NameOfRow(10, {"Code"}).contains(u"11"_s));
        EXPECT_EQ(cell(list, 10), "11");
    });
}

} // namespace
