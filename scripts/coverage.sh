#!/bin/sh
# Builds the tests with counters, runs them, and prints how many lines of src and app they run: folder by folder, and in
# all. Takes several minutes; arguments go to ctest (scripts/coverage.sh -R tax).
set -eu
root=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd -P)
. "$root/scripts/common.sh"

install_packages test
install_packages coverage
build coverage
# Counts of an earlier run would be added to.
find "$root/build/coverage" -name '*.gcda' -delete
log=$root/build/coverage/tests.log
say "testing (coverage)"
(cd "$root" && QT_QPA_PLATFORM=offscreen ctest --preset coverage --parallel "$(nproc)" --no-tests=error "$@") >"$log" 2>&1 ||
    say "not all tests passed; the output is in $log"
report=$root/build/coverage/lines.csv
# What throws is counted by its lines alone: branches that the compiler adds for exceptions are no choices of the code.
gcovr --root "$root" --object-directory "$root/build/coverage" --filter "$root/src/" --filter "$root/app/" \
    --gcov-ignore-parse-errors --exclude-throw-branches --csv "$report" "$root/build/coverage" >/dev/null
awk -F, 'NR > 1 {
        n = split($1, part, "/")
        folder = part[1] == "src" && n > 2 ? part[1] "/" part[2] (part[2] == "host" ? "/" part[3] : "") : part[1]
        lines[folder] += $2; covered[folder] += $3; all += $2; run += $3
    }
    END {
        for (folder in lines)
            printf "%-32s %6d of %6d lines  %5.1f %%\n", folder, covered[folder], lines[folder],
                100 * covered[folder] / lines[folder] | "sort"
        close("sort")
        printf "%-32s %6d of %6d lines  %5.1f %%\n", "all", run, all, 100 * run / all
    }' "$report"
