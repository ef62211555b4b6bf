# shellcheck shell=bash
# Sourced. Finds the two trees needed to build for Windows: "qt", and "libs", the other, static libraries.
# Needs tools/packages.sh.
#
# A variable names each tree or an archive of it; otherwise the tree in the cache folder is used.

tree_cache=${XDG_CACHE_HOME:-$HOME/.cache}/vantrel

tree_variable() {
    echo "VANTREL_${1^^}_WINDOWS"
}

# cached_tree KIND: the folder of the tree built here.
cached_tree() {
    echo "$tree_cache/$1-windows"
}

is_tree() {
    case $1 in
        qt) [[ -d $2/lib/cmake/Qt5 ]] ;;
        libs) [[ -f $2/lib/libzip.a && -f $2/include/zip.h ]] ;;
    esac
}

# unpack_tree KIND ARCHIVE FOLDER: unpacks the archive, which holds one tree, as FOLDER.
unpack_tree() {
    local unpacked
    mkdir -p "$(dirname "$3")"
    unpacked=$(mktemp -d "$3.XXXXXX")
    tar -xf "$2" -C "$unpacked"
    if ! is_tree "$1" "$unpacked"/*; then
        rm -rf "$unpacked"
        echo "$2 does not hold what $(tree_variable "$1") names" >&2
        return 1
    fi
    rm -rf "$3"
    mv "$unpacked"/* "$3"
    rmdir "$unpacked"
}

# take_archive KIND ARCHIVE...: uses the first existing one, unless the variable is set.
take_archive() {
    local archive variable
    variable=$(tree_variable "$1")
    [[ -z ${!variable:-} ]] || return 0
    for archive in "${@:2}"; do
        if [[ -f $archive ]]; then
            export "$variable=$archive"
            return 0
        fi
    done
}

# has_tree KIND: whether find_tree would find one without building it.
has_tree() {
    local variable
    variable=$(tree_variable "$1")
    [[ -n ${!variable:-} ]] || is_tree "$1" "$(cached_tree "$1")"
}

# An interrupted build leaves an incomplete tree.
build_tree() {
    local tree
    tree=$(cached_tree "$1")
    require_packages "windows-$1"
    rm -rf "$tree" "$tree.part"
    "$(dirname "${BASH_SOURCE[0]}")/build-$1" "$tree.part"
    mv "$tree.part" "$tree"
}

# find_tree KIND: exports the variable as the folder of a tree.
find_tree() {
    local variable given tree
    variable=$(tree_variable "$1")
    given=${!variable:-}
    tree=$(cached_tree "$1")
    if [[ -f $given ]]; then
        tree+=-$(sha256sum "$given" | cut -c 1-16)
        is_tree "$1" "$tree" || unpack_tree "$1" "$given" "$tree"
    elif [[ -n $given ]]; then
        if ! is_tree "$1" "$given"; then
            echo "$variable does not name a tree or an archive: $given" >&2
            return 1
        fi
        tree=$(realpath "$given")
    else
        is_tree "$1" "$tree" || build_tree "$1"
    fi
    export "$variable=$tree"
}
