#pragma once

#include "app/Program.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "support/Keys.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <gtest/gtest.h>

/// The program as main() runs it, but in this process.
class InProcess : public testing::Test {
protected:
    InProcess()
    {
        qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
        qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    }
    ~InProcess() override { UserInfo = {}; }
    int run(const QStringList &arguments)
    {
        QTextStream outStream(&out), errStream(&err);
        return RunProgram(TCommandLine::parse(arguments), outStream, errStream);
    }
    QTemporaryDir home;
    QString out;
    QString err;
};

using InProcessRun = std::function<int()>;

/// Answers every dialog of the start by `answer` and hands the main window to `work`.
inline int runWithWindow(InProcessRun run, const std::function<void(QWidget *)> &answer,
                         const std::function<void(QWidget *)> &work)
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (QWidget *screen = QApplication::activeModalWidget()) {
            answer(screen);
            return;
        }
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "TMain_FRM" && window->isVisible()) {
                poll.stop();
                work(window);
                if (!window->isVisible())
                    return;
                poll.start();
            }
        }
    });
    poll.start(20);
    return run();
}
