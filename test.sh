#!/bin/sh
# Installs what is missing, holds the sources against the rules of the house, builds the tests and runs them all; needs
# no display.
#   ./test.sh               all tests
#   ./test.sh --sanitize    the same under the address and undefined-behaviour sanitizers
# Further arguments go to ctest (./test.sh -R screens).
set -eu
root=$(cd "$(dirname "$(readlink -f "$0")")" && pwd -P)
. "$root/scripts/common.sh"

preset=test
if [ "${1:-}" = --sanitize ]; then
    preset=sanitize
    shift
fi

install_packages test
"$root/scripts/check.sh" || fail "the sources break rules of the house; they stand above"
build "$preset"

# Each test program leaves a count of its own here.
results=$root/build/$preset/results
rm -rf "$results"
mkdir -p "$results"
export GTEST_OUTPUT="xml:$results/"
export QT_QPA_PLATFORM=offscreen
log=$root/build/$preset/tests.log
say "testing ($preset)"
status=0
(cd "$root" && ctest --preset "$preset" --parallel "$(nproc)" --no-tests=error "$@") >"$log" 2>&1 || status=$?
if [ "$status" -ne 0 ]; then
    cat "$log"
    say "all output is in $log"
fi

# What ran and was not skipped, from the programs' own counts.
passed=0
failed=0
skipped=0
for file in "$results"/*.xml; do
    [ -f "$file" ] || continue
    ran=$(grep -c '<testcase .*status="run" result="completed"' "$file" || true)
    out=$(grep -c '<testcase .*result="skipped"' "$file" || true)
    bad=$(awk '/<testcase /{ open = 1 } /<failure /{ if (open) n++; open = 0 } END { print n + 0 }' "$file")
    passed=$((passed + ran - bad))
    failed=$((failed + bad))
    skipped=$((skipped + out))
done
[ -n "${KETEBIONPAP_TEST_ODBC:-}" ] ||
    say "the tests that need a server were skipped: KETEBIONPAP_TEST_ODBC names none"
echo "$passed passed, $failed failed, $skipped skipped"
if [ "$status" -ne 0 ]; then
    programs=$(sed -n 's/^[[:space:]]*[0-9]* - \([^ ]*\) (\(.*\))$/\1/p' "$log" | sort -u | tr '\n' ' ')
    fail "not all tests passed${programs:+; not clean: $programs}"
fi
