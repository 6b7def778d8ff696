#include "InProcess.h"
#include "Screens.h"

#include "app/Administration_FRM.h"
#include "app/EventLogCheck.h"
#include "app/MainWindow.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/EventHead_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include <QFile>
#include <QFileDialog>

using namespace Qt::Literals::StringLiterals;

namespace {

class EventLogCheck : public Screens {
protected:
    EventLogCheck()
    {
        for (int i = 1; i <= 5; ++i)
            SetUserEvent(cspTax, cpEdit, u"جدول %1"_s.arg(i), false, false);
    }
    std::string checked()
    {
        told();
        TEventLog_FRM list;
        Keys::runModal([&] { return list.exec(); },
                       [&](QWidget *screen) {
                           Keys::waitFor([&] { return list.isActiveWindow(); });
                           Keys::press(screen, Qt::Key_F8);
                           Keys::picture(screen, "event-log");
                       });
        return told();
    }
};

bool contains(const std::string &text, const QString &part)
{
    return text.find(part.toStdString()) != std::string::npos;
}

} // namespace

TEST_F(EventLogCheck, ALogThatNobodyTouchedIsWholeAndItsEndIsKept)
{
    const std::string text = checked();
    EXPECT_TRUE(contains(text, u"رویدادها درست است: 5 سطر"_s)) << text;
    EXPECT_EQ(KnownEventHead().lines, 5);
    EXPECT_EQ(KnownEventHead().link.size(), 64);
    EXPECT_TRUE(
        this->text("select EventText from UserEvent order by ID desc").startsWith(u"بررسی رویدادها"_s));
    const QString file = QFileInfo(IniOptions.FileName).absolutePath() + "/eventlog.ini";
    EXPECT_EQ(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_TRUE(contains(checked(), u"6 سطر"_s)) << "with the line of the first check";
}

TEST_F(EventLogCheck, ALineThatWasCutOutIsToldWithItsPlaceAndWhatToDo)
{
    run("delete from UserEvent where ID=3");
    const std::string text = checked();
    EXPECT_TRUE(contains(text, u"دستکاری"_s)) << text;
    EXPECT_TRUE(contains(text, u"سطر شماره 4"_s)) << text;
    EXPECT_TRUE(contains(text, u"پشتیبان های پیشین"_s)) << text;
    EXPECT_EQ(messages.last().icon, miWarning);
    EXPECT_EQ(KnownEventHead().link, QString()) << "the end of a broken log is not kept";
}

TEST_F(EventLogCheck, ALogThatWasMadeAnewLacksTheEndThatWasSeenLast)
{
    checked();
    run("delete from UserEvent");
    run("update UserEventHead set Link='', LineCount=0");
    SetUserEvent(cspTax, cpEdit, u"دیگر"_s, false, false);
    EXPECT_TRUE(CheckEventLog().isWhole());
    messages.answer({TAnswer::No});
    EXPECT_TRUE(contains(checked(), u"دیده بود دیگر"_s));
    messages.answer({TAnswer::Yes});
    checked();
    EXPECT_TRUE(contains(checked(), u"درست است"_s)) << "an end that was accepted";
}

TEST_F(EventLogCheck, WhoIsNoAdministratorAnyMoreChecksNothing)
{
    UserInfo = {0, "clerk", "clerk", false, true};
    EXPECT_TRUE(contains(checked(), u"مدیر فعال سیستم"_s));
}

TEST_F(EventLogCheck, EachDatabaseHasItsOwnEnd)
{
    ASSERT_TRUE(KeepEventHead({u"abc"_s, 3}));
    EXPECT_EQ(KnownEventHead().link, "abc");
    session.open({home.filePath("other.db"), {}, TConnection::Missing::Create});
    EXPECT_EQ(KnownEventHead().link, QString());
}

class CheckLogRun : public InProcess {
protected:
    QString database = home.filePath("suite.db");
    void make()
    {
        TSession session;
        session.open({database, {}, TConnection::Missing::Create});
        for (int i = 0; i < 3; ++i)
            SetUserEvent(cspTax, cpEdit, u"جدول"_s, false, false);
    }
    void change(const char *sql)
    {
        TSession session;
        session.open({database, {}, TConnection::Missing::Refuse});
        session.connection().execute(TStatement(sql));
    }
    int check()
    {
        out.clear();
        err.clear();
        return run({"--database", database, "--check-log"});
    }
};

TEST_F(CheckLogRun, AScriptLearnsThatTheLogIsWhole)
{
    make();
    EXPECT_EQ(check(), 0) << err.toStdString();
    EXPECT_TRUE(out.startsWith("the event log is whole: 3 lines since 1")) << out.toStdString();
    EXPECT_EQ(check(), 0) << "and nothing was written";
    EXPECT_TRUE(out.contains("3 lines"));
}

TEST_F(CheckLogRun, AScriptLearnsWhereALineWasCutOut)
{
    make();
    change("delete from UserEvent where ID=2");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("broken")) << out.toStdString();
    EXPECT_TRUE(out.contains("line 3 of ")) << out.toStdString();
}

TEST_F(CheckLogRun, AScriptLearnsThatTheLogIsNotTheOneThatWasSeenLast)
{
    make();
    EXPECT_EQ(check(), 0);
    change("delete from UserEvent");
    change("update UserEventHead set Link='', LineCount=0");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("the last line that this workstation saw is not in the log"))
        << out.toStdString();
}

TEST_F(CheckLogRun, ADatabaseThatIsNotThereIsAnError)
{
    EXPECT_EQ(check(), 1);
    EXPECT_FALSE(QFile::exists(database));
    EXPECT_EQ(out, "");
}

TEST(CheckLogLine, StandsAlone)
{
    EXPECT_EQ(TCommandLine::parse({"--check-log"}).task, TCommandLine::Task::CheckLog);
    EXPECT_NE(TCommandLine::parse({"--check-log", "--tour", "x"}).error, "");
    EXPECT_NE(TCommandLine::parse({"--call", "Open_TaxList", "--check-log"}).error, "");
}
