# shellcheck shell=bash
# Sourced by what makes packages. "root" is the project's folder.

# time_of_sources: when they were last changed, in seconds since 1970: the time of every file in a
# package, whenever that is made. SOURCE_DATE_EPOCH may name another.
#
# shellcheck disable=SC2154 # root is set elsewhere
time_of_sources() {
    echo "${SOURCE_DATE_EPOCH:-$(git -C "$root" -c safe.directory="$root" log -1 --format=%ct \
        2>/dev/null || stat -c %Y "$root/CMakeLists.txt")}"
}
