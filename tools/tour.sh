# shellcheck shell=bash
# Sourced by the tours: drives the program on a virtual display like a user. The caller sets "out",
# the folder for pictures and the program's output, and "home", the program's home folder, and
# starts the program with process id "program".
#
# shellcheck disable=SC2154 # out and home are set elsewhere

# shellcheck source=tools/display.sh
source "$(dirname "${BASH_SOURCE[0]}")/display.sh"

zip=$home/QZSDK/UserLogInfo.zip
picture=$out/main-window.png
notice_picture=$out/notice.png
scratch=$(mktemp -d)
program=
window=

# Click positions in pixels from a corner of the main window, which has a border of 1, margins of 16
# at the sides and the bottom, and a title bar of 36 at the top.
export_button=(-57 -33)    # from the lower right: 80 x 32 pixels
folder_button=(-134 -33)   # from the lower right: 26 x 26 pixels
system_info_box=(121 -69)  # from the lower left: the first box of the second row
close_button=(-23 19)      # from the upper right
notice_top=100             # the notice's upper edge, centred from left to right

# The contents of every export with these boxes ticked.
expected_entries=(SDKLOG/qzsdk_ SDKLOG/gentl_cxp_log/ SystemInfo.txt NICInfo.txt ClientDump.zip)

finish() {
    local code=$?
    [[ -z $program ]] || kill "$program" 2>/dev/null || true
    clean_up
    stop_display
    rm -rf "$scratch"
    exit "$code"
}
trap finish EXIT
trap 'exit 130' INT TERM

# Further clean-up; a tour may redefine it.
clean_up() { :; }

fail() {
    echo "tour: $1" >&2
    if [[ -s $out/vantrel.log ]]; then
        echo "Output of the program:" >&2
        sed 's/^/    /' "$out/vantrel.log" >&2
    fi
    exit 1
}

# expect SECONDS WHAT COMMAND...: waits for the command to succeed while the program is running.
expect() {
    local seconds=$(($1 * ${TOUR_PATIENCE:-1})) what=$2
    shift 2
    wait_until "$seconds" holds_or_ended "$@" || fail "timed out after $seconds seconds waiting for $what"
    kill -0 "$program" 2>/dev/null || fail "the program ended while waiting for $what"
}
holds_or_ended() {
    "$@" || ! kill -0 "$program" 2>/dev/null
}

# windows: the number of the program's windows.
windows() {
    xdotool search --onlyvisible --pid "$program" 2>/dev/null | wc -l
}

find_window() {
    window=$(xdotool search --onlyvisible --name '^Vantrel$' 2>/dev/null | head -n 1)
    [[ -n $window ]]
}

shoot() {
    import -silent -window "$window" "$1" 2>/dev/null
}

# pixels PICTURE: its pixels. The reader may close the pipe early.
pixels() {
    convert "$1" rgb:- 2>/dev/null
}

# painted: whether two consecutive pictures are equal and show more than an empty area.
painted() {
    shoot "$picture" && shoot "$scratch/again.png" &&
        (($(identify -format %k "$picture") > 20)) &&
        cmp -s <(pixels "$picture") <(pixels "$scratch/again.png")
}

# geometry: the window's X, Y, WIDTH and HEIGHT on the screen.
geometry() {
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^(X|Y|WIDTH|HEIGHT)=[0-9-]+$')"
}

# point FROM_LEFT FROM_TOP: negative numbers count from the right and from the bottom.
point() {
    local x=$1 y=$2
    geometry
    ((x >= 0)) || ((x += WIDTH))
    ((y >= 0)) || ((y += HEIGHT))
    xdotool mousemove --sync $((X + x)) $((Y + y))
}

click() {
    point "$@"
    xdotool click 1
}

double_click() {
    point "$@"
    xdotool click --repeat 2 --delay 50 1
}

exported() {
    [[ -s $zip && ! -e $home/QZSDK/LogInfo ]] && unzip -tqq "$zip" >/dev/null 2>&1
}

# notice_area PICTURE: the pixels where the middle of the notice appears.
notice_area() {
    convert "$1" -crop "120x24+$((WIDTH / 2 - 60))+$((notice_top + 8))" +repage rgb:-
}
notice_shown() {
    only_window && shoot "$notice_picture" &&
        ! cmp -s <(notice_area "$picture") <(notice_area "$notice_picture")
}

ended() {
    ! kill -0 "$program" 2>/dev/null
}

# Ticks System Information with the mouse, and from there Client Dump and NIC Information with the
# keyboard, because their positions depend on the font.
tick_boxes() {
    click "${system_info_box[@]}"
    xdotool key Tab Tab space shift+Tab shift+Tab shift+Tab shift+Tab space
    expect 10 "the ticks" painted
}

# Accepts the zip that the save dialog proposes, in the folder that the program was started in.
take_proposed_zip() {
    click "${folder_button[@]}"
    expect 10 "the save dialog" save_dialog_focused
    xdotool key Return
    expect 10 "the end of the save dialog" only_window
    expect 10 "the main window" painted
    zip=$home/UserLogInfo.zip
}
save_dialog_focused() {
    [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == "Save ZIP File" ]]
}
only_window() {
    (($(windows) == 1))
}

await_window() {
    expect 60 "the main window" find_window
    expect 30 "the main window's contents" painted
}

export_all() {
    click "${export_button[@]}"
    expect 60 "the zip" exported
    expect 30 "the notice" notice_shown
}

close_window() {
    click "${close_button[@]}"
    wait_until $((30 * ${TOUR_PATIENCE:-1})) ended || fail "the window was closed, but the program is still running"
    local code=0
    wait "$program" || code=$?
    program=
    ((code == 0)) || fail "the program ended with code $code"
}

check_zip() {
    local entries entry
    entries=$(unzip -Z1 "$zip")
    for entry in "${expected_entries[@]}"; do
        grep -q "^$entry" <<<"$entries" ||
            fail "the zip has no $entry; if the export panel has changed, see the click positions in tools/tour.sh"
    done
}
