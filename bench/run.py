#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures the built program as whole processes against what a user would take instead, and prints
each figure with its goal and floor as a table. Rows whose other program is not installed are skipped."""

import argparse
import datetime
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field
from typing import Callable, Optional

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "report"))
import tree_folder  # noqa: E402

LONG_RUN = 4.0  # seconds


@dataclass(frozen=True)
class Data:
    """A pair of files that make_punch writes, or a rawfile of make_raw, a folder of the kit with so many pairs, or a
    history of so many nights; small ones for a quick check."""

    kind: str
    size: str
    quick_size: str

    def __str__(self):
        return f"{self.kind}-{self.size}"

    @property
    def golden(self):
        return f"{self}.golden"

    @property
    def regress(self):
        return f"{self}.regress"


@dataclass
class Runs:
    """What the measured runs of one command took, and the points of one file of the row's last pair."""

    points: int
    seconds: list = field(default_factory=list)
    peak: int = 0  # bytes
    page: int = 0  # bytes of the page that it left, if it is a report


# Figures: what a row makes of the runs of its commands.


def ratio(first, second):
    return statistics.median(a / b for a, b in zip(first.seconds, second.seconds))


def quicker(first, second):
    return ratio(second, first)


def largest_step(*sizes):
    return max(ratio(larger, smaller) for smaller, larger in zip(sizes, sizes[1:]))


def microseconds_more(first, second):
    return statistics.median(a - b for a, b in zip(first.seconds, second.seconds)) * 1e6 / first.points


def seconds(runs):
    return statistics.median(runs.seconds)


def peak_mib(runs):
    return runs.peak / 2**20


def page_mib(runs):
    return runs.page / 2**20


def peak_mib_more(first, second):
    return (first.peak - second.peak) / 2**20


def peak_a_point(runs):
    return (runs.peak - 8 * 2**20) / (2 * runs.points)


# Commands on a pair. "{tresk}" is the program.


def tresk(data):
    return ["{tresk}", data.golden, data.regress]


def tresk_failing(data):
    return [*tresk(data), "-Aonly", "-a", "0"]


def report(data):
    return ["{report}", "pair", "--quiet", "--out", f"{data}.report", data.golden, data.regress]


def page_of(data):
    return f"{data}.report/report.html"


def report_failing(data):
    return [*report(data), "-Aonly", "-a", "0"]


def tree(data):
    return ["{report}", "tree", "--quiet", f"{data}.out"]


def one_more_night(data):
    """Adds a run of 20000 pairs, and asks what the page of a tree does."""
    return ["{history}", f"{data}.history", data.size, "1", "20000"]


def tresk_on_pipes(data):
    return ["bash", "-c", f"exec {{tresk}} <(cat {data.golden}) <(cat {data.regress})"]


def tresk_index(data):
    return ["{tresk}", "-index", data.golden]


def wc(data):
    return ["wc", "-l", data.golden, data.regress]


def wc_golden(data):
    return ["wc", "-l", data.golden]


def cmp_copy(data):
    return ["cmp", data.golden, f"{data}.copy"]


def numdiff(data):
    return ["numdiff", "-q", "-a", "1e-12", "-r", "0.01", data.golden, data.regress]


def h5diff(data):
    return ["h5diff", "-p", "0.01", f"{data.golden}.h5", f"{data.regress}.h5"]


def true(_):
    return ["/bin/true"]


# Commands on a rawfile.


def raw2punch(form):
    def command(data):
        return ["{raw2punch}", "-f", form, data.golden, f"{data}.pun"]
    command.__name__ = f"raw2punch_{form}"
    return command


def cp(data):
    return ["cp", data.golden, f"{data}.copy"]


# Files that a command needs besides the pair.


def copy_golden(_, data):
    """Makes all three files alike: one that was written at once is read from memory in a quarter of the time."""
    copy = f"{data}.copy"
    for name in data.golden, data.regress:
        shutil.copy(name, copy)
        os.replace(copy, name)
    shutil.copy(data.golden, copy)


def import_arrays(bench, data):
    bench.make(data, "--raw")
    for name in data.golden, data.regress:
        with open("config", "w", encoding="ascii") as config:
            config.write("PATH data\nINPUT-CLASS FP\nINPUT-SIZE 64\nOUTPUT-CLASS FP\nOUTPUT-SIZE 64\n")
            config.write(f"RANK 1\nDIMENSION-SIZES {os.path.getsize(name + '.raw') // 8}\n")
        subprocess.run(["h5import", f"{name}.raw", "-c", "config", "-o", f"{name}.h5"],
                       check=True, stdout=subprocess.DEVNULL)


PREPARATIONS = {cmp_copy: copy_golden, h5diff: import_arrays}


@dataclass(frozen=True)
class Row:
    """A line of the table. The steps are what is measured in turn: commands and the pairs they work on.
    The first must end with the exit status grade, the others with other_grade."""

    name: str
    measure: str
    steps: tuple
    figure: Callable
    unit: str
    goal: Optional[float]  # None: neither is known
    floor: Optional[float]
    runs: int = 9
    grade: int = 0
    other_grade: int = 0  # what all steps but the first end with
    on_request: bool = False  # too large for every day

    def verdict(self, figure):
        if self.goal is None:
            return "-"
        sign = -1 if self.goal > self.floor else 1  # more is better, or less
        return next((word for word, limit in (("goal", self.goal), ("floor", self.floor))
                     if sign * figure <= sign * limit), "missed")

    def limit(self, value):
        return "" if value is None else f"{'>=' if self.goal > self.floor else '<='} {value:g} {self.unit}"


def against(other, name, measure, data, goal, floor, command=tresk, **more):
    """The time of a command as a multiple of that of another one on the same files."""
    return Row(name, measure, ((command, data), (other, data)), ratio, "x", goal, floor, **more)


def faster(other, name, measure, data, goal, floor, **more):
    return Row(name, measure, ((tresk, data), (other, data)), quicker, "x quicker", goal, floor, **more)


def growth(name, measure, data, goal, floor):
    return Row(name, measure, tuple((tresk, pair) for pair in data), largest_step, "x a step", goal, floor)


def memory(name, measure, data, command=tresk, **more):
    return Row(name, f"peak memory, {measure}", ((command, data),), peak_mib, "MiB", 8, 16, runs=1, **more)


def memory_a_point(name, measure, data, goal, **more):
    return Row(name, f"peak memory, {measure}", ((tresk, data),), peak_a_point, "B a point + 8 MiB",
               goal, 17, runs=1, **more)


AC_TEXT = Data("ac-text", "100MB", "200kB")
TEXT = Data("transient-text", "100MB", "200kB")
TEXT_OWN_TIMES = Data("transient-text-own-times", "100MB", "200kB")
TEXT_SHARED_TIMES = Data("transient-text-shared-times", "100MB", "200kB")
TEXT_LONG = Data("transient-text-long", "100MB", "200kB")
TEXT_2GB = Data("transient-text", "2GB", "200kB")
AC_DOUBLES = Data("ac-double", "200MB", "400kB")
DOUBLES = Data("transient-double", "200MB", "400kB")
AC_FLOATS = Data("ac-float", "200MB", "400kB")
FLOATS = Data("transient-float", "200MB", "400kB")
FLOATS_2GB = Data("transient-float", "2GB", "400kB")
FLOATS_13GB = Data("ac-sparse", "13GB", "400kB")
TEXT_STEPS = (Data("transient-text", "1MB", "2kB"), Data("transient-text", "10MB", "20kB"), TEXT)
MANY_SIGNALS = Data("many-signals", "100000", "1000")
DOUBLES_1000 = Data("transient-double", "1000", "20")
SIGNAL_STEPS = (Data("many-signals", "1000", "10"), Data("many-signals", "10000", "100"), MANY_SIGNALS)
VALUES = Data("op-values", "100000", "1000")
PASSING = Data("op-values", "1000000", "10000")
FAILING = Data("op-failing", "1000000", "10000")
TINY = Data("tiny", "10", "10")
RAWFILE = Data("rawfile", "200MB", "400kB")
TREE = Data("tree", "20000", "2000")
NIGHTS = Data("nights", "365", "3")
TO_DOUBLES = raw2punch("binary_dbl")
TO_TEXT = raw2punch("text")

ROWS = (
    against(wc, "ac-text", "AC text, 2 x 100 MB, against `wc -l` of both", AC_TEXT, 6.5, 8),
    faster(numdiff, "ac-text-numdiff", "AC text against `numdiff -q`", AC_TEXT, 70, 45, runs=3),
    memory_a_point("ac-text-memory", "AC text", AC_TEXT, 16),
    against(wc, "text", "transient text, 2 x 100 MB, against `wc -l`", TEXT, 6.5, 8),
    faster(numdiff, "text-numdiff", "transient text against `numdiff -q`", TEXT, 70, 45, runs=3),
    memory_a_point("text-memory", "transient text", TEXT, 16),
    against(tresk, "text-pipes", "transient text through pipes, against the files", TEXT, 1.5, 2.2,
            command=tresk_on_pipes),
    against(wc_golden, "index", "index of transient text, against `wc -l`", TEXT, 3.5, 4.5,
            command=tresk_index),
    growth("text-steps", "transient text, 1, 10, 100 MB", TEXT_STEPS, 10, 12),
    against(wc, "text-own-times", "text, each file with its own time points, against `wc -l`", TEXT_OWN_TIMES,
            7, 9),
    against(wc, "text-long", "text of 15 and 17 digits, against `wc -l`", TEXT_LONG, 8, 11),
    memory_a_point("text-shared-memory", "text, signals sharing x", TEXT_SHARED_TIMES, 8),
    against(cmp_copy, "ac-doubles", "AC doubles, 2 x 200 MB, against `cmp` of copies", AC_DOUBLES, 1.6, 2.0),
    faster(h5diff, "ac-doubles-h5diff", "AC doubles against `h5diff -p`", AC_DOUBLES, 1.8, 1),
    memory("ac-doubles-memory", "AC doubles", AC_DOUBLES),
    against(cmp_copy, "doubles", "transient doubles, 2 x 200 MB, against `cmp`", DOUBLES, 1.5, 2.0),
    faster(h5diff, "doubles-h5diff", "transient doubles against `h5diff -p`", DOUBLES, 1.8, 1),
    memory("doubles-memory", "transient doubles", DOUBLES),
    against(cmp_copy, "ac-floats", "AC floats, 2 x 200 MB, against `cmp`", AC_FLOATS, 1.9, 2.4),
    against(cmp_copy, "floats", "transient floats, 2 x 200 MB, against `cmp`", FLOATS, 1.9, 2.4),
    memory("floats-memory", "transient floats", FLOATS),
    against(tresk, "floats-pipes", "transient floats through pipes, against the files", FLOATS, 1.5, 2.2,
            command=tresk_on_pipes),
    growth("signal-steps", "1000, 10000, 100000 signals of 4 points, shuffled", SIGNAL_STEPS, 10, 13),
    against(wc, "signals", "100000 signals of 4 points, against `wc -l`", MANY_SIGNALS, 20, 28),
    faster(numdiff, "values", "100000 OP values against `numdiff -q`", VALUES, 6, 4),
    Row("failing", "every value failing, a line each, against a passing pair",
        ((tresk, FAILING), (tresk, PASSING)), microseconds_more, "us a line more", 0.5, 1, grade=3),
    against(true, "tiny", "10 signals of 10 points, against `/bin/true`", TINY, 1.1, 1.4, runs=301),
    against(tresk, "report-passing", "report of a passing pair, transient text", TEXT, 1.15, 1.3, command=report),
    against(tresk_failing, "report-failing", "page and data of a failing pair, 50 figures", TEXT, 1.7, 2,
            command=report_failing, grade=3, other_grade=3),
    Row("report-page", "page of 1000 failing signals of 10000 points", ((report_failing, DOUBLES_1000),), page_mib,
        "MiB", 9, 10, runs=1, grade=3),
    Row("report-memory", "peak memory of these beyond that of tresk", ((report_failing, TEXT), (tresk_failing, TEXT)),
        peak_mib_more, "MiB more", 32, 64, runs=1, grade=3, other_grade=3),
    Row("tree", "page, table and test results of a tree of 20000 pairs", ((tree, TREE),), seconds, "s", 1.5, 2, grade=7),
    Row("tree-memory", "peak memory of these", ((tree, TREE),), peak_mib, "MiB", 100, 200, runs=1, grade=7),
    # Each waveform gets its own copy of the times: twice the bytes come out.
    against(cp, "raw-doubles", "rawfile of 20 variables, 200 MB, to BINARY_DBL, against `cp`", RAWFILE, 3, 5,
            command=TO_DOUBLES),
    against(cp, "raw-text", "the same to text", RAWFILE, 25, 40, command=TO_TEXT, runs=3),
    Row("raw-memory", "peak memory, rawfile to text", ((TO_TEXT, RAWFILE),), peak_mib, "MiB", 24, 64, runs=1),
    against(wc, "text-2gb", "transient text, 2 x 2 GB, against `wc -l`", TEXT_2GB, None, None,
            runs=1, on_request=True),
    memory_a_point("text-2gb-memory", "transient text, 2 x 2 GB", TEXT_2GB, 16, on_request=True),
    memory("floats-2gb-memory", "transient floats, 2 x 2 GB", FLOATS_2GB, on_request=True),
    Row("history", "a run of 20000 pairs added to a history of 365, and what the page asks", ((one_more_night, NIGHTS),),
        seconds, "s", 3, 6, runs=3, on_request=True),
    memory("beyond-memory", "floats, 2 x 13 GB, almost all of it holes", FLOATS_13GB, on_request=True),
)


class Bench:
    """A working folder, which is the current one, and the programs."""

    def __init__(self, build, quick):
        self.quick = quick
        self.tresk = os.path.join(build, "tresk")
        self.raw2punch = os.path.join(build, "raw2punch")
        self.report = os.path.join(build, "tresk-report")
        self.make_punch = os.path.join(build, "bench", "make_punch")
        self.make_raw = os.path.join(build, "bench", "make_raw")
        self.timed_run = os.path.join(build, "bench", "timed_run")
        self.history = os.path.join(build, "tests", "report", "tresk_history_driver")  # where tests are built
        self.points = {}  # of one file, by the pair
        for program in self.tresk, self.raw2punch, self.report, self.make_punch, self.make_raw, self.timed_run:
            if not os.access(program, os.X_OK):
                sys.exit(f"{program} is missing: build with -DTRESK_BUILD_BENCH=ON")

    def make(self, data, *options):
        size = data.quick_size if self.quick else data.size
        if data.kind == "tree":
            tree_folder.make(f"{data}.out", int(size))
            self.points[data] = int(size)
            return
        command = [self.make_punch, data.kind, size, data.golden, data.regress, *options]
        if data.kind == "rawfile":
            command = [self.make_raw, size, "20", data.golden]
        elif data.kind == "nights":
            command = ["sh", "-c", f"{self.history} {data}.history 0 {size} 20000 >&2; echo 0"]
        self.points[data] = int(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)

    def provide(self, wanted):
        """Makes the files of a row and removes those of others."""
        for name in os.listdir():
            if not any(name.startswith(f"{data}.") for data in wanted):
                (shutil.rmtree if os.path.isdir(name) else os.remove)(name)
        self.points = {data: count for data, count in self.points.items() if data in wanted}
        for data in wanted:
            if data not in self.points:
                self.make(data)

    def run(self, row, command, grade):
        """Runs a command. Returns its seconds and its peak memory."""
        programs = {"{tresk}": self.tresk, "{raw2punch}": self.raw2punch, "{report}": self.report,
                    "{history}": self.history}
        words = list(command)
        for place, program in programs.items():
            words = [word.replace(place, program) for word in words]
        printed = subprocess.run([self.timed_run, *words], check=True, stdout=subprocess.PIPE).stdout
        seconds, kibibytes, status = printed.split()
        if int(status) != grade:
            sys.exit(f"{row.name}: {' '.join(words)} ends with {int(status)} instead of {grade}")
        return float(seconds), int(kibibytes) * 1024

    def measure(self, row):
        """Returns the runs of each step. In turn, so that a change of the machine's mood hits all alike."""
        self.provide([data for _, data in row.steps])
        for command, data in row.steps:
            PREPARATIONS.get(command, lambda bench, data: None)(self, data)
        lengths = {name: os.path.getsize(name) for name in os.listdir()
                   if os.path.isfile(name) and ".history" not in name}
        runs = [Runs(self.points[data]) for _, data in row.steps]
        for _ in range(min(row.runs, 3) if self.quick else row.runs):
            for place, (command, data) in enumerate(row.steps):
                # The first of two runs gets back what the command before took: the caches, and memory
                # that a virtual machine has handed to its host. A long run does not notice.
                for _ in range(2):
                    seconds, peak = self.run(row, command(data), row.other_grade if place else row.grade)
                    for name, length in lengths.items():
                        if os.path.getsize(name) != length:  # what indexing appends
                            os.truncate(name, length)
                    if seconds > LONG_RUN:
                        break
                runs[place].seconds.append(seconds)
                runs[place].peak = max(runs[place].peak, peak)
                if os.path.exists(page_of(data)):
                    runs[place].page = os.path.getsize(page_of(data))
        return runs


def table_line(bench, row):
    for command, data in row.steps:
        program = command(data)[0].replace("{history}", bench.history)
        if program[0] != "{" and shutil.which(program) is None:
            return f"| {row.name} | {row.measure} | | | skipped: no {program} | |"
    runs = bench.measure(row)
    for (command, data), one in zip(row.steps, runs):
        seconds = statistics.median(one.seconds)
        print(f"{row.name}: {command.__name__} {data}: {seconds:.4g} s, {one.peak / 2**20:.4g} MiB",
              file=sys.stderr)
    figure = row.figure(*runs)
    verdict = "-" if bench.quick else row.verdict(figure)
    return (f"| {row.name} | {row.measure} | {row.limit(row.goal)} | {row.limit(row.floor)} "
            f"| {figure:.3g} {row.unit} | {verdict} |")


def machine(build):
    """The date, the processors and the kind of build."""
    with open("/proc/cpuinfo", encoding="utf-8") as cpuinfo:
        model = re.search(r"^model name\s*: (.*)", cpuinfo.read(), re.MULTILINE)
    with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as cache:
        kind = re.search(r"^CMAKE_BUILD_TYPE:.*=(.*)", cache.read(), re.MULTILINE)
    return (f"{datetime.date.today()}, {os.cpu_count()} x {model[1] if model else 'unknown processor'}, "
            f"{kind[1] if kind else 'unknown'} build")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("rows", nargs="*", metavar="ROW", help="names of rows; none: all but the large")
    parser.add_argument("--build", default=os.path.join(os.path.dirname(__file__), "..", "build"))
    parser.add_argument("--quick", action="store_true",
                        help="all rows with small data, whose figures mean nothing: a check that they work")
    parser.add_argument("--list", action="store_true", help="print the names of the rows")
    arguments = parser.parse_args()
    unknown = set(arguments.rows) - {row.name for row in ROWS}
    if unknown:
        parser.error(f"unknown rows: {', '.join(sorted(unknown))}; see --list")
    if arguments.list:
        for row in ROWS:
            print(f"{row.name}: {row.measure}{' (on request)' if row.on_request else ''}")
        return
    chosen = [row for row in ROWS if row.name in arguments.rows
              or not arguments.rows and (arguments.quick or not row.on_request)]
    build = os.path.realpath(arguments.build)
    os.environ["LC_ALL"] = "C"
    with tempfile.TemporaryDirectory(prefix="tresk_bench.") as folder:
        os.chdir(folder)
        bench = Bench(build, arguments.quick)
        lines = [table_line(bench, row) for row in chosen]
        os.chdir("/")
    print(machine(build))
    print("\n| row | measure | goal | floor | figure | verdict |\n|---|---|---|---|---|---|")
    print("\n".join(lines))


if __name__ == "__main__":
    main()
