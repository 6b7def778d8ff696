#include "app/ServerWait.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/ChangeOver.h"
#include "host/database/Engine.h"

#include <QEventLoop>
#include <QLabel>
#include <QThreadPool>
#include <QTimer>
#include <QVBoxLayout>

#include <atomic>
#include <memory>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A connection that is tried where it keeps nobody waiting; one that is not waited for any more ends by itself.
struct TKnock {
    std::atomic<bool> done = false;
    std::optional<TDatabaseError> refusal;
};

std::shared_ptr<TKnock> knockAt(const QString &place)
{
    auto knock = std::make_shared<TKnock>();
    QThreadPool::globalInstance()->start([knock, place] {
        try {
            OpenOdbcEngine(place);
        } catch (const TDatabaseError &error) {
            knock->refusal = error;
        }
        knock->done = true;
    });
    return knock;
}

} // namespace

TServerWait::TServerWait(const TDatabaseChoice &choice) : m_place(choice.odbc), m_text(new QLabel(this))
{
    SetTitle(u"در انتظار سرور"_s);
    m_text->setObjectName(u"Text_LBL"_s);
    m_text->setWordWrap(true);
    Body()->addWidget(m_text);
    Body()->addStretch(1);
    TSmartButton_ZLM *exit = AddButton(u"EXit_BTN"_s, u"انصراف Esc"_s, u"Esc"_s);
    connect(exit, &QAbstractButton::clicked, this, &TServerWait::reject);
    connect(this, &QDialog::rejected, this, [this] { m_stopped = true; });
    setModal(true);
    resize(460, 180);
}

void TServerWait::spend(int milliseconds) const
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    // Before the window stands nothing keeps the user from those behind it.
    loop.exec(isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
}

void TServerWait::knock()
{
    const int often = 20;
    const auto knock = knockAt(m_place);
    while (!knock->done && !m_stopped)
        spend(often);
    if (!knock->done)
        throw TDatabaseError(TFault::ConnectionLost, u"given up by the user"_s);
    if (knock->refusal)
        throw TDatabaseError(*knock->refusal);
}

void TServerWait::Run(const std::function<void()> &work)
{
    TChangeOver::TSurroundings surroundings = TChangeOver::ordinary();
    surroundings.sleep = [this](int milliseconds) { spend(milliseconds); };
    surroundings.isStopped = [this] { return m_stopped; };
    surroundings.tell = [this](const TChangeOver::TWaiting &waiting) {
        const int second = 1000;
        m_text->setText(u"%1\n\nتلاش %2 بی نتیجه ماند؛ تا %3 ثانیه دیگر تلاش ادامه دارد."_s
                            .arg(TDatabaseError(waiting.fault, {}).userText())
                            .arg(waiting.tries)
                            .arg((waiting.untilGivingUp + second - 1) / second));
        show();
        activateWindow();
    };
    TChangeOver(surroundings).run([&] {
        knock();
        work();
    });
}
