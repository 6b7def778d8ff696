#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"
#include "tax/TaxGet_UNT.h"
#include "tax/Tax_DM_UNT.h"

#include <gtest/gtest.h>

// The server goes away in the middle of a save, and comes back: the user is told, what was typed stays, the next try
// works without a restart, and nothing is stored twice.

namespace {

struct TBreak {
    const char *name;
    const char *request; ///< which the line is cut at
    bool seen;           ///< by the server
};

void PrintTo(const TBreak &at, std::ostream *out)
{
    *out << at.name;
}

class SaveFaults : public testing::TestWithParam<TBreak> {
protected:
    static void SetUpTestSuite()
    {
        if (TestServer::available())
            TestServer::emptyDatabase();
    }
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        proxy = std::make_unique<TestProxy>(TestServer::ownDatabase().connectionString());
        direct.openOdbc(TestServer::ownDatabase().connectionString());
        connection.openOdbc(TestServer::with(proxy->connectionString(), "LoginTimeout", "3"));
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        UserInfo = TUserInfo{1, "clerk", "clerk", true, true};
        methods = std::make_unique<TCalcMethod_DM>(nullptr);
        CalcMethod_DM = methods.get();
        taxes = std::make_unique<TTax_DM>(nullptr);
        Tax_DM = taxes.get();
    }
    void TearDown() override
    {
        CalcMethod_DM = nullptr;
        Tax_DM = nullptr;
        methods.reset();
        taxes.reset();
        connection.close();
        direct.close();
        DM.ADOConnection1 = nullptr;
        UserInfo = {};
    }
    void cut()
    {
        if (GetParam().seen)
            proxy->cutAfter(GetParam().request);
        else
            proxy->cutBefore(GetParam().request);
    }
    QString stored(const char *sql) { return direct.scalar(TStatement(sql)).toString(); }

    std::unique_ptr<TestProxy> proxy;
    TConnection direct;
    TConnection connection;
    ScriptedMessages messages;
    std::unique_ptr<TCalcMethod_DM> methods;
    std::unique_ptr<TTax_DM> taxes;
};

TEST_P(SaveFaults, ANewMethodIsSavedOnceByTheNextTry)
{
    const auto editor = std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, false, QString());
    const QString title = QString::fromUtf8("روش یکم");
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *) {
                       Keys::retype(editor->Title_EDT, title);
                       Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
                       Keys::retype(editor->OverTime_EDT, "120");
                       cut();
                       Keys::press(editor.get(), Qt::Key_F3);
                       EXPECT_TRUE(editor->isVisible());
                       EXPECT_EQ(editor->Title_EDT->GetText(), title);
                       EXPECT_EQ(editor->OverTime_EDT->GetText(), "120");
                       // In the user's language, and with what can be done.
                       const QStringList shown = messages.take();
                       EXPECT_FALSE(shown.isEmpty());
                       EXPECT_TRUE(connection.lastError() && !connection.lastError()->userText().isEmpty());
                       // The server is still away.
                       Keys::press(editor.get(), Qt::Key_F3);
                       EXPECT_TRUE(editor->isVisible());
                       EXPECT_FALSE(messages.take().isEmpty());
                       proxy->restore();
                       Keys::press(editor.get(), Qt::Key_F3);
                       EXPECT_EQ(messages.take().join(u' '),
                                 QString::fromUtf8("MSGCompeletedSuccessfully(ذخيره سازي )"));
                   });
    EXPECT_EQ(stored("select count(*) from CalcMethod"), "1");
    EXPECT_EQ(stored("select Title from CalcMethod"), title);
    EXPECT_EQ(stored("select count(*) from CodeLock_TBL"), "0");
}

TEST_P(SaveFaults, ANewTaxTableIsSavedOnceByTheNextTry)
{
    if (QString(GetParam().request).contains("CalcMethod"))
        GTEST_SKIP() << "cut at another table's statement";
    const auto editor = std::make_unique<TTaxGet_FRM>(cspTax, false, QString());
    Keys::runModal(
        [&] { return editor->exec(); },
        [&](QWidget *) {
            Keys::retype(editor->Title_EDT, "t");
            ASSERT_TRUE(Tax_DM->TmpTax_Insert({editor->Code_EDT->asInteger(), 0, 1000, 0, "a"}));
            ASSERT_TRUE(Tax_DM->TmpTax_Insert({editor->Code_EDT->asInteger(), 1001, 2000, 10, "b"}));
            Tax_DM->DetailList_QUR->close();
            Tax_DM->DetailList_QUR->open();
            cut();
            Keys::press(editor.get(), Qt::Key_F3);
            EXPECT_TRUE(editor->isVisible());
            EXPECT_EQ(editor->Title_EDT->GetText(), "t");
            EXPECT_FALSE(messages.take().isEmpty());
            proxy->restore();
            Keys::press(editor.get(), Qt::Key_F3);
            EXPECT_EQ(messages.take().join(u' '),
                      QString::fromUtf8("MSGCompeletedSuccessfully(ذخيره سازي )"));
        });
    EXPECT_EQ(stored("select count(*) from TaxMain"), "1");
    EXPECT_EQ(stored("select count(*) from Tax"), "2");
    EXPECT_EQ(stored("select count(*) from TmpTax"), "0");
}

INSTANTIATE_TEST_SUITE_P(Breaks, SaveFaults,
                         testing::Values(TBreak{"BeforeTheInsert", "insert into [CalcMethod]", false},
                                         TBreak{"AfterTheInsert", "insert into [CalcMethod]", true},
                                         TBreak{"BeforeTheCommit", "commit transaction", false},
                                         TBreak{"AfterTheCommit", "commit transaction", true}),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
