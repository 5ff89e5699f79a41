// Starts everything. Without it the page has its plain tables, which come behind it and need not be drawn.
const KEYS = [
  ['j, k', 'next, previous row; with the table in focus also ↓ and ↑, Page Down, Page Up, Home, End'],
  ['Enter', 'open the report of the row; of a signal, its pairs'], ['x', 'tick the row for blessing'],
  ['/', 'filter; Escape clears it'], ['1 to 4', 'the views'], ['?', 'this list'],
];

class TreePage {
  constructor(data) {
    [this.out, this.golden, this.regression, this.options] = data.texts;
    this.pairs = new Pairs(data.pairs);
    this.signals = new Signals(data.signals);
    this.courses = new Courses(data, data.courses);
    this.signalCourses = new Courses(data, data.signals.courses);
    this.ticks = new Ticks(this.pairs, this.out);
    this.ticks.onChange = () => this.redraw();
    this.views = makeViews(data, this.pairs, this.signals, this.courses, this.signalCourses, this.ticks);
    this.lists = new Map(this.views.map(view => [view.id, new List(view, () => this.changed())]));
    this.gradesThere = GRADES.map((_, grade) => grade).filter(grade => this.pairs.grade.includes(grade));
    this.makeControls();
    this.makeDetail();
    this.area = html('div', {class: 'area'});
    document.documentElement.classList.add('scripted');
    addEventListener('DOMContentLoaded', () => document.getElementById('plain').remove());
    document.getElementById('app').append(...this.leftOut(data), this.help(), this.controls, this.area, this.foot(), ...this.gone(data));
    addEventListener('hashchange', () => this.follow());
    addEventListener('resize', () => this.list.draw());
    addEventListener('keydown', event => this.key(event));
    this.follow();
  }

  help() {
    const help = html('details', {class: 'keys'});
    const list = html('dl', {class: 'facts'});
    for (const [keys, meaning] of KEYS) list.append(html('dt', {}, keys), html('dd', {}, meaning));
    help.append(html('summary', {}, 'Keys and links'), list, html('p', {}, 'A click on a head sorts: falling, rising, ' +
      'worst first. The address always holds what is shown: copy it into a ticket.'));
    this.helpBox = help;
    return help;
  }

  makeControls() {
    this.tabs = new Map(this.views.map((view, i) => {
      const tab = html('button', {type: 'button', title: 'key ' + (i + 1)}, `${view.title} `);
      tab.append(html('span', {class: 'hint'}, view.rows.length.toLocaleString('en')));
      tab.addEventListener('click', () => this.show(view.id));
      return [view.id, tab];
    }));
    this.input = html('input', {type: 'search', id: 'filter', autocomplete: 'off', spellcheck: 'false'});
    this.input.addEventListener('input', () => this.apply());
    this.input.addEventListener('keydown', event => {
      if (event.key === 'Enter') this.list.table.focus();
      if (event.key !== 'Escape') return;
      this.input.value = '';
      this.apply();
      this.list.table.focus();
    });
    this.boxes = this.gradesThere.map(grade => this.box(GRADES[grade], 'g' + grade));
    this.flapping = this.box('flapping only', '');
    this.flapping.input.checked = false;
    this.signal = '';
    this.chip = html('button', {type: 'button', class: 'chip'});
    this.chip.addEventListener('click', () => { this.signal = ''; this.apply(); });
    this.status = html('span', {role: 'status', class: 'hint'});
    this.grades = html('fieldset', {class: 'grades'});
    this.grades.append(html('legend', {}, 'grades'), ...this.boxes.map(box => box.label));
    const views = html('p', {class: 'views', role: 'group', 'aria-label': 'views'});
    views.append(...this.tabs.values());
    const line = html('p', {class: 'filter'});
    line.append(html('label', {for: 'filter'}, 'Filter (key /) '), this.input, this.chip, this.status);
    if (this.courses.rows.size !== 0) line.append(this.flapping.label);
    this.controls = html('div', {class: 'controls'});
    this.controls.append(views, line, this.grades);
  }

  box(text, name) {
    const label = html('label', {class: name});
    const input = html('input', {type: 'checkbox'});
    input.checked = true;
    input.addEventListener('change', () => this.apply());
    label.append(input, ' ' + text);
    return {label, input};
  }

  makeDetail() {
    this.detail = html('section', {class: 'detail', 'aria-label': 'current row'});
    this.detail.hidden = true;
    this.about = this.detail.appendChild(html('p', {'aria-live': 'polite'}));
    const line = this.detail.appendChild(html('p', {}));
    this.command = line.appendChild(html('code', {class: 'command'}));
    addCopyButton(this.command, line);
  }

  // Stays in sight below a table that is longer than the window.
  foot() {
    const foot = html('div', {class: 'foot'});
    foot.append(this.detail, this.ticks.panel);
    return foot;
  }

  // Of what the script shows, beside the pairs, of which the program speaks.
  leftOut(data) {
    const parts = [[data.signals.leftOut, 'signals'], [data.coursesLeftOut, 'courses of pairs over the runs']];
    return parts.filter(([count]) => count !== 0)
      .map(([count, what]) => html('p', {class: 'aloud'}, `This page leaves out ${count} ${what}.`));
  }

  gone(data) {
    if (data.goneCount === 0) return [];
    const box = html('details', {class: 'group'});
    const list = html('ul', {});
    for (const [grade, path] of data.gone) list.append(html('li', {}, `${GRADES[grade]} ${path}`));
    box.append(html('summary', {}, `${data.goneCount} pairs of the earlier run are not there any more`), list);
    return [box];
  }

  get list() { return this.lists.get(this.view); }

  show(id) {
    this.view = id;
    this.area.replaceChildren(this.list.box);
    for (const [tab, button] of this.tabs) button.setAttribute('aria-pressed', String(tab === id));
    this.grades.hidden = !this.list.view.hasGrades;
    this.flapping.label.hidden = this.list.view.data !== this.pairs;
    this.apply();
  }

  shownGrades() { return new Set(this.gradesThere.filter((_, i) => this.boxes[i].input.checked)); }

  apply() {
    const {view} = this.list;
    const words = this.input.value.toLowerCase().split(/\s+/).filter(Boolean);
    const ofPairs = view.data === this.pairs;
    const grades = view.hasGrades && this.boxes.some(box => !box.input.checked) ? this.shownGrades() : null;
    const number = ofPairs ? this.signals.numbers.get(this.signal) : undefined;
    const rows = number === undefined ? null : this.signals.pairsOf(number);
    const flapping = ofPairs && this.flapping.input.checked;
    this.list.apply(i => (!grades || grades.has(this.pairs.grade[i])) && (!rows || rows.has(i)) &&
      (!flapping || this.courses.flaps(i)) && words.every(word => view.data.text(i).includes(word)));
    this.chip.hidden = rows === null;
    this.chip.textContent = rows === null ? '' : `signal ${this.signal} ×`;
    this.chip.setAttribute('aria-label', `show all, not only signal ${this.signal}`);
    const {length} = this.list.shown;
    this.status.textContent = length === view.rows.length ? '' : ` ${length} of ${view.rows.length} rows`;
    this.changed(false);
  }

  // The list, the current row or the filter is another one.
  changed(mayApply = true) {
    const sort = this.list.sort;
    if (mayApply && this.sorted !== (sort && sort.id + sort.direction)) {
      this.sorted = sort && sort.id + sort.direction;
      this.apply();
      return;
    }
    this.sorted = sort && sort.id + sort.direction;
    this.write();
    this.describe();
  }

  state() {
    const row = this.list.row();
    const all = this.boxes.every(box => box.input.checked);
    return {view: this.view, grades: all ? null : this.shownGrades(), words: this.input.value, signal: this.signal,
      flapping: this.flapping.input.checked, sort: this.list.sort,
      row: row < 0 ? '' : this.view === 'signals' ? this.signals.names[row] : this.pairs.path(row)};
  }

  write() {
    const address = addressOfState(this.state());
    if (address !== location.hash) history.replaceState(null, '', address);
  }

  follow() {
    const state = readState(location.hash);
    this.input.value = state.words;
    this.signal = state.signal;
    this.flapping.input.checked = state.flapping;
    this.gradesThere.forEach((grade, i) => { this.boxes[i].input.checked = state.grades?.has(grade) ?? true; });
    const view = this.lists.has(state.view) ? state.view : 'pairs';
    this.lists.get(view).sort = state.sort;
    this.show(view);
    if (state.row === '') return;
    const row = view === 'signals' ? this.signals.numbers.get(state.row)
      : this.list.shown.find(i => this.pairs.path(i) === state.row);
    if (row !== undefined) this.list.selectRow(row);
    this.changed(false);
  }

  // What is known of the row; of a pair also what makes its report.
  describe() {
    const row = this.list.row();
    const isPair = this.view !== 'signals';
    const course = row < 0 ? '' : (isPair ? this.courses : this.signalCourses).sentence(row);
    this.detail.hidden = row < 0 || (!isPair && course === '');
    if (this.detail.hidden) return;
    this.command.parentElement.hidden = !isPair;
    if (isPair) this.describePair(row, course);
    else this.about.textContent = `${[this.signals.name(row), this.signals.analysis(row), this.signals.what(row)].join(' ')}. ${course}`;
  }

  describePair(row, course) {
    const {pairs} = this;
    const parts = [`${GRADES[pairs.grade[row]]} ${pairs.path(row)}`, pairs.remark(row),
      pairs.status(row) === '-' ? '' : `exit status ${pairs.status(row)}`, pairs.options(row) && `options ${pairs.options(row)}`];
    this.about.textContent = parts.filter(Boolean).join(', ') + '. ' + course;
    this.command.parentElement.hidden = pairs.has(row, LACKS_GOLDEN | LACKS_REGRESSION);
    if (this.command.parentElement.hidden) return;
    const bytes = pairs.bytes.get(row);
    const file = (tree, suffix) => shellWord(tree) + '/' + shellWord(pairs.path(row), bytes) + suffix;
    this.command.textContent = ['tresk-report pair --out', file(this.out + '/report', ''), this.options, pairs.options(row),
      file(this.golden, pairs.goldenSuffix(row)), file(this.regression, pairs.regressionSuffix(row))].filter(Boolean).join(' ');
  }

  redraw() {
    this.list.drawn = '';
    this.list.draw();
  }

  open() {
    const row = this.list.row();
    if (row < 0) return;
    if (this.view === 'signals') location.hash = '#' + new URLSearchParams({view: 'pairs', signal: this.signals.names[row]});
    else if (this.pairs.page(row) !== null) location.href = this.pairs.page(row);
  }

  key(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || event.target.closest?.('input[type=search]')) return;
    const {list} = this;
    const inTable = event.target === list.table;
    const actions = {j: () => list.step(1), k: () => list.step(-1), '/': () => { this.input.focus(); this.input.select(); },
      '?': () => { this.helpBox.open = !this.helpBox.open; }};
    this.views.forEach((view, i) => { actions[i + 1] = () => this.show(view.id); });
    if (list.row() >= 0 && this.view !== 'signals') actions.x = () => this.ticks.toggle(list.row());
    if (inTable || event.target === document.body) actions.Enter = () => this.open();
    if (inTable) {
      Object.assign(actions, {ArrowDown: actions.j, ArrowUp: actions.k, PageDown: () => list.step(list.inSight()),
        PageUp: () => list.step(-list.inSight()), Home: () => list.step(-list.shown.length), End: () => list.step(list.shown.length)});
    }
    if (!Object.hasOwn(actions, event.key)) return;
    event.preventDefault();
    actions[event.key]();
  }
}

const page = new TreePage(JSON.parse(document.getElementById('data').textContent));
