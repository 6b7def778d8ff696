#pragma once

#include "host/Export.h"

#include <QString>
#include <QStringList>

/// T-SQL statements in the words of the embedded engine.
namespace Dialect {

/// The statements of a translated text. Their "?" and ":name" places stand in the order of the given text; the
/// names are in lower case.
struct TTranslated {
    QStringList statements;
    QList<int> places; ///< number of "?" in each of them
};

/// Translates a text of one or more T-SQL statements (parted by ";", by blanks only, or by line breaks), on tokens.
/// Remembered by text: a text seen before costs a look-up. A text that is no T-SQL comes back as it is, for the
/// engine to refuse. The answer is good until the next call; user-interface thread only.
KETEBIONPAP_CORE const TTranslated &toSqlite(const QString &tsql);

} // namespace Dialect
