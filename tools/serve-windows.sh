#!/usr/bin/env bash
# serve-windows.sh PROGRAM: runs a program on a display of its own and serves it to VNC viewers on the loopback only.
set -euo pipefail
display=:91
port=5912
started=()
stop() {
    for pid in "${started[@]}"; do kill "$pid" 2>/dev/null || true; done
}
trap stop EXIT

Xvfb "$display" -screen 0 1440x900x24 -nolisten tcp >/dev/null 2>&1 &
started+=($!)
export DISPLAY=$display
for _ in $(seq 50); do
    [ -e "/tmp/.X11-unix/X${display#:}" ] && break
    sleep 0.1
done
openbox >/dev/null 2>&1 &
started+=($!)
# a window that comes up before its manager gets no title bar and no keys
for _ in $(seq 50); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done
x11vnc -display "$display" -localhost -rfbport "$port" -nopw -forever -shared -quiet >/dev/null 2>&1 &
started+=($!)
echo "The windows are served on 127.0.0.1:$port. Ctrl+C ends them."
"$1"
