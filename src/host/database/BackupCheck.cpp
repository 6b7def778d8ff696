#include "host/database/BackupCheck.h"

#include "host/database/DatabaseError.h"
#include "host/database/Schema.h"
#include "host/database/SqliteHandle.h"

#include <QMap>

#include <sqlite3.h>

namespace {

struct TObject {
    QString kind;
    QString name;
    QString table;
    QString sql;
};

/// Tables, views, indexes and triggers by kind and name; SQLite's own are left out, they follow from the others.
QMap<QString, TObject> structureOf(TSqliteHandle &database)
{
    QMap<QString, TObject> objects;
    for (const QStringList &row : database.rows(QStringLiteral(
             "select type, name, tbl_name, sql from sqlite_master where name not like 'sqlite~_%' "
             "escape '~'")))
        objects.insert((row[0] + u' ' + row[1]).toLower(),
                       {row[0], row[1], row[2].toLower(), row[3].simplified()});
    return objects;
}

QMap<QString, TObject> structureOfVersion(int version)
{
    TSqliteHandle memory({}, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY);
    for (const QString &batch : Schema::batchesUpTo(version, TEngineKind::Embedded))
        memory.run(batch);
    return structureOf(memory);
}

[[noreturn]] void refuse(TFault fault, const TSqliteHandle &database, const QString &why)
{
    throw TDatabaseError(fault, database.file() + QStringLiteral(": ") + why);
}

int versionOf(TSqliteHandle &database, const QMap<QString, TObject> &found)
{
    if (found.isEmpty())
        refuse(TFault::NotADatabase, database, QStringLiteral("it is empty"));
    if (!found.contains(QStringLiteral("table schemaversion_tbl")))
        refuse(TFault::OtherProgram, database, QStringLiteral("tables of another program"));
    const QList<QStringList> versions =
        database.rows(QStringLiteral("select Version from SchemaVersion_TBL where Suite='Ketebionpap'"));
    if (versions.size() != 1)
        refuse(TFault::OtherProgram, database, QStringLiteral("the version is not one of this suite"));
    const int version = versions.first().first().toInt();
    if (version > Schema::version())
        refuse(TFault::NewerSchema, database, QStringLiteral("version %1").arg(version));
    return version;
}

/// What is there beyond the schema may stay when it changes no row of the suite and forbids none.
bool isHarmless(const TObject &object, const QMap<QString, TObject> &expected)
{
    if (object.kind == u"trigger")
        return false;
    const bool onOwnTable = expected.contains(QStringLiteral("table ") + object.table);
    return object.kind != u"index" || !onOwnTable ||
           !object.sql.startsWith(QLatin1String("CREATE UNIQUE"), Qt::CaseInsensitive);
}

} // namespace

void BackupCheck::mustBeWhole(TSqliteHandle &database)
{
    const QMap<QString, TObject> found = structureOf(database);
    const QMap<QString, TObject> expected = structureOfVersion(versionOf(database, found));
    for (auto object = expected.cbegin(); object != expected.cend(); ++object) {
        const auto there = found.constFind(object.key());
        if (there == found.cend())
            refuse(TFault::Unsound, database, object.key() + QStringLiteral(" is missing"));
        if (there->sql != object->sql || there->table != object->table)
            refuse(TFault::Unsound, database, object.key() + QStringLiteral(" is another one"));
    }
    for (auto object = found.cbegin(); object != found.cend(); ++object) {
        if (!expected.contains(object.key()) && !isHarmless(*object, expected))
            refuse(TFault::Unsound, database, object.key() + QStringLiteral(" does not belong there"));
    }
    const QStringList broken = database.rows(QStringLiteral("PRAGMA foreign_key_check")).value(0);
    if (!broken.isEmpty())
        refuse(TFault::Unsound, database,
               QStringLiteral("row %1 of %2 refers to nothing in %3")
                   .arg(broken.value(1), broken.value(0), broken.value(2)));
}
