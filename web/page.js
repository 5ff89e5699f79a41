// SPDX-License-Identifier: MIT
// Starts everything: the page is whole without it.

const KEYS = [
  ['n, p', 'next, previous figure'], ['/', 'filter'], ['?', 'this list'],
  ['+, -, ←, →, 0', 'in a figure: zoom in, out, to the left, to the right, whole'],
  ['w', 'in a figure: the worst place'], ['l', 'in a figure: logarithmic or linear'],
  ['d, D', 'in a figure: the difference alone, or magnified'], ['s', 'in a figure: save as SVG'],
  ['Shift ←, Shift →', 'in a figure: move the crosshair'],
];

const addKeyHelp = main => {
  const help = html('details', {class: 'keys'});
  help.append(html('summary', {}, 'Keys, dragging and links'));
  const list = html('dl', {class: 'facts'});
  for (const [keys, meaning] of KEYS) list.append(html('dt', {}, keys), html('dd', {}, meaning));
  help.append(list, html('p', {}, 'Drag over a figure to zoom, double click for the whole, turn the wheel with Shift ' +
    'or Ctrl. Figures of one analysis zoom together. The address always holds what is shown: copy it into a ticket.'));
  main.prepend(help);
  return help;
};

// A page that was opened as a file may not use the clipboard: then by the selection.
const copyText = async element => {
  try {
    await navigator.clipboard.writeText(element.textContent);
    return true;
  } catch {
    getSelection().selectAllChildren(element);
    return document.execCommand('copy');
  }
};

const addCopyButton = () => {
  const command = document.getElementById('command');
  if (!command) return;
  const button = html('button', {type: 'button'}, 'copy tresk command');
  const status = html('span', {role: 'status', class: 'hint'});
  button.addEventListener('click', async () => {
    status.textContent = (await copyText(command)) ? ' copied' : ' select it and copy it by hand';
  });
  command.after(' ', button, status);
};

const start = () => {
  const main = document.querySelector('main');
  const data = document.getElementById('data');
  const figures = new Figures(data ? JSON.parse(data.textContent).figures : []);
  const help = addKeyHelp(main);
  const filter = new Filter(main);
  document.querySelectorAll('table.sortable').forEach(makeSortable);
  addCopyButton();
  addEventListener('keydown', event => {
    if (event.ctrlKey || event.metaKey || event.altKey || event.target.closest?.('input, textarea')) return;
    const actions = {n: () => figures.step(1), p: () => figures.step(-1), '/': () => filter.input.focus(),
      '?': () => { help.open = !help.open; }};
    if (!Object.hasOwn(actions, event.key)) return;
    event.preventDefault();
    actions[event.key]();
  });
  let closed = []; // before printing
  addEventListener('beforeprint', () => {
    closed = Array.from(document.querySelectorAll('details:not([open])'));
    closed.forEach(details => { details.open = true; });
  });
  addEventListener('afterprint', () => closed.forEach(details => { details.open = false; }));
  const address = new Address(figures);
  return {figures, filter, address};
};

const page = start();
