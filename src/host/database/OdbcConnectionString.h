#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

/// An ODBC connection string ("Driver={FreeTDS};Server=...;PWD={a;b}"), read by ODBC's own rules: parts parted by
/// semicolons, words without regard to case, values in braces may hold semicolons and doubled closing braces.
///
/// Three words are our own: LoginTimeout, AnswerTimeout and LockTimeout, in seconds.
class KETEBIONPAP_CORE TOdbcConnectionString {
public:
    explicit TOdbcConnectionString(const QString &text);

    /// Whether the word is there, with or without a value.
    bool has(const QString &word) const;
    /// The value of a word; empty when it is not there.
    QString value(const QString &word) const;
    /// Whether it holds a password (PWD or Password).
    bool hasPassword() const;
    /// Whether it names a user but holds no password, so that the user must be asked for it.
    bool needsPassword() const;

    /// The same without these words.
    TOdbcConnectionString without(const QStringList &words) const;
    TOdbcConnectionString withoutPassword() const;
    /// The same with this value for a word, in braces where it needs them.
    TOdbcConnectionString with(const QString &word, const QString &value) const;

    QString text() const;
    /// The string for the driver: without our own words, with what the driver needs for wide text.
    QString forDriver() const;
    /// "server/database", without user and password.
    QString displayName() const;
    /// `text` with the password blanked out, wherever a driver repeats it.
    QString withoutSecrets(QString text) const;

    int loginSeconds() const { return seconds(u"LoginTimeout"_s, 10); }
    /// How long an answer may take until the line counts as dead.
    int answerSeconds() const { return seconds(u"AnswerTimeout"_s, 60); }
    /// How long a statement waits for another user's lock.
    int lockSeconds() const { return seconds(u"LockTimeout"_s, 5); }

private:
    int seconds(const QString &word, int otherwise) const;

    struct TPart {
        QString word;
        QString value;
        QString text; // as given, with its braces
    };
    QList<TPart> m_parts;
};
