#pragma once

#include "host/database/Query.h"

#include <QStringList>

#include <span>
#include <variant>

/// Where a record keeps the value of one field: text, whole number, flag or amount.
template <class Record>
using TMember = std::variant<QString Record::*, int Record::*, bool Record::*, double Record::*>;

/// How an editor shows a field: what it is typed into, and where that stands.
struct TFieldInput {
    enum Kind {
        Text,         ///< anything
        PlainCode,    ///< a number of something: without blanks, in Latin digits
        Integer,      ///< a whole number
        NationalCode, ///< a text of fixed form, like the next four
        IdNumber,
        Telephone,
        PostCode,
        Email,
        Date,        ///< Persian
        Choice,      ///< the position in a list
        WideChoice,  ///< the same, of items that may be wider than the screen
        CodedChoice, ///< a list that the screen fills; what is chosen is the screen's to show and to read
    };
    const char *name = nullptr; ///< of the input; null: the editor has none of its own for the field
    const char16_t *caption = u"";
    Kind kind = Text;
    int page = 0; ///< row and column are cells of this page; the tab order is page, row, column
    int row = 0;
    int column = 0;
    int limit = 0;                             ///< characters that may be typed; 0: the kind's own
    const QStringList &(*choices)() = nullptr; ///< the items of a list
};

/// One field of a record: its column in the table, its member in the record that travels between a screen and its data
/// module, and its input. A record's fields stand in one table, in the order in which their columns are set.
template <class Record>
struct TField {
    const char *column;
    TMember<Record> member;
    TFieldInput input = {};
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

/// The field of a column; null when there is none.
template <class Record>
const TField<Record> *ofColumn(std::span<const TField<Record>> fields, const char *column)
{
    for (const TField<Record> &field : fields)
        if (qstrcmp(field.column, column) == 0)
            return &field;
    return nullptr;
}

} // namespace Fields
