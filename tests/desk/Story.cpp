#include "Story.h"

#include "host/Declaration_PKG/Login_unt.h"

#include <QFile>

Story::Story()
{
    if (!desk.fault().isEmpty()) {
        ADD_FAILURE() << desk.fault().toStdString();
        return;
    }
    desk.setLayout("us");
    EXPECT_EQ(CreateFirstAdministrator("clerk", "clerk", "secret-b7qx2"), TLoginResult::Ok);
    QFile password(m_home.filePath("password"));
    EXPECT_TRUE(password.open(QIODevice::WriteOnly));
    password.write("secret-b7qx2\n");
    password.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

Story::~Story()
{
    if (m_program.state() == QProcess::NotRunning)
        return;
    m_program.kill();
    m_program.waitForFinished();
}

void Story::open(const QString &entry, const QString &title)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("QT_QPA_PLATFORM", "xcb");
    variables.insert("DISPLAY", desk.display());
    for (const char *other : {"WAYLAND_DISPLAY", "QT_IM_MODULE", "XMODIFIERS", "KETEBIONPAP_ODBC"})
        variables.remove(QString::fromLatin1(other));
    for (const char *folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        variables.insert(QString::fromLatin1(folder), m_home.path());
    m_program.setProcessEnvironment(variables);
    m_program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_window = desk.focusedWindow();
    m_program.start(QStringLiteral(KETEBIONPAP_BIN "/ketebionpap"),
                    {"--database", db.path(), "--user", "clerk", "--password-file",
                     m_home.filePath("password"), "--call", entry});
    ASSERT_TRUE(comes(title)) << "the program's window did not come up";
}

bool Story::comes(const QString &title)
{
    QString last;
    const bool came = Desk::waitFor([&] {
        const qulonglong window = desk.focusedWindow();
        if (window == 0 || window == m_window)
            return false;
        last = desk.titleOf(window);
        if (!last.startsWith(title))
            return false;
        m_window = window;
        return true;
    });
    if (!came)
        ADD_FAILURE() << "no window \"" << title.toStdString() << "\" came; the last one was \""
                      << last.toStdString() << '"';
    return came;
}

bool Story::becomes(const QString &sql, const QString &value)
{
    const bool became = Desk::waitFor([&] { return db.text(sql) == value; });
    if (!became)
        ADD_FAILURE() << sql.toStdString() << " is " << db.text(sql).toStdString();
    return became;
}

int Story::ends()
{
    if (!m_program.waitForFinished(60000)) {
        ADD_FAILURE() << "the program did not end; in front stands \""
                      << desk.titleOf(desk.focusedWindow()).toStdString() << '"';
        return -1;
    }
    out = QString::fromUtf8(m_program.readAllStandardOutput()).trimmed();
    return m_program.exitStatus() == QProcess::NormalExit ? m_program.exitCode() : -1;
}
