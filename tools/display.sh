# shellcheck shell=bash
# Sourced. A private display: Xvfb with a small window manager.

display_pids=()

# wait_until SECONDS COMMAND...: polls until the command succeeds; fails after the timeout.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.1
    done
}

has_window_manager() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

# start_display FOLDER [WIDTHxHEIGHT]: exports DISPLAY; the servers' output goes to files in the
# folder.
start_display() {
    local folder=$1 size=${2:-1280x900} number="" answer
    # -r: no key repeat, because a busy machine may release keys late.
    exec {answer}< <(exec Xvfb -displayfd 1 -screen 0 "${size}x24" -dpi 96 -nolisten tcp \
        -noreset -r 2>"$folder/xvfb.log")
    display_pids+=($!)
    if ! read -r -t 30 -u "$answer" number || [[ -z $number ]]; then
        echo "The virtual display did not start:" >&2
        cat "$folder/xvfb.log" >&2
        return 1
    fi
    exec {answer}<&-
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY XAUTHORITY

    HOME=$folder XDG_CONFIG_HOME=$folder XDG_CACHE_HOME=$folder \
        openbox --sm-disable >"$folder/openbox.log" 2>&1 &
    display_pids+=($!)
    if ! wait_until 30 has_window_manager; then
        echo "The window manager did not start:" >&2
        cat "$folder/openbox.log" >&2
        return 1
    fi
}

# stop_display: stops what start_display has started, in reverse order.
stop_display() {
    local i
    for ((i = ${#display_pids[@]} - 1; i >= 0; --i)); do
        kill "${display_pids[i]}" 2>/dev/null || true
        wait "${display_pids[i]}" 2>/dev/null || true
    done
    display_pids=()
}
