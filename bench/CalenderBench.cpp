#include "bench/BenchData.h"
#include "bench/QuietDesk.h"
#include "calender/CalenderDays.h"
#include "calender/Calender_DM_UNT.h"
#include "calender/Calender_Set_UNT.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

// A year of days from the generator's own screen, each day on the disk when the next one begins, against the same
// inserts through the raw interface with the same durability.

namespace {

void YearOfTheGenerator(benchmark::State &state)
{
    QuietDesk desk;
    Calender_DM = new TCalender_DM(nullptr);
    {
        TCalender_Set_FRM screen(cspCalender, false, QString());
        screen.show();
        screen.Title_EDT->SetText(u"روز"_s);
        screen.Date1_EDT->SetText(u"1404/01/01"_s);
        screen.Date2_EDT->SetText(u"1404/12/29"_s);
        screen.StartDay_CMB->setCurrentIndex(6);
        for (auto _ : state) {
            state.PauseTiming();
            desk.connection.execute(TStatement("delete from Calender"));
            state.ResumeTiming();
            if (!screen.Save(svSave) || desk.failures > 0) {
                state.SkipWithError("the generator refused");
                break;
            }
        }
    }
    delete Calender_DM;
    Calender_DM = nullptr;
}

void YearOfTheRawInterface(benchmark::State &state)
{
    QuietDesk desk; // makes the file
    sqlite3 *db = BenchData::openRaw(desk.path());
    sqlite3_stmt *insert = nullptr;
    sqlite3_prepare_v2(db, "insert into Calender(Date,Day,Type,Title,Comment) values(?,?,?,?,?)", -1, &insert,
                       nullptr);
    const QList<TCalenderMapper> days =
        CalenderDays::of({1404, 1, 1, 1404, 12, 29, 6, 6, u"روز"_s, QString()});
    for (auto _ : state) {
        state.PauseTiming();
        sqlite3_exec(db, "delete from Calender", nullptr, nullptr, nullptr);
        state.ResumeTiming();
        for (const TCalenderMapper &day : days) {
            const QByteArray date = day._Date.toUtf8();
            const QByteArray title = day._Title.toUtf8();
            sqlite3_bind_text(insert, 1, date.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(insert, 2, day._Day);
            sqlite3_bind_int(insert, 3, day._Type);
            sqlite3_bind_text(insert, 4, title.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 5, "", -1, SQLITE_TRANSIENT);
            if (sqlite3_step(insert) != SQLITE_DONE)
                state.SkipWithError(sqlite3_errmsg(db));
            sqlite3_reset(insert);
        }
    }
    sqlite3_finalize(insert);
    sqlite3_close(db);
}

} // namespace

// By turns, so that both meet the same disk.
BENCHMARK(YearOfTheGenerator)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(3)
    ->ReportAggregatesOnly();
BENCHMARK(YearOfTheRawInterface)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(3)
    ->ReportAggregatesOnly();
