#!/usr/bin/env bash
# Checks the formatting, builds everything with sanitizers, warnings as errors, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh
scripts/check.sh --format
cmake --preset test >/dev/null
cmake --build --preset test
export ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions=$PWD/tests/leaks.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
# Most of the time goes into small files: in memory where there is room, and programs side by side, unless they are
# guests on one and the same server.
[ -w /dev/shm ] && [ "$(df --output=avail -k /dev/shm | tail -1)" -gt 500000 ] && export TMPDIR=/dev/shm
jobs=$(nproc)
[ -n "${SCHEDULER_TEST_SERVER:-}" ] && jobs=1
exec ctest --preset test --parallel "$jobs"
