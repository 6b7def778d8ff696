#pragma once

#include <QString>

using namespace Qt::Literals::StringLiterals;

/// The server that tests may use: KETEBIONPAP_TEST_ODBC holds a connection string to it, with a user who may make
/// databases. Its DATABASE is not touched: every test program makes a database of its own and drops it.
namespace TestServer {

/// True when KETEBIONPAP_TEST_ODBC is set.
bool available();
/// The connection string with another DATABASE.
QString connectionString(const QString &database);
/// The same with other words put in or replaced, such as {"PORT", "1434"}.
QString with(const QString &connectionString, const QString &word, const QString &value);
/// Runs a text outside any database of the suite. Throws TDatabaseError.
void runOnServer(const QString &sql, const QString &database = u"master"_s);

/// A database that is made empty and dropped when this goes.
class Database {
public:
    explicit Database(const QString &options = {});
    ~Database();
    Database(const Database &) = delete;
    const QString &name() const { return m_name; }
    QString connectionString() const { return TestServer::connectionString(m_name); }

private:
    QString m_name;
};

/// The database of this test program, made at the first call and dropped when the program ends.
Database &ownDatabase();
/// Brings the program's database to the state of a new one: the suite's tables with their first rows.
void emptyDatabase();

} // namespace TestServer
