#include "bench/RawReading.h"

#include "bench/BenchData.h"

#include <sqlite3.h>

void ReadAllRaw(benchmark::State &state, const QString &path, const QString &sql)
{
    sqlite3 *db = BenchData::openRaw(path);
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        state.SkipWithError(sqlite3_errmsg(db));
        return;
    }
    for (auto _ : state) {
        long bytes = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
                bytes += sqlite3_column_bytes(statement, i);
            }
        }
        benchmark::DoNotOptimize(bytes);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
}
