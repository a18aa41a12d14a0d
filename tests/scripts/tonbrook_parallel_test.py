#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""scripts/tonbrook-parallel against one `tonbrook-cli -o OUT TREE` run on the same
tree: the same files at the same places (number suffixes of clashing names too),
the same JSON objects, the same CSV rows under one header, sources untouched; a
broken file fails its shard only. Run here with -j 2, then through a stand-in ssh.

usage: tonbrook_parallel_test.py SCRIPT TONBROOK_CLI      (77: no GNU parallel)
"""
import csv, hashlib, json, math, os, shutil, struct, subprocess, sys, tempfile, time, wave

script, cli = sys.argv[1:3]
if not shutil.which("parallel"):
    print("SKIP: GNU parallel is not installed")
    sys.exit(77)
failures = []


def check(ok, what):
    if not ok:
        failures.append(what)
        print("FAIL:", what)


def files(root):  # relative path -> content hash
    return {os.path.relpath(os.path.join(d, f), root):
            hashlib.sha256(open(os.path.join(d, f), "rb").read()).hexdigest()
            for d, _, names in os.walk(root) for f in names}


def objects(path, out):  # the output folder and ffmpeg's addresses differ; nothing else may
    found = [json.loads(line) for line in open(path, encoding="utf-8")]
    for o in found:
        o["output"] = o["output"] and os.path.relpath(o["output"], out)
        o["errorDetails"] = bool(o["errorDetails"])
    return sorted(found, key=lambda o: o["source"])


work = tempfile.mkdtemp()
try:
    tree = f"{work}/tree"
    # "b" is cut in two shards (--max-files 2) and its names clash under the
    # prefix; the odd folder must survive parallel's and JSON's quoting.
    for i, name in enumerate(["top.wav", "a/one.wav", "a/deep/two.wav", "b/take.wav", "b/take 2.wav",
                              "b/it_take.wav", "b/x1.wav", "b/x10.wav", 'we"ird & {}/three.wav',
                              "c/fine.wav", ".hidden/no.wav"]):
        os.makedirs(os.path.dirname(f"{tree}/{name}"), exist_ok=True)
        with wave.open(f"{tree}/{name}", "wb") as w:
            w.setparams((1, 2, 44100, 0, "NONE", ""))
            w.writeframes(b"".join(struct.pack("<h", int(6000 * math.sin(i + n / 20)))
                                   for n in range(22050)))
    open(f"{tree}/c/broken.wav", "wb").write(b"not audio " * 100)
    sources = files(tree)
    options = ["--prefix", "it_"]
    with open(f"{work}/single.jsonl", "w") as out:
        subprocess.run([cli, "--json", "-o", f"{work}/single", "--report", f"{work}/single.csv",
                        *options, tree], stdout=out)
    want = objects(f"{work}/single.jsonl", f"{work}/single")
    check(len(want) == 11 and want[0]["source"] == f"{tree}/a/deep/two.wav", "the single run")

    def sharded(name, *extra):
        started = time.monotonic()
        run = subprocess.run([script, *extra, "--max-files", "2", "-o", f"{work}/{name}",
                              "--results", f"{work}/{name}.jsonl", "--report", f"{work}/{name}.csv",
                              tree, "--", *options],
                             capture_output=True, text=True, env=dict(os.environ, TONBROOK_CLI=cli))
        last = run.stdout.rstrip().rpartition("\n")[2]
        print(f"{name}: {last} ({time.monotonic() - started:.1f} s)")
        check(run.returncode == 1 and last.startswith(
            "tonbrook-parallel: 7 shards, 11 files; failed shards: 1;"), f"{name}: {run.returncode} {last!r}")
        check(run.stderr.count("shard failed") == 1 and run.stderr.rstrip().endswith(f"{tree}/c"),
              f"{name}: the failed shard, and only it, is named\n{run.stderr}")
        check(objects(f"{work}/{name}.jsonl", f"{work}/{name}") == want, f"{name}: JSON objects")
        rows, single = (list(csv.reader(open(f"{work}/{f}.csv", newline=""))) for f in (name, "single"))
        check(rows.count(single[0]) == 1 and sorted(rows) == sorted(single), f"{name}: CSV {rows}")
        check(files(f"{work}/{name}").keys() == files(f"{work}/single").keys(),
              f"{name}: written {sorted(files(f'{work}/{name}'))}")
        check(files(tree) == sources, f"{name}: sources changed")

    sharded("local", "-j", "2")
    # Runs the remote command here, in a bare environment and with sh as the login
    # shell: what a shard needs must travel with it.
    with open(f"{work}/fake-ssh", "w") as f:
        f.write('#!/bin/bash\nwhile [[ $1 == -* ]]; do shift; done\nshift\n[ "$1" = -- ] && shift\n'
                'exec env -i PATH="$PATH" HOME="$HOME" SHELL=/bin/sh bash -c "$*"\n')
    os.chmod(f"{work}/fake-ssh", 0o755)
    sharded("ssh", "-S", "2/one", "--sshlogin", "1/two", f"--parallel-option=--ssh={work}/fake-ssh")
finally:
    shutil.rmtree(work)
sys.exit(1 if failures else 0)
