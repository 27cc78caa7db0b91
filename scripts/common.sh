# Sourced by the scripts beside it: where things are, and how they speak.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# What the scripts keep outside the checkout (Wine, the compiler cache where there is no home folder).
cache_folder() {
    local home=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
    if [[ -n ${TARNCOM32_CACHE:-} ]]; then
        printf '%s\n' "$TARNCOM32_CACHE"
    elif [[ -n $home && -d $home && -w $home ]]; then
        printf '%s\n' "$home/.cache/tarncom32"
    else
        printf '%s\n' "/var/tmp/tarncom32-$(id -u)"
    fi
}
cache=$(cache_folder)

# One line a step, on standard error: standard output belongs to the programs that are run.
step() { printf '== %s\n' "$*" >&2; }

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# as_root COMMAND...: runs it as root, by sudo where that is needed.
as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif ! command -v sudo >/dev/null; then
        fail "this needs root and there is no sudo; run it as root once: $*"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@" || fail "this needs root and sudo asks for a password; run it in a terminal or as root: $*"
    fi
}

# quietly LOG COMMAND...: the command's output goes to the file, and is shown only when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n "${quietly_lines:-60}" "$log" >&2
        return 1
    fi
}

# retry COMMAND...: again after a pause when it fails, for what a mirror that is just being updated makes fail.
retry() {
    local pause
    for pause in 5 15 40; do
        if "$@"; then return 0; fi
        step "failed; trying again in $pause seconds"
        sleep "$pause"
    done
    "$@"
}

# configure PRESET: once; afterwards the build notices by itself what has changed.
configure() {
    [[ -f $root/build/$1/build.ninja ]] && return 0
    step "Configuring $1"
    (cd "$root" && quietly "$root/build/$1.configure.log" cmake --preset "$1") ||
        fail "CMake could not configure $1; what it said stands above and in build/$1.configure.log"
}

# build PRESET [TARGET...]: two scripts at once take turns.
build() {
    local preset=$1
    shift
    (
        flock 9
        quietly "$root/build/$preset.build.log" ninja -C "$root/build/$preset" "$@"
    ) 9>"$root/build/$preset.lock"
}

if [[ -z ${HOME:-} ]]; then export CCACHE_DIR=${CCACHE_DIR:-$cache/ccache}; fi
