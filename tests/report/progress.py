#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What whoever waits at a terminal sees of a long comparison: progress.py TRESK-REPORT

The processes below it are stopped while they read, so that it becomes a long one."""
import os
import pathlib
import pty
import re
import signal
import subprocess
import sys
import tempfile
import time

REPORT = str(pathlib.Path(sys.argv[1]).resolve())
HEAD = '* ANALYSIS = TR PROGRAM = K DATE = 1 TIME = 1\n* RERUN_NUMBER = 1, TEMPERATURE = 27, MODIFY = 0\n'


def below(process):
    """The processes that it has started."""
    path = pathlib.Path(f'/proc/{process}/task/{process}/children')
    return [int(word) for word in path.read_text().split()] if path.exists() else []


def reads_large(process):
    """Whether it is in the midst of the golden file."""
    try:
        for number in os.listdir(f'/proc/{process}/fd'):
            if os.path.realpath(f'/proc/{process}/fd/{number}') == os.path.realpath('golden'):
                return int(pathlib.Path(f'/proc/{process}/fdinfo/{number}').read_text().split()[1]) > 0
    except OSError: # it has closed it
        pass
    return False


def seen_at_terminal(*arguments):
    """All that it writes to a terminal while its children are stopped for longer than it has patience."""
    keeper, terminal = pty.openpty()
    run = subprocess.Popen([REPORT, *arguments], stdin=subprocess.DEVNULL, stdout=terminal, stderr=terminal,
                           env={**os.environ, 'TERM': 'xterm'})
    os.close(terminal)
    stopped = []
    while not stopped and run.poll() is None:
        stopped = below(run.pid) if any(map(reads_large, below(run.pid))) else []
    for process in stopped:
        os.kill(process, signal.SIGSTOP)
    text, start = b'', time.monotonic()
    os.set_blocking(keeper, False)
    while run.poll() is None:
        try:
            text += os.read(keeper, 1 << 16)
        except BlockingIOError:
            time.sleep(0.01)
        if text.endswith(b'\x1b[K') or time.monotonic() > start + 3: # drawn, or there is nothing to come
            for process in stopped:
                os.kill(process, signal.SIGCONT)
            stopped = []
    try:
        while piece := os.read(keeper, 1 << 16):
            text += piece
    except OSError: # the terminal is closed
        pass
    return run.wait(), text.decode().replace('\r\n', '\n')


def main():
    points = ''.join(f'+ {x}E-9 {x % 7}\n' for x in range(2000000))
    pathlib.Path('golden').write_text(HEAD + 'V(A) YUNITS = VOLTS\n' + points)
    pathlib.Path('other').write_text(HEAD + 'V(A) YUNITS = VOLTS\n+ 0 1 1E-9 2 2E-9 3\n')
    call = ['pair', '--out', 'out', 'golden', 'other']
    plain = subprocess.run([REPORT, *call], stdin=subprocess.DEVNULL, capture_output=True, check=False)
    code, seen = seen_at_terminal(*call)
    drawn = re.findall('\r(reading: ([0-9]+) %)?[^\r\n]*\x1b\\[K', seen)
    faults = [] if code == plain.returncode == 3 else [f'exit codes {code}, {plain.returncode}']
    faults += [] if any(0 <= int(percent or -1) < 100 for _, percent in drawn) else ['no progress']
    wiped = re.sub('\r[^\r\n]*\x1b\\[K', '', seen)
    faults += [] if wiped == (plain.stderr + plain.stdout).decode() else ['what stays is another text']
    faults += ['a drawing in a log'] if b'\x1b' in plain.stderr + plain.stdout else []
    code, quiet = seen_at_terminal(call[0], '--quiet', *call[1:])
    faults += [] if (code, quiet) == (3, '') else ['--quiet is not quiet']
    print(*faults, repr(seen), sep='\n')
    return bool(faults)


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    failed = main()
    os.chdir('/')
sys.exit(failed)
