#include "app/Tour.h"

#include "app/MainWindow.h"
#include "app/TourScript.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTextStream>
#include <QTimer>

#include <memory>
#include <optional>

namespace {

const int stepMilliseconds = 40;
const int pictureMilliseconds = 200; // searches that run while typing are over by then
const int patienceMilliseconds = 10000;

void pass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void sendKey(QWidget *widget, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(widget, &event);
    }
}

/// Goes through the steps of one entry while its screens are open. Every step but the first runs inside the modal
/// loop that an earlier one began.
class TWalk : public QObject {
public:
    TWalk(const QList<TTourStep> &steps, std::function<void(QWidget *, const QString &)> picture,
          std::function<void(const QString &)> message, std::function<bool()> paused)
        : m_steps(steps), m_picture(std::move(picture)), m_message(std::move(message)),
          m_paused(std::move(paused))
    {
        next(0);
    }
    /// What went wrong; empty when all steps were done.
    QString problem() const
    {
        if (!m_problem.isEmpty() || m_at >= m_steps.size())
            return m_problem;
        return QStringLiteral("it ended before '%1'").arg(m_steps.at(m_at).what);
    }

private:
    void next(int milliseconds)
    {
        QTimer::singleShot(milliseconds, this, [this] { step(); });
    }
    void step()
    {
        if (m_paused()) {
            next(stepMilliseconds);
            return;
        }
        QWidget *screen = QApplication::activeModalWidget();
        if (m_at >= m_steps.size() || !m_problem.isEmpty()) {
            leave(screen);
            return;
        }
        const TTourStep now = m_steps.at(m_at);
        if (now.action == TTourStep::Await) {
            if (screen && screen->objectName() == now.what) {
                ++m_at;
                m_patience.reset();
            } else if (!m_patience) {
                m_patience.emplace(patienceMilliseconds);
            } else if (m_patience->hasExpired()) {
                m_problem = QStringLiteral("the screen %1 did not come up").arg(now.what);
            }
            next(stepMilliseconds);
            return;
        }
        if (!screen) {
            m_problem = QStringLiteral("no screen is open for '%1'").arg(now.what);
            return;
        }
        if (now.action == TTourStep::Picture && !m_waited) {
            m_waited = true;
            next(pictureMilliseconds);
            return;
        }
        m_waited = false;
        ++m_at;
        // Scheduled first: what a key opens returns only when it closes.
        next(stepMilliseconds);
        act(screen, now);
    }
    void act(QWidget *screen, const TTourStep &now)
    {
        QWidget *widget = screen;
        if (now.action == TTourStep::Click || now.action == TTourStep::Type) {
            widget = screen->findChild<QWidget *>(now.what);
            if (!widget) {
                m_problem = QStringLiteral("%1 has no %2").arg(screen->objectName(), now.what);
                return;
            }
        }
        switch (now.action) {
        case TTourStep::Picture:
            m_picture(screen, now.what);
            break;
        case TTourStep::Message:
            m_message(now.what);
            break;
        case TTourStep::Press: {
            const QKeyCombination key = QKeySequence(now.what)[0];
            QWidget *focus = screen->focusWidget() ? screen->focusWidget() : screen;
            sendKey(focus, key.key(), key.keyboardModifiers(), {});
            break;
        }
        case TTourStep::Click:
            if (auto *button = qobject_cast<QAbstractButton *>(widget))
                button->click();
            break;
        case TTourStep::Type:
            widget->setFocus();
            sendKey(widget, Qt::Key_A, Qt::ControlModifier, {});
            for (const QChar letter : now.text)
                sendKey(widget, Qt::Key_unknown, Qt::NoModifier, letter);
            break;
        case TTourStep::Await:
            break;
        }
    }
    /// Closes what is still open, the topmost first.
    void leave(QWidget *screen)
    {
        if (!screen)
            return;
        next(stepMilliseconds);
        if (auto *dialog = qobject_cast<QDialog *>(screen))
            dialog->reject();
        else
            screen->close();
    }

    QList<TTourStep> m_steps;
    std::function<void(QWidget *, const QString &)> m_picture;
    std::function<void(const QString &)> m_message;
    std::function<bool()> m_paused; ///< while a message is shown
    qsizetype m_at = 0;
    bool m_waited = false;
    std::optional<QDeadlineTimer> m_patience;
    QString m_problem;
};

} // namespace

/// Answers every message by itself: a tour waits for nobody. The one that a step asks for is shown first.
struct TTour::TMessages : TMessageService {
    explicit TMessages(TTour &tour) : m_tour(tour) { SetMessageService(this); }
    ~TMessages() override { SetMessageService(nullptr); }

    TAnswer show(const TMessage &message) override
    {
        if (message.shape != TMessageShape::Balloon)
            m_tour.say(QStringLiteral("message: ") + QString(message.text).replace(u'\n', u' '));
        if (!pictureName.isEmpty())
            showReally(message, std::exchange(pictureName, {}));
        if (message.operation == QLatin1String("MsgNotSaved"))
            return TAnswer::No;
        return message.buttons == TMessageButtons::Ok ? TAnswer::Ok : TAnswer::Yes;
    }
    void showReally(const TMessage &message, const QString &name)
    {
        QTimer::singleShot(pictureMilliseconds, &m_timers, [this, name] {
            QWidget *window = QApplication::activeModalWidget();
            if (!window)
                return;
            m_tour.picture(window, name);
            window->close();
        });
        isShown = true;
        SetMessageService(nullptr);
        MessageService().show(message);
        SetMessageService(this);
        isShown = false;
    }

    QString pictureName;
    bool isShown = false;

private:
    TTour &m_tour;
    QObject m_timers;
};

TTour::TTour(TSession &session, const QString &folder, QTextStream &out)
    : m_session(session), m_folder(folder), m_out(out)
{
}

void TTour::say(const QString &text)
{
    m_out << text << Qt::endl;
}

void TTour::picture(QWidget *window, const QString &name)
{
    const QString file = m_folder.filePath(name + QStringLiteral(".png"));
    if (window->grab().save(file)) {
        say(QStringLiteral("  ") + file);
    } else {
        m_sound = false;
        say(QStringLiteral("  cannot write ") + file);
    }
}

bool TTour::visit(const QString &name, const QList<TTourStep> &steps, const std::function<void()> &open)
{
    say(name);
    TWalk walk(
        steps, [this](QWidget *window, const QString &file) { picture(window, file); },
        [this](const QString &file) { m_messages->pictureName = file; },
        [this] { return m_messages->isShown; });
    open();
    if (walk.problem().isEmpty())
        return true;
    say(QStringLiteral("  ") + walk.problem());
    return false;
}

bool TTour::run()
{
    if (!m_folder.mkpath(QStringLiteral("."))) {
        say(QStringLiteral("cannot create the folder ") + m_folder.path());
        return false;
    }
    TMessages messages(*this);
    m_messages = &messages;
    TMain_FRM window(m_session);
    window.show();
    window.activateWindow();
    pass(pictureMilliseconds);
    picture(&window, QStringLiteral("main-window"));

    int skipped = 0;
    for (const TEntryPoint &entry : EntryPoints::all()) {
        const QString name = QLatin1String(entry.name);
        if (!m_session.module().has(entry)) {
            say(name + QStringLiteral(": skipped, ") + m_session.module().errorText());
            ++skipped;
            continue;
        }
        m_sound &= visit(name, TourScript::of(entry.name), [&] { window.OpenEntry(entry); });
    }
    for (QAction *item : window.findChildren<QAction *>()) {
        const QList<TTourStep> steps = TourScript::ofItem(item->objectName());
        if (!steps.isEmpty())
            m_sound &= visit(item->objectName(), steps, [&] { item->trigger(); });
    }
    say(QStringLiteral("pictures in %1, %2 entries skipped").arg(m_folder.absolutePath()).arg(skipped));
    return m_sound;
}
