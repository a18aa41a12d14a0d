#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads a CSV report with Python's own csv module and prints its rows as
JSON, so the report is checked by a reader that shares no code with the writer.
Also reports whether the file starts with a byte-order mark and which line
ends it uses."""
import csv
import json
import sys

with open(sys.argv[1], "rb") as raw:
    data = raw.read()
with open(sys.argv[1], newline="", encoding="utf-8") as handle:
    rows = list(csv.reader(handle, strict=True))
print(json.dumps({
    "rows": rows,
    "bom": data.startswith(b"\xef\xbb\xbf"),
    "crlf": data.count(b"\r\n"),
    "bare_lf": data.count(b"\n") - data.count(b"\r\n"),
}))
