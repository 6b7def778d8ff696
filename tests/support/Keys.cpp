#include "support/Keys.h"

#include "host/database/AnswerWait.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where a key goes that is pressed while `window` is at work: an open menu or list first, then the focus.
QWidget *receiver(QWidget *window)
{
    QWidget *top = QApplication::activePopupWidget();
    if (!top)
        top = window;
    return top->focusWidget() ? top->focusWidget() : top;
}

/// The key of a character on a Latin keyboard; Persian letters have none.
Qt::Key keyOf(const QString &character)
{
    const char32_t code = character.size() == 1 ? character.at(0).unicode() : 0;
    switch (code) {
    case u'\n':
    case u'\r':
        return Qt::Key_Return;
    case u'\t':
        return Qt::Key_Tab;
    default:
        return code >= 0x20 && code < 0x7F ? Qt::Key(character.at(0).toUpper().unicode()) : Qt::Key_unknown;
    }
}

QString textOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ControlModifier) || modifiers.testFlag(Qt::AltModifier))
        return {};
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return u"\r"_s;
    if (key == Qt::Key_Tab)
        return u"\t"_s;
    if (key < 0x20 || key >= 0x7F)
        return {};
    const QChar letter = QChar(ushort(key));
    return modifiers.testFlag(Qt::ShiftModifier) ? letter : letter.toLower();
}

void focus(QWidget *widget)
{
    widget->activateWindow();
    if (!widget->hasFocus())
        widget->setFocus();
}

QSet<QWidget *> openScreens()
{
    QSet<QWidget *> screens;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->isModal())
            screens.insert(widget);
    }
    return screens;
}

/// Closes a screen however it resists.
void shut(QPointer<QWidget> screen)
{
    if (screen && screen->isVisible())
        screen->close();
    if (screen && screen->isVisible())
        screen->hide();
}

} // namespace

void Keys::type(QWidget *widget, const QString &text)
{
    focus(widget);
    const QPointer<QWidget> target = widget;
    for (qsizetype i = 0; i < text.size() && target; ++i) {
        QString character = text.mid(i, 1);
        if (character.at(0).isHighSurrogate() && i + 1 < text.size())
            character += text.at(++i);
        QTest::sendKeyEvent(QTest::Click, target, keyOf(character), character, Qt::NoModifier);
    }
    QApplication::processEvents();
}

void Keys::press(QWidget *window, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QTest::sendKeyEvent(QTest::Click, receiver(window), key, text.isEmpty() ? textOf(key, modifiers) : text,
                        modifiers);
    QApplication::processEvents();
}

void Keys::retype(QWidget *input, const QString &text)
{
    focus(input);
    press(input, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        press(input, Qt::Key_Delete);
    else
        type(input, text);
}

int Keys::runModal(const std::function<int()> &show, const std::function<void(QWidget *)> &work)
{
    const QSet<QWidget *> before = openScreens();
    const QDeadlineTimer limit(10000);
    std::exception_ptr failure;
    bool worked = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        const QSet<QWidget *> opened = openScreens() - before;
        if (opened.isEmpty() || AnswerWait().isWaiting())
            return;
        // The screen on top is the one that a user would work in.
        QWidget *screen = QApplication::activeModalWidget();
        if (!screen || !opened.contains(screen))
            screen = *opened.begin();
        poll.stop();
        worked = true;
        const QPointer<QWidget> guarded = screen;
        try {
            work(screen);
        } catch (...) {
            failure = std::current_exception();
        }
        for (QWidget *left : openScreens() - before)
            shut(left);
        shut(guarded);
    });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (!limit.hasExpired() || worked)
            return;
        watch.stop();
        poll.stop();
        ADD_FAILURE() << "no screen came up within 10 seconds";
        for (QWidget *widget : QApplication::topLevelWidgets())
            shut(widget);
    });
    poll.start(2);
    watch.start(100);
    const int result = show();
    if (failure)
        std::rethrow_exception(failure);
    if (!worked && !limit.hasExpired())
        ADD_FAILURE() << "the screen was not shown";
    return result;
}

QWidget *Keys::child(QWidget *screen, const QString &objectName)
{
    QWidget *widget = screen->objectName() == objectName ? screen : screen->findChild<QWidget *>(objectName);
    if (!widget)
        throw std::runtime_error("no widget is named " + objectName.toStdString());
    return widget;
}

bool Keys::waitFor(const std::function<bool()> &condition, int milliseconds)
{
    const QDeadlineTimer limit(milliseconds);
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QTest::qSleep(1);
    }
    return true;
}

void Keys::leaveAll()
{
    QApplication::setActiveWindow(nullptr);
}

void Keys::picture(QWidget *window, const QString &name)
{
    const QString folder = qEnvironmentVariable("KETEBIONPAP_PICTURES");
    if (folder.isEmpty())
        return;
    QApplication::processEvents();
    EXPECT_TRUE(QDir().mkpath(folder));
    EXPECT_TRUE(window->grab().save(folder + u'/' + name + u".png"_s)) << name.toStdString();
}
