#include "host/database/ServerEngine.h"

#include <QScopeGuard>

#include <exception>
#include <utility>

using namespace Qt::Literals::StringLiterals;

// How the work for one request went.
struct TServerEngine::TRequest : TAwaited {
    std::shared_ptr<TLineEngine> line;
    bool mayConnect = true;
    // Of the line's thread until the request is answered.
    std::optional<TDatabaseError> error;
    std::exception_ptr otherError;
    bool inTransaction = false;
    TLineState lineState;

    using TAwaited::isAnswered;
    using TAwaited::setAnswered;
    QString doing() const override { return line->doing(); }
    void askToEnd() override { line->giveUp(); }

    void run(const std::function<void(TLineEngine &)> &work)
    {
        try {
            if (isGivenUp())
                throw TDatabaseError(TFault::GivenUp, u"given up before it began"_s);
            line->beginWork(mayConnect);
            work(*line);
        } catch (const TDatabaseError &thrown) {
            error = thrown;
        } catch (...) {
            otherError = std::current_exception();
        }
        inTransaction = line->inTransaction();
        lineState = line->line();
    }
};

// A read that nobody waits for; who asked for it hears of it once, also when its line is left.
struct TServerEngine::TLater {
    TLaterRead read;
    std::atomic<bool> isTold = false;
    void tell(const std::optional<TDatabaseError> &error)
    {
        if (!isTold.exchange(true))
            read.then(error);
    }
};

namespace {

// The end of a line.
struct TClosing : TAwaited {
    using TAwaited::setAnswered;
    void askToEnd() override {}
};

} // namespace

TServerEngine::TServerEngine(std::unique_ptr<TLineEngine> line)
    : m_worker(std::make_shared<TServerWorker>()), m_line(std::move(line)), m_kind(m_line->kind()),
      m_displayName(m_line->displayName()), m_pageRows(m_line->pageRows()),
      m_knowsBaseTables(m_line->knowsBaseTables()), m_hasSearchFunctions(m_line->hasSearchFunctions())
{
    try {
        ask([](TLineEngine &line) { line.open(); });
    } catch (...) {
        m_worker->post([line = std::move(m_line)] {});
        throw;
    }
}

TServerEngine::~TServerEngine()
{
    // Usually the line is closed when this returns; a silent one gets the time that a cancel gets.
    const auto closed = std::make_shared<TClosing>();
    m_line->giveUp();
    m_worker->post([closed, line = std::move(m_line)]() mutable {
        line.reset();
        closed->setAnswered();
    });
    closed->giveUp();
    AnswerWait().wait(*closed);
}

void TServerEngine::giveToWorker(const std::shared_ptr<TRequest> &request,
                                 std::function<void(TLineEngine &)> work)
{
    request->line = m_line;
    m_worker->post([request, work = std::move(work)]() mutable {
        request->run(work);
        work = {}; // before anybody hears of it: what it holds is the caller's again
        request->setAnswered();
    });
}

void TServerEngine::refuseWhenLost(const QString &text) const
{
    if (m_isLost)
        throw TDatabaseError(TFault::GivenUp, u"the transaction was given up with its line"_s, text);
}

bool TServerEngine::ask(std::function<void(TLineEngine &)> work, const QString &text)
{
    refuseWhenLost(text);
    if (m_isWaiting)
        throw TDatabaseError(TFault::Waiting, u"a request within the wait for another one"_s, text);
    const auto request = std::make_shared<TRequest>();
    giveToWorker(request, std::move(work));
    {
        m_isWaiting = true;
        const auto waited = qScopeGuard([this] { m_isWaiting = false; });
        AnswerWait().wait(*request);
    }
    if (!request->isAnswered()) {
        leaveLine();
        throw TDatabaseError(TFault::GivenUp, u"no answer to the cancel either; the line was left"_s, text);
    }
    m_inTransaction = request->inTransaction;
    m_lineState = request->lineState;
    if (request->otherError)
        std::rethrow_exception(request->otherError);
    if (request->error)
        throw TDatabaseError(*request->error);
    return request->isGivenUp();
}

// The thread may be held for as long as the network says; what it still has to do is refused by its engine.
void TServerEngine::leaveLine()
{
    m_line->abandon();
    std::shared_ptr<TLineEngine> next = m_line->successor();
    m_worker->post([line = std::move(m_line)] {});
    m_worker = std::make_shared<TServerWorker>();
    m_line = std::move(next);
    m_isLost = m_inTransaction;
    for (const auto &later : std::exchange(m_later, {}))
        later->tell(TDatabaseError(TFault::GivenUp, u"its line was left"_s, later->read.statement.text));
}

QString TServerEngine::sortTerm(const QString &column) const
{
    return m_line->sortTerm(column);
}

void TServerEngine::setPatience(int milliseconds)
{
    ask([milliseconds](TLineEngine &line) { line.setPatience(milliseconds); });
}

void TServerEngine::begin()
{
    m_isLost = m_inTransaction = false;
    ask([](TLineEngine &line) { line.begin(); });
}

void TServerEngine::commit()
{
    const bool wasLost = std::exchange(m_isLost, false);
    const bool wasOpen = std::exchange(m_inTransaction, false); // whatever comes of it
    if (wasLost)
        throw TDatabaseError(TFault::GivenUp, u"the transaction was given up with its line"_s);
    if (wasOpen)
        ask([](TLineEngine &line) { line.commit(); });
}

void TServerEngine::rollback()
{
    const bool wasLost = std::exchange(m_isLost, false);
    if (!std::exchange(m_inTransaction, false) || wasLost)
        return;
    try {
        ask([](TLineEngine &line) { line.rollback(); });
    } catch (const TDatabaseError &) {
        // The server rolls back what a line leaves behind.
    }
}

int TServerEngine::execute(const TBoundStatement &statement)
{
    const auto rows = std::make_shared<int>(0);
    ask([rows, statement](TLineEngine &line) { *rows = line.execute(statement); }, statement.text);
    return *rows;
}

qlonglong TServerEngine::insert(const TBoundStatement &statement)
{
    const auto key = std::make_shared<qlonglong>(0);
    ask([key, statement](TLineEngine &line) { *key = line.insert(statement); }, statement.text);
    return *key;
}

void TServerEngine::readAhead(const QList<TBoundStatement> &statements)
{
    m_ahead.clear();
    if (statements.isEmpty())
        return;
    const auto read = std::make_shared<QList<TReadRows>>();
    try {
        if (ask([read, statements](TLineEngine &line) { *read = line.selectMany(statements); },
                statements.first().text))
            return;
    } catch (const TDatabaseError &error) {
        if (IsLineLost(error.fault())) // who gave it up does not wait for each of them once more
            throw;
        return; // each is asked for in its turn, and tells its own failure
    }
    for (qsizetype i = 0; i < statements.size(); ++i)
        m_ahead.append({statements[i], read->at(i)});
}

int TServerEngine::insertsAtOnce(qsizetype values) const
{
    return m_line->insertsAtOnce(values);
}

TManyInserted TServerEngine::insertMany(const QList<TBoundStatement> &rows)
{
    const auto done = std::make_shared<TManyInserted>();
    try {
        ask([done, rows](TLineEngine &line) { *done = line.insertMany(rows); },
            rows.isEmpty() ? QString() : rows.first().text);
    } catch (const TDatabaseError &error) {
        TManyInserted none; // what was asked for may still be written by the line's thread
        none.error = error;
        return none;
    }
    return *done;
}

void TServerEngine::readLater(const TLaterRead &later)
{
    const auto request = std::make_shared<TRequest>();
    request->line = m_line;
    request->mayConnect = later.mayConnect;
    const auto told = std::make_shared<TLater>();
    told->read = later;
    m_later.removeIf([](const auto &known) { return known->isTold.load(); });
    m_later.append(told);
    m_worker->post([request, told] {
        request->run([told](TLineEngine &line) { told->read.read(*line.select(told->read.statement)); });
        if (request->otherError)
            request->error = TDatabaseError(TFault::Other, u"a read failed in its thread"_s);
        told->tell(request->error);
    });
}

QStringList TServerEngine::tables()
{
    const auto names = std::make_shared<QStringList>();
    ask([names](TLineEngine &line) { *names = line.tables(); });
    return *names;
}

const TTableInfo *TServerEngine::table(const QString &name)
{
    const QString key = name.toLower();
    if (const auto found = m_tables.find(key); found != m_tables.end())
        return &found->second;
    const auto table = std::make_shared<std::optional<TTableInfo>>();
    ask(
        [table, name](TLineEngine &line) {
            if (const TTableInfo *known = line.table(name))
                *table = *known;
        },
        name);
    return *table ? &m_tables.insert({key, **table}).first->second : nullptr;
}

void TServerEngine::runScript(const QString &sql)
{
    ask([sql](TLineEngine &line) { line.runScript(sql); });
    m_tables.clear();
}

void TServerEngine::lockSchema()
{
    ask([](TLineEngine &line) { line.lockSchema(); });
}
