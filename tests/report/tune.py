#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds "tresk-report tune" against tresk: tune.py TRESK-REPORT TRESK SOURCE

For every row of docs/verdict.md, and for random sweeps, a tolerance that is proposed passes and the next smaller
number does not; where none is proposed, none of many passes."""
import math
import pathlib
import random
import re
import subprocess
import sys
import tempfile

REPORT, TRESK, SOURCE = (str(pathlib.Path(word).resolve()) for word in sys.argv[1:4])
KNOBS = {"-a": [], "-r": [], "-Ronly -r": ["-Ronly"]}
PROBES = [0.0, 1e-300, 1e-12, 0.5, 1.0, 1e9, sys.float_info.max]
faults = 0
found = {"value": 0, "none": 0}


def content(cell):
    """The bytes of a file from the cell that describes it."""
    if cell[:1] not in ("=", "A"):
        return content("=OP / A 0 " + cell)
    lines = []
    for line in cell.split(" / "):
        if line[0] == "=":
            words = (line[1:].split() + [None] * 3)[:4]
            analysis, rerun, degrees, modify = (w or d for w, d in zip(words, ("", "1", "27", "0")))
            line = f"* ANALYSIS {analysis} P V * RERUN_NUMBER {rerun} TEMPERATURE {degrees} MODIFY {modify}"
        lines.append(line + "\n")
    text = "".join(lines).split("\\c")[0]
    text = re.sub(r"\\x(..)", lambda match: chr(int(match[1], 16)), text)
    return text.replace("\\n", "\n").replace("\\0", "\0").encode("latin-1")


def fails(options):
    """Whether tresk finds a violated tolerance or a value that is no number."""
    run = subprocess.run([TRESK, "golden", "regression", *options, "-nem", "0", "-pem", "65535"], stdin=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, check=False)
    status = re.search(rb"Comparison result:  \w+  \(exit status = (\d+)\)\s*$", run.stderr)
    return bool(status and int(status[1]) & 257)


def with_value(options, knob, value):
    if KNOBS[knob]:
        options = [word for word in options if word.lower() not in ("-aonly", "-aorr", "-aandr") and word != "-Ronly"]
    missing = ["0"] if options[-1:] in (["-a"], ["-r"]) else []
    return [*options, *missing, *KNOBS[knob], knob[-2:], repr(value)]


def check(place, golden, regression, options):
    global faults
    pathlib.Path("golden").write_bytes(golden)
    pathlib.Path("regression").write_bytes(regression)
    run = subprocess.run([REPORT, "tune", "--digits", "17", "golden", "regression", *options],
                         capture_output=True, check=False)
    told = dict(re.findall(r"^ +(-a|-r|-Ronly -r) (none|[-+.e0-9]+)(?:: | +[A-Z]+)", run.stdout.decode(), re.M))
    if run.returncode == 6 or "\n0 signals" in run.stdout.decode():
        wrong = [] if told == {} and not fails(options) else ["fails"]
    else:
        wrong = [] if set(told) == set(KNOBS) else ["not told"]
        wrong += [] if run.returncode == int(all(value == "none" for value in told.values())) else ["code"]
    for knob, text in told.items():
        found["none" if text == "none" else "value"] += 1
        if text == "none":
            wrong += [f"{knob} {value} passes" for value in PROBES if not fails(with_value(options, knob, value))]
            continue
        value = float(text)
        wrong += [f"{knob} {value} fails"] if fails(with_value(options, knob, value)) else []
        below = math.nextafter(value, -1.0)
        wrong += [f"{knob} {below} passes"] if value > 0 and not fails(with_value(options, knob, below)) else []
    if wrong:
        faults += 1
        print(f"{place}: {golden} {regression} {options}: {wrong}\n{run.stdout.decode()}{run.stderr.decode()}")


def rows():
    """Golden, regression and options of the rows that compare two files."""
    for number, line in enumerate(pathlib.Path(SOURCE, "docs/verdict.md").read_text().splitlines()):
        cells = [cell.strip() for cell in line.split("|")[1:-1]]
        code = [cell[1:-1] for cell in cells if len(cell) > 1 and cell[0] == cell[-1] == "`"]
        if len(code) > 1 and cells[0][:1] == cells[1][:1] == "`":
            yield number + 1, code[0], code[1], cells[2].strip("`").split() if cells[2][:2] == "`-" else []


def main():
    for number, golden, regression, options in rows():
        options = [] if options[:1] and options[0][:2] == "<=" else options
        for mode in [[]] if options else [[], ["-Aonly"], ["-Ronly"], ["-AorR"], ["-AandR"]]:
            check(f"verdict.md:{number}", content(golden), content(regression), options + mode)
    dice = random.Random(1)
    for number in range(60):
        sides = [" ".join(f"{x} {dice.choice((-3, 0, 1e-12, 0.4, 1, 2, 7, 1e9))}" for x in range(6)) for _ in "gr"]
        options = ["-r", str(dice.choice((0.01, 0.6, 3, 9))), "-a", str(dice.choice((1e-12, 0.5, 2)))]
        options += dice.choice(([], [], [], ["-AandR"]))
        check(f"random {number}", *(content(f"=DC / A {side}") for side in sides), options)
    print(found)
    return faults > 0 or found["value"] < 300 or found["none"] < 100


with tempfile.TemporaryDirectory() as folder:
    import os
    os.chdir(folder)
    code = main()
    os.chdir("/")
sys.exit(code)
