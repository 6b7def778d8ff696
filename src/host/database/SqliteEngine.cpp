#include "host/database/SqliteEngine.h"

#include "host/database/Dialect.h"
#include "host/database/Faults.h"
#include "host/database/SqlText.h"
#include "host/database/SqliteFile.h"
#include "host/database/SqliteFunctions.h"
#include "host/database/SqliteSort.h"

#include <new>

using namespace Qt::Literals::StringLiterals;

namespace {

const std::size_t keptStatements = 100;

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

/// A statement in use.
class TTaken {
public:
    TTaken(TSqliteEngine &engine, const QString &sql) : m_engine(engine), m_prepared(engine.take(sql)) {}
    ~TTaken() { m_engine.giveBack(std::move(m_prepared)); }
    TTaken(const TTaken &) = delete;
    TTaken &operator=(const TTaken &) = delete;

    operator sqlite3_stmt *() const { return m_prepared.statement; }
    TSqlitePrepared &prepared() { return m_prepared; }

private:
    TSqliteEngine &m_engine;
    TSqlitePrepared m_prepared;
};

class TSqliteCursor : public TCursor {
public:
    TSqliteCursor(TSqliteEngine &engine, const QString &sql, const TBoundStatement &bound)
        : m_engine(engine), m_statement(engine, sql)
    {
        m_engine.bind(m_statement, bound, 0);
    }

    bool next() override
    {
        const int code = sqlite3_step(m_statement);
        if (code == SQLITE_ROW)
            return true;
        if (code != SQLITE_DONE)
            m_engine.fail(m_statement.prepared().sql);
        return false;
    }
    const QList<TFieldInfo> &fields() const override
    {
        if (m_fields.isEmpty())
            m_fields = m_engine.describe(m_statement.prepared());
        return m_fields;
    }
    QVariant value(int column) override { return columnValue(m_statement, column); }
    qlonglong integer(int column) override { return sqlite3_column_int64(m_statement, column); }

private:
    TSqliteEngine &m_engine;
    mutable TTaken m_statement;
    mutable QList<TFieldInfo> m_fields;
};

} // namespace

std::unique_ptr<TEngine> OpenSqliteEngine(const QString &path, TMissingFile missing)
{
    return std::make_unique<TSqliteEngine>(path, missing);
}

TSqliteEngine::TSqliteEngine(const QString &path, TMissingFile missing) : m_path(path)
{
    SqliteFile::prepare(path, missing == TMissingFile::Create);
    SqliteFile::mustNotBeForeign(path);
    open();
}

TSqliteEngine::~TSqliteEngine()
{
    // The log that lies there now may be another database's.
    if (m_db && !isInPlace())
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void TSqliteEngine::open()
{
    // One thread works with a connection, so that no call needs a lock.
    if (m_db.open(m_path.toUtf8().constData(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX) != SQLITE_OK)
        fail({});
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_handler(m_db, &TSqliteEngine::waitForWriter, this);
    if (sqlite3_db_readonly(m_db, "main") == 1)
        throw TDatabaseError(TFault::ReadOnly, m_path);
    keepLog();
    exec("pragma synchronous=FULL");
    exec("pragma foreign_keys=ON");
    exec("pragma temp_store=MEMORY");
    registerSqliteFunctions(m_db);
    registerSqliteSort(m_db);
    m_realPath = QString::fromUtf8(sqlite3_db_filename(m_db, "main"));
    m_queue = std::make_unique<TWriterQueue>(m_realPath, m_patience);
    m_file = SqliteFile::identityOf(m_realPath);
    exec("select count(*) from sqlite_master"); // lays the log
    m_log = SqliteFile::identityOf(SqliteFile::logOf(m_realPath));
}

void TSqliteEngine::setPatience(int milliseconds)
{
    m_patience = milliseconds;
    m_queue->setPatience(milliseconds);
}

// SQLite's own orders know nothing of the Persian alphabet, so a sort key is asked for.
QString TSqliteEngine::sortTerm(const QString &column) const
{
    return u"zelmo_sort("_s + column + u')';
}

void TSqliteEngine::fail(const QString &text) const
{
    if (!m_db || (sqlite3_errcode(m_db) & 0xff) == SQLITE_NOMEM)
        throw std::bad_alloc(); // as everywhere else: no fault of the database
    throw TDatabaseError(Faults::lastOf(m_db), QString::fromUtf8(sqlite3_errmsg(m_db)), text);
}

void TSqliteEngine::exec(const char *sql)
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(QString::fromUtf8(sql));
}

void TSqliteEngine::begin()
{
    startWriting();
    try {
        // The write lock is taken now, so that waiting for another writer happens here and not amid a save.
        exec("begin immediate");
    } catch (...) {
        endWriting();
        throw;
    }
}

void TSqliteEngine::commit()
{
    mustBeInPlace();
    exec("commit");
    endWriting();
}

void TSqliteEngine::rollback()
{
    sqlite3_exec(m_db, "rollback", nullptr, nullptr, nullptr);
    endWriting();
}

bool TSqliteEngine::inTransaction() const
{
    return sqlite3_get_autocommit(m_db) == 0;
}

TSqlitePrepared TSqliteEngine::take(const QString &sql)
{
    if (const auto found = m_keptBySql.constFind(sql); found != m_keptBySql.constEnd()) {
        TSqlitePrepared kept = std::move(**found);
        m_kept.erase(*found);
        m_keptBySql.erase(found);
        return kept;
    }
    TSqlitePrepared prepared{sql, {}, {}, 0};
    const QByteArray text = sql.toUtf8();
    if (prepared.statement.prepare(m_db, text.constData(), int(text.size()), SQLITE_PREPARE_PERSISTENT) !=
        SQLITE_OK)
        fail(sql);
    if (!prepared.statement)
        throw TDatabaseError(TFault::BadStatement, u"empty statement"_s, sql);
    return prepared;
}

void TSqliteEngine::giveBack(TSqlitePrepared prepared)
{
    sqlite3_reset(prepared.statement);
    sqlite3_clear_bindings(prepared.statement);
    if (m_keptBySql.contains(prepared.sql))
        return;
    m_kept.push_front(std::move(prepared));
    m_keptBySql.insert(m_kept.front().sql, m_kept.begin());
    if (m_kept.size() > keptStatements) {
        m_keptBySql.remove(m_kept.back().sql);
        m_kept.pop_back();
    }
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
    const TTaken statement(*this, sql);
    bind(statement, bound, first);
    try {
        if (!inTransaction() && sqlite3_stmt_readonly(statement) == 0)
            startWriting();
        int code = sqlite3_step(statement);
        while (code == SQLITE_ROW)
            code = sqlite3_step(statement);
        if (code != SQLITE_DONE)
            fail(sql);
    } catch (...) {
        sqlite3_reset(statement); // it holds the file's lock for as long as it runs
        endWriting();
        throw;
    }
    sqlite3_reset(statement);
    endWriting();
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
    if (nested)
        exec("savepoint batch");
    else
        begin();
    int affected = 0;
    try {
        runAll();
        affected = int(sqlite3_changes64(m_db));
        if (nested)
            exec("release batch");
        else
            commit();
    } catch (...) {
        if (nested && inTransaction())
            sqlite3_exec(m_db, "rollback to batch; release batch", nullptr, nullptr, nullptr);
        else if (inTransaction())
            rollback();
        throw;
    }
    return affected;
}

std::unique_ptr<TCursor> TSqliteEngine::select(const TBoundStatement &statement)
{
    const Dialect::TTranslated &translated = Dialect::toSqlite(statement.text);
    if (translated.statements.size() != 1)
        throw TDatabaseError(TFault::BadStatement, u"one statement expected"_s, statement.text);
    return std::make_unique<TSqliteCursor>(*this, translated.statements.first(), statement);
}

qlonglong TSqliteEngine::insert(const TBoundStatement &statement)
{
    execute(statement);
    return sqlite3_last_insert_rowid(m_db);
}

const QList<TFieldInfo> &TSqliteEngine::describe(TSqlitePrepared &prepared)
{
    // Prepared again: the tables have changed.
    sqlite3_stmt *statement = prepared.statement;
    const int times = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (prepared.fields.isEmpty() || prepared.describedAfter != times) {
        prepared.describedAfter = times;
        prepared.fields.clear();
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            prepared.fields.append(describeColumn(statement, i));
    }
    return prepared.fields;
}

TFieldInfo TSqliteEngine::describeColumn(sqlite3_stmt *statement, int column)
{
    TFieldInfo field;
    field.name = QString::fromUtf8(sqlite3_column_name(statement, column));
    field.baseTable = QString::fromUtf8(sqlite3_column_table_name(statement, column));
    field.baseColumn = QString::fromUtf8(sqlite3_column_origin_name(statement, column));
    const QString type = QString::fromUtf8(sqlite3_column_decltype(statement, column));
    field.width = TextWidthOf(type);
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

QStringList TSqliteEngine::tables()
{
    const auto cursor = select({u"select name from sqlite_master where type='table' and "
                                "name not in ('sqlite_sequence','sqlite_stat1','sqlite_stat4')"_s,
                                {},
                                {}});
    QStringList names;
    while (cursor->next())
        names.append(cursor->value(0).toString());
    return names;
}

const TTableInfo *TSqliteEngine::table(const QString &name)
{
    const QString key = name.toLower();
    if (const auto found = m_tables.constFind(key); found != m_tables.constEnd())
        return &*found;
    const auto cursor = select({u"select name, type, pk from pragma_table_info(?)"_s, {name}, {}});
    TTableInfo info;
    info.name = name;
    QMap<qlonglong, QString> keys;
    while (cursor->next()) {
        TFieldInfo field;
        field.name = field.baseColumn = cursor->value(0).toString();
        field.baseTable = name;
        field.width = TextWidthOf(cursor->value(1).toString());
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
    const bool alone = !inTransaction();
    if (alone)
        startWriting();
    try {
        exec(sql.toUtf8().constData());
    } catch (...) {
        endWriting();
        throw;
    }
    endWriting();
}
