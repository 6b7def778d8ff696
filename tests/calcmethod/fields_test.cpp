// The fields of a calculation method on their way from the screen to the table and back.
#include "calcmethod/Screens.h"
#include "support/EnteredFields.h"

namespace {

/// A field has a line here.
const QHash<QString, QString> entered = {
    {"Code", "41"},           {"Title", u"روش تازه"_s},
    {"StaffIns", "6.5"},      {"EmployerIns", "21"},
    {"OverTime", "120"},      {"TaxMainCode", "3"},
    {"DailyIns", "12345678"}, {"DecTax", "0"},
    {"Maskok", "3"},          {"LeaveCeil", "2.5"},
    {"OutPut", "7.33"},       {"Comment", u"شرح"_s},
    {"Insurance", "1"},       {"Tax", "1"},
    {"BedBes", "1"},          {"Loan", "1"},
    {"OverDis", "1"},         {"Entrance", "07:30"},
    {"Exit", "15:45"},
};

TEST_F(CalcMethodEditor, EveryFieldIsTypedStoredAndShownAgain)
{
    EnteredFields::expectPlaces(calcMethodFields(), entered);
    ASSERT_EQ(int(calcMethodFields().size()), entered.size());
    const auto editor = newEditor();
    open(*editor, [&] {
        EnteredFields::enterAll(*editor, calcMethodFields(), {cmGeneral, cmInsurance, cmAttendance}, entered);
        Keys::press(editor.get(), Qt::Key_F3);
    });
    ASSERT_EQ(messages.take(), QStringList(saved));
    for (const auto &field : calcMethodFields()) {
        const QString column = QString::fromLatin1(field.column);
        EXPECT_EQ(db.text(u"select [%1] from CalcMethod where Code=41"_s.arg(column)), entered.value(column))
            << field.column;
    }
    const auto again = editorOf(41);
    open(*again, [&] {
        for (const auto &field : calcMethodFields())
            EXPECT_EQ(EnteredFields::shown(*again, field.input),
                      entered.value(QString::fromLatin1(field.column)))
                << field.column;
        Keys::press(again.get(), Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList()) << "nothing was changed by showing it";
}

} // namespace
