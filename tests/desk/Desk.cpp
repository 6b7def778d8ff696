#include "Desk.h"

#include <QDeadlineTimer>
#include <QTest>

namespace {

const int patience = 60000; // ms
const int lookAgain = 20;   // ms

} // namespace

Desk &Desk::instance()
{
    static Desk desk;
    return desk;
}

bool Desk::waitFor(const std::function<bool()> &condition)
{
    const QDeadlineTimer limit(patience);
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        QTest::qSleep(lookAgain);
    }
    return true;
}

Desk::Desk()
{
    // The server itself chooses a display that is free, and tells its number when it is ready.
    m_server.start("Xvfb",
                   {"-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"});
    QByteArray number;
    waitFor([&] {
        m_server.waitForReadyRead(lookAgain);
        number += m_server.readAllStandardOutput();
        return number.endsWith('\n') || m_server.state() == QProcess::NotRunning;
    });
    if (!number.endsWith('\n')) {
        m_fault = "Xvfb did not start: " + m_server.errorString();
        return;
    }
    m_display = u':' + QString::fromLatin1(number.trimmed());
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("DISPLAY", m_display);
    m_manager.setProcessEnvironment(variables);
    m_manager.setStandardErrorFile(QProcess::nullDevice());
    m_manager.start("openbox", {"--sm-disable"});
    // Only a window manager answers this.
    if (!waitFor([&] {
            return run("xdotool", {"get_desktop"}) || m_manager.error() == QProcess::FailedToStart;
        }) ||
        m_manager.state() == QProcess::NotRunning)
        m_fault = "openbox did not start: " + m_manager.errorString();
}

Desk::~Desk()
{
    for (QProcess *process : {&m_manager, &m_server}) {
        process->terminate();
        if (!process->waitForFinished(5000))
            process->kill();
        process->waitForFinished(5000);
    }
}

bool Desk::run(const QString &tool, const QStringList &arguments, QString *answer)
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("DISPLAY", m_display);
    process.setProcessEnvironment(variables);
    process.start(tool, arguments);
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished();
        return false;
    }
    if (answer)
        *answer = QString::fromUtf8(process.readAllStandardOutput());
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

void Desk::press(const QStringList &keys)
{
    run("xdotool", QStringList{"key"} + keys);
}

void Desk::type(const QString &latinText)
{
    run("xdotool", {"type", latinText});
}

void Desk::setLayout(const QString &layout)
{
    run("setxkbmap", {layout});
}

qulonglong Desk::focusedWindow()
{
    QString answer;
    return run("xdotool", {"getwindowfocus"}, &answer) ? answer.trimmed().toULongLong() : 0;
}

QString Desk::titleOf(qulonglong window)
{
    QString answer;
    if (!run("xdotool", {"getwindowname", QString::number(window)}, &answer))
        return {};
    return answer.endsWith(u'\n') ? answer.chopped(1) : answer;
}

int Desk::shownWindows()
{
    QString answer;
    run("xdotool", {"search", "--onlyvisible", "--class", "ketebionpap"}, &answer);
    return int(answer.split(u'\n', Qt::SkipEmptyParts).size());
}
