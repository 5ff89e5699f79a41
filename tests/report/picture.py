#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes the picture of the documents, the page of the NAND sample down to its first figure, and refuses one that is too
large for them: picture.py <tresk-report> <source folder> <work folder> [<picture, else one in the work folder>]"""
import base64
import os
import pathlib
import sys
import urllib.parse

from browser import SOURCE, WORK, By, make_page, start

MOST_BYTES = 200 * 1000
SHOWN = '#key=' + urllib.parse.quote('r1m0/TR/area/V(Y)', safe='') + '&x=4.2e-9,4.8e-9'

picture = pathlib.Path(sys.argv[4] if len(sys.argv) > 4 else WORK / 'report.png').resolve()
WORK.mkdir(parents=True, exist_ok=True)
os.chdir(SOURCE)
page = make_page('picture', 'samples/nand/golden.pun', 'samples/nand/regress.pun', code=3)
browser = start('--window-size=980,900')
try:
    browser.get(page.as_uri() + SHOWN)
    browser.execute_script('document.activeElement.blur()')  # no frame of the keyboard
    figure = browser.find_element(By.CSS_SELECTOR, 'svg.figure')
    clip = {'x': 0, 'y': 0, 'width': 980, 'height': figure.rect['y'] + figure.rect['height'] + 10, 'scale': 1}
    made = browser.execute_cdp_cmd('Page.captureScreenshot', {'captureBeyondViewport': True, 'clip': clip})
finally:
    browser.quit()
content = base64.b64decode(made['data'])
picture.write_bytes(content)
sys.exit(f'{picture} has {len(content)} bytes' if len(content) > MOST_BYTES else 0)
