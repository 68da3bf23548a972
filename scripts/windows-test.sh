#!/usr/bin/env bash
# Tries the program for Windows under Wine, without a display: the test programs, then what scripts/windows.sh packed, from
# its installation to its removal, with the walk through the screens between. The walk's pictures are left in
# build/windows-pictures. What it cannot try is what Wine itself is not: Windows' own look, drivers and consoles.
set -euo pipefail
cd "$(dirname "$0")/.."

say() { echo "== $*"; }
fail() { echo "$*" >&2; exit 1; }

scripts/windows.sh
scripts/install.sh wine wine64 xvfb xauth unixodbc libsqliteodbc
say "Building the test programs"
export SCHEDULER_WINDOWS_LIBRARIES=${SCHEDULER_WINDOWS_LIBRARIES:-${XDG_CACHE_HOME:-$HOME/.cache}/zelvan-scheduler/windows}
cmake --build --preset windows

# A Windows that is made for this and thrown away, with a display that nobody sees. The tests' windows are drawn in memory
# only, as on other systems; Wine hands on variables of Qt under another name.
trial=$(mktemp -d)
export WINEPREFIX=$trial/wine WINEDEBUG=-all
export WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree,mshtml=" # nothing of the tester's own desktop, no downloads
Xvfb -displayfd 3 -screen 0 1366x768x24 3>"$trial/display" 2>/dev/null &
display=$!
trap 'wineserver -k 2>/dev/null || true; kill $display 2>/dev/null || true; rm -rf "$trial"' EXIT
until [ -s "$trial/display" ]; do
    kill -0 $display 2>/dev/null || fail "There is no display to show Windows on."
    sleep 0.1
done
DISPLAY=:$(cat "$trial/display")
export DISPLAY
wine() { timeout -s KILL 900 wine "$@" 2> >(grep -v -e wine32 -e multiarch -e 'dpkg --add' -e 'apt-get install' -e '^$' >&2); }
wine wineboot --init
ln -s "$WINEPREFIX/drive_c" "$trial/C:" # the ODBC driver, which is Linux's, is given Windows' paths
fonts=/usr/share/fonts/truetype/crosextra
cp $fonts/Carlito*.ttf "$WINEPREFIX/drive_c/windows/Fonts"

say "Running the tests"
build=$PWD/build/windows
cd "$trial"
failed=()
for program in "$build"/tests/test-*.exe; do
    name=$(basename "$program" .exe)
    # Without a console nothing else of what a test says is seen.
    WINEQT_QPA_PLATFORM=offscreen WINEQT_QPA_FONTDIR=$(winepath -w $fonts) \
        timeout -s KILL 900 wine "$program" -tap >"$name.log" 2>/dev/null || failed+=("$name")
    grep -q '^ok' "$name.log" || failed+=("$name")
    echo "$name: $(grep -c '^ok' "$name.log") passed, $(grep -c '^ok.*# SKIP' "$name.log" || true) of them skipped"
    grep -E '^not ok|# SKIP' "$name.log" | sed 's/^/    /' || true
done
[ ${#failed[@]} -eq 0 ] || { cat -v "${failed[@]/%/.log}"; fail "Failed: ${failed[*]}"; }

say "Installing"
installer=$(echo "$build"/zelvan-scheduler-*-setup.exe)
product="$WINEPREFIX/drive_c/Program Files/Quorra Zelvan"
mkdir -p "$product"
wine "$installer" /S '/D=C:\Program Files\Quorra Zelvan' && fail "It was installed where the product is not."
[ -z "$(ls -A "$product")" ] || fail "It left something where the product is not."
touch "$product/Quorra Zelvan.exe"
wine "$installer" /S
for file in zelvan-scheduler.exe zelvan-schedules.exe zelvan-scheduler-setup.exe SchDB.sql Scheduler/manual/index.html; do
    [ -s "$product/$file" ] || fail "$file is not installed."
done

say "Setting up"
demo="$trial/Zelván Büro"
password=$(wine "$build/demo/zelvan-scheduler-demo.exe" --password | tr -d '\r')
wine "$product/zelvan-scheduler-setup.exe" <<<"$password"
mkdir "$demo"
ln -s "$product" "$demo/app"
wine "$build/demo/zelvan-scheduler-demo.exe" "$(winepath -w "$demo")" >/dev/null
server="file:$(winepath -w "$demo/server.db")"

say "Asking by the command line"
wine "$product/zelvan-schedules.exe" check --server "$server" --user QuorraAdmin --password-stdin <<<"$password"

say "Starting the program"
ZELVAN_SCHEDULER_STATEMENTS=$(winepath -w "$trial/statements") \
    wine "$product/zelvan-scheduler.exe" "QuorraAdmin,$password,\"$server\"" &
seconds=0
until grep -qs 'FROM NorvaScheduler.dbo.tblschedule' "$trial/statements"; do # the main screen reads
    [ $((++seconds)) -le 60 ] || fail "The program does not reach its main screen."
    sleep 1
done
wineserver -k

say "Walking through the screens"
rm -rf "$build-pictures"
wine "$build/demo/zelvan-scheduler-walk.exe" "$(winepath -w "$demo")" "$(winepath -w "$build-pictures")"

say "Removing"
wine "$product/zelvan-scheduler-uninstall.exe" /S
wineserver -w # it goes on as a copy of itself
left=$(ls "$product")
echo "Left beside the product is what its administrator and users made: ${left//$'\n'/, }"
! grep -qE '\.sql|zelvan-|Scheduler$' <<<"$left" || fail "The program left something."
[ -z "$(find "$WINEPREFIX" -name 'Zelvan Scheduler.lnk')" ] || fail "Its Start menu entry is left."
say "Good: $installer"
