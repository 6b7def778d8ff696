#include "bench/BenchData.h"

#include <QProcess>

#include <benchmark/benchmark.h>

// From the start of the process to the first painting, with the program of each kind ending there.

namespace {

void startProgram(benchmark::State &state, const QString &program, const QStringList &arguments)
{
    for (auto _ : state) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, arguments);
        if (!process.waitForFinished(60000) || process.exitCode() != 0) {
            state.SkipWithError("the program did not come up");
            break;
        }
    }
}

void StartToTheListOf1000Methods(benchmark::State &state)
{
    startProgram(state, QStringLiteral(KETEBIONPAP_BIN "/ketebionpap_start_list"),
                 {BenchData::database(1000)});
}

void StartToAnEmptyWindow(benchmark::State &state)
{
    startProgram(state, QStringLiteral(KETEBIONPAP_BIN "/ketebionpap_start_empty"), {});
}

void StartToQtsOwnTable(benchmark::State &state)
{
    startProgram(state, QStringLiteral(KETEBIONPAP_BIN "/ketebionpap_start_table"),
                 {BenchData::database(1000)});
}

} // namespace

BENCHMARK(StartToAnEmptyWindow)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5);
BENCHMARK(StartToQtsOwnTable)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5);
BENCHMARK(StartToTheListOf1000Methods)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(5);
