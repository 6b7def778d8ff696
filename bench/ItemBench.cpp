#include "bench/BenchData.h"
#include "entity/Entity_DM_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"

#include <QApplication>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

// Going from group to group of 100,000 earnings in 200 groups, beside the raw C API.

namespace {

const int pageRows = 32; // what the list reads at once

/// The list of earnings on such a database, shown.
class Items {
public:
    Items()
    {
        m_connection.openFile(BenchData::itemDatabase());
        DM.ADOConnection1 = &m_connection;
        UserInfo = TUserInfo{0, "bench", "bench", true, true};
        m_screen = std::make_unique<TFiscalDeducation_List_FRM>(fmBrowse, QVariant(0), QString());
        m_screen->show();
        QApplication::processEvents();
    }
    ~Items()
    {
        m_screen.reset();
        UserInfo = {};
        DM.ADOConnection1 = nullptr;
    }
    TFiscalDeducation_List_FRM &screen() { return *m_screen; }
    /// The next group becomes the current one, as with the arrow keys; the all-groups row is left out.
    void nextGroup()
    {
        m_group = m_group % BenchData::itemGroups + 1;
        Entity_DM->GroupList_QUR->moveTo(m_group);
    }

private:
    TConnection m_connection;
    std::unique_ptr<TFiscalDeducation_List_FRM> m_screen;
    int m_group = 0;
};

void ChangeGroup(benchmark::State &state)
{
    Items items;
    const TQueryModel *model = items.screen().Grid()->Model();
    for (auto _ : state) {
        items.nextGroup();
        // A list opens at its last row: these are the rows that are shown.
        for (int row = std::max(0, model->rowCount() - pageRows); row < model->rowCount(); ++row)
            for (int column = 0; column < model->columnCount(); ++column)
                benchmark::DoNotOptimize(model->index(row, column).data());
    }
    state.counters["rows"] = model->rowCount();
}

/// The query alone, without the screen.
void FilterQuery(benchmark::State &state)
{
    TConnection connection;
    connection.openFile(BenchData::itemDatabase());
    TQuery list(&connection, u"List_QUR"_s);
    list.setKeyField(u"Code"_s);
    int group = 0;
    for (auto _ : state) {
        group = group % BenchData::itemGroups + 1;
        list.setStatement(TStatement("select * from (select * from Fiscal_VW) as SearchT where ")
                              .append(TStatement::format(u"(GrpCode = %d)"_s, {group})));
        list.open();
        list.last();
        for (int row = std::max(0, list.recordCount() - pageRows); row < list.recordCount(); ++row)
            for (int field = 0; field < list.fields().size(); ++field)
                benchmark::DoNotOptimize(list.valueAt(row, field));
    }
}

void ChangeGroupAndPaint(benchmark::State &state)
{
    Items items;
    for (auto _ : state) {
        items.nextGroup();
        QApplication::processEvents();
    }
}

void SearchGroup(benchmark::State &state)
{
    Items items;
    TSmartEdit_ZLM *search = items.screen().Groups->SearchGroup_EDT;
    search->setFocus();
    QApplication::processEvents();
    int group = 0;
    for (auto _ : state) {
        group = group % BenchData::itemGroups + 1;
        search->SetText(u"گروه %1 "_s.arg(group));
        benchmark::DoNotOptimize(items.screen().ListQuery()->recordCount());
    }
}

void RawChangeGroup(benchmark::State &state)
{
    sqlite3 *db = BenchData::openRaw(BenchData::itemDatabase());
    const auto prepared = [&](const char *sql) {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK)
            state.SkipWithError(sqlite3_errmsg(db));
        return statement;
    };
    sqlite3_stmt *count = prepared("select count(*) from Fiscal_vw where GrpCode=?");
    sqlite3_stmt *page = prepared("select * from Fiscal_vw where GrpCode=? order by Code desc limit ?");
    sqlite3_bind_int(page, 2, pageRows);
    int group = 0;
    for (auto _ : state) {
        group = group % BenchData::itemGroups + 1;
        sqlite3_bind_int(count, 1, group);
        sqlite3_step(count);
        benchmark::DoNotOptimize(sqlite3_column_int(count, 0));
        sqlite3_reset(count);
        sqlite3_bind_int(page, 1, group);
        while (sqlite3_step(page) == SQLITE_ROW)
            for (int i = 0; i < sqlite3_column_count(page); ++i)
                benchmark::DoNotOptimize(sqlite3_column_text(page, i));
        sqlite3_reset(page);
    }
    sqlite3_finalize(count);
    sqlite3_finalize(page);
    sqlite3_close(db);
}

} // namespace

BENCHMARK(ChangeGroup)->Unit(benchmark::kMicrosecond);
BENCHMARK(FilterQuery)->Unit(benchmark::kMicrosecond);
BENCHMARK(RawChangeGroup)->Unit(benchmark::kMicrosecond);
BENCHMARK(ChangeGroupAndPaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(SearchGroup)->Unit(benchmark::kMicrosecond);
