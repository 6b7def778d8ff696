#include "host/services/Services.h"

#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "support/TestUser.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

class Rights : public Services {
protected:
    Rights()
    {
        db.run("insert into UserAccount(Code, Name, IsAdmin, IsActive) values(5, 'clerk', 0, 1)");
        SeatUser(TUserInfo{5, "clerk", "A Clerk", false, true});
    }
    static bool have(TSoftwarePart part, TPermission right, bool tell = true)
    {
        return HavePermission(UserInfo, part, right, false, tell, {});
    }
};

TEST_F(Rights, AUserHoldsTheRightsThatTheTableNames)
{
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)");
    EXPECT_TRUE(have(cspTax, cpDelete));
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_FALSE(have(cspTax, cpOpen)) << "another right";
    EXPECT_FALSE(have(cspStaff, cpDelete)) << "another part";
    UserInfo.Code = 6;
    EXPECT_FALSE(have(cspTax, cpDelete)) << "another user";
}

TEST_F(Rights, ARefusalIsToldByTheHostWhenTheCallerWishes)
{
    EXPECT_FALSE(have(cspTax, cpDelete, false));
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_FALSE(have(cspTax, cpDelete, true));
    EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
    EXPECT_EQ(db.rows("select UserName, SoftwarePart, Permission, EventText from UserEvent"),
              u"clerk|802|3|رد شد: این کاربر این دسترسی را ندارد"_s);
    EXPECT_TRUE(messages.last().text.contains(SoftwarePartName(cspTax)));
    EXPECT_TRUE(messages.last().text.contains(PermissionName(cpDelete)));
}

TEST_F(Rights, AnAdministratorHoldsEveryRight)
{
    UserInfo.IsAdmin = true;
    SeatUser(UserInfo);
    EXPECT_TRUE(have(cspStaff, cpStaffFamilyPage));
    EXPECT_TRUE(have(cspPayrollInfo, cpPayrollSecondPage));
}

TEST_F(Rights, AnInactiveUserHoldsNone)
{
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)");
    UserInfo.IsActive = false;
    EXPECT_FALSE(have(cspTax, cpDelete));
    UserInfo.IsAdmin = true;
    SeatUser(UserInfo);
    EXPECT_FALSE(have(cspTax, cpDelete));
}

TEST_F(Rights, AUserWhoWasShutOutMeanwhileHoldsNone)
{
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)");
    EXPECT_TRUE(have(cspTax, cpDelete));
    db.run("update UserAccount set IsActive=0 where Code=5");
    EXPECT_FALSE(have(cspTax, cpDelete));
}

TEST_F(Rights, AnAdministratorWhoWasDemotedMeanwhileHoldsWhatIsLeft)
{
    SeatUser({5, "clerk", "A Clerk", true, true});
    EXPECT_TRUE(IsAdministrator(UserInfo));
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 6)");
    db.run("update UserAccount set IsAdmin=0 where Code=5");
    EXPECT_FALSE(IsAdministrator(UserInfo));
    EXPECT_FALSE(have(cspTax, cpDelete));
    EXPECT_TRUE(have(cspTax, cpOpen));
}

TEST_F(Rights, AUserWhoWasDeletedMeanwhileHoldsNoneWhateverRowsAreLeft)
{
    SeatUser({5, "clerk", "A Clerk", true, true});
    db.run("delete from UserAccount where Code=5");
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)"); // a forged one
    EXPECT_FALSE(have(cspTax, cpDelete));
    EXPECT_FALSE(IsAdministrator(UserInfo));
}

TEST_F(Rights, TheSampleCompanysAdministratorHasNoAccount)
{
    UserInfo = {0, "demo", {}, true, true};
    EXPECT_TRUE(have(cspTax, cpDelete));
    EXPECT_TRUE(IsAdministrator(UserInfo));
    UserInfo = {};
    EXPECT_FALSE(have(cspTax, cpDelete)) << "nobody is logged in";
    EXPECT_FALSE(IsAdministrator(UserInfo));
}

TEST_F(Rights, ADatabaseErrorRefuses)
{
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)");
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_FALSE(have(cspTax, cpDelete));
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_FALSE(have(cspTax, cpDelete, false));
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Rights, ARuleThatNeedsAnAnswerGetsTheErrorItself)
{
    EXPECT_FALSE(HoldsPermission(UserInfo, cspTax, cpDelete));
    db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 802, 3)");
    EXPECT_TRUE(HoldsPermission(UserInfo, cspTax, cpDelete));
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_THROW(HoldsPermission(UserInfo, cspTax, cpDelete), TDatabaseError);
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Rights, EveryRightThatIsOfferedHasAPartAndAName)
{
    QStringList seen;
    for (const TRightName &row : AllRights()) {
        const QString key = row.partName + u'/' + row.rightName;
        EXPECT_FALSE(seen.contains(key)) << key.toStdString();
        seen << key;
        EXPECT_NE(row.partName, QString::number(row.right.part));
        EXPECT_NE(row.rightName, QString::number(row.right.right));
    }
    EXPECT_GT(seen.size(), 20);
}

TEST_F(Rights, RightsAreReplacedAsAWhole)
{
    UserInfo = {0, "boss", {}, true, true};
    const QList<TRight> rights{{cspTax, cpOpen}, {cspTax, cpDelete}, {cspStaff, cpOpen}};
    EXPECT_TRUE(SetRightsOfUser(5, rights + rights));
    EXPECT_EQ(db.rows("select UserCode, SoftwarePart, Permission from UserRight order by 2, 3"),
              "5|802|3\n5|802|6\n5|806|6");
    EXPECT_EQ(RightsOfUser(5), (QList<TRight>{{cspTax, cpDelete}, {cspTax, cpOpen}, {cspStaff, cpOpen}}));
    EXPECT_TRUE(SetRightsOfUser(5, {{cspFiscal, cpNew}}));
    EXPECT_EQ(RightsOfUser(5), (QList<TRight>{{cspFiscal, cpNew}}));
}

TEST_F(Rights, RightsThatCannotBeWrittenStayAsTheyWere)
{
    UserInfo = {0, "boss", {}, true, true};
    EXPECT_TRUE(SetRightsOfUser(5, {{cspTax, cpOpen}}));
    db.failStatement(8, TFault::DiskFull);
    EXPECT_THROW((void)SetRightsOfUser(5, {{cspStaff, cpOpen}, {cspStaff, cpEdit}}), TDatabaseError);
    db.failStatement(0);
    EXPECT_EQ(RightsOfUser(5), (QList<TRight>{{cspTax, cpOpen}}));
    EXPECT_FALSE(db.connection().InTransaction());
}

class Events : public Services {};

TEST_F(Events, AnEventSaysWhoWhenWhereAndWhat)
{
    IniOptions.Com_Index = 7;
    SetUserEvent(cspTax, cpDelete, QString::fromUtf8("جدول 'الف'"), false, true);
    EXPECT_EQ(db.rows("select UserCode, UserName, Com_Index, SoftwarePart, Permission, EventText, OfSystem "
                      "from UserEvent"),
              QString::fromUtf8("1|admin|7|802|3|جدول 'الف'|0"));
    EXPECT_EQ(db.text("select EventDate from UserEvent"), NowDate());
    EXPECT_TRUE(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d$")
                    .match(db.text("select EventTime from UserEvent"))
                    .hasMatch());
}

TEST_F(Events, AnEventOfTheSystemIsMarked)
{
    SetUserEvent(cspTax, cpDelete, "x", true, true);
    EXPECT_EQ(db.text("select OfSystem from UserEvent"), "1");
}

TEST_F(Events, ALongTextIsCutToItsColumn)
{
    SetUserEvent(cspTax, cpDelete, QString(10000, QChar(0x06CC)), false, false);
    EXPECT_EQ(db.text("select EventText from UserEvent"), QString(400, QChar(0x06CC)));
    SetUserEvent(cspTax, cpDelete, QString(399, u'x') + QString::fromUtf8("😀"), false, false);
    EXPECT_EQ(db.text("select EventText from UserEvent order by ID desc"), QString(399, u'x'))
        << "half a character is none";
}

TEST_F(Events, AnErrorReachesTheCallerOrTheUser)
{
    db.failStatement(1, TFault::DiskFull);
    SetUserEvent(cspTax, cpDelete, "x", false, true);
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
    db.failStatement(1, TFault::DiskFull);
    EXPECT_THROW(SetUserEvent(cspTax, cpDelete, "x", false, false), TDatabaseError);
    EXPECT_EQ(messages.take(), QStringList());
}
