#pragma once

#include "host/Export.h"
#include "host/database/DatabaseError.h"
#include "host/database/Field.h"
#include "host/database/LineState.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>

/// The rows of one running statement, forward only. Frees the statement when it goes; a cursor must be gone before
/// the next statement runs on an engine that has one statement in flight at a time.
class TCursor {
public:
    virtual ~TCursor() = default;
    /// Moves to the next row; false after the last one. Throws TDatabaseError.
    virtual bool next() = 0;
    /// The columns. With base table and column where the engine knows them.
    virtual const QList<TFieldInfo> &fields() const = 0;
    /// A column of the current row: qlonglong, double, QString, QByteArray or null. Decimals of a server come as
    /// double when 15 significant digits hold them; flags as 0 and 1; dates as text.
    virtual QVariant value(int column) = 0;
    /// A column of whole numbers, such as the keys of a list; 0 for null.
    virtual qlonglong integer(int column) { return value(column).toLongLong(); }
};

/// All rows of a statement.
struct TReadRows {
    QList<TFieldInfo> fields;
    QList<QVariantList> rows;
};

/// A read that nobody waits for.
struct TLaterRead {
    TBoundStatement statement;
    /// Gets the rows, in whatever thread; may throw TDatabaseError.
    std::function<void(TCursor &)> read;
    /// Called there afterwards, with what failed.
    std::function<void(const std::optional<TDatabaseError> &)> then;
    /// A line that is lost is opened again for it.
    bool mayConnect = false;
};

/// What came of many inserts.
struct TManyInserted {
    QList<qlonglong> keys; ///< of the rows that are stored, the first ones, as TEngine::insert() tells them
    std::optional<TDatabaseError> error; ///< why the next one is not
};

/// What the connection and the query ask of a database. One object for each open connection; every function throws
/// TDatabaseError with the fault that a user can act on.
class KETEBIONPAP_CORE TEngine {
public:
    virtual ~TEngine() = default;

    /// In whose words the schema's batches are given to it. What else differs between databases is asked below.
    virtual TEngineKind kind() const = 0;
    virtual QString displayName() const = 0;
    /// The line that it is reached by.
    virtual TLineState line() const { return {}; }

    /// How many rows of a list are worth one request.
    virtual int pageRows() const = 0;
    /// What to sort a column by, given in brackets, so that texts come in the order of the Persian alphabet.
    virtual QString sortTerm(const QString &column) const = 0;
    /// Whether the fields of a cursor tell the table and column behind, also through a view.
    virtual bool knowsBaseTables() const = 0;
    /// Whether statements may call the suite's own search functions (zelmo_finds, zelmo_same).
    virtual bool hasSearchFunctions() const = 0;

    /// Whether rows come within a frame of the screen. Where not, what is painted is read with readLater.
    virtual bool answersAtOnce() const { return true; }

    /// How long one that wants to write waits for the others, in milliseconds; TFault::Locked after that.
    virtual void setPatience(int milliseconds) = 0;

    /// Whether a commit returns before it is on the disk. What was stored meanwhile stays a clean beginning whatever
    /// happens to the machine; turning it off brings all of it to the disk. An engine may know no such thing.
    virtual void setLateFlush(bool /*on*/) {}

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0; ///< never throws
    virtual bool inTransaction() const = 0;

    /// Runs a command, or a batch of them, and answers the affected rows of the last one. A batch of more than one
    /// command is one whole: all of it is done, or nothing.
    virtual int execute(const TBoundStatement &statement) = 0;
    virtual std::unique_ptr<TCursor> select(const TBoundStatement &statement) = 0;
    /// Runs an insert and answers the key that the table's auto-increment column got (of no meaning when it has none).
    virtual qlonglong insert(const TBoundStatement &statement) = 0;
    /// How many inserts of so many values each are worth one request.
    virtual int insertsAtOnce(qsizetype /*values*/) const { return 1; }
    /// Runs inserts one after the other, each on its own, up to the first that fails. Throws nothing.
    virtual TManyInserted insertMany(const QList<TBoundStatement> &rows);
    /// Begins a read and returns; reads and requests are done in their order. Not within a transaction.
    virtual void readLater(const TLaterRead &later);

    /// The names of all tables; what the database keeps for itself is left out.
    virtual QStringList tables() = 0;
    /// A table's columns and key, remembered; null when there is no such table.
    virtual const TTableInfo *table(const QString &name) = 0;

    /// Runs a batch of a schema script, written for this engine.
    virtual void runScript(const QString &sql) = 0;
    /// Within a transaction: waits until no other program changes the schema, which then waits for this one.
    virtual void lockSchema() = 0;

    /// Reads what will be asked for next with one request, where that is worth it: each of the statements is answered
    /// once from what came, however the tables have changed since, until forgetAhead(). Throws nothing; what could not
    /// be read is asked for in its turn.
    virtual void readAhead(const QList<TBoundStatement> & /*statements*/) {}
    virtual void forgetAhead() {}

    /// Where the inserts of posted rows are kept until they are sent together; null: each is sent at once.
    QList<TBoundStatement> *keptInserts() const { return m_kept; }
    void keepInserts(QList<TBoundStatement> *kept) { m_kept = kept; }

    /// The columns of a list's statement, so that they are asked for once; null when they were not yet.
    const QList<TFieldInfo> *columnsOf(const QString &text) const;
    void rememberColumns(const QString &text, const QList<TFieldInfo> &columns);

private:
    QList<TBoundStatement> *m_kept = nullptr;
    QHash<QString, QList<TFieldInfo>> m_columns;
};

KETEBIONPAP_CORE std::unique_ptr<TEngine> OpenSqliteEngine(const QString &path,
                                                           TMissingFile missing = TMissingFile::Create);
KETEBIONPAP_CORE std::unique_ptr<TEngine> OpenOdbcEngine(const QString &connectionString);
