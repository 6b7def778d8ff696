#include "staff/Screens.h"

using enum TAnswer;

namespace {

class StaffSave : public StaffScreens {
protected:
    void reset()
    {
        for (const char *table : {"tmpStaffFamily", "StaffFamily", "Staff", "CodeLock_TBL"})
            db.run(u"delete from %1"_qs.arg(QLatin1String(table)));
        add(5, "before", "five", "IsMarried=1");
        setPicture(5, QByteArray("\x01"));
        addMember(1, 5, "a");
        addMember(2, 5, "b");
    }
    QStringList traceOfSave(TStaffGet_FRM &editor)
    {
        db.clearTrace();
        press(editor, Qt::Key_F3);
        return db.trace();
    }
};

TEST_F(StaffSave, TheStatementsOfAnEditedEmployeeComeInTheirOrder)
{
    reset();
    const auto editor = editorOf(5);
    QStringList trace;
    open(*editor, [&] { trace = traceOfSave(*editor); });
    const auto at = [&](const QString &beginning) {
        for (int i = 0; i < trace.size(); ++i)
            if (trace[i].startsWith(beginning, Qt::CaseInsensitive))
                return i;
        return -1;
    };
    const QStringList order = {
        "select Code from staff where Name='before' and LastName='five' and Code<>5",
        "select PersonnelCode from Staff where PersonnelCode='0'",
        " SELECT ISNULL(MIN(DoDate), 0) AS DoDateMin FROM Recruitment  WHERE StaffCode = 5",
        "delete from stafffamily where StaffCode=5",
        "update [staff] set [Code]=5,",
        "update [staff] set [Picture]=null",
        "update [staff] set [FingerPrint]=null",
        "INSERT INTO Stafffamily   SELECT * FROM tmpstafffamily where staffcode=5",
        "delete from tmpstafffamily where StaffCode=5"};
    int last = -1;
    for (const QString &statement : order) {
        EXPECT_GT(at(statement), last) << statement.toStdString() << "\n" << trace.join('\n').toStdString();
        last = at(statement);
    }
}

// Whatever statement fails, the tables hold what they held, or all of the save; but for the saved family rows, which
// are cleared before the transaction. The inputs stay as typed, and saving again is all it takes.
TEST_F(StaffSave, AFaultAtAnyStatementOfAnEditLosesNothingThatWasTyped)
{
    int failed = 0;
    for (int n = 1; n < 100; ++n) {
        reset();
        const auto editor = editorOf(5);
        bool savedAtOnce = false;
        open(*editor, [&] {
            type(*editor, editor->Name_EDT, "after");
            db.clearTrace();
            db.failStatement(n, TFault::DiskFull);
            press(*editor, Qt::Key_F3);
            const QStringList trace = db.trace();
            db.failStatement(0);
            savedAtOnce = !editor->isVisible();
            if (savedAtOnce)
                return;
            ++failed;
            const bool cleared =
                trace.indexOf("delete from stafffamily where StaffCode=5") >= 0 &&
                trace.indexOf("delete from stafffamily where StaffCode=5") < trace.size() - 1;
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            EXPECT_EQ(value("Name", 5), "before") << n;
            EXPECT_EQ(saved(), cleared ? "" : "1|5|a\n2|5|b") << n;
            EXPECT_EQ(working(), "1|5|a\n2|5|b") << n;
            EXPECT_FALSE(db.connection().InTransaction()) << n;
            EXPECT_EQ(editor->Name_EDT->GetText(), "after") << n;
            EXPECT_FALSE(editor->IsSaved()) << n;
            press(*editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(savedMessage)) << n;
        });
        EXPECT_EQ(value("Name", 5), "after") << n;
        EXPECT_EQ(saved(), "1|5|a\n2|5|b") << n;
        if (savedAtOnce && messages.take() == QStringList(savedMessage)) {
            EXPECT_EQ(working(), "") << n;
            EXPECT_EQ(locks(), "") << n;
            break;
        }
    }
    EXPECT_GE(failed, 10); // checks, clearing, row, two pictures, family
}

TEST_F(StaffSave, AFaultAtAnyStatementOfANewEmployeeLosesNothingThatWasTyped)
{
    int failed = 0;
    for (int n = 1; n < 100; ++n) {
        for (const char *table : {"tmpStaffFamily", "StaffFamily", "Staff", "CodeLock_TBL"})
            db.run(u"delete from %1"_qs.arg(QLatin1String(table)));
        const auto editor = newEditor();
        bool savedAtOnce = false;
        open(*editor, [&] {
            fill(*editor);
            addMember(1, 1, "child", "tmpStaffFamily");
            db.failStatement(n, TFault::Refused);
            press(*editor, Qt::Key_F3);
            db.failStatement(0);
            savedAtOnce = !editor->isVisible();
            if (savedAtOnce)
                return;
            ++failed;
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            EXPECT_EQ(db.text("select count(*) from Staff"), "0") << n;
            EXPECT_EQ(saved(), "") << n;
            EXPECT_EQ(working(), "1|1|child") << n;
            EXPECT_EQ(locks(), "1|806|1") << n;
            EXPECT_FALSE(db.connection().InTransaction()) << n;
            EXPECT_EQ(editor->Mode(), fmNew) << n;
            press(*editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(savedMessage)) << n;
        });
        EXPECT_EQ(db.rows("select Code, Name from Staff"), u"1|رضا"_qs) << n;
        EXPECT_EQ(saved(), "1|1|child") << n;
        if (savedAtOnce && messages.take() == QStringList(savedMessage))
            break;
    }
    EXPECT_GE(failed, 7);
}

// A refused row skips the family and the commit; the host takes the transaction back.
TEST_F(StaffSave, ARefusedRowLeavesTheTransactionToTheHost)
{
    reset();
    const auto editor = editorOf(5);
    messages.answer({No});
    open(*editor, [&] {
        db.clearTrace();
        db.connection().setStatementHook([](const TStatement &statement) {
            if (statement.boundText().startsWith("update [staff] set [Code]"))
                throw TDatabaseError(TFault::Refused, "played by a test");
            EXPECT_FALSE(statement.boundText().contains("INTO Stafffamily"));
        });
        press(*editor, Qt::Key_F3);
        db.connection().setStatementHook({});
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        EXPECT_FALSE(db.connection().InTransaction());
        EXPECT_EQ(saved(), ""); // cleared before the transaction
        EXPECT_EQ(working(), "1|5|a\n2|5|b");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(value("Name", 5), "before");
}

TEST_F(StaffSave, NoPersonIsEntered)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(db.text("select count(*) from Perinf"), "0");
}

// No screen enters persons, but the register offers it to those who do: the group is chosen from the host's list.
TEST_F(StaffSave, APersonIsEnteredInTheGroupThatTheUserChooses)
{
    db.run("insert into PersonGroup(Code,Name) values(3,N'فروشندگان')");
    db.run("insert into PersonGroup(Code,Name) values(4,N'کارکنان')");
    TPerinf_Mapper person;
    person._Name = u"رضا"_qs;
    person._LName = u"کریمی"_qs;
    messages.answer({Yes});
    Keys::runModal([&] { return int(Staff_DM->PerInf_Insert(person)); },
                   [&](QWidget *groups) { Keys::press(groups, Qt::Key_Return); });
    EXPECT_EQ(messages.take().value(0), "ShowSmartMessage:20106()");
    EXPECT_EQ(db.rows("select code, GrpCode, fullname from Perinf"), u"1|4|رضا کریمی"_qs);
}

} // namespace
