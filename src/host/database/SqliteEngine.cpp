#include "host/database/SqliteEngine.h"

#include "host/database/Dialect.h"
#include "host/database/SqliteFile.h"
#include "host/database/SqliteFunctions.h"
#include "host/database/SqliteSort.h"

#include <QRegularExpression>

#include <chrono>
#include <new>
#include <sqlite3.h>
#include <thread>

namespace {

const int busyMilliseconds = 5000;
const std::size_t keptStatements = 100;

TFault faultOf(int code)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return TFault::Locked;
    case SQLITE_CONSTRAINT:
        return TFault::Refused;
    case SQLITE_FULL:
        return TFault::DiskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return TFault::ReadOnly;
    case SQLITE_CANTOPEN:
        return TFault::CannotOpen;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return TFault::NotADatabase;
    case SQLITE_TOOBIG:
        return TFault::TooLong;
    case SQLITE_ERROR:
        return TFault::BadStatement;
    default:
        return TFault::Other;
    }
}

// "NVARCHAR(50)": 50; "NVARCHAR(MAX)" and all other types: 0.
int widthOf(const QString &declaredType)
{
    static const QRegularExpression text(QStringLiteral("CHAR\\s*\\((\\d+)\\)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = text.match(declaredType);
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}

bool isLarge(const QString &declaredType)
{
    return declaredType.contains(u"BINARY", Qt::CaseInsensitive) ||
           declaredType.contains(u"BLOB", Qt::CaseInsensitive);
}

QVariant columnValue(sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return static_cast<qlonglong>(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        return QByteArray(bytes, sqlite3_column_bytes(statement, column));
    }
    default:
        return {};
    }
}

void bindValue(sqlite3_stmt *statement, int place, const QVariant &value)
{
    if (!value.isValid() || value.isNull()) {
        sqlite3_bind_null(statement, place);
        return;
    }
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        sqlite3_bind_double(statement, place, value.toDouble());
        break;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        sqlite3_bind_blob64(statement, place, bytes.constData(), sqlite3_uint64(bytes.size()),
                            SQLITE_TRANSIENT);
        break;
    }
    case QMetaType::QString: {
        const QByteArray text = value.toString().toUtf8();
        sqlite3_bind_text64(statement, place, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT,
                            SQLITE_UTF8);
        break;
    }
    default:
        sqlite3_bind_int64(statement, place, value.toLongLong());
    }
}

class TSqliteCursor : public TCursor {
public:
    TSqliteCursor(TSqliteEngine &engine, const QString &sql, const TBoundStatement &bound)
        : m_engine(engine), m_sql(sql), m_statement(engine.take(sql))
    {
        m_engine.bind(m_statement, bound, 0);
    }
    ~TSqliteCursor() override { m_engine.giveBack(m_sql, m_statement); }

    bool next() override
    {
        const int code = sqlite3_step(m_statement);
        if (code == SQLITE_ROW)
            return true;
        if (code != SQLITE_DONE)
            m_engine.fail(m_sql);
        return false;
    }
    const QList<TFieldInfo> &fields() const override
    {
        if (m_fields.isEmpty())
            m_fields = m_engine.describe(m_statement);
        return m_fields;
    }
    QVariant value(int column) override { return columnValue(m_statement, column); }
    qlonglong integer(int column) override { return sqlite3_column_int64(m_statement, column); }

private:
    TSqliteEngine &m_engine;
    QString m_sql;
    sqlite3_stmt *m_statement;
    mutable QList<TFieldInfo> m_fields;
};

} // namespace

std::unique_ptr<TEngine> OpenSqliteEngine(const QString &path)
{
    return std::make_unique<TSqliteEngine>(path);
}

TSqliteEngine::TSqliteEngine(const QString &path) : m_path(path)
{
    SqliteFile::prepare(path);
    try {
        open();
    } catch (...) {
        sqlite3_close(m_db);
        throw;
    }
}

TSqliteEngine::~TSqliteEngine()
{
    for (const TKept &kept : m_kept)
        sqlite3_finalize(kept.statement);
    sqlite3_close_v2(m_db);
}

void TSqliteEngine::open()
{
    // One thread works with a connection, so that no call needs a lock.
    if (sqlite3_open_v2(m_path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK)
        fail({});
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_handler(m_db, &TSqliteEngine::waitForWriter, this);
    if (sqlite3_db_readonly(m_db, "main") == 1)
        throw TDatabaseError(TFault::ReadOnly, m_path);
    exec("pragma journal_mode=WAL");
    exec("pragma synchronous=FULL");
    exec("pragma foreign_keys=ON");
    exec("pragma temp_store=MEMORY");
    registerSqliteFunctions(m_db);
    registerSqliteSort(m_db);
}

// SQLite's own wait looks ever more rarely, and then one of eight busy workstations may find the file held each time
// that it looks: it is looked for every millisecond instead.
int TSqliteEngine::waitForWriter(void *engine, int attempt)
{
    QElapsedTimer &waited = static_cast<TSqliteEngine *>(engine)->m_waited;
    if (attempt == 0)
        waited.start();
    if (waited.hasExpired(busyMilliseconds))
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

void TSqliteEngine::fail(const QString &text) const
{
    const int code = m_db ? sqlite3_extended_errcode(m_db) : SQLITE_NOMEM;
    if ((code & 0xff) == SQLITE_NOMEM)
        throw std::bad_alloc(); // as everywhere else: no fault of the database
    throw TDatabaseError(faultOf(code), QString::fromUtf8(sqlite3_errmsg(m_db)), text);
}

void TSqliteEngine::exec(const char *sql)
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(QString::fromUtf8(sql));
}

void TSqliteEngine::begin()
{
    // The write lock is taken now, so that waiting for another writer happens here and not amid a save.
    exec("begin immediate");
}

void TSqliteEngine::commit()
{
    exec("commit");
}

void TSqliteEngine::rollback()
{
    sqlite3_exec(m_db, "rollback", nullptr, nullptr, nullptr);
}

bool TSqliteEngine::inTransaction() const
{
    return sqlite3_get_autocommit(m_db) == 0;
}

sqlite3_stmt *TSqliteEngine::take(const QString &sql)
{
    if (const auto found = m_keptBySql.constFind(sql); found != m_keptBySql.constEnd()) {
        sqlite3_stmt *statement = (*found)->statement;
        m_kept.erase(*found);
        m_keptBySql.erase(found);
        return statement;
    }
    sqlite3_stmt *statement = nullptr;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v3(m_db, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr) != SQLITE_OK)
        fail(sql);
    if (!statement)
        throw TDatabaseError(TFault::BadStatement, QStringLiteral("empty statement"), sql);
    return statement;
}

void TSqliteEngine::giveBack(const QString &sql, sqlite3_stmt *statement)
{
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    if (m_keptBySql.contains(sql)) {
        finalize(statement);
        return;
    }
    m_kept.push_front({sql, statement});
    m_keptBySql.insert(sql, m_kept.begin());
    if (m_kept.size() > keptStatements) {
        m_keptBySql.remove(m_kept.back().sql);
        finalize(m_kept.back().statement);
        m_kept.pop_back();
    }
}

void TSqliteEngine::finalize(sqlite3_stmt *statement)
{
    m_described.remove(statement);
    sqlite3_finalize(statement);
}

int TSqliteEngine::bind(sqlite3_stmt *statement, const TBoundStatement &bound, int first)
{
    int used = 0;
    const int places = sqlite3_bind_parameter_count(statement);
    for (int place = 1; place <= places; ++place) {
        const char *name = sqlite3_bind_parameter_name(statement, place);
        if (name)
            bindValue(statement, place, bound.named.value(QString::fromUtf8(name + 1).toLower()));
        else
            bindValue(statement, place, bound.values.value(first + used++));
    }
    return used;
}

void TSqliteEngine::runOne(const QString &sql, const TBoundStatement &bound, int first)
{
    sqlite3_stmt *statement = take(sql);
    bind(statement, bound, first);
    int code = sqlite3_step(statement);
    while (code == SQLITE_ROW)
        code = sqlite3_step(statement);
    if (code != SQLITE_DONE) {
        const TDatabaseError error(faultOf(sqlite3_extended_errcode(m_db)),
                                   QString::fromUtf8(sqlite3_errmsg(m_db)), sql);
        giveBack(sql, statement);
        throw error;
    }
    giveBack(sql, statement);
}

int TSqliteEngine::execute(const TBoundStatement &statement)
{
    const Dialect::TTranslated &translated = Dialect::toSqlite(statement.text);
    const auto runAll = [&] {
        int first = 0;
        for (qsizetype i = 0; i < translated.statements.size(); ++i) {
            runOne(translated.statements[i], statement, first);
            first += translated.places.value(i);
        }
    };
    if (translated.statements.size() <= 1) {
        runAll();
        return int(sqlite3_changes64(m_db));
    }
    const bool nested = inTransaction();
    exec(nested ? "savepoint batch" : "begin immediate");
    int affected = 0;
    try {
        runAll();
        affected = int(sqlite3_changes64(m_db));
        exec(nested ? "release batch" : "commit");
    } catch (...) {
        if (inTransaction())
            sqlite3_exec(m_db, nested ? "rollback to batch; release batch" : "rollback", nullptr, nullptr,
                         nullptr);
        throw;
    }
    return affected;
}

std::unique_ptr<TCursor> TSqliteEngine::select(const TBoundStatement &statement)
{
    const Dialect::TTranslated &translated = Dialect::toSqlite(statement.text);
    if (translated.statements.size() != 1)
        throw TDatabaseError(TFault::BadStatement, QStringLiteral("one statement expected"), statement.text);
    return std::make_unique<TSqliteCursor>(*this, translated.statements.first(), statement);
}

qlonglong TSqliteEngine::insert(const TBoundStatement &statement)
{
    execute(statement);
    return sqlite3_last_insert_rowid(m_db);
}

QList<TFieldInfo> TSqliteEngine::describe(sqlite3_stmt *statement)
{
    // Prepared again: the tables have changed.
    const int prepared = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    TDescribed &known = m_described[statement];
    if (known.fields.isEmpty() || known.prepared != prepared) {
        known = {prepared, {}};
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            known.fields.append(describeColumn(statement, i));
    }
    return known.fields;
}

TFieldInfo TSqliteEngine::describeColumn(sqlite3_stmt *statement, int column)
{
    TFieldInfo field;
    field.name = QString::fromUtf8(sqlite3_column_name(statement, column));
    field.baseTable = QString::fromUtf8(sqlite3_column_table_name(statement, column));
    field.baseColumn = QString::fromUtf8(sqlite3_column_origin_name(statement, column));
    const QString type = QString::fromUtf8(sqlite3_column_decltype(statement, column));
    field.width = widthOf(type);
    field.large = isLarge(type);
    field.readOnly = field.baseTable.isEmpty();
    if (!field.readOnly) {
        int autoIncrement = 0;
        sqlite3_table_column_metadata(m_db, "main", field.baseTable.toUtf8().constData(),
                                      field.baseColumn.toUtf8().constData(), nullptr, nullptr, nullptr,
                                      nullptr, &autoIncrement);
        field.autoIncrement = autoIncrement != 0;
        field.readOnly = field.autoIncrement;
    }
    return field;
}

const TTableInfo *TSqliteEngine::table(const QString &name)
{
    const QString key = name.toLower();
    if (const auto found = m_tables.constFind(key); found != m_tables.constEnd())
        return &*found;
    const auto cursor =
        select({QStringLiteral("select name, type, pk from pragma_table_info(?)"), {name}, {}});
    TTableInfo info;
    info.name = name;
    QMap<qlonglong, QString> keys;
    while (cursor->next()) {
        TFieldInfo field;
        field.name = field.baseColumn = cursor->value(0).toString();
        field.baseTable = name;
        field.width = widthOf(cursor->value(1).toString());
        int autoIncrement = 0;
        sqlite3_table_column_metadata(m_db, "main", name.toUtf8().constData(),
                                      field.name.toUtf8().constData(), nullptr, nullptr, nullptr, nullptr,
                                      &autoIncrement);
        field.autoIncrement = field.readOnly = autoIncrement != 0;
        if (cursor->value(2).toLongLong() > 0)
            keys.insert(cursor->value(2).toLongLong(), field.name);
        info.columns.append(field);
    }
    if (info.columns.isEmpty())
        return nullptr;
    info.keys = keys.values();
    return &*m_tables.insert(key, info);
}

void TSqliteEngine::runScript(const QString &sql)
{
    exec(sql.toUtf8().constData());
}
