#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

// The check of the event log beside reading the log alone: as the suite reads rows, and raw.

namespace {

const int eventLines = 1'000'000;
const char readAll[] =
    "select ID, UserCode, UserName, Com_Index, SoftwarePart, Permission, EventText, EventDate, "
    "EventTime, OfSystem, Link from UserEvent";

/// A log of a million lines, made once.
class TLog {
public:
    static TLog &instance()
    {
        static TLog log;
        return log;
    }
    QString fileName() const { return m_folder.filePath(u"events.db"_s); }

private:
    TLog()
    {
        TConnection connection;
        connection.openFile(fileName());
        DM.ADOConnection1 = &connection;
        TTransaction transaction(connection);
        for (int line = 0; line < eventLines; ++line)
            AddEventLine({.userCode = line % 20,
                          .userName = u"مریم %1"_s.arg(line % 20),
                          .comIndex = line % 7,
                          .part = 801 + line % 6,
                          .right = 1 + line % 3,
                          .text = u"کارمند %1"_s.arg(line),
                          .date = u"1404/05/12"_s,
                          .time = u"08:30:15"_s});
        transaction.commit();
        DM.ADOConnection1 = nullptr;
    }
    QTemporaryDir m_folder;
};

/// The log's database behind DM.ADOConnection1.
struct TOpen {
    TOpen()
    {
        connection.openFile(TLog::instance().fileName());
        DM.ADOConnection1 = &connection;
    }
    ~TOpen() { DM.ADOConnection1 = nullptr; }
    TConnection connection;
};

void CheckOfTheEventLog(benchmark::State &state)
{
    const TOpen open;
    for (auto _ : state)
        if (const TEventCheck check = CheckEventLog(); !check.isWhole() || check.lines != eventLines)
            state.SkipWithError("the log is not whole");
}

void ReadingOfTheEventLog(benchmark::State &state)
{
    const TOpen open;
    for (auto _ : state) {
        qlonglong last = 0;
        TQuery query(DM.ADOConnection1, u"Events_QUR"_s);
        do {
            query.setStatement(
                TStatement(QString::fromLatin1(readAll).replace(u"select"_s, u"select top 2000"_s))
                    .sql(" where ID>")
                    .integer(last)
                    .sql(" order by ID"));
            query.open();
            for (int row = 0; row < query.recordCount(); ++row) {
                last = query.valueAt(row, 0).toLongLong();
                for (int column = 1; column <= 10; ++column)
                    benchmark::DoNotOptimize(query.valueAt(row, column));
            }
        } while (query.recordCount() == 2000);
    }
}

void RawReadingOfTheEventLog(benchmark::State &state)
{
    sqlite3 *db = nullptr;
    sqlite3_open_v2(TLog::instance().fileName().toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    for (auto _ : state) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(db, readAll, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column <= 10; ++column) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
                benchmark::DoNotOptimize(QString::fromUtf8(text, sqlite3_column_bytes(statement, column)));
            }
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
}

} // namespace

BENCHMARK(CheckOfTheEventLog)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadingOfTheEventLog)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RawReadingOfTheEventLog)->Unit(benchmark::kMillisecond)->UseRealTime();
