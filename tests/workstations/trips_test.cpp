#include "calcmethod/CalcMethodList_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "calender/Calender_DM_UNT.h"
#include "calender/Calender_List_UNT.h"
#include "calender/Calender_Set_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffList_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"
#include "support/TestUser.h"
#include "support/TurnWatch.h"
#include "tax/TaxGet_UNT.h"
#include "tax/TaxList_UNT.h"
#include "tax/Tax_DM_UNT.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <iomanip>
#include <iostream>

using namespace Qt::Literals::StringLiterals;

// What each thing that a user does costs on the line: trips, bytes, time. Printed as the table of the documents;
// KETEBIONPAP_TEST_DELAY=20,80 measures lines of these delays besides one without.

namespace {

struct TCost {
    int trips = 0;
    qint64 bytes = 0;
    qint64 ms = 0;
};

class ServerTrips : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        const QString place = TestServer::ownDatabase().connectionString();
        direct.openOdbc(place);
        fill();
        proxy = std::make_unique<TestProxy>(place);
        proxy->setDelay(GetParam());
        cost("log-in", [&] { connection.openOdbc(proxy->connectionString()); });
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        CalcMethod_DM = &methods.emplace(nullptr);
        Tax_DM = &taxes.emplace(nullptr);
        Staff_DM = &staff.emplace(nullptr);
        Calender_DM = &calender.emplace(nullptr);
        if (qEnvironmentVariableIsSet("KETEBIONPAP_TEST_TRACE"))
            connection.setStatementHook([](const TStatement &statement) {
                std::cout << "    " << statement.boundText().simplified().left(150).toStdString() << '\n';
            });
    }
    void TearDown() override
    {
        CalcMethod_DM = nullptr;
        Tax_DM = nullptr;
        Staff_DM = nullptr;
        Calender_DM = nullptr;
        methods.reset();
        taxes.reset();
        staff.reset();
        calender.reset();
        connection.close();
        direct.close();
        DM.ADOConnection1 = nullptr;
        UserInfo = {};
    }
    void run(const QString &sql) { direct.execute(TStatement(sql)); }
    void fill()
    {
        run("insert into StaffGroup(Code,Name) values(1,N'اداری')");
        for (int code = 1; code <= 3; ++code)
            run(u"insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber,NationalID,"
                "LeaveDate) values(%1,1,N'نام %1',N'نشان %1','%1','%1','%1','0012345679','')"_s.arg(code));
        run(u"insert into StaffFamily(ID,StaffCode,Name) values(1,3,N'فرزند')"_s);
        run("insert into TaxMain(Code,Title) values(1,N'جدول')");
        for (int i = 0; i < 10; ++i)
            run(u"insert into Tax(TaxMainCode,FromSalary,ToSalary,[Percent],Comment) values(1,%1,%2,%3,N'پله')"_s
                    .arg(i * 1000 + (i > 0))
                    .arg(i * 1000 + 1000)
                    .arg(i));
        run("insert into FiscalGrp(Code,Name) values(1,N'گروه')");
        direct.BeginTrans();
        for (int code = 1; code <= 200; ++code)
            run(u"insert into Fiscal(Code,GrpCode,Title,CalcType,Cost) values(%1,1,N'مزایای %1',0,%2)"_s
                    .arg(code)
                    .arg(code * 10));
        direct.CommitTrans();
        run("insert into CalcMethod(Code,Title) values(1,N'روش')");
    }
    TCost cost(const char *what, const std::function<void()> &work)
    {
        if (qEnvironmentVariableIsSet("KETEBIONPAP_TEST_TRACE"))
            std::cout << what << '\n';
        proxy->resetTrips();
        proxy->resetBytes();
        QElapsedTimer timer;
        timer.start();
        work();
        const TCost cost{proxy->trips(), proxy->bytesFromServer() + proxy->bytesToServer(), timer.elapsed()};
        std::cout << "| " << std::setw(34) << std::left << what << " | " << std::setw(4) << std::right
                  << cost.trips << " | " << std::setw(8) << cost.bytes << " | " << std::setw(6) << cost.ms
                  << " ms |\n";
        return cost;
    }
    template <class Screen>
    static void show(
        Screen &screen, const std::function<void()> &work = [] {})
    {
        Keys::runModal([&] { return screen.exec(); },
                       [&](QWidget *shown) {
                           Keys::waitFor([&] { return shown->isActiveWindow(); });
                           work();
                           if (screen.isVisible())
                               Keys::press(&screen, Qt::Key_Escape);
                       });
    }
    template <class List>
    int openList(const char *what)
    {
        std::optional<List> list;
        int trips = 0;
        list.emplace(fmBrowse, QString());
        QElapsedTimer timer;
        Keys::runModal(
            [&] {
                proxy->resetTrips();
                proxy->resetBytes();
                timer.start();
                return list->exec();
            },
            [&](QWidget *) {
                trips = cost0(what, timer);
                Keys::press(&*list, Qt::Key_Escape);
            });
        return trips;
    }
    int cost0(const char *what, const QElapsedTimer &timer)
    {
        std::cout << "| " << std::setw(34) << std::left << what << " | " << std::setw(4) << std::right
                  << proxy->trips() << " | " << std::setw(8)
                  << proxy->bytesFromServer() + proxy->bytesToServer() << " | " << std::setw(6)
                  << timer.elapsed() << " ms |\n";
        return proxy->trips();
    }
    int count(const char *table)
    {
        return direct.scalar(TStatement(u"select count(*) from %1"_s.arg(QLatin1String(table)))).toInt();
    }

    std::unique_ptr<TestProxy> proxy;
    TConnection direct;
    TConnection connection;
    ScriptedMessages messages;
    std::optional<TCalcMethod_DM> methods;
    std::optional<TTax_DM> taxes;
    std::optional<TStaff_DM> staff;
    std::optional<TCalender_DM> calender;
};

TEST_P(ServerTrips, OfWhatAUserDoes)
{
    std::cout << "A line of " << GetParam() << " ms\n";
    TurnWatch watch;
    openList<TCalcMethodList_FRM>("list of methods");
    openList<TTaxList_FRM>("list of tax tables");
    openList<TStaffList_FRM>("list of employees");
    openList<TStaffList_FRM>("list of employees, again");
    openList<TCalender_List_FRM>("list of days");
    {
        std::optional<TStaffGet_FRM> editor;
        TCost open;
        TCost save;
        open = cost("employee opened", [&] { editor.emplace(cspStaff, 3, fmEdit, false); });
        QElapsedTimer timer;
        proxy->resetTrips();
        proxy->resetBytes();
        timer.start();
        Keys::runModal([&] { return editor->exec(); },
                       [&](QWidget *shown) {
                           Keys::waitFor([&] { return shown->isActiveWindow(); });
                           open.trips += cost0("  and shown", timer);
                           Keys::retype(editor->Name_EDT, u"نام تازه"_s);
                           save = cost("employee saved", [&] { Keys::press(&*editor, Qt::Key_F3); });
                           EXPECT_FALSE(editor->isVisible()) << messages.take().join(u' ').toStdString();
                       });
        messages.take();
        EXPECT_EQ(direct.scalar(TStatement("select Name from Staff where Code=3")), u"نام تازه"_s);
        EXPECT_EQ(count("StaffFamily"), 1);
        EXPECT_LE(open.trips, 14);
        EXPECT_LE(save.trips, 17);
    }
    {
        std::optional<TTaxGet_FRM> editor;
        cost("tax table of 10 brackets opened", [&] { editor.emplace(cspTax, 1, fmEdit, false); });
        QElapsedTimer timer;
        proxy->resetTrips();
        timer.start();
        Keys::runModal([&] { return editor->exec(); },
                       [&](QWidget *shown) {
                           Keys::waitFor([&] { return shown->isActiveWindow(); });
                           cost0("  and shown", timer);
                           Keys::retype(editor->Title_EDT, u"عنوان تازه"_s);
                           cost("tax table saved", [&] { Keys::press(&*editor, Qt::Key_F3); });
                           EXPECT_FALSE(editor->isVisible()) << messages.take().join(u' ').toStdString();
                       });
        messages.take();
        EXPECT_EQ(count("Tax"), 10);
    }
    {
        TCalender_Set_FRM screen(cspCalender, false, QString());
        Keys::runModal([&] { return screen.exec(); },
                       [&](QWidget *shown) {
                           Keys::waitFor([&] { return shown->isActiveWindow(); });
                           Keys::retype(screen.Title_EDT, u"سال"_s);
                           Keys::retype(screen.Date1_EDT, u"1402/01/01"_s);
                           screen.StartDay_CMB->setCurrentIndex(3);
                           screen.WeekEnd_CMB->setCurrentIndex(6);
                           Keys::retype(screen.Date2_EDT, u"1402/12/29"_s);
                           messages.answer({TAnswer::Yes, TAnswer::Yes});
                           const TCost year = cost("a year", [&] { Keys::press(&screen, Qt::Key_F3); });
                           EXPECT_LE(year.trips, 14)
                               << "with its lock, its look at the range and its line in the log";
                       });
        messages.take();
        EXPECT_EQ(count("Calender"), 365);
        EXPECT_EQ(direct.scalar(
                      TStatement("select min(Date) from Calender where ID=(select min(ID) from Calender)")),
                  u"1402/01/01"_s);
    }
    {
        run("delete from Calender");
        QList<TCalenderMapper> days;
        for (int i = 0; i < 365; ++i)
            days.append({u"t"_s, u"1402/%1"_s.arg(i, 3, 10, QChar(u'0')), i % 7, 1, u"c"_s});
        int told = 0;
        const TCost year = cost("  its days alone", [&] {
            EXPECT_TRUE(Calender_DM->Calender_InsertAll(days, [&](qsizetype) {
                ++told;
                return true;
            }));
        });
        EXPECT_LE(year.trips, 7);
        EXPECT_GE(told, 4);
        EXPECT_EQ(count("Calender"), 365);
    }
    {
        TFiscalDeducation_List_FRM screen(fmSelect, u"0;2;1"_s, {});
        show(screen, [&] {
            screen.Grid()->setFocus();
            Keys::press(&screen, Qt::Key_Home);
            for (int code = 1; code <= 200; ++code) {
                Keys::press(&screen, Qt::Key_Space);
                Keys::press(&screen, Qt::Key_Down);
            }
            ASSERT_EQ(screen.Grid()->Model()->checkedKeys().size(), 200);
            const TCost picked =
                cost("200 items into an order", [&] { Keys::press(&screen, Qt::Key_Return); });
            EXPECT_FALSE(screen.isVisible()) << messages.take().join(u' ').toStdString();
            EXPECT_LE(picked.trips, 10);
        });
        messages.take();
        EXPECT_EQ(count("tmpRecFiscal"), 200);
    }
    std::cout << "longest time without a turn of the events: " << watch.longest() << " ms\n";
}

std::vector<int> delays()
{
    std::vector<int> delays{0};
    for (const QString &delay :
         qEnvironmentVariable("KETEBIONPAP_TEST_DELAY").split(u',', Qt::SkipEmptyParts))
        delays.push_back(delay.toInt());
    return delays;
}

INSTANTIATE_TEST_SUITE_P(Delays, ServerTrips, testing::ValuesIn(delays()),
                         [](const auto &info) { return std::to_string(info.param) + "ms"; });

} // namespace
