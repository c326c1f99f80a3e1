#!/bin/sh
# Installs the Debian packages the build, the tests and the demo need; with "package",
# also what building and checking the Debian package needs; with "manual", what turns the
# service manual's sources into its PDFs.
# Only what is missing is installed; a machine that has everything is left alone.
set -eu

# qt6-translations-l10n: Qt's own texts (file dialogs, message box buttons, the menus of
# text fields) in German, French and Dutch; without it they stay English.
# qt6-charts-dev, libqt6charts6: the data logger's trend chart; libqt6opengl6-dev: the
# charts module's build files need it and the charts package does not bring it.
packages="build-essential cmake ninja-build pkg-config clang-format
qt6-base-dev qt6-serialport-dev qt6-charts-dev libqt6charts6 libqt6opengl6-dev libgl-dev qt6-translations-l10n
qt6-qpa-plugins fonts-dejavu-core xvfb xauth"
# desktop-file-utils, appstream: the install test validates the menu entry and the store
# listing with them.
packages="$packages desktop-file-utils appstream"
# poppler-utils: the record test reads the text back out of a written PDF with pdftotext;
# the manual test reads the help files' named destinations (pdfinfo) and pages (pdftotext).
packages="$packages poppler-utils"
# dpkg-dev finds the package's dependencies (dpkg-shlibdeps); lintian checks the package.
if [ "${1:-}" = package ]; then
    packages="$packages dpkg-dev lintian"
fi
# weasyprint: turns the manual's HTML into PDF and every element id into a named
# destination, the places the tool's help opens at. Only `make manual` needs it: the PDFs
# are kept in the repository.
if [ "${1:-}" = manual ]; then
    packages="$packages weasyprint"
fi
# clang-14 and libclang-rt-14-dev: the compiler and libFuzzer's runtime for make fuzz.
if [ "${1:-}" = fuzz ]; then
    packages="$packages clang-14 libclang-rt-14-dev"
fi

missing=""
for p in $packages; do
    status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
    if [ "$status" != "install ok installed" ]; then
        missing="$missing $p"
    fi
done

[ -z "$missing" ] && exit 0

echo "Installing:$missing"
if [ "$(id -u)" -eq 0 ]; then
    sudo=""
else
    sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
# shellcheck disable=SC2086
$sudo apt-get install -y -qq --no-install-recommends $missing
