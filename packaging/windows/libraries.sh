#!/usr/bin/env bash
# Builds the libraries that the program for Windows is linked with, static, from Debian's own sources, into the
# folder given: Qt (of which only what the program uses), SQLite and libsodium. Half an hour on two cores; what is
# already there is left alone. The licences of all of them are put beside.
#   libraries.sh <folder>
set -euo pipefail
case $1 in
*[[:space:]]*) echo "The libraries cannot be built in a folder with blanks in its path: $1" >&2 && exit 1 ;;
esac
recipe=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
cd "$1"
root=$PWD
export SCHEDULER_WINDOWS_LIBRARIES=$root
host=x86_64-w64-mingw32

say() { echo "== $*"; }

# Source lists of our own, so that the machine's stay as they are.
fetch() {
    mkdir -p sources/lists/partial
    cd sources
    echo "deb-src http://deb.debian.org/debian bookworm main" >debian.list
    local apt=(apt-get -qq -o Dir::Etc::sourcelist="$PWD/debian.list" -o Dir::Etc::sourceparts=/dev/null
        -o Dir::State::lists="$PWD/lists" -o APT::Sandbox::User= -o Debug::NoLocking=1)
    "${apt[@]}" update
    "${apt[@]}" source "$1" >/dev/null
    cd ..
}

# once <name> <function>: builds what is not there yet, and again when its recipe has changed.
once() {
    local stamp job
    stamp=built/$1-$({ declare -f "$2"; cat "$recipe/toolchain.cmake"; } | sha256sum | cut -c1-16)
    [ -e "$stamp" ] && return
    say "Building $1 for Windows"
    rm -rf "build/$1"
    mkdir -p "build/$1" built
    # Not as a condition: there `set -e` would not hold.
    "$2" >"build/$1.log" 2>&1 &
    job=$!
    trap 'kill $job 2>/dev/null' INT TERM
    while kill -0 $job 2>/dev/null; do
        sleep 5
        [ ! -t 1 ] || printf '\r\033[K%s' "$(tail -n 1 "build/$1.log" | cut -c1-100)"
    done
    [ ! -t 1 ] || printf '\r\033[K'
    if ! wait $job; then
        tail -30 "build/$1.log" >&2
        echo "Building $1 failed; all it said is in $root/build/$1.log" >&2
        exit 1
    fi
    touch "$stamp"
}

keep_licences() {
    mkdir -p "$root/licences/$1"
    cp -r "${@:2}" "$root/licences/$1/"
}

sodium() {
    fetch libsodium
    (cd sources/libsodium-*/ && autoreconf -i)
    cd build/libsodium
    "$root"/sources/libsodium-*/configure --host=$host CC=$host-gcc-posix --prefix="$root" --enable-static \
        --disable-shared
    make -j"$(nproc)" install
    keep_licences libsodium "$root"/sources/libsodium-*/LICENSE
}

sqlite() {
    fetch sqlite3
    cd build/sqlite
    "$root"/sources/sqlite3-*/configure --disable-readline --disable-tcl
    make sqlite3.c
    # As Debian builds it, in what the program uses.
    $host-gcc-posix -O2 -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_THREADSAFE=1 -DSQLITE_MAX_VARIABLE_NUMBER=250000 \
        -c sqlite3.c -o sqlite3.o
    $host-ar rcs libsqlite3.a sqlite3.o
    install -D -m 644 -t "$root/lib" libsqlite3.a
    install -D -m 644 -t "$root/include" sqlite3.h sqlite3ext.h
    keep_licences sqlite "$root"/sources/sqlite3-*/LICENSE.md
}

qt() {
    fetch qt6-base
    cd build/qt
    local sources
    sources=$(echo "$root"/sources/qt6-base-*/)
    # A patch of Debian's for its own cross-builds turns a tool on that is made for Android.
    local off=(androiddeployqt
        # What the program does not use, or what would need one more library.
        opengl vulkan dbus network sql xml concurrent printsupport icu glib zstd fontconfig
        direct2d directwrite directwrite3 tabletevent
        graphicsview graphicseffect undocommand undostack undogroup undoview wizard mdiarea dial lcdnumber fontdialog
        colordialog fontcombobox columnview keysequenceedit pdf textodfwriter textmarkdownwriter jalalicalendar
        islamiccivilcalendar gif jpeg errormessage progressdialog dockwidget splashscreen style_windowsvista
        # Those that come with Qt's sources are taken in place of the machine's.
        system_zlib system_png system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion
        pkg_config)
    cmake -G Ninja "$sources" --log-level=STATUS \
        -DCMAKE_TOOLCHAIN_FILE="$recipe/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$root" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" -DCMAKE_C_FLAGS_RELEASE="-O2 -DNDEBUG" \
        -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no \
        $(printf -- '-DFEATURE_%s=OFF ' "${off[@]}")
    ninja
    ninja install
    keep_licences qt "$sources"/LICENSES "$sources"/debian/copyright
}

once libsodium sodium
once sqlite sqlite
once qt qt
