#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The yardstick for batch throughput.

For every file, the same two ffmpeg runs Tonbrook makes (measure; then one
static gain to -16 LUFS / -1 dBTP written as 24-bit WAV, dithered, or with
--mp3 as LAME V2), three at a time, and nothing else: no import, no queue, no
hidden file, no report, and no measurement of what was written. Plain threads
start the children and read loudnorm's numbers in-process, so the script adds
as little as a script can.

Two orders: "chain" measures and writes each file before taking the next;
"phased" measures every file, then writes every file (Tonbrook's order).

With --loudnorm the first pass is loudnorm's own (everything at 192 kHz), the
pass Tonbrook used before it measured at the source's rate.

usage: ideal-pipeline.py FFMPEG OUTDIR {chain,phased} [--loudnorm] [--mp3] FILE...
"""

import concurrent.futures
import json
import os
import subprocess
import sys


FIRST_PASS = "ebur128=peak=true:framelog=quiet:print_format=json:target_i=-16.0"
LOUDNORM_FIRST_PASS = "loudnorm=I=-16.0:TP=-1.0:print_format=json"


def measure(ffmpeg, path, loudnorm=False):
    completed = subprocess.run(
        [ffmpeg, "-hide_banner", "-nostats", "-i", path, "-vn", "-af",
         LOUDNORM_FIRST_PASS if loudnorm else FIRST_PASS, "-f", "null", "-"],
        capture_output=True, text=True, check=True)
    text = completed.stderr
    return json.loads(text[text.rindex("{"):text.rindex("}") + 1])


def write(ffmpeg, out, path, numbers, mp3=False):
    measured_range = float(numbers["input_lra"]) or 0.01
    target_range = min(max(measured_range, 7.0), 50.0)
    # One static gain: lowered where the peak would pass the ceiling, as
    # Tonbrook does, or loudnorm would leave linear mode for dynamic.
    target = min(-16.0, -1.0 - float(numbers["input_tp"]) + float(numbers["input_i"]))
    # Written with two decimals, a peak put exactly on the ceiling lands a hair
    # above it about half the time, and loudnorm would leave linear mode. The
    # sum is loudnorm's own, in its order: the gain first, then the peak.
    if float(numbers["input_tp"]) + (round(target, 2) - float(numbers["input_i"])) > -1.0:
        target -= 0.01
    gain = (f"loudnorm=I={target:.2f}:TP=-1.00:LRA={target_range:.2f}:measured_I={numbers['input_i']}"
            f":measured_LRA={measured_range:.2f}:measured_TP={numbers['input_tp']}"
            f":measured_thresh={numbers['input_thresh']}:offset={numbers['target_offset']}"
            ":linear=true:print_format=summary")
    name = os.path.basename(path)
    if mp3:
        encoding = ["-c:a", "libmp3lame", "-q:a", "2", "-c:v", "copy"]
        name = os.path.splitext(name)[0] + ".mp3"
    else:
        encoding = ["-dither_method", "triangular", "-c:a", "pcm_s24le", "-rf64", "auto", "-vn"]
    subprocess.run([ffmpeg, "-y", "-hide_banner", "-nostats", "-i", path, "-af", gain, "-ar", "48000"]
                   + encoding + [os.path.join(out, name)], capture_output=True, check=True)


def main():
    ffmpeg, out, order, files = sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4:]
    loudnorm = files[:1] == ["--loudnorm"]
    files = files[1:] if loudnorm else files
    mp3 = files[:1] == ["--mp3"]
    files = files[1:] if mp3 else files
    os.makedirs(out, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(max_workers=3) as pool:
        if order == "chain":
            list(pool.map(lambda path: write(ffmpeg, out, path, measure(ffmpeg, path, loudnorm), mp3), files))
        else:
            measured = list(pool.map(lambda path: measure(ffmpeg, path, loudnorm), files))
            list(pool.map(lambda job: write(ffmpeg, out, *job, mp3), zip(files, measured)))


if __name__ == "__main__":
    main()
