#include "host/database/Schema.h"

#include "host/database/Dialect.h"
#include "host/database/Engine.h"

#include <QDir>
#include <QFile>

namespace Schema {
namespace {

/// What marks a database as this suite's.
QString suite()
{
    return QStringLiteral("Ketebionpap");
}

bool marksEngine(const QString &line, QString &engine)
{
    static const QString mark = QStringLiteral("-- engine:");
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
    const QString sql = embedded
                            ? QStringLiteral("select name from sqlite_master where type='table' and "
                                             "name not in ('sqlite_sequence','sqlite_stat1','sqlite_stat4')")
                            : QStringLiteral("select TABLE_NAME from INFORMATION_SCHEMA.TABLES where "
                                             "TABLE_TYPE='BASE TABLE'");
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
    if (!found.contains(QStringLiteral("SchemaVersion_TBL"), Qt::CaseInsensitive))
        throw TDatabaseError(TFault::OtherProgram, QStringLiteral("tables without a version of this suite"));
    const QVariantList versions = firstColumn(
        engine, {QStringLiteral("select Version from SchemaVersion_TBL where Suite=?"), {suite()}, {}});
    if (versions.size() != 1)
        throw TDatabaseError(TFault::OtherProgram, QStringLiteral("the version is not one of this suite"));
    return versions.first().toInt();
}

/// Waits until no other program changes the schema; the embedded engine's transaction does so by itself.
void lockSchema(TEngine &engine)
{
    if (engine.kind() != TEngineKind::SqlServer)
        return;
    try {
        engine.runScript(QStringLiteral("DECLARE @Answer INT\n"
                                        "EXEC @Answer = sp_getapplock @Resource = 'Ketebionpap_Schema', "
                                        "@LockMode = 'Exclusive', @LockOwner = 'Transaction', "
                                        "@LockTimeout = 60000\n"
                                        "IF @Answer < 0 RAISERROR('the schema is being changed', 16, 1)"));
    } catch (const TDatabaseError &error) {
        if (error.fault() == TFault::Refused)
            throw TDatabaseError(TFault::Locked, error.detail());
        throw;
    }
}

QString versionTable()
{
    return QStringLiteral("CREATE TABLE SchemaVersion_TBL (Suite NVARCHAR(50) NOT NULL CONSTRAINT "
                          "PK_SchemaVersion_TBL PRIMARY KEY, Version INT NOT NULL)");
}

void createVersionTable(TEngine &engine)
{
    for (const QString &batch : batches(versionTable(), engine.kind()))
        engine.runScript(batch);
    engine.execute(
        {QStringLiteral("insert into SchemaVersion_TBL (Suite, Version) values (?, 0)"), {suite()}, {}});
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
            engine.execute({QStringLiteral("update SchemaVersion_TBL set Version=?"), {step.number}, {}});
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
        const QDir folder(QStringLiteral(":/schema"));
        for (const QString &name : folder.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                throw TDatabaseError(TFault::Other,
                                     QStringLiteral("schema step %1 cannot be read").arg(name));
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
        throw TDatabaseError(
            TFault::NewerSchema,
            QStringLiteral("version %1 of the schema, this program knows %2").arg(present).arg(last));
    for (const TStep &step : steps)
        if (step.number > present)
            runStep(engine, step);
}

QStringList batches(const QString &script, TEngineKind kind)
{
    const QString own =
        kind == TEngineKind::Embedded ? QStringLiteral("sqlite") : QStringLiteral("sqlserver");
    QStringList list;
    QString batch;
    QString engine = QStringLiteral("all");
    const auto finish = [&] {
        if (!batch.trimmed().isEmpty()) {
            if (engine == own)
                list.append(batch);
            else if (engine == u"all")
                list +=
                    kind == TEngineKind::Embedded ? Dialect::toSqlite(batch).statements : QStringList(batch);
        }
        batch.clear();
        engine = QStringLiteral("all");
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
