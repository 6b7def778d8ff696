#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

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

// Ctrl+Tab and Ctrl+Shift+Tab: the next page, the one before.
bool isPageStep(const QKeyEvent *event)
{
    return (event->modifiers() & Qt::ControlModifier) &&
           (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab);
}

} // namespace

// Sees the keys of a screen's inputs before they do, and the clicks on its pages' tabs.
class TBaseForm::TKeyFilter : public QObject {
public:
    explicit TKeyFilter(TBaseForm *form) : QObject(form), m_form(form) { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
            return isOwn(watched) && keyPress(static_cast<QKeyEvent *>(event));
        case QEvent::MouseButtonPress:
            return isTabBar(watched) && clickTab(static_cast<QMouseEvent *>(event));
        case QEvent::Wheel: // a passing wheel does not turn the page
            return isTabBar(watched);
        default:
            return false;
        }
    }

private:
    bool isOwn(QObject *watched) const
    {
        return watched->isWidgetType() && m_form->isVisible() &&
               static_cast<QWidget *>(watched)->window() == m_form;
    }
    bool isTabBar(QObject *watched) const { return m_form->m_pages && watched == m_form->m_pages->tabBar(); }
    bool keyPress(QKeyEvent *key)
    {
        if (isPageStep(key) && m_form->m_pages) {
            m_form->stepPage(key->key() == Qt::Key_Backtab || (key->modifiers() & Qt::ShiftModifier) ? -1
                                                                                                     : 1);
            return true;
        }
        return isScreenKey(key) && (m_form->HandleKey(key) || m_form->pressButton(key));
    }
    // True: the page did not turn, so the tab bar must not turn it either.
    bool clickTab(const QMouseEvent *click)
    {
        QTabWidget *pages = m_form->m_pages;
        const int page = pages->tabBar()->tabAt(click->position().toPoint());
        if (click->button() != Qt::LeftButton || page < 0)
            return false;
        m_form->turnPage(page, false);
        return pages->currentIndex() != page;
    }
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
        const QString name = shortCaption.isEmpty() ? caption : shortCaption + u" (%1)"_s.arg(key);
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
    turnPage(page, true);
    return true;
}

void TBaseForm::stepPage(int step)
{
    const int count = m_pages->count();
    int page = m_pages->currentIndex();
    do
        page = (page + step + count) % count;
    while (page != m_pages->currentIndex() && !(m_pages->isTabVisible(page) && m_pages->isTabEnabled(page)));
    turnPage(page, true);
}

// The input is left before the page turns: what leaving it checks may give it the focus back, and in the middle of a turn
// Qt would put the focus on a page that is hidden again.
void TBaseForm::turnPage(int page, bool focusFollows)
{
    if (page == m_pages->currentIndex() || !m_pages->isTabVisible(page) || !m_pages->isTabEnabled(page))
        return;
    const auto holdsFocus = [this](const QWidget *shown) {
        const QWidget *focus = focusWidget();
        return shown && focus && shown->isAncestorOf(focus);
    };
    if (const QWidget *left = m_pages->currentWidget(); holdsFocus(left)) {
        m_pages->tabBar()->setFocus(Qt::OtherFocusReason);
        if (holdsFocus(left))
            return;
        focusFollows = true;
    }
    m_pages->setCurrentIndex(page);
    // A page that its guard refuses has turned back by now; the focus follows the page that is shown.
    QWidget *shown = m_pages->currentWidget();
    if (!focusFollows || holdsFocus(shown))
        return;
    QWidget *next = shown->focusWidget();
    const auto takesFocus = [&] {
        return shown->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) && next->isEnabled() &&
               next->isVisibleTo(this);
    };
    if (!next || !takesFocus())
        for (next = m_pages->nextInFocusChain(); next != m_pages && !takesFocus();
             next = next->nextInFocusChain())
            ;
    if (next != m_pages)
        next->setFocus(Qt::TabFocusReason);
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
