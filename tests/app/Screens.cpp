#include "Screens.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "support/TestServer.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

Screens::Screens(TestDatabase::Place place)
{
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    IniOptions.load();
    if (place == TestDatabase::AnyEngine && TestServer::available()) {
        TestServer::emptyDatabase();
        session.open({{}, TestServer::ownDatabase().connectionString()});
    } else {
        session.open({home.filePath("suite.db"), {}, TConnection::Missing::Create});
    }
    UserInfo = TUserInfo{0, "boss", "boss", true, true}; // without an account, as the sample company's
}

Screens::~Screens()
{
    UserInfo = {};
}

int Screens::user(const QString &name, const QString &password, bool admin)
{
    TUserInfo record{0, name, name, admin, true};
    EXPECT_EQ(SaveUser(record, password), TLoginResult::Ok);
    return record.Code;
}

std::string Screens::told()
{
    QStringList texts;
    for (; m_told < messages.all().size(); ++m_told)
        texts << messages.all().at(m_told).text;
    return texts.join('\n').toStdString();
}

ScreensOnAFile::ScreensOnAFile() : Screens(TestDatabase::FileAlways)
{
    QObject::connect(&m_newSeals, &QTimer::timeout, &m_newSeals, [this] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || dialog->objectName() != "TNewSeal_FRM"_L1 || dialog->property("answered").toBool())
            return;
        dialog->setProperty("answered", true);
        if (inNewSeal)
            inNewSeal(dialog);
        else
            Keys::press(dialog, Qt::Key_F3);
    });
    m_newSeals.start(5);
}
