#include "waits/Waits.h"

#include "support/TestProxy.h"
#include "support/TestServer.h"

#include <QScrollBar>

namespace {

// The same on a server, through a line that goes silent.
class ServerWait : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        IniOptions.Com_Index = 1;
        database = std::make_unique<TestServer::Database>();
        proxy = std::make_unique<TestProxy>(database->connectionString());
        connection.openOdbc(proxy->connectionString());
        DM.ADOConnection1 = &connection;
        SeatUser(TUserInfo{1, "clerk", u"مریم کاتب"_s, true, true});
        connection.execute(TStatement("insert into StaffGroup(Code,Name) values(1,N'اداری')"));
        connection.execute(TStatement(
            "with D(N) as (select 0 union all select 1 union all select 2 union all select 3 union all select 4 union all "
            "select 5 union all select 6 union all select 7 union all select 8 union all select 9) "
            "insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber,LeaveDate) "
            "select 1+a.N+10*b.N+100*c.N,1,N'علی',cast(1+a.N+10*b.N+100*c.N as nvarchar(20)),N'0',N'',N'',N'' "
            "from D a,D b,D c"));
        Staff_DM = new TStaff_DM(nullptr);
    }
    void TearDown() override
    {
        if (!proxy)
            return;
        proxy->setSilent(false);
        delete Staff_DM;
        Staff_DM = nullptr;
        DM.ADOConnection1 = nullptr;
        connection.close();
        proxy.reset();
        database.reset();
        UserInfo = {};
    }
    static void inModal(QDialog &screen, const std::function<void()> &work)
    {
        Keys::runModal([&] { return screen.exec(); },
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
    /// Presses Esc whenever the panel is there, while this lives.
    struct Impatience {
        Impatience()
        {
            QObject::connect(&timer, &QTimer::timeout, &timer, [] {
                if (AnswerWait().isWaiting() && Waits::panel())
                    Waits::pressInFront(Qt::Key_Escape);
            });
            timer.start(20);
        }
        QTimer timer;
    };

    std::unique_ptr<TestServer::Database> database;
    std::unique_ptr<TestProxy> proxy;
    TConnection connection;
    ScriptedMessages messages;
    ScriptedRecovery recovery;
};

TEST_F(ServerWait, NoWindowStandsStillWhileTheLineIsSlowOrSilent)
{
    qint64 longest = 0;
    TurnWatch watch;
    const auto measured = [&](const char *what) {
        const qint64 now = watch.longest();
        std::printf("%s: %lld ms without a turn\n", what, static_cast<long long>(now));
        longest = std::max(longest, now);
    };
    proxy->setDelay(40);
    TStaffList_FRM list(fmBrowse, {});
    inModal(list, [&] {
        measured("a list opened");
        EXPECT_EQ(cell(list, 999), "1000");
        list.Grid()->setFocus();
        Keys::press(&list, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_TRUE(comes(list, 0));
        measured("scrolled");
        Keys::press(&list, Qt::Key_End, Qt::ControlModifier);
        messages.take();
        proxy->setSilent(true);
        list.Grid()->verticalScrollBar()->setValue(400);
        for (int i = 0; i < 20; ++i) {
            list.Grid()->viewport()->repaint();
            QTest::qWait(20);
        }
        measured("painted over a silent line");
        EXPECT_TRUE(messages.take().isEmpty());
        {
            const Impatience impatience;
            Keys::press(&list, Qt::Key_F5);
        }
        measured("an editor given up");
        EXPECT_EQ(messages.take().size(), 1);
        proxy->setSilent(false);
        Keys::runModal(
            [&] {
                Keys::press(&list, Qt::Key_F5);
                return 0;
            },
            [&](QWidget *screen) {
                auto *editor = qobject_cast<TStaffGet_FRM *>(screen);
                ASSERT_TRUE(editor);
                measured("an editor opened");
                Keys::retype(editor->Name_EDT, u"رضا"_s);
                proxy->setSilent(true);
                {
                    const Impatience impatience;
                    Keys::press(editor, Qt::Key_F3);
                }
                measured("a save given up");
                EXPECT_TRUE(editor->isVisible());
                EXPECT_EQ(editor->Name_EDT->text(), u"رضا"_s);
                proxy->setSilent(false);
                messages.take();
                Keys::press(editor, Qt::Key_F3);
                measured("a save");
            });
    });
    EXPECT_LE(longest, 50);
    EXPECT_EQ(connection.scalar(TStatement("select count(*) from Staff where Name=N'رضا'")).toInt(), 1);
    EXPECT_EQ(connection.scalar(TStatement("select count(*) from Staff")).toInt(), 1000);
}

TEST_F(ServerWait, TheServerEndsAStatementThatIsGivenUpAndTheLineStays)
{
    TConnection busy;
    busy.openOdbc(database->connectionString());
    const QString session = busy.scalar(TStatement("select @@spid")).toString();
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(Keys::waitFor([&] { return window.isActiveWindow(); }));
    QElapsedTimer timer;
    timer.start();
    {
        const Impatience impatience;
        EXPECT_THROW(busy.execute(TStatement("waitfor delay '00:00:20'")), TDatabaseError);
    }
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_EQ(busy.scalar(TStatement("select @@spid")).toString(), session);
}

} // namespace
