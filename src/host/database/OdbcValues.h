#pragma once

#include "host/database/OdbcHandles.h"

#include <QVariant>
#include <list>

namespace Odbc {

/// The values of a statement's places; they must live until the statement has run.
class TParameters {
public:
    /// Binds the values to the places of a statement, in order. False: the driver refuses one.
    bool bind(SQLHSTMT statement, const QVariantList &values);

private:
    struct TValue {
        qlonglong integer = 0;
        double number = 0;
        QByteArray bytes;
        QString text;
        SQLLEN length = 0;
    };
    SQLRETURN bindOne(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept, const QVariant &value);
    SQLRETURN bindText(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept, const QString &text);
    SQLRETURN bindNumber(SQLHSTMT statement, SQLUSMALLINT place, TValue &kept, double number);

    std::list<TValue> m_values;
};

/// What the driver tells of a column of a result.
struct TColumn {
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT scale = 0;
};

/// Reads one column of a statement's current row. `code` is the driver's answer.
QVariant read(SQLHSTMT statement, SQLUSMALLINT column, const TColumn &what, SQLRETURN &code);

/// A decimal with its 15 significant digits, without an exponent; empty when 38 digits do not hold it.
QString decimalText(double number);

} // namespace Odbc
