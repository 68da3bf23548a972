#!/usr/bin/env bash
# Makes the program for Windows (x64) on Debian 12: an installer, a zip of the same files, and a zip of the object files
# for whoever wants to link it with a Qt of his own. The libraries are built once, which takes half an hour on two
# cores, into a folder that later runs use: SCHEDULER_WINDOWS_LIBRARIES, in the user's cache by default.
set -euo pipefail
cd "$(dirname "$0")/.."

say() { echo "== $*"; }

scripts/install.sh g++-mingw-w64-x86-64-posix nsis icoutils cmark-gfm zip autoconf automake libtool tcl dpkg-dev
export SCHEDULER_WINDOWS_LIBRARIES=${SCHEDULER_WINDOWS_LIBRARIES:-${XDG_CACHE_HOME:-${HOME:?}/.cache}/zelvan-scheduler/windows}
packaging/windows/libraries.sh "$SCHEDULER_WINDOWS_LIBRARIES"

say "Drawing the program's icon"
cmake --preset release >/dev/null
cmake --build --preset release --target icon-theme

say "Building the programs"
programs=(zelvan-scheduler zelvan-schedules zelvan-scheduler-setup)
cmake --preset windows >/dev/null
cmake --build --preset windows --target "${programs[@]}" manual-pages

say "Packing"
cd build/windows
files=$PWD/files
rm -rf "$files" ./*.zip ./*-setup.exe
cmake --install . --prefix "$files" --strip >/dev/null
install -D -m 644 /usr/share/doc/mingw-w64-common/copyright "$files/licences/mingw-w64/copyright"
install -D -m 644 "$(readlink -f /usr/share/doc/g++-mingw-w64-x86-64-posix)/copyright" "$files/licences/gcc/copyright"
install -D -m 644 /usr/share/doc/breeze-icon-theme/copyright "$files/licences/breeze/copyright"
for program in "${programs[@]}"; do # a machine without this compiler has none of its libraries
    if x86_64-w64-mingw32-objdump -p "$files/$program.exe" | grep -iE 'DLL Name: (lib|qt)'; then
        echo "$program.exe wants a library beside it." >&2
        exit 1
    fi
done
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' CMakeCache.txt)
installer=$PWD/zelvan-scheduler-$version-setup.exe
makensis -V2 -DFILES="$files" -DVERSION="$version" -DOUTPUT="$installer" -DICON="$PWD/program.ico" \
    ../../packaging/windows/installer.nsi
(cd "$files" && zip -qr "$OLDPWD/zelvan-scheduler-$version.zip" .)
../../packaging/windows/relinkable.sh "zelvan-scheduler-$version-relink.zip" "${programs[@]}"
say "Made in build/windows:"
ls -sh --block-size=M ./*-setup.exe ./*.zip
