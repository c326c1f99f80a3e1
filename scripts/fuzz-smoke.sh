#!/bin/sh
# One fuzz target for a few seconds from its seeds, so that a regression shows in the
# tests. Skipped (code 77) when the fuzz build (make fuzz) is not there.
set -eu
build=$1
target=$2
seeds=$3
program="$build/bin/$target"
[ -x "$program" ] || exit 77
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$seeds"/* "$scratch/" 2>/dev/null || true
ASAN_OPTIONS=abort_on_error=1:detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
QT_QPA_PLATFORM=offscreen \
    "$program" -max_total_time="${MQ27_FUZZ_SMOKE_SECONDS:-3}" -print_final_stats=1 \
    -artifact_prefix="$scratch/" "$scratch"
