#include "host/database/DialectRewriter.h"

#include <initializer_list>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isOneOf(const TToken &token, std::initializer_list<const char *> words)
{
    for (const char *word : words)
        if (token.is(word))
            return true;
    return false;
}

struct TRename {
    const char *from;
    const char *to;
};
// left and right are keywords of the embedded engine; the other functions keep their names (SqliteFunctions).
const TRename functionNames[] = {
    {"isnull", "ifnull"}, {"left", "zelmo_left"}, {"right", "zelmo_right"}, {"nchar", "char"}};

bool isTextType(const TToken &type)
{
    return isOneOf(type, {"nvarchar", "varchar", "nchar", "char", "ntext"});
}

bool isTextFunction(const TToken &name)
{
    return isOneOf(name, {"zelmo_left", "zelmo_right", "substring", "replace", "ltrim", "rtrim", "lower",
                          "upper", "char"});
}

// Words that cannot end an operand: a plus after one of them is a sign.
bool isOperatorWord(const TToken &token)
{
    return isOneOf(token, {"select", "distinct", "all", "when", "then", "else", "case", "where", "and", "or",
                           "not", "in", "like", "by", "set", "on", "having", "values", "between"});
}

} // namespace

bool TDialectRewriter::is(qsizetype i, const char *word) const
{
    return i >= 0 && i < m_tokens.size() && m_tokens[i].is(word);
}

bool TDialectRewriter::isName(qsizetype i) const
{
    return i >= 0 && i < m_tokens.size() && m_tokens[i].isName();
}

bool TDialectRewriter::isCall(qsizetype i) const
{
    return i >= 0 && i < m_tokens.size() && m_tokens[i].kind == TToken::Word && is(i + 1, "(");
}

qsizetype TDialectRewriter::closing(qsizetype open) const
{
    int depth = 0;
    for (qsizetype i = open; i < m_tokens.size(); ++i) {
        if (is(i, "("))
            ++depth;
        else if (is(i, ")") && --depth == 0)
            return i;
    }
    return m_tokens.size();
}

qsizetype TDialectRewriter::opening(qsizetype close) const
{
    int depth = 0;
    for (qsizetype i = close; i >= 0; --i) {
        if (is(i, ")"))
            ++depth;
        else if (is(i, "(") && --depth == 0)
            return i;
    }
    return 0;
}

qsizetype TDialectRewriter::endOfCase(qsizetype from) const
{
    int depth = 0;
    for (qsizetype i = from; i < m_tokens.size(); ++i) {
        if (is(i, "case"))
            ++depth;
        else if (is(i, "end") && --depth == 0)
            return i;
    }
    return m_tokens.size() - 1;
}

qsizetype TDialectRewriter::startOfCase(qsizetype end) const
{
    int depth = 0;
    for (qsizetype i = end; i >= 0; --i) {
        if (is(i, "end"))
            ++depth;
        else if (is(i, "case") && --depth == 0)
            return i;
    }
    return 0;
}

void TDialectRewriter::insertWord(qsizetype i, const QString &word)
{
    m_tokens.insert(i, {TToken::Word, word, true});
    if (i + 1 < m_tokens.size() && m_tokens[i + 1].kind != TToken::Symbol)
        m_tokens[i + 1].blankBefore = true;
}

TTokens TDialectRewriter::rewrite()
{
    lowerNamedPlaces();
    dropOwners();
    dropHints();
    completeVerbs();
    renameFunctions();
    dropWidthMax();
    moveAliases();
    moveTop();
    joinTexts();
    fitTable();
    return m_tokens;
}

void TDialectRewriter::lowerNamedPlaces()
{
    for (TToken &token : m_tokens)
        if (token.kind == TToken::Named)
            token.text = token.text.toLower();
}

// dbo.T, [dbo].F(x)
void TDialectRewriter::dropOwners()
{
    for (qsizetype i = 0; i + 2 < m_tokens.size(); ++i) {
        if (!isName(i) || !is(i + 1, ".") || is(i - 1, ".") ||
            m_tokens[i].name().compare(u"dbo", Qt::CaseInsensitive) != 0)
            continue;
        m_tokens[i + 2].blankBefore = m_tokens[i].blankBefore;
        m_tokens.remove(i, 2);
    }
}

// T with (nolock, ...), T (nolock)
void TDialectRewriter::dropHints()
{
    for (qsizetype i = 1; i < m_tokens.size(); ++i) {
        const bool with = is(i, "with") && is(i + 1, "(");
        const qsizetype open = with ? i + 1 : i;
        if (!is(open, "(") || (!with && !isName(i - 1)))
            continue;
        const qsizetype close = closing(open);
        bool hints = close > open + 1 && close < m_tokens.size();
        for (qsizetype word = open + 1; hints && word < close; ++word)
            hints = isOneOf(m_tokens[word], {",", "nolock", "readuncommitted", "readcommitted", "readpast",
                                             "rowlock", "paglock", "tablock", "tablockx", "updlock", "xlock",
                                             "holdlock", "serializable"});
        if (hints)
            m_tokens.remove(i, close - i + 1);
    }
}

// Delete T where, Delete a from T as a, Insert T(...)
void TDialectRewriter::completeVerbs()
{
    if (is(0, "delete") && isName(1) && !is(1, "from")) {
        if (is(2, "from"))
            m_tokens.removeAt(1);
        else
            insertWord(1, u"from"_s);
    } else if (is(0, "insert") && isName(1) && !is(1, "into") && !is(1, "or")) {
        insertWord(1, u"into"_s);
    }
}

void TDialectRewriter::renameFunctions()
{
    for (qsizetype i = 0; i < m_tokens.size(); ++i) {
        if (!isCall(i) || is(i - 1, "."))
            continue;
        if (is(i, "convert")) {
            convertToCast(i);
            continue;
        }
        for (const TRename &function : functionNames)
            if (is(i, function.from)) {
                m_tokens[i].text = QString::fromLatin1(function.to);
                break;
            }
    }
}

// convert(type, value) and convert(type, value, style): cast(value as type)
void TDialectRewriter::convertToCast(qsizetype function)
{
    const qsizetype close = closing(function + 1);
    qsizetype commas[2] = {close, close};
    int count = 0;
    int depth = 0;
    for (qsizetype i = function + 1; i < close; ++i) {
        if (is(i, "("))
            ++depth;
        else if (is(i, ")"))
            --depth;
        else if (depth == 1 && is(i, ",") && count < 2)
            commas[count++] = i;
    }
    if (count == 0 || close == m_tokens.size())
        return;
    const TTokens type = m_tokens.mid(function + 2, commas[0] - function - 2);
    const TTokens value = m_tokens.mid(commas[0] + 1, commas[1] - commas[0] - 1);
    TTokens cast{{TToken::Word, u"cast"_s, m_tokens[function].blankBefore}, m_tokens[function + 1]};
    cast += value;
    cast.append({TToken::Word, u"as"_s, true});
    cast += type;
    cast[cast.size() - type.size()].blankBefore = true;
    m_tokens.remove(function, close - function);
    for (qsizetype i = 0; i < cast.size(); ++i)
        m_tokens.insert(function + i, cast[i]);
}

// nvarchar(max): the embedded engine takes numbers only
void TDialectRewriter::dropWidthMax()
{
    for (qsizetype i = 1; i + 2 < m_tokens.size(); ++i)
        if (is(i, "(") && is(i + 1, "max") && is(i + 2, ")") && isName(i - 1))
            m_tokens.remove(i, 3);
}

// select Alias = expression, ...: select expression as Alias, ...
void TDialectRewriter::moveAliases()
{
    for (qsizetype i = 0; i < m_tokens.size(); ++i) {
        if (!is(i, "select"))
            continue;
        qsizetype item = i + 1;
        while (is(item, "all") || is(item, "distinct"))
            ++item;
        int depth = 0;
        for (qsizetype at = item; at <= m_tokens.size(); ++at) {
            const bool over =
                at == m_tokens.size() ||
                (depth == 0 && (is(at, ")") || is(at, "from") || is(at, "union") || is(at, "where")));
            if (over || (depth == 0 && is(at, ","))) {
                at = moveAlias(item, at);
                item = at + 1;
                if (over)
                    break;
            } else if (is(at, "(")) {
                ++depth;
            } else if (is(at, ")")) {
                --depth;
            }
        }
    }
}

/// The item's end after the move.
qsizetype TDialectRewriter::moveAlias(qsizetype item, qsizetype end)
{
    if (end - item < 3 || !is(item + 1, "=") || !(isName(item) || m_tokens[item].kind == TToken::Text))
        return end;
    TToken alias = m_tokens[item];
    m_tokens.remove(item, 2);
    m_tokens[item].blankBefore = true;
    m_tokens.insert(end - 2, {TToken::Word, u"as"_s, true});
    alias.blankBefore = true;
    m_tokens.insert(end - 1, alias);
    if (end < m_tokens.size() && m_tokens[end].kind != TToken::Symbol)
        m_tokens[end].blankBefore = true;
    return end;
}

// select top 5 ...: select ... limit 5
void TDialectRewriter::moveTop()
{
    for (qsizetype i = 0; i < m_tokens.size(); ++i) {
        if (!is(i, "select"))
            continue;
        const qsizetype top = is(i + 1, "distinct") || is(i + 1, "all") ? i + 2 : i + 1;
        const bool bracket = is(top, "top") && is(top + 1, "(");
        const qsizetype number = bracket ? top + 2 : top + 1;
        if (!is(top, "top") || number >= m_tokens.size() || m_tokens[number].kind != TToken::Number ||
            (bracket && !is(number + 1, ")")))
            continue;
        int depth = 0;
        qsizetype end = number + (bracket ? 2 : 1);
        bool whole = true;
        for (; end < m_tokens.size() && depth >= 0; ++end) {
            if (is(end, "("))
                ++depth;
            else if (is(end, ")") && --depth < 0)
                break;
            else if (depth == 0 && is(end, "union"))
                whole = false; // the number would bind the other half too
        }
        if (!whole)
            continue;
        TToken count = m_tokens[number];
        count.blankBefore = true;
        m_tokens.insert(end, count);
        m_tokens.insert(end, {TToken::Word, u"limit"_s, true});
        m_tokens.remove(top, number - top + (bracket ? 2 : 1));
        m_tokens[top].blankBefore = true;
    }
}

// a + 'text' + b: a || 'text' || b
void TDialectRewriter::joinTexts()
{
    for (qsizetype i = 1; i + 1 < m_tokens.size(); ++i)
        if (is(i, "+") && isBinary(i))
            joinChain(i);
}

bool TDialectRewriter::isBinary(qsizetype plus) const
{
    const TToken &before = m_tokens[plus - 1];
    return before.kind == TToken::Symbol ? before.is(")") : !isOperatorWord(before);
}

void TDialectRewriter::joinChain(qsizetype plus)
{
    QList<qsizetype> pluses{plus};
    bool text = isText(operandStart(plus - 1), plus);
    for (qsizetype at = plus; at < m_tokens.size() && is(at, "+");) {
        const qsizetype end = operandEnd(at + 1);
        text = text || isText(at + 1, end);
        at = end;
        if (is(at, "+"))
            pluses.append(at);
    }
    if (!text)
        return;
    for (const qsizetype i : std::as_const(pluses))
        m_tokens[i].text = u"||"_s;
}

qsizetype TDialectRewriter::operandStart(qsizetype last) const
{
    qsizetype first = last;
    if (is(last, ")")) {
        first = opening(last);
        if (first > 0 && m_tokens[first - 1].kind == TToken::Word && !isOperatorWord(m_tokens[first - 1]))
            --first;
    } else if (is(last, "end")) {
        first = startOfCase(last);
    }
    while (is(first - 1, ".") && first >= 2)
        first -= 2;
    return first;
}

qsizetype TDialectRewriter::operandEnd(qsizetype first) const
{
    qsizetype at = first;
    while (is(at, "+") || is(at, "-"))
        ++at;
    if (is(at, "case"))
        return endOfCase(at) + 1;
    while (is(at + 1, "."))
        at += 2;
    if (is(at, "("))
        return closing(at) + 1;
    if (isCall(at))
        return closing(at + 1) + 1;
    return at + 1;
}

/// Whether the operand of these tokens is a text, as far as its words tell.
bool TDialectRewriter::isText(qsizetype first, qsizetype end) const
{
    if (first >= end || first >= m_tokens.size())
        return false;
    if (m_tokens[first].kind == TToken::Text)
        return true;
    if (is(first, "case"))
        return hasTextBranch(first, end);
    if (is(first, "("))
        return !is(first + 1, "select") && hasTextArgument(first);
    if (!isCall(first))
        return false;
    if (is(first, "cast")) {
        const qsizetype close = closing(first + 1);
        for (qsizetype i = close - 1; i > first; --i)
            if (is(i, "as"))
                return isTextType(m_tokens[i + 1]);
        return false;
    }
    if (is(first, "ifnull") || is(first, "coalesce"))
        return hasTextArgument(first + 1);
    return isTextFunction(m_tokens[first]);
}

bool TDialectRewriter::hasTextArgument(qsizetype open) const
{
    const qsizetype close = closing(open);
    for (qsizetype at = open + 1; at < close;) {
        const qsizetype end = operandEnd(at);
        if (isText(at, end))
            return true;
        at = end + 1; // behind the comma or the operator
    }
    return false;
}

bool TDialectRewriter::hasTextBranch(qsizetype first, qsizetype end) const
{
    for (qsizetype i = first; i + 1 < end && i + 1 < m_tokens.size(); ++i)
        if ((is(i, "then") || is(i, "else")) && m_tokens[i + 1].kind == TToken::Text)
            return true;
    return false;
}
