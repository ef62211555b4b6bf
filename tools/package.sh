# shellcheck shell=bash
# Sourced by the packaging scripts. "root" is the project's folder.
#
# shellcheck disable=SC2154 # root is set elsewhere

# take_time_of_sources: exports SOURCE_DATE_EPOCH, the time of the last commit in seconds since
# 1970, unless it is set: the timestamp of every file in a package.
take_time_of_sources() {
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$root" -c safe.directory="$root" log -1 --format=%ct \
        2>/dev/null || stat -c %Y "$root/CMakeLists.txt")}
    export SOURCE_DATE_EPOCH
}

# give_time FILE_OR_FOLDER: sets this timestamp recursively.
give_time() {
    find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
}

# tell_packages SYSTEM FILE...: prints the new files in dist/ with their checksums.
tell_packages() {
    local system=$1 file
    shift
    echo
    echo "For $system, in dist/:"
    for file in "$@"; do
        (cd "$(dirname "$file")" && sha256sum "$(basename "$file")")
    done
}
