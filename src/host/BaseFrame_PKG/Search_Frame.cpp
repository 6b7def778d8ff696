#include "host/BaseFrame_PKG/Search_Frame.h"

#include "host/database/AnswerWait.h"

#include <QTimer>

namespace {
constexpr int WaitMilliseconds = 80;
}

TSearch_Frame::TSearch_Frame(QWidget *parent) : QWidget(parent), m_wait(new QTimer(this))
{
    setLayoutDirection(Qt::RightToLeft);
    m_wait->setSingleShot(true);
    m_wait->setInterval(WaitMilliseconds);
    connect(m_wait, &QTimer::timeout, this, [this] { WhenAnswered(this, [this] { ChangedNow(); }); });
}

void TSearch_Frame::SetManager(TZelmoSearchManager *manager)
{
    m_wait->stop();
    m_manager = manager;
}

void TSearch_Frame::SetActive(bool active)
{
    m_active = active;
    m_wait->stop();
    if (m_manager)
        SetConditions(active);
}

void TSearch_Frame::ChangedSoon()
{
    if (m_manager)
        m_wait->start();
}

void TSearch_Frame::ChangedNow()
{
    m_wait->stop();
    if (m_manager && SetConditions(m_active))
        Q_EMIT searchChanged();
}
