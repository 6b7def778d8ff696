#pragma once

#include <QList>
#include <QString>

/// An ODBC connection string, with three words of our own: LoginTimeout, AnswerTimeout and LockTimeout, in seconds.
class TOdbcConnectionString {
public:
    explicit TOdbcConnectionString(const QString &text);

    /// The value of a word (case does not matter); empty when it is not there.
    QString value(const QString &word) const;
    /// The string for the driver: without our own words, with what the driver needs for wide text.
    QString forDriver() const;
    /// "server/database", without user and password.
    QString displayName() const;
    /// `text` with the password blanked out, wherever a driver repeats it.
    QString withoutSecrets(QString text) const;

    int loginSeconds() const { return seconds(QStringLiteral("LoginTimeout"), 10); }
    /// How long an answer may take until the line counts as dead.
    int answerSeconds() const { return seconds(QStringLiteral("AnswerTimeout"), 60); }
    /// How long a statement waits for another user's lock.
    int lockSeconds() const { return seconds(QStringLiteral("LockTimeout"), 5); }

private:
    int seconds(const QString &word, int otherwise) const;

    struct TPart {
        QString word;
        QString value;
        QString text; // as given, with its braces
    };
    QList<TPart> m_parts;
};
