#include "host/Utility_ZLM/PersianText.h"

#include <QCollator>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The value of a Persian or Arabic-Indic digit, -1 for every other character.
int easternDigit(char16_t c)
{
    if (c >= 0x06F0 && c <= 0x06F9)
        return c - 0x06F0;
    if (c >= 0x0660 && c <= 0x0669)
        return c - 0x0660;
    return -1;
}

/// Marks that no one searches for: diacritics, the stretching line, half-spaces and direction marks.
bool isMark(char16_t c)
{
    return (c >= 0x064B && c <= 0x0652) || c == 0x0640 || c == 0x0670 || (c >= 0x200C && c <= 0x200F);
}

/// A character that leaves no trace on the screen.
bool isInvisible(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Format || c.category() == QChar::Other_Control;
}

bool isGroupSeparator(QChar c)
{
    return c == u',' || c == QChar(0x066C) || c == QChar(0x060C) || c == u'\'' || c == u'_' || c.isSpace() ||
           c.category() == QChar::Other_Format;
}

bool isPlainNumber(QStringView text)
{
    if (text.startsWith(u'-'))
        text = text.mid(1);
    bool digit = false;
    bool point = false;
    for (const QChar c : text) {
        if (c >= u'0' && c <= u'9')
            digit = true;
        else if (c == u'.' && !point)
            point = true;
        else
            return false;
    }
    return digit;
}

} // namespace

namespace {

template <bool caseToo>
QString comparable(const QString &text)
{
    QString result;
    result.reserve(text.size());
    bool blank = false;
    bool plain = true; // no letters but Arabic ones and small ASCII
    for (const QChar character : text) {
        char16_t c = character.unicode();
        if (isMark(c))
            continue;
        if (c == 0x00A0)
            c = u' ';
        if (c == u' ' && blank)
            continue;
        blank = c == u' ';
        if (c == 0x064A || c == 0x0649)
            c = 0x06CC;
        else if (c == 0x0643)
            c = 0x06A9;
        else if (caseToo && c >= u'A' && c <= u'Z')
            c = char16_t(c + 32);
        else if (const int digit = easternDigit(c); digit >= 0)
            c = char16_t(u'0' + digit);
        else if (c >= 0x0080 && !(c >= 0x0600 && c <= 0x06FF))
            plain = false;
        result += QChar(c);
    }
    return plain || !caseToo ? result : result.toLower();
}

} // namespace

QString PersianText::fold(const QString &text)
{
    return comparable<true>(text);
}

QString PersianText::oneForm(const QString &text)
{
    return comparable<false>(text);
}

QString PersianText::latinDigits(const QString &text)
{
    QString result = text;
    for (QChar &c : result) {
        if (const int digit = easternDigit(c.unicode()); digit >= 0)
            c = QChar(u'0' + digit);
    }
    return result;
}

QString PersianText::plainCode(const QString &text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && isInvisible(text.at(from)))
        ++from;
    while (to > from && isInvisible(text.at(to - 1)))
        --to;
    return latinDigits(text.mid(from, to - from));
}

bool PersianText::isBlank(const QString &text)
{
    return std::all_of(text.begin(), text.end(), isInvisible);
}

QString PersianText::plainNumber(const QString &text)
{
    QString result;
    bool digit = false;
    bool point = false;
    bool sign = false;
    for (const QChar c : text) {
        if (c.isDigit()) {
            result += QChar(u'0' + c.digitValue());
            digit = true;
        } else if (c == u'.' || c == QChar(0x066B) || c == u'/') {
            if (point)
                return {};
            point = true;
            result += u'.';
        } else if (c == u'-' || c == QChar(0x2212) || c == u'+') {
            if (sign || !result.isEmpty())
                return {};
            sign = true;
            if (c != u'+')
                result += u'-';
        } else if (!isGroupSeparator(c)) {
            return {};
        }
    }
    if (digit)
        return result;
    return result.isEmpty() && !sign && text.trimmed().isEmpty() ? QString(""_L1) : QString();
}

QString PersianText::grouped(const QString &plainNumber)
{
    if (!isPlainNumber(plainNumber))
        return plainNumber;
    QString result = plainNumber;
    const qsizetype first = result.startsWith(u'-') ? 1 : 0;
    const qsizetype point = result.indexOf(u'.');
    for (qsizetype at = (point < 0 ? result.size() : point) - 3; at > first; at -= 3)
        result.insert(at, u',');
    return result;
}

QString PersianText::cut(const QString &text, int width)
{
    if (width <= 0 || text.size() <= width)
        return text;
    return text.left(text[width - 1].isHighSurrogate() ? width - 1 : width);
}

int PersianText::compare(const QString &a, const QString &b)
{
    static const QCollator collator = [] {
        QCollator persian(QLocale(QLocale::Persian, QLocale::Iran));
        persian.setCaseSensitivity(Qt::CaseInsensitive);
        return persian;
    }();
    return collator.compare(fold(a), fold(b));
}
