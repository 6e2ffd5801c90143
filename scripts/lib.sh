# SPDX-License-Identifier: MIT
# Shared by the scripts of this folder; source it. Everything it says goes to standard error, so that a program's own
# output stays clean.

set -euo pipefail
unset CDPATH # With it "cd" may go elsewhere, and prints where.
project=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
cd "$project"

say() { printf '%s\n' "$*" >&2; }
fail() { say "$*"; exit 1; }

# Names of the packages of the given groups.
packages_of() {
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' packaging/debian-packages.txt
    done
}

# Installs what is missing of the given groups, as root or with sudo.
install_missing() {
    command -v dpkg-query >/dev/null || {
        say "This is not a Debian system: please see to it that the packages of packaging/debian-packages.txt are there."
        return 0
    }
    local missing=() package
    for package in $(packages_of "$@"); do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    # Node.js may have come from elsewhere; then its package is not needed.
    if command -v node >/dev/null && command -v npm >/dev/null; then
        local kept=()
        for package in "${missing[@]}"; do
            case "$package" in nodejs | npm) ;; *) kept+=("$package") ;; esac
        done
        missing=("${kept[@]}")
    fi
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null && { [ -t 2 ] || sudo -n true 2>/dev/null; }; then
            as_root=(sudo)
        else
            fail "Quorvell needs these packages, and neither root nor sudo is at hand to install them. Please run, as an administrator:
    apt-get install --no-install-recommends ${missing[*]}"
        fi
    fi
    say "Installing ${#missing[@]} missing packages: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        fail "The packages could not be installed (the reason stands above). Check the network and the package sources, then run this again."
    fi
    rm -f "$log"
}

# Configures a preset anew, with further settings; what was built stays.
configure_preset() {
    local preset=$1
    shift
    mkdir -p build
    cmake --preset "$preset" "$@" >"build/$preset.log" 2>&1 </dev/null \
        || fail "Configuring failed; see build/$preset.log."
}

# Configures a preset where needed and builds targets of it (everything without one). Quiet unless it fails.
build_preset() {
    local preset=$1 log
    shift
    mkdir -p build
    log=build/$preset.log
    if ! { { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } \
            && cmake --build "build/$preset" ${1:+--target "$@"}; } >"$log" 2>&1 </dev/null; then
        grep -E -A12 'error|Error|FAILED' "$log" | head -n 80 >&2 || tail -n 60 "$log" >&2
        fail "The build ($preset) failed; the whole log is in $log."
    fi
}
