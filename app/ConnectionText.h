#pragma once

#include <QString>
#include <QStringList>

/// ODBC connection strings ("Driver={FreeTDS};Server=...;PWD={a;b}"), read by their own rules: parts parted by
/// semicolons, names without regard to case, values in braces may hold semicolons and doubled closing braces.
namespace ConnectionText {

/// The value of a part; null when there is none with this name.
QString part(const QString &text, const QString &name);
/// Whether it holds a password (PWD or Password).
bool hasPassword(const QString &text);
/// Whether it names a user but holds no password, so that the user must be asked for it.
bool needsPassword(const QString &text);
/// The same text without its password.
QString withoutPassword(const QString &text);
/// The same text without the parts of these names.
QString without(const QString &text, const QStringList &names);
/// The same text with this value for a part, in braces where it needs them.
QString with(const QString &text, const QString &name, const QString &value);

} // namespace ConnectionText
