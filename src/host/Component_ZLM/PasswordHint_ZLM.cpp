#include "host/Component_ZLM/PasswordHint_ZLM.h"

#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

TPasswordHint_ZLM::TPasswordHint_ZLM(QLineEdit *input, QWidget *parent) : QLabel(parent), m_input(input)
{
    setObjectName(input->objectName() + "_Hint_LBL"_L1);
    setWordWrap(true);
    setStyleSheet(u"color: #b00020;"_s);
    hide();
    const QString rule =
        u"حروف گذرواژه همان گونه که تایپ می شوند به شمار می آیند: حرف بزرگ و کوچک، و فارسی و لاتین، یکی نیستند."_s;
    input->setToolTip(rule);
    input->setAccessibleDescription(rule);
    input->installEventFilter(this);
    connect(input, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty()) {
            m_persian = false;
            showState();
        }
    });
}

bool TPasswordHint_ZLM::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_input && event->type() == QEvent::KeyPress)
        keyPressed(static_cast<QKeyEvent *>(event));
    return QLabel::eventFilter(watched, event);
}

void TPasswordHint_ZLM::keyPressed(const QKeyEvent *event)
{
    const QString text = event->text();
    if (event->key() == Qt::Key_CapsLock) {
        m_capsLock = false; // whichever way it was turned: the next letter shows it
    } else if (text.size() == 1 && text.at(0).isLetter()) {
        const QChar letter = text.at(0);
        const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
        m_persian = letter.script() == QChar::Script_Arabic;
        if (letter.isUpper() || letter.isLower())
            m_capsLock = letter.isUpper() != shift;
    }
    showState();
}

void TPasswordHint_ZLM::showState()
{
    QStringList told;
    if (m_capsLock)
        told << u"کلید Caps Lock روشن است"_s;
    if (m_persian)
        told << u"صفحه کلید فارسی است"_s;
    setText(told.join(u" - "_s));
    setVisible(!told.isEmpty());
}
