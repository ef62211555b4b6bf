# shellcheck shell=bash
# Sourced: finds the Qt for Windows that Vantrel is built with. Needs tools/packages.sh.

qt_cache=${XDG_CACHE_HOME:-$HOME/.cache}/vantrel
qt_tree=$qt_cache/qt-windows

is_qt_tree() {
    [[ -d $1/lib/cmake/Qt5 ]]
}

# unpack_qt ARCHIVE FOLDER: an archive holds one tree, which becomes FOLDER.
unpack_qt() {
    local unpacked
    mkdir -p "$(dirname "$2")"
    unpacked=$(mktemp -d "$2.XXXXXX")
    tar -xf "$1" -C "$unpacked"
    if ! is_qt_tree "$unpacked"/*; then
        rm -rf "$unpacked"
        echo "$1 holds no Qt for Windows" >&2
        return 1
    fi
    rm -rf "$2"
    mv "$unpacked"/* "$2"
    rmdir "$unpacked"
}

# take_qt_archive ARCHIVE...: without a VANTREL_QT_WINDOWS, makes the first of them that is there one.
take_qt_archive() {
    local archive
    [[ -z ${VANTREL_QT_WINDOWS:-} ]] || return 0
    for archive in "$@"; do
        if [[ -f $archive ]]; then
            export VANTREL_QT_WINDOWS=$archive
            return 0
        fi
    done
}

# has_qt_for_windows: whether find_qt_for_windows would find one without building it.
has_qt_for_windows() {
    [[ -n ${VANTREL_QT_WINDOWS:-} ]] || is_qt_tree "$qt_tree"
}

# A build that was broken off leaves a part of a tree, which is of no use.
build_qt() {
    require_packages windows-qt
    rm -rf "$qt_tree" "$qt_tree.part"
    "$(dirname "${BASH_SOURCE[0]}")/build-qt" "$qt_tree.part"
    mv "$qt_tree.part" "$qt_tree"
}

# find_qt_for_windows: exports VANTREL_QT_WINDOWS, the folder of a tree.
find_qt_for_windows() {
    local given=${VANTREL_QT_WINDOWS:-}
    if [[ -f $given ]]; then
        local stamp
        stamp=$(sha256sum "$given" | cut -c 1-16)
        VANTREL_QT_WINDOWS=$qt_tree-$stamp
        is_qt_tree "$VANTREL_QT_WINDOWS" || unpack_qt "$given" "$VANTREL_QT_WINDOWS"
    elif [[ -n $given ]]; then
        if ! is_qt_tree "$given"; then
            echo "VANTREL_QT_WINDOWS names no Qt for Windows: $given" >&2
            return 1
        fi
        VANTREL_QT_WINDOWS=$(realpath "$given")
    else
        is_qt_tree "$qt_tree" || build_qt
        VANTREL_QT_WINDOWS=$qt_tree
    fi
    export VANTREL_QT_WINDOWS
}
