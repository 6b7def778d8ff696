#pragma once

#include "host/Export.h"
#include "host/database/Query.h"

#include <QStringList>

#include <algorithm>
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
        LatinCode,    ///< the same, with the blanks that are typed
        Integer,      ///< a whole number
        Number,       ///< a number with decimals
        Money,        ///< the same, shown with separators
        PickedCode,   ///< a code that is typed or picked from another list; none is stored as 0
        NationalCode, ///< a text of fixed form, like the next four
        IdNumber,
        Telephone,
        PostCode,
        Email,
        Date,        ///< Persian
        Time,        ///< of a day
        Spin,        ///< a small whole number
        Tick,        ///< yes or no; its caption stands in the box itself
        PlainTick,   ///< the same, its caption before it as with other inputs
        Choice,      ///< the position in a list
        WideChoice,  ///< the same, of items that may be wider than the screen
        CodedChoice, ///< a list that the screen fills; what is chosen is the screen's to show and to read
        Own,         ///< an input that the screen makes, shows and reads itself
    };
    const char *name = nullptr; ///< of the input; null: the editor has none of its own for the field
    const char16_t *caption = u"";
    Kind kind = Text;
    int page = 0; ///< row and column are cells of this page; the tab order is page, row, column
    int row = 0;
    int column = 0;
    int limit = 0;                             ///< characters that may be typed; 0: the kind's own
    const QStringList &(*choices)() = nullptr; ///< the items of a list
    int first = 0;                             ///< what the first item is stored as
    const char16_t *suffix = u"";              ///< stands behind the input
    double least = 0;                          ///< what may be typed; both 0: the kind's own bounds
    double most = 0;
};

/// Whether a save of a stored record sets a column, too.
enum class TFieldChange { Always, Never };

/// What a column makes of a member. Those that are kept as numbers are null for an empty text.
enum class TFieldForm { AsItIs, SmallNumber, LargeNumber, Decimal };

/// One field of a record: its column in the table, its member in the record that travels between a screen and its data
/// module, and its input. A record's fields stand in one table, in the order in which their columns are set.
template <class Record>
struct TField {
    const char *column;
    TMember<Record> member;
    TFieldInput input = {};
    TFieldChange change = TFieldChange::Always;
    TFieldForm form = TFieldForm::AsItIs; ///< of a text
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

/// A text as a column of the form keeps it. Throws when it is no value of it.
KETEBIONPAP_CORE QVariant stored(const char *column, TFieldForm form, const QString &text);
/// The text of a value that a column of the form keeps.
KETEBIONPAP_CORE QString textOf(TFieldForm form, const QVariant &value);

/// Copies the query's current row into the record; without a row every field becomes empty, zero or false.
template <class Record>
void read(const TQuery &row, std::span<const TField<Record>> fields, Record &record)
{
    for (const TField<Record> &field : fields) {
        const QVariant value = row.value(QString::fromLatin1(field.column));
        if (field.form != TFieldForm::AsItIs)
            record.*std::get<QString Record::*>(field.member) = textOf(field.form, value);
        else
            std::visit([&](auto member) { take(value, record.*member); }, field.member);
    }
}

/// Sets the columns of a row under append or edit, in the order of the fields.
template <class Record>
void write(TQuery &row, std::span<const TField<Record>> fields, const Record &record, bool newRow = true)
{
    for (const TField<Record> &field : fields) {
        const QString column = QString::fromLatin1(field.column);
        if (!newRow && field.change == TFieldChange::Never)
            continue;
        if (field.form != TFieldForm::AsItIs)
            row.setValue(column,
                         stored(field.column, field.form, record.*std::get<QString Record::*>(field.member)));
        else
            std::visit([&](auto member) { row.setValue(column, record.*member); }, field.member);
    }
}

/// The field of a column; null when there is none.
template <class Record>
const TField<Record> *ofColumn(std::span<const TField<Record>> fields, const char *column)
{
    for (const TField<Record> &field : fields)
        if (qstricmp(field.column, column) == 0)
            return &field;
    return nullptr;
}

template <class Record>
QStringList columns(std::span<const TField<Record>> fields)
{
    QStringList names;
    for (const TField<Record> &field : fields)
        names.append(QString::fromLatin1(field.column));
    return names;
}

/// The fields whose inputs stand on a page, by row and column.
template <class Record>
QList<const TField<Record> *> onPage(std::span<const TField<Record>> fields, int page)
{
    QList<const TField<Record> *> found;
    for (const TField<Record> &field : fields)
        if (field.input.name && field.input.page == page)
            found.append(&field);
    std::ranges::sort(found, {},
                      [](const auto *field) { return std::pair(field->input.row, field->input.column); });
    return found;
}

} // namespace Fields
