#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""The page of a pair in a browser: page_test.py <tresk-report> <source folder> <work folder>"""
import base64
import json
import math
import os
import re
import shutil
import subprocess
import sys
import time
import unittest

from browser import SOURCE, WORK, By, Keys, make_page, start, write_pair

SAMPLES = {name: 3 for name in ('follower', 'halfwave', 'lc_filter', 'nand', 'sallen_key')}
HEADER = '* ANALYSIS = {}   PROGRAM = KORSIM3   DATE = 12-MAR-24   TIME = 10:11:12\n' \
         '* RERUN_NUMBER = 1, TEMPERATURE = 27.0, MODIFY = 0\n'

# Markup, script, quotes and marks of direction, in all places where a file has text of its own.
EVIL = ['<img src=x onerror=alert(1)>', '"onmouseover="alert(1)', "'><script>alert(1)</script>", '</script><script>alert(1)',
        '&lt;b&gt;', '${alert(1)}', '__proto__', 'constructor', '\u202egnp.exe', '\x1b[31m', '</title><b>', ']]>', '-->']

# All drawn elements of a figure with absolute points; for paths, as polylines.
SHAPES = r'''
const points = d => {
  const lines = []; let line = null, x = 0, y = 0, command = '', i = 0;
  const words = d.match(/[a-z]|-?[0-9.]+/gi) ?? [], next = () => Number(words[i++]);
  while (i < words.length) {
    if (/[a-z]/i.test(words[i])) command = words[i++];
    if (command === 'z') { line.push(line[0]); continue; }
    if (command === 'M' || command === 'm') {
      const from = command === 'm' ? [x, y] : [0, 0];
      x = from[0] + next(); y = from[1] + next(); lines.push(line = [[x, y]]); command = command === 'M' ? 'L' : 'l'; continue;
    }
    if (command === 'a') i += 5;
    if ('Lla'.includes(command)) { const by = command === 'L' ? [0, 0] : [x, y]; x = by[0] + next(); y = by[1] + next(); }
    else if ('Hh'.includes(command)) x = next() + (command === 'h' ? x : 0);
    else if ('Vv'.includes(command)) y = next() + (command === 'v' ? y : 0);
    line.push([x, y]);
  }
  return lines;
};
const shapes = drawing => Array.from(drawing.querySelectorAll('path, rect, text'), e => ({
  name: e.tagName + '.' + e.getAttribute('class'), text: e.tagName === 'text' ? e.textContent : '',
  lines: e.tagName === 'path' ? points(e.getAttribute('d'))
    : [['x', 'y', 'width', 'height'].map(a => [Number(e.getAttribute(a)), 0])]}));
const toSegment = ([x, y], [ax, ay], [bx, by]) => {
  const length = (bx - ax) ** 2 + (by - ay) ** 2;
  const t = length === 0 ? 0 : Math.min(Math.max(((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length, 0), 1);
  return Math.hypot(x - ax - t * (bx - ax), y - ay - t * (by - ay));
};
const toLine = (point, line) => line.reduce((least, p, i) => Math.min(least, toSegment(point, line[Math.max(i - 1, 0)], p)), Infinity);
const apart = (a, b) => a.name !== b.name || a.text !== b.text || a.lines.length !== b.lines.length ? Infinity
  : Math.max(0, ...a.lines.map((line, i) => Math.max(...line.map(p => toLine(p, b.lines[i])), ...b.lines[i].map(p => toLine(p, line)))));
'''


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
        shutil.rmtree(WORK, ignore_errors=True)
        WORK.mkdir(parents=True)
        cls.pages = {name: make_page(name, *(f'samples/{name}/{side}.pun' for side in ('golden', 'regress')), code=grade)
                     for name, grade in SAMPLES.items()}
        cls.browser = start()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, page, address=''):
        self.browser.get('about:blank')
        self.browser.get_log('browser'), self.browser.get_log('performance')
        self.browser.get(page.as_uri() + address)

    def run_script(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

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
        pages = dict(self.pages, all=make_page('all', *(f'tests/golden/all-sections/{s}.pun' for s in ('golden', 'regress'))))
        for name, path in pages.items():
            self.open(path)
            found = self.run_script(SHAPES + '''
                return page.figures.views.map(view => {
                  const before = shapes(view.svg);
                  view.wake().draw();
                  const after = shapes(view.svg);
                  return [before.length - after.length, after.length, ...after.flatMap((shape, i) => {
                    const distance = apart(shape, before[i]);
                    return distance <= 0.2 ? [] : [shape.name + ' ' + shape.text + ' ' + before[i].text + ' ' + distance];
                  })];
                })''')
            self.assertTrue(found, name)
            for figure in found:
                self.assertEqual((figure[0], figure[2:]), (0, []), name)
                self.assertGreater(figure[1], 20, name)
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
            self.assertIn('rgba(0, 0, 0, 0)', browser.find_element(By.TAG_NAME, 'body').value_of_css_property('background-color'))
        finally:
            browser.quit()

    def test_prints_everything(self):
        self.open(self.pages['follower'])
        figures, seen = self.shown('svg.figure')
        self.assertEqual((figures > seen, seen), (True, 5))
        self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', {'media': 'print'})
        try:
            self.assertEqual(self.shown('svg.figure'), [figures, figures])
            self.assertEqual(self.shown('.tools, .readout, .filter')[1], 0)
        finally:
            self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', {'media': ''})
        pdf = base64.b64decode(self.browser.print_page())
        self.assertEqual(pdf[:5], b'%PDF-')
        self.assertGreaterEqual(len(re.findall(rb'/Type\s*/Page\b', pdf)), 4)

    # -- the reader's hands ----------------------------------------------------------------------------------

    def test_drag_zooms_and_the_group_follows(self):
        self.open(make_page('group', *write_pair('group', waves(sine(0), names=('V(A)', 'V(B)')), waves(sine(1e-2), names=('V(A)', 'V(B)')))))
        whole = self.stretch()
        drawing = self.find('#f1 svg.figure')
        drag = self.run_script('''
            const box = arguments[0].getBoundingClientRect();
            const send = (type, x) => arguments[0].dispatchEvent(new PointerEvent(type, {bubbles: true, pointerId: 1, button: 0,
              clientX: box.left + x * box.width / 960, clientY: box.top + 100}));
            arguments[0].setPointerCapture = () => {};
            send('pointerdown', 302); send('pointermove', 400); send('pointerup', 516);
            return page.figures.views.map(view => [view.picture.low, view.picture.high])''', drawing)
        width = whole[1] - whole[0]
        for low, high in drag:
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
        self.assertEqual(press('0'), whole)
        before = self.run_script('return document.querySelector("#f1 path.regression:last-of-type, #f1 g.panel path.regression").getAttribute("d")')
        for key, label in (('d', 'regression minus golden'), ('D', 'difference drawn × 10')):
            press(key)
            self.assertIn(label, self.find('#f1 text.name').text)
            self.assertNotEqual(self.find('#f1 g.panel path.regression').get_attribute('d'), before)
            self.assertEqual(self.run_script('return page.figures.views[0].buttons.get(arguments[0]).ariaPressed', key), 'true')
            press(key)
            self.assertEqual(self.find('#f1 g.panel path.regression').get_attribute('d'), before)
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
            found = self.run_script(SHAPES + '''
                const view = page.figures.views[arguments[0]], first = shapes(view.svg);
                view.act('l'); const other = shapes(view.svg);
                view.act('l'); const again = shapes(view.svg);
                const least = list => Math.max(...list.map((shape, i) => apart(shape, first[i])));
                return [other.length !== first.length || least(other) > 20, again.length === first.length && least(again) <= 0.2]''', figure)
            self.assertEqual(found, [True, True], (name, figure))

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
            self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', {'features': [{'name': 'prefers-color-scheme', 'value': scheme}]})
            for width in (1000, 400):
                self.browser.execute_cdp_cmd('Emulation.setDeviceMetricsOverride',
                                             {'width': width, 'height': 900, 'deviceScaleFactor': 1, 'mobile': False})
                for name in ('follower', 'sallen_key'):
                    self.open(self.pages[name])
                    poor, over = self.run_script('''
                        const light = c => { const [r, g, b] = c.match(/[0-9.]+/g).slice(0, 3).map(v => { v /= 255;
                          return v <= 0.03928 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4; }); return 0.2126 * r + 0.7152 * g + 0.0722 * b; };
                        const ground = e => { for (; e; e = e.parentElement) { const c = getComputedStyle(e).backgroundColor;
                          if (!/, 0\\)$/.test(c)) return c; } };
                        const poor = [];
                        for (const e of document.body.querySelectorAll('*')) {
                          if (!Array.from(e.childNodes).some(n => n.nodeType === 3 && n.data.trim()) || e.closest('script, style')) continue;
                          const style = getComputedStyle(e);
                          const [a, b] = [light(e.closest('svg') ? style.fill : style.color), light(ground(e))].sort((p, q) => q - p);
                          const ratio = (a + 0.05) / (b + 0.05);
                          if (ratio < 4.5) poor.push(e.tagName + '.' + e.className + ' ' + ratio);
                        }
                        return [poor, document.documentElement.scrollWidth - innerWidth]''')
                    self.assertEqual((poor, over), ([], 0), (scheme, width, name))
            dark = self.run_script('return getComputedStyle(document.body).backgroundColor')
            self.assertEqual(dark == 'rgb(255, 255, 255)', scheme == 'light')
        self.browser.execute_cdp_cmd('Emulation.setEmulatedMedia', {'features': []})
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
            for role in ('button', 'link', 'region', 'image', 'group', 'searchbox', 'navigation', 'columnheader', 'rowheader'):
                named = [n for n in roles.get(role, []) if n] if role != 'group' else ['']
                self.assertEqual(len(named), len(roles.get(role, [])) if role != 'group' else 1, (name, role, roles.get(role)))
            self.assertEqual(len(roles['main']), 1)
            problems = self.run_script('''
                const ids = Array.from(document.querySelectorAll('[id]'), e => e.id);
                const levels = Array.from(document.querySelectorAll('h1, h2, h3'), h => Number(h.tagName[1]));
                return [ids.length - new Set(ids).size, document.documentElement.lang, document.title !== '',
                  levels[0] === 1 && levels.every((l, i) => i === 0 || l <= levels[i - 1] + 1),
                  document.querySelectorAll('figure').length - document.querySelectorAll('figure .numbers table:first-of-type').length,
                  document.querySelectorAll('[tabindex]:not([tabindex="0"])').length,
                  Array.from(document.querySelectorAll('.tools button')).filter(b => /[a-z]/.test(b.textContent) &&
                    !b.getAttribute('aria-label').split(' ').includes(b.textContent.split(' ').pop())).length,
                  document.querySelectorAll('th:not([scope])').length]''')
            self.assertEqual(problems, [0, 'en', True, True, 0, 0, 0, 0], name)

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
        paths = [path.rename(folder / (EVIL[0] + "'\\ $x\x1b\udcff" + path.name)) for path in write_pair('hostile', *files)]
        page = make_page('hostile', *paths)
        self.open(page)
        self.run_script('for (const d of document.querySelectorAll("details")) d.open = true;'
                        'for (const v of page.figures.views) { for (const k of "dDwl+-0") v.act(k); v.showCrosshair(300); }')
        found = self.run_script('''
            const handlers = Array.from(document.querySelectorAll('*')).filter(e => Array.from(e.attributes).some(a => /^on|^style$/.test(a.name)));
            return [document.querySelectorAll('script').length, document.querySelectorAll('img, iframe, object, embed, link, base').length,
              handlers.length, document.querySelectorAll('#findings tbody tr').length > 10, page.figures.views.length > 5]''')
        self.assertEqual(found, [2, 0, 0, True, True])
        self.assertEqual(self.messages(), [])
        self.assertEqual([r for r in self.requests() if r != page.as_uri()], [])
        self.assertNotRegex(page.read_text(encoding='utf-8'), '[\x00-\x08\x0b-\x1f\x7f-\x9f\u202a-\u202e\u2066-\u2069]')
        self.assertEqual(self.run_script('return document.title').split(' ')[0], 'FAIL_I')
        command = self.find('#command').get_property('textContent')
        words = subprocess.run(['bash', '-c', 'tresk() { printf "%s\\0" "$@"; }; ' + command], stdout=subprocess.PIPE, check=True)
        self.assertEqual(words.stdout.split(b'\0')[:-1], [os.fsencode(path) for path in paths])

    def test_policy_allows_its_own_script_alone(self):
        page = WORK / 'inlined.html'
        text = self.pages['nand'].read_text(encoding='utf-8')
        page.write_text(text.replace('</main>', '<script>document.title = "ran"</script><p onclick="1" style="color:red"></p>'
                                     '<img src="https://example.invalid/x.png"></main>'), encoding='utf-8')
        self.open(page)
        self.assertNotEqual(self.run_script('return document.title'), 'ran')
        refused = ' '.join(self.messages())
        for directive in ('script-src', 'style-src', 'img-src'):
            self.assertIn(directive, refused.replace('default-src', 'img-src'))

    def test_other_results(self):
        """Pages that have no figure: what they say instead."""
        op = HEADER.format('OP') + 'A 0 {}\n'
        dc = HEADER.format('DC') + 'B 0 1 1 2\n'
        cases = (
            ('pass', op.format(1), op.format(1), (), 'PASS', 'All 1 judged pairs pass'),
            ('missing', op.format(1) + dc, op.format(1), (), 'FAIL_PV', 'signal missing in regression: 1'),
            ('masked', op.format(1), op.format(5), ('-nem', '1'), 'PASS', 'The masks took 1 out of the exit status 1'),
            ('hidden', op.format(1), op.format(5).replace('27.0', '85.0'), (), 'FAIL_I', '27'),
            ('hidden', op.format(1), op.format(5).replace('27.0', '85.0'), (), 'FAIL_I', 'The grade FAIL_I hides something worse'),
            ('died', HEADER.format('DC') + 'A DATA ASCII\n0 1\n', dc, (), 'NO_GRADE', 'No grade:'),
        )
        for name, golden, regression, options, word, text in cases:
            self.open(make_page(name, *write_pair(name, golden, regression), *options))
            self.assertEqual(self.find('.grade').text, word, name)
            self.assertIn(text, self.find('body').text, name)
            self.assertEqual(self.messages(), [], name)

    def test_long_transcript_is_cut(self):
        lines = ''.join(f'A{i} 0 1\n' for i in range(16000))
        page = make_page('long', *write_pair('long', HEADER.format('OP') + lines, HEADER.format('OP') + lines.replace(' 1\n', ' 2\n')))
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
        page = make_page('many', *write_pair('many', waves(sine(0), 1000, names=names), waves(sine(1e-3), 1000, names=names)))
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
        timing = self.run_script('const t = performance.getEntriesByType("navigation")[0]; return t.loadEventEnd - t.fetchStart')
        redraws = self.run_script('''
            const view = page.figures.views[0], times = [];
            view.wake();
            for (const key of '0+++--ddDD') { const t = performance.now(); view.act(key); times.push(performance.now() - t); }
            return times''')
        print(f'2 x {count} points: load {timing:.0f} ms, first redraw {redraws[0]:.0f} ms, most {max(redraws):.0f} ms', file=sys.stderr)
        self.assertLess(timing, 5000)
        self.assertLess(max(redraws), 1000)


if __name__ == '__main__':
    os.chdir(SOURCE)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
