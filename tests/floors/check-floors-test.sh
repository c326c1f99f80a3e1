#!/bin/sh
# The floor check itself: it must refuse what climbs, in every spelling of an include and in
# every kind of source file, and must not pass by looking at nothing.
# usage: check-floors-test.sh PROJECT_DIR
set -u
check="$1/scripts/check-floors.sh"
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failures=0

# A tree of `file:include` pairs; an empty include leaves the file without one.
tree() {
    rm -rf "$root/src"
    for pair in "$@"; do
        file=${pair%%:*}
        include=${pair#*:}
        mkdir -p "$root/src/$(dirname "$file")"
        if [ -n "$include" ]; then echo "#include $include" > "$root/src/$file"; else : > "$root/src/$file"; fi
    done
}

# expect STATUS TEXT: the check on the tree ends with STATUS and, if TEXT is given, says it.
expect() {
    output=$(sh "$check" "$root/src" 2>&1)
    status=$?
    if [ "$status" -ne "$1" ] || { [ -n "${2:-}" ] && ! echo "$output" | grep -q "$2"; }; then
        echo "FAIL ($3): status $status, wanted $1; said: $output"
        failures=$((failures + 1))
    fi
}

tree 'common/a.h:' 'link/b.cpp:"common/a.h"' 'link/c.cpp:<common/a.h>' 'link/d.cpp:<QtCore/QString>'
expect 0 '' 'downward includes and library headers'

tree 'display/mainview.h:' 'link/b.cpp:<display/mainview.h>'
expect 1 'link/b.cpp:1: includes display/: climbs from floor 2 to floor 5' 'angle brackets'

tree 'display/mainview.h:' 'engine/b.hpp:"display/mainview.h"'
expect 1 'engine/b.hpp:1: includes display/: climbs' 'a .hpp header'

tree 'display/mainview.h:' 'files/b.cc:"display/mainview.h"'
expect 1 'files/b.cc:1: includes display/: climbs' 'a .cc source'

tree 'display/ui/gauge.h:' 'display/view.cpp:"display/ui/gauge.h"'
expect 1 'logic includes widgets' 'logic including its own widgets'

tree 'localize/a.h:' 'extinguish/b.cpp:"localize/a.h"'
expect 1 'same floor as extinguish' 'a folder of the same floor'

tree 'weather/a.h:' 'weather/b.cpp:"link/x.h"'
expect 1 'has no floor' 'an unknown folder'

rm -rf "$root/src" && mkdir -p "$root/src/link"
expect 2 'no source file' 'an empty tree'

rm -rf "$root/src"
expect 2 'no such folder' 'a missing tree'

[ "$failures" -eq 0 ] && echo "check-floors refuses every planted climb"
exit "$failures"
