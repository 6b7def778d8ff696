#include "host/database/Tokens.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool beginsName(QChar c)
{
    return c.isLetter() || c == u'_' || c == u'#';
}

bool goesOnName(QChar c)
{
    return beginsName(c) || c.isDigit() || c == u'$' || c == u'@' || c.isMark();
}

class TScanner {
public:
    explicit TScanner(const QString &sql) : m_sql(sql) {}
    TTokens scan()
    {
        TTokens tokens;
        for (;;) {
            const bool blank = skipBlanks();
            if (m_at >= m_sql.size())
                return tokens;
            TToken token = next();
            token.blankBefore = blank;
            tokens.append(token);
        }
    }

private:
    QChar at(qsizetype offset = 0) const
    {
        const qsizetype place = m_at + offset;
        return place < m_sql.size() ? m_sql[place] : QChar();
    }

    bool skipBlanks()
    {
        const qsizetype from = m_at;
        for (;;) {
            if (at().isSpace() || at() == QChar(0xFEFF))
                ++m_at;
            else if (at() == u'-' && at(1) == u'-')
                m_at = endOf(u"\n"_s);
            else if (at() == u'/' && at(1) == u'*')
                skipComment();
            else
                return m_at > from;
        }
    }

    // Comments nest in T-SQL.
    void skipComment()
    {
        int depth = 0;
        do {
            if (at() == u'/' && at(1) == u'*') {
                ++depth;
                m_at += 2;
            } else if (at() == u'*' && at(1) == u'/') {
                --depth;
                m_at += 2;
            } else {
                ++m_at;
            }
        } while (depth > 0 && m_at < m_sql.size());
    }

    qsizetype endOf(const QString &mark) const
    {
        const qsizetype found = m_sql.indexOf(mark, m_at);
        return found < 0 ? m_sql.size() : found + mark.size();
    }

    TToken next()
    {
        const QChar c = at();
        if (c == u'\'')
            return take(TToken::Text, endOfQuoted(m_at + 1, u'\''));
        if ((c == u'N' || c == u'n') && at(1) == u'\'') {
            ++m_at;
            return take(TToken::Text, endOfQuoted(m_at + 1, u'\''));
        }
        if (c == u'[')
            return take(TToken::Quoted, endOfQuoted(m_at + 1, u']'));
        if (c == u'"')
            return take(TToken::Quoted, endOfQuoted(m_at + 1, u'"'));
        if (beginsName(c))
            return take(TToken::Word, endOfName(m_at + 1));
        if (c.isDigit() || (c == u'.' && at(1).isDigit()))
            return take(TToken::Number, endOfNumber());
        if (c == u'?')
            return take(TToken::Place, m_at + 1);
        if (c == u':' && beginsName(at(1)))
            return take(TToken::Named, endOfName(m_at + 2));
        if (c == u'@')
            return take(TToken::Variable, endOfName(m_at + (at(1) == u'@' ? 2 : 1)));
        static const QLatin1StringView pairs[] = {"<>"_L1, "<="_L1, ">="_L1, "!="_L1, "||"_L1};
        for (const QLatin1StringView pair : pairs)
            if (QStringView(m_sql).mid(m_at, 2) == pair)
                return take(TToken::Symbol, m_at + 2);
        return take(TToken::Symbol, m_at + 1);
    }

    TToken take(TToken::Kind kind, qsizetype end)
    {
        TToken token{kind, m_sql.mid(m_at, end - m_at), false, m_at};
        m_at = end;
        return token;
    }

    // A doubled quote is one quote of the text.
    qsizetype endOfQuoted(qsizetype from, QChar quote) const
    {
        for (qsizetype i = from; i < m_sql.size(); ++i) {
            if (m_sql[i] != quote)
                continue;
            if (i + 1 < m_sql.size() && m_sql[i + 1] == quote)
                ++i;
            else
                return i + 1;
        }
        return m_sql.size();
    }

    qsizetype endOfName(qsizetype from) const
    {
        while (from < m_sql.size() && goesOnName(m_sql[from]))
            ++from;
        return from;
    }

    qsizetype endOfNumber() const
    {
        qsizetype i = m_at;
        const auto digits = [&] {
            while (i < m_sql.size() && m_sql[i].isDigit())
                ++i;
        };
        if (m_sql[i] == u'0' && i + 1 < m_sql.size() && (m_sql[i + 1] == u'x' || m_sql[i + 1] == u'X'))
            return endOfName(i + 2);
        digits();
        if (i < m_sql.size() && m_sql[i] == u'.') {
            ++i;
            digits();
        }
        if (i < m_sql.size() && (m_sql[i] == u'e' || m_sql[i] == u'E')) {
            qsizetype exponent = i + 1;
            if (exponent < m_sql.size() && (m_sql[exponent] == u'+' || m_sql[exponent] == u'-'))
                ++exponent;
            if (exponent < m_sql.size() && m_sql[exponent].isDigit()) {
                i = exponent;
                digits();
            }
        }
        return i;
    }

    const QString &m_sql;
    qsizetype m_at = 0;
};

} // namespace

TTokens Tokenize(const QString &sql)
{
    return TScanner(sql).scan();
}

QString JoinTokens(const TTokens &tokens)
{
    QString sql;
    for (const TToken &token : tokens) {
        if (token.blankBefore && !sql.isEmpty())
            sql += u' ';
        sql += token.text;
    }
    return sql;
}
