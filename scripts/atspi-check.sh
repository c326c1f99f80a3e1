#!/bin/sh
# Reads and drives the demo tool through the accessibility bus, as a screen reader, voice
# control or desktop automation does, in German and in English: see atspi-settings.py.
#
#   sh scripts/atspi-check.sh [BUILD]      (BUILD defaults to "build")
set -eu

repo=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-build}" && pwd)
sh "$repo/scripts/install-deps.sh" atspi

if [ -z "${ATSPI_CHECK_INNER:-}" ]; then
    export ATSPI_CHECK_INNER=1
    exec xvfb-run -a -s "-screen 0 1366x768x24" dbus-run-session -- sh "$0" "$build"
fi

export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
bus=$!
# The runs choose their language in the demo's settings; the user's choice comes back after.
config=$build/demo-config/Halvorn/Kompa3.conf
[ -f "$config" ] && cp "$config" "$config.atspi"
trap 'kill $bus 2>/dev/null || true; [ -f "$config.atspi" ] && mv "$config.atspi" "$config"' EXIT

status=0
for run in "de 1 0 20" "en 2 1 33"; do
    set -- $run
    if [ -f "$config" ]; then
        sed -i "s/^Language=.*/Language=$2/" "$config"
    fi
    LANG=$1 sh "$repo/scripts/run-demo.sh" "$build" >/dev/null 2>&1 &
    demo=$!
    /usr/bin/python3 "$repo/scripts/atspi-settings.py" "$1" "$3" "$4" || status=1
    pkill -TERM -f "$build/bin/mq27diag\$" 2>/dev/null || true
    wait "$demo" 2>/dev/null || true
done
exit "$status"
