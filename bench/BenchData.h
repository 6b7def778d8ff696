#pragma once

#include <QString>

struct sqlite3;

/// Databases of many calculation methods, or of many earnings, made once for each size and kept for the run.
namespace BenchData {

/// A database file of this suite with `methods` calculation methods, 100 tax tables beside them.
QString database(int methods);

/// A database file of this suite with 100,000 earnings in itemGroups groups.
const int itemGroups = 200;
QString itemDatabase();

/// The raw connection of a comparison: the settings that the suite itself uses (WAL, synchronous=FULL), its functions
/// and collation registered.
sqlite3 *openRaw(const QString &path);

/// The process's peak memory in KiB after the list ("suite", "staff", "table" or "query": the suite's own list of
/// methods or of employees, QSqlTableModel, QSqlQueryModel) was opened at its last row.
long peakAfterOpening(const QString &what, const QString &path);
/// The same in a process of its own.
long peakOfProcess(const QString &what, const QString &path);

/// The list's statement in the words of the embedded engine.
QString listStatement();

} // namespace BenchData
