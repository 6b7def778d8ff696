#!/bin/sh
# Installs what is missing, builds the benchmarks and runs them; needs no display.
# Arguments go to the benchmarks (./bench.sh --benchmark_filter=YearOfTheGenerator).
set -eu
root=$(cd "$(dirname "$(readlink -f "$0")")" && pwd -P)
. "$root/scripts/common.sh"

install_packages bench
build bench
export QT_QPA_PLATFORM=offscreen
exec "$root/build/bench/bin/ketebionpap_bench" "$@"
