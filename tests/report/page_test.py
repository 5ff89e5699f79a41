#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The page of a pair in a browser: page_test.py <tresk-report> <source folder> <work folder>"""
import base64
import json
import math
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
from xml.etree import ElementTree

from browser import SOURCE, WORK, By, Keys, make_page, start, write_pair

SAMPLES = ('follower', 'halfwave', 'lc_filter', 'nand', 'sallen_key')
HEADER = '* ANALYSIS = {}   PROGRAM = KORSIM3   DATE = 12-MAR-24   TIME = 10:11:12\n' \
         '* RERUN_NUMBER = 1, TEMPERATURE = 27.0, MODIFY = 0\n'

# Markup, script, quotes and marks of direction, in all places where a file has text of its own.
EVIL = ['<img src=x onerror=alert(1)>', '"onmouseover="alert(1)', "'><script>alert(1)</script>",
        '</script><script>alert(1)', '&lt;b&gt;', '${alert(1)}', '__proto__', 'constructor', '\u202egnp.exe', '\x1b[31m',
        '</title><b>', ']]>', '-->']

IN_PAGE = pathlib.Path(__file__).with_name('in_page.js').read_text(encoding='utf-8')


def waves(values, count=2000, header='TR', units='VOLTS', names=('V(A)',), x=lambda i: i * 1e-9):
    """A file with a signal for each name: values(index of the signal, index of the point)."""
    lines = [HEADER.format(header), '* XUNITS = SECONDS\n']
    for s, name in enumerate(names):
        lines.append(f'{name} YUNITS = {units}\n')
        lines += [f'+ {x(i):.9e} {values(s, i):.7e}\n' for i in range(count)]
    return ''.join(lines)


def sine(shift):
    return lambda s, i: math.sin(i / 130 + s) + (shift * (1 + s) if 900 < i < 960 else 0)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = {}
        shutil.rmtree(WORK, ignore_errors=True)
        WORK.mkdir(parents=True)
        for name in SAMPLES:
            sides = (f'samples/{name}/{side}.pun' for side in ('golden', 'regress'))
            cls.pages[name] = make_page(name, *sides, code=3)
        cls.browser = start()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, page, address=''):
        self.browser.get('about:blank')
        self.browser.get_log('browser'), self.browser.get_log('performance')
        self.browser.get(page.as_uri() + address)

    def run_script(self, script, *arguments):
        return self.browser.execute_script(IN_PAGE + script, *arguments)

    def emulate(self, **media):
        self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', media)

    def messages(self):
        return [entry['message'] for entry in self.browser.get_log('browser')]

    def requests(self):
        """Addresses that were asked for since the page was opened."""
        events = (json.loads(entry['message'])['message'] for entry in self.browser.get_log('performance'))
        return [event['params']['request']['url'] for event in events if event['method'] == 'Network.requestWillBeSent']

    def stretch(self, figure=0):
        return self.run_script('const p = page.figures.views[arguments[0]].wake(); return [p.low, p.high]', figure)

    def find(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def shown(self, selector):
        """How many there are, and how many of these are seen."""
        return self.run_script('const all = Array.from(document.querySelectorAll(arguments[0]));'
                               'return [all.length, all.filter(e => e.checkVisibility()).length]', selector)

    # -- what the program drew -------------------------------------------------------------------------------

    def test_script_draws_what_the_program_drew(self):
        sides = (f'tests/golden/all-sections/{side}.pun' for side in ('golden', 'regress'))
        for name, path in dict(self.pages, all=make_page('all', *sides)).items():
            self.open(path)
            figures = self.run_script('return redrawn()')
            self.assertTrue(figures, name)
            for shapes, missing, other in figures:
                self.assertEqual((missing, other), (0, []), name)
                self.assertGreater(shapes, 20, name)
            self.assertEqual(self.messages(), [], name)

    def test_stands_without_script_and_style(self):
        """Under the policy of a locked-down server: figures are seen, with their colours."""
        locked = WORK / 'locked.html'
        text = self.pages['nand'].read_text(encoding='utf-8')
        policy = '<meta http-equiv="Content-Security-Policy" content="sandbox; default-src \'none\'; img-src \'self\'">'
        locked.write_text(text.replace('<meta charset', policy + '<meta charset'), encoding='utf-8')
        browser = start('--blink-settings=scriptEnabled=false')
        try:
            browser.get(locked.as_uri())
            figures = browser.find_elements(By.CSS_SELECTOR, 'svg.figure')
            self.assertEqual(len(figures), 2)
            for figure in figures:
                self.assertTrue(figure.is_displayed())
                line = figure.find_element(By.CSS_SELECTOR, 'g.panel path.golden')
                self.assertEqual(line.value_of_css_property('stroke-width'), '5px')
                self.assertGreater(line.size['width'], 400)
                self.assertGreater(line.size['height'], 100)
            self.assertEqual(browser.find_elements(By.CSS_SELECTOR, '.tools'), [])
            body = browser.find_element(By.TAG_NAME, 'body') # without the page's style
            self.assertEqual(body.value_of_css_property('background-color'), 'rgba(0, 0, 0, 0)')
        finally:
            browser.quit()

    def test_prints_everything(self):
        self.open(self.pages['follower'])
        figures, seen = self.shown('svg.figure')
        self.assertEqual((figures > seen, seen), (True, 5))
        self.emulate(media='print', features=[{'name': 'prefers-color-scheme', 'value': 'dark'}])
        try:
            self.assertEqual(self.find('body').value_of_css_property('color'), 'rgba(27, 27, 27, 1)')
            self.assertEqual(self.shown('svg.figure'), [figures, figures])
            self.assertEqual(self.shown('.tools, .readout, .filter')[1], 0)
        finally:
            self.emulate(media='', features=[])
        pdf = base64.b64decode(self.browser.print_page())
        self.assertEqual(pdf[:5], b'%PDF-')
        self.assertGreaterEqual(len(re.findall(rb'/Type\s*/Page\b', pdf)), 4)

    # -- the reader's hands ----------------------------------------------------------------------------------

    def test_drag_zooms_and_the_group_follows(self):
        sides = (waves(sine(shift), names=('V(A)', 'V(B)')) for shift in (0, 1e-2))
        self.open(make_page('group', *write_pair('group', *sides)))
        whole = self.stretch()
        stretches = self.run_script('''
            drag(arguments[0], 302, 516);
            return page.figures.views.map(view => [view.picture.low, view.picture.high])''',
                                    self.find('#f1 svg.figure'))
        width = whole[1] - whole[0]
        for low, high in stretches:
            self.assertAlmostEqual((low - whole[0]) / width, 0.25, 6)
            self.assertAlmostEqual((high - whole[0]) / width, 0.5, 6)

    def test_keys(self):
        self.open(self.pages['nand'])
        whole = self.stretch()
        drawing = self.find('#f1 .drawing')

        def press(key):
            drawing.send_keys(key)
            return self.stretch()
        low, high = press('+')
        self.assertAlmostEqual(high - low, (whole[1] - whole[0]) / 2, 12)
        left = press(Keys.ARROW_LEFT)
        self.assertAlmostEqual(left[0], low - (high - low) / 5, 12)
        self.assertAlmostEqual(press(Keys.ARROW_RIGHT)[0], low, 12)
        self.assertEqual(press('-'), whole)
        worst = press('w')
        self.assertTrue(worst[0] < 4.429e-9 < worst[1] and worst[1] - worst[0] < 1e-9, worst)
        self.find('#f1 .tools button').send_keys('0')
        self.assertEqual(self.stretch(), whole)

        def line():
            return self.find('#f1 g.panel path.regression').get_attribute('d')
        before = line()
        for key, label in (('d', 'regression minus golden'), ('D', 'difference drawn × 10')):
            press(key)
            self.assertIn(label, self.find('#f1 text.name').text)
            self.assertNotEqual(line(), before)
            self.assertEqual(self.find('#f1 [aria-pressed="true"]').get_attribute('title')[-2], key)
            press(key)
            self.assertEqual(line(), before)
        drawing.send_keys(Keys.SHIFT, Keys.ARROW_LEFT)
        readout = self.find('#f1 .readout')
        self.assertEqual(readout.get_attribute('aria-live'), 'polite')
        self.assertRegex(readout.text, r'^time .* ns · V\(Y\): golden .*V, regression .*V, difference ')
        body = self.find('body')
        body.send_keys('n')
        self.assertEqual(self.run_script('return document.activeElement.closest("figure").id'), 'f2')
        self.browser.switch_to.active_element.send_keys('p')
        self.assertEqual(self.run_script('return document.activeElement.closest("figure").id'), 'f1')

    def test_log_axes(self):
        for name, figure in (('sallen_key', 1), ('sallen_key', 0), ('halfwave', 1)):
            self.open(self.pages[name])
            found = self.run_script('''
                const view = page.figures.views[arguments[0]], first = shapes(view.svg);
                const press = () => { view.act('l'); return shapes(view.svg); };
                const moved = list => Math.max(...list.map((shape, i) => apart(shape, first[i])));
                const other = press(), again = press();
                return [other.length !== first.length || moved(other) > 20,
                  again.length === first.length && moved(again) <= 0.2]''', figure)
            self.assertEqual(found, [True, True], (name, figure))

    def test_saves_svg(self):
        """What is saved is XML that stands alone."""
        self.open(self.pages['nand'])
        name, text = self.browser.execute_async_script('''
            const done = arguments[0], make = URL.createObjectURL;
            let name = '';
            HTMLAnchorElement.prototype.click = function () { name = this.download; };
            URL.createObjectURL = blob => { blob.text().then(text => done([name, text])); return make(blob); };
            page.figures.views[0].showCrosshair(300);
            page.figures.views[0].act('s')''')
        root = ElementTree.fromstring(text)
        self.assertEqual((name, root.tag), ('f1.svg', '{http://www.w3.org/2000/svg}svg'))
        self.assertNotIn('crosshair', text)

    def test_address_goes_there_and_back(self):
        self.open(self.pages['nand'])
        self.find('#f2 .drawing').send_keys('w')
        address = self.run_script('return location.hash')
        self.assertRegex(address, r'^#key=[^&<>"]+&x=[-+.e0-9]+,[-+.e0-9]+$')
        stretch = self.stretch(1)
        self.open(self.pages['nand'], address)
        self.assertEqual(self.stretch(1), stretch)
        self.assertEqual(self.run_script('return document.activeElement.closest("figure").id'), 'f2')
        for bad in ('#key=%', '#key=none&x=1,2', '#key=r1m0&x=a,b', '#x=1', '#' + 'k' * 5000):
            self.open(self.pages['nand'], bad)
            self.assertEqual((self.messages(), self.stretch()), ([], [0, self.stretch()[1]]), bad)

    def test_sort_and_filter(self):
        self.open(self.pages['follower'])

        def column(index):
            return self.run_script('return Array.from(document.querySelectorAll("#findings tbody tr:not([hidden])"),'
                                   ' r => r.cells[arguments[0]].dataset.v ?? r.cells[arguments[0]].textContent)', index)
        heads = self.browser.find_elements(By.CSS_SELECTOR, '#findings th button')
        heads[5].click()
        self.assertEqual(column(5), sorted(column(5), key=float, reverse=True))
        heads[5].click()
        self.assertEqual(column(5), sorted(column(5), key=float))
        self.assertEqual(self.find('#findings th[aria-sort]').get_attribute('aria-sort'), 'ascending')
        heads[1].click()
        self.assertEqual(column(1), sorted(column(1), reverse=True))
        self.find('body').send_keys('/')
        self.browser.switch_to.active_element.send_keys('dc v(out)')
        self.assertEqual(column(1), ['V(OUT)'] * 2)
        self.assertRegex(self.find('.filter [role=status]').text, r'^\d+ of \d+')
        self.find('#filter').send_keys(Keys.ESCAPE)
        self.assertEqual(len(column(1)), 12)

    # -- looks and access ------------------------------------------------------------------------------------

    def test_dark_and_narrow(self):
        """Text has a contrast of 4.5 at least, and the page itself never scrolls sideways."""
        for scheme in ('light', 'dark'):
            self.emulate(features=[{'name': 'prefers-color-scheme', 'value': scheme}])
            for width in (1000, 400):
                self.browser.execute_cdp_cmd('Emulation.setDeviceMetricsOverride',
                                             {'width': width, 'height': 900, 'deviceScaleFactor': 1, 'mobile': False})
                for name in ('follower', 'sallen_key'):
                    self.open(self.pages[name])
                    poor, over = self.run_script(
                        'return [poorContrast(), document.documentElement.scrollWidth - innerWidth]')
                    self.assertEqual((poor, over), ([], 0), (scheme, width, name))
            dark = self.run_script('return getComputedStyle(document.body).backgroundColor')
            self.assertEqual(dark == 'rgb(255, 255, 255)', scheme == 'light')
        self.emulate(features=[])
        self.browser.execute_cdp_cmd('Emulation.clearDeviceMetricsOverride', {})

    def test_names_and_roles(self):
        """What a screen reader finds: every control and region has a name, every drawing a table."""
        for name in self.pages:
            self.open(self.pages[name])
            nodes = self.browser.execute_cdp_cmd('Accessibility.getFullAXTree', {})['nodes']
            roles = {}
            for node in nodes:
                if not node.get('ignored'):
                    roles.setdefault(node['role']['value'], []).append(node.get('name', {}).get('value', ''))
            for role in ('button', 'link', 'region', 'image', 'searchbox', 'navigation', 'columnheader', 'rowheader'):
                self.assertNotIn('', roles.get(role, []), (name, role))
            self.assertEqual(len(roles['main']), 1)
            self.assertEqual(self.run_script('return stumbles()'), [], name)

    # -- what may come in ------------------------------------------------------------------------------------

    def test_hostile_files(self):
        names = [e.replace(' ', '_') for e in EVIL]
        files = []
        for side in (0, 1):
            text = waves(sine(side), 1000, units=names[2 * side], names=names) + HEADER.format('OP')
            text += ''.join(f'{n} YUNITS = VOLTS 0.0 {side + 1}\n' for n in names)
            files.append(text.replace('\n* XUNITS', f'\n* TITLE  {EVIL[2 + side]}\n* XUNITS', 1))
        folder = WORK / EVIL[1]
        folder.mkdir()
        paths = [path.rename(folder / (EVIL[0] + "'\\ $x\x1b\udcff" + path.name))
                 for path in write_pair('hostile', *files)]
        page = make_page('hostile', *paths)
        self.open(page)
        found = self.run_script('''
            for (const details of document.querySelectorAll('details')) details.open = true;
            for (const view of page.figures.views) {
              for (const key of 'dDwl+-0') view.act(key);
              view.showCrosshair(300);
            }
            return [...intruders(), count('#findings tbody tr') > 10, page.figures.views.length > 5]''')
        self.assertEqual(found, [2, 0, 0, True, True])
        self.assertEqual(self.messages(), [])
        self.assertEqual([r for r in self.requests() if r != page.as_uri()], [])
        self.assertNotRegex(page.read_text(encoding='utf-8'), '[\x00-\x08\x0b-\x1f\x7f-\x9f\u202a-\u202e\u2066-\u2069]')
        self.assertEqual(self.run_script('return document.title').split(' ')[0], 'FAIL_I')
        command = self.find('#command').get_property('textContent')
        words = subprocess.run(['bash', '-c', 'tresk() { printf "%s\\0" "$@"; }; ' + command],
                               stdout=subprocess.PIPE, check=True)
        self.assertEqual(words.stdout.split(b'\0')[:-1], [os.fsencode(path) for path in paths])

    def test_policy_allows_its_own_script_alone(self):
        page = WORK / 'inlined.html'
        text = self.pages['nand'].read_text(encoding='utf-8')
        added = '<script>document.title = "ran"</script><p onclick="1" style="color:red"></p>' \
                '<img src="https://example.invalid/x.png">'
        page.write_text(text.replace('</main>', added + '</main>'), encoding='utf-8')
        self.open(page)
        self.assertNotEqual(self.run_script('return document.title'), 'ran')
        refused = ' '.join(self.messages())
        for directive in ('script-src', 'style-src', 'img-src'):
            self.assertIn(directive, refused.replace('default-src', 'img-src'))

    def test_other_results(self):
        """Pages that have no figure: what they say instead."""
        op = HEADER.format('OP') + 'A 0 {}\n'
        dc = HEADER.format('DC') + 'B 0 1 1 2\n'
        hot = op.format(5).replace('27.0', '85.0')
        cases = (
            ('pass', op.format(1), op.format(1), (), 'PASS', 'All 1 judged pairs pass'),
            ('missing', op.format(1) + dc, op.format(1), (), 'FAIL_PV', 'signal missing in regression: 1'),
            ('masked', op.format(1), op.format(5), ('-nem', '1'), 'PASS', 'The masks took 1 out of the exit status 1'),
            ('hidden', op.format(1), hot, (), 'FAIL_I', 'The grade FAIL_I hides something worse'),
            ('differs', op.format(1), hot, (), 'FAIL_I', '(all of rerun 1, modify 0) rerun 1, modify 0 27 85'),
            ('died', HEADER.format('DC') + 'A DATA ASCII\n0 1\n', dc, (), 'NO_GRADE', 'No grade: the comparison ended'),
        )
        for name, golden, regression, options, word, text in cases:
            self.open(make_page(name, *write_pair(name, golden, regression), *options))
            self.assertEqual(self.find('.grade').text, word, name)
            self.assertIn(text, self.find('body').text, name)
            self.assertEqual(self.messages(), [], name)

    def test_long_transcript_is_cut(self):
        lines = ''.join(f'A{i} 0 1\n' for i in range(16000))
        sides = (HEADER.format('OP') + lines.replace(' 1\n', f' {value}\n') for value in (1, 2))
        page = make_page('long', *write_pair('long', *sides))
        self.open(page)
        size = page.with_name('transcript.txt').stat().st_size
        self.assertGreater(size, 1 << 20)
        parts = [len(p.get_property('textContent')) for p in self.browser.find_elements(By.TAG_NAME, 'pre')]
        self.assertEqual(len(parts), 2)
        self.assertIn(f'{size - sum(parts)} bytes are left out', self.find('#transcript').text)
        self.assertTrue(all(60000 < p <= 65536 for p in parts), parts)

    # -- size and speed --------------------------------------------------------------------------------------

    def test_many_failing_signals(self):
        names = [f'V({i})' for i in range(300)]
        sides = (waves(sine(shift), 1000, names=names) for shift in (0, 1e-3))
        page = make_page('many', *write_pair('many', *sides))
        self.assertLess(page.stat().st_size, 10 << 20)
        self.open(page)
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, '#findings tbody tr')), 300)
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, 'details.one > summary svg')), 50)
        self.assertLess(self.run_script('return document.documentElement.scrollHeight'), 9000)
        self.find('details.one:nth-of-type(40) summary').click()
        self.assertEqual(self.shown('#f40 svg.figure'), [1, 1])

    def test_big_waveforms(self):
        """Figures of a shared machine say little: ten times what a quiet one takes."""
        count = 100000
        pair = write_pair('big', waves(sine(0), count), waves(sine(1e-3), count, x=lambda i: i * 1.00001e-9))
        self.open(make_page('big', *pair))
        timing = self.run_script('''
            const entry = performance.getEntriesByType('navigation')[0];
            return entry.loadEventEnd - entry.fetchStart''')
        redraws = self.run_script('''
            const view = page.figures.views[0], times = [];
            view.wake();
            for (const key of '0+++--ddDD') {
              const begin = performance.now();
              view.act(key);
              times.push(performance.now() - begin);
            }
            return times''')
        print(f'2 x {count} points: load {timing:.0f} ms, redraws {min(redraws):.0f} to {max(redraws):.0f} ms',
              file=sys.stderr)
        self.assertLess(timing, 5000)
        self.assertLess(max(redraws), 1000)


if __name__ == '__main__':
    os.chdir(SOURCE)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
