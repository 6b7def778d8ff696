#include "host/BaseFrame_PKG/Tab_Search_Frame.h"

#include "host/BaseFrame_PKG/Search_Frame.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TTab_Search_Frame::TTab_Search_Frame(QWidget *parent)
    : QWidget(parent), m_tabs(new QTabBar(this)), m_pages(new QStackedWidget(this))
{
    setObjectName(u"Tab_Search"_s);
    setLayoutDirection(Qt::RightToLeft);
    m_tabs->setObjectName(u"Search_TAB"_s);
    m_tabs->setExpanding(false);
    m_tabs->setDrawBase(true);
    m_pages->hide();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_tabs);
    column->addWidget(m_pages);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        turn(tab);
        Q_EMIT tabChanged(tab);
    });
}

void TTab_Search_Frame::AddTab(const QString &caption, QWidget *page)
{
    if (page)
        m_pages->show();
    m_pages->addWidget(page ? page : new QWidget);
    const QSignalBlocker quiet(m_tabs);
    m_tabs->addTab(caption);
    turn(m_tabs->currentIndex());
}

void TTab_Search_Frame::init(const QStringList &captions)
{
    const QSignalBlocker quiet(m_tabs);
    while (m_tabs->count() > 0) {
        m_tabs->removeTab(0);
        delete m_pages->widget(0);
    }
    for (const QString &caption : captions)
        AddTab(caption);
    m_tabs->setCurrentIndex(0);
}

int TTab_Search_Frame::CurrentTab() const
{
    return m_tabs->currentIndex();
}

void TTab_Search_Frame::SetCurrentTab(int tab)
{
    m_tabs->setCurrentIndex(tab);
}

void TTab_Search_Frame::turn(int tab)
{
    m_pages->setCurrentIndex(tab);
    for (int i = 0; i < m_pages->count(); ++i)
        if (auto *frame = qobject_cast<TSearch_Frame *>(m_pages->widget(i)))
            frame->SetActive(i == tab);
}

bool TTab_Search_Frame::HandleKey(QKeyEvent *event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier)
        return false;
    const int tab = event->key() - Qt::Key_1;
    if (tab < 0 || tab > 8 || tab >= m_tabs->count())
        return false;
    SetCurrentTab(tab);
    return true;
}
