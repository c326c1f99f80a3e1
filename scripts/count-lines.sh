#!/bin/sh
# Lines of code of the tests against those of the program: non-blank lines of the .cpp and
# .h files that are not only a comment (// lines, and lines wholly inside /* */). tests/
# against src/ and tools/; bench/ and fuzz/ count in neither. With folders as arguments it
# counts only those (sh scripts/count-lines.sh tests/link).
set -eu
cd "$(dirname "$0")/.."

count() {
    find "$@" \( -name '*.cpp' -o -name '*.h' \) -type f -print0 | xargs -0 cat | awk '
        { line = $0; sub(/^[ \t]+/, "", line) }
        inBlock { if (line ~ /\*\//) { inBlock = 0; sub(/.*\*\//, "", line); sub(/^[ \t]+/, "", line) } else next }
        line == "" { next }
        line ~ /^\/\// { next }
        line ~ /^\/\*/ { if (line !~ /\*\//) { inBlock = 1; next } rest = line; sub(/.*\*\//, "", rest); if (rest ~ /^[ \t]*$/) next }
        { n++ }
        END { print n + 0 }'
}

if [ $# -gt 0 ]; then count "$@"; exit 0; fi
code=$(count src tools)
tests=$(count tests)
echo "src/ and tools/: $code lines"
echo "tests/:          $tests lines"
awk -v t="$tests" -v c="$code" 'BEGIN { printf "tests/code:      %.3f (a third: %d lines)\n", t / c, c / 3 }'
