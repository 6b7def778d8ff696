#include "kills/Deeds.h"
#include "kills/Killer.h"
#include "support/ScriptedMessages.h"
#include "support/ScriptedRecovery.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/Query.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <iostream>

using namespace Qt::Literals::StringLiterals;

// A workstation's process dies anywhere in a save: a real process at its real screens, a real SIGKILL before or within
// any statement and any write() of the file. What the next start finds is all or nothing (or what the given order of a
// save's steps leaves), what was typed into working rows is offered, no lock stays, and the clerk can do it again.
// KETEBIONPAP_TEST_KILLS=1000 makes so many kills; else there are a few of each kind.

namespace {

void yesToAll(ScriptedMessages &messages)
{
    messages.answer({TAnswer::Yes, TAnswer::Yes, TAnswer::Yes, TAnswer::Yes, TAnswer::Yes, TAnswer::Yes});
}

/// One start of the workstation's program on a database file.
class Start {
public:
    explicit Start(const QString &file)
    {
        connection.openFile(file);
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, u"clerk"_s, u"clerk"_s, true, true});
        yesToAll(messages);
    }
    ~Start()
    {
        modules.reset();
        DM.ADOConnection1 = nullptr;
        UserInfo = {};
    }
    QString rows(const QString &sql)
    {
        TQuery query(&connection, u"rows"_s);
        query.setStatement(TStatement(sql));
        query.open();
        QStringList lines;
        for (int row = 0; row < query.recordCount(); ++row) {
            QStringList cells;
            for (int i = 0; i < query.fields().size(); ++i)
                cells << query.valueAt(row, i).toString();
            lines << cells.join(u'|');
        }
        return lines.join(u'\n');
    }
    TConnection connection;
    ScriptedMessages messages;
    ScriptedRecovery recovery;
    std::unique_ptr<DataModules> modules;
};

const char *const working = "select Name, BirthDate from tmpStaffFamily order by 1";
const char *const workingBrackets = "select FromSalary, ToSalary from TmpTax order by 1";

} // namespace

class Kills : public testing::TestWithParam<int> {
protected:
    const TDeed &deed() const { return deeds().at(GetParam()); }
    QString file() const { return folder.filePath(u"kill.db"_s); }
    /// A new database with the deed's first rows.
    void lay()
    {
        for (const char *end : {"", "-wal", "-shm"})
            QFile::remove(file() + QLatin1String(end));
        ASSERT_TRUE(QFile::copy(prepared(), file()));
    }
    QString prepared()
    {
        const QString path = folder.filePath(u"prepared.db"_s);
        if (!QFile::exists(path)) {
            TConnection connection;
            connection.openFile(path);
            connection.execute(TStatement(u"insert into StaffGroup(Code,Name) values(1,N'g')"_s));
            connection.execute(
                TStatement(u"insert into UserAccount(Code,Name,IsAdmin) values(1,N'clerk',1)"_s));
            for (const QString &row : deed().before)
                connection.execute(TStatement(row));
            connection.close();
        }
        return path;
    }
    /// Runs a clerk's process that dies at a point (0: it does not). Answers the points it passed, -1 when it was
    /// killed.
    int clerk(int at)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"KILLS_DATABASE"_s, file());
        environment.insert(u"KILLS_DEED"_s, QString::number(GetParam()));
        environment.insert(u"KILLS_AT"_s, QString::number(at));
        environment.remove(u"GTEST_OUTPUT"_s);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      {u"--gtest_filter=KillsClerk.DISABLED_Works"_s, u"--gtest_also_run_disabled_tests"_s});
        EXPECT_TRUE(process.waitForFinished(60000));
        if (process.exitStatus() == QProcess::CrashExit)
            return -1;
        const QString said = QString::fromUtf8(process.readAll());
        EXPECT_EQ(process.exitCode(), 0) << said.toStdString();
        const qsizetype points = said.indexOf(u"points passed: "_s);
        EXPECT_GE(points, 0) << said.toStdString();
        return points < 0 ? 0 : said.mid(points + 15).section(u'\n', 0, 0).toInt();
    }
    void kill(int at)
    {
        lay();
        const int passed = clerk(at);
        ASSERT_EQ(passed, -1) << deed().name << " was not killed at " << at;
        ++killed;
        const std::string where = std::string(deed().name) + " at " + std::to_string(at);
        Start next(file());
        EXPECT_EQ(next.rows(u"pragma integrity_check"_s), u"ok"_s) << where;
        EXPECT_EQ(next.rows(u"pragma foreign_key_check"_s), QString()) << where;
        const TStored now = storedRows(deed());
        const bool done = now == after;
        const bool nothing = now == before;
        if (!done && !nothing) {
            EXPECT_TRUE(deed().between && deed().between(now, before, after)) << where << tell(now);
            ++between;
        }
        ReleaseLeftLocks(1);
        // Rows that are stored nowhere else hold their lock, or their note, until they are taken up.
        const QString family = next.rows(QLatin1String(working));
        const QString brackets = next.rows(QLatin1String(workingBrackets));
        const bool left =
            !done && ((!family.isEmpty() &&
                       family != next.rows(u"select Name, BirthDate from StaffFamily order by 1"_s)) ||
                      (!brackets.isEmpty() &&
                       brackets != next.rows(u"select FromSalary, ToSalary from Tax order by 1"_s)));
        if (!left && !done) {
            EXPECT_EQ(next.rows(u"select Code, Status from CodeLock_TBL"_s), QString()) << where;
        }
        // The clerk does it again; done already, there is nothing left behind.
        if (!done) {
            next.recovery.answers = {TRecoveryChoice{TRecoveryChoice::TakeUp, leftCodes(next)}};
            next.modules = std::make_unique<DataModules>();
            deed().work([] {});
            EXPECT_EQ(next.recovery.asked.size(), left ? 1 : 0) << where;
            offered += next.recovery.asked.size();
            const TStored again = storedRows(deed());
            EXPECT_TRUE(again == after)
                << where << tell(again) << next.messages.take().join(u' ').toStdString();
        }
        EXPECT_EQ(next.rows(u"select Code, Status from CodeLock_TBL"_s), QString()) << where;
        if (!done) {
            EXPECT_EQ(next.rows(QLatin1String(working)), QString()) << where;
            EXPECT_EQ(next.rows(QLatin1String(workingBrackets)), QString()) << where;
            EXPECT_EQ(next.rows(u"select * from WorkingRows"_s), QString()) << where;
        }
    }
    static QStringList leftCodes(Start &next)
    {
        return next
            .rows(
                u"select distinct StaffCode from tmpStaffFamily union select distinct TaxMainCode from TmpTax"_s)
            .split(u'\n', Qt::SkipEmptyParts);
    }
    /// The tables that differ from before.
    std::string tell(const TStored &now) const
    {
        QStringList lines;
        for (auto it = now.begin(); it != now.end(); ++it)
            if (*it != before[it.key()])
                lines << u"\n%1: %2 / before: %3 / after: %4"_s.arg(
                    it.key(), it->left(300), before[it.key()].left(300), after[it.key()].left(300));
        return lines.join(QString()).toStdString();
    }

    QTemporaryDir folder;
    static inline int killedByAll = 0;
    TStored before;
    TStored after;
    int killed = 0;
    int between = 0;
    qsizetype offered = 0;
};

// The killed process itself; only ever run by the tests below.
TEST(KillsClerk, DISABLED_Works)
{
    const QString path = qEnvironmentVariable("KILLS_DATABASE");
    ASSERT_FALSE(path.isEmpty()) << "run by the tests of killed programs only";
    Start start(path);
    start.modules = std::make_unique<DataModules>();
    deeds().at(qEnvironmentVariableIntValue("KILLS_DEED")).work([&] {
        Killer::arm(start.connection, qEnvironmentVariableIntValue("KILLS_AT"));
    });
    Killer::disarm(start.connection);
    std::cout << "points passed: " << Killer::passed() << std::endl;
}

TEST_P(Kills, LeaveAllOrNothingAndWhatWasTypedIsOffered)
{
    lay();
    {
        const Start start(file());
        before = storedRows(deed());
    }
    const int points = clerk(0);
    {
        Start start(file());
        after = storedRows(deed());
        EXPECT_EQ(start.rows(u"select * from CodeLock_TBL"_s), QString());
    }
    ASSERT_FALSE(before == after) << deed().name << " stores nothing";
    ASSERT_GT(points, 2);
    // Spread over all points, the first and the last among them; the short deeds leave their share to the long ones,
    // which stand last.
    const int deedsLeft = int(deeds().size()) - GetParam();
    const int share =
        (qEnvironmentVariableIntValue("KETEBIONPAP_TEST_KILLS") - killedByAll + deedsLeft - 1) / deedsLeft;
    const int kills = qMin(points, qMax(3, share));
    for (int i = 0; i < kills && !HasFatalFailure(); ++i)
        kill(1 + int(qint64(i) * (points - 1) / (kills - 1)));
    killedByAll += killed;
    RecordProperty("kills", killed);
    std::cout << deed().name << ": " << points << " points, " << killed << " kills, " << between
              << " between, " << offered << " offered" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Of, Kills, testing::Range(0, int(deeds().size())), [](const auto &info) {
    return QString::fromLatin1(deeds().at(info.param).name).replace(u' ', u'_').toStdString();
});
