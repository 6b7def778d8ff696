#include "../../app/SampleCompany.h"

#include "entity/Entity_DM_UNT.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "support/TestDatabase.h"
#include "tax/Tax_DM_UNT.h"

#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

namespace {

const char *const filledTables[] = {"PayrollInfo",
                                    "StaffGroup",
                                    "PersonGroup",
                                    "FiscalGrp",
                                    "DeductionGrp",
                                    "AccountTotal",
                                    "AccountAssistant",
                                    "AccountDetail",
                                    "TaxMain",
                                    "Tax",
                                    "CalcMethod",
                                    "Fiscal",
                                    "Deduction",
                                    "PayrollInfoDetail",
                                    "Staff",
                                    "StaffFamily",
                                    "Recruitment",
                                    "tmpRecFiscal",
                                    "tmpRecDeduction",
                                    "StaffOutPut",
                                    "tmpstaffOutPutDetail",
                                    "tmpstaffFiscal",
                                    "tmpstaffdeduction",
                                    "tmpsalarybilldetail",
                                    "Calender"};

/// One database for all tests that only read.
class SampleCompany : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        db = new TestDatabase;
        FillSampleCompany(db->connection());
    }
    static void TearDownTestSuite() { delete db; }
    static QStringList list(const QString &sql) { return db->rows(sql).split('\n', Qt::SkipEmptyParts); }
    static int count(const QString &sql) { return db->text(sql).toInt(); }
    static TestDatabase *db;
};
TestDatabase *SampleCompany::db = nullptr;

TEST_F(SampleCompany, Has200EmployeesWithUniqueNamesAndNumbers)
{
    EXPECT_EQ(count("select count(*) from Staff"), 200);
    EXPECT_EQ(db->rows("select min(Code),max(Code) from Staff"), "1|200");
    for (const char *column : {"PersonnelCode", "InsuranceNumber", "CardNumber", "NationalID"})
        EXPECT_EQ(count(QString("select count(distinct %1) from Staff where %1<>''").arg(column)), 200)
            << column;
    const QStringList names = list("select Name,LastName from Staff");
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), 200);
}

TEST_F(SampleCompany, HasValidNationalCodes)
{
    for (const QString &code : list("select NationalID from Staff"))
        EXPECT_TRUE(NationalCode_Validation(code)) << code.toStdString();
    for (int setting : {18, 25, 29})
        EXPECT_TRUE(NationalCode_Validation(
            db->text(QString("select Value from PayrollInfo where Code=%1").arg(setting))));
}

TEST_F(SampleCompany, HasDatesThatExistInTheirOrder)
{
    for (const QString &row : list("select BirthDate,IssueDate,CoDate,LeaveDate from Staff")) {
        const QStringList dates = row.split('|');
        for (const QString &date : dates) {
            if (!date.isEmpty()) {
                const auto parsed = TPersianDate::parse(date);
                ASSERT_TRUE(parsed) << date.toStdString();
                EXPECT_EQ(parsed->toText(), date);
            }
        }
        EXPECT_LT(dates[0], dates[1]);
        EXPECT_LT(dates[1], dates[2]);
        EXPECT_TRUE(dates[3].isEmpty() || dates[2] < dates[3]) << row.toStdString();
    }
    EXPECT_EQ(count("select count(*) from Staff where LeaveDate<>''"), 25);
    EXPECT_EQ(count("select count(*) from Recruitment as r inner join Staff as s on s.Code=r.StaffCode "
                    "where s.CoDate>r.DoDate"),
              0);
    for (const QString &row : list("select BirthDate,DeathDate,Death from StaffFamily")) {
        const QStringList parts = row.split('|');
        EXPECT_TRUE(TPersianDate::parse(parts[0]));
        EXPECT_EQ(parts[1].isEmpty(), parts[2] == "0") << row.toStdString();
        if (!parts[1].isEmpty()) {
            EXPECT_TRUE(TPersianDate::parse(parts[1]));
            EXPECT_LT(parts[0], parts[1]);
        }
    }
}

TEST_F(SampleCompany, HasFamiliesOfMarriedEmployeesOnly)
{
    EXPECT_GT(count("select count(*) from StaffFamily where Type=1"), 50);
    EXPECT_EQ(count("select count(*) from StaffFamily where Type=2"),
              count("select count(*) from Staff where IsMarried=1"));
    EXPECT_EQ(count("select count(*) from StaffFamily as f inner join Staff as s on s.Code=f.StaffCode "
                    "where s.IsMarried=0"),
              0);
    EXPECT_EQ(count("select count(*) from StaffFamily as f inner join Staff as s on s.Code=f.StaffCode "
                    "where f.Type=2 and f.Sex=s.Sex"),
              0);
    EXPECT_EQ(count("select count(*) from StaffFamily as f inner join Staff as s on s.Code=f.StaffCode "
                    "where f.Type=1 and f.BirthDate<s.BirthDate"),
              0);
    EXPECT_EQ(count("select count(*) from tmpStaffFamily"), 0);
}

TEST_F(SampleCompany, HasEmployeesInEveryGroupButTheOneForAll)
{
    EXPECT_EQ(count("select count(*) from Staff where StaffGroup=0"), 0);
    EXPECT_EQ(count("select count(distinct StaffGroup) from Staff"),
              count("select count(*) from StaffGroup") - 1);
}

TEST_F(SampleCompany, HasAPhotographOfEveryEmployee)
{
    TStaff_DM staff(nullptr);
    for (int code : {1, 100, 200}) {
        staff.FillDataStaff(code);
        EXPECT_FALSE(QImage::fromData(staff.StaffGet_QUR->value("Picture").toByteArray(), "JPEG").isNull());
    }
}

TEST_F(SampleCompany, HasTheOfficialBracketsOf1403And1404)
{
    const char brackets[] =
        "select FromSalary,ToSalary,[Percent] from Tax where TaxMainCode=%1 order by FromSalary";
    EXPECT_EQ(db->rows(QString(brackets).arg(1)), "0|1440000000|0\n"
                                                  "1440000001|1980000000|10\n"
                                                  "1980000001|3240000000|15\n"
                                                  "3240000001|4800000000|20\n"
                                                  "4800000001|99999999999999|30");
    EXPECT_EQ(db->rows(QString(brackets).arg(2)), "0|2880000000|0\n"
                                                  "2880000001|3600000000|10\n"
                                                  "3600000001|4560000000|15\n"
                                                  "4560000001|6000000000|20\n"
                                                  "6000000001|8000000000|25\n"
                                                  "8000000001|99999999999999|30");
}

TEST_F(SampleCompany, LeavesNoWorkingRows)
{
    EXPECT_EQ(db->rows("select * from TmpTax"), "");
}

TEST_F(SampleCompany, HasBracketsThatTheEditorWouldAccept)
{
    TTax_DM tax(nullptr);
    db->connection().BeginTrans();
    for (int code : {1, 2}) {
        tax.FillDataDetail(code);
        for (const QString &row :
             list(QString("select ID,FromSalary,ToSalary from TmpTax where TaxMainCode=%1").arg(code))) {
            const QStringList parts = row.split('|');
            tax.TmpTax_GetID(code, parts[0].toInt(), parts[1].toDouble(), parts[2].toDouble());
            EXPECT_EQ(tax.Temp_QUR->recordCount(), 0) << row.toStdString();
        }
    }
    tax.Temp_QUR->close();
    db->connection().RollbackTrans();
}

TEST_F(SampleCompany, HasItemsWithDistinctCodesAndAccountsThatExist)
{
    EXPECT_EQ(count("select count(*) from Fiscal as f inner join Deduction as d on d.Code=f.Code"), 0);
    for (const char *table : {"Fiscal", "Deduction"}) {
        EXPECT_EQ(
            count(QString("select count(*) from %1 as i left join AccountAssistant as a on a.Kol=i.Kol and "
                          "a.Moin=i.Moin left join AccountDetail as d on d.Tafzili=i.Tafzili "
                          "where a.Name is null or d.Name is null or i.GrpCode=0")
                      .arg(table)),
            0)
            << table;
    }
    EXPECT_EQ(count("select count(distinct CalcType) from Fiscal"), 4);
    EXPECT_EQ(count("select count(distinct CalcType) from Deduction"), 3);
    EXPECT_EQ(count("select count(*) from AccountAssistant as a left join AccountTotal as t on t.Kol=a.Kol "
                    "where t.Name is null"),
              0);
}

TEST_F(SampleCompany, LetsEveryBranchOfAPickBeTried)
{
    EXPECT_GT(count("select count(*) from Fiscal_vw where PayrollCode=1"), 0);
    EXPECT_GT(count("select count(*) from Fiscal_vw where PayrollCode=0 and Cost=0"), 0);
    EXPECT_GT(count("select count(*) from Fiscal_vw where PayrollCode=0 and Cost>0 and CalcType<2"), 0);
    EXPECT_GT(count("select count(*) from Fiscal_vw where PayrollCode=0 and CalcType>=2"), 0);
    EXPECT_GT(count("select count(*) from Deduction_vw where PayrollCode=0 and CalcType=2"), 0);
    EXPECT_GT(count("select count(*) from tmpRecFiscal where RecruitmentCode=1"), 0);
    EXPECT_GT(count("select count(*) from tmpRecDeduction where RecruitmentCode=1"), 0);
    EXPECT_GT(count("select count(*) from tmpstaffOutPutDetail where OutPutCode=1 and Type=0"), 0);
    EXPECT_GT(count("select count(*) from tmpstaffOutPutDetail where OutPutCode=1 and Type=1"), 0);
    TEntity_DM entity(nullptr);
    QSet<int> answers;
    for (const QString &order : list("select Code from Recruitment"))
        for (const QString &item : list("select UserCode from PayrollInfoDetail where ID in (16,17)"))
            answers.insert(entity.RepeatInfo(order, item));
    EXPECT_EQ(answers, (QSet<int>{0, 1, 2}));
    EXPECT_GT(count("select count(*) from Recruitment where CalcMethodCode is null"), 0);
}

TEST_F(SampleCompany, LinksEveryFixedItemToAnItemOfItsKind)
{
    TPayrollInfo_DM payroll(nullptr);
    payroll.PayRollInfoDetill_Get();
    TQuery &items = *payroll.PayrollDetailList_QUR;
    items.open();
    ASSERT_GT(items.recordCount(), 0);
    for (items.first(); !items.eof(); items.next())
        EXPECT_NE(items.asString("UserTitle"), "") << items.asString("Title").toStdString();
}

TEST_F(SampleCompany, FillsAllSettingsSoThatTheyCouldBeSaved)
{
    TPayrollInfo_DM payroll(nullptr);
    TPayrollInfo_Mapper info;
    payroll.PayrollInfo_Get(info);
    EXPECT_GE(info._CaseNo.size(), 12);
    EXPECT_NE(info._SignaturPositionFirst, "");
    EXPECT_EQ(count("select count(*) from PayrollInfo where Value=''"), 0);
}

TEST_F(SampleCompany, HasTheDaysOfTwoYearsWithTheirRealWeekdays)
{
    EXPECT_EQ(count("select count(*) from Calender"), 365 + 365);
    EXPECT_EQ(db->text("select Day from Calender where Date='1404/01/01'"), "6") << "a Friday";
    for (const QString &row : list("select Date,Day,Type from Calender")) {
        const QStringList parts = row.split('|');
        const auto date = TPersianDate::parse(parts[0]);
        ASSERT_TRUE(date);
        EXPECT_EQ(parts[1].toInt(), date->weekday()) << row.toStdString();
        if (parts[2] != "3") {
            EXPECT_EQ(parts[2] == "2", date->weekday() == 6) << row.toStdString();
        }
    }
    EXPECT_EQ(count("select count(*) from Calender where Type=3"), 20);
    EXPECT_EQ(db->text("select Title from Calender where Date='1405/11/22'"),
              QString::fromUtf8("پيروزي انقلاب اسلامي"));
}

TEST_F(SampleCompany, HoldsNoTextThatIsWiderThanItsColumn)
{
    TQuery query(&db->connection(), "check");
    for (const char *table : filledTables) {
        query.setStatement(TStatement(QString("select * from %1").arg(table)));
        query.open();
        EXPECT_GT(query.recordCount(), 0) << table;
        for (int field = 0; field < query.fields().size(); ++field)
            for (int row = 0; row < query.recordCount(); ++row) {
                const TFieldInfo &info = query.fields()[field];
                if (info.width > 0 && query.valueAt(row, field).typeId() == QMetaType::QString) {
                    EXPECT_LE(query.valueAt(row, field).toString().size(), info.width)
                        << table << '.' << info.name.toStdString();
                }
            }
    }
}

TEST(SampleCompanyFilling, EntersTheTaxTablesAsTheirEditorDoes)
{
    TestDatabase database;
    DM.ADOConnection1 = nullptr; // the program fills a connection before it is everybody's
    FillSampleCompany(database.connection());
    EXPECT_EQ(DM.ADOConnection1, nullptr);
    DM.ADOConnection1 = &database.connection();
    QStringList writes;
    for (const QString &statement : database.trace())
        if (statement.startsWith("insert into Tax(", Qt::CaseInsensitive))
            writes << statement;
    EXPECT_EQ(writes.size(), 2); // each whole, from the working rows
    for (const QString &statement : writes)
        EXPECT_TRUE(statement.contains(" FROM TmpTax where TaxMainCode=")) << statement.toStdString();
}

TEST(SampleCompanyFilling, GivesTheSameDataEveryTime)
{
    QStringList dumps[2];
    for (QStringList &dump : dumps) {
        TestDatabase database;
        FillSampleCompany(database.connection());
        for (const char *table : filledTables) {
            // Without an order a server gives the rows as it likes.
            QStringList rows = database.rows(QString("select * from %1").arg(table)).split('\n');
            rows.sort();
            dump << table << rows;
        }
    }
    EXPECT_EQ(dumps[0].join('\n').toStdString(), dumps[1].join('\n').toStdString());
}

TEST(SampleCompanyFilling, OfACompanyThatIsThereIsRefusedAndChangesNothing)
{
    TestDatabase database;
    FillSampleCompany(database.connection());
    const QString before = database.rows("select Code,Name from Staff");
    EXPECT_THROW(FillSampleCompany(database.connection()), TDatabaseError);
    EXPECT_FALSE(database.connection().InTransaction());
    EXPECT_EQ(database.rows("select Code,Name from Staff"), before);
    EXPECT_EQ(database.text("select count(*) from Calender"), "730");
}

TEST(SampleCompanyFilling, ThatFailsInTheMiddleLeavesTheDatabaseAsItWas)
{
    TestDatabase database;
    const QString items = database.rows("select * from PayrollInfoDetail");
    database.failStatement(700, TFault::DiskFull);
    EXPECT_THROW(FillSampleCompany(database.connection()), TDatabaseError);
    database.failStatement(0);
    EXPECT_EQ(database.text("select count(*) from Staff"), "0");
    EXPECT_EQ(database.text("select count(*) from StaffGroup"), "1");
    EXPECT_EQ(database.text("select count(*) from PayrollInfo where Value<>''"), "0");
    EXPECT_EQ(database.rows("select * from PayrollInfoDetail"), items);
    EXPECT_NO_THROW(FillSampleCompany(database.connection()));
}

} // namespace
