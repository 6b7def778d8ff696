# What run.sh, test.sh and bench.sh share. Read by them; needs `root`, the project's folder.

command_name=$(basename "$0")

say() {
    printf '%s: %s\n' "$command_name" "$1"
}

fail() {
    printf '%s: %s\n' "$command_name" "$1" >&2
    exit 1
}

# The packages of scripts/packages.txt for "run", "test", "coverage", "tidy" or "bench" that are not installed.
missing_packages() {
    sed 's/#.*//' "$root/scripts/packages.txt" | while read -r package use _; do
        [ -n "$package" ] || continue
        [ "$use" = both ] || [ "$use" = "$1" ] || continue
        status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) || status=
        [ "$status" = installed ] || printf '%s ' "$package"
    done
}

# Installs what is missing, and says so; does nothing when all is there.
install_packages() {
    if ! command -v dpkg-query >/dev/null 2>&1; then
        say "this is not Debian: install by yourself what scripts/packages.txt names"
        return 0
    fi
    missing=$(missing_packages "$1")
    [ -n "$missing" ] || return 0
    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 ||
            fail "these packages are missing, and there is no sudo to install them: $missing"
        as_root=sudo
    fi
    say "installing $missing"
    # A package list that cannot be brought up to date may still be good enough.
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q ||
        say "the package lists could not be brought up to date; trying with those at hand"
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing ||
        fail "could not install the packages: $missing"
}

# Configures and builds a preset of CMakePresets.json into build/<preset>.
build() {
    preset=$1
    shift
    cache=$root/build/$preset/CMakeCache.txt
    # A folder that was moved or copied keeps its old paths in there.
    if [ -f "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        rm -rf "$root/build/$preset" || fail "cannot remove the old build in build/$preset"
    fi
    mkdir -p "$root/build/$preset" || fail "cannot write to $root/build"
    if command -v ccache >/dev/null 2>&1 && [ -z "${CMAKE_CXX_COMPILER_LAUNCHER:-}" ]; then
        CMAKE_CXX_COMPILER_LAUNCHER=ccache
        export CMAKE_CXX_COMPILER_LAUNCHER
    fi
    say "building ($preset)"
    (cd "$root" && cmake --preset "$preset" >"build/$preset/configure.log" 2>&1) || {
        cat "$root/build/$preset/configure.log" >&2
        fail "configuring the build failed; the reason stands above"
    }
    (cd "$root" && cmake --build --preset "$preset" "$@") || fail "the build failed; the first error stands above"
}
