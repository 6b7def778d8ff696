#include "bench/BenchData.h"
#include "bench/QuietDesk.h"
#include "bench/RawReading.h"
#include "bench/StaffData.h"
#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "staff/StaffList_UNT.h"
#include "staff/Staff_DM_UNT.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSqlDatabase>
#include <QSqlTableModel>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <ctime>

using namespace Qt::Literals::StringLiterals;

// The list of employees: opening it at its last row, moving to another group, a typed letter of the search, and a step
// from row to row with the pictures shown; beside the raw C API that reads all, or finds the same count and the same
// page under the same condition.

namespace {

/// The data module alone, on that database.
class Register {
public:
    explicit Register(int employees)
    {
        m_connection.openFile(StaffData::database(employees));
        DM.ADOConnection1 = &m_connection;
        data = std::make_unique<TStaff_DM>(nullptr);
    }
    ~Register()
    {
        data.reset();
        DM.ADOConnection1 = nullptr;
    }
    std::unique_ptr<TStaff_DM> data;

private:
    TConnection m_connection;
};

/// The list on the screen, on that database.
class Screen {
public:
    explicit Screen(int employees) : m_desk(StaffData::database(employees))
    {
        Staff_DM = new TStaff_DM(nullptr);
        list = std::make_unique<TStaffList_FRM>(fmBrowse, QString());
        list->show();
        QApplication::processEvents();
    }
    ~Screen()
    {
        list.reset();
        delete Staff_DM;
        Staff_DM = nullptr;
    }
    static void press(QWidget *widget, Qt::Key key)
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(widget, &down);
    }
    std::unique_ptr<TStaffList_FRM> list;

private:
    QuietDesk m_desk;
};

/// What is typed: a letter that most names have, one more, and one that few have left.
const char *const typed[] = {"ن", "ب1", "ب12", "ب12ژ"};

TSearchItem fullName()
{
    return {u"fullnameTitle"_s, {}, TSearchItem::Text};
}

TStatement conditionOf(const benchmark::State &state)
{
    return TZelmoSearchManager::ConditionFor(fullName(), QString::fromUtf8(typed[state.range(1)]));
}

void StaffOpenAtLastRow(benchmark::State &state)
{
    Register staff(int(state.range(0)));
    for (auto _ : state) {
        staff.data->Staff_Get();
        staff.data->List_QUR->last();
        benchmark::DoNotOptimize(staff.data->List_QUR->value("fullnameTitle"));
        staff.data->List_QUR->close();
    }
    state.counters["peakKiB"] =
        double(BenchData::peakOfProcess("staff", StaffData::database(int(state.range(0)))));
}

void StaffRawReadsAll(benchmark::State &state)
{
    ReadAllRaw(state, StaffData::database(int(state.range(0))), u"select * from staff_VW"_s);
}

void StaffTableModelToTheEnd(benchmark::State &state)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"staff"_s);
        database.setDatabaseName(StaffData::database(int(state.range(0))));
        if (!database.open()) {
            state.SkipWithError("Qt cannot open the file");
            return;
        }
        for (auto _ : state) {
            QSqlTableModel model(nullptr, database);
            model.setTable(u"Staff"_s);
            model.select();
            while (model.canFetchMore())
                model.fetchMore();
            benchmark::DoNotOptimize(model.index(model.rowCount() - 1, 1).data());
        }
    }
    QSqlDatabase::removeDatabase(u"staff"_s);
}

void runManager(benchmark::State &state, const TStatement &own, const TStatement &searched)
{
    Register staff(int(state.range(0)));
    TQuery *list = staff.data->List_QUR;
    TZelmoSearchManager manager(list, nullptr);
    manager.SetSQLScript("select * from staff_VW");
    manager.SetCondition(u"general"_s, searched);
    for (auto _ : state) {
        manager.ExecuteFilter(own);
        benchmark::DoNotOptimize(list->value("fullnameTitle"));
    }
    state.counters["rows"] = list->recordCount();
}

TStatement seventhGroup()
{
    return TStatement::format("(StaffGroup = %d)", {7});
}

void StaffMoveToGroup(benchmark::State &state)
{
    runManager(state, seventhGroup(), {});
}

void StaffMoveToGroupRaw(benchmark::State &state)
{
    StaffData::Raw raw(int(state.range(0)), StaffData::listOf(seventhGroup()));
    for (auto _ : state)
        benchmark::DoNotOptimize(raw.read());
}

void StaffTypedLetter(benchmark::State &state)
{
    runManager(state, {}, conditionOf(state));
}

void StaffTypedLetterRaw(benchmark::State &state)
{
    StaffData::Raw raw(int(state.range(0)), StaffData::listOf(conditionOf(state)));
    for (auto _ : state)
        benchmark::DoNotOptimize(raw.read());
}

// The engine's own comparison, which finds one form of a letter only.
void StaffTypedLetterLike(benchmark::State &state)
{
    StaffData::Raw raw(int(state.range(0)),
                       u"fullnameTitle like '%"_s + QString::fromUtf8(typed[state.range(1)]) + u"%'"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(raw.read());
}

// A key held down in the list on the screen, its pictures shown: the slowest step is what a stutter would be.
void StaffStepWithPictures(benchmark::State &state)
{
    Screen screen(int(state.range(0)));
    screen.list->ShowPicture_BTN->click();
    double slowest = 0;
    for (auto _ : state) {
        const std::clock_t before =
            std::clock(); // the processor's time: others may be at work on this machine
        Screen::press(screen.list->Grid(), Qt::Key_Up);
        QApplication::processEvents();
        slowest = std::max(slowest, double(std::clock() - before) * 1e3 / CLOCKS_PER_SEC);
    }
    state.counters["slowest_ms"] = slowest;
}

} // namespace

BENCHMARK(StaffOpenAtLastRow)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffRawReadsAll)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTableModelToTheEnd)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(StaffMoveToGroup)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffMoveToGroupRaw)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTypedLetter)->ArgsProduct({{1000000}, {0, 1, 2, 3}})->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTypedLetterRaw)->ArgsProduct({{1000000}, {0, 1, 2, 3}})->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTypedLetterLike)->ArgsProduct({{1000000}, {0, 1, 2, 3}})->Unit(benchmark::kMillisecond);
BENCHMARK(StaffStepWithPictures)->Arg(1000000)->Unit(benchmark::kMicrosecond);
