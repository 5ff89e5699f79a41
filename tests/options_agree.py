#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when the manual or a completion lists other commands and options than the help texts of a program, or differs
on which of them take an argument: options_agree.py <source folder> <program> <least number of options>"""
import pathlib
import re
import subprocess
import sys

SOURCE, PROGRAM, LEAST = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve(), int(sys.argv[3])
NAME = PROGRAM.name

# Each source becomes a set of lines: "pair" for a command, "pair --out value" for an option of it.


def line(command, option, takes_value):
    return f"{command} {option}{' value' if takes_value else ''}".strip()


def help_texts():
    def text(*command):
        return subprocess.run([PROGRAM, *command, '--help'], check=True, capture_output=True, text=True).stdout

    def options(text, command=''):
        return {line(command, *found) for found in re.findall(r'^  (?:-.,)?(--[a-z-]+)( [A-Z]\w*)?', text, re.M)}

    main = text()
    commands = re.findall(r'^  ([a-z]+) ', main.partition('\nSubcommands:')[2], re.M)
    found = options(main) | set(commands)
    for command in commands:
        found |= options(text(command), command) - {f'{command} --help'}  # which all have
    return found


def file_lines(path, heads, commands, options):
    """What stands in a file: a head begins the part of a command, or of none."""
    found, command = set(), ''
    for row in (SOURCE / path).read_text(encoding='utf-8').splitlines():
        if head := re.match(heads, row):
            command = head[1] or ''
        found |= set(re.findall(commands, row))
        found |= {line(command, '--' + option, value) for option, value in re.findall(options, row)}
    return found


def manual():
    return file_lines(f'man/{NAME}.1', r'\.S[hs] (?:([a-z]+)$)?', r'^\.Ss ([a-z]+)$', r'^\.It Fl (?:. , )?-([a-z-]+)( Ar)?')


def zsh():
    return file_lines(f'contrib/completions/_{NAME}', r'(?:([a-z]+)\)|esac)$', r'[( ]([a-z]+)\\:',
                      r"""^[^\[]*--([a-z-]+)\}?'?\[[^\]]*\](:)?""")


def fish():
    found = set()
    for row in re.findall(rf'^complete -c {NAME} (.*)', (SOURCE / f'contrib/completions/{NAME}.fish').read_text('utf-8'), re.M):
        part = re.match(r'-n \$([a-z]+) ', row)
        found |= set(re.findall(r'__fish_use_subcommand -f -a ([a-z]+)', row))
        found |= {line(part[1] if part else '', '--' + option, value)
                  for option, value in re.findall(r'-l ([a-z-]+)( -[xr])?', row)}
    return found


def bash():  # no arguments here
    found, command = set(), ''
    for head, words in re.findall(r"\*:([a-z]+)\)|words='([^']*--[^']*)'", (SOURCE / f'contrib/completions/{NAME}.bash').read_text('utf-8')):
        if head:
            command = head
        elif '--version' in words:
            found |= set(words.split())
        else:
            found |= {line(command, word, False) for word in words.split()} - {f'{command} --help'}
    return found


def differences(name, found, wanted):
    return [f'{name}: {sign} {each}' for sign, some in (('lacks', wanted - found), ('has', found - wanted)) for each in sorted(some)]


program = help_texts()
faults = [] if len(program) >= LEAST else ['too few options in the help texts']
for source in manual, zsh, fish:
    faults += differences(source.__name__, source(), program)
faults += differences('bash', bash(), {each.removesuffix(' value') for each in program})
sys.exit('\n'.join(faults) or 0)
