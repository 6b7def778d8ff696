#pragma once

#include "host/database/AnswerWait.h"
#include "host/database/LineEngine.h"
#include "host/database/ServerWorker.h"

#include <deque>
#include <map>

/// A database behind a line, for the thread that the program's windows live in: whatever the line does, it happens in a
/// thread of its own, request by request in their order, and the caller waits as AnswerWait() says.
///
/// A request that the user gives up is ended by the server; where that gets no answer, the line is left to its thread,
/// which stores nothing any more, and the next request opens a new one. An open transaction is lost then: every
/// statement is refused until it is rolled back.
class KETEBIONPAP_CORE TServerEngine : public TEngine {
public:
    /// Opens the line.
    explicit TServerEngine(std::unique_ptr<TLineEngine> line);
    ~TServerEngine() override;

    TEngineKind kind() const override { return m_kind; }
    QString displayName() const override { return m_displayName; }
    TLineState line() const override { return m_lineState; }
    int pageRows() const override { return m_pageRows; }
    QString sortTerm(const QString &column) const override;
    bool knowsBaseTables() const override { return m_knowsBaseTables; }
    bool hasSearchFunctions() const override { return m_hasSearchFunctions; }
    bool answersAtOnce() const override { return false; }
    void setPatience(int milliseconds) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool inTransaction() const override { return m_inTransaction; }
    int execute(const TBoundStatement &statement) override;
    std::unique_ptr<TCursor> select(const TBoundStatement &statement) override;
    qlonglong insert(const TBoundStatement &statement) override;
    int insertsAtOnce(qsizetype values) const override;
    TManyInserted insertMany(const QList<TBoundStatement> &rows) override;
    void readAhead(const QList<TBoundStatement> &statements) override;
    void forgetAhead() override { m_ahead.clear(); }
    void readLater(const TLaterRead &later) override;
    QStringList tables() override;
    const TTableInfo *table(const QString &name) override;
    void runScript(const QString &sql) override;
    void lockSchema() override;

private:
    friend class TServerCursor;
    struct TRequest;
    struct TLater;

    void giveToWorker(const std::shared_ptr<TRequest> &request, std::function<void(TLineEngine &)> work);
    /// Has the work done in the line's thread and waits; throws what it threw. It may go on after the caller has
    /// returned, so it keeps what it needs. True when the user gave it up and it was done all the same.
    bool ask(std::function<void(TLineEngine &)> work, const QString &text = {});
    void refuseWhenLost(const QString &text) const;
    void leaveLine();

    std::shared_ptr<TServerWorker> m_worker;
    std::shared_ptr<TLineEngine> m_line;
    TEngineKind m_kind;
    QString m_displayName;
    TLineState m_lineState; ///< as the last request left it
    int m_pageRows;
    bool m_knowsBaseTables;
    bool m_hasSearchFunctions;
    QList<std::shared_ptr<TLater>> m_later;               ///< the reads under way
    QList<std::pair<TBoundStatement, TReadRows>> m_ahead; ///< what was read and not yet asked for
    bool m_isWaiting = false;
    bool m_inTransaction = false;
    bool m_isLost = false;                  ///< the open transaction went with its line
    std::map<QString, TTableInfo> m_tables; ///< a map: its entries stay where they are
};
