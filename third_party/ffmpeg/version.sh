# SPDX-License-Identifier: GPL-3.0-or-later
# The one place the bundled FFmpeg release is pinned.
FFMPEG_VERSION=7.1.5
FFMPEG_SHA256=de668509caf9e35e3cd162473441fdb29538c6d96ed080292b3cf9e6fc5d558f
FFMPEG_URL="https://ffmpeg.org/releases/ffmpeg-${FFMPEG_VERSION}.tar.xz"
FFMPEG_DEBIAN_SUITE=trixie
