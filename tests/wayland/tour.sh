#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
#
# tour.sh <client> <agent>: the client shows every screen on a Wayland compositor that has no screen, and ends by itself.
set -euo pipefail
client=$1
agent=$2

folder=$(mktemp -d)
chmod 700 "$folder"
export XDG_RUNTIME_DIR=$folder HOME=$folder/home QUILL_AGENT_SOCKET=$folder/agent.sock
mkdir "$HOME"
# In a build with sanitizers: what a library keeps that is unloaded before the end bears no name that could be left out.
# The flows look for leaks of ours.
export ASAN_OPTIONS=detect_leaks=0
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS

processes=()
clean_up() {
    ((${#processes[@]})) && kill "${processes[@]}" 2>/dev/null || true
    wait
    rm -rf "$folder"
}
trap clean_up EXIT

fail() {
    printf '%s\n' "$1" >&2
    shift
    cat "$@" >&2
    exit 1
}

# await <socket> <log>: until somebody listens there.
await() {
    for ((attempt = 0; attempt < 600; ++attempt)); do
        grep -qF "$1" /proc/net/unix && return
        sleep 0.05
    done
    fail "nobody listens at $1" "$2"
}

weston --backend=headless-backend.so --socket=wayland-test --no-config --idle-time=0 --width=1280 --height=900 \
    >"$folder/weston.log" 2>&1 &
processes+=($!)
"$agent" --world everyday --socket "$QUILL_AGENT_SOCKET" --home "$HOME" >"$folder/agent.log" 2>&1 &
processes+=($!)
await "$folder/wayland-test" "$folder/weston.log"
await "$QUILL_AGENT_SOCKET" "$folder/agent.log"

export WAYLAND_DISPLAY=wayland-test QT_QPA_PLATFORM=wayland
timeout 120 "$client" --tour "$folder/pictures" >"$folder/client.log" 2>&1 ||
    fail "the client ended with status $?" "$folder/client.log" "$folder/weston.log"

for screen in volumes time-travel history-policy get-a-copy-of-my-data account-engine advanced about menu-bar-panel \
    agent-down first-run; do
    [[ -s $folder/pictures/$screen.png ]] || fail "no picture of $screen" "$folder/client.log"
done
# What the plugin says of the client's own doing would mean that a request is not one that Wayland knows.
! grep -i 'wayland' "$folder/client.log" || fail "the platform complains" "$folder/client.log"
