#pragma once

#include "host/database/LineEngine.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/OdbcHandles.h"
#include "host/database/OdbcLine.h"
#include "host/database/OdbcRunning.h"
#include "host/database/OdbcValues.h"

#include <atomic>
#include <map>
#include <mutex>
#include <optional>

class TOdbcCursor;

/// SQL Server through ODBC's wide functions. Statements run as they are given.
///
/// One statement is in flight at a time: a cursor that is still open when the next statement comes reads its rows to
/// the end first. A lost line is dropped; the next call outside a transaction connects again. A transaction that the
/// server gave up (a deadlock, a lost line) refuses every statement until it is rolled back, so that none of them
/// is stored alone.
class TOdbcEngine : public TLineEngine {
public:
    /// Refuses a string that names no driver, or one that cannot encrypt as it asks for; open() connects.
    explicit TOdbcEngine(const QString &connectionString);
    ~TOdbcEngine() override;
    void open() override;
    void beginWork(bool mayConnect) override;
    void giveUp() override;
    void abandon() override;
    std::unique_ptr<TLineEngine> successor() override;
    QString doing() const override;

    TEngineKind kind() const override { return TEngineKind::SqlServer; }
    QString displayName() const override { return m_string.displayName(); }
    TLineState line() const override { return {true, m_string.privacy(), m_server}; }
    int pageRows() const override { return 128; } // each request is a trip over the line
    QString sortTerm(const QString &column) const override { return column; } // by the database's collation
    bool knowsBaseTables() const override { return false; }
    bool hasSearchFunctions() const override { return false; }
    void setPatience(int milliseconds) override;
    void begin() override;
    /// A commit whose answer is lost is looked after: when the rows are there, it has succeeded.
    void commit() override;
    void rollback() override;
    bool inTransaction() const override { return m_begun; }
    int execute(const TBoundStatement &statement) override;
    std::unique_ptr<TCursor> select(const TBoundStatement &statement) override;
    qlonglong insert(const TBoundStatement &statement) override;
    QList<TReadRows> selectMany(const QList<TBoundStatement> &statements) override;
    int insertsAtOnce(qsizetype values) const override;
    TManyInserted insertMany(const QList<TBoundStatement> &rows) override;
    QStringList tables() override;
    const TTableInfo *table(const QString &name) override;
    void runScript(const QString &sql) override;
    void lockSchema() override;

protected:
    /// What it is doing, for the user who waits: a retry, for example. Forgotten with the next request.
    void say(const QString &doing);
    /// Whether the user does not want to wait any longer; from any thread.
    bool isGivenUp() const { return m_isGivenUp || m_isAbandoned; }
    /// Takes over what another engine of the same place, abandoned, left undecided.
    void succeed(TOdbcEngine &before);
    /// Before every text that is sent.
    virtual void aboutToSend(const QString &) {}

    // What the database behind the driver is told in its own words; here those of SQL Server.
    /// Answers the server's own name, or nothing.
    virtual QString prepareSession();
    virtual void checkServer();
    virtual bool hasOpenTransaction();
    virtual void endTransaction();
    /// Whether one request may hold several commands with their values.
    virtual bool takesBatches() const { return true; }
    /// Runs a command and answers its affected rows.
    virtual int runCommand(const QString &text, const QVariantList &values);
    /// Runs several commands as one whole, stored when it returns, and answers the affected rows of the last one.
    virtual int runWhole(const QString &text, const QVariantList &values);
    /// Runs an insert and answers the key that the table's counter gave.
    virtual qlonglong runInsert(const QString &text, const QVariantList &values);
    virtual TTableInfo readTable(const QString &name);

    SQLHDBC connection() const { return m_connection; }
    /// Throws for a failed call, after noting a lost line or a lost transaction.
    [[noreturn]] void fail(SQLSMALLINT type, SQLHANDLE handle, const QString &text);
    /// Runs a text to its end; answers the first column of its last result, or the affected rows.
    QVariant run(const QString &text, const QVariantList &values = {});

private:
    friend class TOdbcCursor;

    /// A row that was inserted, and how to find it again.
    struct TInserted {
        QString text;
        QVariantList values;
        qlonglong key = 0;   ///< of the table's counter; 0: it has none
        QString table;       ///< empty: the row cannot be told from others
        QStringList columns; ///< that got the values, in their order
        QStringList keys;    ///< the columns that tell the row from all others
        QVariantList keyValues;
        /// The server did not say that it took the row: one that is found has the same values, too. The key of a table
        /// with a counter lies beyond the one in keyValues then.
        bool isGuess = false;
    };

    void connect();
    void connectTo(const TServerAddress &server);
    [[noreturn]] void failToConnect(SQLHANDLE connection, const TServerAddress &server);
    void drop();
    /// Connects if need be, and clears the line of an open cursor.
    void makeReady(const QString &text);
    /// Throws when the user has given up, or nobody waits any more.
    void refuseWhenGivenUp(const QString &text);
    void endWithoutAnswer();
    /// Runs what is the first of a transaction: a line that was lost meanwhile is opened again, once.
    template <class Work>
    auto asFirst(const QString &text, Work work);
    int runBatch(const QString &text, const QVariantList &values);
    qlonglong insertAtOnce(const TBoundStatement &statement, const TInserted &inserted);
    qlonglong highestKey(const TInserted &inserted);
    void sendMany(const QList<TBoundStatement> &rows, QList<qlonglong> &keys);
    void findAfterLoss(const QList<TInserted> &rows, TManyInserted &done);
    bool hasOnlyBegun(SQLHSTMT statement) const;
    /// Whether the next answer of a statement came; false at the end of them.
    bool nextAnswer(SQLHSTMT statement, const QString &text);
    Odbc::TStatementHandle start(const QString &text, const QVariantList &values = {});
    bool isTransactionAlive();
    template <class Work>
    auto inOneTransaction(Work work);
    static QVariantList keyValuesOf(const TInserted &inserted, const QVariantList &values);
    void identify(TInserted &inserted);
    /// The key of a stored row, 0 where its table has no counter; nothing when it is not there.
    std::optional<qlonglong> storedKey(const TInserted &inserted);
    void remember(const QList<TInserted> &uncertain);
    bool isStoredAfterAll(const QList<TInserted> &inserted);
    TInserted forget(qsizetype uncertain);
    std::optional<qlonglong> storedBefore(const TBoundStatement &statement);

    TOdbcConnectionString m_string;
    std::atomic<int> m_patience;
    qsizetype m_serverAt = 0; ///< which of the servers answered last
    QString m_server;         ///< what it calls itself
    TOdbcLine m_line;
    Odbc::TEnvironment m_environment;
    Odbc::TConnectionHandle m_connection;
    bool m_isDead = false; ///< the line was lost; dropped before the next statement
    bool m_begun = false;
    std::pair<QString, qlonglong> m_lastMany; ///< the table and the last key of many rows, while they go on
    bool m_isToBegin = false;                 ///< the transaction begins with its first request
    bool m_isFirst = false;                   ///< the request that runs has begun it
    bool m_isAsking = false;                  ///< whether the transaction is alive
    std::optional<TFault> m_gone;             ///< why the open transaction is no more
    bool m_mayConnect = true;
    bool m_isClearing = false; ///< what was given up is being rolled back, or looked after
    TOdbcCursor *m_cursor = nullptr;
    std::map<QString, TTableInfo> m_tables; // a map: its entries stay where they are

    // Also of other threads.
    Odbc::TRunning m_running;
    std::atomic<bool> m_isGivenUp = false;
    std::atomic<bool> m_isAbandoned = false;
    mutable std::mutex m_mutex; ///< of what follows
    QString m_doing;
    bool m_isCommitting = false;  ///< the rows may be stored by now
    QList<TInserted> m_inserted;  ///< by the open transaction
    QList<TInserted> m_uncertain; ///< by a commit that got no answer; changed by the engine's own thread only
};

template <class Work>
auto TOdbcEngine::asFirst(const QString &text, Work work)
{
    for (bool again = m_isToBegin;; again = false) {
        makeReady(text);
        try {
            return work();
        } catch (const TDatabaseError &error) {
            // A line that was lost while nothing was at stake is not worth a message: nothing of it is committed.
            if (error.fault() != TFault::ConnectionLost || !again)
                throw;
            m_gone.reset();
            m_isToBegin = true;
        }
    }
}

template <class Work>
auto TOdbcEngine::inOneTransaction(Work work)
{
    if (m_begun)
        return asFirst({}, work);
    begin();
    try {
        const auto result = asFirst({}, work);
        commit();
        return result;
    } catch (...) {
        rollback();
        throw;
    }
}
