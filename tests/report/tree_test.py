#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The page, table and test results of a tree: tree_test.py <tresk-report> <source folder> <work folder>"""
import collections
import csv
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from browser import PROGRAM, SOURCE, WORK, By, Keys, start
import tree_folder

try:
    import junitparser
except ImportError:
    print('skipped: the tests of a tree need python3-junitparser')
    sys.exit(77)

IN_PAGE = pathlib.Path(__file__).with_name('in_page.js').read_text(encoding='utf-8')


def tree(*arguments):
    """Runs it; the exit code and what it printed."""
    run = subprocess.run([PROGRAM, 'tree', *arguments], cwd=WORK, capture_output=True, text=True, check=False)
    return run.returncode, run.stdout + run.stderr


def page(out):
    return WORK / out / 'report/index.html'


class Files(unittest.TestCase):
    def test_calls(self):
        shutil.copytree(WORK / 'few', WORK / 'blocked')
        (WORK / 'blocked/report/index.html').mkdir()
        (WORK / 'text').write_text('no history')
        for arguments, code, words in (
                (['night'], 7, 'night/report/index.html'), (['night', '--accept', '7,FAIL_SV', '--quiet'], 6, ''),
                (['night', '--accept', 'NO_GRADE'], 64, 'no grade that can be accepted'), (['night', '--accept', 'x'], 64, 'x'),
                (['nowhere'], 64, 'no list of pairs'), (['night', '--before', 'nowhere'], 64, 'no list of pairs'), ([], 64, 'OUT'),
                (['blocked'], 73, 'cannot write'), (['few', '--history', 'text'], 73, 'few/report/index.html')):
            found = tree(*arguments)
            self.assertEqual(found[0], code, found)
            self.assertIn(words, found[1])
        self.assertEqual(list(WORK.glob('*/report/*.new')), [])

    def test_table(self):
        """A row for each pair and each file without partner, with the grade that the kit gave."""
        tree('night')
        with open(WORK / 'night/report/tree.csv', encoding='utf-8', newline='') as file:
            rows = list(csv.DictReader(file))
        described = (SOURCE / 'docs/tree.md').read_text(encoding='utf-8').partition('## tree.csv')[2].partition('\n## ')[0]
        cells = re.findall(r'^\| (`.*?) \|', described, re.MULTILINE)
        self.assertEqual(re.findall('`(.*?)`', ' '.join(cells)), list(rows[0]))
        paths = (WORK / 'night/pairs').read_text(encoding='utf-8').splitlines()
        grades = collections.Counter((WORK / 'night/grades' / (line.split('\t')[4] + '.grade')).read_text().split('\t')[0]
                                     for line in paths)
        grades['FAIL_SV'] += 3
        self.assertEqual(collections.Counter(row['grade'] for row in rows), grades)
        self.assertEqual(len(rows), 303)
        self.assertFalse([row for row in rows if row['path'].startswith(('=', '+', '-', '@'))])
        values = [float(row['abs']) * float(row['rel']) for row in rows if row['grade'] == 'FAIL_V' and row['abs']]
        numbers = [value for value in values if value == value]
        self.assertEqual(values[-len(numbers):], sorted(numbers, reverse=True)) # those that are none come first
        self.assertTrue(0 < len(numbers) < len(values))

    def test_records_of_other_files_do_not_count(self):
        shutil.copytree(WORK / 'few', WORK / 'stale')
        text = (WORK / 'stale/pairs').read_text().replace('1/2/3', '1/2/4', 1)
        (WORK / 'stale/pairs').write_text(text)
        self.assertEqual(tree('stale', '--quiet')[0], 6)
        self.assertIn('(not run)', (WORK / 'stale/report/tree.csv').read_text())

    def test_a_history_knows_nothing_of_what_died(self):
        path = tree_folder.name(0, False)
        tree_folder.make(WORK / 'died', 1, 1.0, 3)
        tree('died', '--history', 'died.db')
        grade = WORK / 'died/grades' / (path + '.grade')
        tree_folder.write(grade, re.sub('^FAIL_[A-Z]*', 'NO_GRADE', grade.read_text()))
        tree_folder.write_report(WORK / 'died/report' / path, 6, [])
        os.utime(WORK / 'died/pairs', (0, 0))
        self.assertEqual(tree('died', '--history', 'died.db')[0], 6)
        lines = subprocess.run([PROGRAM, 'history', WORK / 'died.db'], capture_output=True, text=True, check=True).stdout.splitlines()
        self.assertRegex(lines[3], '^NO_GRADE .* 2 +0  ')
        self.assertRegex(lines[4], '^[?] .*  [^ ][?]  ')

    def check_junit(self, out):
        path = WORK / out / 'report/junit.xml'
        schema = pathlib.Path(__file__).with_name('junit.xsd')
        subprocess.run(['xmllint', '--noout', '--schema', schema, path], check=True, stderr=subprocess.PIPE)
        return path, junitparser.JUnitXml.fromfile(str(path))

    def test_junit(self):
        for accept, others in (([], (93 + 6 + 9 + 8, 3 + 3 + 9)), (['--accept', 'FAIL_I,7'], (93 + 6 + 9, 3 + 9))):
            tree('night', *accept)
            path, results = self.check_junit('night')
            self.assertEqual((results.tests, results.failures, results.errors), (303, *others))
        worst = [case for suite in results for case in suite if case.name == 'case_000170.pun'][0]
        self.assertEqual(worst.result[0].type, 'FAIL_PSV')
        self.assertIn('3 findings, worst V(OUT) DC', worst.result[0].message)
        self.assertEqual(len(worst.result[0].text.splitlines()), 3)
        self.assertIn('[[ATTACHMENT|night/report/pll/block_03/case_000170.pun/report.html]]', path.read_text())

    def test_limits(self):
        """So many pairs that neither the page nor the test results can hold all of them."""
        count, folder = 260000, 'a folder of pairs whose name is long enough to fill up a page'
        (WORK / 'huge').mkdir()
        (WORK / 'huge/missing').write_text('')
        (WORK / 'huge/pairs').write_text(''.join(f'\t\t1:\t1:\t{folder} {i % 1000}/{i}.pun\n' for i in range(count)))
        self.assertEqual(tree('huge')[0], 6)
        self.assertLess(page('huge').stat().st_size, 20 << 20)
        self.assertIn('This page leaves out ', page('huge').read_text())
        path, results = self.check_junit('huge')
        self.assertLess(path.stat().st_size, 20000000)
        text = path.read_text()
        cases = text.count('<testcase ')
        left = re.findall('Left out for their number: ([0-9]+) pairs that pass, ([0-9]+)', text)
        self.assertEqual((cases, cases + sum(int(a) + int(b) for a, b in left)), (results.tests, count))
        self.assertLess(2 * cases, 200000)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        tree('before', '--history', 'history.db')
        tree('night', '--before', 'before', '--history', 'history.db')
        cls.browser = start()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, out='night', address=''):
        self.browser.get('about:blank')
        self.browser.get_log('browser'), self.browser.get_log('performance')
        self.browser.get(page(out).as_uri() + address)

    def run_script(self, script, *arguments):
        return self.browser.execute_script(IN_PAGE + script, *arguments)

    def shown(self):
        """Numbers of the rows that are not filtered out, and of those that are drawn."""
        return self.run_script('return [page.list.shown, document.querySelectorAll("table.list tr[data-at]").length]')

    def type(self, *keys):
        self.browser.switch_to.active_element.send_keys(*keys)

    def address(self):
        return self.browser.current_url.partition('#')[2]

    def test_filters_and_sorts(self):
        self.open()
        rows, drawn = self.shown()
        self.assertEqual(rows, list(range(303)))
        self.assertLess(drawn, 60)
        self.run_script('page.list.box.scrollTop = 1e6')
        self.type('/', 'PLL v(out)')
        expected = self.run_script('''
            return page.list.view.rows.filter(i => /pll/i.test(page.pairs.text(i)) && page.pairs.text(i).includes('v(out)'))''')
        self.assertEqual(self.shown()[0], expected)
        self.assertTrue(0 < len(expected) < 60)
        self.assertGreater(self.shown()[1], 0)
        self.type(Keys.ESCAPE)
        self.run_script('page.boxes.forEach((box, i) => { if (page.gradesThere[i] !== 3) box.input.click(); })')
        self.assertEqual(len(self.shown()[0]), 93)
        self.assertEqual(self.address(), 'grades=3')
        self.browser.find_element(By.CSS_SELECTOR, 'th.c-abs button').click()
        errors = self.run_script('return page.list.shown.map(i => page.pairs.abs(i))')
        numbers = [e for e in errors if e not in (None, 'nan')]
        self.assertEqual(errors, ['nan'] * errors.count('nan') + sorted(numbers, reverse=True) + [None] * errors.count(None))

    def test_signals(self):
        """What breaks in most pairs comes first, and leads to these."""
        self.open('night', '#view=signals')
        counts = self.run_script('return page.signals.pairs')
        self.assertEqual(counts[:20], sorted(counts, reverse=True)[:20])
        self.type('j')
        name = self.run_script('return page.signals.names[0]')
        self.type(Keys.ENTER)
        self.assertIn('signal=', self.address())
        self.assertEqual(len(self.shown()[0]), counts[0])
        pairs = self.run_script('return page.list.shown.map(i => page.pairs.path(i))')
        for path in pairs:
            result = json.loads((WORK / 'night/report' / path / 'result.json').read_text()) if '\ufffd' not in path else None
            self.assertTrue(result is None or any(f['name'].replace('\u202e', '\ufffd') in name for f in result['findings']))

    def test_changes_and_history(self):
        self.open('night', '#view=changed')
        found = self.run_script('''return page.list.shown.map(i => [page.pairs.grade[i], page.pairs.gradeBefore(i),
            CHANGES[page.pairs.changeOf(i)], page.courses.since(i) !== '', page.courses.get(i)?.moments.length])''')
        for now, before, change, fails, runs in found:
            self.assertEqual(change == 'mended', now == 0)
            self.assertEqual(change == 'new', before <= 0 and now > 0)
            self.assertEqual((fails, runs), (now > 0, 2))
        now_and_then = self.run_script('return page.courses.runs')
        self.assertEqual({change for _, _, change, _, _ in found}, {'new', 'worse', 'still', 'better', 'mended'})
        signals = self.run_script('return page.signals.names.map((_, i) => [page.signals.what(i), page.signalCourses.get(i)])')
        self.assertEqual({what for what, _ in signals}, {'fails', 'signal missing in regression'})
        for _, course in signals:
            self.assertEqual(bool(course['lastGood']), course['moments'][0] == 0 and course['firstBad'] == now_and_then[1])
        self.open('night', '#view=missing')
        self.assertEqual(len(self.shown()[0]), 3)

    def test_keys_and_address(self):
        self.open()
        self.type('/', 'case_000170', Keys.ENTER, 'j', 'x')
        command = self.run_script('return [page.command.textContent, page.ticks.command.textContent, page.ticks.rows.size]')
        path = 'pll/block_03/case_000170.pun'
        self.assertEqual(command, [f"tresk-report pair --out night/report/{path} -a 1e-9 '/data/it'\\''s golden'/{path} "
                                   f'/data/regression/{path}', f"tresk-report bless --reason '...' night {path}", 1])
        address = self.address()
        self.open('night', '#' + address)
        self.assertEqual(self.run_script('return [page.input.value, page.pairs.path(page.list.row())]'), ['case_000170', path])
        self.assertEqual(self.address(), address)
        self.type(Keys.ENTER)
        self.assertTrue(self.browser.current_url.endswith(f'/{path}/report.html'))
        for broken in ('#view=none&grades=x&sort=none&row=none', '#%', '#signal=none&q=%ff'):
            self.open('night', broken)
            self.assertEqual(self.browser.get_log('browser'), [])
        self.open()
        self.type('4', 'k', '?')
        self.assertEqual(self.run_script('return [page.view, page.helpBox.open]'), ['changed', True])
        self.browser.find_element(By.CSS_SELECTOR, 'table.list').send_keys(Keys.END, Keys.PAGE_UP)
        self.assertTrue(self.run_script('return page.list.current < page.list.shown.length - 2 && '
                                        'document.getElementById("row-" + page.list.current) !== null'))

    def test_hostile_names(self):
        self.open()
        for view in ('pairs', 'signals', 'missing', 'changed'):
            self.run_script('page.show(arguments[0])', view)
            self.assertEqual(self.run_script('return [...intruders().slice(0, 2), document.querySelectorAll("[onmouseover]").length]'),
                             [2, 0, 0])
        self.assertEqual(self.browser.get_log('browser'), [])
        events = (json.loads(entry['message'])['message'] for entry in self.browser.get_log('performance'))
        asked = {event['params']['request']['url'] for event in events if event['method'] == 'Network.requestWillBeSent'}
        self.assertEqual({url.partition('#')[0] for url in asked}, {page('night').as_uri()})
        links = self.run_script('''return page.pairs.grade.map((_, i) => page.pairs.page(i)).filter(Boolean)
            .map(path => new URL(path, location.href).href)''')
        self.assertEqual(len(links), 122)
        for link in links:
            self.browser.get(link)
            self.assertEqual(self.browser.title, 'report', link)

    def test_stands_without_script(self):
        locked = page('night').with_name('locked.html')
        text = page('night').read_text(encoding='utf-8')
        policy = '<meta http-equiv="Content-Security-Policy" content="sandbox; default-src \'none\'">'
        locked.write_text(text.replace('<meta charset', policy + '<meta charset'), encoding='utf-8')
        browser = start('--blink-settings=scriptEnabled=false')
        try:
            browser.get(locked.as_uri())
            rows = browser.find_elements(By.CSS_SELECTOR, '#plain tbody')[0].find_elements(By.TAG_NAME, 'tr')
            self.assertEqual(len(rows), 131)
            self.assertTrue(rows[130].is_displayed())
            self.assertTrue(rows[130].find_element(By.TAG_NAME, 'a').get_attribute('href').endswith('/report.html'))
        finally:
            browser.quit()

    def test_dark_and_narrow(self):
        for scheme in ('light', 'dark'):
            self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', {'features': [{'name': 'prefers-color-scheme', 'value': scheme}]})
            for width in (1400, 400):
                self.browser.execute_cdp_cmd('Emulation.setDeviceMetricsOverride',
                                             {'width': width, 'height': 800, 'deviceScaleFactor': 1, 'mobile': False})
                for view in ('pairs', 'signals', 'changed'):
                    self.open('night', '#view=' + view)
                    self.type('j', 'x')
                    self.assertEqual(self.run_script('return poorContrast()'), [], (scheme, width, view))
                    self.assertLessEqual(self.run_script('return document.documentElement.scrollWidth'), width)
                    self.assertEqual(self.run_script('return stumbles()'), [])
        self.browser.execute_cdp_cmd('Emulation.clearDeviceMetricsOverride', {})

    def test_speed(self):
        """Figures of a shared machine say little: ten times what is wanted of a quiet one."""
        tree_folder.make(WORK / 'large', 20000)
        tree('large')
        self.open('large')
        load, *filters = self.run_script('''
            const times = [performance.getEntriesByType('navigation')[0].loadEventEnd];
            for (const words of ['pll', 'v(out) tr', 'block_1', '']) {
              const from = performance.now();
              page.input.value = words;
              page.apply();
              document.body.offsetHeight;
              times.push(performance.now() - from);
            }
            return times''')
        print(f'20,000 pairs: load {load:.0f} ms, filter at most {max(filters):.0f} ms', file=sys.stderr)
        self.assertLess(load, 5000)
        self.assertLess(max(filters), 1000)


if __name__ == '__main__':
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir(parents=True)
    tree_folder.make(WORK / 'night', 300, 0.4, 3, True)
    tree_folder.make(WORK / 'before', 300, 0.4, 2, True)
    tree_folder.make(WORK / 'few', 5, 0)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
