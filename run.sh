#!/bin/sh
# Installs what is missing, builds, and starts the program. Arguments go to the program (./run.sh --help).
# Without a display and without arguments: the guided tour, a picture of every screen in out/.
set -eu
root=$(cd "$(dirname "$(readlink -f "$0")")" && pwd -P)
. "$root/scripts/common.sh"

install_packages run
build release --target ketebionpap
program=$root/build/release/bin/ketebionpap

if [ $# -gt 0 ] || [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    exec "$program" "$@"
fi
say "there is no display: the guided tour, with pictures in $root/out"
"$program" --tour "$root/out" || fail "the guided tour did not come to its end"
