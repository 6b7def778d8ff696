#include "host/database/OdbcText.h"

namespace {

// The end of what begins at `at` and is no place for a value: a text, a quoted name, a comment; `at` itself else.
qsizetype skipped(const QString &text, qsizetype at)
{
    const QChar begin = text[at];
    const QChar second = at + 1 < text.size() ? text[at + 1] : QChar();
    if (begin == u'-' && second == u'-') {
        const qsizetype end = text.indexOf(u'\n', at);
        return end < 0 ? text.size() : end;
    }
    if (begin == u'/' && second == u'*') {
        int depth = 1; // T-SQL comments nest
        for (at += 2; at < text.size() && depth > 0; ++at) {
            if (QStringView(text).mid(at).startsWith(u"/*")) {
                ++depth;
                ++at;
            } else if (QStringView(text).mid(at).startsWith(u"*/")) {
                --depth;
                ++at;
            }
        }
        return at;
    }
    const QChar end = begin == u'[' ? QChar(u']') : begin;
    if (begin != u'\'' && begin != u'"' && begin != u'[')
        return at;
    for (++at; at < text.size(); ++at) {
        if (text[at] != end)
            continue;
        if (at + 1 < text.size() && text[at + 1] == end)
            ++at;
        else
            return at + 1;
    }
    return at;
}

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

} // namespace

Odbc::TPlacedText Odbc::placed(const TBoundStatement &statement)
{
    TPlacedText result;
    const QString &text = statement.text;
    qsizetype used = 0;
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype next = skipped(text, at);
        if (next > at) {
            result.text += QStringView(text).mid(at, next - at);
            at = next;
            continue;
        }
        if (text[at] == u'?') {
            result.values.append(statement.values.value(used++));
        } else if (text[at] == u':' && at + 1 < text.size() &&
                   (text[at + 1].isLetter() || text[at + 1] == u'_') &&
                   (at == 0 || !isNameCharacter(text[at - 1]))) {
            qsizetype end = at + 1;
            while (end < text.size() && isNameCharacter(text[end]))
                ++end;
            result.values.append(statement.named.value(text.mid(at + 1, end - at - 1).toLower()));
            result.text += u'?';
            at = end;
            continue;
        }
        result.text += text[at++];
    }
    return result;
}
