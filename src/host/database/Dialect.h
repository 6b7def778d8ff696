#pragma once

#include <QString>
#include <QStringList>

/// T-SQL statements in the words of the embedded engine.
namespace Dialect {

/// One statement of a translated text. Its "?" and ":Name" places stand in the order of the given text.
struct TTranslated {
    QStringList statements;
    QList<int> places; ///< number of "?" in each of them
};

/// Translates a text of one or more T-SQL statements (parted by ";", by blanks only, or by line breaks), on tokens.
/// Remembered by text: a text seen before costs a look-up. A text that is no T-SQL comes back as it is, for the
/// engine to refuse.
const TTranslated &toSqlite(const QString &tsql);

} // namespace Dialect
