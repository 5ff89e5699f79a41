// The views: which rows and columns they have. A column sorts by its key: numbers, or texts; null comes last.
const errorKey = value => (value === null ? null : Number.isNaN(number(value)) ? Infinity : number(value));
const errorText = value => (typeof value === 'number' ? value.toExponential(3).replace(/e([+-])(\d)$/, 'e$10$2') : value ?? '');
const plainText = value => (value === null ? '' : String(value));

const textColumn = (id, head, text) => ({id, head, key: text, fill: (cell, i) => {
  cell.textContent = text(i);
  cell.title = text(i);
}});
const numberColumn = (id, head, value, print = errorText) => ({id, head, isNumber: true, key: i => errorKey(value(i)),
  fill: (cell, i) => { cell.textContent = print(value(i)); }});

const link = (href, text) => html('a', {href}, text);

const gradeColumn = (id, head, grade) => ({id, head, isNumber: false, key: grade, fill: (cell, i) => {
  const number = grade(i);
  cell.textContent = number < 0 ? '(none)' : GRADES[number];
  cell.className = number < 0 ? '' : 'g' + number;
}});

// Where there is no room for all of a path the folders are cut, not the name.
const pathColumn = pairs => ({id: 'path', head: 'path', key: i => pairs.path(i), fill: (cell, i) => {
  const page = pairs.page(i);
  cell.title = [pairs.path(i), pairs.remark(i)].join(' ').trim();
  const file = page === null ? html('span', {}) : link(page, '');
  file.append(html('span', {class: 'folder'}, pairs.folderOf(i)), html('span', {class: 'name'}, pairs.name[i]));
  const box = cell.appendChild(html('div', {class: 'path'}));
  box.append(file);
  if (pairs.remark(i) !== '') box.append(html('span', {class: 'hint'}, pairs.remark(i)));
  if (pairs.has(i, HIDES)) box.append(html('strong', {class: 'hides', title: 'the grade hides something worse'}, 'hides worse'));
}});

const transcriptColumn = pairs => ({id: 'transcript', head: 'transcript', fill: (cell, i) => {
  const address = pairs.transcript(i);
  if (address !== null) cell.append(link(address, 'transcript'));
}});

const signalColumns = pairs => [
  textColumn('signal', 'worst signal', i => [pairs.signal(i), pairs.analysis(i)].filter(Boolean).join(' ')),
  numberColumn('abs', 'abs', i => pairs.abs(i)),
  numberColumn('rel', 'rel', i => pairs.rel(i)),
];

const tickColumn = ticks => ({id: 'tick', head: '✓', fill: (cell, i) => {
  if (!ticks.takes(i)) return;
  const box = html('input', {type: 'checkbox', 'aria-label': 'tick for blessing'});
  box.checked = ticks.has(i);
  box.addEventListener('change', () => ticks.toggle(i));
  cell.append(box);
}});

const historyColumns = courses => courses.runs.length === 0 ? [] : [
  textColumn('since', 'fails since', i => courses.since(i)),
  {id: 'course', head: courses.runs.length === 1 ? '1 run' : `${courses.runs.length} runs`, key: i => courses.get(i)?.flaps ?? null, fill: (cell, i) => {
    const course = courses.get(i);
    if (!course) return;
    cell.append(errorLine(course.moments, courses.runs));
    if (courses.flaps(i)) cell.append(' ', html('span', {class: 'hides'}, 'flaps'));
  }},
];

const filtered = (count, holds) => Array.from({length: count}, (_, i) => i).filter(holds);

const makeViews = (data, pairs, signals, courses, signalCourses, ticks) => {
  const seconds = numberColumn('seconds', 's', i => pairs.seconds(i), plainText);
  const views = [{
    id: 'pairs', title: 'Pairs', rows: filtered(pairs.count, () => true), data: pairs, hasGrades: true,
    columns: [tickColumn(ticks), gradeColumn('grade', 'grade', i => pairs.grade[i]), pathColumn(pairs),
      numberColumn('findings', 'findings', i => pairs.findings(i), plainText), ...signalColumns(pairs), ...historyColumns(courses),
      seconds, transcriptColumn(pairs)],
  }, {
    id: 'signals', title: 'Signals', rows: filtered(signals.count, () => true), data: signals, hasGrades: false,
    columns: [{id: 'name', head: 'signal', key: i => signals.name(i), fill: (cell, i) => {
      cell.title = signals.name(i);
      cell.append(link('#' + new URLSearchParams({view: 'pairs', signal: signals.names[i]}), signals.name(i) || '(none)'));
    }},
    textColumn('analysis', 'analysis', i => signals.analysis(i)),
    textColumn('what', 'what', i => signals.what(i) + (signals.isJudged(i) ? '' : ' (not judged)')),
    numberColumn('pairs', 'pairs', i => signals.pairs[i], plainText),
    numberColumn('abs', 'worst abs', i => signals.abs(i)), numberColumn('rel', 'worst rel', i => signals.rel(i)),
    ...historyColumns(signalCourses),
    {id: 'path', head: 'worst in', key: i => (signals.worst(i) < 0 ? null : pairs.path(signals.worst(i))), fill: (cell, i) => {
      const worst = signals.worst(i);
      if (worst >= 0) pathColumn(pairs).fill(cell, worst);
    }}],
  }, {
    id: 'missing', title: 'Missing', data: pairs, hasGrades: false,
    rows: filtered(pairs.count, i => pairs.has(i, LACKS_GOLDEN | LACKS_REGRESSION)),
    columns: [textColumn('lacks', 'missing in', i => (pairs.has(i, LACKS_GOLDEN) ? 'golden' : 'regression')), pathColumn(pairs)],
  }];
  if (data.hasBefore) {
    views.push({
      id: 'changed', title: 'Changed', data: pairs, hasGrades: true,
      rows: filtered(pairs.count, i => pairs.changeOf(i) !== UNCHANGED),
      columns: [tickColumn(ticks), {id: 'change', head: 'change', key: i => pairs.changeOf(i), fill: (cell, i) => {
        cell.append(html('b', {class: 'change-' + CHANGES[pairs.changeOf(i)]}, CHANGES[pairs.changeOf(i)]));
      }},
      gradeColumn('before', 'before', i => pairs.gradeBefore(i)), gradeColumn('grade', 'grade', i => pairs.grade[i]),
      pathColumn(pairs), numberColumn('findings', 'findings', i => pairs.findings(i), plainText), ...signalColumns(pairs),
      ...historyColumns(courses), transcriptColumn(pairs)],
    });
  }
  return views;
};
