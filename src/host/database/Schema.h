#pragma once

#include <QString>

class TEngine;

/// The tables, views, triggers and functions, as numbered steps in T-SQL (resources ":/schema/NNN_name.sql").
namespace Schema {

/// The version that this program works with: the number of its last step.
int version();

/// Creates what is missing, each step in a transaction of its own with its version number. Throws TDatabaseError:
/// NewerSchema, OtherProgram (a database with tables, but not of this suite), or the fault of a step.
void bringUpToDate(TEngine &engine);

/// The table behind a view's columns, for a server that does not tell: "StaffView" -> "Staff". Any other name is
/// answered as it is.
QString baseTable(const QString &tableOrView);

} // namespace Schema
