#include "app/TerminalPassword.h"

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

QString PasswordFromTerminal(const char *prompt)
{
    const char *typed = getpass(prompt);
    return QString::fromLocal8Bit(typed ? typed : "");
}

QString NewPasswordFromTerminal(QString *error)
{
    if (!isatty(STDIN_FILENO)) {
        *error = u"there is no terminal to ask for the new password: put it into a file (--password-file)"_s;
        return {};
    }
    const QString password = PasswordFromTerminal("New password: ");
    if (password != PasswordFromTerminal("The same again: "))
        *error = u"the two passwords differ; nothing was changed"_s;
    return password;
}
