#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"
#include "support/TestUser.h"
#include "tax/TaxGet_UNT.h"
#include "tax/Tax_DM_UNT.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// The server fails in the middle of a save: the user is told in Persian what happened and what to do, what was typed
// stays, the next try works without a restart, and nothing is stored twice.

namespace {

enum class TBreak {
    BeforeTheWrite,  ///< the line is cut, the server never sees the row
    AfterTheWrite,   ///< the line is cut, the transaction is not committed
    BeforeTheCommit, ///< the same, with all rows seen
    AfterTheCommit,  ///< committed, and nobody hears of it
    LateAnswers,
    RefusedLogin, ///< the server came back and does not take the user
    FullServer,   ///< it came back and is out of connections
    LockedRow,
    DeadlockVictim
};

const struct {
    TBreak kind;
    const char *name;
    TFault told;
} breaks[] = {{TBreak::BeforeTheWrite, "BeforeTheWrite", TFault::ConnectionLost},
              {TBreak::AfterTheWrite, "AfterTheWrite", TFault::ConnectionLost},
              {TBreak::BeforeTheCommit, "BeforeTheCommit", TFault::ConnectionLost},
              {TBreak::AfterTheCommit, "AfterTheCommit", TFault::ConnectionLost},
              {TBreak::LateAnswers, "LateAnswers", TFault::NoAnswer},
              {TBreak::RefusedLogin, "RefusedLogin", TFault::LoginRefused},
              {TBreak::FullServer, "FullServer", TFault::ServerFull},
              {TBreak::LockedRow, "LockedRow", TFault::Locked},
              {TBreak::DeadlockVictim, "DeadlockVictim", TFault::Deadlock}};

class SaveFaults : public testing::TestWithParam<TBreak> {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        const QString place = TestServer::ownDatabase().connectionString();
        direct.openOdbc(place);
        proxy = std::make_unique<TestProxy>(place);
        QString through = TestServer::with(proxy->connectionString(), "LoginTimeout", "2");
        through = TestServer::with(through, "LockTimeout", "1");
        connection.openOdbc(
            TestServer::with(through, "AnswerTimeout", GetParam() == TBreak::LateAnswers ? "3" : "30"));
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        CalcMethod_DM = &methods.emplace(nullptr);
        Tax_DM = &taxes.emplace(nullptr);
        Staff_DM = &staff.emplace(nullptr);
    }
    void TearDown() override
    {
        CalcMethod_DM = nullptr;
        Tax_DM = nullptr;
        Staff_DM = nullptr;
        methods.reset();
        taxes.reset();
        staff.reset();
        connection.close();
        direct.close();
        DM.ADOConnection1 = nullptr;
        UserInfo = {};
    }
    enum TSave { InATransaction, OneRequest }; ///< whose end is its commit, or which is stored by itself
    /// `write` begins the statement at which the fault happens; `hold` is another user's change of the same row.
    void fail(const QString &write, const TStatement &hold, TSave save)
    {
        const QString end = save == OneRequest ? write : u"commit transaction"_s;
        switch (GetParam()) {
        case TBreak::BeforeTheWrite:
            return proxy->cutBefore(write);
        case TBreak::AfterTheWrite:
            return proxy->cutAfter(write);
        case TBreak::BeforeTheCommit:
            return proxy->cutBefore(end);
        case TBreak::AfterTheCommit:
            return proxy->cutAfter(end);
        case TBreak::LateAnswers:
            return proxy->setDelay(8000);
        case TBreak::RefusedLogin:
        case TBreak::FullServer:
            proxy->cut();
            proxy->refuseLogins(GetParam() == TBreak::FullServer ? 17809 : 18456, "no");
            return proxy->restore();
        case TBreak::LockedRow:
            direct.BeginTrans();
            direct.execute(hold);
            return;
        case TBreak::DeadlockVictim:
            connection.setStatementHook([write](const TStatement &statement) {
                if (statement.boundText().startsWith(write, Qt::CaseInsensitive))
                    throw TDatabaseError(TFault::Deadlock, "played by a test", statement.boundText());
            });
        }
    }
    void mend()
    {
        proxy->setDelay(0);
        proxy->refuseLogins(0, {});
        proxy->restore();
        direct.RollbackTrans();
        connection.setStatementHook({});
    }
    /// Saves while it cannot be, twice, and then when all is well again.
    void saveThreeTimes(QWidget &editor, const QString &write, const TStatement &hold,
                        const std::function<void()> &inputsAreAsTyped, TSave save = InATransaction)
    {
        const auto told = std::find_if(std::begin(breaks), std::end(breaks),
                                       [](const auto &entry) { return entry.kind == GetParam(); });
        fail(write, hold, save);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_TRUE(messages.last().text.contains(TDatabaseError(told->told, {}).userText()))
            << messages.last().text.toStdString();
        inputsAreAsTyped();
        messages.take();
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_FALSE(messages.take().isEmpty()) << "told again";
        inputsAreAsTyped();
        mend();
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take().join(u' ').toStdString(), "MSGCompeletedSuccessfully(ذخيره سازي )");
        EXPECT_FALSE(editor.isVisible());
    }
    std::string stored(const char *sql) { return direct.scalar(TStatement(sql)).toString().toStdString(); }

    std::unique_ptr<TestProxy> proxy;
    TConnection direct;
    TConnection connection;
    ScriptedMessages messages;
    std::optional<TCalcMethod_DM> methods;
    std::optional<TTax_DM> taxes;
    std::optional<TStaff_DM> staff;
};

TEST_P(SaveFaults, ANewMethodIsSavedOnce)
{
    const auto editor = std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, false, QString());
    const QString title = QString::fromUtf8("روش یکم");
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *) {
                       Keys::retype(editor->Title_EDT, title);
                       Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
                       Keys::retype(editor->OverTime_EDT, "120");
                       saveThreeTimes(
                           *editor, "insert into [CalcMethod]",
                           TStatement("insert into CalcMethod(Code) values(")
                               .integer(editor->Code_EDT->asInteger())
                               .sql(")"),
                           [&] {
                               EXPECT_EQ(editor->Title_EDT->GetText(), title);
                               EXPECT_EQ(editor->OverTime_EDT->GetText(), "120");
                           },
                           OneRequest);
                   });
    EXPECT_EQ(stored("select count(*) from CalcMethod"), "1");
    EXPECT_EQ(stored("select Title from CalcMethod"), title.toStdString());
    EXPECT_EQ(stored("select count(*) from CodeLock_TBL"), "0");
}

TEST_P(SaveFaults, AChangedMethodKeepsTheChange)
{
    direct.execute(
        TStatement("insert into CalcMethod(Code,Title,StaffIns,EmployerIns) values(7,'before',7,23)"));
    const auto editor = std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, 7, fmEdit, false);
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *) {
                       Keys::retype(editor->Title_EDT, "after");
                       saveThreeTimes(
                           *editor, "update [CalcMethod]",
                           TStatement("update CalcMethod set Title='other' where Code=7"),
                           [&] { EXPECT_EQ(editor->Title_EDT->GetText(), "after"); }, OneRequest);
                   });
    EXPECT_EQ(stored("select count(*) from CalcMethod"), "1");
    EXPECT_EQ(stored("select Title from CalcMethod"), "after");
}

TEST_P(SaveFaults, ANewTaxTableIsSavedOnceWithItsBrackets)
{
    const auto editor = std::make_unique<TTaxGet_FRM>(cspTax, false, QString());
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *) {
                       const int code = editor->Code_EDT->asInteger();
                       Keys::retype(editor->Title_EDT, "t");
                       ASSERT_TRUE(Tax_DM->TmpTax_Insert({code, 0, 1000, 0, "a"}));
                       ASSERT_TRUE(Tax_DM->TmpTax_Insert({code, 1001, 2000, 10, "b"}));
                       Tax_DM->DetailList_QUR->close();
                       Tax_DM->DetailList_QUR->open();
                       saveThreeTimes(*editor, "insert into [TaxMain]",
                                      TStatement("insert into TaxMain(Code) values(").integer(code).sql(")"),
                                      [&] {
                                          EXPECT_EQ(editor->Title_EDT->GetText(), "t");
                                          EXPECT_EQ(stored("select count(*) from TmpTax"), "2");
                                      });
                   });
    EXPECT_EQ(stored("select count(*) from TaxMain"), "1");
    EXPECT_EQ(stored("select count(*) from Tax"), "2");
    EXPECT_EQ(stored("select count(*) from TmpTax"), "0");
    EXPECT_EQ(stored("select count(*) from CodeLock_TBL"), "0");
}

TEST_P(SaveFaults, ANewEmployeeIsSavedOnceWithTheFamily)
{
    direct.execute(TStatement("insert into StaffGroup(Code,Name) values(1,'office')"));
    const QString name = QString::fromUtf8("علی");
    const auto editor = std::make_unique<TStaffGet_FRM>(cspStaff, false, u"1"_s);
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *) {
                       const int code = editor->Code_EDT->asInteger();
                       Keys::retype(editor->Name_EDT, name);
                       Keys::retype(editor->LastName_EDT, "l");
                       for (const int id : {1, 2})
                           direct.execute(TStatement("insert into tmpStaffFamily(ID,StaffCode,Name) values(")
                                              .integer(id)
                                              .sql(",")
                                              .integer(code)
                                              .sql(",'child')"));
                       Staff_DM->FillDataFamilyList(code); // they stand on the screen, as rows of its own
                       saveThreeTimes(*editor, "insert into [staff]",
                                      TStatement("insert into Staff(Code) values(").integer(code).sql(")"),
                                      [&] {
                                          EXPECT_EQ(editor->Name_EDT->GetText(), name);
                                          EXPECT_EQ(editor->LastName_EDT->GetText(), "l");
                                      });
                   });
    EXPECT_EQ(stored("select count(*) from Staff"), "1");
    EXPECT_EQ(stored("select Name from Staff"), name.toStdString());
    EXPECT_EQ(stored("select count(*) from StaffFamily"), "2");
    EXPECT_EQ(stored("select count(*) from tmpStaffFamily"), "0");
    EXPECT_EQ(stored("select count(*) from CodeLock_TBL"), "0");
}

INSTANTIATE_TEST_SUITE_P(Breaks, SaveFaults,
                         testing::Values(TBreak::BeforeTheWrite, TBreak::AfterTheWrite,
                                         TBreak::BeforeTheCommit, TBreak::AfterTheCommit, TBreak::LateAnswers,
                                         TBreak::RefusedLogin, TBreak::FullServer, TBreak::LockedRow,
                                         TBreak::DeadlockVictim),
                         [](const auto &info) {
                             for (const auto &entry : breaks)
                                 if (entry.kind == info.param)
                                     return std::string(entry.name);
                             return std::string("Unknown");
                         });

} // namespace
