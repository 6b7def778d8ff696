#pragma once

#include <QProcess>
#include <QString>

#include <functional>

/// A display of its own with a window manager, and a person at its keyboard: real key events, real windows.
/// Everything waits by looking again, up to a limit that a busy machine keeps, too.
class Desk {
public:
    /// The desk of this test program; starts at the first call, ends with the program.
    static Desk &instance();
    ~Desk();

    /// Null when the desk stands; otherwise what is missing.
    const QString &fault() const { return m_fault; }
    QString display() const { return m_display; }

    /// Presses keys by the names that X has for them ("F3", "ctrl+a", "Arabic_khah"), one after the other.
    void press(const QStringList &keys);
    void type(const QString &latinText);
    /// The keyboard's layout: "us" or "ir".
    void setLayout(const QString &layout);

    /// The window that has the keyboard; 0 when none has.
    qulonglong focusedWindow();
    QString titleOf(qulonglong window);
    /// How many windows of the program are on the display, balloons included.
    int shownWindows();

    /// Looks again and again whether something has become so.
    static bool waitFor(const std::function<bool()> &condition);

private:
    Desk();
    bool run(const QString &tool, const QStringList &arguments, QString *answer = nullptr);

    QProcess m_server;
    QProcess m_manager;
    QString m_display;
    QString m_fault;
};
