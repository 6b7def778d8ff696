#pragma once

#include <QString>

/// Asks for a password on the terminal, without showing it.
QString PasswordFromTerminal(const char *prompt);
/// Asks for a new password twice. `error` gets one line when there is no terminal, or both differ.
QString NewPasswordFromTerminal(QString *error);
