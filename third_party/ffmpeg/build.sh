#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Builds the FFmpeg that Tonbrook ships, or finds it already built, and prints
# its install prefix as the last line of standard output.
#
# The result lives in ${XDG_CACHE_HOME:-~/.cache}/tonbrook/, keyed by the
# release, this recipe, the patches and the toolchain, so a second build tree
# (or a fresh clone) on the same machine costs nothing.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=version.sh
. "$here/version.sh"

cache_root=${TONBROOK_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/tonbrook}
jobs=${JOBS:-$(nproc 2>/dev/null || echo 2)}

lame_static=$(find /usr/lib /usr/lib64 /usr/local/lib -name libmp3lame.a 2>/dev/null | head -n 1 || true)
if [ -z "$lame_static" ]; then
    echo "libmp3lame.a not found: install libmp3lame-dev (scripts/install-deps.sh does)" >&2
    exit 1
fi

# Only what Tonbrook reads, decodes, encodes and writes. Everything not named
# here is off, and nothing is picked up from the build machine by surprise.
configure_flags=(
    --enable-static --disable-shared --enable-pic
    --enable-version3 --disable-gpl --disable-nonfree
    --disable-autodetect --disable-everything
    --disable-doc --disable-htmlpages --disable-manpages --disable-podpages --disable-txtpages
    --disable-ffprobe --disable-ffplay --enable-ffmpeg
    --disable-avdevice --disable-swscale --disable-postproc --disable-network
    --disable-debug --enable-stripping
    --enable-x86asm
    --enable-libmp3lame
    # Cover art is copied, not re-encoded, but its size is read by decoding it;
    # the png decoder needs zlib.
    --enable-zlib
    --enable-demuxer=wav,aiff,mp3,mov,caf
    --enable-decoder=pcm_s8,pcm_u8,pcm_s16le,pcm_s16be,pcm_s24le,pcm_s24be,pcm_s32le,pcm_s32be
    --enable-decoder=pcm_f32le,pcm_f32be,pcm_f64le,pcm_f64be,pcm_alaw,pcm_mulaw
    --enable-decoder=mp1,mp1float,mp2,mp2float,mp3,mp3float,aac,alac,adpcm_ima_qt
    --enable-decoder=mjpeg,png
    --enable-parser=mpegaudio,aac
    --enable-encoder=pcm_s16le,pcm_s24le,pcm_s16be,pcm_s24be,pcm_f32le,pcm_f32be,libmp3lame,aac,alac
    # The measuring pass writes to the null muxer; a file with cover art maps
    # the picture there too, and the null muxer takes video only as wrapped frames.
    --enable-encoder=wrapped_avframe
    --enable-muxer=wav,aiff,mp3,ipod,mp4,caf,null
    --enable-protocol=file,pipe
    --enable-filter=loudnorm,ebur128,volume,aresample,aformat,anull
)

# Everything that changes the product goes into the key.
key=$( {
    echo "$FFMPEG_VERSION $FFMPEG_SHA256"
    printf '%s\n' "${configure_flags[@]}"
    cat "$here/build.sh"
    for p in "$here"/patches/*.patch; do [ -f "$p" ] && cat "$p"; done
    ${CC:-cc} --version 2>/dev/null | head -n 1
    nasm -v 2>/dev/null || true
    sha256sum "$lame_static"
} | sha256sum | cut -c1-16)

prefix="$cache_root/ffmpeg-$FFMPEG_VERSION-$key"
tarball="$cache_root/src/ffmpeg-$FFMPEG_VERSION.tar.xz"

if [ -f "$prefix/.complete" ]; then
    echo "$prefix"
    exit 0
fi

mkdir -p "$cache_root"
exec 9>"$cache_root/ffmpeg.lock"
flock 9
# Another build may have finished it while this one waited for the lock.
if [ -f "$prefix/.complete" ]; then
    echo "$prefix"
    exit 0
fi

for tool in nasm make xz; do
    command -v "$tool" >/dev/null || { echo "$tool is missing: run scripts/install-deps.sh" >&2; exit 1; }
done

"$here/fetch-source.sh" "$tarball"

work=$(mktemp -d "$cache_root/build.XXXXXX")
trap 'rm -rf "$work"' EXIT
started=$(date +%s)

echo "Building FFmpeg $FFMPEG_VERSION (one-off, cached in $prefix)" >&2
tar -C "$work" -xf "$tarball"
src="$work/ffmpeg-$FFMPEG_VERSION"
for p in "$here"/patches/*.patch; do
    [ -f "$p" ] || continue
    patch -d "$src" -p1 --quiet --forward <"$p"
done

# libmp3lame is linked statically: a directory holding only the archive comes
# first on the search path, so the linker cannot pick the shared object.
mkdir -p "$work/lame"
ln -s "$lame_static" "$work/lame/libmp3lame.a"

stage="$work/stage"
(
    cd "$src"
    ./configure --prefix="$stage" \
        --extra-ldflags="-L$work/lame" \
        --extra-version=tonbrook \
        "${configure_flags[@]}" >"$work/configure.log" 2>&1 ||
        { tail -n 40 "$work/configure.log" >&2; exit 1; }
    make -j"$jobs" >"$work/make.log" 2>&1 || { tail -n 60 "$work/make.log" >&2; exit 1; }
    make install >>"$work/make.log" 2>&1
) 

mkdir -p "$stage/share/licenses"
cp "$src/COPYING.LGPLv3" "$stage/share/licenses/FFmpeg-LGPLv3.txt"
lame_copyright=$(ls /usr/share/doc/libmp3lame0/copyright /usr/share/doc/libmp3lame-dev/copyright 2>/dev/null | head -n 1 || true)
if [ -z "$lame_copyright" ]; then
    echo "LAME's licence text (/usr/share/doc/libmp3lame0/copyright) is missing" >&2
    exit 1
fi
cp "$lame_copyright" "$stage/share/licenses/LAME-LGPL.txt"
echo "$FFMPEG_VERSION" >"$stage/VERSION"
{
    echo "built $(date -u +%Y-%m-%dT%H:%M:%SZ) in $(($(date +%s) - started)) s with $jobs jobs"
    printf '%s\n' "${configure_flags[@]}"
} >"$stage/BUILDINFO"
touch "$stage/.complete"

rm -rf "$prefix"
mv "$stage" "$prefix"
echo "FFmpeg built in $(($(date +%s) - started)) s" >&2
echo "$prefix"
