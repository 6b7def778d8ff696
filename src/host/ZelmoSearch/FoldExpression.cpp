#include "host/ZelmoSearch/FoldExpression.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString replaced(const QString &expression, int from, const QString &to)
{
    return u"replace("_s + expression + u", nchar(%1), "_s.arg(from) + to + u')';
}

QString letter(int code)
{
    return u"nchar(%1)"_s.arg(code);
}

} // namespace

QString FoldExpression(const QString &field)
{
    // By code points: a linguistic collation ignores the half-space and the diacritics that are to go.
    QString text = u"lower(cast("_s + field + u" as nvarchar(4000)) collate Latin1_General_BIN2)"_s;
    for (const int yeh : {0x064A, 0x0649})
        text = replaced(text, yeh, letter(0x06CC));
    text = replaced(text, 0x0643, letter(0x06A9));
    for (int digit = 0; digit <= 9; ++digit) {
        text = replaced(text, 0x06F0 + digit, letter('0' + digit));
        text = replaced(text, 0x0660 + digit, letter('0' + digit));
    }
    for (int mark = 0x064B; mark <= 0x0652; ++mark)
        text = replaced(text, mark, u"''"_s);
    for (const int mark : {0x0640, 0x0670, 0x200C, 0x200D, 0x200E, 0x200F})
        text = replaced(text, mark, u"''"_s);
    text = replaced(text, 0x00A0, u"' '"_s);
    // Three rounds make one blank out of as many as eight.
    for (int round = 0; round < 3; ++round)
        text = u"replace("_s + text + u", '  ', ' ')"_s;
    return text;
}
