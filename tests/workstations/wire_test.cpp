#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Engine.h"
#include "staff/Staff_DM_UNT.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <iostream>

using namespace Qt::Literals::StringLiterals;

// What a long list costs on the wire, counted between the program and its server.

namespace {

// 1,000,000 with KETEBIONPAP_TEST_ROWS=1000000; a shorter list in the everyday run.
int rows()
{
    const int wanted = qEnvironmentVariableIntValue("KETEBIONPAP_TEST_ROWS");
    return wanted > 0 ? wanted : 30000;
}

TEST(Wire, ALongListReadsItsKeysAndPagesOnly)
{
    if (!TestServer::available())
        GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
    const TestServer::Database database;
    TestProxy proxy(database.connectionString());
    TConnection connection;
    connection.openOdbc(TestServer::with(proxy.connectionString(), "AnswerTimeout", "1800"));
    DM.ADOConnection1 = &connection;
    connection.execute(
        TStatement(
            "with D(N) as (select 0 union all select 1 union all select 2 union all select 3 union all select 4 union all "
            "select 5 union all select 6 union all select 7 union all select 8 union all select 9) "
            "insert into Staff(Code,StaffGroup,PersonnelCode,InsuranceNumber,CardNumber,NationalID,FatherName,IDNumber,"
            "BirthDate,BirthPlace,Name,LastName,CoDate,Job,Tel1,Mob,Add1,CreatedDate,CreatedTime) "
            "select T.N,0,cast(T.N as nvarchar(20)),cast(T.N+70000000 as nvarchar(20)),cast(T.N as nvarchar(20)),N'0012345679',"
            "N'محمدرضا',cast(T.N as nvarchar(20)),N'1370/01/01',N'تهران',N'علی',N'محمدی',N'1400/01/01',N'حسابدار',N'02112345678',"
            "N'09121234567',N'خیابان آزادی، کوچه نسترن، پلاک ۱۲',N'1400/01/01',N'08:00' "
            "from (select 1+a.N+10*b.N+100*c.N+1000*d.N+10000*e.N+100000*f.N as N from D a,D b,D c,D d,D e,D f) T where T.N<=")
            .integer(rows()));

    TStaff_DM staff(nullptr);
    QElapsedTimer timer;
    const auto measured = [&](const char *what, const std::function<void()> &work) {
        proxy.resetBytes();
        timer.start();
        work();
        const qint64 bytes = proxy.bytesFromServer() + proxy.bytesToServer();
        std::cout << what << ": " << bytes << " bytes, " << timer.elapsed() << " ms\n";
        return bytes;
    };
    TQuery &list = *staff.List_QUR;
    const qint64 opened = measured("the list opened at its last row", [&] {
        list.open();
        list.last();
        EXPECT_EQ(list.asInteger("Code"), rows());
    });
    const qint64 moved = measured("Home: the first row", [&] {
        list.first();
        EXPECT_EQ(list.asInteger("Code"), 1);
    });
    const qint64 jumped = measured("a row in the middle", [&] {
        list.moveTo(rows() / 2);
        EXPECT_EQ(list.asInteger("Code"), rows() / 2 + 1);
    });
    qint64 count = 0;
    const qint64 whole = measured("the whole table", [&] {
        const auto cursor = connection.engine().select({u"select * from staff_VW"_s, {}, {}});
        while (cursor->next())
            ++count;
    });
    DM.ADOConnection1 = nullptr;
    std::cout << count << " rows\n";
    EXPECT_EQ(count, rows());
    EXPECT_LT(opened * 20, whole);
    EXPECT_LT((opened + moved + jumped) * 20, whole);
}

} // namespace
