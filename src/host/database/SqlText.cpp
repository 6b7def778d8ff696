#include "host/database/SqlText.h"

#include "host/database/ByText.h"

#include <algorithm>

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

/// Reads one statement.
class TStatementReader {
public:
    explicit TStatementReader(const TTokens &tokens) : m_tokens(tokens) {}

    TSqlText::Verb verb() const
    {
        static const struct {
            const char *word;
            TSqlText::Verb verb;
        } verbs[] = {{"select", TSqlText::Select},
                     {"insert", TSqlText::Insert},
                     {"update", TSqlText::Update},
                     {"delete", TSqlText::Delete}};
        for (const auto &known : verbs)
            if (is(0, known.word))
                return known.verb;
        return m_tokens.isEmpty() ? TSqlText::None : TSqlText::Other;
    }

    QString table() const
    {
        switch (verb()) {
        case TSqlText::Select:
            return tableOfSelect(1);
        case TSqlText::Insert:
            return nameAt(is(1, "into") ? 2 : 1);
        case TSqlText::Update:
            return nameAt(1);
        case TSqlText::Delete: { // delete T, delete from T, delete a from T as a
            const qsizetype first = is(1, "from") ? 2 : 1;
            const qsizetype end = endOfName(first);
            return nameAt(is(end, "from") ? end + 1 : first);
        }
        default:
            return {};
        }
    }

    /// The columns of "insert into T (A, B) values (?, ?)".
    QStringList columns() const
    {
        if (!is(0, "insert"))
            return {};
        QStringList columns;
        qsizetype places = 0;
        qsizetype at = endOfName(is(1, "into") ? 2 : 1);
        at = endOfList(at, [&](const TToken &token) {
            columns.append(token.name());
            return token.isName();
        });
        if (!is(at, "values"))
            return {};
        at = endOfList(at + 1, [&](const TToken &token) {
            ++places;
            return token.kind == TToken::Place;
        });
        return at == m_tokens.size() && places == columns.size() ? columns : QStringList();
    }

    /// "create view V as select ... from T", "alter view ..."
    TView view() const
    {
        if ((!is(0, "create") && !is(0, "alter")) || !is(1, "view"))
            return {};
        qsizetype at = endOfName(2);
        while (at < m_tokens.size() && !is(at, "as"))
            ++at;
        return {nameAt(2), is(at + 1, "select") ? tableOfSelect(at + 2) : QString()};
    }

private:
    bool is(qsizetype i, const char *word) const
    {
        return i >= 0 && i < m_tokens.size() && m_tokens[i].is(word);
    }
    bool isName(qsizetype i) const { return i >= 0 && i < m_tokens.size() && m_tokens[i].isName(); }

    // Behind a name and its owners: dbo.T, [dbo].[T], base..T
    qsizetype endOfName(qsizetype at) const
    {
        if (!isName(at))
            return at;
        for (;;) {
            qsizetype next = ++at;
            while (is(next, "."))
                ++next;
            if (next == at || !isName(next))
                return at;
            at = next;
        }
    }
    QString nameAt(qsizetype at) const { return isName(at) ? m_tokens[endOfName(at) - 1].name() : QString(); }

    QString tableOfSelect(qsizetype at) const
    {
        int depth = 0;
        for (; at < m_tokens.size() && depth >= 0; ++at) {
            if (is(at, "("))
                ++depth;
            else if (is(at, ")"))
                --depth;
            else if (depth == 0 && is(at, "from"))
                return tableBehindFrom(at + 1);
        }
        return {};
    }
    QString tableBehindFrom(qsizetype at) const
    {
        while (is(at, "("))
            ++at;
        if (is(at, "select"))
            return tableOfSelect(at + 1);
        return nameAt(at);
    }

    // Behind the bracket of "(item, item)", -1 for anything else.
    template <class Take>
    qsizetype endOfList(qsizetype at, Take take) const
    {
        do {
            ++at; // the bracket, then the commas
            if (!is(at - 1, "(") && !is(at - 1, ","))
                return -1;
            if (at >= m_tokens.size() || !take(m_tokens[at]))
                return -1;
            ++at;
        } while (!is(at, ")"));
        return at + 1;
    }

    const TTokens &m_tokens;
};

bool writes(const TToken &token)
{
    static const char *const words[] = {"into",  "insert", "update", "delete",  "merge",   "create",
                                        "alter", "drop",   "exec",   "execute", "truncate"};
    for (const char *word : words)
        if (token.is(word))
            return true;
    return false;
}

TSqlText readTokens(const QString &text)
{
    const TTokens tokens = Tokenize(text);
    QList<TTokens> statements = SplitStatements(tokens);
    if (statements.isEmpty() && !tokens.isEmpty())
        statements.append(tokens);
    TSqlText read;
    read.statements = int(statements.size());
    for (const TToken &token : tokens) {
        if (token.kind == TToken::Place)
            read.places.append({token.at, token.text.size(), {}});
        else if (token.kind == TToken::Named)
            read.places.append({token.at, token.text.size(), token.text.mid(1).toLower()});
    }
    if (statements.isEmpty())
        return read;
    const TStatementReader first(statements.first());
    read.verb = first.verb();
    read.table = first.table();
    if (statements.size() == 1)
        read.columns = first.columns();
    read.onlyReads = read.verb == TSqlText::Select && std::none_of(tokens.begin(), tokens.end(), writes);
    return read;
}

} // namespace

const TSqlText &ReadSql(const QString &text)
{
    thread_local TByText<TSqlText> remembered; // engines of a server may work in threads of their own
    return remembered.get(text, readTokens);
}

QList<TTokens> SplitStatements(const TTokens &tokens)
{
    const bool trigger = tokens.size() > 1 && tokens[0].is("create") && tokens[1].is("trigger");
    if (tokens.isEmpty() || trigger || !beginsStatement(tokens.first()))
        return {};
    return TSplitter().split(tokens);
}

TView ReadView(const TTokens &statement)
{
    return TStatementReader(statement).view();
}

int TextWidthOf(const QString &declaredType)
{
    const TTokens tokens = Tokenize(declaredType);
    for (qsizetype i = 0; i + 3 < tokens.size(); ++i) {
        if (tokens[i].text.endsWith(u"char", Qt::CaseInsensitive) && tokens[i + 1].is("(") &&
            tokens[i + 2].kind == TToken::Number && tokens[i + 3].is(")"))
            return tokens[i + 2].text.toInt();
    }
    return 0;
}
