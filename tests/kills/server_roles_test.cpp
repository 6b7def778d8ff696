#include "kills/Deeds.h"
#include "kills/Touched.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/ScriptedRecovery.h"
#include "support/TestServer.h"
#include "support/TestUser.h"

#include "calcmethod/CalcMethodList_UNT.h"
#include "calender/Calender_List_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/ServerRoles_unt.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"
#include "host/database/Query.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "staff/StaffFamily_GetDetil_UNT.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffList_UNT.h"
#include "tax/TaxGet_UNT.h"
#include "tax/TaxList_UNT.h"
#include "tax/Tax_GetDetail_UNT.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <iostream>

using namespace Qt::Literals::StringLiterals;

// The database roles for people with a login of their own, held against what the screens do at each right: on the
// embedded file by its engine's word, on a server by a login that has these roles and nothing else.

namespace {

struct TWork {
    QString name;
    TSoftwarePart part;
    TPermission right;
    std::function<void()> work;
    QStringList before = {};
    const TDeed *deed = nullptr;
};

void show(TBaseDock_FRM &list)
{
    Keys::runModal([&] { return list.exec(); }, [](QWidget *screen) { Keys::press(screen, Qt::Key_Escape); });
}

template <class List>
std::function<void()> opens()
{
    return [] {
        List list(fmBrowse, {});
        show(list);
    };
}

TWork ofDeed(const char *name, TSoftwarePart part, TPermission right)
{
    for (const TDeed &deed : deeds())
        if (qstrcmp(deed.name, name) == 0)
            return {QLatin1String(name), part, right, [&deed] { deed.work([] {}); }, deed.before, &deed};
    ADD_FAILURE() << "no such deed: " << name;
    return {};
}

QList<TWork> groupWork(TSoftwarePart part, const QString &table)
{
    const auto edits = [part](int code) {
        return [part, code] {
            const TGroupKind &kind = *GroupKindOf(part);
            const std::unique_ptr<TGroupGet_FRM> screen(code == 0 ? new TGroupGet_FRM(kind)
                                                                  : new TGroupGet_FRM(kind, code));
            Keys::runModal([&] { return screen->exec(); },
                           [&](QWidget *) {
                               Keys::retype(screen->Name_EDT, u"new"_s);
                               Keys::press(screen.get(), Qt::Key_F3);
                           });
        };
    };
    const QStringList old{u"insert into %1(Code,Name) values(3,N'g')"_s.arg(table)};
    const QString name = u"group of %1, "_s.arg(table);
    return {{name + u"new"_s, part, cpNew, edits(0)},
            {name + u"edit"_s, part, cpEdit, edits(3), old},
            {name + u"delete"_s, part, cpDelete,
             [part] { TGroupList_FRM::Delete(*GroupKindOf(part), 3, part); }, old}};
}

void changesBracket()
{
    TTaxGet_FRM editor(cspTax, 5, fmEdit, false);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *) {
                       Keys::child(&editor, u"TaxDetail_List_GRD"_s)->setFocus();
                       Keys::runModal(
                           [&] {
                               Keys::press(&editor, Qt::Key_Asterisk, Qt::KeypadModifier);
                               return 0;
                           },
                           [](QWidget *screen) {
                               Keys::retype(Keys::child(screen, u"Percent_EDT"_s), u"7"_s);
                               Keys::press(screen, Qt::Key_F3);
                           });
                       editor.activateWindow();
                       Keys::press(&editor, Qt::Key_F3);
                   });
}

void changesMember()
{
    TStaffGet_FRM editor(cspStaff, 5, fmEdit, false);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *) {
                       Keys::press(&editor, Qt::Key_4, Qt::ControlModifier);
                       editor.findChild<TDetail_Rows_Frame *>()->Grid()->setFocus();
                       Keys::runModal(
                           [&] {
                               Keys::press(&editor, Qt::Key_Asterisk, Qt::KeypadModifier);
                               return 0;
                           },
                           [](QWidget *screen) {
                               Keys::retype(Keys::child(screen, u"Name_EDT"_s), u"new"_s);
                               Keys::press(screen, Qt::Key_F3);
                           });
                       editor.activateWindow();
                       Keys::press(&editor, Qt::Key_F3);
                   });
}

void choosesDeduction()
{
    const int id = DM.ADOConnection1->scalar(u"select min(ID) from PayrollInfoDetail where Type=1"_s).toInt();
    TPayrollInfoDetail_FRM screen(cspPayrollInfo, 1, fmEdit, id);
    Keys::runModal([&] { return screen.exec(); },
                   [&](QWidget *) {
                       Keys::retype(screen.FiscalDeducationCode_EDT, u"901"_s);
                       Keys::press(&screen, Qt::Key_F3);
                   });
}

/// The same rows as before another work.
QStringList rowsOf(const char *name)
{
    return ofDeed(name, cspTax, cpEdit).before;
}

/// Every right with the work that it is for.
QList<TWork> allWork()
{
    QList<TWork> all{
        {u"opens methods"_s, cspCalcMethod, cpOpen, opens<TCalcMethodList_FRM>()},
        {u"opens taxes"_s, cspTax, cpOpen, opens<TTaxList_FRM>()},
        {u"opens days"_s, cspCalender, cpOpen, opens<TCalender_List_FRM>()},
        {u"opens staff"_s, cspStaff, cpOpen, opens<TStaffList_FRM>()},
        {u"opens earnings"_s, cspFiscal, cpOpen,
         [] {
             TFiscalDeducation_List_FRM list(fmBrowse, 0, {});
             show(list);
         }},
        {u"opens deductions"_s, cspDeduction, cpOpen,
         [] {
             TFiscalDeducation_List_FRM list(fmBrowse, 1, {});
             show(list);
         }},
        ofDeed("settings", cspPayrollInfo, cpOpen),
        ofDeed("settings item", cspPayrollInfo, cpPayrollSecondPage),
        {u"chooses a deduction"_s,
         cspPayrollInfo,
         cpPayrollSecondPage,
         choosesDeduction,
         {u"insert into Deduction(Code,Title) values(901,'d')"_s}},
        ofDeed("new method", cspCalcMethod, cpNew),
        ofDeed("changed method", cspCalcMethod, cpEdit),
        ofDeed("deleted method", cspCalcMethod, cpDelete),
        ofDeed("new tax table", cspTax, cpNew),
        ofDeed("changed tax table", cspTax, cpEdit),
        {u"changes a bracket"_s, cspTax, cpEdit, changesBracket, rowsOf("changed tax table")},
        ofDeed("deleted tax table", cspTax, cpDelete),
        ofDeed("generated days", cspCalender, cpNew),
        ofDeed("changed day", cspCalender, cpEdit),
        ofDeed("deleted days", cspCalender, cpDelete),
        ofDeed("new employee", cspStaff, cpNew),
        ofDeed("changed employee", cspStaff, cpEdit),
        ofDeed("family", cspStaff, cpEdit),
        {u"changes a member"_s, cspStaff, cpEdit, changesMember, rowsOf("family")},
        ofDeed("deleted employee", cspStaff, cpDelete),
        ofDeed("new earning", cspFiscal, cpNew),
        ofDeed("changed earning", cspFiscal, cpEdit),
        ofDeed("deleted earning", cspFiscal, cpDelete),
        ofDeed("new deduction", cspDeduction, cpNew),
        ofDeed("changed deduction", cspDeduction, cpEdit),
        ofDeed("deleted deduction", cspDeduction, cpDelete),
    };
    return all;
}

QList<TWork> allGroupWork()
{
    QList<TWork> all;
    all += groupWork(cspStaffGroup, u"StaffGroup"_s);
    all += groupWork(cspFiscalGrp, u"FiscalGrp"_s);
    all += groupWork(cspDeductionGrp, u"DeductionGrp"_s);
    all += groupWork(cspPerson, u"PersonGroup"_s);
    return all;
}

/// A clerk with all rights of the program at work on the connection.
class TSeat {
public:
    explicit TSeat(TConnection &connection)
    {
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        UserInfo = TUserInfo{1, u"clerk"_s, u"clerk"_s, true, true};
        const TAnswer yes = TAnswer::Yes;
        messages.answer({yes, yes, yes, yes, yes, yes, yes, yes});
    }
    ~TSeat()
    {
        DM.ADOConnection1 = nullptr;
        UserInfo = {};
    }
    ScriptedMessages messages;
    ScriptedRecovery recovery;
};

void lay(TConnection &connection, const QStringList &rows)
{
    connection.execute(TStatement(u"insert into UserAccount(Code,Name,IsAdmin) values(1,N'clerk',1)"_s));
    if (!rows.join(u' ').contains("into StaffGroup"_L1))
        connection.execute(TStatement(u"insert into StaffGroup(Code,Name) values(1,N'g')"_s));
    for (const QString &row : rows)
        connection.execute(TStatement(row));
}

TEST(ServerRoles, HoldWhatTheScreensDoAtEachRightAndNothingElse)
{
    QMap<QString, QSet<QString>> used; // by role
    for (const TWork &work : allWork() + allGroupWork()) {
        SCOPED_TRACE(work.name.toStdString());
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"roles.db"_s);
        {
            TConnection owner;
            owner.openFile(path);
            lay(owner, work.before);
        }
        const Touched touched;
        TConnection connection;
        connection.openFile(path);
        QSet<QString> did;
        {
            const TSeat seat(connection);
            const DataModules modules;
            Touched::take();
            work.work();
            did = Touched::take();
        }
        const QSet<QString> everyday = Granted(EverydayServerRole());
        const QSet<QString> open = Granted(ServerRoleOf({work.part, cpOpen}));
        const TServerRole role = ServerRoleOf({work.part, work.right});
        EXPECT_EQ(Told(did - everyday - open - Granted(role)), "") << "what its roles do not allow";
        used[role.name] += did;
    }
    for (const TRightName &row : AllRights()) {
        const TServerRole role = ServerRoleOf(row.right);
        if (row.right.right == cpStaffFamilyPage || row.right.right == cpPrint) {
            EXPECT_TRUE(role.grants.isEmpty()) << "a page is the program's own affair";
            continue;
        }
        EXPECT_TRUE(used.contains(role.name)) << role.name.toStdString() << " was not tried";
        QSet<QString> needed = used[role.name];
        if (row.right.right ==
            cpNew) // after a save that broke half way, its editor stores as that of an old record
            needed += used[ServerRoleOf({row.right.part, cpEdit}).name];
        EXPECT_EQ(Told(Granted(role) - needed), "")
            << role.name.toStdString() << " has more than its screens do";
    }
}

TEST(ServerRoles, LetNobodyChangeTheLogOrMakeUsersButWhoManagesThem)
{
    QList<TServerRole> all{EverydayServerRole(), PickServerRole()};
    for (const TRightName &row : AllRights())
        all << ServerRoleOf(row.right);
    for (const TServerRole &role : all) {
        const QSet<QString> may = Granted(role);
        for (const char *none :
             {"userevent U", "userevent D", "useraccount I", "useraccount D", "userright I", "userright U",
              "userright D", "usereventhead I", "usereventhead D"})
            EXPECT_FALSE(may.contains(QLatin1String(none))) << role.name.toStdString() << ": " << none;
        for (const TServerGrant &grant : role.grants)
            if (grant.object == "UserAccount"_L1 && grant.deeds.contains(u'U')) {
                EXPECT_EQ(grant.columns, "FailedCount, NextTry, PasswordHash"_L1);
            }
    }
    EXPECT_FALSE(Granted(AdministrationServerRole()).contains(u"userevent D"_s));
}

class ServerRolesOnAServer : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        TestServer::emptyDatabase();
        run(u"create login %1 with password = '%2'"_s.arg(name, password), u"master"_s);
        made = true;
        run(u"create user %1 for login %1 with default_schema = dbo"_s.arg(name));
        for (int time = 0; time < 2; ++time) // it may be run again
            run(ServerRolesScript());
        setMember({EverydayServerRole().name}, true);
    }
    void TearDown() override
    {
        if (!made)
            return;
        run(u"drop user "_s + name);
        run(u"drop login "_s + name, u"master"_s);
    }
    static QStringList roles()
    {
        QStringList all{EverydayServerRole().name, PickServerRole().name, AdministrationServerRole().name};
        for (const TRightName &row : AllRights())
            all << ServerRoleOf(row.right).name;
        return all;
    }
    static void run(const QString &sql, const QString &place = TestServer::ownDatabase().name())
    {
        TestServer::runOnServer(sql, place);
    }
    QString place() const
    {
        const QString own = TestServer::ownDatabase().connectionString();
        return TestServer::with(TestServer::with(own, u"UID"_s, name), u"PWD"_s, password);
    }
    void setMember(QStringList of, bool isMember)
    {
        QString sql;
        of.removeDuplicates();
        for (const QString &role : of)
            if (roles().contains(role)) // not every part is opened by a right of its own
                sql += u"alter role %1 %2 member %3\n"_s.arg(role, isMember ? u"add"_s : u"drop"_s, name);
        if (!sql.isEmpty())
            run(sql);
    }
    /// Lays the rows, lets the clerk work, and tells which tables are others now; what was said is in `said`.
    QStringList changed(const TWork &work)
    {
        TestServer::emptyDatabase();
        TConnection owner;
        owner.openOdbc(TestServer::ownDatabase().connectionString());
        QStringList rows, numberedRows;
        for (const QString &row : work.before) {
            // A file lets a row bring the number that a server gives by itself.
            static const QRegularExpression numbered(u"^insert into (Calender)\\(ID,"_s);
            const QString table = numbered.match(row).captured(1);
            if (table.isEmpty())
                rows << row;
            else
                numberedRows << u"set identity_insert %1 on %2 set identity_insert %1 off"_s.arg(table, row);
        }
        lay(owner, rows);
        for (const QString &row : numberedRows)
            run(row);
        const TDeed &any = deeds().first();
        DM.ADOConnection1 = &owner;
        const TStored before = storedRows(work.deed ? *work.deed : any);
        {
            TConnection clerk;
            clerk.openOdbc(place());
            TSeat seat(clerk);
            const DataModules modules;
            Guarded(work.work); // as the menu does
            said.clear();
            for (const TMessage &message : seat.messages.all())
                said << message.text;
        }
        DM.ADOConnection1 = &owner;
        const TStored after = storedRows(work.deed ? *work.deed : any);
        DM.ADOConnection1 = nullptr;
        QStringList tables;
        for (auto it = after.begin(); it != after.end(); ++it)
            if (*it != before[it.key()])
                tables << it.key();
        return tables;
    }
    /// What the server says to a statement of the clerk's.
    TFault faultOf(const QString &statement) const
    {
        try {
            TConnection clerk;
            clerk.openOdbc(place());
            clerk.execute(TStatement(statement));
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        return TFault::Other;
    }
    /// Each work is done with its role, and refused without it.
    void mustHold(const QList<TWork> &works);
    bool noRightWasTold() const
    {
        return said.join(u'\n').contains(TDatabaseError(TFault::NoRight, {}).userText());
    }

    const QString name = u"roles_%1"_s.arg(QCoreApplication::applicationPid());
    const QString password = u"Aa1-roles-77"_s;
    QStringList said;
    bool made = false;
};

TEST_F(ServerRolesOnAServer, LetALoginDoTheWorkOfItsRightsAndNoOther)
{
    mustHold(allWork());
}

TEST_F(ServerRolesOnAServer, LetALoginDoTheWorkOnGroupsAndNoOther)
{
    mustHold(allGroupWork());
}

void ServerRolesOnAServer::mustHold(const QList<TWork> &works)
{
    for (const TWork &work : works) {
        SCOPED_TRACE(work.name.toStdString());
        std::cout << work.name.toStdString() << std::endl;
        const QString open = ServerRoleOf({work.part, cpOpen}).name;
        const QString role = ServerRoleOf({work.part, work.right}).name;
        const bool stores = work.right != cpOpen || work.deed;
        setMember({open, role}, true);
        const QStringList with = changed(work);
        EXPECT_FALSE(noRightWasTold()) << said.join(u'\n').toStdString();
        if (stores && work.part != cspPerson) { // whose table is not among the stored ones
            EXPECT_FALSE(with.isEmpty()) << said.join(u'\n').toStdString();
        }
        setMember({role}, false);
        if (work.deed && work.right == cpOpen) { // the window does not even come
            EXPECT_EQ(faultOf(u"update PayrollInfo set Value=N'x'"_s), TFault::NoRight);
        } else {
            QStringList without;
            {
                // Where even the window's first statement is refused there is no window to type in.
                testing::TestPartResultArray unshown;
                const testing::ScopedFakeTestPartResultReporter quiet(
                    testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &unshown);
                without = changed(work);
            }
            EXPECT_EQ(without, QStringList()) << "without its role";
            EXPECT_TRUE(noRightWasTold()) << said.join(u'\n').toStdString();
        }
        if (role != open)
            setMember({open}, false);
    }
}

TEST_F(ServerRolesOnAServer, KeepALoginWithEveryRightOfAClerkFromUsersRightsTheLogAndTheTables)
{
    QStringList clerk = roles();
    clerk.removeAll(AdministrationServerRole().name);
    clerk.removeAll(EverydayServerRole().name);
    setMember(clerk, true);
    run(u"insert into UserAccount(Code,Name,IsAdmin) values(1,N'clerk',0)"_s);
    for (const char *deed :
         {"update UserAccount set IsAdmin=1 where Code=1",
          "insert into UserAccount(Code,Name) values(2,N'x')", "delete from UserAccount",
          "insert into UserRight(UserCode,SoftwarePart,Permission) values(1,806,2)", "delete from UserRight",
          "update UserEvent set EventText=N'x'", "delete from UserEvent", "delete from UserEventHead",
          "delete from Workstation", "update Perinf set Name=N'x'", "alter table Staff add Other int null",
          "drop table Staff"})
        EXPECT_EQ(faultOf(QLatin1String(deed)), TFault::NoRight) << deed;
    EXPECT_EQ(faultOf(u"update UserAccount set FailedCount=1 where Code=1"_s), TFault::Other) << "is done";
}

} // namespace
