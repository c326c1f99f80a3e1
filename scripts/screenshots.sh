#!/bin/sh
# Pictures of every page of the main view, in English, for the minimal, the full and the
# ten-module profile of the virtual device, into docs/screenshots/.
#
#   sh scripts/screenshots.sh [BUILD] [LANGUAGE] [SCALE]   (defaults: build 2 1)
#
# LANGUAGE is the tool's language number (1 German, 2 English, 3 French, 4 Dutch); SCALE
# goes to QT_SCALE_FACTOR. Pictures in another language or at another scale go to
# docs/screenshots/<language>-<scale>/, for looking at, not for the README. The screen is a
# laptop's 1366 x 768, times SCALE; MQ27D_SHOTS_SCREEN (e.g. 2600x1800) gives another, and
# MQ27D_SHOTS_PROFILES a shorter list of profiles.
set -eu

repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
language=${2:-2}
scale=${3:-1}
case $build in /*) ;; *) build=$(pwd)/$build ;; esac
out=${MQ27D_SHOTS_DIR:-$repo/docs/screenshots}
if [ "$language" != 2 ] || [ "$scale" != 1 ]; then out=$out/$language-$scale; fi
mkdir -p "$out"
screen=${MQ27D_SHOTS_SCREEN:-$(awk -v s="$scale" 'BEGIN { printf "%dx%d", 1366 * s, 768 * s }')}

work=$(mktemp -d "${TMPDIR:-/tmp}/mq27d-shots.XXXXXX")
trap 'rm -rf "$work"' EXIT

for profile in ${MQ27D_SHOTS_PROFILES:-minimal full tenmodules}; do
    link=$work/$profile-port
    "$build/bin/mq27sim" --profile "$repo/tools/profiles/$profile.json" --link "$link" \
        >"$work/$profile.sim" 2>&1 &
    sim=$!
    tries=0
    while [ ! -e "$link" ] && [ "$tries" -lt 100 ]; do
        sleep 0.1
        tries=$((tries + 1))
    done
    config=$work/config-$profile/Halvorn/Kompa3.conf
    mkdir -p "$(dirname "$config")"
    printf '[General]\nPort=1\nLanguage=%s\n' "$language" >"$config"
    MQ27D_PORT1=$link XDG_CONFIG_HOME=$work/config-$profile QT_SCALE_FACTOR=$scale \
        MQ27D_SCREENSHOTS=$out MQ27D_SCREENSHOT_PREFIX=$profile \
        xvfb-run -a -s "-screen 0 ${screen}x24" "$build/bin/mq27diag" || true
    kill -TERM "$sim" 2>/dev/null || true
    wait "$sim" 2>/dev/null || true
done
ls "$out"
