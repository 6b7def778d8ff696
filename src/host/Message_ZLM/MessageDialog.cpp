#include "host/Message_ZLM/MessageDialog.h"

#include "host/Utility_ZLM/PersianText.h"

#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace {

struct ButtonKind {
    TAnswer answer;
    QMessageBox::StandardButton button;
    const char *name;
    QString caption;
};

const QList<ButtonKind> &kinds()
{
    static const QList<ButtonKind> all{
        {TAnswer::Ok, QMessageBox::Ok, "Ok_BTN", u"&تایید"_s},
        {TAnswer::Yes, QMessageBox::Yes, "Yes_BTN", u"&بله"_s},
        {TAnswer::No, QMessageBox::No, "No_BTN", u"&خیر"_s},
        {TAnswer::Cancel, QMessageBox::Cancel, "Cancel_BTN", u"&انصراف"_s},
    };
    return all;
}

QMessageBox::StandardButtons buttonsOf(TMessageButtons buttons)
{
    switch (buttons) {
    case TMessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case TMessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case TMessageButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon iconOf(TMessageIconType type)
{
    switch (type) {
    case miQuestion:
        return QMessageBox::Question;
    case miError:
        return QMessageBox::Critical;
    case miWarning:
        return QMessageBox::Warning;
    case miInformation:
        break;
    }
    return QMessageBox::Information;
}

} // namespace

TMessageDialog::TMessageDialog(const TMessage &message, QWidget *owner) : QMessageBox(owner)
{
    setObjectName(u"Message_FRM"_s);
    setLayoutDirection(Qt::RightToLeft);
    setWindowTitle(message.title);
    // A caption may look like a mark-up.
    setTextFormat(Qt::PlainText);
    setText(message.text);
    setIcon(iconOf(message.icon));
    setWindowModality(Qt::ApplicationModal);
    addButtons(message);
}

void TMessageDialog::addButtons(const TMessage &message)
{
    setStandardButtons(buttonsOf(message.buttons));
    for (const ButtonKind &kind : kinds()) {
        auto *button = qobject_cast<QPushButton *>(this->button(kind.button));
        if (!button)
            continue;
        button->setObjectName(QString::fromLatin1(kind.name));
        button->setText(kind.caption);
        button->setIcon({});
        if (kind.answer == message.defaultAnswer)
            setDefaultButton(button);
    }
    setEscapeButton(message.buttons == TMessageButtons::YesNoCancel ? QMessageBox::Cancel
                    : message.buttons == TMessageButtons::YesNo     ? QMessageBox::No
                                                                    : QMessageBox::Ok);
}

TAnswer TMessageDialog::answer() const
{
    const QAbstractButton *pressed = clickedButton() ? clickedButton() : escapeButton();
    for (const ButtonKind &kind : kinds()) {
        if (button(kind.button) == pressed)
            return kind.answer;
    }
    return TAnswer::Cancel;
}

void TMessageDialog::keyPressEvent(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (event->text().size() == 1 && (modifiers == Qt::NoModifier || modifiers == Qt::AltModifier)) {
        const QString typed = PersianText::fold(event->text());
        for (QAbstractButton *button : buttons()) {
            if (!typed.trimmed().isEmpty() && PersianText::fold(button->text()).startsWith(u'&' + typed)) {
                button->click();
                return;
            }
        }
    }
    QMessageBox::keyPressEvent(event);
}

TAnswer TMessageDialog::ask(const TMessage &message, QWidget *owner)
{
    // The owner may be destroyed while the message is open, and its children with it.
    const QPointer<TMessageDialog> dialog = new TMessageDialog(message, owner);
    dialog->exec();
    if (!dialog)
        return message.buttons == TMessageButtons::YesNo ? TAnswer::No : TAnswer::Cancel;
    const TAnswer answer = dialog->answer();
    delete dialog.data();
    return answer;
}
