// SPDX-License-Identifier: MIT
// A figure under the reader's hands: buttons, keys, dragging, the crosshair. All figures have one; only those of
// curves can be zoomed.

const BUTTONS = [
  ['+', 'zoom in', '+'],
  ['-', 'zoom out', '−'],
  ['ArrowLeft', 'to the left', '←'],
  ['ArrowRight', 'to the right', '→'],
  ['0', 'whole', 'whole'],
  ['w', 'worst place', 'worst'],
  ['d', 'difference alone', 'difference'],
  ['D', 'difference magnified', 'magnified'],
  ['l', 'log axes', 'log'],
  ['s', 'save SVG', 'save SVG'],
];
const ZOOM_KEYS = new Set(['+', '-', 'ArrowLeft', 'ArrowRight', '0', 'w', 'd', 'D']);

class View {
  constructor(figure, data, onZoom) {
    this.figure = figure;
    this.data = data;
    this.onZoom = onZoom;
    this.svg = figure.querySelector('svg.figure');
    this.picture = null;
    this.key = figure.dataset.key;
  }

  // Figures are made alive when they are first touched: a page has many.
  wake() {
    if (this.picture !== null) return this.picture;
    const kinds = {waves: Waves, bars: Bars, plane: Plane};
    this.picture = new kinds[this.data.kind](this.data, this.svg);
    return this.picture;
  }

  get zooms() {
    return this.data.kind === 'waves';
  }

  addControls() {
    this.readout = html('p', {class: 'readout', 'aria-live': 'polite'});
    this.tools = html('div', {class: 'tools', role: 'group', 'aria-label': 'view of ' + this.data.title});
    this.buttons = new Map();
    for (const [key, label, text] of BUTTONS) {
      if ((ZOOM_KEYS.has(key) && !this.zooms) || (key === 'l' && !this.canLog())) continue;
      const button = html('button', {type: 'button', title: `${label} (${key})`, 'aria-label': label}, text);
      if ('dDl'.includes(key)) button.setAttribute('aria-pressed', 'false');
      button.addEventListener('click', () => this.act(key));
      this.tools.append(button);
      this.buttons.set(key, button);
    }
    const drawing = this.figure.querySelector('.drawing');
    drawing.before(this.tools);
    drawing.after(this.readout);
    this.figure.addEventListener('keydown', event => {
      if (event.ctrlKey || event.metaKey || event.altKey || event.target.closest('.numbers')) return;
      const moves = event.shiftKey && event.key.startsWith('Arrow');
      if (moves ? this.moveCrosshair(event.key) : this.act(event.key)) event.preventDefault();
    });
    if (this.zooms) this.followPointer();
    this.showState();
  }

  canLog() {
    if (this.data.kind === 'bars') return barsCanLog(this.data);
    return this.data.kind === 'plane' || this.data.x.low > 0;
  }

  // Returns whether the key means something.
  act(key) {
    if (key === '=') return this.act('+');
    if (!this.buttons.has(key)) return false;
    const actions = {
      '+': () => this.scale(0.5), '-': () => this.scale(2), ArrowLeft: () => this.pan(-0.2),
      ArrowRight: () => this.pan(0.2), 0: () => this.zoom(...this.wake().whole), w: () => this.toWorst(),
      d: () => this.toggle('difference'), D: () => this.toggle('magnified'), l: () => this.toggleLog(),
      s: () => this.save(),
    };
    actions[key]();
    return true;
  }

  redraw() {
    this.wake().draw();
    this.hideCrosshair();
    this.showState();
  }

  showState() {
    const picture = this.picture;
    const pressed = {d: picture?.mode === 'difference', D: picture?.mode === 'magnified',
      l: picture === null ? this.data.x.log || this.data.logY || this.data.kind === 'plane' : picture.log};
    for (const key of ['d', 'D', 'l']) {
      this.buttons.get(key)?.setAttribute('aria-pressed', String(Boolean(pressed[key])));
    }
  }

  // Shows the stretch from low to high, as much of it as there is. Stretches that a double cannot divide are refused.
  show(low, high) {
    const picture = this.wake();
    const [least, most] = picture.whole;
    const nearly = (most - least) * 1e-9; // what rounding leaves of the whole
    const a = Math.min(low, high) < least + nearly ? least : Math.min(low, high);
    const b = Math.max(low, high) > most - nearly ? most : Math.max(low, high);
    if (!(b > a) || !(b - a > (Math.abs(a) + Math.abs(b)) * 1e-13)) return false;
    picture.low = a;
    picture.high = b;
    this.redraw();
    return true;
  }

  zoom(low, high) {
    if (this.show(low, high)) this.onZoom(this);
  }

  axis() {
    return this.wake().axis();
  }

  scale(factor, at = (LEFT + RIGHT) / 2) {
    const axis = this.axis();
    this.zoom(axis.value(at + (LEFT - at) * factor), axis.value(at + (RIGHT - at) * factor));
  }

  // Keeps the width of the stretch at the ends.
  pan(part) {
    const axis = this.axis();
    const [least, most] = this.picture.whole.map(axis.place);
    const step = Math.min(Math.max(part * (RIGHT - LEFT), least - LEFT), most - RIGHT);
    this.zoom(axis.value(LEFT + step), axis.value(RIGHT + step));
  }

  toWorst() {
    const stretch = this.wake().worstStretch();
    if (stretch) this.zoom(...stretch);
  }

  toggle(mode) {
    const picture = this.wake();
    picture.mode = picture.mode === mode ? 'both' : mode;
    this.redraw();
  }

  toggleLog() {
    const picture = this.wake();
    picture.log = !picture.log;
    this.redraw();
  }

  save() {
    const copy = this.svg.cloneNode(true);
    copy.querySelector('.crosshair')?.remove();
    const text = '<?xml version="1.0"?>\n' + new XMLSerializer().serializeToString(copy);
    const address = URL.createObjectURL(new Blob([text], {type: 'image/svg+xml'}));
    const link = html('a', {download: this.data.id + '.svg', href: address});
    link.click();
    setTimeout(() => URL.revokeObjectURL(address), 10000);
  }

  // Where an event is, in the units of the drawing.
  placeOf(event) {
    const box = this.svg.getBoundingClientRect();
    return (event.clientX - box.left) * this.svg.viewBox.baseVal.width / box.width;
  }

  followPointer() {
    let from = null;
    let band = null;
    const clamped = event => Math.min(Math.max(this.placeOf(event), LEFT), RIGHT);
    const leave = () => {
      band?.remove();
      from = band = null;
    };
    this.svg.addEventListener('pointerdown', event => {
      if (event.button !== 0) return;
      from = clamped(event);
      this.svg.setPointerCapture(event.pointerId);
      const height = this.svg.viewBox.baseVal.height - FIRST_TOP - 32;
      const look = {fill: '#1c6dd0', 'fill-opacity': 0.2};
      band = svg('rect', {class: 'band', x: from, y: FIRST_TOP, width: 0, height, ...look});
      this.svg.append(band);
    });
    this.svg.addEventListener('pointermove', event => {
      const at = clamped(event);
      if (from === null) this.showCrosshair(at);
      else set(band, {x: Math.min(at, from), width: Math.abs(at - from)});
    });
    this.svg.addEventListener('pointerup', event => {
      const at = clamped(event);
      const start = from;
      leave();
      if (start === null || Math.abs(at - start) < 5) return;
      const axis = this.axis();
      this.zoom(axis.value(Math.min(at, start)), axis.value(Math.max(at, start)));
    });
    this.svg.addEventListener('pointercancel', leave);
    this.svg.addEventListener('pointerleave', () => from === null && this.hideCrosshair());
    this.svg.addEventListener('dblclick', () => this.act('0'));
    this.svg.addEventListener('wheel', event => {
      if (!event.ctrlKey && !event.shiftKey) return;
      event.preventDefault();
      this.scale((event.deltaY || event.deltaX) > 0 ? 1.25 : 0.8, this.placeOf(event));
    }, {passive: false});
  }

  showCrosshair(at) {
    this.crosshairAt = at;
    const bottom = this.svg.viewBox.baseVal.height - 32;
    this.crosshair ??= svg('path', {class: 'crosshair', fill: 'none', stroke: '#1c6dd0', 'stroke-dasharray': '3 3'});
    this.crosshair.setAttribute('d', `M${pixel(at)} ${FIRST_TOP + HEAD}V${bottom}`);
    if (!this.crosshair.isConnected) this.svg.append(this.crosshair);
    this.readout.textContent = this.wake().readout(this.axis().value(at));
  }

  hideCrosshair() {
    this.crosshair?.remove();
    this.readout.textContent = '';
  }

  moveCrosshair(key) {
    if (!this.zooms || (key !== 'ArrowLeft' && key !== 'ArrowRight')) return false;
    const at = (this.crosshairAt ?? (LEFT + RIGHT) / 2) + (key === 'ArrowLeft' ? -4 : 4);
    this.showCrosshair(Math.min(Math.max(at, LEFT), RIGHT));
    return true;
  }
}
