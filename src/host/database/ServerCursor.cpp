#include "host/database/ServerEngine.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const int firstRows = 256; // a page and more
const int mostRows = 4096;
const qsizetype enoughBytes = 1 << 20;

qsizetype sizeOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString().size() * qsizetype(sizeof(QChar));
    case QMetaType::QByteArray:
        return value.toByteArray().size();
    default:
        return 0;
    }
}

/// The rows that one request of the cursor brought.
struct TRows {
    QList<TFieldInfo> fields;
    QList<QVariantList> rows;
    std::optional<TDatabaseError> error; ///< behind the rows
    bool atEnd = false;

    void read(TCursor &cursor, int most)
    {
        fields = cursor.fields();
        qsizetype bytes = 0;
        try {
            while (rows.size() < most && bytes < enoughBytes) {
                if (!cursor.next()) {
                    atEnd = true;
                    return;
                }
                QVariantList row;
                row.reserve(fields.size());
                for (int i = 0; i < int(fields.size()); ++i) {
                    row.append(cursor.value(i));
                    bytes += sizeOf(row.last());
                }
                rows.append(std::move(row));
            }
        } catch (const TDatabaseError &thrown) {
            error = thrown;
            atEnd = true;
        }
    }
};

} // namespace

/// The rows of a statement that runs in the line's thread: they are fetched there, some at a time.
class TServerCursor : public TCursor {
public:
    TServerCursor(TServerEngine &engine, const TBoundStatement &statement)
        : m_engine(engine), m_worker(engine.m_worker), m_text(statement.text)
    {
        const auto read = std::make_shared<TRead>();
        // Held beforehand, so that a select that is given up leaves its cursor to the thread.
        const auto cursor = std::make_shared<std::unique_ptr<TCursor>>();
        m_cursor = cursor;
        const auto work = [read, cursor, statement](TLineEngine &line) {
            *cursor = line.select(statement);
            read->rows.read(**cursor, firstRows);
        };
        try {
            ask(work);
        } catch (...) {
            leaveCursor();
            throw;
        }
        m_rows = std::move(read->rows);
        m_most = firstRows;
        if (m_rows.atEnd)
            leaveCursor();
    }
    ~TServerCursor() override { leaveCursor(); }

    bool next() override
    {
        ++m_at;
        while (m_at >= m_rows.rows.size()) {
            if (m_rows.error)
                throw TDatabaseError(*m_rows.error);
            if (m_rows.atEnd)
                return false;
            fetchMore();
        }
        return true;
    }
    const QList<TFieldInfo> &fields() const override { return m_rows.fields; }
    QVariant value(int column) override { return m_rows.rows.at(m_at).value(column); }

private:
    struct TRead {
        TRows rows;
    };

    void ask(const std::function<void(TLineEngine &)> &work)
    {
        if (m_engine.ask(work, m_text))
            throw TDatabaseError(TFault::GivenUp, u"given up while rows came"_s, m_text);
    }
    void fetchMore()
    {
        if (m_worker != m_engine.m_worker)
            throw TDatabaseError(TFault::ConnectionLost, u"the line was left while rows were read"_s, m_text);
        m_most = std::min(2 * m_most, mostRows);
        const auto read = std::make_shared<TRead>();
        m_engine.ask(
            [read, cursor = m_cursor, most = m_most](TLineEngine &) { read->rows.read(**cursor, most); },
            m_text);
        m_rows = std::move(read->rows);
        m_at = 0;
        if (m_rows.atEnd)
            leaveCursor();
    }
    // The statement is the line's; it is freed in its thread, before what is asked for next.
    void leaveCursor()
    {
        if (m_cursor)
            m_worker->post([cursor = std::move(m_cursor)] { cursor->reset(); });
        m_cursor.reset();
    }

    TServerEngine &m_engine;
    std::shared_ptr<TServerWorker> m_worker;
    QString m_text;
    std::shared_ptr<std::unique_ptr<TCursor>> m_cursor;
    TRows m_rows;
    qsizetype m_at = -1;
    int m_most = 0;
};

namespace {

/// Rows that were read ahead.
class TAheadCursor : public TCursor {
public:
    explicit TAheadCursor(TReadRows read) : m_read(std::move(read)) {}
    bool next() override { return ++m_at < m_read.rows.size(); }
    const QList<TFieldInfo> &fields() const override { return m_read.fields; }
    QVariant value(int column) override { return m_read.rows.at(m_at).value(column); }

private:
    TReadRows m_read;
    qsizetype m_at = -1;
};

} // namespace

std::unique_ptr<TCursor> TServerEngine::select(const TBoundStatement &statement)
{
    const auto ahead = std::ranges::find_if(m_ahead, [&](const auto &known) {
        return known.first.text == statement.text && known.first.values == statement.values &&
               known.first.named == statement.named;
    });
    if (ahead != m_ahead.end()) {
        auto cursor = std::make_unique<TAheadCursor>(std::move(ahead->second));
        m_ahead.erase(ahead);
        return cursor;
    }
    return std::make_unique<TServerCursor>(*this, statement);
}
