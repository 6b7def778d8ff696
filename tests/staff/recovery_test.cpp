#include "staff/Screens.h"

#include "host/NewBaseForms_PKG/RecoveryDialog_UNT.h"
#include "staff/StaffFamily_GetDetil_UNT.h"
#include "support/TestUser.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>
#include <QSet>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

class StaffRecovery : public StaffScreens {
protected:
    /// Another program of this suite on the same database, at one of the tasks below.
    std::unique_ptr<QProcess> program(const QString &task, int workstation = 1)
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KETEBIONPAP_TEST_DATABASE", db.path());
        environment.insert("KETEBIONPAP_TEST_WORKSTATION", QString::number(workstation));
        process->setProcessEnvironment(environment);
        process->start(QCoreApplication::applicationFilePath(),
                       {"--gtest_filter=StaffProgram.*" + task, "--gtest_also_run_disabled_tests"});
        return process;
    }
    static bool waitForLine(QProcess &process, const QByteArray &line)
    {
        QByteArray output;
        const QDeadlineTimer limit(20000);
        while (!limit.hasExpired() && !output.contains(line)) {
            if (process.state() == QProcess::NotRunning)
                break;
            process.waitForReadyRead(200);
            output += process.readAllStandardOutput();
        }
        return output.contains(line);
    }
    /// A program that is killed with an editor open: on a new employee with two family rows, or on employee 5.
    void killEditor(const QString &task, int workstation = 1)
    {
        const auto process = program(task, workstation);
        ASSERT_TRUE(waitForLine(*process, "open"));
        process->kill();
        ASSERT_TRUE(process->waitForFinished());
    }
};

} // namespace

TEST_F(StaffRecovery, RowsOfAKilledEditorAreTakenUpByTheNextNewEmployee)
{
    killEditor("LeavesANewEmployeeOpen");
    EXPECT_EQ(working(), "1|1|first\n2|1|second");
    EXPECT_EQ(locks(), "1|806|1");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"1"}}};
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->Code_EDT->GetText(), "2");
        EXPECT_EQ(working(), "1|2|first\n2|2|second");
        EXPECT_EQ(locks(), "2|806|1");
        EXPECT_EQ(editor->IsMarried_CMB->currentIndex(), 1); // the page with the rows is shown
        EXPECT_TRUE(editor->Staff_PC->isTabVisible(3));
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    ASSERT_EQ(recovery.asked.size(), 1);
    EXPECT_EQ(recovery.asked[0].left.size(), 1);
    EXPECT_EQ(recovery.asked[0].left[0].rows, 2);
    EXPECT_EQ(saved(), "1|2|first\n2|2|second");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

// The question that a clerk sees after a crash, and what an Esc by mistake costs then: nothing.
TEST_F(StaffRecovery, TheNextEditorAsksInADialogAndKeepsWhatWasTakenUpUntilTheClerkDecides)
{
    killEditor("LeavesANewEmployeeOpen");
    SetRecoveryChooser(nullptr);
    const auto editor = newEditor();
    messages.answer({Cancel, No});
    QTimer opened;
    QObject::connect(&opened, &QTimer::timeout, &opened, [&] {
        if (!editor->isActiveWindow())
            return;
        opened.stop();
        EXPECT_EQ(working(), "1|2|first\n2|2|second");
        EXPECT_FALSE(editor->IsSaved());
        press(*editor, Qt::Key_Escape);
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(working(), "1|2|first\n2|2|second");
        press(*editor, Qt::Key_Escape);
    });
    Keys::runModal([&] { return editor->exec(); },
                   [&](QWidget *dialog) {
                       ASSERT_TRUE(dynamic_cast<TRecovery_FRM *>(dialog));
                       Keys::picture(dialog, "staff_recovery");
                       opened.start(5);
                       Keys::press(dialog, Qt::Key_F3);
                   });
    EXPECT_EQ(messages.take(), QStringList({"MsgNotSaved()", "MsgNotSaved()"}));
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffRecovery, RowsOfAKilledEditorAreThrownAway)
{
    killEditor("LeavesANewEmployeeOpen");
    recovery.answers = {{TRecoveryChoice::Discard, {"1"}}};
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(working(), "");
        EXPECT_TRUE(Staff_DM->Family_QUR->isEmpty());
    });
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffRecovery, AllThatWasLeftBehindIsThrownAwayAtOnceRowsBeforeLocks)
{
    killEditor("LeavesANewEmployeeOpen");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('30',806,2)");
    addMember(9, 30, "another workstation", "tmpStaffFamily");
    recovery.answers = {{TRecoveryChoice::DiscardAll, {}}};
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(working(), "9|30|another workstation");
        const QStringList trace = db.trace();
        const qsizetype rows =
            trace.indexOf("Delete From TmpStaffFamily Where StaffCode  IN(Select Code From "
                          "CodeLock_TBL Where (Status=806) AND (Com_Index = 1))");
        const qsizetype heldLocks =
            trace.indexOf("Delete From CodeLock_TBL Where (Status=806) AND (Com_Index = 1)");
        EXPECT_GE(rows, 0);
        EXPECT_GT(heldLocks, rows);
        EXPECT_EQ(locks(), "30|806|2\n31|806|1");
    });
}

TEST_F(StaffRecovery, PutOffRowsWaitForTheNextOpening)
{
    killEditor("LeavesANewEmployeeOpen");
    const auto editor = newEditor();
    open(*editor, [&] { EXPECT_TRUE(Staff_DM->Family_QUR->isEmpty()); });
    EXPECT_EQ(working(), "1|1|first\n2|1|second");
    EXPECT_EQ(locks(), "1|806|1");
    const auto again = newEditor();
    open(*again, [] {});
    EXPECT_EQ(recovery.asked.size(), 2);
}

TEST_F(StaffRecovery, AnotherWorkstationIsNotAsked)
{
    killEditor("LeavesANewEmployeeOpen", 2);
    const auto editor = newEditor();
    open(*editor, [&] { EXPECT_EQ(editor->Code_EDT->GetText(), "2"); });
    EXPECT_EQ(recovery.asked.size(), 0);
    EXPECT_EQ(working(), "1|1|first\n2|1|second");
    EXPECT_EQ(locks(), "1|806|2");
}

TEST_F(StaffRecovery, AnExistingEmployeeTakesItsRowsUpWithoutTheSavedOnes)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "saved");
    killEditor("LeavesEmployeeFiveOpen");
    EXPECT_EQ(working(), "1|5|saved\n2|5|typed");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
    const auto editor = editorOf(5);
    open(*editor, [&] {
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
        press(*editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(saved(), "1|5|saved\n2|5|typed");
        // What is shown after a save that stays open is what was saved.
        EXPECT_EQ(working(), "1|5|saved\n2|5|typed");
        press(*editor, Qt::Key_F3);
    });
    ASSERT_EQ(recovery.asked.size(), 1);
    EXPECT_FALSE(recovery.asked[0].newRecord);
    EXPECT_EQ(saved(), "1|5|saved\n2|5|typed");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffRecovery, AnExistingEmployeeThrowsItsRowsAway)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "saved");
    killEditor("LeavesEmployeeFiveOpen");
    recovery.answers = {{TRecoveryChoice::Discard, {"5"}}};
    const auto editor = editorOf(5);
    open(*editor, [&] { EXPECT_EQ(working(), "1|5|saved"); });
    EXPECT_EQ(saved(), "1|5|saved");
    EXPECT_EQ(locks(), "");
}

// The save that stays reads the family again; what it reads is what the next save stores.
TEST_F(StaffRecovery, RowsTakenUpByANewEmployeeAreStillThereAfterSavingAndStayingAndSavingAgain)
{
    killEditor("LeavesANewEmployeeOpen");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"1"}}};
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        press(*editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(saved(), "1|2|first\n2|2|second");
        EXPECT_EQ(working(), "1|2|first\n2|2|second");
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList({savedMessage, savedMessage}));
    EXPECT_EQ(saved(), "1|2|first\n2|2|second");
    EXPECT_EQ(working(), "");
}

TEST_F(StaffRecovery, RowsOfAnExistingEmployeeAreNotOfferedToANewOneButWaitForTheirOwn)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "saved");
    killEditor("LeavesEmployeeFiveOpen");
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->Code_EDT->GetText(), "6");
        EXPECT_TRUE(Staff_DM->Family_QUR->isEmpty());
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(recovery.asked.size(), 0);
    EXPECT_EQ(working(), "1|5|saved\n2|5|typed");
    EXPECT_EQ(locks(), "5|806|1");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
    const auto own = editorOf(5);
    open(*own, [&] { press(*own, Qt::Key_F3); });
    ASSERT_EQ(recovery.asked.size(), 1);
    EXPECT_EQ(recovery.asked[0].left[0].code, "5");
    EXPECT_EQ(saved(), "1|5|saved\n2|5|typed");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

// The list of codes names the first row's code only, and that one is not offered.
TEST_F(StaffRecovery, RowsOfAnExistingEmployeeDoNotHideThoseOfANewOne)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "saved");
    killEditor("LeavesEmployeeFiveOpen");
    killEditor("LeavesANewEmployeeOpen");
    EXPECT_EQ(working(), "1|5|saved\n2|5|typed\n3|6|first\n4|6|second");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"6"}}};
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->Code_EDT->GetText(), "7");
        EXPECT_EQ(working(), "1|5|saved\n2|5|typed\n3|7|first\n4|7|second");
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    ASSERT_EQ(recovery.asked.size(), 1);
    ASSERT_EQ(recovery.asked[0].left.size(), 1);
    EXPECT_EQ(recovery.asked[0].left[0].code, "6");
    EXPECT_FALSE(recovery.asked[0].allOffered) << "all would take employee 5's rows with it";
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(saved(), "1|5|saved\n3|7|first\n4|7|second");
    EXPECT_EQ(locks(), "5|806|1");
}

TEST_F(StaffRecovery, AnEmployeeStoredAsSingleIsMarriedAgainWhenItsRowsAreTakenUp)
{
    add(5, "five", "five");
    killEditor("LeavesEmployeeFiveOpen");
    EXPECT_EQ(working(), "1|5|typed");
    recovery.answers = {{TRecoveryChoice::TakeUp, {"5"}}};
    const auto editor = editorOf(5);
    open(*editor, [&] {
        EXPECT_TRUE(editor->Staff_PC->isTabVisible(3));
        EXPECT_EQ(editor->IsMarried_CMB->currentIndex(), 1);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(value("IsMarried", 5), "1");
    EXPECT_EQ(saved(), "1|5|typed");
}

TEST_F(StaffRecovery, AnEmployeeStoredAsSingleStaysSingleWhenItsRowsAreThrownAway)
{
    add(5, "five", "five");
    killEditor("LeavesEmployeeFiveOpen");
    recovery.answers = {{TRecoveryChoice::Discard, {"5"}}};
    const auto editor = editorOf(5);
    open(*editor, [&] {
        EXPECT_FALSE(editor->Staff_PC->isTabVisible(3));
        EXPECT_EQ(editor->IsMarried_CMB->currentIndex(), 0);
    });
}

// No code is offered twice and none is lost, whoever asks.
TEST_F(StaffRecovery, EightProgramsAtOnceShareAThousandCodes)
{
    std::vector<std::unique_ptr<QProcess>> programs;
    for (int workstation = 1; workstation <= 8; ++workstation)
        programs.push_back(program("Saves125NewEmployees", workstation));
    QList<int> codes;
    for (const auto &process : programs) {
        ASSERT_TRUE(process->waitForFinished(300000));
        const QByteArray output = process->readAllStandardOutput();
        EXPECT_EQ(process->exitCode(), 0) << output.toStdString();
        for (const QByteArray &line : output.split('\n'))
            if (line.startsWith("code "))
                codes.append(line.mid(5).toInt());
    }
    EXPECT_EQ(codes.size(), 1000);
    EXPECT_EQ(QSet<int>(codes.begin(), codes.end()).size(), 1000);
    EXPECT_EQ(db.text("select count(*) from Staff"), "1000");
    EXPECT_EQ(db.text("select max(Code) from Staff"), "1000");
    EXPECT_EQ(locks(), "");
}

// The other programs of the tests above.
class StaffProgram : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qEnvironmentVariableIsSet("KETEBIONPAP_TEST_DATABASE"));
        TestDatabase::open(m_connection, qEnvironmentVariable("KETEBIONPAP_TEST_DATABASE"));
        DM.ADOConnection1 = &m_connection;
        IniOptions.Com_Index = qEnvironmentVariableIntValue("KETEBIONPAP_TEST_WORKSTATION");
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        Staff_DM = new TStaff_DM(nullptr);
    }
    void TearDown() override
    {
        delete Staff_DM;
        Staff_DM = nullptr;
        DM.ADOConnection1 = nullptr;
    }
    static void say(const QByteArray &line)
    {
        fputs(line + '\n', stdout);
        fflush(stdout);
    }
    static void addMember(const QString &name)
    {
        TStaffFamily_GetDetil_FRM member(int(cspStaff), Staff_DM->Family_QUR->statement().values().value(0));
        Keys::runModal([&] { return member.exec(); },
                       [&](QWidget *) {
                           Keys::type(member.Name_EDT, name);
                           Keys::press(&member, Qt::Key_F3);
                       });
    }
    static void stayOpen(TStaffGet_FRM &editor, const QStringList &members)
    {
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *) {
                           for (const QString &name : members)
                               addMember(name);
                           say("open");
                           Keys::waitFor([] { return false; }, 60000);
                       });
    }
    TConnection m_connection;
    ScriptedMessages m_messages;
};

TEST_F(StaffProgram, DISABLED_LeavesANewEmployeeOpen)
{
    TStaffGet_FRM editor(cspStaff, false, "1");
    stayOpen(editor, {"first", "second"});
}

TEST_F(StaffProgram, DISABLED_LeavesEmployeeFiveOpen)
{
    TStaffGet_FRM editor(cspStaff, 5, fmEdit, false);
    stayOpen(editor, {"typed"});
}

// 25 editors are opened, each goes on to four more employees.
TEST_F(StaffProgram, DISABLED_Saves125NewEmployees)
{
    const QStringList saved{u"MSGCompeletedSuccessfully(ذخيره سازي )"_s};
    for (int opened = 0; opened < 25; ++opened) {
        TStaffGet_FRM editor(cspStaff, false, "1");
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *) {
                           for (int next = 0; next < 5; ++next) {
                               const QString code = editor.Code_EDT->GetText();
                               editor.Name_EDT->SetText(code);
                               editor.LastName_EDT->SetText(code);
                               editor.InsuranceNumber_EDT->SetText({});
                               Keys::press(&editor, Qt::Key_F3,
                                           next < 4 ? Qt::ControlModifier : Qt::NoModifier);
                               ASSERT_EQ(m_messages.take(), saved);
                               say("code " + code.toLatin1());
                           }
                       });
        ASSERT_FALSE(HasFailure());
    }
}
