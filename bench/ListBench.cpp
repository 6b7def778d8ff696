#include "bench/BenchData.h"
#include "bench/RawReading.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/DM_UNT.h"

#include <QSqlDatabase>
#include <QSqlQueryModel>
#include <QSqlTableModel>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

// Opening the list of calculation methods at its last row, beside the other ways to the same end.

namespace {

void OpenListAtLastRow(benchmark::State &state)
{
    TConnection connection;
    connection.openFile(BenchData::database(int(state.range(0))));
    DM.ADOConnection1 = &connection;
    TCalcMethod_DM data(nullptr);
    data.CalcMethod_Get();
    for (auto _ : state) {
        data.List_QUR->open();
        data.List_QUR->last();
        benchmark::DoNotOptimize(data.List_QUR->value("Title"));
        data.List_QUR->close();
    }
    DM.ADOConnection1 = nullptr;
    state.counters["peakKiB"] =
        double(BenchData::peakOfProcess("suite", BenchData::database(int(state.range(0)))));
}

void RawReadsAll(benchmark::State &state)
{
    ReadAllRaw(state, BenchData::database(int(state.range(0))), BenchData::listStatement());
}

QSqlDatabase qtDatabase(int methods)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"bench"_s);
    database.setDatabaseName(BenchData::database(methods));
    database.open();
    return database;
}

void fetchAll(QAbstractItemModel &model)
{
    while (model.canFetchMore({}))
        model.fetchMore({});
    benchmark::DoNotOptimize(model.index(model.rowCount() - 1, 1).data());
}

void TableModelFetchedToTheEnd(benchmark::State &state)
{
    {
        const QSqlDatabase database = qtDatabase(int(state.range(0)));
        for (auto _ : state) {
            QSqlTableModel model(nullptr, database);
            model.setTable(u"CalcMethod"_s);
            model.select();
            fetchAll(model);
        }
    }
    QSqlDatabase::removeDatabase(u"bench"_s);
    state.counters["peakKiB"] =
        double(BenchData::peakOfProcess("table", BenchData::database(int(state.range(0)))));
}

void QueryModelFetchedToTheEnd(benchmark::State &state)
{
    {
        const QSqlDatabase database = qtDatabase(int(state.range(0)));
        for (auto _ : state) {
            QSqlQueryModel model;
            model.setQuery(u"select * from CalcMethod"_s, database);
            fetchAll(model);
        }
    }
    QSqlDatabase::removeDatabase(u"bench"_s);
    state.counters["peakKiB"] =
        double(BenchData::peakOfProcess("query", BenchData::database(int(state.range(0)))));
}

} // namespace

BENCHMARK(OpenListAtLastRow)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(RawReadsAll)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(TableModelFetchedToTheEnd)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(QueryModelFetchedToTheEnd)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
