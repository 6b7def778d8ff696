#pragma once

#include <QString>

#include <benchmark/benchmark.h>

/// Measures a statement's every row and column read through the raw C interface, prepared once.
void ReadAllRaw(benchmark::State &state, const QString &path, const QString &sql);
