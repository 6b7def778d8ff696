#include "app/ConnectionText.h"

#include <QList>

#include <algorithm>

namespace {

struct TPart {
    QString name;
    QString value; ///< as written, braces included
};

QList<TPart> parts(const QString &text)
{
    QList<TPart> list;
    qsizetype i = 0;
    while (i < text.size()) {
        TPart part;
        while (i < text.size() && text[i] != u'=' && text[i] != u';')
            part.name += text[i++];
        if (i < text.size() && text[i] == u'=') {
            ++i;
            while (i < text.size() && text[i].isSpace())
                ++i;
            if (i < text.size() && text[i] == u'{') {
                part.value += text[i++];
                while (i < text.size()) {
                    const QChar letter = text[i++];
                    part.value += letter;
                    if (letter != u'}')
                        continue;
                    if (i < text.size() && text[i] == u'}')
                        part.value += text[i++];
                    else
                        break;
                }
            }
            while (i < text.size() && text[i] != u';')
                part.value += text[i++];
        }
        ++i;
        if (!part.name.trimmed().isEmpty() || !part.value.isEmpty())
            list.append(part);
    }
    return list;
}

bool isNamed(const TPart &part, const char *name)
{
    return part.name.trimmed().compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

bool isPassword(const TPart &part)
{
    return isNamed(part, "PWD") || isNamed(part, "Password");
}

QString joined(const QList<TPart> &list)
{
    QStringList texts;
    for (const TPart &part : list)
        texts << part.name + u'=' + part.value;
    return texts.join(u';');
}

} // namespace

QString ConnectionText::part(const QString &text, const QString &name)
{
    for (const TPart &one : parts(text)) {
        if (!isNamed(one, name.toLatin1().constData()))
            continue;
        QString value = one.value.trimmed();
        if (value.startsWith(u'{') && value.endsWith(u'}'))
            value = value.mid(1, value.size() - 2).replace(QLatin1String("}}"), QLatin1String("}"));
        return value.isNull() ? QString("") : value;
    }
    return {};
}

bool ConnectionText::hasPassword(const QString &text)
{
    for (const TPart &part : parts(text)) {
        if (isPassword(part))
            return true;
    }
    return false;
}

bool ConnectionText::needsPassword(const QString &text)
{
    bool user = false;
    for (const TPart &part : parts(text))
        user = user || isNamed(part, "UID") || isNamed(part, "User") || isNamed(part, "User ID");
    return user && !hasPassword(text);
}

QString ConnectionText::withoutPassword(const QString &text)
{
    return without(text, {QStringLiteral("PWD"), QStringLiteral("Password")});
}

QString ConnectionText::without(const QString &text, const QStringList &names)
{
    QList<TPart> list = parts(text);
    list.removeIf(
        [&names](const TPart &part) { return names.contains(part.name.trimmed(), Qt::CaseInsensitive); });
    return joined(list);
}

QString ConnectionText::with(const QString &text, const QString &name, const QString &value)
{
    QList<TPart> list = parts(without(text, {name}));
    QString written = value;
    const bool plain = std::all_of(value.begin(), value.end(), [](QChar letter) {
        return letter.isLetterOrNumber() || QStringLiteral("._-\\,").contains(letter);
    });
    if (!plain)
        written = u'{' + written.replace(QLatin1String("}"), QLatin1String("}}")) + u'}';
    list.append({name, written});
    return joined(list);
}
