#!/bin/sh
# The demo of `make run`: the virtual device with the full profile on a pseudo-terminal,
# and the tool on it as port 1; without a display, mq27diag-cli watch on it instead. The
# tool keeps its settings under BUILD/demo-config, so the demo never touches the user's own.
#
#   sh scripts/run-demo.sh [BUILD]      (BUILD defaults to "build")
set -eu

repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
case $build in
/*) ;;
*) build=$(pwd)/$build ;;
esac
sim=$build/bin/mq27sim
tool=$build/bin/mq27diag
cli=$build/bin/mq27diag-cli
for program in "$sim" "$tool" "$cli"; do
    if [ ! -x "$program" ]; then
        echo "run-demo: $program is missing; build first (make build)." >&2
        exit 1
    fi
done

work=$(mktemp -d "${TMPDIR:-/tmp}/mq27d-demo.XXXXXX")
link=$work/mq27d-demo-port
log=$work/mq27sim.log
sim_pid=""

stop_sim() {
    if [ -n "$sim_pid" ] && kill -0 "$sim_pid" 2>/dev/null; then
        kill -TERM "$sim_pid" 2>/dev/null || true
        wait "$sim_pid" 2>/dev/null || true
    fi
    sim_pid=""
}
trap 'stop_sim' EXIT
trap 'stop_sim; exit 130' INT
trap 'stop_sim; exit 143' TERM
trap 'stop_sim; exit 129' HUP

# Port 1 in the demo's own settings; everything else the user chose there stays.
config_home=$build/demo-config
config=$config_home/Halvorn/Kompa3.conf
mkdir -p "$(dirname "$config")"
if [ -f "$config" ] && grep -q '^\[General\]' "$config"; then
    awk '
        /^\[/ { if (general && !done) { print "Port=1"; done = 1 } general = ($0 == "[General]") }
        general && /^Port=/ { if (!done) { print "Port=1"; done = 1 } next }
        { print }
        END { if (general && !done) print "Port=1" }
    ' "$config" >"$config.new"
    mv "$config.new" "$config"
else
    { printf '[General]\nPort=1\n\n'; [ -f "$config" ] && cat "$config"; } >"$config.new"
    mv "$config.new" "$config"
fi

# A first demo start speaks the system's language, English where the tool has none of it;
# a language chosen in the tool later stays.
if ! grep -q '^Language=' "$config"; then
    case ${LC_ALL:-${LC_MESSAGES:-${LANG:-}}} in
    de*) language=1 ;;
    fr*) language=3 ;;
    nl*) language=4 ;;
    *) language=2 ;;
    esac
    awk -v language="$language" '{ print } $0 == "[General]" { print "Language=" language }' \
        "$config" >"$config.new"
    mv "$config.new" "$config"
fi

"$sim" --profile "$repo/tools/profiles/full.json" --link "$link" --log "$log" \
    >"$work/mq27sim.out" 2>&1 &
sim_pid=$!

tries=0
while [ ! -e "$link" ]; do
    if ! kill -0 "$sim_pid" 2>/dev/null; then
        echo "run-demo: the virtual device did not start:" >&2
        cat "$work/mq27sim.out" >&2
        exit 1
    fi
    tries=$((tries + 1))
    if [ "$tries" -gt 100 ]; then
        echo "run-demo: the virtual device made no port within 10 seconds." >&2
        exit 1
    fi
    sleep 0.1
done

echo "Virtual device on $(readlink "$link" || echo "$link"), its log in $log"
export MQ27D_PORT1="$link"
export XDG_CONFIG_HOME="$config_home"

status=0
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    "$tool" || status=$?
else
    echo "No display (neither DISPLAY nor WAYLAND_DISPLAY is set): the device's live state through mq27diag-cli watch instead of the window; stop it with Ctrl+C."
    "$cli" watch --port "$link" || status=$?
fi
exit "$status"
