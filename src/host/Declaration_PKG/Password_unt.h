#pragma once

#include "host/Export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Passwords: their Argon2id hashes, and how easily one is guessed.

const int MinimalPasswordLength = 6; ///< characters

/// Throws std::bad_alloc where the machine has not the memory that hashing takes.
QByteArray HashOfPassword(const QString &password);
/// Whether a hash is the password's; false for a hash that is none. Throws std::bad_alloc like HashOfPassword.
bool PasswordMatches(const QByteArray &hash, const QString &password);
/// Whether a hash was made with less work than today's.
bool IsOldPasswordHash(const QByteArray &hash);

/// Persian sentences that say what is wrong with a new password and what to do; empty when it may be taken: its length,
/// and whether it stands a hundred million tries. `names` (of the user) are what is tried first.
KETEBIONPAP_CORE QString PasswordComplaint(const QString &password, const QStringList &names);
