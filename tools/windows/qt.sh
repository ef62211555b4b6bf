# shellcheck shell=bash
# Sourced: finds the Qt for Windows that Vantrel is built with. Needs tools/packages.sh.

qt_cache=${XDG_CACHE_HOME:-$HOME/.cache}/vantrel

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

# find_qt_for_windows: exports VANTREL_QT_WINDOWS, the folder of a tree.
find_qt_for_windows() {
    local given=${VANTREL_QT_WINDOWS:-}
    if [[ -f $given ]]; then
        local stamp
        stamp=$(sha256sum "$given" | cut -c 1-16)
        VANTREL_QT_WINDOWS=$qt_cache/qt-windows-$stamp
        is_qt_tree "$VANTREL_QT_WINDOWS" || unpack_qt "$given" "$VANTREL_QT_WINDOWS"
    elif [[ -n $given ]]; then
        if ! is_qt_tree "$given"; then
            echo "VANTREL_QT_WINDOWS names no Qt for Windows: $given" >&2
            return 1
        fi
    else
        VANTREL_QT_WINDOWS=$qt_cache/qt-windows
        if ! is_qt_tree "$VANTREL_QT_WINDOWS"; then
            require_packages windows-qt
            rm -rf "$VANTREL_QT_WINDOWS"
            "$(dirname "${BASH_SOURCE[0]}")/build-qt" "$VANTREL_QT_WINDOWS.part"
            mv "$VANTREL_QT_WINDOWS.part" "$VANTREL_QT_WINDOWS"
        fi
    fi
    export VANTREL_QT_WINDOWS
}
