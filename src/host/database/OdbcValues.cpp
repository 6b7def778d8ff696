#include "host/database/OdbcValues.h"

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

// The longest text and binary value that a plain (not a long) column holds.
const qsizetype plainCharacters = 4000;
const qsizetype plainBytes = 8000;

QVariant readText(SQLHSTMT statement, SQLUSMALLINT column, SQLRETURN &code)
{
    QString text;
    char16_t part[2048];
    SQLLEN length = 0;
    bool first = true;
    for (;;) {
        code = SQLGetData(statement, column, SQL_C_WCHAR, part, sizeof(part), &length);
        if (code == SQL_NO_DATA && !first) {
            code = SQL_SUCCESS;
            return text;
        }
        if (!SQL_SUCCEEDED(code))
            return {};
        if (length == SQL_NULL_DATA)
            return {};
        first = false;
        const auto room = SQLLEN(sizeof(part)) - SQLLEN(sizeof(char16_t));
        const bool cut = code == SQL_SUCCESS_WITH_INFO && (length == SQL_NO_TOTAL || length > room);
        text += QStringView(part, (cut ? room : length) / SQLLEN(sizeof(char16_t)));
        if (!cut) {
            code = SQL_SUCCESS;
            return text;
        }
    }
}

QVariant readBytes(SQLHSTMT statement, SQLUSMALLINT column, SQLRETURN &code)
{
    QByteArray bytes;
    char part[32768];
    SQLLEN length = 0;
    bool first = true;
    for (;;) {
        code = SQLGetData(statement, column, SQL_C_BINARY, part, sizeof(part), &length);
        if (code == SQL_NO_DATA && !first) {
            code = SQL_SUCCESS;
            return bytes;
        }
        if (!SQL_SUCCEEDED(code))
            return {};
        if (length == SQL_NULL_DATA)
            return {};
        first = false;
        const bool cut =
            code == SQL_SUCCESS_WITH_INFO && (length == SQL_NO_TOTAL || length > SQLLEN(sizeof(part)));
        bytes.append(part, cut ? qsizetype(sizeof(part)) : qsizetype(length));
        if (!cut) {
            code = SQL_SUCCESS;
            return bytes;
        }
    }
}

// A decimal as a whole number, as a double where 15 significant digits hold it, else as its text.
QVariant decimalValue(QByteArray text, SQLSMALLINT scale)
{
    if (text.contains('.')) {
        while (text.endsWith('0'))
            text.chop(1);
        if (text.endsWith('.'))
            text.chop(1);
    }
    bool ok = false;
    if (scale == 0) {
        const qlonglong whole = text.toLongLong(&ok);
        if (ok)
            return whole;
    }
    int digits = 0;
    bool leading = true;
    for (const char c : text) {
        if (c < '0' || c > '9' || (leading && c == '0'))
            continue;
        leading = false;
        ++digits;
    }
    if (digits > 15)
        return QString::fromLatin1(text);
    const double number = text.toDouble(&ok);
    return ok ? QVariant(number) : QVariant(QString::fromLatin1(text));
}

} // namespace

QString Odbc::decimalText(double number)
{
    if (!std::isfinite(number))
        return {};
    QString text = QString::number(number, 'g', 15);
    const qsizetype e = text.indexOf(u'e');
    if (e < 0)
        return text;
    const int exponent = text.mid(e + 1).toInt();
    QString digits = text.left(e);
    const bool negative = digits.startsWith(u'-');
    if (negative)
        digits.remove(0, 1);
    qsizetype point = digits.indexOf(u'.');
    if (point < 0)
        point = digits.size();
    else
        digits.remove(point, 1);
    point += exponent;
    if (point > 38 || digits.size() - point > 38)
        return {};
    if (point <= 0)
        digits = u"0."_s + QString(-point, u'0') + digits;
    else if (point >= digits.size())
        digits += QString(point - digits.size(), u'0');
    else
        digits.insert(point, u'.');
    return negative ? u'-' + digits : digits;
}

bool Odbc::TParameters::bind(SQLHSTMT statement, const QVariantList &values)
{
    SQLUSMALLINT place = 0;
    for (const QVariant &value : values) {
        m_values.emplace_back();
        if (!SQL_SUCCEEDED(bindOne(statement, ++place, m_values.back(), value)))
            return false;
    }
    return true;
}

SQLRETURN Odbc::TParameters::bindText(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept,
                                      const QString &text)
{
    kept.text = text;
    kept.length = SQLLEN(text.size() * qsizetype(sizeof(char16_t)));
    const bool isLong = text.size() > plainCharacters;
    // One width for all short texts: the server keeps one plan for a statement.
    return SQLBindParameter(
        statement, place, SQL_PARAM_INPUT, SQL_C_WCHAR, isLong ? SQL_WLONGVARCHAR : SQL_WVARCHAR,
        SQLULEN(isLong ? text.size() : plainCharacters), 0, wide(kept.text), kept.length, &kept.length);
}

SQLRETURN Odbc::TParameters::bindNumber(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept, double number)
{
    // As a decimal with its own digits: the binary number would bring 12345678901234.0996 for ...34.1.
    kept.bytes = decimalText(number).toLatin1();
    if (kept.bytes.isEmpty()) {
        kept.number = number;
        return SQLBindParameter(statement, place, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 15, 0,
                                &kept.number, sizeof(kept.number), nullptr);
    }
    const qsizetype point = kept.bytes.indexOf('.');
    const qsizetype scale = point < 0 ? 0 : kept.bytes.size() - point - 1;
    qsizetype digits = kept.bytes.size() - (point < 0 ? 0 : 1) - (kept.bytes.startsWith('-') ? 1 : 0);
    digits = qMax(digits, scale + 1);
    kept.length = SQLLEN(kept.bytes.size());
    return SQLBindParameter(statement, place, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_DECIMAL,
                            SQLULEN(qMin(digits, qsizetype(38))), SQLSMALLINT(scale), kept.bytes.data(),
                            kept.length, &kept.length);
}

SQLRETURN Odbc::TParameters::bindOne(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept,
                                     const QVariant &value)
{
    if (!value.isValid() || value.isNull()) {
        // An integer's null goes into a column of every type; a text's does not go into a picture.
        kept.length = SQL_NULL_DATA;
        return SQLBindParameter(statement, place, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 10, 0,
                                &kept.integer, sizeof(SQLINTEGER), &kept.length);
    }
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return bindNumber(statement, place, kept, value.toDouble());
    case QMetaType::QByteArray:
        kept.bytes = value.toByteArray();
        kept.length = SQLLEN(kept.bytes.size());
        return SQLBindParameter(statement, place, SQL_PARAM_INPUT, SQL_C_BINARY,
                                kept.bytes.size() > plainBytes ? SQL_LONGVARBINARY : SQL_VARBINARY,
                                SQLULEN(qMax(kept.bytes.size(), plainBytes)), 0, kept.bytes.data(),
                                kept.length, &kept.length);
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort: {
        kept.integer = value.toLongLong();
        const bool isShort = kept.integer >= std::numeric_limits<qint32>::min() &&
                             kept.integer <= std::numeric_limits<qint32>::max();
        return SQLBindParameter(statement, place, SQL_PARAM_INPUT, SQL_C_SBIGINT,
                                isShort ? SQL_INTEGER : SQL_BIGINT, isShort ? 10 : 19, 0, &kept.integer,
                                sizeof(kept.integer), nullptr);
    }
    default:
        return bindText(statement, place, kept, value.toString());
    }
}

QVariant Odbc::read(SQLHSTMT statement, SQLUSMALLINT column, const TColumn &what, SQLRETURN &code)
{
    SQLLEN length = 0;
    switch (what.type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT: {
        qlonglong number = 0;
        code = SQLGetData(statement, column, SQL_C_SBIGINT, &number, sizeof(number), &length);
        return length == SQL_NULL_DATA ? QVariant() : QVariant(number);
    }
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: {
        double number = 0;
        code = SQLGetData(statement, column, SQL_C_DOUBLE, &number, sizeof(number), &length);
        return length == SQL_NULL_DATA ? QVariant() : QVariant(number);
    }
    case SQL_DECIMAL:
    case SQL_NUMERIC: {
        char text[64] = {};
        code = SQLGetData(statement, column, SQL_C_CHAR, text, sizeof(text), &length);
        return length == SQL_NULL_DATA ? QVariant() : decimalValue(QByteArray(text), what.scale);
    }
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
        return readBytes(statement, column, code);
    default:
        return readText(statement, column, code);
    }
}
