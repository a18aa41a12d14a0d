#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints a CSV report's rows as JSON, read by Python's own csv module, so the report is checked
by a reader that shares no code with the writer."""
import csv
import json
import sys

with open(sys.argv[1], newline="", encoding="utf-8") as handle:
    print(json.dumps({"rows": list(csv.reader(handle, strict=True))}))
