#include "support/PlayedLine.h"

#include "host/database/ServerEngine.h"

#include <chrono>
#include <thread>

using namespace Qt::Literals::StringLiterals;

void LinePlay::goSilentAt(int request)
{
    const std::lock_guard lock(m_mutex);
    m_requests = 0;
    m_silentAt = request;
    m_silentAfter = false;
    m_changed.notify_all();
}

void LinePlay::goSilentAfter(int request)
{
    const std::lock_guard lock(m_mutex);
    m_requests = 0;
    m_silentAt = request;
    m_silentAfter = true;
}

void LinePlay::pass(const std::function<bool()> &isOver, bool before)
{
    std::unique_lock lock(m_mutex);
    if (before)
        ++m_requests;
    ++m_waiting;
    while (m_silentAt > 0 && m_requests >= m_silentAt && before != m_silentAfter && !isOver())
        m_changed.wait_for(lock, std::chrono::milliseconds(5));
    --m_waiting;
    lock.unlock();
    if (before && m_delay > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(m_delay));
}

PlayedLine::PlayedLine(const QString &file, const std::shared_ptr<LinePlay> &play)
    : m_file(file), m_play(play)
{
}

PlayedLine::~PlayedLine() = default;

std::unique_ptr<TEngine> PlayedLine::engine(const QString &file, const std::shared_ptr<LinePlay> &play)
{
    return std::make_unique<TServerEngine>(std::make_unique<PlayedLine>(file, play));
}

template <class Work>
auto PlayedLine::overTheLine(Work work)
{
    if (m_isGone)
        throw TDatabaseError(TFault::GivenUp, u"played: the transaction is gone"_s);
    if (m_play->m_isBroken.exchange(false)) {
        m_isGone = m_isBegun;
        m_engine.reset();
        throw TDatabaseError(TFault::ConnectionLost, u"played: the line broke"_s);
    }
    if (!m_engine) {
        if (!m_mayConnect)
            throw TDatabaseError(TFault::ConnectionLost, u"played: not connected"_s);
        ++m_play->m_connects;
        m_engine = OpenSqliteEngine(m_file);
    }
    pass(true);
    auto result = work();
    pass(false);
    return result;
}

void PlayedLine::open()
{
    overTheLine([] { return 0; });
}

void PlayedLine::beginWork(bool mayConnect)
{
    m_isGivenUp = false;
    m_mayConnect = mayConnect;
}

void PlayedLine::giveUp()
{
    m_isGivenUp = true;
}

void PlayedLine::abandon()
{
    m_isAbandoned = true;
}

std::unique_ptr<TLineEngine> PlayedLine::successor()
{
    return std::make_unique<PlayedLine>(m_file, m_play);
}

void PlayedLine::pass(bool before)
{
    m_play->pass([this] { return m_isAbandoned || (m_isGivenUp && m_play->m_hearsCancel); }, before);
    if (!m_isAbandoned && !m_isGivenUp)
        return;
    m_isGone = m_isBegun;
    throw TDatabaseError(TFault::GivenUp, u"played"_s);
}

QString PlayedLine::sortTerm(const QString &column) const
{
    return column + u" collate ZELMO"_s;
}

void PlayedLine::setPatience(int milliseconds)
{
    overTheLine([&] {
        m_engine->setPatience(milliseconds);
        return 0;
    });
}

void PlayedLine::begin()
{
    rollback();
    overTheLine([&] {
        m_engine->begin();
        return 0;
    });
    m_isBegun = true;
}

void PlayedLine::commit()
{
    const auto ended = [this] {
        m_isBegun = m_isGone = false;
        if (m_engine)
            m_engine->rollback();
    };
    try {
        overTheLine([&] {
            m_engine->commit();
            m_isBegun = false;
            return 0;
        });
    } catch (const TDatabaseError &) {
        ended();
        throw;
    }
}

void PlayedLine::rollback()
{
    m_isBegun = m_isGone = false;
    if (m_engine)
        m_engine->rollback();
}

int PlayedLine::execute(const TBoundStatement &statement)
{
    return overTheLine([&] { return m_engine->execute(statement); });
}

std::unique_ptr<TCursor> PlayedLine::select(const TBoundStatement &statement)
{
    return overTheLine([&] { return m_engine->select(statement); });
}

qlonglong PlayedLine::insert(const TBoundStatement &statement)
{
    return overTheLine([&] { return m_engine->insert(statement); });
}

QStringList PlayedLine::tables()
{
    return overTheLine([&] { return m_engine->tables(); });
}

const TTableInfo *PlayedLine::table(const QString &name)
{
    return overTheLine([&] { return m_engine->table(name); });
}

void PlayedLine::runScript(const QString &sql)
{
    overTheLine([&] {
        m_engine->runScript(sql);
        return 0;
    });
}
