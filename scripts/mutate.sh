#!/bin/sh
# Plants the faults of scripts/mutations.txt one at a time and tells which of them no test
# catches. For each fault: the file is changed in place (and always put back, also on an
# interrupt), the build folder rebuilt incrementally, then the tests run in three rounds
# that stop at the first failure: the tests of the fault's own folder, the other tests but
# the end-to-end ones, the end-to-end tests. A fault is caught when a round fails.
#
#   sh scripts/mutate.sh [build folder] [number ...]
#   sh scripts/mutate.sh --check      only checks that the list fits the sources
#
# The build folder (default build) must be configured already. Numbers pick faults of the
# list (1 is the first); without them all run. MQ27_MUTATE_ROUNDS=1 stops after the first
# round (a quick look; a fault that its folder misses then shows as "missed by <folder>").
# Exits 1 if a fault survived or did not build, 2 if the list does not fit the sources.
set -eu

src=$(cd "$(dirname "$0")/.." && pwd)
check=
if [ "${1:-}" = --check ]; then check=1; shift; fi
if [ -n "$check" ]; then build=; else build=$(cd "${1:-$src/build}" && pwd); fi
[ $# -gt 0 ] && shift
list=${MQ27_MUTATIONS:-$src/scripts/mutations.txt}
jobs=${JOBS:-2}
rounds=${MQ27_MUTATE_ROUNDS:-3}
work=$(mktemp -d)
backup=
target=

# Puts the file back with a new time stamp, so that the next build compiles it again
# instead of keeping the planted fault's object.
restore() {
    if [ -n "$target" ] && [ -f "$backup" ]; then cat "$backup" > "$target"; fi
    target=
}
trap 'restore; rm -rf "$work"' EXIT
trap 'exit 130' INT TERM HUP

# Splits the list into one directory per fault (file, from, to, title) and checks that
# every text occurs exactly once; nothing is planted if one does not.
python3 - "$list" "$src" "$work" <<'PY'
import os, sys
path, src, work = sys.argv[1:4]
entries, title, cur = [], "", None
for line in open(path, encoding="utf-8").read().splitlines():
    if line.startswith("# "):
        title = line[2:]
    elif line.startswith("@ "):
        cur = {"file": line[2:].strip(), "title": title}
        entries.append(cur)
    elif line.startswith("- ") and cur is not None:
        cur["from"] = line[2:]
    elif line.startswith("+ ") and cur is not None:
        cur["to"] = line[2:]
bad = 0
for n, e in enumerate(entries, 1):
    if "from" not in e or "to" not in e:
        print(f"mutate: fault {n} ({e['file']}) lacks its - or + line"); bad = 1; continue
    try:
        text = open(os.path.join(src, e["file"]), encoding="utf-8").read()
    except OSError as error:
        print(f"mutate: fault {n}: {error}"); bad = 1; continue
    count = text.count(e["from"])
    if count != 1:
        print(f"mutate: fault {n}: {e['file']} holds the text {count} times, not once: {e['from']}")
        bad = 1
    d = os.path.join(work, str(n))
    os.makedirs(d)
    for key in ("file", "from", "to", "title"):
        open(os.path.join(d, key), "w", encoding="utf-8").write(e.get(key, ""))
sys.exit(2 if bad else 0)
PY

count=$(ls "$work" | wc -l)
if [ -n "$check" ]; then echo "mutate: $count faults, every text found once"; exit 0; fi
picked=${*:-$(seq 1 "$count")}

plant() { # directory of a fault
    python3 - "$1" "$src" <<'PY'
import os, sys
d, src = sys.argv[1:3]
read = lambda key: open(os.path.join(d, key), encoding="utf-8").read()
path = os.path.join(src, read("file"))
text = open(path, encoding="utf-8").read()
open(path, "w", encoding="utf-8").write(text.replace(read("from"), read("to"), 1))
PY
}

# The test folder that mirrors a source file: src/<folder>/..., tools/<...> -> tools.
folderOf() {
    case "$1" in
    src/*) echo "$1" | cut -d/ -f2 ;;
    *) echo "$1" | cut -d/ -f1 ;;
    esac
}

runs() { # ctest arguments; true when every selected test passed
    (cd "$build" && ctest --stop-on-failure -j "$jobs" --timeout 300 "$@" > "$work/ctest.log" 2>&1)
}

failedTest() {
    sed -n 's/^[[:space:]]*[0-9]* - \(.*\) (.*/\1/p' "$work/ctest.log" | head -n 1
}

survivors=0
broken=0
touched=
summary="$work/summary"
: > "$summary"
for n in $picked; do
    d="$work/$n"
    [ -d "$d" ] || { echo "mutate: no fault $n"; exit 2; }
    file=$(cat "$d/file")
    folder=$(folderOf "$file")
    touched="$touched tests_$folder"
    target="$src/$file"
    backup="$work/backup"
    cp "$target" "$backup"
    plant "$d"
    started=$(date +%s)
    verdict=
    if ! cmake --build "$build" -j "$jobs" --target "tests_$folder" > "$work/build.log" 2>&1; then
        verdict="did not build"
    elif ! runs -R "^$folder\$"; then
        verdict="caught by $(failedTest)"
    elif [ "$rounds" -lt 2 ]; then
        verdict="missed by $folder"
    elif ! cmake --build "$build" -j "$jobs" > "$work/build.log" 2>&1; then
        verdict="did not build"
    elif ! runs -LE e2e -E "^$folder\$"; then
        verdict="caught by $(failedTest)"
    elif ! runs -L e2e; then
        verdict="caught by $(failedTest)"
    else
        verdict="SURVIVED"
    fi
    restore
    case "$verdict" in
    SURVIVED | missed*) survivors=$((survivors + 1)) ;;
    "did not build") broken=$((broken + 1)); tail -n 20 "$work/build.log" ;;
    esac
    line=$(printf '%3s  %-48s %s (%ss)' "$n" "$(cat "$d/title")" "$verdict" $(($(date +%s) - started)))
    echo "$line"
    echo "$line" >> "$summary"
done

# Leave the build as the sources are: what the rounds built again.
if [ "$rounds" -lt 2 ]; then set -- --target $touched; else set --; fi
cmake --build "$build" -j "$jobs" "$@" > "$work/build.log" 2>&1 || tail -n 20 "$work/build.log"
echo
echo "mutate: $(echo "$picked" | wc -w) faults, $survivors survived, $broken did not build"
[ "$survivors" -eq 0 ] && [ "$broken" -eq 0 ]
