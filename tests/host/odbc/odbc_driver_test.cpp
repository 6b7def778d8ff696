#include "SqliteDriverEngine.h"

#include "calcmethod/CalcMethod_DM_UNT.h"
#include "calender/Calender_DM_UNT.h"
#include "entity/Entity_DM_UNT.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/database/Dialect.h"
#include "host/database/Engine.h"
#include "host/database/Schema.h"
#include "host/database/SqlText.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "support/TestDatabase.h"
#include "tax/Tax_DM_UNT.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The engine's own paths, against the ODBC driver of SQLite that Debian ships: they need no server.
class OdbcDriver : public testing::Test {
protected:
    void SetUp() override { engine = std::make_unique<SqliteDriverEngine>(folder.filePath("driver.db")); }
    QVariantList row(const QString &sql, const QVariantList &values = {}, const QVariantMap &named = {})
    {
        const auto cursor = engine->select({sql, values, named});
        QVariantList result;
        if (cursor->next()) {
            for (qsizetype i = 0; i < cursor->fields().size(); ++i)
                result.append(cursor->value(int(i)));
        }
        return result;
    }
    int run(const QString &sql, const QVariantList &values = {})
    {
        return engine->execute({sql, values, {}});
    }
    void person()
    {
        run("create table Person(ID integer primary key autoincrement, Name varchar(50), Amount double, Note text, "
            "Picture blob, Kind integer, constraint UQ_Name unique(Name))");
    }
    static TFault faultOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const TDatabaseError &error) {
            return error.fault();
        }
        ADD_FAILURE() << "no error";
        return TFault::Other;
    }

    QTemporaryDir folder;
    std::unique_ptr<TEngine> engine;
};

TEST_F(OdbcDriver, EveryKindOfValueGoesInAndComesBack)
{
    person();
    const QString name = QString::fromUtf8("پچژگکیكيءئآ‌۱٣");
    const QByteArray picture = QByteArray("\x00\xff\xd8\x01", 4).repeated(20000);
    const QString note = QString::fromUtf8("یادداشت ").repeated(5000);
    run("insert into Person(Name,Amount,Note,Picture,Kind) values(?,?,?,?,?)",
        {name, 1234.5, note, picture, 7});
    const QVariantList read = row("select Name,Amount,Note,Picture,Kind from Person where Name=?", {name});
    ASSERT_EQ(read.size(), 5);
    EXPECT_EQ(read[0].toString(), name);
    EXPECT_EQ(read[1].toDouble(), 1234.5);
    EXPECT_TRUE(read[2].toString() == note);
    EXPECT_TRUE(read[3].toByteArray() == picture);
    EXPECT_EQ(read[4].toInt(), 7);
}

TEST_F(OdbcDriver, ANullIsNoEmptyText)
{
    person();
    run("insert into Person(Name,Note) values(?,?)", {u""_s, QVariant()});
    const QVariantList read = row("select Name,Note from Person where Note is null");
    ASSERT_EQ(read.size(), 2);
    EXPECT_FALSE(read[0].isNull());
    EXPECT_FALSE(read[1].isValid());
}

TEST_F(OdbcDriver, NamedPlacesTakeTheirValuesAndTextsAndCommentsHaveNone)
{
    const QVariantList read =
        row("select ? as a, :Code as b, '?:Code' as c, :code as d -- :Code", {u"x"_s}, {{"code", 7}});
    ASSERT_EQ(read.size(), 4);
    EXPECT_EQ(read[0].toString(), "x");
    EXPECT_EQ(read[1].toInt(), 7);
    EXPECT_EQ(read[2].toString(), "?:Code");
    EXPECT_EQ(read[3].toInt(), 7);
}

TEST_F(OdbcDriver, AnInsertAnswersItsKeyAndACommandItsRows)
{
    person();
    EXPECT_EQ(engine->insert({"insert into [Person]([Name]) values(?)", {u"a"_s}, {}}), 1);
    EXPECT_EQ(engine->insert({"insert into [Person]([Name]) values(?)", {u"b"_s}, {}}), 2);
    EXPECT_EQ(run("update Person set Kind=? where ID>?", {1, 0}), 2);
    EXPECT_EQ(run("delete from Person where ID=?", {9}), 0);
}

TEST_F(OdbcDriver, ATransactionIsStoredOrRolledBackAsAWhole)
{
    person();
    engine->begin();
    run("insert into Person(Name) values('a')");
    engine->rollback();
    EXPECT_FALSE(engine->inTransaction());
    engine->begin();
    EXPECT_TRUE(engine->inTransaction());
    run("insert into Person(Name) values('b')");
    EXPECT_EQ(faultOf([&] { run("insert into Person(Name) values('b')"); }), TFault::Refused);
    engine->commit();
    EXPECT_EQ(row("select count(*), max(Name) from Person")[0].toInt(), 1);
}

TEST_F(OdbcDriver, AnotherStatementRunsWhileACursorIsOpen)
{
    person();
    for (const char *name : {"a", "b", "c"})
        run("insert into Person(Name) values(?)", {QString(name)});
    const auto cursor = engine->select({"select Name from Person order by ID", {}, {}});
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(row("select count(*) from Person")[0].toInt(), 3);
    EXPECT_EQ(cursor->value(0).toString(), "a");
    ASSERT_TRUE(cursor->next());
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->value(0).toString(), "c");
    EXPECT_FALSE(cursor->next());
}

TEST_F(OdbcDriver, ATableIsDescribed)
{
    person();
    const TTableInfo *table = engine->table("PERSON");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->name, "Person");
    EXPECT_EQ(table->keys, QStringList{"ID"});
    ASSERT_EQ(table->columns.size(), 6);
    EXPECT_EQ(table->columns[1].name, "Name");
    EXPECT_EQ(table->columns[1].width, 50);
    EXPECT_FALSE(engine->table("Nothing"));
}

TEST_F(OdbcDriver, AWrongStatementIsNoEndOfTheConnection)
{
    for (int i = 0; i < 3; ++i)
        faultOf([&] { row("selec 1"); });
    EXPECT_EQ(row("select 5")[0].toInt(), 5);
}

// Every statement of the data modules, with its values, goes through ODBC: in the words of the driver's database.
class OdbcStatements : public testing::Test {
protected:
    struct TSeen {
        QString text;
        QVariantList values;
    };
    QList<TSeen> seen;
    QSet<QString> texts;
    TestDatabase db;

    void record()
    {
        db.connection().setStatementHook([this](const TStatement &statement) {
            if (statement.boundText().contains(u':') || texts.contains(statement.boundText()) ||
                statement.boundText().endsWith(" transaction"_L1))
                return; // those with named places are among the engine's own tests
            texts.insert(statement.boundText());
            seen.append({statement.boundText(), statement.values()});
        });
    }
};

TEST_F(OdbcStatements, OfTheDataModulesOpenThroughTheDriver)
{
    record();
    TCalcMethod_DM calcMethod(nullptr);
    TTax_DM tax(nullptr);
    TCalender_DM calender(nullptr);
    TStaff_DM staff(nullptr);
    TEntity_DM entity(nullptr);
    TPayrollInfo_DM payrollInfo(nullptr);

    TCalcMethod_Mapper method;
    method._Code = 1;
    method._Title = QString::fromUtf8("روش");
    calcMethod.CalcMethod_Get();
    calcMethod.List_QUR->open();
    calcMethod.CalcMethod_GetById(1, method);
    calcMethod.CalcMedtho_GetCode(1);
    calcMethod.CalcMethod_GetNewCode();
    EXPECT_TRUE(calcMethod.CalcMethod_Insert(method));
    EXPECT_TRUE(calcMethod.CalcMethod_Update(method));
    EXPECT_TRUE(calcMethod.CalcMethod_Delete(1));

    tax.Tax_Get();
    tax.List_QUR->open();
    tax.Tax_GetNewCode();
    tax.Tax_GetByID(1);
    EXPECT_TRUE(tax.Tax_Insert({1, QString::fromUtf8("جدول"), ""}));
    tax.FillDataDetail(1);
    tax.TmpTax_GetByTaxMainCode(1);
    tax.TmpTax_GetById(0);
    EXPECT_TRUE(tax.TmpTax_Insert({1, 0, 1000000, 10, ""}));
    tax.TmpTax_GetID(1, 0, 0, 10);
    EXPECT_TRUE(tax.TaxDetail_Insert(1));
    tax.TmpTax_MoveToCode(1, 2);
    tax.TaxDetail_Del("1,2");
    tax.ClearDataDetail(1);
    tax.ClearDataTempDetail(1);
    tax.Tax_Del("1");

    TCalenderMapper day{QString::fromUtf8("نوروز"), "1404/01/01", 6, 3, ""};
    calender.Calender_Get();
    calender.List_QUR->open();
    EXPECT_TRUE(calender.Calender_Insert(day));
    calender.Calender_GetByID(1, day);
    EXPECT_TRUE(calender.Calender_Update(day));
    calender.Calender_GetWithDates("1404/01/01", "1404/02/01");
    calender.Calender_del("1");

    TStaff_Mapper employee;
    employee._Code = 1;
    employee._Name = QString::fromUtf8("علی");
    staff.Staff_Get();
    staff.List_QUR->open();
    staff.StaffGroup_Get();
    staff.StaffGroup_Fill();
    staff.FillDataStaff(1);
    staff.FillDataStaffGroup(0);
    staff.Staff_GetById(1, employee);
    employee._Code = 1;
    EXPECT_TRUE(staff.Staff_Insert(employee));
    staff.Staff_GetCode("a", "b", 1);
    staff.Staff_GetCardNumber("1");
    staff.Staff_GetInsuranceNumbber("1");
    staff.Staff_GetNationallID("1");
    staff.Staff_GetNewCode();
    staff.FillDataFamily(1);
    staff.FillDataFamilyList(1);
    staff.FillDataFamilyGet(1);
    staff.Family_GetByStaffCode(1);
    staff.Family_GetByID(1);
    staff.Family_GetNewCode();
    TFamilly_Mapper child;
    child._ID = 1;
    child._StaffCode = 1;
    EXPECT_TRUE(staff.TmpFamily_Insert(child));
    staff.Family_Insert(1);
    EXPECT_TRUE(staff.Family_Del("1"));
    staff.ClearDataFamily(1);
    staff.ClearDataTMPFamily(1);
    staff.StaffFamily_DelTmp(1);
    staff.StaffFamily_UpdateTmp(1, 2);
    staff.StaffFamily_GetRecoverysCode(TSoftwarePart(806), 1);
    staff.StaffFamily_IsRecordHasRecovery(1, TSoftwarePart(806), 1);
    staff.StaffFamily_DeleteAllRecovery(TSoftwarePart(806), 1);
    staff.CodeLock_DeleteAllRecovery(TSoftwarePart(806), 1);
    EXPECT_TRUE(staff.Staff_Del("1"));

    for (const TEntityDataset kind : {edFiscal, edDeduction}) {
        entity.FiscalDeducationList_get(kind);
        entity.List_QUR->open();
    }
    for (const TEntityDataset kind : {edFiscalGrp, edDeductionGrp}) {
        entity.FiscalDeducationGroup_Get(kind);
        entity.FillDataGrp(0, kind);
    }
    entity.FiscalGroup_Fill();
    entity.DeducationGroup_Fill();
    entity.FiscalDeducation_GetNewCode();
    entity.Fiscal_GetCode(1);
    entity.Deducation_GetCode(1);
    entity.FiscalGet_ByTitle("t");
    entity.DeducationGet_ByTitle("t");
    TFiscalDeducation_Mapper item;
    entity.FiscalDeducation_GetByID(1, TSoftwarePart(804), item);
    entity.FiscalDeducation_GetByID(1, TSoftwarePart(805), item);
    EXPECT_TRUE(entity.FiscalDeducation_Delete(1, false));
    EXPECT_TRUE(entity.FiscalDeducation_Delete(1, true));
    entity.TmpStaff_Count(1, false);
    entity.TmpStaff_Count(1, true);
    entity.tmpRec_GetID(1, 1, false);
    entity.tmpRec_GetID(1, 1, true);
    entity.tmpRec_Insert(1, 1, false, 12.5);
    entity.tmpRec_Insert(1, 1, true, 12.5);
    entity.tmpstaffOutPutDetail_Get(1, 1);
    entity.tmpstaffOutPutDetail_Insert(1, 1, 0);
    entity.RepeatInfo("1", "1");

    TPayrollInfo_Mapper info;
    payrollInfo.PayrollInfo_Get(info);
    payrollInfo.PayrollInfo_Insert(info);
    payrollInfo.PayRollInfoDetill_Get();
    payrollInfo.PayrollDetailList_QUR->open();
    payrollInfo.PayRollInfoDetill_GetByID(1);
    EXPECT_TRUE(payrollInfo.PayrollInfoDetails_Insert({5}));

    OperationOnLockCode_SoftwarePart("1", TSoftwarePart(806), 1, TOperationType(0), false);
    LocateLockCode_SoftwarePart("1", TSoftwarePart(806), 1, false);
    OperationOnLockCode_SoftwarePart("1", TSoftwarePart(806), 1, TOperationType(2), false);
    ScalerQuery("TaxMain", "Title", "Code", 1);
    db.connection().setStatementHook({});
    EXPECT_GT(seen.size(), 70);

    // The same tables, without the collation that only the embedded engine has.
    QTemporaryDir folder;
    const QString file = folder.filePath("statements.db");
    sqlite3 *plain = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &plain), SQLITE_OK);
    for (const Schema::TStep &step : Schema::steps()) {
        for (QString batch : Schema::batches(step.script, TEngineKind::Embedded)) {
            batch.remove(u"COLLATE ZELMO"_s, Qt::CaseInsensitive);
            EXPECT_EQ(sqlite3_exec(plain, batch.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
                << sqlite3_errmsg(plain);
        }
    }
    sqlite3_close(plain);
    const auto engine = std::make_unique<SqliteDriverEngine>(file);
    int opened = 0;
    QStringList ownFunctions;
    for (const TSeen &one : seen) {
        const Dialect::TTranslated &translated = Dialect::toSqlite(one.text);
        qsizetype first = 0;
        engine->begin();
        for (qsizetype i = 0; i < translated.statements.size(); ++i) {
            const TBoundStatement bound{
                translated.statements[i], one.values.mid(first, translated.places[i]), {}};
            first += translated.places[i];
            try {
                if (ReadSql(bound.text).onlyReads) {
                    const auto cursor = engine->select(bound);
                    while (cursor->next())
                        EXPECT_EQ(cursor->fields().isEmpty(), false);
                } else {
                    engine->execute(bound);
                }
                ++opened;
            } catch (const TDatabaseError &error) {
                if (error.detail().contains("no such function"_L1) ||
                    error.detail().contains("no such collation"_L1))
                    ownFunctions.append(bound.text);
                else if (error.fault() != TFault::Refused)
                    ADD_FAILURE() << qPrintable(one.text) << "\n" << error.what();
            }
        }
        engine->rollback();
    }
    std::printf("%d statements opened through the driver; %lld use functions of the embedded engine\n",
                opened, static_cast<long long>(ownFunctions.size()));
    EXPECT_GT(opened, 70);
    EXPECT_LT(ownFunctions.size(), 15) << qPrintable(ownFunctions.join("\n"));
}

} // namespace
