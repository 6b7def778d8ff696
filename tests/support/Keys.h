#pragma once

#include <QString>
#include <QWidget>
#include <functional>

/// Real key events for real windows.
namespace Keys {
/// Types a text character by character into the widget (Persian too).
void type(QWidget *widget, const QString &text);
/// Presses a key combination in the widget that has the focus in `window`, or in `window` itself.
void press(QWidget *window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
           const QString &text = {});
/// Selects what the input holds and types `text` over it.
void retype(QWidget *input, const QString &text);
/// Shows a modal screen and runs `work` once it is shown; closes whatever is left open after `work`. Fails the
/// test when the screen does not come up within 10 seconds. Returns the screen's result.
int runModal(const std::function<int()> &show, const std::function<void(QWidget *screen)> &work);
/// The child with this object name; fails the test and aborts it when there is none.
QWidget *child(QWidget *screen, const QString &objectName);
template <class T>
T *find(QWidget *screen, const QString &objectName)
{
    return qobject_cast<T *>(child(screen, objectName));
}
/// Processes events until the condition holds, at most `milliseconds`. True when it held.
bool waitFor(const std::function<bool()> &condition, int milliseconds = 5000);
/// Leaves every screen inactive, as a window manager does that has not yet answered when a dialog is gone.
void leaveAll();
/// Saves a picture of a window under the folder named by KETEBIONPAP_PICTURES; does nothing when it is unset.
void picture(QWidget *window, const QString &name);
} // namespace Keys
