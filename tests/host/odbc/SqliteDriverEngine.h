#pragma once

#include "host/database/OdbcEngine.h"

using namespace Qt::Literals::StringLiterals;

/// The ODBC engine on the driver of SQLite that Debian ships, so that its own paths are tested without a server: what
/// SQL Server is told in its own words is said here in those of SQLite.
class SqliteDriverEngine : public TOdbcEngine {
public:
    /// Opens (and creates) a file.
    explicit SqliteDriverEngine(const QString &file);
    enum Later { ConnectLater };
    SqliteDriverEngine(const QString &file, Later)
        : TOdbcEngine(u"DRIVER=SQLite3;Encrypt=no;Database="_s + file)
    {
    }

protected:
    QString prepareSession() override { return {}; }
    void checkServer() override {}
    bool takesBatches() const override { return false; }
    bool hasOpenTransaction() override { return true; }
    void endTransaction() override { run(u"rollback transaction"_s); }
    int runCommand(const QString &text, const QVariantList &values) override
    {
        return run(text, values).toInt();
    }
    qlonglong runInsert(const QString &text, const QVariantList &values) override
    {
        run(text, values);
        return run(u"select last_insert_rowid()"_s).toLongLong();
    }
    TTableInfo readTable(const QString &name) override;

private:
    QStringList readKeys(const QString &table);
};
