#include "calender/CalenderScreens.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "support/TestUser.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <iostream>

// Two stations that generate overlapping ranges at once: real processes, each with the generator's own screen.

namespace {

const char whereVariable[] = "GENERATOR_DATABASE";
const char indexVariable[] = "GENERATOR_INDEX";
const char goVariable[] = "GENERATOR_GO";

const char *const months[][2] = {{"1402/01/01", "1402/12/29"}, {"1402/06/01", "1402/12/29"}};

} // namespace

class StationProcess : public testing::Test {};

/// One of the two; run by the test below. Tells how many days it stored.
TEST_F(StationProcess, DISABLED_Generates)
{
    TConnection connection;
    TestDatabase::open(connection, qEnvironmentVariable(whereVariable));
    DM.ADOConnection1 = &connection;
    IniOptions.Com_Index = qEnvironmentVariableIntValue(indexVariable);
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    ScriptedMessages messages;
    Calender_DM = new TCalender_DM(nullptr);
    {
        TCalender_Set_FRM screen(cspCalender, false, QString());
        screen.show();
        const auto &range = months[IniOptions.Com_Index - 1];
        screen.Title_EDT->SetText("t");
        screen.Date1_EDT->SetText(range[0]);
        screen.Date2_EDT->SetText(range[1]);
        screen.StartDay_CMB->setCurrentIndex(TPersianDate::parse(range[0])->weekday());
        std::cout << "ready" << std::endl;
        const QString go = qEnvironmentVariable(goVariable);
        EXPECT_TRUE(Keys::waitFor([&] { return QFile::exists(go); }, 30000));
        const bool saved = screen.Save(svSave);
        for (const TMessage &message : messages.all())
            std::cout << "told " << message.number << ' ' << qPrintable(message.text.simplified())
                      << std::endl;
        std::cout << (saved ? "saved" : "refused") << std::endl;
    }
    delete Calender_DM;
    Calender_DM = nullptr;
    DM.ADOConnection1 = nullptr;
}

TEST(CalenderStations, TwoThatGenerateAtOnceStoreNoDayTwice)
{
    TestDatabase db;
    QTemporaryDir folder;
    for (int round = 0; round < 5; ++round) {
        db.run("delete from Calender");
        const QString go = folder.filePath(QString::number(round));
        QProcess stations[2];
        for (int i = 0; i < 2; ++i) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(whereVariable, db.path());
            environment.insert(indexVariable, QString::number(i + 1));
            environment.insert(goVariable, go);
            stations[i].setProcessEnvironment(environment);
            stations[i].setProcessChannelMode(QProcess::MergedChannels);
            stations[i].start(
                QCoreApplication::applicationFilePath(),
                {"--gtest_filter=StationProcess.DISABLED_Generates", "--gtest_also_run_disabled_tests"});
        }
        QByteArray said[2];
        for (int i = 0; i < 2; ++i)
            while (!said[i].contains("ready\n")) {
                ASSERT_TRUE(stations[i].waitForReadyRead()) << said[i].toStdString();
                said[i] += stations[i].readAll();
            }
        QFile file(go);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        int saved = 0;
        for (int i = 0; i < 2; ++i) {
            ASSERT_TRUE(stations[i].waitForFinished());
            said[i] += stations[i].readAll();
            EXPECT_EQ(stations[i].exitCode(), 0) << said[i].toStdString();
            saved += said[i].contains("\nsaved\n") ? 1 : 0;
            EXPECT_TRUE(said[i].contains("\nsaved\n") || said[i].contains("\ntold "))
                << said[i].toStdString();
        }
        EXPECT_EQ(saved, 1) << said[0].toStdString() << said[1].toStdString();
        EXPECT_EQ(db.text("select count(*) from Calender"),
                  db.text("select count(distinct Date) from Calender"));
        EXPECT_EQ(db.text("select count(*) from CodeLock_TBL"), "0");
    }
}
