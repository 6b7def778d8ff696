#include "host/database/Schema.h"

#include "host/database/Dialect.h"
#include "host/database/Engine.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace Schema {
namespace {

/// What marks a database as this suite's.
QString suite()
{
    return u"Ketebionpap"_s;
}

bool marksEngine(const QString &line, QString &engine)
{
    static const QString mark = u"-- engine:"_s;
    const QString text = line.trimmed();
    if (!text.startsWith(mark, Qt::CaseInsensitive))
        return false;
    engine = text.mid(mark.size()).trimmed().toLower();
    return true;
}

QVariantList firstColumn(TEngine &engine, const TBoundStatement &statement)
{
    QVariantList values;
    const std::unique_ptr<TCursor> cursor = engine.select(statement);
    while (cursor->next())
        values.append(cursor->value(0));
    return values;
}

QStringList tables(TEngine &engine)
{
    const bool embedded = engine.kind() == TEngineKind::Embedded;
    const QString sql = embedded ? u"select name from sqlite_master where type='table' and "
                                   "name not in ('sqlite_sequence','sqlite_stat1','sqlite_stat4')"_s
                                 : u"select TABLE_NAME from INFORMATION_SCHEMA.TABLES where "
                                   "TABLE_TYPE='BASE TABLE'"_s;
    QStringList list;
    for (const QVariant &name : firstColumn(engine, {sql, {}, {}}))
        list.append(name.toString());
    return list;
}

/// 0 for a database without tables. Throws OtherProgram.
int versionOf(TEngine &engine)
{
    const QStringList found = tables(engine);
    if (found.isEmpty())
        return 0;
    if (!found.contains(u"SchemaVersion_TBL"_s, Qt::CaseInsensitive))
        throw TDatabaseError(TFault::OtherProgram, u"tables without a version of this suite"_s);
    const QVariantList versions =
        firstColumn(engine, {u"select Version from SchemaVersion_TBL where Suite=?"_s, {suite()}, {}});
    if (versions.size() != 1)
        throw TDatabaseError(TFault::OtherProgram, u"the version is not one of this suite"_s);
    return versions.first().toInt();
}

/// Waits until no other program changes the schema; the embedded engine's transaction does so by itself.
void lockSchema(TEngine &engine)
{
    if (engine.kind() != TEngineKind::SqlServer)
        return;
    try {
        engine.runScript(u"DECLARE @Answer INT\n"
                         "EXEC @Answer = sp_getapplock @Resource = 'Ketebionpap_Schema', "
                         "@LockMode = 'Exclusive', @LockOwner = 'Transaction', "
                         "@LockTimeout = 60000\n"
                         "IF @Answer < 0 RAISERROR('the schema is being changed', 16, 1)"_s);
    } catch (const TDatabaseError &error) {
        if (error.fault() == TFault::Refused)
            throw TDatabaseError(TFault::Locked, error.detail());
        throw;
    }
}

QString versionTable()
{
    return u"CREATE TABLE SchemaVersion_TBL (Suite NVARCHAR(50) NOT NULL CONSTRAINT "
           "PK_SchemaVersion_TBL PRIMARY KEY, Version INT NOT NULL)"_s;
}

void createVersionTable(TEngine &engine)
{
    for (const QString &batch : batches(versionTable(), engine.kind()))
        engine.runScript(batch);
    engine.execute({u"insert into SchemaVersion_TBL (Suite, Version) values (?, 0)"_s, {suite()}, {}});
}

void runStep(TEngine &engine, const TStep &step)
{
    engine.begin();
    try {
        lockSchema(engine);
        // Another program may have done it while this one waited.
        const bool done = versionOf(engine) >= step.number;
        if (!done) {
            if (tables(engine).isEmpty())
                createVersionTable(engine);
            for (const QString &batch : batches(step.script, engine.kind()))
                engine.runScript(batch);
            engine.execute({u"update SchemaVersion_TBL set Version=?"_s, {step.number}, {}});
        }
        engine.commit();
    } catch (...) {
        engine.rollback();
        throw;
    }
}

} // namespace

QList<TStep> steps()
{
    static const QList<TStep> list = [] {
        QList<TStep> found;
        const QDir folder(u":/schema"_s);
        for (const QString &name : folder.entryList({u"*.sql"_s}, QDir::Files, QDir::Name)) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                throw TDatabaseError(TFault::Other, u"schema step %1 cannot be read"_s.arg(name));
            found.append({name.section(u'_', 0, 0).toInt(), QString::fromUtf8(file.readAll())});
        }
        return found;
    }();
    return list;
}

int version()
{
    const QList<TStep> list = steps();
    return list.isEmpty() ? 0 : list.last().number;
}

void bringUpToDate(TEngine &engine)
{
    bringUpToDate(engine, steps());
}

void bringUpToDate(TEngine &engine, const QList<TStep> &steps)
{
    const int last = steps.isEmpty() ? 0 : steps.last().number;
    const int present = versionOf(engine);
    if (present > last)
        throw TDatabaseError(TFault::NewerSchema,
                             u"version %1 of the schema, this program knows %2"_s.arg(present).arg(last));
    for (const TStep &step : steps)
        if (step.number > present)
            runStep(engine, step);
}

QStringList batches(const QString &script, TEngineKind kind)
{
    const QString own = kind == TEngineKind::Embedded ? u"sqlite"_s : u"sqlserver"_s;
    QStringList list;
    QString batch;
    QString engine = u"all"_s;
    const auto finish = [&] {
        if (!batch.trimmed().isEmpty()) {
            if (engine == own)
                list.append(batch);
            else if (engine == u"all")
                list +=
                    kind == TEngineKind::Embedded ? Dialect::toSqlite(batch).statements : QStringList(batch);
        }
        batch.clear();
        engine = u"all"_s;
    };
    for (const QString &line : script.split(u'\n')) {
        if (line.trimmed().compare(u"GO", Qt::CaseInsensitive) == 0)
            finish();
        else if (!marksEngine(line, engine))
            batch += line + u'\n';
    }
    finish();
    return list;
}

QStringList batchesUpTo(int version, TEngineKind kind)
{
    QStringList list = batches(versionTable(), kind);
    for (const TStep &step : steps())
        if (step.number <= version)
            list += batches(step.script, kind);
    return list;
}

QString baseTable(const QString &tableOrView)
{
    static const struct {
        const char *view;
        const char *table;
    } views[] = {{"CalcMethod_VW", "CalcMethod"},
                 {"staff_VW", "Staff"},
                 {"Fiscal_vw", "Fiscal"},
                 {"Deduction_vw", "Deduction"}};
    for (const auto &entry : views)
        if (tableOrView.compare(QLatin1StringView(entry.view), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(entry.table);
    return tableOrView;
}

} // namespace Schema
