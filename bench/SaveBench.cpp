#include "bench/BenchData.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/DM_UNT.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

// A save as the user feels it: the method is read by its code and written back, on the disk when it returns.

namespace {

const int methods = 1000;

void SaveOfTheSuite(benchmark::State &state)
{
    TConnection connection;
    connection.openFile(BenchData::database(methods));
    DM.ADOConnection1 = &connection;
    TCalcMethod_DM data(nullptr);
    TCalcMethod_Mapper method;
    int round = 0;
    for (auto _ : state) {
        data.CalcMethod_GetById(1 + round % methods, method);
        method._Comment = QString::number(++round);
        if (!data.CalcMethod_Update(method)) {
            state.SkipWithError("the save was refused");
            break;
        }
    }
    DM.ADOConnection1 = nullptr;
}

struct RawStatement {
    sqlite3_stmt *handle = nullptr;
    RawStatement(sqlite3 *db, const char *sql) { sqlite3_prepare_v2(db, sql, -1, &handle, nullptr); }
    ~RawStatement() { sqlite3_finalize(handle); }
};

void SaveOfTheRawInterface(benchmark::State &state)
{
    sqlite3 *db = BenchData::openRaw(BenchData::database(methods));
    {
        const RawStatement read(db, "select * from CalcMethod where code=?");
        const RawStatement write(
            db,
            "update CalcMethod set Code=?,Title=?,StaffIns=?,EmployerIns=?,OverTime=?,TaxMainCode=?,DailyIns=?,DecTax=?,"
            "Maskok=?,LeaveCeil=?,OutPut=?,Comment=?,Insurance=?,Tax=?,BedBes=?,Loan=?,OverDis=?,Entrance=?,Exit=? "
            "where Code=?");
        int round = 0;
        for (auto _ : state) {
            sqlite3_bind_int(read.handle, 1, 1 + round % methods);
            if (sqlite3_step(read.handle) != SQLITE_ROW) {
                state.SkipWithError("no such method");
                break;
            }
            for (int i = 0; i < 19; ++i)
                sqlite3_bind_value(write.handle, i + 1, sqlite3_column_value(read.handle, i));
            const std::string comment = std::to_string(++round);
            sqlite3_bind_text(write.handle, 12, comment.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_value(write.handle, 20, sqlite3_column_value(read.handle, 0));
            sqlite3_reset(read.handle);
            if (sqlite3_step(write.handle) != SQLITE_DONE) {
                state.SkipWithError(sqlite3_errmsg(db));
                break;
            }
            sqlite3_reset(write.handle);
        }
    }
    sqlite3_close(db);
}

} // namespace

// By turns, so that both meet the same disk.
BENCHMARK(SaveOfTheSuite)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->Repetitions(5)
    ->ReportAggregatesOnly();
BENCHMARK(SaveOfTheRawInterface)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->Repetitions(5)
    ->ReportAggregatesOnly();
