#include "host/Component_ZLM/SmartEdit_ZLM.h"

#include "host/Component_ZLM/NumberTyping.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStyle>
#include <QTextBoundaryFinder>
#include <QTimer>
#include <QToolButton>
#include <QValidator>

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a one-line input can hold: line breaks and tabs as blanks, no other control characters, no half of a pair.
QString oneLine(const QString &text, int &caret)
{
    QString result;
    result.reserve(text.size());
    int newCaret = caret;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool separator = c == u'\r' || c == u'\n' || c == u'\t' || c == QChar::LineSeparator ||
                               c == QChar::ParagraphSeparator;
        const bool secondOfBreak = c == u'\n' && i > 0 && text[i - 1] == u'\r';
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair) {
            result += c;
            result += text[++i];
        } else if (separator && !secondOfBreak) {
            result += u' ';
        } else if (separator || c.isSurrogate() || c.category() == QChar::Other_Control) {
            newCaret -= i < caret ? 1 : 0; // left out
        } else {
            result += c;
        }
    }
    caret = newCaret;
    return result;
}

int countCharacters(QStringView text)
{
    int count = 0;
    for (const QChar c : text)
        count += c.isLowSurrogate() ? 0 : 1;
    return count;
}

/// Takes `excess` characters away before the caret, at a boundary between what a person sees as characters.
void cutBefore(QString &text, int &caret, int excess)
{
    int from = caret;
    while (excess > 0 && from > 0) {
        --from;
        if (text[from].isLowSurrogate() && from > 0)
            --from;
        --excess;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(from);
    if (!finder.isAtBoundary())
        from = int(std::max<qsizetype>(0, finder.toPreviousBoundary()));
    text.remove(from, caret - from);
    caret = from;
}

} // namespace

// Two half-high buttons at the input's left edge.
class TSmartEdit_ZLM::SpinButtons : public QObject {
public:
    explicit SpinButtons(TSmartEdit_ZLM *edit) : QObject(edit), up(make(edit, true)), down(make(edit, false))
    {
        edit->installEventFilter(this);
        place(edit);
    }
    ~SpinButtons() override
    {
        delete up;
        delete down;
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            place(static_cast<QWidget *>(watched));
        return false;
    }

    QPointer<QToolButton> up;
    QPointer<QToolButton> down;

private:
    static QToolButton *make(QWidget *edit, bool up)
    {
        auto *button = new QToolButton(edit);
        button->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
        button->setObjectName(up ? u"SpinUp"_s : u"SpinDown"_s);
        button->setFocusPolicy(Qt::NoFocus);
        button->setAutoRepeat(true);
        button->setAutoRaise(true);
        button->setCursor(Qt::ArrowCursor);
        return button;
    }
    void place(const QWidget *edit)
    {
        const int height = (edit->height() - 4) / 2;
        up->setGeometry(2, 2, 16, height);
        down->setGeometry(2, 2 + height, 16, height);
    }
};

struct TSmartEdit_ZLM::Private {
    Kind kind = Text;
    int maxLength = 50;
    double minimum = 0;
    double maximum = std::numeric_limits<double>::max();
    bool spin = false;
    CodeForm codeForm = AsTyped;
    SpinButtons *spinButtons = nullptr;
    double spinMinimum = std::numeric_limits<double>::lowest();
    double spinMaximum = std::numeric_limits<double>::max();
    bool byProgram = false; // the text under way comes from the program
    bool typed = false;     // the user changed the text since the program set it
    QString old;            // the text before the change under way
    TypingRule rule;

    bool isNumber() const { return kind != Text; }
    bool takeText(TSmartEdit_ZLM *edit, QString &text, int &caret);
    bool takeNumber(TSmartEdit_ZLM *edit, QString &text, int &caret);
    bool takeForm(TSmartEdit_ZLM *edit, QString &text, int &caret);
};

namespace {

// Sees every change, however it came (keys, paste, drop, input method), before it is shown.
class TypingGate : public QValidator {
public:
    TypingGate(QObject *parent, std::function<bool(QString &, int &)> take)
        : QValidator(parent), m_take(std::move(take))
    {
    }
    State validate(QString &text, int &caret) const override
    {
        return m_take(text, caret) ? Acceptable : Invalid;
    }

private:
    std::function<bool(QString &, int &)> m_take;
};

} // namespace

bool TSmartEdit_ZLM::Private::takeText(TSmartEdit_ZLM *edit, QString &text, int &caret)
{
    text = oneLine(text, caret);
    const int limit = std::max(maxLength, countCharacters(old));
    const int excess = countCharacters(text) - limit;
    if (excess <= 0)
        return true;
    const auto same = std::mismatch(text.cbegin(), text.cend(), old.cbegin(), old.cend()).first;
    const qsizetype inserted = caret - (same - text.cbegin());
    cutBefore(text, caret, excess);
    if (inserted > 2) // more than a key's worth: it was pasted
        edit->Hint(u"متن از %1 نویسه بلندتر بود و دنباله آن بریده شد"_s.arg(maxLength));
    return text != old;
}

bool TSmartEdit_ZLM::Private::takeNumber(TSmartEdit_ZLM *edit, QString &text, int &caret)
{
    const bool pasted = text.size() - old.size() > 1;
    int plainCaret = caret;
    const auto plain = NumberTyping::plain(text, plainCaret, kind != Integer, minimum < 0);
    if (!plain) {
        if (pasted)
            edit->Hint(u"آنچه چسبانده شد عدد نیست"_s);
        return false;
    }
    const QString oldPlain = NumberTyping::withoutSeparators(old);
    if (plain->size() > maxLength && plain->size() > oldPlain.size()) {
        if (pasted)
            edit->Hint(u"عدد از %1 رقم بلندتر است"_s.arg(maxLength));
        return false;
    }
    const double value = plain->toDouble();
    if (value > maximum && value > oldPlain.toDouble()) {
        edit->Hint(u"بزرگترین عدد %1 است"_s.arg(PersianText::grouped(FloatToStr_ZLM(maximum))));
        return false;
    }
    text = *plain;
    caret = plainCaret;
    if (kind == Money)
        text = NumberTyping::grouped(text, caret);
    return true;
}

bool TSmartEdit_ZLM::Private::takeForm(TSmartEdit_ZLM *edit, QString &text, int &caret)
{
    // A stored text may break the form; taking characters away from it is always allowed.
    if (text.size() < old.size() && old.startsWith(text.left(caret)) && old.endsWith(text.mid(caret)))
        return true;
    const bool pasted = text.size() - old.size() > 1;
    text = oneLine(text, caret);
    if (rule(text, caret) && text.size() <= maxLength)
        return true;
    if (pasted)
        edit->Hint(u"آنچه چسبانده شد در این خانه نمی گنجد"_s);
    return false;
}

TSmartEdit_ZLM::TSmartEdit_ZLM(QWidget *parent, Kind kind, int maxLength)
    : QLineEdit(parent), d(std::make_unique<Private>())
{
    d->kind = kind;
    d->maxLength = maxLength;
    if (kind == Integer)
        d->maximum = std::numeric_limits<int>::max();
    SetLeftToRight(d->isNumber());
    setValidator(new TypingGate(this, [this](QString &text, int &caret) {
        if (d->byProgram || text == d->old)
            return true;
        if (d->rule)
            return d->takeForm(this, text, caret);
        return d->isNumber() ? d->takeNumber(this, text, caret) : d->takeText(this, text, caret);
    }));
    connect(this, &QLineEdit::textEdited, this, [this] { d->typed = true; });
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) {
        d->old = text;
        Q_EMIT changed();
    });
}

TSmartEdit_ZLM::~TSmartEdit_ZLM() = default;

TSmartEdit_ZLM::Kind TSmartEdit_ZLM::kind() const
{
    return d->kind;
}

void TSmartEdit_ZLM::SetMaxLength(int characters)
{
    d->maxLength = characters;
}

int TSmartEdit_ZLM::MaxLength() const
{
    return d->maxLength;
}

void TSmartEdit_ZLM::SetRange(double minimum, double maximum)
{
    d->minimum = minimum;
    d->maximum = maximum;
}

void TSmartEdit_ZLM::SetSpin(bool on)
{
    d->spin = on;
    if (on && !d->spinButtons) {
        d->spinButtons = new SpinButtons(this);
        connect(d->spinButtons->up, &QToolButton::clicked, this, [this] { stepBy(1); });
        connect(d->spinButtons->down, &QToolButton::clicked, this, [this] { stepBy(-1); });
    } else if (!on) {
        delete d->spinButtons;
        d->spinButtons = nullptr;
    }
}

void TSmartEdit_ZLM::stepBy(int step)
{
    if (isReadOnly())
        return;
    SetText(FloatToStr_ZLM(std::clamp(GetText().toDouble() + step, std::max(d->minimum, d->spinMinimum),
                                      std::min(d->maximum, d->spinMaximum))));
    d->typed = true;
    selectAll();
}

void TSmartEdit_ZLM::SetSpinRange(double minimum, double maximum)
{
    SetSpin(true);
    d->spinMinimum = minimum;
    d->spinMaximum = maximum;
}

void TSmartEdit_ZLM::SetCodeForm(CodeForm form)
{
    d->codeForm = form;
}

bool TSmartEdit_ZLM::WasTyped() const
{
    return d->typed;
}

void TSmartEdit_ZLM::SetTypingRule(TypingRule rule)
{
    d->rule = std::move(rule);
    SetLeftToRight(true);
}

// The line edit takes its paragraph direction from the text, unless it is told by these keys.
void TSmartEdit_ZLM::SetLeftToRight(bool on)
{
    setLayoutDirection(on ? Qt::LeftToRight : Qt::RightToLeft);
    setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    QKeyEvent direction(QEvent::KeyPress, on ? Qt::Key_Direction_L : Qt::Key_Direction_R, Qt::NoModifier);
    QLineEdit::keyPressEvent(&direction);
}

QVariant TSmartEdit_ZLM::GetValue() const
{
    const QString text = GetText();
    if (text.isEmpty())
        return {};
    switch (d->kind) {
    case Integer:
        return text.toInt();
    case Number:
    case Money:
        return text.toDouble();
    case Text:
        break;
    }
    return text;
}

void TSmartEdit_ZLM::SetValue(const QVariant &value)
{
    if (value.isNull())
        SetText({});
    else if (d->isNumber() && value.typeId() == QMetaType::Double)
        SetText(FloatToStr_ZLM(value.toDouble()));
    else
        SetText(value.toString());
}

QString TSmartEdit_ZLM::GetText() const
{
    return d->isNumber() ? NumberTyping::settled(text()) : text();
}

void TSmartEdit_ZLM::SetText(const QString &text)
{
    if (!d->isNumber()) {
        int caret = 0;
        PutText(oneLine(text, caret));
        return;
    }
    int caret = 0;
    const QString plain = NumberTyping::plain(text, caret, d->kind != Integer, true).value_or(QString());
    PutText(d->kind == Money ? NumberTyping::grouped(plain, caret) : plain);
}

void TSmartEdit_ZLM::PutText(const QString &text)
{
    d->typed = false;
    d->byProgram = true;
    QLineEdit::setText(text);
    d->byProgram = false;
    // Of a text that is longer than its input, the beginning is what tells most.
    if (!hasFocus())
        home(false);
}

bool TSmartEdit_ZLM::IsEmpty() const
{
    return GetText().isEmpty();
}

bool TSmartEdit_ZLM::IsValid()
{
    Settle();
    return true;
}

void TSmartEdit_ZLM::Settle()
{
    if (!d->typed || (!d->isNumber() && d->codeForm == AsTyped))
        return;
    QString settled = d->isNumber()              ? NumberTyping::settled(text())
                      : d->codeForm == PlainCode ? PersianText::plainCode(text())
                                                 : PersianText::latinDigits(text());
    if (d->isNumber() && !settled.isEmpty() && settled.toDouble() < d->minimum)
        settled = FloatToStr_ZLM(d->minimum);
    if (settled == (d->isNumber() ? NumberTyping::withoutSeparators(text()) : text()))
        return;
    SetText(settled);
    d->typed = true; // another form of what the user typed
}

void TSmartEdit_ZLM::MarkWrong(bool wrong)
{
    if (property("wrongValue").toBool() == wrong)
        return;
    setProperty("wrongValue", wrong);
    update();
}

// Later, because a change is still under way when the hint is found necessary.
void TSmartEdit_ZLM::Hint(const QString &text)
{
    QTimer::singleShot(0, this, [this, text] { ShowTooltipMessage(text, this); });
}

void TSmartEdit_ZLM::keyPressEvent(QKeyEvent *event)
{
    // Alt with a letter is an access key; when no caption has it, it is no text either.
    if (event->modifiers() == Qt::AltModifier && !event->text().isEmpty() && event->text().at(0).isPrint()) {
        event->ignore();
        return;
    }
    if (d->spin && !isReadOnly() && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier &&
        (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        stepBy(event->key() == Qt::Key_Up ? 1 : -1);
        event->accept();
        return;
    }
    // A separator is no character of its own: Backspace and Delete take the digit behind it.
    if (d->kind == Money && !hasSelectedText()) {
        const int caret = cursorPosition();
        if (event->key() == Qt::Key_Backspace && caret > 0 && text().at(caret - 1) == u',')
            setCursorPosition(caret - 1);
        else if (event->key() == Qt::Key_Delete && caret < text().size() && text().at(caret) == u',')
            setCursorPosition(caret + 1);
    }
    QLineEdit::keyPressEvent(event);
}

void TSmartEdit_ZLM::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason ||
        event->reason() == Qt::MenuBarFocusReason)
        return;
    home(false);
    Settle();
    const QWidget *next = QApplication::focusWidget();
    if (next && next != this && next->window() == window() && !isAncestorOf(next) && window()->isVisible())
        Q_EMIT exited();
}

void GuardPercent(TSmartEdit_ZLM *edit, bool caretAtEnd)
{
    for (;;) {
        QString text = NumberTyping::withoutSeparators(edit->text());
        const qsizetype oldLength = text.size();
        if (oldLength < 3 || StrToFloat_ZLM(text) <= 100)
            return;
        text.remove(2, 1);
        edit->SetText(text);
        edit->setCursorPosition(caretAtEnd ? int(edit->text().size()) : int(oldLength - 1));
    }
}
