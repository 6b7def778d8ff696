#include "bench/BenchData.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>

// "--peak WHAT FILE" opens a list and prints the process's peak memory; anything else goes to Google Benchmark.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir configuration; // what the windows remember is not the user's
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
    QApplication app(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--peak") {
        std::printf("%ld\n",
                    BenchData::peakAfterOpening(QString::fromUtf8(argv[2]), QString::fromUtf8(argv[3])));
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
