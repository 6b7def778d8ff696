#include "staff/Screens.h"

#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QBuffer>
#include <QImage>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

class StaffUntouched : public StaffScreens {
protected:
    static QByteArray jpeg(Qt::GlobalColor color)
    {
        QImage image(30, 40, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG");
        return bytes;
    }
    /// Every column but the marks of change, pictures by their bytes.
    QString employee()
    {
        return db.rows(
            "select Code,StaffGroup,Name,LastName,NationalID,Sex,BirthPlace,IssuePlace,IDNumber,FatherName,"
            "BirthDate,IssueDate,IsMarried,CoDate,Employment,FiscalExemption,PersonnelCode,Job,BankTitle,"
            "Insurance,Comment,LeaveDate,Category,[National],CardNumber,Department,AccountNumber,"
            "InsuranceNumber,JobCode,JobGroup,Tel1,Tel2,Fax,Mob,Add1,Add2,PostCode,Degree,Military,Major,"
            "Email,CreatedTime,CreatedDate,UserCreated,Picture,FingerPrint from Staff");
    }
};

} // namespace

TEST_F(StaffUntouched, SavingAFullEmployeeThatNobodyTouchedChangesNothingButItsMarks)
{
    add(7, u"علي"_s, u"کاشانی يزدي"_s,
        u"StaffGroup=2, NationalID='0084575948', Sex=1, BirthPlace=N'یزد', IssuePlace=N'تفت', IDNumber='1234', "
        "FatherName=N'حسن', BirthDate='1370/12/30', IssueDate='1371/02/05', IsMarried=1, CoDate='1399/12/30', "
        "Employment=10, FiscalExemption=8, PersonnelCode='P-77', Job=N'حسابدار', BankTitle=N'ملي', Insurance=3, "
        "Comment=N'شرح', LeaveDate='1404/05/01', Category=18, [National]=1, CardNumber='C-1', "
        "Department=N'دفتر', AccountNumber='0101-22', InsuranceNumber='0012345678', JobCode='000125', "
        "JobGroup=N'اداری', Tel1='021-88001122', Tel2='02188', Fax='88', Mob='0912', Add1=N'خیابان', "
        "Add2=N'کوچه', PostCode='1234567890', Degree=7, Military=6, Major=N'حسابداری', Email='a@b.ir', "
        "CreatedTime='08:05', CreatedDate='1399/12/30', UserCreated=N'maker (سازنده)', "
        "ModifiedTime='09:10', ModifiedDate='1400/01/05', UserModified='changer'"_s);
    for (const auto &[column, color] :
         {std::pair("Picture", Qt::darkCyan), std::pair("FingerPrint", Qt::gray)})
        db.connection().execute(
            TStatement(u"update Staff set %1="_s.arg(QLatin1String(column))).value(jpeg(color)));
    db.run(
        "insert into StaffFamily(ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment) "
        "values(4,7,2,N'سارا',1,'0077','1372/06/31',1,'1403/12/30',N'شرح')");
    const auto family = [this] { return db.rows("select * from StaffFamily"); };
    const QString before = employee();
    const QString familyBefore = family();
    ASSERT_FALSE(before.contains("||")) << "every column is filled: " << before.toStdString();
    const auto editor = editorOf(7);
    open(*editor, [&] {
        EXPECT_TRUE(editor->IsSaved());
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(employee(), before);
    EXPECT_EQ(family(), familyBefore);
    EXPECT_TRUE(QRegularExpression("^\\d\\d:\\d\\d$").match(value("ModifiedTime", 7)).hasMatch());
    EXPECT_NE(value("ModifiedTime", 7) + value("ModifiedDate", 7), "09:101400/01/05");
    EXPECT_EQ(value("ModifiedDate", 7), NowDate());
    EXPECT_EQ(value("UserModified", 7), u"clerk (مریم کاتب)"_s);
}

// The columns were made wider than the inputs, and other programs fill them too.
TEST_F(StaffUntouched, StoredTextsThatAreLongerThanTheirInputsStayWhole)
{
    add(7, "seven", QString(100, u'ک'),
        u"PersonnelCode='%1', InsuranceNumber='%1', AccountNumber='%2', Comment=N'%3', JobGroup=N'%4'"_s.arg(
            QString(20, u'1'), QString(50, u'2'), QString(150, u'ش'), QString(100, u'گ')));
    const auto texts = [this] {
        return db.rows(
            "select LastName,PersonnelCode,InsuranceNumber,AccountNumber,Comment,JobGroup from Staff");
    };
    const QString before = texts();
    ASSERT_EQ(before.size(), 100 + 20 + 20 + 50 + 150 + 100 + 5);
    const auto editor = editorOf(7);
    open(*editor, [&] { press(*editor, Qt::Key_F3); });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(texts(), before);
}
