#include "host/database/OdbcCursor.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const SQLULEN longestPlainText = 4000;

bool isText(SQLSMALLINT type)
{
    return type == SQL_CHAR || type == SQL_VARCHAR || type == SQL_WCHAR || type == SQL_WVARCHAR;
}

bool isLarge(SQLSMALLINT type)
{
    return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

} // namespace

TOdbcCursor::TOdbcCursor(TOdbcEngine &engine, Odbc::TStatementHandle statement, const QString &text)
    : m_engine(&engine), m_statement(std::move(statement)), m_text(text)
{
    engine.m_cursor = this;
    try {
        describe();
    } catch (...) {
        if (m_engine)
            m_engine->m_cursor = nullptr;
        throw;
    }
}

TOdbcCursor::~TOdbcCursor()
{
    if (!m_engine || m_engine->m_cursor != this)
        return;
    m_engine->m_cursor = nullptr;
    // Rows that nobody reads are given up, which the server confirms.
    const TOdbcLine::TTurn turn(m_engine->m_line, m_engine->m_string.answerSeconds());
    m_statement = Odbc::TStatementHandle();
}

void TOdbcCursor::describe()
{
    const Odbc::TRunning::TScope running(m_engine->m_running, m_statement);
    SQLSMALLINT count = 0;
    for (;;) {
        if (!SQL_SUCCEEDED(SQLNumResultCols(m_statement, &count)))
            m_engine->fail(SQL_HANDLE_STMT, m_statement, m_text);
        if (count > 0)
            break;
        // A statement before the select has no columns.
        if (!m_engine->nextAnswer(m_statement, m_text)) {
            m_atEnd = true;
            return;
        }
    }
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        SQLWCHAR name[256] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT nullable = 0;
        Odbc::TColumn column;
        if (!SQL_SUCCEEDED(SQLDescribeColW(m_statement, SQLUSMALLINT(i), name, SQLSMALLINT(std::size(name)),
                                           &length, &column.type, &column.size, &column.scale, &nullable)))
            m_engine->fail(SQL_HANDLE_STMT, m_statement, m_text);
        TFieldInfo field;
        field.name = QString::fromUtf16(reinterpret_cast<const char16_t *>(name));
        if (isText(column.type) && column.size <= longestPlainText)
            field.width = int(column.size);
        field.large = isLarge(column.type);
        SQLLEN flag = SQL_FALSE;
        if (SQL_SUCCEEDED(SQLColAttributeW(m_statement, SQLUSMALLINT(i), SQL_DESC_AUTO_UNIQUE_VALUE, nullptr,
                                           0, nullptr, &flag)))
            field.autoIncrement = flag == SQL_TRUE;
        field.readOnly = field.autoIncrement;
        m_fields.append(field);
        m_columns.append(column);
    }
}

bool TOdbcCursor::fetch()
{
    const TOdbcLine::TTurn turn(m_engine->m_line, m_engine->m_string.answerSeconds());
    std::optional<Odbc::TRunning::TScope> running(std::in_place, m_engine->m_running, m_statement);
    SQLRETURN code = SQLFetch(m_statement);
    if (code == SQL_NO_DATA) {
        m_row.clear();
        m_atEnd = true;
        // What comes after the rows may still be an error, or the rows of another select.
        while (m_engine->nextAnswer(m_statement, m_text)) {
            SQLSMALLINT columns = 0;
            SQLNumResultCols(m_statement, &columns);
            m_hasMore = m_expectsMore && columns > 0;
            if (m_hasMore)
                return false;
        }
        running.reset();
        m_statement = Odbc::TStatementHandle();
        if (m_engine->m_cursor == this)
            m_engine->m_cursor = nullptr;
        return false;
    }
    if (!SQL_SUCCEEDED(code))
        m_engine->fail(SQL_HANDLE_STMT, m_statement, m_text);
    m_row.clear();
    m_row.reserve(m_columns.size());
    for (qsizetype i = 0; i < m_columns.size(); ++i) {
        m_row.append(Odbc::read(m_statement, SQLUSMALLINT(i + 1), m_columns[i], code));
        if (!SQL_SUCCEEDED(code))
            m_engine->fail(SQL_HANDLE_STMT, m_statement, m_text);
    }
    return true;
}

bool TOdbcCursor::nextSelect()
{
    if (!std::exchange(m_hasMore, false))
        return false;
    m_atEnd = false;
    m_fields.clear();
    m_columns.clear();
    describe();
    return true;
}

bool TOdbcCursor::next()
{
    if (m_keptAt < m_kept.size()) {
        m_row = m_kept[m_keptAt];
        m_kept[m_keptAt++].clear();
        return true;
    }
    if (m_lost)
        throw TDatabaseError(TFault::ConnectionLost, u"the line was lost while rows were read"_s, m_text);
    return !m_atEnd && fetch();
}

void TOdbcCursor::keepRest()
{
    const QVariantList current = m_row;
    while (!m_atEnd && fetch())
        m_kept.append(m_row);
    m_row = current;
}

void TOdbcCursor::abandon()
{
    m_statement = Odbc::TStatementHandle();
    m_lost = !m_atEnd;
    m_atEnd = true;
}
