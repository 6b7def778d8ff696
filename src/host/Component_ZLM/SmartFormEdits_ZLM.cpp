#include "host/Component_ZLM/PersianCalendarPopup.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keeps digits as Latin ones and the characters of `kept`, turns those of `turned` into kept[0], leaves out blanks,
/// direction marks and those of `dropped`; false when there is anything else.
bool keepForm(QString &text, int &caret, const QString &kept, const QString &turned,
              const QString &dropped = {})
{
    QString result;
    int newCaret = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isDigit())
            result += QChar(u'0' + c.digitValue());
        else if (turned.contains(c))
            result += kept[0];
        else if (kept.contains(c))
            result += c;
        else if (!c.isSpace() && !dropped.contains(c) && c.category() != QChar::Other_Format)
            return false;
        if (i < caret)
            newCaret = int(result.size());
    }
    text = result;
    caret = newCaret;
    return true;
}

QString withoutBlanks(const QString &text, int &caret)
{
    QString result;
    int newCaret = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSpace())
            result += text[i];
        if (i < caret)
            newCaret = int(result.size());
    }
    caret = newCaret;
    return result;
}

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

/// "8", "830", "0830" and "8:30" to "08:30"; empty where the text is no time of day.
QString timeOf(const QString &text)
{
    static const QRegularExpression form(u"^(\\d{1,2}):?(\\d{2})?$|^(\\d{1,2}):(\\d)$"_s);
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    const int hour = (match.captured(1) + match.captured(3)).toInt();
    const int minute = (match.captured(2) + match.captured(4)).toInt();
    if (hour > 23 || minute > 59)
        return {};
    return u"%1:%2"_s.arg(hour, 2, 10, QChar(u'0')).arg(minute, 2, 10, QChar(u'0'));
}

} // namespace

TSmartDateEdit_ZLM::TSmartDateEdit_ZLM(QWidget *parent) : TSmartPickEdit_ZLM(parent, Text, 10)
{
    PickButton()->setText({});
    PickButton()->setArrowType(Qt::DownArrow);
    SetTypingRule([this](QString &text, int &caret) {
        MarkWrong(false);
        return keepForm(text, caret, u"/"_s, u"-."_s) &&
               matches(text, u"\\d{0,8}|\\d{0,4}/\\d{0,2}(/\\d{0,2})?"_s);
    });
    connect(this, &TSmartPickEdit_ZLM::pick, this, &TSmartDateEdit_ZLM::openCalendar);
}

QVariant TSmartDateEdit_ZLM::GetValue() const
{
    return IsEmpty() ? QVariant() : QVariant(GetText());
}

QString TSmartDateEdit_ZLM::GetText() const
{
    const QString typed = text().trimmed();
    const auto date = TPersianDate::parse(typed);
    return date ? date->toText() : typed;
}

void TSmartDateEdit_ZLM::SetText(const QString &text)
{
    const auto date = TPersianDate::parse(text.trimmed());
    MarkWrong(false);
    PutText(date ? date->toText() : text.trimmed());
}

bool TSmartDateEdit_ZLM::IsValid()
{
    Settle();
    return IsEmpty() || IsDate();
}

bool TSmartDateEdit_ZLM::IsDate()
{
    Settle();
    if (TPersianDate::parse(text()))
        return true;
    ShowSmartMessage(ntWrongDate, this, window(), noteTime);
    return false;
}

int TSmartDateEdit_ZLM::WrongNote() const
{
    return IsEmpty() || TPersianDate::parse(text()) ? 0 : ntWrongDate;
}

void TSmartDateEdit_ZLM::Settle()
{
    const auto date = TPersianDate::parse(text());
    if (date && date->toText() != text())
        PutText(date->toText());
    MarkWrong(!date && !IsEmpty());
}

void TSmartDateEdit_ZLM::openCalendar()
{
    const auto typed = TPersianDate::parse(text());
    auto *calendar = new TPersianCalendarPopup(this, typed.value_or(TPersianDate::today()));
    connect(calendar, &TPersianCalendarPopup::chosen, this, [this](const TPersianDate &date) {
        SetText(date.toText());
        selectAll();
    });
    calendar->popupAt(this);
}

TSmartMaskEdit_ZLM::TSmartMaskEdit_ZLM(QWidget *parent, Mask mask, int maxLength)
    : TSmartEdit_ZLM(parent, Text, maxLength), m_mask(mask)
{
    SetTypingRule([mask](QString &text, int &caret) {
        switch (mask) {
        case NationalCode:
        case PostCode:
        case IdNumber:
            return keepForm(text, caret, {}, {}, u"-"_s);
        case Telephone:
            return keepForm(text, caret, u"-+()"_s, u"/"_s);
        case Email:
            break;
        }
        text = withoutBlanks(PersianText::latinDigits(text), caret);
        return !matches(text, u".*[,;<>\"].*"_s);
    });
}

int TSmartMaskEdit_ZLM::WrongNote() const
{
    if (IsEmpty())
        return 0;
    if (m_mask == NationalCode && !NationalCode_Validation(text()))
        return ntWrongNationalCode;
    if (m_mask == PostCode && !PostCode_Validation(text()))
        return ntWrongPostCode;
    if (m_mask == Email && !Email_Validation(text()))
        return ntWrongEmail;
    return 0;
}

bool TSmartMaskEdit_ZLM::IsValid()
{
    const int note = WrongNote();
    if (!IsEmpty())
        MarkWrong(note != 0);
    if (note)
        ShowSmartMessage(note, this, window(), noteTime);
    return note == 0;
}

TSmartTime_ZLM::TSmartTime_ZLM(QWidget *parent) : TSmartEdit_ZLM(parent, Text, 5)
{
    SetTypingRule([this](QString &text, int &caret) {
        MarkWrong(false);
        return keepForm(text, caret, u":"_s, u".;/-"_s) && matches(text, u"\\d{0,4}|\\d{0,2}:\\d{0,2}"_s);
    });
}

QString TSmartTime_ZLM::GetText() const
{
    const QString typed = text().trimmed();
    const QString time = timeOf(typed);
    return time.isEmpty() ? typed : time;
}

void TSmartTime_ZLM::SetText(const QString &text)
{
    const QString time = timeOf(PersianText::latinDigits(text.trimmed()));
    MarkWrong(false);
    PutText(time.isEmpty() ? text.trimmed() : time);
}

bool TSmartTime_ZLM::IsValid()
{
    Settle();
    const int note = WrongNote();
    if (note)
        ShowSmartMessage(note, this, window(), noteTime);
    return note == 0;
}

int TSmartTime_ZLM::WrongNote() const
{
    return IsEmpty() || !timeOf(text()).isEmpty() ? 0 : ntWrongTime;
}

void TSmartTime_ZLM::Settle()
{
    const QString time = timeOf(text());
    if (!time.isEmpty() && time != text())
        PutText(time);
    MarkWrong(time.isEmpty() && !IsEmpty());
}
