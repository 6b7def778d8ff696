#include "staff/FamilyScreens.h"
#include "support/LostAnswer.h"

using namespace Qt::Literals::StringLiterals;

// The database stored what was typed, and the line was lost before it could say so. The next save goes on from there:
// the record's own name and numbers are not taken for another's, and its family stays.

using enum TAnswer;

namespace {

class StaffLostAnswer : public StaffFamily {
protected:
    void saveWithoutAnswer(TStaffGet_FRM &editor)
    {
        const LostAnswer lost(db, "INSERT INTO Stafffamily", LostAnswer::ItsTransaction);
        told(editor);
    }
    void saveWithoutAnswer(TStaffFamily_GetDetil_FRM &member)
    {
        const LostAnswer lost(db, "insert into [tmpStaffFamily]");
        told(member);
    }
    void told(QWidget &screen)
    {
        press(screen, Qt::Key_F3);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(messages.take().size(), 1);
    }
    void stay(TStaffGet_FRM &editor)
    {
        press(editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    }
    void typeNumbers(TStaffGet_FRM &editor)
    {
        type(editor, editor.NationalCode_EDT, "0084575948");
        type(editor, editor.PersonnelCode_EDT, "77");
        type(editor, editor.CardNumber_EDT, "88");
        type(editor, editor.InsuranceNumber_EDT, "99");
    }
    QString numbers()
    {
        return db.rows(
            "select Code, Name, NationalID, PersonnelCode, CardNumber, InsuranceNumber, Job from Staff "
            "order by Code");
    }
};

TEST_F(StaffLostAnswer, ANewEmployeeIsGoneOnWithUnderItsOwnNameAndNumbers)
{
    const auto editor = newEditor();
    const int result = open(*editor, [&] {
        fill(*editor, "n");
        typeNumbers(*editor);
        addMember(4, 1, "child", "tmpStaffFamily");
        Staff_DM->FillDataFamilyList(1);
        saveWithoutAnswer(*editor);
        EXPECT_EQ(numbers(), "1|n|0084575948|77|88|99|");
        type(*editor, editor->Job_EDT, "more");
        type(*editor, editor->CardNumber_EDT, "89");
        stay(*editor);
        EXPECT_EQ(saved(), "4|1|child");
        EXPECT_EQ(working(), "4|1|child");
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(numbers(), "1|n|0084575948|77|89|99|more");
    EXPECT_EQ(saved(), "4|1|child");
    EXPECT_EQ(working(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffLostAnswer, AnEditedEmployeeIsNotRefusedForItsOwnNewNumbers)
{
    add(5, "n", "five", "IsMarried=1, CardNumber='5', InsuranceNumber='55', NationalID='0499370899'");
    add(6, "other", "six", "CardNumber='6'");
    addMember(1, 5, "child");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        typeNumbers(*editor);
        saveWithoutAnswer(*editor);
        EXPECT_EQ(value("CardNumber", 5), "88");
        type(*editor, editor->Job_EDT, "more");
        // Another's number is refused as ever; back to the first one and forth again.
        type(*editor, editor->CardNumber_EDT, "6");
        refused(*editor, u"MsgRepeatedField(شماره کارت|کارمندان)"_s, 1, editor->CardNumber_EDT);
        type(*editor, editor->CardNumber_EDT, "5");
        stay(*editor);
        type(*editor, editor->CardNumber_EDT, "88");
        saveWithoutAnswer(*editor);
        EXPECT_EQ(editor->Job_EDT->GetText(), "more");
        stay(*editor);
    });
    EXPECT_EQ(numbers().section(u'\n', 0, 0), "5|n|0084575948|77|88|99|more");
    EXPECT_EQ(saved(), "1|5|child");
}

TEST_F(StaffLostAnswer, ACodeTypedAfterwardsGivesWayToTheStoredOne)
{
    for (const bool leavesTheCode : {false, true}) {
        db.run("delete from Staff");
        const auto editor = newEditor();
        open(*editor, [&] {
            fill(*editor, "n");
            addMember(4, 1, "child", "tmpStaffFamily");
            Staff_DM->FillDataFamilyList(1);
            saveWithoutAnswer(*editor);
            type(*editor, editor->Code_EDT, "9");
            if (leavesTheCode)
                editor->Name_EDT->setFocus();
            EXPECT_EQ(messages.take(), QStringList());
            stay(*editor);
            EXPECT_EQ(editor->Code_EDT->GetText(), "1");
            EXPECT_TRUE(editor->Code_EDT->isReadOnly());
            EXPECT_EQ(working(), "4|1|child");
            EXPECT_EQ(locks(), "1|806|1");
        });
        EXPECT_EQ(db.rows("select Code, Name from Staff"), "1|n");
        EXPECT_EQ(saved(), "4|1|child");
        EXPECT_EQ(working(), "");
        EXPECT_EQ(locks(), "");
    }
}

// Whatever fails while a typed code is taken, the old one comes back with its lock and its family.
TEST_F(StaffLostAnswer, ATypedCodeThatCannotBeTakenLeavesTheFamilyUnderTheOldOne)
{
    const auto refusedTyping = [&](const std::function<void(TStaffGet_FRM &)> &leaveTheCode) {
        for (const char *table : {"Staff", "tmpStaffFamily", "CodeLock_TBL"})
            db.run(u"delete from %1"_s.arg(QLatin1String(table)));
        bool refusedOnce = false;
        const auto editor = newEditor();
        open(*editor, [&] {
            fill(*editor, "n");
            addMember(4, 1, "child", "tmpStaffFamily");
            Staff_DM->FillDataFamilyList(1);
            type(*editor, editor->Code_EDT, "9");
            leaveTheCode(*editor);
            refusedOnce = !messages.take().isEmpty();
            const QString code = refusedOnce ? "1" : "9";
            EXPECT_EQ(editor->Code_EDT->GetText(), code);
            EXPECT_EQ(working(), u"4|%1|child"_s.arg(code));
            EXPECT_EQ(locks(), code + "|806|1");
            EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 1);
            stay(*editor);
            EXPECT_EQ(saved(), u"4|%1|child"_s.arg(code));
        });
        return refusedOnce;
    };
    const auto leave = [](TStaffGet_FRM &editor) { editor.Name_EDT->setFocus(); };
    int faults = 0;
    for (bool again = true; again && faults < 100;) {
        again = refusedTyping([&](TStaffGet_FRM &editor) {
            db.failStatement(++faults, TFault::Locked);
            leave(editor);
            db.failStatement(0);
        });
    }
    EXPECT_GT(faults, 4); // the looks, the two locks, the rows, the grid
    EXPECT_TRUE(refusedTyping([&](TStaffGet_FRM &editor) {
        const LostAnswer lost(db, "Update tmpstafffamily");
        leave(editor);
    }));
}

TEST_F(StaffLostAnswer, ADeletedFamilyMemberLeavesTheGrid)
{
    add(5, "n", "five", "IsMarried=1");
    addMember(1, 5, "first");
    addMember(2, 5, "second");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        toFamily(*editor);
        messages.answer({Yes, Yes});
        breakBefore(db, "Delete tmpstafffamily", [&] { press(*editor, Qt::Key_Delete); });
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", "MsgDatabaseError()"}));
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 2);
        EXPECT_TRUE(editor->IsSaved());
        {
            const LostAnswer lost(db, "Delete tmpstafffamily");
            press(*editor, Qt::Key_Delete);
        }
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", "MsgDatabaseError()"}));
        EXPECT_EQ(Staff_DM->Family_QUR->recordCount(), 1);
        EXPECT_FALSE(editor->IsSaved());
        stay(*editor);
    });
    EXPECT_EQ(saved().count(u'|'), 2);
}

TEST_F(StaffLostAnswer, AnEmployeeThatAnotherWorkstationStoredUnderTheCodeIsNotWrittenOver)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor, "n");
        breakBefore(db, "insert into [staff]", [&] { press(*editor, Qt::Key_F3); });
        messages.take();
        add(1, "n", "theirs");
        addMember(1, 1, "their child");
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        EXPECT_EQ(db.rows("select Code, LastName from Staff"), "1|theirs");
        EXPECT_EQ(saved(), "1|1|their child");
        type(*editor, editor->Code_EDT, "9");
        press(*editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
    });
    EXPECT_EQ(db.rows("select Code, LastName from Staff order by Code"), u"1|theirs\n9|کریمی"_s);
    EXPECT_EQ(saved(), "1|1|their child");
}

TEST_F(StaffLostAnswer, AFamilyMemberIsOneRow)
{
    const auto screen = newMember(5);
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "child");
        saveWithoutAnswer(*screen);
        EXPECT_EQ(working(), "1|5|child");
        Keys::retype(screen->Name_EDT, "son");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList());
    });
    EXPECT_EQ(working(), "1|5|son");
}

// Rows of the family are not locked: the code may be another employee's by now.
TEST_F(StaffLostAnswer, AFamilyMemberOfAnotherEmployeeIsNotWrittenOver)
{
    const auto screen = newMember(5);
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "child");
        breakBefore(db, "insert into [tmpStaffFamily]", [&] { press(*screen, Qt::Key_F3); });
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        addMember(1, 6, "theirs", "tmpStaffFamily");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|خانواده)"_s));
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList());
    });
    EXPECT_EQ(working(), "1|6|theirs\n2|5|child");
}

} // namespace
