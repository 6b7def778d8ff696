#pragma once

#include "host/Export.h"
#include "host/database/Tokens.h"

#include <QStringList>

/// What a T-SQL text tells of itself.
struct TSqlText {
    enum Verb { None, Select, Insert, Update, Delete, Other };
    /// A place for a value.
    struct TPlace {
        qsizetype at = 0;
        qsizetype size = 0;
        QString name; ///< of a ":Name", in lower case and without the colon; empty for a "?"
    };

    Verb verb = None; ///< of its first statement
    int statements = 0;
    bool onlyReads = false; ///< it may run a second time
    QString table;          ///< that the first statement's rows stand in: the first that a select reads from
    QStringList columns;    ///< of a single insert that gives each of them a "?" of its own; otherwise empty
    QList<TPlace> places;   ///< in order
};

/// Reads a text on its tokens, whatever its case, blanks, comments and quotes. Remembered by text; the answer is good
/// until the thread's next call.
KETEBIONPAP_CORE const TSqlText &ReadSql(const QString &text);

/// The statements of a text, parted by ";", by blanks only, or by line breaks. Empty for a text that does not begin as
/// a statement does, and for a trigger: that one holds statements of its own, and is written for one engine.
QList<TTokens> SplitStatements(const TTokens &tokens);

/// A view, and the table that its rows stand in.
struct TView {
    QString name;
    QString table;
};
/// Reads a statement that creates or changes a view; empty for any other.
TView ReadView(const TTokens &statement);

/// How many letters a column of a declared type holds, such as 50 for "NVARCHAR(50)"; 0 where there is no limit.
int TextWidthOf(const QString &declaredType);
