#include "staff/Screens.h"

#include "support/KilledClerk.h"
#include "support/TestUser.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "staff/StaffFamily_GetDetil_UNT.h"

#include <csignal>

using namespace Qt::Literals::StringLiterals;

// The editor's process dies between any two statements of a save: a real process, a real SIGKILL.
class StaffKill : public StaffScreens {
protected:
    /// Runs the clerk's process on this database; it is killed before statement `n` of the save. False: the save had
    /// fewer statements, and the process ended by itself.
    bool killedAt(int n, int code)
    {
        return KilledClerk::killedAt("StaffKillClerk.DISABLED_Saves", db.path(), n, code);
    }
    void empty()
    {
        for (const char *table : {"tmpStaffFamily", "StaffFamily", "Staff", "CodeLock_TBL"})
            db.run(u"delete from %1"_s.arg(QLatin1String(table)));
        recovery.asked.clear();
    }
};

// The killed process itself; only ever run by the tests below.
TEST(StaffKillClerk, DISABLED_Saves)
{
    const QString path = qEnvironmentVariable(KilledClerk::database);
    ASSERT_FALSE(path.isEmpty()) << "run by the tests of the killed editor only";
    TConnection connection;
    TestDatabase::open(connection, path);
    DM.ADOConnection1 = &connection;
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    ScriptedMessages messages;
    Staff_DM = new TStaff_DM(nullptr);
    const int killAt = qEnvironmentVariableIntValue(KilledClerk::statement);
    const int code = qEnvironmentVariableIntValue(KilledClerk::code);
    {
        const std::unique_ptr<TStaffGet_FRM> editor(code == 0
                                                        ? new TStaffGet_FRM(cspStaff, false, "1")
                                                        : new TStaffGet_FRM(cspStaff, code, fmEdit, false));
        Keys::runModal([&] { return editor->exec(); },
                       [&](QWidget *) {
                           Keys::waitFor([&] { return editor->isActiveWindow(); });
                           editor->StaffGroup_CMB->setCurrentIndex(1);
                           editor->Name_EDT->SetText("new");
                           editor->LastName_EDT->SetText("new");
                           const int own = editor->Code_EDT->asInteger();
                           TFamilly_Mapper member;
                           member._ID = Staff_DM->Family_GetNewCode();
                           member._StaffCode = own;
                           member._Name = "typed";
                           ASSERT_TRUE(Staff_DM->TmpFamily_Insert(member));
                           Staff_DM->FillDataFamilyList(own);
                           int count = 0;
                           connection.setStatementHook([&](const TStatement &) {
                               if (++count == killAt)
                                   ::raise(SIGKILL);
                           });
                           Keys::press(editor.get(), Qt::Key_F3);
                       });
    }
    connection.setStatementHook({});
    delete Staff_DM;
    Staff_DM = nullptr;
    DM.ADOConnection1 = nullptr;
}

TEST_F(StaffKill, AnEmployeeIsWholeAndItsFamilyIsStoredOrOffered)
{
    const QString old = "1|5|saved";
    const QString changed = old + "\n2|5|typed";
    QStringList found;
    for (int n = 1; n < 60; ++n) {
        empty();
        add(5, "old", "old", "IsMarried=1");
        addMember(1, 5, "saved");
        const bool killed = killedAt(n, 5);
        const QString state = value("Name", 5) + ": " + saved();
        found << state;
        // The family is cleared before the transaction; all the rest is one.
        EXPECT_TRUE((QStringList{"old: " + old, "old: ", "new: " + changed}).contains(state))
            << n << state.toStdString();
        // What the next start does first.
        ReleaseLeftLocks(1);
        const bool lost = state != "new: " + changed;
        EXPECT_EQ(locks(), lost ? "5|806|1" : "") << n;
        recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
        const auto editor = editorOf(5);
        open(*editor, [&] {
            EXPECT_EQ(working(), changed) << n;
            press(*editor, Qt::Key_F3);
            EXPECT_FALSE(editor->isVisible()) << n;
        });
        EXPECT_EQ(recovery.asked.size(), lost ? 1 : 0) << n;
        EXPECT_EQ(saved(), changed) << n;
        EXPECT_EQ(working(), "") << n;
        EXPECT_EQ(locks(), "") << n;
        messages.take();
        if (!killed) {
            EXPECT_TRUE(found.contains("old: " + old)) << "killed before the clearing";
            EXPECT_TRUE(found.contains("old: ")) << "and behind it";
            return;
        }
    }
    FAIL() << "the save never ended by itself";
}

TEST_F(StaffKill, ANewEmployeesFamilyIsStoredWithItOrOfferedToTheNextOne)
{
    for (int n = 1; n < 60; ++n) {
        empty();
        const bool killed = killedAt(n, 0);
        const bool stored = db.text("select count(*) from Staff") == "1";
        EXPECT_EQ(saved(), stored ? "1|1|typed" : "") << n;
        ReleaseLeftLocks(1);
        EXPECT_EQ(locks(), stored ? "" : "1|806|1") << n;
        // A copy of what is stored stays when it is killed between giving up the lock and clearing the rows.
        if (!stored || !working().isEmpty()) {
            EXPECT_EQ(working(), "1|1|typed") << n;
        }
        recovery.answers = {{TRecoveryChoice::TakeUp, {"1"}}};
        const auto editor = newEditor();
        if (!stored)
            messages.answer({TAnswer::No});
        open(*editor, [&] {
            EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), stored ? 0 : 1) << n;
            press(*editor, Qt::Key_Escape);
        });
        EXPECT_EQ(recovery.asked.size(), stored ? 0 : 1) << n;
        EXPECT_EQ(locks(), "") << n;
        if (!killed) {
            EXPECT_TRUE(stored);
            return;
        }
    }
    FAIL() << "the save never ended by itself";
}
