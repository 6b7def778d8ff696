#include "kills/Touched.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "entity/Entity_DM_UNT.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Method_declare_unt.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// The database roles that stand for no right of a part, held against what the services do.

namespace {

class ServiceRoles : public testing::Test {
protected:
    ServiceRoles()
    {
        IniOptions.Com_Index = 1;
        EXPECT_EQ(CreateFirstAdministrator(u"boss"_s, u"boss"_s, u"Right-Horse-7"_s), TLoginResult::Ok);
        UserInfo = LogIn(u"boss"_s, u"Right-Horse-7"_s).user;
        // Whose statements are not prepared yet.
        TestDatabase::open(connection, db.path());
        DM.ADOConnection1 = &connection;
        Touched::take();
    }
    ~ServiceRoles() override
    {
        UserInfo = {};
        DM.ADOConnection1 = &db.connection();
    }

    const Touched touched;
    TestDatabase db{TestDatabase::FileAlways};
    TConnection connection;
    ScriptedMessages messages;
};

TEST_F(ServiceRoles, EverybodysHoldsTheLogInTheOwnPasswordLocksAndTheWorkstation)
{
    EXPECT_EQ(LogIn(u"boss"_s, u"wrong"_s).result, TLoginResult::WrongNameOrPassword);
    EXPECT_EQ(LogIn(u"boss"_s, u"Right-Horse-7"_s).result, TLoginResult::Ok);
    EXPECT_EQ(ChangePassword(UserInfo.Code, u"Right-Horse-7"_s, u"Other-Horse-8"_s).result, TLoginResult::Ok);
    EXPECT_TRUE(RegisterWorkstation(1, u"desk"_s));
    EXPECT_TRUE(RegisterWorkstation(1, u"desk"_s));
    OperationOnLockCode_SoftwarePart(u"17"_s, cspStaff, 1, otLock, false);
    OperationOnLockCode_SoftwarePart(u"17"_s, cspStaff, 1, otUnlock, false);
    const QSet<QString> did = Touched::take();
    EXPECT_TRUE(did.contains(u"useraccount U"_s)) << Told(did);
    EXPECT_EQ(Told(did - Granted(EverydayServerRole())), "");
}

TEST_F(ServiceRoles, AdministrationsHoldsUsersWorkstationsLocksAndTheLog)
{
    TUserInfo clerk{0, u"clerk"_s, u"clerk"_s, false, true};
    EXPECT_EQ(SaveUser(clerk, u"Right-Horse-7"_s), TLoginResult::Ok);
    clerk.FullName = u"other"_s;
    EXPECT_EQ(SaveUser(clerk, {}), TLoginResult::Ok);
    EXPECT_TRUE(SetRightsOfUser(clerk.Code, {{cspStaff, cpOpen}}));
    EXPECT_TRUE(SetRightsOfUser(clerk.Code, {}));
    TRole role;
    role.name = u"role"_s;
    role.rights = {{cspStaff, cpOpen}};
    EXPECT_EQ(SaveRole(role), TLoginResult::Ok);
    role.rights = {{cspTax, cpOpen}};
    EXPECT_EQ(SaveRole(role), TLoginResult::Ok);
    EXPECT_EQ(SetRightsAndRoles(clerk.Code, {}, {role.code}), TLoginResult::Ok);
    RoleNamesOfUsers();
    TQuery matrix(&connection, u"Matrix_QUR"_s);
    matrix.setStatement("select * from UserRightSource_VW");
    matrix.open();
    EXPECT_EQ(DeleteRole(role.code), TLoginResult::Ok);
    EXPECT_EQ(DeleteUser(clerk.Code), TLoginResult::Ok);
    EXPECT_TRUE(RegisterWorkstation(2, u"other desk"_s));
    OperationOnLockCode_SoftwarePart(u"17"_s, cspStaff, 2, otLock, false);
    OperationOnLockCode_SoftwarePart(u"18"_s, cspTax, 2, otLock, false);
    for (const TCodeLock &lock : ListCodeLocks())
        if (lock.code == "18"_L1) {
            EXPECT_TRUE(ReleaseCodeLock(lock));
        }
    RemoveWorkstation(2);
    CheckEventLog();
    const QSet<QString> did = Touched::take();
    EXPECT_EQ(Told(did - Granted(EverydayServerRole()) - Granted(AdministrationServerRole())), "");
    EXPECT_EQ(Told(Granted(AdministrationServerRole()) - did), "") << "more than it does";
}

TEST_F(ServiceRoles, ThePicksHoldsWhatGoesIntoAnOrderOrAnOutput)
{
    {
        TEntity_DM entity(nullptr);
        for (const bool isDeduction : {false, true}) {
            entity.tmpRec_GetID(5, 1, isDeduction);
            entity.tmpRec_Insert(5, 1, isDeduction, 100);
        }
        entity.tmpstaffOutPutDetail_Get(5, 1);
        entity.tmpstaffOutPutDetail_Insert(5, 1, 0);
        entity.RepeatInfo(u"1"_s, u"5"_s);
    }
    const QSet<QString> did = Touched::take();
    EXPECT_TRUE(did.contains(u"tmprecfiscal I"_s)) << Told(did);
    EXPECT_EQ(Told(did - Granted(PickServerRole())), "");
}

} // namespace
