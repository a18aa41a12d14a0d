#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Installs the Debian 12 / Ubuntu 24.04 packages that building and testing
# Tonbrook needs. Silent and quick when everything is already there.
#
# --bench adds what the benchmarks compare against: the distribution's ffmpeg
# (never used by Tonbrook itself). --fuzz adds clang and its libFuzzer runtime.
set -euo pipefail

packages=(
    # toolchain
    build-essential cmake ninja-build pkg-config git ca-certificates curl xz-utils patch
    # the bundled FFmpeg: assembler, LAME (static), zlib (static), LAME's licence text
    nasm libmp3lame-dev libmp3lame0 zlib1g-dev
    # Qt 6
    qt6-base-dev qt6-declarative-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools qt6-svg-dev
    qml6-module-qtqml qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
    qml6-module-qtquick-window qml6-module-qtquick-templates qml6-module-qtqml-workerscript
    qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel qml6-module-qttest
    # Qt's own texts (file dialogs, --help) in Russian
    qt6-translations-l10n
    # tests: locale sources for the comma-decimal checks, python for independent
    # parsers, libebur128 as the loudness meter that checks what Tonbrook wrote
    locales python3 libebur128-dev
    # scripts/tonbrook-parallel and its test: GNU parallel
    parallel
    # installing and packaging: validators for the desktop files, the manual
    # page formatter, and what CPack's .deb generator runs
    desktop-file-utils appstream groff-base file dpkg-dev
)
case "${1:-}" in
    --bench) packages+=(ffmpeg) ;;
    # libFuzzer ships in the versioned compiler-rt package of the default clang.
    --fuzz)
        packages+=(clang)
        if command -v clang >/dev/null; then
            major=$(clang -dumpversion | cut -d. -f1)
            packages+=("libclang-rt-$major-dev")
        fi
        ;;
esac

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if ! command -v apt-get >/dev/null; then
    echo "install-deps: apt-get not found; install these by hand: ${missing[*]}" >&2
    exit 1
fi

sudo=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "install-deps: run as root or install sudo" >&2; exit 1; }
    sudo=(sudo)
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
