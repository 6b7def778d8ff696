#include "bench/BenchData.h"
#include "bench/QuietDesk.h"
#include "tax/TaxGet_UNT.h"
#include "tax/Tax_DM_UNT.h"
#include "tax/Tax_GetDetail_UNT.h"

#include <QApplication>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

// A tax table of 1,000 brackets: its editor opens, takes one more and saves, against the same statements through the
// raw interface with the same durability.

namespace {

void fillTable(TConnection &connection)
{
    connection.execute(TStatement("insert into TaxMain(Code, Title, Comment) values(1, 'many', '')"));
    connection.BeginTrans();
    for (int i = 0; i < 1000; ++i)
        connection.execute(
            TStatement("insert into Tax(TaxMainCode, FromSalary, ToSalary, [Percent], Comment) values(1, ")
                .amount(i * 1000)
                .sql(", ")
                .amount(i * 1000 + 999)
                .sql(", 10, 'c')"));
    connection.CommitTrans();
}

void leaveAThousand(TConnection &connection)
{
    connection.execute(TStatement("delete from Tax where FromSalary>=1000000"));
}

// The data module alone: every statement of the round, with the rows where the screens have them.
void BracketsOfTheDataModule(benchmark::State &state)
{
    QuietDesk desk;
    fillTable(desk.connection);
    TTax_DM data(nullptr);
    for (auto _ : state) {
        data.Tax_GetByID(1);
        data.ClearDataTempDetail(1);
        data.TmpTax_GetByTaxMainCode(1);
        data.TmpTax_GetID(1, 0, 1000000, 1000999);
        bool saved = data.TmpTax_Insert({1, 1000000, 1000999, 20, QString()});
        data.DetailList_QUR->close();
        data.DetailList_QUR->open();
        saved = saved && data.DetailList_QUR->recordCount() == 1001 && data.Tax_Update({1, "many", ""}) &&
                data.TaxDetail_Insert(1);
        data.ClearDataTempDetail(1);
        if (!saved) {
            state.SkipWithError("the save was refused");
            break;
        }
        state.PauseTiming();
        leaveAThousand(desk.connection);
        state.ResumeTiming();
    }
}

// The whole of it, windows made and painted included.
void BracketsOfTheEditor(benchmark::State &state)
{
    QuietDesk desk;
    fillTable(desk.connection);
    Tax_DM = new TTax_DM(nullptr);
    for (auto _ : state) {
        bool saved = false;
        {
            TTaxGet_FRM editor(cspTax, 1, fmEdit, false);
            QTimer::singleShot(0, &editor, [&] {
                QTimer::singleShot(0, &editor, [&] {
                    if (auto *bracket =
                            qobject_cast<TTax_GetDetail_FRM *>(QApplication::activeModalWidget())) {
                        bracket->FromSalary_EDT->SetText(u"1000000"_s);
                        bracket->ToSalary_EDT->SetText(u"1000999"_s);
                        bracket->Percent_EDT->SetText(u"20"_s);
                        if (!bracket->Save(svSaveClose))
                            static_cast<QDialog *>(bracket)->done(QDialog::Rejected);
                    }
                });
                editor.findChild<QAbstractButton *>(u"AddRow_BTN"_s)->click();
                saved = editor.Save(svSaveClose);
                if (!saved)
                    static_cast<QDialog &>(editor).done(QDialog::Rejected);
            });
            editor.exec();
        }
        if (!saved || desk.failures > 0 ||
            desk.connection.scalar(TStatement("select count(*) from Tax")).toInt() != 1001) {
            state.SkipWithError("the save was refused");
            break;
        }
        state.PauseTiming();
        leaveAThousand(desk.connection);
        state.ResumeTiming();
    }
    delete Tax_DM;
    Tax_DM = nullptr;
}

void BracketsOfTheRawInterface(benchmark::State &state)
{
    QuietDesk desk;
    fillTable(desk.connection);
    sqlite3 *db = BenchData::openRaw(desk.path());
    const char *const copied = "TaxMainCode,FromSalary,Tosalary,Comment,Percent";
    const auto run = [&](const std::string &sql) {
        sqlite3_stmt *statement = nullptr;
        int step = sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr);
        double sum = 0;
        while (step == SQLITE_OK || step == SQLITE_ROW) {
            step = sqlite3_step(statement);
            for (int i = 0; step == SQLITE_ROW && i < sqlite3_column_count(statement); ++i) {
                if (sqlite3_column_type(statement, i) == SQLITE_TEXT)
                    sum += sqlite3_column_text(statement, i)[0];
                else
                    sum += sqlite3_column_double(statement, i);
            }
        }
        if (step != SQLITE_DONE)
            state.SkipWithError(sqlite3_errmsg(db));
        sqlite3_finalize(statement);
        benchmark::DoNotOptimize(sum);
    };
    for (auto _ : state) {
        run("select * from TaxMain where Code=1");
        run("delete from tmpTax where TaxMainCode=1");
        run(std::string("insert into TmpTax(") + copied + ") select " + copied +
            " from Tax where TaxMainCode=1");
        run("select * from Tmptax where TaxMainCode=1 order by fromSalary");
        run("select ID from Tmptax where TaxMainCode=1 and ID<>0 and fromsalary<=1000999 and tosalary>=1000000");
        run(std::string("insert into TmpTax(") + copied + ") values(1,1000000,1000999,'',20)");
        run("select * from Tmptax where TaxMainCode=1 order by fromSalary");
        run("update TaxMain set Title='many',Comment='' where Code=1");
        run("delete from Tax where TaxMainCode=1");
        run(std::string("insert into Tax(") + copied + ") select " + copied +
            " from TmpTax where TaxMainCode=1");
        run("delete from tmpTax where TaxMainCode=1");
        state.PauseTiming();
        run("delete from Tax where FromSalary>=1000000");
        state.ResumeTiming();
    }
    sqlite3_close(db);
}

} // namespace

// By turns, so that all meet the same disk.
BENCHMARK(BracketsOfTheRawInterface)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(3)
    ->ReportAggregatesOnly();
BENCHMARK(BracketsOfTheDataModule)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(3)
    ->ReportAggregatesOnly();
BENCHMARK(BracketsOfTheEditor)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(3)
    ->ReportAggregatesOnly();
