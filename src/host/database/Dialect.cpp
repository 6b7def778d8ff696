#include "host/database/Dialect.h"

#include "host/database/DialectRewriter.h"

#include <unordered_map>

namespace Dialect {
namespace {

bool beginsStatement(const TToken &token)
{
    static const char *const words[] = {"select", "insert", "update",   "delete", "create", "alter",
                                        "drop",   "with",   "truncate", "exec",   "execute"};
    for (const char *word : words)
        if (token.is(word))
            return true;
    return false;
}

/// Cuts a batch into its statements. T-SQL needs nothing between them, so a word that begins a statement does so
/// unless the statement before it still waits for that word.
class TSplitter {
public:
    QList<TTokens> split(const TTokens &tokens)
    {
        for (const TToken &token : tokens) {
            if (m_depth == 0 && token.is(";")) {
                finish();
                continue;
            }
            if (m_depth == 0 && beginsStatement(token) && !m_statement.isEmpty() && !waitsFor(token))
                finish();
            add(token);
        }
        finish();
        return m_statements;
    }

private:
    bool waitsFor(const TToken &token) const
    {
        const TToken &last = m_statement.last();
        const TToken &first = m_statement.first();
        for (const char *word :
             {"union", "all", "except", "intersect", "as", "on", ".", "from", "into", "for"})
            if (last.is(word))
                return true;
        if (token.is("with"))
            return !m_statement.isEmpty(); // a hint, or the options of a view
        if (first.is("with"))
            return !m_mainVerb;
        return first.is("insert") && token.is("select") && !m_source;
    }

    void add(const TToken &token)
    {
        if (token.is("("))
            ++m_depth;
        else if (token.is(")"))
            m_depth = qMax(0, m_depth - 1);
        if (m_depth == 0 && !m_statement.isEmpty()) {
            m_mainVerb = m_mainVerb || beginsStatement(token);
            m_source = m_source || token.is("select") || token.is("values");
        }
        m_statement.append(token);
    }

    void finish()
    {
        if (!m_statement.isEmpty())
            m_statements.append(m_statement);
        m_statement.clear();
        m_depth = 0;
        m_mainVerb = false;
        m_source = false;
    }

    QList<TTokens> m_statements;
    TTokens m_statement;
    int m_depth = 0;
    bool m_mainVerb = false; // of a statement that begins with its named sub-selects
    bool m_source = false;   // an insert has its rows
};

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
    // A trigger holds statements of its own, and is written for one engine.
    const bool trigger = tokens.size() > 1 && tokens[0].is("create") && tokens[1].is("trigger");
    if (tokens.isEmpty() || trigger || !beginsStatement(tokens.first()))
        return {{tsql}, {placesIn(tokens)}};
    TTranslated translated;
    for (const TTokens &statement : TSplitter().split(tokens)) {
        const TTokens rewritten = TDialectRewriter(statement).rewrite();
        translated.statements.append(JoinTokens(rewritten));
        translated.places.append(placesIn(rewritten));
    }
    return translated;
}

} // namespace

const TTranslated &toSqlite(const QString &tsql)
{
    // Statements carry no values, so there are as many as the program has; the bound is for lists of codes, which
    // have a text for each length.
    static constexpr size_t most = 4096;
    static std::unordered_map<QString, TTranslated> remembered;
    const auto found = remembered.find(tsql);
    if (found != remembered.end())
        return found->second;
    TTranslated translated = translate(tsql);
    if (remembered.size() >= most)
        remembered.clear();
    return remembered.emplace(tsql, std::move(translated)).first->second;
}

} // namespace Dialect
