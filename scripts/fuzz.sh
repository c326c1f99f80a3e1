#!/bin/sh
# make fuzz: builds the libFuzzer targets with clang under ASan/UBSan in their own build
# folder and runs each for MQ27_FUZZ_SECONDS (default 120) or MQ27_FUZZ_RUNS inputs,
# starting from the seeds in fuzz/corpus, and prints executions and executions per second.
# A finding stops the run with the input that caused it in the fuzz build folder.
# MQ27_FUZZ_TARGETS names the targets to run, all four by default.
# MQ27_FUZZ_KEEP=1 merges what each run found into fuzz/grown/<target>, the smallest set of
# inputs that covers as much; the tests replay those as they are.
set -eu

src=$(cd "$(dirname "$0")/.." && pwd)
build=${FUZZ_BUILD:-$src/build-fuzz}
runs=${MQ27_FUZZ_RUNS:--1}
# A count of inputs asked for runs without a time limit unless one is given too.
if [ "$runs" -gt 0 ]; then seconds=${MQ27_FUZZ_SECONDS:-0}; else seconds=${MQ27_FUZZ_SECONDS:-120}; fi
jobs=${JOBS:-$(nproc)}

clang=$(command -v clang++-14 || command -v clang++ || true)
if [ -z "$clang" ]; then
    echo "fuzz: clang is not installed (sh scripts/install-deps.sh fuzz); nothing fuzzed"
    exit 0
fi

# Warnings stay warnings here: clang warns of things the CI's GCC build, which fails on
# any warning, does not.
if [ ! -f "$build/build.ninja" ]; then
    cmake -S "$src" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$clang" \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMQ27_FUZZ=ON -DMQ27_TESTS=OFF -DMQ27_BENCH=OFF \
        -DMQ27_WERROR=OFF
fi
cmake --build "$build" -j "$jobs" --target mq27fuzz

export ASAN_OPTIONS=abort_on_error=1:detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_QPA_PLATFORM=offscreen

printf '%-16s %14s %10s %8s\n' target executions exec/s seconds > "$build/fuzz-summary.txt"
for target in ${MQ27_FUZZ_TARGETS:-fuzz_frames fuzz_ko3 fuzz_showdata fuzz_simreader}; do
    corpus="$build/corpus/$target"
    mkdir -p "$corpus" "$build/findings"
    cp -n "$src/fuzz/corpus/$target/"* "$src/fuzz/grown/$target/"* "$corpus/" 2>/dev/null || true
    log="$build/$target.log"
    echo "fuzz: $target (${seconds} s, 0: no limit; runs $runs, -1: no limit; $jobs processes)"
    # With more than one core the target runs in as many processes (libFuzzer's fork
    # mode), each fuzzing from the shared corpus; the count of inputs is over all of them.
    started=$(date +%s)
    if ! "$build/bin/$target" -fork="$jobs" -max_total_time="$seconds" -runs="$runs" \
        -artifact_prefix="$build/findings/$target-" "$corpus" > "$log" 2>&1; then
        tail -n 40 "$log"
        echo "fuzz: $target found a fault; its input is in $build/findings"
        exit 1
    fi
    elapsed=$(($(date +%s) - started))
    executions=$(sed -n 's/^#\([0-9]*\):.*/\1/p' "$log" | tail -n 1)
    persecond=$((${executions:-0} / (elapsed > 0 ? elapsed : 1)))
    printf '%-16s %14s %10s %8s\n' "$target" "$executions" "$persecond" "$elapsed" \
        >> "$build/fuzz-summary.txt"
    if [ "${MQ27_FUZZ_KEEP:-0}" = 1 ]; then
        mkdir -p "$src/fuzz/grown/$target"
        "$build/bin/$target" -merge=1 "$src/fuzz/grown/$target" "$corpus" > "$log.merge" 2>&1
    fi
done
cat "$build/fuzz-summary.txt"
