#include "host/Component_ZLM/AccessKeys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>

namespace {

/// The other form of the letter; null for a letter that has one form.
QChar otherForm(QChar letter)
{
    switch (letter.unicode()) {
    case 0x064A: // Arabic yeh
    case 0x0649: // alef maksura, the yeh of some layouts
        return QChar(0x06CC);
    case 0x06CC:
        return QChar(0x064A);
    case 0x0643: // Arabic kaf
        return QChar(0x06A9);
    case 0x06A9:
        return QChar(0x0643);
    default:
        return {};
    }
}

QChar letterOf(const QKeyEvent *event)
{
    if (event->text().size() == 1)
        return event->text().at(0);
    return event->key() > 0 && event->key() < 0xFFFF ? QChar(ushort(event->key())) : QChar();
}

bool hasAccessKey(const QString &caption, QChar letter)
{
    return QKeySequence::mnemonic(caption) == QKeySequence(int(Qt::ALT) | letter.unicode());
}

/// Does what the access key of a widget does; false when the widget has another one or cannot be reached.
bool reach(QWidget *widget, QChar letter)
{
    if (!widget->isVisible() || !widget->isEnabled())
        return false;
    if (auto *label = qobject_cast<QLabel *>(widget)) {
        QWidget *input = label->buddy();
        if (!input || !input->isEnabled() || !input->isVisible() || !hasAccessKey(label->text(), letter))
            return false;
        input->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    auto *button = qobject_cast<QAbstractButton *>(widget);
    if (!button || !hasAccessKey(button->text(), letter))
        return false;
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
}

} // namespace

AccessKeys::AccessKeys(QObject *parent) : QObject(parent) {}

// An access key that a caption has as typed never comes here: it is taken as a shortcut before, unless the
// keyboard names no key for the letter.
bool AccessKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() != Qt::AltModifier)
        return false;
    const QChar typed = letterOf(key);
    QList<QChar> letters;
    if (key->key() == Qt::Key_unknown && typed.isLetter())
        letters << typed;
    if (const QChar other = otherForm(typed); !other.isNull())
        letters << other;
    if (letters.isEmpty())
        return false;
    const auto widgets = static_cast<QWidget *>(watched)->window()->findChildren<QWidget *>();
    for (const QChar letter : letters) {
        for (QWidget *widget : widgets) {
            if (reach(widget, letter))
                return true;
        }
    }
    return false;
}
