# shellcheck shell=bash
# Sourced by the scripts that install packages, as listed in packages.txt and debian/control.

package_list=$(dirname "${BASH_SOURCE[0]}")/../packages.txt
debian_control=$(dirname "${BASH_SOURCE[0]}")/../debian/control

# build_dependencies: the packages of Build-Depends, one per line, except those that only
# dpkg-buildpackage needs.
build_dependencies() {
    sed -n '/^Build-Depends:/,/^$/s/^ \([^ ,]*\),*$/\1/p' "$debian_control"
}

# packages_of GROUP...: the packages of these groups, one per line.
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

# not_installed PACKAGE...: those that are not installed, one per line.
not_installed() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            echo "$package"
    done
}

# as_root COMMAND...: runs it as root; fails instead of asking for a password unless "can_ask" is true.
as_root() {
    if ((EUID == 0)); then
        "$@"
    elif ! command -v sudo >/dev/null; then
        return 1
    elif $can_ask; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

# apt_get ARGUMENT...: apt-get without questions.
apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get --quiet "$@" </dev/null
}

# patient_apt_get ARGUMENT...: the same after waiting for apt's locks, which automatic upgrades hold for
# a minute on a fresh machine. apt-get can wait for the package lock, but not for that of the lists.
patient_apt_get() {
    local errors code end=$((SECONDS + 600)) waits=false
    errors=$(mktemp)
    while true; do
        code=0
        apt_get "$@" 2>"$errors" || code=$?
        if ((code == 0 || SECONDS > end)) || ! grep -q 'Could not get lock' "$errors"; then
            cat "$errors" >&2
            rm -f "$errors"
            return "$code"
        fi
        $waits || echo "Another program holds apt's lock. Waiting for up to ten minutes."
        waits=true
        sleep 2
    done
}

update_lists() {
    patient_apt_get update
}

install_packages() {
    patient_apt_get install --yes --no-install-recommends "$@"
}

# apt_knows PACKAGE...: whether the package lists have a version of each.
apt_knows() {
    local package
    for package in "$@"; do
        LC_ALL=C apt-cache policy "$package" 2>/dev/null | grep -q 'Candidate: [^(]' || return 1
    done
}

# require_packages GROUP...: installs missing packages of these groups, or prints what to do and fails.
require_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not a Debian system: please install what packages.txt and debian/control list." >&2
        return 0
    fi
    local wanted missing
    wanted=$(packages_of "$@") || return 1
    mapfile -t wanted <<<"$wanted"
    mapfile -t missing < <(not_installed "${wanted[@]}")
    ((${#missing[@]})) || return 0
    local can_ask=false
    [[ ! -t 0 || ! -t 2 ]] || can_ask=true

    echo "Installing missing packages: ${missing[*]}"
    if ! apt_knows "${missing[@]}"; then
        update_lists || true
        install_packages "${missing[@]}" && return 0
    elif install_packages "${missing[@]}"; then
        return 0
    # Outdated package lists name files that the archive no longer has.
    elif update_lists && install_packages "${missing[@]}"; then
        return 0
    fi
    cat >&2 <<END

Vantrel needs these packages, and they could not be installed from here:

    ${missing[*]}

Please install them, or ask the administrator of this machine to:

    sudo apt-get update
    sudo apt-get install ${missing[*]}
END
    return 1
}
