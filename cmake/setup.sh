# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
#
# What the two commands share: packages, configuring, building. Sourced with the repository as the working folder.

say() { printf '\n==> %s\n' "$*"; }

fail() {
    printf '\n%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# Prints the packages of the given purposes that dpkg does not know as installed.
missing_packages() {
    local purpose package status
    while read -r purpose package; do
        [[ " $* " == *" $purpose "* ]] || continue
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || true
        [[ $status == installed ]] || printf '%s\n' "$package"
    done < <(grep -v '^#' cmake/packages.txt)
}

# Runs a command as root, through sudo where we are not root.
as_root() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo "$@"
    fi
}

require_root() {
    local manual="Install them as root and start again:  apt-get install $*"
    ((EUID == 0)) && return
    command -v sudo >/dev/null || fail "packages are missing, and there is neither root nor sudo to install them. $manual"
    sudo -n true 2>/dev/null && return
    [[ -t 0 ]] || fail "packages are missing, and sudo wants a password that nobody can type here. $manual"
    printf 'sudo may ask for your password.\n'
}

# Installs what is missing of the given purposes; asks nothing and touches nothing when all is there.
install_packages() {
    local missing
    if ! command -v dpkg-query >/dev/null; then
        say "This is not a Debian: the packages named in cmake/packages.txt are taken as installed."
        return
    fi
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    say "Installing ${#missing[@]} packages: ${missing[*]}"
    require_root "${missing[@]}"
    as_root apt-get -q -o DPkg::Lock::Timeout=120 update ||
        printf 'The package lists could not be refreshed; trying with those that are there.\n' >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120 \
        install --no-install-recommends "${missing[@]}" ||
        fail "the packages could not be installed; apt-get's own words stand above. Quillfen is built on Debian 12."
}

# As many compilers as there are processors, and a gigabyte of memory for each.
build_jobs() {
    local processors memory
    processors=$(nproc)
    memory=$(awk '/^MemAvailable/ { print int($2 / 1048576) }' /proc/meminfo)
    ((memory >= processors)) && printf '%s' "$processors" || printf '%s' "$((memory > 1 ? memory : 1))"
}

# configure <preset> [cmake options]
configure() {
    local preset=$1
    say "Configuring build/$preset"
    cmake --preset "$@" || fail "build/$preset could not be configured; the reason stands above. rm -r build/$preset starts afresh."
}

# build <preset> [targets]
build() {
    local preset=$1 targets=()
    shift
    (($#)) && targets=(--target "$@")
    say "Building build/$preset"
    cmake --build --preset "$preset" --parallel "$(build_jobs)" "${targets[@]}" ||
        fail "build/$preset could not be built; the compiler's words stand above."
}
