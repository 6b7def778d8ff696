#pragma once

#include "host/Export.h"

struct sqlite3;

/// Gives a connection of the embedded engine what T-SQL has and it has not: the collation ZELMO (case and trailing
/// blanks make no difference, as on the server) and the functions charindex, len, substring, zelmo_left,
/// zelmo_right, getdate, zelmo_finds (the search's, which folds as PersianText::fold) and GetUinqueCode_FNC,
/// EventLink_FNC.
/// Indexes are built with ZELMO: a change of its order makes existing files wrong.
KETEBIONPAP_CORE void registerSqliteFunctions(sqlite3 *db);
