# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# To be sourced. Gives install_missing <section...>, which installs what packaging/debian-packages.txt lists in these
# sections and this machine lacks, and has ccache keep what is compiled with precompiled headers, too, and find it again
# from other checkouts beside this one.

export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
export CCACHE_NOHASHDIR=1
CCACHE_BASEDIR="$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")"
export CCACHE_BASEDIR

packages_of() {
    local list
    list="$(dirname "${BASH_SOURCE[0]}")/../packaging/debian-packages.txt"
    awk -v wanted=" $* " '
        /^\[/ { section = substr($0, 2, index($0, "]") - 2); next }
        /^[^#]/ && index(wanted, " " section " ") { print $1 }' "$list"
}

missing_packages() {
    # A line "ii  name" for each that is installed; those that dpkg has never heard of are an error without a line.
    packages_of "$@" | sort -u | comm -23 - <(
        # shellcheck disable=SC2046 # package names hold no spaces
        dpkg-query --show --showformat '${db:Status-Abbrev} ${Package}\n' $(packages_of "$@") 2>/dev/null \
            | awk '/^.i/ { print $2 }' | sort -u)
}

install_missing() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This system is not Debian. Make sure that the packages in packaging/debian-packages.txt are installed."
        return
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    echo "Installing missing packages: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Installing needs root, and sudo is missing. Run as root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q --yes --no-install-recommends "${missing[@]}"
}
