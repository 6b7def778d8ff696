#include "staff/Screens.h"

#include "host/BaseFrame_PKG/Pic_Get.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

class StaffSave : public StaffScreens {
protected:
    void reset()
    {
        db.connection().BeginTrans(); // one writing to the disk, not ten
        for (const char *table : {"tmpStaffFamily", "StaffFamily", "Staff", "CodeLock_TBL"})
            db.run(u"delete from %1"_s.arg(QLatin1String(table)));
        add(5, "before", "five",
            "IsMarried=1, CardNumber='5', InsuranceNumber='55', NationalID='0084575948', "
            "Comment=N'شرح', Tel1='021', LeaveDate='1404/01/01'");
        setPicture(5, QByteArray("\x01"));
        addMember(1, 5, "a");
        addMember(2, 5, "b");
        add(6, "other", "six");
        setPicture(6, QByteArray("\x02"));
        addMember(3, 6, "c");
        db.connection().CommitTrans();
    }
    struct TTables {
        QString staff;
        QString family;
        QString working;
        QString locks;
    };
    /// Every column of every row, pictures by their bytes; but for the times, which pass meanwhile.
    TTables tables()
    {
        const auto all = [this](const QString &table, const QString &key) {
            TQuery rows(&db.connection(), u"Dump"_s);
            rows.setStatement(QString("select * from %1 order by %2").arg(table, key));
            rows.open();
            QStringList lines;
            for (int row = 0; row < rows.recordCount(); ++row) {
                QStringList line;
                for (int field = 0; field < rows.fields().size(); ++field) {
                    const QVariant value = rows.valueAt(row, field);
                    if (!rows.fields()[field].name.endsWith("Time"))
                        line << (value.typeId() == QMetaType::QByteArray ? value.toByteArray().toHex()
                                                                         : value.toString());
                }
                lines << line.join(u'|');
            }
            return lines.join(u'\n');
        };
        TTables found = {all("Staff", "Code"), all("StaffFamily", "ID"), all("tmpStaffFamily", "ID"),
                         locks()};
        db.clearTrace();
        return found;
    }
    static QString ofFive(const QString &family) { return family.section(u'\n', 0, 1); }
    static QString others(const QString &family) { return family.section(u'\n', 2); }
    QString pictureFile()
    {
        const QString path = m_folder.filePath("picture.png");
        if (!QFile::exists(path)) {
            QImage image(30, 40, QImage::Format_RGB32);
            image.fill(Qt::darkCyan);
            image.save(path);
        }
        return path;
    }
    QStringList traceOfSave(TStaffGet_FRM &editor)
    {
        db.clearTrace();
        press(editor, Qt::Key_F3);
        return db.trace();
    }

private:
    QTemporaryDir m_folder;
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

// Whatever statement fails, every table holds what it held, or all of the save; but for the saved family rows, which
// are cleared before the transaction. The inputs stay as typed, and saving again is all it takes.
TEST_F(StaffSave, AFaultAtAnyStatementOfAnEditLosesNothingThatWasTyped)
{
    int failed = 0;
    QString whole; // what a save without a fault stores
    for (int n = 0; n < 100; ++n) {
        reset();
        const TTables before = tables();
        const auto editor = editorOf(5);
        bool savedAtOnce = false;
        open(*editor, [&] {
            type(*editor, editor->Name_EDT, "after");
            EXPECT_TRUE(editor->Picture_Get->TakeFile(pictureFile()));
            db.clearTrace();
            db.failStatement(n, TFault::DiskFull);
            press(*editor, Qt::Key_F3);
            const QStringList trace = db.trace();
            db.failStatement(0);
            savedAtOnce = !editor->isVisible();
            if (savedAtOnce)
                return;
            ++failed;
            const bool cleared = trace.contains("begin transaction"); // which comes next
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            const TTables after = tables();
            EXPECT_EQ(after.staff, before.staff) << n;
            EXPECT_EQ(after.family, cleared ? others(before.family) : before.family) << n;
            EXPECT_EQ(after.working, ofFive(before.family)) << n;
            EXPECT_EQ(after.locks, "5|806|1") << n;
            EXPECT_FALSE(db.connection().InTransaction()) << n;
            EXPECT_EQ(editor->Name_EDT->GetText(), "after") << n;
            EXPECT_TRUE(editor->Picture_Get->HasFile()) << n;
            EXPECT_FALSE(editor->IsSaved()) << n;
            press(*editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(savedMessage)) << n;
        });
        const TTables after = tables();
        if (n == 0)
            whole = after.staff;
        EXPECT_NE(after.staff, before.staff) << n;
        EXPECT_EQ(after.staff, whole) << n;
        EXPECT_EQ(after.family, before.family) << n;
        if (n > 0 && savedAtOnce && messages.take() == QStringList(savedMessage)) {
            EXPECT_EQ(after.working, "") << n;
            EXPECT_EQ(after.locks, "") << n;
            break;
        }
        messages.take();
    }
    // Seven look-ups, lock and rows, counting and clearing, begin, row, two pictures, family, commit.
    EXPECT_EQ(failed, 17);
}

TEST_F(StaffSave, AFaultAtAnyStatementOfANewEmployeeLosesNothingThatWasTyped)
{
    int failed = 0;
    QString whole;
    for (int n = 0; n < 100; ++n) {
        reset();
        const TTables before = tables();
        const auto editor = newEditor();
        bool savedAtOnce = false;
        open(*editor, [&] {
            fill(*editor);
            EXPECT_TRUE(editor->FingerPrint_Get->TakeFile(pictureFile()));
            addMember(9, 7, "child", "tmpStaffFamily");
            Staff_DM->FillDataFamilyList(7);
            db.failStatement(n, TFault::Refused);
            press(*editor, Qt::Key_F3);
            db.failStatement(0);
            savedAtOnce = !editor->isVisible();
            if (savedAtOnce)
                return;
            ++failed;
            EXPECT_FALSE(messages.take().isEmpty()) << n;
            const TTables after = tables();
            EXPECT_EQ(after.staff, before.staff) << n;
            EXPECT_EQ(after.family, before.family) << n;
            EXPECT_EQ(working(), "9|7|child") << n;
            EXPECT_EQ(after.locks, "7|806|1") << n;
            EXPECT_FALSE(db.connection().InTransaction()) << n;
            EXPECT_EQ(editor->Mode(), fmNew) << n;
            press(*editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(savedMessage)) << n;
        });
        const TTables after = tables();
        if (n == 0)
            whole = after.staff;
        EXPECT_EQ(after.staff, whole) << n;
        EXPECT_EQ(saved(), "1|5|a\n2|5|b\n3|6|c\n9|7|child") << n;
        if (n > 0 && savedAtOnce && messages.take() == QStringList(savedMessage))
            break;
        messages.take();
    }
    EXPECT_EQ(whole.count(u'\n'), 2) << "three employees";
    EXPECT_EQ(failed, 16); // eight look-ups, lock and rows, begin, row, two pictures, family, commit
}

// A refused row skips the family and the commit; the host takes the transaction back.
TEST_F(StaffSave, ARefusedRowLeavesTheTransactionToTheHost)
{
    reset();
    const auto editor = editorOf(5);
    messages.answer({No, No});
    open(*editor, [&] {
        db.clearTrace();
        db.connection().setStatementHook([](const TStatement &statement) {
            // A server tells the table's name as it was made.
            if (statement.boundText().startsWith("update [staff] set [Code]", Qt::CaseInsensitive))
                throw TDatabaseError(TFault::Refused, "played by a test");
            EXPECT_FALSE(statement.boundText().contains("INTO Stafffamily"));
        });
        press(*editor, Qt::Key_F3);
        db.connection().setStatementHook({});
        EXPECT_EQ(messages.take().value(0), notSavedMessage);
        EXPECT_FALSE(db.connection().InTransaction());
        EXPECT_EQ(saved(), "3|6|c"); // cleared before the transaction
        EXPECT_EQ(working(), "1|5|a\n2|5|b");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
    EXPECT_EQ(saved(), "3|6|c");
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
    person._Name = u"رضا"_s;
    person._LName = u"کریمی"_s;
    messages.answer({Yes});
    Keys::runModal([&] { return int(Staff_DM->PerInf_Insert(person)); },
                   [&](QWidget *groups) { Keys::press(groups, Qt::Key_Return); });
    EXPECT_EQ(messages.take().value(0), "ShowSmartMessage:20106()");
    EXPECT_EQ(db.rows("select code, GrpCode, fullname from Perinf"), u"1|4|رضا کریمی"_s);
}

} // namespace
