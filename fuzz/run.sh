#!/bin/sh
# Runs every fuzzer of a build for FUZZ_SECONDS each (or until FUZZ_RUNS executions when set)
# and prints its executions and findings. The seed corpus stays as it is: each fuzzer grows a
# copy in the build folder; what it finds lands in <build>/fuzz-findings/<harness>/.
# Usage: run.sh BUILD_DIR [SECONDS] [RUNS]; FUZZ_HARNESSES picks some of them. Exit status 1 when anything was found.
set -u
build=$1
seconds=${2:-60}
runs=${3:-}
root=$(cd "$(dirname "$0")/.." && pwd)
harnesses=${FUZZ_HARNESSES:-"PalletFile JobFile OutlineFile MessageFile SetupList CommandLine PlacementFile Journal"}
# The sites' files change on every run: keep them in memory when the machine has /dev/shm.
[ -d /dev/shm ] && export TMPDIR=/dev/shm
total=0
for h in $harnesses; do
    work="$build/fuzz-corpus/$h"
    findings="$build/fuzz-findings/$h"
    log="$build/fuzz-logs/$h.log"
    mkdir -p "$work" "$findings" "$(dirname "$log")"
    limit="-max_total_time=$seconds"
    [ -n "$runs" ] && limit="-runs=$runs"
    "$build/fuzz_$h" "$limit" -dict="$root/fuzz/kesto.dict" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$findings/" "$work" "$root/fuzz/corpus/$h" \
        >"$log" 2>&1
    execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -n 1)
    found=$(find "$findings" -type f | wc -l)
    total=$((total + found))
    printf '%-14s %10s executions %7s exec/s %3d findings\n' "$h" "${execs:-?}" "${speed:-?}" \
        "$found"
done
[ "$total" -eq 0 ] || { echo "fuzz: findings in $build/fuzz-findings"; exit 1; }
