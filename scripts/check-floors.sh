#!/bin/sh
# Fails when an include of src/ climbs a floor, or when a logic folder includes widgets.
#
# Each folder of src/ stands on a floor; a folder includes only its own headers and those of
# lower floors. A ui/ subfolder stands beside its folder: it may include its folder and the
# ui/ folders of lower floors, while no logic folder includes a ui/ folder. Folders on the
# same floor do not include each other. The programs in apps/ stand on top of everything,
# widgets included. What lies above reaches down by Qt signals that the composition root
# (shell/program.cpp) connects. The build enforces the floors between folders by giving each
# library only the include folders of the libraries below it; this check keeps the rule the
# build cannot see, between a folder and its ui/ subfolder, and says plainly what climbs.
# docs/architecture.md draws the floors.
#
# usage: check-floors.sh [SRC_DIR]
set -eu
src=${1:-$(dirname "$0")/../src}

if [ ! -d "$src" ]; then
    echo "check-floors: no such folder: $src" >&2
    exit 2
fi

floors='
common 0
values 1
link 2
engine 3
files 4
display 5
search 6
localize 6
extinguish 6
devicesettings 6
record 7
logger 7
shell 8
apps 9
'

list=$(mktemp)
trap 'rm -f "$list"' EXIT
find "$src" -type f \( -name '*.h' -o -name '*.hh' -o -name '*.hpp' -o -name '*.hxx' \
    -o -name '*.cpp' -o -name '*.cc' -o -name '*.cxx' -o -name '*.c' -o -name '*.inl' \
    -o -name '*.ipp' \) | sort > "$list"
if [ ! -s "$list" ]; then
    echo "check-floors: no source file under $src" >&2
    exit 2
fi

while read -r file; do
    rel=${file#"$src"/}
    folder=$(dirname "$rel")
    # Both forms of include: "folder/header.h" and <folder/header.h>.
    grep -n '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<][^">]*/[^">]*[">]' "$file" |
        sed 's/^\([0-9]*\):[^"<]*["<]\([^">]*\)[">].*/\1 \2/' |
        while read -r line header; do
            echo "$rel $line $folder $(dirname "$header")"
        done
done < "$list" | awk -v floors="$floors" '
BEGIN {
    n = split(floors, rows, "\n")
    for (i = 1; i <= n; i++) {
        if (split(rows[i], f, " ") == 2) floor[f[1]] = f[2]
    }
}
function base(folder) { sub(/\/ui$/, "", folder); sub(/^apps\/.*/, "apps", folder); return folder }
function top(folder) { sub(/\/.*/, "", folder); return folder }
function isUi(folder) { return folder ~ /\/ui$/ }
function fail(why) {
    printf "%s:%s: includes %s/: %s\n", $1, $2, $4, why
    bad = 1
}
{
    from = $3; to = $4
    # Library headers such as <QtCore/QString> are none of our folders.
    if (!(top(to) in floor)) next
    if (from == to) next
    # The parts of one program include one another.
    if (from ~ /^apps(\/|$)/ && to ~ /^apps(\/|$)/) next
    if (!(base(from) in floor)) { fail("folder " base(from) " has no floor"); next }
    if (!(base(to) in floor)) { fail("folder " to " has no floor"); next }
    if (isUi(to) && !isUi(from) && from !~ /^apps(\/|$)/) { fail("logic includes widgets"); next }
    if (isUi(from) && to == base(from)) next
    if (floor[base(to)] < floor[base(from)]) next
    if (floor[base(to)] == floor[base(from)])
        fail("same floor as " base(from))
    else
        fail("climbs from floor " floor[base(from)] " to floor " floor[base(to)])
}
END { exit bad }
'
