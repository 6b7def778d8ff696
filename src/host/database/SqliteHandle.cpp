#include "host/database/SqliteHandle.h"

#include "host/database/Faults.h"
#include "host/database/SqliteFile.h"
#include "host/database/SqliteFunctions.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {
const int busyMilliseconds = 5000;
}

TSqliteHandle::TSqliteHandle(const QString &file, int flags)
    : TSqliteHandle(file, file.isEmpty() ? QByteArray(":memory:") : QFile::encodeName(file), flags)
{
}

TSqliteHandle TSqliteHandle::reading(const QString &file)
{
    if (!SqliteFile::isAtRest(file))
        return TSqliteHandle(file, SQLITE_OPEN_READONLY);
    const QByteArray path = QFile::encodeName(QFileInfo(file).absoluteFilePath());
    return TSqliteHandle(file, "file://" + path.toPercentEncoding("/") + "?immutable=1",
                         SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

TSqliteHandle::TSqliteHandle(const QString &file, const QByteArray &name, int flags) : m_file(file)
{
    if (const int code = m_db.open(name.constData(), flags); code != SQLITE_OK)
        fail(code);
    sqlite3_busy_timeout(m_db, busyMilliseconds);
    registerSqliteFunctions(m_db); // the indexes are checked by their collation
}

void TSqliteHandle::fail(int code) const
{
    const int known = sqlite3_extended_errcode(m_db);
    throw TDatabaseError(
        Faults::ofSqlite((known & 0xff) == (code & 0xff) ? known : code, sqlite3_system_errno(m_db)),
        m_file + u": "_s + QString::fromUtf8(sqlite3_errmsg(m_db)));
}

void TSqliteHandle::run(const QString &sql)
{
    const int code = sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code);
}

QList<QStringList> TSqliteHandle::rows(const QString &sql)
{
    Sqlite::TStatement statement;
    int code = statement.prepare(m_db, sql.toUtf8().constData());
    if (code != SQLITE_OK)
        fail(code);
    QList<QStringList> found;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        QStringList row;
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            row.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, i))));
        found.append(row);
    }
    if (code != SQLITE_DONE)
        fail(code);
    return found;
}

QString TSqliteHandle::text(const QString &sql)
{
    return rows(sql).value(0).value(0);
}

void TSqliteHandle::mustBeSound()
{
    const QString answer = text(u"PRAGMA integrity_check(1)"_s);
    if (answer != "ok"_L1)
        throw TDatabaseError(TFault::NotADatabase, m_file + u": "_s + answer);
}
