// The fields of an employee on their way from the screen to the table and back.
#include "staff/Screens.h"
#include "staff/StaffFields.h"

#include <set>

namespace {

/// What is typed into the input of a column, or the position that is chosen there, and so stored. A field has a line here.
const QHash<QString, QString> entered = {
    {"Code", "41"},
    {"CoDate", "1403/12/30"},
    {"LeaveDate", "1404/05/01"},
    {"StaffGroup", "2"},
    {"PersonnelCode", "P-77"},
    {"Department", u"دفتر"_s},
    {"CardNumber", "C-1"},
    {"InsuranceNumber", "0012345678"},
    {"NationalID", "0084575948"},
    {"IDNumber", "1234"},
    {"FatherName", u"حسن"_s},
    {"BirthPlace", u"یزد"_s},
    {"IssuePlace", u"تفت"_s},
    {"IssueDate", "1370/02/05"},
    {"BirthDate", "1370/01/30"},
    {"Major", u"حسابداری"_s},
    {"BankTitle", u"ملي"_s},
    {"Job", u"حسابدار"_s},
    {"AccountNumber", "0101-22"},
    {"Comment", u"شرح"_s},
    {"Sex", "1"},
    {"Military", "6"},
    {"IsMarried", "1"},
    {"Degree", "5"},
    {"Name", u"علي"_s},
    {"LastName", u"O'Brien کاشانی"_s},
    {"Tel1", "021-88001122"},
    {"Tel2", "02188"},
    {"Fax", "88"},
    {"Mob", "0912"},
    {"Add1", u"خیابان"_s},
    {"Add2", u"کوچه"_s},
    {"Email", "a@b.ir"},
    {"PostCode", "1234567890"},
    {"Employment", "4"},
    {"Category", "18"},
    {"FiscalExemption", "2"},
    {"National", "1"},
    {"Insurance", "3"},
    {"JobCode", "000125"},
    {"JobGroup", u"اداری"_s},
};

class StaffFieldsOnScreen : public StaffScreens {
protected:
    static void enter(TStaffGet_FRM &editor, const TField<TStaff_Mapper> &field)
    {
        const QString name = QString::fromLatin1(field.input.name);
        const QString what = entered.value(QString::fromLatin1(field.column));
        if (auto *list = editor.findChild<TSmartComboBox_ZLM *>(name))
            choose(editor, list, what.toInt());
        else if (auto *edit = editor.findChild<TSmartEdit_ZLM *>(name))
            type(editor, edit, what);
        else
            FAIL() << "no input " << field.input.name;
    }
    /// The value of a field's input as its column stores it.
    static QString shown(const TStaffGet_FRM &editor, const TField<TStaff_Mapper> &field)
    {
        const QString name = QString::fromLatin1(field.input.name);
        if (const auto *list = editor.findChild<TSmartComboBox_ZLM *>(name))
            return QString::number(list == editor.StaffGroup_CMB ? list->Code() : list->currentIndex());
        return editor.findChild<TSmartEdit_ZLM *>(name)->GetText();
    }
};

TEST_F(StaffFieldsOnScreen, EveryFieldIsTypedStoredAndShownAgain)
{
    ASSERT_EQ(int(staffFields().size()), entered.size());
    const auto editor = newEditor();
    open(*editor, [&] {
        tick(*editor, editor->LeaveDate_CHK);
        for (const auto &field : staffFields())
            enter(*editor, field);
        press(*editor, Qt::Key_F3);
    });
    ASSERT_EQ(messages.take(), QStringList(savedMessage));
    for (const auto &field : staffFields()) {
        const QString column = QString::fromLatin1(field.column);
        EXPECT_EQ(value(u'[' + column + u']', 41), entered.value(column)) << field.column;
    }
    const auto again = editorOf(41);
    open(*again, [&] {
        for (const auto &field : staffFields())
            EXPECT_EQ(shown(*again, field), entered.value(QString::fromLatin1(field.column))) << field.column;
        press(*again, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList()) << "nothing was changed by showing it";
}

// Two inputs in one cell would hide each other.
TEST_F(StaffFieldsOnScreen, EveryFieldHasACellOfItsOwn)
{
    std::set<std::tuple<int, int, int>> cells;
    QSet<QString> names;
    for (const auto &field : staffFields()) {
        const TFieldInput &at = field.input;
        EXPECT_FALSE(cells.contains({at.page, at.row, at.column})) << field.column;
        EXPECT_FALSE(names.contains(QString::fromLatin1(at.name))) << field.column;
        cells.insert({at.page, at.row, at.column});
        names.insert(QString::fromLatin1(at.name));
    }
}

} // namespace
