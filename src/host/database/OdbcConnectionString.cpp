#include "host/database/OdbcConnectionString.h"

#include <QStringList>

TOdbcConnectionString::TOdbcConnectionString(const QString &text)
{
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype equals = text.indexOf(QLatin1Char('='), at);
        if (equals < 0)
            break;
        TPart part;
        part.word = text.mid(at, equals - at).trimmed();
        qsizetype end = equals + 1;
        while (end < text.size() && text[end].isSpace())
            ++end;
        if (end < text.size() && text[end] == QLatin1Char('{')) {
            // A braced value may hold ";" and, doubled, "}".
            const qsizetype begin = end++;
            while (end < text.size()) {
                if (text[end] != QLatin1Char('}')) {
                    part.value += text[end++];
                } else if (end + 1 < text.size() && text[end + 1] == QLatin1Char('}')) {
                    part.value += QLatin1Char('}');
                    end += 2;
                } else {
                    ++end;
                    break;
                }
            }
            part.text = text.mid(begin, end - begin);
            const qsizetype next = text.indexOf(QLatin1Char(';'), end);
            at = next < 0 ? text.size() : next + 1;
        } else {
            const qsizetype next = text.indexOf(QLatin1Char(';'), end);
            part.text = part.value = text.mid(end, next < 0 ? -1 : next - end).trimmed();
            at = next < 0 ? text.size() : next + 1;
        }
        if (!part.word.isEmpty())
            m_parts.append(part);
    }
}

QString TOdbcConnectionString::value(const QString &word) const
{
    for (const TPart &part : m_parts) {
        if (part.word.compare(word, Qt::CaseInsensitive) == 0)
            return part.value;
    }
    return {};
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
        const QString word = part.word.toLower();
        if ((word == QLatin1String("pwd") || word == QLatin1String("password")) && !part.value.isEmpty()) {
            text.replace(part.text, QStringLiteral("***"));
            text.replace(part.value, QStringLiteral("***"));
        }
    }
    return text;
}
