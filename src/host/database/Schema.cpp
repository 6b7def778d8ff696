#include "host/database/Schema.h"

#include "host/database/Dialect.h"
#include "host/database/Engine.h"
#include "host/database/SqlText.h"

#include <QDir>
#include <QFile>
#include <QHash>

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

/// 0 for a database without tables. Throws OtherProgram.
int versionOf(TEngine &engine)
{
    const QStringList found = engine.tables();
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
        engine.lockSchema();
        // Another program may have done it while this one waited.
        const bool done = versionOf(engine) >= step.number;
        if (!done) {
            if (engine.tables().isEmpty())
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

/// The table behind each view of the steps, by the view's name in lower case; a later step's word holds.
QHash<QString, QString> readViews()
{
    QHash<QString, QString> tables;
    for (const TStep &step : steps())
        for (const QString &batch : batches(step.script, TEngineKind::SqlServer))
            for (const TTokens &statement : SplitStatements(Tokenize(batch))) {
                const TView view = ReadView(statement);
                if (!view.name.isEmpty())
                    tables.insert(view.name.toLower(), view.table);
            }
    return tables;
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
    static const QHash<QString, QString> views = readViews();
    return views.value(tableOrView.toLower(), tableOrView);
}

} // namespace Schema
