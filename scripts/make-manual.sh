#!/bin/sh
# Turns the service manual's sources into the help files the tool opens:
#
#   docs/manual/<language>.html   one per language, with [[n]] for string n of the tool's
#                                 string table in that language (the captions as the tool
#                                 shows them)
#   docs/manual/manual.css        the look of all four
#   docs/manual/KompaHelp_010_00<n>.pdf   language n: 1 German, 2 English, 3 French, 4 Dutch
#
# Every element id becomes a named destination; the help opens at "000", "001", ... Each
# PDF carries the SHA-256 of what it was made from (the expanded HTML and the style sheet)
# as its custom metadata "sourcedigest", so that a stale PDF shows in a fresh clone too.
#
#   sh scripts/make-manual.sh           remakes the PDFs whose sources changed (weasyprint)
#   sh scripts/make-manual.sh --force   remakes all four
#   sh scripts/make-manual.sh --check   only tells which PDF does not match its source
set -eu
mode=${1:-}
root=$(cd "$(dirname "$0")/.." && pwd)
manual=$root/docs/manual
strings=$root/src/common/strings.tsv
work=$(mktemp -d "${TMPDIR:-/tmp}/mq27-manual.XXXXXX")
trap 'rm -rf "$work"' EXIT

# The string table's column of a language: index, de, en, fr, nl.
column() {
    case $1 in
    de) echo 2 ;;
    en) echo 3 ;;
    fr) echo 4 ;;
    nl) echo 5 ;;
    esac
}

# The source with every [[n]] replaced by string n of its language, as HTML text. A number
# the table lacks stops the build: the manual must not name an element the tool does not.
expand() {
    awk -F '\t' -v col="$(column "$1")" -v src="$2" '
        FNR == NR { if (FNR > 1) text[$1] = $col; next }
        {
            line = $0
            out = ""
            while (match(line, /\[\[[0-9]+\]\]/)) {
                n = substr(line, RSTART + 2, RLENGTH - 4)
                if (!(n in text)) {
                    printf "%s:%d: no string %s\n", src, FNR, n > "/dev/stderr"
                    failed = 1
                }
                s = text[n]
                sub(/ +$/, "", s)
                gsub(/&/, "\\&amp;", s)
                gsub(/</, "\\&lt;", s)
                gsub(/>/, "\\&gt;", s)
                out = out substr(line, 1, RSTART - 1) s
                line = substr(line, RSTART + RLENGTH)
            }
            print out line
        }
        END { exit failed }
    ' "$strings" "$2"
}

digest() {
    cat "$1" "$manual/manual.css" | sha256sum | cut -d ' ' -f 1
}

stale=""
for language in de en fr nl; do
    case $language in
    de) number=1 ;;
    en) number=2 ;;
    fr) number=3 ;;
    nl) number=4 ;;
    esac
    source=$manual/$language.html
    pdf=$manual/KompaHelp_010_00$number.pdf
    expand "$language" "$source" >"$work/$language.html"
    want=$(digest "$work/$language.html")
    have=""
    if [ -f "$pdf" ]; then
        have=$(pdfinfo -custom "$pdf" 2>/dev/null | sed -n 's/^sourcedigest: *//p')
    fi
    if [ "$mode" = --check ]; then
        [ "$have" = "$want" ] || stale="$stale $(basename "$pdf")"
        continue
    fi
    if [ "$have" = "$want" ] && [ "$mode" != --force ]; then
        echo "$(basename "$pdf") is up to date"
        continue
    fi
    # Written beside the sources, so that the style sheet is found by its relative link.
    page=$manual/.$language.expanded.html
    sed "s|</head>|<meta name=\"sourcedigest\" content=\"$want\"></head>|" \
        "$work/$language.html" >"$page"
    weasyprint --custom-metadata "$page" "$work/$language.pdf" || {
        rm -f "$page"
        exit 1
    }
    rm -f "$page"
    mv "$work/$language.pdf" "$pdf"
    echo "$(basename "$pdf"): $(pdfinfo "$pdf" | sed -n 's/^Pages: *//p') pages," \
        "$(wc -c <"$pdf") bytes"
done

if [ -n "$stale" ]; then
    echo "not made from the present sources:$stale (run: make manual)" >&2
    exit 1
fi
