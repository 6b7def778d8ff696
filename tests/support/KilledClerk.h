#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

/// A clerk in a process of its own, who is killed amid a save. The clerk is a disabled test of the same program, which
/// reads what it is to do from these variables.
namespace KilledClerk {

inline const char database[] = "KILL_DATABASE";
inline const char statement[] = "KILL_STATEMENT";
inline const char code[] = "KILL_CODE";

/// Runs the clerk (such as "TaxKillClerk.DISABLED_Saves") on a database; it is killed before statement `n` of the save
/// (1-based). False: the save had fewer statements, and the process ended by itself.
inline bool killedAt(const QString &clerk, const QString &path, int n, int recordCode)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(database, path);
    environment.insert(statement, QString::number(n));
    environment.insert(code, QString::number(recordCode));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_filter=" + clerk, "--gtest_also_run_disabled_tests"});
    EXPECT_TRUE(process.waitForFinished(60000));
    const QString said = QString::fromUtf8(process.readAll());
    const bool killed = process.exitStatus() == QProcess::CrashExit;
    if (!killed) {
        EXPECT_EQ(process.exitCode(), 0) << said.toStdString();
    }
    return killed;
}

} // namespace KilledClerk
