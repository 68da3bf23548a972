#!/usr/bin/env bash
# Builds the program and runs it on the embedded server with demo data, the demo engine beside it.
# Without a display the same screens are walked offscreen and pictures are left in build/pictures.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh
cmake --preset release >/dev/null
cmake --build --preset release

bin=build/release
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    rm -rf build/walk build/pictures
    "$bin/demo/zelvan-scheduler-demo" build/walk
    QT_QPA_PLATFORM=offscreen exec "$bin/demo/zelvan-scheduler-walk" build/walk build/pictures
fi

"$bin/demo/zelvan-scheduler-demo" build/demo
install -m 755 "$bin/src/zelvan-scheduler" "$bin/src/zelvan-schedules" build/demo/app/
server="file:$PWD/build/demo/server.db"
"$bin/demo/zelvan-demo-engine" "$server" &
engine=$!
trap 'kill $engine 2>/dev/null || true' EXIT
build/demo/app/zelvan-scheduler "QuorraAdmin,$("$bin/demo/zelvan-scheduler-demo" --password),\"$server\""
