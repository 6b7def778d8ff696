#include "support/TestServer.h"

#include "host/database/Engine.h"
#include "host/database/OdbcConnectionString.h"
#include "host/database/OdbcDriverFile.h"
#include "host/database/OdbcHandles.h"
#include "host/database/Schema.h"
#include "host/database/SqlText.h"

#include <QCoreApplication>

#include <cstdio>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

int madeDatabases = 0;

} // namespace

bool TestServer::available()
{
    return !qEnvironmentVariableIsEmpty("KETEBIONPAP_TEST_ODBC");
}

QString TestServer::with(const QString &connectionString, const QString &word, const QString &value)
{
    return TOdbcConnectionString(connectionString).with(word, value).text();
}

QString TestServer::connectionString(const QString &database)
{
    return with(qEnvironmentVariable("KETEBIONPAP_TEST_ODBC"), u"DATABASE"_s, database);
}

void TestServer::runOnServer(const QString &sql, const QString &database)
{
    const Odbc::TEnvironment environment;
    const Odbc::TConnectionHandle connection{SQLHANDLE(environment)};
    const TOdbcConnectionString string(connectionString(database));
    const QString text = OdbcDriverFile::textFor(string, string.servers().first());
    const auto check = [&](SQLRETURN code, SQLSMALLINT type, SQLHANDLE handle) {
        if (SQL_SUCCEEDED(code) || code == SQL_NO_DATA)
            return;
        const auto problems = Odbc::problemsOf(type, handle);
        throw TDatabaseError(Odbc::faultOf(problems), string.withoutSecrets(Odbc::textOf(problems)), sql);
    };
    check(SQLDriverConnectW(connection, nullptr, Odbc::wide(text), SQLSMALLINT(text.size()), nullptr, 0,
                            nullptr, SQL_DRIVER_NOPROMPT),
          SQL_HANDLE_DBC, connection);
    const Odbc::TStatementHandle statement{SQLHANDLE(connection)};
    SQLRETURN code = SQLExecDirectW(statement, Odbc::wide(sql), SQL_NTS);
    check(code, SQL_HANDLE_STMT, statement);
    while ((code = SQLMoreResults(statement)) != SQL_NO_DATA)
        check(code, SQL_HANDLE_STMT, statement);
}

TestServer::Database::Database(const QString &options)
    : m_name(u"ketebionpap_test_%1_%2"_s.arg(QCoreApplication::applicationPid()).arg(++madeDatabases))
{
    runOnServer(u"create database %1 %2"_s.arg(m_name, options));
}

TestServer::Database::~Database()
{
    try {
        runOnServer(u"drop database "_s + m_name);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s is left on the server: %s\n", qUtf8Printable(m_name), error.what());
    }
}

namespace {

std::unique_ptr<TestServer::Database> own;
std::unique_ptr<TEngine> emptier;

QStringList names(TEngine &engine, const QString &sql)
{
    QStringList list;
    const auto cursor = engine.select({sql, {}, {}});
    while (cursor->next())
        list.append(cursor->value(0).toString());
    return list;
}

QStringList tablesOf(TEngine &engine, const char *type = "BASE TABLE")
{
    return names(engine, u"select TABLE_NAME from INFORMATION_SCHEMA.TABLES where "
                         "TABLE_TYPE='%1' and "
                         "TABLE_NAME<>'SchemaVersion_TBL' order by TABLE_NAME"_s.arg(QLatin1String(type)));
}

// Tables that others refer to are emptied by rows, after those that refer to them; all others at once, which also
// sets their counters back.
QString emptying(TEngine &engine, const QStringList &tables)
{
    const QStringList referred =
        names(engine, u"select distinct object_name(referenced_object_id) from sys.foreign_keys"_s);
    QString first;
    QString then;
    for (const QString &table : tables) {
        if (referred.contains(table, Qt::CaseInsensitive))
            then += u"delete from [%1]\n"_s.arg(table);
        else
            first += u"truncate table [%1]\n"_s.arg(table);
    }
    return first + then;
}

// The rows that a new database has, as its schema's steps put them in.
QString firstRows()
{
    QString text;
    for (const Schema::TStep &step : Schema::steps()) {
        for (const QString &batch : Schema::batches(step.script, TEngineKind::SqlServer)) {
            if (ReadSql(batch).verb == TSqlText::Insert)
                text += batch + u'\n';
        }
    }
    return text;
}

} // namespace

TestServer::Database &TestServer::ownDatabase()
{
    if (!own) {
        own = std::make_unique<Database>();
        std::atexit([] {
            emptier.reset();
            own.reset();
        });
    }
    return *own;
}

void TestServer::emptyDatabase()
{
    // A connection that stays: opening one is what costs most.
    static QStringList tables;
    static QStringList views;
    static QString script;
    if (!emptier) {
        emptier = OpenOdbcEngine(ownDatabase().connectionString());
        Schema::bringUpToDate(*emptier);
        tables = tablesOf(*emptier);
        views = tablesOf(*emptier, "VIEW");
        script = emptying(*emptier, tables) + firstRows();
        return;
    }
    QString own;
    for (const QString &view : tablesOf(*emptier, "VIEW")) {
        if (!views.contains(view, Qt::CaseInsensitive))
            own += u"drop view [%1]\n"_s.arg(view);
    }
    for (const QString &table : tablesOf(*emptier)) {
        if (!tables.contains(table, Qt::CaseInsensitive))
            own += u"drop table [%1]\n"_s.arg(table); // a test's
    }
    emptier->runScript(own + script);
}
