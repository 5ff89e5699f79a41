// A table of any number of rows, of which those in sight are there. All rows have one height.
const ROW = 28;
const BEYOND = 12; // rows above and below those in sight
const AROUND = 50; // height of the head, frame and scroll bar

const compareSortKeys = (a, b, direction) => {
  if (a === null || b === null) return a === b ? 0 : a === null ? 1 : -1;
  return a === b ? 0 : direction * (a < b ? -1 : 1);
};

class List {
  constructor(view, onChange) {
    this.view = view;
    this.onChange = onChange;
    this.shown = view.rows; // what the filter leaves, in the order of the table
    this.current = -1; // place in shown
    this.sort = null; // {id, direction}
    this.keys = new Map();
    const dated = view.columns.some(column => column.id === 'since') ? ' dated' : '';
    this.table = html('table', {class: 'list ' + view.id + dated, role: 'grid', tabindex: '0', 'aria-label': view.title});
    this.table.append(this.makeHead());
    this.body = this.table.appendChild(html('tbody', {}));
    this.box = html('div', {class: 'box'});
    this.box.append(this.table);
    this.box.addEventListener('scroll', () => this.draw());
    this.body.addEventListener('click', event => {
      const row = event.target.closest('tr[data-at]');
      if (row) this.select(Number(row.dataset.at));
    });
  }

  makeHead() {
    const row = html('tr', {'aria-rowindex': '1'});
    for (const column of this.view.columns) {
      const head = html('th', {scope: 'col', class: 'c-' + column.id + (column.isNumber ? ' n' : '')});
      if (column.key) {
        const button = html('button', {type: 'button', class: 'sort'}, column.head);
        button.addEventListener('click', () => this.sortBy(column.id));
        head.append(button);
      } else {
        head.textContent = column.head;
      }
      row.append(head);
    }
    const head = html('thead', {});
    head.append(row);
    return head;
  }

  row() { return this.shown[this.current] ?? -1; }

  // Falls first, but texts rise; a third time gives the order of the program back, worst first.
  sortBy(id) {
    const column = this.view.columns.find(c => c.id === id);
    const sample = this.view.rows.length === 0 ? null : column.key(this.view.rows[0]);
    const first = typeof sample === 'string' ? 1 : -1;
    const again = this.sort?.id === id;
    this.sort = !again ? {id, direction: first} : this.sort.direction === first ? {id, direction: -first} : null;
    this.onChange();
  }

  keysOf(column) {
    let keys = this.keys.get(column.id);
    if (!keys) this.keys.set(column.id, keys = new Map(this.view.rows.map(i => [i, column.key(i)])));
    return keys;
  }

  // Shows the rows for which holds(row), in the order of this.sort, and stays on the current one.
  apply(holds) {
    const row = this.row();
    this.shown = this.view.rows.filter(holds);
    const column = this.sort && this.view.columns.find(c => c.id === this.sort.id && c.key);
    if (column) {
      const keys = this.keysOf(column);
      this.shown.sort((a, b) => compareSortKeys(keys.get(a), keys.get(b), this.sort.direction) || a - b);
    }
    this.view.columns.forEach((c, i) => {
      const head = this.table.tHead.rows[0].cells[i];
      if (column?.id === c.id) head.setAttribute('aria-sort', this.sort.direction < 0 ? 'descending' : 'ascending');
      else head.removeAttribute('aria-sort');
    });
    this.current = row < 0 ? -1 : this.shown.indexOf(row);
    this.box.style.height = this.shown.length * ROW + AROUND + 'px'; // up to what the style allows
    this.table.setAttribute('aria-rowcount', String(this.shown.length + 1));
    this.drawn = '';
    this.draw();
    if (this.current >= 0) this.scroll();
    else this.box.scrollTop = 0;
    this.draw();
  }

  makeRow(at) {
    const row = html('tr', {id: 'row-' + at, 'data-at': at, 'aria-rowindex': at + 2, 'aria-selected': String(at === this.current)});
    for (const column of this.view.columns) {
      const cell = html('td', {});
      column.fill(cell, this.shown[at]);
      cell.classList.add('c-' + column.id);
      if (column.isNumber) cell.classList.add('n');
      row.append(cell);
    }
    return row;
  }

  spacer(rows) {
    const row = html('tr', {class: 'spacer', 'aria-hidden': 'true'});
    row.style.height = rows * ROW + 'px';
    return row;
  }

  draw() {
    const top = Math.min(this.box.scrollTop, this.shown.length * ROW); // of more rows than there are now
    const first = Math.max(0, Math.floor(top / ROW) - BEYOND);
    const end = Math.min(this.shown.length, Math.ceil((top + this.box.clientHeight) / ROW) + BEYOND);
    const wanted = first + '-' + end + '-' + this.current;
    if (wanted === this.drawn) return;
    this.drawn = wanted;
    const rows = [];
    for (let at = first; at < end; ++at) rows.push(this.makeRow(at));
    this.body.replaceChildren(this.spacer(first), ...rows, this.spacer(this.shown.length - Math.max(first, end)));
    if (this.current >= first && this.current < end) this.table.setAttribute('aria-activedescendant', 'row-' + this.current);
    else this.table.removeAttribute('aria-activedescendant');
  }

  select(at) {
    this.current = Math.min(Math.max(at, 0), this.shown.length - 1);
    this.draw();
    this.onChange();
  }

  // Selects a row by its number, where it is shown.
  selectRow(row) {
    this.current = this.shown.indexOf(row);
    if (this.current >= 0) this.reveal();
    else this.draw();
  }

  step(by) {
    if (this.shown.length === 0) return;
    this.current = Math.min(Math.max(this.current + by, 0), this.shown.length - 1);
    this.reveal();
    this.select(this.current);
  }

  scroll() {
    const head = this.table.tHead.offsetHeight;
    const top = this.current * ROW;
    const room = this.box.clientHeight - head - ROW;
    if (top < this.box.scrollTop) this.box.scrollTop = top;
    else if (top > this.box.scrollTop + room) this.box.scrollTop = top - room;
  }

  reveal() {
    this.scroll();
    this.draw();
    document.getElementById('row-' + this.current)?.scrollIntoView({block: 'nearest'}); // of the window
  }

  inSight() { return Math.max(1, Math.floor(this.box.clientHeight / ROW) - 2); }
}
