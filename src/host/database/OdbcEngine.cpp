#include "host/database/OdbcEngine.h"

#include "host/database/ChangeOver.h"
#include "host/database/OdbcCursor.h"
#include "host/database/OdbcDriverFile.h"
#include "host/database/OdbcText.h"
#include "host/database/ServerEngine.h"
#include "host/database/SqlText.h"
#include "host/database/TlsCheck.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

std::unique_ptr<TEngine> OpenOdbcEngine(const QString &connectionString)
{
    return std::make_unique<TServerEngine>(std::make_unique<TOdbcEngine>(connectionString));
}

TOdbcEngine::TOdbcEngine(const QString &connectionString)
    : m_string(connectionString), m_patience(m_string.lockSeconds() * 1000)
{
    m_string.check();
}

void TOdbcEngine::open()
{
    connect();
    checkServer();
}

TOdbcEngine::~TOdbcEngine()
{
    TOdbcEngine::rollback();
    drop();
}

void TOdbcEngine::beginWork(bool mayConnect)
{
    m_isGivenUp = false;
    m_mayConnect = mayConnect;
    say({});
}

void TOdbcEngine::giveUp()
{
    m_isGivenUp = true;
    m_running.cancel();
}

void TOdbcEngine::abandon()
{
    m_isAbandoned = true;
}

std::unique_ptr<TLineEngine> TOdbcEngine::successor()
{
    auto next = std::make_unique<TOdbcEngine>(m_string.text());
    next->succeed(*this);
    return next;
}

void TOdbcEngine::succeed(TOdbcEngine &before)
{
    m_patience = before.m_patience.load();
    const std::lock_guard lock(before.m_mutex);
    m_uncertain = before.m_uncertain;
    if (before.m_isCommitting)
        m_uncertain += before.m_inserted;
}

QString TOdbcEngine::doing() const
{
    const std::lock_guard lock(m_mutex);
    return m_doing;
}

void TOdbcEngine::say(const QString &doing)
{
    const std::lock_guard lock(m_mutex);
    m_doing = doing;
}

void TOdbcEngine::refuseWhenGivenUp(const QString &text)
{
    if (!m_isAbandoned && (m_isClearing || !m_isGivenUp))
        return;
    if (m_begun && !m_gone)
        m_gone = TFault::GivenUp;
    throw TDatabaseError(TFault::GivenUp, u"given up while it waited for the server"_s, text);
}

// The server that answered last is asked first: the others stand by.
void TOdbcEngine::connect()
{
    drop();
    const QList<TServerAddress> servers = m_string.servers();
    for (qsizetype tried = 1;; ++tried) {
        try {
            connectTo(servers[m_serverAt]);
            break;
        } catch (const TDatabaseError &error) {
            if (tried == servers.size() || !TChangeOver::passes(error.fault()))
                throw;
            m_serverAt = (m_serverAt + 1) % servers.size();
        }
    }
    m_server = prepareSession();
    if (m_server.isEmpty())
        m_server = servers[m_serverAt].host;
}

void TOdbcEngine::connectTo(const TServerAddress &server)
{
    Odbc::TConnectionHandle connection{SQLHANDLE(m_environment)};
    SQLSetConnectAttrW(connection, SQL_ATTR_LOGIN_TIMEOUT,
                       reinterpret_cast<SQLPOINTER>(SQLULEN(m_string.loginSeconds())), SQL_IS_UINTEGER);
    const QString text = OdbcDriverFile::textFor(m_string, server);
    SQLSMALLINT length = 0;
    const int usualPort = 1433;
    m_line.beforeConnect(server.port > 0 || !server.instance.isEmpty() ? server.port : usualPort);
    SQLRETURN code = SQL_ERROR;
    {
        const TOdbcLine::TTurn turn(m_line, m_string.loginSeconds());
        code = SQLDriverConnectW(connection, nullptr, Odbc::wide(text), SQLSMALLINT(text.size()), nullptr, 0,
                                 &length, SQL_DRIVER_NOPROMPT);
    }
    if (!SQL_SUCCEEDED(code))
        failToConnect(connection, server);
    m_line.afterConnect();
    m_connection = std::move(connection);
}

void TOdbcEngine::failToConnect(SQLHANDLE connection, const TServerAddress &server)
{
    const auto problems = Odbc::problemsOf(SQL_HANDLE_DBC, connection);
    TFault fault = Odbc::faultOf(problems, true);
    // A driver that broke off the greeting does not say why.
    const TLinePrivacy privacy = m_string.privacy();
    if (fault == TFault::NoServer && !m_line.isGivenUp() && privacy != TLinePrivacy::Readable)
        fault = WhatIsWrongWithTls(server, m_string.authorities(), privacy == TLinePrivacy::Checked,
                                   m_string.loginSeconds())
                    .value_or(fault);
    throw TDatabaseError(fault, m_string.withoutSecrets(Odbc::textOf(problems)));
}

void TOdbcEngine::drop()
{
    if (m_cursor) {
        m_cursor->abandon();
        m_cursor = nullptr;
    }
    m_isDead = false;
    m_connection = Odbc::TConnectionHandle();
}

QString TOdbcEngine::prepareSession()
{
    // No row counts between the results, texts and pictures of any length, and no endless wait for a lock. A failed
    // statement leaves the transaction to its owner (XACT_ABORT).
    return run(u"SET TEXTSIZE 2147483647 SET NOCOUNT ON SET XACT_ABORT OFF SET LOCK_TIMEOUT %1 "
               "select cast(@@SERVERNAME as nvarchar(128))"_s.arg(m_patience.load()))
        .toString();
}

void TOdbcEngine::setPatience(int milliseconds)
{
    m_patience = milliseconds;
    makeReady({});
    prepareSession();
}

void TOdbcEngine::checkServer()
{
    const QString database = run(u"select db_name()"_s).toString().toLower();
    static const QStringList system{u"master"_s, u"tempdb"_s, u"model"_s, u"msdb"_s};
    if (system.contains(database))
        throw TDatabaseError(TFault::NoSuchDatabase,
                             u"the connection string names no DATABASE of its own (%1)"_s.arg(database));
    const QString letters = QString::fromUtf8("پچژگکیكيءئآ۱٣");
    if (run(u"select cast(? as nvarchar(50))"_s, {letters}).toString() != letters)
        throw TDatabaseError(TFault::UnfitServer, u"bound texts lose letters on their way"_s);
    // The titles that stand in statements go through the code page of the database; bound texts do not.
    const QString titles = QString::fromUtf8("پچژگكيءئآ");
    if (run(u"select cast(? as varchar(50))"_s, {titles}).toString() != titles)
        throw TDatabaseError(TFault::UnfitServer,
                             u"the code page of the database's collation has no Persian letters"_s);
    const QVariantList cases{u"a"_s, u"A"_s};
    if (run(u"select case when ? = ? then 1 else 0 end"_s, cases).toInt() != 1)
        throw TDatabaseError(TFault::UnfitServer, u"the database's collation compares by case"_s);
}

void TOdbcEngine::makeReady(const QString &text)
{
    if (m_gone)
        throw TDatabaseError(*m_gone, u"the transaction was rolled back by the server"_s, text);
    refuseWhenGivenUp(text);
    const bool nothingAtStake = !m_begun || m_isToBegin;
    if (nothingAtStake && m_connection && !m_cursor && m_line.isClosed())
        m_isDead = true;
    if (m_isDead || !m_connection) {
        if (!m_mayConnect)
            throw TDatabaseError(TFault::ConnectionLost, u"the line is not opened again for this"_s, text);
        try {
            connect();
        } catch (const TDatabaseError &error) {
            // The place was right when the connection was opened: what is missing is the line, or the server changes
            // over.
            if (error.fault() == TFault::NoServer)
                throw TDatabaseError(TFault::ConnectionLost, error.detail(), text);
            if (error.fault() == TFault::NoSuchDatabase)
                throw TDatabaseError(TFault::ChangingOver, error.detail(), text);
            throw;
        }
    }
    if (m_cursor)
        m_cursor->keepRest();
}

bool TOdbcEngine::hasOpenTransaction()
{
    return run(u"select @@TRANCOUNT"_s).toInt() > 0;
}

void TOdbcEngine::endTransaction()
{
    run(u"set xact_abort off if @@TRANCOUNT > 0 rollback transaction"_s);
}

int TOdbcEngine::runCommand(const QString &text, const QVariantList &values)
{
    return run(text + u"\nselect @@ROWCOUNT"_s, values).toInt();
}

int TOdbcEngine::runWhole(const QString &text, const QVariantList &values)
{
    try {
        return run(u"set xact_abort on\nbegin transaction\n"_s + text +
                       u"\ndeclare @Rows_OfAll int set @Rows_OfAll=@@ROWCOUNT\ncommit transaction\n"
                       "set xact_abort off\nselect @Rows_OfAll"_s,
                   values)
            .toInt();
    } catch (const TDatabaseError &) {
        const QScopedValueRollback clearing(m_isClearing, true);
        endWithoutAnswer();
        throw;
    }
}

qlonglong TOdbcEngine::runInsert(const QString &text, const QVariantList &values)
{
    return run(text + u"\nselect cast(SCOPE_IDENTITY() as bigint)"_s, values).toLongLong();
}

bool TOdbcEngine::isTransactionAlive()
{
    if (m_isAsking)
        return true;
    m_isAsking = true;
    bool alive = false;
    try {
        alive = hasOpenTransaction();
    } catch (const TDatabaseError &) {
        m_isDead = true;
    }
    m_isAsking = false;
    return alive;
}

void TOdbcEngine::fail(SQLSMALLINT type, SQLHANDLE handle, const QString &text)
{
    const auto problems = Odbc::problemsOf(type, handle);
    TFault fault = m_line.isGivenUp() ? TFault::NoAnswer : Odbc::faultOf(problems);
    SQLUINTEGER dead = SQL_CD_FALSE;
    if (fault == TFault::Other &&
        SQL_SUCCEEDED(
            SQLGetConnectAttrW(m_connection, SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr)) &&
        dead == SQL_CD_TRUE)
        fault = TFault::ConnectionLost;
    m_cursor = nullptr; // the one statement in flight has failed
    if (IsLineLost(fault))
        m_isDead = true;
    else if (type == SQL_HANDLE_STMT)
        SQLFreeStmt(handle, SQL_CLOSE); // the rest of the answer
    if (isGivenUp() && !m_isClearing)
        fault = TFault::GivenUp;
    // Some errors take the whole transaction with them.
    if (m_begun && !m_gone) {
        if (IsLineLost(fault) || fault == TFault::Deadlock)
            m_gone = fault;
        else if (const bool first = m_isFirst; !isTransactionAlive()) {
            if (first && !m_isDead)
                m_isToBegin = true; // the request was refused as a whole
            else
                m_gone = m_isDead ? TFault::ConnectionLost : TFault::Deadlock;
        }
    }
    throw TDatabaseError(fault, m_string.withoutSecrets(Odbc::textOf(problems)), text);
}

Odbc::TStatementHandle TOdbcEngine::start(const QString &text, const QVariantList &values)
{
    refuseWhenGivenUp(text);
    aboutToSend(text);
    refuseWhenGivenUp(text); // the last look before it is sent
    Odbc::TStatementHandle statement(m_connection);
    if (!statement)
        fail(SQL_HANDLE_DBC, m_connection, text);
    // The driver's own clock comes after ours, for a line that ours does not know.
    SQLSetStmtAttrW(statement, SQL_ATTR_QUERY_TIMEOUT,
                    reinterpret_cast<SQLPOINTER>(SQLULEN(m_string.answerSeconds()) + 1), SQL_IS_UINTEGER);
    Odbc::TParameters parameters;
    if (!parameters.bind(statement, values))
        fail(SQL_HANDLE_STMT, statement, text);
    m_isFirst = std::exchange(m_isToBegin, false);
    const QString sent = m_isFirst ? u"begin transaction\n"_s + text : text;
    const TOdbcLine::TTurn turn(m_line, m_string.answerSeconds());
    const Odbc::TRunning::TScope running(m_running, statement);
    const SQLRETURN code = SQLExecDirectW(statement, Odbc::wide(sent), SQLINTEGER(sent.size()));
    if (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA && !hasOnlyBegun(statement))
        fail(SQL_HANDLE_STMT, statement, text);
    SQLFreeStmt(statement, SQL_RESET_PARAMS);
    return statement;
}

// A request that begins a transaction and leaves it open is told so by the server, as if it were a fault (266).
bool TOdbcEngine::hasOnlyBegun(SQLHSTMT statement) const
{
    const int leftOpen = 266;
    if (!m_isFirst)
        return false;
    const auto problems = Odbc::problemsOf(SQL_HANDLE_STMT, statement);
    return !problems.isEmpty() && std::ranges::all_of(problems, [](const Odbc::TProblem &problem) {
        return problem.native == leftOpen;
    });
}

bool TOdbcEngine::nextAnswer(SQLHSTMT statement, const QString &text)
{
    for (;;) {
        const SQLRETURN code = SQLMoreResults(statement);
        if (code == SQL_NO_DATA)
            return false;
        if (SQL_SUCCEEDED(code))
            return true;
        if (!hasOnlyBegun(statement))
            fail(SQL_HANDLE_STMT, statement, text);
    }
}

QVariant TOdbcEngine::run(const QString &text, const QVariantList &values)
{
    const Odbc::TStatementHandle statement = start(text, values);
    const TOdbcLine::TTurn turn(m_line, m_string.answerSeconds());
    const Odbc::TRunning::TScope running(m_running, statement);
    QVariant result;
    do {
        SQLRETURN code = SQL_SUCCESS;
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        if (columns == 0) {
            SQLLEN rows = 0;
            SQLRowCount(statement, &rows);
            result = qlonglong(qMax(rows, SQLLEN(0)));
        } else {
            Odbc::TColumn column;
            SQLDescribeColW(statement, 1, nullptr, 0, nullptr, &column.type, &column.size, &column.scale,
                            nullptr);
            while (SQL_SUCCEEDED(code = SQLFetch(statement)))
                result = Odbc::read(statement, 1, column, code);
            if (code != SQL_NO_DATA)
                fail(SQL_HANDLE_STMT, statement, text);
        }
    } while (nextAnswer(statement, text));
    return result;
}

int TOdbcEngine::execute(const TBoundStatement &statement)
{
    const Odbc::TPlacedText placed = Odbc::placed(statement);
    const bool isOne = ReadSql(statement.text).statements < 2;
    m_lastMany = {};
    // A single command is a whole by itself, and stored by itself.
    if (!m_begun && (isOne || takesBatches())) {
        makeReady(statement.text);
        return isOne ? runCommand(placed.text, placed.values) : runWhole(placed.text, placed.values);
    }
    return inOneTransaction([&] {
        return isOne ? runCommand(placed.text, placed.values) : runBatch(placed.text, placed.values);
    });
}

// A batch amid somebody else's transaction needs a mark to return to; the first of one has nothing before it.
int TOdbcEngine::runBatch(const QString &text, const QVariantList &values)
{
    const bool first = m_isToBegin;
    const QString mark = first ? QString() : u"save transaction batch"_s;
    try {
        if (first || takesBatches())
            return runCommand(first ? text : mark + u'\n' + text, values);
        run(mark);
        return runCommand(text, values);
    } catch (const TDatabaseError &) {
        if (!m_gone && m_begun && !m_isToBegin) {
            try {
                first ? endTransaction() : void(run(u"rollback transaction batch"_s));
                m_isToBegin = first;
            } catch (const TDatabaseError &) {
                m_gone = TFault::Deadlock;
            }
        }
        throw;
    }
}

std::unique_ptr<TCursor> TOdbcEngine::select(const TBoundStatement &statement)
{
    const Odbc::TPlacedText placed = Odbc::placed(statement);
    const auto cursor = [&] {
        return std::make_unique<TOdbcCursor>(*this, start(placed.text, placed.values), placed.text);
    };
    if (m_begun)
        return asFirst(statement.text, cursor);
    for (bool again = ReadSql(statement.text).onlyReads;; again = false) {
        makeReady(statement.text);
        try {
            return cursor();
        } catch (const TDatabaseError &error) {
            if (error.fault() != TFault::ConnectionLost || !again)
                throw;
        }
    }
}

void TOdbcEngine::runScript(const QString &sql)
{
    makeReady({});
    run(sql);
    m_tables.clear();
}
