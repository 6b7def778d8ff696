#pragma once

#include "host/database/LineEngine.h"

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

/// What a line does with the requests that go over it: directed by a test, while an engine works in a thread of its own.
class LinePlay {
public:
    /// Every answer takes so long.
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    /// From the n-th request on (1-based, counted from now) no answer comes, until speak(). 0: the line works.
    void goSilentAt(int request);
    /// The same, once the request was done.
    void goSilentAfter(int request);
    void speak() { goSilentAt(0); }
    /// The line breaks with the next request; a new one can be opened at once.
    void breakLine() { m_isBroken = true; }
    /// A server that works but takes for ever: it ends its work when it is asked to.
    void setHearsCancel(bool on) { m_hearsCancel = on; }
    /// Requests since the last goSilentAt or goSilentAfter.
    int requests() const { return m_requests; }
    int connects() const { return m_connects; }
    bool isSilent() const { return m_waiting > 0; }

private:
    friend class PlayedLine;
    void pass(const std::function<bool()> &isOver, bool before);
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<int> m_delay = 0;
    std::atomic<int> m_requests = 0;
    std::atomic<int> m_connects = 0;
    std::atomic<int> m_waiting = 0;
    std::atomic<bool> m_hearsCancel = false;
    std::atomic<bool> m_isBroken = false;
    int m_silentAt = 0;
    bool m_silentAfter = false;
};

/// A database file that stands behind such a line, as a server does.
class PlayedLine : public TLineEngine {
public:
    PlayedLine(const QString &file, const std::shared_ptr<LinePlay> &play);
    ~PlayedLine() override;
    /// The engine for a connection.
    static std::unique_ptr<TEngine> engine(const QString &file, const std::shared_ptr<LinePlay> &play);

    void open() override;
    void beginWork(bool mayConnect) override;
    void giveUp() override;
    void abandon() override;
    std::unique_ptr<TLineEngine> successor() override;

    TEngineKind kind() const override { return TEngineKind::Embedded; }
    QString displayName() const override { return m_file; }
    int pageRows() const override { return 128; }
    QString sortTerm(const QString &column) const override;
    bool knowsBaseTables() const override { return true; }
    bool hasSearchFunctions() const override { return true; }
    void setPatience(int milliseconds) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool inTransaction() const override { return m_isBegun; }
    int execute(const TBoundStatement &statement) override;
    std::unique_ptr<TCursor> select(const TBoundStatement &statement) override;
    qlonglong insert(const TBoundStatement &statement) override;
    QStringList tables() override;
    const TTableInfo *table(const QString &name) override;
    void runScript(const QString &sql) override;
    void lockSchema() override {}

private:
    template <class Work>
    auto overTheLine(Work work);
    void pass(bool before);

    QString m_file;
    std::shared_ptr<LinePlay> m_play;
    std::unique_ptr<TEngine> m_engine;
    bool m_mayConnect = true;
    bool m_isBegun = false;
    bool m_isGone = false;
    std::atomic<bool> m_isGivenUp = false;
    std::atomic<bool> m_isAbandoned = false;
};
