#include "host/Utility_ZLM/PlainIni.h"

#include <QIODevice>
#include <QMap>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString bytesMark = u"@ByteArray("_s;
const QString generalSection = u"General"_s;

int hexDigit(QChar c)
{
    const QChar low = c.toLower();
    return low >= u'0' && low <= u'9'   ? low.unicode() - u'0'
           : low >= u'a' && low <= u'f' ? low.unicode() - u'a' + 10
                                        : -1;
}

/// One sign after a backslash at `at`, which is left behind it.
QChar unescaped(const QString &text, qsizetype &at)
{
    const QString names = u"abfnrtv"_s;
    const QString signs = u"\a\b\f\n\r\t\v"_s;
    const QChar sign = text[at++];
    if (sign == u'x') {
        ushort code = 0;
        for (int digits = 0; digits < 4 && at < text.size() && hexDigit(text[at]) >= 0; ++digits)
            code = ushort(code << 4 | hexDigit(text[at++]));
        return QChar(code);
    }
    if (sign >= u'0' && sign <= u'7') {
        ushort code = ushort(sign.unicode() - u'0');
        while (at < text.size() && text[at] >= u'0' && text[at] <= u'7' && code < 0x2000)
            code = ushort(code << 3 | (text[at++].unicode() - u'0'));
        return QChar(code);
    }
    const qsizetype name = names.indexOf(sign);
    return name < 0 ? sign : signs[name];
}

/// The texts of a value: parted by commas outside of quotes, without their quotes and escapes.
QStringList texts(const QString &line)
{
    QStringList list;
    QString text;
    bool quoted = false;
    bool wasQuoted = false;
    const auto finish = [&] {
        list.append(wasQuoted ? text : text.trimmed());
        text.clear();
        wasQuoted = false;
    };
    for (qsizetype at = 0; at < line.size();) {
        const QChar c = line[at++];
        if (c == u'\\' && at < line.size())
            text += unescaped(line, at);
        else if (c == u'"') {
            if (!wasQuoted)
                text.clear(); // blanks before it
            quoted = !quoted;
            wasQuoted = true;
        } else if (c == u',' && !quoted)
            finish();
        else if (quoted || !wasQuoted)
            text += c;
    }
    finish();
    return list;
}

QVariant valueOf(const QString &line)
{
    QStringList list = texts(line);
    if (list.size() > 1)
        return list;
    QString text = list.constFirst();
    if (!text.startsWith(u'@'))
        return text;
    if (text.startsWith(bytesMark) && text.endsWith(u')'))
        return text.mid(bytesMark.size()).chopped(1).toLatin1();
    return text.startsWith("@@"_L1) ? QVariant(text.mid(1)) : QVariant();
}

QString escaped(const QString &text)
{
    QString result = u"\""_s;
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            result += u"\\"_s + c;
        else if (c < u' ' || (c >= QChar(0x7f) && c < QChar(0xa0)) || c.isSurrogate() ||
                 c.unicode() >= 0xfff0)
            result += u"\\x%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
        else
            result += c;
    }
    return result + u'"';
}

QString lineOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray)
        return escaped(bytesMark + QString::fromLatin1(value.toByteArray()) + u')');
    const auto one = [](const QString &text) { return escaped(text.startsWith(u'@') ? u'@' + text : text); };
    if (value.typeId() != QMetaType::QStringList)
        return one(value.toString());
    QStringList list;
    for (const QString &text : value.toStringList())
        list << one(text);
    return list.join(u", "_s);
}

bool readFile(QIODevice &device, QSettings::SettingsMap &map)
{
    if (device.size() > PlainIni::MostBytes)
        return true;
    QString section;
    for (const QByteArray &bytes : device.read(PlainIni::MostBytes).split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            section = line.mid(1).chopped(1);
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 1 || line.startsWith(u';'))
            continue;
        QString key = line.left(equals).trimmed().replace(u'\\', u'/');
        if (!section.isEmpty() && section.compare(generalSection, Qt::CaseInsensitive) != 0)
            key.prepend(section + u'/');
        if (const QVariant value = valueOf(line.mid(equals + 1).trimmed()); value.isValid())
            map.insert(key, value);
    }
    return true;
}

bool writeFile(QIODevice &device, const QSettings::SettingsMap &map)
{
    QMap<QString, QString> sections;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (!entry.value().isValid())
            continue;
        const qsizetype slash = entry.key().indexOf(u'/');
        const QString section = slash < 0 ? generalSection : entry.key().left(slash);
        sections[section] +=
            entry.key().mid(slash + 1).replace(u'/', u'\\') + u'=' + lineOf(entry.value()) + u'\n';
    }
    QString text;
    for (auto section = sections.cbegin(); section != sections.cend(); ++section)
        text += (text.isEmpty() ? u"["_s : u"\n["_s) + section.key() + u"]\n"_s + section.value();
    const QByteArray bytes = text.toUtf8();
    return device.write(bytes) == bytes.size();
}

} // namespace

QSettings::Format PlainIni::format()
{
    static const QSettings::Format format =
        QSettings::registerFormat(u"ini"_s, readFile, writeFile, Qt::CaseSensitive);
    return format;
}
