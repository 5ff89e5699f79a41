#!/bin/bash
# SPDX-License-Identifier: MIT
# Does what docs/ngspice.md shows, block by block, with what is installed below a prefix; then runs the steps of its
# CI files on the result. With --install, also what the page has installed, from the packages beside the script.
# Says what it needs and ends with 77 when a tool is missing. Usage: ngspice_page.sh [--install] PREFIX WORK
set -euo pipefail
here=$(realpath "$(dirname "$0")")
page() { # <language>: the blocks of that language
    awk -v begin="^\`\`\`$1\$" '/^```/ { on = $0 ~ begin; next } on' "$doc/docs/ngspice.md"
}
if [ "$1" = --install ]; then
    shift
    doc=$1/share/doc/tresk
    cd "$here"
    dpkg-deb --fsys-tarfile ./tresk_*.deb | tar -x -C / ./usr/share/doc/tresk/docs # to have the page
    sh -ec "$(page install)"
    apt-get install -y yamllint >/dev/null
fi
prefix=$(realpath "$1") work=$2/ngspice
doc=$prefix/share/doc/tresk
for tool in ngspice ctest yamllint; do
    command -v $tool >/dev/null || { echo "skipped: ngspice_page needs $tool" && exit 77; }
done
fail() {
    cat output
    echo "$1"
    exit 1
}

rm -rf "$work"
mkdir -p "$work"
cd "$work"
export CMAKE_PREFIX_PATH=$prefix
bash -ec "$(page sh)" >output 2>&1 || fail "the commands of the page fail"
[ "$(grep -c '^100% tests passed, 0 tests failed out of [69]$' output)" = 2 ] || fail "not all of the tests pass"
grep -q 'filter.compare .*Failed' output || fail "the change is not found"
grep -q '^89% tests passed, 1 tests failed out of 9' output || fail "more than the change is found"
# The signals that the page shows are in the transcript, whatever digits this release of ngspice comes to.
page '' | sed -n 's/^\(v([a-z]*) *[0-9]\).*<=A=R=.*/^\1.*<=A=R=/p' >shown
[ "$(wc -l <shown) $(grep -cf shown output)" = '2 2' ] || fail "the page shows another transcript"
grep -q 'filter.compare.*status="fail"' regression/build/junit.xml || fail "junit.xml does not show it"
grep -q '<svg' regression/build/report/filter/report.html || fail "nothing is drawn"
[ ! -e regression/build/report/inverter/report.html ] || fail "what passes has a page"

# Both CI files: as YAML, and their steps, which end with 8 for the failing test.
page yaml | awk '/^---$/ { ++n } { print > ("ci" n ".yml") }'
yamllint -d '{extends: default, rules: {line-length: {max: 120}}}' ci1.yml ci2.yml
python3 - <<'END'
import yaml
github, gitlab = (yaml.safe_load(open(f"ci{n}.yml", encoding="utf-8")) for n in (1, 2))
job, = github["jobs"].values()
assert github["on"] == ["push", "pull_request"] and {"runs-on", "container", "steps"} == set(job)
assert all(("uses" in step) != ("run" in step) and set(step) <= {"name", "uses", "run", "with", "if"}
           for step in job["steps"])
install, run = (step["run"].strip().splitlines() for step in job["steps"] if "run" in step)
upload = job["steps"][-1]
other, = gitlab.values()
assert other["before_script"] == install and other["script"] == run and other["image"] == job["container"]
assert upload["if"] == "always()" and other["artifacts"]["when"] == "always"
assert upload["with"]["path"].split() == other["artifacts"]["paths"]
assert other["artifacts"]["reports"]["junit"] in other["artifacts"]["paths"]
open("steps", "w", encoding="utf-8").write("\n".join(run))
open("kept", "w", encoding="utf-8").write("\n".join(other["artifacts"]["paths"]))
END
rm -r regression/build
code=0
(cd regression && bash -ec "$(cat ../steps)") >output 2>&1 || code=$?
[ $code = 8 ] || fail "the steps of the CI files end with $code"
while read -r path; do
    compgen -G "regression/$path" >/dev/null || fail "nothing to keep: $path"
done <kept
