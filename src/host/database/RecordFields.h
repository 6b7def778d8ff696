#pragma once

#include "host/database/Query.h"

#include <span>
#include <variant>

/// Where a record keeps the value of one field: text, whole number, flag or amount.
template <class Record>
using TMember = std::variant<QString Record::*, int Record::*, bool Record::*, double Record::*>;

/// One field of a record: its column in the table, and its member in the record that travels between a screen and its
/// data module. A record's fields stand in one table, in the order in which their columns are set.
template <class Record>
struct TField {
    const char *column;
    TMember<Record> member;
};

/// What data modules do with all fields of a record. All throw TDatabaseError.
namespace Fields {

inline void take(const QVariant &value, QString &member)
{
    member = value.toString();
}
inline void take(const QVariant &value, int &member)
{
    member = value.toInt();
}
inline void take(const QVariant &value, bool &member)
{
    member = value.toInt() != 0;
}
inline void take(const QVariant &value, double &member)
{
    member = value.toDouble();
}

/// Copies the query's current row into the record; without a row every field becomes empty, zero or false.
template <class Record>
void read(const TQuery &row, std::span<const TField<Record>> fields, Record &record)
{
    for (const TField<Record> &field : fields)
        std::visit([&](auto member) { take(row.value(QString::fromLatin1(field.column)), record.*member); },
                   field.member);
}

/// Sets the columns of a row under append or edit, in the order of the fields.
template <class Record>
void write(TQuery &row, std::span<const TField<Record>> fields, const Record &record)
{
    for (const TField<Record> &field : fields)
        std::visit([&](auto member) { row.setValue(QString::fromLatin1(field.column), record.*member); },
                   field.member);
}

} // namespace Fields
