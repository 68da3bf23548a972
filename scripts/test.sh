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
exec ctest --preset test
