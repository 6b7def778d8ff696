#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

bool isEnter(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

QKeySequence sequenceOf(const QKeyEvent *event)
{
    const int key = event->key() == Qt::Key_Enter ? int(Qt::Key_Return) : event->key();
    return QKeySequence(QKeyCombination(event->modifiers() & ~Qt::KeypadModifier, Qt::Key(key)));
}

// Keys that belong to the screen whatever input has the focus: a combo box would open on F4 and jump on Ctrl+1.
bool isScreenKey(const QKeyEvent *event)
{
    if (event->key() >= Qt::Key_F1 && event->key() <= Qt::Key_F12)
        return !(event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier);
    return (event->modifiers() & Qt::ControlModifier) && event->key() >= Qt::Key_1 &&
           event->key() <= Qt::Key_9;
}

} // namespace

// Sees the keys of a screen's inputs before they do.
class TBaseForm::TKeyFilter : public QObject {
public:
    explicit TKeyFilter(TBaseForm *form) : QObject(form), m_form(form) { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !watched->isWidgetType() || !m_form->isVisible() ||
            static_cast<QWidget *>(watched)->window() != m_form)
            return false;
        auto *key = static_cast<QKeyEvent *>(event);
        return isScreenKey(key) && (m_form->HandleKey(key) || m_form->pressButton(key));
    }

private:
    TBaseForm *m_form;
};

TBaseForm::TBaseForm(QWidget *parent)
    : QDialog(parent ? parent : QApplication::activeWindow()), m_body(new QVBoxLayout),
      m_footer(new QHBoxLayout)
{
    setLayoutDirection(Qt::RightToLeft);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto *outer = new QVBoxLayout(this);
    outer->addLayout(m_body, 1);
    outer->addLayout(m_footer);
    m_footer->addStretch(1);
    new TKeyFilter(this);
}

TBaseForm::~TBaseForm() = default;

void TBaseForm::nameItself()
{
    if (objectName().isEmpty())
        setObjectName(QString::fromLatin1(metaObject()->className()));
}

void TBaseForm::setVisible(bool visible)
{
    if (visible && !m_shownBefore) {
        m_shownBefore = true;
        nameItself();
        LayoutStore::restoreWindow(this);
    }
    QDialog::setVisible(visible);
}

int TBaseForm::exec()
{
    nameItself();
    return QDialog::exec();
}

void TBaseForm::done(int result)
{
    if (m_shownBefore)
        LayoutStore::saveWindow(this);
    QDialog::done(result);
}

TSmartButton_ZLM *TBaseForm::AddButton(const QString &objectName, const QString &caption, const QString &key,
                                       const QString &shortCaption)
{
    auto *button = new TSmartButton_ZLM(caption, this, shortCaption);
    button->setObjectName(objectName);
    if (!key.isEmpty()) {
        AddKey(key, button);
        const QString name =
            shortCaption.isEmpty() ? caption : shortCaption + QStringLiteral(" (%1)").arg(key);
        button->setToolTip(QString(name).remove(u'&'));
    }
    m_footer->insertWidget(m_footer->count() - 1, button);
    return button;
}

void TBaseForm::AddKey(const QString &key, TSmartButton_ZLM *button)
{
    const bool enter = key.compare(u"Enter", Qt::CaseInsensitive) == 0;
    m_keys.append({enter ? QKeySequence(Qt::Key_Return) : QKeySequence(key), button});
}

bool TBaseForm::HandleKey(QKeyEvent *event)
{
    if (!m_pages || event->modifiers() != Qt::ControlModifier)
        return false;
    const int page = event->key() - Qt::Key_1;
    if (page < 0 || page >= m_pages->count() || page > 8)
        return false;
    if (m_pages->isTabVisible(page) && m_pages->isTabEnabled(page) && page != m_pages->currentIndex()) {
        m_pages->setCurrentIndex(page);
        // A page that its guard refuses has turned back by now; the focus follows the page that is shown.
        QWidget *shown = m_pages->currentWidget();
        if (QWidget *focus = focusWidget(); shown && (!focus || !shown->isAncestorOf(focus))) {
            for (QWidget *next = shown->nextInFocusChain(); next && shown->isAncestorOf(next);
                 next = next->nextInFocusChain()) {
                if ((next->focusPolicy() & Qt::TabFocus) && next->isEnabled() && next->isVisibleTo(this)) {
                    next->setFocus(Qt::TabFocusReason);
                    break;
                }
            }
        }
    }
    return true;
}

bool TBaseForm::pressButton(QKeyEvent *event)
{
    const QKeySequence sequence = sequenceOf(event);
    for (const auto &[key, button] : std::as_const(m_keys)) {
        if (key != sequence || !button->isVisibleTo(this))
            continue;
        // A key held down presses once.
        if (button->isEnabled() && !event->isAutoRepeat())
            button->click();
        return true;
    }
    return false;
}

void TBaseForm::EnterKey()
{
    const QWidget *focus = focusWidget();
    if (!qobject_cast<const QAbstractItemView *>(focus))
        focusNextPrevChild(true);
}

void TBaseForm::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    if (!isScreenKey(event) && HandleKey(event))
        return;
    if (isEnter(event)) {
        auto *button = qobject_cast<QAbstractButton *>(focusWidget());
        if (button && !qobject_cast<QCheckBox *>(button) && !qobject_cast<QRadioButton *>(button)) {
            if (!event->isAutoRepeat())
                button->click();
            return;
        }
    }
    if (pressButton(event))
        return;
    if (isEnter(event) && !(event->modifiers() & ~Qt::KeypadModifier))
        EnterKey();
    else if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        reject();
    else
        event->ignore();
}

QVariant TBaseForm::ValuePart(const QVariant &value, int index)
{
    if (value.typeId() != QMetaType::QString)
        return index == 0 ? value : QVariant();
    const QStringList pieces = value.toString().split(u';');
    return index >= 0 && index < pieces.size() ? QVariant(pieces.at(index)) : QVariant();
}
