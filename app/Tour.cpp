#include "app/Tour.h"

#include "app/Login_FRM.h"
#include "app/MainWindow.h"
#include "app/TourScript.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/LowMemory_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/RecoveryDialog_UNT.h"
#include "host/database/AnswerWait.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <memory>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

const int stepMilliseconds = 15;
const int pictureMilliseconds = 50;
const int typedMilliseconds = 200; // searches that run while typing are over by then
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
          std::function<void(const QString &)> message, std::function<bool()> paused,
          std::function<bool()> awaited)
        : m_steps(steps), m_picture(std::move(picture)), m_message(std::move(message)),
          m_paused(std::move(paused)), m_awaited(std::move(awaited))
    {
        // A message may be all that comes up.
        while (m_at < m_steps.size() && m_steps.at(m_at).action == TTourStep::Message)
            m_message(m_steps.at(m_at++).what);
        next(0);
    }
    /// What went wrong; empty when all steps were done.
    QString problem() const
    {
        if (!m_problem.isEmpty() || m_at >= m_steps.size())
            return m_problem;
        return u"it ended before '%1'"_s.arg(m_steps.at(m_at).what);
    }

private:
    void next(int milliseconds)
    {
        QTimer::singleShot(milliseconds, this, [this] { step(); });
    }
    void step()
    {
        if (m_paused() || AnswerWait().isWaiting()) {
            next(stepMilliseconds);
            return;
        }
        QWidget *screen = QApplication::activeModalWidget();
        if (m_at >= m_steps.size() && m_problem.isEmpty() && m_awaited() &&
            qobject_cast<QFileDialog *>(screen)) {
            acceptAgain(screen);
            return;
        }
        if (m_at >= m_steps.size() || !m_problem.isEmpty()) {
            leave(screen);
            return;
        }
        const TTourStep now = m_steps.at(m_at);
        if (now.action == TTourStep::Await) {
            if (screen && screen->isVisible() && screen->objectName() == now.what) {
                ++m_at;
                m_patience.reset();
                // A window manager gives the focus back when a screen closes; where there is none, the tour does.
                if (!screen->isActiveWindow())
                    screen->activateWindow();
            } else if (!m_patience) {
                m_patience.emplace(patienceMilliseconds);
            } else if (m_patience->hasExpired()) {
                m_problem = u"the screen %1 did not come up, %2 is there"_s.arg(
                    now.what, screen ? screen->objectName() : u"none"_s);
            }
            next(stepMilliseconds);
            return;
        }
        if (!screen) {
            m_problem = u"no screen is open for '%1'"_s.arg(now.what);
            return;
        }
        if (now.action == TTourStep::Picture && !m_waited) {
            m_waited = true;
            next(m_typed ? typedMilliseconds : pictureMilliseconds);
            return;
        }
        m_waited = false;
        m_typed = now.action == TTourStep::Type;
        ++m_at;
        // Scheduled first: what a key opens returns only when it closes.
        next(stepMilliseconds);
        act(screen, now);
    }
    /// The message that the steps ask for has not come, and the file dialog still stands: while it fills its list on a
    /// busy machine it may not take the key.
    void acceptAgain(QWidget *dialog)
    {
        if (!m_patience)
            m_patience.emplace(patienceMilliseconds);
        next(stepMilliseconds);
        if (m_patience->hasExpired())
            m_problem = u"%1 does not close"_s.arg(dialog->objectName());
        else
            QMetaObject::invokeMethod(dialog, "accept");
    }
    void act(QWidget *screen, const TTourStep &now)
    {
        QWidget *widget = screen;
        if (now.action == TTourStep::Click || now.action == TTourStep::Type) {
            widget = screen->findChild<QWidget *>(now.what);
            if (!widget) {
                m_problem = u"%1 has no %2"_s.arg(screen->objectName(), now.what);
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
            sendKey(focus, key.key(), key.keyboardModifiers(),
                    key.key() == Qt::Key_Space ? u" "_s : QString());
            break;
        }
        case TTourStep::Click:
            if (auto *button = qobject_cast<QAbstractButton *>(widget))
                button->click();
            break;
        case TTourStep::Type:
            widget->setFocus();
            if (!now.text.isEmpty())
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
    std::function<bool()> m_paused;  ///< while a message is shown
    std::function<bool()> m_awaited; ///< whether a message is still to come
    qsizetype m_at = 0;
    bool m_waited = false;
    bool m_typed = false;
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
        const bool dialog = message.shape != TMessageShape::Balloon;
        if (dialog)
            m_tour.say(u"message: "_s + QString(message.text).replace(u'\n', u' '));
        if (dialog && !pictureName.isEmpty())
            showReally(message, std::exchange(pictureName, {}));
        if (message.operation == "MsgNotSaved"_L1)
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
    : m_session(session), m_folder(QDir(folder).absolutePath()), m_out(out)
{
}

void TTour::say(const QString &text)
{
    m_out << text << Qt::endl;
}

void TTour::picture(QWidget *window, const QString &name)
{
    if (!MemoryToDraw()) {
        m_sound = false;
        return;
    }
    save(window->grab(), name, QLatin1String(window->metaObject()->className()));
}

void TTour::save(const QPixmap &picture, const QString &name, const QString &screen)
{
    const QString file = m_folder.filePath(name + u".png"_s);
    if (picture.save(file, "PNG", 0)) { // the smallest file
        say(u"  %1 %2"_s.arg(file, screen).trimmed().prepend(u"  "_s));
    } else {
        m_sound = false;
        say(u"  cannot write "_s + file);
    }
}

bool TTour::visit(const QString &name, const QList<TTourStep> &steps, const std::function<void()> &open)
{
    say(name);
    TWalk walk(
        steps, [this](QWidget *window, const QString &file) { picture(window, file); },
        [this](const QString &file) { m_messages->pictureName = file; },
        [this] { return m_messages->isShown; }, [this] { return !m_messages->pictureName.isEmpty(); });
    open();
    if (walk.problem().isEmpty())
        return true;
    say(u"  "_s + walk.problem());
    return false;
}

bool TTour::run()
{
    if (!m_folder.mkpath(u"."_s)) {
        say(u"cannot create the folder "_s + m_folder.path());
        return false;
    }
    // What a screen writes or lists in the current folder is nobody's.
    const QTemporaryDir scratch;
    const QString folderBefore = QDir::currentPath();
    QDir::setCurrent(scratch.path());

    TMessages messages(*this);
    m_messages = &messages;
    startDialogs();
    if (!MemoryToDraw())
        return false;
    TMain_FRM window(m_session);
    window.show();
    window.activateWindow();
    pass(pictureMilliseconds);
    picture(&window, u"main-window"_s);
    menus(window);

    int skipped = 0;
    for (const TEntryPoint &entry : EntryPoints::all()) {
        const QString name = QLatin1String(entry.name);
        if (!m_session.module().has(entry)) {
            say(name + u": skipped, "_s + m_session.module().errorText());
            ++skipped;
            continue;
        }
        m_sound &= visit(name, TourScript::of(entry.name), [&] { window.OpenEntry(entry); });
        if (name != "Select_Staff"_L1)
            continue;
        window.activateWindow();
        pass(pictureMilliseconds);
        picture(&window, u"main-window-answer"_s);
    }
    const QString backup = scratch.filePath(u"ketebionpap.db"_s);
    for (const TourScript::TItem &item : TourScript::items(backup)) {
        auto *action = window.findChild<QAction *>(QLatin1String(item.name));
        if (!action) // on a server there are no backups
            continue;
        if (qstrcmp(item.name, "Locks_ACT") == 0) // somebody works elsewhere
            OperationOnLockCode_SoftwarePart(u"17"_s, cspStaff, 2, otLock, false);
        m_sound &= visit(QLatin1String(item.name), item.steps, [&] { action->trigger(); });
    }
    // The sample company has no account; whoever starts it next makes the first one.
    DM.ADOConnection1->execute(TStatement("delete from UserRight"));
    DM.ADOConnection1->execute(TStatement("delete from UserAccount"));
    QDir::setCurrent(folderBefore);
    say(u"pictures in %1, %2 entries skipped"_s.arg(m_folder.absolutePath()).arg(skipped));
    return m_sound;
}

void TTour::startDialogs()
{
    const auto look = [this](QDialog &&dialog, const char *name) {
        const QString screen = QLatin1String(dialog.metaObject()->className());
        m_sound &= visit(screen,
                         {{TTourStep::Await, screen, {}},
                          {TTourStep::Picture, QLatin1String(name), {}},
                          {TTourStep::Press, u"Esc"_s, {}}},
                         [&] { dialog.exec(); });
    };
    look(TWorkstation_FRM(u"حسابداری"_s), "workstation");
    look(TFirstUser_FRM(), "first-user");
    look(TLogin_FRM(u"maryam"_s), "login");
    look(TServerPassword_FRM(u"db.example.ir"_s), "server-password");
    look(TChangePassword_FRM(), "change-password");
    look(TRecovery_FRM({u"کارمند"_s, true, u"201"_s, {{u"198"_s, 2}}, false}, nullptr), "recovery");
}

void TTour::menus(TMain_FRM &window)
{
    for (QAction *action : window.menuBar()->actions()) {
        QMenu *menu = action->menu();
        if (!menu || !action->isVisible())
            continue;
        // Beside the bar's item, as a click opens it.
        const QRect item = window.menuBar()->actionGeometry(action);
        menu->popup(window.menuBar()->mapToGlobal(item.bottomRight()) - QPoint(menu->sizeHint().width(), 0));
        pass(pictureMilliseconds);
        QPixmap whole = window.grab();
        QPainter(&whole).drawPixmap(menu->mapToGlobal(QPoint()) - window.mapToGlobal(QPoint()), menu->grab());
        menu->close();
        save(whole, menu->objectName().section(u'_', 0, 0).toLower().prepend(u"menu-"_s), {});
    }
}
