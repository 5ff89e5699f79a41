# SPDX-License-Identifier: MIT
"""A headless browser on pages of tresk-report, and pairs of files to make such pages of."""
import pathlib
import subprocess
import sys

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
except ImportError:
    print('skipped: the browser tests need python3-selenium')
    sys.exit(77)

PROGRAM, SOURCE, WORK = (pathlib.Path(p).resolve() for p in sys.argv[1:4])
CHROMIUM, DRIVER = pathlib.Path('/usr/bin/chromium'), pathlib.Path('/usr/bin/chromedriver')
if not CHROMIUM.exists() or not DRIVER.exists():
    print('skipped: the browser tests need chromium and chromium-driver')
    sys.exit(77)


def start(*arguments):
    """A browser without a screen. As root it has no sandbox of its own."""
    options = webdriver.ChromeOptions()
    options.binary_location = str(CHROMIUM)
    for argument in ('--headless=new', '--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage', '--hide-scrollbars',
                     '--window-size=1000,900', *arguments):
        options.add_argument(argument)
    options.set_capability('goog:loggingPrefs', {'browser': 'ALL', 'performance': 'ALL'})
    return webdriver.Chrome(options=options, service=Service(str(DRIVER)))


def make_page(name, golden, regression, *options, code=None):
    """The page of a pair of paths."""
    out = WORK / name
    run = subprocess.run([PROGRAM, 'pair', '--always', '--quiet', '--out', out, *options, golden, regression],
                         stderr=subprocess.PIPE, check=False)
    assert code is None or run.returncode == code, (name, run.returncode, run.stderr)
    return out / 'report.html'


def write_pair(name, golden, regression):
    """Both sides as files, and their paths."""
    paths = []
    for side, text in (('golden', golden), ('regression', regression)):
        path = WORK / f'{name}.{side}.pun'
        path.write_bytes(text if isinstance(text, bytes) else text.encode())
        paths.append(path)
    return paths
