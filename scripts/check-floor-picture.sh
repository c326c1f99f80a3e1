#!/bin/sh
# Fails when the floor picture of docs/architecture.md and the libraries' links as CMake
# knows them (cmake --graphviz) differ: every library with the libraries it links directly.
#
# usage: check-floor-picture.sh SOURCE_DIR BUILD_DIR
set -eu
root=$1
build=$2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

(cd "$build" && cmake --graphviz="$tmp/graph.dot" . > /dev/null)

# The build's edges between our libraries, "from -> to", one a line.
awk '
/^[[:space:]]*"node[0-9]+" \[ label = / {
    node = $1; gsub(/"/, "", node)
    label = $0; sub(/.*label = "/, "", label); sub(/".*/, "", label)
    name[node] = label
}
/^[[:space:]]*"node[0-9]+" -> "node[0-9]+"/ {
    from = $1; to = $3; gsub(/"/, "", from); gsub(/"/, "", to)
    edges[++n] = from " " to
}
END {
    for (i = 1; i <= n; i++) {
        split(edges[i], e, " ")
        if (name[e[1]] ~ /^mq27_/ && name[e[2]] ~ /^mq27_/) print name[e[1]] " -> " name[e[2]]
    }
}' "$tmp/graph.dot" | sort -u > "$tmp/built"

# The picture's edges: lines "library -> a, b" in the document.
grep -E '^mq27_[a-z_]+ -> ' "$root/docs/architecture.md" | awk '{
    from = $1
    line = $0; sub(/^[^>]*> /, "", line)
    n = split(line, to, /, */)
    for (i = 1; i <= n; i++) print from " -> " to[i]
}' | sort -u > "$tmp/drawn"

if [ ! -s "$tmp/built" ] || [ ! -s "$tmp/drawn" ]; then
    echo "check-floor-picture: no libraries found (built: $(wc -l < "$tmp/built"), drawn: $(wc -l < "$tmp/drawn"))" >&2
    exit 2
fi
if ! diff -u "$tmp/drawn" "$tmp/built" > "$tmp/diff"; then
    echo "check-floor-picture: docs/architecture.md (-) and the build (+) link differently:" >&2
    grep -E '^[-+]mq27_' "$tmp/diff" >&2
    exit 1
fi
echo "check-floor-picture: $(wc -l < "$tmp/built") links as drawn"
