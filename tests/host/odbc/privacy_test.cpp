#include "host/database/Engine.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/OdbcDriverFile.h"
#include "support/TestCertificates.h"
#include "support/TestListener.h"
#include "support/TestProxy.h"
#include "support/TestServer.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// The line to a server is encrypted and its certificate checked; a listener of the test's own stands for the server,
// and lets nobody in: who gets as far as the log-in is refused there.

namespace {

const TestCertificates &certificates()
{
    static const TestCertificates made;
    return made;
}

TFault faultOf(const QString &place, QString *userText = nullptr)
{
    try {
        OpenOdbcEngine(place);
        ADD_FAILURE() << "opened";
    } catch (const TDatabaseError &error) {
        EXPECT_FALSE(error.detail().contains("Right-Horse-7")) << qPrintable(error.detail());
        if (userText)
            *userText = error.userText();
        return error.fault();
    }
    return TFault::Other;
}

QString withAuthority(const TestListener &listener)
{
    return listener.connectionString() + u";CAFile="_s + certificates().authority();
}

TEST(LinePrivacy, AServerWithACertificateOfAKnownAuthorityGetsTheLogInEncrypted)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    EXPECT_EQ(faultOf(withAuthority(listener)), TFault::LoginRefused);
    EXPECT_EQ(listener.login().user, "clerk");
    EXPECT_EQ(listener.login().password, "Right-Horse-7");
    EXPECT_EQ(listener.login().database, "d");
    const QByteArray record = listener.record();
    EXPECT_GT(record.size(), 200);
    for (const char *text : {"clerk", "Right-Horse-7"}) {
        EXPECT_FALSE(record.contains(text));
        EXPECT_FALSE(record.contains(TestListener::onTheLine(text)));
    }
}

TEST(LinePrivacy, AReadableLineIsReadableWhichTheTestsWouldSee)
{
    TestListener listener;
    EXPECT_EQ(faultOf(listener.connectionString() + ";Encrypt=no"), TFault::LoginRefused);
    EXPECT_TRUE(listener.record().contains(TestListener::onTheLine("clerk")));
}

TEST(LinePrivacy, AWrongCertificateIsRefusedBeforeTheLogInAndEachReasonIsToldInPersian)
{
    struct TCase {
        TestCertificates::Kind kind;
        TFault fault;
        const char *words;
    };
    for (const TCase &one :
         {TCase{TestCertificates::OtherName, TFault::OtherName, "برای نام دیگری است"},
          TCase{TestCertificates::Expired, TFault::ExpiredCertificate, "تاریخ گواهی سرور گذشته"},
          TCase{TestCertificates::NotYet, TFault::ExpiredCertificate, "هنوز نرسیده"},
          TCase{TestCertificates::UnknownIssuer, TFault::UnknownIssuer, "شناخته نیست"}}) {
        TestListener listener(certificates().certificate(one.kind));
        QString text;
        EXPECT_EQ(faultOf(withAuthority(listener), &text), one.fault) << one.words;
        EXPECT_TRUE(text.contains(QString::fromUtf8(one.words))) << qPrintable(text);
        EXPECT_EQ(listener.login().user, "") << "nobody logs in there";
        EXPECT_EQ(faultOf(withAuthority(listener) + ";TrustServerCertificate=yes"), TFault::LoginRefused);
        EXPECT_EQ(listener.login().user, "clerk");
    }
}

TEST(LinePrivacy, WithoutAFileTheSystemsAuthoritiesCount)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    EXPECT_EQ(faultOf(listener.connectionString()), TFault::UnknownIssuer);
    EXPECT_EQ(listener.login().user, "");
}

TEST(LinePrivacy, AServerThatDoesNotEncryptGetsNoLogIn)
{
    TestListener listener;
    QString text;
    for (const char *words : {"", ";TrustServerCertificate=yes"}) {
        EXPECT_EQ(faultOf(listener.connectionString() + words, &text), TFault::NoEncryption) << words;
        EXPECT_TRUE(text.contains("Encrypt=no"));
    }
    EXPECT_EQ(listener.login().user, "");
    EXPECT_FALSE(listener.record().contains(TestListener::onTheLine("clerk")));
}

TEST(LinePrivacy, AFileOfAuthoritiesThatIsNoneIsToldBeforeAnybodyConnects)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    EXPECT_EQ(faultOf(listener.connectionString() + ";CAFile=/nowhere.pem"), TFault::NoAuthorities);
    QTemporaryDir folder;
    QFile file(folder.filePath("letter.pem"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Dear Sir");
    file.close();
    EXPECT_EQ(faultOf(listener.connectionString() + ";CAFile=" + file.fileName()), TFault::NoAuthorities);
    EXPECT_EQ(listener.visits(), 0);
}

TEST(LinePrivacy, AFileOfAuthoritiesMayLieWhereTheDriversLinesDoNotReach)
{
    QTemporaryDir folder;
    const QString deep =
        folder.filePath(u"گواهی ها # یک ; "_s + QString(200, 'x')) + u"/"_s + QString(100, 'y');
    ASSERT_TRUE(QDir().mkpath(deep));
    ASSERT_TRUE(QFile::copy(certificates().authority(), deep + "/ca.pem"));
    TestListener listener(certificates().certificate(TestCertificates::Good));
    EXPECT_EQ(faultOf(TestServer::with(listener.connectionString(), "CAFile", deep + "/ca.pem")),
              TFault::LoginRefused);
}

TEST(LinePrivacy, TheDriversOwnFileIsPrivateAndHoldsNoPassword)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    faultOf(withAuthority(listener));
    const QFileInfo file(qEnvironmentVariable("FREETDSCONF"));
    ASSERT_TRUE(file.exists());
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(file.permissions() & others);
    EXPECT_FALSE(QFileInfo(file.absolutePath()).permissions() & others);
    QFile text(file.filePath());
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    const QByteArray all = text.readAll();
    EXPECT_TRUE(all.contains("check certificate hostname = yes"));
    EXPECT_FALSE(all.contains("Right-Horse-7"));
    EXPECT_FALSE(all.contains("clerk"));
}

TEST(LinePrivacy, TheDriversOwnFileIsMadeAnewWhenItWasClearedAway)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    EXPECT_EQ(faultOf(withAuthority(listener)), TFault::LoginRefused);
    ASSERT_TRUE(QDir(QFileInfo(qEnvironmentVariable("FREETDSCONF")).absolutePath()).removeRecursively());
    EXPECT_EQ(faultOf(withAuthority(listener)), TFault::LoginRefused);
    EXPECT_TRUE(QFile::exists(qEnvironmentVariable("FREETDSCONF")));
}

TEST(LinePrivacy, AnyPasswordArrivesAsItWasTyped)
{
    TestListener listener(certificates().certificate(TestCertificates::Good));
    for (const char *password : {"simple", "a;b", "a}b", "a}}b", "}", "{", "{a", "{a}", "a;}b", "گذر واژه ۱۲",
                                 "'\"--", "a=b", "x y", " x ", "یک;دو}سه", "1e5"}) {
        const QString place = TestServer::with(withAuthority(listener), "PWD", QString::fromUtf8(password));
        EXPECT_EQ(faultOf(place), TFault::LoginRefused) << password;
        EXPECT_EQ(listener.login().password, QString::fromUtf8(password));
    }
    EXPECT_EQ(faultOf(TestServer::with(withAuthority(listener), "PWD", "a};b")), TFault::UnfitPassword);
}

TEST(LinePrivacy, TheNextServerIsAskedWhenOneChangesOverAndNoneWhenTheLogInIsRefused)
{
    const int changing = 983, refused = 18456;
    const QString good = certificates().certificate(TestCertificates::Good);
    TestListener first(good, TestListener::Refuses, changing);
    TestListener second(good, TestListener::Refuses, refused);
    TestListener third(good);
    const QString place =
        TestServer::with(withAuthority(first), "Failover_Partner",
                         u"127.0.0.1,%1;127.0.0.1,%2"_s.arg(second.port()).arg(third.port()));
    EXPECT_EQ(faultOf(place), TFault::LoginRefused);
    EXPECT_EQ(first.login().user, "clerk");
    EXPECT_EQ(second.login().user, "clerk");
    EXPECT_EQ(third.visits(), 0);
}

class LinePrivacyOnAServer : public testing::Test {
protected:
    void SetUp() override
    {
        if (!TestServer::available())
            GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
        place = TestServer::ownDatabase().connectionString();
        if (TOdbcConnectionString(place).privacy() == TLinePrivacy::Readable)
            GTEST_SKIP() << "the server of KETEBIONPAP_TEST_ODBC is used readable";
    }
    QString place;
};

TEST_F(LinePrivacyOnAServer, NoNameCrossesTheLineReadable)
{
    const QString name = u"Ghasemzadeh-قاسم زاده"_s;
    const auto crossed = [&](TestProxy &proxy) {
        proxy.startRecord();
        const auto engine = OpenOdbcEngine(proxy.connectionString());
        const auto cursor = engine->select({u"select cast(? as nvarchar(100))"_s, {name}, {}});
        EXPECT_TRUE(cursor->next());
        EXPECT_EQ(cursor->value(0).toString(), name);
        return proxy.record();
    };
    TestProxy readable(place);
    EXPECT_TRUE(crossed(readable).contains(TestListener::onTheLine(name)));
    TestProxy encrypted(place, TestProxy::AsGiven);
    const QByteArray record = crossed(encrypted);
    EXPECT_GT(record.size(), 500);
    EXPECT_FALSE(record.contains(TestListener::onTheLine(name)));
    EXPECT_FALSE(record.contains(TestListener::onTheLine(name.left(11))));
    EXPECT_FALSE(record.contains(TestListener::onTheLine(TOdbcConnectionString(place).value("UID"))));
}

TEST_F(LinePrivacyOnAServer, TheEngineTellsWhichServerItTalksToAndHow)
{
    const TLineState line = OpenOdbcEngine(place)->line();
    EXPECT_TRUE(line.toServer);
    EXPECT_EQ(line.privacy, TOdbcConnectionString(place).privacy());
    EXPECT_FALSE(line.server.isEmpty());
}

} // namespace
