#include "bench/BenchData.h"
#include "host/database/Dialect.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

// Translating a statement that was seen before, beside what preparing it costs.

namespace {

const QString &statementText()
{
    static const QString text =
        u"select isnull(max(code),0)+1 from CalcMethod where Code=? and TaxMainCode in (?,?,?)"_s;
    return text;
}

void TranslateAgain(benchmark::State &state)
{
    Dialect::toSqlite(statementText());
    for (auto _ : state)
        benchmark::DoNotOptimize(&Dialect::toSqlite(statementText()));
}

void Prepare(benchmark::State &state)
{
    sqlite3 *db = BenchData::openRaw(BenchData::database(1000));
    const QByteArray sql = Dialect::toSqlite(statementText()).statements.value(0).toUtf8();
    for (auto _ : state) {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &statement, nullptr) != SQLITE_OK) {
            state.SkipWithError(sqlite3_errmsg(db));
            break;
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
}

} // namespace

BENCHMARK(TranslateAgain)->Unit(benchmark::kNanosecond);
BENCHMARK(Prepare)->Unit(benchmark::kNanosecond);
