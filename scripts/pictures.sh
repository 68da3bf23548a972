#!/usr/bin/env bash
# Takes the pictures of the manual and the README anew: walks the release build on the demo server and keeps the
# screens that the pages show.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh imagemagick
cmake --preset release >/dev/null
cmake --build --preset release

bin=build/release/demo
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$bin/zelvan-scheduler-demo" "$work/office"
(cd "$work" && QT_QPA_PLATFORM=offscreen "$OLDPWD/$bin/zelvan-scheduler-walk" office pictures light)

# take <picture> <step of the walk> [width]: the first picture of the step, no wider than the help screen
take() {
    local first
    first=$(find "$work/pictures" -name "[0-9]*-$2.png" | sort -V | head -1)
    convert "$first" -resize "${3:-840}x>" -strip +dither -colors 224 "PNG8:docs/$1.png"
}
mkdir -p docs/manual/pictures
take pictures/main-screen sort-by-title-and-filter 1366
take manual/pictures/main-screen sort-by-title-and-filter
take manual/pictures/chooser choose-the-project
take manual/pictures/template save-the-template
take manual/pictures/parameters set-the-parameters-of-all-calls
take manual/pictures/editor set-the-time
take manual/pictures/series save-the-series
take manual/pictures/change-schedules save-the-change
take manual/pictures/agenda see-the-week
take manual/pictures/import see-what-the-import-does
take manual/pictures/log read-its-log
take manual/pictures/subprojects save-the-sub-project-template
take manual/pictures/email save-the-address-book
