# shellcheck shell=bash
# Sourced by ./run, ./test and .ci/run: the packages of packages.txt, and how they get installed.

package_list=$(dirname "${BASH_SOURCE[0]}")/../packages.txt
debian_control=$(dirname "${BASH_SOURCE[0]}")/../debian/control

# build_dependencies: the packages of Build-Depends, one a line, without those that only
# dpkg-buildpackage needs.
build_dependencies() {
    sed -n '/^Build-Depends:/,/^$/s/^ \([^ ,]*\),*$/\1/p' "$debian_control"
}

# packages_of GROUP...: the packages of these groups, one a line.
packages_of() {
    local group
    for group in "$@"; do
        [[ $group != build ]] || build_dependencies
        awk -v heading="[$group]" '
            /^\[/ { wanted = $1 == heading; found = found || wanted; next }
            wanted && NF && !/^#/ { print $1 }
            END { if (!found) { print "packages.txt has no " heading > "/dev/stderr"; exit 1 } }
        ' "$package_list"
    done | sort -u
}

# not_installed PACKAGE...: those of them that the system does not have, one a line.
not_installed() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            echo "$package"
    done
}

# as_root COMMAND...: runs it as root, or fails without a question where nobody can answer one.
as_root() {
    if ((EUID == 0)); then
        "$@"
    elif ! command -v sudo >/dev/null; then
        return 1
    elif [[ -t 0 && -t 2 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

apt_install() {
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --quiet --no-install-recommends "$@" </dev/null
}

# apt_knows PACKAGE...: whether the package lists that the system has name a version of each.
apt_knows() {
    local package
    for package in "$@"; do
        apt-cache policy "$package" 2>/dev/null | grep -q 'Candidate: [^(]' || return 1
    done
}

# require_packages GROUP...: installs what is missing of these groups, or says what to do and fails.
require_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: please see to what packages.txt lists." >&2
        return 0
    fi
    local wanted missing
    wanted=$(packages_of "$@") || return 1
    mapfile -t wanted <<<"$wanted"
    mapfile -t missing < <(not_installed "${wanted[@]}")
    ((${#missing[@]})) || return 0

    echo "Installing what is missing: ${missing[*]}"
    if ! apt_knows "${missing[@]}"; then
        as_root apt-get update --quiet || true
        apt_install "${missing[@]}" && return 0
    elif apt_install "${missing[@]}"; then
        return 0
    # Package lists that are too old name files that the archive no longer has.
    elif as_root apt-get update --quiet && apt_install "${missing[@]}"; then
        return 0
    fi
    cat >&2 <<END

Vantrel needs these packages, and they could not be installed from here:

    ${missing[*]}

Please install them, or have them installed by whoever looks after this machine:

    sudo apt-get update
    sudo apt-get install ${missing[*]}
END
    return 1
}
