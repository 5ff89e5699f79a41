# SPDX-License-Identifier: MIT
"""Folders as the kit leaves them, of any size: as many pairs as are wanted, with grades, findings and names of all kinds,
and without a comparison being run."""
import json
import os
import random
import sys

WORDS = ['PASS', 'FAIL_I', 'FAIL_PV', 'FAIL_V', 'FAIL_PSV', 'FAIL_SV', 'NO_GRADE', 'NO_DATA']
HOSTILE = ['<img src=x onerror=alert(1)>', '"onmouseover="alert(1)', '</script><script>alert(1)', "it's", 'a b', '${x}', 'ünï 日本',
           '\u202egnp', '__proto__', '&lt;', '#hash', '%41', '=1+1', ']]>']


def name(i, hostile):
    plain = f'{["pll", "opamp", "adc", "bandgap", "io"][i % 5]}/block_{i // 50 % 40:02}/case_{i:06}.pun'
    return plain if not hostile or i % 9 else f'{HOSTILE[i // 9 % len(HOSTILE)]}/{i}{HOSTILE[(i // 9 + 3) % len(HOSTILE)]}.pun'


def finding(rng, i, f, shared):
    """Some signals break in many circuits, most in one. Every 40th value is no number."""
    signal = shared[(i + f) % len(shared)] if f < 2 else f'V(N{rng.randrange(4000)})'
    analysis = ['TR', 'AC', 'DC', 'OP'][i % 4]
    if f and i % 7 == 0:
        return {'kind': 'missing', 'key': f'r1m0/{analysis}/missing signal in regression/{signal}', 'analysis': analysis,
                'name': signal, 'lacks': 'signal', 'in': 'regression', 'judged': True}
    error = 'nan' if i % 40 == 0 and f == 0 else float(f'{10 ** rng.uniform(-12, -3):.16g}')
    return {'kind': 'area', 'key': f'r1m0/{analysis}/area/{signal}/{f}', 'analysis': analysis, 'name': signal,
            'verdict': 'fails', 'abs': error, 'rel': float(f'{10 ** rng.uniform(-2, 0):.16g}'), 'judged': True}


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, 'wb') as file:
        file.write(text if isinstance(text, bytes) else text.encode())


def grade_of(rng, share):
    return 0 if rng.random() >= share else rng.choices([1, 2, 3, 4, 5, 6, 7], [2, 3, 20, 2, 2, 1, 1])[0]


def make(out, pairs, share=0.1, seed=1, hostile=False):
    """A share of the pairs does not pass. The same seed gives the same folder."""
    rng, shared, lines = random.Random(seed), ['V(OUT)', 'V(VDD_INT)', 'I(VREF)', *(HOSTILE if hostile else [])], []
    for i in range(pairs):
        path, grade = name(i, hostile), grade_of(rng, share)
        line = f'{"-r 0.05" if i % 50 == 7 else ""}\t-a 1e-9\t1/2/3:\t1/2/3:{".gz" if i % 60 == 3 else ""}\t{path}'
        lines.append(line)
        findings = [finding(rng, i, f, shared) for f in range(1 + i % 4)] if grade in (1, 2, 3, 4, 5) else []
        status = {6: 'code=139', 0: '0'}.get(grade, '1')
        remark = {7: '(no signals in the golden file)'}.get(grade, '')
        write(f'{out}/grades/{path}.grade', f'{WORDS[grade]}\t{status}\t{remark}\t{line}\n')
        if grade != 6:
            write_report(f'{out}/report/{path}', grade, findings)
        if i < 2000:
            write(f'{out}/transcripts/{path}.txt', f'transcript of {path}\n')
    write(f'{out}/pairs', '\n'.join(lines) + '\n')
    write(f'{out}/missing', ''.join(f'{"golden" if i % 2 else "regression"}\tlost/{i}.pun\n' for i in range(pairs // 100)))
    write(f'{out}/arguments', "golden: /data/it's golden\nregression: /data/regression\nprogram: /usr/bin/tresk-report\n"
                              'size and times of the program: 1/2/3\npattern: *.pun\noptions: -a 1e-9\nreports: yes\n')


def write_report(folder, grade, findings):
    failing = [f for f in findings if 'verdict' in f]
    worst = failing[0] if failing else {}
    write(f'{folder}/summary.tsv', '\t'.join(map(str, [
        WORDS[min(grade, 5)], 1, len(failing), len(findings) - len(failing), 0, worst.get('analysis', ''),
        worst.get('name', '').replace('\u202e', '\ufffd'), worst.get('abs', ''), worst.get('rel', ''), 0.25, 'a' * 64, 'b' * 64])) + '\n')
    if findings:
        write(f'{folder}/report.html', f'<!doctype html><title>report</title><p>{len(findings)}')
        head = json.dumps({'schema': 'tresk-result/1', 'result': {'grade': grade, 'hidden': ['tolerance'] if grade == 1 else []}})
        write(f'{folder}/result.json', head[:-1] + ',\n"findings":[\n' + ',\n'.join(
            json.dumps(f, ensure_ascii=False) for f in findings) + ']}\n')


if __name__ == '__main__':
    make(sys.argv[1], int(sys.argv[2]), *map(float, sys.argv[3:4]), *map(int, sys.argv[4:5]), *map(bool, sys.argv[5:6]))
