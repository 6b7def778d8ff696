#pragma once

#include "host/database/Engine.h"
#include "host/database/SqliteFile.h"
#include "host/database/SqliteHandles.h"
#include "host/database/WriterQueue.h"

#include <QElapsedTimer>
#include <QHash>
#include <list>

/// A prepared statement, and its columns once they were asked for.
struct TSqlitePrepared {
    QString sql;
    Sqlite::TStatement statement;
    QList<TFieldInfo> fields;
    int describedAfter = 0; ///< how often it was prepared again by then
};

/// The embedded engine: one file in WAL mode, every commit on the disk before it returns (but see setLateFlush).
class TSqliteEngine : public TEngine {
public:
    explicit TSqliteEngine(const QString &path, TMissingFile missing = TMissingFile::Create);
    ~TSqliteEngine() override;

    TEngineKind kind() const override { return TEngineKind::Embedded; }
    QString displayName() const override { return m_path; }
    int pageRows() const override { return 32; } // about what a screen shows
    QString sortTerm(const QString &column) const override;
    bool knowsBaseTables() const override { return true; }
    bool hasSearchFunctions() const override { return true; }
    void setPatience(int milliseconds) override;
    void setLateFlush(bool on) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool inTransaction() const override;
    int execute(const TBoundStatement &statement) override;
    std::unique_ptr<TCursor> select(const TBoundStatement &statement) override;
    qlonglong insert(const TBoundStatement &statement) override;
    QStringList tables() override;
    const TTableInfo *table(const QString &name) override;
    void runScript(const QString &sql) override;
    void lockSchema() override {} // its transaction keeps all others from writing

    sqlite3 *handle() const { return m_db; }

    /// A prepared statement; finished ones are kept for the next use of the same text.
    TSqlitePrepared take(const QString &sql);
    void giveBack(TSqlitePrepared prepared);
    /// Binds the values from `first` on; answers how many "?" places the statement has.
    int bind(sqlite3_stmt *statement, const TBoundStatement &bound, int first);
    [[noreturn]] void fail(const QString &text) const;
    /// The columns of a prepared statement; known ones cost nothing.
    const QList<TFieldInfo> &describe(TSqlitePrepared &prepared);

private:
    void open();
    static int waitForWriter(void *engine, int attempt);
    void runOne(const QString &sql, const TBoundStatement &bound, int first);
    void exec(const char *sql);
    void keepLog();
    void startWriting();
    void endWriting();
    bool isInPlace() const;
    void mustBeInPlace() const;
    TFieldInfo describeColumn(sqlite3_stmt *statement, int column);

    QString m_path;
    Sqlite::TDatabase m_db;
    int m_patience = usualPatience;
    QElapsedTimer m_waited; ///< for another writer
    std::unique_ptr<TWriterQueue> m_queue;
    bool m_writing = false; ///< from startWriting to the end of the transaction
    QString m_realPath;     ///< as SQLite has it, links followed
    SqliteFile::TIdentity m_file;
    SqliteFile::TIdentity m_log;
    std::list<TSqlitePrepared> m_kept; // most recently used first
    QHash<QString, std::list<TSqlitePrepared>::iterator> m_keptBySql;
    QHash<QString, TTableInfo> m_tables;
};
