#include "bench/BenchData.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"
#include "host/database/Dialect.h"
#include "staff/Staff_DM_UNT.h"

#include <QHash>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <stdexcept>

// The list of employees: opening it at its last row, moving to another group, a typed letter of the search, and a step
// from row to row with the pictures shown; beside the raw C API that finds the same count and the same page.

namespace {

constexpr int groups = 50;
constexpr int pageRows = 128;

// Names repeat as they do in a country: a few hundred first names, some thousand family names.
const char employees[] =
    "with recursive n(i) as (select 1 union all select i+1 from n where i<@rows) "
    "insert into Staff(Code,StaffGroup,PersonnelCode,InsuranceNumber,CardNumber,NationalID,Sex,FatherName,IDNumber,"
    "BirthDate,BirthPlace,Department,Degree,Major,Military,IsMarried,AccountNumber,BankTitle,CoDate,Job,Comment,Name,"
    "LastName,Tel1,Mob,Add1,Email,LeaveDate,Employment,PostCode,CreatedTime,CreatedDate,UserCreated,Picture) "
    "select i, 1+i%@groups, 'P'||i, printf('%010d',i), ''||i, printf('%010d',i*7), i%2, 'پدر '||(i%211), ''||(i%9999),"
    "printf('13%02d/%02d/%02d',40+i%40,1+i%12,1+i%29), 'شهر '||(i%300), 'واحد '||(i%90), i%8, 'رشته '||(i%60), i%7,"
    "i/2%2, '0101-'||i, 'ملت', printf('13%02d/%02d/%02d',80+i%20,1+i%12,1+i%29), 'شغل '||(i%40), 'شرح '||i,"
    "'نام'||char(1575+i%24)||(i%331), 'خانواده'||char(1576+i%20)||(i%4999), '021'||i, '0912'||i, 'نشانی '||i,"
    "'a'||i||'@b.ir', case when i%10=0 then '1403/01/01' else '' end, i%11, printf('%010d',i), '08:00', '1403/01/01',"
    "'clerk', case when i%100=0 then randomblob(60000) end from n";

void exec(sqlite3 *db, const QString &sql)
{
    char *message = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK)
        throw std::runtime_error(message ? message : "sqlite");
}

/// A database of this suite with so many employees in 50 groups, made once for each size.
QString staffDatabase(int count)
{
    static QTemporaryDir folder;
    static QHash<int, QString> made;
    if (made.contains(count))
        return made.value(count);
    const QString path = folder.filePath(QStringLiteral("staff%1.db").arg(count));
    {
        TConnection connection;
        connection.openFile(path);
    }
    sqlite3 *db = BenchData::openRaw(path);
    exec(db, QStringLiteral("begin"));
    exec(db, QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<%1) "
                            "insert into StaffGroup(Code,Name) select i, 'گروه '||i from n")
                 .arg(groups));
    exec(db, QString::fromUtf8(employees)
                 .replace(u"@rows"_qs, QString::number(count))
                 .replace(u"@groups"_qs, QString::number(groups)));
    exec(db, QStringLiteral("commit"));
    exec(db, QStringLiteral("pragma wal_checkpoint(truncate)"));
    sqlite3_close(db);
    made.insert(count, path);
    return path;
}

/// The suite's data module on that database.
class Register {
public:
    explicit Register(int count)
    {
        m_connection.openFile(staffDatabase(count));
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

TStatement listOf(const TStatement &condition)
{
    return TStatement("select * from staff_VW where ").append(condition);
}

TStatement letter()
{
    return TZelmoSearchManager::ConditionFor({"fullnameTitle", {}, TSearchItem::Text},
                                             QString::fromUtf8("ب12"));
}

/// The same work in plain C: the count, the last keys, their rows.
class Raw {
public:
    Raw(int count, const TStatement &list) : m_db(BenchData::openRaw(staffDatabase(count)))
    {
        const QString sql = Dialect::toSqlite(list.boundText()).statements.value(0);
        m_values = list.values();
        m_count = prepare(QStringLiteral("select count(*) from (%1)").arg(sql));
        m_page = prepare(
            QStringLiteral("select * from staff_VW where Code in (select Code from (%1) order by Code "
                           "desc limit %2)")
                .arg(sql)
                .arg(pageRows));
    }
    ~Raw()
    {
        sqlite3_finalize(m_count);
        sqlite3_finalize(m_page);
        sqlite3_close(m_db);
    }
    long read() { return run(m_count) + run(m_page); }

private:
    sqlite3_stmt *prepare(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_db));
        for (int i = 0; i < m_values.size(); ++i) {
            const QByteArray text = m_values[i].toString().toUtf8();
            if (m_values[i].typeId() == QMetaType::QString)
                sqlite3_bind_text(statement, i + 1, text.constData(), int(text.size()), SQLITE_TRANSIENT);
            else
                sqlite3_bind_int64(statement, i + 1, m_values[i].toLongLong());
        }
        return statement;
    }
    static long run(sqlite3_stmt *statement)
    {
        long bytes = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                if (sqlite3_column_type(statement, i) == SQLITE_BLOB)
                    continue; // the list does not read its pictures either
                benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
                bytes += sqlite3_column_bytes(statement, i);
            }
        }
        sqlite3_reset(statement);
        return bytes;
    }
    sqlite3 *m_db;
    QVariantList m_values;
    sqlite3_stmt *m_count = nullptr;
    sqlite3_stmt *m_page = nullptr;
};

void StaffOpenAtLastRow(benchmark::State &state)
{
    Register staff(int(state.range(0)));
    for (auto _ : state) {
        staff.data->Staff_Get();
        staff.data->List_QUR->last();
        benchmark::DoNotOptimize(staff.data->List_QUR->value("fullnameTitle"));
        staff.data->List_QUR->close();
    }
}

void StaffRawReadsAll(benchmark::State &state)
{
    sqlite3 *db = BenchData::openRaw(staffDatabase(int(state.range(0))));
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(db, "select * from staff_VW", -1, &statement, nullptr) != SQLITE_OK) {
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

void openList(benchmark::State &state, const TStatement &condition)
{
    Register staff(int(state.range(0)));
    TQuery *list = staff.data->List_QUR;
    for (auto _ : state) {
        list->close();
        list->setStatement(listOf(condition));
        list->open();
        list->last();
        benchmark::DoNotOptimize(list->value("fullnameTitle"));
    }
    state.counters["rows"] = list->recordCount();
}

void openRawly(benchmark::State &state, const TStatement &condition)
{
    Raw raw(int(state.range(0)), listOf(condition));
    for (auto _ : state)
        benchmark::DoNotOptimize(raw.read());
}

void StaffMoveToGroup(benchmark::State &state)
{
    openList(state, TStatement::format("(StaffGroup = %d)", {7}));
}

void StaffMoveToGroupRaw(benchmark::State &state)
{
    openRawly(state, TStatement::format("(StaffGroup = %d)", {7}));
}

void StaffTypedLetter(benchmark::State &state)
{
    openList(state, letter());
}

void StaffTypedLetterRaw(benchmark::State &state)
{
    openRawly(state, letter());
}

void StaffStepWithPictures(benchmark::State &state)
{
    Register staff(int(state.range(0)));
    staff.data->Staff_Get();
    TQuery *list = staff.data->List_QUR;
    list->last();
    for (auto _ : state) {
        list->prior();
        benchmark::DoNotOptimize(list->value("fullnameTitle"));
        benchmark::DoNotOptimize(list->value("picture"));
        benchmark::DoNotOptimize(list->value("FingerPrint"));
    }
}

} // namespace

BENCHMARK(StaffOpenAtLastRow)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffRawReadsAll)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffMoveToGroup)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffMoveToGroupRaw)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTypedLetter)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffTypedLetterRaw)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StaffStepWithPictures)->Arg(1000000)->Unit(benchmark::kMicrosecond);
