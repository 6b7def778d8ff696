#pragma once

struct sqlite3;

/// Registers zelmo_sort(value): a text's sort key in the order of the Persian alphabet (ICU, "fa"); any other value
/// is its own key.
void registerSqliteSort(sqlite3 *db);
