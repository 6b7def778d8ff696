#include "host/database/BackupCheck.h"

#include "host/database/DatabaseError.h"
#include "host/database/Schema.h"
#include "host/database/SqliteHandle.h"

#include <QMap>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

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
    for (const QStringList &row :
         database.rows(u"select type, name, tbl_name, sql from sqlite_master where name not like 'sqlite~_%' "
                       "escape '~'"_s))
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
    throw TDatabaseError(fault, database.file() + u": "_s + why);
}

int versionOf(TSqliteHandle &database, const QMap<QString, TObject> &found)
{
    if (found.isEmpty())
        refuse(TFault::NotADatabase, database, u"it is empty"_s);
    if (!found.contains(u"table schemaversion_tbl"_s))
        refuse(TFault::OtherProgram, database, u"tables of another program"_s);
    const QList<QStringList> versions =
        database.rows(u"select Version from SchemaVersion_TBL where Suite='Ketebionpap'"_s);
    if (versions.size() != 1)
        refuse(TFault::OtherProgram, database, u"the version is not one of this suite"_s);
    const int version = versions.first().first().toInt();
    if (version > Schema::version())
        refuse(TFault::NewerSchema, database, u"version %1"_s.arg(version));
    return version;
}

/// What is there beyond the schema may stay when it changes no row of the suite and forbids none.
bool isHarmless(const TObject &object, const QMap<QString, TObject> &expected)
{
    if (object.kind == u"trigger")
        return false;
    const bool onOwnTable = expected.contains(u"table "_s + object.table);
    return object.kind != u"index" || !onOwnTable ||
           !object.sql.startsWith("CREATE UNIQUE"_L1, Qt::CaseInsensitive);
}

} // namespace

void BackupCheck::mustBeWhole(TSqliteHandle &database)
{
    const QMap<QString, TObject> found = structureOf(database);
    const QMap<QString, TObject> expected = structureOfVersion(versionOf(database, found));
    for (auto object = expected.cbegin(); object != expected.cend(); ++object) {
        const auto there = found.constFind(object.key());
        if (there == found.cend())
            refuse(TFault::Unsound, database, object.key() + u" is missing"_s);
        if (there->sql != object->sql || there->table != object->table)
            refuse(TFault::Unsound, database, object.key() + u" is another one"_s);
    }
    for (auto object = found.cbegin(); object != found.cend(); ++object) {
        if (!expected.contains(object.key()) && !isHarmless(*object, expected))
            refuse(TFault::Unsound, database, object.key() + u" does not belong there"_s);
    }
    const QStringList broken = database.rows(u"PRAGMA foreign_key_check"_s).value(0);
    if (!broken.isEmpty())
        refuse(
            TFault::Unsound, database,
            u"row %1 of %2 refers to nothing in %3"_s.arg(broken.value(1), broken.value(0), broken.value(2)));
}
