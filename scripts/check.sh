#!/usr/bin/env bash
# Reads the sources without running them:
#   scripts/check.sh [base]     the formatting of all, and clang-tidy on those that changed since they left the
#                               commit or branch `base` (origin/main by default), changes not committed included
#   scripts/check.sh --format   the formatting alone
set -euo pipefail
cd "$(dirname "$0")/.."

base=${1:-origin/main}
scripts/install.sh
find src demo tests bench fuzz soak packaging \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 clang-format --dry-run -Werror
[ "$base" = --format ] && exit 0

scripts/install.sh clang-tidy-16 # an older one does not know source_location
from=$(git merge-base "$base" HEAD)
# A header is read with the source of its name; bench/ and the fuzz targets are not in the compile database.
mapfile -t sources < <(
    { git diff --name-only "$from"; git ls-files --others --exclude-standard; } |
        grep -E '^(src|demo|tests|soak|packaging|fuzz/entries).*\.(cpp|h)$' | sed 's/\.h$/.cpp/' | sort -u | xargs -r ls -d 2>/dev/null
)
[ ${#sources[@]} -eq 0 ] && { echo "No source has changed since $base."; exit 0; }

cmake --preset tidy >/dev/null
# The headers that uic and moc make, without the build of the libraries that their targets wait for.
find build/tidy -name AutogenInfo.json -print0 |
    xargs -0 -P "$(nproc)" -I{} cmake -E cmake_autogen {} Debug >/dev/null
printf '%s\0' "${sources[@]}" |
    xargs -0 -P "$(nproc)" -n 1 clang-tidy-16 -p build/tidy --quiet --warnings-as-errors='*' \
        --header-filter="^$PWD/(src|demo|tests|fuzz|soak)/" 2>&1 | { grep -v ' warnings\? generated\.$' || true; }
