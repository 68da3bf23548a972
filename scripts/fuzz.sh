#!/usr/bin/env bash
# Feeds made-up input to what reads texts that others wrote (fuzz/entries.h), with sanitizers:
#   scripts/fuzz.sh [seconds for each target] [target…]     60 seconds and all targets by default
# What was found interesting is kept in build/fuzz/corpus for the next run. An input that ends a target is left in
# build/fuzz/found; when the fault is mended it belongs into fuzz/corpus, where the tests meet it.
set -euo pipefail
cd "$(dirname "$0")/.."

export seconds=${1:-60}
targets=("${@:2}")
[ ${#targets[@]} -gt 0 ] || targets=(sql numbers addresses templates security)
scripts/install.sh clang-16 libclang-rt-16-dev llvm-16
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${targets[@]/#/fuzz-}"

[ -w /dev/shm ] && export TMPDIR=/dev/shm # each input makes files
# Short traces and little memory kept back: most of the time goes there.
export ASAN_OPTIONS=detect_leaks=1:malloc_context_size=8:quarantine_size_mb=32 ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-16
export LSAN_OPTIONS=suppressions=$PWD/tests/leaks.supp:print_suppressions=0 UBSAN_OPTIONS=print_stacktrace=1

fuzz() {
    local target=$1 out=build/fuzz log options=()
    log=$out/$target.log
    mkdir -p "$out/corpus/$target" "$out/found"
    [ -f "fuzz/$target.dict" ] && options=(-dict="fuzz/$target.dict")
    local status=0
    "$out/fuzz/fuzz-$target" "${options[@]}" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=8192 \
        -print_final_stats=1 -artifact_prefix="$out/found/$target-" "$out/corpus/$target" "fuzz/corpus/$target" \
        >"$log" 2>&1 || status=$?
    awk -v target="$target" -v status="$status" '
        / cov: / { for (i = 1; i < NF; i++) if ($i == "cov:") cov = $(i + 1) }
        /^stat::number_of_executed_units/ { runs = $2 }
        /^Done / { seconds = $5 }
        /Test unit written to/ { found = $NF }
        END {
            printf "%-10s %9s runs  coverage %6s  %5s s  %s\n", target, runs, cov, seconds, status == 0 ? "ok" : "FAILED " found
        }' "$log"
    [ "$status" -eq 0 ] || { grep -m1 -A12 -E 'ERROR|runtime error|what\(\)' "$log" | sed 's/^/    /'; return 1; }
}
export -f fuzz
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'fuzz {}'
