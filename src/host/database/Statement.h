#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>
#include <QVariant>

/// A statement under construction: literal T-SQL pieces and the values between them.
///
/// The one place where a value meets SQL. Values are always bound, never written into the text that runs:
///     TStatement("select * from CalcMethod where code=").integer(code)
///     TStatement::format("Delete From CodeLock_TBL Where (Status=%d) AND (Com_Index = %d)", {status, index})
class KETEBIONPAP_CORE TStatement {
public:
    TStatement() = default;
    TStatement(const QString &literal) { sql(literal); }
    TStatement(const char *literal) { sql(QString::fromUtf8(literal)); }

    /// A literal with "%d" (integer) and "%s" (integer or text, bound) places, filled in order.
    static TStatement format(const QString &literal, const QVariantList &values);

    TStatement &sql(const QString &literal);
    /// An integer value; a text of decimal digits is taken as its integer. Anything else binds NULL.
    TStatement &integer(const QVariant &value);
    /// An amount (double), bound with its 15 significant digits.
    TStatement &amount(double value);
    /// A text value.
    TStatement &text(const QString &value);
    /// Any value as it is (QString, int, qlonglong, double, bool, QByteArray, null).
    TStatement &value(const QVariant &value);
    /// A comma-separated list of integers, each bound. Entries that are no integers are left out; an empty
    /// list becomes "null", which matches no row.
    TStatement &integers(const QString &commaSeparated);
    /// Another statement's text and values, appended.
    TStatement &append(const TStatement &other);
    /// Marks a condition that must be asked of every row, such as a search in texts: a list then counts its rows in the
    /// walk that finds them. A statement that takes it in is marked, too.
    TStatement &walking();
    bool isWalking() const { return m_walking; }

    bool isEmpty() const { return m_text.isEmpty(); }
    /// The text that runs, with "?" for each value in order. A ":Name" in a literal is a typed parameter,
    /// given by TQuery::setParam.
    const QString &boundText() const { return m_text; }
    const QVariantList &values() const { return m_values; }
    /// The statement with its values written in, for logs and tests: integers in decimal, amounts through
    /// FloatToStr_ZLM, text in single quotes with inner quotes doubled. Never executed.
    QString asText() const;

private:
    QString m_text;
    QVariantList m_values;
    bool m_walking = false;
    QList<qsizetype> m_places; // where in m_text each "?" stands: a "?" in a literal is no place
};
