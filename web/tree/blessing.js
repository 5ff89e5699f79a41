// Pairs that are ticked, and the command that blesses them: a page cannot write.
const shellWord = (text, bytes) => {
  if (bytes !== undefined) return "$'" + bytes.replace(/../g, '\\x$&') + "'";
  return /^[\w@%+=:,./-]+$/.test(text) ? text : "'" + text.replaceAll("'", "'\\''") + "'";
};

const copyText = async element => {
  try {
    await navigator.clipboard.writeText(element.textContent);
    return true;
  } catch { // a page that was opened as a file: by the selection
    getSelection().selectAllChildren(element);
    return document.execCommand('copy');
  }
};

const addCopyButton = (element, after) => {
  const button = html('button', {type: 'button'}, 'copy');
  const status = html('span', {role: 'status', class: 'hint'});
  button.addEventListener('click', async () => {
    status.textContent = (await copyText(element)) ? ' copied' : ' select it and copy it by hand';
  });
  after.append(' ', button, status);
};

class Ticks {
  constructor(pairs, out) {
    this.pairs = pairs;
    this.out = out;
    this.rows = new Set();
    this.onChange = () => {};
    this.panel = html('section', {class: 'ticks', 'aria-label': 'ticked pairs'});
    this.panel.hidden = true;
    this.count = this.panel.appendChild(html('p', {role: 'status'}));
    const line = this.panel.appendChild(html('p', {}));
    this.command = line.appendChild(html('code', {class: 'command'}));
    addCopyButton(this.command, line);
    const clear = html('button', {type: 'button'}, 'untick all');
    clear.addEventListener('click', () => { this.rows.clear(); this.changed(); });
    line.append(' ', clear);
  }

  // What has a report and did not pass can become golden.
  takes(row) { return this.pairs.grade[row] !== 0 && this.pairs.has(row, HAS_REPORT); }

  has(row) { return this.rows.has(row); }

  toggle(row) {
    if (!this.takes(row)) return;
    if (!this.rows.delete(row)) this.rows.add(row);
    this.changed();
  }

  changed() {
    const word = i => shellWord(this.pairs.path(i), this.pairs.bytes.get(i));
    const rows = Array.from(this.rows).sort((a, b) => a - b);
    const end = rows.some(i => this.pairs.path(i).startsWith('-')) ? ['--'] : []; // of the options
    this.panel.hidden = rows.length === 0;
    this.count.textContent = `${rows.length} ticked. Looked at, and right as they are? This shows what would become the new golden:`;
    this.command.textContent = ['tresk-report bless --reason', "'...'", shellWord(this.out), ...end, ...rows.map(word)].join(' ');
    this.onChange();
  }
}
