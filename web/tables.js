// SPDX-License-Identifier: MIT
// Tables that sort by a column, and a filter over everything that has a name.

// Numbers by value, what is no number first when falling; texts by the language, with their numbers as numbers.
const sortKey = cell => {
  const exact = cell.dataset.v;
  if (exact === undefined) {
    const text = cell.textContent.trim();
    return text !== '' && Number.isFinite(Number(text)) ? Number(text) : text;
  }
  return exact === 'nan' ? Infinity : number(Number.isFinite(Number(exact)) ? Number(exact) : exact);
};

const compareKeys = (a, b) => {
  if (typeof a === 'number' && typeof b === 'number') return a === b ? 0 : a < b ? -1 : 1;
  return COLLATOR.compare(String(a), String(b));
};
const COLLATOR = new Intl.Collator('en', {numeric: true});

const sortTable = (table, index, direction) => {
  const body = table.tBodies[0];
  const rows = Array.from(body.rows, row => ({row, key: sortKey(row.cells[index])}));
  rows.sort((a, b) => direction * compareKeys(a.key, b.key));
  body.append(...rows.map(({row}) => row));
};

const makeSortable = table => {
  const heads = Array.from(table.tHead.rows[0].cells);
  heads.forEach((head, index) => {
    const button = html('button', {type: 'button', class: 'sort'}, head.textContent);
    head.replaceChildren(button);
    button.addEventListener('click', () => {
      const falling = head.getAttribute('aria-sort') !== 'descending';
      for (const other of heads) other.removeAttribute('aria-sort');
      head.setAttribute('aria-sort', falling ? 'descending' : 'ascending');
      sortTable(table, index, falling ? -1 : 1);
    });
  });
};

class Filter {
  constructor(main) {
    const rows = ['#findings', 'table.values', 'details.group'].map(part => part + ' tbody > tr');
    this.items = Array.from(main.querySelectorAll([...rows, 'details.one'].join()),
      element => ({element, text: (element.querySelector('summary') ?? element).textContent.toLowerCase()}));
    this.input = html('input', {type: 'search', id: 'filter', autocomplete: 'off', spellcheck: 'false'});
    this.status = html('span', {role: 'status', class: 'hint'});
    const label = html('label', {for: 'filter'}, 'Filter names, analyses, markers (key /) ');
    const bar = html('p', {class: 'filter'});
    bar.append(label, this.input, this.status);
    if (this.items.length !== 0) main.prepend(bar);
    this.input.addEventListener('input', () => this.apply());
    this.input.addEventListener('keydown', event => {
      if (event.key !== 'Escape') return;
      this.input.value = '';
      this.apply();
      this.input.blur();
    });
  }

  apply() {
    const words = this.input.value.toLowerCase().split(/\s+/).filter(Boolean);
    let shown = 0;
    for (const {element, text} of this.items) {
      element.hidden = !words.every(word => text.includes(word));
      shown += element.hidden ? 0 : 1;
    }
    this.status.textContent = words.length === 0 ? '' : ` ${shown} of ${this.items.length} rows and figures`;
  }
}
