#!/usr/bin/env bash
# Makes the Debian package, build/release/zelvan-scheduler_….deb, and proves it on a fresh Debian 12 that is made for
# that and thrown away: installs the package there, starts the program and walks through its screens as an ordinary
# user, and removes the package. The walk's pictures are left in build/package-pictures.
set -euo pipefail
cd "$(dirname "$0")/.."

say() { echo "== $*"; }

scripts/install.sh appstream desktop-file-utils dpkg-dev file man-db mmdebstrap uidmap
say "Building"
rm -f build/release/*.deb
cmake --preset release >/dev/null
cmake --build --preset release

say "Checking menu entry, metadata and man pages"
desktop-file-validate packaging/zelvan-scheduler.desktop
appstreamcli validate --no-net packaging/zelvan-scheduler.metainfo.xml
for page in build/release/packaging/*.[18]; do
    faults=$(LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 "$page" 2>&1 >/dev/null)
    [ -z "$faults" ] || { echo "$faults" >&2; exit 1; }
done

say "Packing"
(cd build/release && cpack)
package=$(echo build/release/zelvan-scheduler_*.deb)
dpkg-deb --info "$package" | grep -E '^ (Package|Version|Depends|Recommends):'

say "Making a Debian 12 and trying the package in it"
rm -rf build/package-pictures
mkdir build/package-pictures
mmdebstrap --quiet --variant=apt --format=null \
    --customize-hook="copy-in $package build/release/demo/zelvan-scheduler-demo build/release/demo/zelvan-demo-engine \
        build/release/demo/zelvan-scheduler-walk packaging/try-package.sh /root" \
    --customize-hook='chroot "$1" bash /root/try-package.sh' \
    --customize-hook="sync-out /home/tester/pictures build/package-pictures" \
    bookworm /dev/null
say "The package is good: $package"
