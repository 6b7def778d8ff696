#pragma once

#include "host/Export.h"
#include "host/database/LineState.h"

#include <QList>
#include <QString>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

/// Where a server listens.
struct TServerAddress {
    QString host;
    QString instance; ///< empty: by port
    int port = 0;     ///< 0: the driver's own
};

/// An ODBC connection string ("Driver={FreeTDS};Server=...;PWD={a;b}"), read by ODBC's own rules: parts parted by
/// semicolons, words without regard to case, values in braces may hold semicolons and doubled closing braces.
///
/// Some words are our own: LoginTimeout, AnswerTimeout and LockTimeout, in seconds, and those that the vendor's driver
/// has, too, and FreeTDS has under other names or nowhere: Encrypt, TrustServerCertificate, CAFile, Failover_Partner.
class KETEBIONPAP_CORE TOdbcConnectionString {
public:
    /// Which driver's words it is written for.
    enum class Driver { None, FreeTds, Vendor, Unknown };

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

    Driver driver() const;
    /// What it asks for: encrypted and checked unless it says otherwise (Encrypt=no, TrustServerCertificate=yes).
    TLinePrivacy privacy() const;
    /// The file of the authorities that the server's certificate is checked against; empty: the system's.
    QString authorities() const { return value(u"CAFile"_s); }
    /// The servers in the order in which they are tried: Server, then those of Failover_Partner. At least one.
    QList<TServerAddress> servers() const;

    QString text() const;
    /// Throws TDatabaseError where no driver is named, the named one cannot do what the string asks for, or the password
    /// cannot be told to it.
    void check() const;
    /// The string for the driver: in its own words, for one of the servers. `section` is the section of the driver's
    /// configuration that stands for the server, where the driver wants one.
    QString forDriver(const TServerAddress &server, const QString &section = {}) const;
    /// "server/database", without user and password.
    QString displayName() const;
    /// `text` with the password blanked out, wherever a driver repeats it; a short one only where it stands alone.
    QString withoutSecrets(const QString &text) const;

    int loginSeconds() const { return seconds(u"LoginTimeout"_s, 10); }
    /// How long an answer may take until the line counts as dead.
    int answerSeconds() const { return seconds(u"AnswerTimeout"_s, 60); }
    /// How long a statement waits for another user's lock.
    int lockSeconds() const { return seconds(u"LockTimeout"_s, 5); }

private:
    struct TPart {
        QString word;
        QString value;
        QString text; // as given, with its braces
    };
    int seconds(const QString &word, int otherwise) const;
    QStringList privacyWords() const;
    static QString freeTdsText(const TPart &part);

    QList<TPart> m_parts;
};
