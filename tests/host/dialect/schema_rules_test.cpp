#include "RawDatabase.h"
#include "host/database/Query.h"
#include "support/TestDatabase.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The same on a file and on a server.
class RuledDatabase {
public:
    /// Runs T-SQL; answers its error, empty when there is none.
    QString tsql(const QString &sql)
    {
        try {
            m_db.run(sql);
        } catch (const TDatabaseError &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }
    /// All rows, columns joined by "|", rows by a line break, NULL as "null"; or the error.
    QString rows(const QString &sql)
    {
        QStringList lines;
        try {
            TQuery query(&m_db.connection(), "rows");
            query.setStatement(TStatement(sql));
            query.open();
            for (int row = 0; row < query.recordCount(); ++row) {
                QStringList columns;
                for (int column = 0; column < query.fields().size(); ++column) {
                    const QVariant value = query.valueAt(row, column);
                    columns << (value.isNull() ? u"null"_s : value.toString());
                }
                lines << columns.join('|');
            }
        } catch (const TDatabaseError &error) {
            return QString::fromUtf8(error.what());
        }
        return lines.join('\n');
    }

private:
    TestDatabase m_db;
};

class SchemaRules : public testing::Test {
protected:
    RuledDatabase db;
    bool refused(const char *sql) { return !db.tsql(QString::fromUtf8(sql)).isEmpty(); }
    void run(const char *sql) { ASSERT_EQ(db.tsql(QString::fromUtf8(sql)), "") << sql; }
};

TEST_F(SchemaRules, ATaxTableThatAMethodNamesIsNotDeleted)
{
    run("insert into TaxMain(Code,Title) values(5,'t') insert into TaxMain(Code,Title) values(6,'u')");
    run("insert into CalcMethod(Code,Title,TaxMainCode) values(1,'m',5)");
    run("insert into CalcMethod(Code,Title,TaxMainCode) values(2,'without',0)");
    EXPECT_TRUE(refused("Delete TaxMain where Code in (5)"));
    EXPECT_TRUE(refused("Delete TaxMain where Code in (6,5)"));
    EXPECT_EQ(db.rows("select Code from TaxMain order by Code"), "5\n6") << "all or nothing";
    run("Delete TaxMain where Code in (6)");
    run("delete from CalcMethod where Code=1");
    run("Delete TaxMain where Code in (5)");
}

TEST_F(SchemaRules, ATaxTableIsNotDeletedBeforeItsBrackets)
{
    run("insert into TaxMain(Code,Title) values(5,'t') insert into Tax(TaxMainCode,FromSalary) values(5,1)");
    EXPECT_TRUE(refused("Delete TaxMain where Code in (5)"));
    run("delete from Tax where TaxMainCode=5 Delete TaxMain where Code in (5)");
    EXPECT_TRUE(refused("insert into Tax(TaxMainCode) values(5)")) << "no bracket without its table";
    run("insert into TmpTax(TaxMainCode) values(5)");
}

TEST_F(SchemaRules, AMethodThatAnOrderNamesIsNotDeleted)
{
    run("insert into CalcMethod(Code,Title) values(1,'m') insert into Staff(Code) values(7)");
    run("insert into Recruitment(Code,StaffCode,CalcMethodCode) values(1,7,1)");
    EXPECT_TRUE(refused("delete from CalcMethod where Code=1"));
    EXPECT_TRUE(refused("Delete Staff where Code in (7)")) << "an employee with an order stays";
    run("insert into Recruitment(Code,StaffCode) values(2,7)");
    run("delete from Recruitment delete from CalcMethod where Code=1 Delete Staff where Code in (7)");
}

TEST_F(SchemaRules, AnItemThatTheSettingsNameIsNotDeleted)
{
    run("insert into Fiscal(Code,Title) values(3,'e') insert into Deduction(Code,Title) values(4,'d')");
    run("update PayrollInfoDetail set UserCode=3 where ID=1 update PayrollInfoDetail set UserCode=4 where ID=16");
    EXPECT_TRUE(refused("delete from fiscal where code=3"));
    EXPECT_TRUE(refused("delete from Deduction where code=4"));
    // The kind counts: an earning's item does not hold the deduction of that code.
    run("update PayrollInfoDetail set UserCode=4 where ID=1 update PayrollInfoDetail set UserCode=3 where ID=16");
    run("delete from fiscal where code=3 delete from Deduction where code=4");
}

TEST_F(SchemaRules, ACodeIsOfAnEarningOrOfADeduction)
{
    run("insert into Fiscal(Code,Title) values(3,'e') insert into Deduction(Code,Title) values(4,'d')");
    EXPECT_TRUE(refused("insert into Deduction(Code,Title) values(3,'d')"));
    EXPECT_TRUE(refused("insert into Fiscal(Code,Title) values(4,'e')"));
    EXPECT_TRUE(refused("update Fiscal set Code=4"));
    EXPECT_TRUE(refused("update Deduction set Code=3"));
    run("update Fiscal set Code=3, Title='changed' update Deduction set Code=5");
    EXPECT_EQ(db.rows("select Code,Title from Fiscal union all select Code,Title from Deduction"),
              "3|changed\n5|d");
}

TEST_F(SchemaRules, AFixedItemMayNameWhatIsNotThere)
{
    run("update PayrollInfoDetail set UserCode=99 where ID=16");
    EXPECT_EQ(db.rows("select UserCode from PayrollInfoDetail where ID=16"), "99");
}

TEST_F(SchemaRules, AGroupInUseIsNotDeleted)
{
    run("insert into StaffGroup values(1,'a') insert into FiscalGrp values(1,'a') insert into DeductionGrp "
        "values(1,'a') insert into PersonGroup values(1,'a')");
    run("insert into Staff(Code,StaffGroup) values(1,1) insert into Fiscal(Code,GrpCode) values(1,1) insert into "
        "Deduction(Code,GrpCode) values(2,1) insert into Perinf(code,GrpCode) values(1,1)");
    for (const char *table : {"StaffGroup", "FiscalGrp", "DeductionGrp", "PersonGroup"}) {
        EXPECT_NE(db.tsql(QString("delete from %1 where Code=1").arg(table)), "") << table;
    }
    EXPECT_TRUE(refused("insert into Staff(Code,StaffGroup) values(2,9)"));
}

TEST_F(SchemaRules, CodesAreUnique)
{
    int code = 70;
    for (const char *table :
         {"CalcMethod", "TaxMain", "Staff", "StaffGroup", "Fiscal", "Deduction", "PersonGroup"}) {
        const QString insert = QString("insert into %1(Code) values(%2)").arg(table).arg(++code);
        EXPECT_EQ(db.tsql(insert), "") << table;
        EXPECT_NE(db.tsql(insert), "") << table;
    }
}

TEST_F(SchemaRules, ADeletedEmployeeTakesHisFamilyAlong)
{
    run("insert into Staff(Code) values(1) insert into Staff(Code) values(2)");
    run("insert into StaffFamily(ID,StaffCode) values(1,1) insert into StaffFamily(ID,StaffCode) values(2,2)");
    run("insert into tmpStaffFamily(ID,StaffCode) values(3,1)");
    run("Delete Staff where Code in (1)");
    EXPECT_EQ(db.rows("select ID from StaffFamily"), "2")
        << "the next employee of that code starts with none";
    EXPECT_EQ(db.rows("select ID from tmpStaffFamily"), "3");
}

TEST_F(SchemaRules, ADeletedUserLeavesNoRightsBehind)
{
    run("insert into UserAccount(Code,Name) values(1,'a') insert into UserAccount(Code,Name) values(2,'b')");
    run("insert into UserRight values(1,801,6) insert into UserRight values(2,801,6)");
    run("delete from UserAccount where Code=1");
    EXPECT_EQ(db.rows("select UserCode from UserRight"), "2");
    EXPECT_TRUE(refused("insert into UserAccount(Code,Name) values(3,'B ')"))
        << "a name is one in every case";
}

TEST_F(SchemaRules, SavedRowsAreNotCopiedTwiceOverWorkingRowsThatWereLeft)
{
    const char copy[] = "INSERT INTO tmpstafffamily   SELECT * FROM stafffamily where staffcode=1";
    run("insert into Staff(Code) values(1)");
    run("insert into StaffFamily(ID,StaffCode,Name) values(1,1,'saved') insert into StaffFamily(ID,StaffCode,Name) "
        "values(2,1,'second')");
    run(copy);
    run("update tmpStaffFamily set Name='changed' where ID=1 delete from tmpStaffFamily where ID=2");
    run(copy);
    EXPECT_EQ(db.rows("select ID,Name from tmpStaffFamily order by ID"), "1|changed\n2|second");
    run("insert into tmpStaffFamily(ID,StaffCode) values(5,1)");
    EXPECT_TRUE(refused("insert into tmpStaffFamily(ID,StaffCode) values(5,1)"))
        << "a new row never vanishes";
    EXPECT_TRUE(refused("insert into tmpStaffFamily(ID,StaffCode) values(1,9)"));
}

TEST_F(SchemaRules, ACodeIsLockedOnceForAPart)
{
    run("insert into CodeLock_TBL(Code,Status,Com_Index) values('5',806,1)");
    EXPECT_TRUE(refused("insert into CodeLock_TBL(Code,Status,Com_Index) values('5',806,2)"));
    run("insert into CodeLock_TBL(Code,Status,Com_Index) values('5',802,2)");
    run("insert into tmpStaffFamily(ID,StaffCode) values(1,5) insert into tmpStaffFamily(ID,StaffCode) values(2,50)");
    EXPECT_EQ(
        db.rows("Select StaffCode From tmpstafffamily Where StaffCode IN(Select Code From CodeLock_TBL Where "
                "(Status=806) AND (Com_Index = 1))"),
        "5")
        << "a code in text is the number";
}

TEST_F(SchemaRules, TheRowsThatProgramsOnlyChangeAreThere)
{
    EXPECT_EQ(db.rows("select min(Code),max(Code),count(*) from PayrollInfo"), "6|30|25");
    EXPECT_EQ(db.rows("select Code,Name from StaffGroup"), QString::fromUtf8("0|کليه کارمندان"));
    EXPECT_EQ(db.rows("select Code,Name from FiscalGrp"), QString::fromUtf8("0|کليه گروه ها"));
    EXPECT_EQ(db.rows("select Code,Name from DeductionGrp"), QString::fromUtf8("0|کليه گروه ها"));
    EXPECT_EQ(db.rows("select ID,Type,UserCode from PayrollInfoDetail where ID in (16,17)"),
              "16|1|null\n17|1|null");
    EXPECT_EQ(db.rows("select count(*) from PayrollInfoDetail where ID<>Code or Title=''"), "0");
    EXPECT_EQ(db.rows("select count(*) from Staff"), "0");
}

TEST_F(SchemaRules, TheStaffViewTellsWhatTheCodesMean)
{
    run("insert into StaffGroup values(1,'گروه')");
    run("insert into Staff(Code,StaffGroup,Name,LastName,Sex,IsMarried,Military,Degree,CreatedDate,CreatedTime) "
        "values(7,1,'زهرا','احمدی',1,1,6,2,'1404/01/05','08:30')");
    run("insert into Staff(Code,Name) values(8,'علی')");
    EXPECT_EQ(
        db.rows("select fullnameTitle,StaffGroupTitle,SexTitle,IsMarriedTitle,MilitaryTitle,DegreeTitle,"
                "CodeFullName,CreatedDateTime,ModifiedDateTime from staff_VW where Code=7"),
        QString::fromUtf8("زهرا احمدی|گروه|زن|متاهل|مشخص نشده|ديپلم|7 زهرا احمدی|1404/01/05 08:30|null"));
    EXPECT_EQ(
        db.rows("select fullnameTitle,StaffGroupTitle,SexTitle,IsMarriedTitle,LeaveDate from staff_VW where "
                "Code=8"),
        QString::fromUtf8("علی |null|مرد|مجرد|"));
}

TEST_F(SchemaRules, TheMethodViewTellsItsTaxTable)
{
    run("insert into TaxMain(Code,Title) values(5,'tax') insert into CalcMethod(Code,TaxMainCode,Maskok) "
        "values(1,5,3) insert into CalcMethod(Code,TaxMainCode,Maskok) values(2,0,0)");
    EXPECT_EQ(db.rows("select Code,TaxTitle,MaskokTitle from CalcMethod_VW order by Code"),
              "1|tax|3\n2|null|0");
}

TEST_F(SchemaRules, AnItemShowsTheBindingThatBarsItFirst)
{
    run("insert into Fiscal(Code,Title) values(3,'e') insert into Fiscal(Code,Title) values(4,'free')");
    run("update PayrollInfoDetail set UserCode=3 where ID in (2,7)");
    EXPECT_EQ(db.rows("select Code,PayrollCode,CodeName from Fiscal_vw order by Code"),
              "3|7|3 e\n4|0|4 free");
    run("update PayrollInfoDetail set UserCode=null where ID=7");
    EXPECT_EQ(db.rows("select PayrollCode from Fiscal_vw where Code=3"), "2");
}

TEST(SchemaOfTheFile, ColumnsDeclareTheirWidths)
{
    RawDatabase db;
    struct TColumn {
        const char *table;
        const char *column;
        const char *type;
    };
    const TColumn columns[] = {
        {"Staff", "FatherName", "NVARCHAR(30)"}, {"Staff", "LastName", "NVARCHAR(100)"},
        {"Staff", "JobCode", "NVARCHAR(6)"},     {"TaxMain", "Comment", "NVARCHAR(100)"},
        {"Calender", "Title", "NVARCHAR(30)"},   {"tmpStaffFamily", "Comment", "NVARCHAR(10)"},
        {"Fiscal", "Comment", "NVARCHAR(500)"},  {"CalcMethod", "Exit", "NVARCHAR(5)"}};
    for (const TColumn &column : columns) {
        const char *type = nullptr;
        const char *collation = nullptr;
        ASSERT_EQ(sqlite3_table_column_metadata(db.handle(), nullptr, column.table, column.column, &type,
                                                &collation, nullptr, nullptr, nullptr),
                  SQLITE_OK);
        EXPECT_STREQ(type, column.type) << column.table << '.' << column.column;
        EXPECT_STREQ(collation, "ZELMO");
    }
}

TEST(SchemaOfTheFile, EveryTextColumnComparesAsOnTheServer)
{
    RawDatabase db;
    EXPECT_EQ(
        db.rows(
            "select t.name, c.name from sqlite_master as t join pragma_table_info(t.name) as c "
            "where t.type='table' and t.name not like 'sqlite%' and c.type like '%CHAR%' and "
            "instr(replace(replace(t.sql, char(91), ''), char(93), ''), c.name || ' ' || c.type || ' COLLATE ZELMO')=0"),
        "");
}

TEST(SchemaScripts, GiveEachEngineItsOwnBatches)
{
    const QString script =
        "-- note\ncreate table T (a nvarchar(5))\nGO\n-- engine: sqlite\ncreate trigger x\ngo\n"
        "-- engine: sqlserver\nSET NOCOUNT ON\nGO\n\nGO\ndelete T";
    EXPECT_EQ(
        Schema::batches(script, TEngineKind::Embedded),
        (QStringList{"create table T (a nvarchar(5) COLLATE ZELMO)", "create trigger x\n", "delete from T"}));
    EXPECT_EQ(Schema::batches(script, TEngineKind::SqlServer),
              (QStringList{"-- note\ncreate table T (a nvarchar(5))\n", "SET NOCOUNT ON\n", "delete T\n"}));
}

TEST(SchemaScripts, AreNumberedWithoutAGap)
{
    int number = 0;
    for (const Schema::TStep &step : Schema::steps()) {
        EXPECT_EQ(step.number, ++number);
        EXPECT_FALSE(step.script.isEmpty());
        EXPECT_FALSE(Schema::batches(step.script, TEngineKind::SqlServer).isEmpty());
    }
    EXPECT_EQ(Schema::version(), number);
    EXPECT_GT(number, 0);
}

TEST(SchemaScripts, ViewsKnowTheirTables)
{
    EXPECT_EQ(Schema::baseTable("STAFF_vw"), "Staff");
    EXPECT_EQ(Schema::baseTable("Fiscal_VW"), "Fiscal");
    EXPECT_EQ(Schema::baseTable("Deduction_vw"), "Deduction");
    EXPECT_EQ(Schema::baseTable("CalcMethod_VW"), "CalcMethod");
    EXPECT_EQ(Schema::baseTable("Tax"), "Tax");
    RawDatabase db;
    for (const QString &view : db.rows("select name from sqlite_master where type='view'").split('\n'))
        EXPECT_NE(Schema::baseTable(view), view);
}

} // namespace
