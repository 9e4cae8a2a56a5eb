# SPDX-FileCopyrightText: printsrvlib authors
# SPDX-License-Identifier: MIT

# What the scripts of this folder share; they source it.
# shellcheck shell=bash

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
builds=$root/build
jobs=$(nproc)
cd "$root"

# The clone may belong to another user than the one who runs the checks.
export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0=$root

# say LINE…
say() {
    printf '%s\n' "$@"
}

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# as_root COMMAND…
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "needs root rights for '$*': run it as root or install sudo"
    fi
}

# packages SECTION…: prints the packages of these sections of scripts/packages.
packages() {
    local section
    for section in "$@"; do
        sed -n "/^\[$section\]\$/,/^\[/{/^[a-z0-9]/p}" scripts/packages
    done
}

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# install_missing SECTION…: installs the packages of these sections that the machine lacks.
install_missing() {
    local package log missing=()
    command -v dpkg-query >/dev/null || fail "this is no Debian machine; install by hand: $(packages "$@" | xargs)"
    for package in $(packages "$@"); do
        is_installed "$package" || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    say "Installing ${missing[*]}"
    log=$(mktemp)
    as_root apt-get update -qq >"$log" 2>&1 </dev/null || true
    if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "${missing[@]}" >>"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        fail "the packages could not be installed; the reason stands above"
    fi
    rm -f "$log"
}

# step NAME COMMAND…: runs a command quietly and says how long it took; ends the script with the end of its output
# when it fails. Not to be called in a condition, where bash would ignore the failure of a command inside.
step() {
    local name=$1 log=$builds/logs/$1.log start=$SECONDS status=0
    shift
    mkdir -p "$builds/logs"
    printf '%-12s' "$name"
    set +e
    (
        set -e
        "$@"
    ) >"$log" 2>&1 </dev/null
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        say "failed"
        tail -n 60 "$log" >&2
        fail "$name failed, its whole output is in $log"
    fi
    say "ok, $((SECONDS - start)) s"
}

# build PRESET [OPTION…]: configures build/<preset>, with ccache where the machine has it, and builds it with these options.
build() {
    local preset=$1 launcher=
    shift
    if command -v ccache >/dev/null; then
        launcher=ccache
    fi
    cmake --preset "$preset" -DCMAKE_CXX_COMPILER_LAUNCHER=$launcher
    cmake --build "$builds/$preset" --parallel "$jobs" "$@"
}

# abi_libraries BUILD-FOLDER: the libraries whose exported names have a baseline.
abi_libraries() {
    printf '%s\n' "$1/libprintsrvlib.so" "$1/printsrvpaper/libprintsrvpaper.so" \
        "$1/platform/orbekextlib/liborbekextlib.so" "$1/platform/tolbuslib/libtolbuslib.so"
}

# write_abi LIBRARY FILE: the exported symbols, the layout of our classes and the order of their virtual functions.
write_abi() {
    abidw --suppressions tests/baseline/ours.suppr --drop-private-types --drop-undefined-syms --no-show-locs \
        --no-corpus-path --no-comp-dir-path --no-elf-needed --no-parameter-names --out-file "$2" "$1"
    sed -i "s|$root/||" "$2"
}
