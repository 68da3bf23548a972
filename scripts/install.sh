#!/usr/bin/env bash
# Installs what building, running and testing need on Debian 12, and the packages named as arguments, where they
# are not there yet.
set -euo pipefail

packages=(
    g++ cmake ninja-build pkg-config clang-format
    qt6-base-dev qt6-svg-dev libgl-dev
    unixodbc-dev libsqlite3-dev libsodium-dev
    libsqliteodbc tdsodbc            # ODBC drivers: one to test with, one for SQL Server
    breeze-icon-theme librsvg2-bin   # the icons that the program carries are drawn from these
    fonts-crosextra-carlito
    "$@"
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Installing ${missing[*]} needs root or sudo." >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
