#!/bin/sh
# Measures the running tool against the virtual device (full profile): the pace of the poll
# from the device's frame log, the tool's processor time and memory while it polls, and its
# start-up time. Prints the figures that docs/performance.md records.
#
#   sh scripts/measure-live.sh [BUILD] [SECONDS]     (defaults: build, 60)
set -eu

repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
seconds=${2:-60}
sim=$build/bin/mq27sim
tool=$build/bin/mq27diag
work=$(mktemp -d "${TMPDIR:-/tmp}/mq27d-measure.XXXXXX")
mkdir -p "$work/config/Halvorn"
printf '[General]\nPort=1\n' >"$work/config/Halvorn/Kompa3.conf"

now_ms() { echo $(($(date +%s%N) / 1000000)); }
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }

sim_start=$(now_ms)
"$sim" --profile "$repo/tools/profiles/full.json" --link "$work/port" --log "$work/sim.log" \
    >"$work/sim.out" 2>&1 &
sim_pid=$!
trap 'kill $sim_pid ${tool_pid:-} 2>/dev/null || true; rm -rf "$work"' EXIT
while [ ! -e "$work/port" ]; do sleep 0.05; done

tool_start=$(now_ms)
MQ27D_PORT1=$work/port XDG_CONFIG_HOME=$work/config QT_QPA_PLATFORM=offscreen \
    "$tool" >"$work/tool.out" 2>&1 &
tool_pid=$!

rss_kib() { awk '/^VmRSS/ { print $2 }' "/proc/$1/status"; }

# The poll has settled after the take-on; measure the processor time from there on.
sleep 10
ticks_before=$(cpu_ticks $tool_pid)
rss_before=$(rss_kib $tool_pid)
sleep "$seconds"
ticks_after=$(cpu_ticks $tool_pid)
hz=$(getconf CLK_TCK)
rss=$(rss_kib $tool_pid)
hwm=$(awk '/^VmHWM/ { print $2 }' "/proc/$tool_pid/status")

echo "Poll pace, last answer byte to next request (ms; goal 321 + 99 = 420 within 5):"
awk '
    match($0, /"t":[0-9.]+/) { t = substr($0, RSTART + 4, RLENGTH - 4) + 0 }
    /"dir":"out"/ { last_out = t; next }
    /"dir":"in"/ && /"serial":1234567/ {
        if (last_out > 0) {
            gap = t - last_out; n++; sum += gap
            if (n == 1 || gap < min) min = gap
            if (gap > max) max = gap
        }
        last_out = 0
    }
    END { if (n) printf "  n = %d, mean %.1f, min %.1f, max %.1f\n", n, sum / n, min, max }
' "$work/sim.log"

first_request=$(awk 'match($0, /"t":[0-9.]+/) && /"dir":"in"/ {
    print substr($0, RSTART + 4, RLENGTH - 4); exit }' "$work/sim.log")
echo "Start-up to the first window (ms; first search telegram less the 1789 ms search step):"
awk -v first="$first_request" -v offset=$((tool_start - sim_start)) \
    'BEGIN { printf "  %.0f\n", first - offset - 1789 }'
echo "Processor time while polling, $seconds s (goal < 2 % of one core):"
awk -v t=$((ticks_after - ticks_before)) -v hz="$hz" -v s="$seconds" \
    'BEGIN { printf "  %.2f %% of one core\n", 100 * t / hz / s }'
echo "Memory (MiB; goal < 60 resident):"
awk -v before="$rss_before" -v now="$rss" -v peak="$hwm" 'BEGIN {
    printf "  resident %.1f at the end, %.1f at the start; peak %.1f\n",
        now / 1024, before / 1024, peak / 1024 }'
