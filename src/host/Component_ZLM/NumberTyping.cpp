#include "host/Component_ZLM/NumberTyping.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

// What stands beside a copied amount and is no part of it.
const QStringList &currencyWords()
{
    static const QStringList words{u"ریال"_s, u"ريال"_s, u"تومان"_s, u"﷼"_s, u"%"_s, u"٪"_s};
    return words;
}

qsizetype currencyWordAt(const QString &text, qsizetype at)
{
    for (const QString &word : currencyWords()) {
        if (QStringView(text).mid(at).startsWith(word))
            return word.size();
    }
    return 0;
}

bool isSeparator(QChar c)
{
    return c == u',' || c == QChar(0x066C) || c == QChar(0x060C) || c == u'\'' || c == u'_' || c.isSpace() ||
           c.category() == QChar::Other_Format || c.category() == QChar::Other_Control;
}

} // namespace

std::optional<QString> NumberTyping::plain(const QString &text, int &caret, bool decimals, bool negative)
{
    QString result;
    int newCaret = 0;
    bool point = false;
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i];
        qsizetype taken = 1;
        if (c.isDigit()) {
            result += QChar(u'0' + c.digitValue());
        } else if (c == u'.' || c == QChar(0x066B) || c == u'/') {
            if (point || !decimals)
                return std::nullopt;
            point = true;
            result += u'.';
        } else if (c == u'-' || c == QChar(0x2212)) {
            if (!negative || !result.isEmpty())
                return std::nullopt;
            result += u'-';
        } else if (const qsizetype word = currencyWordAt(text, i)) {
            taken = word;
        } else if (!isSeparator(c)) {
            return std::nullopt;
        }
        i += taken;
        if (i <= caret)
            newCaret = int(result.size());
    }
    caret = newCaret;
    return result;
}

QString NumberTyping::settled(const QString &text)
{
    QString number = withoutSeparators(text);
    const bool minus = number.startsWith(u'-');
    if (minus)
        number.remove(0, 1);
    if (number.endsWith(u'.'))
        number.chop(1);
    if (number.isEmpty())
        return {};
    if (number.startsWith(u'.'))
        number.prepend(u'0');
    while (number.size() > 1 && number[0] == u'0' && number[1] != u'.')
        number.remove(0, 1);
    return minus ? u'-' + number : number;
}

QString NumberTyping::grouped(const QString &plain, int &caret)
{
    const qsizetype first = plain.startsWith(u'-') ? 1 : 0;
    const qsizetype point = plain.indexOf(u'.');
    const qsizetype end = point < 0 ? plain.size() : point;
    QString result;
    int newCaret = 0;
    for (qsizetype i = 0; i < plain.size(); ++i) {
        if (i > first && i < end && (end - i) % 3 == 0)
            result += u',';
        result += plain[i];
        if (i + 1 <= caret)
            newCaret = int(result.size());
    }
    caret = newCaret;
    return result;
}

QString NumberTyping::withoutSeparators(const QString &text)
{
    return QString(text).remove(u',');
}
