#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Runs the commands of docs/walkthrough.md, in their order, over 300 pairs of all grades and with names of all kinds, and
holds what they print against the page: walkthrough.py <installed tresk-report> <source folder> <work folder>"""
import collections
import os
import re
import shutil
import subprocess
import sys
import unittest

from browser import PROGRAM, SOURCE, WORK, By, Keys, start
import tree_folder

if not shutil.which('parallel'):
    print('skipped: the walk-through needs parallel')
    sys.exit(77)

KIT = PROGRAM.parent.parent / 'share/tresk/harness'
ENVIRONMENT = {**{name: value for name, value in os.environ.items() if name != 'CI'},
               'PATH': f'{PROGRAM.parent}:{KIT}:{os.environ["PATH"]}', 'LC_ALL': 'C.UTF-8'}
PAGE = (SOURCE / 'docs/walkthrough.md').read_text(encoding='utf-8')
IN_PAGE = (SOURCE / 'tests/report/in_page.js').read_text(encoding='utf-8')
HEAD = '* ANALYSIS = TR PROGRAM = K DATE = 1 TIME = 1\n* RERUN_NUMBER = 1, TEMPERATURE = {}, MODIFY = {}\n'
# What may be the matter with a pair on all nights, by its number: grade and contents of the regression file.
MATTERS = {1: ('FAIL_I', lambda i: punch(i, degrees=85)), 2: ('FAIL_PV', lambda i: punch(i, lost=True)),
           6: ('FAIL_PSV', lambda i: punch(i) + punch(i, modify=1)), 7: ('FAIL_SV', lambda i: punch(i, level='nan')),
           11: ('NO_GRADE', lambda i: HEAD.format(27, 0) + 'V(X) YUNITS = V DATA = NONE\n'), 12: ('NO_DATA', lambda i: '')}


def punch(i, level=1.0, odd=1.0, degrees=27, modify=0, lost=False):
    """A step from 0 to the level, and one of a signal whose name is as odd as that of a file may be."""
    names = {} if lost else {tree_folder.HOSTILE[i // 9 % len(tree_folder.HOSTILE)].replace(' ', '_'): odd}
    return HEAD.format(degrees, modify) + ''.join(f'V({name}) YUNITS = VOLTS\n' + ''.join(
        f'+ {x}E-9 {top if x > 8 else 0}\n' for x in range(40)) for name, top in {'OUT': level, **names}.items())


def matter(i, night):
    """Grade and regression file of a pair. On Tuesday there are new models of the bandgaps, the time steps of io cells
    jitter, and three phase-locked loops are broken."""
    path = tree_folder.name(i, True)
    if i in MATTERS:
        return MATTERS[i][0], MATTERS[i][1](i)
    level = 1.0 if night == 'monday' else {'bandgap': 1.02, 'io': 1.0001}.get(path.split('/')[0], 1.0)
    level = 0.5 if i in (100, 205, 295) and night == 'tuesday' else level
    odd = 0.9 if i % 9 == 0 else 1.0
    return 'PASS' if level == odd == 1.0 else 'FAIL_V', punch(i, level, odd)


def make_trees():
    """Returns the grades of both nights, with those of files without partner."""
    grades = {night: collections.Counter({'FAIL_SV': 2}) for night in ('monday', 'tuesday')}
    for i in range(300):
        path = tree_folder.name(i, True)
        tree_folder.write(f'golden/{path}', '' if i == 12 else punch(i))
        for night, counts in grades.items():
            grade, text = matter(i, night)
            tree_folder.write(f'{night}/{path}', text)
            counts[grade] += 1
    for night in grades:
        tree_folder.write(f'{night}/new cell.pun', punch(0))
    tree_folder.write('golden/lost cell.pun', punch(0))
    return grades


def run(commands):
    return subprocess.run(['sh', '-ec', commands], env=ENVIRONMENT, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False)


class WalkThrough(unittest.TestCase):
    def do(self, chapter):
        """The commands of a chapter, one block after the other. Behind a block may stand what it prints, shortened."""
        text = re.split('^## ', PAGE, flags=re.M)[chapter]
        for commands, shown in re.findall('^```sh\n(.*?)^```\n(?:\n```\n(.*?)^```\n)?', text, re.M | re.S):
            done = run(commands)
            self.assertEqual(done.returncode, 0, commands + done.stdout)
            lines = iter(re.sub(r'\d{4}-\d\d-\d\d \d\d:\d\d', 'TIME', done.stdout).splitlines())
            for line in re.sub(r'\d{4}-\d\d-\d\d \d\d:\d\d', 'TIME', shown).splitlines():
                self.assertTrue(line == '...' or line in lines, f'not printed: {line}\n{done.stdout}')
        return re.findall('`index.html(#[^`]*)`', text)

    def grades(self, night):
        with open(f'out/{night}/results', encoding='utf-8') as file:
            return collections.Counter(line.split('\t')[0] for line in file)

    def look(self, addresses):
        """Opens the page at addresses of the text, filters, and goes on to the page of a pair."""
        browser = start()
        try:
            def script(text):
                return browser.execute_script(IN_PAGE + text)

            for address in addresses:
                browser.get('about:blank')
                browser.get((WORK / 'out/tuesday/report/index.html').as_uri() + address)
                self.assertTrue(0 < script('return page.list.shown.length') < 200, address)
                self.assertEqual(script('return decodeURIComponent(location.hash)'), address)
                self.assertEqual(script('return intruders()')[:2], [2, 0])
            browser.switch_to.active_element.send_keys('/', 'pll v(out)', Keys.ENTER, 'j')
            self.assertEqual(script('return page.list.shown.map(i => page.pairs.path(i).slice(0, 4))'), ['pll/'] * 3)
            self.assertIn('It fails since 20', browser.find_element(By.CLASS_NAME, 'detail').text)
            browser.switch_to.active_element.send_keys(Keys.ENTER)
            self.assertEqual(browser.find_element(By.CSS_SELECTOR, 'h1 .grade').text, 'FAIL_V')
            self.assertTrue(browser.find_element(By.CSS_SELECTOR, 'svg.figure').is_displayed())
            self.assertEqual(browser.get_log('browser'), [])
        finally:
            browser.quit()

    def test(self):
        grades = make_trees()
        self.assertEqual(len(grades['tuesday']), 8)
        tree_folder.write('tuesday/line\nend.pun', punch(0))
        refused = run('tresk-parallel --report golden tuesday out/refused')
        self.assertEqual(refused.returncode, 64)
        self.assertRegex(refused.stdout, 'a line end, shown as [?], in names of .*/tuesday: ./line[?]end.pun')
        os.remove('tuesday/line\nend.pun')
        self.do(1)
        self.assertEqual({night: self.grades(night) for night in grades}, grades)
        self.look(self.do(2))
        self.do(3)
        self.do(4)
        blessed = [tree_folder.name(i, True) for i in range(300) if tree_folder.name(i, True).startswith('bandgap/')]
        self.do(5)
        for path in blessed:
            self.assertEqual((WORK / 'golden' / path).read_bytes(), (WORK / 'tuesday' / path).read_bytes())
        self.do(6)
        self.assertEqual(self.grades('tuesday'), grades['monday'] + collections.Counter(FAIL_V=3, PASS=-3))


if __name__ == '__main__':
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir(parents=True)
    os.chdir(WORK)
    unittest.main(argv=sys.argv[:1], verbosity=2)
