# shellcheck shell=bash
# Sourced by what makes packages. "root" is the project's folder.
#
# shellcheck disable=SC2154 # root is set elsewhere

# take_time_of_sources: exports SOURCE_DATE_EPOCH, when the sources were last changed, in seconds since
# 1970: the time of every file in a package, whenever that is made. One that is set already stays.
take_time_of_sources() {
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$root" -c safe.directory="$root" log -1 --format=%ct \
        2>/dev/null || stat -c %Y "$root/CMakeLists.txt")}
    export SOURCE_DATE_EPOCH
}

# give_time FILE_OR_FOLDER: that time, to all of it.
give_time() {
    find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
}

# tell_packages SYSTEM FILE...: what was made in dist/, with its checksums.
tell_packages() {
    local system=$1 file
    shift
    echo
    echo "For $system, in dist/:"
    for file in "$@"; do
        (cd "$(dirname "$file")" && sha256sum "$(basename "$file")")
    done
}
