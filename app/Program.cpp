#include "app/Program.h"

#include "app/Ask.h"
#include "app/DatabaseSettings_FRM.h"
#include "app/EventLogCheck.h"
#include "app/Login_FRM.h"
#include "app/MainWindow.h"
#include "app/SampleCompany.h"
#include "app/TerminalPassword.h"
#include "app/Tour.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/EventHead_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/ServerRoles_unt.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/SqliteFile.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTextStream>

#include <memory>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A small window that says what is waited for, as long as it lives.
class TOpening {
public:
    /// Empty: none.
    explicit TOpening(const QString &place)
    {
        if (place.isEmpty())
            return;
        m_window = std::make_unique<QLabel>(
            u"در حال اتصال به \u2066%1\u2069 و آماده کردن پایگاه داده ..."_s.arg(place));
        m_window->setObjectName(u"Opening_LBL"_s);
        m_window->setWindowTitle(QApplication::applicationDisplayName());
        m_window->setWindowFlags(Qt::SplashScreen);
        m_window->setFrameStyle(int(QFrame::StyledPanel) | int(QFrame::Plain));
        m_window->setMargin(24);
        m_window->setLayoutDirection(Qt::RightToLeft);
        m_window->show();
        // Painted once now: the line is waited for from here on.
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        m_window->repaint();
    }

private:
    std::unique_ptr<QLabel> m_window;
};

QString loginText(const TLogin &login)
{
    switch (login.result) {
    case TLoginResult::TooEarly:
        return u"after wrong passwords: wait %1 seconds"_s.arg(login.secondsToWait);
    case TLoginResult::Inactive:
        return u"the user is shut out"_s;
    case TLoginResult::LowMemory:
        return u"there is not enough memory to look at the password; this was no try"_s;
    default:
        return u"wrong name or password"_s;
    }
}

class TProgram {
public:
    TProgram(const TCommandLine &line, QTextStream &out, QTextStream &err)
        : m_line(line), m_out(out), m_err(err)
    {
    }
    int run();

private:
    int fail(const QString &text)
    {
        m_err << "ketebionpap: " << text << Qt::endl;
        return 1;
    }
    bool namedDatabase() const { return !m_line.databaseFile.isEmpty() || !m_line.odbc.isEmpty(); }
    bool interactive() const { return m_line.task == TCommandLine::Task::Run; }
    bool touring() const { return m_line.task == TCommandLine::Task::Tour; }
    bool sample() const { return m_line.demo || touring(); }
    /// How a step of the start ended. Failed has told its reason, if there is one beyond the user's wish.
    enum class TStep { Done, Failed, OtherDatabase };
    static TStep stepOf(bool done) { return done ? TStep::Done : TStep::Failed; }
    TStep ask(TStart_FRM &dialog);
    TStep start();
    bool openDatabase();
    void openSession(const TDatabaseChoice &choice);
    bool chooseDatabase();
    void takeBack(const QString &file);
    TStep askServerPassword(TDatabaseChoice &choice);
    bool fillSample();
    TStep registerWorkstation();
    TStep logIn();
    TStep logInByDialog();
    int resetAdministrator();
    int call();
    int checkLog();
    int showWindow();

    const TCommandLine &m_line;
    QTextStream &m_out;
    QTextStream &m_err;
    QTemporaryDir m_throwAway;
    TSession m_session;
    TDatabaseChoice m_choice; ///< as it was chosen: without the password that is asked for
    bool m_starting = true;
    bool m_madeUnasked = false; ///< the ordinary file was not there before this start
};

/// At the start of the program the user may still turn to another database, where none was named.
TProgram::TStep TProgram::ask(TStart_FRM &dialog)
{
    if (m_starting && interactive() && !namedDatabase() && !sample())
        dialog.OfferOtherDatabase();
    const int result = dialog.exec();
    return result == TStart_FRM::OtherDatabase ? TStep::OtherDatabase : stepOf(result == QDialog::Accepted);
}

bool TProgram::chooseDatabase()
{
    TDatabaseSettings_FRM settings(m_choice);
    if (settings.exec() != QDialog::Accepted)
        return false;
    const QString before = m_choice.file;
    m_choice = settings.Choice();
    if (m_madeUnasked && (m_choice.onServer() || m_choice.file != before))
        takeBack(before);
    return true;
}

/// The ordinary file, which a first start made by itself, goes when the user turns to another database before anything
/// was entered.
void TProgram::takeBack(const QString &file)
{
    try {
        m_madeUnasked = !NoUserYet();
    } catch (const TDatabaseError &) {
        return; // not known to be empty
    }
    if (m_madeUnasked)
        return;
    m_session.connection().close();
    SqliteFile::removeUnused(file);
}

TProgram::TStep TProgram::askServerPassword(TDatabaseChoice &choice)
{
    const TOdbcConnectionString odbc(choice.odbc);
    if (!choice.onServer() || !odbc.needsPassword())
        return TStep::Done;
    QString password;
    if (isatty(STDIN_FILENO) && !interactive()) {
        password = PasswordFromTerminal("Password of the database server: ");
    } else if (m_line.task == TCommandLine::Task::ResetAdministrator) {
        fail(
            u"there is no terminal to ask for the server's password: name a connection string with it (--odbc-file)"_s);
        return TStep::Failed;
    } else {
        TServerPassword_FRM dialog(odbc.value(u"Server"_s));
        if (const TStep step = ask(dialog); step != TStep::Done)
            return step;
        password = dialog.Password_EDT->text();
    }
    choice.odbc = odbc.with(u"PWD"_s, password).text();
    return TStep::Done;
}

void TProgram::openSession(const TDatabaseChoice &choice)
{
    // A server behind a slow line takes its time, above all when it gets its tables.
    const TOpening opening(
        interactive() && choice.onServer() ? TOdbcConnectionString(choice.odbc).displayName() : QString());
    const bool isNew = !choice.onServer() && interactive() &&
                       choice.file == TDatabaseChoice::ordinaryFile() && !QFile::exists(choice.file);
    m_session.open(choice);
    m_madeUnasked = isNew;
    const TLineState line = m_session.connection().line();
    if (line.toServer && namedDatabase())
        m_err << "ketebionpap: the line to " << line.server << " is " << PrivacyTerm(line.privacy)
              << Qt::endl;
}

bool TProgram::openDatabase()
{
    for (;;) {
        TDatabaseChoice choice = m_choice;
        const TStep step = askServerPassword(choice);
        if (step == TStep::Failed)
            return false;
        if (step == TStep::OtherDatabase) {
            chooseDatabase();
            continue;
        }
        QString text;
        try {
            openSession(choice);
            return true;
        } catch (const TDatabaseError &error) {
            if (error.fault() == TFault::NoSuchFile) {
                // A mistyped name, a disk that is not mounted: no new database without a word.
                if (interactive() &&
                    Ask(u"پرونده پایگاه داده ای به این نشانی نیست:\n\u2066%1\u2069\nپایگاه داده تازه و خالی در آن ساخته شود؟"_s
                            .arg(choice.file),
                        TAnswer::No)) {
                    m_choice.missing = TConnection::Missing::Create;
                    continue;
                }
                if (namedDatabase() || !interactive()) {
                    fail(QString::fromUtf8(error.what()) +
                         (interactive() ? QString() : u" (add --create to make a new database)"_s));
                    return false;
                }
            }
            // A database that was named by hand is answered where it was named.
            if (namedDatabase() || !interactive()) {
                if (interactive())
                    MsgDatabaseError(error);
                fail(QString::fromUtf8(error.what()));
                return false;
            }
            text = error.userText();
        }
        if (!Ask(text + u"\nتنظیمات پایگاه داده را باز می کنید؟"_s) || !chooseDatabase())
            return false;
    }
}

bool TProgram::fillSample()
{
    try {
        if (!NoUserYet() ||
            m_session.connection().scalar(TStatement("select count(*) from Staff")).toInt() > 0) {
            fail(u"the sample company goes into a new database only"_s);
            return false;
        }
        FillSampleCompany(m_session.connection());
    } catch (const TDatabaseError &error) {
        fail(QString::fromUtf8(error.what()));
        return false;
    }
    // Without an account: whoever starts this database next makes its administrator, so that no password is known
    // beforehand.
    UserInfo = TUserInfo{0, u"demo"_s, u"مدیر شرکت نمونه"_s, true, true};
    return true;
}

TProgram::TStep TProgram::registerWorkstation()
{
    if (sample()) {
        IniOptions.Com_Index = 1;
        if (RegisterWorkstation(1, touring() ? u"حسابداری"_s : OwnWorkstationName()))
            return TStep::Done;
        fail(
            u"workstation 1 of this database is another one; the sample company goes into a new database only"_s);
        return TStep::Failed;
    }
    bool saved = true;
    if (!interactive()) {
        saved = RegisterOwnWorkstation();
    } else if (IniOptions.IsNew || !RegisterWorkstation(IniOptions.Com_Index, OwnWorkstationName())) {
        TWorkstation_FRM dialog(OwnWorkstationName());
        if (const TStep step = ask(dialog); step != TStep::Done)
            return step;
        IniOptions.Com_Index = dialog.ComIndex();
        saved = IniOptions.save() && KeepWorkstationName(dialog.Name_EDT->text().trimmed());
    }
    if (!saved) {
        fail(u"the workstation's options cannot be written: %1"_s.arg(IniOptions.FileName));
        return TStep::Failed;
    }
    return TStep::Done;
}

TProgram::TStep TProgram::logInByDialog()
{
    const auto logInBy = [this](auto &&dialog) {
        const TStep step = ask(dialog);
        if (step == TStep::Done)
            UserInfo = dialog.User();
        return step;
    };
    return NoUserYet() ? logInBy(TFirstUser_FRM()) : logInBy(TLogin_FRM(m_line.user));
}

TProgram::TStep TProgram::logIn()
{
    if (m_line.passwordFile.isEmpty()) {
        if (const TStep step = logInByDialog(); step != TStep::Done)
            return step;
    } else {
        QString error;
        const QString password = PasswordOf(m_line.passwordFile, &error);
        if (!error.isEmpty()) {
            fail(error);
            return TStep::Failed;
        }
        const TLogin login = LogIn(m_line.user, password);
        if (login.result != TLoginResult::Ok) {
            fail(u"cannot log in as %1: %2"_s.arg(m_line.user, loginText(login)));
            return TStep::Failed;
        }
        UserInfo = login.user;
    }
    SetUserEvent(TSoftwarePart(0), cpOpen, u"ورود به برنامه"_s, true, true);
    return TStep::Done;
}

/// Whoever may write the database may do this: no log-in, no windows.
int TProgram::resetAdministrator()
{
    if (!openDatabase())
        return 1;
    QString error;
    const QString password = m_line.passwordFile.isEmpty() ? NewPasswordFromTerminal(&error)
                                                           : PasswordOf(m_line.passwordFile, &error);
    if (!error.isEmpty())
        return fail(error);
    const passwd *person = getpwuid(getuid());
    const QString by = person ? QString::fromLocal8Bit(person->pw_name) : QString::number(getuid());
    const TLogin login = ResetAdministrator(m_line.administrator, password, by);
    if (login.result == TLoginResult::NoSuchUser)
        return fail(u"there is no user %1"_s.arg(m_line.administrator));
    if (login.result != TLoginResult::Ok)
        return fail(LoginText(login));
    m_out << login.user.Name << " is an active administrator with the new password" << Qt::endl;
    return 0;
}

int TProgram::call()
{
    const TEntryPoint &entry = *EntryPoints::find(m_line.entry);
    if (!m_session.module().has(entry))
        return fail(m_session.module().errorText());
    const int result = m_session.callEntry(entry, m_line.entryArguments);
    if (entry.isSelect())
        m_out << result << Qt::endl;
    return 0;
}

int TProgram::showWindow()
{
    TMain_FRM window(m_session);
    QEventLoop loop;
    bool loggedOut = false;
    QObject::connect(&window, &TMain_FRM::closed, &loop, &QEventLoop::quit);
    QObject::connect(&window, &TMain_FRM::logOutWanted, &loop, [&] {
        loggedOut = true;
        loop.quit();
    });
    for (;;) {
        loggedOut = false;
        window.Rebuild();
        window.show();
        window.activateWindow();
        loop.exec();
        if (!loggedOut)
            return 0;
        window.hide();
        UserInfo = {};
        bool in = false;
        if (!Guarded([&] { in = logInByDialog() == TStep::Done; }) || !in)
            return 0;
        SetUserEvent(TSoftwarePart(0), cpOpen, u"ورود به برنامه"_s, true, true);
    }
}

int TProgram::checkLog()
{
    try {
        const TEventCheck check = CheckEventLog(KnownEventHead());
        m_out << EventCheckReport(check) << Qt::flush;
        if (!check.isWhole())
            return 1;
        if (!KeepEventHead(check.head))
            return fail(u"the end of the log cannot be kept beside %1"_s.arg(IniOptions.FileName));
        return 0;
    } catch (const TDatabaseError &error) {
        return fail(QString::fromUtf8(error.what()));
    }
}

TProgram::TStep TProgram::start()
{
    if (!openDatabase())
        return TStep::Failed;
    if (m_line.task == TCommandLine::Task::CheckLog) // nobody logs in, and nothing is written
        return TStep::Done;
    if (const TStep step = registerWorkstation(); step != TStep::Done)
        return step;
    const TStep step = sample() ? stepOf(fillSample()) : logIn();
    if (step == TStep::Done)
        ReleaseLeftLocks(IniOptions.Com_Index);
    return step;
}

int TProgram::run()
{
    // The tour's pictures are the same whatever its user has arranged, and it arranges nothing.
    IniOptions.load(touring() ? m_throwAway.filePath(u"ketebionpap.ini"_s) : QString());
    m_choice = {m_line.databaseFile, m_line.odbc};
    if (!namedDatabase() && sample())
        m_choice.file = m_throwAway.filePath(u"sample.db"_s);
    else if (!namedDatabase())
        m_choice = TDatabaseChoice::stored();
    if (sample() || m_line.create)
        m_choice.missing = TConnection::Missing::Create;
    try {
        if (m_line.task == TCommandLine::Task::ResetAdministrator)
            return resetAdministrator();
        for (;;) {
            const TStep step = start();
            if (step == TStep::Done)
                break;
            if (step == TStep::Failed)
                return 1;
            chooseDatabase();
        }
        m_starting = false;
    } catch (const TDatabaseError &error) {
        if (interactive())
            MsgDatabaseError(error);
        return fail(QString::fromUtf8(error.what()));
    }
    switch (m_line.task) {
    case TCommandLine::Task::Call:
        return call();
    case TCommandLine::Task::CheckLog:
        return checkLog();
    case TCommandLine::Task::Tour:
        return TTour(m_session, m_line.tourFolder, m_out).run() ? 0 : 1;
    default:
        return showWindow();
    }
}

} // namespace

int RunProgram(const TCommandLine &line, QTextStream &out, QTextStream &err)
{
    if (!line.error.isEmpty()) {
        err << "ketebionpap: " << line.error << Qt::endl;
        return 2;
    }
    if (line.task == TCommandLine::Task::Help) {
        out << TCommandLine::help() << Qt::flush;
        return 0;
    }
    if (line.task == TCommandLine::Task::ServerRoles) {
        out << ServerRolesScript() << Qt::flush;
        return 0;
    }
    if (line.task == TCommandLine::Task::Version) {
        out << TCommandLine::version() << Qt::endl;
        return 0;
    }
    return TProgram(line, out, err).run();
}
