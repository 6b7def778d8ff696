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

// The line is cut at a request of a save, at each in its turn, and for each either before the server sees it or before
// its answer is heard. Then the line is back and the user saves again.

namespace {

/// 1000 with KETEBIONPAP_TEST_CUTS=1000; fewer in the everyday run.
int cuts()
{
    const int wanted = qEnvironmentVariableIntValue("KETEBIONPAP_TEST_CUTS");
    return wanted > 0 ? wanted : 12;
}

class Cuts : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        const QString place = TestServer::ownDatabase().connectionString();
        direct.openOdbc(place);
        proxy = std::make_unique<TestProxy>(place);
        connection.openOdbc(TestServer::with(proxy->connectionString(), "LoginTimeout", "5"));
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        CalcMethod_DM = &methods.emplace(nullptr);
        Tax_DM = &taxes.emplace(nullptr);
        Staff_DM = &staff.emplace(nullptr);
        direct.execute(TStatement("insert into StaffGroup(Code,Name) values(1,'office')"));
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
    int count(const QString &what)
    {
        return direct.scalar(TStatement(u"select count(*) from "_s + what)).toInt();
    }

    /// One kind of save: a fresh editor, what is typed, whether it stands there still, and whether it is stored, once.
    struct TKind {
        const char *name;
        std::function<std::unique_ptr<TBaseGet_FRM>(int round)> editor;
        std::function<void(TBaseGet_FRM &, int round)> type;
        std::function<bool(TBaseGet_FRM &, int round)> isAsTyped;
        std::function<bool(int round)> isStoredOnce;
    };

    /// Cuts at this request; false when the save came to its end before it.
    bool cutOnce(const TKind &kind, int round, int request, bool before)
    {
        const auto where = [&] {
            return std::string(kind.name) + (before ? " before request " : " after request ") +
                   std::to_string(request);
        };
        bool wasCut = false;
        const auto editor = kind.editor(round);
        Keys::runModal([&] { return editor->exec(); },
                       [&](QWidget *shown) {
                           Keys::waitFor([&] { return shown->isActiveWindow(); });
                           kind.type(*editor, round);
                           messages.take();
                           proxy->cutAtTrip(request, before);
                           messages.answer({TAnswer::Yes, TAnswer::Yes, TAnswer::Yes});
                           Keys::press(editor.get(), Qt::Key_F3);
                           wasCut = proxy->isCut();
                           proxy->cutAtTrip(0, before);
                           proxy->restore();
                           EXPECT_TRUE(kind.isAsTyped(*editor, round)) << where();
                           for (int tries = 0; editor->isVisible() && tries < 3; ++tries) {
                               messages.answer({TAnswer::Yes, TAnswer::Yes, TAnswer::Yes});
                               Keys::press(editor.get(), Qt::Key_F3);
                           }
                           EXPECT_FALSE(editor->isVisible())
                               << where() << ": " << messages.take().join(u' ').toStdString();
                           if (editor->isVisible())
                               static_cast<QDialog &>(*editor).done(0);
                       });
        EXPECT_TRUE(kind.isStoredOnce(round)) << where();
        return wasCut;
    }
    void cutEach(const TKind &kind)
    {
        const int most = cuts() / 4;
        int done = 0;
        int round = 0;
        while (done < most) {
            const int before = done;
            for (int request = 1; done < most; ++request) {
                const bool first = cutOnce(kind, ++round, request, true);
                const bool second = cutOnce(kind, ++round, request, false);
                done += int(first) + int(second);
                if (!first && !second)
                    break;
            }
            ASSERT_GT(done, before) << "no request was cut";
        }
        std::printf("%s: cut %d times in %d saves\n", kind.name, done, round);
    }

    std::unique_ptr<TestProxy> proxy;
    TConnection direct;
    TConnection connection;
    ScriptedMessages messages;
    std::optional<TCalcMethod_DM> methods;
    std::optional<TTax_DM> taxes;
    std::optional<TStaff_DM> staff;
};

QString nameOf(int round)
{
    return u"نام %1"_s.arg(round);
}

TEST_F(Cuts, ANewMethodIsStoredOnceWhateverRequestIsCut)
{
    cutEach({"a new method",
             [](int) { return std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, false, QString()); },
             [](TBaseGet_FRM &editor, int round) {
                 auto &method = static_cast<TCalcMethodGet_FRM &>(editor);
                 Keys::retype(method.Title_EDT, nameOf(round));
                 Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
                 Keys::retype(method.OverTime_EDT, "120");
             },
             [](TBaseGet_FRM &editor, int round) {
                 return static_cast<TCalcMethodGet_FRM &>(editor).Title_EDT->GetText() == nameOf(round);
             },
             [this](int round) { return count(u"CalcMethod where Title=N'%1'"_s.arg(nameOf(round))) == 1; }});
}

TEST_F(Cuts, AChangedMethodIsStoredOnceWhateverRequestIsCut)
{
    direct.execute(
        TStatement("insert into CalcMethod(Code,Title,StaffIns,EmployerIns) values(7,'before',7,23)"));
    cutEach({"a changed method",
             [](int) { return std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, 7, fmEdit, false); },
             [](TBaseGet_FRM &editor, int round) {
                 Keys::retype(static_cast<TCalcMethodGet_FRM &>(editor).Title_EDT, nameOf(round));
             },
             [](TBaseGet_FRM &editor, int round) {
                 return static_cast<TCalcMethodGet_FRM &>(editor).Title_EDT->GetText() == nameOf(round);
             },
             [this](int round) {
                 return count(u"CalcMethod"_s) == 1 &&
                        count(u"CalcMethod where Title=N'%1'"_s.arg(nameOf(round))) == 1;
             }});
}

TEST_F(Cuts, AChangedTaxTableKeepsItsBracketsWhateverRequestIsCut)
{
    direct.execute(TStatement("insert into TaxMain(Code,Title) values(1,'before')"));
    direct.execute(
        TStatement("insert into Tax(TaxMainCode,FromSalary,ToSalary,[Percent]) values(1,0,1000,0)"));
    direct.execute(
        TStatement("insert into Tax(TaxMainCode,FromSalary,ToSalary,[Percent]) values(1,1001,2000,10)"));
    cutEach({"a changed tax table",
             [](int) { return std::make_unique<TTaxGet_FRM>(cspTax, 1, fmEdit, false); },
             [](TBaseGet_FRM &editor, int round) {
                 Keys::retype(static_cast<TTaxGet_FRM &>(editor).Title_EDT, nameOf(round));
             },
             [](TBaseGet_FRM &editor, int round) {
                 return static_cast<TTaxGet_FRM &>(editor).Title_EDT->GetText() == nameOf(round);
             },
             [this](int round) {
                 return count(u"Tax where TaxMainCode=1"_s) == 2 &&
                        count(u"TaxMain where Title=N'%1'"_s.arg(nameOf(round))) == 1;
             }});
}

TEST_F(Cuts, ANewEmployeeIsStoredOnceWhateverRequestIsCut)
{
    cutEach({"a new employee", [](int) { return std::make_unique<TStaffGet_FRM>(cspStaff, false, u"1"_s); },
             [](TBaseGet_FRM &editor, int round) {
                 Keys::retype(static_cast<TStaffGet_FRM &>(editor).Name_EDT, nameOf(round));
                 Keys::retype(static_cast<TStaffGet_FRM &>(editor).LastName_EDT, u"خانواده"_s);
             },
             [](TBaseGet_FRM &editor, int round) {
                 return static_cast<TStaffGet_FRM &>(editor).Name_EDT->GetText() == nameOf(round);
             },
             [this](int round) {
                 const bool once = count(u"Staff where Name=N'%1'"_s.arg(nameOf(round))) == 1;
                 direct.execute(TStatement("delete from Staff")); // their numbers are free again
                 return once;
             }});
}

} // namespace
