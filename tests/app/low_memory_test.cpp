#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

// The program at work when the machine has no memory left: the guided tour, cut to what it holds at a moment.

namespace {

rlim_t memoryOf(qint64 process)
{
    QFile file(QString("/proc/%1/statm").arg(process));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return rlim_t(file.readAll().split(' ').value(0).toLongLong()) * rlim_t(sysconf(_SC_PAGESIZE));
}

} // namespace

TEST(LowMemory, AProgramThatGetsNoMoreMemoryDoesNotCrash)
{
    for (const int pictures : {4, 16}) {
        const QTemporaryDir folder;
        const QDir out(folder.filePath("out"));
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(KETEBIONPAP_BIN "/ketebionpap", {"--tour", out.path()});
        ASSERT_TRUE(program.waitForStarted());
        QElapsedTimer watch;
        watch.start();
        while (out.entryList({"*.png"}).size() < pictures && watch.elapsed() < 60000)
            ASSERT_FALSE(program.waitForFinished(20)) << program.readAll().toStdString();
        const rlim_t held = memoryOf(program.processId());
        const rlimit most{held, held};
        ASSERT_EQ(prlimit(pid_t(program.processId()), RLIMIT_AS, &most, nullptr), 0);
        // The tour waits for screens that do not come up any more; it has drawn, or ended, long before.
        if (program.waitForFinished(4000)) {
            EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << program.readAll().toStdString();
        } else {
            program.kill();
            program.waitForFinished();
        }
    }
}

// Qt paints with the help of threads, and waits for ever for one that there is no memory for.
TEST(LowMemory, AProgramThatHasTooLittleFromTheStartEnds)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer itself takes more";
#endif
    for (const int megabytes : {90, 100, 110}) {
        const QTemporaryDir folder;
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.setChildProcessModifier([megabytes] {
            const rlimit most{rlim_t(megabytes) << 20, rlim_t(megabytes) << 20};
            setrlimit(RLIMIT_AS, &most);
        });
        program.start(KETEBIONPAP_BIN "/ketebionpap", {"--tour", folder.filePath("out")});
        EXPECT_TRUE(program.waitForFinished(60000)) << megabytes << program.readAll().toStdString();
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << megabytes;
        EXPECT_NE(program.exitCode(), 0) << megabytes;
    }
}
