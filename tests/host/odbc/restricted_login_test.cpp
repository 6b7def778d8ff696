#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Connection.h"
#include "support/TestServer.h"
#include "tax/Tax_DM_UNT.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// A login with no more than the rights that the documents ask for.

namespace {

class RestrictedLogin : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        database = std::make_unique<TestServer::Database>();
        run(u"create login %1 with password = '%2'"_s.arg(name, QString(password).replace("'"_L1, "''"_L1)));
        made = true;
        run(u"create user %1 for login %1 with default_schema = dbo"_s.arg(name), database->name());
        place =
            TestServer::with(TestServer::with(database->connectionString(), "UID", name), "PWD", password);
    }
    void TearDown() override
    {
        DM.ADOConnection1 = nullptr;
        database.reset();
        if (made)
            run(u"drop login "_s + name);
    }
    static void run(const QString &sql, const QString &place = u"master"_s)
    {
        TestServer::runOnServer(sql, place);
    }
    void grant()
    {
        TConnection owner;
        owner.openOdbc(database->connectionString());
        run(u"grant select, insert, update, delete, execute on schema::dbo to "_s + name, database->name());
    }
    TFault faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            EXPECT_FALSE(QString::fromUtf8(error.what()).contains(password));
            detail = error.detail();
            return error.fault();
        }
        return TFault::Other;
    }

    std::unique_ptr<TestServer::Database> database;
    const QString name = u"restricted_%1"_s.arg(QCoreApplication::applicationPid());
    const QString password = u"Aa1;}گ'x"_s;
    QString place;
    QString detail;
    bool made = false;
};

TEST_F(RestrictedLogin, IsToldItsMissingRightsAtTheFirstStartAndMakesNothing)
{
    TConnection clerk;
    EXPECT_EQ(faultOf([&] { clerk.openOdbc(place); }), TFault::NoRight) << qPrintable(detail);
    EXPECT_NO_THROW(run("if exists(select * from INFORMATION_SCHEMA.TABLES) raiserror('changed', 16, 1)",
                        database->name()));
}

TEST_F(RestrictedLogin, DoesTheWorkOfEveryDayAndNoMore)
{
    grant();
    TConnection clerk;
    ASSERT_EQ(faultOf([&] { clerk.openOdbc(place); }), TFault::Other) << qPrintable(detail);
    DM.ADOConnection1 = &clerk;
    {
        TTax_DM tax(nullptr);
        TTax_Mapper mapper;
        mapper._Code = tax.Tax_GetNewCode();
        mapper._Title = u"مالیات آزمایشی"_s;
        EXPECT_GT(mapper._Code, 0);
        ASSERT_TRUE(tax.Tax_Insert(mapper)) << clerk.lastError()->what();
        tax.Tax_GetByID(mapper._Code);
        mapper._Title = u"عنوان تازه"_s;
        EXPECT_TRUE(tax.Tax_Update(mapper));
        EXPECT_EQ(clerk.scalar(TStatement("select Title from TaxMain")).toString(), mapper._Title);
        EXPECT_TRUE(tax.Tax_DelWhole(mapper._Code));
        EXPECT_EQ(clerk.scalar(TStatement("select count(*) from TaxMain")).toInt(), 0);
    }
    EXPECT_EQ(faultOf([&] { clerk.execute(TStatement("alter table TaxMain add Other int null")); }),
              TFault::NoRight)
        << qPrintable(detail);
    EXPECT_EQ(faultOf([&] { clerk.execute(TStatement("drop table TaxMain")); }), TFault::NoRight)
        << qPrintable(detail);
}

} // namespace
