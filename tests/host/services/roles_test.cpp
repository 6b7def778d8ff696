#include "host/services/Services.h"

#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "support/TestUser.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const int chief = 2, clerk = 3, auditor = 4;

} // namespace

class Roles : public Services {
protected:
    Roles()
    {
        for (const char *user : {"1, 'admin', 1, 1", "5, 'ali', 0, 1", "6, 'zahra', 0, 1"})
            db.run(u"insert into UserAccount(Code, Name, IsAdmin, IsActive) values(%1)"_s.arg(
                QLatin1String(user)));
        SeatUser(UserInfo);
    }
    static bool holds(int user, TSoftwarePart part, TPermission right)
    {
        return HoldsPermission({user, {}, {}, false, true}, part, right);
    }
    static TRole role(int code)
    {
        for (const TRole &role : ListRoles())
            if (role.code == code)
                return role;
        return {};
    }
    QString lastLine() { return db.text("select top 1 EventText from UserEvent order by ID desc"); }
};

TEST_F(Roles, FourRolesComeWithTheProgram)
{
    const QList<TRole> roles = ListRoles();
    ASSERT_EQ(roles.size(), 4);
    EXPECT_EQ(roles[0].code, AdministratorRole);
    for (const TRightName &one : AllRights()) {
        EXPECT_TRUE(role(chief).rights.contains(one.right))
            << one.partName.toStdString() << ' ' << one.rightName.toStdString();
        const TPermission right = one.right.right;
        const bool changes =
            right == cpNew || right == cpEdit || right == cpDelete || right == cpPayrollSecondPage;
        EXPECT_NE(role(auditor).rights.contains(one.right), changes)
            << one.partName.toStdString() << ' ' << one.rightName.toStdString();
    }
    EXPECT_TRUE(role(clerk).rights.contains({cspStaff, cpEdit}));
    EXPECT_FALSE(role(clerk).rights.contains({cspStaff, cpDelete}));
}

TEST_F(Roles, AUserHoldsTheRolesRightsAndTheOwnOnesInOneStatement)
{
    EXPECT_FALSE(holds(5, cspTax, cpOpen));
    EXPECT_EQ(SetRightsAndRoles(5, {{cspTax, cpDelete}}, {auditor}), TLoginResult::Ok);
    int statements = 0;
    db.connection().setStatementHook([&](const TStatement &) { ++statements; });
    EXPECT_TRUE(holds(5, cspTax, cpOpen));
    EXPECT_EQ(statements, 1);
    db.connection().setStatementHook({});
    EXPECT_TRUE(holds(5, cspTax, cpDelete));
    EXPECT_FALSE(holds(5, cspTax, cpEdit));
    EXPECT_FALSE(holds(6, cspTax, cpOpen)) << "another user";
    EXPECT_EQ(RightsOfUser(5), (QList<TRight>{{cspTax, cpDelete}}));
    EXPECT_EQ(RolesOfUser(5), QList<int>{auditor});
    db.run("update UserAccount set IsActive=0 where Code=5");
    EXPECT_FALSE(holds(5, cspTax, cpOpen));
}

TEST_F(Roles, AChangeOfARoleCountsAtOnceForAllWhoHaveIt)
{
    EXPECT_EQ(SetRightsAndRoles(5, {}, {clerk, auditor}), TLoginResult::Ok);
    TRole changed = role(clerk);
    changed.rights = {{cspTax, cpDelete}};
    EXPECT_EQ(SaveRole(changed), TLoginResult::Ok);
    EXPECT_TRUE(holds(5, cspTax, cpDelete));
    EXPECT_FALSE(holds(5, cspTax, cpEdit));
    EXPECT_EQ(DeleteRole(clerk), TLoginResult::Ok);
    EXPECT_FALSE(holds(5, cspTax, cpDelete));
    EXPECT_EQ(RolesOfUser(5), QList<int>{auditor});
    EXPECT_EQ(db.text("select count(*) from UserRoleRight where RoleCode=3"), "0");
}

TEST_F(Roles, OwnRolesAreMadeUnderNamesOfTheirOwn)
{
    TRole own{0, u" انبار\u202E "_s, {{cspTax, cpOpen}, {cspTax, cpOpen}}};
    EXPECT_EQ(SaveRole(own), TLoginResult::Ok);
    EXPECT_EQ(own.code, 5);
    EXPECT_EQ(role(5).name, u"انبار"_s);
    EXPECT_EQ(role(5).rights.size(), 1);
    TRole twin{0, u"حسابرس"_s, {}};
    EXPECT_EQ(SaveRole(twin), TLoginResult::NameTaken);
    TRole unnamed{0, u"\u200F "_s, {}};
    EXPECT_EQ(SaveRole(unnamed), TLoginResult::NameEmpty);
    TRole gone{77, u"x"_s, {}};
    EXPECT_EQ(SaveRole(gone), TLoginResult::NoSuchRole);
    EXPECT_EQ(DeleteRole(77), TLoginResult::NoSuchRole);
    TRole longName{0, QString(10000, u'x'), {}};
    EXPECT_EQ(SaveRole(longName), TLoginResult::Ok);
    EXPECT_EQ(longName.name.size(), 50);
}

TEST_F(Roles, TheAdministratorsRoleMakesAnAdministrator)
{
    EXPECT_EQ(SetRightsAndRoles(5, {}, {AdministratorRole}), TLoginResult::Ok);
    EXPECT_TRUE(holds(5, cspStaff, cpStaffFamilyPage));
    EXPECT_TRUE(IsAdministrator({5, {}, {}, false, true}));
    EXPECT_TRUE(ReadUser(5).user.IsAdmin);
    EXPECT_EQ(DeleteRole(AdministratorRole), TLoginResult::RoleStays);
    TRole renamed = role(AdministratorRole);
    renamed.name = u"سرپرست"_s;
    renamed.rights = {{cspTax, cpOpen}};
    EXPECT_EQ(SaveRole(renamed), TLoginResult::Ok);
    EXPECT_EQ(role(AdministratorRole).name, u"سرپرست"_s);
    EXPECT_TRUE(holds(5, cspStaff, cpDelete)) << "it holds all whatever it names";
}

TEST_F(Roles, TheLastAdministratorStaysWhateverMakesOne)
{
    TUserInfo boss{1, "admin", {}, false, true};
    EXPECT_EQ(SaveUser(boss, {}), TLoginResult::LastAdministrator);
    EXPECT_EQ(SetRightsAndRoles(5, {}, {AdministratorRole}), TLoginResult::Ok);
    EXPECT_EQ(SaveUser(boss, {}), TLoginResult::Ok) << "one by a role is left";
    SeatUser({5, "ali", {}, false, true});
    EXPECT_EQ(SetRightsAndRoles(5, {}, {}), TLoginResult::LastAdministrator);
    EXPECT_EQ(RolesOfUser(5), QList<int>{AdministratorRole});
    EXPECT_EQ(DeleteUser(5), TLoginResult::LastAdministrator);
    TUserInfo shutOut{5, "ali", {}, false, false};
    EXPECT_EQ(SaveUser(shutOut, {}), TLoginResult::LastAdministrator);
    EXPECT_FALSE(db.connection().InTransaction());
}

TEST_F(Roles, OnlyAnActiveAdministratorAtTheMomentOfTheDeedChangesThem)
{
    db.run("update UserAccount set IsAdmin=0 where Code=1");
    TRole own{0, u"x"_s, {}};
    EXPECT_EQ(SaveRole(own), TLoginResult::NotAdministrator);
    EXPECT_EQ(DeleteRole(clerk), TLoginResult::NotAdministrator);
    EXPECT_EQ(SetRightsAndRoles(5, {}, {AdministratorRole}), TLoginResult::NotAdministrator);
    EXPECT_EQ(SetRightsAndRoles(1, {}, {AdministratorRole}), TLoginResult::NotAdministrator);
    EXPECT_EQ(db.text("select count(*) from UserRole"), "4");
    EXPECT_EQ(db.text("select count(*) from UserRoleMember"), "0");
    EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
}

TEST_F(Roles, EveryChangeHasItsLineFromWhatToWhat)
{
    EXPECT_EQ(SetRightsAndRoles(5, {}, {auditor}), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"نقش های کاربر «ali»: از هیچ به حسابرس"_s);
    EXPECT_EQ(SetRightsAndRoles(5, {}, {clerk}), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"نقش های کاربر «ali»: از حسابرس به کارمند ثبت"_s);
    TRole own{0, u"انبار"_s, {}};
    EXPECT_EQ(SaveRole(own), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"نقش تازه «انبار»"_s);
    own.rights = {{cspTax, cpOpen}};
    EXPECT_EQ(SaveRole(own), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"دسترسی های نقش «انبار» در جداول مالیاتی: از هیچ به مشاهده"_s);
    own.name = u"انباردار"_s;
    EXPECT_EQ(SaveRole(own), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"نقش «انبار» اکنون «انباردار»"_s);
    EXPECT_EQ(SetRightsAndRoles(5, {}, {own.code}), TLoginResult::Ok);
    EXPECT_EQ(DeleteRole(own.code), TLoginResult::Ok);
    EXPECT_EQ(lastLine(), u"حذف نقش «انباردار»"_s);
    EXPECT_EQ(db.text("select count(*) from UserEvent where EventText like N'%گرفته شد%'"), "1");
    EXPECT_TRUE(CheckEventLog().isWhole());
    const int lines = db.text("select count(*) from UserEvent").toInt();
    EXPECT_EQ(SetRightsAndRoles(5, {}, {}), TLoginResult::Ok);
    EXPECT_EQ(db.text("select count(*) from UserEvent").toInt(), lines) << "nothing changed";
}

TEST_F(Roles, AUserAndARoleThatAreGoneAreTold)
{
    EXPECT_EQ(SetRightsAndRoles(77, {}, {auditor}), TLoginResult::NoSuchUser);
    EXPECT_EQ(SetRightsAndRoles(5, {{cspTax, cpOpen}}, {auditor, 77}), TLoginResult::NoSuchRole);
    EXPECT_EQ(RightsOfUser(5), QList<TRight>());
    EXPECT_EQ(SetRightsAndRoles(5, {}, {auditor}), TLoginResult::Ok);
    EXPECT_EQ(DeleteUser(5), TLoginResult::Ok);
    EXPECT_EQ(db.text("select count(*) from UserRoleMember"), "0");
}

TEST_F(Roles, ForgedRowsGiveNothingThatTheyDoNotName)
{
    db.run("insert into UserRoleRight(RoleCode, SoftwarePart, Permission) values(4, 999, 1)");
    db.run("insert into UserRoleRight(RoleCode, SoftwarePart, Permission) values(4, -802, -3)");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(77, 802, 3)");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 0, 0)");
    EXPECT_EQ(SetRightsAndRoles(5, {}, {auditor}), TLoginResult::Ok);
    EXPECT_EQ(db.text("select count(*) from UserEvent where EventText like '%از 0 به %'"), "1")
        << "what is taken away is told, known or not";
    EXPECT_FALSE(holds(5, cspTax, cpDelete));
    EXPECT_FALSE(holds(77, cspTax, cpDelete)) << "nobody has this code";
    EXPECT_FALSE(IsAdministrator({5, {}, {}, true, true}));
    // A role that is not there and a member who is not there are refused by the database.
    EXPECT_THROW(db.run("insert into UserRoleMember(UserCode, RoleCode) values(5, 88)"), TDatabaseError);
    EXPECT_THROW(db.run("insert into UserRoleMember(UserCode, RoleCode) values(88, 1)"), TDatabaseError);
}

// One of two programs; only ever run by the test below.
TEST(RoleTaker, DISABLED_TakesTheRoleAway)
{
    TConnection connection;
    TestDatabase::open(connection, qEnvironmentVariable("TAKES_DATABASE"));
    DM.ADOConnection1 = &connection;
    UserInfo = {qEnvironmentVariableIntValue("TAKES_OWN"), "x", {}, true, true};
    (void)SetRightsAndRoles(qEnvironmentVariableIntValue("TAKES_OTHER"), {}, {});
    DM.ADOConnection1 = nullptr;
    UserInfo = {};
}

TEST_F(Roles, OfTwoWhoTakeTheAdministratorsRoleFromEachOtherAtOnceOneStays)
{
    EXPECT_EQ(SetRightsAndRoles(6, {}, {AdministratorRole}), TLoginResult::Ok);
    for (int round = 0; round < 3; ++round) {
        db.run("update UserAccount set IsAdmin=1 where Code=1");
        EXPECT_EQ(SetRightsAndRoles(5, {}, {AdministratorRole}), TLoginResult::Ok);
        EXPECT_EQ(SetRightsAndRoles(6, {}, {AdministratorRole}), TLoginResult::Ok);
        db.run("update UserAccount set IsAdmin=0 where Code=1");
        QProcess programs[2];
        for (const int own : {0, 1}) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(u"TAKES_DATABASE"_s, db.path());
            environment.insert(u"TAKES_OWN"_s, QString::number(5 + own));
            environment.insert(u"TAKES_OTHER"_s, QString::number(6 - own));
            environment.remove(u"GTEST_OUTPUT"_s);
            programs[own].setProcessEnvironment(environment);
            programs[own].start(QCoreApplication::applicationFilePath(),
                                {u"--gtest_filter=RoleTaker.DISABLED_TakesTheRoleAway"_s,
                                 u"--gtest_also_run_disabled_tests"_s});
        }
        for (QProcess &program : programs)
            EXPECT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(db.text("select count(*) from UserRoleMember where RoleCode=1"), "1");
    }
}
