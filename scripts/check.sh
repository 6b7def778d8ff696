#!/bin/sh
# Holds the sources against the house's rules; names every place that breaks one and exits with 1.
#   scripts/check.sh          layout of the code, arrows, lengths
#   scripts/check.sh --tidy   also clang-tidy over what of src and app differs from the last commit; --tidy all: over all
set -eu
root=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd -P)
cd "$root"
broken=$(mktemp)
trap 'rm -f "$broken"' EXIT

complain() {
    sed "s|^|$1: |" >>"$broken"
}

sources() {
    find "$@" -name '*.h' -o -name '*.cpp' -o -name '*.c' | sort
}

# How it is written.
if command -v clang-format >/dev/null 2>&1; then
    sources src app tests bench docs | xargs clang-format --dry-run 2>&1 |
        sed -n 's/:[0-9]*:[0-9]*: warning: code should be clang-formatted.*//p' | sort -u |
        complain "clang-format would change this"
else
    echo "check: clang-format is not installed: how the code is written was not looked at"
fi

# A file that grows past this is made of more than one thing.
sources src app tests bench | xargs wc -l | awk '$1 > 500 && $2 != "total" { print $2 " (" $1 " lines)" }' |
    complain "more than 500 lines"

# includes FOLDERS... -- PATTERN: includes that the folders must not have.
includes() {
    folders=
    while [ "$1" != -- ]; do
        folders="$folders $1"
        shift
    done
    # shellcheck disable=SC2086
    sources $folders | xargs grep -nE "^#include [<\"]($2)" || true
}

packages='database Declaration_PKG Utility_ZLM ZelmoSearch Groups_PKG'
core=
for package in $packages; do
    core="$core src/host/$package"
done
records='*_DM_UNT.* *_Mapper.h *Fields.* *Rules.*'

# Below the windows nobody knows a widget, nor a package that has windows.
widgets='Q(Application|Widget|Dialog|Label|LineEdit|ComboBox|CheckBox|Table|Header|Menu|Action|Layout|[VH]BoxLayout|'
widgets="${widgets}GridLayout|TabWidget|PushButton|ToolButton|MessageBox|FileDialog|Style|Printer|Test)"
windows='host/(Message_ZLM|Component_ZLM|BaseFrame_PKG|NewBaseForms_PKG)/'
# shellcheck disable=SC2086
includes $core src/common -- "$widgets|$windows" | complain "a widget below the windows"
for record in $records; do
    find src -path src/host -prune -o -name "$record" -print | xargs grep -nE "^#include [<\"]($widgets|$windows)" || true
done | complain "a widget in a data module"

# Each floor knows those below it only.
subsystems='(payrollinfo|calcmethod|tax|calender|staff|entity)/'
includes src/host -- "$subsystems|common/|app/|Ketebionpap_Interface" | complain "the host knows the module"
includes src/host/Utility_ZLM -- 'host/(database|Declaration_PKG|ZelmoSearch|Groups_PKG)/' | complain "an arrow runs up"
includes src/host/database -- 'host/(Declaration_PKG|ZelmoSearch|Groups_PKG)/' | complain "an arrow runs up"
includes src/host/Declaration_PKG -- 'host/(ZelmoSearch|Groups_PKG)/' | complain "an arrow runs up"
includes src/host/Message_ZLM -- 'host/(Component_ZLM|BaseFrame_PKG|NewBaseForms_PKG)/' | complain "an arrow runs up"
includes src/host/Component_ZLM -- 'host/(BaseFrame_PKG|NewBaseForms_PKG)/' | complain "an arrow runs up"
includes src/host/BaseFrame_PKG -- 'host/NewBaseForms_PKG/' | complain "an arrow runs up"
includes app -- '[a-z]*/[A-Za-z_]*(List|Get|Detail|Detil|Set|Day)_UNT' | complain "the application knows a screen of the module"
for subsystem in payrollinfo calcmethod tax calender staff entity; do
    others=$(printf '%s' "$subsystems" | sed "s/$subsystem|//; s/|$subsystem)/)/")
    includes "src/$subsystem" -- "$others" | complain "one subsystem knows another"
done

# Two units may know each other (a control and its delegate); three in a circle are one thing in pieces.
sources src app | xargs awk '
    FNR == 1 { from = FILENAME; sub(/^src\//, "", from); sub(/\.(h|cpp)$/, "", from); units[from] = 1 }
    /^#include "/ {
        to = $2; gsub(/"/, "", to); sub(/\.h$/, "", to)
        if (to != from) knows[from, to] = 1
    }
    END {
        for (unit in units) names[++count] = unit
        for (pair in knows) { split(pair, p, SUBSEP); if (p[2] in units) out[p[1]] = out[p[1]] " " p[2] }
        for (i = 1; i <= count; i++) {
            delete seen; top = 0; n = split(out[names[i]], next_, " ")
            for (k = 1; k <= n; k++) stack[++top] = next_[k]
            while (top > 0) {
                unit = stack[top--]
                if (unit in seen) continue
                seen[unit] = 1
                n = split(out[unit], next_, " ")
                for (k = 1; k <= n; k++) if (!(next_[k] in seen)) stack[++top] = next_[k]
            }
            for (unit in seen) reach[names[i], unit] = 1
        }
        for (i = 1; i <= count; i++) {
            if (!((names[i], names[i]) in reach) || (names[i] in told)) continue
            circle = names[i]; size = 1
            for (k = 1; k <= count; k++)
                if (k != i && ((names[i], names[k]) in reach) && ((names[k], names[i]) in reach)) {
                    circle = circle " " names[k]; size++; told[names[k]] = 1
                }
            if (size > 2) print circle
        }
    }' | complain "units that include each other in a circle"

# Without precompiled headers, which clang cannot read: as the release is built.
if [ "${1:-}" = --tidy ]; then
    [ -f build/release/compile_commands.json ] || cmake --preset release >/dev/null
    if [ "${2:-}" = all ]; then
        files=$(sources src app | grep '\.cpp$')
    else
        changed=$(git diff --name-only HEAD -- src app; git ls-files --others --exclude-standard -- src app)
        files=$(for file in $changed; do printf '%s\n' "${file%.*}.cpp"; done | sort -u)
    fi
    for file in $files; do
        [ -f "$file" ] || continue
        clang-tidy --quiet -p build/release "$file" 2>&1 | grep -E '(^|: )(warning|error): |^Error while' || true
    done | complain "clang-tidy"
fi

if [ -s "$broken" ]; then
    cat "$broken"
    echo "check: $(wc -l <"$broken") places break a rule of the house"
    exit 1
fi
echo "check: the sources keep the rules of the house"
