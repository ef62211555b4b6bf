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

# as_root COMMAND...: runs it as root, or fails without a question where "can_ask" is not true.
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

# apt_get ARGUMENT...: apt-get, which asks nothing.
apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get --quiet "$@" </dev/null
}

# patient_apt_get ARGUMENT...: the same once no other program holds apt's locks, as the automatic
# upgrades of a fresh machine do for a minute. apt-get can wait for the lock of the packages by itself,
# but not for that of their lists.
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
        $waits || echo "Another program holds apt's lock. Waiting for it, ten minutes at most."
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
    local can_ask=false
    [[ ! -t 0 || ! -t 2 ]] || can_ask=true

    echo "Installing what is missing: ${missing[*]}"
    if ! apt_knows "${missing[@]}"; then
        update_lists || true
        install_packages "${missing[@]}" && return 0
    elif install_packages "${missing[@]}"; then
        return 0
    # Package lists that are too old name files that the archive no longer has.
    elif update_lists && install_packages "${missing[@]}"; then
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
