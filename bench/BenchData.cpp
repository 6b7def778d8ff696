#include "bench/BenchData.h"

#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Dialect.h"
#include "host/database/SqliteFunctions.h"
#include "staff/Staff_DM_UNT.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQueryModel>
#include <QSqlTableModel>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/resource.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

void exec(sqlite3 *db, const char *sql)
{
    char *message = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &message) != SQLITE_OK)
        throw std::runtime_error(message ? message : "sqlite");
}

void fillIn(const QString &path, int methods)
{
    {
        TConnection connection;
        connection.openFile(path);
    }
    sqlite3 *db = BenchData::openRaw(path);
    exec(db, "begin");
    exec(db, "with recursive n(i) as (select 1 union all select i+1 from n where i<100) "
             "insert into TaxMain(Code,Title,Comment) select i, 'tax table '||i, '' from n");
    const QString sql =
        u"with recursive n(i) as (select 1 union all select i+1 from n where i<%1) "
        "insert into CalcMethod(Code,Title,StaffIns,EmployerIns,OverTime,TaxMainCode,DailyIns,DecTax,Maskok,LeaveCeil,"
        "OutPut,Comment,Insurance,Tax,BedBes,Loan,OverDis,Entrance,Exit) "
        "select i, 'روش محاسبه شماره '||i, 7, 23, 220, 1+i%100, 1500000.5, 0, 3, 2.5, 8, 'توضیح '||i, 1, 1, 0, 0, 1,"
        " '08:00', '16:00' from n"_s.arg(methods);
    exec(db, sql.toUtf8().constData());
    exec(db, "commit");
    exec(db, "pragma wal_checkpoint(truncate)");
    sqlite3_close(db);
}

QSqlDatabase qtDatabase(const QString &path)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s);
    database.setDatabaseName(path);
    if (!database.open())
        throw std::runtime_error("Qt cannot open the file");
    return database;
}

} // namespace

QString BenchData::database(int methods)
{
    static QTemporaryDir folder;
    static QHash<int, QString> made;
    if (!made.contains(methods)) {
        const QString path = folder.filePath(u"%1.db"_s.arg(methods));
        fillIn(path, methods);
        made.insert(methods, path);
    }
    return made.value(methods);
}

QString BenchData::itemDatabase()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString file = folder.filePath(u"items.db"_s);
        {
            TConnection connection;
            connection.openFile(file);
        }
        sqlite3 *db = openRaw(file);
        exec(db, "begin");
        exec(db, u"with recursive n(i) as (select 1 union all select i+1 from n where i<%1) "
                 "insert into FiscalGrp(Code,Name) select i, 'گروه '||i||' مزایا' from n"_s.arg(itemGroups)
                     .toUtf8()
                     .constData());
        exec(db,
             u"with recursive n(i) as (select 1 union all select i+1 from n where i<100000) "
             "insert into Fiscal(Code,Title,Tax,Insurance,Comment,CalcType,GrpCode,Kol,Moin,Tafzili,Cost) "
             "select i, 'مزایای شماره '||i, i%2, i%3=0, 'توضیح '||i, i%4, 1+i%%1, 61, 1, 2, i*1000.5 from n"_s
                 .arg(itemGroups)
                 .toUtf8()
                 .constData());
        exec(db, "commit");
        exec(db, "pragma wal_checkpoint(truncate)");
        sqlite3_close(db);
        return file;
    }();
    return path;
}

sqlite3 *BenchData::openRaw(const QString &path)
{
    sqlite3 *db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
        throw std::runtime_error("cannot open the file");
    registerSqliteFunctions(db);
    exec(db, "pragma journal_mode=WAL");
    exec(db, "pragma synchronous=FULL");
    exec(db, "pragma foreign_keys=ON");
    return db;
}

QString BenchData::listStatement()
{
    TConnection connection;
    connection.openFile(database(1000));
    DM.ADOConnection1 = &connection;
    TCalcMethod_DM data(nullptr);
    data.CalcMethod_Get();
    const QString sql = Dialect::toSqlite(data.List_QUR->statement().boundText()).statements.value(0);
    DM.ADOConnection1 = nullptr;
    return sql;
}

long BenchData::peakAfterOpening(const QString &what, const QString &path)
{
    if (what == u"suite") {
        TConnection connection;
        connection.openFile(path);
        DM.ADOConnection1 = &connection;
        TCalcMethod_DM data(nullptr);
        data.CalcMethod_Get();
        data.List_QUR->open();
        data.List_QUR->last();
        data.List_QUR->value("Title");
    } else if (what == u"staff") {
        TConnection connection;
        connection.openFile(path);
        DM.ADOConnection1 = &connection;
        TStaff_DM data(nullptr);
        data.Staff_Get();
        data.List_QUR->last();
        data.List_QUR->value("fullnameTitle");
    } else if (what == u"table") {
        QSqlTableModel model(nullptr, qtDatabase(path));
        model.setTable(u"CalcMethod"_s);
        model.select();
        while (model.canFetchMore())
            model.fetchMore();
        model.index(model.rowCount() - 1, 1).data();
    } else {
        QSqlQueryModel model;
        model.setQuery(u"select * from CalcMethod"_s, qtDatabase(path));
        while (model.canFetchMore())
            model.fetchMore();
        model.index(model.rowCount() - 1, 1).data();
    }
    struct rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

long BenchData::peakOfProcess(const QString &what, const QString &path)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {u"--peak"_s, what, path});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        throw std::runtime_error("the measured process failed");
    return process.readAllStandardOutput().trimmed().toLong();
}
