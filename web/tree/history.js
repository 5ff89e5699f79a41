// How the worst error of a pair moved over the recent runs, as a small line: the newest run on the right, larger errors
// above, in steps of a factor ten; passes on the lower edge.
const LINE_WIDTH = 96, LINE_HEIGHT = 20;

const heightOf = (error, low, high) => {
  if (error === 0) return LINE_HEIGHT - 1.5;
  const level = high > low ? (Math.log10(error) - low) / (high - low) : 0.5;
  return LINE_HEIGHT - 5 - level * (LINE_HEIGHT - 8);
};

const errorLine = (moments, runs) => {
  const errors = moments.map(moment => (moment === null ? null : moment === 'failed' ? 'failed' : number(moment)));
  const logs = errors.filter(e => Number.isFinite(e) && e > 0).map(Math.log10);
  const low = Math.min(...logs), high = Math.max(...logs);
  const step = (LINE_WIDTH - 6) / Math.max(runs.length - 1, 1);
  const drawing = svg('svg', {class: 'errors', width: LINE_WIDTH, height: LINE_HEIGHT, role: 'img',
    viewBox: `0 0 ${LINE_WIDTH} ${LINE_HEIGHT}`});
  let line = '';
  errors.forEach((error, i) => {
    if (error === null) return;
    const x = (3 + i * step).toFixed(1);
    const y = Number.isFinite(error) ? heightOf(error, low, high).toFixed(1) : '2';
    line += `${line === '' || errors[i - 1] === null ? 'M' : 'L'}${x} ${y}`;
    if (error !== 0) drawing.append(svg('circle', {class: 'bad', cx: x, cy: y, r: 1.7}));
  });
  drawing.prepend(svg('path', {d: line}));
  const bad = errors.filter(error => error !== null && error !== 0).length;
  const known = errors.filter(error => error !== null).length;
  drawing.setAttribute('aria-label', `failed in ${bad} of ${known} runs`);
  return drawing;
};

class Courses {
  constructor(data, courses) {
    this.runs = data.runs;
    this.flapping = data.flapping;
    this.rows = new Map(courses.map(([row, firstBad, lastGood, flaps, moments]) =>
      [row, {firstBad, lastGood, flaps, moments}]));
  }

  get(row) { return this.rows.get(row); }
  since(row) { return this.get(row)?.firstBad ?? ''; }
  flaps(row) { return (this.get(row)?.flaps ?? 0) >= this.flapping; }

  sentence(row) {
    const course = this.get(row);
    if (!course) return '';
    const since = course.firstBad === '' ? 'It passes now' : 'It fails since ' + course.firstBad;
    const good = course.lastGood === '' ? ', and is not known to have passed before' : ', last passed ' + course.lastGood;
    const flaps = this.flaps(row) ? `. It flaps: changed ${course.flaps} times in ${course.moments.length} runs` : '';
    return since + (course.firstBad === '' ? '' : good) + flaps + '.';
  }
}
