#include "host/database/Connection.h"

#include "host/database/Engine.h"
#include "host/database/Schema.h"

using namespace Qt::Literals::StringLiterals;

void TEngine::readLater(const TLaterRead &later)
{
    std::optional<TDatabaseError> failed;
    try {
        later.read(*select(later.statement));
    } catch (const TDatabaseError &error) {
        failed = error;
    }
    later.then(failed);
}

TManyInserted TEngine::insertMany(const QList<TBoundStatement> &rows)
{
    TManyInserted done;
    try {
        for (const TBoundStatement &row : rows)
            done.keys.append(insert(row));
    } catch (const TDatabaseError &error) {
        done.error = error;
    }
    return done;
}

const QList<TFieldInfo> *TEngine::columnsOf(const QString &text) const
{
    const auto found = m_columns.constFind(text);
    return found == m_columns.constEnd() ? nullptr : &*found;
}

void TEngine::rememberColumns(const QString &text, const QList<TFieldInfo> &columns)
{
    const qsizetype enough = 200; // a search has a text of its own
    if (m_columns.size() >= enough)
        m_columns.clear();
    m_columns.insert(text, columns);
}

TConnection::TConnection(QObject *parent) : QObject(parent) {}

TConnection::~TConnection()
{
    close();
}

void TConnection::openFile(const QString &path, Missing missing)
{
    close();
    openEngine(OpenSqliteEngine(path, missing));
}

void TConnection::openOdbc(const QString &connectionString)
{
    close();
    openEngine(OpenOdbcEngine(connectionString));
}

void TConnection::openEngine(std::unique_ptr<TEngine> engine)
{
    close();
    Schema::bringUpToDate(*engine);
    m_engine = std::move(engine);
}

void TConnection::close()
{
    RollbackTrans();
    m_engine.reset();
    m_lastError.reset();
}

bool TConnection::isOpen() const
{
    return m_engine != nullptr;
}

TConnection::Kind TConnection::kind() const
{
    return m_engine ? m_engine->kind() : Kind::Embedded;
}

bool TConnection::hasSearchFunctions() const
{
    return !m_engine || m_engine->hasSearchFunctions();
}

void TConnection::setPatience(int milliseconds)
{
    engine().setPatience(milliseconds);
}

QString TConnection::displayName() const
{
    return m_engine ? m_engine->displayName() : QString();
}

TLineState TConnection::line() const
{
    return m_engine ? m_engine->line() : TLineState();
}

void TConnection::BeginTrans()
{
    RollbackTrans();
    beforeStatement(TStatement("begin transaction"));
    engine().begin();
    m_begun = true;
}

void TConnection::CommitTrans()
{
    if (!m_begun)
        return;
    beforeStatement(TStatement("commit transaction"));
    if (!InTransaction()) {
        m_begun = false;
        throw TDatabaseError(TFault::Deadlock, u"the transaction was rolled back by the database"_s);
    }
    engine().commit();
    m_begun = false;
}

void TConnection::RollbackTrans()
{
    m_begun = false;
    if (m_engine && m_engine->inTransaction())
        m_engine->rollback();
}

bool TConnection::InTransaction() const
{
    return m_engine && m_engine->inTransaction();
}

int TConnection::execute(const TStatement &statement)
{
    beforeStatement(statement);
    return engine().execute({statement.boundText(), statement.values(), {}});
}

QVariant TConnection::scalar(const TStatement &statement)
{
    beforeStatement(statement);
    const auto cursor = engine().select({statement.boundText(), statement.values(), {}});
    return cursor->next() ? cursor->value(0) : QVariant();
}

int TConnection::columnWidth(const QString &table, const QString &column) const
{
    const TTableInfo *info = engine().table(table);
    if (!info)
        return 0;
    for (const TFieldInfo &field : info->columns) {
        if (field.name.compare(column, Qt::CaseInsensitive) == 0)
            return field.width;
    }
    return 0;
}

TEngine &TConnection::engine() const
{
    if (!m_engine)
        throw TDatabaseError(TFault::ConnectionLost, u"the connection is closed"_s);
    return *m_engine;
}
