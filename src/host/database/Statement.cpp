#include "host/database/Statement.h"

#include "host/Utility_ZLM/Decimal.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool isIntegerType(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

QVariant asInteger(const QVariant &value)
{
    if (isIntegerType(value))
        return value.toLongLong();
    if (value.typeId() == QMetaType::QString) {
        bool ok = false;
        const qlonglong number = value.toString().trimmed().toLongLong(&ok);
        if (ok)
            return number;
    }
    return {};
}

QString written(const QVariant &value)
{
    if (value.isNull() || !value.isValid())
        return u"null"_s;
    if (isIntegerType(value))
        return QString::number(value.toLongLong());
    if (value.typeId() == QMetaType::Double)
        return FloatToStr_ZLM(value.toDouble());
    if (value.typeId() == QMetaType::QByteArray)
        return u"0x"_s + QString::fromLatin1(value.toByteArray().toHex());
    return u'\'' + value.toString().replace(u'\'', u"''"_s) + u'\'';
}

} // namespace

TStatement TStatement::format(const QString &literal, const QVariantList &values)
{
    TStatement statement;
    qsizetype from = 0, used = 0;
    for (qsizetype at = literal.indexOf(u'%'); at >= 0 && at + 1 < literal.size();
         at = literal.indexOf(u'%', at + 1)) {
        const QChar kind = literal[at + 1];
        if (kind != u'd' && kind != u's')
            continue;
        // '%s' in quotes: the value brings its own meaning, the quotes go.
        const bool quoted =
            at > 0 && literal[at - 1] == u'\'' && at + 2 < literal.size() && literal[at + 2] == u'\'';
        statement.sql(literal.mid(from, at - from - (quoted ? 1 : 0)));
        const QVariant value = values.value(used++);
        if (kind == u'd')
            statement.integer(value);
        else if (quoted)
            statement.text(value.toString());
        else
            statement.value(value);
        from = at + 2 + (quoted ? 1 : 0);
    }
    return statement.sql(literal.mid(from));
}

TStatement &TStatement::sql(const QString &literal)
{
    m_text += literal;
    return *this;
}

TStatement &TStatement::value(const QVariant &value)
{
    m_places.append(m_text.size());
    m_text += u'?';
    m_values.append(value);
    return *this;
}

TStatement &TStatement::integer(const QVariant &value)
{
    return this->value(asInteger(value));
}

TStatement &TStatement::amount(double value)
{
    return this->value(value);
}

TStatement &TStatement::text(const QString &value)
{
    // A null string is an empty text here; NULL is bound with value(QVariant()).
    return this->value(value.isNull() ? u""_s : value);
}

TStatement &TStatement::integers(const QString &commaSeparated)
{
    bool any = false;
    for (const QString &entry : commaSeparated.split(u',', Qt::SkipEmptyParts)) {
        const QVariant number = asInteger(entry);
        if (number.isNull())
            continue;
        if (any)
            sql(u","_s);
        value(number);
        any = true;
    }
    return any ? *this : sql(u"null"_s);
}

TStatement &TStatement::append(const TStatement &other)
{
    for (const qsizetype place : other.m_places)
        m_places.append(m_text.size() + place);
    m_text += other.m_text;
    m_values += other.m_values;
    m_walking = m_walking || other.m_walking;
    return *this;
}

TStatement &TStatement::walking()
{
    m_walking = true;
    return *this;
}

QString TStatement::asText() const
{
    QString text;
    qsizetype from = 0;
    for (qsizetype i = 0; i < m_places.size(); ++i) {
        text += QStringView(m_text).mid(from, m_places[i] - from);
        text += written(m_values[i]);
        from = m_places[i] + 1;
    }
    return text + QStringView(m_text).mid(from).toString();
}
