#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes the pictures of the documents: the page of the NAND sample down to its first figure, and that of a tree. Refuses
what is too large for them: picture.py <tresk-report> <source folder> <work folder> [<picture, else one in the work folder>]
The picture of the tree gets the name tree.png beside the other one."""
import base64
import os
import pathlib
import shutil
import subprocess
import sys
import urllib.parse

from browser import PROGRAM, SOURCE, WORK, By, make_page, start
import tree_folder

MOST_BYTES = 200 * 1000
SHOWN = '#key=' + urllib.parse.quote('r1m0/TR/area/V(Y)', safe='') + '&x=4.2e-9,4.8e-9'
NIGHTS = 12


def shoot(address, last, path, width=980):
    """Everything from the top of the page down to the last element."""
    browser = start(f'--window-size={width},900')
    try:
        browser.get(address)
        browser.execute_script('document.activeElement.blur()')  # no frame of the keyboard
        box = browser.find_element(By.CSS_SELECTOR, last).rect
        clip = {'x': 0, 'y': 0, 'width': width, 'height': box['y'] + box['height'] + 10, 'scale': 1}
        made = browser.execute_cdp_cmd('Page.captureScreenshot', {'captureBeyondViewport': True, 'clip': clip})
    finally:
        browser.quit()
    path.write_bytes(base64.b64decode(made['data']))
    return path.stat().st_size <= MOST_BYTES or f'{path} has {path.stat().st_size} bytes'


def make_tree():
    """The last of some nights, with a history of them."""
    for night in range(NIGHTS):
        shutil.rmtree(WORK / 'night', ignore_errors=True)
        tree_folder.make(WORK / 'night', 300, 0.1 + 0.1 * (night == NIGHTS - 1), night)
        os.utime(WORK / 'night/pairs', (1_795_000_000 + 86400 * night,) * 2)
        subprocess.run([PROGRAM, 'tree', '--quiet', '--history', 'history', 'night'], cwd=WORK, check=False)
    return WORK / 'night/report/index.html'


picture = pathlib.Path(sys.argv[4] if len(sys.argv) > 4 else WORK / 'report.png').resolve()
shutil.rmtree(WORK, ignore_errors=True)
WORK.mkdir(parents=True)
os.chdir(SOURCE)
pair = make_page('picture', 'samples/nand/golden.pun', 'samples/nand/regress.pun', code=3)
results = [shoot(pair.as_uri() + SHOWN, 'svg.figure', picture),
           shoot(make_tree().as_uri() + '#grades=3&q=opamp', '.box', picture.with_name('tree.png'), 1300)]
sys.exit(None if results == [True, True] else str(results))
