#include "host/database/DialectRewriter.h"

using namespace Qt::Literals::StringLiterals;

// The definition of tables: the embedded engine has its own words for types, and its texts compare as the server's
// only when each column says so.

namespace {

enum class TType { Text, LongText, Amount, Bytes, Other };

TType typeOf(const QString &name)
{
    struct TRule {
        const char *name;
        TType type;
    };
    static const TRule rules[] = {
        {"nvarchar", TType::Text},  {"varchar", TType::Text},   {"nchar", TType::Text},
        {"char", TType::Text},      {"ntext", TType::LongText}, {"text", TType::LongText},
        {"decimal", TType::Amount}, {"numeric", TType::Amount}, {"money", TType::Amount},
        {"float", TType::Amount},   {"real", TType::Amount},    {"varbinary", TType::Bytes},
        {"binary", TType::Bytes},   {"image", TType::Bytes}};
    for (const TRule &rule : rules)
        if (name.compare(QLatin1StringView(rule.name), Qt::CaseInsensitive) == 0)
            return rule.type;
    return TType::Other;
}

} // namespace

void TDialectRewriter::fitTable()
{
    if (is(0, "alter") && is(1, "table") && is(3, "add")) {
        if (!is(4, "constraint"))
            fitColumn(4, m_tokens.size());
        return;
    }
    if (!is(0, "create") || !is(1, "table"))
        return;
    qsizetype open = 2;
    while (open < m_tokens.size() && !is(open, "("))
        ++open;
    // From the last item to the first: a change moves only what stands behind it.
    QList<QPair<qsizetype, qsizetype>> items;
    int depth = 0;
    qsizetype from = open + 1;
    const qsizetype close = closing(open);
    for (qsizetype i = open + 1; i <= close && i < m_tokens.size(); ++i) {
        if (is(i, "("))
            ++depth;
        else if (i != close && is(i, ")"))
            --depth;
        if (i == close || (depth == 0 && is(i, ","))) {
            items.prepend({from, i});
            from = i + 1;
        }
    }
    for (const auto &[first, end] : std::as_const(items))
        fitColumn(first, end);
}

/// Behind the width that a type carries, if it does.
qsizetype TDialectRewriter::widthEnd(qsizetype type) const
{
    return is(type + 1, "(") ? closing(type + 1) + 1 : type + 1;
}

void TDialectRewriter::fitColumn(qsizetype from, qsizetype end)
{
    for (qsizetype i = end - 1; i > from; --i)
        if (is(i, "clustered") || is(i, "nonclustered"))
            m_tokens.removeAt(i), --end;
    if (end - from < 2 || is(from, "constraint") || is(from, "primary") || is(from, "unique") ||
        is(from, "foreign") || is(from, "check"))
        return;
    const qsizetype type = from + 1;
    qsizetype identity = type;
    while (identity < end && !is(identity, "identity"))
        ++identity;
    if (identity < end) {
        // Only an integer primary key of the engine counts by itself.
        const qsizetype count = widthEnd(identity) - identity;
        m_tokens.remove(identity, count);
        end -= count;
        m_tokens[type].text = u"INTEGER"_s;
        for (qsizetype i = type; i < end; ++i)
            if (is(i, "primary") && is(i + 1, "key"))
                insertWord(i + 2, u"AUTOINCREMENT"_s);
        return;
    }
    const qsizetype behind = widthEnd(type);
    switch (typeOf(m_tokens[type].name())) {
    case TType::Text:
        if (behind == type + 1) // a width of "max" is gone already
            m_tokens[type].text = u"TEXT"_s;
        insertWord(behind, u"COLLATE ZELMO"_s);
        break;
    case TType::LongText:
        m_tokens[type].text = u"TEXT"_s;
        insertWord(behind, u"COLLATE ZELMO"_s);
        break;
    case TType::Amount:
        m_tokens.remove(type + 1, behind - type - 1);
        m_tokens[type].text = u"REAL"_s;
        break;
    case TType::Bytes:
        m_tokens.remove(type + 1, behind - type - 1);
        m_tokens[type].text = u"BLOB"_s;
        break;
    case TType::Other:
        break;
    }
}
