#include "tax/TaxScreens.h"

#include "support/KilledClerk.h"
#include "support/TestUser.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QRegularExpression>

#include <csignal>

using enum TAnswer;

// The editor's process dies between any two statements of a save: a real process, a real SIGKILL.
class TaxKill : public TaxScreens {
protected:
    /// Runs the clerk's process on this database; it is killed before statement `n` of the save. False: the save
    /// had fewer statements, and the process ended by itself.
    bool killedAt(int n, int code)
    {
        return KilledClerk::killedAt("TaxKillClerk.DISABLED_Saves", db.path(), n, code);
    }
};

// The killed process itself; only ever run by the tests below.
TEST(TaxKillClerk, DISABLED_Saves)
{
    const QString path = qEnvironmentVariable(KilledClerk::database);
    ASSERT_FALSE(path.isEmpty()) << "run by the tests of the killed editor only";
    TConnection connection;
    TestDatabase::open(connection, path);
    DM.ADOConnection1 = &connection;
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    ScriptedMessages messages;
    Tax_DM = new TTax_DM(nullptr);
    const int killAt = qEnvironmentVariableIntValue(KilledClerk::statement);
    const int code = qEnvironmentVariableIntValue(KilledClerk::code);
    {
        const std::unique_ptr<TTaxGet_FRM> editor(code == 0 ? new TTaxGet_FRM(cspTax, false, QString())
                                                            : new TTaxGet_FRM(cspTax, code, fmEdit, false));
        Keys::runModal(
            [&] { return editor->exec(); },
            [&](QWidget *) {
                Keys::waitFor([&] { return editor->isActiveWindow(); });
                Keys::retype(editor->Title_EDT, "new");
                ASSERT_TRUE(Tax_DM->TmpTax_Insert({editor->Code_EDT->asInteger(), 2001, 3000, 20, "x"}));
                Tax_DM->DetailList_QUR->close();
                Tax_DM->DetailList_QUR->open();
                int count = 0;
                connection.setStatementHook([&](const TStatement &) {
                    if (++count == killAt)
                        ::raise(SIGKILL);
                });
                Keys::press(editor.get(), Qt::Key_F3);
            });
    }
    connection.setStatementHook({});
    delete Tax_DM;
    Tax_DM = nullptr;
    DM.ADOConnection1 = nullptr;
}

TEST_F(TaxKill, AChangedTableIsWholeAndItsTypedBracketsAreOffered)
{
    const QString old = "0|1000|0\n1001|2000|10";
    const QString changed = old + "\n2001|3000|20";
    QStringList found;
    for (int n = 1; n < 40; ++n) {
        db.run("delete from Tax");
        db.run("delete from TaxMain");
        table(5, "old", old);
        const bool killed = killedAt(n, 5);
        const QString stored = permanent(5);
        const QString state = db.text("select Title from TaxMain") + ": " + stored;
        found << state;
        // The header and the brackets: each as it was, or as typed; never without brackets.
        EXPECT_TRUE((QStringList{"old: " + old, "new: " + old, "new: " + changed}).contains(state))
            << n << state.toStdString();
        const bool lost = killed && stored == old;
        recovery.asked.clear();
        recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
        edit(5, [&](TTaxGet_FRM &editor) {
            EXPECT_EQ(editor.Title_EDT->GetText(), db.text("select Title from TaxMain"));
            EXPECT_EQ(working().remove(QRegularExpression("^5\\|", QRegularExpression::MultilineOption)),
                      changed)
                << n;
            EXPECT_EQ(grid(editor)->model()->rowCount(), 3);
            EXPECT_EQ(editor.IsSaved(), !lost) << n;
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible()) << n << messages.take().join(' ').toStdString();
        });
        ASSERT_EQ(recovery.asked.size(), lost ? 1 : 0) << n;
        if (lost) {
            EXPECT_FALSE(recovery.asked[0].newRecord);
            EXPECT_EQ(recovery.asked[0].left[0].rows, 3);
        }
        EXPECT_EQ(permanent(5), changed) << n;
        EXPECT_EQ(working(), "");
        EXPECT_EQ(locks(), "") << n;
        EXPECT_EQ(db.text("select count(*) from WorkingRows"), "0") << n;
        if (!killed) {
            EXPECT_EQ(state, "new: " + changed);
            EXPECT_GE(n, 4);
            EXPECT_TRUE(found.contains("old: " + old)); // killed before the header
            EXPECT_TRUE(found.contains("new: " + old)); // and before the brackets
            return;
        }
    }
    FAIL() << "the save never ended by itself";
}

TEST_F(TaxKill, ANewTablesBracketsAreOfferedToTheNextNewOneOrToItself)
{
    for (int n = 1; n < 40; ++n) {
        db.run("delete from Tax");
        db.run("delete from TaxMain");
        const bool killed = killedAt(n, 0);
        const bool header = db.text("select count(*) from TaxMain") == "1";
        const QString brackets = permanent(1);
        EXPECT_TRUE(brackets.isEmpty() || (header && brackets == "2001|3000|20")) << n;
        const bool lost = killed && brackets.isEmpty();
        recovery.asked.clear();
        recovery.answers = {{TRecoveryChoice::TakeUp, {"1"}}};
        // A header that is stored without brackets gets its own back.
        edit(header ? 1 : 0, [&](TTaxGet_FRM &editor) {
            EXPECT_EQ(shown(editor), "2,001|3,000|20") << n;
            EXPECT_EQ(editor.Code_EDT->GetText(), header ? "1" : "2") << n;
            Keys::retype(editor.Title_EDT, "new");
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible()) << n << messages.take().join(' ').toStdString();
        });
        EXPECT_EQ(recovery.asked.size(), lost ? 1 : 0) << n;
        EXPECT_EQ(permanent(header ? 1 : 2), "2001|3000|20") << n;
        EXPECT_EQ(working(), "") << n;
        if (!killed) {
            EXPECT_EQ(brackets, "2001|3000|20");
            EXPECT_EQ(locks(), "");
            return;
        }
        ReleaseLeftLocks(1); // what the next start does: of a kill after the save
        EXPECT_EQ(locks(), "") << n;
    }
    FAIL() << "the save never ended by itself";
}

TEST_F(TaxKill, BracketsThatAreThrownAwayOrPutOffAreNotShown)
{
    table(5, "old", "0|1000|0");
    ASSERT_TRUE(killedAt(1, 5));
    {
        TTaxGet_FRM editor(cspTax, 5, fmEdit, false);
        EXPECT_EQ(editor.exec(), QDialog::Rejected) << "put off: the table does not open";
    }
    EXPECT_EQ(locks(), "");
    recovery.answers = {{TRecoveryChoice::Discard, {"5"}}};
    edit(5, [&](TTaxGet_FRM &editor) { EXPECT_EQ(shown(editor), "0|1,000|0"); });
    EXPECT_EQ(recovery.asked.size(), 2);
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(TaxKill, AnEditorOfAnotherWorkstationIsNotAskedAndNotRefused)
{
    table(5, "old", "0|1000|0");
    ASSERT_TRUE(killedAt(1, 5));
    IniOptions.Com_Index = 2;
    edit(5, [&](TTaxGet_FRM &editor) { EXPECT_EQ(shown(editor), "0|1,000|0"); });
    EXPECT_EQ(recovery.asked.size(), 0);
}
