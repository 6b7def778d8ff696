#include "host/database/OdbcConnectionString.h"

#include "host/database/DatabaseError.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList passwordWords()
{
    return {u"PWD"_s, u"Password"_s};
}

qsizetype endOf(const QString &text, qsizetype at)
{
    const qsizetype end = text.indexOf(u';', at);
    return end < 0 ? text.size() : end;
}

// Reads a value in braces, which may hold ";" and, doubled, "}"; answers where it ends.
qsizetype readBraced(const QString &text, qsizetype at, QString &value)
{
    for (++at; at < text.size(); ++at) {
        if (text[at] == u'}' && (at + 1 == text.size() || text[++at] != u'}'))
            return at;
        value += text[at];
    }
    return at;
}

// Without a secret. A short one may be part of a word that says what went wrong: it is blanked where it stands alone.
QString blanked(const QString &text, const QString &secret)
{
    const qsizetype shortOne = 8;
    QString clean;
    qsizetype from = 0;
    for (qsizetype at = 0; (at = text.indexOf(secret, from)) >= 0;) {
        const qsizetype end = at + secret.size();
        const bool goesOn =
            (at > 0 && text[at - 1].isLetterOrNumber() && secret.front().isLetterOrNumber()) ||
            (end < text.size() && text[end].isLetterOrNumber() && secret.back().isLetterOrNumber());
        clean += text.mid(from, at - from) + (goesOn && secret.size() < shortOne ? secret : u"***"_s);
        from = end;
    }
    return clean + text.mid(from);
}

} // namespace

TOdbcConnectionString::TOdbcConnectionString(const QString &text)
{
    qsizetype at = 0;
    while (at < text.size()) {
        TPart part;
        const qsizetype equals = text.indexOf(u'=', at);
        qsizetype end = endOf(text, at);
        if (equals < 0 || equals > end) {
            part.word = text.mid(at, end - at).trimmed();
        } else {
            part.word = text.mid(at, equals - at).trimmed();
            at = equals + 1;
            while (at < text.size() && text[at].isSpace())
                ++at;
            if (at < text.size() && text[at] == u'{') {
                const qsizetype begin = at;
                at = readBraced(text, at, part.value);
                part.text = text.mid(begin, at - begin);
                end = endOf(text, at);
            } else {
                end = endOf(text, at);
                part.text = part.value = text.mid(at, end - at).trimmed();
            }
        }
        at = end + 1;
        if (!part.word.isEmpty())
            m_parts.append(part);
    }
}

bool TOdbcConnectionString::has(const QString &word) const
{
    return std::any_of(m_parts.begin(), m_parts.end(),
                       [&](const TPart &part) { return part.word.compare(word, Qt::CaseInsensitive) == 0; });
}

QString TOdbcConnectionString::value(const QString &word) const
{
    for (const TPart &part : m_parts) {
        if (part.word.compare(word, Qt::CaseInsensitive) == 0)
            return part.value;
    }
    return {};
}

bool TOdbcConnectionString::hasPassword() const
{
    return has(u"PWD"_s) || has(u"Password"_s);
}

bool TOdbcConnectionString::needsPassword() const
{
    const bool user = has(u"UID"_s) || has(u"User"_s) || has(u"User ID"_s);
    return user && !hasPassword();
}

TOdbcConnectionString TOdbcConnectionString::without(const QStringList &words) const
{
    TOdbcConnectionString rest = *this;
    rest.m_parts.removeIf(
        [&words](const TPart &part) { return words.contains(part.word, Qt::CaseInsensitive); });
    return rest;
}

TOdbcConnectionString TOdbcConnectionString::withoutPassword() const
{
    return without(passwordWords());
}

TOdbcConnectionString TOdbcConnectionString::with(const QString &word, const QString &value) const
{
    TOdbcConnectionString result = without({word});
    QString written = value;
    const bool plain = std::all_of(value.begin(), value.end(), [](QChar letter) {
        return letter.isLetterOrNumber() || u"._-\\,"_s.contains(letter);
    });
    if (!plain)
        written = u'{' + written.replace("}"_L1, "}}"_L1) + u'}';
    result.m_parts.append({word, value, written});
    return result;
}

QString TOdbcConnectionString::text() const
{
    QStringList texts;
    for (const TPart &part : m_parts)
        texts.append(part.word + u'=' + part.text);
    return texts.join(u';');
}

int TOdbcConnectionString::seconds(const QString &word, int otherwise) const
{
    bool ok = false;
    const int number = value(word).toInt(&ok);
    return ok && number > 0 ? number : otherwise;
}

TOdbcConnectionString::Driver TOdbcConnectionString::driver() const
{
    const QString name = value(u"DRIVER"_s);
    if (name.isEmpty())
        return has(u"DSN"_s) ? Driver::Unknown : Driver::None;
    if (name.contains("FreeTDS"_L1, Qt::CaseInsensitive) || name.contains("tdsodbc"_L1))
        return Driver::FreeTds;
    if (name.contains("SQL Server"_L1, Qt::CaseInsensitive) || name.contains("msodbcsql"_L1))
        return Driver::Vendor;
    return Driver::Unknown;
}

TLinePrivacy TOdbcConnectionString::privacy() const
{
    static const QStringList no{u"no"_s, u"false"_s, u"0"_s, u"off"_s, u"optional"_s};
    static const QStringList yes{u"yes"_s, u"true"_s, u"1"_s};
    if (no.contains(value(u"Encrypt"_s).trimmed(), Qt::CaseInsensitive))
        return TLinePrivacy::Readable;
    return yes.contains(value(u"TrustServerCertificate"_s).trimmed(), Qt::CaseInsensitive)
               ? TLinePrivacy::Unchecked
               : TLinePrivacy::Checked;
}

QList<TServerAddress> TOdbcConnectionString::servers() const
{
    QStringList texts{value(u"SERVER"_s)};
    texts += value(u"Failover_Partner"_s).split(u';', Qt::SkipEmptyParts);
    QList<TServerAddress> addresses;
    for (QString text : texts) {
        text = text.trimmed();
        if (text.startsWith("tcp:"_L1, Qt::CaseInsensitive))
            text.remove(0, 4);
        TServerAddress address;
        bool isPort = false;
        const int port = text.section(u',', 1).trimmed().toInt(&isPort);
        address.port = isPort ? port : 0;
        address.host = text.section(u',', 0, 0).section(u'\\', 0, 0).trimmed();
        address.instance = text.section(u',', 0, 0).section(u'\\', 1).trimmed();
        if (address.port == 0 && address.instance.isEmpty())
            address.port = value(u"PORT"_s).toInt();
        addresses.append(address);
    }
    return addresses;
}

void TOdbcConnectionString::check() const
{
    const Driver kind = driver();
    if (kind == Driver::None)
        throw TDatabaseError(TFault::NoDriver, u"the connection string names no DRIVER and no DSN"_s);
    // A section of the driver's own configuration says what is checked, and tells nobody.
    const bool hidden = kind == Driver::FreeTds && has(u"SERVERNAME"_s) && privacy() == TLinePrivacy::Checked;
    if (hidden || (kind == Driver::Unknown && privacy() != TLinePrivacy::Readable))
        throw TDatabaseError(
            TFault::UnknownPrivacy,
            u"nothing is known of how this driver encrypts; Encrypt=no says that it need not"_s);
    if (kind == Driver::Vendor && privacy() == TLinePrivacy::Checked && !authorities().isEmpty())
        throw TDatabaseError(TFault::UnknownPrivacy,
                             u"this driver knows the system's authorities only, and no CAFile"_s);
    if (kind == Driver::FreeTds && value(passwordWords().first()).contains("};"_L1))
        throw TDatabaseError(TFault::UnfitPassword, u"the driver takes no password with '};'"_s);
}

// FreeTDS reads a value in braces up to the first "};" and takes doubled braces as two: a value stands without braces
// wherever it can.
QString TOdbcConnectionString::freeTdsText(const TPart &part)
{
    const bool plain =
        !part.value.contains(u';') && !part.value.startsWith(u'{') && part.value.trimmed() == part.value;
    return plain ? part.value : u'{' + part.value + u'}';
}

// How the driver is told to encrypt and to check.
QStringList TOdbcConnectionString::privacyWords() const
{
    const TLinePrivacy wanted = privacy();
    const bool strict = value(u"Encrypt"_s).trimmed().compare("strict"_L1, Qt::CaseInsensitive) == 0;
    if (driver() == Driver::Vendor)
        return {u"Encrypt=%1"_s.arg(wanted == TLinePrivacy::Readable ? "no"_L1
                                    : strict                         ? "strict"_L1
                                                                     : "yes"_L1),
                u"TrustServerCertificate=%1"_s.arg(wanted == TLinePrivacy::Checked ? "no"_L1 : "yes"_L1)};
    if (wanted != TLinePrivacy::Readable)
        return {u"Encryption=require"_s};
    // The log-in at least is encrypted where the server can, unless the driver's own word says otherwise.
    return has(u"Encryption"_s) ? QStringList{u"Encryption="_s + value(u"Encryption"_s)} : QStringList();
}

QString TOdbcConnectionString::forDriver(const TServerAddress &server, const QString &section) const
{
    static const QStringList own{
        u"logintimeout"_s, u"answertimeout"_s, u"locktimeout"_s, u"cafile"_s, u"failover_partner"_s,
        u"encrypt"_s,      u"encryption"_s,    u"server"_s,      u"port"_s,   u"trustservercertificate"_s};
    const Driver kind = driver();
    const bool isFreeTds = kind == Driver::FreeTds;
    QStringList parts;
    for (const TPart &part : m_parts) {
        const QString word = part.word.toLower();
        if (kind == Driver::Unknown ? !own.mid(0, 3).contains(word) : !own.contains(word))
            parts.append(part.word + u'=' + (isFreeTds ? freeTdsText(part) : part.text));
    }
    if (kind == Driver::Unknown)
        return parts.join(u';') + u';';
    const QString host = server.instance.isEmpty() ? server.host : server.host + u'\\' + server.instance;
    const QString port = server.port > 0 ? QString::number(server.port) : QString();
    if (!section.isEmpty())
        parts.append(u"SERVERNAME="_s + section);
    else if (isFreeTds && !host.isEmpty())
        parts.append(u"SERVER="_s + host + (port.isEmpty() ? QString() : u";PORT="_s + port));
    else if (!host.isEmpty())
        parts.append(u"SERVER="_s + host + (port.isEmpty() ? QString() : u',' + port));
    parts += privacyWords();
    // FreeTDS talks an old protocol in an 8-bit character set unless it is told otherwise.
    if (isFreeTds && value(u"TDS_Version"_s).isEmpty())
        parts.append(u"TDS_Version=7.4"_s);
    if (isFreeTds && value(u"ClientCharset"_s).isEmpty())
        parts.append(u"ClientCharset=UTF-8"_s);
    return parts.join(u';') + u';';
}

QString TOdbcConnectionString::displayName() const
{
    QString server = value(u"SERVER"_s);
    if (server.isEmpty())
        server = value(u"SERVERNAME"_s);
    if (server.isEmpty())
        server = value(u"DSN"_s);
    const QString database = value(u"DATABASE"_s);
    return database.isEmpty() ? server : server + QLatin1Char('/') + database;
}

QString TOdbcConnectionString::withoutSecrets(const QString &text) const
{
    QString clean = text;
    for (const TPart &part : m_parts) {
        if (!passwordWords().contains(part.word, Qt::CaseInsensitive) || part.value.isEmpty())
            continue;
        clean = blanked(clean, part.text);
        clean = blanked(clean, freeTdsText(part));
        clean = blanked(clean, part.value);
    }
    return clean;
}
