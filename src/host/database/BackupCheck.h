#pragma once

class TSqliteHandle;

/// Whether a file may take a database's place.
namespace BackupCheck {

/// Compares the structure of a database with that of its version, made by running the schema's steps in memory, and
/// follows its references. Throws TDatabaseError: NotADatabase (empty), OtherProgram, NewerSchema, Unsound.
void mustBeWhole(TSqliteHandle &database);

} // namespace BackupCheck
