#include "host/database/OdbcConnectionString.h"

#include <algorithm>

namespace {

QStringList passwordWords()
{
    return {QStringLiteral("PWD"), QStringLiteral("Password")};
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
    return has(QStringLiteral("PWD")) || has(QStringLiteral("Password"));
}

bool TOdbcConnectionString::needsPassword() const
{
    const bool user =
        has(QStringLiteral("UID")) || has(QStringLiteral("User")) || has(QStringLiteral("User ID"));
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
        return letter.isLetterOrNumber() || QStringLiteral("._-\\,").contains(letter);
    });
    if (!plain)
        written = u'{' + written.replace(QLatin1String("}"), QLatin1String("}}")) + u'}';
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

QString TOdbcConnectionString::forDriver() const
{
    static const QStringList own{QStringLiteral("logintimeout"), QStringLiteral("answertimeout"),
                                 QStringLiteral("locktimeout")};
    QStringList parts;
    for (const TPart &part : m_parts) {
        if (!own.contains(part.word.toLower()))
            parts.append(part.word + QLatin1Char('=') + part.text);
    }
    // FreeTDS talks an old protocol in an 8-bit character set unless it is told otherwise.
    if (value(QStringLiteral("DRIVER")).contains(QLatin1String("FreeTDS"), Qt::CaseInsensitive)) {
        if (value(QStringLiteral("TDS_Version")).isEmpty())
            parts.append(QStringLiteral("TDS_Version=7.4"));
        if (value(QStringLiteral("ClientCharset")).isEmpty())
            parts.append(QStringLiteral("ClientCharset=UTF-8"));
    }
    return parts.join(QLatin1Char(';')) + QLatin1Char(';');
}

QString TOdbcConnectionString::displayName() const
{
    QString server = value(QStringLiteral("SERVER"));
    if (server.isEmpty())
        server = value(QStringLiteral("SERVERNAME"));
    if (server.isEmpty())
        server = value(QStringLiteral("DSN"));
    const QString database = value(QStringLiteral("DATABASE"));
    return database.isEmpty() ? server : server + QLatin1Char('/') + database;
}

QString TOdbcConnectionString::withoutSecrets(QString text) const
{
    for (const TPart &part : m_parts) {
        if (passwordWords().contains(part.word, Qt::CaseInsensitive) && !part.value.isEmpty()) {
            text.replace(part.text, QStringLiteral("***"));
            text.replace(part.value, QStringLiteral("***"));
        }
    }
    return text;
}
