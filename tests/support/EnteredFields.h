#pragma once

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/RecordFields.h"
#include "support/Keys.h"

#include <QTabWidget>

#include <gtest/gtest.h>

#include <set>

/// The fields of a record on their way from the screen to the table and back: what is typed into the input of a column,
/// or the position that is chosen there, and so stored.
namespace EnteredFields {

inline QWidget *inputOf(const QWidget &editor, const TFieldInput &field)
{
    auto *input = editor.findChild<QWidget *>(QString::fromLatin1(field.name));
    if (!input)
        ADD_FAILURE() << "no input " << field.name;
    for (QWidget *page = input; page && page->parentWidget(); page = page->parentWidget())
        if (auto *pages = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()))
            pages->setCurrentWidget(page);
    return input;
}

/// Types a value into its input, chooses it or ticks it, with real keys.
inline void enter(QWidget &editor, const TFieldInput &field, const QString &value)
{
    QWidget *input = inputOf(editor, field);
    if (!input || !input->isEnabled())
        return;
    input->setFocus();
    if (qobject_cast<QComboBox *>(input)) {
        Keys::press(&editor, Qt::Key_Home);
        for (int i = 0; i < value.toInt() - field.first; ++i)
            Keys::press(&editor, Qt::Key_Down);
    } else if (const auto *box = qobject_cast<QCheckBox *>(input)) {
        if (box->isChecked() != (value == "1"_L1))
            Keys::press(&editor, Qt::Key_Space);
    } else if (auto *spin = qobject_cast<TSmartSpinEdit_ZLM *>(input)) {
        for (int i = 0; i < 10; ++i)
            Keys::press(&editor, i < 10 - value.toInt() ? Qt::Key_Down : Qt::Key_Up);
        EXPECT_EQ(spin->GetText(), value);
    } else {
        Keys::retype(input, value);
    }
}

/// The value of a field's input as its column stores it.
inline QString shown(const QWidget &editor, const TFieldInput &field)
{
    const auto *input = dynamic_cast<const TSmartInput *>(inputOf(editor, field));
    const auto *choice = dynamic_cast<const TSmartComboBox_ZLM *>(input);
    if (!choice)
        return input ? input->GetText() : QString();
    return QString::number(field.kind == TFieldInput::CodedChoice ? choice->Code()
                                                                  : choice->currentIndex() + field.first);
}

/// Every field that has an input has a value to enter and a cell of its own: two inputs in one would hide each other.
template <class Record>
void expectPlaces(std::span<const TField<Record>> fields, const QHash<QString, QString> &entered)
{
    std::set<std::tuple<int, int, int>> cells;
    for (const TField<Record> &field : fields) {
        const TFieldInput &at = field.input;
        EXPECT_TRUE(!at.name || entered.contains(QString::fromLatin1(field.column))) << field.column;
        const bool placed = at.name && at.kind != TFieldInput::Own;
        EXPECT_TRUE(!placed || cells.insert({at.page, at.row, at.column}).second) << field.column;
    }
}

/// Enters all fields of some pages.
template <class Record>
void enterAll(QWidget &editor, std::span<const TField<Record>> fields, const QList<int> &pages,
              const QHash<QString, QString> &entered)
{
    for (const int page : pages)
        for (const TField<Record> *field : Fields::onPage(fields, page))
            enter(editor, field->input, entered.value(QString::fromLatin1(field->column)));
}

} // namespace EnteredFields
