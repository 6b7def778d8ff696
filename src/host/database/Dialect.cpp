#include "host/database/Dialect.h"

#include "host/database/ByText.h"
#include "host/database/DialectRewriter.h"
#include "host/database/SqlText.h"

namespace Dialect {
namespace {

int placesIn(const TTokens &tokens)
{
    int places = 0;
    for (const TToken &token : tokens)
        if (token.kind == TToken::Place)
            ++places;
    return places;
}

TTranslated translate(const QString &tsql)
{
    const TTokens tokens = Tokenize(tsql);
    const QList<TTokens> statements = SplitStatements(tokens);
    if (statements.isEmpty())
        return {{tsql}, {placesIn(tokens)}};
    TTranslated translated;
    for (const TTokens &statement : statements) {
        const TTokens rewritten = TDialectRewriter(statement).rewrite();
        translated.statements.append(JoinTokens(rewritten));
        translated.places.append(placesIn(rewritten));
    }
    return translated;
}

} // namespace

const TTranslated &toSqlite(const QString &tsql)
{
    thread_local TByText<TTranslated> remembered; // an engine may work in a thread of its own
    return remembered.get(tsql, translate);
}

} // namespace Dialect
