#include "support/TestDatabase.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/Query.h"
#include "support/TestServer.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

// The schema is laid once in a process; each test gets a copy of the file.
const QString &emptyFile()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(u"empty.db"_s);
        TConnection connection;
        connection.openFile(file);
        return file;
    }();
    return path;
}

} // namespace

TestDatabase::TestDatabase(Place place) : m_onServer(place == AnyEngine && TestServer::available())
{
    if (m_onServer)
        TestServer::emptyDatabase();
    else
        QFile::copy(emptyFile(), path());
    open(m_connection, path());
    DM.ADOConnection1 = &m_connection;
    m_connection.setStatementHook([this](const TStatement &statement) {
        ++m_count;
        m_trace.append(statement.asText());
        if (m_failAt > 0 && m_count == m_failAt)
            throw TDatabaseError(m_fault, u"played by a test"_s, statement.boundText());
    });
}

TestDatabase::~TestDatabase()
{
    if (DM.ADOConnection1 == &m_connection)
        DM.ADOConnection1 = nullptr;
}

QString TestDatabase::path() const
{
    return m_onServer ? TestServer::ownDatabase().connectionString() : m_folder.filePath(u"test.db"_s);
}

void TestDatabase::open(TConnection &connection, const QString &path)
{
    if (TOdbcConnectionString(path).has(u"DRIVER"_s))
        connection.openOdbc(path);
    else
        connection.openFile(path);
}

namespace {

// The test's own statements are neither counted nor made to fail, but the hook of the connection sees all: it is
// taken away meanwhile.
class Quiet {
public:
    Quiet(int &failAt, int &count, QStringList &trace) : m_failAt(failAt), m_count(count), m_trace(trace)
    {
        m_keptFailAt = failAt;
        m_keptCount = count;
        m_keptTrace = trace;
        failAt = 0;
    }
    ~Quiet()
    {
        m_failAt = m_keptFailAt;
        m_count = m_keptCount;
        m_trace = m_keptTrace;
    }

private:
    int &m_failAt;
    int &m_count;
    QStringList &m_trace;
    int m_keptFailAt;
    int m_keptCount;
    QStringList m_keptTrace;
};

} // namespace

void TestDatabase::run(const QString &sql)
{
    const Quiet quiet(m_failAt, m_count, m_trace);
    m_connection.execute(sql);
}

namespace {

// An amount with all its digits, as the program writes it.
QString shown(const QVariant &value)
{
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromLatin1(value.toByteArray().toHex());
    return value.typeId() == QMetaType::Double ? FloatToStr_ZLM(value.toDouble()) : value.toString();
}

} // namespace

QString TestDatabase::text(const QString &sql)
{
    const Quiet quiet(m_failAt, m_count, m_trace);
    return shown(m_connection.scalar(sql));
}

QString TestDatabase::rows(const QString &sql)
{
    const Quiet quiet(m_failAt, m_count, m_trace);
    TQuery query(&m_connection, u"rows"_s);
    query.setStatement(sql);
    query.open();
    QStringList lines;
    for (query.first(); !query.eof(); query.next()) {
        QStringList cells;
        for (int i = 0; i < query.fields().size(); ++i)
            cells.append(shown(query.valueAt(query.position(), i)));
        lines.append(cells.join(u'|'));
    }
    return lines.join(u'\n');
}

void TestDatabase::failStatement(int n, TFault fault)
{
    m_failAt = n;
    m_fault = fault;
    m_count = 0;
}
