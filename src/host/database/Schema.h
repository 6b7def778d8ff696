#pragma once

#include "host/Export.h"
#include "host/database/Field.h"

#include <QList>
#include <QString>
#include <QStringList>

class TEngine;

/// The tables, views, triggers and functions, as numbered steps in T-SQL (resources ":/schema/NNN_name.sql").
namespace Schema {

/// One numbered script. Its batches are parted by lines "GO"; a line "-- engine: sqlite" or "-- engine: sqlserver"
/// gives its batch to that engine alone, in that engine's own words.
struct TStep {
    int number;
    QString script;
};

/// The steps that are compiled in, in order.
KETEBIONPAP_CORE QList<TStep> steps();

/// The version that this program works with: the number of its last step.
int version();

/// Creates what is missing, each step in a transaction of its own with its version number. Safe when several
/// programs open a new database at once. Throws TDatabaseError: NewerSchema, OtherProgram (a database with tables,
/// but not of this suite), or the fault of a step, which leaves the database as it was before that step.
KETEBIONPAP_CORE void bringUpToDate(TEngine &engine);
/// The same with other steps, for tests.
KETEBIONPAP_CORE void bringUpToDate(TEngine &engine, const QList<TStep> &steps);

/// The batches of a script for one engine, ready to run there.
KETEBIONPAP_CORE QStringList batches(const QString &script, TEngineKind kind);

/// All batches that lead from an empty database to a version, but for the row that says which one it is.
QStringList batchesUpTo(int version, TEngineKind kind);

/// The table behind a view's columns, for a server that does not tell: "StaffView" -> "Staff". Any other name is
/// answered as it is.
QString baseTable(const QString &tableOrView);

} // namespace Schema
