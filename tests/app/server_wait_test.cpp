#include "app/DatabaseSettings_FRM.h"
#include "app/ServerWait.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/OdbcConnectionString.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestCertificates.h"
#include "support/TestListener.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QRadioButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// What a user sees of a server that is not ready, and of the line to it.

namespace {

/// Waits for a listener's server; `look` is called with the window as long as it stands. Answers the failure, or Other.
TFault wait(const TestListener &listener, const std::function<void(QWidget *)> &look)
{
    TDatabaseChoice choice;
    choice.odbc = listener.connectionString() + u";Encrypt=no"_s;
    TServerWait window(choice);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (window.isVisible())
            look(&window);
    });
    poll.start(20);
    try {
        window.Run([] {});
    } catch (const TDatabaseError &error) {
        return error.fault();
    }
    return TFault::Other;
}

TEST(ServerWait, AServerThatChangesOverIsWaitedForInAWindowAndEscGivesUp)
{
    const int changingOver = 983;
    const TestListener listener({}, TestListener::Refuses, changingOver);
    QElapsedTimer timer;
    timer.start();
    QString said;
    const TFault fault = wait(listener, [&](QWidget *window) {
        if (listener.visits() < 3)
            return;
        said = window->findChild<QLabel *>("Text_LBL")->text();
        Keys::picture(window, "server-wait");
        Keys::press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(fault, TFault::ChangingOver);
    EXPECT_GE(listener.visits(), 3);
    EXPECT_TRUE(said.contains(u"در حال جابه جایی"_s)) << said.toStdString();
    EXPECT_LT(timer.elapsed(), 10000);
}

TEST(ServerWait, WhileASilentServerIsTriedTheWindowLivesAndEscDoesNotWaitForIt)
{
    const TestListener listener({}, TestListener::Silent);
    int looks = 0;
    QElapsedTimer sinceEsc;
    const TFault fault = wait(listener, [&](QWidget *window) {
        // The second try is under way: it takes three seconds.
        if (listener.visits() < 2 || ++looks < 10)
            return;
        sinceEsc.start();
        Keys::press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(fault, TFault::ConnectionLost);
    EXPECT_GE(looks, 10);
    EXPECT_LT(sinceEsc.elapsed(), 500);
}

TEST(ServerWait, ARefusedLogInIsToldAtOnce)
{
    const TestListener listener;
    bool shown = false;
    EXPECT_EQ(wait(listener, [&](QWidget *) { shown = true; }), TFault::LoginRefused);
    EXPECT_FALSE(shown);
    EXPECT_EQ(listener.visits(), 1);
}

TEST(DatabaseSettings, ANewServerIsEncryptedAndCheckedAndWeakenedInAsManyWordsOnly)
{
    TDatabaseSettings_FRM settings({"x.db", {}});
    settings.Server_RB->setChecked(true);
    settings.Server_EDT->setText("db.example");
    settings.Partner_EDT->setText("two.example,1433; three.example");
    settings.Authorities_EDT->setText("/etc/ssl/our own.pem");
    const auto string = [&] { return TOdbcConnectionString(settings.Choice().odbc); };
    EXPECT_EQ(string().privacy(), TLinePrivacy::Checked);
    EXPECT_EQ(string().authorities(), "/etc/ssl/our own.pem");
    EXPECT_EQ(string().servers().size(), 3);
    const auto hint = [&] { return settings.findChild<QLabel *>("Privacy_LBL")->text(); };
    const QString good = hint();
    settings.Privacy_CB->setCurrentIndex(1);
    EXPECT_EQ(string().privacy(), TLinePrivacy::Unchecked);
    EXPECT_NE(hint(), good);
    settings.Privacy_CB->setCurrentIndex(2);
    EXPECT_EQ(string().privacy(), TLinePrivacy::Readable);
    EXPECT_TRUE(hint().contains(u"خوانده می شود"_s));
    EXPECT_EQ(settings.Privacy_CB->currentText(), u"خوانا"_s);
}

TEST(DatabaseSettings, ShowWhatAGivenStringSaysAndKeepIt)
{
    const QString given =
        "Driver=FreeTDS;Server=s;Database=d;UID=u;Failover_Partner=t;CAFile=/c;Encrypt=strict;"
        "TrustServerCertificate=yes;AnswerTimeout=9;ApplicationIntent=ReadOnly";
    const TDatabaseSettings_FRM settings({{}, given});
    EXPECT_EQ(settings.Privacy_CB->currentText(), u"رمزشده، تأییدنشده"_s);
    const TOdbcConnectionString kept(settings.Choice().odbc);
    const TOdbcConnectionString before(given);
    for (const char *word : {"Driver", "Server", "Database", "UID", "Failover_Partner", "CAFile", "Encrypt",
                             "TrustServerCertificate", "AnswerTimeout", "ApplicationIntent"})
        EXPECT_EQ(kept.value(QLatin1String(word)), before.value(QLatin1String(word))) << word;
}

TEST(DatabaseSettings, TheTestOfAServerTellsWhyItsCertificateIsRefused)
{
    const TestCertificates certificates;
    const TestListener listener(certificates.certificate(TestCertificates::Expired));
    ScriptedMessages messages;
    TDatabaseSettings_FRM settings({{}, listener.connectionString() + ";CAFile=" + certificates.authority()});
    Keys::runModal([&] { return settings.exec(); },
                   [&](QWidget *screen) {
                       Keys::press(screen, Qt::Key_F8);
                       EXPECT_TRUE(messages.last().text.contains(u"تاریخ گواهی سرور گذشته"_s))
                           << messages.last().text.toStdString();
                       EXPECT_TRUE(screen->isVisible());
                   });
}

} // namespace
