#include "host/Message_ZLM/WindowWait.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QFrame>
#include <QLabel>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

const int lookEvery = 20; // ms

/// The window that a person looks at, but for the panel itself; null when none is on the screen.
QWidget *frontWindow(const QWidget *panel)
{
    for (QWidget *window : {QApplication::activeModalWidget(), QApplication::activeWindow()}) {
        if (window && window != panel && window->isVisible())
            return window;
    }
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window != panel && window->isVisible() &&
            (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog))
            return window;
    }
    return nullptr;
}

} // namespace

TWindowWait::TWindowWait(int panelAfter) : m_panelAfter(panelAfter) {}

TWindowWait::~TWindowWait() = default;

void TWindowWait::wait(TAwaited &awaited)
{
    // Without events, and for another thread, there is nothing but to block; so within a wait.
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()) || m_loop ||
        QThread::currentThread() != qApp->thread() || QCoreApplication::closingDown())
        return TAnswerWait::wait(awaited);
    if (!m_dispatcher) {
        m_dispatcher = QAbstractEventDispatcher::instance();
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
                [this] { m_turned.start(); });
    }
    // Most answers of a near server come before anybody could see that the windows stand still.
    const qint64 pause = m_turned.isValid() ? longestPause - m_turned.elapsed() : 0;
    if (!m_began.isValid())
        m_began.start();
    if (pause <= 0 || !awaited.wait(int(pause)))
        turn(awaited);
    // Reached when the program turns to its events again: what the user asked for is done.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_loop)
                rest();
        },
        Qt::QueuedConnection);
}

void TWindowWait::turn(TAwaited &awaited)
{
    QEventLoop loop;
    m_loop = &loop;
    m_input.hold();
    const auto back = qScopeGuard([&] {
        m_loop = nullptr;
        m_input.setEscape({});
        m_input.release();
        awaited.whenAnswered({});
        m_turned.start();
    });
    awaited.whenAnswered([this] {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_loop)
                    m_loop->quit();
            },
            Qt::QueuedConnection);
    });
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, this, [&] { look(awaited); });
    ticks.start(lookEvery);
    look(awaited);
    while (!awaited.isOver()) {
        if (loop.exec() == 0)
            continue;
        // The program ends; no window lives on that could wait.
        awaited.giveUp();
        awaited.wait(lookEvery);
    }
}

void TWindowWait::look(TAwaited &awaited)
{
    if (awaited.isOver())
        m_loop->quit();
    else if (m_began.elapsed() >= m_panelAfter)
        showPanel(awaited);
    if (m_panel)
        m_input.setEscape([&awaited] { awaited.giveUp(); });
}

void TWindowWait::showPanel(const TAwaited &awaited)
{
    QWidget *window = frontWindow(m_panel);
    if (!m_panel || m_panel->parentWidget() != window) {
        delete m_panel;
        m_panel = new QFrame(window, window ? Qt::Widget : Qt::ToolTip | Qt::WindowDoesNotAcceptFocus);
        m_panel->setObjectName(u"Wait_PNL"_s);
        m_panel->setAttribute(
            Qt::WA_ShowWithoutActivating); // never the active window, which screens stand on
        m_panel->setFrameShape(QFrame::StyledPanel);
        m_panel->setAutoFillBackground(true);
        m_panel->setBackgroundRole(QPalette::ToolTipBase);
        m_panel->setForegroundRole(QPalette::ToolTipText);
        m_panel->setLayoutDirection(Qt::RightToLeft);
        auto *column = new QVBoxLayout(m_panel);
        column->setContentsMargins(24, 14, 24, 14);
        auto *text = new QLabel(m_panel);
        text->setObjectName(u"Wait_LBL"_s);
        text->setAlignment(Qt::AlignCenter);
        text->setForegroundRole(QPalette::ToolTipText);
        text->setTextFormat(Qt::PlainText);
        column->addWidget(text);
    }
    const QString doing = awaited.doing();
    const QString text = awaited.isGivenUp()
                             ? u"این کار کنار گذاشته می شود…"_s
                             : (doing.isEmpty() ? u"در انتظار پاسخ سرور…"_s : doing) +
                                   (window ? u"\nبرای چشم پوشی از این کار Esc را بزنید."_s : QString());
    auto *label = m_panel->findChild<QLabel *>(u"Wait_LBL"_s);
    if (label->text() == text && m_panel->isVisible())
        return;
    label->setText(text);
    m_panel->adjustSize();
    if (window)
        m_panel->move(window->rect().center() - m_panel->rect().center());
    m_panel->show();
    m_panel->raise();
}

void TWindowWait::rest()
{
    m_began.invalidate();
    delete m_panel;
}
