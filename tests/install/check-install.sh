#!/bin/sh
# The programs installed under a temporary root run from there: the headless dump of a
# read-out, the virtual device with an installed profile by name, and the desktop tool
# showing a read-out offline (it ends by itself once it has taken its pictures, which
# proves the window was shown). The menu entry and the store listing validate where the
# validators are installed.
#
#   sh tests/install/check-install.sh BUILD SOURCE
set -eu
build=$1
source=$2
root=$(mktemp -d "${TMPDIR:-/tmp}/mq27d-install.XXXXXX")
trap 'rm -rf "$root"' EXIT
fail() {
    echo "FAIL: $*" >&2
    exit 1
}

DESTDIR=$root cmake --install "$build" --prefix /usr >"$root/install.log" ||
    fail "cmake --install: $(tail -n 3 "$root/install.log")"
bin=$root/usr/bin
share=$root/usr/share

for program in mq27diag mq27diag-cli mq27sim; do
    [ -x "$bin/$program" ] || fail "$program not installed"
    "$bin/$program" --version | grep -q "^$program [0-9]" || fail "$program --version"
    "$bin/$program" --help >/dev/null || fail "$program --help"
    [ -s "$share/man/man1/$program.1.gz" ] || fail "manual page of $program missing"
done

for language in 1 2 3 4; do
    [ -s "$share/mq27diag/manual/KompaHelp_010_00$language.pdf" ] ||
        fail "service manual of language $language missing"
done

"$bin/mq27diag-cli" dump "$source/samples/full.ko3" >"$root/dump.txt" || fail "dump"
grep -q "$(printf 'Seriennummer des MQ27D\t1234567')" "$root/dump.txt" || fail "dump: no serial number"

port=$("$bin/mq27sim" --profile full --close-after 0.3 | head -n 1)
case $port in /dev/*) ;; *) fail "mq27sim with the installed profile 'full': $port" ;; esac

shots=$root/shots
XDG_CONFIG_HOME=$root/config XDG_DATA_HOME=$root/data QT_QPA_PLATFORM=offscreen \
    MQ27D_SCREENSHOTS=$shots timeout 90 "$bin/mq27diag" "$source/samples/full.ko3" ||
    fail "the installed tool did not end by itself"
[ -s "$shots/tool-status.png" ] || fail "the installed tool showed no main view"

if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$share/applications/org.mq27diag.mq27diag.desktop" ||
        fail "desktop entry"
fi
if command -v appstreamcli >/dev/null; then
    appstreamcli validate --no-net "$share/metainfo/org.mq27diag.mq27diag.metainfo.xml" \
        >"$root/appstream.log" || fail "metainfo: $(cat "$root/appstream.log")"
fi
echo "installed programs run"
