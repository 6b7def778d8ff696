#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "support/TestUser.h"

using namespace Qt::Literals::StringLiterals;

/// What a clerk may do is asked when it is done, not when the screen was opened.
class Standing : public Things {
protected:
    Standing()
    {
        db.run("insert into Thing(Code, Title) values(7, 'seven')");
        db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 1)");
        db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)");
        SeatUser({5, "maryam", {}, false, true});
    }
    /// Types into an open editor, takes something away, and sees the save refused with these words; then gives it back.
    void refused(TThingGet_FRM &editor, const QString &takeAway, const QStringList &giveBack,
                 const QString &words)
    {
        const QString before = titles();
        open(editor, [&] {
            Keys::retype(editor.Title_EDT, "typed");
            db.run(takeAway);
            messages.take();
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take().size(), 1);
            const QString told = messages.last().text;
            EXPECT_TRUE(told.contains(words)) << told.toStdString();
            EXPECT_TRUE(told.contains(u"روی صفحه می ماند"_s)) << told.toStdString();
            EXPECT_EQ(titles(), before);
            EXPECT_TRUE(editor.isVisible());
            EXPECT_EQ(editor.Title_EDT->GetText(), "typed");
            EXPECT_FALSE(editor.IsSaved());
            EXPECT_TRUE(db.text("select EventText from UserEvent order by ID desc").startsWith(u"رد شد: "_s));
            for (const QString &sql : giveBack)
                db.run(sql);
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible());
        });
        EXPECT_TRUE(titles().contains("typed"));
    }
};

TEST_F(Standing, AChangeIsRefusedWhenTheRightToEditWasTakenAwayMeanwhile)
{
    TThingGet_FRM editor(7);
    refused(editor, "delete from UserRight where UserCode=5 and Permission=2",
            {"insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)"},
            PermissionName(cpEdit));
}

TEST_F(Standing, AChangeOfALockedRecordIsRefusedInTheReadThatLooksAtTheLock)
{
    TThingGet_FRM editor(7);
    editor.lockedWord = u"چیز"_s;
    refused(editor, "delete from UserRight where UserCode=5 and Permission=2",
            {"insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)"},
            PermissionName(cpEdit));
}

TEST_F(Standing, ANewRecordIsRefusedWhenTheRightToAddWasTakenAwayMeanwhile)
{
    TThingGet_FRM editor;
    refused(editor, "delete from UserRight where UserCode=5 and Permission=1",
            {"insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 1)"},
            PermissionName(cpNew));
}

TEST_F(Standing, ANewRecordNeedsNoRightToEdit)
{
    db.run("delete from UserRight where UserCode=5 and Permission=2");
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        Keys::retype(editor.Title_EDT, "first again");
        Keys::press(&editor, Qt::Key_F3); // the same screen, opened as a new record
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_TRUE(titles().contains("first again"));
}

TEST_F(Standing, WhoWasShutOutMeanwhileIsToldSo)
{
    TThingGet_FRM editor(7);
    refused(editor, "update UserAccount set IsActive=0 where Code=5",
            {"update UserAccount set IsActive=1 where Code=5"}, u"غیر فعال شده است"_s);
}

TEST_F(Standing, WhoWasDeletedMeanwhileIsToldSo)
{
    TThingGet_FRM editor(7);
    refused(editor, "delete from UserAccount where Code=5",
            {"insert into UserAccount(Code, Name, IsAdmin, IsActive) values(5, 'maryam', 0, 1)",
             "insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 2)"},
            u"حذف شده است"_s);
}

TEST_F(Standing, AnAdministratorWhoWasDemotedMeanwhileNeedsTheRight)
{
    db.run("delete from UserRight");
    SeatUser({5, "maryam", {}, true, true});
    TThingGet_FRM editor(7);
    refused(editor, "update UserAccount set IsAdmin=0 where Code=5",
            {"update UserAccount set IsAdmin=1 where Code=5"}, PermissionName(cpEdit));
}

TEST_F(Standing, AnErrorOfTheQuestionSavesNothing)
{
    TThingGet_FRM editor(7);
    open(editor, [&] {
        Keys::retype(editor.Title_EDT, "typed");
        messages.take();
        db.failStatement(1, TFault::ConnectionLost);
        Keys::press(&editor, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_EQ(titles(), "7|seven");
        EXPECT_EQ(editor.Title_EDT->GetText(), "typed");
        editor.SetIsSaved(true);
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(Standing, TheLookAtTheLockAndTheQuestionForTheRightAreOneStatement)
{
    TThingGet_FRM editor;
    open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        QStringList statements;
        db.connection().setStatementHook(
            [&](const TStatement &statement) { statements << statement.boundText(); });
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(statements.filter("CodeLock_TBL").size(), 1);
        EXPECT_EQ(statements.filter("UserAccount"), statements.filter("CodeLock_TBL"));
        db.connection().setStatementHook({});
        Keys::press(&editor, Qt::Key_Escape);
    });
}

TEST_F(Standing, RowsThatWereForgedIntoTheRightsGiveNothingButWhatTheySay)
{
    db.run("delete from UserRight");
    for (const char *row : {"(5, 813, 0)", "(5, 813, -2)", "(5, 0, 2)", "(0, 813, 2)", "(-5, 813, 2)",
                            "(5, 999999, 2)", "(5, 813, 2147483647)", "(50, 813, 2)"})
        db.run(u"insert into UserRight(UserCode, SoftwarePart, Permission) values"_s + QLatin1String(row));
    EXPECT_EQ(StandingOf(UserInfo, cspCalcMethod, cpEdit), TStanding::NoRight);
    EXPECT_EQ(StandingOf(UserInfo, cspTax, cpEdit), TStanding::NoRight);
    EXPECT_FALSE(HoldsPermission(UserInfo, cspCalcMethod, cpEdit));
    EXPECT_FALSE(IsAdministrator(UserInfo));
}
