#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Fails when a source includes a header from a layer above its own.

The folders are layers, each allowed to use the ones below it:
    model < localization < engine < files < app < ui, cli
The two fronts sit side by side and never use each other. The build's link
lines say the same thing; this check catches the include that compiles
anyway because the header needs nothing linked.

usage: layer_lint.py SOURCE_ROOT     check the sources
       layer_lint.py --self-test     prove the check finds what it must
"""
import pathlib
import re
import sys

RANK = {"model": 0, "localization": 1, "engine": 2, "files": 3, "app": 4, "ui": 5, "cli": 5}
SUFFIXES = {".cpp", ".h"}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([a-z]+)/[^"]+"', re.M)


def violations(layer, text):
    """The folders a source of this layer includes from but may not."""
    found = []
    for folder in INCLUDE.findall(text):
        if folder not in RANK or folder == layer:
            continue
        if RANK[folder] >= RANK[layer]:
            found.append(folder)
    return found


def check(root):
    failures = []
    for layer in RANK:
        for path in sorted((root / layer).rglob("*")):
            if path.suffix not in SUFFIXES:
                continue
            for folder in violations(layer, path.read_text(encoding="utf-8")):
                failures.append(f"{path.relative_to(root)}: includes from {folder}/, "
                                f"a layer not below {layer}/")
    return failures


def self_test():
    cases = [
        ("model", '#include "model/AudioFileItem.h"\n#include <QString>\n', []),
        ("model", '#include "engine/LoudnessMeasurement.h"\n', ["engine"]),
        ("engine", '#include "localization/L.h"\n#include "model/FileStamp.h"\n', []),
        ("engine", '  #  include "files/CSVReportService.h"\n', ["files"]),
        ("localization", '#include "app/QueueModel.h"\n', ["app"]),
        ("ui", '#include "cli/CliOptions.h"\n', ["cli"]),
        ("cli", '#include "app/MainViewModel.h"\n#include "ui/Strings.h"\n', ["ui"]),
        ("app", '#include "engine/BuildInfo.h"\n#include "LocalHeader.h"\n', []),
    ]
    failed = 0
    for layer, text, expected in cases:
        got = violations(layer, text)
        if got != expected:
            print(f"self-test: {layer} {text!r}: expected {expected}, got {got}")
            failed += 1
    return 1 if failed else 0


def main(argv):
    if argv[1:] == ["--self-test"]:
        return self_test()
    if len(argv) != 2:
        print(__doc__)
        return 2
    failures = check(pathlib.Path(argv[1]))
    for line in failures:
        print(line)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
