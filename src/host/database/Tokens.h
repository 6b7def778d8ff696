#pragma once

#include <QList>
#include <QString>

/// One word of a T-SQL text. Comments and blanks are no tokens; a blank before a token is remembered.
struct TToken {
    enum Kind {
        Word,     ///< keyword or plain name
        Quoted,   ///< [name] or "name", with its quotes
        Text,     ///< 'text' with its quotes; the N of N'text' is gone
        Number,   ///< 12, 1.5, 1e3, 0x1F
        Place,    ///< ?
        Named,    ///< :Name
        Variable, ///< @Name, @@Name
        Symbol    ///< an operator, a bracket, a comma, a semicolon
    };
    Kind kind;
    QString text;
    bool blankBefore = false;
    qsizetype at = -1; ///< where it stands in the text that was read; -1: it was put in

    /// A keyword or a symbol, without regard to case.
    bool is(const char *word) const
    {
        return (kind == Word || kind == Symbol) &&
               text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0;
    }
    /// A plain or a quoted name.
    bool isName() const { return kind == Word || kind == Quoted; }
    /// The name without its quotes.
    QString name() const { return kind == Quoted ? text.mid(1, text.size() - 2) : text; }
};
using TTokens = QList<TToken>;

/// The tokens of a T-SQL text. A text or a quoted name without its end takes in all that follows, end quote left out.
TTokens Tokenize(const QString &sql);
/// The text of tokens, one blank where blanks stood.
QString JoinTokens(const TTokens &tokens);
