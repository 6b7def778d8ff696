#include "app/Program.h"
#include "host/Component_ZLM/Appearance.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/LowMemory_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/HostWindows_UNT.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTextStream>
#include <QTranslator>

#include <clocale>
#include <cstring>
#include <exception>
#include <langinfo.h>
#include <new>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The last net under the screens: what nobody caught is told to the user, and the program goes on.
class TApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override
    {
        try {
            if (draws(event->type()) && !MemoryToDraw())
                return false;
            return QApplication::notify(receiver, event);
        } catch (...) {
            TellFault();
        }
        return false;
    }

private:
    static bool draws(QEvent::Type type)
    {
        return type == QEvent::Expose || type == QEvent::UpdateRequest || type == QEvent::Show ||
               type == QEvent::Resize;
    }
};

/// Qt's own words in Persian, but for the names of keys: the keyboard has them in Latin letters, and so have the
/// buttons.
class TWords : public QTranslator {
public:
    using QTranslator::QTranslator;
    QString translate(const char *context, const char *text, const char *note, int n) const override
    {
        return std::strcmp(context, "QShortcut") == 0 ? QString()
                                                      : QTranslator::translate(context, text, note, n);
    }
};

QtMessageHandler ordinaryNotes = nullptr;

/// File names and texts are UTF-8, also where nothing is set.
void setUpEncoding()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "");
    }
}

/// Where no memory is left and nothing can be told any more (a destructor, a function of Qt that may not fail): one line
/// instead of a crash. What was committed is in the database, the rest is rolled back by it.
[[noreturn]] void endAtOnce()
{
    const char line[] = "ketebionpap: the program cannot go on (no memory left?) and ends\n";
    (void)!::write(STDERR_FILENO, line, sizeof line - 1);
    ::_exit(1);
}

/// Drops notes of Qt that say nothing to a user and would stand beside the one line that does. Qt paints with the help
/// of threads, and where the machine has no memory for one it waits for it for ever.
void note(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text.startsWith("QThread::start: Thread creation error"_L1))
        endAtOnce();
    for (const char *noise : {"QStandardPaths: ", "This plugin does not support "}) {
        if (text.startsWith(QLatin1String(noise)))
            return;
    }
    ordinaryNotes(type, context, text);
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

} // namespace

int main(int argc, char **argv)
{
    setUpEncoding();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromUtf8(argv[i]);
    const TCommandLine line = TCommandLine::parse(arguments);
    QTextStream out(stdout);
    QTextStream err(stderr);

    if (line.error.isEmpty() && line.task == TCommandLine::Task::ResetAdministrator) {
        QCoreApplication::setApplicationName(u"ketebionpap"_s);
        const QCoreApplication application(argc, argv);
        return RunProgram(line, out, err);
    }
    const bool needsWindows = line.error.isEmpty() && line.task != TCommandLine::Task::Help &&
                              line.task != TCommandLine::Task::Version &&
                              line.task != TCommandLine::Task::ServerRoles;
    if (!needsWindows)
        return RunProgram(line, out, err);
    if (!hasDisplay()) {
        if (line.task != TCommandLine::Task::Tour) {
            err << "ketebionpap: there is no display to show a window on" << Qt::endl;
            return 1;
        }
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    std::set_terminate(endAtOnce);
    KeepMemoryReserve();
    ordinaryNotes = qInstallMessageHandler(note);
    QLocale::setDefault(QLocale::c());
    // Qt reads its own arguments out of the list; the program's were read above.
    argc = 1;
    TApplication application(argc, argv);
    QApplication::setApplicationName(u"ketebionpap"_s);
    QApplication::setApplicationDisplayName(u"اطلاعات پایه حقوق و دستمزد"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TWords words;
    if (words.load(u"qtbase_fa"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&words);
    SetUpAppearance(application);
    SetUpHostWindows();
    return RunProgram(line, out, err);
}
