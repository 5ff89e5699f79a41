#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares two builds of tresk byte for byte on random pairs of damaged files.

Usage: compare_builds.py [options] OLD NEW

Every case takes two files made from the samples, the inputs of the golden cases and generated
binary and text files, damages them at random, and runs both programs on them with random options
and debug switches: comparisons, all index modes, files behind pipes, both byte orders. The
transcript, the exit code and what becomes of the files must be the same. A case is its number: the
same seed and number make the same case again.
"""
import argparse
import glob
import os
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile

ROOT = os.environ.get("TRESK_ROOT") or os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
SANITIZERS = {"ASAN_OPTIONS": "detect_leaks=0:allocator_may_return_null=1"}  # records are never freed, by design
END = {4: b"\xff\xff\xff\xff", 8: b"\xff" * 8}
WORDS = [b"(", b")", b"[", b"]", b":", b"&\n", b"\n+ ", b"\n+\n", b"\n*", b"*$$\n", b"=", b",", b"#", b"\xff", b"\0",
         b"PWL", b"DELAY", b"DATA = BINARY\n", b"DATA = BINARY_DBL\n", b"DATA = TEXT\n", b"YUNITS = V", b"\r", b"\t",
         b"TSHIFT = 1n ", b"nan", b"inf", b"-inf", b"-0", b"0", b"1e400", b"1e-400", b"NONE", b"2147483648", b"D[3:0]",
         b".IN OP\n", b".IN TR\n", b".IN DC\n", b".FORCE\n", b".FORCE TIME = 1e-9\n", b"TIME = UNKNOWN", b"TIME = nan\n",
         b"-nan", b"123456789012345678", b"0.1234567890123456789", b"4.9e-324", b"1.7976931348623157e308", b"1e30",
         b"-1e30", b"1e-30"]
ANALYSES = [b"AC", b"TR", b"DC", b"PSS", b"PAC", b"PXF", b"PNOISE", b"XF", b"STB", b"FOUR", b"MR", b"NOISE", b"OP", b"PZ"]
OPTIONS = [[], [], [], ["-desert"], ["-Aonly"], ["-Ronly"], ["-AorR"], ["-AandR"], ["-a", "0"], ["-r", "0"],
           ["-a", "-1"], ["-a", "1e-3"], ["-r", "1e-6"], ["-a", "nan"], ["-d", "1"], ["-d", "2"], ["-d", "8"],
           ["-d", "16"], ["-d", "32"], ["-d", "48"], ["-d", "63"], ["-nem", "36"], ["-pem", "1"]]


def header(analysis, rerun=1, modify=0):
    return b"* ANALYSIS = %s RERUN_NUMBER = %d, TEMPERATURE = 27.000, MODIFY = %d\n" % (analysis, rerun, modify)


def number(rng):
    kind = rng.random()
    if kind < 0.5:
        return b"%.*e" % (rng.randrange(1, 18), rng.uniform(-10, 10) * 10.0 ** rng.randrange(-15, 4))
    if kind < 0.7:
        return b"%.*f" % (rng.randrange(0, 17), rng.uniform(-100, 100))
    if kind < 0.9:
        return b"%g" % rng.uniform(-5, 5)
    return rng.choice([b"0", b"-0.0", b"nan", b"inf", b"-inf", b"1e400", b"1e-320", b"3", b"bad", b"1e", b".5", b"5.",
                       b"+1", b"0x1p3", b"12345678901234567890123", b"1.00000000000000000000001", b"-nan"])


class Moved:
    """Random numbers of which the values move a little, in every run by other amounts."""

    def __init__(self, rng, noise):
        self.rng = rng
        self.noise = noise
        self.most = rng.choice([0, 1e-15, 1e-6, 1e-3, 0.01, 0.02, 0.02])
        self.often = rng.choice([0.01, 1, 1])

    def __getattr__(self, name):
        return getattr(self.rng, name)

    def moved(self, value):
        if self.noise.random() >= self.often:
            return value
        if self.most == 0.01:  # the default tolerance, but for the last bits
            return value * (1 + 0.01 * (1 + self.noise.randrange(-2, 3) * 2.0 ** -52))
        return value * (1 + self.most * self.noise.uniform(-1, 1))


def binary_value(rng, plain):
    if plain or rng.random() < 0.995:
        return rng.moved(rng.uniform(-5, 5) * 10.0 ** rng.randrange(-12, 3))
    return rng.choice([float("nan"), float("inf"), float("-inf"), 0.0, -0.0, 1e30, -1e30, 1e-40])


def signal(rng, name, points, shared_x):
    """One signal, as text or binary."""
    form = rng.choice(["text", "text", "BINARY", "BINARY_DBL"])
    plain = rng.random() < 0.8
    xs = shared_x if rng.random() < 0.8 else sorted(abs(binary_value(rng, plain)) for _ in range(points))
    xs = xs[:points] + [i * 1e-9 for i in range(max(0, points - len(xs)))]
    out = b"%s YUNITS = %s" % (name, rng.choice([b"VOLTS", b"V", b"DEGREES", b"V/SQRT(HZ)"]))
    if form == "text":
        out += b"\n"
        per_line = rng.randrange(1, 5)
        fixed = rng.random() < 0.6
        digits = rng.randrange(1, 18)
        for i in range(0, points, per_line):
            values = []
            for x in xs[i:i + per_line]:
                values += [b"%.*e" % (digits, x), b"%.*e" % (digits, binary_value(rng, plain)) if fixed else number(rng)]
            out += b"+ " + rng.choice([b" ", b"  ", b","]).join(values) + b"\n"
        return out
    out += b" DATA = %s\n" % form.encode()
    width = 8 if form == "BINARY_DBL" else 4
    order = "<" if rng.random() < 0.8 else ">"
    code = order + ("d" if width == 8 else "f")

    def pack(v):
        try:
            return struct.pack(code, v)
        except OverflowError:
            return struct.pack(code, 0.0)
    for i, x in enumerate(xs):
        out += pack(x) + pack(binary_value(rng, plain))
        if i % 10 == 9:
            out += b"\n"
    out += END[width] * rng.choice([1, 1, 1, 2]) if rng.random() < 0.95 else b""
    return out + rng.choice([b"\n\n", b"\n\n", b"\n\n", b"\n"])


def times(rng, points):
    """Points over x, by chance or in steps; of these some lie close together, some go back."""
    if rng.random() < 0.5:
        return sorted(abs(rng.uniform(0, 1e-6)) for _ in range(points))
    xs = []
    x = rng.choice([0.0, 0.0, -1e-8])
    tight = back = 0.0
    if rng.random() < 0.7:
        tight = rng.choice([0.0, 0.3, 0.9])
        back = rng.choice([0.0, 0.0, 0.002])
    for _ in range(points):
        xs.append(x)
        step = 1e-9 * rng.uniform(0.1, 1)
        x += -step if rng.random() < back else step * 0.01 if rng.random() < tight else step
    return xs


def generated(rng):
    out = b"* TITLE generated\n"
    for _ in range(rng.randrange(1, 4)):
        out += header(rng.choice(ANALYSES), 1, rng.randrange(2))
        if rng.random() < 0.3:
            out += b"* XUNITS = HERTZ\n* X_FUNCTION = LOG\n"
        points = rng.choice([0, 1, 2, 3, 9, 10, 11, 20, 30, 257, 400, 1200, 3000])
        shared = times(rng, points)
        for s in range(rng.randrange(1, 5)):
            out += signal(rng, b"V(%d)" % s, points if rng.random() < 0.9 else points + 3, shared)
    return out


def damage(rng, data):
    data = bytearray(data)
    for _ in range(rng.choice([0, 1, 1, 1, 2, 2, 3, 5, 8])):
        if not data:
            break
        at = rng.randrange(len(data))
        kind = rng.randrange(12)
        if kind == 0:
            data[at] = rng.randrange(256)
        elif kind == 1:
            data[at:at] = rng.choice(WORDS)
        elif kind == 2:
            data[at:at + rng.choice([1, 1, 2, 4, 8, 30, 300])] = b""
        elif kind == 3:
            word = rng.choice(WORDS)
            data[at:at + len(word)] = word
        elif kind == 4:
            del data[at:]
        elif kind == 5:
            other = rng.randrange(len(data))
            data[at:at] = data[other:other + rng.choice([4, 40, 400])]
        elif kind in (6, 7, 8):  # a line: dropped, doubled, moved
            lines = bytes(data).split(b"\n")
            i = rng.randrange(len(lines))
            line = lines.pop(i) if kind != 7 else lines[i]
            if kind != 6:
                lines.insert(rng.randrange(len(lines) + 1), line)
            data = bytearray(b"\n".join(lines))
        elif kind in (9, 10):  # a digit or a number
            found = list(re.finditer(rb"[-+]?\d+\.?\d*(?:[eE][-+]?\d+)?", bytes(data)))
            if found:
                hit = rng.choice(found)
                data[hit.start():hit.end()] = number(rng) if kind == 9 else re.sub(
                    rb"\d", lambda m: b"%d" % rng.randrange(10), hit.group(), count=rng.randrange(1, 3))
        else:
            data = bytearray(re.sub(rb"(ANALYSIS = )\w+", lambda m: m.group(1) + rng.choice(ANALYSES), bytes(data), count=1))
    return bytes(data)


def seed_files():
    seeds = []
    for path in sorted(glob.glob(ROOT + "/samples/*/*.pun") + glob.glob(ROOT + "/tests/golden/*/*.pun")):
        with open(path, "rb") as file:
            data = file.read()
        if 0 < len(data) < 300000:
            seeds.append(data)
    return seeds


class Case:
    def __init__(self, seed, number, seeds):
        rng = random.Random("%s/%d" % (seed, number))
        self.files = {}
        small = [s for s in seeds if len(s) < 20000]
        if rng.random() < 0.5:
            base, other = (generated(Moved(random.Random("%s/%d" % (seed, number)), random.Random(file)))
                           for file in range(2))
        else:
            base = rng.choice(small if rng.random() < 0.85 else seeds)
            other = base if rng.random() < 0.9 else rng.choice(small)
        self.files["g.pun"] = base if rng.random() < 0.4 else damage(rng, base)
        self.files["r.pun"] = damage(rng, other) if rng.random() < 0.8 else other
        self.env = {"LC_ALL": "C"}
        if rng.random() < 0.3:
            self.env["KORSIM3_REVERSE_BYTES"] = rng.choice(["0", "1", "YES", ""])
        options = [o for _ in range(rng.choice([1, 1, 1, 2])) for o in rng.choice(OPTIONS)]
        mode = rng.random()
        self.stdin = None
        if mode < 0.85:
            names = ["g.pun", "r.pun"]
            if rng.random() < 0.1:
                side = rng.randrange(2)
                self.stdin = names[side]
                names[side] = "/dev/stdin"
            self.args = options + names
        elif mode < 0.93:
            self.args = ["-index", "r.pun"]
        elif mode < 0.96:
            self.args = ["-indexmirel", "r.pun"]
            self.env["KORSIM3_INDEX_FILENAME"] = "mirel.idx"
            self.env["MIREL_PUNCH_ADDITIONS"] = str(rng.choice([0, 1, 50, len(self.files["r.pun"]) // 2, 10 ** 9]))
        else:
            self.args = [rng.choice(["-indexrdinp", "-indexscript"]), "r.pun"]

    def write(self, folder):
        for name, data in self.files.items():
            with open(os.path.join(folder, name), "wb") as file:
                file.write(data)

    def run(self, program, folder, timeout):
        """What a run in a fresh folder leaves: exit code, transcript, files."""
        shutil.rmtree(folder, ignore_errors=True)
        os.mkdir(folder)
        self.write(folder)
        piped = {"input": self.files[self.stdin]} if self.stdin else {"stdin": subprocess.DEVNULL}
        try:
            done = subprocess.run(["tresk"] + self.args, executable=program, cwd=folder, env={**SANITIZERS, **self.env},
                                  timeout=timeout, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                  **piped)
            result = (done.returncode, done.stdout, done.stderr)
        except subprocess.TimeoutExpired:
            result = ("timeout",)
        left = {}
        for name in sorted(os.listdir(folder)):
            with open(os.path.join(folder, name), "rb") as file:
                left[name] = file.read()
        return result, left


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("old")
    parser.add_argument("new")
    parser.add_argument("-n", type=int, default=2000, help="cases to run")
    parser.add_argument("--first", type=int, default=0, help="number of the first case")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--timeout", type=float, default=20, help="seconds a run may take")
    parser.add_argument("--keep", default="differences", help="folder for the cases that differ")
    parser.add_argument("--most", type=int, default=10, help="stop after so many differences")
    options = parser.parse_args()
    programs = [os.path.abspath(p) for p in (options.old, options.new)]
    seeds = seed_files()
    differences = grades = 0
    seen = {}
    with tempfile.TemporaryDirectory() as tmp:
        for n in range(options.first, options.first + options.n):
            case = Case(options.seed, n, seeds)
            old, new = (case.run(p, os.path.join(tmp, "run"), options.timeout) for p in programs)
            seen[old[0][0]] = seen.get(old[0][0], 0) + 1
            if old == new:
                continue
            differences += 1
            folder = os.path.join(options.keep, "%s-%d" % (options.seed, n))
            os.makedirs(folder, exist_ok=True)
            case.write(folder)
            for name, (result, _) in (("old", old), ("new", new)):
                with open(os.path.join(folder, name + ".transcript"), "wb") as file:
                    file.write(b"" if len(result) == 1 else result[2])
            print("case %d differs: %s %s, old %s, new %s, files %s" % (
                n, " ".join(case.args), {k: v for k, v in case.env.items() if k != "LC_ALL"}, old[0][0], new[0][0],
                "same" if old[1] == new[1] else "differ"), flush=True)
            if differences >= options.most:
                break
    print("%d cases, %d differ; exit codes of the old program: %s" % (n + 1 - options.first, differences, seen))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
