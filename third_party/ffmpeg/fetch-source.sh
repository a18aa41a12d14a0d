#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Puts the pinned FFmpeg release tarball at $1 and verifies it.
# Origins, in order: the file already there; the upstream release; Debian 13's
# source package (same bytes as upstream) through a private apt configuration
# that never touches the system's own apt state and needs no root.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=version.sh
. "$here/version.sh"

dest=${1:?usage: fetch-source.sh DEST.tar.xz}
mkdir -p "$(dirname "$dest")"

verify() {
    [ -f "$1" ] && echo "$FFMPEG_SHA256  $1" | sha256sum --check --status
}

if verify "$dest"; then
    exit 0
fi
rm -f "$dest"

say() { printf 'ffmpeg source: %s\n' "$*" >&2; }

try_upstream() {
    command -v curl >/dev/null || return 1
    say "trying $FFMPEG_URL"
    # Short connect timeout: on a closed network this must fail in seconds.
    curl -fsSL --connect-timeout 5 --max-time 600 -o "$dest.part" "$FFMPEG_URL" 2>/dev/null || return 1
    mv "$dest.part" "$dest"
}

# The first Debian (non-security) archive URI named by the machine's own sources.
debian_mirror() {
    local f
    for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -r "$f" ] || continue
        awk '$1 == "deb" || $1 == "deb-src" {
                 for (i = 2; i <= NF; i++) if ($i !~ /^\[/ && $i !~ /\]$/) { print $i; break }
             }' "$f"
    done
    for f in /etc/apt/sources.list.d/*.sources; do
        [ -r "$f" ] || continue
        awk 'tolower($1) == "uris:" { for (i = 2; i <= NF; i++) print $i }' "$f"
    done
} 2>/dev/null

pick_debian_mirror() {
    debian_mirror | grep -E '/debian/?$' | grep -v security | head -n 1 | sed 's#/$##'
}

try_debian() {
    command -v apt-get >/dev/null || return 1
    local mirror work opts
    mirror=$(pick_debian_mirror)
    if [ -z "$mirror" ]; then
        say "no Debian mirror in this machine's apt sources"
        return 1
    fi
    say "trying Debian 13 source package from $mirror"
    work=$(mktemp -d)
    trap 'rm -rf "$work"' RETURN
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/parts" "$work/get"
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg
    local signed=""
    [ -r "$keyring" ] && signed="[signed-by=$keyring] "
    echo "deb-src ${signed}$mirror $FFMPEG_DEBIAN_SUITE main" >"$work/sources.list"
    opts=(-o "Dir::Etc::SourceList=$work/sources.list"
          -o "Dir::Etc::SourceParts=$work/parts"
          -o "Dir::State::Lists=$work/lists"
          -o "Dir::Cache=$work/cache"
          -o "Debug::NoLocking=1"
          -o "APT::Sandbox::User=$(id -un)"
          -o "Acquire::Retries=0"
          -o "Acquire::http::Timeout=10")
    apt-get -qq "${opts[@]}" update >&2 || return 1
    (cd "$work/get" && apt-get -qq "${opts[@]}" source --download-only ffmpeg) >&2 || return 1
    mv "$work/get/ffmpeg_${FFMPEG_VERSION}.orig.tar.xz" "$dest"
}

for origin in try_upstream try_debian; do
    if $origin && verify "$dest"; then
        say "ok ($origin)"
        exit 0
    fi
    rm -f "$dest" "$dest.part"
done

say "could not obtain ffmpeg-$FFMPEG_VERSION.tar.xz (sha256 $FFMPEG_SHA256)."
say "Place it at $dest and run the build again."
exit 1
