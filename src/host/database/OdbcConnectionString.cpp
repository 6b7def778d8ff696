#include "host/database/OdbcConnectionString.h"

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

QString TOdbcConnectionString::forDriver() const
{
    static const QStringList own{u"logintimeout"_s, u"answertimeout"_s, u"locktimeout"_s};
    QStringList parts;
    for (const TPart &part : m_parts) {
        if (!own.contains(part.word.toLower()))
            parts.append(part.word + QLatin1Char('=') + part.text);
    }
    // FreeTDS talks an old protocol in an 8-bit character set unless it is told otherwise.
    if (value(u"DRIVER"_s).contains("FreeTDS"_L1, Qt::CaseInsensitive)) {
        if (value(u"TDS_Version"_s).isEmpty())
            parts.append(u"TDS_Version=7.4"_s);
        if (value(u"ClientCharset"_s).isEmpty())
            parts.append(u"ClientCharset=UTF-8"_s);
    }
    return parts.join(QLatin1Char(';')) + QLatin1Char(';');
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

QString TOdbcConnectionString::withoutSecrets(QString text) const
{
    for (const TPart &part : m_parts) {
        if (passwordWords().contains(part.word, Qt::CaseInsensitive) && !part.value.isEmpty()) {
            text.replace(part.text, u"***"_s);
            text.replace(part.value, u"***"_s);
        }
    }
    return text;
}
