#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Fails when user-facing C++ holds a string literal that could be user text.

Every word the user reads must come from the string table (localization/L),
so that it exists in every language. The scanned code may still hold literals
that are not user text (keys, ffmpeg arguments, ids): those are listed in
allowed-literals.txt, one per line, each with the reason in a comment above it.
Literals without a single letter ("\\n", ": ", "%1") need no entry.

usage: user_text_lint.py SOURCE_ROOT        scan the user-facing code
       user_text_lint.py --self-test        prove the scanner finds what it must
"""
import pathlib
import re
import sys

# Code that decides what the user reads. The string table itself is the one
# place user words may be written.
SCANNED = ["app", "ui", "cli", "engine/ErrorTranslator.cpp"]
SUFFIXES = {".cpp", ".h"}

LITERAL = re.compile(
    r'''(?P<raw>(?:u8|u|U|L)?R"(?P<delim>[^()\\ ]{0,16})\((?P<rawbody>.*?)\)(?P=delim)")'''
    r'''|(?P<plain>(?:u8|u|U|L)?"(?P<body>(?:[^"\\\n]|\\.)*)")'''
    r'''|(?P<char>'(?:[^'\\\n]|\\.)+')'''
    r'''|(?P<line>//[^\n]*)'''
    r'''|(?P<block>/\*.*?\*/)''',
    re.S,
)


def literals(text):
    """Yields (line, literal) for every string literal outside comments."""
    for match in LITERAL.finditer(text):
        if match.group("raw"):
            body = match.group("rawbody")
        elif match.group("plain"):
            body = match.group("body")
        else:
            continue
        line = text.count("\n", 0, match.start()) + 1
        yield line, body


ESCAPE = re.compile(r"\\(u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|x[0-9a-fA-F]+|[0-7]{1,3}|.)", re.S)
SIMPLE_ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "a": "\a", "b": "\b", "f": "\f", "v": "\v"}


def unescape(body):
    def one(match):
        code = match.group(1)
        if code[0] in "uU" and len(code) > 1:
            return chr(int(code[1:], 16))
        if code[0] == "x" and len(code) > 1:
            return chr(int(code[1:], 16))
        if code[0].isdigit():
            return chr(int(code, 8))
        return SIMPLE_ESCAPES.get(code, code)
    return ESCAPE.sub(one, body)


def looks_like_words(body):
    return re.search(r"[^\W\d_]", unescape(body)) is not None


def scan(text, allowed):
    problems = []
    for number, body in literals(text):
        line = text.splitlines()[number - 1] if text else ""
        if line.lstrip().startswith("#include"):
            continue
        if looks_like_words(body) and body not in allowed:
            problems.append((number, body))
    return problems


def load_allowed(path):
    allowed = set()
    for raw in path.read_text(encoding="utf-8").splitlines():
        if raw.strip() and not raw.startswith("#"):
            allowed.add(raw.rstrip("\n"))
    return allowed


def files_under(root):
    for entry in SCANNED:
        path = root / entry
        if path.is_file():
            yield path
        elif path.is_dir():
            yield from sorted(p for p in path.rglob("*") if p.suffix in SUFFIXES)


def self_test():
    sample = r'''
#include "localization/L.h"
// "A comment is not text"
QString a() { return QStringLiteral("Select Files"); }   /* "nor is this" */
QString b() { return L::selectFiles(); }
QString c() { return u"Clear Queue"_s; }
QString d() { return QStringLiteral("-hide_banner"); }
QString e() { return QString::fromUtf8(R"x(Raw "words")x"); }
QString f() { return QStringLiteral("\n\n"); }
char g() { return 'x'; }
'''
    found = [body for _, body in scan(sample, {"-hide_banner"})]
    expected = ["Select Files", "Clear Queue", 'Raw "words"']
    if found != expected:
        print(f"self-test failed: found {found}, expected {expected}")
        return 1
    print("self-test passed: 3 literals flagged, 4 passed over")
    return 0


def main(argv):
    if argv[1:] == ["--self-test"]:
        return self_test()
    if len(argv) != 2:
        print(__doc__)
        return 2
    root = pathlib.Path(argv[1])
    allowed = load_allowed(pathlib.Path(__file__).with_name("allowed-literals.txt"))
    count = 0
    failures = 0
    for path in files_under(root):
        count += 1
        for number, body in scan(path.read_text(encoding="utf-8"), allowed):
            failures += 1
            print(f"{path.relative_to(root)}:{number}: user text outside the string table: \"{body}\"")
    print(f"{count} files scanned, {failures} literal(s) that may be user text")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
